# Writes debian/ of a source package into OUTPUT, from the packages that packaging/debian.cmake has told
# cpack in CONFIGURED: their names, texts and dependencies are stated there only.

include(${CONFIGURED}/CPackConfig.cmake)
set(here ${CMAKE_CURRENT_LIST_DIR})
set(control "Source: ${CPACK_DEBIAN_PACKAGE_SOURCE}
Section: libs
Priority: optional
Maintainer: ${CPACK_PACKAGE_CONTACT}
Build-Depends: debhelper-compat (= 13), cmake, dh-sequence-numpy3, dh-sequence-python3, ninja-build,
 pkg-config, python3-dev, python3-numpy
Standards-Version: 4.6.2
Rules-Requires-Root: no
")
set(installs)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER CPACK_DEBIAN_${component} prefix)
  set(name ${${prefix}_PACKAGE_NAME})
  set(architecture amd64)
  if(${prefix}_PACKAGE_ARCHITECTURE STREQUAL all)
    set(architecture all)
  endif()
  set(depends "\${misc:Depends}")
  if(${prefix}_PACKAGE_SHLIBDEPS)
    string(PREPEND depends "\${shlibs:Depends}, ")
  endif()
  if(${prefix}_PACKAGE_DEPENDS)
    string(REGEX REPLACE "\\(= [^)]*\\)" "(= \${binary:Version})" others "${${prefix}_PACKAGE_DEPENDS}")
    # The versions of Python and NumPy are those of the build, and dh_python3 tells them.
    string(REGEX REPLACE "python3 \\(>=.*, python3-numpy-abi[0-9]+" "\${python3:Depends}, python3-numpy"
      others "${others}")
    string(APPEND depends ", ${others}")
  endif()
  string(REGEX REPLACE "\n" "\n " description "${${prefix}_DESCRIPTION}")
  string(APPEND control "
Package: ${name}
Architecture: ${architecture}
Section: ${${prefix}_PACKAGE_SECTION}
Depends: ${depends}
Description: ${description}
")
  if(${prefix}_PACKAGE_SUGGESTS)
    string(REGEX REPLACE "\nDescription: ([^\n]*\n( [^\n]*\n)*)$"
      "\nSuggests: ${${prefix}_PACKAGE_SUGGESTS}\nDescription: \\1" control "${control}")
  endif()
  string(APPEND installs "\tDESTDIR=debian/${name} cmake --install $(build) --component ${component}\n")
  foreach(kind symbols lintian-overrides)
    if(EXISTS ${here}/${name}.${kind})
      file(COPY ${here}/${name}.${kind} DESTINATION ${OUTPUT})
    endif()
  endforeach()
endforeach()
file(WRITE ${OUTPUT}/control "${control}")
foreach(file copyright changelog)
  file(COPY ${here}/${file} DESTINATION ${OUTPUT})
endforeach()
file(WRITE ${OUTPUT}/source/format "3.0 (quilt)\n")
file(WRITE ${OUTPUT}/rules "#!/usr/bin/make -f
export DEB_BUILD_MAINT_OPTIONS = hardening=+all optimize=-lto
build = obj-$(DEB_HOST_GNU_TYPE)
include /usr/share/dpkg/architecture.mk

%:
\tdh $@ --buildsystem=cmake+ninja

override_dh_auto_configure:
\tdh_auto_configure -- -DZVXG_TESTS=OFF -DZVXG_EXAMPLES=OFF -DZVXG_PYTHON=ON \\
\t  -DPython_EXECUTABLE=/usr/bin/python3

override_dh_auto_test:
\t$(build)/tools/zvxg-bench/zvxg-bench verify

override_dh_auto_install:
${installs}")
file(CHMOD ${OUTPUT}/rules PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
