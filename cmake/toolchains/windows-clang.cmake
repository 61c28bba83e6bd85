# Windows on x86-64 by clang and lld, with MinGW's libraries.

include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
list(JOIN ZVXG_CLANG_FOR_MINGW " " CMAKE_CXX_FLAGS_INIT)
foreach(kind EXE SHARED MODULE)
  list(JOIN ZVXG_CLANG_LINKS_MINGW " " CMAKE_${kind}_LINKER_FLAGS_INIT)
endforeach()
