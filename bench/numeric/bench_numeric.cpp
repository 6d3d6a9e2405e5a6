// Calls per second of the entry points of NumericFunctions, on typical arguments (the
// body of the distribution, shapes a fit gives) and on tail arguments (far tails, large
// shapes near the mean, where the expansions answer). Each benchmark cycles through a
// fixed set of arguments so that no single branch is predicted or folded away.
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <vector>

#include "numeric_functions.h"

namespace {

struct Args3 {
  double x, a, b;
};

template <class F>
void Cycle(benchmark::State& state, const std::vector<Args3>& args, F f) {
  std::size_t k = 0;
  for (auto _ : state) {
    const Args3& c = args[k];
    benchmark::DoNotOptimize(f(c));
    if (++k == args.size()) k = 0;
  }
  state.SetItemsProcessed(state.iterations());
}

// Typical: the body of each distribution.
const std::vector<Args3> kNormalBody = {{-2.5, 0, 0}, {-1, 0, 0}, {-0.3, 0, 0}, {0.2, 0, 0},
                                        {0.9, 0, 0},  {1.7, 0, 0}, {2.8, 0, 0}, {-1.6, 0, 0}};
const std::vector<Args3> kProbabilities = {{0.01, 0, 0}, {0.1, 0, 0}, {0.3, 0, 0}, {0.5, 0, 0},
                                           {0.62, 0, 0}, {0.8, 0, 0}, {0.95, 0, 0}, {0.999, 0, 0}};
const std::vector<Args3> kExponential = {{0.1, 2, 0}, {0.5, 1, 0}, {1.5, 0.7, 0}, {3, 1, 0},
                                         {0.01, 5, 0}, {2, 0.2, 0}};
const std::vector<Args3> kGammaBody = {{0.3, 0.5, 1}, {1.2, 0.8, 1}, {1.5, 2, 1},  {3, 2.5, 1},
                                       {9, 10, 1},    {12, 10, 1},   {95, 100, 1}, {4, 3, 2}};
const std::vector<Args3> kBetaBody = {{0.2, 0.5, 0.5}, {0.3, 2, 3},  {0.7, 2, 3},   {0.45, 5, 5},
                                      {0.1, 0.8, 4},   {0.9, 4, 0.7}, {0.35, 30, 60}, {0.5, 1.5, 2}};
// Tails: far tails and large shapes.
const std::vector<Args3> kNormalTail = {{-37, 0, 0}, {-20, 0, 0}, {-9.5, 0, 0}, {6, 0, 0}, {-30, 0, 0}};
const std::vector<Args3> kProbabilityTail = {{1e-300, 0, 0}, {1e-50, 0, 0}, {1e-12, 0, 0},
                                             {1 - 1e-10, 0, 0}};
const std::vector<Args3> kGammaTail = {{1e-10, 50, 1},   {8673.12, 12345.5, 1}, {1e5, 1e5, 1},
                                       {1.2e5, 1e5, 1},  {700, 0.5, 1},         {1e-300, 0.01, 1}};
const std::vector<Args3> kBetaTail = {{0.5, 1e5, 1e5},     {0.4985, 1e5, 1e5},  {0.0023, 1000, 1e5},
                                      {0.9977, 1e5, 1},    {1e-5, 0.01, 1e5},   {0.999, 1e4, 0.5},
                                      {1e-100, 2, 3}};

void BM_CdfNormal(benchmark::State& s) { Cycle(s, kNormalBody, [](auto c) { return qv::CdfNormal(c.x); }); }
void BM_CdfNormal_Tail(benchmark::State& s) { Cycle(s, kNormalTail, [](auto c) { return qv::CdfNormal(c.x); }); }
void BM_InverseNormal(benchmark::State& s) { Cycle(s, kProbabilities, [](auto c) { return qv::InverseNormal(c.x); }); }
void BM_InverseNormal_Tail(benchmark::State& s) { Cycle(s, kProbabilityTail, [](auto c) { return qv::InverseNormal(c.x); }); }
void BM_CdfExponential(benchmark::State& s) { Cycle(s, kExponential, [](auto c) { return qv::CdfExponential(c.x, c.a); }); }
void BM_CdfGamma(benchmark::State& s) { Cycle(s, kGammaBody, [](auto c) { return qv::CdfGamma(c.x, c.a, c.b); }); }
void BM_CdfGamma_Tail(benchmark::State& s) { Cycle(s, kGammaTail, [](auto c) { return qv::CdfGamma(c.x, c.a, c.b); }); }
void BM_PdfGamma(benchmark::State& s) { Cycle(s, kGammaBody, [](auto c) { return qv::PdfGamma(c.x, c.a, c.b); }); }
void BM_PdfGamma_Tail(benchmark::State& s) { Cycle(s, kGammaTail, [](auto c) { return qv::PdfGamma(c.x, c.a, c.b); }); }
void BM_CdfBeta(benchmark::State& s) { Cycle(s, kBetaBody, [](auto c) { return qv::CdfBeta(c.x, c.a, c.b); }); }
void BM_CdfBeta_Tail(benchmark::State& s) { Cycle(s, kBetaTail, [](auto c) { return qv::CdfBeta(c.x, c.a, c.b); }); }
void BM_PdfBeta(benchmark::State& s) { Cycle(s, kBetaBody, [](auto c) { return qv::PdfBeta(c.x, c.a, c.b); }); }
void BM_PdfBeta_Tail(benchmark::State& s) { Cycle(s, kBetaTail, [](auto c) { return qv::PdfBeta(c.x, c.a, c.b); }); }

// A sorted standard normal sample of 4,096 values, one call after another and many at a
// time; the time is per value.
const std::vector<double>& SortedNormal() {
  static const std::vector<double> x = [] {
    std::vector<double> v(4096);
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = qv::InverseNormal((static_cast<double>(i) + 0.5) / 4096.0);
    return v;
  }();
  return x;
}
void BM_CdfNormal_Sample(benchmark::State& s) {
  const std::vector<double>& x = SortedNormal();
  std::vector<double> out(x.size());
  for (auto _ : s) {
    for (std::size_t i = 0; i < x.size(); ++i) out[i] = qv::CdfNormal(x[i]);
    benchmark::ClobberMemory();
  }
  s.SetItemsProcessed(static_cast<std::int64_t>(s.iterations() * x.size()));
}
void BM_CdfNormalOneThread_Sample(benchmark::State& s) {
  const std::vector<double>& x = SortedNormal();
  std::vector<double> out(x.size());
  for (auto _ : s) {
    qv::CdfNormalOneThread(x, out);
    benchmark::ClobberMemory();
  }
  s.SetItemsProcessed(static_cast<std::int64_t>(s.iterations() * x.size()));
}

BENCHMARK(BM_CdfNormal);
BENCHMARK(BM_CdfNormal_Sample);
BENCHMARK(BM_CdfNormalOneThread_Sample);
BENCHMARK(BM_CdfNormal_Tail);
BENCHMARK(BM_InverseNormal);
BENCHMARK(BM_InverseNormal_Tail);
BENCHMARK(BM_CdfExponential);
BENCHMARK(BM_CdfGamma);
BENCHMARK(BM_CdfGamma_Tail);
BENCHMARK(BM_PdfGamma);
BENCHMARK(BM_PdfGamma_Tail);
BENCHMARK(BM_CdfBeta);
BENCHMARK(BM_CdfBeta_Tail);
BENCHMARK(BM_PdfBeta);
BENCHMARK(BM_PdfBeta_Tail);

}  // namespace
