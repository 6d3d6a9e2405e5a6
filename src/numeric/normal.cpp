// Normal distribution: the standard normal distribution function and its inverse.
//
// Method: NormalLower uses, for |x| < 1.5, the series
// Phi(x) = 1/2 + phi(x) x sum_n x^(2n) / (1 3 5 ... (2n + 1)); for 1.5 <= |x| <= 40 the
// continued fraction for the Mills ratio, two convergents per pass, which gives the
// lower tail directly so that it keeps its relative accuracy down to Phi(-37.5) = 5e-308;
// beyond 40 the value is 0 or 1 in double. InverseNormal is Algorithm AS 241, PPND16
// (M. J. Wichura, Applied Statistics 37 (1988) 477-484): three rational functions with
// the published coefficients, stored to 15 significant figures.
//
// Accuracy (against mpmath): NormalLower 2.3e-15 worst over [-38, 8] (at x = -1.375),
// 7.2e-16 for |x| > 9: in the continued-fraction region exp(-x^2 / 2) is formed from a
// split x^2 (GaussFactor); the series region, |x| < 1.5, takes x^2 as it rounds, which
// costs less than an ulp there. Below x = -37.5 the result is subnormal and has only the
// absolute precision of subnormals. InverseNormal 2.7e-15 worst (12 ulp, near
// p = 0.075); the 15-figure coefficients cost that, the full published figures give 3.3 ulp.
#include <cmath>
#include <cstdint>
#include <span>

#include "numeric_functions.h"
#include "numeric_internal.h"

