# What both toolchains for Windows have in common: MinGW's libraries, with POSIX threads, which the tests
# use; where other libraries are looked for; and that programs run under Wine, if it is there: without a
# display, messages or questions, in a directory of the build.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-libgcc-file-name
  OUTPUT_VARIABLE libgcc COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET libgcc PARENT_PATH mingw)
# Clang does not look into a directory whose name says which threads it is for.
set(ZVXG_CLANG_FOR_MINGW --target=x86_64-w64-mingw32
  -isystem ${mingw}/include/c++ -isystem ${mingw}/include/c++/x86_64-w64-mingw32)
set(ZVXG_CLANG_LINKS_MINGW -fuse-ld=lld -L${mingw})

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
  set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()

find_program(WINE NAMES wine64 PATHS /usr/lib/wine)
if(WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_COMMAND} -E env WINEPREFIX=${CMAKE_BINARY_DIR}/wine
    WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= DISPLAY= ${WINE})
endif()
