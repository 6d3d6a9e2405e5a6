// Jarque-Bera test: the moment test of the normality window.
//
// What: JB = n ((S3/n)^2 / 6 + (S4/n - 3)^2 / 24) with S3, S4 the sums of the third and
// fourth powers of z = (x - mean) / s, s the sample standard deviation (divisor n - 1),
// judged on the chi-square distribution with 2 degrees of freedom, whose upper tail is
// exp(-x/2) and whose quantile is -2 ln p.
// Method: C. M. Jarque and A. K. Bera, Economics Letters 6 (1980) 255-259. The z-scores
// use s, not the maximum-likelihood deviation, so S3/n and S4/n run slightly below the
// moments of the paper; the window has always shown it so.
// Notes: fewer than 31 values are refused, without a message: the refusal text takes the
// place of the statistic. The p value is held as its four-decimal text and shown with
// three decimals, two roundings in a row.
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "normality_tests.h"
#include "number_text.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

constexpr std::size_t kJBMinimumCount = 31;

// x rounded to 2 decimals with halves to the even digit, on the 15 significant digits
// the spreadsheet holds of it.
double RoundHalfEven2(double x) {
  if (x == 0.0 || !std::isfinite(x)) return x == 0.0 ? 0.0 : x;
  char buf[48];
  auto res = std::to_chars(buf, buf + sizeof buf, std::fabs(x), std::chars_format::scientific, 14);
  *res.ptr = '\0';
  char digits[16];
  digits[0] = buf[0];
  std::memcpy(digits + 1, buf + 2, 14);
  digits[15] = '\0';
  const int exp10 = std::atoi(std::strchr(buf, 'e') + 1);
  const int keep = exp10 + 1 + 2;  // digits up to the second decimal
  long long q = 0;
  if (keep >= 15) {
    for (int i = 0; i < 15; ++i) q = q * 10 + (digits[i] - '0');
    for (int i = 15; i < keep; ++i) q *= 10;
  } else if (keep >= 0) {
    for (int i = 0; i < keep; ++i) q = q * 10 + (digits[i] - '0');
    // Compare the dropped digits with one half.
    int cmp = 0;
    if (digits[keep] > '5') {
      cmp = 1;
    } else if (digits[keep] < '5') {
      cmp = -1;
    } else {
      for (int i = keep + 1; i < 15 && cmp == 0; ++i)
        if (digits[i] != '0') cmp = 1;
    }
    if (cmp > 0 || (cmp == 0 && (q & 1))) ++q;
  }
  const double r = static_cast<double>(q) / 100.0;
  return x < 0 ? -r : r;
}

}  // namespace

std::optional<double> JBStatArray(std::span<const double> sample) {
  if (sample.size() < kJBMinimumCount) return std::nullopt;
  const double n = static_cast<double>(sample.size());
  const std::optional<double> mean = Average(sample), sd = Stdev(sample);
  // A mean or deviation past the largest double: no statistic, which the test refuses.
  if (!mean || !sd) return std::numeric_limits<double>::quiet_NaN();
  const double m = *mean, s = *sd;
  double s3 = 0.0, s4 = 0.0;
  if (s != 0.0) {
    for (double x : sample) {
      double z = (x - m) / s;
      // x - m past the largest double: the same quotient from halves.
      if (!std::isfinite(z) && std::isfinite(x)) z = (x / 2 - m / 2) / (s / 2);
      const double z2 = z * z;
      s3 += z2 * z;
      s4 += z2 * z2;
    }
  }
  const double skew = s3 / n;
  const double kurt = s4 / n - 3.0;
  return n * (skew * skew / 6.0 + kurt * kurt / 24.0);
}

std::optional<std::string> JBpValueArray(std::optional<double> statistic, char decimalMark) {
  if (!statistic) return std::nullopt;
  return FormatFixed(std::exp(-*statistic / 2.0), 4, decimalMark);
}

double JBCriticalValue(double level) {
  // ChiInv refuses p outside (0, 1]; the caller passes its error over and keeps 0.
  if (!(level > 0.0 && level <= 1.0)) return 0.0;
  return RoundHalfEven2(-2.0 * std::log(level));
}

JarqueBeraResult JarqueBera(std::span<const double> sample, std::int64_t rangeCount, double level,
                            char decimalMark) {
  JarqueBeraResult r;
  r.statistic = JBStatArray(sample);
  const std::optional<std::string> pText = JBpValueArray(r.statistic, decimalMark);
  if (!r.statistic) r.jbFew = kJBTooFewText;

  const std::optional<double> s = Stdev(sample);
  if (sample.size() < 2 || (s && *s == 0.0)) {
    r.refused = true;
    r.notice = s ? kZeroDeviationNotice : kTooFewObservationsNotice;
    r.bell = Bell::No;
    return r;
  }
  // A mean or deviation past the largest double leaves the statistic no number.
  if (!s || !std::isfinite(*s) || (r.statistic && !std::isfinite(*r.statistic))) {
    r.refused = true;
    r.notice = kTooLargeNotice;
    r.bell = Bell::No;
    return r;
  }

  if (pText) r.p = Val(*pText, decimalMark);
  // A refused statistic has no p value, which counts as 0: rejected at every level.
  r.bell = r.p ? BellForP(*r.p, level) : Bell::No;
  r.critical = JBCriticalValue(level);
  r.testStat = r.statistic ? FormatFixed(*r.statistic, 4, decimalMark) : std::string(kJBTooFewText);
  r.criticalBox = FormatFixed(r.critical, 4, decimalMark);
  r.pval = r.p ? FormatFixed(*r.p, 3, decimalMark) : std::string();
  // The whole range decides "NA", not the (possibly truncated) sample.
  if (rangeCount <= 30) r.testStat = r.criticalBox = r.pval = "NA";
  return r;
}

}  // namespace qv
