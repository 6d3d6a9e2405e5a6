// The statistics boxes: the quartile rule, the boxes that keep their text, huge values and
// the rounded texts (counts, marks and truncation are checked through the main window).
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "number_text.h"
#include "rounded_text.h"
#include "sample.h"
#include "statistics.h"
#include "worksheet_functions.h"

namespace qv {
namespace {

TEST(Statistics, QuartileRule) {
  // a(i) = 10 i; by hand from the rule: n = 8 gives (a2 + a3)/2 and (a6 + a7)/2.
  struct Case { int n; double q25, q75; } cases[] = {
      {1, 10, 10}, {3, 10, 30}, {4, 15, 35}, {5, 20, 40}, {8, 25, 65}, {9, 30, 70}};
  for (const Case& c : cases) {
    std::vector<double> a;
    for (int i = 1; i <= c.n; ++i) a.push_back(10.0 * i);
    EXPECT_EQ(Quartile(a, 25), c.q25) << c.n;
    EXPECT_EQ(Quartile(a, 75), c.q75) << c.n;
  }
}

TEST(Statistics, BoxesThatKeepTheirText) {
  RangeFacts facts{10, -5, 5, std::nullopt, std::nullopt};
  StatisticsBoxes none = RefreshStatistics({}, facts, 2);
  EXPECT_FALSE(none.TextBox1 || none.Miss || none.TextBox2 || none.TextBox3 || none.CV ||
               none.krt || none.intervalMaximum || none.markMin || none.markMax);
  std::vector<double> one{2.5}, constant(31, 0.1), centred{-1, 1};
  StatisticsBoxes single = RefreshStatistics(one, facts, 2);
  EXPECT_EQ(single.TextBox3, "");  // emptied
  EXPECT_FALSE(single.CV);         // kept
  EXPECT_EQ(single.TextBox5, "2.5");
  EXPECT_EQ(single.krt, "#DIV/0!");
  StatisticsBoxes flat = RefreshStatistics(constant, facts, 2);  // compensated: sd exactly 0
  EXPECT_EQ(flat.TextBox3, "0");
  EXPECT_EQ(flat.Range, "0");
  EXPECT_EQ(flat.CV, "0%");
  EXPECT_FALSE(RefreshStatistics(centred, facts, 2).CV);  // mean 0
}

// No box shows NaN or infinity: what can be worked out is shown, a figure beyond the
// largest double shows "#NUM!".
TEST(Statistics, HugeValuesShowFiguresOrTheErrorText) {
  const double big = std::numeric_limits<double>::max();
  struct Case { std::vector<double> sorted; const char *mean, *sd, *range, *cv, *q25; bool width; } cases[] = {
      {{-1e308, 0, 1, 1e308}, "0.25", "8.16496580927726E+307", "#NUM!", "#NUM!", "-5E+307", false},
      {{1e308, 1.5e308, 1.7e308}, "1.4E+308", "3.60555127546399E+307", "7E+307", "26%", "1E+308", true},
      {{-big, big}, "0", "#NUM!", "#NUM!", "#NUM!", "-1.79769313486232E+308", false},
  };
  for (const Case& c : cases) {
    RangeFacts facts{4, c.sorted.front(), c.sorted.back(), std::nullopt, std::nullopt};
    StatisticsBoxes b = RefreshStatistics(c.sorted, facts, 2);
    EXPECT_EQ(b.TextBox2, c.mean);
    EXPECT_EQ(b.TextBox3, c.sd);
    EXPECT_EQ(b.Range, c.range);
    EXPECT_EQ(b.CV, c.cv) << c.mean;
    EXPECT_EQ(b.TextBox5, c.q25);
    EXPECT_EQ(b.intervalMaximum.has_value(), c.width);  // the width slider gets a maximum
  }
}

TEST(Statistics, RoundedBoxesFollowTheDecimals) {
  // CV rounds the ratio first: {1, 2.35} gives sd/mean = 0.5699..., and 100 x 0.57 is
  // 56.99999999999999 in binary; {1, 3} gives sqrt(2)/2 = 0.7071...
  struct Case { std::vector<double> a; int d; char mark; const char *mean, *cv; } cases[] = {
      {{1, 2.35}, 2, '.', "1.68", "57%"}, {{1, 3}, 0, '.', "2", "100%"},
      {{1, 3}, 2, '.', "2", "71%"}, {{1, 3}, 3, ',', "2", "70,7%"},
      {{1.234, 2.345, 3.456}, 2, ',', "2,35", "47%"}, {{1.234, 2.345, 3.456}, 0, '.', "2", "0%"}};
  RangeFacts facts{5, 0, 10, 1.5, -0.25};
  for (const Case& c : cases) {
    StatisticsBoxes box = RefreshStatistics(c.a, facts, c.d, c.mark);
    EXPECT_EQ(box.TextBox2, c.mean) << c.d;
    EXPECT_EQ(box.CV, c.cv) << c.d;
    EXPECT_EQ(box.Miss, c.a.size() == 2 ? "3" : "2");  // counts do not follow the decimals
  }
}

TEST(Statistics, MeanAndDeviationAreTheWorksheetFunctions) {
  std::mt19937_64 rng(5);
  std::normal_distribution<double> noise(0, 1);
  for (double offset : {0.0, 1e9, -3e15}) {
    std::vector<double> a(5001);
    for (double& x : a) x = offset + noise(rng);
    SortValues(a);
    MeanStdev m = MeanAndStdev(a);
    EXPECT_EQ(m.mean, Average(a)) << offset;
    EXPECT_EQ(m.stdev, Stdev(a)) << offset;
  }
}

TEST(Statistics, RoundedTextIsRoundThenNumberText) {
  std::vector<double> xs{0, -0.0, 2.675, -2.675, 1.005, 0.5, -0.5, 9.995, 99999.999995, 4e-6, 5e-6, -5e-6, 1e-7,
                         123456789012345.6, 999999999999999.5, 1.5e16, 1e20, -1e100, 1e305, 1.7e308};
  std::mt19937_64 rng(9);
  std::uniform_real_distribution<double> exponent(-8, 18);
  for (int i = 0; i < 20000; ++i)
    xs.push_back(std::pow(10.0, exponent(rng)) * (rng() % 2 ? 1 : -1));
  for (double x : xs)
    for (int d = 0; d <= 5; ++d) {
      double tie = Round(x, d) + std::copysign(0.5 * std::pow(10.0, -d), x);
      for (double y : {x, tie, std::nextafter(tie, 0.0), std::nextafter(tie, 2 * tie)})
        for (char mark : {'.', ','})
          ASSERT_EQ(RoundedText(y, d, mark), NumberText(Round(y, d), mark)) << y << " d " << d;
    }
}

}  // namespace
}  // namespace qv
