#include "harness.h"

#include <dlfcn.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <numbers>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace tests {
namespace {

using kernelgen::Direction;
using kernelgen::Family;
using kernelgen::KernelId;
using kernelgen::Layout;

std::string environment(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : otherwise;
}

unsigned long seed() {
  static const unsigned long kSeed = std::stoul(environment("ZVXG_SEED", "20090610"));
  return kSeed;
}

class PrintSeed : public testing::Environment {
  void SetUp() override { std::printf("repeat with ZVXG_SEED=%lu\n", seed()); }
};
const testing::Environment* const kPrintSeed =
    testing::AddGlobalTestEnvironment(new PrintSeed);  // NOLINT: GoogleTest owns it

// cos and sin of 2 pi m / n for m = 0 .. n-1.
struct Roots {
  explicit Roots(int n) {
    for (int m = 0; m < n; ++m) {
      const long double angle = 2 * std::numbers::pi_v<long double> * m / n;
      cosines.push_back(std::cos(angle));
      sines.push_back(std::sin(angle));
    }
  }
  std::vector<long double> cosines, sines;
};

const Roots& rootsOf(int n) {
  static std::map<int, Roots> tables;
  return tables.try_emplace(n, n).first->second;
}

std::vector<long double> complexDft(const KernelId& id, const std::vector<long double>& x) {
  const int n = id.length;
  const Roots& roots = rootsOf(n);
  const long double sign = id.direction == Direction::Forward ? -1 : 1;
  std::vector<long double> result(2 * n);
  for (int k = 0; k < n; ++k) {
    long double re = 0, im = 0;
    for (int j = 0, turn = 0; j < n; ++j, turn = (turn + k) % n) {
      const long double c = roots.cosines[turn], s = sign * roots.sines[turn];
      re += x[2 * j] * c - x[2 * j + 1] * s;
      im += x[2 * j] * s + x[2 * j + 1] * c;
    }
    result[2 * k] = re;
    result[2 * k + 1] = im;
  }
  return result;
}

std::vector<long double> samplesToSpectrum(const KernelId& id, const std::vector<long double>& x) {
  const int n = id.length;
  const Roots& roots = rootsOf(n);
  std::vector<long double> result(id.layout == Layout::Ccs ? n / 2 * 2 + 2 : n);
  for (int k = 0; 2 * k <= n; ++k) {
    long double re = 0, im = 0;
    for (int j = 0, turn = 0; j < n; ++j, turn = (turn + k) % n) {
      re += x[j] * roots.cosines[turn];
      im -= x[j] * roots.sines[turn];
    }
    const BinPlace place = binPlace(id.layout, n, k);
    result[place.re] = re;
    if (!isOwnMirror(n, k)) result[place.im] = im;
  }
  return result;
}

std::vector<long double> spectrumToSamples(const KernelId& id, const std::vector<long double>& x) {
  const int n = id.length;
  const Roots& roots = rootsOf(n);
  std::vector<long double> result(n);
  for (int j = 0; j < n; ++j) {
    for (int k = 0; 2 * k <= n; ++k) {
      const BinPlace place = binPlace(id.layout, n, k);
      const int turn = j * k % n;
      if (isOwnMirror(n, k)) {
        result[j] += x[place.re] * roots.cosines[turn];
      } else {
        result[j] += 2 * (x[place.re] * roots.cosines[turn] - x[place.im] * roots.sines[turn]);
      }
    }
  }
  return result;
}

std::vector<long double> realDft(const KernelId& id, const std::vector<long double>& x) {
  return id.direction == Direction::Forward ? samplesToSpectrum(id, x) : spectrumToSamples(id, x);
}

std::vector<long double> hartley(const KernelId& id, const std::vector<long double>& x) {
  const int n = id.length;
  const Roots& roots = rootsOf(n);
  std::vector<long double> result(n);
  for (int k = 0; k < n; ++k) {
    for (int j = 0, turn = 0; j < n; ++j, turn = (turn + k) % n) {
      result[k] += x[j] * (roots.cosines[turn] + roots.sines[turn]);
    }
  }
  return result;
}

// What the tests have to know of a family. Sizes are counted in numbers.
struct FamilyRow {
  int (*signalSize)(int length);
  int (*spectrumSize)(int length, Layout layout);
  bool directed;  // false: flags 1 and 2 both divide by N
  std::vector<long double> (*definition)(const KernelId&, const std::vector<long double>&);
};

const FamilyRow& familyRow(Family family) {
  static const FamilyRow kComplex = {[](int n) { return 2 * n; },
                                     [](int n, Layout) { return 2 * n; }, true, complexDft};
  static const FamilyRow kReal = {
      [](int n) { return n; },
      [](int n, Layout layout) { return layout == Layout::Ccs ? (n % 2 == 0 ? n + 2 : n + 1) : n; },
      true, realDft};
  static const FamilyRow kHartley = {[](int n) { return n; }, [](int n, Layout) { return n; },
                                     false, hartley};
  switch (family) {
    case Family::Complex: return kComplex;
    case Family::Real: return kReal;
    case Family::Hartley: return kHartley;
  }
  throw std::logic_error("a kernel family without a row in the tests");
}

}  // namespace

Library::Library(const std::string& path) : handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) throw std::runtime_error(dlerror());
}

