// Anderson-Darling test for normality with mean and variance estimated from the sample.
//
// What: A^2 = -n - (1/n) sum (2i - 1) (ln F(i) + ln(1 - F(n + 1 - i))), F the normal cdf
// of the standardised sorted values; A* = A^2 (1 + 0.75/n + 2.25/n^2); p from A* by the
// four exponential pieces of R. B. D'Agostino and M. A. Stephens, Goodness-of-Fit
// Techniques (1986), for the case of both parameters estimated. Always at the 5% level.
// Method: T. W. Anderson and D. A. Darling, JASA 49 (1954) 765-769.
// Notes: every figure is held in 32 bits (count, mean, deviation, F, 1 - F, the terms,
// their sum, A, A*, p): each is worked out in double and rounded to float where it is
// stored. This is intended; the digits on display depend on it. The sum of the terms is
// about -n^2 while A is of order 1, so the 24-bit sum holds A only in steps of up to
// n 2^-23: 0.0002 at n = 2,000, 0.002 at 32,767, 0.125 at 1,048,576. A term whose F or
// 1 - F is 0 in 32 bits has no logarithm and is left out.
#include <algorithm>
#include <cmath>
#include <vector>

#include "normality_tests.h"
#include "number_text.h"
#include "numeric_functions.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

constexpr double kADLevel = 0.05;

float Stored(double x) { return static_cast<float>(x); }

}  // namespace

float AndersonDarlingPValue(float aStar) {
  const double a = aStar;
  // The thresholds are floats, as A* is.
  if (aStar >= 0.6f && aStar < 13.0f) return Stored(std::exp(1.2937 - 5.709 * a + 0.0186 * a * a));
  if (aStar >= 0.34f && aStar < 0.6f) return Stored(std::exp(0.9177 - 4.279 * a - 1.38 * a * a));
  if (aStar >= 0.2f && aStar < 0.34f) return Stored(1.0 - std::exp(-8.318 + 42.796 * a - 59.938 * a * a));
  if (aStar < 0.2f) return Stored(1.0 - std::exp(-13.436 + 101.14 * a - 223.73 * a * a));
  return 0.0f;
}

AndersonDarlingResult AndersonDarling(std::span<const double> sample, char decimalMark) {
  AndersonDarlingResult r;
  const std::optional<double> sd = Stdev(sample);
  const std::optional<double> mean = Average(sample);
  if (!sd || !mean) {  // a single value has no deviation at all, huge values none we can hold
    r.refused = true;
    r.notice = sample.size() < 2 ? kTooFewObservationsNotice : kTooLargeNotice;
    r.bell = Bell::No;
    return r;
  }
  r.n = Stored(static_cast<double>(sample.size()));
  r.mean = Stored(*mean);
  r.sd = Stored(*sd);
  if (r.sd == 0.0f) {
    r.refused = true;
    r.notice = kZeroDeviationNotice;
    r.bell = Bell::No;
    return r;
  }
  // The test holds mean and deviation in 32 bits: beyond 3.4e38 they are no numbers.
  if (!std::isfinite(r.mean) || !std::isfinite(r.sd)) {
    r.refused = true;
    r.notice = kTooLargeNotice;
    r.bell = Bell::No;
    return r;
  }

  std::vector<double> sortedCopy;
  if (!std::is_sorted(sample.begin(), sample.end())) {
    sortedCopy.assign(sample.begin(), sample.end());
    std::sort(sortedCopy.begin(), sortedCopy.end());
    sample = sortedCopy;
  }
  const std::size_t n = sample.size();
  const double m = r.mean, s = r.sd;

  std::vector<float> F(n);
  for (std::size_t i = 0; i < n; ++i) F[i] = Stored(CdfNormal((sample[i] - m) / s));

  // H is 1 - F sorted ascending. F rises with the sorted values, so H is 1 - F read
  // backwards; should F ever fall by a rounding, H is sorted outright.
  std::vector<float> H(n);
  for (std::size_t i = 0; i < n; ++i) H[i] = Stored(1.0 - static_cast<double>(F[n - 1 - i]));
  if (!std::is_sorted(H.begin(), H.end())) std::sort(H.begin(), H.end());

  NeumaierSum sum;
  for (std::size_t i = 0; i < n; ++i) {
    if (H[i] == 0.0f || F[i] == 0.0f) {
      ++r.skippedTerms;
      continue;
    }
    const double weight = 2.0 * static_cast<double>(i + 1) - 1.0;
    sum.add(static_cast<double>(Stored(weight * (std::log(static_cast<double>(H[i])) +
                                                 std::log(static_cast<double>(F[i]))))));
  }
  const float total = Stored(sum.value());
  const double nn = r.n;
  r.a = Stored(-static_cast<double>(total) / nn - nn);
  r.aStar = Stored(static_cast<double>(r.a) * (1.0 + 0.75 / nn + 2.25 / (nn * nn)));
  if (!std::isfinite(r.a) || !std::isfinite(r.aStar)) {
    r.refused = true;
    r.notice = kTooLargeNotice;
    r.bell = Bell::No;
    return r;
  }
  r.p = AndersonDarlingPValue(r.aStar);

  r.testStat = FormatFixed(r.a, 4, decimalMark);
  r.pval = FormatFixed(r.p, 4, decimalMark);
  // The float p is compared with the double level as it is: 0.05f lies above 0.05.
  r.bell = BellForP(r.p, kADLevel);
  return r;
}

}  // namespace qv
