# What programs of the build print. A release has all of it in printed/, so that it needs none of them.

set(ZVXG_IS_PRINTED FALSE)
if(EXISTS ${PROJECT_SOURCE_DIR}/printed)
  set(ZVXG_IS_PRINTED TRUE)
endif()
add_custom_target(zvxg_printed)

# printed(FILE PROGRAM ARGUMENT...)
function(printed file program)
  file(RELATIVE_PATH place ${PROJECT_BINARY_DIR} ${file})
  set_property(GLOBAL APPEND PROPERTY ZVXG_PRINTED ${place})
  if(ZVXG_IS_PRINTED)
    configure_file(${PROJECT_SOURCE_DIR}/printed/${place} ${file} COPYONLY)
    return()
  endif()
  add_custom_command(OUTPUT ${file}
    COMMAND ${program} ${ARGN} > ${file}
    DEPENDS ${program}
    VERBATIM)
  get_directory_property(others ZVXG_PRINTED)
  if(NOT others)
    cmake_language(DEFER CALL print_all)
  endif()
  set_property(DIRECTORY APPEND PROPERTY ZVXG_PRINTED ${file})
endfunction()

# At the end of a directory: what is printed there, for who wants nothing else.
function(print_all)
  get_directory_property(files ZVXG_PRINTED)
  file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  string(MAKE_C_IDENTIFIER ${name} name)
  add_custom_target(zvxg_printed_${name} DEPENDS ${files})
  add_dependencies(zvxg_printed zvxg_printed_${name})
endfunction()
