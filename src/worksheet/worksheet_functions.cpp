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

std::optional<double> Average(std::span<const double> x) {
  if (x.empty()) return std::nullopt;
  return Sum(x) / static_cast<double>(x.size());
}

namespace {

// Mean and the sum of squared deviations, in two compensated passes as the
// spreadsheet does: 31 copies of 0.1 give exactly 0.
template <class Each>
bool Moments2(Each each, double n, double& mean, double& ss) {
  if (n < 1) return false;
  NeumaierSum s;
  each([&](double v) { s.add(v); });
  mean = s.value() / n;
  NeumaierSum q;
  each([&](double v) {
    double d = v - mean;
    q.add(d * d);
  });
  ss = q.value();
  return true;
}

template <class Each>
std::optional<double> KurtOf(Each each, double n) {
  double mean, ss;
  if (n < 4 || !Moments2(each, n, mean, ss)) return std::nullopt;
  double sd = std::sqrt(ss / (n - 1));
  if (sd == 0.0) return std::nullopt;
  NeumaierSum s4;
  each([&](double v) {
    double z = (v - mean) / sd;
    z *= z;
    s4.add(z * z);
  });
  double k = n * (n + 1) / ((n - 1) * (n - 2) * (n - 3));
  double c = 3 * (n - 1) * (n - 1) / ((n - 2) * (n - 3));
  return s4.value() * k - c;
}

template <class Each>
std::optional<double> SkewOf(Each each, double n) {
  double mean, ss;
  if (n < 3 || !Moments2(each, n, mean, ss)) return std::nullopt;
  double sd = std::sqrt(ss / (n - 1));
  if (sd == 0.0) return std::nullopt;
  NeumaierSum s3;
  each([&](double v) {
    double z = (v - mean) / sd;
    s3.add(z * z * z);
  });
  return s3.value() * n / ((n - 1) * (n - 2));
}

auto ArrayEach(std::span<const double> x) {
  return [x](auto&& f) {
    for (double v : x) f(v);
  };
}

auto RangeEach(const CellBlock& r) {
  return [&r](auto&& f) {
    for (std::int64_t i = 0; i < r.size(); ++i)
      if (r.isRangeNumber(i)) f(r.numbers[i]);
  };
}

}  // namespace

std::optional<double> Stdev(std::span<const double> x) {
  double mean, ss;
  if (x.size() < 2 || !Moments2(ArrayEach(x), static_cast<double>(x.size()), mean, ss))
    return std::nullopt;
  return std::sqrt(ss / static_cast<double>(x.size() - 1));
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
  return (a[n / 2 - 1] + a[n / 2]) / 2.0;
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
  return (lo + hi) / 2.0;
}

std::optional<double> Kurt(std::span<const double> x) {
  return KurtOf(ArrayEach(x), static_cast<double>(x.size()));
}

std::optional<double> Skew(std::span<const double> x) {
  return SkewOf(ArrayEach(x), static_cast<double>(x.size()));
}

std::int64_t Count(const CellBlock& r) {
  std::int64_t c = 0;
  for (std::int64_t i = 0; i < r.size(); ++i) c += r.isRangeNumber(i);
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
    double want = Val(criterion);
    for (std::int64_t i = 0; i < r.size(); ++i)
      if (r.isRangeNumber(i) && r.numbers[i] == want) ++c;
  }
  // A text cell counts when it reads the same as the criterion, "12" for "12" too.
  return c + CountTextIf(r, criterion);
}

}  // namespace qv
