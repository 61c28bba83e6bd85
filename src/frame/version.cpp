// The version record. Its values are part of the interface and belong to the release. Callers
// compare them, so the build does not set any of them, which also keeps the build reproducible.

#include <cstddef>

#include "frame/level.h"
#include "zvxg.h"

namespace {

// Callers of other languages read the record by offset.
static_assert(offsetof(VersionRecord, cpuTag) == 16);
static_assert(offsetof(VersionRecord, fileName) == 24);
static_assert(offsetof(VersionRecord, buildDate) == 40);
static_assert(sizeof(VersionRecord) == 48);

// By level. The file name is the one that callers know, the same on every platform.
struct Variant {
  char tag[4];
  const char* fileName;
};
constexpr Variant kVariants[] = {
    {"e9", "zvxgene9-6.1.dll"}, {"v3", "zvxgenv3-6.1.dll"}, {"v4", "zvxgenv4-6.1.dll"}};
constexpr Variant kVariant = kVariants[static_cast<int>(zvxg::kLevel)];

constexpr VersionRecord kVersion = {
    .major = 6,
    .minor = 1,
    .buildSeries = 137,
    .buildNumber = 300,  // a count of its own, unrelated to the ".20" below
    .cpuTag = {kVariant.tag[0], kVariant.tag[1]},
    .fileName = kVariant.fileName,
    .versionText = "6.1 build 137.20",
    .buildDate = "Jun 10 2009",
};

}  // namespace

extern "C" const VersionRecord* zvxgenGetLibVersion(void) noexcept { return &kVersion; }
