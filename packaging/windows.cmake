# A zip of everything that is installed; `cpack` in the build directory. Beside what cmake/install.cmake
# has, that is the import libraries for Microsoft's linker. zvxg-config.cmake reads all zvxg-config-*.cmake
# beside it in the order of their names, and so the places of these libraries last.

foreach(library zvxg zvxgmany zvxcore)
  if(TARGET ${library})
    install(FILES $<TARGET_PROPERTY:${library},ZVXG_LIB>
      DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  endif()
endforeach()
install(FILES ${CMAKE_CURRENT_LIST_DIR}/zvxg-config-windows.cmake
  DESTINATION ${cmakeFiles} COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE TYPE DOC COMPONENT documentation)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME zvxg-${PROJECT_VERSION}-windows-x86_64)
set(CPACK_STRIP_FILES ON)
include(CPack)
