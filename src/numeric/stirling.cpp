// Stirling corrections: StirlingError(x) = ln Gamma(x + 1) - (x + 0.5) ln(x + 1)
// + (x + 1) - ln sqrt(2 pi), the error of Stirling's formula at x + 1, with its odd
// derivatives and the difference StirlingError(a + b) - StirlingError(b).
//
// Method: from x = 6 on, the asymptotic series in 1 / (x + 1)^2 (Bernoulli numbers,
// the last two coefficients adjusted to absorb the truncated tail); above 1e10 its
// first term. Below 6 the function steps up by the exact one-step difference
// (x + 1.5) ln(1 + 1 / (x + 1)) - 1, a series in 1 / (2x + 3)^2 summed by
// LogSeriesFraction, and its derivatives in closed form. Whole x from 0 to 5 are
// stored. The difference of two corrections with a small against b uses the central
// Taylor expansion about b + a/2, which needs only odd derivatives.
//
// Accuracy (against mpmath): StirlingError and StirlingD1 within 16 ulp for x > -0.99,
// the 15-figure stored values at 0 to 5 being the worst; the stepping adds at most seven
// positive terms. Close to x = -1 the value (growing like -0.5 ln(x + 1)) hangs on
// x + 1, which 2x + 3 keeps only to an ulp of 1: 2e-11 at x = -0.9999999. The higher
// derivatives carry the truncation of their series at x = 6 (D3 9e-13, D5 4e-11,
// D7 8e-10 relative), harmless where StirlingDifference weighs them by a^2 / 24 and less.
#include <cmath>

#include "numeric_internal.h"

namespace qv::numeric {
namespace {

constexpr double kTwelfth = 0.08333333333333333;
constexpr double kTail = 1.67699982016711;  // adjusted coefficient of the last term

// Steps from x up to the first x1 >= 6 and adds the value there. Only reached with
// -1 < x < 6, so at most seven passes.
template <class Step, class Far>
double StepUpToSix(double x, Step step, Far far) {
  double s = 0;
  double x1 = x;
  while (x1 < 6) {
    s += step(x1);
    x1 = x1 + 1;
  }
  return s + far(x1);
}

}  // namespace

double StirlingStep(double x) {
  double v = 1 / (2 * x + 3);
  double y = v * v;
  return y * LogSeriesFraction(y, 3, 2);
}

double StirlingError(double x) {
  if (x >= 1e10) return kTwelfth / (x + 1);
  if (x >= 6) {
    double x1 = x + 1;
    double y = 1 / (x1 * x1);
    double t = (0.02301032301032301 -
                (0.07692307692307693 - (0.350686068964593 - kTail * y) * y) * y) *
               y;
    t = (0.007142857142857143 - (0.010101010101010102 - t) * y) * y;
    t = (0.03333333333333333 - (0.009523809523809525 - t) * y) * y;
    return (1 - t) * kTwelfth / x1;
  }
  if (x == 5) return 0.0138761288230707;
  if (x == 4) return 0.0166446911898212;
  if (x == 3) return 0.0207906721037651;
  if (x == 2) return 0.0276779256849983;
  if (x == 1) return 0.0413406959554093;
  if (x == 0) return 0.0810614667953273;
  if (-1 < x) return StepUpToSix(x, StirlingStep, StirlingError);
  return 1e308;
}

double StirlingStep1(double x) {
  double u = (x + 1) * (x + 2);
  return (StirlingStep(x) - 0.25 / u) / (x + 1.5);
}

double StirlingStep3(double x) {
  double u = (x + 1) * (x + 2);
  double w = 2 * x + 3;
  return -w / (u * u * u);
}

double StirlingStep5(double x) {
  double u = (x + 1) * (x + 2);
  double w = 2 * x + 3;
  double u2 = u * u;
  return -6 * w * (5 * x * x + 15 * x + 12) / (u2 * u2 * u);
}

double StirlingStep7(double x) {
  double u = (x + 1) * (x + 2);
  double w = 2 * x + 3;
  double x2 = x * x;
  double u3 = u * u * u;
  return -120 * w * (14 * x2 * x2 + 84 * x2 * x + 196 * x2 + 210 * x + 87) / (u3 * u3 * u);
}

double StirlingD1(double x) {
  if (x >= 1e10) {
    double x1 = x + 1;
    return -kTwelfth / (x1 * x1);
  }
  if (x >= 6) {
    double x1 = x + 1;
    double y = 1 / (x1 * x1);
    double t = 0.2531135531135531 - (1 - (5.260291034468895 - 17 * kTail * y) * y) * y;
    t = 0.04761904761904762 -
        (0.049999999999999996 - (0.09090909090909091 - y * t) * y) * y;
    t = (0.1 - y * t) * y;
    return (1 - t) * (-kTwelfth) * y;
  }
  if (-1 < x) return StepUpToSix(x, StirlingStep1, StirlingD1);
  return -1e308;
}

double StirlingD3(double x) {
  if (x >= 1e10) {
    double x1 = x + 1;
    double x2 = x1 * x1;
    return -0.5 / (x2 * x2);
  }
  if (x >= 6) {
    double x1 = x + 1;
    double y = 1 / (x1 * x1);
    double t = (1430.7991613755394 - 5814 * kTail * y) * y;
    t = (39.48571428571428 - (210 - t) * y) * y;
    t = (3.6 - (10 - t) * y) * y;
    t = (2 - (2 - t) * y) * y;
    return (6 - t) * (-kTwelfth) * (y * y);
  }
  if (-1 < x) return StepUpToSix(x, StirlingStep3, StirlingD3);
  return -1e308;
}

double StirlingD5(double x) {
  if (x >= 1e10) {
    double x1 = x + 1;
    double x2 = x1 * x1;
    return -10 / (x2 * x2 * x2);
  }
  if (x >= 6) {
    double x1 = x + 1;
    double y = 1 / (x1 * x1);
    double t = (489333.3131904345 - 2441880 * kTail * y) * y;
    t = (8292 - (57120 - t) * y) * y;
    t = (396 - (1560.0000000000002 - t) * y) * y;
    t = (84 - (144 - t) * y) * y;
    return (120 - t) * (-kTwelfth) * (y * y * y);
  }
  if (-1 < x) return StepUpToSix(x, StirlingStep5, StirlingD5);
  return -1e308;
}

double StirlingD7(double x) {
  if (x >= 1e10) {
    double x1 = x + 1;
    double x2 = x1 * x1;
    double x4 = x2 * x2;
    return -420 / (x4 * x4);
  }
  if (x >= 6) {
    double x1 = x + 1;
    double y = 1 / (x1 * x1);
    double t = (205519991.53998247 - 1235591280 * kTail * y) * y;
    t = (2255424 - (19535040 - t) * y) * y;
    t = (61776 - (327600 - t) * y) * y;
    t = (6048 - (15840.000000000002 - t) * y) * y;
    double y2 = y * y;
    return (5040 - t) * (-kTwelfth) * (y2 * y2);
  }
  if (-1 < x) return StepUpToSix(x, StirlingStep7, StirlingD7);
  return -1e308;
}

double StirlingDifference(double a, double b) {
  if (0.03 * (a + b + 1) < a) return StirlingError(a + b) - StirlingError(b);
  double y = a * a;
  double m = a / 2 + b;
  return a * (StirlingD1(m) +
              (y / 24) * (StirlingD3(m) + (y / 80) * (StirlingD5(m) + (y / 168) * StirlingD7(m))));
}

}  // namespace qv::numeric
