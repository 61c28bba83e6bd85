#include "interface.h"
#include "zvxg_many.h"

namespace api {
namespace {

#define ZVXG_FUNCTION(symbol, ...) {#symbol, __VA_ARGS__, reinterpret_cast<void*>(&symbol)},
#define ZVXG_MANY_FUNCTION(symbol, ...)
const Function kFunctions[] = {
#include "interface.table"
};

#undef ZVXG_FUNCTION
#undef ZVXG_MANY_FUNCTION
#define ZVXG_FUNCTION(symbol, ...)
#define ZVXG_MANY_FUNCTION(symbol, ...) {#symbol, __VA_ARGS__, reinterpret_cast<void*>(&symbol)},
const Function kManyFunctions[] = {
#include "interface.table"
};

}  // namespace

std::span<const Function> linkedFunctions() { return kFunctions; }

std::span<const Function> linkedManyFunctions() { return kManyFunctions; }

}  // namespace api
