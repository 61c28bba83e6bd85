#include "kernel_id.h"

#include <cmath>
#include <stdexcept>

namespace kernelgen {
namespace {

// Of a value that its enumeration does not have.
[[noreturn]] void missing(const char* what) {
  throw std::logic_error(std::string("a kernel of no ") + what);
}

const char* nameOf(Layout layout) {
  switch (layout) {
    case Layout::None: return "";
    case Layout::Ccs: return "CCS";
    case Layout::Pack: return "Pack";
    case Layout::Perm: return "Perm";
  }
  missing("layout");
}

// The name but for the length.
struct NameParts {
  std::string front, end;
};

NameParts nameParts(const KernelId& id) {
  const bool forward = id.direction == Direction::Forward;
  const std::string dft = forward ? "zvxgDFTFwd_" : "zvxgDFTInv_", spectrum = nameOf(id.layout);
  const std::string real = id.precision == Precision::Single ? "_32f" : "_64f";
  switch (id.family) {
    case Family::Complex: return {dft + "CToC", real + "c"};
    case Family::Real: return {dft + (forward ? "RTo" + spectrum : spectrum + "ToR"), real};
    case Family::Hartley: return {"zvxgHartley", real};
  }
  missing("family");
}

int signalSize(const KernelId& id) {
  switch (id.family) {
    case Family::Complex: return 2 * id.length;
    case Family::Real:
    case Family::Hartley: return id.length;
  }
  missing("family");
}

int spectrumSize(const KernelId& id) {
  return id.layout == Layout::Ccs ? id.length / 2 * 2 + 2 : signalSize(id);
}

double rounded(double value, Precision precision) {
  return precision == Precision::Single ? static_cast<double>(static_cast<float>(value)) : value;
}

}  // namespace

std::string KernelId::symbol() const {
  const NameParts name = nameParts(*this);
  return name.front + "_" + std::to_string(length) + name.end;
}

std::string KernelId::entrySymbol() const {
  const NameParts name = nameParts(*this);
  return name.front + name.end;
}

int KernelId::sourceSize() const {
  return direction == Direction::Forward ? signalSize(*this) : spectrumSize(*this);
}

int KernelId::destinationSize() const {
  return direction == Direction::Forward ? spectrumSize(*this) : signalSize(*this);
}

std::vector<KernelId> kernelList() {
  std::vector<KernelId> list;
  const auto addLengths = [&](Family family, Precision precision, Direction direction,
                              Layout layout) {
    for (int n = kMinLength; n <= kMaxLength; ++n) {
      list.push_back({family, direction, n, precision, layout});
    }
  };
  constexpr Precision kPrecisions[] = {Precision::Single, Precision::Double};
  constexpr Direction kDirections[] = {Direction::Forward, Direction::Inverse};
  for (Precision p : kPrecisions) {
    for (Direction d : kDirections) addLengths(Family::Complex, p, d, Layout::None);
  }
  for (Precision p : kPrecisions) {
    for (Direction d : kDirections) {
      for (Layout l : {Layout::Ccs, Layout::Pack, Layout::Perm}) addLengths(Family::Real, p, d, l);
    }
  }
  for (Precision p : kPrecisions) addLengths(Family::Hartley, p, Direction::Forward, Layout::None);
  return list;
}

KernelId kernelOfSymbol(const std::string& symbol) {
  for (const KernelId& id : kernelList()) {
    if (id.symbol() == symbol) return id;
  }
  throw std::invalid_argument("no kernel is named " + symbol);
}

bool isDirected(Family family) {
  switch (family) {
    case Family::Complex:
    case Family::Real: return true;
    case Family::Hartley: return false;
  }
  missing("family");
}

// A layout lists the parts of the bins in their order; only Perm of an even length has the middle
// bin moved to the front.
BinPlace binPlace(Layout layout, int length, int k) {
  if (layout == Layout::Ccs) return {2 * k, 2 * k + 1};
  if (k == 0) return {0, kNowhere};
  const bool movesMiddle = layout == Layout::Perm && length % 2 == 0;
  if (2 * k == length) return {movesMiddle ? 1 : length - 1, kNowhere};
  return movesMiddle ? BinPlace{2 * k, 2 * k + 1} : BinPlace{2 * k - 1, 2 * k};
}

bool isOwnMirror(int length, int k) { return k == 0 || 2 * k == length; }

double byLength(int length, Precision precision) { return rounded(1.0 / length, precision); }

// 1 over the rounded root, so that of some lengths it is not the number nearest to 1/sqrt(length).
double byRootOfLength(int length, Precision precision) {
  return rounded(1.0 / std::sqrt(static_cast<double>(length)), precision);
}

double scaleFactor(const KernelId& id, int flag) {
  const bool directed = isDirected(id.family), forward = id.direction == Direction::Forward;
  const double divided = byLength(id.length, id.precision);
  switch (flag) {
    case 1: return !directed || forward ? divided : 1;   // zvxDivFwdByN
    case 2: return !directed || !forward ? divided : 1;  // zvxDivInvByN
    case 4: return byRootOfLength(id.length, id.precision);
    default: return 1;
  }
}

}  // namespace kernelgen
