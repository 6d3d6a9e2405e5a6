// Shapiro-Wilk W test for normality, with its p value.
//
// What: W = (sum a_i x_(i))^2 / sum (x_i - mean)^2 with approximate weights a for the
// normal order statistics, and p from a normalising transformation of W.
// Method: Algorithm AS R94, P. Royston, Applied Statistics 44 (1995) 547-551, without
// its censoring: normal scores m_i = Phi^-1((i - 3/8) / (n + 1/4)), the two outer
// weights from polynomials in 1/sqrt(n) (C1, C2), the others m_i scaled; for n <= 11,
// -ln(gamma - ln(1 - W)) is taken as normal (G, C3, C4), above it ln(1 - W) (C5, C6).
// S. S. Shapiro and M. B. Wilk, Biometrika 52 (1965) 591-611, for the statistic.
// Notes: 1 - W is formed as (r - c)(r + c) / r^2 from the cross product c and
// r = sqrt(product of the sums of squares), so a W near 1 keeps its digits. Values are
// divided by their range before the sums. W is held to four decimals and p to five, each
// by formatting and reading back; p shows with four, so it is rounded twice.
#include <algorithm>
#include <cmath>
#include <vector>

#include "normality_tests.h"
#include "number_text.h"
#include "numeric_functions.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

constexpr double C1[] = {0.0, 0.221157, -0.147981, -2.07119, 4.434685, -2.706056};
constexpr double C2[] = {0.0, 0.042981, -0.293762, -1.752461, 5.682633, -3.582633};
constexpr double C3[] = {0.544, -0.39978, 0.025054, -0.0006714};
constexpr double C4[] = {1.3822, -0.77857, 0.062767, -0.0020322};
constexpr double C5[] = {-1.5861, -0.31082, -0.083751, 0.0038915};
constexpr double C6[] = {-0.4803, -0.082676, 0.0030302};
constexpr double G[] = {-2.273, 0.459};

constexpr double kSWAlpha = 0.05;

double Sign(std::ptrdiff_t d) { return d > 0 ? 1.0 : (d < 0 ? -1.0 : 0.0); }

// Rounded to `decimals` by formatting, and read back, as the window holds it.
double Held(double x, int decimals) { return Val(FormatFixed(x, decimals)); }

}  // namespace

double EvaluatePolynomial(std::span<const double> c, double x) {
  double r = 0.0;
  for (std::size_t i = c.size(); i-- > 0;) r = r * x + c[i];
  return r;
}

