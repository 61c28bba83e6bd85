#include "interface.h"
#include "zvxg.h"

namespace api {
namespace {

#define ZVXG_FUNCTION(symbol, ...) {#symbol, __VA_ARGS__, reinterpret_cast<void*>(&symbol)},
#define ZVXG_MANY_FUNCTION(symbol, ...)
const Function kFunctions[] = {
#include "interface.table"
};

}  // namespace

std::span<const Function> linkedFunctions() { return kFunctions; }

}  // namespace api
