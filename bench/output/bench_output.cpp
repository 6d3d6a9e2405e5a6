// The export and the highlighting against a real headless office: a report of 100 bins
// with 1,000,000 observations and its chart, a report of 1,000 bins, and a highlight of
// a whole column.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

#include "highlight.h"
#include "office_fixture.h"
#include "report_writer.h"

namespace {

qv::Office* office = nullptr;

qv::ReportInput Report(int bins, const std::vector<double>& sample, bool observations) {
  qv::ReportInput in;
  for (int i = 0; i < bins; ++i) {
    in.binLabels.push_back(std::to_string(i) + " to " + std::to_string(i + 1));
    in.binCounts.push_back(static_cast<double>(sample.size() / bins + (i < int(sample.size() % bins))));
  }
  in.rangeAddress = "$A$2:$A$1000001";
  in.boxes = {"1000000", "50", "10", "1", "43", "50", "57", "99"};
  in.sample = sample;
  in.includeObservations = observations;
  return in;
}

std::vector<double> Sample(std::size_t n) {
  std::vector<double> v(n);
  std::mt19937_64 gen(1);
  std::normal_distribution<double> dist(50, 10);
  for (double& x : v) x = dist(gen);
  std::sort(v.begin(), v.end());
  return v;
}

void Export(benchmark::State& state, int bins, std::size_t n, bool observations) {
  std::vector<double> sample = Sample(n);
  qv::ReportInput in = Report(bins, sample, observations);
  for (auto _ : state) {
    state.PauseTiming();
    std::shared_ptr<qv::Workbook> book = office->createWorkbook(true);
    state.ResumeTiming();
    qv::ExportOutcome out = qv::ExportReport(*book, in);
    state.PauseTiming();
    if (!out.done) state.SkipWithError(out.notice.c_str());
    book->close();
    state.ResumeTiming();
  }
}

void BM_Report100BinsMillionObservations(benchmark::State& state) { Export(state, 100, 1000000, true); }
BENCHMARK(BM_Report100BinsMillionObservations)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_Report1000Bins(benchmark::State& state) { Export(state, 1000, 10000, false); }
BENCHMARK(BM_Report1000Bins)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_HighlightWholeColumn(benchmark::State& state) {
  std::shared_ptr<qv::Workbook> book = office->createWorkbook(true);
  qv::CellBlock col;
  col.resize(1048576, 1);
  std::vector<double> v = Sample(1048576);
  for (std::int64_t i = 0; i < col.size(); ++i) col.setNumber(i, v[static_cast<std::size_t>(i)]);
  book->write({0, 0, 0, 0, 0}, col);
  const qv::CellRangeRef range{0, 0, 0, 0, 1048575};
  int k = 0;
  for (auto _ : state) qv::ApplyHighlight(*book, range, qv::kHighlightChoices[1 + (k++ % 5)]);
  book->close();
}
BENCHMARK(BM_HighlightWholeColumn)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  office = &qv::testing::HeadlessOffice::Get().office();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