namespace qv {
namespace numeric {

namespace {

// exp(-x^2 / 2 - ln sqrt(2 pi)) without the rounding of x^2, which at x = -37 alone
// moves the result by 7e-14: x = h + l with h = x cut to sixteenths, so that h^2 / 2 is
// exact, and x^2 = h^2 + (x - h)(x + h) with x - h exact. The constant goes with the
// small part, where adding it costs no digits.
double GaussFactor(double x) {
  const double h = std::trunc(x * 16) / 16;
  const double del = (x - h) * (x + h);
  return std::exp(-h * h / 2) * std::exp(-del / 2 - kLogRootTwoPi);
}

}  // namespace

double NormalLower(double x) {
  double y = x * x;
  if (std::fabs(x) < 1.5) {
    double e = std::exp(-y / 2 - kLogRootTwoPi);
    double s = 0;
    double t = 1;
    double c = 3;
    // |x| < 1.5 keeps every term finite and decreasing, so the test always ends it.
    for (int pass = 0; pass < kMaxPasses; ++pass) {
      c = c + 2;
      t = y * t / c;
      s = s + t;
      if (5e-16 * s >= t) break;
    }
    s = (y / 3) * (s + 1) + 1;
    return e * x * s + 0.5;
  }
  if (std::fabs(x) > 40) return x > 0 ? 1.0 : 0.0;
  double e = GaussFactor(x);
  double a1 = 2;
  double c1 = 5;
  double b1 = y + 5;
  double a2 = 2 * (y + 9);
  double b2 = (y + 9) * (y + 5) - 12;
  double c = y + 13;
  for (int pass = 0; pass < kMaxPasses && std::fabs(a2 * b1 - a1 * b2) > std::fabs(1e-15 * b1 * a2);
       ++pass) {
    double t = c1 * (c1 + 1);
    a1 = c * a2 - t * a1;
    b1 = c * b2 - t * b1;
    c1 = c1 + 2;
    c = c + 4;
    t = c1 * (c1 + 1);
    a2 = c * a1 - t * a2;
    b2 = c * b1 - t * b2;
    c1 = c1 + 2;
    c = c + 4;
    if (b2 > kScaleUp) {
      Rescale(kScaleDown, a1, b1, a2, b2);
    }
  }
  double f = e * x / (y + 1 - a2 / b2);
  return x <= 0 ? -f : 1 - f;
}

// NormalLowerMany: the same operations as NormalLower in the same order, on kLanes
// elements at once, so that every element gets the bits of the scalar call. The series
// and the continued fraction are chains of dependent divisions and products; one chain
// per element leaves the arithmetic units idle most of the time. kLanes elements fill
// one AVX-512 register, or two or four narrower ones. The elements of a group run until
// the last of them has converged; one that is done keeps its figures from then on.
// Neighbours in a sorted sample need nearly the same number of passes, so little is
// spent on elements already done.
namespace {

// The helpers below are always inlined into the kernels, so the calling convention for
// vectors wider than the default target, which GCC warns of, never comes into play.
#pragma GCC diagnostic ignored "-Wpsabi"

constexpr int kLanes = 8;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));
using Mask = std::int64_t __attribute__((vector_size(kLanes * sizeof(double))));

[[gnu::always_inline]] inline bool Any(const Mask& m) {
  std::int64_t any = 0;
  for (int k = 0; k < kLanes; ++k) any |= m[k];
  return any != 0;
}

[[gnu::always_inline]] inline Lanes Abs(const Lanes& v) {
  return reinterpret_cast<Lanes>(reinterpret_cast<Mask>(v) & INT64_MAX);
}

// The lane likely to need the most passes: the largest |x| in the series, the smallest
// in the fraction. Only its flag is read each pass; once it is done, all are looked at.
int SlowestLane(const Lanes& y, bool largest) {
  int at = 0;
  for (int k = 1; k < kLanes; ++k)
    if (largest ? y[k] > y[at] : y[k] < y[at]) at = k;
  return at;
}

// Series region, |x| < 1.5.
[[gnu::target_clones("avx512f", "avx2", "default")]]
void SeriesLanes(const double* xs, double* out) {
  Lanes x;
  for (int k = 0; k < kLanes; ++k) x[k] = xs[k];
  const Lanes y = x * x;
  const int slowest = SlowestLane(y, true);
  Lanes s = y - y;
  Lanes t = s + 1;
  double c = 3;
  Mask active = y == y;
  for (int pass = 0; pass < kMaxPasses; ++pass) {
    c = c + 2;
    const Lanes tn = y * t / c;
    const Lanes sn = s + tn;
    t = active ? tn : t;
    s = active ? sn : s;
    active = active & ~(5e-16 * s >= t);
    if (!active[slowest] && !Any(active)) break;
  }
  s = (y / 3) * (s + 1) + 1;
  const Lanes arg = -y / 2 - kLogRootTwoPi;
  Lanes e;
  for (int k = 0; k < kLanes; ++k) e[k] = std::exp(arg[k]);
  const Lanes r = e * x * s + 0.5;
  for (int k = 0; k < kLanes; ++k) out[k] = r[k];
}

// Continued-fraction region, 1.5 <= |x| <= 40.
[[gnu::target_clones("avx512f", "avx2", "default")]]
void FractionLanes(const double* xs, double* out) {
  Lanes x, e;
  for (int k = 0; k < kLanes; ++k) {
    x[k] = xs[k];
    e[k] = GaussFactor(xs[k]);
  }
  const Lanes y = x * x;
  const int slowest = SlowestLane(y, false);
  Lanes a1 = y - y + 2;
  double c1 = 5;
  Lanes b1 = y + 5;
  Lanes a2 = 2 * (y + 9);
  Lanes b2 = (y + 9) * (y + 5) - 12;
  Lanes c = y + 13;
  Mask active = Abs(a2 * b1 - a1 * b2) > Abs(1e-15 * b1 * a2);
  for (int pass = 0; pass < kMaxPasses && (active[slowest] || Any(active)); ++pass) {
    double t = c1 * (c1 + 1);
    const Lanes na1 = c * a2 - t * a1;
    const Lanes nb1 = c * b2 - t * b1;
    c1 = c1 + 2;
    const Lanes cn = c + 4;
    t = c1 * (c1 + 1);
    const Lanes na2 = cn * na1 - t * a2;
    const Lanes nb2 = cn * nb1 - t * b2;
    c1 = c1 + 2;
    a1 = active ? na1 : a1;
    b1 = active ? nb1 : b1;
    a2 = active ? na2 : a2;
    b2 = active ? nb2 : b2;
    c = active ? cn + 4 : c;
    const Mask big = active & (nb2 > kScaleUp);
    if (Any(big)) {
      a1 = big ? a1 * kScaleDown : a1;
      b1 = big ? b1 * kScaleDown : b1;
      a2 = big ? a2 * kScaleDown : a2;
      b2 = big ? b2 * kScaleDown : b2;
    }
    active = active & (Abs(a2 * b1 - a1 * b2) > Abs(1e-15 * b1 * a2));
  }
  const Lanes f = e * x / (y + 1 - a2 / b2);
  const Lanes r = x <= 0 ? -f : 1 - f;
  for (int k = 0; k < kLanes; ++k) out[k] = r[k];
}

}  // namespace

