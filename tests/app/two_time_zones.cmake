# Runs the date-time probe in two time zones under the United States English locale and
# compares its lines with the exact texts expected: the epoch and nine hours later in UTC,
# and the epoch in UTC+9, which must read like nine hours later in UTC.
# Variables: PROBE (the executable), EMULATOR (empty natively; the Wine runner otherwise),
# UTC_EPOCH, UTC_NINE (the texts expected in UTC), TOKYO_EPOCH (the epoch in UTC+9).
function(run_probe zone out_var)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env TZ=${zone} LANG=en_US.UTF-8 ${EMULATOR} ${PROBE}
    OUTPUT_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "probe failed in zone ${zone}: ${result}")
  endif()
  string(REPLACE "\r" "" output "${output}")
  string(STRIP "${output}" output)
  string(REPLACE "\n" ";" lines "${output}")
  list(LENGTH lines count)
  if(NOT count EQUAL 2)
    message(FATAL_ERROR "probe printed ${count} lines in zone ${zone}: ${output}")
  endif()
  set(${out_var} "${lines}" PARENT_SCOPE)
endfunction()

function(expect_text what actual expected)
  if(NOT actual STREQUAL expected)
    message(FATAL_ERROR "${what} reads '${actual}', expected '${expected}'")
  endif()
endfunction()

run_probe("UTC0" utc)
run_probe("JST-9" tokyo)
list(GET utc 0 utc_epoch)
list(GET utc 1 utc_nine)
list(GET tokyo 0 tokyo_epoch)
expect_text("the epoch in UTC" "${utc_epoch}" "${UTC_EPOCH}")
expect_text("09:00 UTC" "${utc_nine}" "${UTC_NINE}")
expect_text("the epoch in UTC+9" "${tokyo_epoch}" "${TOKYO_EPOCH}")
