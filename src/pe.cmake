# How the libraries are compiled and linked for Windows, by MinGW's g++ or by clang and lld; elf.cmake is
# the same for ELF. docs/windows.md describes what comes out.

# What is linked into the DLL says nothing of exporting, because the list of functions does, and the same
# objects are in the archive. g++ aligns frames to 16 bytes only (GCC bug 54412), so that saved vectors
# of 32 bytes would lie at odd multiples of 16: the assembler makes all their moves unaligned ones. What
# g++ knows of a callee's registers makes it forget vzeroupper behind the call.
set(formatOptions -DZVXG_STATIC
  "$<$<CXX_COMPILER_ID:GNU>:-Wa,-muse-unaligned-vector-move;-fno-ipa-ra>")
set(formatLibraries)

# The DLLs have the names that callers know; that of zvxg is in the version record.
set(tag_base e9)
set(tag_v3 v3)
set(tag_v4 v4)
set(release ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(dll_zvxg zvxgen${tag_${ZVXG_LEVEL}}-${release})
set(dll_zvxgmany zvxgmany-${release})
set(dll_zvxcore zvxcore)

find_program(LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14 REQUIRED)

# shared_library(LIBRARY)
# Nothing of the compiler runs at loading or unloading, or has to be there at run time.
function(shared_library library)
  set_target_properties(${library} PROPERTIES
    PREFIX "" OUTPUT_NAME ${dll_${library}} IMPORT_PREFIX lib
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/src
    ARCHIVE_OUTPUT_NAME ${library})
  set(dll ${dll_${library}}.dll)
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${library}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/src/frame/version.rc.in ${resource} @ONLY)
  target_sources(${library} PRIVATE ${PROJECT_SOURCE_DIR}/src/frame/dll_entry.cpp ${resource})
  target_link_options(${library} PRIVATE -nostartfiles -static-libgcc LINKER:--no-insert-timestamp)
endfunction()

# stands_alone(PROGRAM)  It needs no DLL but those of the library.
function(stands_alone program)
  target_link_options(${program} PRIVATE -static)
  target_link_libraries(${program} PRIVATE pthread)
endfunction()

# archive(LIBRARY)
function(archive library)
  target_compile_definitions(${library} INTERFACE ZVXG_STATIC)
endfunction()

# exports(LIBRARY DEFINITION)  makes it export what that file lists and nothing else, and gives it an
# import library for Microsoft's linker beside the one for MinGW's.
function(exports library definition)
  target_sources(${library} PRIVATE ${definition})
  set(import ${PROJECT_BINARY_DIR}/src/${library}.lib)
  add_custom_command(OUTPUT ${import}
    COMMAND ${LLVM_DLLTOOL} -m i386:x86-64 -D ${dll_${library}}.dll -d ${definition} -l ${import}
    DEPENDS ${definition}
    VERBATIM)
  add_custom_target(${library}_import ALL DEPENDS ${import})
  set_target_properties(${library} PROPERTIES ZVXG_LIB ${import})
endfunction()

# exports_transforms(LIBRARY)
function(exports_transforms library)
  set(definition ${CMAKE_CURRENT_BINARY_DIR}/${library}.def)
  printed(${definition} zvxg_interface_list def ${library})
  exports(${library} ${definition})
endfunction()

# exports_core(LIBRARY)
function(exports_core library)
  exports(${library} ${PROJECT_SOURCE_DIR}/src/core/zvxcore.def)
endfunction()

# requires_level(LIBRARY LEVEL)  There is no such mark.
function(requires_level library level)
endfunction()
