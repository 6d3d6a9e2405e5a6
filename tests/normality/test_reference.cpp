// The four tests against data/reference.txt: statistics and p values from the definitions
// at 50 digits (Anderson-Darling emulated in 32 bits), and the texts shown in the boxes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "normality_tests.h"
#include "number_text.h"
#include "reference_data.h"

namespace qv {
namespace {

using test::Reference;
using test::WorstError;

constexpr double kEps = std::numeric_limits<double>::epsilon();

// How far rounding can move a figure resting on z-scores (data near 1e6 with a deviation
// of 1 keep few digits in x - mean); errors are in eps times this (times n for plain sums).
double Condition(const std::vector<double>& x) {
  double mean = 0.0;
  for (double v : x) mean += v;
  mean /= static_cast<double>(x.size());
  double ss = 0.0, big = 0.0;
  for (double v : x) {
    ss += (v - mean) * (v - mean);
    big = std::max(big, std::fabs(v));
  }
  return std::max(1.0, big / std::sqrt(ss / static_cast<double>(x.size() - 1)));
}

const char* BellName(std::optional<Bell> b) { return !b ? "none" : (*b == Bell::Yes ? "Yes" : "No"); }

// Columns: name rawW rawP heldW heldP TestStat Pval bell@0.05. The samples cover n = 4
// and 5 (one polynomial weight), 6 (two), 11 and 12 (either side of the small-sample
// transformation), up to 2,000, and the 1965 paper's example (W = 0.79 there, with the
// exact weights; 0.7888 with these).
TEST(ShapiroWilk, MatchesReference) {
  // AS R94 adds its sums plainly: errors grow with n, and 1 - W is small for large n.
  WorstError w1Error("Shapiro-Wilk 1 - W, relative, eps x cond x n");
  WorstError pError("Shapiro-Wilk p, absolute, eps x cond x n");
  for (const auto& r : Reference().of("SW")) {
    const std::vector<double>& x = Reference().sample(r[0]);
    const ShapiroWilkResult got = ShapiroWilk(x, 0.05);
    const double w1 = 1.0 - std::stod(r[1]);
    const double unit = kEps * Condition(x) * static_cast<double>(x.size());
    w1Error.note(std::fabs((1.0 - got.core.rawW) - w1) / w1 / unit, r[0]);
    pError.note(std::fabs(got.core.rawP - std::stod(r[2])) / unit, r[0]);
    EXPECT_EQ(FormatFixed(got.core.w, 4), r[3]) << r[0];
    EXPECT_EQ(FormatFixed(got.core.p, 5), r[4]) << r[0];
    EXPECT_EQ(got.testStat, r[5]) << r[0];
    EXPECT_EQ(got.pval, r[6]) << r[0];
    EXPECT_EQ(got.criticalBox, "1.6449") << r[0];
    EXPECT_STREQ(BellName(got.bell), r[7].c_str()) << r[0];
    EXPECT_FALSE(got.refused) << r[0];
  }
  EXPECT_LT(w1Error.worst(), 16);
  EXPECT_LT(pError.worst(), 16);
}

// Columns: name A A* p skipped TestStat Pval bell A_exact. The first three are floats;
// the 32-bit figures are the intended ones, so they must agree bit for bit (offset50,
// values near 1e6, shows how far the float mean moves A from its exact value).
TEST(AndersonDarling, MatchesFloatEmulation) {
  for (const auto& r : Reference().of("AD")) {
    const std::vector<double>& x = Reference().sample(r[0]);
    const AndersonDarlingResult got = AndersonDarling(x);
    EXPECT_EQ(got.a, static_cast<float>(std::stod(r[1]))) << r[0];
    EXPECT_EQ(got.aStar, static_cast<float>(std::stod(r[2]))) << r[0];
    EXPECT_EQ(got.p, static_cast<float>(std::stod(r[3]))) << r[0];
    EXPECT_EQ(got.skippedTerms, std::stoll(r[4])) << r[0];
    EXPECT_EQ(got.testStat, r[5]) << r[0];
    EXPECT_EQ(got.pval, r[6]) << r[0];
    EXPECT_STREQ(BellName(got.bell), r[7].c_str()) << r[0];
    EXPECT_TRUE(got.criticalBox.empty()) << r[0];
  }
}

// A* on both sides of each threshold of the four-piece formula; 13 and above give 0.
TEST(AndersonDarling, PValueAtTheBranchPoints) {
  for (const auto& r : Reference().of("ADP")) {
    const float aStar = static_cast<float>(std::stod(r[0]));
    EXPECT_EQ(AndersonDarlingPValue(aStar), static_cast<float>(std::stod(r[1]))) << "A* = " << r[0];
  }
}

// Columns: name D critical TestStat CriticalBox bell. Ties (ties13, tiesend8, ties60)
// follow the window's own steps.
TEST(Lilliefors, MatchesReference) {
  WorstError dError("Lilliefors D, absolute, eps x condition");
  for (const auto& r : Reference().of("LF")) {
    const std::vector<double>& x = Reference().sample(r[0]);
    const LillieforsResult got = Lilliefors(x);
    dError.note(std::fabs(got.d - std::stod(r[1])) / (kEps * Condition(x)), r[0]);
    EXPECT_NEAR(got.critical, std::stod(r[2]), 1e-16) << r[0];
    EXPECT_EQ(got.testStat, r[3]) << r[0];
    EXPECT_EQ(got.criticalBox, r[4]) << r[0];
    EXPECT_EQ(got.pval, "NA") << r[0];
    EXPECT_STREQ(BellName(got.bell), r[5].c_str()) << r[0];
  }
  EXPECT_LT(dError.worst(), 16);
}

// Columns: name JB p4 TestStat CriticalBox Pval bell@0.05, the whole range counted.
TEST(JarqueBera, MatchesReference) {
  WorstError jbError("Jarque-Bera JB, relative, eps x condition");
  for (const auto& r : Reference().of("JB")) {
    const std::vector<double>& x = Reference().sample(r[0]);
    const JarqueBeraResult got = JarqueBera(x, static_cast<std::int64_t>(x.size()), 0.05);
    ASSERT_TRUE(got.statistic) << r[0];
    const double jb = std::stod(r[1]);
    jbError.note(std::fabs(*got.statistic - jb) / jb / (kEps * Condition(x)), r[0]);
    ASSERT_TRUE(got.p) << r[0];
    EXPECT_EQ(FormatFixed(*got.p, 4), r[2]) << r[0];
    EXPECT_EQ(got.testStat, r[3]) << r[0];
    EXPECT_EQ(got.criticalBox, r[4]) << r[0];
    EXPECT_EQ(got.pval, r[5]) << r[0];
    EXPECT_STREQ(BellName(got.bell), r[6].c_str()) << r[0];
    EXPECT_FALSE(got.jbFew) << r[0];
  }
  EXPECT_LT(jbError.worst(), 256);
}

// Columns: level critical. Includes the two levels whose -2 ln p is a half at 15 digits
// (5.995 goes up to 6.00, 5.985 down to 5.98) and level 0, where ChiInv fails.
TEST(JarqueBera, CriticalValue) {
  for (const auto& r : Reference().of("JBC")) {
    EXPECT_EQ(FormatFixed(JBCriticalValue(std::stod(r[0])), 2), r[1]) << "level " << r[0];
  }
}

}  // namespace
}  // namespace qv
