// The steps of packing, and what they hand on: a program of operations on atoms, and registers of atoms.
#pragma once

#include <compare>
#include <cstddef>
#include <map>
#include <vector>

#include "graph.h"

namespace kernelgen::steps {

// An atom is a number, a complex element or a register of the base.

// A use of an atom: its lanes exchanged or not, then the signs, a bit for each lane.
struct Use {
  int atom = -1;
  bool swapped = false;
  int signs = 0;

  auto operator<=>(const Use&) const = default;
};

struct Atom {
  Op op;  // Load, Const, Add, Mul, Shuffle, Widen, Round
  Precision precision;
  bool kept = false;
  bool byScale = false;                         // of products: by the scale, else by `constants`
  Use in[2] = {};                               // two for Add, and a Shuffle of two, else one
  std::vector<RoundedConstant> constants = {};  // Const and products by them
  std::vector<int> select = {};                 // Shuffle, as in a node
  std::vector<int> numbers = {};                // Load: of the source, a lane each
  int level = 0;                                // operands have a lower one

  int inputs() const { return isLeaf() ? 0 : in[1].atom >= 0 ? 2 : 1; }
  bool isLeaf() const { return op == Op::Load || op == Op::Const; }
  // The first of the numbers, if the others follow it.
  int firstNumber() const { return first(numbers); }

  static int first(const std::vector<int>& numbers) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      if (numbers[i] != numbers[0] + static_cast<int>(i) || numbers[i] < 0) return kNoElement;
    }
    return numbers.empty() ? kNoElement : numbers[0];
  }
};

// Numbers of the destination that are not neighbours, kNoElement for what is not stored.
struct Scattered {
  Use use;
  std::vector<int> numbers;
};

struct Program {
  int lanes;  // of an atom
  std::vector<Atom> atoms;
  std::map<int, Use> outputs;  // by the first number
  std::vector<Scattered> scattered;

  int allSigns() const { return (1 << lanes) - 1; }
};

// The signs of two lanes that change places.
inline int exchanged(int signs) { return (signs & 1) << 1 | signs >> 1; }

using Uses = std::vector<Use>;

struct Register {
  std::vector<int> atoms;
  Uses in[2];
};

// The graph as operations on atoms of so many lanes; `takesRegisters` if its shuffles are operations.
Program read(const Graph& graph, int lanes, bool takesRegisters);

// A register for each operation.
std::vector<Register> single(const Program& program);

// How registers find their partners.
struct Growth {
  // Loads pair too, so that a region grows from one use of two numbers to the others, and all take them
  // from one register.
  bool overLoads;
  // The most that a pair of users may cost to join a region, in shuffles.
  double misfit;
  // What it costs that a value is wanted outside its register, in operations.
  double escape;
};

// Registers of `width` atoms joined by pairs where that gains.
std::vector<Register> paired(const Program& program, const std::vector<Register>& units, int width,
                             const Growth& growth);

// Gives constants other signs where that leaves fewer sums with different signs in their lanes: the
// sign of a product is free, as its users can take it with the other one.
void settleSigns(Program& program, std::vector<Register>& units);

// The graph of the registers, in an order that has operands before their users. No register has more
// than `width` atoms, and no load goes past the numbers of the source.
Graph lowered(const Program& program, const Traits& traits, int sourceSize, int width,
              std::vector<Register> units);

}  // namespace kernelgen::steps
