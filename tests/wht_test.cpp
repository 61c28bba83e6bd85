// The Walsh-Hadamard family against its definition, and bit for bit against the plain loop of
// radix-2 stages that the header promises. Which memory it takes is in memory_test.cpp.

#include <bit>
#include <cmath>

#include "harness.h"
#include "placement.h"

namespace tests {
namespace {

constexpr int kOrders = 13;
constexpr int32_t kBadLength = -6;
constexpr int32_t kNullPointer = -8;
constexpr int32_t kBadFlag = -16;

template <class T>
struct Wht {
  using Function = int32_t (*)(const T* src, T* dst, int32_t flag, uint8_t* buffer);
  using Entry = int32_t (*)(const T* src, T* dst, int32_t order, int32_t flag, uint8_t* buffer);
  using SizeQuery = int32_t (*)(int32_t order, uint32_t* size);

  explicit Wht(int order_) : order(order_), n(1 << order_) {
    function = find<Function>("zvxgWHT_" + std::to_string(order));
    entry = find<Entry>("zvxgWHT");
    uint32_t bytes = 0;
    EXPECT_EQ(find<SizeQuery>("zvxgWHTGetBufferSize")(order, &bytes), 0);
    buffer.resize(bytes);
  }

  std::vector<T> run(const std::vector<T>& source, int32_t flag) {
    std::vector<T> destination(n, poison<T>());
    EXPECT_EQ(function(source.data(), destination.data(), flag, buffer.data()), 0);
    return destination;
  }

  int order, n;
  Function function;
  Entry entry;
  std::vector<uint8_t> buffer;  // operator new aligns to 16 bytes

