// Lilliefors test: the Kolmogorov-Smirnov distance to a normal distribution fitted to
// the sample, judged against the 5% critical value.
//
// What: D = max over the steps of |F(z) - E| at each step's upper edge and
// |F(z - 0.0001) - E| at its lower edge, F the standard normal cdf of the z-score with
// the sample mean and standard deviation (divisor n - 1), E the empirical distribution.
// Method: H. W. Lilliefors, JASA 62 (1967) 399-402, for the critical values: the table
// up to n = 30, 0.886 / sqrt(n) above.
// Notes: the cdf just left of a value is taken 0.0001 to its left in z. Tied values get
// the window's own steps (LillieforsSteps), and the first value's lower edge is not
// measured; both are kept as the window has always shown them. There is no p value.
#include <algorithm>
#include <cmath>

#include "normality_tests.h"
#include "number_text.h"
#include "numeric_functions.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

constexpr double kLfTable[] = {
    0.381,  0.337,  0.319,  0.3,    0.285,  0.271,  0.258,  0.249,  0.242,  0.234,  // 4..13
    0.227,  0.22,   0.213,  0.206,  0.2,    0.195,  0.19,   0.1866, 0.1832, 0.1798,  // 14..23
    0.1764, 0.173,  0.1706, 0.1682, 0.1658, 0.1634, 0.161,                          // 24..30
};
constexpr double kLeftShift = 0.0001;

}  // namespace

double LfCritical(std::int64_t n) {
  if (n < 4) return 0.0;
  if (n <= 30) return kLfTable[n - 4];
  return 0.886 / std::sqrt(static_cast<double>(n));
}

std::vector<double> LillieforsSteps(std::span<const double> x) {
  const std::size_t n = x.size();
  std::vector<double> e(n);
  for (std::size_t i = 0; i < n; ++i) e[i] = static_cast<double>(i + 1) / static_cast<double>(n);
  // A run of equal values is settled when the first different value after it is met.
  std::size_t start = 0;
  for (std::size_t i = 1; i < n; ++i) {
    if (x[i] == x[i - 1]) continue;
    const std::size_t end = i - 1;
    if (end >= start + 2)
      for (std::size_t k = start; k + 2 <= end; ++k) e[k] = e[end - 1];
    start = i;
  }
  return e;
}

Bell LillieforsBell(double d, double critical) { return d < critical ? Bell::Yes : Bell::No; }

LillieforsResult Lilliefors(std::span<const double> x, char decimalMark) {
  LillieforsResult r;
  const std::size_t n = x.size();
  if (n < 4) {
    // Not a refusal: the boxes show zeros and the picture stays as it was.
    r.notice = kSampleSizeNotice;
  } else {
    r.critical = LfCritical(static_cast<std::int64_t>(n));
    const double m = *Average(x);
    const double s = *Stdev(x);
    if (s == 0.0) {
      r.refused = true;
      r.notice = kZeroDeviationNotice;
      r.bell = Bell::No;
      return r;
    }
    const std::vector<double> e = LillieforsSteps(x);
    double d = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
      const double z = (x[i] - m) / s;
      d = std::max(d, std::fabs(CdfNormal(z) - e[i]));
      // The lower edge of step i is measured against the step before it.
      if (i > 0) d = std::max(d, std::fabs(CdfNormal(z - kLeftShift) - e[i - 1]));
    }
    r.d = d;
    r.bell = LillieforsBell(r.d, r.critical);
  }
  r.testStat = FormatFixed(r.d, 4, decimalMark);
  r.criticalBox = FormatFixed(r.critical, 4, decimalMark);
  r.pval = "NA";
  return r;
}

}  // namespace qv