void NormalLowerMany(std::span<const double> x, std::span<double> out) {
  // Elements are sorted into the two regions a group at a time; the rest go one by one.
  double series[kLanes], fraction[kLanes];
  std::size_t seriesAt[kLanes], fractionAt[kLanes];
  int ns = 0, nf = 0;
  double r[kLanes];
  auto flush = [&](double* xs, std::size_t* at, int& count, void (*kernel)(const double*, double*)) {
    // A short group is filled with copies of its first element, which cost no passes.
    for (int k = count; k < kLanes; ++k) xs[k] = xs[0];
    kernel(xs, r);
    for (int k = 0; k < count; ++k) out[at[k]] = r[k];
    count = 0;
  };
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double v = x[i];
    const double a = std::fabs(v);
    if (a < 1.5) {
      series[ns] = v;
      seriesAt[ns] = i;
      if (++ns == kLanes) flush(series, seriesAt, ns, SeriesLanes);
    } else if (a <= 40) {
      fraction[nf] = v;
      fractionAt[nf] = i;
      if (++nf == kLanes) flush(fraction, fractionAt, nf, FractionLanes);
    } else {
      out[i] = NormalLower(v);  // 0 or 1, or NaN
    }
  }
  if (ns > 0) flush(series, seriesAt, ns, SeriesLanes);
  if (nf > 0) flush(fraction, fractionAt, nf, FractionLanes);
}

namespace {

// AS 241 coefficient sets, lowest power first; each denominator starts with 1.
constexpr double kCentralNum[8] = {3.38713287279637,    133.141667891784,
                                   1971.59095030655,    1.37316937655095e+4,
                                   4.59219539315499e+4, 6.72657709270087e+4,
                                   3.34305755835881e+4, 2509.08092873012};
constexpr double kCentralDen[8] = {1.0,                 42.3133307016009,
                                   687.187007492058,    5394.19602142475,
                                   2.12137943015866e+4, 3.93078958000927e+4,
                                   2.87290857357219e+4, 5226.49527885285};
constexpr double kNearNum[8] = {1.42343711074968,   4.63033784615655,   5.76949722146069,
                                3.64784832476320,   1.27045825245237,   0.241780725177451,
                                0.0227238449892692, 0.000774545014278341};
constexpr double kNearDen[8] = {1.0,                2.05319162663776,
                                1.67638483018380,   0.689767334985100,
                                0.148103976427480,  0.0151986665636165,
                                0.000547593808499534, 1.05075007164442e-9};
constexpr double kFarNum[8] = {6.65790464350110,   5.46378491116411,    1.78482653991729,
                               0.296560571828505,  0.0265321895265761,  0.00124266094738808,
                               2.71155556874349e-5, 2.01033439929229e-7};
constexpr double kFarDen[8] = {1.0,                  0.599832206555888,  0.136929880922736,
                               0.0148753612908506,   0.000786869131145613, 1.84631831751005e-5,
                               1.42151175831645e-7,  2.04426310338994e-15};

double Horner(const double (&c)[8], double r) {
  double s = c[7];
  for (int k = 6; k >= 0; --k) s = s * r + c[k];
  return s;
}

}  // namespace
}  // namespace numeric

double CdfNormal(double x) { return numeric::ClearNegativeZero(numeric::NormalLower(x)); }

void CdfNormalOneThread(std::span<const double> x, std::span<double> out) {
  numeric::NormalLowerMany(x, out.first(x.size()));
  // ClearNegativeZero, written out so that it costs no call per element.
  for (double& v : out.first(x.size()))
    if (v == 0) v = 0.0;
}

double InverseNormal(double p) {
  using namespace numeric;
  if (std::isnan(p)) return p;
  // The routine itself has no error return; its callers pass 0 < p < 1.
  if (!(p > 0 && p < 1)) throw ValueError();
  double q = p - 0.5;
  if (std::fabs(q) <= 0.425) {
    double r = 0.180625 - q * q;
    return ClearNegativeZero(q * Horner(kCentralNum, r) / Horner(kCentralDen, r));
  }
  double r = q < 0 ? p : 1 - p;
  r = std::sqrt(-std::log(r));
  double v;
  if (r <= 5) {
    r = r - 1.6;
    v = Horner(kNearNum, r) / Horner(kNearDen, r);
  } else {
    r = r - 5;
    v = Horner(kFarNum, r) / Horner(kFarDen, r);
  }
  return q < 0 ? -v : v;
}

}  // namespace qv
