# System libraries that a Windows program loads at their first call instead of at process
# start: only commands and dialogs use them, so the main window's first paint does not wait
# for them (nor for what they load in turn, e.g. the print spooler behind the common
# dialogs). Each one's functions are listed in cmake/delay_load/<name>.def; dlltool makes a
# delay-load import library from it, which links in place of the system's import library.
# A function missing from the list does not link.
#
#   cryptelle_delay_load(<name>)   defines the target <name>_delay_load
function(cryptelle_delay_load name)
  set(definitions ${PROJECT_SOURCE_DIR}/cmake/delay_load/${name}.def)
  set(library ${PROJECT_BINARY_DIR}/delay_load/lib${name}_delay_load.a)
  add_custom_command(OUTPUT ${library}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/delay_load
    COMMAND ${CMAKE_DLLTOOL} --input-def ${definitions} --dllname ${name}.dll
            --output-delaylib ${library}
    DEPENDS ${definitions}
    COMMENT "Making the delay-load import library of ${name}.dll")
  add_custom_target(${name}_delay_load_library DEPENDS ${library})
  add_library(${name}_delay_load STATIC IMPORTED GLOBAL)
  set_target_properties(${name}_delay_load PROPERTIES IMPORTED_LOCATION ${library})
  add_dependencies(${name}_delay_load ${name}_delay_load_library)
endfunction()

if(WIN32)
  cryptelle_delay_load(comdlg32)
  cryptelle_delay_load(mpr)
endif()
