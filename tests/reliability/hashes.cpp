// Prints a hash of the results of every transform, by flag, or compares them with those in a file:
//
//     zvxg_hashes print >tests/hashes.csv
//     zvxg_hashes check tests/hashes.csv [tests/hashes_x87.csv]
//
// The sources are made of integers and powers of two, so they are the same on every machine. A
// DCT-IV by a plan has tables from the math library, whose last bits depend on its version and on
// the processor that it finds; these hashes are compared only where its sines and cosines are those
// of the file, or of the second one, which has these transforms with the sines of the x87. It comes
// from zvxg_hashes_x87 with ZVXG_KERNEL=DCT4_. ZVXG_LIBRARY tests another build of the library.
//
// A function of libzvxgmany has one line for all its lengths, which holds at each level and in every
// layout; ZVXG_MANY_LIBRARY is another build of that library.

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <numbers>
#include <set>
#include <span>
#include <sstream>

#include "../batches.h"
#include "../harness.h"
#include "zvxg_many.h"

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

// Whole vectors of transforms, however wide, and some left over.
constexpr int kHowmany = 37;
constexpr std::int32_t kLongestPlan = 1024;

// The results of a batch one behind the other, as the sources are. Each call has the next of nine
// pairs of layouts: contiguous, element-major, with gaps.
template <class T>
std::vector<T> runBatch(const Transform& transform, const void* work, const std::vector<T>& source,
                        int32_t flag) {
  static int turn = 0;
  const auto layout = [](int which, std::ptrdiff_t n) {
    const api::Batch::Side kLayouts[] = {{1, n}, {kHowmany, 1}, {3, 3 * n + 2}};
    return kLayouts[which % 3];
  };
  const Shape from = sourceShape(transform), to = destinationShape(transform);
  const api::Batch batch = {kHowmany, layout(turn, from.elements), layout(turn / 3, to.elements)};
  ++turn;
  const Places sources(from, batch.source, kHowmany), results(to, batch.destination, kHowmany);
  std::vector<T> src(sources.size()), dst(results.size()), found;
  for (int i = 0; i < kHowmany * from.numbers(); ++i) {
    src[sources(i / from.numbers(), i % from.numbers())] = source[i];
  }
  EXPECT_EQ(transform.call(src.data(), dst.data(), flag, work, batch), zvxOk);
  for (int i = 0; i < kHowmany * to.numbers(); ++i) {
    found.push_back(dst[results(i / to.numbers(), i % to.numbers())]);
  }
  return found;
}

// The transforms of a line, more than one if it is of a function for many, and the line: a hash for
// each flag, behind the name.
using Line = std::vector<Transform>;

std::string textOf(const Line& line) {
  std::string text = nameOf(line[0]);
  for (const std::int32_t flag : flagsOf(line[0])) {
    Hash hash;
    for (const Transform& transform : line) {
      const Runner runner(transform);
      const bool isMany = transform.function->isMany();
      for (const Kind kind : kKinds) {
        withElement(transform, [&]<class T>(T) {
          const std::size_t count = transform.sourceBytes / sizeof(T) * (isMany ? kHowmany : 1);
          const std::vector<T> source = makeSource<T>(kind, count);
          hash.add(bytesOf(isMany ? runBatch(transform, runner.work(), source, flag)
                                  : runner.run(source, flag)));
        });
      }
    }
    text += ',' + hash.text();
  }
  return text;
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

std::vector<Line> linesOf(std::span<const Transform> transforms) {
  std::vector<Line> lines;
  for (const Transform& transform : transforms) {
    if (transform.function->isMany() && !lines.empty() &&
        nameOf(transform) == nameOf(lines.back()[0])) {
      lines.back().push_back(transform);
    } else {
      lines.push_back({transform});
    }
  }
  return lines;
}

class Many {
 public:
  const std::vector<Line>& lines() const { return lines_; }
  bool hasLevel(int32_t level) const {
    const auto limit = library_.find("zvxgManyLimitLevel");
    return reinterpret_cast<decltype(&zvxgManyLimitLevel)>(limit)(level) == level;
  }

 private:
  static const char* file() {
    const char* const other = std::getenv("ZVXG_MANY_LIBRARY");
    return other != nullptr ? other : ZVXG_MANY_FILE;
  }

  Library library_{file()};
  std::vector<Function> functions_ = functionsIn(library_, api::manyFunctions());
  std::vector<Line> lines_ = linesOf(transformsOf(functions_, kLongestPlan));
};

int print() {
  std::cout << mathLine<float>() << '\n' << mathLine<double>() << '\n';
  for (const Line& line : linesOf(transforms())) {
    // Entries have the results of their kernels.
    if (!line[0].function->isEntry()) std::cout << textOf(line) << '\n';
  }
  const Many many;
  for (const Line& line : many.lines()) std::cout << textOf(line) << '\n';
  return 0;
}

class Record {
 public:
  explicit Record(const char* path) {
    read(path);
    count_ = lines_.size();
  }
  // Further lines of the same transforms.
  void read(const char* path) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) lines_.insert(line);
    sameMath_[0] = lines_.contains(mathLine<float>());
    sameMath_[1] = lines_.contains(mathLine<double>());
  }
  std::size_t lines() const { return count_; }
  int differing() const { return differing_; }

  // Compares the lines and tells about them, in these words.
  void compare(const std::vector<Line>& lines, const char* functions, const char* results) {
    int compared = 0, count = 0, differing = 0, leftOut = 0;
    for (const Line& line : lines) {
      if (needsMathLibrary(line[0]) && !sameMath_[line[0].function->bits == 64]) {
        ++leftOut;
        continue;
      }
      compared += static_cast<int>(line.size());
      count += static_cast<int>(line.size() * flagsOf(line[0]).size() * std::size(kKinds));
      if (lines_.contains(textOf(line))) continue;
      ++differing;
      std::cerr << "other bits: " << nameOf(line[0]) << '\n';
    }
    std::cout << compared << ' ' << functions << ", " << count << ' ' << results << ", "
              << differing << " with other bits, " << leftOut << " left out for their sines\n";
    differing_ += differing;
  }

 private:
  std::set<std::string> lines_;
  std::size_t count_ = 0;
  bool sameMath_[2] = {};
  int differing_ = 0;
};

int check(const char* path, const char* more) {
  Record record(path);
  if (more != nullptr) record.read(more);
  const std::vector<Line> lines = linesOf(transforms());
  record.compare(lines, "functions and lengths", "results");
  const Many many;
  for (const int32_t level : {zvxManyAvx, zvxManyAvx512}) {
    std::cout << "libzvxgmany with AVX" << (level == zvxManyAvx ? ": " : "-512: ");
    if (many.hasLevel(level)) {
      record.compare(many.lines(), "lengths", "batches");
    } else {
      std::cout << "not here\n";
    }
  }
  const auto kernels = std::count_if(lines.begin(), lines.end(),
                                     [](const Line& line) { return !line[0].function->isEntry(); });
  // Beside them the two lines on sines.
  const bool complete =
      std::getenv("ZVXG_KERNEL") != nullptr || record.lines() == 2 + kernels + many.lines().size();
  if (!complete) std::cerr << path << " has other transforms than the library\n";
  return record.differing() == 0 && complete ? 0 : 1;
}

}  // namespace
}  // namespace tests

int main(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  if (command == "print" && argc == 2) return tests::print();
  if (command == "check" && (argc == 3 || argc == 4)) return tests::check(argv[2], argv[3]);
  std::cerr << "usage: zvxg_hashes print | check FILE [FILE]\n";
  return 2;
}
