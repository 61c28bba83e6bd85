// The transforms of the family ZVXG_FUZZED, by name, by length and by plan: bits at any places, and the
// definition in long double.

#include "fuzz.h"
#include "interface.h"
#include "reference.h"

namespace fuzz {
namespace {

using api::Function;
using api::Role;
using api::Transform;

constexpr int32_t kLongestPlan = 1 << 12;

const std::vector<Transform>& fuzzed() {
  static const std::vector<Transform> kFuzzed = [] {
    std::vector<Transform> list;
    for (const Function& function : exports().functions()) {
      if (function.family != api::Family::ZVXG_FUZZED) continue;
      for (const Transform& transform :
           exports().transformsOf(function, api::planLengths(function.bits, kLongestPlan))) {
        if (transform.fills) list.push_back(transform);
      }
    }
    return list;
  }();
  return kFuzzed;
}

// Whether the numbers are finite and far from overflow and underflow in sums and products.
template <class T>
bool areOrdinary(const std::vector<T>& numbers) {
  T largest = 0;
  for (const T number : numbers) {
    if (!std::isfinite(number)) return false;
    largest = std::max(largest, std::abs(number));
  }
  return largest == 0 || (largest > T(1e-10) && largest < T(1e10));
}

// Whether the L2 norm of the error is below that of the expected numbers times the bound of the
// tests. The transforms are orthogonal but for a factor, so no source makes the latter small.
template <class T>
bool areClose(const reference::Numbers& expected, const T* actual, long double factor) {
  long double error = 0, norm = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const long double number = expected[i] * factor, difference = actual[i] - number;
    error += difference * difference;
    norm += number * number;
  }
  return std::sqrt(error) <= 4 * std::numeric_limits<T>::epsilon() * std::sqrt(norm);
}

template <class T>
void tryTransform(Input& input, const Transform& transform) {
  const Function& function = *transform.function;
  const int32_t flag = kFlags[input.choice(4)];

  // The plan of a direct length may end behind its block where that is not on a boundary of 32.
  const std::size_t place = function.isPlanned() ? input.choice(64) : 16 * input.choice(4);
  const std::size_t slack = function.isPlanned() && place % 32 != 0 ? 31 : 0;
  Exact memory(transform.workBytes + slack, place);
  const void* const work = function.takes(Role::Buffer) && input.choice(2) == 0
                               ? nullptr
                               : exports().prepare(transform, memory.data());
  require(!function.isPlanned() || work != nullptr, "a plan");

  std::vector<T> source(transform.sourceBytes / sizeof(T));
  input.fill(std::span(source));
  const auto call = [&](const void* src, void* dst) {
    return transform.call(src, dst, flag, work);
  };
  const auto numbers = [&](Exact& array) {
    return std::span<const T>(array.as<T>(), transform.destinationBytes / sizeof(T));
  };
  Exact aligned(transform.sourceBytes), result(transform.destinationBytes);
  std::memcpy(aligned.data(), source.data(), transform.sourceBytes);

  require(call(aligned.data(), result.data()) == zvxOk, "a good aligned call");
  Exact src(aligned, input.choice(64)), dst(transform.destinationBytes, input.choice(64));
  Exact both(aligned, input.choice(64), transform.destinationBytes);
  require(call(src.data(), dst.data()) == zvxOk, "a good call");
  require(call(both.data(), both.data()) == zvxOk, "a good call in place");
  std::vector<T> moved(2 * numbers(dst).size());  // to where their boundaries are
  std::memcpy(moved.data(), dst.data(), dst.bytes());
  std::memcpy(moved.data() + moved.size() / 2, both.data(), dst.bytes());
  const std::span<const T> all(moved);
  require(sameNumbers<T>(numbers(result), all.first(all.size() / 2)), "other bits at a place");
  require(sameNumbers<T>(numbers(result), all.last(all.size() / 2)), "other bits in place");
  require(std::memcmp(src.data(), source.data(), src.bytes()) == 0, "a source was written");

  const Function& kernel = *transform.kernel;
  if (kernel.layout == api::Layout::Ccs && kernel.direction == api::Direction::Inverse) {
    source[1] = 0;  // taken as zero, whatever is there
    if (transform.points % 2 == 0) source[transform.points + 1] = 0;
  }
  if (!areOrdinary(source)) return;
  const auto expected = reference::definition(transform, {source.begin(), source.end()});
  require(areClose(expected, numbers(result).data(), reference::factor(transform, flag)),
          "not the definition");
}

}  // namespace
}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const auto& transforms = fuzz::fuzzed();
  const api::Transform& transform = transforms[input.choice(transforms.size())];
  if (transform.function->bits == 32) {
    fuzz::tryTransform<float>(input, transform);
  } else {
    fuzz::tryTransform<double>(input, transform);
  }
  return 0;
}
