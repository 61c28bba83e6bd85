// The version record. Its values are part of the interface and belong to the release. Callers
// compare them, so the build does not set any of them, which also keeps the build reproducible.

#include <cstddef>

#include "zvxg.h"

namespace {

// Callers of other languages read the record by offset.
static_assert(offsetof(VersionRecord, cpuTag) == 16);
static_assert(offsetof(VersionRecord, fileName) == 24);
static_assert(offsetof(VersionRecord, buildDate) == 40);
static_assert(sizeof(VersionRecord) == 48);

constexpr VersionRecord kVersion = {
    .major = 6,
    .minor = 1,
    .buildSeries = 137,
    .buildNumber = 300,  // a count of its own, unrelated to the ".20" below
    .cpuTag = {'e', '9', '\0', '\0'},
    .fileName = "zvxgene9-6.1.dll",  // the name callers know, the same on every platform
    .versionText = "6.1 build 137.20",
    .buildDate = "Jun 10 2009",
};

}  // namespace

extern "C" const VersionRecord* zvxgenGetLibVersion(void) noexcept { return &kVersion; }
