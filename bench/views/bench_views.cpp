// Speed of the distribution views on a sample of 2^20 values: GenerateArrays for each
// of the eight distributions, and the array forms of the distribution functions beside
// a plain loop of scalar calls. The ArrayCdf points are the ones compare_scipy.py hands
// to SciPy and R, so the figures can be set side by side.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "numeric_functions.h"
#include "plot_data.h"

namespace {

constexpr std::size_t kPoints = 1048576;

// A skewed sample inside (0, 1) that every distribution accepts, with a share of ties
// (six decimals), in no particular order.
const std::vector<double>& Sample() {
  static const std::vector<double> s = [] {
    std::vector<double> v(kPoints);
    std::uint64_t state = 88172645463325252ull;
    for (double& x : v) {
      state ^= state << 13;
      state ^= state >> 7;
      state ^= state << 17;
      double u = (static_cast<double>(state >> 11) + 0.5) / 9007199254740992.0;
      x = std::round(std::pow(u, 1.7) * 1e6) / 1e6;
      if (x == 0) x = 1e-6;
    }
    return v;
  }();
  return s;
}

void BM_GenerateArrays(benchmark::State& state) {
  auto d = static_cast<qv::Distribution>(state.range(0));
  state.SetLabel(qv::DistributionCaption(d));
  const std::vector<double>& sample = Sample();  // made outside the timing
  for (auto _ : state) {
    qv::FitRun run = qv::GenerateArrays(d, sample, 0.35, 0.27);
    if (run.refused) state.SkipWithError(run.notice.c_str());
    benchmark::DoNotOptimize(run.r);
  }
  state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(BM_GenerateArrays)->DenseRange(0, 7)->Unit(benchmark::kMillisecond)->UseRealTime();

// The points of compare_scipy.py: x_i = lo + (hi - lo) * i / (n - 1).
std::vector<double> Grid(double lo, double hi) {
  std::vector<double> v(kPoints);
  for (std::size_t i = 0; i < kPoints; ++i)
    v[i] = lo + (hi - lo) * static_cast<double>(i) / static_cast<double>(kPoints - 1);
  return v;
}

template <class ArrayForm>
void RunArray(benchmark::State& state, double lo, double hi, ArrayForm f) {
  const std::vector<double> x = Grid(lo, hi);
  std::vector<double> out(kPoints);
  for (auto _ : state) {
    f(x, out);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(state.iterations() * kPoints);
}

void BM_ArrayCdfNormal(benchmark::State& s) {
  RunArray(s, -8, 8, [](auto& x, auto& o) { qv::CdfNormal(x, o); });
}
void BM_ArrayCdfExponential(benchmark::State& s) {
  RunArray(s, 0, 10, [](auto& x, auto& o) { qv::CdfExponential(x, 1.3, o); });
}
void BM_ArrayCdfGamma(benchmark::State& s) {
  RunArray(s, 0, 20, [](auto& x, auto& o) { qv::CdfGamma(x, 2.5, 1.5, o); });
}
void BM_ArrayCdfBeta(benchmark::State& s) {
  RunArray(s, 0, 1, [](auto& x, auto& o) { qv::CdfBeta(x, 2.5, 3.5, o); });
}
// The same work as one loop of scalar calls on one thread.
void BM_ScalarLoopCdfNormal(benchmark::State& s) {
  RunArray(s, -8, 8, [](auto& x, auto& o) {
    for (std::size_t i = 0; i < x.size(); ++i) o[i] = qv::CdfNormal(x[i]);
  });
}
void BM_ScalarLoopCdfGamma(benchmark::State& s) {
  RunArray(s, 0, 20, [](auto& x, auto& o) {
    for (std::size_t i = 0; i < x.size(); ++i) o[i] = qv::CdfGamma(x[i], 2.5, 1.5);
  });
}
void BM_ScalarLoopCdfBeta(benchmark::State& s) {
  RunArray(s, 0, 1, [](auto& x, auto& o) {
    for (std::size_t i = 0; i < x.size(); ++i) o[i] = qv::CdfBeta(x[i], 2.5, 3.5);
  });
}
BENCHMARK(BM_ArrayCdfNormal)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ArrayCdfExponential)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ArrayCdfGamma)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ArrayCdfBeta)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ScalarLoopCdfNormal)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ScalarLoopCdfGamma)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ScalarLoopCdfBeta)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
