// Heights of the fitted distribution over a grid of 101 points, for the theoretical
// distribution view.
#include "theoretical.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "numeric_functions.h"
#include "number_text.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

// A format string's text read back as the window read it. from_chars, not strtod: the
// program runs under the user's locale, where strtod may stop at the '.'.
double ReadBack(const std::string& text) {
  double v = 0;
  std::from_chars(text.data(), text.data() + text.size(), v);
  return v;
}

float SingleOf(double v, int decimals) {
  float f = 0;
  const std::string text = FormatFixed(v, decimals);
  if (std::from_chars(text.data(), text.data() + text.size(), f).ec == std::errc::result_out_of_range)
    f = text.starts_with('-') ? -std::numeric_limits<float>::max() : std::numeric_limits<float>::max();
  return f;
}

std::optional<double> Height(const FitRun& run, double x, double range) {
  const FitParameters& f = run.fit;
  try {
    switch (run.distribution) {
      case Distribution::Normal: return NormDist(x, f.FitMean, f.FitStdev, false);
      case Distribution::Exponential: return ExponDist(x, 1 / f.FitMean, false);
      case Distribution::Uniform: return 1 / range;
      case Distribution::Weibull: return Weibull(x, f.WeibullZeta, f.WeibullSigma, true);
      case Distribution::Gama: return 100 * PdfGamma(x, f.FitGama, f.FitBeta);
      case Distribution::LogNormal: {
        double u = std::log(x) - f.LogMiu;
        return std::exp(-(u * u) / (2 * (f.LogSigma * f.LogSigma))) /
               (x * f.LogSigma * std::sqrt(6.28));
      }
      case Distribution::Beta: return PdfBeta(x, f.FitAlpha, f.FitBeta);
      case Distribution::Pareto:
        // alpha min^alpha / x^(alpha + 1), arranged so that a large shape (a tight
        // sample gives hundreds) does not overflow both powers.
        return f.FitAlpha * std::pow(f.FitMinimum / x, f.FitAlpha) / x;
    }
  } catch (const ValueError&) {
  }
  return std::nullopt;
}

}  // namespace

TheoreticalCurve TheoreticalDistribution(const FitRun& run) {
  TheoreticalCurve c;
  const std::vector<double>& s = run.arrays.SortedValues;
  if (run.refused || s.empty()) return c;
  const double low = s.front();
  const double range = s.back() - low;
  c.x.reserve(101);
  c.y.reserve(101);
  for (int i = 0; i <= 100; ++i) {
    double x = low + range * i / 100;
    std::optional<double> y = Height(run, x, range);
    if (!y || !std::isfinite(*y)) continue;
    c.x.push_back(x);
    c.y.push_back(*y);
  }
  if (!c.y.empty()) {
    double top = *std::max_element(c.y.begin(), c.y.end());
    c.curveMax = ReadBack(FormatFixed(top, 5)) * 1.05555;
  }
  c.axisLow = SingleOf(run.fit.FitMean - 3 * run.fit.FitStdev, 2);
  c.axisHigh = SingleOf(run.fit.FitMean + 3 * run.fit.FitStdev, 2);
  return c;
}

}  // namespace qv
