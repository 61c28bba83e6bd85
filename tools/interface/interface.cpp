#include "interface.h"

namespace api {
namespace {

#define ZVXG_FUNCTION(symbol, ...) {#symbol, __VA_ARGS__},
constexpr Function kFunctions[] = {
#include "interface.table"
};

}  // namespace

std::span<const Function> functions() { return kFunctions; }

}  // namespace api
