#include "harness.h"

#include <dlfcn.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <type_traits>

namespace tests {
namespace {

using kernelgen::KernelId;

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
  TestKernel<T> kernel{id, id.length, id.sourceSize(), id.destinationSize(), {}};
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

std::vector<long double> impulseResponse(const KernelId& id, int i) {
  std::vector<long double> source(id.sourceSize());
  source[i] = 1;
  std::vector<long double> response = definition(id, source);
  // The smallest other one is above 1 / length.
  for (long double& number : response) {
    if (std::abs(number) < 1e-10L) number = 0;
  }
  return response;
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
  template std::vector<T> normalNumbers<T>(Random&, int);                                         \
  template std::vector<T> numbersWithZeros<T>(Random&, int);                                      \
  template testing::AssertionResult sameNumbers<T>(const std::vector<T>&, const std::vector<T>&); \
  template T poison<T>();
ZVXG_INSTANTIATE(float)
ZVXG_INSTANTIATE(double)

}  // namespace tests
