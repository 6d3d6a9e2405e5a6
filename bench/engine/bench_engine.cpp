// The histogram engine on a range of 1,048,576 values: the sort once per read, then
// what every slider move and every change of the bins costs.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

#include "discrete.h"
#include "sample.h"
#include "statistics.h"
#include "tabulation.h"

namespace {

constexpr std::size_t kValues = 1 << 20;

const std::vector<double>& RandomValues() {
  static const std::vector<double> v = [] {
    std::mt19937_64 rng(42);
    std::normal_distribution<double> normal(50, 15);
    std::vector<double> x(kValues);
    for (double& e : x) e = normal(rng);
    return x;
  }();
  return v;
}

const std::vector<double>& SortedValues() {
  static const std::vector<double> v = [] {
    std::vector<double> x = RandomValues();
    std::sort(x.begin(), x.end());
    return x;
  }();
  return v;
}

// A column with a header, the random numbers and a blank every 1,000 rows.
const qv::CellBlock& Column() {
  static const qv::CellBlock block = [] {
    qv::CellBlock b;
    b.resize(static_cast<std::int64_t>(kValues), 1);
    b.setText(0, "Value");
    const std::vector<double>& x = RandomValues();
    for (std::size_t i = 1; i < kValues; ++i)
      if (i % 1000) b.setNumber(static_cast<std::int64_t>(i), x[i]);
    return b;
  }();
  return block;
}

void RadixSort(benchmark::State& state) {
  std::vector<double> x;
  for (auto _ : state) {
    state.PauseTiming();
    x = RandomValues();
    state.ResumeTiming();
    qv::SortValues(x);
    benchmark::DoNotOptimize(x.data());
  }
}
BENCHMARK(RadixSort)->Unit(benchmark::kMillisecond);

// Both signs and every exponent: no digit pass can be skipped.
void RadixSortWideValues(benchmark::State& state) {
  std::mt19937_64 rng(7);
  std::vector<double> wide(kValues), x;
  for (double& e : wide) {
    e = std::ldexp(static_cast<double>(rng() >> 11), static_cast<int>(rng() % 1200) - 600);
    if (rng() % 2) e = -e;
  }
  for (auto _ : state) {
    state.PauseTiming();
    x = wide;
    state.ResumeTiming();
    qv::SortValues(x);
    benchmark::DoNotOptimize(x.data());
  }
}
BENCHMARK(RadixSortWideValues)->Unit(benchmark::kMillisecond);

void StdSortForComparison(benchmark::State& state) {
  std::vector<double> x;
  for (auto _ : state) {
    state.PauseTiming();
    x = RandomValues();
    state.ResumeTiming();
    std::sort(x.begin(), x.end());
    benchmark::DoNotOptimize(x.data());
  }
}
BENCHMARK(StdSortForComparison)->Unit(benchmark::kMillisecond);

void BuildSampleFromCells(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(qv::BuildSample(Column(), qv::SampleFilter::Continuous));
}
BENCHMARK(BuildSampleFromCells)->Unit(benchmark::kMillisecond);

void RangeFactsOncePerRead(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(qv::ReadRangeFacts(Column()));
}
BENCHMARK(RangeFactsOncePerRead)->Unit(benchmark::kMillisecond);

const qv::RangeFacts kFacts{static_cast<std::int64_t>(kValues), -30, 130, 0.1, -0.05};

void Statistics(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(qv::RefreshStatistics(SortedValues(), kFacts, 2));
}
BENCHMARK(Statistics)->Unit(benchmark::kMillisecond);

void TableByCount(benchmark::State& state) {
  const int bins = static_cast<int>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(qv::TabulateByCount(SortedValues(), bins, {}, 2));
}
BENCHMARK(TableByCount)->Arg(100)->Arg(32767)->Unit(benchmark::kMillisecond);

void TableByWidth(benchmark::State& state) {
  const std::vector<double>& a = SortedValues();
  const double width = (a.back() - a.front()) / static_cast<double>(state.range(0) - 1);
  for (auto _ : state) benchmark::DoNotOptimize(qv::TabulateByWidth(a, width, 2));
}
BENCHMARK(TableByWidth)->Arg(100)->Arg(32767)->Unit(benchmark::kMillisecond);

// What every refresh of the whole sample costs: the boxes and the table.
void StatisticsAndTable(benchmark::State& state) {
  const int bins = static_cast<int>(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(qv::RefreshStatistics(SortedValues(), kFacts, 2));
    benchmark::DoNotOptimize(qv::TabulateByCount(SortedValues(), bins, {}, 2));
  }
}
BENCHMARK(StatisticsAndTable)->Arg(100)->Arg(32767)->Unit(benchmark::kMillisecond);

// A slider released: the slice, the statistics and the table of the truncated sample.
void TruncationRefresh(benchmark::State& state) {
  const int bins = static_cast<int>(state.range(0));
  for (auto _ : state) {
    std::span<const double> cut = qv::TruncateSorted(SortedValues(), 30, 70);
    benchmark::DoNotOptimize(qv::RefreshStatistics(cut, kFacts, 2));
    benchmark::DoNotOptimize(qv::TabulateByCount(cut, bins, {}, 2));
  }
}
BENCHMARK(TruncationRefresh)->Arg(100)->Arg(32767)->Unit(benchmark::kMillisecond);

// Discrete mode on whole numbers: listing the values and counting 50 ticked ones.
void DiscreteFiftyValues(benchmark::State& state) {
  static const qv::CellBlock block = [] {
    qv::CellBlock b;
    b.resize(static_cast<std::int64_t>(kValues), 1);
    for (std::size_t i = 0; i < kValues; ++i)
      b.setNumber(static_cast<std::int64_t>(i), static_cast<double>(i % 50));
    return b;
  }();
  std::vector<double> sample = qv::BuildSample(block, qv::SampleFilter::Continuous);
  for (auto _ : state) {
    qv::DiscreteList list = qv::ListDiscreteValues(sample);
    benchmark::DoNotOptimize(qv::FilterCheckedValues(sample, list.unique.texts));
    benchmark::DoNotOptimize(qv::TabulateDiscrete(block, list.unique.texts));
  }
}
BENCHMARK(DiscreteFiftyValues)->Unit(benchmark::kMillisecond);

}  // namespace
