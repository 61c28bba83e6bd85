#include "dct4/execute.h"

#include "dct4/tiles.h"

namespace zvxg::dct4 {
namespace {

// The sizes of an array, in bytes, at which the order of work changes; a plan touches five arrays and
// more. On Zen 4, with caches of 32 KB and 1 MB, collecting costs up to 1 % at kCollectFrom and gains 8 %
// at twice that size. On Zen 5 it gains a fifth at once and a half there. From kTileFrom on, the third
// level, 32 MB that others use too, does not keep the arrays from one stage to the next.
constexpr std::size_t kCollectFrom = std::size_t{128} << 10;
constexpr std::size_t kTileFrom = std::size_t{2} << 20;
constexpr std::size_t kStreamFrom = std::size_t{8} << 20;

template <class T>
struct Contiguous {
  const T* src;
  T* dst;

  void runLeaves(uint32_t state, const LeafStage<T>& stage) const { dct4::runLeaves(state, stage); }
  void runRoot(uint32_t state, const RootStage<T>& stage) const { dct4::runRoot(state, stage); }
};

}  // namespace

Schedule chooseSchedule(std::size_t bytes) {
  if (bytes < kCollectFrom) return {Writing::Direct, Writing::Direct, false};
  if (bytes < kTileFrom) return {Writing::Collected, Writing::Direct, false};
  return {bytes < kStreamFrom ? Writing::Collected : Writing::Streamed, Writing::Streamed, true};
}

template <class T>
void execute(const Dct4Spec& spec, const T* src, T* dst, Schedule schedule) {
  if (!schedule.tiles || !runInTiles(spec, src, dst, schedule)) {
    const Contiguous<T> ends = {src, dst};
    Walk<T, Contiguous<T>>(ends, schedule).run(spec);
  }
  // Makes streamed lines visible to other threads before anything that the caller stores next.
  if (schedule.inner == Writing::Streamed || schedule.outer == Writing::Streamed) _mm_sfence();
}

template void execute<float>(const Dct4Spec&, const float*, float*, Schedule);
template void execute<double>(const Dct4Spec&, const double*, double*, Schedule);

}  // namespace zvxg::dct4