ShapiroWilkCoreResult ShapiroWilkCore(std::span<const double> sample, double alpha) {
  std::vector<double> sortedCopy;
  if (!std::is_sorted(sample.begin(), sample.end())) {
    sortedCopy.assign(sample.begin(), sample.end());
    std::sort(sortedCopy.begin(), sortedCopy.end());
    sample = sortedCopy;
  }
  const std::ptrdiff_t n = static_cast<std::ptrdiff_t>(sample.size());
  const double dn = static_cast<double>(n);
  const std::ptrdiff_t n2 = n / 2;
  // 1-based as the algorithm writes it: x(1..n), a(1..n2).
  auto x = [&](std::ptrdiff_t i) { return sample[i - 1]; };
  std::vector<double> a(n2 + 1);

  double summ2 = 0.0;
  for (std::ptrdiff_t i = 1; i <= n2; ++i) {
    a[i] = InverseNormal((static_cast<double>(i) - 0.375) / (dn + 0.25));
    summ2 += a[i] * a[i];
  }
  summ2 *= 2.0;
  const double ssumm2 = std::sqrt(summ2);
  const double rsn = 1.0 / std::sqrt(dn);
  const double m1 = a[1];
  const double a1 = EvaluatePolynomial(C1, rsn) - m1 / ssumm2;

  std::ptrdiff_t first;
  double fac;
  if (n < 6) {
    first = 2;
    fac = std::sqrt((summ2 - 2.0 * m1 * m1) / (1.0 - 2.0 * a1 * a1));
  } else {
    first = 3;
    const double m2 = a[2];
    const double a2 = EvaluatePolynomial(C2, rsn) - m2 / ssumm2;
    fac = std::sqrt((summ2 - 2.0 * m1 * m1 - 2.0 * m2 * m2) / (1.0 - 2.0 * a1 * a1 - 2.0 * a2 * a2));
    a[2] = a2;
  }
  a[1] = a1;
  for (std::ptrdiff_t i = first; i <= n2; ++i) a[i] = -a[i] / fac;

  // The full weight of the i-th value: -a(i) in the lower half, a(n + 1 - i) in the
  // upper, 0 in the middle of an odd sample.
  auto weight = [&](std::ptrdiff_t i) {
    const std::ptrdiff_t j = n + 1 - i;
    return i == j ? 0.0 : Sign(i - j) * a[std::min(i, j)];
  };

  // W does not change with the scale of the values. A range past the largest double
  // is taken of the halves of the values, which gives the same quotients.
  double range = x(n) - x(1);
  const double scale = std::isfinite(range) ? 1.0 : 0.5;
  if (scale != 1.0) range = x(n) * scale - x(1) * scale;
  auto scaled = [&](std::ptrdiff_t i) { return x(i) * scale / range; };
  double sx = scaled(1);
  double sa = -a[1];
  for (std::ptrdiff_t i = 2; i <= n; ++i) {
    sx += scaled(i);
    sa += weight(i);
  }
  sa /= dn;
  sx /= dn;

  double ssa = 0.0, ssx = 0.0, sax = 0.0;
  for (std::ptrdiff_t i = 1; i <= n; ++i) {
    const double asa = weight(i) - sa;
    const double xsx = scaled(i) - sx;
    ssa += asa * asa;
    ssx += xsx * xsx;
    sax += asa * xsx;
  }

  const double ssassx = std::sqrt(ssx * ssa);
  const double w1 = (ssassx - sax) * (ssassx + sax) / (ssx * ssa);
  ShapiroWilkCoreResult r;
  r.rawW = 1.0 - w1;

  double y = std::log(w1);
  const double lnn = std::log(dn);
  double mu, sigma;
  if (n <= 11) {
    const double gamma = EvaluatePolynomial(G, dn);
    y = -std::log(gamma - y);
    mu = EvaluatePolynomial(C3, dn);
    sigma = std::exp(EvaluatePolynomial(C4, dn));
  } else {
    mu = EvaluatePolynomial(C5, lnn);
    sigma = std::exp(EvaluatePolynomial(C6, lnn));
  }
  r.rawP = 1.0 - CdfNormal((y - mu) / sigma);
  r.p = Held(r.rawP, 5);
  r.w = Held(r.rawW, 4);
  r.critical = std::fabs(InverseNormal(1.0 - alpha));
  return r;
}

ShapiroWilkResult ShapiroWilk(std::span<const double> sample, double level, char decimalMark) {
  ShapiroWilkResult r;
  const std::optional<double> s = Stdev(sample);
  // The zero deviation is checked before the count; a single value has no deviation.
  // A deviation past the largest double has no value either, but W needs none.
  const bool zero = s && *s == 0.0;
  if (zero || sample.size() < 4) {
    r.refused = true;
    r.notice = zero ? kZeroDeviationNotice : kTooFewObservationsNotice;
    r.bell = Bell::No;
    return r;
  }
  // Equal values whose deviation overflowed to no number: the range tells.
  if (!s && *std::max_element(sample.begin(), sample.end()) == *std::min_element(sample.begin(), sample.end())) {
    r.refused = true;
    r.notice = kZeroDeviationNotice;
    r.bell = Bell::No;
    return r;
  }
  r.core = ShapiroWilkCore(sample, kSWAlpha);
  if (!std::isfinite(r.core.rawW) || !std::isfinite(r.core.rawP)) {
    r.refused = true;
    r.notice = kTooLargeNotice;
    r.bell = Bell::No;
    return r;
  }
  r.testStat = FormatFixed(r.core.w, 4, decimalMark);
  r.pval = FormatFixed(r.core.p, 4, decimalMark);
  r.criticalBox = FormatFixed(r.core.critical, 4, decimalMark);
  r.bell = BellForP(r.core.p, level);
  return r;
}

}  // namespace qv
