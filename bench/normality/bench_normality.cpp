// The four normality tests on large sorted samples, as the window runs them: each on
// 1,048,576 values must stay well under a second.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <vector>

#include "normality_tests.h"

namespace {

// Normal values rounded to 4 decimals (so that some tie), ascending.
const std::vector<double>& Sample(std::size_t n) {
  static std::vector<double> x;
  if (x.size() != n) {
    std::mt19937_64 rng(20240501);
    std::normal_distribution<double> normal(50.0, 8.0);
    x.resize(n);
    for (double& v : x) v = std::round(normal(rng) * 1e4) / 1e4;
    std::sort(x.begin(), x.end());
  }
  return x;
}

void BM_ShapiroWilk(benchmark::State& state) {
  const auto& x = Sample(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(qv::ShapiroWilk(x, 0.05));
}

void BM_AndersonDarling(benchmark::State& state) {
  const auto& x = Sample(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(qv::AndersonDarling(x));
}

void BM_Lilliefors(benchmark::State& state) {
  const auto& x = Sample(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(qv::Lilliefors(x));
}

void BM_JarqueBera(benchmark::State& state) {
  const auto& x = Sample(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(qv::JarqueBera(x, static_cast<std::int64_t>(x.size()), 0.05));
}

// Lilliefors on the values of the file named by QV_LILLIEFORS_VALUES, one a line,
// ascending (compare_r.sh writes it, to time R on the same values); the label carries D.
void BM_LillieforsFile(benchmark::State& state, std::vector<double> x) {
  qv::LillieforsResult last;
  for (auto _ : state) {
    last = qv::Lilliefors(x);
    benchmark::ClobberMemory();
  }
  char label[64];
  std::snprintf(label, sizeof label, "n=%zu D=%.17g", x.size(), last.d);
  state.SetLabel(label);
}

const bool kFileRegistered = [] {
  const char* path = std::getenv("QV_LILLIEFORS_VALUES");
  if (!path) return false;
  std::vector<double> x;
  std::ifstream in(path);
  for (double v; in >> v;) x.push_back(v);
  std::sort(x.begin(), x.end());
  benchmark::RegisterBenchmark("BM_LillieforsFile", BM_LillieforsFile, std::move(x))
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
  return true;
}();

}  // namespace

BENCHMARK(BM_ShapiroWilk)->Arg(32767)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AndersonDarling)->Arg(32767)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Lilliefors)->Arg(32767)->Arg(1 << 20)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_JarqueBera)->Arg(32767)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
