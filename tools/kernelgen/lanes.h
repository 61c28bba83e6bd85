// How transforms are laid out in vector lanes.
//
// Lockstep    an element is a whole value: each transform runs by itself, in all lanes at once.
// Spread   an element is one lane of a register, or still in memory. Transforms of a batch are put
//          side by side into the lanes while they fill them; what is left over is opened into its
//          own blocks, which fill lanes again.
#pragma once

#include <algorithm>
#include <map>
#include <type_traits>

#include "algorithms.h"
#include "arrangements.h"

namespace kernelgen {

template <class E>
struct Lockstep {
  static bool centresBlocks() { return std::is_same_v<E, Parts>; }
  static bool centresColumns() { return std::is_same_v<E, Parts>; }

  Columns<E> run(const Recipe& r, const Columns<E>& x) {
    if constexpr (std::is_same_v<E, Packed>) {
      if (r.step() == Step::Rader && x[0][0].graph->precision() == Precision::Double) {
        return runAsSignals(r, x);
      }
    }
    if (r.hasStages()) return split(*this, r, x);
    Columns<E> out;
    for (const Column<E>& column : x) out.push_back(direct(r, column));
    return out;
  }

  template <class Angle>
  Columns<E> rotate(Columns<E> x, Angle angle) {
    for (std::size_t c = 0; c < x.size(); ++c) {
      for (std::size_t k = 0; k < x[c].size(); ++k) {
        const Turn t = angle(c, k);
        if (!t.isZero()) x[c][k] = rotated(x[c][k], t);
      }
    }
    return x;
  }

  RaderMiddle<E> convolve(const Columns<E>& a, const Column<E>& x0, const RaderNumbers& numbers) {
    RaderMiddle<E> z{{}, a};
    const std::size_t order = numbers.factors.size();
    for (std::size_t c = 0; c < a.size(); ++c) {
      const E plain = passed(x0[c]);
      z.zero.push_back(plain + a[c][0]);
      for (std::size_t k = 0; k < order; ++k) {
        const bool mirror = k == 0 || 2 * k == order;
        z.rest[c][k] = weighted(a[c][k], numbers.factors[k], mirror);
      }
      z.rest[c][0] = plain + z.rest[c][0];
    }
    return z;
  }

 private:
  // x[0] and the constants of a Rader step. Packed elements take the full product for all of them,
  // ones and zeros included. Parts leave out what is exact, and as a[k] and a[M-k] meet
  // again as their sum and difference, their constants hold the factor two of that.
  static E passed(E x) {
    if constexpr (std::is_same_v<E, Packed>) return product(x, kOne);
    return x;
  }

  static E weighted(E a, const Factor& b, bool mirror) {
    if constexpr (std::is_same_v<E, Parts>) {
      if (!mirror) {
        const Factor twice{{2 * b.re.exact, "two" + b.re.name},
                           {2 * b.im.exact, "two" + b.im.name}};
        return shifted(product(a, twice), -1);
      }
    }
    return product(a, b);
  }

  static Columns<E> runAsSignals(const Recipe& r, const Columns<E>& x) {
    Columns<E> out;
    for (const Column<E>& column : x) {
      Column<Parts> signals;
      for (const E& e : column) signals.push_back(asSignals(e));
      const Columns<Parts> transformed = Lockstep<Parts>().run(r, {signals});
      Column<E>& results = out.emplace_back();
      for (const Parts& p : transformed[0]) results.push_back(asElement(p));
    }
    return out;
  }
};

// One complex element: a lane of a value, or element `lane` of the source if the value is zero,
// zero if that is kNoElement; still to be multiplied by exp(-2 pi i pending).
template <class Value>
struct Ref {
  Value value;
  int lane;
  Turn pending = {};
};

template <class Arrangement>
class Spread {
 public:
  using Value = typename Arrangement::Value;
  using Element = Ref<Value>;

  static bool centresBlocks() { return false; }
  static bool centresColumns() { return false; }

  explicit Spread(Arrangement arrangement)
      : arrangement_(arrangement), lanes_(arrangement.lanes()) {}

  Element source(int element) const { return {arrangement_.zero(), element, {}}; }
  Element zero() const { return source(kNoElement); }

  Columns<Element> run(const Recipe& r, const Columns<Element>& x) {
    Columns<Element> out;
    std::size_t done = 0;
    const auto take = [&](const Columns<Element>& y) { out.insert(out.end(), y.begin(), y.end()); };
    for (; done + lanes_ <= x.size(); done += lanes_) take(side(r, x, done, done + lanes_));
    if (done == x.size()) return out;
    const Columns<Element> rest(x.begin() + static_cast<std::ptrdiff_t>(done), x.end());
    if (r.hasStages()) {
      take(split(*this, r, rest));
    } else if (r.n() == 4) {
      take(split(*this, CT(2, 2), rest));  // the same sums; a quarter turn is its only twiddle
    } else {
      take(side(r, rest, 0, rest.size()));
    }
    return out;
  }

  // Rotates the values as they are, or leaves it to those that the elements are put into for the
  // columns across, whichever are fewer.
  template <class Angle>
  Columns<Element> rotate(Columns<Element> x, Angle angle) {
    x = postpone(std::move(x), angle);
    const auto values = [this](std::size_t count) { return (count + lanes_ - 1) / lanes_; };
    const std::size_t rows = x[0].size(), columns = x.size();
    const bool now = (rows - 1) * values(columns) <= (columns - 1) * values(rows);
    return now ? applyRotations(std::move(x)) : x;
  }

