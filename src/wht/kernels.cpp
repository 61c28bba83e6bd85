// The exported functions of the Walsh-Hadamard family.

#include <array>
#include <cstdint>

#include "frame/entry.h"
#include "frame/frame.h"
#include "wht/blocking.h"
#include "wht/passes.h"

namespace zvxg::wht {
namespace {

// A body with the checks, for arrays on one boundary.
template <int kOrder, int kOutside, class Real>
ZVXG_INLINE inline int32_t body(const Real* src, Real* dst, int32_t flag, uint8_t* buffer) {
  static constexpr Factors<Real> kFactors = factorsOf<Real, kOrder>();
  const int32_t status = check(src, dst, flag);
  if (status != zvxOk) return status;
  constexpr int kBytes = bufferBytes<Real>(kOrder);
  const bool own = kBytes > 0 && buffer == nullptr;
  if (own) buffer = static_cast<uint8_t*>(zvxMalloc(kBytes));
  runPasses<kOrder, kOutside>(src, dst, kFactors.ofFlag[flag], reinterpret_cast<Real*>(buffer));
  if (own) zvxFree(buffer);
  return zvxOk;
}

// Not inlined, because the compiler would merge parts of it with the other body.
template <int kOrder, class Real>
[[gnu::noinline]] int32_t unalignedBody(const Real* src, Real* dst, int32_t flag, uint8_t* buffer) {
  return body<kOrder, 1>(src, dst, flag, buffer);
}

template <int kOrder, class Real>
int32_t kernel(const Real* src, Real* dst, int32_t flag, uint8_t* buffer) {
  // From v3 on, moves for any address are as fast at a boundary as those that demand it.
  if constexpr (kLevel != Level::base ||
                rowBytes<Real>(kBlockingOf<Real, kOrder>.row) == sizeof(Real)) {
    return body<kOrder, 1>(src, dst, flag, buffer);
  } else {
    if (!onBoundary<kBoundaryBytes>(src, dst)) return unalignedBody<kOrder>(src, dst, flag, buffer);
    return body<kOrder, kBoundaryBytes>(src, dst, flag, buffer);
  }
}

template <class Real>
int32_t bufferSize(int32_t order, uint32_t* size) {
  static constexpr auto kBytes = [] {
    std::array<uint32_t, kOrders> bytes{};
    for (int at = 0; at < kOrders; ++at) bytes[at] = bufferBytes<Real>(at + 1);
    return bytes;
  }();
  const uint32_t place = static_cast<uint32_t>(order) - 1;
  if (place >= kBytes.size()) return zvxErrLength;
  *size = kBytes[place];
  return zvxOk;
}

}  // namespace
}  // namespace zvxg::wht

extern "C" {

#define ZVXG_KERNEL(name, order, Real)                                               \
  int32_t name(const Real* src, Real* dst, int32_t flag, uint8_t* buffer) noexcept { \
    return zvxg::wht::kernel<order>(src, dst, flag, buffer);                         \
  }
ZVXG_KERNEL(zvxgWHT_1_32f, 1, float)
ZVXG_KERNEL(zvxgWHT_2_32f, 2, float)
ZVXG_KERNEL(zvxgWHT_3_32f, 3, float)
ZVXG_KERNEL(zvxgWHT_4_32f, 4, float)
ZVXG_KERNEL(zvxgWHT_5_32f, 5, float)
ZVXG_KERNEL(zvxgWHT_6_32f, 6, float)
ZVXG_KERNEL(zvxgWHT_7_32f, 7, float)
ZVXG_KERNEL(zvxgWHT_8_32f, 8, float)
ZVXG_KERNEL(zvxgWHT_9_32f, 9, float)
ZVXG_KERNEL(zvxgWHT_10_32f, 10, float)
ZVXG_KERNEL(zvxgWHT_11_32f, 11, float)
ZVXG_KERNEL(zvxgWHT_12_32f, 12, float)
ZVXG_KERNEL(zvxgWHT_13_32f, 13, float)
ZVXG_KERNEL(zvxgWHT_1_64f, 1, double)
ZVXG_KERNEL(zvxgWHT_2_64f, 2, double)
ZVXG_KERNEL(zvxgWHT_3_64f, 3, double)
ZVXG_KERNEL(zvxgWHT_4_64f, 4, double)
ZVXG_KERNEL(zvxgWHT_5_64f, 5, double)
ZVXG_KERNEL(zvxgWHT_6_64f, 6, double)
ZVXG_KERNEL(zvxgWHT_7_64f, 7, double)
ZVXG_KERNEL(zvxgWHT_8_64f, 8, double)
ZVXG_KERNEL(zvxgWHT_9_64f, 9, double)
ZVXG_KERNEL(zvxgWHT_10_64f, 10, double)
ZVXG_KERNEL(zvxgWHT_11_64f, 11, double)
ZVXG_KERNEL(zvxgWHT_12_64f, 12, double)
ZVXG_KERNEL(zvxgWHT_13_64f, 13, double)
#undef ZVXG_KERNEL

int32_t zvxgWHT_32f(const float* src, float* dst, int32_t order, int32_t flag,
                    uint8_t* buffer) noexcept {
  static constexpr decltype(&zvxgWHT_1_32f) kKernels[] = {
      zvxgWHT_1_32f,  zvxgWHT_2_32f,  zvxgWHT_3_32f, zvxgWHT_4_32f, zvxgWHT_5_32f,
      zvxgWHT_6_32f,  zvxgWHT_7_32f,  zvxgWHT_8_32f, zvxgWHT_9_32f, zvxgWHT_10_32f,
      zvxgWHT_11_32f, zvxgWHT_12_32f, zvxgWHT_13_32f};
  return zvxg::enter<1>(kKernels, order, src, dst, flag, buffer);
}

int32_t zvxgWHT_64f(const double* src, double* dst, int32_t order, int32_t flag,
                    uint8_t* buffer) noexcept {
  static constexpr decltype(&zvxgWHT_1_64f) kKernels[] = {
      zvxgWHT_1_64f,  zvxgWHT_2_64f,  zvxgWHT_3_64f, zvxgWHT_4_64f, zvxgWHT_5_64f,
      zvxgWHT_6_64f,  zvxgWHT_7_64f,  zvxgWHT_8_64f, zvxgWHT_9_64f, zvxgWHT_10_64f,
      zvxgWHT_11_64f, zvxgWHT_12_64f, zvxgWHT_13_64f};
  return zvxg::enter<1>(kKernels, order, src, dst, flag, buffer);
}

int32_t zvxgWHTGetBufferSize_32f(int32_t order, uint32_t* size) noexcept {
  return zvxg::wht::bufferSize<float>(order, size);
}

int32_t zvxgWHTGetBufferSize_64f(int32_t order, uint32_t* size) noexcept {
  return zvxg::wht::bufferSize<double>(order, size);
}

}  // extern "C"
