// Gamma and Poisson family: GammaLower / CdfGamma against mpmath over shapes 0.01 to
// 1e5, both tails down to 1e-300 (the upper tail through PoissonLowerTail, which
// computes it directly), every route of GammaLower; and the edge cases of the family.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "numeric_functions.h"
#include "numeric_internal.h"
#include "reference_table.h"

namespace qv {
namespace {

using test::Args;
using namespace numeric;

TEST(Gamma, MatchesReferenceTable) {
  auto slack = [](Args, double v) { return test::ExponentSlack(v); };
  test::ExpectTableAccuracy(
      "gamma.txt",
      {{.name = "GammaLower", .fn = [](Args a) { return GammaLower(a[0], a[1]); }, .bound = 1e-13,
        .rows = [](Args a, double) { return a[1] < 1; }, .label = "GammaLower a < 1"},
       {.name = "GammaLower", .fn = [](Args a) { return GammaLower(a[0], a[1]); }, .bound = 1e-13,
        .rows = [](Args a, double) { return a[1] >= 1; }, .slack = slack, .label = "GammaLower a >= 1"},
       {.name = "GammaLower", .fn = [](Args a) { return GammaLower(a[0], a[1]); }, .bound = 1e-13,
        .rows = [](Args, double v) { return v >= 1e-100; }, .label = "GammaLower P >= 1e-100"},
       {.name = "GammaLower", .fn = [](Args a) { return CdfGamma(2 * a[0], a[1], 2); },
        .bound = 1e-13, .slack = slack, .label = "CdfGamma (scale 2)"},
       {.name = "PoissonLowerTail", .fn = [](Args a) { return PoissonLowerTail(a[0], a[1], a[2]); },
        .bound = 1e-13, .slack = slack}});
}

TEST(Gamma, ShapeOneIsTheExponentialDistribution) {
  // P(x, 1) = 1 - exp(-x), through PoissonUpperFraction (x < 1) or PoissonLowerTail.
  for (double x : {1e-300, 1e-20, 1e-5, 0.3, 0.999, 1.0, 1.5, 7.0, 40.0, 700.0}) {
    double want = -std::expm1(-x);
    EXPECT_NEAR(GammaLower(x, 1) / want, 1, 4 * DBL_EPSILON + test::ExponentSlack(want)) << x;
  }
}

TEST(Gamma, RoutesAtTheSwitchPoints) {
  // Which kernel answers decides the accuracy in the tails; each switch is fixed.
  struct { double x, a, from_kernel; } cases[] = {
      // count 21.5 >= 21 and |d| = 1 < 0.3 k: the expansion answers
      {22.5, 22.5, PoissonExpansion(21.5, 1)},
      // count 20 < 21: no expansion, even with x at the mean
      {21, 21, 1 - PoissonLowerTail(20, 21, 1)},
      // shape below 1 from x = 1 on: one minus the shifted lower tail
      {1, 0.5, 1 - PoissonLowerTail(-0.5, 1, 0)},
      {std::nextafter(1.0, 0.0), 0.5, GammaSmallShape(std::nextafter(1.0, 0.0), 0.5)},
  };
  for (const auto& c : cases) EXPECT_EQ(GammaLower(c.x, c.a), c.from_kernel) << c.x << " " << c.a;
}

TEST(Gamma, ShiftedCountTakesTheTermAtMinusK) {
  // P(count <= k) for k in (-1, 0) is the tail at count -k - 1: Q(-k, y) (mpmath values).
  EXPECT_NEAR(PoissonLowerTail(-0.5, 2, 0) / 0.045500263896358414, 1, 1e-14);
  EXPECT_NEAR(PoissonLowerTail(-0.25, 30, 0) / 1.9658221473570594e-15, 1, 1e-14);
  EXPECT_EQ(PoissonLowerTail(-0.5, 0, 0), 0);
  EXPECT_EQ(PoissonLowerTail(3, 0, -3), 1);
}

}  // namespace
}  // namespace qv
