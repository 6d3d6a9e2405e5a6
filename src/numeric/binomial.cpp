// Binomial term and tails with real-valued counts: i successes and j failures in i + j
// trials of success probability p, failure probability q = 1 - p passed on its own so
// that a p near 1 loses no digits. Gamma(n + 1) stands for n!, so the tails are the
// regularised incomplete beta function: P(X <= i) = I(q; j, i + 1).
//
// Method: the term Gamma(i + j + 1) / (Gamma(i + 1) Gamma(j + 1)) p^i q^j is written with
// StirlingError and ln(1 + c) - c of the relative distances of the mean from each count,
// the distance d = (i + j) p - i being carried exactly, so that its exponent keeps its
// digits (the saddle-point form of Catherine Loader's "Fast and accurate computation of
// binomial probabilities", 2000). The tail is that term times a continued fraction for
// the ratio of tail to term, the tail being first turned to the side where it is the
// smaller, and numb terms near the mode added by hand so that the fraction converges
// quickly. Large counts near the mean go to BinomialExpansion instead.
//
// Accuracy: a few tens of ulp near the mean; in tails near 1e-300 each ulp of the
// exponent (about -690) is 1.1e-13 of the result, and the worst seen is 1.9e-13.
#include <cmath>
#include <utility>

#include "numeric_internal.h"

namespace qv::numeric {

double BinomialTerm(double i, double j, double p, double q, double d, double logAdd) {
  if (i == 0 && j <= 0) return std::exp(logAdd);
  if (i <= -1 || j < 0) return 0;
  double c1 = i + 1 + j;
  double ii, jj, pp, f;
  // Work on the smaller probability; the term itself is symmetric.
  if (p < q) {
    ii = i;
    jj = j;
    pp = p;
    f = d;
  } else {
    ii = j;
    jj = i;
    pp = q;
    f = -d;
  }
  double c3 = (f - (1 - pp)) / (ii + 1);
  double c4 = -(pp + f) / (jj + 1);
  double v, r;
  if (c3 >= kLogSwitch) {
    double lc = StirlingError(i + j) - StirlingError(ii) - StirlingError(jj);
    v = LogOnePlusMinusX(c3) * ii - c3 + lc + LogOnePlusMinusX(c4) * jj - c4;
    r = std::sqrt(c1 / (jj + 1) / (ii + 1));
  } else {
    if (ii == 0) return std::exp(LogOnePlus(-pp) * jj + logAdd);
    if (pp == 0 && ii > 0) return 0;
    double lc = StirlingError(i + j) - StirlingError(ii) - StirlingError(jj);
    double t = std::log(pp * c1 / (ii + 1));
    v = (t - c3) * ii + lc - c3 + LogOnePlusMinusX(c4) * jj - c4;
    r = std::sqrt(c1 / ((jj + 1) * (ii + 1)));
  }
  return std::exp(v + logAdd) * r * kInvRootTwoPi;
}

double BinomialFraction(double i, double j, double p, double q, double d, bool upper) {
  double i1;
  if (-1 < i && i < 0) {
    // A count in (-1, 0) stands for the count -i - 1; the term is taken at -i below.
    i1 = -i;
    i = i1 - 1;
  } else {
    i1 = i + 1;
  }
  double m = i + 3 + j;
  double tol;
  bool swap;
  if (i < 0) {
    tol = 1e-15;
    swap = false;
  } else {
    tol = 1e-14;
    // Compute the smaller of the two tails; the other is 1 minus it.
    swap = p > q ? (j + 1 <= m * q) : (i + 2 >= m * p);
  }
  if (swap) {
    double old_j = j;
    j = i1;
    i = old_j - 1;
    i1 = old_j;
    std::swap(p, q);
    d = 1 - d;
  }
  auto finish = [&](double value) { return swap == upper ? value : 1 - value; };

  if (-1 < i && (j <= 0 || p == 0)) return finish(1);
  double prob;
  if ((-1 < i && i < 0) || (i == -1 && i1 > 0)) {
    prob = BinomialTerm(i1, j, p, q, (i1 + j) * p - i1, 0) * i1 / ((i1 + j) * p);
    d = (j + i) * p - i;
  } else {
    prob = BinomialTerm(i, j, p, q, d, 0);
    if (i <= -1 || j < 0 || (i == 0 && j <= 0)) return finish(prob);
  }
  if (prob == 0) return finish(0);

  int numb;
  if (i > 0) {
    numb = WholeCount(6 * std::sqrt(p + 0.5) * std::exp(std::log(m * p * q) / 3));
    numb = WholeCount(numb - d);
    if (numb > i) numb = WholeCount(i);
  } else {
    numb = WholeCount(i);
  }
  if (numb < 0) numb = 0;

  double a1 = 0, b1 = 1, c1 = 0, q1 = q + 1;
  double a2 = (i - numb) * q, c2 = a2;
  double b2 = d + numb + 1, c3 = b2;
  for (int pass = 0; pass < kMaxPasses && std::fabs(a2 * b1 - a1 * b2) > std::fabs(tol * b1 * a2);
       ++pass) {
    c1 = c1 + 1;
    c2 = c2 - q;
    double t = c1 * c2;
    c3 = c3 + q1;
    a1 = c3 * a2 + t * a1;
    b1 = c3 * b2 + t * b1;
    c1 = c1 + 1;
    c2 = c2 - q;
    t = c1 * c2;
    c3 = c3 + q1;
    a2 = c3 * a1 + t * a2;
    b2 = c3 * b1 + t * b2;
    if (std::fabs(b2) > kScaleUp) {
      Rescale(kScaleDown, a1, b1, a2, b2);
    } else if (std::fabs(b2) < kScaleDown) {
      Rescale(kScaleUp, a1, b1, a2, b2);
    }
    if (c2 < 0 && tol > 1e-15) tol = 1e-15;
  }
  double f = a2 / b2;
  double c4 = (i - numb + 1) * q;
  double c5 = (numb + j) * p;
  for (; numb > 0; --numb) {
    f = (c4 / c5) * (f + 1);
    c4 = c4 + q;
    c5 = c5 - p;
  }
  return finish((f + 1) * prob);
}

namespace {

double BinomialTail(double i, double j, double p, double q, double d, bool upper) {
  double m = MinValue(i, j);
  if (0.1 * m > std::fabs(d) && m > 50) return BinomialExpansion(j - 1, i, d, upper);
  return BinomialFraction(i, j, p, q, d, upper);
}

}  // namespace

double BinomialLower(double i, double j, double p, double q, double d) {
  return BinomialTail(i, j, p, q, d, false);
}

double BinomialUpper(double i, double j, double p, double q, double d) {
  return BinomialTail(i, j, p, q, d, true);
}

}  // namespace qv::numeric
