// Binomial expansion for large counts: the binomial tail near the mean from the tail of
// a Student t distribution with 2 (a + b + 1) degrees of freedom and a correction series
// in 1 / (a + b) whose coefficients are polynomials in w = a b / (a + b)^2.
//
// Method: StudentTail gives the t tail by its series when the argument is small and by a
// continued fraction otherwise, with the density figure it needs; BinomialExpansion maps
// the binomial count to the t argument through the per-trial log likelihood ratio
// lq (so the mapping keeps relative accuracy) and adds six correction terms. The
// coefficients are exact rationals, integers over integer divisors. Above t = 1e50 the
// correction sums are divided as they go so that no partial sum overflows.
//
// Accuracy: meant for counts above 50 with the mean within a tenth of the smaller count;
// there the truncation error is far below double rounding and the relative error is a
// few tens of ulp on the smaller tail.
#include <cmath>

#include "numeric_internal.h"

namespace qv::numeric {
namespace {

// Numerator of each coefficient, highest power of w first, and its divisor.
struct Coefficient {
  double numerator[7];
  int terms;
  double divisor;
};

constexpr Coefficient kFirst[6] = {
    {{-17, 2}, 2, 24},
    {{-503, 76, 4}, 3, 1152},
    {{-315733, 53310, 8196, -1112}, 4, 414720},
    {{-85262251, 15386296, 4059192, -697376, -9136}, 5, 39813120},
    {{-55253161559, 10438368262, 3904584040, -703410640, -43679536, 5244128}, 6, 6688604160},
    {{-194479285104469, 38020748623980, 18320560326516, -3242780782432, -433635420336,
      61701376704, 335796416},
     7,
     4815794995200}};

constexpr Coefficient kSecond[6] = {
    {{-1, -2}, 2, 135},
    {{-44, -86, 4}, 3, 2835},
    {{-404, -786, 48, 8}, 4, 8505},
    {{-2421272, -4721524, 302244, 118160, -4496}, 5, 12629925},
    {{-473759128, -928767700, 57300188, 38704888, -1870064, -167072}, 6, 492567075},
    {{-8530742848, -16836643200, 954602040, 990295352, -44963088, -11596512, 349376}, 7,
     1477701225}};

double Evaluate(const Coefficient& c, double w) {
  double s = c.numerator[0];
  for (int k = 1; k < c.terms; ++k) s = s * w + c.numerator[k];
  return s / c.divisor;
}

}  // namespace

double StudentTail(double p, double q, double lq, double k, double& density) {
  double t;
  if (IsEven(k)) {
    t = StirlingError(k - 1) + lq - 2 * StirlingError(k / 2 - 1);
  } else {
    t = LogOnePlusMinusX(1 / k) * k + lq + 2 * StirlingError((k - 1) / 2) - StirlingError(k - 1);
  }
  double e = std::exp(t - kLogRootTwoPi);
  double tail;
  if (4 * q > p * k) {
    double s = 0, u = 1, c = 3, m = k + 1;
    for (int pass = 0; pass < kMaxPasses; ++pass) {
      c = c + 2;
      m = m + 2;
      u = m * u * p / c;
      s = s + u;
      if (5e-16 * s >= u) break;
    }
    s = (k + 1) * p * (s + 1) / 3 + 1;
    tail = 0.5 - s * e * std::sqrt(p * k);
  } else if (e == 0) {
    tail = 0;
  } else {
    double c8 = 2 * (q + 1), q8 = 8 * q;
    double a1 = 1;
    double b1 = (k - 3) * p + 7;
    double a2 = (k - 5) * p + 11;
    double b2 = a2 * b1 - 20 * q;
    double t2 = -30 * q, t3 = -42 * q;
    double c = (k - 7) * p + 15;
    for (int pass = 0;
         pass < kMaxPasses && std::fabs(a2 * b1 - a1 * b2) > std::fabs(1e-15 * b1 * a2); ++pass) {
      a1 = c * a2 + t3 * a1;
      b1 = c * b2 + t3 * b1;
      t3 = t3 + t2;
      t2 = t2 - q8;
      c = c + c8;
      a2 = t3 * a2 + c * a1;
      b2 = t3 * b2 + c * b1;
      t3 = t3 + t2;
      t2 = t2 - q8;
      c = c + c8;
      if (std::fabs(b2) > kScaleUp) {
        Rescale(kScaleDown, a1, b1, a2, b2);
      } else if (std::fabs(b2) < kScaleDown) {
        Rescale(kScaleUp, a1, b1, a2, b2);
      }
    }
    tail = (1 - q / ((k - 1) * p + 3 - 6 * q * a2 / b2)) * e / std::sqrt(p * k);
  }
  density = std::sqrt(q) * e;
  return tail;
}

double BinomialExpansion(double a, double b, double d, bool upper) {
  double n = a + b;
  double n1 = n + 1;
  double x = (b + d) / n1 - d;
  double lq = (LogOnePlusMinusX(x / a) * a + LogOnePlusMinusX(-x / b) * b) / n;
  double y = -ExpMinusOne(lq);
  double w = (a / n) * (b / n);

  double c[7], dd[7];
  for (int k = 1; k <= 6; ++k) {
    c[k] = Evaluate(kFirst[k - 1], w);
    dd[k] = Evaluate(kSecond[k - 1], w);
  }
  auto P = [&](double v) { return (n + v) * w; };
  double big_f =
      (((((c[6] / P(6.5) + c[5]) / P(5.5) + c[4]) / P(4.5) + c[3]) / P(3.5) + c[2]) / P(2.5) +
       c[1]) / P(1.5) +
      1;

  double r;
  double tail = StudentTail(y, 1 - y, lq * n1, 2 * n1, r);
  double t = n1 * y;
  double st = std::sqrt(2 * t);
  double g, h;
  if (t <= 1e50) {
    double e1 = t + 1;
    double u = (n + 2) * t * y / 2;
    double e2 = e1 + u;
    u = (n + 3) * u * y / 3;
    double e3 = e2 + u;
    u = (n + 4) * u * y / 4;
    double e4 = e3 + u;
    u = (n + 5) * u * y / 5;
    double e5 = e4 + u;
    u = (n + 6) * u * y / 6;
    double e6 = e5 + u;
    g = (((((dd[6] * e6 / P(7) + dd[5] * e5) / P(6) + dd[4] * e4) / P(5) + dd[3] * e3) / P(4) +
          dd[2] * e2) / P(3) +
         dd[1] * e1) /
        P(2);
    u = (2.0 / 3.0) * (n + 1.5) * y;
    double f1 = u + 1;
    u = 0.4 * (n + 2.5) * u * y;
    double f2 = f1 + u;
    u = (2.0 / 7.0) * (n + 3.5) * u * y;
    double f3 = f2 + u;
    u = (2.0 / 9.0) * (n + 4.5) * u * y;
    double f4 = f3 + u;
    u = (2.0 / 11.0) * (n + 5.5) * u * y;
    double f5 = f4 + u;
    h = ((((c[6] * f5 / P(6.5) + c[5] * f4) / P(5.5) + c[4] * f3) / P(4.5) + c[3] * f2) / P(3.5) +
         c[2] * f1) /
        P(2.5);
  } else {
    // The same sums, each partial term divided as it is formed, so nothing overflows.
    double e1 = (t + 1) / (n + 2);
    double u = y * t / 2;
    double e2 = (e1 + u) / (n + 3);
    u = y * u / 3;
    double e3 = (e2 + u) / (n + 4);
    u = y * u / 4;
    double e4 = (e3 + u) / (n + 5);
    u = y * u / 5;
    double e5 = (e4 + u) / (n + 6);
    u = y * u / 6;
    double e6 = (e5 + u) / (n + 7);
    g = (((((dd[6] * e6 / w + dd[5] * e5) / w + dd[4] * e4) / w + dd[3] * e3) / w + dd[2] * e2) /
             w +
         dd[1] * e1) /
        w;
    u = (2.0 / 3.0) * (n + 1.5) * y;
    double f1 = (u + 1) / (n + 2.5);
    u = 0.4 * y * u;
    double f2 = (f1 + u) / (n + 3.5);
    u = (2.0 / 7.0) * y * u;
    double f3 = (f2 + u) / (n + 4.5);
    u = (2.0 / 9.0) * y * u;
    double f4 = (f3 + u) / (n + 5.5);
    u = (2.0 / 11.0) * y * u;
    double f5 = (f4 + u) / (n + 6.5);
    h = ((((c[6] * f5 / w + c[5] * f4) / w + c[4] * f3) / w + c[3] * f2) / w + c[2] * f1) / w;
  }
  h = h + c[1];
  double big_w = r / std::sqrt(1 - y);
  double hh = st * h / ((n + 1.5) * w);
  double gg = 2 * (g + 1.0 / 3.0) * (a - b) / (std::sqrt(n1 * w) * n);
  if (upper) {
    return x > 0 ? tail - (gg - hh) * big_w / big_f : 1 - tail - (gg + hh) * big_w / big_f;
  }
  return x > 0 ? 1 - tail + (gg - hh) * big_w / big_f : tail + (gg + hh) * big_w / big_f;
}

}  // namespace qv::numeric
