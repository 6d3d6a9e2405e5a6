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
// The work is CdfNormal, twice per value: it goes in one pass without working arrays,
// the two halves of a large sample on two threads, equal values worked out once, and
// the cdf taken many values at a time (CdfNormalOneThread); D has the bits of the plain
// loop whatever the split, since the largest of the distances does not depend on order.
// Values whose mean, deviation or z-scores no double holds are refused, never shown as
// a distance.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <thread>

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

namespace {

// The z-scores go to CdfNormal in blocks of this many, each value and its left shift.
constexpr std::size_t kBlock = 512;
// Below this many values a second thread costs more than it saves.
constexpr std::size_t kSplitAt = 16384;

// The run of equal values around x[i]: its first and last index.
struct Run {
  std::size_t first, last;
};

Run RunAround(std::span<const double> x, std::size_t i) {
  Run r{i, i};
  while (r.first > 0 && x[r.first - 1] == x[i]) --r.first;
  while (r.last + 1 < x.size() && x[r.last + 1] == x[i]) ++r.last;
  return r;
}

// The largest distance over the steps from..to - 1, as LillieforsSteps and the loop of
// the window define it, without the arrays: the steps are worked out as the values go
// by. NaN if any distance is no number (values the z-scores cannot hold).
double LargestDistance(std::span<const double> x, double m, double s, std::size_t from, std::size_t to) {
  const std::size_t n = x.size();
  const double dn = static_cast<double>(n);
  double cdf[2 * kBlock];
  double z[2 * kBlock];
  double d = 0.0;
  bool number = true;
  // E(i) with the window's rule for ties: in a run s..e followed by another value,
  // E(s)..E(e - 2) take E(e - 1) = e / n.
  auto stepOf = [&](const Run& run, std::size_t i) {
    const bool lifted = run.last >= run.first + 2 && run.last + 1 < n && i + 2 <= run.last;
    return static_cast<double>(lifted ? run.last : i + 1) / dn;
  };
  Run run = RunAround(x, from);
  double previous = from > 0 ? stepOf(RunAround(x, from - 1), from - 1) : 0.0;
  std::uint16_t slot[kBlock];  // where value at + k finds its two cdf values
  for (std::size_t at = from; at < to; at += kBlock) {
    const std::size_t count = std::min(kBlock, to - at);
    // Equal values have equal z-scores: each distinct value of the block is worked out
    // once (a sample of figures rounded to a few decimals holds many ties).
    std::size_t distinct = 0;
    for (std::size_t k = 0; k < count; ++k) {
      const double v = x[at + k];
      if (k > 0 && v == x[at + k - 1]) {
        slot[k] = slot[k - 1];
        continue;
      }
      double zk = (v - m) / s;
      // x - m past the largest double: the same quotient from halves.
      if (!std::isfinite(zk) && std::isfinite(v)) zk = (v / 2 - m / 2) / (s / 2);
      z[distinct] = zk;
      slot[k] = static_cast<std::uint16_t>(distinct++);
    }
    for (std::size_t k = 0; k < distinct; ++k) z[distinct + k] = z[k] - kLeftShift;
    CdfNormalOneThread(std::span<const double>(z, 2 * distinct), std::span<double>(cdf, 2 * distinct));
    for (std::size_t k = 0; k < count; ++k) {
      const std::size_t i = at + k;
      if (i > run.last) run = RunAround(x, i);
      const double e = stepOf(run, i);
      const double upper = std::fabs(cdf[slot[k]] - e);
      number = number && upper == upper;
      d = std::max(d, upper);
      // The lower edge of step i is measured against the step before it.
      if (i > 0) {
        const double lower = std::fabs(cdf[distinct + slot[k]] - previous);
        number = number && lower == lower;
        d = std::max(d, lower);
      }
      previous = e;
    }
  }
  return number ? d : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace

LillieforsResult Lilliefors(std::span<const double> x, char decimalMark) {
  LillieforsResult r;
  const std::size_t n = x.size();
  if (n < 4) {
    // Not a refusal: the boxes show zeros and the picture stays as it was.
    r.notice = kSampleSizeNotice;
  } else {
    r.critical = LfCritical(static_cast<std::int64_t>(n));
    const std::optional<double> mean = Average(x), sd = Stdev(x);
    const double m = mean.value_or(0.0), s = sd.value_or(0.0);
    if (!mean || !sd || !std::isfinite(m) || !std::isfinite(s)) {
      r.refused = true;
      r.notice = kTooLargeNotice;
      r.bell = Bell::No;
      return r;
    }
    if (s == 0.0) {
      r.refused = true;
      r.notice = kZeroDeviationNotice;
      r.bell = Bell::No;
      return r;
    }
    // The largest of the distances is the same whichever part of the sample is taken
    // first, so the two halves go to two threads.
    double d;
    if (n < kSplitAt) {
      d = LargestDistance(x, m, s, 0, n);
    } else {
      double upperHalf = 0.0;
      std::thread second([&] { upperHalf = LargestDistance(x, m, s, n / 2, n); });
      d = LargestDistance(x, m, s, 0, n / 2);
      second.join();
      d = std::isnan(upperHalf) ? upperHalf : std::max(d, upperHalf);
    }
    if (std::isnan(d)) {
      r.refused = true;
      r.notice = kTooLargeNotice;
      r.bell = Bell::No;
      return r;
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
