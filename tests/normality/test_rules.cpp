// Refusals, verdict boundaries and the window's own rules of the four tests.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "normality_tests.h"
#include "reference_data.h"

namespace qv {
namespace {

using test::Reference;

std::vector<double> Ramp(std::size_t n) {
  std::vector<double> x(n);
  for (std::size_t i = 0; i < n; ++i) x[i] = static_cast<double>(i * i % 7) + static_cast<double>(i);
  std::sort(x.begin(), x.end());
  return x;
}

TEST(Refusals, EachTestRefusesWhatItCannotStandardise) {
  // notice "" means the test runs. Lilliefors with fewer than 4 values is no refusal: it
  // shows its notice and writes zeros.
  const std::string zero = kZeroDeviationNotice, few = kTooFewObservationsNotice, size = kSampleSizeNotice;
  struct Case { const char* what; std::vector<double> x; std::string notice[4]; bool lfRefused; } cases[] = {
      // notice: of Shapiro-Wilk, Anderson-Darling, Lilliefors, Jarque-Bera
      {"empty", {}, {few, few, size, few}, false},
      {"one value", {3.5}, {few, few, size, few}, false},
      {"two values", {1.0, 2.0}, {few, "", size, ""}, false},
      {"three values", {1.0, 2.0, 4.0}, {few, "", size, ""}, false},
      {"three equal values: the deviation is tested first", std::vector<double>(3, 2.0), {zero, zero, size, zero}, false},
      {"four equal values", std::vector<double>(4, 2.0), {zero, zero, zero, zero}, true},
      {"31 copies of 0.1 have a deviation of exactly 0", std::vector<double>(31, 0.1), {zero, zero, zero, zero}, true},
      {"four values", {1.0, 2.0, 4.0, 8.0}, {"", "", "", ""}, false}};
  for (const Case& c : cases) {
    const ShapiroWilkResult sw = ShapiroWilk(c.x, 0.05);
    const AndersonDarlingResult ad = AndersonDarling(c.x);
    const LillieforsResult lf = Lilliefors(c.x);
    const JarqueBeraResult jb = JarqueBera(c.x, 100, 0.05);
    const TestDisplay* runs[] = {&sw, &ad, &lf, &jb};  // in the order of Case::notice
    for (int i = 0; i < 4; ++i) {
      const TestDisplay& r = *runs[i];
      EXPECT_EQ(r.notice, c.notice[i]) << c.what << ", test " << i;
      EXPECT_EQ(r.refused, i == 2 ? c.lfRefused : !c.notice[i].empty()) << c.what << ", test " << i;
      if (!r.refused) continue;
      EXPECT_EQ(r.bell, Bell::No) << c.what;
      EXPECT_TRUE(r.testStat.empty() && r.criticalBox.empty() && r.pval.empty()) << c.what;
    }
    // Below 31 values the statistic is refused and JBFew shows it, also when the
    // deviation refuses the run afterwards.
    EXPECT_EQ(jb.jbFew.has_value(), c.x.size() < 31) << c.what;
  }
}

// Near the end of the double range each test shows numbers or refuses with its notice, never
// NaN or infinity. Shapiro-Wilk is scale-free and always runs; Anderson-Darling holds its
// mean and deviation in 32 bits and refuses anything past 3.4e38.
TEST(Refusals, HugeValuesGiveNumbersOrANotice) {
  auto spread = [](std::vector<double> head, double scale, std::size_t n) {
    for (std::size_t i = head.size(); i < n; ++i) head.push_back(scale * ((static_cast<double>(i % 17) - 8.0) / 8.0));
    std::sort(head.begin(), head.end());
    return head;
  };
  const double big = std::numeric_limits<double>::max();
  struct Case { const char* what; std::vector<double> x; bool adRuns; } cases[] = {
      {"1e308, -1e308, 0, 1 and small values", spread({1e308, -1e308, 0.0, 1.0}, 1.0, 40), false},
      {"values of 1e308 either side of 0", spread({}, 1e308, 40), false},
      {"the largest double beside small values", spread({big, big, -big}, 1.0, 40), false},
      {"1e200: squares overflow", spread({}, 1e200, 40), false},
      {"1e30 still fits in 32 bits", spread({}, 1e30, 40), true}};
  for (const Case& c : cases) {
    const ShapiroWilkResult sw = ShapiroWilk(c.x, 0.05);
    const AndersonDarlingResult ad = AndersonDarling(c.x);
    const LillieforsResult lf = Lilliefors(c.x);
    const JarqueBeraResult jb = JarqueBera(c.x, static_cast<std::int64_t>(c.x.size()), 0.05);
    const TestDisplay* runs[] = {&sw, &ad, &lf, &jb};
    for (int i = 0; i < 4; ++i) {
      const TestDisplay& r = *runs[i];
      const std::string what = std::string(c.what) + ", test " + std::to_string(i);
      ASSERT_TRUE(r.bell.has_value()) << what;
      if (r.refused) {
        EXPECT_EQ(r.notice, kTooLargeNotice) << what;
        EXPECT_EQ(r.bell, Bell::No) << what;
        EXPECT_TRUE(r.testStat.empty() && r.criticalBox.empty() && r.pval.empty()) << what;
        continue;
      }
      for (const std::string& box : {r.testStat, r.criticalBox, r.pval}) {
        EXPECT_EQ(box.find_first_not_of("0123456789.-NA"), std::string::npos) << what << ": " << box;
      }
    }
    EXPECT_FALSE(sw.refused) << c.what;
    EXPECT_TRUE(sw.core.rawW > 0 && sw.core.rawW <= 1) << c.what << ": " << sw.core.rawW;
    EXPECT_EQ(ad.refused, !c.adRuns) << c.what;
    if (!lf.refused) { EXPECT_TRUE(lf.d > 0 && lf.d < 1) << c.what << ": " << lf.d; }
    if (!jb.refused) { EXPECT_TRUE(jb.statistic && std::isfinite(*jb.statistic)) << c.what; }
  }
}

TEST(Lilliefors, CriticalValueByCount) {
  struct Case { std::int64_t n; double critical; } cases[] = {
      {3, 0.0},     {4, 0.381},   {5, 0.337},  {12, 0.242},     {13, 0.234},
      {21, 0.1866}, {29, 0.1634}, {30, 0.161}, {31, 0.886 / std::sqrt(31.0)},
      {40000, 0.886 / 200.0}};  // past the 16-bit count the window once had
  for (const Case& c : cases) EXPECT_DOUBLE_EQ(LfCritical(c.n), c.critical) << "n = " << c.n;
}

TEST(Lilliefors, StepsForTiedValues) {
  // In a run of equal values at s..e the entries s..e-2 take E(e-1) = e/n; a run of two
  // changes nothing, a run that reaches the end of the sample is left alone.
  struct Case { const char* what; std::vector<double> x; std::vector<int> eTimesN; } cases[] = {
      {"no ties", {1, 2, 3, 4}, {1, 2, 3, 4}},
      {"three equal at positions 2 to 4", {1, 2, 5, 5, 5, 6}, {1, 2, 4, 4, 5, 6}},
      {"a run of two", {1, 1, 2, 3}, {1, 2, 3, 4}},
      {"a run of four at the start", {7, 7, 7, 7, 8}, {3, 3, 3, 4, 5}},
      {"a run at the end", {1, 2, 2, 2}, {1, 2, 3, 4}},
      {"two runs", {1, 1, 1, 2, 3, 3, 3, 3, 4}, {2, 2, 3, 4, 7, 7, 7, 8, 9}},
      {"all equal", {5, 5, 5, 5}, {1, 2, 3, 4}},
      {"one value", {5}, {1}}};
  for (const Case& c : cases) {
    const std::vector<double> e = LillieforsSteps(c.x);
    ASSERT_EQ(e.size(), c.eTimesN.size()) << c.what;
    const double n = static_cast<double>(c.x.size());
    for (std::size_t i = 0; i < e.size(); ++i)
      EXPECT_EQ(e[i], c.eTimesN[i] / n) << c.what << ", entry " << i;
  }
}

TEST(Verdicts, RejectedAtOrBelowTheLevel) {
  const float f05 = 0.05f;  // 0.0500000007...: a float p is compared as it is
  const float belowF05 = std::nextafter(f05, 0.0f);
  struct Case { double p, level; Bell bell; } cases[] = {
      {0.05, 0.05, Bell::No},   {0.0501, 0.05, Bell::Yes}, {0.0499, 0.05, Bell::No},
      {f05, 0.05, Bell::Yes},   {belowF05, 0.05, Bell::No}, {0.0, 0.0, Bell::No},
      {0.001, 0.0, Bell::Yes},  {1.0, 0.15, Bell::Yes}};
  for (const Case& c : cases) EXPECT_EQ(BellForP(c.p, c.level), c.bell) << c.p << " at " << c.level;

  EXPECT_EQ(LillieforsBell(0.161, 0.161), Bell::No) << "D equal to the critical value rejects";
  EXPECT_EQ(LillieforsBell(std::nextafter(0.161, 0.0), 0.161), Bell::Yes);

  // Samples made so that the p value the run holds is the level itself: Shapiro-Wilk's
  // five-decimal p is 0.05000, Jarque-Bera's four-decimal p is 0.0500.
  const std::vector<double>& sw = Reference().sample("sw_at_level");
  const std::vector<double>& jb = Reference().sample("jb_at_level");
  const auto n = static_cast<std::int64_t>(jb.size());
  for (const auto& [level, bell] :
       {std::pair{0.05, Bell::No}, std::pair{0.0499, Bell::Yes}, std::pair{0.06, Bell::No}}) {
    const ShapiroWilkResult s = ShapiroWilk(sw, level);
    const JarqueBeraResult j = JarqueBera(jb, n, level);
    EXPECT_TRUE(s.core.p == 0.05 && j.p == 0.05);
    EXPECT_EQ(s.bell, bell) << "Shapiro-Wilk at level " << level;
    EXPECT_EQ(j.bell, bell) << "Jarque-Bera at level " << level;
  }
}

TEST(JarqueBera, ThirtyOrFewerValues) {
  const std::vector<double> x30 = Ramp(30), x31 = Ramp(31);
  struct Case { const char* what; const std::vector<double>* x; std::int64_t rangeCount; double level;
                const char *testStat, *criticalBox, *pval; } cases[] = {  // nullptr: the run's figure, not checked here
      {"30 values", &x30, 30, 0.05, "NA", "NA", "NA"},
      {"30 values at level 0", &x30, 30, 0.0, "NA", "NA", "NA"},
      {"100 values truncated to 30", &x30, 100, 0.05, kJBTooFewText, "5.9900", ""},
      {"31 values", &x31, 31, 0.05, nullptr, "5.9900", nullptr},
      {"31 values at level 0.01", &x31, 31, 0.01, nullptr, "9.2100", nullptr}};
  for (const Case& c : cases) {
    const JarqueBeraResult r = JarqueBera(*c.x, c.rangeCount, c.level);
    const bool few = c.x->size() < 31;
    EXPECT_FALSE(r.refused) << c.what;
    EXPECT_EQ(r.statistic.has_value(), !few) << c.what;
    EXPECT_EQ(r.jbFew.has_value(), few) << c.what;
    if (c.testStat) { EXPECT_EQ(r.testStat, c.testStat) << c.what; }
    if (c.pval) { EXPECT_EQ(r.pval, c.pval) << c.what; }
    EXPECT_EQ(r.criticalBox, c.criticalBox) << c.what;
    // No p value counts as 0: rejected at every level, 0 included.
    if (few) { EXPECT_EQ(r.bell, Bell::No) << c.what; }
  }
}

TEST(Order, ShapiroWilkAndAndersonDarlingSortACopy) {
  std::vector<double> x = Reference().sample("normal100");
  const ShapiroWilkResult swSorted = ShapiroWilk(x, 0.05);
  const AndersonDarlingResult adSorted = AndersonDarling(x);
  std::reverse(x.begin(), x.end());
  std::swap(x[3], x[50]);
  EXPECT_EQ(ShapiroWilk(x, 0.05).core.rawW, swSorted.core.rawW);
  EXPECT_EQ(AndersonDarling(x).a, adSorted.a);
}

TEST(AndersonDarling, ExtremeOutlierLeavesItsTermOut) {
  // The outlier's F is 1 in 32 bits: its term has no logarithm and is dropped, and the
  // statistic stays finite; A* >= 13 gives p = 0.
  const AndersonDarlingResult r = AndersonDarling(Reference().sample("outlier101"));
  EXPECT_EQ(r.skippedTerms, 1);
  EXPECT_TRUE(std::isfinite(r.a));
  EXPECT_GE(r.aStar, 13.0f);
  EXPECT_TRUE(r.p == 0.0f && r.pval == "0.0000" && r.bell == Bell::No);
}

}  // namespace
}  // namespace qv
