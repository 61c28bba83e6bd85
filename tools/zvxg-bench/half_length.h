// A DCT-IV made in the usual way from a complex FFT: FFTW's transform of half the length between
// two loops of rotations. It is a second peer, because FFTW's own DCT-IV is far from the best that
// its complex transforms allow.
#pragma once

#include <memory>

namespace bench {

template <class T>
class HalfLengthDct4 {
 public:
  HalfLengthDct4(int n, const T* source, T* dest, unsigned plannerFlags);
  ~HalfLengthDct4();
  void run() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace bench
