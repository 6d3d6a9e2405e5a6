// The frequency table: the examples of the two routines, the explicit frame, the
// maximum that must be counted, refusals, and the binary-search counts against a scan.
#include <gtest/gtest.h>

#include <random>

#include "tabulation.h"

namespace qv {
namespace {

using Counts = std::vector<std::int64_t>;
using Labels = std::vector<std::string>;
using S = Tabulation::Status;

ExplicitBins Width(double from, double to, double w) { return {from, to, w, true}; }
ExplicitBins Bins(double from, double to, double k) { return {from, to, k, false}; }

TEST(Tabulation, Examples) {
  std::vector<double> four{1, 2, 3, 4}, constant(6, 7.0), tail{0, 5, 12, 13};
  std::vector<double> gap{-6.5, 0, 1.69};  // -6.5 + (1.69 - -6.5) is 1.6899999999999995
  struct Case { const char* what; Tabulation t; Counts counts; Labels labels; } cases[] = {
      {"by count: 2 goes up, 4 in the closed last bin", TabulateByCount(four, 3, {}, 2),
       {1, 1, 2}, {"1 to 2", "2 to 3", "3 to 4"}},
      {"by width span/2: 3 bins, 2 goes down", TabulateByWidth(four, 1.5, 2),
       {2, 1, 1}, {"1 to 2", "2 to 3", "3 to 4"}},
      {"constant by count", TabulateByCount(constant, 5, {}, 2),
       {0, 0, 0, 0, 6}, Labels(5, "7 to 7")},
      {"constant by width", TabulateByWidth(constant, 0.5, 2), {6}, {"7 to 7"}},
      {"explicit width", TabulateByCount(four, 0, Width(0, 10, 3), 2),
       {2, 2, 0, 0}, {"0 to 3", "3 to 6", "6 to 9", "9 to 12"}},
      {"13 lies above the last edge", TabulateByCount(tail, 0, Width(0, 10, 3), 2),
       {1, 1, 0, 1}, {"0 to 3", "3 to 6", "6 to 9", "9 to 12"}},
      {"explicit count: 1 and 4 stay outside", TabulateByCount(four, 0, Bins(2, 3, 2), 2),
       {1, 1}, {"2 to 2.5", "2.5 to 3"}},
      {"count halves to even", TabulateByCount(four, 0, Bins(1, 4, 2.5), 0),
       {2, 2}, {"1 to 3", "3 to 4"}},
      {"From = To, constant", TabulateByCount(constant, 0, Bins(7, 7, 3), 2),
       {0, 0, 6}, Labels(3, "7 to 7")},
      {"From = To by width: one bin", TabulateByCount(constant, 0, Width(7, 7, 1), 2),
       {6}, {"7 to 8"}},
      {"max by count", TabulateByCount(gap, 1, {}, 2), {3}, {"-6.5 to 1.69"}},
      {"max by width", TabulateByWidth(gap, 8.19, 2), {1, 2}, {"-6.5 to -2.41", "-2.41 to 1.69"}},
      {"max explicit", TabulateByCount(gap, 0, Bins(-6.5, 1.69, 1), 2), {3}, {"-6.5 to 1.69"}}};
  for (const Case& c : cases) {
    ASSERT_EQ(c.t.status, S::Done) << c.what << ": " << c.t.message;
    EXPECT_EQ(c.t.table.BinCounts, c.counts) << c.what;
    EXPECT_EQ(c.t.table.BinLabels, c.labels) << c.what;
  }
}

TEST(Tabulation, LabelsFollowTheDecimalsAndCountsDoNot) {
  std::vector<double> a{0, 1.0 / 3, 2.0 / 3, 1};
  Tabulation two = TabulateByCount(a, 3, {}, 2), none = TabulateByCount(a, 3, {}, 0);
  EXPECT_EQ(two.table.BinLabels, (Labels{"0 to 0.33", "0.33 to 0.67", "0.67 to 1"}));
  EXPECT_EQ(none.table.BinLabels, (Labels{"0 to 0", "0 to 1", "1 to 1"}));
  EXPECT_EQ(TabulateByCount(a, 3, {}, 2, ',').table.BinLabels[1], "0,33 to 0,67");
  EXPECT_EQ(two.table.BinCounts, none.table.BinCounts);
}

TEST(Tabulation, RefusalsLeaveTheTable) {
  std::vector<double> one{5}, four{1, 2, 3, 4}, huge{-1e308, 0, 1, 1e308};
  struct Case { Tabulation t; S status; bool message; } cases[] = {
      {TabulateByCount({}, 5, {}, 2), S::TooFewValues, true},
      {TabulateByCount(one, 5, {}, 2), S::TooFewValues, true},
      {TabulateByCount(four, 0, {}, 2), S::Refused, true},  // bins outside 1..32767
      {TabulateByCount(four, 32768, {}, 2), S::Refused, true},
      {TabulateByCount(four, 0, Bins(0, 10, 0), 2), S::Refused, true},
      {TabulateByCount(four, 0, Width(0, 10, 0), 2), S::Refused, true},  // width 0 or less
      {TabulateByCount(four, 0, Width(0, 10, -1), 2), S::Refused, true},
      {TabulateByCount(four, 0, Width(0, 1e9, 1), 2), S::Refused, true},  // 1e9 bins
      {TabulateByCount(four, 0, Bins(10, 0, 3), 2), S::Refused, true},    // To below From
      {TabulateByWidth(four, 0, 2), S::Refused, false},                    // the slider at 0
      {TabulateByWidth({}, 1, 2), S::Refused, false},
      {TabulateByWidth(four, 1e-6, 2), S::Refused, true},
      // Spans beyond the largest double: by width, no number of bins has a value.
      {TabulateByWidth(huge, 1e300, 2), S::Refused, true},
      {TabulateByCount(huge, 0, Width(-1e308, 1e308, 1e300), 2), S::Refused, true},
      {TabulateByCount(four, 0, Width(0, 1.7e308, 1e308), 2), S::Refused, true}};  // last edge 2E+308
  for (const Case& c : cases) {
    EXPECT_EQ(c.t.status, c.status) << c.t.message;
    EXPECT_EQ(!c.t.message.empty(), c.message) << c.t.message;
    EXPECT_EQ(c.t.table.NumberOfBins(), 0);
    EXPECT_EQ(c.t.message.find("NaN"), std::string::npos) << c.t.message;
  }
  EXPECT_EQ(cases[0].t.message, kTooFewValuesText);
  EXPECT_EQ(TabulateByCount(four, 32767, {}, 2).status, S::Done);
  // By count the edges are worked out on halves: every label readable, every value counted.
  Tabulation wide = TabulateByCount(huge, 4, {}, 2);
  ASSERT_EQ(wide.status, S::Done);
  EXPECT_EQ(wide.table.BinLabels, (std::vector<std::string>{"-1E+308 to -5E+307", "-5E+307 to 0",
                                                             "0 to 5E+307", "5E+307 to 1E+308"}));
  EXPECT_EQ(wide.table.BinCounts, (std::vector<std::int64_t>{1, 0, 2, 1}));
}

TEST(Tabulation, BinarySearchCountsEqualAScanWithTheSameSides) {
  // Values on a grid of quarters, so that many fall exactly on edges.
  std::mt19937_64 rng(1);
  std::vector<double> a(4000);
  for (double& x : a) x = static_cast<double>(rng() % 81) / 4 - 10;
  std::sort(a.begin(), a.end());
  const double min = a.front(), max = a.back(), span = max - min;
  for (int k : {1, 2, 3, 7, 10, 81, 100, 1000}) {
    Counts byCount(k), byWidth(k);
    for (int i = 1; i <= k; ++i) {
      double lo = min + span * ((i - 1.0) / k), hi = i == k ? max : min + span * (1.0 * i / k);
      for (double v : a) {
        byCount[i - 1] += i < k ? (lo <= v && v < hi) : (lo <= v && v <= hi);
        byWidth[i - 1] += i > 1 ? (lo < v && v <= hi) : (lo <= v && v <= hi);
      }
    }
    EXPECT_EQ(TabulateByCount(a, k, {}, 2).table.BinCounts, byCount) << k;
    // A width that gives k bins: Round(span / w) + 1 = k.
    Tabulation w = TabulateByWidth(a, k == 1 ? span * 4 : span / (k - 1), 2);
    EXPECT_EQ(w.table.BinCounts, byWidth) << k;
  }
}

TEST(Tabulation, CalculateChecksAndTheViewHelpers) {
  using V = CalculateCheck::Verdict;
  EXPECT_EQ(CheckCalculate("", "10", "3", "1", "4").verdict, V::Silent);
  EXPECT_EQ(CheckCalculate("2", "10", "3", "1", "4").notice,
            "The -From- value must be smaller/equal than then minimum range and the -To- "
            "value must be greater/equal than the maximum");
  EXPECT_EQ(CheckCalculate("4", "2", "3", "5", "1").notice,  // stale boxes: min above max
            "The -From- value must be smaller/equal thantthe -To- value ");
  EXPECT_EQ(CheckCalculate("7", "7", "1", "7", "7").verdict, V::Tabulate);

  std::vector<double> zeros{0, 0};  // counts to percentages: through the main window
  ConvertToPercentages(zeros);
  EXPECT_EQ(zeros, (std::vector<double>{0, 0}));
  for (auto [i, key] : {std::pair{1, "01"}, {9, "09"}, {10, "10"}, {12, "12"}})
    EXPECT_EQ(BarKey(i), key);
}

}  // namespace
}  // namespace qv
