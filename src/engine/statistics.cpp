#include "statistics.h"

#include <cmath>

#include "number_text.h"
#include "rounded_text.h"
#include "worksheet_functions.h"

namespace qv {

RangeFacts ReadRangeFacts(const CellBlock& cells) {
  RangeFacts f;
  f.cellCount = cells.size();
  f.min = Min(cells).value_or(0.0);
  f.max = Max(cells).value_or(0.0);
  f.kurt = Kurt(cells);
  f.skew = Skew(cells);
  return f;
}

MeanStdev MeanAndStdev(std::span<const double> a) {
  MeanStdev m;
  if (a.empty()) return m;
  const double n = static_cast<double>(a.size());
  NeumaierSum sum;
  for (double v : a) sum.add(v);
  const double mean = sum.value() / n;
  m.mean = mean;
  if (a.size() >= 2) {
    NeumaierSum squares;
    for (double v : a) {
      double dev = v - mean;
      squares.add(dev * dev);
    }
    m.stdev = std::sqrt(squares.value() / (n - 1));
  }
  // Values near the largest double overflow the plain sums: the worksheet functions
  // take them again on scaled values (and give no value where the result overflows).
  if (!std::isfinite(mean) || (m.stdev && !std::isfinite(*m.stdev))) {
    m.mean = Average(a);
    m.stdev = a.size() >= 2 ? Stdev(a) : std::nullopt;
  }
  return m;
}

double Quartile(std::span<const double> a, int p) {
  const double n = static_cast<double>(a.size());
  const double share = p / 100.0;  // the double 0.25 or 0.75
  const double f = share * n - std::floor(share * n);
  const auto j = static_cast<std::size_t>(std::floor(n * p / 100));
  // a(j) is a[j - 1]: f > 0 takes a(j + 1), f = 0 the mean of a(j) and a(j + 1).
  if (f > 0) return a[j];
  return MidPoint(a[j - 1], a[j]);
}

StatisticsBoxes RefreshStatistics(std::span<const double> a, const RangeFacts& range, int d,
                                  char mark) {
  StatisticsBoxes box;
  const std::size_t count = a.size();
  if (count == 0) return box;  // every box keeps its text
  const double n = static_cast<double>(count);

  // A number beyond the largest double shows the spreadsheet's error text.
  auto shown = [&](double v) -> std::optional<std::string> {
    if (!std::isfinite(v)) return std::string(kOverflowText);
    return RoundedText(v, d, mark);
  };
  auto shownOr = [&](const std::optional<double>& v) -> std::optional<std::string> {
    return v ? shown(*v) : std::string(kOverflowText);
  };

  box.TextBox1 = NumberText(n, mark);
  box.Miss = NumberText(static_cast<double>(range.cellCount) - n, mark);

  const MeanStdev moments = MeanAndStdev(a);
  const std::optional<double> mean = moments.mean;
  const std::optional<double> sd = moments.stdev;
  box.TextBox2 = shownOr(mean);
  // Fewer than 2 values leave the deviation empty; a deviation that overflows is an error.
  box.TextBox3 = count < 2 ? std::string() : shownOr(sd);

  const double min = a.front(), max = a.back();
  box.TextBox4 = shown(min);
  box.TextBox5 = shown(Quartile(a, 25));
  box.TextBox6 = shown(*MedianSorted(a));
  box.TextBox7 = shown(Quartile(a, 75));
  box.TextBox8 = shown(max);
  box.krt = range.kurt ? shown(*range.kurt) : std::string(kNoValueText);
  box.skw = range.skew ? shown(*range.skew) : std::string(kNoValueText);
  box.Range = shown(max - min);

  // The ratio is rounded before the multiplication: with d = 2 a whole percent.
  if (sd && mean && *mean != 0.0) {
    double ratio = *sd / *mean;
    double percent = std::isfinite(ratio) ? 100 * Round(ratio, d) : ratio;
    box.CV = std::isfinite(percent) ? NumberText(percent, mark) + "%" : std::string(kOverflowText);
  } else if (count >= 2 && !sd) {
    box.CV = std::string(kOverflowText);
  }

  box.markMin = min > range.min;
  box.markMax = max < range.max;
  // A span beyond the largest double leaves the width slider as it was: bins by width
  // are refused on such a sample.
  if (std::isfinite(max - min)) box.intervalMaximum = max - min;
  return box;
}

}  // namespace qv
