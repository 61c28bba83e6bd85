# How the libraries are compiled and linked for ELF; pe.cmake is the same for Windows.

# It marks the targets of indirect jumps.
set(formatOptions -fcf-protection)
# The math library is one of its own.
set(formatLibraries m)

# shared_library(LIBRARY)
# -nostartfiles: nothing needs to run at loading or unloading. The start-up files would only add their
# hooks, remove the mark of -fcf-protection, and under -ffast-math change the control word.
function(shared_library library)
  set_target_properties(${library} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  target_link_options(${library} PRIVATE -nostartfiles LINKER:--as-needed,-z,defs
    LINKER:-z,relro,-z,now,-z,noexecstack,-z,text)
endfunction()

# stands_alone(PROGRAM)  It needs the libraries of the compiler, which every system has.
function(stands_alone program)
endfunction()

# archive(LIBRARY)
function(archive library)
endfunction()

# exports_transforms(LIBRARY)  makes it export the declared functions and nothing else, and find the
# libraries it needs in its own directory, if not where the loader looks anyway. The version script is
# anonymous, because a named version would be a symbol too. With -Bsymbolic-functions the loader need
# not look up the kernels in the tables of the by-length entries. zvxMalloc and zvxFree stay imports;
# if a program defines them, its definitions come before those of zvxcore.
function(exports_transforms library)
  set(map ${PROJECT_SOURCE_DIR}/src/exports.map)
  target_link_options(${library} PRIVATE
    LINKER:-Bsymbolic-functions LINKER:--version-script=${map})
  set_target_properties(${library} PROPERTIES
    LINK_DEPENDS ${map} INSTALL_RPATH "$ORIGIN" BUILD_WITH_INSTALL_RPATH ON)
  if(library MATCHES "^zvxg(many)?$") # for Windows, in a release
    printed(${CMAKE_CURRENT_BINARY_DIR}/${library}.def zvxg_interface_list def ${library})
  endif()
endfunction()

# exports_core(LIBRARY)  The two functions are all it has.
function(exports_core library)
endfunction()

# requires_level(LIBRARY LEVEL)  marks it, so that the loader refuses it where it could not run.
function(requires_level library level)
  if(NOT level STREQUAL base)
    target_link_options(${library} PRIVATE LINKER:-z,x86-64-${level})
  endif()
endfunction()
