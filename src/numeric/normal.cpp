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
// Accuracy (against mpmath): NormalLower 4.9e-15 worst for |x| <= 9. Further out,
// exp(-x^2 / 2 - ln sqrt(2 pi)) carries the rounding of x^2 and of that sum, about x^2 / 4
// ulp, as much as one ulp of x moves the exact value: 8.9e-14 worst, at x = -35.4.
// Below x = -37.5 the result is subnormal and has only the absolute precision of
// subnormals. InverseNormal 2.7e-15 worst (12 ulp, near p = 0.075); the 15-figure
// coefficients cost that, the full published figures give 3.3 ulp.
#include <cmath>

#include "numeric_functions.h"
#include "numeric_internal.h"

namespace qv {
namespace numeric {

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
  double e = std::exp(-y / 2 - kLogRootTwoPi);
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
