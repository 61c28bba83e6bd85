// Batches of libzvxgmany, of any layout, at any place and level: every transform has the bits of the
// single call, and nothing else in memory changes. Choices are read from the end of an input and
// numbers from its start; where nothing is left, choices are 0 and numbers come from a generator. A
// finding stops the program.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <vector>

#include "batches.h"
#include "interface.h"
#include "sanitize/exact.h"
#include "zvxg_many.h"

namespace fuzz {
namespace {

using api::Batch;
using api::kFlags;
using api::Role;
using api::Transform;
using tests::Exact;
using tests::Places;
using tests::Shape;

const api::Exports& exports() {
  static const api::Exports kExports(api::linkedFunctions());
  return kExports;
}

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what);
  std::abort();
}

class Input {
 public:
  Input(const uint8_t* data, std::size_t size) : rest_(data, size) {}

  // One of 0 .. count - 1; count is at most 2^16.
  uint32_t choice(std::size_t count) {
    return taken<uint16_t>(true) % static_cast<uint32_t>(count);
  }

  // Numbers of any bits, or of moderate size, so that most results can be compared with a sum.
  template <class T>
  void fill(std::span<T> numbers) {
    const bool anyBits = choice(4) == 0;
    for (T& number : numbers) {
      if (anyBits) {
        number = taken<T>(false);
      } else if (rest_.size() > kForChoices) {
        number = static_cast<T>(taken<int8_t>(false)) / 16;
      } else {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        number = static_cast<T>(static_cast<int32_t>(state_ >> 32)) / (1 << 30);
      }
    }
  }

 private:
  // Of long arrays, the numbers leave so much to the choices that come after them.
  static constexpr std::size_t kForChoices = 32;

  template <class Value>
  Value taken(bool fromEnd) {
    Value value = 0;
    const std::size_t available =
        fromEnd ? rest_.size() : rest_.size() - std::min(rest_.size(), kForChoices);
    const std::size_t count = std::min(sizeof value, available);
    if (count == 0) return value;
    std::memcpy(&value, (fromEnd ? rest_.last(count) : rest_.first(count)).data(), count);
    rest_ = fromEnd ? rest_.first(rest_.size() - count) : rest_.subspan(count);
    return value;
  }

  std::span<const uint8_t> rest_;
  uint64_t state_ = 1;
};

// The same bits. NaN equals any NaN, as its payload depends on the order of the operands of a sum.
template <class T>
bool sameNumbers(std::span<const T> a, std::span<const T> b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](T x, T y) {
    return (std::isnan(x) && std::isnan(y)) || std::memcmp(&x, &y, sizeof x) == 0;
  });
}

constexpr int32_t kLongestPlan = 256;

const std::vector<Transform>& fuzzed() {
  static const std::vector<Transform> kFuzzed = [] {
    std::vector<Transform> list;
    for (const api::Function& function : api::linkedManyFunctions()) {
      if (!function.isMany()) continue;
      const auto lengths = api::planLengths(function.bits, kLongestPlan);
      std::ranges::copy(exports().transformsOf(function, lengths), std::back_inserter(list));
    }
    return list;
  }();
  return kFuzzed;
}

// Elements have places of their own, with gaps or without, or may overlap.
Batch::Side layoutOf(Input& input, Shape side, std::ptrdiff_t howmany, bool mayOverlap) {
  const auto any = [&] { return std::ptrdiff_t{input.choice(9)} - 4; };
  if (mayOverlap && input.choice(4) == 0) return {any(), any()};
  const bool isElementMajor = input.choice(2) == 0;
  const auto inner = isElementMajor ? howmany : std::ptrdiff_t{side.elements};
  std::ptrdiff_t step = std::max<std::ptrdiff_t>(any() - 1, 1);
  std::ptrdiff_t leap = (inner - 1) * step + 1 + std::max<std::ptrdiff_t>(any(), 0);
  if (input.choice(4) == 0) step = -step;
  if (input.choice(4) == 0) leap = -leap;
  return isElementMajor ? Batch::Side{leap, step} : Batch::Side{step, leap};
}

template <class T>
void tryBatch(Input& input, const Transform& many) {
  Transform single = many;
  single.function = &exports().single(*many.function);
  const int32_t flag = kFlags[input.choice(4)];
  zvxgManyLimitLevel(input.choice(2) == 0 ? INT32_MAX : zvxManyAvx);
  // Mostly a few turns of any kernel and some left over, sometimes more than the caches hold.
  const std::ptrdiff_t howmany =
      input.choice(1 << 10) == 1 ? (1 << 20) / many.points + 3 : 1 + input.choice(70);

  const auto shape = [](std::size_t bytes, int parts) {
    return Shape{static_cast<int>(bytes / sizeof(T)) / parts, parts};
  };
  Shape from = shape(many.sourceBytes, many.sourceParts());
  const Shape to = shape(many.destinationBytes, many.destinationParts());
  Batch batch = {howmany, {}, layoutOf(input, to, howmany, false)};
  batch.source = layoutOf(input, from, howmany, true);
  const bool inPlace = from.parts == to.parts && input.choice(4) == 0;
  if (inPlace) from = to, batch.source = batch.destination;
  const Places sources(from, batch.source, howmany), results(to, batch.destination, howmany);

  Exact memory(many.workBytes);
  const void* const work = exports().prepare(single, memory.data());

  std::vector<T> source(sources.size()), wanted(results.size(), T(-77));
  input.fill(std::span(source));
  if (inPlace) wanted = source;
  Exact src(source.size() * sizeof(T), input.choice(64));
  Exact dst(wanted.size() * sizeof(T), input.choice(64));
  std::memcpy(src.data(), source.data(), src.bytes());
  std::memcpy(dst.data(), wanted.data(), dst.bytes());

  tests::callSingly(from, to, batch, source, &wanted, [&](const T* x, T* y) {
    require(single.call(x, y, flag, work) == zvxOk, "a good single call");
  });

  const bool ownsBuffer = many.function->takes(Role::Buffer) && input.choice(2) == 0;
  require(many.call((inPlace ? dst : src).data() + sources.first() * sizeof(T),
                    dst.data() + results.first() * sizeof(T), flag, ownsBuffer ? nullptr : work,
                    batch) == zvxOk,
          "a good call");
  require(std::memcmp(src.data(), source.data(), src.bytes()) == 0, "a source was written");
  std::vector<T> found(wanted.size());
  std::memcpy(found.data(), dst.data(), dst.bytes());
  require(sameNumbers<T>(wanted, found), "not what the single calls do");
}

}  // namespace
}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const auto& transforms = fuzz::fuzzed();
  const api::Transform& many = transforms[input.choice(transforms.size())];
  if (many.function->bits == 32) {
    fuzz::tryBatch<float>(input, many);
  } else {
    fuzz::tryBatch<double>(input, many);
  }
  return 0;
}
