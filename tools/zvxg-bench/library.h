// The library that is measured or verified: the one that this program is linked with, or another
// file. Functions are found by name, so that one that is missing is a result and no failure to
// start.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "interface.h"
#include "zvxg.h"

namespace bench {

class Library {
 public:
  // An empty path is the library of this program, or what was loaded before it in its place.
  explicit Library(const std::string& path);

  void* find(const std::string& symbol) const;  // null if there is none

  // All of the list, of what is missing with a null address.
  std::vector<api::Function> functions() const;
  // The same of libzvxgmany; none if another file is libzvxg alone.
  std::vector<api::Function> manyFunctions() const;

  template <class Function>
  Function* get(const std::string& symbol) const {
    void* const address = find(symbol);
    if (!address) throw std::runtime_error(symbol + " is not in the library");
    return reinterpret_cast<Function*>(address);
  }

  std::string describe() const;  // version, variant and file

 private:
  std::vector<api::Function> found(std::span<const api::Function> list) const;

  void* handle_;
  void* many_;  // of this program, or null
};

std::string versionOf(const VersionRecord& version);  // with its variant

}  // namespace bench
