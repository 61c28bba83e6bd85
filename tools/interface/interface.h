// What the libraries export: every function with what its arguments are, so that one form of call
// serves all of them. Tests, fuzz targets and zvxg-bench run over this list, and scripts over the
// same as JSON; list.cpp makes it. Plain data, and all code is in this header or takes part in no
// result: MemorySanitizer wants the code of a program compiled for it.
//
// A transform is a function that turns one array into another, with its length settled: a kernel,
// an entry with one of its lengths, the DCT-IV with a plan of one length.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <stdexcept>
#include <vector>

#include "kernel_id.h"  // kernelgen

namespace api {

using kernelgen::Direction;
using kernelgen::Layout;

enum class Family {
  Version,
  Complex,
  Real,
  Hartley,
  Wht,
  Dct4,
  Level
};

enum class Role {
  None,
  Source,
  Destination,
  Selector,  // a length or an order
  Flag,
  Buffer,   // of a Walsh-Hadamard transform
  Plan,     // a finished plan
  NewPlan,  // where the address of a new plan goes
  Block,    // where a new plan goes
  Size,     // where a size in bytes goes
  // Of many transforms in one call
  SourceStride,
  SourceDist,
  DestinationStride,
  DestinationDist,
  Howmany,
  Level
};

constexpr std::size_t kMostArguments = 10;
using Roles = std::array<Role, kMostArguments>;
/// The flags that choose the factor of a result; zvxg.h has their names.
inline constexpr std::int32_t kFlags[] = {1, 2, 4, 8};

/// An address, or an integer of any size. A function reads those that it has arguments for.
using Arguments = std::array<std::uint64_t, kMostArguments>;

inline std::uint64_t asArgument(const void* address) {
  return reinterpret_cast<std::uintptr_t>(address);
}
/// The upper half of the register of a 32-bit argument is anything.
inline std::uint64_t asArgument(std::int32_t number) {
  return 0xa5a5'0000'5a5a'0000 << 16 | static_cast<std::uint32_t>(number);
}

#ifdef __clang__
#define ZVXG_ANY_FUNCTION __attribute__((no_sanitize("function")))
#else
#define ZVXG_ANY_FUNCTION
#endif

struct Function {
  const char* symbol;
  Family family;
  Direction direction;
  Layout layout;
  int bits;                         // of a real number: 32 or 64; 0 of a function that takes none
  int first, last;                  // lengths or orders; of a kernel the same, its own
  int sourceSize, destinationSize;  // of a kernel, in real numbers
  Roles roles;
  void* address = nullptr;

  bool takes(Role role) const { return std::find(roles.begin(), roles.end(), role) != roles.end(); }
  bool isKernel() const { return takes(Role::Source) && first == last; }
  bool isPlanned() const { return takes(Role::Source) && takes(Role::Plan); }
  /// A kernel by its length.
  bool isEntry() const { return takes(Role::Source) && takes(Role::Selector); }
  bool isMany() const { return takes(Role::Howmany); }
  std::size_t elementBytes() const { return static_cast<std::size_t>(bits) / 8; }

  // The sanitizer compares types, which are not those of the function.
  ZVXG_ANY_FUNCTION std::int32_t call(const Arguments& a) const {
    using u = std::uint64_t;
    const auto function = reinterpret_cast<std::int32_t (*)(u, u, u, u, u, u, u, u, u, u)>(address);
    return function(a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9]);
  }
};
#undef ZVXG_ANY_FUNCTION

/// Of a kernel that is generated; throws std::invalid_argument for another function.
inline kernelgen::KernelId kernelIdOf(const Function& kernel) {
  const auto of = [&](kernelgen::Family family) -> kernelgen::KernelId {
    return {family, kernel.direction, kernel.first,
            kernel.bits == 32 ? kernelgen::Precision::Single : kernelgen::Precision::Double,
            kernel.layout};
  };
  switch (kernel.family) {
    case Family::Complex: return of(kernelgen::Family::Complex);
    case Family::Real: return of(kernelgen::Family::Real);
    case Family::Hartley: return of(kernelgen::Family::Hartley);
    case Family::Version:
    case Family::Wht:
    case Family::Dct4:
    case Family::Level: break;
  }
  throw std::invalid_argument(kernel.symbol);
}

/// All functions of libzvxg, in the order of the header, without addresses.
std::span<const Function> functions();
/// Those of libzvxgmany. What there is by length, or by a plan, has Many in its name here.
std::span<const Function> manyFunctions();
/// The same with the addresses in this program, which is linked with the libraries.
std::span<const Function> linkedFunctions();
std::span<const Function> linkedManyFunctions();

/// How many transforms a call does and where they are, for a function that asks.
struct Batch {
  struct Side {
    std::ptrdiff_t stride = 1, dist = 0;  // in elements
  };
  std::int64_t howmany = 1;
  Side source, destination;
};

struct Transform {
  const Function* function;
  std::int32_t selector;   // length, order, or 0 for a kernel, which has none
  const Function* kernel;  // what does the work: of an entry the kernel of the length
  int points;
  std::size_t sourceBytes, destinationBytes;
  std::size_t workBytes = 0;  // of the buffer or the block of the plan
  bool fills = true;  // every element of the destination; not so with odd lengths of the DCT-IV