  template <class Angle>
  Columns<Element> postpone(Columns<Element> x, Angle angle) {
    for (std::size_t c = 0; c < x.size(); ++c) {
      for (std::size_t k = 0; k < x[c].size(); ++k) x[c][k].pending = angle(c, k);
    }
    return x;
  }

  // Every value rotated once, with the angles pending for its elements.
  Columns<Element> applyRotations(Columns<Element> x) {
    // By row, since a transform with zero inputs may have one value for several outputs.
    for (std::size_t k = 0; k < x[0].size(); ++k) {
      std::map<Identity, std::vector<Turn>> angles;
      for (const Column<Element>& column : x) {
        laneOf(angles, column[k], Turn{}) = column[k].pending;
      }
      for (Column<Element>& column : x) {
        const Element e = column[k];
        column[k] = {turned(e.value, angles.at(identity(e.value))), e.lane, {}};
      }
    }
    return x;
  }

  // Element k of every column times factor k, as full products.
  Columns<Element> weigh(Columns<Element> x, const std::vector<Factor>& factors) {
    std::map<Identity, std::vector<Factor>> ofValue;
    for (const Column<Element>& column : x) {
      for (std::size_t k = 0; k < column.size(); ++k) {
        laneOf(ofValue, column[k], kOne) = factors[k];
      }
    }
    for (Column<Element>& column : x) {
      for (Element& e : column) e.value = product(e.value, ofValue.at(identity(e.value)));
    }
    return x;
  }

  // Real and imaginary parts exchanged, where that is free.
  Columns<Element> exchanged(Columns<Element> x) requires std::is_same_v<Value, Parts> {
    for (Column<Element>& column : x) {
      for (Element& e : column) std::swap(e.value.re, e.value.im);
    }
    return x;
  }

  RaderMiddle<Element> convolve(Columns<Element> a, const Column<Element>& x0,
                                const RaderNumbers& numbers) {
    RaderMiddle<Element> z{{}, weigh(a, numbers.factors)};
    for (std::size_t c = 0; c < a.size(); ++c) {
      const Element a0 = a[c][0];
      const Value plain = product(isolated(x0[c], a0.lane), std::vector<Factor>(lanes_, kOne));
      z.zero.push_back({plain + a0.value, a0.lane, {}});
      // The other lanes of x[0] are zero, so what shares a value with a[0] goes with it.
      const Value without = z.rest[c][0].value, with = plain + without;
      for (Element& e : z.rest[c]) {
        if (identity(e.value) == identity(without)) e.value = with;
      }
    }
    return z;
  }

  // The elements side by side in one value; fewer than the lanes leave live data or zero behind.
  Value pack(const std::vector<Element>& elements) {
    std::vector<Turn> angles(lanes_);
    std::vector<Slot<Value>> slots;
    std::vector<int> places(lanes_, kNoElement);
    bool inMemory = true;
    for (std::size_t i = 0; i < elements.size(); ++i) {
      angles[i] = elements[i].pending;
      places[i] = elements[i].lane;
      inMemory = inMemory && isZero(elements[i].value);
      slots.push_back({elements[i].value, elements[i].lane});
    }
    return turned(inMemory ? arrangement_.load(places) : arrangement_.pack(slots), angles);
  }

 private:
  template <class T>
  T& laneOf(std::map<Identity, std::vector<T>>& lanes, const Element& e, const T& idle) {
    std::vector<T>& of = lanes.try_emplace(identity(e.value), lanes_, idle).first->second;
    return of[static_cast<std::size_t>(std::max(e.lane, 0)) % lanes_];
  }

  // Transforms of columns begin to end, side by side.
  Columns<Element> side(const Recipe& r, const Columns<Element>& x, std::size_t begin,
                        std::size_t end) {
    Column<Value> column;
    for (std::size_t k = 0; k < static_cast<std::size_t>(r.n()); ++k) {
      std::vector<Element> elements;
      for (std::size_t c = begin; c < end; ++c) elements.push_back(x[c][k]);
      column.push_back(pack(elements));
    }
    const Columns<Value> y = Lockstep<Value>().run(r, {column});
    Columns<Element> out(end - begin);
    for (std::size_t c = 0; c < out.size(); ++c) {
      for (const Value& v : y[0]) out[c].push_back({v, static_cast<int>(c), {}});
    }
    return out;
  }

  // An element in a certain lane, zero in the others.
  Value isolated(const Element& e, int lane) {
    if (!isZero(e.value)) {
      throw std::logic_error("a Rader step opened across lanes takes its input from memory");
    }
    std::vector<int> places(lanes_, kNoElement);
    places[static_cast<std::size_t>(lane)] = e.lane;
    return arrangement_.load(places);
  }

  Value turned(Value v, const std::vector<Turn>& angles) {
    const bool none = std::all_of(angles.begin(), angles.end(), [](Turn t) { return t.isZero(); });
    return none || isZero(v) ? v : rotated(v, angles);
  }

  Arrangement arrangement_;
  std::size_t lanes_;
};

}  // namespace kernelgen
