// Every exported function as one kind of thing. The library takes nothing but addresses and
// integers, at most five of them, so a function is its address and the roles of its arguments, and
// one form of call serves all: a function reads the registers that it has arguments for.
//
// A transform is a function that turns one array into another, with its length settled: a kernel,
// an entry and one of its lengths, the DCT-IV and one of its lengths. Arrays are bytes here.
#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "../harness.h"

namespace tests {

enum class Role {
  Source,
  Destination,
  Selector,  // a length or an order
  Flag,
  Buffer,   // of a Walsh-Hadamard transform
  Plan,     // a finished plan
  NewPlan,  // where the address of a new plan goes
  Block,    // where a new plan goes
  Size,     // where a size in bytes goes
};

struct Function {
  std::string name;
  std::vector<Role> roles;
  void* address;
  int elementBytes;

  bool takes(Role role) const;
  bool endsWith(const std::string& text) const { return name.ends_with(text); }
};

/// The 1,193 exported functions, from the list of kernels and the few names beside it.
const std::vector<Function>& exportedFunctions();
const Function& functionNamed(const std::string& name);

using Arguments = std::array<std::uint64_t, 5>;

inline std::uint64_t asArgument(const void* address) {
  return reinterpret_cast<std::uintptr_t>(address);
}
/// The upper half of the register of a 32-bit argument is anything.
inline std::uint64_t asArgument(std::int32_t number) {
  return 0xa5a5'0000'5a5a'0000 << 16 | static_cast<std::uint32_t>(number);
}

std::int32_t call(const Function& function, const Arguments& arguments);

using Bytes = std::vector<std::byte>;

struct Transform {
  const Function* function;
  std::int32_t selector;  // length, order, or 0 for a kernel, which has none
  std::string kernel;     // the name of what does the work; of a plan with its length
  std::size_t sourceBytes, destinationBytes;
  std::size_t workBytes;  // of the buffer or the block of the plan
  bool fills = true;      // every element of the destination; not so with odd lengths of the DCT-IV

  std::string label() const;
  bool isSingle() const { return function->elementBytes == 4; }
  bool isPlanned() const { return function->takes(Role::Plan); }
  /// The four flags, or one to make a loop over flags run once.
  std::vector<std::int32_t> flags() const;
  Arguments arguments(const void* source, void* destination, std::int32_t flag,
                      const void* work) const;
};

inline constexpr std::int32_t kLongestListed = 1 << 17;  // a plan of splits in splits

/// All transforms: kernels, entries at all lengths, the DCT-IV up to kLongestListed. `ZVXG_KERNEL`
/// leaves those with that text in their name.
const std::vector<Transform>& transforms();

/// Makes what stands in `work`, of work bytes, ready; what it returns is passed to the transform.
const void* prepareWork(const Transform& transform, void* work);

/// A transform with work memory of its own.
class Runner {
 public:
  explicit Runner(const Transform& transform);
  const void* work() const { return work_; }
  /// The destination, poisoned before the call, which has to succeed.
  Bytes run(const Bytes& source, std::int32_t flag) const;

 private:
  struct Free {
    void operator()(void* memory) const { std::free(memory); }
  };
  const Transform& transform_;
  std::unique_ptr<void, Free> memory_;
  const void* work_;
};

/// Calls body(transform) for each, its label in the trace of a failure. Stops at a fatal one.
template <class Body>
void forEachTransform(const Body& body) {
  ASSERT_FALSE(transforms().empty());
  for (const Transform& transform : transforms()) {
    SCOPED_TRACE(transform.label());
    body(transform);
    if (testing::Test::HasFatalFailure()) return;
  }
}

// ---- Bytes -------------------------------------------------------------------------------------

template <class T>
Bytes bytesOf(const std::vector<T>& numbers) {
  Bytes bytes(numbers.size() * sizeof(T));
  std::memcpy(bytes.data(), numbers.data(), bytes.size());
  return bytes;
}

template <class T>
std::vector<T> numbersOf(const Bytes& bytes) {
  std::vector<T> numbers(bytes.size() / sizeof(T));
  std::memcpy(numbers.data(), bytes.data(), bytes.size());
  return numbers;
}

/// body(T()) with the element type of the transform.
template <class Body>
decltype(auto) withElement(const Transform& transform, const Body& body) {
  return transform.isSingle() ? body(float{}) : body(double{});
}

Bytes normalBytes(const Transform& transform, Random& random);

inline constexpr std::byte kUntouched{0xa5};

}  // namespace tests
