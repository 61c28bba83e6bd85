// Memory: nothing outside the arrays is touched, and where they lie changes no bit.

#include <csignal>

#include "../placement.h"

namespace tests {
namespace {

constexpr bool kPlaces[] = {false, true};

// What is in an array after a transform in place; of a longer source what is behind the result.
Bytes inPlace(const Bytes& data, const Bytes& result) {
  Bytes whole = data;
  whole.resize(std::max(data.size(), result.size()), kUntouched);
  std::copy(result.begin(), result.end(), whole.begin());
  return whole;
}

TEST(Memory, NothingOutsideTheArraysIsTouched) {
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    const Runner runner(transform);
    const Bytes data = normalBytes(transform, random);
    GuardedPages sources(data.size()), destinations(data.size() + transform.destinationBytes),
        works(transform.workBytes);
    const auto expectSame = [&](const std::byte* source, std::byte* destination, std::int32_t flag,
                                const void* work, const Bytes& expected) {
      ++calls;
      const Arguments arguments = transform.arguments(source, destination, flag, work);
      const Fault fault = faultOf([&] { transform.function->call(arguments); });
      ASSERT_EQ(fault.signal, 0) << "at " << fault.address << ", arguments "
                                 << testing::PrintToString(arguments);
      ASSERT_TRUE(std::equal(expected.begin(), expected.end(), destination)) << "flag " << flag;
    };
    for (const std::int32_t flag : flagsOf(transform)) {
      const Bytes expected = runner.run(data, flag), whole = inPlace(data, expected);
      for (const bool workAtEnd : kPlaces) {
        // A buffer of no bytes, at the end, is an address that may not be touched.
        const bool takesWork =
            transform.function->takes(Role::Buffer) || transform.function->isPlanned();
        if (workAtEnd && !takesWork) continue;
        const void* const work =
            exports().prepare(transform, works.place(transform.workBytes, workAtEnd));
        for (const bool atEnd : kPlaces) {
          std::byte* const source = sources.place(data.size(), atEnd);
          sources.allow(Access::Write);
          std::copy(data.begin(), data.end(), source);
          sources.allow(Access::Read);
          for (const bool destinationAtEnd : kPlaces) {
            std::byte* const destination = destinations.place(expected.size(), destinationAtEnd);
            std::fill_n(destination, expected.size(), kUntouched);
            expectSame(source, destination, flag, work, expected);
          }
          std::byte* const array = destinations.place(whole.size(), atEnd);
          std::fill_n(array, whole.size(), kUntouched);
          std::copy(data.begin(), data.end(), array);
          expectSame(array, array, flag, work, transform.fills ? whole : Bytes());
        }
      }
    }
  });
  RecordProperty("calls", std::to_string(calls));
}

// The check above notices a read before, a write behind and one to a source.
TEST(Memory, GuardsAreNoticed) {
  GuardedPages pages(1);
  auto* const first = reinterpret_cast<volatile char*>(pages.place(1, false));
  auto* const last = reinterpret_cast<volatile char*>(pages.place(1, true));
  ASSERT_EQ(faultOf([&] { [[maybe_unused]] char read = first[-1]; }).signal, SIGSEGV);
  ASSERT_EQ(faultOf([&] { last[1] = 0; }).signal, SIGSEGV);
  pages.allow(Access::Read);
  ASSERT_EQ(faultOf([&] { *first = 0; }).signal, SIGSEGV);
}

// Byte by byte, though the elements of an ordinary array are on their own boundaries: the contract
// asks for none. Long plans take a part of the offsets, each of either array once.
TEST(Memory, SameBitsAtEveryByteOffset) {
  constexpr std::size_t kLongest = 1 << 16, kPageBytes = 4096;
  Random random = makeRandom();
  std::int64_t calls = 0;
  forEachTransform([&](const Transform& transform) {
    const Runner runner(transform);
    const Bytes data = normalBytes(transform, random);
    const std::vector<std::int32_t> flags = flagsOf(transform);
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
    const auto run = [&](const std::byte* from, std::byte* to, std::int32_t flag,
                         const void* work) {
      ++calls;
      const Arguments arguments = transform.arguments(from, to, flag, work);
      return faultOf([&] { transform.function->call(arguments); }).signal == 0;
    };

    Surroundings source(data.size()), destination(transform.destinationBytes),
        both(std::max(data.size(), transform.destinationBytes));
    const std::size_t stride = data.size() > kLongest ? kLine : 1;
    for (std::size_t from = 0; from < kLine; ++from) {
      source.holding(data, from);
      for (std::size_t to = from * 11 % stride; to < kLine; to += stride) {
        const std::size_t number = (from + to) % flags.size();
        for (const bool competes : kPlaces) {
          if (competes && !buffered) continue;
          std::byte* const array = destination.holding({}, to);
          const void* const work = competes ? competing(array) : runner.work();
          ASSERT_TRUE(run(source.at(from), array, flags[number], work) &&
                      destination.hold(to, expected[number]))
              << "offsets " << from << " and " << to << ", flag " << flags[number];
        }
      }
      ASSERT_TRUE(source.hold(from, data)) << "source written, offset " << from;
      for (std::size_t number = 0; transform.fills && number < flags.size(); ++number) {
        std::byte* const array = both.holding(data, from);
        ASSERT_TRUE(run(array, array, flags[number], runner.work()) &&
                    both.hold(from, inPlace(data, expected[number])))
            << "in place, offset " << from << ", flag " << flags[number];
      }
    }
  });
  RecordProperty("calls", std::to_string(calls));
}

}  // namespace
}  // namespace tests
