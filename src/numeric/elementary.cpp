// Elementary forms: exp(x) - 1, ln(1 + x), ln(1 + x) - x, and the small helpers of the
// module.
//
// Method: near 0 each form is taken from a series or continued fraction in which the
// leading 1 or x never appears, so no digits cancel. exp(x) - 1 is Lambert's continued
// fraction for tanh evaluated two convergents per pass; ln(1 + x) = 2 atanh(t) with
// t = x / (x + 2), the atanh series sum_k y^k / (2k + 1), y = t^2, summed as a
// continued fraction (LogSeriesFraction).
//
// Accuracy: a few units in the last place. The fractions stop once two successive
// convergents agree to 1e-14 (exp) or 1e-15 (log series); their convergence is fast
// enough that the value then returned is better than the stopping test.
#include <cmath>

#include "numeric_internal.h"

namespace qv::numeric {

double MinValue(double a, double b) { return a >= b ? b : a; }

double MaxValue(double a, double b) { return (a < b || a == b) ? b : a; }

bool IsEven(double x) { return 2 * std::floor(x / 2) == x; }

double ClearNegativeZero(double x) { return x == 0 ? 0.0 : x; }

double ExpMinusOne(double x) {
  if (std::fabs(x) >= 2) return std::exp(x) - 1;
  double a1 = 24;
  double b1 = 2 * (12 - (6 - x) * x);
  double y = x * x / 4;
  double a2 = 8 * (y + 15);
  double b2 = 120 - (60 - (12 - x) * x) * x;
  double c = 7;
  for (int pass = 0; pass < kMaxPasses && std::fabs(a2 * b1 - a1 * b2) > std::fabs(1e-14 * b1 * a2);
       ++pass) {
    a1 = y * a1 + c * a2;
    b1 = y * b1 + c * b2;
    c = c + 2;
    a2 = y * a2 + c * a1;
    b2 = y * b2 + c * b1;
    c = c + 2;
    if (b2 > kScaleUp) {
      Rescale(kScaleDown, a1, b1, a2, b2);
    }
  }
  return a2 * x / b2;
}

double LogSeriesFraction(double x, double i, double d) {
  double c1 = 2 * d;
  double c2 = i + d;
  double c4 = c2 + d;
  double a1 = c2;
  double b1 = i * (c2 - i * x);
  double b2 = d * d * x;
  double a2 = c4 * c2 - b2;
  b2 = c4 * b1 - i * b2;
  for (int pass = 0; pass < kMaxPasses && std::fabs(a2 * b1 - a1 * b2) > std::fabs(1e-15 * b1 * a2);
       ++pass) {
    double c3 = c2 * c2 * x;
    c2 = c2 + d;
    c4 = c4 + d;
    a1 = c4 * a2 - c3 * a1;
    b1 = c4 * b2 - c3 * b1;
    c3 = c1 * c1 * x;
    c1 = c1 + d;
    c4 = c4 + d;
    a2 = c4 * a1 - c3 * a2;
    b2 = c4 * b1 - c3 * b2;
    if (b2 > kScaleUp) {
      Rescale(kScaleDown, a1, b1, a2, b2);
    } else if (b2 < kScaleDown) {
      Rescale(kScaleUp, a1, b1, a2, b2);
    }
  }
  return a2 / b2;
}

double LogOnePlus(double x) {
  if (std::fabs(x) > 0.5) return std::log(x + 1);
  double t = x / (x + 2);
  double y = t * t;
  return 2 * t * LogSeriesFraction(y, 1, 2);
}

double LogOnePlusMinusX(double x) {
  if (std::fabs(x) < 0.01) {
    double t = x / (x + 2);
    double y = t * t;
    return (((((2.0 / 9.0) * y + 2.0 / 7.0) * y + 0.4) * y + 2.0 / 3.0) * y - x) * t;
  }
  if (kLogSwitch <= x && x <= 1) {
    double t = x / (x + 2);
    double y = t * t;
    return (2 * y * LogSeriesFraction(y, 3, 2) - x) * t;
  }
  return std::log(x + 1) - x;
}

}  // namespace qv::numeric
