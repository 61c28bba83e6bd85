// Batches of libzvxgmany, of any layout, at any place and level: every transform has the bits of the
// single call, and nothing else in memory changes.

#include "fuzz.h"
#include "zvxg_many.h"

namespace fuzz {
namespace {

using api::Batch;
using api::Role;
using api::Transform;

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

// The elements of a batch on one side, of so many numbers each.
struct Side {
  int elements, parts;
  std::ptrdiff_t howmany;
  Batch::Side layout = {};

  std::ptrdiff_t lowest() const {
    return std::min(alongElements(), std::ptrdiff_t{0}) +
           std::min(alongTransforms(), std::ptrdiff_t{0});
  }
  std::ptrdiff_t highest() const {
    return std::max(alongElements(), std::ptrdiff_t{0}) +
           std::max(alongTransforms(), std::ptrdiff_t{0});
  }
  std::size_t numbers() const { return (highest() - lowest() + 1) * parts; }
  // Of the first number of the first element, in the array.
  std::ptrdiff_t start() const { return -lowest() * parts; }
  std::ptrdiff_t place(std::ptrdiff_t k, int i) const {
    return start() + (k * layout.dist + i * layout.stride) * parts;
  }

 private:
  std::ptrdiff_t alongElements() const { return (elements - 1) * layout.stride; }
  std::ptrdiff_t alongTransforms() const { return (howmany - 1) * layout.dist; }
};

// Elements have places of their own, with gaps or without, or may overlap.
Batch::Side layoutOf(Input& input, const Side& side, bool mayOverlap) {
  const auto any = [&] { return std::ptrdiff_t{input.choice(9)} - 4; };
  if (mayOverlap && input.choice(4) == 0) return {any(), any()};
  const bool isElementMajor = input.choice(2) == 0;
  const auto inner = isElementMajor ? side.howmany : std::ptrdiff_t{side.elements};
  std::ptrdiff_t step = std::max<std::ptrdiff_t>(any() - 1, 1);
  std::ptrdiff_t leap = (inner - 1) * step + 1 + std::max<std::ptrdiff_t>(any(), 0);
  if (input.choice(4) == 0) step = -step;
  if (input.choice(4) == 0) leap = -leap;
  return isElementMajor ? Batch::Side{leap, step} : Batch::Side{step, leap};
}

template <class T>
void requireRefused(Input& input, const Transform& many, Batch batch, const void* work) {
  Exact none(0);  // not even a byte may be touched
  const bool hasFlag = many.function->takes(Role::Flag);
  int32_t badFlag = input.anyNumber();
  if (std::ranges::count(kFlags, badFlag) != 0) badFlag = 3;
  const auto status = [&](const void* src, void* dst) {
    return many.call(src, dst, badFlag, work, batch);
  };
  require(status(nullptr, none.data()) == zvxErrNullPointer, "a null source");
  require(status(none.data(), nullptr) == zvxErrNullPointer, "a null destination");
  require(!hasFlag || status(none.data(), none.data()) == zvxErrScaleFlag, "a bad flag");
  batch = {0, {PTRDIFF_MAX, 1}, {PTRDIFF_MIN, 1}};
  require(status(nullptr, nullptr) == (hasFlag ? zvxErrScaleFlag : zvxOk), "nothing to do");
  batch.howmany = -1 - std::int64_t{input.choice(1 << 16)};
  require(status(none.data(), none.data()) == zvxErrLength, "a negative number of transforms");
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

  const auto side = [&](std::size_t bytes, int parts) {
    return Side{static_cast<int>(bytes / sizeof(T)) / parts, parts, howmany};
  };
  Side from = side(many.sourceBytes, many.sourceParts());
  Side to = side(many.destinationBytes, many.destinationParts());
  to.layout = layoutOf(input, to, false);
  from.layout = layoutOf(input, from, true);
  const bool inPlace = from.parts == to.parts && input.choice(4) == 0;
  if (inPlace) from = to;
  const Batch batch = {howmany, from.layout, to.layout};

  Exact memory(many.workBytes);
  const void* const work = exports().prepare(single, memory.data());
  requireRefused<T>(input, many, batch, work);

  std::vector<T> source(from.numbers()), wanted(to.numbers(), T(-77));
  input.fill(std::span(source));
  if (inPlace) wanted = source;
  Exact src(source.size() * sizeof(T), input.choice(64));
  Exact dst(wanted.size() * sizeof(T), input.choice(64));
  std::memcpy(src.data(), source.data(), src.bytes());
  std::memcpy(dst.data(), wanted.data(), dst.bytes());

  std::vector<T> x(from.elements * from.parts), y(to.elements * to.parts);
  for (std::ptrdiff_t k = 0; k < howmany; ++k) {
    for (int i = 0; i < from.elements; ++i) {
      std::copy_n(&source[from.place(k, i)], from.parts, &x[i * from.parts]);
    }
    // A plan of an odd length leaves some as they were.
    for (int i = 0; i < to.elements; ++i) {
      std::copy_n(&wanted[to.place(k, i)], to.parts, &y[i * to.parts]);
    }
    require(single.call(x.data(), y.data(), flag, work) == zvxOk, "a good single call");
    for (int i = 0; i < to.elements; ++i) {
      std::copy_n(&y[i * to.parts], to.parts, &wanted[to.place(k, i)]);
    }
  }

  const bool ownsBuffer = many.function->takes(Role::Buffer) && input.choice(2) == 0;
  const auto at = [](Exact& array, const Side& s) { return array.data() + s.start() * sizeof(T); };
  require(many.call(at(inPlace ? dst : src, from), at(dst, to), flag, ownsBuffer ? nullptr : work,
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
