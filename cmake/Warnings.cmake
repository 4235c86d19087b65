# Project-wide warnings: every target of ours builds clean with these on both compilers.
function(cryptelle_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -Wsign-conversion -Wnon-virtual-dtor -Wold-style-cast -Werror)
endfunction()
