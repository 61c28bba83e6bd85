# Debian packages, one for each component of cmake/install.cmake; `cpack` in the build directory.

set(version ${PROJECT_VERSION}-1)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/symbols.cmake)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "The zvxg authors <maintainers@zvxg.invalid>")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_SOURCE zvxg)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# package(COMPONENT NAME SECTION SUMMARY TEXT)
function(package component name section summary text)
  string(TOUPPER CPACK_DEBIAN_${component} prefix)
  set(${prefix}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(${prefix}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(${prefix}_DESCRIPTION "${summary}\n${text}" PARENT_SCOPE)
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
  # Only in the package, not where one installs everything.
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright
      ${PROJECT_BINARY_DIR}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()

compress(${CMAKE_CURRENT_LIST_DIR}/changelog changelog.Debian.gz)
set(CPACK_COMPONENTS_ALL)
package(runtime libzvxg6 libs "short signal transforms, shared libraries"
"Discrete Fourier and Hartley transforms of 2 to 64 points, Walsh-Hadamard
transforms of up to 8192 points and a DCT-IV of powers of two, in single and
double precision, for processors with AVX, and variants of the library for
those with AVX2 and AVX-512.")
if(ZVXG_MANY)
  package(many libzvxgmany6 libs "many short signal transforms at a time, shared library"
"The transforms of libzvxg6, many of one length in one call, by vectors of AVX
and AVX-512.")
endif()
package(development libzvxg-dev libdevel "short signal transforms, development files"
"Headers, archives, and files for CMake and pkg-config.")
package(documentation libzvxg-doc doc "short signal transforms, documentation"
"Documents and examples.")

# What is linked with libraries of another package finds them in the build.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)

# Each of the two writes its own lists of symbols and libraries there, by symbols.cmake. That of cpack
# would have a line for each variant of a library.
foreach(component RUNTIME MANY)
  set(CPACK_DEBIAN_${component}_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA
    ${PROJECT_BINARY_DIR}/${component}/symbols ${PROJECT_BINARY_DIR}/${component}/shlibs
    ${CMAKE_CURRENT_LIST_DIR}/triggers)
endforeach()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libzvxg6 (= ${version}), libc6-dev")
if(ZVXG_MANY)
  set(CPACK_DEBIAN_MANY_PACKAGE_DEPENDS "libzvxg6 (= ${version})")
  string(PREPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libzvxgmany6 (= ${version}), ")
endif()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libzvxg-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/libzvxg6.lintian-overrides
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME libzvxg6
  COMPONENT runtime EXCLUDE_FROM_ALL)

if(TARGET zvxg-bench)
  package(tools zvxg-tools utils "short signal transforms, measurements and checks"
"The program zvxg-bench, which lists, measures and verifies the transforms.")
  set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "libzvxg6 (= ${version})")
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "libfftw3-single3, libfftw3-double3") # peers, if present
endif()

if(TARGET zvxg_python AND NOT ZVXG_WHEEL)
  package(python python3-zvxg python "short signal transforms, Python package"
"Functions on NumPy and Dask arrays, short-time spectra, a program for those of
many recordings, and a backend of scipy.fft.")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
  get_directory_property(minor DIRECTORY ${PROJECT_SOURCE_DIR}/python
    DEFINITION Python_VERSION_MINOR)
  math(EXPR next "${minor} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "libzvxgmany6 (= ${version}), python3 (>= 3.${minor}), \
python3 (<< 3.${next}), python3-numpy, python3-numpy-abi9")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-scipy, python3-matplotlib, python3-pyfftw, \
python3-distributed, python3-xarray, python3-zarr, python3-soundfile")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA # modules are compiled where they are installed
    ${CMAKE_CURRENT_LIST_DIR}/python3-zvxg/postinst ${CMAKE_CURRENT_LIST_DIR}/python3-zvxg/prerm)
endif()

include(CPack)
