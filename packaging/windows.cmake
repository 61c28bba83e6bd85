# A zip of everything that is installed; `cpack` in the build directory. Beside what cmake/install.cmake
# has, that is the import libraries for Microsoft's linker.

foreach(library zvxg zvxgmany zvxcore)
  if(TARGET ${library})
    install(FILES $<TARGET_PROPERTY:${library},ZVXG_LIB>
      DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  endif()
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE TYPE DOC COMPONENT documentation)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME zvxg-${PROJECT_VERSION}-windows-x86_64)
set(CPACK_STRIP_FILES ON)
include(CPack)
