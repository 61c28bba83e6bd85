// The decomposition of a transform as a value: built by the constructors below in the notation of
// the tables, checked while it is built, compared and printed. A bare number is a direct body.
#pragma once

#include <memory>
#include <string>

namespace kernelgen {

enum class Step {
  Direct,
  GoodThomas,
  CooleyTukey,
  Rader,
  Chirp
};

class Recipe {
 public:
  Recipe(int n);  // NOLINT: a bare number in a table row is a direct body

  Step step() const { return step_; }
  int n() const { return n_; }
  // The stage that touches the input first, and the one after it. A Rader or chirp step has its two
  // transforms here.
  const Recipe& first() const { return *first_; }
  const Recipe& second() const { return *second_; }
  // The second transform of a Rader step for the odd bins, where they have one of their own.
  const Recipe& oddSecond() const { return oddSecond_ ? *oddSecond_ : *second_; }
  bool hasOwnOddSecond() const { return oddSecond_ != nullptr; }
  bool hasStages() const { return first_ != nullptr; }
  // 5 points: Rader's form with the mean of the cosines, one product less.
  bool isSecondForm() const { return secondForm_; }
  // 3 and 5 points in single precision: constant products in double, each sum rounded once.
  bool isWidened() const { return widened_; }

  Recipe secondForm() const;
  Recipe widened() const;

  // "GT(4,3)", the way the tables write it.
  std::string print() const;

 private:
  friend Recipe GT(Recipe, Recipe);
  friend Recipe CT(Recipe, Recipe);
  friend Recipe R(int);
  friend Recipe R(int, Recipe, Recipe);
  friend Recipe R(int, Recipe, Recipe, Recipe);
  friend Recipe B(int, Recipe, Recipe);

  Recipe(Step step, int n) : step_(step), n_(n) {}
  static Recipe twoStages(Step step, int n, Recipe first, Recipe second);

  Step step_;
  int n_;
  std::shared_ptr<const Recipe> first_, second_, oddSecond_;
  bool secondForm_ = false;
  bool widened_ = false;
};

// Good-Thomas: a and b coprime, no twiddles.
Recipe GT(Recipe a, Recipe b);
// Cooley-Tukey: a-point transforms first, twiddles, then b-point transforms.
Recipe CT(Recipe a, Recipe b);
// Rader: the prime p by a cyclic convolution of length p-1, with the trees of its two transforms,
// or with those of the table of primes.
Recipe R(int p);
Recipe R(int p, Recipe first, Recipe second);
Recipe R(int p, Recipe first, Recipe second, Recipe oddSecond);
// Chirp: the prime p by a convolution of a padded length, with the trees of its two transforms.
Recipe B(int p, Recipe first, Recipe second);

bool isPrime(int n);

}  // namespace kernelgen
