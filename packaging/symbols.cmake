# Run by cpack between installing and packing: the list of symbols of libzvxg6, with the version in
# which each came, for packages that are linked with it.
list(GET CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA 0 symbols)
execute_process(
  COMMAND dpkg-gensymbols -q -c4 -plibzvxg6 -v${CPACK_PACKAGE_VERSION}
    -I${CMAKE_CURRENT_LIST_DIR}/libzvxg6.symbols -O${symbols}
    -P${CPACK_TEMPORARY_DIRECTORY}/runtime
  OUTPUT_VARIABLE difference
  ERROR_VARIABLE difference
  RESULT_VARIABLE result)
if(result)
  message(FATAL_ERROR "packaging/libzvxg6.symbols is not what the libraries have:\n${difference}")
endif()
