// Which kernels there are: what each one computes, the name that it is exported by, the places of
// its numbers. What names, calls or checks kernels needs nothing else of the generator.
#pragma once

#include <string>
#include <vector>

namespace kernelgen {

enum class Precision {
  Single,
  Double
};

enum class Direction {
  Forward,
  Inverse
};

enum class Family {
  Complex,
  Real,
  Hartley
};

// How the half spectrum of a real kernel is stored; only CCS has places for the imaginary parts
// that are always zero.
enum class Layout {
  None,
  Ccs,
  Pack,
  Perm
};

constexpr int kMinLength = 2;
constexpr int kMaxLength = 64;

struct KernelId {
  Family family;
  Direction direction;
  int length;
  Precision precision;
  Layout layout = Layout::None;

  std::string symbol() const;
  // The by-length entry that serves the kernel: the same name without the number.
  std::string entrySymbol() const;
  // Of its arrays, in real numbers.
  int sourceSize() const;
  int destinationSize() const;

  bool operator==(const KernelId&) const = default;
};

// Every kernel that is built, in the order of the header.
std::vector<KernelId> kernelList();

// The kernel of that name; throws std::invalid_argument if there is none.
KernelId kernelOfSymbol(const std::string& symbol);

// Whether forward and inverse are two transforms.
bool isDirected(Family family);

// Where a half spectrum of `length` samples has the parts of bin k, by the count of numbers before
// them; kNowhere for an imaginary part that is always zero and has no place.
struct BinPlace {
  int re, im;
};
constexpr int kNowhere = -1;
BinPlace binPlace(Layout layout, int length, int k);

// Whether bin k of a real signal is its own mirror, with no imaginary part.
bool isOwnMirror(int length, int k);

// The factor of a flag of zvxg.h: 1, 1/length or 1/sqrt(length), as a number of the precision.
double scaleFactor(const KernelId& id, int flag);
double byLength(int length, Precision precision);
double byRootOfLength(int length, Precision precision);

}  // namespace kernelgen
