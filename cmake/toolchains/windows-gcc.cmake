# Windows on x86-64 by MinGW-w64's g++, with the C++ library for POSIX threads, which the tests use.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
