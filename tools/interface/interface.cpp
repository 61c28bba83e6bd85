#include "interface.h"

namespace api {
namespace {

#define ZVXG_FUNCTION(symbol, ...) {#symbol, __VA_ARGS__},
#define ZVXG_MANY_FUNCTION(symbol, ...)
constexpr Function kFunctions[] = {
#include "interface.table"
};

#undef ZVXG_FUNCTION
#undef ZVXG_MANY_FUNCTION
#define ZVXG_FUNCTION(symbol, ...)
#define ZVXG_MANY_FUNCTION(symbol, ...) {#symbol, __VA_ARGS__},
constexpr Function kManyFunctions[] = {
#include "interface.table"
};

}  // namespace

std::span<const Function> functions() { return kFunctions; }

std::span<const Function> manyFunctions() { return kManyFunctions; }

}  // namespace api
