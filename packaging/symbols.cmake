# Run by cpack between installing and packing: the lists of symbols of the packages with libraries, with
# the version in which each came, and of the libraries, for packages that are linked with them.
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER CPACK_DEBIAN_${component}_PACKAGE prefix)
  set(name ${${prefix}_NAME})
  if(NOT EXISTS ${CMAKE_CURRENT_LIST_DIR}/${name}.symbols)
    continue()
  endif()
  list(GET ${prefix}_CONTROL_EXTRA 0 symbols)
  get_filename_component(place ${symbols} DIRECTORY)
  file(MAKE_DIRECTORY ${place})
  execute_process(
    COMMAND dpkg-gensymbols -q -c4 -p${name} -v${CPACK_PACKAGE_VERSION}
      -I${CMAKE_CURRENT_LIST_DIR}/${name}.symbols -O${symbols}
      -P${CPACK_TEMPORARY_DIRECTORY}/${component}
    OUTPUT_VARIABLE difference
    ERROR_VARIABLE difference
    RESULT_VARIABLE result)
  if(result)
    message(FATAL_ERROR
      "packaging/${name}.symbols is not what the libraries have:\n${difference}")
  endif()
  file(STRINGS ${symbols} libraries REGEX "^lib")
  list(TRANSFORM libraries
    REPLACE "^(.+)[.]so[.]([0-9]+) (.+) #.*" "\\1 \\2 \\3 (>= ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})\n")
  string(CONCAT libraries ${libraries})
  file(WRITE ${place}/shlibs ${libraries})
endforeach()
