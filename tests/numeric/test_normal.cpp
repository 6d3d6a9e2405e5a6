// Normal distribution: CdfNormal against mpmath over [-41, 41], InverseNormal (AS 241)
// against mpmath for p from 5e-324 to 1 - 1e-10, and the edge cases of both.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <vector>

#include "numeric_functions.h"
#include "numeric_internal.h"
#include "reference_table.h"

namespace qv {
namespace {

using test::Args;

TEST(Normal, MatchesReferenceTable) {
  auto cdf = [](Args a) { return CdfNormal(a[0]); };
  test::ExpectTableAccuracy(
      "normal.txt",
      {{.name = "CdfNormal", .fn = cdf, .bound = 1e-14,
        .rows = [](Args a, double) { return std::fabs(a[0]) <= 9; }, .label = "CdfNormal |x| <= 9"},
       // Full relative accuracy in the far tail too: exp(-x^2 / 2) must not carry the
       // rounding of x^2, which alone is worth 7e-14 at x = -37. Subnormal results are
       // measured against the smallest normal double.
       {.name = "CdfNormal", .fn = cdf, .bound = 1e-14,
        .rows = [](Args a, double) { return std::fabs(a[0]) > 9; }, .label = "CdfNormal |x| > 9"},
       // The coefficients held to 15 figures cost up to 12 ulp (2.7e-15); with all the
       // published figures the worst row is 3.3 ulp.
       {.name = "InverseNormal", .fn = [](Args a) { return InverseNormal(a[0]); },
        .bound = 3e-15}});
}

TEST(Normal, EdgeCases) {
  using numeric::NormalLower;
  // Exact values: the centre, the ends of double range, the region switches.
  struct { double got, want; } cases[] = {{NormalLower(0), 0.5}, {CdfNormal(-0.0), 0.5}, {NormalLower(-41), 0.0},
      {NormalLower(41), 1.0}, {NormalLower(40), 1.0}, {CdfNormal(-INFINITY), 0.0}, {CdfNormal(INFINITY), 1.0}};
  for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << "case " << &c - cases;
  EXPECT_FALSE(std::signbit(CdfNormal(-40)) || std::signbit(CdfNormal(-1e300)));
  EXPECT_TRUE(std::isnan(CdfNormal(NAN)));
  // Phi(-38) = 2.8854283600687843e-316 (mpmath): subnormal, yet not flushed to 0.
  EXPECT_NEAR(NormalLower(-38), 2.8854283600687843e-316, 4 * std::numeric_limits<double>::denorm_min());
}

// The form for many values gives each the bits of the single call: every row of the
// table, both region switches and the ends, a sorted sample (groups that converge
// together) and a shuffled one (groups that do not), and lengths that leave a short group.
TEST(Normal, ManyAtOnceMatchTheSingleCallToTheBit) {
  std::vector<double> x;
  for (const test::ReferenceRow& row : test::ReadTable("normal.txt"))
    if (row.name == "CdfNormal") x.push_back(row.args[0]);
  for (double v : {0.0, -0.0, 1.5, -1.5, std::nextafter(1.5, 0.0), std::nextafter(-1.5, 0.0), 40.0, -40.0,
                   std::nextafter(40.0, 41.0), -41.0, 1e-300, -5e-324, static_cast<double>(INFINITY),
                   static_cast<double>(-INFINITY), static_cast<double>(NAN)})
    x.push_back(v);
  std::vector<double> sorted = x;
  std::sort(sorted.begin(), sorted.end(), [](double a, double b) { return a < b || (a == a && b != b); });
  for (const std::vector<double>* set : {&x, &sorted}) {
    for (std::size_t n : {set->size(), std::size_t{1}, std::size_t{7}, std::size_t{9}, std::size_t{17}}) {
      const std::span<const double> in(set->data(), n);
      std::vector<double> out(n);
      CdfNormalOneThread(in, out);
      for (std::size_t i = 0; i < n; ++i) {
        const double one = CdfNormal(in[i]);
        EXPECT_EQ(std::memcmp(&one, &out[i], sizeof one), 0) << in[i] << ": " << one << " vs " << out[i];
      }
    }
  }
}

TEST(Normal, InverseIsOddAndInvertsTheDistribution) {
  EXPECT_EQ(InverseNormal(0.5), 0.0);
  EXPECT_FALSE(std::signbit(InverseNormal(0.5)));
  for (double p : {1e-300, 1e-20, 1e-9, 0.01, 0.074999999999999997, 0.075, 0.3, 0.4999}) {
    double x = InverseNormal(p);
    // The routine works on min(p, 1 - p), so it is odd to the bit where 1 - p is exact.
    double upper = 1 - p;
    if (upper < 1) {
      EXPECT_EQ(InverseNormal(upper), -InverseNormal(1 - upper)) << p;
    }
    // Phi(x(p)) = p, up to the condition of Phi: x^2 + 1 ulp per ulp of x.
    EXPECT_NEAR(CdfNormal(x) / p, 1, (x * x + 2) * 4e-15) << p;
  }
}

TEST(Normal, InverseRefusesProbabilitiesOutsideTheOpenInterval) {
  const double inf = std::numeric_limits<double>::infinity();
  for (double p : {0.0, 1.0, -0.1, 1.5, -inf, inf}) EXPECT_THROW(InverseNormal(p), ValueError) << p;  // text: EntryPoints
  EXPECT_TRUE(std::isnan(InverseNormal(NAN)));
}

}  // namespace
}  // namespace qv
