// The data behind the distribution window's plots: GenerateArrays fits the chosen
// distribution and works out, for every sorted value, its observed and expected
// percentile and their difference, for the Normal the expected normal values of the Q-Q
// plot, and the correlation shown as "r=". Everything here is linear in the sample
// after one sort.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cell_block.h"
#include "estimators.h"

namespace qv {

// Element i of each array belongs to SortedValues[i].
struct PlotArrays {
  std::vector<double> SortedValues;          // the sample, ascending
  std::vector<double> ObservedPercentiles;   // (mid-rank + 1) * 100 / N: above 100 at the top
  std::vector<double> ExpectedPercentiles;   // 100 * fitted cdf, 0 to 100
  std::vector<double> DetrendedDifferences;  // observed - expected
  std::vector<double> ExpectedValues;        // Normal only (else empty): Q-Q expected values
};

// One run of GenerateArrays. A refused run carries only its notice: the window shows
// it, keeps the caption and r it had, and draws nothing from earlier arrays.
struct FitRun {
  Distribution distribution = Distribution::Normal;
  bool refused = false;
  std::string notice;                 // message box text of a refusal
  FitParameters fit;
  PlotArrays arrays;
  std::optional<std::string> caption; // Text1; nullopt: hidden
  double r = 0;                       // Correl(observed, expected)
  std::string correl;                 // "r=" & Round(r, 3)
};

// AverageRanks: the observed percentile of each value, (mid-rank + 1) * 100 / count,
// ties sharing the mean of their ranks. Values in any order; an ascending array is
// ranked in one pass, any other is sorted once.
std::vector<double> AverageRanks(std::span<const double> values);

// GenerateArrays for distribution d over the sample (any order). shownMean and
// shownStdev are the mean and deviation as the main window shows them (the numbers
// of TextBox2 and TextBox3): the Q-Q expected values follow the rounded figures, the
// P-P figures the unrounded ones.
FitRun GenerateArrays(Distribution d, std::span<const double> sample, double shownMean,
                      double shownStdev, char decimalMark = '.');

// The P-P diagonal: N points i * 100 / N, from 0 to 100 (N - 1) / N.
std::vector<double> PPDiagonal(std::size_t n);

// The Q-Q horizontal bounds from the minimum and maximum as shown (TextBox4, TextBox8):
// v - 0.03 v and w + 0.03 w, with no absolute value taken.
struct AxisBounds {
  double low = 0, high = 0;
};
AxisBounds QQBounds(double shownMinimum, double shownMaximum);

// The plot-data sheet's cells A1:C(N+1): a header row, then the sorted value, observed
// and expected percentile of each row, as plain numbers.
inline constexpr const char* kPlotDataHeaders[3] = {"Actual value", "Observed percentile",
                                                    "Expected percentile"};
CellBlock PlotDataBlock(const PlotArrays& arrays);
// "PP-PlotData" & k.
std::string PlotDataSheetName(int k);

}  // namespace qv
