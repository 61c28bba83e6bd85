# What is installed, by component: runtime, many, development, tools, documentation; python has its own. Everything finds
# its parts relative to its own place, so that an installed tree can be moved.

include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# compress(FILE NAME)  the same bytes whenever and wherever
function(compress file name)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  execute_process(COMMAND gzip -9nc ${file}
    OUTPUT_FILE ${PROJECT_BINARY_DIR}/${name} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(cmakeFiles ${CMAKE_INSTALL_LIBDIR}/cmake/zvxg)

install(TARGETS zvxg zvxcore zvxg_static zvxcore_static EXPORT zvxg
  RUNTIME COMPONENT runtime
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
# glibc's loader prefers these to the one above, where the processor has what they need.
foreach(level v3 v4)
  if(TARGET zvxg_${level})
    install(TARGETS zvxg_${level}
      LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/glibc-hwcaps/x86-64-${level}
      COMPONENT runtime NAMELINK_SKIP)
    install(TARGETS zvxg_${level}_static EXPORT zvxg ARCHIVE COMPONENT development)
  endif()
endforeach()
if(ZVXG_MANY)
  install(TARGETS zvxgmany zvxgmany_static EXPORT zvxg
    RUNTIME COMPONENT many
    LIBRARY COMPONENT many NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ TYPE INCLUDE COMPONENT development)

install(EXPORT zvxg NAMESPACE zvxg:: FILE zvxg-config.cmake
  DESTINATION ${cmakeFiles} COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zvxg-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zvxg-config-version.cmake
  DESTINATION ${cmakeFiles} COMPONENT development)

file(RELATIVE_PATH fromPkgConfig /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" fromPkgConfig ${fromPkgConfig})
set(packages zvxg)
if(ZVXG_MANY)
  list(APPEND packages zvxgmany)
endif()
foreach(package IN LISTS packages)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/${package}.pc.in ${PROJECT_BINARY_DIR}/${package}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${package}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()

if(TARGET zvxg-bench)
  file(RELATIVE_PATH fromTools /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(zvxg-bench PROPERTIES INSTALL_RPATH "$ORIGIN/${fromTools}")
  install(TARGETS zvxg-bench RUNTIME COMPONENT tools)
  if(NOT WIN32)
    compress(${PROJECT_SOURCE_DIR}/tools/zvxg-bench/zvxg-bench.1 zvxg-bench.1.gz)
    install(FILES ${PROJECT_BINARY_DIR}/zvxg-bench.1.gz
      DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  endif()
endif()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs ${PROJECT_SOURCE_DIR}/examples
  TYPE DOC COMPONENT documentation
  PATTERN CMakeLists.txt EXCLUDE
  PATTERN *.in EXCLUDE
  PATTERN *.csv EXCLUDE
  PATTERN *_test.* EXCLUDE)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  TYPE DOC COMPONENT documentation)
