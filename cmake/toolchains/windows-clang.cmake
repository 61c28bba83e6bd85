# Windows on x86-64 by clang++ and lld, with the C and C++ libraries of MinGW-w64's g++.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)

# Clang does not look into a directory whose name says which threads the libraries are for.
execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-libgcc-file-name
  OUTPUT_VARIABLE libgcc COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET libgcc PARENT_PATH directory)
set(CMAKE_CXX_FLAGS_INIT
  "-isystem ${directory}/include/c++ -isystem ${directory}/include/c++/x86_64-w64-mingw32")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -L${directory}")
endforeach()
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
