# Each screen folder (app/, disklist/, dialogs/, wizard/) builds two libraries:
#   <folder>_core  the screen's decisions as plain functions and small classes; portable (no
#                  <windows.h>, apart from the *_win.cpp backend of a portable interface),
#                  built and tested on every system;
#   <folder>_win   the screen's windows and their wiring to the core; Windows only, on the
#                  user-interface framework in ui/.
# The folder's dialog templates and other resources are in <folder>/<folder>.rc, included by
# res/cryptelle.rc. A library exists from its first source on, so that adding the first file
# of either side is one line in the folder's call:
#
#   cryptelle_screen(<folder>
#     [CORE sources...] [CORE_LINKS PUBLIC|PRIVATE libraries...]
#     [WIN sources...]  [WIN_LINKS PUBLIC|PRIVATE libraries...])
#
# The core gets the status codes and the program's texts; the window side gets the
# framework and its own core.
function(cryptelle_screen folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "CORE;CORE_LINKS;WIN;WIN_LINKS")
  if(arg_CORE)
    add_library(${folder}_core STATIC ${arg_CORE})
    target_link_libraries(${folder}_core PUBLIC status texts ${arg_CORE_LINKS})
    cryptelle_warnings(${folder}_core)
  endif()
  if(WIN32 AND arg_WIN)
    add_library(${folder}_win STATIC ${arg_WIN})
    target_link_libraries(${folder}_win PUBLIC ui ${arg_WIN_LINKS})
    if(arg_CORE)
      target_link_libraries(${folder}_win PUBLIC ${folder}_core)
    endif()
    cryptelle_warnings(${folder}_win)
  endif()
endfunction()
