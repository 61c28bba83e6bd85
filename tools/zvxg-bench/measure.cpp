#include "measure.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

#include "aligned.h"

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

// Long compared with the 20 to 30 ns of reading the timer, short compared with the ticks of the
// system.
constexpr double kBurstNs = 10'000;

double nsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

// One side: how many calls fill a burst, and the shortest burst so far, per call.
class Side {
 public:
  explicit Side(Batch batch) : batch_(std::move(batch)) {
    while (burst() * calls_ < kBurstNs && calls_ < 1 << 20) calls_ *= 2;
    bestNs_ = burst();
  }
  void run() { bestNs_ = std::min(bestNs_, burst()); }
  double bestNs() const { return bestNs_; }

 private:
  double burst() {
    batch_(1 + calls_ / 16);  // the other side has just used the caches and the branch predictor
    const auto start = Clock::now();
    batch_(calls_);
    return nsSince(start) / calls_;
  }

  Batch batch_;
  int calls_ = 1;
  double bestNs_ = 0;
};

// Additions each of which waits for the one before and takes a cycle. Both operands are registers,
// because some processors add a small constant in no time.
constexpr int kChainCycles = 64;
void additionChain(int calls) {
  std::size_t sum = 0;
  const std::size_t step = 1;
  for (int i = 0; i < calls; ++i) {
    asm volatile(".rept %c2\n\tadd %1, %0\n\t.endr" : "+r"(sum) : "r"(step), "i"(kChainCycles));
  }
}

template <class T>
void fillSource(void* source, std::size_t bytes) {
  const std::size_t count = bytes / sizeof(T);
  // Values from 0.5 to 1 in steps that repeat late: neither they nor sums of a few are subnormal or
  // huge.
  for (std::size_t i = 0; i < count; ++i) {
    static_cast<T*>(source)[i] = T(0.5) + T(i * 7919 % 16384) / T(32768);
  }
}

}  // namespace

Times measure(const Case& subject, double budgetMs, int offsetBytes) {
  // Source and destination are in one block, at the same places in a page in every process. The gap
  // keeps equal indices of the two from having equal offsets into a page, which would stall loads.
  // There are two numbers per point, and two more for half spectra.
  constexpr std::size_t kPage = 4096, kGap = 64 * 17;
  const std::size_t bytes =
      (2 * static_cast<std::size_t>(subject.n) + 2) * (subject.bits / 8) * subject.howmany +
      offsetBytes;
  const std::size_t destAt = (bytes + 63) / 64 * 64 + kGap;
  const auto block = api::alignedMemory<std::byte>(kPage, destAt + bytes);
  std::byte* const source = block.get();
  std::byte* const dest = source + destAt;

  subject.bits == 32 ? fillSource<float>(source, bytes) : fillSource<double>(source, bytes);
  std::vector<Side> peers;
  for (const Peer& peer : subject.peers) peers.emplace_back(peer.make({source, dest}));
  Side ours(subject.ours({source + offsetBytes, dest + offsetBytes}));
  Side chain(additionChain);
  const auto start = Clock::now();
  do {
    ours.run();
    for (Side& peer : peers) peer.run();
    chain.run();
  } while (nsSince(start) < budgetMs * 1e6);
  const auto howmany = static_cast<double>(subject.howmany);
  Times times = {ours.bestNs() / howmany, {}, kChainCycles / chain.bestNs()};
  for (const Side& peer : peers) times.peerNs.push_back(peer.bestNs() / howmany);
  return times;
}

}  // namespace bench