  Arguments arguments(const void* source, void* destination, std::int32_t flag, const void* work,
                      const Batch& batch = {}) const {
    const auto number = [](std::int64_t n) { return static_cast<std::uint64_t>(n); };
    Arguments arguments = {};
    for (std::size_t i = 0; i < kMostArguments; ++i) {
      switch (function->roles[i]) {
        case Role::Source: arguments[i] = asArgument(source); break;
        case Role::SourceStride: arguments[i] = number(batch.source.stride); break;
        case Role::SourceDist: arguments[i] = number(batch.source.dist); break;
        case Role::Destination: arguments[i] = asArgument(destination); break;
        case Role::DestinationStride: arguments[i] = number(batch.destination.stride); break;
        case Role::DestinationDist: arguments[i] = number(batch.destination.dist); break;
        case Role::Howmany: arguments[i] = number(batch.howmany); break;
        case Role::Selector: arguments[i] = asArgument(selector); break;
        case Role::Flag: arguments[i] = asArgument(flag); break;
        case Role::Buffer:
        case Role::Plan: arguments[i] = asArgument(work); break;
        case Role::NewPlan:
        case Role::Block:
        case Role::Size:
        case Role::Level:
        case Role::None: break;
      }
    }
    return arguments;
  }
  std::int32_t call(const void* source, void* destination, std::int32_t flag, const void* work,
                    const Batch& batch = {}) const {
    return function->call(arguments(source, destination, flag, work, batch));
  }
  /// An element is one of its parts, or of a complex number or a bin both.
  int sourceParts() const { return isComplex(Direction::Inverse) ? 2 : 1; }
  int destinationParts() const { return isComplex(Direction::Forward) ? 2 : 1; }

 private:
  bool isComplex(Direction toThisSide) const {
    return function->family == Family::Complex ||
           (function->layout == Layout::Ccs && function->direction == toThisSide);
  }
};

/// The lengths of the DCT-IV from 2 up: powers of two and, from the first length with a plan of
/// stages on, a power of two and 1.
inline std::vector<std::int32_t> planLengths(int bits, std::int32_t longest) {
  std::vector<std::int32_t> lengths;
  for (std::int32_t n = 2; n <= longest; n *= 2) lengths.push_back(n);
  for (std::int32_t n = bits == 32 ? 128 : 32; n < longest; n *= 2) lengths.push_back(n + 1);
  return lengths;
}

/// The functions of one build of the library.
class Exports {
 public:
  explicit Exports(std::span<const Function> functions) : functions_(functions) {}

  std::span<const Function> functions() const { return functions_; }

  /// The function of the same family and precision with just these arguments.
  const Function& sibling(const Function& like, std::initializer_list<Role> arguments) const {
    Roles roles = {};
    std::copy(arguments.begin(), arguments.end(), roles.begin());
    return *std::find_if(functions_.begin(), functions_.end(), [&](const Function& function) {
      return function.family == like.family && function.bits == like.bits &&
             function.roles == roles;
    });
  }

  /// The function that does one at a time of what a function does many times.
  const Function& single(const Function& many) const {
    return *std::find_if(functions_.begin(), functions_.end(), [&](const Function& function) {
      return function.takes(Role::Source) && !function.isKernel() && serves(many, function);
    });
  }

  /// What a buffer or the block of a plan has to have; 0 if there is no such length.
  std::uint32_t askedBytes(const Function& like, std::int32_t selector) const {
    std::uint32_t bytes = 0;
    const Function& query = sibling(like, {Role::Selector, Role::Size});
    return query.call({asArgument(selector), asArgument(&bytes)}) == 0 ? bytes : 0;
  }

  /// Makes work memory of a transform ready; what it returns is passed to the transform: null if a
  /// plan was refused.
  const void* prepare(const Transform& transform, void* work) const {
    if (!transform.function->isPlanned()) return work;
    const void* plan = nullptr;
    sibling(*transform.function, {Role::NewPlan, Role::Selector, Role::Block})
        .call({asArgument(&plan), asArgument(transform.selector), asArgument(work)});
    return plan;
  }

  /// The transforms of a function, with plans of these lengths.
  std::vector<Transform> transformsOf(const Function& function,
                                      std::span<const std::int32_t> lengths) const {
    std::vector<Transform> list;
    const std::size_t bytes = function.elementBytes();
    if (function.isPlanned()) {
      for (const std::int32_t n : lengths) {
        list.push_back({&function, n, &function, n, bytes * n, bytes * n, askedBytes(function, n),
                        n % 2 == 0});
      }
    }
    for (const Function& kernel : functions_) {
      const bool does = function.isEntry() ? serves(function, kernel) : &function == &kernel;
      if (!does || !kernel.isKernel()) continue;
      list.push_back({&function, function.isEntry() ? kernel.first : 0, &kernel,
                      kernel.family == Family::Wht ? 1 << kernel.first : kernel.first,
                      bytes * kernel.sourceSize, bytes * kernel.destinationSize,
                      kernel.takes(Role::Buffer) ? askedBytes(kernel, kernel.first) : 0});
    }
    return list;
  }

 private:
  static bool serves(const Function& a, const Function& b) {
    return a.family == b.family && a.direction == b.direction && a.layout == b.layout &&
           a.bits == b.bits;
  }

  std::span<const Function> functions_;
};

}  // namespace api
