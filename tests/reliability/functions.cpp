#include "functions.h"

#include <algorithm>
#include <cstdlib>
#include <map>

#include "../dct4.h"

namespace tests {
namespace {

constexpr int kOrders = 13;

using Roles = std::vector<Role>;
const Roles kKernel = {Role::Source, Role::Destination, Role::Flag};
const Roles kEntry = {Role::Source, Role::Destination, Role::Selector, Role::Flag};
const Roles kBuffered = {Role::Source, Role::Destination, Role::Flag, Role::Buffer};
const Roles kBufferedEntry = {Role::Source, Role::Destination, Role::Selector, Role::Flag,
                              Role::Buffer};

// The functions of one name for both precisions.
const struct {
  std::string stem;
  Roles roles;
} kPairs[] = {{"zvxgWHT", kBufferedEntry},
              {"zvxgWHTGetBufferSize", {Role::Selector, Role::Size}},
              {"zvxgDCT4GetSize", {Role::Selector, Role::Size}},
              {"zvxgDCT4Init", {Role::NewPlan, Role::Selector, Role::Block}},
              {"zvxgDCT4InitAlloc", {Role::NewPlan, Role::Selector}},
              {"zvxgDCT4Free", {Role::Plan}},
              {"zvxgDCT4", {Role::Source, Role::Destination, Role::Plan}}};

std::string suffixOf(int elementBytes) { return elementBytes == 4 ? "_32f" : "_64f"; }

// The entry that serves a kernel has its name without the number.
std::string entryName(const std::string& kernel) {
  const std::size_t last = kernel.rfind('_');
  return kernel.substr(0, kernel.rfind('_', last - 1)) + kernel.substr(last);
}

int elementBytes(const kernelgen::KernelId& id) {
  return id.precision == kernelgen::Precision::Single ? 4 : 8;
}

std::vector<Function> makeFunctions() {
  std::vector<Function> functions;
  const auto add = [&](const std::string& name, const Roles& roles, int bytes) {
    void* const address = libraryUnderTest().find(name);
    if (address == nullptr) throw std::runtime_error(name + " is not in the library");
    functions.push_back({name, roles, address, bytes});
  };
  std::string before;
  for (const kernelgen::KernelId& id : kernelgen::kernelList()) {
    add(id.symbol(), kKernel, elementBytes(id));
    if (id.length == 64) add(entryName(id.symbol()), kEntry, elementBytes(id));
  }
  for (const int bytes : {4, 8}) {
    for (int order = 1; order <= kOrders; ++order) {
      add("zvxgWHT_" + std::to_string(order) + suffixOf(bytes), kBuffered, bytes);
    }
    for (const auto& [stem, roles] : kPairs) add(stem + suffixOf(bytes), roles, bytes);
  }
  add("zvxgenGetLibVersion", {}, 0);
  return functions;
}

std::uint32_t askedSize(const std::string& query, std::int32_t selector) {
  std::uint32_t bytes = 0;
  EXPECT_EQ(call(functionNamed(query), {asArgument(selector), asArgument(&bytes)}), zvxOk);
  return bytes;
}

std::vector<Transform> makeTransforms() {
  std::vector<Transform> list;
  // A kernel, and its entry with the selector of the kernel.
  const auto add = [&](const std::string& kernel, std::int32_t selector, std::size_t source,
                       std::size_t destination, std::size_t work) {
    list.push_back({&functionNamed(kernel), 0, kernel, source, destination, work});
    list.push_back(
        {&functionNamed(entryName(kernel)), selector, kernel, source, destination, work});
  };
  forEachKernel(kernelgen::kernelList(), [&]<class T>(const TestKernel<T>& kernel) {
    add(kernel.id.symbol(), kernel.length, kernel.sourceSize * sizeof(T),
        kernel.destinationSize * sizeof(T), 0);
  });
  const auto addPrecision = [&]<class T>(T) {
    const std::string suffix = suffixOf(sizeof(T));
    for (std::int32_t order = 1; order <= kOrders; ++order) {
      const std::size_t bytes = sizeof(T) << order;
      add("zvxgWHT_" + std::to_string(order) + suffix, order, bytes, bytes,
          askedSize("zvxgWHTGetBufferSize" + suffix, order));
    }
    std::vector<std::int32_t> lengths = powersOfTwo(2, kLongestListed);
    const std::vector<std::int32_t> odd = oddLengths<T>(kLongestListed);
    lengths.insert(lengths.end(), odd.begin(), odd.end());
    for (const std::int32_t length : lengths) {
      const std::size_t bytes = sizeof(T) * static_cast<std::size_t>(length);
      const std::string name = "zvxgDCT4" + suffix;
      list.push_back({&functionNamed(name), length, name + " " + std::to_string(length), bytes,
                      bytes, askedSize("zvxgDCT4GetSize" + suffix, length), length % 2 == 0});
    }
  };
  addPrecision(float{});
  addPrecision(double{});
  const char* const text = std::getenv("ZVXG_KERNEL");
  std::erase_if(list, [&](const Transform& transform) {
    return text != nullptr && transform.kernel.find(text) == std::string::npos;
  });
  return list;
}

}  // namespace

bool Function::takes(Role role) const {
  return std::find(roles.begin(), roles.end(), role) != roles.end();
}

const std::vector<Function>& exportedFunctions() {
  static const std::vector<Function> kFunctions = makeFunctions();
  return kFunctions;
}

const Function& functionNamed(const std::string& name) {
  static const auto kByName = [] {
    std::map<std::string, const Function*> byName;
    for (const Function& function : exportedFunctions()) byName[function.name] = &function;
    return byName;
  }();
  return *kByName.at(name);
}

std::int32_t call(const Function& function, const Arguments& a) {
  using FiveArguments =
      std::int32_t (*)(std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t);
  return reinterpret_cast<FiveArguments>(function.address)(a[0], a[1], a[2], a[3], a[4]);
}

std::string Transform::label() const {
  return selector == 0 ? function->name : function->name + " of " + std::to_string(selector);
}

std::vector<std::int32_t> Transform::flags() const {
  if (!function->takes(Role::Flag)) return {kUnscaled};
  return {std::begin(kFlags), std::end(kFlags)};
}

Arguments Transform::arguments(const void* source, void* destination, std::int32_t flag,
                               const void* work) const {
  Arguments arguments = {};
  for (std::size_t i = 0; i < function->roles.size(); ++i) {
    switch (function->roles[i]) {
      case Role::Source: arguments[i] = asArgument(source); break;
      case Role::Destination: arguments[i] = asArgument(destination); break;
      case Role::Selector: arguments[i] = asArgument(selector); break;
      case Role::Flag: arguments[i] = asArgument(flag); break;
      case Role::Buffer:
      case Role::Plan: arguments[i] = asArgument(work); break;
      default: throw std::logic_error(function->name + " is no transform");
    }
  }
  return arguments;
}

const std::vector<Transform>& transforms() {
  static const std::vector<Transform> kTransforms = makeTransforms();
  return kTransforms;
}

const void* prepareWork(const Transform& transform, void* work) {
  if (!transform.isPlanned()) return work;
  const void* plan = nullptr;
  EXPECT_EQ(call(functionNamed("zvxgDCT4Init" + suffixOf(transform.function->elementBytes)),
                 {asArgument(&plan), asArgument(transform.selector), asArgument(work)}),
            zvxOk);
  return plan;
}

Runner::Runner(const Transform& transform)
    : transform_(transform),
      memory_(std::aligned_alloc(64, transform.workBytes / 64 * 64 + 64)),
      work_(prepareWork(transform, memory_.get())) {}

Bytes Runner::run(const Bytes& source, std::int32_t flag) const {
  Bytes destination(transform_.destinationBytes, kUntouched);
  EXPECT_EQ(call(*transform_.function,
                 transform_.arguments(source.data(), destination.data(), flag, work_)),
            zvxOk);
  return destination;
}

Bytes normalBytes(const Transform& transform, Random& random) {
  return withElement(transform, [&]<class T>(T) {
    const auto count = static_cast<int>(transform.sourceBytes / sizeof(T));
    return bytesOf(normalNumbers<T>(random, count));
  });
}

}  // namespace tests
