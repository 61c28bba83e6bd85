#include "recipe.h"

#include <numeric>
#include <stdexcept>

namespace kernelgen {
namespace {

void require(bool condition, const std::string& sentence) {
  if (!condition) throw std::invalid_argument(sentence);
}

}  // namespace

bool isPrime(int n) {
  for (int d = 2; d * d <= n; ++d) {
    if (n % d == 0) return false;
  }
  return n >= 2;
}

Recipe::Recipe(int n) : step_(Step::Direct), n_(n) {
  const bool powerOfTwo = n > 1 && n <= 64 && (n & (n - 1)) == 0;
  require(powerOfTwo || (isPrime(n) && n <= 11),
          "no direct body of length " + std::to_string(n) +
              "; there are 3, 5, 7, 11 and the powers of two to 64");
}

Recipe Recipe::twoStages(Step step, int n, Recipe first, Recipe second) {
  Recipe r(step, n);
  r.first_ = std::make_shared<const Recipe>(std::move(first));
  r.second_ = std::make_shared<const Recipe>(std::move(second));
  return r;
}

Recipe GT(Recipe a, Recipe b) {
  require(std::gcd(a.n(), b.n()) == 1,
          "Good-Thomas needs coprime factors, not " + a.print() + " and " + b.print());
  const int n = a.n() * b.n();
  return Recipe::twoStages(Step::GoodThomas, n, std::move(a), std::move(b));
}

Recipe CT(Recipe a, Recipe b) {
  const int n = a.n() * b.n();
  return Recipe::twoStages(Step::CooleyTukey, n, std::move(a), std::move(b));
}

Recipe R(int p) {
  require(isPrime(p) && p > 5, "a Rader step needs a prime above 5, not " + std::to_string(p));
  return Recipe(Step::Rader, p);
}

Recipe R(int p, Recipe first, Recipe second) {
  Recipe r = R(p);
  require(first.n() == p - 1 && second.n() == p - 1,
          "the transforms of R(" + std::to_string(p) + ") have length " + std::to_string(p - 1) +
              ", not " + first.print() + " and " + second.print());
  r.first_ = std::make_shared<const Recipe>(std::move(first));
  r.second_ = std::make_shared<const Recipe>(std::move(second));
  return r;
}

Recipe R(int p, Recipe first, Recipe second, Recipe oddSecond) {
  Recipe r = R(p, std::move(first), std::move(second));
  require(oddSecond.n() == p - 1, "the odd bins of R(" + std::to_string(p) +
                                      ") need a transform of length " + std::to_string(p - 1) +
                                      ", not " + oddSecond.print());
  r.oddSecond_ = std::make_shared<const Recipe>(std::move(oddSecond));
  return r;
}

Recipe B(int p, Recipe first, Recipe second) {
  require(isPrime(p) && first.n() == second.n() && first.n() >= 2 * p - 1,
          "a chirp of length " + std::to_string(p) + " does not fit transforms " + first.print() +
              " and " + second.print());
  return Recipe::twoStages(Step::Chirp, p, std::move(first), std::move(second));
}

Recipe Recipe::secondForm() const {
  require(step_ == Step::Direct && n_ == 5, "only 5 points have a second form, not " + print());
  Recipe r = *this;
  r.secondForm_ = true;
  return r;
}

Recipe Recipe::widened() const {
  require(step_ == Step::Direct && (n_ == 3 || n_ == 5),
          "only 3 and 5 points are widened, not " + print());
  Recipe r = *this;
  r.widened_ = true;
  return r;
}

std::string Recipe::print() const {
  const std::string n = std::to_string(n_);
  switch (step_) {
    case Step::Direct: return n + (secondForm_ ? "'" : "") + (widened_ ? " widened" : "");
    case Step::GoodThomas: return "GT(" + first().print() + "," + second().print() + ")";
    case Step::CooleyTukey: return "CT(" + first().print() + "," + second().print() + ")";
    case Step::Rader:
      return "R(" + n + (first_ ? ": " + first().print() + " " + second().print() : "") +
             (oddSecond_ ? " " + oddSecond().print() : "") + ")";
    case Step::Chirp:
      return "B(" + n + "," + std::to_string(first().n()) + ": " + first().print() + " " +
             second().print() + ")";
  }
  return {};
}

}  // namespace kernelgen
