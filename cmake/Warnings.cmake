# Project-wide warnings: every target of ours builds clean with these on both compilers.
function(cryptelle_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -Wsign-conversion -Werror $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast>)
  # GCC 12 reports impossible overlaps inside std::string's inlined copies (a known false
  # positive of -Wrestrict at -O2 and above); the check stays on for other compilers.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
endfunction()
