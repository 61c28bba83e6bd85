// Long transforms with fewer passes through memory: two stages at a time, on a tile of values that
// stays in the second-level cache between them.
//
//     leaves and innermost split   a tile has neighbouring columns of the split's results
//     other inner splits           stage by stage
//     outermost split and root     a tile has neighbouring k of the split
//
// With two splits the data pass through memory twice instead of four times. Tiles lie in the workspace
// of the root; the one of the innermost split is not used. The values are those of stage by stage.
#pragma once

#include "dct4/walk.h"

namespace zvxg::dct4 {

// Half of a second-level cache of 512 KB, and a quarter of one of 1 MB.
constexpr std::ptrdiff_t kTileBytes = std::ptrdiff_t{256} << 10;

template <class T>
class Tiles {
 public:
  Tiles(const Dct4Spec& spec, Schedule schedule)
      : schedule_(schedule),
        length_(spec.length),
        radix_(spec.radix),
        tile_(static_cast<T*>(spec.workspace)),
        suit_(spec.length % 2 == 0 && findRecords(spec)) {}

  // Whether the plan is one to be run in tiles: with two splits or more, and ready in all records.
  bool suit() const { return suit_; }

  void run(const T* src, T* dst) const {
    const int innermost = splits_ - 1;
    runLeavesAndSplit(src, split_[innermost], split_[innermost - 1].workspace);
    for (int i = innermost - 1; i > 0; --i) {
      const SplitCombine<T>& combine = *split_[i].combine;
      T* const out = split_[i - 1].workspace;
      kSplits<Wide<T>>[combine.state - 1](
          {split_[i].workspace, combine.table, combine.stride, combine.count,
           outputsIn(out, combine.stride, combine.count), writingTo(out, schedule_.inner)});
    }
    runSplitAndRoot(split_[0], dst);
  }

 private:
  struct Split {
    const SplitCombine<T>* combine;
    T* workspace;  // its input
  };
  static constexpr int kMostSplits = 6;  // the radix is 8 or more, and a length less than 2^31

  bool findRecords(const Dct4Spec& spec) {
    const auto& rootSub = onlyItem<RootSub<T>>(spec.subList);
    const auto& rootCombine = onlyItem<RootCombine<T>>(spec.combineList);
    if (rootSub.state != 1 || rootCombine.state != 1) return false;
    root_ = &onlyItem<RootCombineLoop<T>>(rootCombine.loopList);
    if (root_->state == 0 || root_->state > kRoots<Wide<T>>.size()) return false;
    const auto& loop = onlyItem<RootSubLoop<T>>(rootSub.loopList);
    leafState_ = loop.state;
    for (const NodeList* list = loop.loopList; leafState_ == kNodeState; ++splits_) {
      const auto& node = onlyItem<SplitNode<T>>(list);
      if (node.state != 1 || splits_ == kMostSplits) return false;
      const auto& combine = onlyItem<SplitCombine<T>>(node.combineList);
      if (combine.state == 0 || combine.state > kSplits<Wide<T>>.size()) return false;
      split_[splits_] = {&combine, node.workspace};
      const auto& sub = onlyItem<SplitSub<T>>(node.subList);
      leafState_ = sub.state;
      list = sub.nodeList;
    }
    return splits_ >= 2 && leafState_ >= 1 && leafState_ <= kLastLeafState;
  }

  // The leaves below this split and the split itself, into rows of width `stride`.
  void runLeavesAndSplit(const T* src, const Split& split, T* out) const {
    const SplitCombine<T>& combine = *split.combine;
    const std::ptrdiff_t width = combine.stride, q = combine.radix, leaf = combine.subLength;
    const std::ptrdiff_t most = kTileBytes / std::ptrdiff_t{sizeof(T)} / (q * leaf);
    const std::ptrdiff_t columns =
        std::clamp<std::ptrdiff_t>(most / radix_ * radix_, radix_, width);
    T* const inputs = tile_ + q * leaf * columns;
    for (std::ptrdiff_t first = 0; first < width; first += columns) {
      for (std::ptrdiff_t t = 0; t < q; ++t) {
        gather(src, first + t * width, columns, q * width, leaf / 2, inputs);
        dct4::runLeaves<T>(leafState_, {inputs, tile_ + t * columns, leaf * columns, columns, 1,
                                        Writing::Direct, q * columns});
      }
      kSplits<Wide<T>>[combine.state - 1]({tile_, combine.table, columns, combine.count,
                                           outputsIn(out + first, width, combine.count),
                                           writingTo(out, schedule_.inner)});
    }
  }

