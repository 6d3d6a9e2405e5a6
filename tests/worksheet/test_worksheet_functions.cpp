// Worksheet functions on arrays: the definitions, the ties and the error cases.
// The same functions are compared with the office's own in the office tests.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "worksheet_functions.h"

namespace qv {
namespace {

TEST(WorksheetFunctions, RoundHalvesAwayFromZeroOnTheDecimalValue) {
  struct Case {
    double x;
    int d;
    double r;
  } cases[] = {
      {2.675, 2, 2.68}, {-2.5, 0, -3},   {2.5, 0, 3},    {1.005, 2, 1.01},
      {0.285, 2, 0.29}, {-0.4, 0, 0},    {1234.5, -1, 1230}, {1250, -2, 1300},
      {0.1 + 0.2, 15, 0.3}, {5.55, 1, 5.6}, {-1e-9, 2, 0},
  };
  for (const Case& c : cases) {
    double got = Round(c.x, c.d);
    EXPECT_EQ(got, c.r) << c.x << " to " << c.d;
    EXPECT_FALSE(std::signbit(got) && got == 0) << "negative zero from " << c.x;
  }
}

TEST(WorksheetFunctions, CompensatedSumsMakeAConstantSampleExact) {
  std::vector<double> tenths(31, 0.1);
  ASSERT_TRUE(Stdev(tenths).has_value());
  EXPECT_EQ(*Stdev(tenths), 0.0);
  EXPECT_EQ(*Average(tenths), 0.1);
  EXPECT_FALSE(Kurt(tenths).has_value());  // s = 0: #DIV/0!
  EXPECT_FALSE(Skew(tenths).has_value());
}

TEST(WorksheetFunctions, MomentsMatchTheirDefinitions) {
  // Reference values worked out by hand from the textbook formulas.
  std::vector<double> x = {1, 2, 3, 4, 10};
  EXPECT_DOUBLE_EQ(*Average(x), 4.0);
  EXPECT_DOUBLE_EQ(*Stdev(x), std::sqrt(50.0 / 4.0));
  // skew: n/((n-1)(n-2)) Σz³ with s² = 12.5
  double s = std::sqrt(12.5), z3 = 0, z4 = 0;
  for (double v : x) {
    z3 += std::pow((v - 4) / s, 3);
    z4 += std::pow((v - 4) / s, 4);
  }
  EXPECT_NEAR(*Skew(x), 5.0 / 12.0 * z3, 1e-14);
  EXPECT_NEAR(*Kurt(x), 30.0 / 24.0 * z4 - 3.0 * 16 / 6, 1e-14);
  EXPECT_EQ(*Median(x), 3.0);
  EXPECT_EQ(*Median(std::vector<double>{4, 1, 3, 2}), 2.5);
  EXPECT_FALSE(Kurt(std::vector<double>{1, 2, 3}).has_value());  // needs 4
  EXPECT_TRUE(Skew(std::vector<double>{1, 2, 4}).has_value());
  EXPECT_FALSE(Skew(std::vector<double>{1, 2}).has_value());
  EXPECT_FALSE(Stdev(std::vector<double>{1}).has_value());
  EXPECT_FALSE(Average(std::vector<double>{}).has_value());
}

TEST(WorksheetFunctions, RangeFormsCountOnlyNumericCells) {
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
}

// Values near the largest double: a plain sum overflows, the figures do not. Each is the
// figure of the same values scaled down by 2^1000 (exact), scaled back; Kurt and Skew do
// not change with the scale. A figure that itself lies beyond the largest double has none.
TEST(WorksheetFunctions, HugeValuesHaveTheFiguresOfTheirScaledCopies) {
  const double big = std::numeric_limits<double>::max();
  for (std::vector<double> x : {std::vector<double>{1e308, -1e308, 0, 1},
                                std::vector<double>{1.7e308, 1.6e308, 1.5e308, 1.7e308, 1.0},
                                std::vector<double>{big, big, -big, 1e307, 5.0}}) {
    std::vector<double> small;
    for (double v : x) small.push_back(std::ldexp(v, -1000));
    EXPECT_NEAR(*Average(x), std::ldexp(*Average(small), 1000), 1e-15 * std::fabs(x[0])) << x[0];
    EXPECT_NEAR(*Stdev(x), std::ldexp(*Stdev(small), 1000), 1e-15 * std::fabs(x[0])) << x[0];
    EXPECT_NEAR(*Kurt(x), *Kurt(small), 1e-13) << x[0];
    EXPECT_NEAR(*Skew(x), *Skew(small), 1e-13) << x[0];
  }
  EXPECT_EQ(*Average(std::vector<double>{big, big}), big);
  EXPECT_EQ(*Median(std::vector<double>{big, big}), big);
  EXPECT_EQ(*MedianSorted(std::vector<double>{-big, big}), 0);
  EXPECT_FALSE(Stdev(std::vector<double>{big, -big}).has_value());  // sqrt(2) times the largest
}

// The range forms count numbers and dates; truth values and texts are left out.
TEST(WorksheetFunctions, RangeFormsSkipTruthValues) {
  CellBlock r;
  r.resize(7, 1);
  r.setNumber(0, 1, CellKind::Logical);
  r.setNumber(1, -2);
  r.setNumber(2, 5);
  r.setNumber(3, 0, CellKind::Logical);
  r.setNumber(4, 9);
  r.setNumber(5, 3, CellKind::Date);
  r.setText(6, "7");
  const std::vector<double> counted{-2, 5, 9, 3};
  EXPECT_EQ(Count(r), 4);
  EXPECT_EQ(*Min(r), -2);
  EXPECT_EQ(*Max(r), 9);
  EXPECT_EQ(*Kurt(r), *Kurt(counted));
  EXPECT_EQ(*Skew(r), *Skew(counted));
  CellBlock onlyTruth;
  onlyTruth.resize(2, 1);
  onlyTruth.setNumber(0, 1, CellKind::Logical);
  onlyTruth.setNumber(1, 0, CellKind::Logical);
  EXPECT_EQ(Count(onlyTruth), 0);
  EXPECT_EQ(*Max(onlyTruth), 0);  // MAX of no number is 0
}

}  // namespace
}  // namespace qv
