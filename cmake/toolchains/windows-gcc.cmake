# Windows on x86-64 by MinGW's g++.

include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
