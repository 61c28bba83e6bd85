// libzvxgmany: every transform of a batch has the bits of the single call, in every layout, and
// nothing else in memory changes. The properties run over all families, in the library as it is at
// each level that the processor has, and in a build whose text for AVX-512 is compiled for AVX.
//
// Environment, beside that of harness.h: ZVXG_KERNEL=CToC_Many only the functions with that in their
// name, ZVXG_MANY_LIBRARY another build of libzvxgmany.

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "batches.h"
#include "dct4.h"
#include "placement.h"
#include "reliability/allocator.h"
#include "reliability/observe.h"
#include "reliability/refusals.h"
#include "zvxg_many.h"

namespace tests {
namespace {

// ---- The library --------------------------------------------------------------------------------

struct Build {
  const char* name;
  const char* file;
  int32_t level;
};
const char* const kOther = std::getenv("ZVXG_MANY_LIBRARY");
const char* const kMany = kOther != nullptr ? kOther : ZVXG_MANY_FILE;
const Build kBuilds[] = {
    {"Avx", kMany, zvxManyAvx},
    {"Avx512", kMany, zvxManyAvx512},
#ifdef ZVXG_MANY_EMULATED_FILE
    {"EmulatedAvx512", ZVXG_MANY_EMULATED_FILE, zvxManyAvx512},
#endif
};

template <class Address>
Address find(const Library& library, const std::string& symbol) {
  void* const address = library.find(symbol);
  if (address == nullptr) throw std::runtime_error("no function " + symbol);
  return reinterpret_cast<Address>(address);
}

class Many : public testing::TestWithParam<Build> {
 public:
  static std::string name(const testing::TestParamInfo<Build>& info) { return info.param.name; }

 protected:
  void SetUp() override {
    const auto limit = find<decltype(&zvxgManyLimitLevel)>(library_, "zvxgManyLimitLevel");
    if (limit(GetParam().level) != GetParam().level) GTEST_SKIP() << "not on this processor";
  }

  Library library_{GetParam().file};
};

INSTANTIATE_TEST_SUITE_P(Levels, Many, testing::ValuesIn(kBuilds), Many::name);

// ---- Transforms ---------------------------------------------------------------------------------

using Layout = api::Batch::Side;

struct Batch : api::Batch {
  int32_t flag;
};

// A function of libzvxgmany at one of its lengths, and its single call.
template <class T>
class Transform {
 public:
  explicit Transform(const api::Transform& many)
      : many_(many),
        single_(many),
        runner_(single_),
        plan_(isPlanned() ? runner_.work() : nullptr) {
    single_.function = &exports().single(*many.function);
  }

  std::string label() const {
    return many_.function->symbol + (" of " + std::to_string(many_.selector));
  }
  int length() const { return many_.points; }
  bool isPlanned() const { return many_.function->isPlanned(); }
  int32_t bufferBytes() const { return static_cast<int32_t>(many_.workBytes); }
  std::vector<int32_t> flags() const { return flagsOf(many_); }
  Shape source() const { return sourceShape(many_); }
  Shape destination() const { return destinationShape(many_); }

  int32_t single(const T* src, T* dst, int32_t flag) const {
    return single_.call(src, dst, flag, plan_);
  }
  // Without a buffer or a plan of the caller's, with none or with its own.
  int32_t many(const T* src, T* dst, const Batch& b, const void* work = nullptr) const {
    return many_.call(src, dst, b.flag, work == nullptr ? plan_ : work, b);
  }
  // The same at another place of the stack, and all that is the caller's has to be kept.
  void expectManyKept(const T* src, T* dst, const Batch& b, std::uint64_t shift,
                      std::int32_t* status) const {
    expectKept(many_.function->address, many_.arguments(src, dst, b.flag, plan_, b), kMasked,
               kX87Extended, shift, kAnyException, status);
  }

