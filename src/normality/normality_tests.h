// The four normality tests of the NormalityTests window as pure functions over the
// sample: each returns what its run puts on display (box texts, picture, notice) beside
// the figures behind them. The window only applies a result to its controls.
//
// Samples arrive ascending, as SampleValues holds them. Shapiro-Wilk and Anderson-Darling
// sort a copy if they find the order broken; Lilliefors does not and relies on it.
// Every test runs on any sample size; all work is linear in n apart from such a sort.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace qv {

// Notices of the tests, to the letter.
inline constexpr const char* kJBTooFewText = "***Too few values for a dependable Jarque-Bera test***";
inline constexpr const char* kZeroDeviationNotice = "Standard deviation=0: the test will not run";
inline constexpr const char* kTooFewObservationsNotice = "Too few observations: the test will not run";
inline constexpr const char* kSampleSizeNotice = "The sample size must be at least 4";
// Values whose mean, deviation or statistic no double (or, for Anderson-Darling, no
// 32-bit figure) can hold.
inline constexpr const char* kTooLargeNotice = "The values are too large for this test: the test will not run";

// The window's two pictures: normality stands (YesBell) or is rejected (NoBell).
enum class Bell { Yes, No };

// What one run writes into the window. A refused run shows its notice, then NoBell, and
// leaves the three boxes as they were; a notice on a run that is not refused is shown
// before the boxes are written (Lilliefors with fewer than 4 values).
struct TestDisplay {
  bool refused = false;
  std::string notice;             // message box text; empty for none
  std::string testStat;           // TestStat
  std::string criticalBox;        // CriticalBox
  std::string pval;               // Pval
  std::optional<Bell> bell;       // nullopt: the pictures stay as they were
};

// The verdict of a p value: rejected when p is at or below the level.
Bell BellForP(double p, double level);

// ---- Jarque-Bera -------------------------------------------------------------------

// JBStatArray: n((S3/n)^2/6 + (S4/n - 3)^2/24) over sample-deviation z-scores; nullopt
// stands for the refusal text (fewer than 31 values). With a deviation of 0 every z
// fails and is passed over, leaving 3n/8; JarqueBera refuses that sample anyway. NaN
// when the mean or the deviation is past the largest double.
std::optional<double> JBStatArray(std::span<const double> sample);
// JBpValueArray: ChiDist(JB, 2) = exp(-JB/2) as the text "0.0000"; nullopt for a refusal.
std::optional<std::string> JBpValueArray(std::optional<double> statistic, char decimalMark = '.');
// ChiInv(level, 2) = -2 ln(level) rounded to 2 decimals, halves to the even digit; 0
// where ChiInv fails (level 0, or outside (0, 1]).
double JBCriticalValue(double level);

struct JarqueBeraResult : TestDisplay {
  std::optional<double> statistic;   // nullopt: refused for too few values
  std::optional<double> p;           // the four-decimal p value the run holds
  double critical = 0.0;             // JBCriticalValue(level)
  std::optional<std::string> jbFew;  // JBFew shown with this text; nullopt: hidden
};

// rangeCount is Count(InputRange): the numbers of the whole selected range, before
// truncation. 30 or fewer turn the three boxes to "NA".
JarqueBeraResult JarqueBera(std::span<const double> sample, std::int64_t rangeCount, double level,
                            char decimalMark = '.');

// ---- Anderson-Darling --------------------------------------------------------------

// The published four-piece p value for estimated mean and variance, taken on the
// adjusted statistic A*; 0 from A* = 13 on. Thresholds and result in 32 bits.
float AndersonDarlingPValue(float aStar);

struct AndersonDarlingResult : TestDisplay {
  float n = 0, mean = 0, sd = 0;  // as the test holds them
  float a = 0;                    // A squared, on display
  float aStar = 0;                // A * (1 + 0.75/n + 2.25/n^2), what p rests on
  float p = 0;
  std::int64_t skippedTerms = 0;  // terms left out because F or 1 - F is 0 in 32 bits
};

// Always at the 5% level.
AndersonDarlingResult AndersonDarling(std::span<const double> sample, char decimalMark = '.');

// ---- Lilliefors --------------------------------------------------------------------

// The 5% critical value: the table for n = 4 to 30, 0.886/sqrt(n) above; 0 below 4.
double LfCritical(std::int64_t n);

// The empirical distribution E(i) = (i+1)/n with the window's rule for tied values:
// in a run of equal values at s..e, E(s)..E(e-2) take E(e-1); a run at the end stays.
std::vector<double> LillieforsSteps(std::span<const double> ascending);

// Rejected when D is at or above the critical value.
Bell LillieforsBell(double d, double critical);

struct LillieforsResult : TestDisplay {
  double d = 0.0;
  double critical = 0.0;
};

// Needs the sample ascending.
LillieforsResult Lilliefors(std::span<const double> ascending, char decimalMark = '.');

// ---- Shapiro-Wilk ------------------------------------------------------------------

// Sum of c[i] x^i, i from 0: the polynomial with its coefficients in rising powers.
double EvaluatePolynomial(std::span<const double> c, double x);

struct ShapiroWilkCoreResult {
  double critical = 0.0;  // |InverseNormal(1 - alpha)|, on the scale of the transformed W
  double p = 0.0;         // rounded to five decimals
  double w = 0.0;         // rounded to four decimals
  double rawW = 0.0;      // before rounding
  double rawP = 0.0;
};

// Algorithm AS R94 without censoring, for n >= 4 values with a range above 0.
ShapiroWilkCoreResult ShapiroWilkCore(std::span<const double> sample, double alpha);

struct ShapiroWilkResult : TestDisplay {
  ShapiroWilkCoreResult core;
};

ShapiroWilkResult ShapiroWilk(std::span<const double> sample, double level, char decimalMark = '.');

}  // namespace qv
