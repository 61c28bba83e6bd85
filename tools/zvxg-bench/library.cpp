#include "library.h"

#include <cstring>

#include "loader.h"
#include "zvxg_many.h"

namespace bench {

namespace {

template <class Function>
void* libraryOfProgram(Function* function) {
  return api::libraryOfProgram(reinterpret_cast<const void*>(function));
}

}  // namespace

Library::Library(const std::string& path)
    : handle_(path.empty() ? libraryOfProgram(zvxgenGetLibVersion) : api::openLibrary(path)),
      many_(path.empty() ? libraryOfProgram(zvxgManyLevel) : nullptr) {}

void* Library::find(const std::string& symbol) const {
  void* const address = api::findSymbol(handle_, symbol);
  return address || !many_ ? address : api::findSymbol(many_, symbol);
}

std::vector<api::Function> Library::found(std::span<const api::Function> list) const {
  std::vector<api::Function> functions(list.begin(), list.end());
  for (api::Function& function : functions) function.address = find(function.symbol);
  return functions;
}

std::vector<api::Function> Library::functions() const { return found(api::functions()); }

std::vector<api::Function> Library::manyFunctions() const {
  if (!many_ && !find("zvxgManyLevel")) return {};
  return found(api::manyFunctions());
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
