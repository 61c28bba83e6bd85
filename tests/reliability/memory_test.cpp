// Memory: nothing outside the arrays is touched, and where they lie changes no bit.

#include <algorithm>

#include "../placement.h"
#include "functions.h"

namespace tests {
namespace {

// The largest of all, to place each transform's in.
std::size_t largest(std::size_t Transform::*bytes) {
  std::size_t most = 0;
  for (const Transform& transform : transforms()) most = std::max(most, transform.*bytes);
  return most;
}

constexpr bool kPlaces[] = {false, true};

TEST(Memory, NothingOutsideTheArraysIsTouched) {
  GuardedPages sourcePages(largest(&Transform::sourceBytes)),
      destinationPages(largest(&Transform::destinationBytes)),
      workPages(largest(&Transform::workBytes));
  // The check itself: a read before, a write behind and one to the source have to be caught.
  sourcePages.protect(PROT_READ);
  auto* const first = sourcePages.place<volatile char>(1, false);
  ASSERT_EQ(faultOf([&] { [[maybe_unused]] char read = first[-1]; }).signal, SIGSEGV);
  ASSERT_EQ(faultOf([&] { sourcePages.place<volatile char>(1, true)[1] = 0; }).signal, SIGSEGV);
  ASSERT_EQ(faultOf([&] { *first = 0; }).signal, SIGSEGV);

  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    const Runner runner(transform);
    const Bytes data = normalBytes(transform, random);
    const auto expectSame = [&](const void* source, std::byte* destination, std::int32_t flag,
                                const void* work, const Bytes& expected) {
      ++calls;
      const Arguments arguments = transform.arguments(source, destination, flag, work);
      const Fault fault = faultOf([&] { call(*transform.function, arguments); });
      ASSERT_EQ(fault.signal, 0) << "at " << fault.address << ", source " << source
                                 << ", destination " << static_cast<void*>(destination) << ", work "
                                 << work << ", flag " << flag;
      ASSERT_TRUE(std::equal(expected.begin(), expected.end(), destination)) << "flag " << flag;
    };
    for (const std::int32_t flag : transform.flags()) {
      const Bytes expected = runner.run(data, flag);
      for (const bool workAtEnd : kPlaces) {
        if (workAtEnd && transform.workBytes == 0 && !transform.function->takes(Role::Buffer)) {
          continue;
        }
        // Of no bytes, at the end, this is an address that may not be touched.
        const void* const work =
            prepareWork(transform, workPages.place<std::byte>(transform.workBytes, workAtEnd));
        for (const bool atEnd : kPlaces) {
          auto* const source = sourcePages.place<std::byte>(data.size(), atEnd);
          sourcePages.protect(PROT_READ | PROT_WRITE);
          std::copy(data.begin(), data.end(), source);
          sourcePages.protect(PROT_READ);
          for (const bool destinationAtEnd : kPlaces) {
            auto* const destination =
                destinationPages.place<std::byte>(expected.size(), destinationAtEnd);
            std::fill_n(destination, expected.size(), kUntouched);
            expectSame(source, destination, flag, work, expected);
          }
          // In place; of a longer source, what is behind the result stays.
          Bytes whole = data;
          whole.resize(std::max(data.size(), expected.size()), kUntouched);
          auto* const array = destinationPages.place<std::byte>(whole.size(), atEnd);
          std::copy(whole.begin(), whole.end(), array);
          std::copy(expected.begin(), expected.end(), whole.begin());
          expectSame(array, array, flag, work, transform.fills ? whole : Bytes());
        }
      }
    }
  });
  RecordProperty("calls", std::to_string(calls));
}

// ---- Offsets -----------------------------------------------------------------------------------

constexpr std::size_t kOffsets = 64;  // bytes of a cache line, the period of all alignment tests
constexpr std::size_t kPageBytes = 4096;

