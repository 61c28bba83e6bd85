#include "library.h"

#include <dlfcn.h>

#include <cstring>

namespace bench {

Library::Library(const std::string& path)
    : handle_(dlopen(path.empty() ? nullptr : path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (!handle_) throw std::runtime_error(dlerror());
}

void* Library::find(const std::string& symbol) const { return dlsym(handle_, symbol.c_str()); }

std::vector<api::Function> Library::functions() const {
  std::vector<api::Function> functions(api::functions().begin(), api::functions().end());
  for (api::Function& function : functions) function.address = find(function.symbol);
  return functions;
}

std::string Library::describe() const {
  void* const address = find("zvxgenGetLibVersion");
  if (!address) return "of no version";
  Dl_info place;
  const bool isPlaced = dladdr(address, &place) != 0;
  return versionOf(*reinterpret_cast<decltype(&zvxgenGetLibVersion)>(address)()) + ", " +
         (isPlaced ? place.dli_fname : "file unknown");
}

std::string versionOf(const VersionRecord& version) {
  const std::string tag(version.cpuTag, strnlen(version.cpuTag, sizeof version.cpuTag));
  return version.versionText + (", variant " + tag);
}

}  // namespace bench
