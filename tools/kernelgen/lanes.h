// How the transforms of a batch fill the lanes of vectors: two worlds of algorithms.h.
//
// Lockstep   an element is a whole value, whose lanes all run the same transform.
// Spread     an element is one lane of a value, or still in memory. As many transforms as there are
//            lanes run side by side in Lockstep; those left over are taken apart into their blocks,
//            which fill lanes again.
#pragma once

#include <algorithm>
#include <map>

#include "algorithms.h"
#include "arrangements.h"

namespace kernelgen {

template <class E>
struct Lockstep {
  Numbering blockNumbering() const { return E::kSharesConjugate ? kCentred : kPlain; }
  Numbering columnNumbering() const { return blockNumbering(); }

  Columns<E> run(const Recipe& r, const Columns<E>& x) {
    if (r.hasStages()) return runStep(*this, r, x);
    return column(std::ssize(x), [&](long c) { return direct(r, x[c]); });
  }

  template <class Angle>
  Columns<E> rotate(const Columns<E>& x, Angle angle) {
    return columns(std::ssize(x), std::ssize(x[0]), [&](long c, long k) {
      const Turn t = angle(c, k);
      return t.isZero() ? x[c][k] : rotated(x[c][k], t);
    });
  }

  Convolved<E> convolve(const Recipe& r, const Columns<E>& x, const Column<E>& x0,
                        const std::vector<Factor>& factors) {
    Columns<E> a = run(r.first(), x);
    const Column<E> zero =
        column(std::ssize(a), [&](long c) { return raderMiddle(a[c], x0[c], factors); });
    return {zero, run(r.second(), a)};
  }
};

// In double precision, the real and the imaginary part of the elements are two real signals, which
// are transformed together.
inline Columns<Packed> rader(Lockstep<Packed>& world, const Recipe& r, const Columns<Packed>& x) {
  if (x[0][0].graph->precision() == Precision::Single) return rader<>(world, r, x);
  return column(std::ssize(x), [&](long c) {
    const Columns<Parts> signals =
        columns(1, r.n(), [&](long, long k) { return asSignals(x[c][k]); });
    const Columns<Parts> y = Lockstep<Parts>().run(r, signals);
    return column(r.n(), [&](long k) { return asElement(y[0][k]); });
  });
}

// One complex element: lane `lane` of a value; or, without a value, element `lane` of the source,
// or zero if that is kNoElement. It has yet to be multiplied by exp(-2 pi i pending).
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

  explicit Spread(Arrangement arrangement)
      : arrangement_(arrangement), lanes_(arrangement.lanes()) {}

  Element source(int element) const { return {arrangement_.zero(), element}; }
  Element zero() const { return source(kNoElement); }

  Numbering blockNumbering() const { return kPlain; }
  Numbering columnNumbering() const { return kPlain; }

  Columns<Element> run(const Recipe& r, const Columns<Element>& x) {
    Columns<Element> out;
    for (auto from = x.begin(); from != x.end();) {
      const auto to = from + std::min<long>(lanes_, x.end() - from);
      const Columns<Element> batch(from, to);
      const Columns<Element> y = to - from == lanes_ ? sideBySide(r, batch) : takenApart(r, batch);
      out.insert(out.end(), y.begin(), y.end());
      from = to;
    }
    return out;
  }

  // Rotates either the values that hold the elements now or those that they are packed into for the
  // columns across, whichever are fewer. The first row and the first block need no rotation.
  template <class Angle>
  Columns<Element> rotate(const Columns<Element>& x, Angle angle) {
    const auto values = [&](long elements) { return (elements + lanes_ - 1) / lanes_; };
    const long rows = std::ssize(x[0]), blocks = std::ssize(x);
    const bool now = (rows - 1) * values(blocks) <= (blocks - 1) * values(rows);
    const Columns<Element> y = postpone(x, angle);
    return now ? applyRotations(y) : y;
  }

  template <class Angle>
  Columns<Element> postpone(Columns<Element> x, Angle angle) {
    for (long c = 0; c < std::ssize(x); ++c) {
      for (long k = 0; k < std::ssize(x[c]); ++k) x[c][k].pending = angle(c, k);
    }
    return x;
  }