// Room for an array at every distance from a cache line, and a line on either side.
class Surroundings {
 public:
  explicit Surroundings(std::size_t bytes)
      : bytes_(bytes), whole_(bytes + 4 * kOffsets, kUntouched) {
    const auto address = reinterpret_cast<std::uintptr_t>(whole_.data());
    base_ = whole_.data() + (2 * kOffsets - address % kOffsets);
  }
  std::byte* at(std::size_t offset) { return base_ + offset; }
  void clear() { std::fill(whole_.begin(), whole_.end(), kUntouched); }
  bool hold(std::size_t offset, const Bytes& expected) const {
    const std::byte* const array = base_ + offset;
    return std::memcmp(array, expected.data(), bytes_) == 0 && untouched(array - kOffsets) &&
           untouched(array + bytes_);
  }

 private:
  static bool untouched(const std::byte* line) {
    return std::all_of(line, line + kOffsets, [](std::byte b) { return b == kUntouched; });
  }
  std::size_t bytes_;
  Bytes whole_;
  std::byte* base_;
};

// Byte by byte, though the elements of an ordinary array are on their own boundaries: the contract
// asks for none. Long plans take a part of the offsets, each of either array once.
TEST(Memory, SameBitsAtEveryPairOfByteOffsets) {
  constexpr std::size_t kLongest = 1 << 16;
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    const Runner runner(transform);
    const Bytes data = normalBytes(transform, random);
    const std::vector<std::int32_t> flags = transform.flags();
    std::vector<Bytes> expected;
    for (const std::int32_t flag : flags) expected.push_back(runner.run(data, flag));
    // At the place of the destination in a page the buffer competes with it for the cache.
    const bool buffered = transform.function->takes(Role::Buffer);
    Bytes large(buffered ? transform.workBytes + 2 * kPageBytes : 0);
    const auto competing = [&](const std::byte* destination) {
      const auto distance = reinterpret_cast<std::uintptr_t>(destination) -
                            reinterpret_cast<std::uintptr_t>(large.data());
      return large.data() + distance % kPageBytes / 16 * 16;
    };

    Surroundings source(data.size()), destination(transform.destinationBytes);
    const std::size_t stride = data.size() > kLongest ? kOffsets : 1;
    for (std::size_t from = 0; from < kOffsets; ++from) {
      source.clear();
      std::copy(data.begin(), data.end(), source.at(from));
      for (std::size_t to = from * 11 % stride; to < kOffsets; to += stride) {
        const std::size_t number = (from + to) % flags.size();
        for (const bool competes : kPlaces) {
          if (competes && !buffered) continue;
          destination.clear();
          const void* const work = competes ? competing(destination.at(to)) : runner.work();
          const Arguments arguments =
              transform.arguments(source.at(from), destination.at(to), flags[number], work);
          const Fault fault = faultOf([&] { call(*transform.function, arguments); });
          ++calls;
          ASSERT_TRUE(fault.signal == 0 && destination.hold(to, expected[number]))
              << "source offset " << from << ", destination offset " << to << ", flag "
              << flags[number] << ", signal " << fault.signal;
        }
      }
      ASSERT_TRUE(source.hold(from, data)) << "source written, offset " << from;
    }
  });
  RecordProperty("calls", std::to_string(calls));
}

TEST(Memory, SameBitsInPlaceAtEveryByteOffset) {
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    if (!transform.fills) return;
    const Runner runner(transform);
    const Bytes data = normalBytes(transform, random);
    for (const std::int32_t flag : transform.flags()) {
      Bytes whole = data;
      whole.resize(std::max(data.size(), transform.destinationBytes));
      const Bytes before = whole;
      const Bytes expected = runner.run(data, flag);
      std::copy(expected.begin(), expected.end(), whole.begin());
      Surroundings array(whole.size());
      for (std::size_t offset = 0; offset < kOffsets; ++offset) {
        array.clear();
        std::byte* const place = array.at(offset);
        std::copy(before.begin(), before.end(), place);
        const Arguments arguments = transform.arguments(place, place, flag, runner.work());
        ASSERT_EQ(call(*transform.function, arguments), 0);
        ++calls;
        ASSERT_TRUE(array.hold(offset, whole)) << "offset " << offset << ", flag " << flag;
      }
    }
  });
  RecordProperty("calls", std::to_string(calls));
}

}  // namespace
}  // namespace tests
