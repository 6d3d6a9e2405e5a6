// Beta distribution function: the regularised incomplete beta function I(x; a, b) for
// a, b > 0 and 0 < x < 1.
//
// Method: for a shape below 1 with x near the end of the support where that shape rules,
// the power series x^a (1 - x)^b / (a B(a, b)) (1 - a (b - 1) sum ...) in x, its
// prefactor built from ln Gamma(1 + a) and Stirling corrections so that no Gamma
// function of a large argument is formed; otherwise the identity with the binomial
// tail, I(x; a, b) = P(more than a - 1 successes in a + b - 1 trials of probability x),
// with real counts, computed by the binomial routines (continued fraction, or the
// expansion for large counts near the mean).
//
// Accuracy (against mpmath, shapes 0.01 to 1e5): 6.6e-14 worst where I >= 1e-100 and
// x I'(x) / I(x) < 90. The binomial route forms (a + b - 1) x - a + 1 in double, which
// moves x by up to an ulp; where I is that sensitive to x (large shapes, x I' / I up to
// 1e5) the error grows with it: 7.2e-12 worst, at a = 1e5. Tails near 1e-300 add some
// hundreds of ulp for the size of their exponent.
#include <cmath>

#include "numeric_internal.h"

namespace qv::numeric {

double BetaSmallSeries(double x, double a, double b) {
  double t = x;
  double c = 2;
  double s = x / (a + 1);
  for (int pass = 0; pass < kMaxPasses && std::fabs(5e-16 * s) < std::fabs(t); ++pass) {
    t = (b - c) * (-t) * x / c;
    s = s + t / (c + a);
    c = c + 1;
  }
  return (b - 1) * a * s;
}

double BetaSmallShape(double x, double a, double b, bool upper) {
  if (x > 0.5) return BetaSmallShape(1 - x, b, a, !upper);
  double t1 = LogOnePlusMinusX(a / (b + 1));
  double t2 = std::log((b + 1) * x);
  double t3 = LogGammaOnePlus(a);
  double v = ((a - 0.5) / (b + 1) + t2) * a + (a + b + 0.5) * t1 - t3;
  if (upper) {
    double u = StirlingDifference(a, b);
    double e = -ExpMinusOne(u + v);
    double s = BetaSmallSeries(x, a, b);
    double e2 = (1 - e) * s + e;
    return (a / (a + b)) * (1 - e2) + e2;
  }
  return std::exp(StirlingError(a + b) - StirlingError(b) + v) * (1 - BetaSmallSeries(x, a, b)) *
         (b / (a + b));
}

double BetaLower(double x, double a, double b) {
  if (a < 1 && b < 1) return BetaSmallShape(x, a, b, false);
  if ((b + 1) * x <= 1 && a < 1) return BetaSmallShape(x, a, b, false);
  if ((a + 1) * x >= a && b < 1) return BetaSmallShape(1 - x, b, a, true);
  // Counts in (-1, 0): the binomial routines move them to the positive count.
  if (a < 1) return BinomialUpper(-a, b, x, 1 - x, 0);
  if (b < 1) return BinomialLower(-b, a, 1 - x, x, 0);
  return BinomialUpper(a - 1, b, x, 1 - x, (a + b - 1) * x - a + 1);
}

}  // namespace qv::numeric