 private:
  api::Transform many_, single_;
  Runner runner_;
  const void* plan_;
};

// body(transform, zero) for every function and length.
template <class Body>
void forEachMany(const Library& library, const Body& body) {
  const auto functions = functionsIn(library, api::manyFunctions());
  for (const api::Transform& many : transformsOf(functions, 1024)) {
    withElement(many, [&]<class T>(T zero) {
      const Transform<T> transform(many);
      SCOPED_TRACE(transform.label());
      body(transform, zero);
    });
    if (testing::Test::HasFatalFailure()) return;
  }
}

// ---- Arrays -------------------------------------------------------------------------------------

// From a stock, as most of the time would go into making them.
template <class T>
std::vector<T> someNumbers(Random& random, std::size_t count) {
  static const std::vector<T> kStock = [&] {
    std::vector<T> stock = numbersWithZeros<T>(random, 6 << 20);
    for (std::size_t i = 0; i < stock.size(); i += 1 + random() % 4000) {
      stock[i] =
          i % 2 == 0 ? std::numeric_limits<T>::infinity() : std::numeric_limits<T>::quiet_NaN();
    }
    return stock;
  }();
  if (count > kStock.size()) throw std::length_error("the stock is too small");
  const auto first = kStock.begin() + random() % (kStock.size() - count + 1);
  return {first, first + count};
}

// The destination after a batch of single calls on this source.
template <class T>
std::vector<T> expected(const Transform<T>& transform, const Batch& b, const std::vector<T>& source,
                        std::vector<T> destination) {
  callSingly(transform.source(), transform.destination(), b, source, &destination,
             [&](const T* x, T* y) { EXPECT_EQ(transform.single(x, y, b.flag), zvxOk); });
  return destination;
}

// Same numbers, and untouched where that is expected.
template <class T>
testing::AssertionResult sameArrays(const std::vector<T>& wanted, const T* found) {
  const T untouched = poison<T>();
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    T number;
    std::memcpy(&number, found + i, sizeof(T));
    const bool isUntouched = std::memcmp(&number, &untouched, sizeof(T)) == 0;
    const bool shallBe = std::memcmp(&wanted[i], &untouched, sizeof(T)) == 0;
    if (isUntouched == shallBe && sameNumber(wanted[i], number)) continue;
    return testing::AssertionFailure() << "number " << i << " of " << wanted.size() << " is "
                                       << number << " instead of " << wanted[i];
  }
  return testing::AssertionSuccess();
}

std::string text(const Batch& b) {
  std::ostringstream s;
  s << b.howmany << " times, flag " << b.flag << ", from stride " << b.source.stride
    << " and distance " << b.source.dist << " to " << b.destination.stride << " and "
    << b.destination.dist;
  return s.str();
}

// A source and a destination at pages that may not be touched, at either end, or off any boundary.
class Memory {
 public:
  explicit Memory(std::size_t bytes = 1 << 23) : pages_{GuardedPages(bytes), GuardedPages(bytes)} {}

  template <class T>
  T* place(int which, std::size_t count, int placement) {
    if (placement < 2) return pages_[which].place<T>(count, placement == 0);
    // An odd address, as far as the last page allows.
    return reinterpret_cast<T*>(pages_[which].place<std::byte>(count * sizeof(T) + 1, true));
  }
  static constexpr int kPlacements = 3;

