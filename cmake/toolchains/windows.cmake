# What both toolchains for Windows have in common: where libraries are looked for, and that programs run
# under Wine, if it is there: without a display, messages or questions, in a directory of the build.

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
