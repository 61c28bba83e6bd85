#include "library.h"

#include <cstring>

#include "loader.h"

namespace bench {

Library::Library(const std::string& path)
    : handle_(path.empty()
                  ? api::libraryOfProgram(reinterpret_cast<const void*>(&zvxgenGetLibVersion))
                  : api::openLibrary(path)) {}

void* Library::find(const std::string& symbol) const { return api::findSymbol(handle_, symbol); }

std::vector<api::Function> Library::functions() const {
  std::vector<api::Function> functions(api::functions().begin(), api::functions().end());
  for (api::Function& function : functions) function.address = find(function.symbol);
  return functions;
}

std::string Library::describe() const {
  void* const address = find("zvxgenGetLibVersion");
  if (!address) return "of no version";
  return versionOf(*reinterpret_cast<decltype(&zvxgenGetLibVersion)>(address)()) + ", " +
         api::fileOf(address);
}

std::string versionOf(const VersionRecord& version) {
  const std::string tag(version.cpuTag, strnlen(version.cpuTag, sizeof version.cpuTag));
  return version.versionText + (", variant " + tag);
}

}  // namespace bench
