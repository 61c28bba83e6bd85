#include "dct4_batches.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "fftw.h"
#include "half_length.h"

namespace bench {

template <class T>
Batch fftwDct4(const Side& side, Arrays arrays) {
  return fftwBatch<T>(arrays.source, side.n, [&](const Fftw<T>& fftw) {
    return fftw.planR2r(side.n, static_cast<T*>(arrays.source), static_cast<T*>(arrays.dest),
                        FftwKind::Redft11, plannerFlags(side.n));
  });
}

template <class T>
Batch halfLengthDct4(const Side& side, Arrays arrays) {
  const auto transform = std::make_shared<HalfLengthDct4<T>>(
      side.n, static_cast<T*>(arrays.source), static_cast<T*>(arrays.dest), plannerFlags(side.n));
  return [transform](int calls) {
    for (int i = 0; i < calls; ++i) transform->run();
  };
}

template <class T>
Batch copyBatch(const Side& side, Arrays arrays) {
  return [=](int calls) {
    for (int i = 0; i < calls; ++i) std::memcpy(arrays.dest, arrays.source, sizeof(T) * side.n);
  };
}

template <class T>
Batch dct4Batch(const Side& side, Arrays arrays) {
  const Dct4Planner<T> planner(side);
  const Batch batch = callBatch<const void*, void*, const Dct4Spec*>(side.function, arrays.source,
                                                                     arrays.dest, planner.make());
  return [planner, batch](int calls) { batch(calls); };
}

template <class T>
Batch dct4Planning(const Side& side, Arrays) {
  const Dct4Planner<T> planner(side);
  return [planner](int calls) {
    for (int i = 0; i < calls; ++i) planner.make();
  };
}

// Makes an estimated plan. FFTW keeps nothing of it except what it has learned before.
template <class T>
Batch fftwDct4Planning(const Side& side, Arrays arrays) {
  return [=, &fftw = Fftw<T>::get()](int calls) {
    for (int i = 0; i < calls; ++i) {
      fftw.destroy(fftw.planR2r(side.n, static_cast<T*>(arrays.source),
                                static_cast<T*>(arrays.dest), FftwKind::Redft11, kFftwEstimate));
    }
  };
}

template Batch fftwDct4<float>(const Side&, Arrays);
template Batch fftwDct4<double>(const Side&, Arrays);
template Batch halfLengthDct4<float>(const Side&, Arrays);
template Batch halfLengthDct4<double>(const Side&, Arrays);
template Batch copyBatch<float>(const Side&, Arrays);
template Batch copyBatch<double>(const Side&, Arrays);
template Batch dct4Batch<float>(const Side&, Arrays);
template Batch dct4Batch<double>(const Side&, Arrays);
template Batch dct4Planning<float>(const Side&, Arrays);
template Batch dct4Planning<double>(const Side&, Arrays);
template Batch fftwDct4Planning<float>(const Side&, Arrays);
template Batch fftwDct4Planning<double>(const Side&, Arrays);

}  // namespace bench
