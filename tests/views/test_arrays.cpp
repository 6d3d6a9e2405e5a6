// The array forms of the distribution functions give the scalar call's bits for every
// element, on the two-thread path (2^20 points) and the one-thread path alike.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <vector>

#include "numeric_functions.h"

namespace qv {
namespace {

struct ArrayCase {
  const char* name;
  double lo, hi;
  std::function<void(std::span<const double>, std::span<double>)> array;
  std::function<double(double)> scalar;
};

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
