// The parameter estimators of the distribution window (Visualize): eight distributions,
// each fitted by a closed formula over the sample's moments and extremes, except Weibull,
// which runs a fixed number of rounds of a maximum-likelihood fixed point. Pure functions
// over arrays; the window shows what they return.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace qv {

// The distributions in the order of the window's options Option1 to Option8.
enum class Distribution { Normal, Exponential, Weibull, Uniform, Gama, LogNormal, Beta, Pareto };
inline constexpr int kDistributionCount = 8;

// The option's caption, spelled as the window spells it: "Normal", ..., "Gama", ...
const char* DistributionCaption(Distribution d);

// The window's own refusals, to the letter.
inline constexpr const char* kFitSampleSizeNotice = "The sample size must be at least 4";
inline constexpr const char* kNegativeNotice = "Negative values are not allowed for this distribution";
inline constexpr const char* kNegativeOrZeroNotice =
    "Negative/0 values are not allowed for this distribution";
inline constexpr const char* kUnitRangeNotice = "Range of values should be 0,1";
inline constexpr const char* kPositiveRangeNotice = "Range of values should be greater than 0";

// Refusals of fits that have no answer, each naming the distribution: all values equal;
// a Weibull shape or Beta moment estimate that is not positive; parameters or figures
// that no double holds (a spread of 1e-300, an r with no spread in the expected figures).
std::string ConstantSampleNotice(Distribution d);
std::string NoEstimateNotice(Distribution d);
std::string OutOfRangeNotice(Distribution d);

// The fit fields of the window. Each run fills those of its distribution; FitBeta and
// FitAlpha are shared by two distributions each, as in the window.
struct FitParameters {
  std::size_t SampleSize = 0;
  double FitMean = 0;      // Average of the sample
  double FitStdev = 0;     // Stdev, divisor n - 1
  double FitMinimum = 0;   // smallest value: Pareto scale, Uniform's lower end
  double FitMaximum = 0;   // largest value: Uniform's upper end
  double WeibullSigma = 0, WeibullZeta = 0;
  double LogMiu = 0, LogSigma = 0;
  double FitGama = 0;      // Gamma shape
  double FitBeta = 0;      // Gamma scale, or Beta's second shape
  double FitAlpha = 0;     // Beta's first shape, or the Pareto shape
};

// WeibullEst over an ascending sample of values >= 0: exactly 50 rounds, the shape
// capped at 100 in every round, the scale one round behind the shape. A term that can't
// be computed (ln 0, an overflowing power) is left out of its sum while the value still
// counts in N. nullopt when a round's shape estimate is not a positive number.
struct WeibullFit {
  double sigma = 0, zeta = 0;
};
std::optional<WeibullFit> WeibullEst(std::span<const double> sorted);

// GamaEst from the mean m and deviation s: scale s^2/m, shape (m/s)^2.
struct GamaFit {
  double beta = 0, gama = 0;
};
GamaFit GamaEst(double mean, double stdev);

// LogNormEst: Average and Stdev of the logarithms of values > 0.
struct LogNormFit {
  double miu = 0, sigma = 0;
};
LogNormFit LogNormEst(std::span<const double> values);

// BetaEst: alpha = m^2 ((1 - m)/s^2 - 1/m), beta = alpha (1/m - 1).
struct BetaFit {
  double alpha = 0, beta = 0;
};
BetaFit BetaEst(double mean, double stdev);

// The Pareto shape mean / (mean - minimum).
double ParetoAlpha(double mean, double minimum);

// The text of Text1 for the five distributions with shape parameters, each value
// Round(v, 3) in its shortest text ("Beta=1 , Gama=4"); nullopt where Text1 is hidden
// (Normal, Exponential, Uniform).
std::optional<std::string> ParameterCaption(Distribution d, const FitParameters& fit,
                                            char decimalMark = '.');

}  // namespace qv
