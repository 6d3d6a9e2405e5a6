// The spreadsheet's worksheet functions, computed in-process with the spreadsheet's own
// definitions: a round trip to the office per statistic is far too slow for a histogram
// that follows every move. An array form counts every entry; a range form (over a
// CellBlock) counts only its numeric cells, as the spreadsheet does.
#pragma once

#include <cmath>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "cell_block.h"

namespace qv {

// ROUND: halves away from zero on the decimal value the spreadsheet shows (15
// significant digits), so Round(2.675, 2) is 2.68, not the binary 2.67.
double Round(double x, int digits);
// CEILING(x, 1): the smallest whole number not below x.
double CeilingOne(double x);
// LN; nullopt for x <= 0 (#NUM!).
std::optional<double> Ln(double x);

// Sums are compensated (Neumaier), as the spreadsheet adds.
class NeumaierSum {
 public:
  void add(double v) {
    double t = sum_ + v;
    if (std::abs(sum_) >= std::abs(v))
      comp_ += (sum_ - t) + v;
    else
      comp_ += (v - t) + sum_;
    sum_ = t;
  }
  double value() const { return sum_ + comp_; }

 private:
  double sum_ = 0.0;
  double comp_ = 0.0;
};

// Array forms: every entry counts. nullopt is the spreadsheet's error value, also for a
// result beyond the largest double. Sums that would overflow on values near the largest
// double are taken on the values scaled by a power of two, so Average, Stdev, Kurt and
// Skew of {1e308, -1e308, 0, 1} have values.
double Sum(std::span<const double> x);
std::optional<double> Average(std::span<const double> x);
std::optional<double> Stdev(std::span<const double> x);
std::optional<double> Min(std::span<const double> x);
std::optional<double> Max(std::span<const double> x);
std::optional<double> Median(std::span<const double> x);
std::optional<double> MedianSorted(std::span<const double> sorted);
std::optional<double> Kurt(std::span<const double> x);
std::optional<double> Skew(std::span<const double> x);
// (a + b) / 2, halved first where the sum would overflow.
double MidPoint(double a, double b);

// Range forms over a block of cells: numbers and dates (as serials) count, truth values
// and texts do not, as the original host's worksheet functions count.
std::int64_t Count(const CellBlock& r);
std::int64_t CountA(const CellBlock& r);  // non-empty cells, errors included
std::optional<double> Min(const CellBlock& r);
std::optional<double> Max(const CellBlock& r);
std::optional<double> Kurt(const CellBlock& r);
std::optional<double> Skew(const CellBlock& r);
// COUNTIF(range, criterion) with a plain criterion (no operator): a criterion that
// reads as a number matches the number cells shown as that number (15 significant
// digits), and any criterion matches the text cells equal to it, ignoring case.
std::int64_t CountIf(const CellBlock& r, std::string_view criterion);
// The text part of COUNTIF: text cells equal to the criterion, ignoring case.
std::int64_t CountTextIf(const CellBlock& r, std::string_view criterion);

// CORREL: Pearson's product-moment correlation of two arrays of equal length, in two
// compensated passes; nullopt (#DIV/0!) when the lengths differ, the arrays are empty
// or either has no spread.
std::optional<double> Correl(std::span<const double> x, std::span<const double> y);
// WEIBULL(x; alpha; beta; cumulative): 1 - exp(-(x/beta)^alpha), or its density
// alpha/beta^alpha x^(alpha-1) exp(-(x/beta)^alpha); nullopt (#NUM!) for x < 0,
// alpha <= 0 or beta <= 0.
std::optional<double> Weibull(double x, double alpha, double beta, bool cumulative);
// EXPONDIST(x; lambda; cumulative): 1 - exp(-lambda x), or lambda exp(-lambda x);
// nullopt for x < 0 or lambda <= 0.
std::optional<double> ExponDist(double x, double lambda, bool cumulative);
// NORMDIST(x; mean; sd; cumulative): the normal distribution function, or the density
// exp(-(x-mean)^2 / (2 sd^2)) / (sd sqrt(2 pi)); nullopt for sd <= 0.
std::optional<double> NormDist(double x, double mean, double sd, bool cumulative);

}  // namespace qv
