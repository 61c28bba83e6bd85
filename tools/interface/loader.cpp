#include "loader.h"

#include <filesystem>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace api {

#ifdef _WIN32

namespace {

HMODULE moduleOf(const void* address) {
  HMODULE module = nullptr;
  GetModuleHandleExA(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      static_cast<const char*>(address), &module);
  return module;
}

}  // namespace

void* openLibrary(const std::string& path) {
  // What the library imports is looked for in its own directory first. The system looks for a name
  // without a directory.
  const std::filesystem::path file = path;
  HMODULE const library = file.has_parent_path()
                              ? LoadLibraryExW(std::filesystem::absolute(file).c_str(), nullptr,
                                               LOAD_WITH_ALTERED_SEARCH_PATH)
                              : LoadLibraryW(file.c_str());
  if (library == nullptr) {
    throw std::runtime_error(path + " cannot be loaded: error " + std::to_string(GetLastError()));
  }
  return library;
}

void closeLibrary(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }

void* libraryOfProgram(const void* function) { return moduleOf(function); }

void* findSymbol(void* library, const std::string& symbol) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), symbol.c_str()));
}

std::string fileOf(const void* address) {
  char path[MAX_PATH];
  const DWORD length = GetModuleFileNameA(moduleOf(address), path, MAX_PATH);
  return length > 0 ? std::string(path, length) : "file unknown";
}

#else

void* openLibrary(const std::string& path) {
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  return library;
}

void closeLibrary(void* library) { dlclose(library); }

void* libraryOfProgram(const void*) { return dlopen(nullptr, RTLD_NOW | RTLD_LOCAL); }

void* findSymbol(void* library, const std::string& symbol) {
  return dlsym(library, symbol.c_str());
}

std::string fileOf(const void* address) {
  Dl_info place;
  return dladdr(address, &place) != 0 ? place.dli_fname : "file unknown";
}

#endif

}  // namespace api
