/* A first program: the power of twelve samples at each frequency, and the inverse transform. */
#include <stdio.h>
#include <zvxg.h>

int main(void) {
  /* A mean of 1, a cosine of amplitude 2 with period 4, one of amplitude 0.5 with period 2. */
  const float period[4] = {3.5f, 0.5f, -0.5f, 0.5f};
  Complex32 signal[12], spectrum[12], again[12];
  for (int n = 0; n < 12; ++n) {
    signal[n].re = period[n % 4];
    signal[n].im = 0;
  }

  /* With this flag the forward transform divides by N, the inverse by nothing. */
  int32_t status = zvxgDFTFwd_CToC_12_32fc(signal, spectrum, zvxDivFwdByN);
  if (status == zvxOk) status = zvxgDFTInv_CToC_12_32fc(spectrum, again, zvxDivFwdByN);
  if (status != zvxOk) {
    fprintf(stderr, "first: the transform returned status %d\n", (int)status);
    return 1;
  }

  puts(" n   signal    power     back");
  for (int n = 0; n < 12; ++n) {
    const Complex32 x = spectrum[n];
    printf("%2d %8.3f %8.3f %8.3f\n", n, signal[n].re, x.re * x.re + x.im * x.im, again[n].re);
  }
  return 0;
}
