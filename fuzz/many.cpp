// Batches of libzvxgmany, of any layout, at any place and level: every transform has the bits of the
// single call, and nothing else in memory changes. Choices are read from the end of an input and
// numbers of any bits from its start. A finding stops the program.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
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

// One of 0 .. count - 1; 0 where nothing is left of the input.
int32_t choice(FuzzedDataProvider& input, std::size_t count) {
  return input.ConsumeIntegralInRange<int32_t>(0, static_cast<int32_t>(count) - 1);
}

// Numbers of any bits, or of moderate size, so that most results can be compared with a sum.
template <class T>
void fill(FuzzedDataProvider& input, std::span<T> numbers) {
  std::mt19937 random(input.ConsumeIntegral<uint32_t>());
  const bool anyBits = choice(input, 4) == 1;
  for (T& number : numbers) {
    number = static_cast<T>(static_cast<int32_t>(random())) / (1 << 30);
    if (anyBits) input.ConsumeData(&number, sizeof number);
  }
}

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
Batch::Side layoutOf(FuzzedDataProvider& input, Shape side, std::ptrdiff_t howmany,
                     bool mayOverlap) {
  const auto any = [&] { return std::ptrdiff_t{choice(input, 9)} - 4; };
  if (mayOverlap && choice(input, 4) == 0) return {any(), any()};
  const bool isElementMajor = choice(input, 2) == 0;
  const auto inner = isElementMajor ? howmany : std::ptrdiff_t{side.elements};
  std::ptrdiff_t step = std::max<std::ptrdiff_t>(any() - 1, 1);
  std::ptrdiff_t leap = (inner - 1) * step + 1 + std::max<std::ptrdiff_t>(any(), 0);
  if (choice(input, 4) == 0) step = -step;
  if (choice(input, 4) == 0) leap = -leap;
  return isElementMajor ? Batch::Side{leap, step} : Batch::Side{step, leap};
}

template <class T>
void tryBatch(FuzzedDataProvider& input, const Transform& many) {
  Transform single = many;
  single.function = &exports().single(*many.function);
  const int32_t flag = kFlags[choice(input, 4)];
  zvxgManyLimitLevel(choice(input, 2) == 0 ? INT32_MAX : zvxManyAvx);
  // Mostly a few turns of any kernel and some left over, sometimes more than the caches hold.
  const std::ptrdiff_t howmany =
      choice(input, 1 << 10) == 1 ? (1 << 20) / many.points + 3 : 1 + choice(input, 70);

  Shape from = tests::sourceShape(many);
  const Shape to = tests::destinationShape(many);
  Batch batch = {howmany, {}, layoutOf(input, to, howmany, false)};
  batch.source = layoutOf(input, from, howmany, true);
  const bool inPlace = from.parts == to.parts && choice(input, 4) == 0;
  if (inPlace) from = to, batch.source = batch.destination;
  const Places sources(from, batch.source, howmany), results(to, batch.destination, howmany);

  Exact memory(many.workBytes);
  const void* const work = exports().prepare(single, memory.data());

  std::vector<T> source(sources.size()), wanted(results.size(), T(-77));
  Exact src(source.size() * sizeof(T), choice(input, 64));
  Exact dst(wanted.size() * sizeof(T), choice(input, 64));
  const bool ownsBuffer = many.function->takes(Role::Buffer) && choice(input, 2) == 0;
  fill(input, std::span(source));
  if (inPlace) wanted = source;
  std::memcpy(src.data(), source.data(), src.bytes());
  std::memcpy(dst.data(), wanted.data(), dst.bytes());

  tests::callSingly(from, to, batch, source, &wanted, [&](const T* x, T* y) {
    require(single.call(x, y, flag, work) == zvxOk, "a good single call");
  });

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
  FuzzedDataProvider input(data, size);
  const auto& transforms = fuzz::fuzzed();
  const api::Transform& many = transforms[fuzz::choice(input, transforms.size())];
  if (many.function->bits == 32) {
    fuzz::tryBatch<float>(input, many);
  } else {
    fuzz::tryBatch<double>(input, many);
  }
  return 0;
}
