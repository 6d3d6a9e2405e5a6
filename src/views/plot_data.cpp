// GenerateArrays and the small figures the plots read from it.
//
// The sample is sorted once; ranks come from one pass over runs of equal values, and
// the expected percentiles from the array forms of the distribution functions, which
// share the work between two threads. Nothing here is worse than n log n.
#include "plot_data.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "numeric_functions.h"
#include "number_text.h"
#include "two_halves.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

// Observed percentile of a run of equal values at sorted positions i..j-1.
inline double RunPercentile(std::size_t i, std::size_t j, double count) {
  double midRank = static_cast<double>(i + j - 1) / 2 + 1;
  return (midRank + 1) * 100 / count;
}

FitRun Refuse(FitRun run, std::string notice) {
  run.refused = true;
  run.notice = std::move(notice);
  run.fit = FitParameters{};
  run.arrays = PlotArrays{};
  run.caption.reset();
  return run;
}

bool PositiveFinite(double v) { return v > 0 && std::isfinite(v); }

// One sort, its two halves on two threads, then one merge.
void SortInTwoHalves(std::vector<double>& v) {
  bool split = views::InTwoHalves(v.size(), [&v](std::size_t from, std::size_t to, int) {
    std::sort(v.begin() + static_cast<std::ptrdiff_t>(from), v.begin() + static_cast<std::ptrdiff_t>(to));
  });
  if (split) std::inplace_merge(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(v.size() / 2), v.end());
}

}  // namespace

