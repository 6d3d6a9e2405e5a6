// The empirical distribution function of the cumulative window. The sample is sorted, so
// both counts of PercentRank come from binary searches, and the curve from one pass
// over the runs of equal values.
#include "cumulative.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

#include "number_text.h"

namespace qv {

namespace {

inline double HalfTies(std::size_t below, std::size_t ties, std::size_t n) {
  return (static_cast<double>(ties) * 0.5 + static_cast<double>(below)) / static_cast<double>(n);
}

// A format's text read back in single precision, beyond its range the largest float.
// from_chars, not strtof: the program runs under the user's locale.
float Single(const std::string& text) {
  float f = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), f).ec == std::errc::result_out_of_range)
    f = text.starts_with('-') ? -std::numeric_limits<float>::max() : std::numeric_limits<float>::max();
  return f;
}

}  // namespace

double PercentRank(std::span<const double> sorted, double v) {
  if (sorted.empty()) return 0;
  auto [first, last] = std::equal_range(sorted.begin(), sorted.end(), v);
  return HalfTies(static_cast<std::size_t>(first - sorted.begin()),
                  static_cast<std::size_t>(last - first), sorted.size());
}

CumulativeCurve CumulativePoints(std::span<const double> sorted, bool distinctOnly) {
  CumulativeCurve c;
  const std::size_t n = sorted.size();
  c.CumulativeValues.reserve(distinctOnly ? 0 : n);
  c.CumulativePercents.reserve(distinctOnly ? 0 : n);
  for (std::size_t i = 0; i < n;) {
    std::size_t j = i + 1;
    while (j < n && sorted[j] == sorted[i]) ++j;
    const double percent = HalfTies(i, j - i, n) * 100;
    const std::size_t copies = distinctOnly ? 1 : j - i;
    c.CumulativeValues.insert(c.CumulativeValues.end(), copies, sorted[i]);
    c.CumulativePercents.insert(c.CumulativePercents.end(), copies, percent);
    i = j;
  }
  return c;
}

CumulativeBounds CumulativeScale(std::span<const double> sorted) {
  if (sorted.empty()) return {};
  return {Single(FormatFixed(sorted.front(), 2)), Single(FormatFixed(sorted.back(), 2))};
}

std::string CumulativeYText(float y, char decimalMark) {
  return "F(x)=" + FormatPercent(static_cast<double>(y) / 100, 1, decimalMark);
}

std::string CumulativeXText(float x, char decimalMark) {
  return "x=" + FormatFixed(static_cast<double>(x), 4, decimalMark);
}

}  // namespace qv