  // The inputs of neighbouring columns of leaves, as the source of a transform that has a leaf in each
  // column and no splits. In the caller's array their rows are a large power of two apart, so a cache
  // has room for a few of them, and the processor loads none ahead. Copied in one go, many loads are
  // under way at once.
  void gather(const T* src, std::ptrdiff_t column, std::ptrdiff_t columns, std::ptrdiff_t width,
              std::ptrdiff_t rows, T* inputs) const {
    for (std::ptrdiff_t q = 0; q < rows; ++q) {
      const T* const up = src + 2 * (q * width + column);
      const T* const down = src + 2 * ((q + 1) * width - column);
      T* const row = inputs + 2 * q * columns;
      for (std::ptrdiff_t i = 0; i < columns; i += radix_) {
        for (std::ptrdiff_t c = 0; c < radix_; c += kLanes<Wide<T>>) {
          Wide<T>::store(row + i + c, Wide<T>::loadAnywhere(up + 2 * i + c));
          Wide<T>::store(row + 2 * columns - i - radix_ + c,
                         Wide<T>::loadAnywhere(down - 2 * i - radix_ + c));
        }
      }
    }
  }

  void runSplitAndRoot(const Split& split, T* dst) const {
    const SplitCombine<T>& combine = *split.combine;
    const std::ptrdiff_t r = radix_, q = combine.radix, p = combine.count;
    // A row of a tile has a k of all outputs; runs are rows that follow each other in the workspace.
    // The places between them keep runs from falling into the same sets of a cache.
    const std::ptrdiff_t perK = 2 * q * r, inputs = kTileBytes / std::ptrdiff_t{sizeof(T)};
    const std::ptrdiff_t many = std::min(p / 2, inputs / perK);
    const std::ptrdiff_t run = 2 * many * r + 128 / std::ptrdiff_t{sizeof(T)};
    for (std::ptrdiff_t k = 0; k < p; k += many) {
      const SplitOutputs<T> first = {tile_, tile_ + q / 2 * run + 2 * (many - 1) * r, run, r};
      for (std::ptrdiff_t i = k; i < k + many; ++i) {
        if (i + 2 < p) loadAhead(split.workspace + (i + 2) * perK, perK);
        kSplits<Wide<T>>[combine.state - 1](
            {split.workspace, combine.table, r, p, first.after(-k), Writing::Direct, i, i + 1});
      }
      for (std::ptrdiff_t l = 0; l < q; ++l) {
        // The k of the root's results, in the first half of the runs and in the mirrored ones.
        const std::ptrdiff_t up = 2 * p * l + k, down = 2 * p * (l - q / 2 + 1) - k - many;
        runRoot(tile_ + l * run, l < q / 2 ? up : down, many, dst);
      }
    }
  }

  // For `count` values of k from this one on.
  void runRoot(const T* in, std::ptrdiff_t k, std::ptrdiff_t count, T* dst) const {
    const Writing writing = writingTo(dst, schedule_.outer);
    const T* const table = root_->table + 2 * radix_ * k;
    loadAhead(table, 2 * radix_ * count);
    dct4::runRoot<T>(root_->state, {in, dst + k, table, length_ - k, root_->lastIndex - 2 * k,
                                    root_->subLength, count / kTableLanes<T>, writing});
  }

  static void loadAhead(const T* from, std::ptrdiff_t count) {
    for (std::ptrdiff_t i = 0; i < count; i += 64 / sizeof(T)) __builtin_prefetch(from + i);
  }

  const Schedule schedule_;
  const std::ptrdiff_t length_, radix_;  // n, r
  T* const tile_;
  const RootCombineLoop<T>* root_ = nullptr;
  uint32_t leafState_ = 0;
  int splits_ = 0;
  Split split_[kMostSplits];  // the outermost first
  const bool suit_;
};

// Returns whether the plan is one that tiles can run. If not, nothing was done.
template <class T>
[[gnu::noinline]] bool runInTiles(const Dct4Spec& spec, const T* src, T* dst, Schedule schedule) {
  const Tiles<T> tiles(spec, schedule);
  if (tiles.suit()) tiles.run(src, dst);
  return tiles.suit();
}

}  // namespace zvxg::dct4
