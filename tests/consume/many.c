/* A program that is linked with libzvxgmany: three points by both libraries. */
#include <zvxg_many.h>

int main(void) {
  const Complex32 signal[3] = {{1, 0}, {2, 0}, {3, 0}};
  Complex32 single[3], many[3];
  if (zvxgDFTFwd_CToC_32fc(signal, single, 3, zvxNoDiv) != zvxOk) return 1;
  if (zvxgDFTFwd_CToC_Many_32fc(signal, 1, 3, many, 1, 3, 3, 1, zvxNoDiv) != zvxOk) return 2;
  if (single[0].re != 6 || many[0].re != 6) return 3;
  return zvxgManyLevel() == zvxgManyLimitLevel(INT32_MAX) ? 0 : 4;
}
