// The exported functions of the DCT-IV, one body for both precisions: the checks of arguments and
// the choice between a direct kernel and the plan.

#include "dct4/direct.h"
#include "dct4/execute.h"
#include "dct4/plan.h"
#include "zvxg.h"

namespace zvxg::dct4 {
namespace {

template <class T>
int32_t checkedInit(Dct4Spec** spec, int32_t length, void* block) {
  if (spec == nullptr || block == nullptr) return zvxErrNullPointer;
  return planInit<T>(spec, length, block);
}

template <class T>
int32_t initAlloc(Dct4Spec** spec, int32_t length) {
  if (spec == nullptr) return zvxErrNullPointer;
  uint32_t size;
  if (const int32_t status = planSize<T>(length, &size); status != zvxOk) return status;
  void* const block = zvxMalloc(static_cast<int32_t>(size));
  const int32_t status = checkedInit<T>(spec, length, block);
  if (status != zvxOk) zvxFree(block);
  return status;
}

template <class T>
int32_t dismantleAndFree(Dct4Spec* spec) {
  if (spec == nullptr) return zvxErrNullPointer;
  planDismantle<T>(spec);
  zvxFree(spec->arena);
  return zvxOk;
}

template <class T>
int32_t transform(const T* src, T* dst, const Dct4Spec* spec) {
  if (spec == nullptr || src == nullptr || dst == nullptr) return zvxErrNullPointer;
  const uint32_t state = spec->state;
  if (state == 0 || state > kGeneralState<T>) return zvxErrPlanState;
  if (state == kGeneralState<T>) {
    execute(*spec, src, dst, chooseSchedule(sizeof(T) * static_cast<std::size_t>(spec->length)));
  } else {
    kDirectKernels<T>[state - 1](src, dst);
  }
  return zvxOk;
}

}  // namespace
}  // namespace zvxg::dct4

using namespace zvxg;

#define ZVXG_EXPORT(T, suffix)                                                           \
  int32_t zvxgDCT4GetSize_##suffix(int32_t length, uint32_t* size) noexcept {            \
    return dct4::planSize<T>(length, size);                                              \
  }                                                                                      \
  int32_t zvxgDCT4Init_##suffix(Dct4Spec** spec, int32_t length, void* block) noexcept { \
    return dct4::checkedInit<T>(spec, length, block);                                    \
  }                                                                                      \
  int32_t zvxgDCT4InitAlloc_##suffix(Dct4Spec** spec, int32_t length) noexcept {         \
    return dct4::initAlloc<T>(spec, length);                                             \
  }                                                                                      \
  int32_t zvxgDCT4Free_##suffix(Dct4Spec* spec) noexcept {                               \
    return dct4::dismantleAndFree<T>(spec);                                              \
  }                                                                                      \
  int32_t zvxgDCT4_##suffix(const T* src, T* dst, const Dct4Spec* spec) noexcept {       \
    return dct4::transform<T>(src, dst, spec);                                           \
  }

extern "C" {
ZVXG_EXPORT(float, 32f)
ZVXG_EXPORT(double, 64f)
}
