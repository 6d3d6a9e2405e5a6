// Elementary forms and Stirling corrections against mpmath, and the small helpers.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "numeric_internal.h"
#include "reference_table.h"

namespace qv::numeric {
namespace {

using test::Args;

TEST(Elementary, MatchesReferenceTable) {
  auto one = [](double (*f)(double)) { return [f](Args a) { return f(a[0]); }; };
  auto away_from_minus_one = [](Args a, double) { return a[0] > -0.99; };
  auto near_minus_one = [](Args a, double) { return a[0] <= -0.99; };
  const double ulp4 = 4 * DBL_EPSILON;
  test::ExpectTableAccuracy(
      "elementary.txt",
      {{.name = "ExpMinusOne", .fn = one(ExpMinusOne), .bound = 6 * DBL_EPSILON},
       {.name = "LogOnePlus", .fn = one(LogOnePlus), .bound = ulp4},
       {.name = "LogOnePlusMinusX", .fn = one(LogOnePlusMinusX), .bound = ulp4},
       // 15-figure stored values at 0..5 cost up to 16 ulp there.
       {.name = "StirlingError", .fn = one(StirlingError), .bound = 16 * DBL_EPSILON,
        .rows = away_from_minus_one},
       {.name = "StirlingStep", .fn = one(StirlingStep), .bound = 8 * DBL_EPSILON,
        .rows = away_from_minus_one},
       // Near x = -1 the value hangs on x + 1, which 2x + 3 keeps only to an ulp of 1.
       {.name = "StirlingError", .fn = one(StirlingError), .bound = ulp4, .rows = near_minus_one,
        .slack = [](Args a, double v) { return DBL_EPSILON / (a[0] + 1) / v; },
        .label = "StirlingError x near -1"},
       {.name = "StirlingD1", .fn = one(StirlingD1), .bound = 16 * DBL_EPSILON},
       // The truncated asymptotic series at x = 6, weighed in StirlingDifference by
       // a^2 / 24, a^4 / 1920 and a^6 / 322560 with a below 0.2 there.
       {.name = "StirlingD3", .fn = one(StirlingD3), .bound = 1e-12},
       {.name = "StirlingD5", .fn = one(StirlingD5), .bound = 5e-11},
       {.name = "StirlingD7", .fn = one(StirlingD7), .bound = 1e-9},
       // Used inside an exponent: what counts is the absolute error, against the size of
       // the corrections it is the difference of.
       {.name = "StirlingDifference",
        .fn = [](Args a) { return StirlingDifference(a[0], a[1]); }, .bound = ulp4,
        .slack =
            [](Args a, double v) {
              return 16 * DBL_EPSILON * (StirlingError(a[0] + a[1]) + StirlingError(a[1])) / std::fabs(v);
            }},
       // Passes through 0 at a = 1 and is exponentiated: absolute error counts there.
       {.name = "LogGammaOnePlus", .fn = one(LogGammaOnePlus), .bound = ulp4,
        .slack = [](Args, double v) { return 3 * DBL_EPSILON / std::fabs(v); }}});
}

TEST(Elementary, Helpers) {
  // The direct form from |x| = 2 on; the fraction just inside agrees with it closely.
  EXPECT_EQ(ExpMinusOne(2), std::exp(2.0) - 1);
  EXPECT_NEAR(ExpMinusOne(std::nextafter(2.0, 0.0)) / (std::exp(2.0) - 1), 1, 4 * DBL_EPSILON);
  EXPECT_FALSE(std::signbit(ClearNegativeZero(-0.0)));
  for (double x : {1.0, -1.0, -1e-300, -std::numeric_limits<double>::infinity(), 0.0}) EXPECT_EQ(ClearNegativeZero(x), x);
  EXPECT_TRUE(std::isnan(ClearNegativeZero(NAN)));

  struct { double x; bool even; } parity[] = {{0, true}, {4, true}, {-2, true}, {3, false}, {2.5, false}, {-3, false}, {1e300, true}};
  for (auto c : parity) EXPECT_EQ(IsEven(c.x), c.even) << c.x;
}

}  // namespace
}  // namespace qv::numeric
