// The loader of the system, for programs that find functions by name at run time.
#pragma once

#include <string>

namespace api {

/// Throws std::runtime_error if there is no such library. What it defines is not seen by others.
void* openLibrary(const std::string& path);
void closeLibrary(void* library);

/// Where a program that is linked with `function` finds it by name: in itself and all it has loaded,
/// or where there is no such thing, in the library that has the function.
void* libraryOfProgram(const void* function);

/// Null if there is none.
void* findSymbol(void* library, const std::string& symbol);

/// The file that something was loaded from.
std::string fileOf(const void* address);

}  // namespace api
