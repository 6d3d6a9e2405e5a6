// NumericFunctions: the distribution functions the rest of Quantavue calls.
//
// Normal, exponential, gamma and beta distributions in plain double precision.
// These are the only functions of the module that check their arguments; a value
// outside a distribution's domain throws ValueError, the spreadsheet's #VALUE!.
// No function here returns -0. A NaN argument, or an infinite parameter
// (shape, scale, lambda, a, b) past the domain check, gives NaN.
#pragma once

#include <span>
#include <stdexcept>

namespace qv {

// The spreadsheet error value #VALUE!: no double can hold it, so it travels as an
// exception to whoever asked for the number.
class ValueError : public std::domain_error {
 public:
  ValueError() : std::domain_error("#VALUE!") {}
};

// Standard normal distribution function; relative accuracy in both tails.
double CdfNormal(double x);
// CdfNormal of each element on the calling thread, bit for bit, several elements at a
// time (about twice the speed of one call after another); out at least as long as x.
void CdfNormalOneThread(std::span<const double> x, std::span<double> out);
// Its inverse for 0 < p < 1 (Algorithm AS 241); p outside (0, 1) throws ValueError.
double InverseNormal(double p);

// 1 - exp(-lambda x); lambda <= 0 throws.
double CdfExponential(double x, double lambda);
// Gamma distribution function and density; shape <= 0 or scale <= 0 throws.
double CdfGamma(double x, double shape, double scale);
double PdfGamma(double x, double shape, double scale);
// Beta distribution function (regularised incomplete beta) and density on [0, 1];
// a <= 0 or b <= 0 throws.
double CdfBeta(double x, double a, double b);
double PdfBeta(double x, double a, double b);

// Array forms (arrays.cpp): out[i] is the scalar function of x[i], bit for bit, worked
// out on two threads for long arrays. out must be as long as x; parameters are checked
// before anything is written.
void CdfNormal(std::span<const double> x, std::span<double> out);
void CdfExponential(std::span<const double> x, double lambda, std::span<double> out);
void CdfGamma(std::span<const double> x, double shape, double scale, std::span<double> out);
void CdfBeta(std::span<const double> x, double a, double b, std::span<double> out);

}  // namespace qv
