// Beta family: BetaLower / CdfBeta against mpmath over shapes 0.01 to 1e5 and every
// rule of BetaLower; the binomial kernels it stands on; and their edge cases.
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

// The binomial route forms the distance (a + b - 1) x - a + 1 in double, which moves x
// by up to half an ulp; the value moves by that times its condition x I'(x) / I(x).
double RoundingOfX(Args a, double v) {
  return 0.5 * DBL_EPSILON * a[0] * PdfBeta(a[0], a[1], a[2]) / v;
}

TEST(Beta, MatchesReferenceTable) {
  auto beta = [](Args a) { return BetaLower(a[0], a[1], a[2]); };
  auto slack = [](Args a, double v) { return test::ExponentSlack(v) + RoundingOfX(a, v); };
  test::ExpectTableAccuracy(
      "beta.txt",
      {{.name = "BetaLower", .fn = beta, .bound = 1e-13, .slack = slack},
       {.name = "BetaLower", .fn = beta, .bound = 1e-13,
        .rows = [](Args a, double v) { return v >= 1e-100 && RoundingOfX(a, v) < 1e-14; },
        .label = "BetaLower I >= 1e-100, x I'/I < 90"},
       {.name = "BetaLower", .fn = [](Args a) { return CdfBeta(a[0], a[1], a[2]); },
        .bound = 1e-13, .slack = slack, .label = "CdfBeta"}});
}

TEST(Binomial, MatchesReferenceTable) {
  test::ExpectTableAccuracy(
      "binomial.txt",
      {{.name = "BinomialFraction",
        .fn = [](Args a) { return BinomialFraction(a[0], a[1], a[2], a[3], a[4], a[5] != 0); },
        .bound = 1e-13, .slack = [](Args, double v) { return test::ExponentSlack(v); }},
       {.name = "BinomialTerm",
        .fn = [](Args a) { return BinomialTerm(a[0], a[1], a[2], a[3], a[4], a[5]); },
        .bound = 1e-13, .slack = [](Args, double v) { return test::ExponentSlack(v); }},
       // The same rows through the switch between expansion and fraction.
       {.name = "BinomialFraction",
        .fn =
            [](Args a) {
              return a[5] != 0 ? BinomialUpper(a[0], a[1], a[2], a[3], a[4])
                               : BinomialLower(a[0], a[1], a[2], a[3], a[4]);
            },
        .bound = 1e-13, .slack = [](Args, double v) { return test::ExponentSlack(v); },
        .label = "BinomialLower / Upper"},
       {.name = "BinomialExpansion",
        .fn = [](Args a) { return BinomialExpansion(a[0], a[1], a[2], a[3] != 0); },
        .bound = 1e-13}});
}

TEST(Beta, ComplementIdentityHoldsOverAllRules) {
  // I(x; a, b) + I(1 - x; b, a) = 1, the two sides mostly taking different rules.
  int checked = 0;
  for (const test::ReferenceRow& row : test::ReadTable("beta.txt")) {
    double x = row.args[0], a = row.args[1], b = row.args[2];
    if (1 - (1 - x) != x) continue;
    double sum = BetaLower(x, a, b) + BetaLower(1 - x, b, a);
    // Each side may be off by its relative error times the smaller of v and 1 - v, and
    // by the rounding of x (from either side) times x I'(x).
    double v = static_cast<double>(row.expected), small = std::min(v, 1 - v);
    double allowed = 1e-13 + 2 * RoundingOfX(row.args, v) * v + test::ExponentSlack(small) * small;
    EXPECT_NEAR(sum, 1, allowed) << "line " << row.line << ": " << x << " " << a << " " << b;
    ++checked;
  }
  EXPECT_GT(checked, 1000);
}

