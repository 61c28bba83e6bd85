// The Walsh-Hadamard family against its definition and known values. Its bits, those of the plain
// loop of radix-2 stages that the header promises, and its memory are in reliability/.

#include <bit>

#include "harness.h"

namespace tests {
namespace {

constexpr int kOrders = 13;

template <class T>
struct Wht {
  using Function = int32_t (*)(const T* src, T* dst, int32_t flag, uint8_t* buffer);
  using SizeQuery = int32_t (*)(int32_t order, uint32_t* size);

  explicit Wht(int order) : n(1 << order) {
    function = find<Function>("zvxgWHT_" + std::to_string(order));
    uint32_t bytes = 0;
    EXPECT_EQ(find<SizeQuery>("zvxgWHTGetBufferSize")(order, &bytes), 0);
    buffer.resize(bytes);
  }

  std::vector<T> run(const std::vector<T>& source, int32_t flag) {
    std::vector<T> destination(n, poison<T>());
    EXPECT_EQ(function(source.data(), destination.data(), flag, buffer.data()), 0);
    return destination;
  }

  int n;
  Function function;
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

}  // namespace
}  // namespace tests
