#include "harness.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <stdexcept>

#include "loader.h"

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

bool isSelected(const std::string& name) {
  static const std::string kText = environment("ZVXG_KERNEL", "");
  return name.find(kText) != std::string::npos;
}

}  // namespace

Library::Library(const std::string& path) : handle_(api::openLibrary(path)) {}

void* Library::find(const std::string& symbol) const { return api::findSymbol(handle_, symbol); }

const Library& libraryUnderTest() {
  static const Library kLibrary(environment("ZVXG_LIBRARY", ZVXG_LIBRARY_FILE));
  return kLibrary;
}

std::vector<Function> functionsIn(const Library& library, std::span<const Function> list) {
  std::vector<Function> functions(list.begin(), list.end());
  for (Function& function : functions) {
    function.address = library.find(function.symbol);
    if (function.address == nullptr) {
      throw std::runtime_error(std::string(function.symbol) + " is not in the library");
    }
  }
  return functions;
}

Random makeRandom() { return Random(seed()); }

const api::Exports& exports() {
  static const std::vector<Function> kFunctions = functionsIn(libraryUnderTest(), api::functions());
  static const api::Exports kExports(kFunctions);
  return kExports;
}

const Function& functionNamed(const std::string& symbol) {
  static const auto kByName = [] {
    std::map<std::string, const Function*> byName;
    for (const Function& function : exports().functions()) byName[function.symbol] = &function;
    return byName;
  }();
  return *kByName.at(symbol);
}

std::vector<Transform> transformsOf(std::span<const Function> functions, int32_t longestPlan) {
  std::vector<Transform> list;
  for (const Function& function : functions) {
    for (const Transform& transform :
         exports().transformsOf(function, api::planLengths(function.bits, longestPlan))) {
      if (isSelected(nameOf(transform))) list.push_back(transform);
    }
  }
  return list;
}

const std::vector<Transform>& transforms() {
  static const auto kTransforms = transformsOf(exports().functions(), kLongestListed);
  return kTransforms;
}

std::string nameOf(const Transform& transform) {
  const bool isMany = transform.function->isMany();
  const std::string name = isMany ? transform.function->symbol : transform.kernel->symbol;
  return transform.function->isPlanned() ? name + " " + std::to_string(transform.points) : name;
}

std::vector<int32_t> flagsOf(const Transform& transform) {
  if (!transform.function->takes(Role::Flag)) return {kUnscaled};
  return {std::begin(kFlags), std::end(kFlags)};
}

Bytes normalBytes(const Transform& transform, Random& random) {
  return withElement(transform, [&]<class T>(T) {
    const auto count = static_cast<int>(transform.sourceBytes / sizeof(T));
    return bytesOf(normalNumbers<T>(random, count));
  });
}

Bytes midRangeBytes(const Transform& transform, Random& random, bool small) {
  return withElement(transform, [&]<class T>(T) {
    std::vector<T> numbers(transform.sourceBytes / sizeof(T));
    std::uniform_real_distribution<T> magnitude(T(0.5), T(2));
    for (T& number : numbers) {
      number = random() % 2 == 0 ? magnitude(random) : -magnitude(random);
      if (small) number *= std::numeric_limits<T>::min() * static_cast<T>(1 << random() % 3) / 2;
    }
    return bytesOf(numbers);
  });
}

Runner::Runner(const Transform& transform)
    : transform_(transform),
      memory_(api::alignedMemory(64, transform.workBytes + 1)),
      work_(exports().prepare(transform, memory_.get())) {
  EXPECT_NE(work_, nullptr) << "no plan";
}

Bytes Runner::run(const Bytes& source, int32_t flag) const {
  Bytes destination(transform_.destinationBytes, kUntouched);
  EXPECT_EQ(transform_.call(source.data(), destination.data(), flag, work_), 0);
  return destination;
}

std::vector<KernelId> selectedKernels() {
  std::vector<KernelId> ids = kernelgen::kernelList();
  std::erase_if(ids, [](const KernelId& id) { return !isSelected(id.symbol()); });
  return ids;
}

}  // namespace tests
