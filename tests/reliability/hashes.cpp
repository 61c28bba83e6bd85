// Prints a hash of the results of every transform, by flag, or compares them with those in a file:
//
//     zvxg_hashes print >tests/hashes.csv
//     zvxg_hashes check tests/hashes.csv
//
// The sources are made of integers and powers of two, so they are the same on every machine. A
// DCT-IV by a plan has tables from the math library, whose last bits depend on its version and on
// the processor that it finds; these hashes are compared only where its sines and cosines are those
// of the file. ZVXG_LIBRARY tests another build of the library.

#include <cmath>
#include <fstream>
#include <iostream>
#include <numbers>
#include <set>
#include <sstream>

#include "../harness.h"

namespace tests {
namespace {

// ---- Sources -----------------------------------------------------------------------------------

// SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, 2014).
class Integers {
 public:
  std::uint64_t next() {
    std::uint64_t z = state_ += 0x9e3779b97f4a7c15;
    z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9;
    z = (z ^ z >> 27) * 0x94d049bb133111eb;
    return z ^ z >> 31;
  }

 private:
  std::uint64_t state_ = 1;
};

enum class Kind {
  Even,    // between -1 and 1
  Wide,    // over 40 binary orders
  Sparse,  // three quarters zeros, of both signs
  Tiny     // about the smallest normal number
};
constexpr Kind kKinds[] = {Kind::Even, Kind::Wide, Kind::Sparse, Kind::Tiny};

// An integer that T holds exactly, times a power of two.
template <class T>
std::vector<T> makeSource(Kind kind, std::size_t count) {
  constexpr int kDigits = std::numeric_limits<T>::digits;
  Integers integers;
  std::vector<T> source(count);
  for (T& number : source) {
    const std::uint64_t bits = integers.next();
    const auto integer = static_cast<std::int64_t>(bits) >> (64 - kDigits);
    int exponent = 1 - kDigits;
    if (kind == Kind::Wide) exponent += static_cast<int>(bits % 41) - 20;
    if (kind == Kind::Tiny) exponent += std::numeric_limits<T>::min_exponent;
    number = std::ldexp(static_cast<T>(integer), exponent);
    if (kind == Kind::Sparse && bits % 4 != 0) number = integer < 0 ? T(-0.0) : T(0);
  }
  return source;
}

// ---- Hashes ------------------------------------------------------------------------------------

// FNV-1a (Fowler, Noll, Vo).
class Hash {
 public:
  void add(const Bytes& bytes) {
    for (const std::byte byte : bytes) {
      value_ = (value_ ^ std::to_integer<std::uint64_t>(byte)) * 0x100000001b3;
    }
  }
  std::string text() const {
    std::ostringstream text;
    text << std::hex << value_;
    return text.str();
  }

 private:
  std::uint64_t value_ = 0xcbf29ce484222325;
};

// A line of the file: a hash for each flag, behind the name of the transform.
std::string lineOf(const Transform& transform) {
  const Runner runner(transform);
  std::string line = nameOf(transform);
  for (const std::int32_t flag : flagsOf(transform)) {
    Hash hash;
    for (const Kind kind : kKinds) {
      withElement(transform, [&]<class T>(T) {
        const auto source = makeSource<T>(kind, transform.sourceBytes / sizeof(T));
        hash.add(runner.run(bytesOf(source), flag));
      });
    }
    line += ',' + hash.text();
  }
  return line;
}

// The math library's values of angles like those of the plans.
template <class T>
std::string mathLine() {
  Hash hash;
  for (int i = 1; i < 1 << 18; i += 2) {
    const T angle = static_cast<T>(std::numbers::pi * i / (1 << 18));
    hash.add(bytesOf(std::vector<T>{std::cos(angle), std::sin(angle)}));
  }
  return std::string("sine and cosine ") + (sizeof(T) == 4 ? "32f," : "64f,") + hash.text();
}

bool needsMathLibrary(const Transform& transform) {
  const int direct = transform.function->bits == 32 ? 64 : 32;
  return transform.function->isPlanned() && transform.points > direct;
}

int print() {
  std::cout << mathLine<float>() << '\n' << mathLine<double>() << '\n';
  for (const Transform& transform : transforms()) {
    // Entries have the results of their kernels.
    if (!transform.function->isEntry()) std::cout << lineOf(transform) << '\n';
  }
  return 0;
}

int check(const char* path) {
  std::set<std::string> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) lines.insert(line);
  const bool sameMath[] = {lines.contains(mathLine<float>()), lines.contains(mathLine<double>())};
  std::size_t results = 0, leftOut = 0, differing = 0, kernels = 2;  // the two lines on sines
  for (const Transform& transform : transforms()) {
    kernels += !transform.function->isEntry();
    if (needsMathLibrary(transform) && !sameMath[transform.function->bits == 64]) {
      ++leftOut;
      continue;
    }
    results += flagsOf(transform).size() * std::size(kKinds);
    if (lines.contains(lineOf(transform))) continue;
    ++differing;
    std::cerr << "other bits: " << nameOf(transform) << '\n';
  }
  std::cout << transforms().size() - leftOut << " functions and lengths, " << results
            << " results, " << differing << " with other bits, " << leftOut
            << " left out for their sines\n";
  const bool complete = kernels == lines.size() || std::getenv("ZVXG_KERNEL") != nullptr;
  if (!complete) std::cerr << path << " has other transforms than the library\n";
  return differing == 0 && complete ? 0 : 1;
}

}  // namespace
}  // namespace tests

int main(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  if (command == "print" && argc == 2) return tests::print();
  if (command == "check" && argc == 3) return tests::check(argv[2]);
  std::cerr << "usage: zvxg_hashes print | check FILE\n";
  return 2;
}
