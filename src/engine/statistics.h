// The thirteen statistics boxes of the main window, the truncation marks and the
// interval slider's maximum, as one pure refresh over the sorted sample.
//
// What: RefreshForm_TruncatedValues, steps 2 to 15: n, missing cells, mean, standard
// deviation, range, minimum, quartiles, median, maximum, coefficient of variation,
// and the range's kurtosis and skewness; each number rounded to d decimals and shown
// as its shortest text.
// Algorithm: the sample arrives sorted, so minimum, maximum, median and quartiles are
// read by position; mean and deviation take two compensated (Neumaier) passes in the
// order of the sorted values, exactly as qv::Average and qv::Stdev add them.
// Quartiles follow the window's own rule Q(p): f = (p/100)n - Int((p/100)n),
// j = Int(n p / 100); f > 0 gives a(j+1), f = 0 the mean of a(j) and a(j+1).
// Kurtosis and skewness describe the whole range (every numeric cell), so they are
// worked out once per read of the cells, with the range's Min and Max.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "cell_block.h"

namespace qv {

// What the refresh needs of the range itself; none of it changes with truncation or
// with the ticks of the discrete list.
struct RangeFacts {
  std::int64_t cellCount = 0;  // InputRange.Count: every cell of the range
  double min = 0.0;            // Min(InputRange), 0 when the range holds no number
  double max = 0.0;            // Max(InputRange)
  std::optional<double> kurt;  // Kurt(InputRange); empty: the spreadsheet's error value
  std::optional<double> skew;  // Skew(InputRange)
};

RangeFacts ReadRangeFacts(const CellBlock& cells);

// Shown in krt and skw when Kurt or Skew has no value.
inline constexpr const char* kNoValueText = "#DIV/0!";
// Shown in a box whose number lies beyond the largest double (the range of
// {1e308, -1e308}), as the spreadsheet shows such a result.
inline constexpr const char* kOverflowText = "#NUM!";

// The texts of the boxes, named after them. An empty optional is "no change": the box
// keeps the text it had (an empty sample changes nothing). A number beyond the largest
// double shows kOverflowText; no box ever shows NaN or infinity.
struct StatisticsBoxes {
  std::optional<std::string> TextBox1;  // n
  std::optional<std::string> Miss;      // cells of the range minus n
  std::optional<std::string> TextBox2;  // mean
  std::optional<std::string> TextBox3;  // standard deviation; "" when n < 2
  std::optional<std::string> Range;     // max - min
  std::optional<std::string> TextBox4;  // minimum
  std::optional<std::string> TextBox5;  // Q25
  std::optional<std::string> TextBox6;  // median
  std::optional<std::string> TextBox7;  // Q75
  std::optional<std::string> TextBox8;  // maximum
  std::optional<std::string> CV;        // "57%"
  std::optional<std::string> krt;       // range kurtosis, or "#DIV/0!"
  std::optional<std::string> skw;       // range skewness, or "#DIV/0!"

  bool markMin = false;  // Label8 becomes "*Min": the sample lost the range's minimum
  bool markMax = false;  // Label12 becomes "*Max"
  // New maximum of SSliderInterval (its value is this / 5); empty for an empty sample
  // and for a span beyond the largest double.
  std::optional<double> intervalMaximum;
};

// sorted: the sample in ascending order; decimals: DecimalCombo's 0 to 5.
StatisticsBoxes RefreshStatistics(std::span<const double> sorted, const RangeFacts& range,
                                  int decimals, char decimalMark = '.');

// Mean and sample standard deviation in two compensated passes over the values in
// their order: the same sums as qv::Average and qv::Stdev, so the same doubles.
struct MeanStdev {
  std::optional<double> mean;   // empty for no values
  std::optional<double> stdev;  // empty for fewer than 2
};
MeanStdev MeanAndStdev(std::span<const double> values);

// The quartile rule Q(p) for p = 25 or 75 on a sorted, non-empty sample, unrounded.
double Quartile(std::span<const double> sorted, int p);

}  // namespace qv
