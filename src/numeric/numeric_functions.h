// NumericFunctions: the distribution functions the rest of Quantavue calls.
//
// Normal, exponential, gamma and beta distributions in plain double precision.
// These are the only functions of the module that check their arguments; a value
// outside a distribution's domain throws ValueError, the spreadsheet's #VALUE!.
// No function here returns -0. A NaN argument, or an infinite parameter
// (shape, scale, lambda, a, b) past the domain check, gives NaN.
#pragma once

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

}  // namespace qv