  // Every value rotated once, by the angles pending for its elements.
  Columns<Element> applyRotations(Columns<Element> x) {
    // Row by row, since a transform of inputs that are partly zero may have the same value in
    // several rows.
    for (std::size_t k = 0; k < x[0].size(); ++k) {
      std::map<Identity, std::vector<Turn>> angles;
      for (const Column<Element>& column : x) ofLane(angles, column[k], {}) = column[k].pending;
      for (Column<Element>& column : x) {
        const Element e = column[k];
        column[k] = {turned(e.value, angles.at(identity(e.value))), e.lane};
      }
    }
    return x;
  }

  // Element k of every column times factor k, as full products.
  Columns<Element> weigh(Columns<Element> x, const std::vector<Factor>& factors) {
    std::map<Identity, std::vector<Factor>> ofValue;
    for (const Column<Element>& column : x) {
      for (std::size_t k = 0; k < column.size(); ++k) ofLane(ofValue, column[k], kOne) = factors[k];
    }
    for (Column<Element>& column : x) {
      for (Element& e : column) e.value = product(e.value, ofValue.at(identity(e.value)));
    }
    return x;
  }

  Columns<Element> exchanged(Columns<Element> x) {
    for (Column<Element>& column : x) {
      for (Element& e : column) e.value = kernelgen::exchanged(e.value);
    }
    return x;
  }

  Convolved<Element> convolve(const Recipe& r, const Columns<Element>& x, const Column<Element>& x0,
                              const std::vector<Factor>& factors) {
    const Columns<Element> a = run(r.first(), x);
    Column<Element> zero;
    Columns<Element> z = weigh(a, factors);
    for (std::size_t c = 0; c < a.size(); ++c) {
      const Element a0 = a[c][0];
      const Value plain = product(isolated(x0[c], a0.lane), std::vector<Factor>(lanes_, kOne));
      zero.push_back({plain + a0.value, a0.lane});
      // x[0] is added to a whole value, with zero in the lanes of its other elements.
      const Value without = z[c][0].value, with = plain + without;
      for (Element& e : z[c]) {
        if (identity(e.value) == identity(without)) e.value = with;
      }
    }
    return {zero, run(r.second(), z)};
  }

  // The elements side by side in one value. If they are fewer than the lanes, the others hold zero
  // or live data.
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
  // Transforms of no more columns than there are lanes.
  Columns<Element> sideBySide(const Recipe& r, const Columns<Element>& x) {
    const long count = std::ssize(x);
    const Column<Value> packed =
        column(r.n(), [&](long k) { return pack(column(count, [&](long c) { return x[c][k]; })); });
    const Columns<Value> y = Lockstep<Value>().run(r, {packed});
    return columns(count, r.n(), [&](long c, long k) {
      return Element{y[0][k], static_cast<int>(c)};
    });
  }

  // Transforms of fewer columns than there are lanes.
  Columns<Element> takenApart(const Recipe& r, const Columns<Element>& x) {
    if (r.step() == Step::Chirp) return chirp(*this, r, x);
    if (r.hasStages()) return runStep(*this, r, x);
    // The sums are those of the direct body, as the only twiddle is a quarter turn.
    if (r.n() == 4) return runStep(*this, CT(2, 2), x);
    return sideBySide(r, x);
  }

  // What is known by value and lane, of the lane of an element; `idle` for lanes that have none.
  template <class T>
  T& ofLane(std::map<Identity, std::vector<T>>& known, const Element& e, const T& idle) {
    std::vector<T>& lanes = known.try_emplace(identity(e.value), lanes_, idle).first->second;
    return lanes[std::max(e.lane, 0) % lanes_];
  }

  // An element in a certain lane, zero in the others.
  Value isolated(const Element& e, int lane) {
    if (!isZero(e.value)) {
      throw std::logic_error("a Rader step that is taken apart reads x[0] from memory");
    }
    std::vector<int> places(lanes_, kNoElement);
    places[lane] = e.lane;
    return arrangement_.load(places);
  }

  Value turned(Value v, const std::vector<Turn>& angles) {
    const bool none = std::all_of(angles.begin(), angles.end(), [](Turn t) { return t.isZero(); });
    return none || isZero(v) ? v : rotated(v, angles);
  }

  Arrangement arrangement_;
  long lanes_;
};

}  // namespace kernelgen
