#include "worksheet_functions.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "number_text.h"

namespace qv {

const std::string& CellBlock::text(std::int64_t i) const {
  static const std::string empty;
  auto it = texts.find(i);
  return it == texts.end() ? empty : it->second;
}

double Round(double x, int digits) {
  if (x == 0.0 || !std::isfinite(x)) return x == 0.0 ? 0.0 : x;
  if (digits == 0) {
    double r = std::round(x);
    return r == 0.0 ? 0.0 : r;
  }
  double v = std::fabs(x);
  const double twoTo52 = 4503599627370496.0;
  if (digits > 0 && v >= twoTo52) return x;  // no decimals left to round
  double fac = std::pow(10.0, std::abs(digits));
  v = digits > 0 ? v * fac : v / fac;
  // Rounding beyond the precision the value carries would only add noise.
  if (v >= twoTo52) return x;
  // Halves away from zero on the decimal value the spreadsheet sees: 15 significant
  // digits, so 2.675 rounds to 2.68 although its binary value lies below; a position
  // beyond those digits rounds the value's full shortest text.
  int lead = static_cast<int>(std::floor(std::log10(std::fabs(x))));
  bool within15 = lead + 1 + digits < 15;
  std::string t = RoundedDigitsOf(x, digits, !within15);
  if (t.empty()) return 0.0;
  t = (x < 0 ? "-" : "") + t + "e" + std::to_string(-digits);
  return std::strtod(t.c_str(), nullptr);
}

double CeilingOne(double x) {
  double c = std::ceil(x);
  return c == 0.0 ? 0.0 : c;
}

std::optional<double> Ln(double x) {
  if (!(x > 0.0)) return std::nullopt;
  return std::log(x);
}

double Sum(std::span<const double> x) {
  NeumaierSum s;
  for (double v : x) s.add(v);
  return s.value();
}

namespace {

// Every sum below is worked out on the values times `scale`, a power of two, so exact.
// A plain sum that overflows (values near the largest double) is taken again on the
// values scaled below 1, where no sum of a sample this size can overflow.
template <class Each>
double ScaleFor(Each each) {
  double big = 0.0;
  each([&](double v) { big = std::max(big, std::fabs(v)); });
  if (!(big > 0.0) || !std::isfinite(big)) return 1.0;
  return std::ldexp(1.0, -(std::ilogb(big) + 1));
}

// Mean and the sum of squared deviations of the scaled values, in two compensated
// passes as the spreadsheet does: 31 copies of 0.1 give exactly 0.
template <class Each>
bool Moments2(Each each, double n, double& mean, double& ss, double scale = 1.0) {
  if (n < 1) return false;
  NeumaierSum s;
  each([&](double v) { s.add(v * scale); });
  mean = s.value() / n;
  NeumaierSum q;
  each([&](double v) {
    double d = v * scale - mean;
    q.add(d * d);
  });
  ss = q.value();
  return true;
}

// Mean and standard deviation of the scaled values; the scale is 1 unless the plain
// sums overflow.
template <class Each>
bool ScaledMoments(Each each, double n, double& mean, double& sd, double& scale) {
  double ss;
  scale = 1.0;
  if (!Moments2(each, n, mean, ss)) return false;
  if (!std::isfinite(mean) || !std::isfinite(ss)) {
    scale = ScaleFor(each);
    Moments2(each, n, mean, ss, scale);
  }
  sd = n > 1 ? std::sqrt(ss / (n - 1)) : 0.0;
  return std::isfinite(mean) && std::isfinite(sd);
}

template <class Each>
std::optional<double> KurtOf(Each each, double n) {
  double mean, sd, scale;
  if (n < 4 || !ScaledMoments(each, n, mean, sd, scale)) return std::nullopt;
  if (sd == 0.0) return std::nullopt;
  NeumaierSum s4;
  each([&](double v) {
    double z = (v * scale - mean) / sd;
    z *= z;
    s4.add(z * z);
  });
  double k = n * (n + 1) / ((n - 1) * (n - 2) * (n - 3));
  double c = 3 * (n - 1) * (n - 1) / ((n - 2) * (n - 3));
  double r = s4.value() * k - c;
  if (!std::isfinite(r)) return std::nullopt;
  return r;
}

template <class Each>
std::optional<double> SkewOf(Each each, double n) {
  double mean, sd, scale;
  if (n < 3 || !ScaledMoments(each, n, mean, sd, scale)) return std::nullopt;
  if (sd == 0.0) return std::nullopt;
  NeumaierSum s3;
  each([&](double v) {
    double z = (v * scale - mean) / sd;
    s3.add(z * z * z);
  });
  double r = s3.value() * n / ((n - 1) * (n - 2));
  if (!std::isfinite(r)) return std::nullopt;
  return r;
}

auto ArrayEach(std::span<const double> x) {
  return [x](auto&& f) {
    for (double v : x) f(v);
  };
}

auto RangeEach(const CellBlock& r) {
  return [&r](auto&& f) {
    for (std::int64_t i = 0; i < r.size(); ++i)
      if (r.isStatisticNumber(i)) f(r.numbers[i]);
  };
}

}  // namespace

std::optional<double> Average(std::span<const double> x) {
  double mean, sd, scale;
  if (x.empty() || !ScaledMoments(ArrayEach(x), static_cast<double>(x.size()), mean, sd, scale))
    return std::nullopt;
  return mean / scale;
}

std::optional<double> Stdev(std::span<const double> x) {
  double mean, sd, scale;
  if (x.size() < 2 || !ScaledMoments(ArrayEach(x), static_cast<double>(x.size()), mean, sd, scale))
    return std::nullopt;
  double r = sd / scale;  // a deviation beyond the largest double has no value
  if (!std::isfinite(r)) return std::nullopt;
  return r;
}

std::optional<double> Min(std::span<const double> x) {
  if (x.empty()) return 0.0;  // MIN of nothing is 0 in the spreadsheet
  return *std::min_element(x.begin(), x.end());
}

std::optional<double> Max(std::span<const double> x) {
  if (x.empty()) return 0.0;
  return *std::max_element(x.begin(), x.end());
}

std::optional<double> MedianSorted(std::span<const double> a) {
  if (a.empty()) return std::nullopt;
  std::size_t n = a.size();
  if (n % 2) return a[n / 2];
  return MidPoint(a[n / 2 - 1], a[n / 2]);
}

std::optional<double> Median(std::span<const double> x) {
  if (x.empty()) return std::nullopt;
  std::vector<double> v(x.begin(), x.end());
  std::size_t n = v.size();
  auto mid = v.begin() + n / 2;
  std::nth_element(v.begin(), mid, v.end());
  if (n % 2) return *mid;
  double hi = *mid;
  double lo = *std::max_element(v.begin(), mid);
  return MidPoint(lo, hi);
}

std::optional<double> Kurt(std::span<const double> x) {
  return KurtOf(ArrayEach(x), static_cast<double>(x.size()));
}

std::optional<double> Skew(std::span<const double> x) {
  return SkewOf(ArrayEach(x), static_cast<double>(x.size()));
}

double MidPoint(double a, double b) {
  double m = (a + b) / 2.0;
  return std::isfinite(m) ? m : a / 2.0 + b / 2.0;
}

std::int64_t Count(const CellBlock& r) {
  std::int64_t c = 0;
  for (std::int64_t i = 0; i < r.size(); ++i) c += r.isStatisticNumber(i);
  return c;
}

std::int64_t CountA(const CellBlock& r) {
  std::int64_t c = 0;
  for (CellKind k : r.kinds) c += k != CellKind::Empty;
  return c;
}

std::optional<double> Min(const CellBlock& r) {
  double m = std::numeric_limits<double>::infinity();
  bool any = false;
  RangeEach(r)([&](double v) {
    m = std::min(m, v);
    any = true;
  });
  return any ? m : 0.0;
}

std::optional<double> Max(const CellBlock& r) {
  double m = -std::numeric_limits<double>::infinity();
  bool any = false;
  RangeEach(r)([&](double v) {
    m = std::max(m, v);
    any = true;
  });
  return any ? m : 0.0;
}

std::optional<double> Kurt(const CellBlock& r) {
  return KurtOf(RangeEach(r), static_cast<double>(Count(r)));
}

std::optional<double> Skew(const CellBlock& r) {
  return SkewOf(RangeEach(r), static_cast<double>(Count(r)));
}

namespace {

bool EqualNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

}  // namespace

std::int64_t CountTextIf(const CellBlock& r, std::string_view criterion) {
  std::int64_t c = 0;
  for (auto& [i, t] : r.texts)
    if (EqualNoCase(t, criterion)) ++c;
  return c;
}

std::int64_t CountIf(const CellBlock& r, std::string_view criterion) {
  std::int64_t c = 0;
  if (IsNumericText(criterion)) {
    // A number matches when it shows as the criterion's number does (15 digits): the
    // spreadsheet counts =0.1+0.2 under 0.3.
    const double want = Val(criterion);
    const std::string shown = NumberText(want);
    const double reach = std::fabs(want) * 1e-14;
    for (std::int64_t i = 0; i < r.size(); ++i) {
      if (!r.isRangeNumber(i)) continue;
      double v = r.numbers[i];
      if (v == want || (std::fabs(v - want) <= reach && NumberText(v) == shown)) ++c;
    }
  }
  // A text cell counts when it reads the same as the criterion, "12" for "12" too.
  return c + CountTextIf(r, criterion);
}

std::optional<double> Correl(std::span<const double> x, std::span<const double> y) {
  if (x.size() != y.size() || x.empty()) return std::nullopt;
  const double n = static_cast<double>(x.size());
  NeumaierSum sx, sy;
  for (std::size_t i = 0; i < x.size(); ++i) {
    sx.add(x[i]);
    sy.add(y[i]);
  }
  const double mx = sx.value() / n;
  const double my = sy.value() / n;
  NeumaierSum sxy, sxx, syy;
  for (std::size_t i = 0; i < x.size(); ++i) {
    double dx = x[i] - mx;
    double dy = y[i] - my;
    sxy.add(dx * dy);
    sxx.add(dx * dx);
    syy.add(dy * dy);
  }
  double den = std::sqrt(sxx.value()) * std::sqrt(syy.value());
  if (!(den > 0.0) || !std::isfinite(den)) return std::nullopt;
  double r = sxy.value() / den;
  // Rounding may carry a perfect correlation a hair past 1.
  return std::clamp(r, -1.0, 1.0);
}

std::optional<double> Weibull(double x, double alpha, double beta, bool cumulative) {
  if (!(x >= 0.0) || !(alpha > 0.0) || !(beta > 0.0)) return std::nullopt;
  double p = std::pow(x / beta, alpha);
  if (cumulative) return -std::expm1(-p);
  double d = alpha / std::pow(beta, alpha) * std::pow(x, alpha - 1) * std::exp(-p);
  if (!std::isfinite(d)) return std::nullopt;
  return d;
}

std::optional<double> ExponDist(double x, double lambda, bool cumulative) {
  if (!(x >= 0.0) || !(lambda > 0.0)) return std::nullopt;
  if (cumulative) return -std::expm1(-lambda * x);
  return lambda * std::exp(-lambda * x);
}

std::optional<double> NormDist(double x, double mean, double sd, bool cumulative) {
  if (!(sd > 0.0)) return std::nullopt;
  double z = (x - mean) / sd;
  if (cumulative) return 0.5 * std::erfc(-z / std::sqrt(2.0));
  const double rootTwoPi = 2.506628274631000502415765;
  return std::exp(-z * z / 2) / (sd * rootTwoPi);
}

}  // namespace qv
