// Distribution entry points: exponential, gamma and beta distribution functions and the
// gamma and beta densities, as the rest of the program calls them.
//
// Method: each checks its arguments against the domain of the distribution (throwing
// ValueError, the spreadsheet's #VALUE!), settles the ends of the support, and hands the
// inside to the kernels; the densities are the single Poisson or binomial term scaled by
// a logarithm added inside its exponent, so that they neither overflow nor lose the
// term's relative accuracy. Every result passes through ClearNegativeZero.
//
// Accuracy: that of the kernels (GammaLower, BetaLower, PoissonTerm, BinomialTerm);
// CdfExponential is exact to an ulp or two through exp(x) - 1.
#include <cmath>
#include <limits>

#include "numeric_functions.h"
#include "numeric_internal.h"

namespace qv {

using numeric::ClearNegativeZero;

namespace {

bool AnyNan(double a, double b, double c = 0) {
  return std::isnan(a) || std::isnan(b) || std::isnan(c);
}

// An infinite parameter makes a degenerate distribution: it has no answer but NaN.
bool Degenerate(double p1, double p2 = 1) { return std::isinf(p1) || std::isinf(p2); }

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

}  // namespace

double CdfExponential(double x, double lambda) {
  if (AnyNan(x, lambda)) return kNan;
  if (lambda <= 0) throw ValueError();
  if (Degenerate(lambda)) return kNan;
  if (x >= 0) return ClearNegativeZero(-numeric::ExpMinusOne(-lambda * x));
  return 0;
}

double CdfGamma(double x, double shape, double scale) {
  if (AnyNan(x, shape, scale)) return kNan;
  if (shape <= 0 || scale <= 0) throw ValueError();
  if (Degenerate(shape, scale)) return kNan;
  if (x <= 0) return 0;
  double xs = x / scale;
  if (std::isinf(xs)) return 1;
  return ClearNegativeZero(numeric::GammaLower(xs, shape));
}

double PdfGamma(double x, double shape, double scale) {
  if (AnyNan(x, shape, scale)) return kNan;
  if (shape <= 0 || scale <= 0) throw ValueError();
  if (Degenerate(shape, scale)) return kNan;
  if (x < 0) return 0;
  if (x == 0) {
    if (shape < 1) throw ValueError();
    return shape == 1 ? 1 / scale : 0;
  }
  if (std::isinf(x)) return 0;
  double xs = x / scale;
  return ClearNegativeZero(
      numeric::PoissonTerm(shape, xs, xs - shape, std::log(shape) - std::log(x)));
}

double CdfBeta(double x, double a, double b) {
  if (AnyNan(x, a, b)) return kNan;
  if (a <= 0 || b <= 0) throw ValueError();
  if (Degenerate(a, b)) return kNan;
  if (x <= 0) return 0;
  if (x >= 1) return 1;
  return ClearNegativeZero(numeric::BetaLower(x, a, b));
}

double PdfBeta(double x, double a, double b) {
  if (AnyNan(x, a, b)) return kNan;
  if (a <= 0 || b <= 0) throw ValueError();
  if (Degenerate(a, b)) return kNan;
  if (x < 0 || x > 1) return 0;
  if ((x == 0 && a < 1) || (x == 1 && b < 1)) throw ValueError();
  if (x == 0 && a == 1) return b;
  if (x == 1 && b == 1) return a;
  if (x == 0 || x == 1) return 0;
  double mx = numeric::MaxValue(a, b);
  double mn = numeric::MinValue(a, b);
  double scale_in = std::log(mx / (mx + mn)) + std::log(mn) - std::log((1 - x) * x);
  return ClearNegativeZero(numeric::BinomialTerm(a, b, x, 1 - x, (a + b) * x - a, scale_in));
}

}  // namespace qv
