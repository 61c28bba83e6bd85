// What the generator prints of its stages: recipes, what it refuses, and some kernels from their row to
// their text, as golden/ keeps them.

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>

#include "print.h"  // kernelgen

namespace tests {
namespace {

using namespace kernelgen;

// Each form in which a row is printed.
TEST(Stages, Recipes) {
  const struct {
    const char *symbol, *recipe;
  } kRows[] = {
      {"zvxgDFTFwd_CToC_3_32fc", "3 widened, scalar, 1 body"},
      {"zvxgDFTFwd_CToC_12_64fc", "CT(2,GT(2,3)), 256 bits, 2 bodies"},
      {"zvxgDFTInv_CToC_10_64fc", "GT(5',2), 128 bits, 2 bodies"},
      {"zvxgDFTInv_CToC_20_64fc", "CT(GT(2,5),2), 256 bits, 1 body, paced(12, 4)"},
      {"zvxgDFTFwd_CToC_47_32fc",
       "B(47,96: CT(GT(3,CT(4,2)),4) CT(4,GT(3,CT(4,2)))), 128 bits, 2 bodies"},
      {"zvxgDFTFwd_CToC_59_64fc",
       "R(59: GT(R(29: CT(GT(2,7),2) CT(2,GT(7,2))),2) GT(R(29: CT(GT(2,7),2) CT(2,GT(7,2))),2)), "
       "128 bits, 2 bodies, long"},
      {"zvxgDFTFwd_RToCCS_13_32f", "R(13: GT(4,3) GT(3,4) CT(2,GT(2,3))), scalar, 1 body"},
  };
  for (const auto& [symbol, recipe] : kRows) {
    EXPECT_EQ(printedStage("recipe", kernelOfSymbol(symbol)), std::string(recipe) + "\n") << symbol;
  }
}

TEST(Stages, Refusals) {
  const struct {
    std::function<void()> request;
    const char* sentence;
  } kRefused[] = {
      {[] { Recipe(6); },
       "no direct body of length 6; there are 3, 5, 7, 11 and the powers of two to 64"},
      {[] { Recipe(13); },
       "no direct body of length 13; there are 3, 5, 7, 11 and the powers of two to 64"},
      {[] { GT(4, GT(2, 3)); }, "Good-Thomas needs coprime factors, not 4 and GT(2,3)"},
      {[] { R(5); }, "a Rader step needs a prime above 5, not 5"},
      {[] { R(9); }, "a Rader step needs a prime above 5, not 9"},
      {[] { R(7, GT(2, 3), 5); }, "the transforms of R(7) have length 6, not GT(2,3) and 5"},
      {[] { R(7, GT(2, 3), GT(3, 2), 8); },
       "the odd bins of R(7) need a transform of length 6, not 8"},
      {[] { B(47, 64, 64); }, "a chirp of length 47 does not fit transforms 64 and 64"},
      {[] { B(15, 32, 32); }, "a chirp of length 15 does not fit transforms 32 and 32"},
      {[] { Recipe(7).secondForm(); }, "only 5 points have a second form, not 7"},
      {[] { Recipe(4).widened(); }, "only 3 and 5 points are widened, not 4"},
      {[] { kernelOfSymbol("zvxgDFTFwd_CToC_65_32fc"); },
       "no kernel is named zvxgDFTFwd_CToC_65_32fc"},
      {[] { printedStage("wood", kernelOfSymbol("zvxgHartley_4_32f")); }, "no stage is named wood"},
  };
  for (const auto& [request, sentence] : kRefused) {
    try {
      request();
      ADD_FAILURE() << "accepted: " << sentence;
    } catch (const std::invalid_argument& refusal) {
      EXPECT_STREQ(refusal.what(), sentence);
    }
  }
}

TEST(Stages, GoldenKernels) {
  for (const std::string symbol :
       {"zvxgDFTFwd_CToC_6_32fc", "zvxgDFTInv_CToC_4_64fc", "zvxgDFTFwd_RToCCS_5_32f"}) {
    std::stringstream kept;
    kept << std::ifstream(ZVXG_GOLDEN "/" + symbol + ".txt").rdbuf();
    EXPECT_EQ(printedStage("stages", kernelOfSymbol(symbol)), kept.str())
        << "if that is meant: kernelgen stages " << symbol << " >tests/golden/" << symbol << ".txt";
  }
}

}  // namespace
}  // namespace tests