 private:
  GuardedPages pages_[2];
};

// Whether the batch does to arrays at any placement what the single calls do.
template <class T>
testing::AssertionResult holds(const Transform<T>& transform, const Batch& b, bool inPlace,
                               Memory& memory, Random& random) {
  const Places sources(transform.source(), b.source, b.howmany);
  const Places results(transform.destination(), b.destination, b.howmany);
  // In place the array has the size of the larger side.
  const std::size_t size = std::max(sources.size(), results.size());
  std::vector<T> source = someNumbers<T>(random, inPlace ? size : sources.size());
  std::vector<T> destination(results.size(), poison<T>());
  if (inPlace) destination = source;
  const std::vector<T> wanted = expected(transform, b, source, destination);

  const auto placement = static_cast<int>(random() % Memory::kPlacements);
  T* const to = memory.place<T>(0, destination.size(), placement);
  T* const from = inPlace ? to : memory.place<T>(1, source.size(), placement);
  std::memcpy(to, destination.data(), destination.size() * sizeof(T));
  std::memcpy(from, source.data(), source.size() * sizeof(T));
  int32_t status = 1;
  transform.expectManyKept(from + sources.first(), to + results.first(), b, random() % 4 * 16,
                           &status);
  if (status != zvxOk) return testing::AssertionFailure() << text(b) << ": status " << status;
  if (!inPlace && std::memcmp(from, source.data(), source.size() * sizeof(T)) != 0) {
    return testing::AssertionFailure() << text(b) << ": the source was written";
  }
  const testing::AssertionResult same = sameArrays(wanted, to);
  return same ? same : testing::AssertionFailure() << text(b) << ": " << same.message();
}

// ---- Layouts ------------------------------------------------------------------------------------

// For so many elements and transforms.
using MakeLayout = Layout (*)(std::ptrdiff_t elements, std::ptrdiff_t howmany);
#define ZVXG_LAYOUT(name, ...)                                      \
  constexpr MakeLayout name = []([[maybe_unused]] std::ptrdiff_t n, \
                                 [[maybe_unused]] std::ptrdiff_t h) { return Layout __VA_ARGS__; }
ZVXG_LAYOUT(kContiguous, {1, n});
ZVXG_LAYOUT(kApart, {1, n + 3});
ZVXG_LAYOUT(kElementMajor, {h, 1});
ZVXG_LAYOUT(kColumns, {h + 5, 1});
ZVXG_LAYOUT(kPagesApart, {1024, 1});
ZVXG_LAYOUT(kGeneral, {3, 3 * n + 2});
ZVXG_LAYOUT(kInterleaved, {2 * h + 1, 2});
ZVXG_LAYOUT(kBackwards, {-1, -n});
ZVXG_LAYOUT(kReversed, {1, -n});
ZVXG_LAYOUT(kUpwards, {-h, 1});
// For sources only, which may overlap.
ZVXG_LAYOUT(kFrames, {1, (n + 3) / 4});
ZVXG_LAYOUT(kSliding, {1, 1});
ZVXG_LAYOUT(kOneForAll, {1, 0});
ZVXG_LAYOUT(kConstant, {0, 1});
// Samples in the place of their bins.
ZVXG_LAYOUT(kAsBins, {1, 2 * (n / 2 + 1)});
#undef ZVXG_LAYOUT

struct Sides {
  MakeLayout src, dst;
};

template <class T>
std::vector<Sides> layoutsOf(const Transform<T>& transform, bool inPlace) {
  if (!inPlace) {
    return {
        {kContiguous, kContiguous},   {kElementMajor, kElementMajor}, {kContiguous, kElementMajor},
        {kElementMajor, kContiguous}, {kGeneral, kInterleaved},       {kInterleaved, kGeneral},
        {kBackwards, kReversed},      {kUpwards, kUpwards},           {kApart, kColumns},
        {kColumns, kApart},           {kReversed, kElementMajor},     {kElementMajor, kBackwards},
        {kFrames, kElementMajor},     {kFrames, kContiguous},         {kSliding, kElementMajor},
        {kSliding, kGeneral},         {kOneForAll, kContiguous},      {kConstant, kElementMajor}};
  }
  if (transform.source().parts < transform.destination().parts) return {{kAsBins, kContiguous}};
  if (transform.source().parts > transform.destination().parts) return {{kContiguous, kAsBins}};
  std::vector<Sides> layouts;
  for (const MakeLayout make : {kContiguous, kApart, kElementMajor, kColumns, kGeneral,
                                kInterleaved, kBackwards, kReversed, kUpwards}) {
    layouts.push_back({make, make});
  }
  return layouts;
}

template <class T>
Batch makeBatch(const Transform<T>& transform, const Sides& sides, std::ptrdiff_t howmany,
                int32_t flag) {
  return {{howmany, sides.src(transform.source().elements, howmany),
           sides.dst(transform.destination().elements, howmany)},
          flag};
}

// In every layout some counts up to 70, of which all have their turn, and one that is beyond a block.
void expectBits(const Library& library, bool inPlace) {
  constexpr std::ptrdiff_t kMostNumbers = 1 << 16;  // of a batch
  Random random = makeRandom();
  Memory memory;
  forEachMany(library, [&]<class T>(const Transform<T>& transform, T) {
    const auto flags = transform.flags();
    const auto layouts = layoutsOf(transform, inPlace);
    const auto holdsFor = [&](const Sides& sides, std::ptrdiff_t howmany) {
      howmany = std::clamp<std::ptrdiff_t>(kMostNumbers / transform.length(), 1, howmany);
      const Batch b = makeBatch(transform, sides, howmany, flags[random() % flags.size()]);
      return holds(transform, b, inPlace, memory, random);
    };
    for (const Sides& sides : layouts) {
      for (int i = 0; i < 3; ++i) ASSERT_TRUE(holdsFor(sides, random() % 70 + 1));
    }
    ASSERT_TRUE(holdsFor(layouts[random() % layouts.size()], 1000));
  });
}

TEST_P(Many, HasTheBitsOfTheSingleCall) { expectBits(library_, false); }

TEST_P(Many, ReplacesItsSources) { expectBits(library_, true); }

// Rows that pass through a large block: of batches beyond the caches, and rows whole pages apart. At
// some lengths, as the single calls take their time.
TEST_P(Many, HasTheBitsInLargeBlocks) {
  constexpr std::ptrdiff_t kBytes = 17 << 20;  // of both sides
  Random random = makeRandom();
  Memory memory(2 * kBytes);  // as gaps between short transforms count, too
  forEachMany(library_, [&]<class T>(const Transform<T>& transform, T) {
    if (transform.length() > 128) return;
    const Shape from = transform.source(), to = transform.destination();
    const auto holdsFor = [&](std::initializer_list<Sides> layouts, std::ptrdiff_t howmany,
                              bool inPlace) {
      const Sides& sides = layouts.begin()[random() % layouts.size()];
      const Batch b = makeBatch(transform, sides, howmany, kUnscaled);
      return holds(transform, b, inPlace, memory, random);
    };
    if (random() % 45 == 0) {
      const std::ptrdiff_t each = sizeof(T) * (from.elements * from.parts + to.elements * to.parts);
      const std::ptrdiff_t howmany = kBytes / each + random() % 70;
      ASSERT_TRUE(holdsFor({{kElementMajor, kElementMajor},
                            {kContiguous, kApart},
                            {kContiguous, kColumns},
                            {kUpwards, kElementMajor},
                            {kElementMajor, kContiguous},
                            {kContiguous, kContiguous},
                            {kConstant, kColumns},
                            {kColumns, kUpwards}},
                           howmany, false));
      if (from.parts == to.parts && random() % 4 == 0) {
        ASSERT_TRUE(
            holdsFor({{kElementMajor, kElementMajor}, {kContiguous, kContiguous}}, howmany, true));
      }
    }
    if (random() % 20 != 0) return;
    const std::ptrdiff_t howmany = random() % 1024 + 1;
    ASSERT_TRUE(holdsFor({{kPagesApart, kPagesApart},
                          {kPagesApart, kColumns},
                          {kElementMajor, kPagesApart},
                          {kPagesApart, kApart},
                          {kApart, kPagesApart}},
                         howmany, false));
    if (from.parts != to.parts) return;
    ASSERT_TRUE(holdsFor({{kPagesApart, kPagesApart}}, howmany, true));
  });
}

// ---- The contract -------------------------------------------------------------------------------

TEST_P(Many, RefusesInOrderAndTouchesNothing) {
  Refusals refusals;
  for (const Function& function : functionsIn(library_, api::manyFunctions())) {
    if (function.isMany()) {
      EXPECT_GT(refusals.expectOf(function), 0);
    }
  }
}

TEST_P(Many, PlansHaveToBeCompleted) {
  forEachMany(library_, [&]<class T>(const Transform<T>& transform, T) {
    if (!transform.isPlanned()) return;
    T numbers[2] = {};
    const Batch b = {{1, {1, 2}, {1, 2}}, kUnscaled};
    for (const uint32_t state : {0u, zvxg::dct4::kGeneralState<T> + 1, UINT32_MAX}) {
      Dct4Spec spec = {};
      spec.state = state;
      EXPECT_EQ(transform.many(numbers, numbers, b, &spec), zvxErrPlanState);
    }
  });
}

TEST_P(Many, AllocatesOneBufferAndNothingElse) {
  forEachMany(library_, [&]<class T>(const Transform<T>& transform, T) {
    std::vector<T> x(3 * 2 * transform.length() + 6), y(x.size(), poison<T>());
    for (const MakeLayout make : {kContiguous, kElementMajor}) {
      const Batch b = makeBatch(transform, {make, make}, 3, kUnscaled);
      allocator = {};
      ASSERT_EQ(transform.many(x.data(), y.data(), b), zvxOk);
      ASSERT_EQ(allocator.outstanding, 0);
      if (allocator.taken.empty()) continue;
      ASSERT_EQ(allocator.taken, std::vector<int32_t>{transform.bufferBytes()});
      std::vector<T> buffer(transform.bufferBytes() / sizeof(T));
      allocator = {};
      ASSERT_EQ(transform.many(x.data(), y.data(), b, buffer.data()), zvxOk);
      ASSERT_TRUE(allocator.taken.empty());
      // Without memory nothing happens.
      std::fill(y.begin(), y.end(), poison<T>());
      allocator.fails = true;
      ASSERT_EQ(transform.many(x.data(), y.data(), b), zvxErrNullPointer);
      ASSERT_TRUE(sameArrays(std::vector<T>(y.size(), poison<T>()), y.data()));
      allocator = {};
    }
  });
}

TEST(ManyLevel, IsWhatItIsLimitedTo) {
  const Library library(ZVXG_MANY_FILE);
  const auto level = find<decltype(&zvxgManyLevel)>(library, "zvxgManyLevel");
  const auto limit = find<decltype(&zvxgManyLimitLevel)>(library, "zvxgManyLimitLevel");
  const int32_t highest = limit(INT32_MAX);
  EXPECT_EQ(highest, __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
                             __builtin_cpu_supports("avx512dq") &&
                             __builtin_cpu_supports("avx512bw")
                         ? zvxManyAvx512
                         : zvxManyAvx);
  for (const int32_t wanted :
       {INT32_MIN, 0, int32_t{zvxManyAvx}, int32_t{zvxManyAvx512}, 3, INT32_MAX}) {
    const int32_t used = std::clamp<int32_t>(wanted, zvxManyAvx, highest);
    EXPECT_EQ(limit(wanted), used);
    EXPECT_EQ(level(), used);
  }
}

}  // namespace
}  // namespace tests
