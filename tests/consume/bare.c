/* A program for Microsoft's linker that needs nothing but the libraries: its exit status says whether
 * transforms gave what they have to. */
#include <zvxg_many.h>

int _fltused; /* asked for wherever floating-point numbers are used */

int mainCRTStartup(void) {
  const Complex32 impulse[12] = {{1, 0}};
  Complex32 spectrum[12];
  if (zvxgDFTFwd_CToC_12_32fc(impulse, spectrum, zvxNoDiv) != zvxOk) return 1;
  for (int k = 0; k < 12; ++k) {
    if (spectrum[k].re != 1 || spectrum[k].im != 0) return 2;
  }
  Complex32 again[12];
  if (zvxgDFTInv_CToC_Many_32fc(spectrum, 1, 12, again, 1, 12, 12, 1, zvxNoDiv) != zvxOk) return 4;
  for (int n = 0; n < 12; ++n) {
    if (again[n].re != 12 * impulse[n].re || again[n].im != 0) return 5;
  }
  const char* const name = zvxgenGetLibVersion()->fileName;
  return name[0] == 'z' ? 0 : 3;
}
