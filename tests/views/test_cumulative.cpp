// The cumulative window's figures: PercentRank counts equal values half, the curve
// repeats ties or keeps one point per run, and the read-out texts round as TEXT does.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "cumulative.h"

namespace qv {
namespace {

TEST(Cumulative, CurvePoints) {
  struct Case {
    const char* name;
    std::vector<double> sorted;
    bool distinctOnly;
    std::vector<double> x, y;
  };
  const Case cases[] = {
      // Worked by hand from (ties * 0.5 + below) / n.
      {"ties", {1, 2, 2, 4}, false, {1, 2, 2, 4}, {12.5, 50, 50, 87.5}},
      {"ties, one per run", {1, 2, 2, 4}, true, {1, 2, 4}, {12.5, 50, 87.5}},
      {"distinct: 50/n to 100 - 50/n", {3, 5, 8, 13, 21}, false, {3, 5, 8, 13, 21}, {10, 30, 50, 70, 90}},
      {"all equal: 50 percent n times", {7, 7, 7}, false, {7, 7, 7}, {50, 50, 50}},
      {"all equal, one per run", {7, 7, 7}, true, {7}, {50}},
      {"one value", {-2}, false, {-2}, {50}},
      {"empty", {}, false, {}, {}},
  };
  for (const Case& c : cases) {
    CumulativeCurve curve = CumulativePoints(c.sorted, c.distinctOnly);
    EXPECT_EQ(curve.CumulativeValues, c.x) << c.name;
    ASSERT_EQ(curve.CumulativePercents.size(), c.y.size()) << c.name;
    for (std::size_t i = 0; i < c.y.size(); ++i) EXPECT_DOUBLE_EQ(curve.CumulativePercents[i], c.y[i]) << c.name << " " << i;
  }
}

TEST(Cumulative, PercentRankBetweenAndOutside) {
  const std::vector<double> s = {1, 2, 2, 4};
  struct Case {
    double v, expected;
  };
  // A value between sample values counts those below it whole: 3 has 3 below of 4.
  for (Case c : {Case{0, 0}, Case{1, 0.125}, Case{1.5, 0.25}, Case{2, 0.5}, Case{3, 0.75}, Case{4, 0.875}, Case{9, 1}})
    EXPECT_DOUBLE_EQ(PercentRank(s, c.v), c.expected) << c.v;
  EXPECT_EQ(PercentRank({}, 1), 0);
}

TEST(Cumulative, ScaleAndReadOut) {
  struct Scale {
    std::vector<double> sorted;
    float low, high;
  };
  for (const Scale& c : {Scale{{0.004, 3.14159}, 0.0f, 3.14f}, Scale{{-2.675, 2.675}, -2.68f, 2.68f},
                         Scale{{1e39, 2e39}, std::numeric_limits<float>::max(), std::numeric_limits<float>::max()}}) {
    CumulativeBounds b = CumulativeScale(c.sorted);
    EXPECT_EQ(b.low, c.low) << c.sorted.front();
    EXPECT_EQ(b.high, c.high) << c.sorted.back();
  }
  struct Text {
    float value;
    const char* y;
    const char* x;
  };
  for (const Text& t : {Text{50, "F(x)=50.0%", "x=50.0000"}, Text{2.5f, "F(x)=2.5%", "x=2.5000"},
                        Text{12.5f, "F(x)=12.5%", "x=12.5000"}, Text{0.1f, "F(x)=0.1%", "x=0.1000"},
                        Text{-0.00004f, "F(x)=0.0%", "x=0.0000"}}) {
    EXPECT_EQ(CumulativeYText(t.value), t.y);
    EXPECT_EQ(CumulativeXText(t.value), t.x);
  }
  EXPECT_EQ(CumulativeXText(2.5f, ','), "x=2,5000");
}

}  // namespace
}  // namespace qv