void* Library::find(const std::string& symbol) const { return dlsym(handle_, symbol.c_str()); }

const Library& libraryUnderTest() {
  static const Library kLibrary(environment("ZVXG_LIBRARY", ZVXG_LIBRARY_FILE));
  return kLibrary;
}

template <class T>
TestKernel<T> loadKernel(const Library& library, const KernelId& id) {
  const FamilyRow& row = familyRow(id.family);
  int source = row.signalSize(id.length), destination = row.spectrumSize(id.length, id.layout);
  if (id.direction == Direction::Inverse) std::swap(source, destination);
  TestKernel<T> kernel{id, id.length, source, destination, {}};
  void* address = library.find(id.symbol());
  if (address == nullptr) ADD_FAILURE() << id.symbol() << " is not in the library";
  // The prototype has pointers to complex elements, which are passed like these.
  kernel.function = reinterpret_cast<decltype(kernel.function)>(address);
  return kernel;
}

template <class T>
std::vector<T> TestKernel<T>::run(const std::vector<T>& source, int32_t flag) const {
  std::vector<T> destination(destinationSize, poison<T>());
  EXPECT_EQ(function(source.data(), destination.data(), flag), 0);
  return destination;
}

std::vector<long double> definition(const KernelId& id, const std::vector<long double>& source) {
  return familyRow(id.family).definition(id, source);
}

std::vector<long double> impulseResponse(const KernelId& id, int i) {
  const FamilyRow& row = familyRow(id.family);
  const bool forward = id.direction == Direction::Forward;
  std::vector<long double> source(forward ? row.signalSize(id.length)
                                          : row.spectrumSize(id.length, id.layout));
  source[i] = 1;
  std::vector<long double> response = row.definition(id, source);
  // The smallest other one is above 1 / length.
  for (long double& number : response) {
    if (std::abs(number) < 1e-10L) number = 0;
  }
  return response;
}

// A layout lists the parts of the bins in their order; only Perm of an even length has the middle
// bin moved to the front.
BinPlace binPlace(Layout layout, int length, int k) {
  if (layout == Layout::Ccs) return {2 * k, 2 * k + 1};
  if (k == 0) return {0, kNowhere};
  const bool perm = layout == Layout::Perm && length % 2 == 0;
  if (2 * k == length) return {perm ? 1 : length - 1, kNowhere};
  return perm ? BinPlace{2 * k, 2 * k + 1} : BinPlace{2 * k - 1, 2 * k};
}

template <class T>
T scaleFactor(const KernelId& id, int32_t flag) {
  const bool directed = familyRow(id.family).directed;
  const bool forward = id.direction == Direction::Forward;
  switch (flag) {
    case 1: return !directed || forward ? T(1) / T(id.length) : T(1);
    case 2: return !directed || !forward ? T(1) / T(id.length) : T(1);
    case 4: return static_cast<T>(1.0 / std::sqrt(static_cast<double>(id.length)));
    default: return T(1);
  }
}

std::vector<KernelId> selectedKernels() {
  std::vector<KernelId> ids = kernelgen::kernelList();
  const std::string text = environment("ZVXG_KERNEL", "");
  std::erase_if(ids,
                [&](const KernelId& id) { return id.symbol().find(text) == std::string::npos; });
  return ids;
}

Random makeRandom() { return Random(seed()); }

template <class T>
std::vector<T> normalNumbers(Random& random, int count) {
  std::normal_distribution<T> normal;
  std::vector<T> numbers(count);
  std::generate(numbers.begin(), numbers.end(), [&] { return normal(random); });
  return numbers;
}

template <class T>
std::vector<T> numbersWithZeros(Random& random, int count) {
  std::vector<T> numbers = normalNumbers<T>(random, count);
  for (T& number : numbers) {
    if (random() % 3 == 0) number = std::copysign(T(0), number);
  }
  return numbers;
}

template <class T>
testing::AssertionResult sameNumbers(const std::vector<T>& expected, const std::vector<T>& actual) {
  if (expected.size() != actual.size()) {
    return testing::AssertionFailure()
           << actual.size() << " numbers instead of " << expected.size();
  }
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (sameNumber(expected[i], actual[i])) continue;
    char text[100];
    std::snprintf(text, sizeof text, "number %zu is %a instead of %a", i, double(actual[i]),
                  double(expected[i]));
    return testing::AssertionFailure() << text;
  }
  return testing::AssertionSuccess();
}

template <class T>
T poison() {
  if constexpr (std::is_same_v<T, float>) {
    return std::bit_cast<float>(0x7fc5a5a5u);
  } else {
    return std::bit_cast<double>(0x7ffc5a5a5a5a5a5aull);
  }
}

#define ZVXG_INSTANTIATE(T)                                                                       \
  template struct TestKernel<T>;                                                                  \
  template TestKernel<T> loadKernel<T>(const Library&, const KernelId&);                          \
  template T scaleFactor<T>(const KernelId&, int32_t);                                            \
  template std::vector<T> normalNumbers<T>(Random&, int);                                         \
  template std::vector<T> numbersWithZeros<T>(Random&, int);                                      \
  template testing::AssertionResult sameNumbers<T>(const std::vector<T>&, const std::vector<T>&); \
  template T poison<T>();
ZVXG_INSTANTIATE(float)
ZVXG_INSTANTIATE(double)

}  // namespace tests