 private:
  template <class Pointer>
  static Pointer find(const std::string& name) {
    const std::string symbol = name + (sizeof(T) == 4 ? "_32f" : "_64f");
    void* const address = libraryUnderTest().find(symbol);
    if (address == nullptr) throw std::runtime_error(symbol + " is not in the library");
    return reinterpret_cast<Pointer>(address);
  }
};

template <class Body>
void forEachOrder(const Body& body) {
  for (int order = 1; order <= kOrders; ++order) {
    SCOPED_TRACE("order " + std::to_string(order));
    body(Wht<float>(order));
    body(Wht<double>(order));
  }
}

template <class T>
std::vector<T> staged(std::vector<T> x, int32_t flag) {
  const std::size_t n = x.size();
  for (std::size_t h = 1; h < n; h *= 2) {
    for (std::size_t i = 0; i < n; ++i) {
      if ((i & h) != 0) continue;
      const T a = x[i], b = x[i + h];
      x[i] = a + b;
      x[i + h] = a - b;
    }
  }
  const T byN = T(1) / static_cast<T>(n);
  const T bySqrtN = static_cast<T>(1 / std::sqrt(static_cast<long double>(n)));
  const T factor = flag == 8 ? T(1) : flag == 4 ? bySqrtN : byN;
  for (T& number : x) number *= factor;
  return x;
}

// Small whole numbers, so that every sum is exact.
TEST(Wht, Definition) {
  Random random = makeRandom();
  forEachOrder([&]<class T>(Wht<T> wht) {
    std::vector<int32_t> x(wht.n);
    for (int32_t& number : x) number = static_cast<int32_t>(random() % 17) - 8;
    std::vector<T> expected(wht.n);
    for (unsigned k = 0; k < expected.size(); ++k) {
      int32_t sum = 0;
      for (unsigned i = 0; i < x.size(); ++i) sum += std::popcount(i & k) % 2 == 0 ? x[i] : -x[i];
      expected[k] = static_cast<T>(sum);
    }
    EXPECT_TRUE(sameNumbers(expected, wht.run({x.begin(), x.end()}, kUnscaled)));
  });
}

TEST(Wht, WellKnownValues) {
  const auto factor = []<class T>(T, int order, int32_t flag) {
    Wht<T> wht(order);
    std::vector<T> impulse(wht.n);
    impulse[0] = 1;
    return wht.run(impulse, flag).back();
  };
  EXPECT_EQ(factor(0.f, 1, 1), 0.5f);
  EXPECT_EQ(factor(0.f, 1, 4), 0.70710677f);
  EXPECT_EQ(factor(0.f, 2, 2), 0.25f);
  EXPECT_EQ(factor(0.f, 2, 4), 0.5f);
  EXPECT_EQ(factor(0.f, 3, 4), 0.35355338f);
  EXPECT_EQ(factor(0.f, 8, 1), 0.00390625f);
  EXPECT_EQ(factor(0.f, 8, 4), 0.0625f);
  EXPECT_EQ(factor(0.0, 1, 4), 0.7071067811865476);
  EXPECT_EQ(factor(0.0, 13, 2), 0.0001220703125);
  EXPECT_EQ(Wht<float>(1).run({1, 2}, 8), (std::vector<float>{3, -1}));
  EXPECT_EQ(Wht<float>(1).run({1, 2}, 4), (std::vector<float>{2.1213202f, -0.70710677f}));
}

constexpr std::size_t kPageBytes = 4096;

// From `from` up to the place in a page that `to` has, or up to 15 bytes less: a multiple of 16.
std::size_t distanceInPage(const void* from, const void* to) {
  const auto distance =
      reinterpret_cast<std::uintptr_t>(to) - reinterpret_cast<std::uintptr_t>(from);
  return distance % kPageBytes / 16 * 16;
}

TEST(Wht, BitsOfTheStagedLoopAtEveryOffset) {
  Random random = makeRandom();
  forEachOrder([&]<class T>(Wht<T> wht) {
    const std::vector<T> data = numbersWithZeros<T>(random, wht.n);
    std::vector<uint8_t> large(wht.buffer.size() + 2 * kPageBytes);
    for (const int32_t flag : kFlags) {
      const std::vector<T> expected = staged(data, flag);
      for (int sourceOffset = 0; sourceOffset < OffsetArray<T>::kStep; ++sourceOffset) {
        OffsetArray<T> source(wht.n, sourceOffset);
        for (int offset = 0; offset < OffsetArray<T>::kStep; ++offset) {
          OffsetArray<T> destination(wht.n, offset);
          // At the place of the destination in a page, the two compete for the cache.
          uint8_t* const competing =
              large.data() + distanceInPage(large.data(), destination.data());
          for (uint8_t* const buffer :
               {wht.buffer.data(), competing, static_cast<uint8_t*>(nullptr)}) {
            std::fill_n(destination.data(), wht.n, poison<T>());
            std::copy(data.begin(), data.end(), source.data());
            ASSERT_TRUE(runsWithoutFault(
                [&] { wht.function(source.data(), destination.data(), flag, buffer); }));
            ASSERT_TRUE(sameNumbers(expected, destination.numbers()) &&
                        destination.surroundingsUntouched() && sameNumbers(data, source.numbers()))
                << "flag " << flag << ", source offset " << sourceOffset << ", destination offset "
                << offset << ", buffer " << static_cast<void*>(buffer);
          }
        }
        ASSERT_EQ(wht.function(source.data(), source.data(), flag, wht.buffer.data()), 0);
        ASSERT_TRUE(sameNumbers(expected, source.numbers()) && source.surroundingsUntouched())
            << "in place, flag " << flag << ", offset " << sourceOffset;
      }
    }
  });
}

TEST(Wht, NoAccessOutsideTheArrays) {
  GuardedPages sourcePages, destinationPages, bufferPages;
  Random random = makeRandom();
  forEachOrder([&]<class T>(Wht<T> wht) {
    const std::vector<T> data = normalNumbers<T>(random, wht.n);
    const std::vector<T> expected = staged(data, kUnscaled);
    const int bytes = static_cast<int>(wht.buffer.size());
    for (const bool sourceAtEnd : {false, true}) {
      T* const source = sourcePages.place<T>(wht.n, sourceAtEnd);
      sourcePages.protect(PROT_READ | PROT_WRITE);
      std::copy(data.begin(), data.end(), source);
      sourcePages.protect(PROT_READ);
      for (const bool destinationAtEnd : {false, true}) {
        T* const destination = destinationPages.place<T>(wht.n, destinationAtEnd);
        for (const bool bufferAtEnd : {false, true}) {
          // Of no bytes, at the end, this is an address that may not be touched.
          uint8_t* const buffer = bufferPages.place<uint8_t>(bytes, bufferAtEnd);
          ASSERT_TRUE(runsWithoutFault([&] {
            wht.function(source, destination, kUnscaled, buffer);
          })) << sourceAtEnd
              << destinationAtEnd << bufferAtEnd;
          ASSERT_TRUE(sameNumbers(expected, std::vector<T>(destination, destination + wht.n)));
        }
      }
    }
  });
}

TEST(Wht, FailuresInOrderLeaveTheDestination) {
  forEachOrder([&]<class T>(Wht<T> wht) {
    for (const int offset : {0, 1}) {  // both bodies
      OffsetArray<T> source(wht.n, offset), destination(wht.n, offset);
      T* const src = source.data();
      T* const dst = destination.data();
      for (uint8_t* const buffer : {wht.buffer.data(), static_cast<uint8_t*>(nullptr)}) {
        for (const int32_t flag : {0, 3, 5, 9, 16, -1, 0x108, INT32_MAX, INT32_MIN}) {
          EXPECT_EQ(wht.function(src, dst, flag, buffer), kBadFlag) << flag;
          EXPECT_EQ(wht.function(nullptr, dst, flag, buffer), kNullPointer) << flag;
          EXPECT_EQ(wht.function(src, nullptr, flag, buffer), kNullPointer) << flag;
          EXPECT_EQ(wht.entry(src, dst, wht.order, flag, buffer), kBadFlag) << flag;
          EXPECT_EQ(wht.entry(nullptr, dst, wht.order, flag, buffer), kNullPointer) << flag;
        }
        EXPECT_EQ(wht.function(nullptr, dst, kUnscaled, buffer), kNullPointer);
        EXPECT_EQ(wht.function(src, nullptr, kUnscaled, buffer), kNullPointer);
      }
      EXPECT_TRUE(destination.surroundingsUntouched() &&
                  sameNumbers(destination.numbers(), std::vector<T>(wht.n, poison<T>())));
    }
  });
}

TEST(Wht, EntriesGoByOrder) {
  Random random = makeRandom();
  forEachOrder([&]<class T>(Wht<T> wht) {
    const std::vector<T> source = normalNumbers<T>(random, wht.n);
    for (const int32_t flag : kFlags) {
      std::vector<T> destination(wht.n, poison<T>());
      EXPECT_EQ(wht.entry(source.data(), destination.data(), wht.order, flag, wht.buffer.data()),
                0);
      EXPECT_TRUE(sameNumbers(staged(source, flag), destination)) << flag;
    }
    std::vector<T> destination(wht.n, T(2));
    for (const int32_t order : {0, 14, -1, INT32_MAX, INT32_MIN}) {
      for (const int32_t flag : {8, 3}) {
        EXPECT_EQ(wht.entry(source.data(), destination.data(), order, flag, nullptr), kBadLength);
        EXPECT_EQ(wht.entry(nullptr, nullptr, order, flag, nullptr), kBadLength);
      }
    }
    EXPECT_EQ(destination, std::vector<T>(wht.n, T(2)));
  });
}

}  // namespace
}  // namespace tests
