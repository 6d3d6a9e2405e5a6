// Kernels behind numeric_functions.h, private to the module; the tests reach them here.
//
// None of these checks its arguments: the entry points keep them in range. Every loop
// ends by convergence and is also bounded by kMaxPasses, so that a NaN or an infinity
// that slips through ends the loop instead of hanging the program.
#pragma once

#include <climits>
#include <cmath>
#include <span>

namespace qv::numeric {

// Continued fractions rescale when a denominator passes 2^256 (as stored, 15 figures).
inline constexpr double kScaleUp = 1.15792089237316e77;
inline constexpr double kScaleDown = 8.63616855509444e-78;
// Scales the two convergents of a continued fraction together, keeping their ratio.
inline void Rescale(double by, double& a1, double& b1, double& a2, double& b2) {
  a1 *= by;
  b1 *= by;
  a2 *= by;
  b2 *= by;
}
inline constexpr double kLogRootTwoPi = 0.918938533204673;  // ln sqrt(2 pi)
inline constexpr double kInvRootTwoPi = 0.398942280401433;  // 1 / sqrt(2 pi)
// Below this argument ln(1 + x) - x is better formed directly from the logarithm.
inline constexpr double kLogSwitch = -0.79149064;

// Far above any pass count a finite argument needs: under a hundred in the program's
// use, some thousands for the log series at the very end of its range.
inline constexpr int kMaxPasses = 100000;

// Int(v) held in a 32-bit count: the largest whole number not above v, saturated at
// the ends of the range, 0 for a NaN.
inline int WholeCount(double v) {
  if (!(v == v)) return 0;
  double f = std::floor(v);
  if (f >= static_cast<double>(INT_MAX)) return INT_MAX;
  if (f <= static_cast<double>(INT_MIN)) return INT_MIN;
  return static_cast<int>(f);
}

// elementary.cpp: small forms that keep their digits.
double MinValue(double a, double b);
double MaxValue(double a, double b);
bool IsEven(double x);
double ClearNegativeZero(double x);
double ExpMinusOne(double x);                                // exp(x) - 1
double LogSeriesFraction(double x, double i, double d);      // sum x^k / (i + k d)
double LogOnePlus(double x);                                 // ln(1 + x)
double LogOnePlusMinusX(double x);                           // ln(1 + x) - x

// stirling.cpp: the error of Stirling's formula, at x + 1, and its derivatives.
double StirlingError(double x);
double StirlingStep(double x);  // StirlingError(x) - StirlingError(x + 1)
double StirlingD1(double x);
double StirlingD3(double x);
double StirlingD5(double x);
double StirlingD7(double x);
double StirlingStep1(double x);
double StirlingStep3(double x);
double StirlingStep5(double x);
double StirlingStep7(double x);
double StirlingDifference(double a, double b);  // StirlingError(a + b) - StirlingError(b)

// normal.cpp
double NormalLower(double x);
// NormalLower of each element, bit for bit, many elements at a time.
void NormalLowerMany(std::span<const double> x, std::span<double> out);

// gamma_poisson.cpp: Poisson tails with real counts, and the incomplete gamma function.
double PoissonTerm(double x, double y, double d, double logAdd);
double PoissonLowerTail(double k, double y, double d);
double PoissonUpperFraction(double k, double y, double d);
double PoissonExpansion(double a, double d);
double PoissonUpperTail(double k, double y, double d);
double LogGammaOnePlus(double a);
double GammaSmallSeries(double x, double a);
double GammaSmallShape(double x, double a);
double GammaLower(double x, double a);

// binomial.cpp: binomial term and tails with real counts.
double BinomialTerm(double i, double j, double p, double q, double d, double logAdd);
double BinomialFraction(double i, double j, double p, double q, double d, bool upper);
double BinomialLower(double i, double j, double p, double q, double d);
double BinomialUpper(double i, double j, double p, double q, double d);

// binomial_expansion.cpp: large counts near the mean.
double StudentTail(double p, double q, double lq, double k, double& density);
double BinomialExpansion(double a, double b, double d, bool upper);

// beta.cpp
double BetaSmallSeries(double x, double a, double b);
double BetaSmallShape(double x, double a, double b, bool upper);
double BetaLower(double x, double a, double b);

}  // namespace qv::numeric