std::vector<double> AverageRanks(std::span<const double> values) {
  const std::size_t n = values.size();
  std::vector<double> out(n);
  const double count = static_cast<double>(n);
  if (std::is_sorted(values.begin(), values.end())) {
    for (std::size_t i = 0; i < n;) {
      std::size_t j = i + 1;
      while (j < n && values[j] == values[i]) ++j;
      std::fill(out.begin() + i, out.begin() + j, RunPercentile(i, j, count));
      i = j;
    }
    return out;
  }
  std::vector<std::size_t> index(n);
  std::iota(index.begin(), index.end(), std::size_t{0});
  std::sort(index.begin(), index.end(),
            [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
  for (std::size_t i = 0; i < n;) {
    std::size_t j = i + 1;
    while (j < n && values[index[j]] == values[index[i]]) ++j;
    double p = RunPercentile(i, j, count);
    for (std::size_t m = i; m < j; ++m) out[index[m]] = p;
    i = j;
  }
  return out;
}

FitRun GenerateArrays(Distribution d, std::span<const double> sample, double shownMean,
                      double shownStdev, char decimalMark) {
  FitRun run;
  run.distribution = d;
  const std::size_t n = sample.size();
  if (n < 4) return Refuse(std::move(run), kFitSampleSizeNotice);

  const double low = *std::min_element(sample.begin(), sample.end());
  const double high = *std::max_element(sample.begin(), sample.end());
  using D = Distribution;
  if ((d == D::Exponential || d == D::Weibull || d == D::Gama || d == D::Pareto) && low < 0)
    return Refuse(std::move(run), kNegativeNotice);
  if (d == D::LogNormal && low <= 0) return Refuse(std::move(run), kNegativeOrZeroNotice);

  PlotArrays& a = run.arrays;
  a.SortedValues.assign(sample.begin(), sample.end());
  SortInTwoHalves(a.SortedValues);
  const std::vector<double>& x = a.SortedValues;

  FitParameters& f = run.fit;
  f.SampleSize = n;
  f.FitMean = Average(x).value_or(0);
  f.FitStdev = Stdev(x).value_or(0);
  f.FitMinimum = low;
  f.FitMaximum = high;

  if (d == D::Beta && (low < 0 || high > 1)) return Refuse(std::move(run), kUnitRangeNotice);
  if (d == D::Pareto && low == 0) return Refuse(std::move(run), kPositiveRangeNotice);
  if (low == high || !(f.FitStdev > 0)) return Refuse(std::move(run), ConstantSampleNotice(d));

  std::vector<double>& expected = a.ExpectedPercentiles;
  expected.assign(n, 0.0);
  std::vector<double> t(n);  // the argument handed to a distribution function
  try {
    switch (d) {
      case D::Normal: {
        for (std::size_t i = 0; i < n; ++i) t[i] = (x[i] - f.FitMean) / f.FitStdev;
        CdfNormal(t, expected);
        a.ExpectedValues.resize(n);
        views::InTwoHalves(n, [&](std::size_t from, std::size_t to, int) {
          for (std::size_t i = from; i < to; ++i) {
            double p = (static_cast<double>(i + 1) - 0.5) / static_cast<double>(n);
            a.ExpectedValues[i] = InverseNormal(p) * shownStdev + shownMean;
          }
        });
        break;
      }
      case D::Exponential: {
        double rate = 1 / f.FitMean;
        if (!PositiveFinite(rate)) return Refuse(std::move(run), OutOfRangeNotice(d));
        CdfExponential(x, rate, expected);
        break;
      }
      case D::Weibull: {
        std::optional<WeibullFit> w = WeibullEst(x);
        if (!w) return Refuse(std::move(run), NoEstimateNotice(d));
        f.WeibullSigma = w->sigma;
        f.WeibullZeta = w->zeta;
        // An element whose Weibull value fails keeps 0, as the window tolerated it.
        views::InTwoHalves(n, [&](std::size_t from, std::size_t to, int) {
          for (std::size_t i = from; i < to; ++i)
            expected[i] = Weibull(x[i], f.WeibullZeta, f.WeibullSigma, true).value_or(0);
        });
        break;
      }
      case D::Uniform: {
        double span = high - low;
        if (!std::isfinite(span)) return Refuse(std::move(run), OutOfRangeNotice(d));
        // Already in percent: 100 * (x - a) / (b - a), in that order.
        for (std::size_t i = 0; i < n; ++i) expected[i] = 100 * (x[i] - low) / span;
        break;
      }
      case D::Gama: {
        GamaFit g = GamaEst(f.FitMean, f.FitStdev);
        f.FitBeta = g.beta;
        f.FitGama = g.gama;
        if (!PositiveFinite(g.beta) || !PositiveFinite(g.gama))
          return Refuse(std::move(run), OutOfRangeNotice(d));
        CdfGamma(x, f.FitGama, f.FitBeta, expected);
        break;
      }
      case D::LogNormal: {
        LogNormFit l = LogNormEst(x);
        f.LogMiu = l.miu;
        f.LogSigma = l.sigma;
        if (!(l.sigma > 0)) return Refuse(std::move(run), ConstantSampleNotice(d));
        views::InTwoHalves(n, [&](std::size_t from, std::size_t to, int) {
          for (std::size_t i = from; i < to; ++i) t[i] = (std::log(x[i]) - f.LogMiu) / f.LogSigma;
        });
        CdfNormal(t, expected);
        break;
      }
      case D::Beta: {
        BetaFit b = BetaEst(f.FitMean, f.FitStdev);
        f.FitAlpha = b.alpha;
        f.FitBeta = b.beta;
        if (!PositiveFinite(b.alpha) || !PositiveFinite(b.beta))
          return Refuse(std::move(run), NoEstimateNotice(d));
        CdfBeta(x, f.FitAlpha, f.FitBeta, expected);
        break;
      }
      case D::Pareto: {
        f.FitAlpha = ParetoAlpha(f.FitMean, f.FitMinimum);
        if (!PositiveFinite(f.FitAlpha)) return Refuse(std::move(run), OutOfRangeNotice(d));
        views::InTwoHalves(n, [&](std::size_t from, std::size_t to, int) {
          for (std::size_t i = from; i < to; ++i)
            expected[i] = 1 - std::pow(f.FitMinimum / x[i], f.FitAlpha);
        });
        break;
      }
    }
  } catch (const ValueError&) {
    return Refuse(std::move(run), OutOfRangeNotice(d));
  }

  a.ObservedPercentiles = AverageRanks(x);
  a.DetrendedDifferences.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    if (d != D::Uniform) expected[i] = 100 * expected[i];
    a.DetrendedDifferences[i] = a.ObservedPercentiles[i] - expected[i];
  }
  bool finite = std::all_of(expected.begin(), expected.end(), [](double v) { return std::isfinite(v); }) &&
                std::all_of(a.ExpectedValues.begin(), a.ExpectedValues.end(),
                            [](double v) { return std::isfinite(v); });
  std::optional<double> r = Correl(a.ObservedPercentiles, expected);
  if (!finite || !r) return Refuse(std::move(run), OutOfRangeNotice(d));

  run.caption = ParameterCaption(d, f, decimalMark);
  run.r = *r;
  run.correl = "r=" + NumberText(Round(*r, 3), decimalMark);
  return run;
}

std::vector<double> PPDiagonal(std::size_t n) {
  std::vector<double> out(n);
  for (std::size_t i = 0; i < n; ++i)
    out[i] = static_cast<double>(i) * 100 / static_cast<double>(n);
  return out;
}

AxisBounds QQBounds(double shownMinimum, double shownMaximum) {
  return {shownMinimum - 0.03 * shownMinimum, shownMaximum + 0.03 * shownMaximum};
}

CellBlock PlotDataBlock(const PlotArrays& arrays) {
  const std::size_t n = arrays.SortedValues.size();
  CellBlock block;
  block.resize(static_cast<std::int64_t>(n) + 1, 3);
  for (int c = 0; c < 3; ++c) block.setText(c, kPlotDataHeaders[c]);
  for (std::size_t i = 0; i < n; ++i) {
    std::int64_t row = 3 * static_cast<std::int64_t>(i + 1);
    block.setNumber(row, arrays.SortedValues[i]);
    block.setNumber(row + 1, i < arrays.ObservedPercentiles.size() ? arrays.ObservedPercentiles[i] : 0);
    block.setNumber(row + 2, i < arrays.ExpectedPercentiles.size() ? arrays.ExpectedPercentiles[i] : 0);
  }
  return block;
}

std::string PlotDataSheetName(int k) { return "PP-PlotData" + std::to_string(k); }

}  // namespace qv
