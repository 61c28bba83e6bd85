/* A program that is linked with libzvxgmany: the columns of three rows of five, and the same one by
 * one. */
#include <string.h>
#include <zvxg_many.h>

enum {
  kLength = 3,
  kCount = 5
};

int main(void) {
  Complex32 rows[kLength][kCount], results[kLength][kCount], single[kLength];
  for (int i = 0; i < kLength; ++i) {
    for (int k = 0; k < kCount; ++k) {
      rows[i][k].re = (float)(i + 2 * k);
      rows[i][k].im = (float)(i - k);
    }
  }
  if (zvxgDFTFwd_CToC_Many_32fc(rows[0], kCount, 1, results[0], kCount, 1, kLength, kCount,
                                zvxDivBySqrtN) != zvxOk) {
    return 1;
  }
  for (int k = 0; k < kCount; ++k) {
    for (int i = 0; i < kLength; ++i) single[i] = rows[i][k];
    if (zvxgDFTFwd_CToC_32fc(single, single, kLength, zvxDivBySqrtN) != zvxOk) return 2;
    for (int i = 0; i < kLength; ++i) {
      if (memcmp(&single[i], &results[i][k], sizeof single[i]) != 0) return 3;
    }
  }
  return zvxgManyLevel() == zvxgManyLimitLevel(INT32_MAX) ? 0 : 4;
}
