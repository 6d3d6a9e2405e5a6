// LoadSample's read of a 1,048,576-cell column: the bulk read with the cell kinds told
// apart, then the sample built and sorted once.
#include <benchmark/benchmark.h>

#include <random>

#include "office_fixture.h"
#include "sample.h"

namespace {

std::shared_ptr<qv::Workbook> book;
const qv::CellRangeRef kColumn{0, 0, 0, 0, 1048575};

void BM_ReadColumn(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(book->read(kColumn));
}
BENCHMARK(BM_ReadColumn)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_ReadAndSort(benchmark::State& state) {
  for (auto _ : state) {
    qv::CellBlock cells = book->read(kColumn);
    benchmark::DoNotOptimize(qv::BuildSample(cells, qv::SampleFilter::Continuous));
  }
}
BENCHMARK(BM_ReadAndSort)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  qv::Office& office = qv::testing::HeadlessOffice::Get().office();
  book = office.createWorkbook(true);
  qv::CellBlock col;
  col.resize(1048576, 1);
  std::mt19937_64 gen(1);
  std::normal_distribution<double> dist(50, 10);
  for (std::int64_t i = 0; i < col.size(); ++i) col.setNumber(i, dist(gen));
  col.setText(0, "Header");
  book->write({0, 0, 0, 0, 0}, col);
  benchmark::RunSpecifiedBenchmarks();
  book->close();
  book.reset();
  return 0;
}
