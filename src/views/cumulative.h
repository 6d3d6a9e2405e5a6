// The cumulative distribution window's figures: the empirical distribution function of
// the sample, in which equal values count half, and the read-out of the dragged line.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace qv {

// PercentRank(v) over an ascending sample: (ties * 0.5 + below) / n, below the count of
// values under v and ties the count equal to it; 0 for an empty sample. Not the
// worksheet function of that name: distinct values give (i - 0.5) / n.
double PercentRank(std::span<const double> sorted, double v);

// The curve's points: every value with 100 * PercentRank of it, ties repeated. With
// distinctOnly each run of equal values gives one point, the same picture in fewer
// points. Linear in the sample.
struct CumulativeCurve {
  std::vector<double> CumulativeValues;
  std::vector<double> CumulativePercents;
};
CumulativeCurve CumulativePoints(std::span<const double> sorted, bool distinctOnly);

// Above this many values the window hands the chart one point per distinct value.
inline constexpr std::size_t kCumulativeAllPoints = 32767;

// The horizontal scale: the sample's minimum and maximum as "0.00", read back in single
// precision. A minimum of 0.004 gives 0.
struct CumulativeBounds {
  float low = 0, high = 0;
};
CumulativeBounds CumulativeScale(std::span<const double> sorted);

// The read-out boxes at a position of the line: "F(x)=" & Format(y / 100, "0.0%") and
// "x=" & Format(x, "0.0000"), x and y in single precision as the plot reports them.
std::string CumulativeYText(float y, char decimalMark = '.');
std::string CumulativeXText(float x, char decimalMark = '.');

}  // namespace qv