TEST(Beta, ArcsineLawAndExactValues) {
  // I(x; 1/2, 1/2) = (2 / pi) asin(sqrt(x)), through rule 1 on both sides of x = 0.5;
  // written with atan2 so that the reference keeps its digits near x = 1.
  for (double x : {1e-300, 1e-12, 0.001, 0.25, 0.5, std::nextafter(0.5, 1.0), 0.75, 0.999, 1 - 1e-12}) {
    double want = 2 / M_PI * std::atan2(std::sqrt(x), std::sqrt(1 - x));
    EXPECT_NEAR(BetaLower(x, 0.5, 0.5) / want, 1, 8 * DBL_EPSILON) << x;
  }
  // Finite sums: I(0.3; 2, 3) = P(at least 2 of 4 at 0.3) = 0.3483, and the four lowest
  // terms of eight trials at 0.3 add to 0.80589565.
  EXPECT_NEAR(BetaLower(0.3, 2, 3), 0.3483, 4 * DBL_EPSILON);
  EXPECT_NEAR(BinomialFraction(3, 5, 0.3, 0.7, -0.6, false), 0.80589565, 4 * DBL_EPSILON);
  // 0.5 + C(2000, 1000) / 2^2001, by the expansion and by the fraction.
  EXPECT_NEAR(BinomialExpansion(999, 1000, 0, false), 0.50891950557, 5e-12);
  EXPECT_NEAR(BinomialFraction(1000, 1000, 0.5, 0.5, 0, false), 0.50891950557, 5e-12);
  // Rule 2 catches small x with a < 1 <= b (mpmath: 0.186253750000000000191).
  EXPECT_EQ(BetaLower(0.01, 0.5, 3), BetaSmallShape(0.01, 0.5, 3, false));
  EXPECT_NEAR(BetaLower(0.01, 0.5, 3) / 0.18625375000000000019, 1, 8 * DBL_EPSILON);
}

TEST(Binomial, SwappedQuestionsAndTermsAgree) {
  struct { double i, j, p; } cases[] = {{3, 5, 0.3}, {2.5, 7.25, 0.125}, {40, 60, 0.375}, {10, 0.5, 0.75}, {0.5, 3, 0.5}};
  for (auto c : cases) {
    double q = 1 - c.p, d = (c.i + c.j) * c.p - c.i;
    // P(X <= i) for i + j trials at p is P(Y > j - 1) for Y the failures.
    for (bool upper : {false, true}) {
      double v = BinomialFraction(c.i, c.j, c.p, q, d, upper);
      double w = BinomialFraction(c.j - 1, c.i + 1, q, c.p, 1 - d, !upper);
      EXPECT_NEAR(v, w, 1e-14) << c.i << " " << c.j << " " << c.p;
    }
    EXPECT_NEAR(BinomialTerm(c.i, c.j, c.p, q, d, 0) / BinomialTerm(c.j, c.i, q, c.p, -d, 0), 1,
                8 * DBL_EPSILON);
  }
}

TEST(Binomial, ExpansionStaysFiniteAcrossItsOverflowSwitch) {
  // Counts near 1e51 put t = (n + 1) y across 1e50, where the correction sums would
  // overflow unless divided as they are formed. Far out there the tail is 0 or 1.
  const double a = 5e50, b = 5e50;
  auto t_of = [&](double d) {
    double n = a + b, n1 = n + 1, x = (b + d) / n1 - d;
    double lq = (LogOnePlusMinusX(x / a) * a + LogOnePlusMinusX(-x / b) * b) / n;
    return n1 * -ExpMinusOne(lq);
  };
  double below = 0, above = 0;
  for (double d = -1e48; d > -1e51; d *= 1.01) {
    (t_of(d) <= 1e50 ? below : above) = d;
    if (below != 0 && above != 0) break;
  }
  ASSERT_NE(below, 0);
  ASSERT_NE(above, 0);
  for (bool upper : {false, true}) {
    double lo = BinomialExpansion(a, b, below, upper), hi = BinomialExpansion(a, b, above, upper);
    EXPECT_TRUE(std::isfinite(lo) && std::isfinite(hi));
    EXPECT_EQ(lo, hi);
  }
}

}  // namespace
}  // namespace qv
