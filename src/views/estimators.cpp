// Parameter estimators of the distribution window.
//
// Moments are the spreadsheet's (Average, and Stdev with divisor n - 1, both with
// compensated sums). The Weibull fit is the maximum-likelihood fixed point
// zeta = 1 / (sum x^z ln x / sum x^z - mean ln x), sigma = (mean x^z)^(1/z), run for a
// fixed 50 rounds with plain running sums in sample order, as the window always did; a
// long sample adds up its two halves on two threads and then the two sums.
#include "estimators.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "number_text.h"
#include "two_halves.h"
#include "worksheet_functions.h"

namespace qv {

const char* DistributionCaption(Distribution d) {
  switch (d) {
    case Distribution::Normal: return "Normal";
    case Distribution::Exponential: return "Exponential";
    case Distribution::Weibull: return "Weibull";
    case Distribution::Uniform: return "Uniform";
    case Distribution::Gama: return "Gama";
    case Distribution::LogNormal: return "LogNormal";
    case Distribution::Beta: return "Beta";
    case Distribution::Pareto: return "Pareto";
  }
  return "";
}

std::string ConstantSampleNotice(Distribution d) {
  return std::string("All values are equal: the ") + DistributionCaption(d) +
         " distribution cannot be fitted";
}

std::string NoEstimateNotice(Distribution d) {
  switch (d) {
    case Distribution::Weibull:
      return "The Weibull shape estimate is not positive: the distribution cannot be fitted";
    case Distribution::Beta:
      return "The Beta moment estimates are not positive: the distribution cannot be fitted";
    default:
      return OutOfRangeNotice(d);
  }
}

std::string OutOfRangeNotice(Distribution d) {
  return std::string("The ") + DistributionCaption(d) +
         " fit of these values is out of range: the distribution cannot be fitted";
}

namespace {

// A term that can't be computed, or whose addition overflows, leaves the sum alone.
inline void AddIfFinite(double& sum, double term) {
  double s = sum + term;
  if (std::isfinite(s)) sum = s;
}

}  // namespace

std::optional<WeibullFit> WeibullEst(std::span<const double> sorted) {
  const std::size_t n = sorted.size();
  if (n == 0) return std::nullopt;
  const double count = static_cast<double>(n);
  // ln x is the same in every round: worked out once, NaN marking a value of 0.
  std::vector<double> logs(n);
  double s3 = 0;
  for (std::size_t i = 0; i < n; ++i) {
    double x = sorted[i];
    logs[i] = x > 0 ? std::log(x) : std::nan("");
    if (x > 0) AddIfFinite(s3, logs[i]);
  }
  WeibullFit fit;
  fit.zeta = 1;
  for (int round = 0; round < 50; ++round) {
    const double z = fit.zeta;
    // Each half keeps its own running sums, added up in a fixed order afterwards.
    double part1[2] = {0, 0}, part2[2] = {0, 0};
    views::InTwoHalves(n, [&](std::size_t from, std::size_t to, int half) {
      double s1 = 0, s2 = 0;
      for (std::size_t i = from; i < to; ++i) {
        // x^z as exp(z ln x) on the logarithm already at hand: a fraction of pow's
        // cost over 50 rounds, within a few units of the last place for any z ln x
        // a sample gives; a value of 0 adds 0^z = 0.
        double p = sorted[i] > 0 ? std::exp(z * logs[i]) : 0.0;
        AddIfFinite(s1, p);
        AddIfFinite(s2, logs[i] * p);
      }
      part1[half] = s1;
      part2[half] = s2;
    });
    double s1 = part1[0], s2 = part2[0];
    AddIfFinite(s1, part1[1]);
    AddIfFinite(s2, part2[1]);
    fit.sigma = std::pow(s1 / count, 1 / z);
    double next = 1 / (s2 / s1 - s3 / count);
    if (!(next > 0) || std::isinf(next)) return std::nullopt;
    fit.zeta = std::min(next, 100.0);
  }
  if (!(fit.sigma > 0) || !std::isfinite(fit.sigma)) return std::nullopt;
  return fit;
}

GamaFit GamaEst(double mean, double stdev) {
  return {stdev * stdev / mean, (mean / stdev) * (mean / stdev)};
}

LogNormFit LogNormEst(std::span<const double> values) {
  std::vector<double> logs(values.size());
  std::transform(values.begin(), values.end(), logs.begin(), [](double x) { return std::log(x); });
  return {Average(logs).value_or(0), Stdev(logs).value_or(0)};
}

BetaFit BetaEst(double mean, double stdev) {
  double alpha = mean * mean * ((1 - mean) / (stdev * stdev) - 1 / mean);
  return {alpha, alpha * (1 / mean - 1)};
}

double ParetoAlpha(double mean, double minimum) { return mean / (mean - minimum); }

std::optional<std::string> ParameterCaption(Distribution d, const FitParameters& f,
                                            char decimalMark) {
  auto v = [decimalMark](double x) { return NumberText(Round(x, 3), decimalMark); };
  switch (d) {
    case Distribution::Weibull:
      return "Sigma=" + v(f.WeibullSigma) + " , Zeta/c=" + v(f.WeibullZeta);
    case Distribution::Gama: return "Beta=" + v(f.FitBeta) + " , Gama=" + v(f.FitGama);
    case Distribution::LogNormal: return "Miu=" + v(f.LogMiu) + " , Sigma=" + v(f.LogSigma);
    case Distribution::Beta: return "Alpha=" + v(f.FitAlpha) + " , Beta=" + v(f.FitBeta);
    case Distribution::Pareto: return "Alpha=" + v(f.FitAlpha);
    default: return std::nullopt;
  }
}

}  // namespace qv
