#include "dct4/radix.h"

#include "zvxg.h"

namespace zvxg::dct4 {

int32_t chooseRadix(int32_t* result, int32_t value) {
  struct Rule {
    int32_t lowest, radix;
  };
  static constexpr Rule kRules[] = {{512, 32}, {128, 16}, {32, 8}, {16, 4}, {4, 2}};
  for (const Rule& rule : kRules) {
    if (value >= rule.lowest && value % rule.radix == 0) {
      *result = rule.radix;
      return zvxOk;
    }
  }
  return zvxErrLength;
}

}  // namespace zvxg::dct4
