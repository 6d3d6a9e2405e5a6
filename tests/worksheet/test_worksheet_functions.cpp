// Worksheet functions on arrays: the definitions, the ties and the error cases.
// The same functions are compared with the office's own in the office tests.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "worksheet_functions.h"

namespace qv {
namespace {

using V = std::vector<double>;

TEST(WorksheetFunctions, RoundHalvesAwayFromZeroOnTheDecimalValue) {
  struct Case { double x; int d; double r; } cases[] = {
      {2.675, 2, 2.68}, {-2.5, 0, -3},   {2.5, 0, 3},    {1.005, 2, 1.01},
      {0.285, 2, 0.29}, {-0.4, 0, 0},    {1234.5, -1, 1230}, {1250, -2, 1300},
      {0.1 + 0.2, 15, 0.3}, {5.55, 1, 5.6}, {-1e-9, 2, 0}};
  for (const Case& c : cases) {
    double got = Round(c.x, c.d);
    EXPECT_EQ(got, c.r) << c.x << " to " << c.d;
    EXPECT_FALSE(std::signbit(got) && got == 0) << "negative zero from " << c.x;
  }
}

// Kurt and Skew are held against the office's own in the office tests; here the hand
// values, the compensated sums and the counts each figure needs.
TEST(WorksheetFunctions, FiguresAndTheCountsTheyNeed) {
  V x{1, 2, 3, 4, 10}, tenths(31, 0.1);
  EXPECT_DOUBLE_EQ(*Average(x), 4.0);
  EXPECT_DOUBLE_EQ(*Stdev(x), std::sqrt(50.0 / 4.0));
  EXPECT_EQ(*Median(x), 3.0);
  EXPECT_EQ(*Median(V{4, 1, 3, 2}), 2.5);
  ASSERT_TRUE(Stdev(tenths).has_value());
  EXPECT_EQ(*Stdev(tenths), 0.0);  // compensated: a constant sample is exact
  EXPECT_EQ(*Average(tenths), 0.1);
  EXPECT_FALSE(Kurt(tenths) || Skew(tenths));  // s = 0: #DIV/0!
  EXPECT_FALSE(Kurt(V{1, 2, 3}).has_value());  // needs 4
  EXPECT_TRUE(Skew(V{1, 2, 4}).has_value());
  EXPECT_FALSE(Skew(V{1, 2}) || Stdev(V{1}) || Average(V{}));
}

// The range forms count numbers and dates; truth values, texts and errors are left out.
TEST(WorksheetFunctions, RangeFormsCountOnlyNumbersAndDates) {
  CellBlock r;
  r.resize(6, 1);
  r.setText(0, "Header");
  r.setNumber(1, 5);
  r.setNumber(2, 44000, CellKind::Date);
  r.setText(3, "12");
  r.setNumber(4, -2);
  r.setNumber(5, 532, CellKind::Error);
  EXPECT_EQ(Count(r), 3);
  EXPECT_EQ(CountA(r), 6);
  EXPECT_EQ(*Min(r), -2);
  EXPECT_EQ(*Max(r), 44000);
  EXPECT_EQ(CountIf(r, "5"), 1);
  EXPECT_EQ(CountIf(r, "header"), 1);
  EXPECT_EQ(CeilingOne(3.0000001), 4);
  EXPECT_EQ(CeilingOne(-0.5), 0);
  CellBlock t;
  t.resize(7, 1);
  t.setNumber(0, 1, CellKind::Logical);
  t.setNumber(1, -2);
  t.setNumber(2, 5);
  t.setNumber(3, 0, CellKind::Logical);
  t.setNumber(4, 9);
  t.setNumber(5, 3, CellKind::Date);
  t.setText(6, "7");
  const V counted{-2, 5, 9, 3};
  EXPECT_EQ(Count(t), 4);
  EXPECT_EQ(*Min(t), -2);
  EXPECT_EQ(*Max(t), 9);
  EXPECT_EQ(*Kurt(t), *Kurt(counted));
  EXPECT_EQ(*Skew(t), *Skew(counted));
  CellBlock truth;
  truth.resize(2, 1);
  truth.setNumber(0, 1, CellKind::Logical);
  truth.setNumber(1, 0, CellKind::Logical);
  EXPECT_EQ(Count(truth), 0);
  EXPECT_EQ(*Max(truth), 0);  // MAX of no number is 0
}

// Values near the largest double: a plain sum overflows, the figures do not. Each is the
// figure of the same values scaled down by 2^1000 (exact), scaled back; Kurt and Skew do
// not change with the scale. A figure that itself lies beyond the largest double has none.
TEST(WorksheetFunctions, HugeValuesHaveTheFiguresOfTheirScaledCopies) {
  const double big = std::numeric_limits<double>::max();
  for (V x : {V{1e308, -1e308, 0, 1}, V{1.7e308, 1.6e308, 1.5e308, 1.7e308, 1.0}, V{big, big, -big, 1e307, 5.0}}) {
    V small;
    for (double v : x) small.push_back(std::ldexp(v, -1000));
    EXPECT_NEAR(*Average(x), std::ldexp(*Average(small), 1000), 1e-15 * std::fabs(x[0])) << x[0];
    EXPECT_NEAR(*Stdev(x), std::ldexp(*Stdev(small), 1000), 1e-15 * std::fabs(x[0])) << x[0];
    EXPECT_NEAR(*Kurt(x), *Kurt(small), 1e-13) << x[0];
    EXPECT_NEAR(*Skew(x), *Skew(small), 1e-13) << x[0];
  }
  EXPECT_EQ(*Average(V{big, big}), big);
  EXPECT_EQ(*Median(V{big, big}), big);
  EXPECT_EQ(*MedianSorted(V{-big, big}), 0);
  EXPECT_FALSE(Stdev(V{big, -big}).has_value());  // sqrt(2) times the largest
}

}  // namespace
}  // namespace qv
