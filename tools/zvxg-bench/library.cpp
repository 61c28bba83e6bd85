#include "library.h"

#include <dlfcn.h>

#include "zvxg.h"

namespace bench {

Library::Library(const std::string& path)
    : handle_(dlopen(path.empty() ? nullptr : path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (!handle_) throw std::runtime_error(dlerror());
}

void* Library::find(const std::string& symbol) const { return dlsym(handle_, symbol.c_str()); }

std::string Library::describe() const {
  const auto version = get<decltype(zvxgenGetLibVersion)>("zvxgenGetLibVersion");
  Dl_info place;
  const bool known = dladdr(reinterpret_cast<void*>(version), &place) != 0;
  return std::string(version()->versionText) + ", " + (known ? place.dli_fname : "file unknown");
}

}  // namespace bench
