// Entry points as the rest of the program calls them: densities and the exponential
// against mpmath, the ends of the supports, the domain errors, no argument (NaN,
// infinities, extremes) hangs a call or gives -0, and the array forms.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "numeric_functions.h"
#include "reference_table.h"

namespace qv {
namespace {

using test::Args;

constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(EntryPoints, MatchReferenceTable) {
  auto slack = [](Args, double v) { return test::ExponentSlack(v); };
  test::ExpectTableAccuracy(
      "densities.txt",
      {{.name = "CdfExponential", .fn = [](Args a) { return CdfExponential(a[0], a[1]); },
        .bound = 4 * DBL_EPSILON},
       {.name = "PdfGamma", .fn = [](Args a) { return PdfGamma(a[0], a[1], a[2]); }, .bound = 1e-13,
        .slack = slack},
       {.name = "PdfBeta", .fn = [](Args a) { return PdfBeta(a[0], a[1], a[2]); }, .bound = 1e-13,
        .slack = slack}});
}

TEST(EntryPoints, EndsOfTheSupport) {
  struct { const char* call; double got, want; } cases[] = {
      {"CdfExponential(-1, 2)", CdfExponential(-1, 2), 0}, {"CdfExponential(inf, 2)", CdfExponential(kInf, 2), 1},
      {"CdfGamma(0, 2, 3)", CdfGamma(0, 2, 3), 0}, {"CdfGamma(-1, 2, 3)", CdfGamma(-1, 2, 3), 0},
      {"CdfGamma(inf, 2, 3)", CdfGamma(kInf, 2, 3), 1}, {"PdfGamma(0, 1, 4)", PdfGamma(0, 1, 4), 0.25},
      {"PdfGamma(0, 2, 4)", PdfGamma(0, 2, 4), 0}, {"PdfGamma(-1, 2, 4)", PdfGamma(-1, 2, 4), 0},
      {"CdfBeta(0, 2, 3)", CdfBeta(0, 2, 3), 0}, {"CdfBeta(1, 0.5, 3)", CdfBeta(1, 0.5, 3), 1},
      {"CdfBeta(-1, 2, 3)", CdfBeta(-1, 2, 3), 0}, {"CdfBeta(2, 2, 3)", CdfBeta(2, 2, 3), 1},
      {"PdfBeta(0, 1, 3)", PdfBeta(0, 1, 3), 3}, {"PdfBeta(1, 3, 1)", PdfBeta(1, 3, 1), 3},
      {"PdfBeta(0, 2, 3)", PdfBeta(0, 2, 3), 0}, {"PdfBeta(1, 2, 3)", PdfBeta(1, 2, 3), 0},
      {"PdfBeta(1.5, 0.5, 0.5)", PdfBeta(1.5, 0.5, 0.5), 0}, {"PdfBeta(-0.5, 0.5, 0.5)", PdfBeta(-0.5, 0.5, 0.5), 0}};
  for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << c.call;
  // To rounding: exp(-1), 1/2, and 30 x (1 - x)^2 at 0.3 = 1.764.
  EXPECT_NEAR(PdfGamma(1, 1, 1) / std::exp(-1.0), 1, 4 * DBL_EPSILON);
  EXPECT_NEAR(CdfBeta(0.5, 1, 1), 0.5, 2 * DBL_EPSILON);
  EXPECT_NEAR(PdfBeta(0.3, 2, 3), 1.764, 8 * DBL_EPSILON);
  for (double lambda : {1e-300, 0.5, 1.0, 1e300}) {
    EXPECT_EQ(CdfExponential(0, lambda), 0.0);
    EXPECT_FALSE(std::signbit(CdfExponential(0, lambda))) << lambda;
    EXPECT_FALSE(std::signbit(CdfExponential(-0.0, lambda))) << lambda;
  }
}

TEST(EntryPoints, DomainErrorsAreTheSpreadsheetValueError) {
  // The inverse normal refuses 0 and 1 the same way.
  struct { const char* text; double (*call)(); } cases[] = {
      {"CdfExponential(1, 0)", [] { return CdfExponential(1, 0); }},
      {"CdfExponential(1, -2)", [] { return CdfExponential(1, -2); }},
      {"CdfGamma(1, 0, 1)", [] { return CdfGamma(1, 0, 1); }}, {"CdfGamma(1, 1, -1)", [] { return CdfGamma(1, 1, -1); }},
      {"CdfGamma(-1, -1, 1)", [] { return CdfGamma(-1, -1, 1); }},  // domain before support
      {"PdfGamma(0, 0.5, 4)", [] { return PdfGamma(0, 0.5, 4); }}, {"PdfGamma(1, 2, 0)", [] { return PdfGamma(1, 2, 0); }},
      {"CdfBeta(0.5, 0, 1)", [] { return CdfBeta(0.5, 0, 1); }}, {"CdfBeta(2, 1, -1)", [] { return CdfBeta(2, 1, -1); }},
      {"PdfBeta(1, 3, 0.5)", [] { return PdfBeta(1, 3, 0.5); }}, {"PdfBeta(0, 0.5, 2)", [] { return PdfBeta(0, 0.5, 2); }},
      {"PdfBeta(0.5, -1, 2)", [] { return PdfBeta(0.5, -1, 2); }},
      {"InverseNormal(0)", [] { return InverseNormal(0); }}, {"InverseNormal(1)", [] { return InverseNormal(1); }}};
  for (const auto& c : cases) {
    try {
      c.call();
      ADD_FAILURE() << c.text << " returned a number";
    } catch (const ValueError& e) {
      EXPECT_EQ(std::string(e.what()), "#VALUE!") << c.text;
    }
  }
}

TEST(EntryPoints, AnyArgumentEndsWithoutNegativeZero) {
  // Extremes, infinities and NaN in every position: each call must return (or throw
  // ValueError), never -0, a cdf within [0, 1] and a density not below 0, or NaN.
  const double values[] = {NAN, -kInf, -1e300, -1, -0.0, 0.0, 5e-324, 1e-300, 1e-10, 0.5,
                           1 - 1e-16, 1, 1.5, 21.5, 1e5, 1e15, 1e300, kInf};
  std::mt19937_64 rng(2024);
  std::uniform_int_distribution<int> pick(0, std::size(values) - 1);
  std::uniform_real_distribution<double> log10(-300, 300);
  auto arg = [&] {
    int k = pick(rng);
    return k % 3 == 0 ? std::pow(10.0, log10(rng)) : values[k];
  };
  for (int n = 0; n < 20000; ++n) {
    double x = arg(), a = arg(), b = arg();
    struct { const char* name; double (*f)(double, double, double); bool density; } const calls[] = {
        {"CdfExponential", [](double x, double a, double) { return CdfExponential(x, a); }, false},
        {"CdfGamma", CdfGamma, false}, {"PdfGamma", PdfGamma, true},
        {"CdfBeta", CdfBeta, false},   {"PdfBeta", PdfBeta, true},
        {"CdfNormal", [](double x, double, double) { return CdfNormal(x); }, false},
    };
    for (const auto& c : calls) {
      double v;
      try {
        v = c.f(x, a, b);
      } catch (const ValueError&) {
        continue;
      }
      if (std::isnan(v)) continue;
      // -0, below 0, or a cdf above 1 (v is printed with its sign).
      EXPECT_TRUE(!std::signbit(v) && (c.density || v <= 1)) << c.name << "(" << x << ", " << a << ", " << b
                                                               << ") = " << v;
    }
  }
  for (double v : {CdfGamma(NAN, 1, 1), CdfBeta(0.5, NAN, 1), PdfGamma(1, 1, NAN), PdfBeta(NAN, -1, 1),
                   CdfExponential(NAN, -1), CdfBeta(0.5, 2, kInf)})  // the last degenerate: no answer
    EXPECT_TRUE(std::isnan(v));
  EXPECT_THROW(CdfGamma(1, -kInf, 1), ValueError);
}

struct ArrayCase {
  const char* name;
  double lo, hi;
  std::function<void(std::span<const double>, std::span<double>)> array;
  std::function<double(double)> scalar;
};

// The array forms give the scalar call's bits on the two-thread (2^20) and one-thread paths.
TEST(ArrayCdfs, SameBitsAsScalar) {
  const ArrayCase cases[] = {
      {"normal", -40, 40, [](auto x, auto o) { CdfNormal(x, o); }, [](double v) { return CdfNormal(v); }},
      {"exponential", -1, 50, [](auto x, auto o) { CdfExponential(x, 0.7, o); },
       [](double v) { return CdfExponential(v, 0.7); }},
      {"gamma", -1, 60, [](auto x, auto o) { CdfGamma(x, 3.5, 2.25, o); },
       [](double v) { return CdfGamma(v, 3.5, 2.25); }},
      {"beta", -0.1, 1.1, [](auto x, auto o) { CdfBeta(x, 0.8, 4.5, o); },
       [](double v) { return CdfBeta(v, 0.8, 4.5); }},
  };
  for (const ArrayCase& c : cases) {
    for (std::size_t n : {std::size_t{1048576}, std::size_t{1000}}) {
      std::vector<double> x(n), out(n);
      for (std::size_t i = 0; i < n; ++i)
        x[i] = c.lo + (c.hi - c.lo) * static_cast<double>(i) / static_cast<double>(n - 1);
      c.array(x, out);
      std::size_t differ = 0;
      for (std::size_t i = 0; i < n; ++i) {
        double s = c.scalar(x[i]);
        differ += std::memcmp(&s, &out[i], sizeof s) != 0;
      }
      EXPECT_EQ(differ, 0u) << c.name << " n=" << n;
    }
  }
}

TEST(ArrayCdfs, DomainErrorWritesNothing) {
  std::vector<double> x(20000, 0.5), out(20000, -7);
  EXPECT_THROW(CdfGamma(x, 0, 1, out), ValueError);
  EXPECT_THROW(CdfBeta(x, 1, -1, out), ValueError);
  EXPECT_THROW(CdfExponential(x, 0, out), ValueError);
  EXPECT_EQ(out, std::vector<double>(20000, -7));
}

}  // namespace
}  // namespace qv
