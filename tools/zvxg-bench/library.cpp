#include "library.h"

#include <dlfcn.h>

#include "zvxg.h"

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
  return std::string(reinterpret_cast<decltype(&zvxgenGetLibVersion)>(address)()->versionText) +
         ", " + (isPlaced ? place.dli_fname : "file unknown");
}

}  // namespace bench
