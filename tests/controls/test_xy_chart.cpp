// XYChart: curves by key, their data in one call with non-numbers left out, and the
// scales the windows set.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

#include "xy_chart.h"

namespace qv {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

ChartCurve Make(const char* key, double min, double max) {
  ChartCurve c;
  std::tie(c.Key, c.Min, c.Max) = std::tuple(QString::fromLatin1(key), min, max);
  return c;
}

TEST(XYChart, CurveData) {
  struct Case {
    const char* name; std::vector<double> x, y; std::size_t n; std::vector<double> keptX, keptY;
  };
  const Case cases[] = {
      {"all points", {1, 2, 3}, {4, 5, 6}, 3, {1, 2, 3}, {4, 5, 6}},
      {"first n only", {1, 2, 3}, {4, 5, 6}, 2, {1, 2}, {4, 5}},
      {"n beyond the arrays", {1, 2}, {4, 5, 6}, 9, {1, 2}, {4, 5}},
      {"non-numbers left out", {1, kNaN, 3, 4}, {4, 5, kInf, 7}, 4, {1, 4}, {4, 7}},
      {"unsorted keys come out sorted", {3, 1, 2}, {30, 10, 20}, 3, {1, 2, 3}, {10, 20, 30}},
      {"none", {}, {}, 0, {}, {}},
  };
  for (const Case& c : cases) {
    XYChart chart;
    chart.addCurve(Make("Main", 0, 100));
    ASSERT_TRUE(chart.setCurveData("Main", c.n, c.x, c.y)) << c.name;
    ASSERT_EQ(chart.pointCount("Main"), c.keptX.size()) << c.name;
    for (std::size_t i = 0; i < c.keptX.size(); ++i)
      EXPECT_TRUE(chart.pointX("Main", i) == c.keptX[i] && chart.pointY("Main", i) == c.keptY[i])
          << c.name << " " << i;
  }
}

TEST(XYChart, CurvesByKeyAndScales) {
  XYChart chart;
  const std::vector<double> x = {0, 50}, y = {0, 50};
  EXPECT_FALSE(chart.setCurveData("Main", 2, x, y));  // no such curve yet
  chart.setXBounds(0, 1);
  chart.addCurve(Make("Main", 0, 100));
  chart.setXBounds(0, 100);
  chart.addCurve(Make("Line", -20, 20));
  EXPECT_EQ(chart.curveCount(), 2);
  EXPECT_TRUE(chart.xLow() == 0 && chart.xHigh() == 100);
  EXPECT_TRUE(chart.yLow() == -20 && chart.yHigh() == 20) << "the last curve added sets the vertical scale";
  // A second curve of a key replaces the first.
  ChartCurve again = Make("Line", 0, 100);
  again.Color = 0x0000FF;
  chart.addCurve(again);
  EXPECT_EQ(chart.curveCount(), 2);
  EXPECT_EQ(chart.curve("Line").Color, 0x0000FFu);
  // Bounds that are not numbers change nothing; reversed bounds are put in order.
  chart.setXBounds(std::numeric_limits<float>::quiet_NaN(), 5);
  EXPECT_EQ(chart.xHigh(), 100);
  chart.setXBounds(10.3f, -9.7f);
  EXPECT_FLOAT_EQ(chart.xLow(), -9.7f);
  EXPECT_FLOAT_EQ(chart.xHigh(), 10.3f);
  chart.removeAllCurves();
  EXPECT_EQ(chart.curveCount(), 0);
  EXPECT_FALSE(chart.hasCurve("Main"));
}

}  // namespace
}  // namespace qv
