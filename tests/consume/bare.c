/* A program for Microsoft's linker that needs nothing but the library: its exit status says whether a
 * transform gave what it has to. */
#include <zvxg.h>

int _fltused; /* asked for wherever floating-point numbers are used */

int mainCRTStartup(void) {
  const Complex32 impulse[12] = {{1, 0}};
  Complex32 spectrum[12];
  if (zvxgDFTFwd_CToC_12_32fc(impulse, spectrum, zvxNoDiv) != zvxOk) return 1;
  for (int k = 0; k < 12; ++k) {
    if (spectrum[k].re != 1 || spectrum[k].im != 0) return 2;
  }
  const char* const name = zvxgenGetLibVersion()->fileName;
  return name[0] == 'z' ? 0 : 3;
}
