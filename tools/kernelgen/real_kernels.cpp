#include "real_kernels.h"

#include <stdexcept>

#include "precision.h"
#include "real.h"

namespace kernelgen {
namespace {

class Builder {
 public:
  explicit Builder(const KernelId& id)
      : id_(id),
        design_(designOf(id)),
        n_(id.length),
        g_({.precision = Precision::Single, .direction = id.direction, .productsInDouble = true}) {}

  Graph build() {
    const bool isForward = design_.flow == Flow::ToSpectrum;
    switch (id_.family) {
      case Family::Complex: throw std::logic_error("a real kernel of the complex family");
      case Family::Real:
        if (isForward) storeSpectrum(transformed(samples()));
        if (!isForward) storeSamples(transformed(spectrum()));
        break;
      case Family::Hartley:
        if (isForward) storeHartley(transformed(samples()));
        if (!isForward) storeSamples(transformed(mirrored()));
        break;
    }
    return withMergedConstants(g_.pruned());
  }

 private:
  using Elements = Column<Parts>;

  Elements transformed(const Elements& x) { return Real(design_.flow).run(design_.recipe, x); }

  BinPlace place(int k) const { return binPlace(id_.layout, n_, k); }

  Part loaded(int element) { return {g_.load(Unit::Real, {element})}; }

  Elements samples() {
    Elements x;
    for (int i = 0; i < n_; ++i) x.push_back({&g_, loaded(i), {}});
    return x;
  }

  // From the real parts of bins 0 and n/2 and the doubled parts of those between.
  template <class Plain, class DoubledRe, class DoubledIm>
  Elements symmetric(const Plain& plain, const DoubledRe& re, const DoubledIm& im) {
    Elements x(n_, Parts{&g_, {}, {}});
    x[0].re = plain(0);
    if (n_ % 2 == 0) x[n_ / 2].re = plain(n_ / 2);
    for (int k = 1; 2 * k < n_; ++k) {
      // The sums over exp(-2 pi i k n / N) of the conjugate spectrum are the inverse transform.
      const Part doubledRe = re(k), doubledIm = im(k);
      x[n_ - k] = shifted({&g_, doubledRe, doubledIm}, -1);
      x[k] = conjugate(x[n_ - k]);
    }
    return x;
  }

  Elements spectrum() {
    const auto doubled = [&](int element) {
      const NodeId two = g_.constant({{2, "two"}}, Precision::Single);
      return Part{g_.mul(loaded(element).node, two)};
    };
    return symmetric([&](int k) { return loaded(place(k).re); },
                     [&](int k) { return doubled(place(k).re); },
                     [&](int k) { return doubled(place(k).im); });
  }

  // The samples taken as a spectrum: sums and differences of mirror elements are its doubled bins.
  Elements mirrored() {
    const Elements x = samples();
    return symmetric([&](int k) { return x[k].re; }, [&](int k) { return (x[k] + x[n_ - k]).re; },
                     [&](int k) { return (x[n_ - k] - x[k]).re; });
  }

  // ---- Outputs

  void store(Part value, int element, bool mayNegate) {
    if (isZero(value) || value.exponent != 0)
      throw std::logic_error("an output has a power of two left to apply");
    const Node top = g_[value.node];
    if (value.negative && top.op == Op::Sub) value = {g_.sub(top.b, top.a)};
    if (value.negative && !mayNegate) throw std::logic_error("an output is left with a sign");
    const NodeId scale = g_.scale(1);
    const bool isOpen = top.precision == Precision::Double;
    NodeId scaled = g_.mul(value.node, isOpen ? g_.widen(scale) : scale);
    if (value.negative) scaled = g_.sub(g_.constant({{0, "zero"}}, top.precision), scaled);
    g_.store(isOpen ? g_.round(scaled) : scaled, Unit::Real, {element});
  }

  void storeSpectrum(const Elements& x) {
    for (int k = 0; 2 * k <= n_; ++k) {
      const Parts& bin = x[k];
      store(bin.re, place(k).re, false);
      if (!isZero(bin.im)) {
        store(bin.im, place(k).im, true);
      } else if (place(k).im != kNowhere) {
        g_.store(g_.constant({{0, "zero"}}, Precision::Single), Unit::Real, {place(k).im});
      }
    }
  }

  void storeSamples(const Elements& x) {
    for (int i = 0; i < n_; ++i) store(x[i].re, i, false);
  }

  void storeHartley(const Elements& x) {
    for (int k = 0; k < n_; ++k) {
      const Parts re{&g_, x[k].re, {}}, im{&g_, x[k].im, {}};
      store((re - im).re, k, false);
    }
  }

  const KernelId id_;
  const Design& design_;
  const int n_;
  Graph g_;
};

}  // namespace

Graph realGraph(const KernelId& id) {
  const Graph g = Builder(id).build();
  return id.precision == Precision::Single ? g : inDouble(g).pruned();
}

}  // namespace kernelgen
