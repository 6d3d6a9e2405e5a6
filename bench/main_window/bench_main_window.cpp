// What the user waits for on 1,048,576 values already read: a slider release, a
// decimals click, and entering discrete mode on 50 distinct values.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cmath>
#include <random>

#include "analysis_state.h"
#include "main_form.h"
#include "office_fixture.h"

namespace {

qv::MainForm* form = nullptr;

void Take(const qv::CellRangeRef& r) {
  qv::MainForm::rangePicker = [r](qv::Workbook&) { return std::optional<qv::CellRangeRef>(r); };
  form->InputButton1_Click();
}

void SetBins(int bins) {
  qv::State().NumberOfBins = bins;
  qv::State().BinMark = "Red";
}

void BM_SliderRelease(benchmark::State& state) {
  Take({0, 0, 0, 0, 1048575});
  SetBins(static_cast<int>(state.range(0)));
  bool low = false;
  for (auto _ : state) {
    form->SSlider22->setPosition(low ? 60 : 70);
    low = !low;
    form->SSlider22_MouseUp();
    form->DAS_BarChart1->redraw();
  }
}
BENCHMARK(BM_SliderRelease)->Arg(100)->Arg(32767)->Unit(benchmark::kMillisecond);

void BM_DecimalsClick(benchmark::State& state) {
  Take({0, 0, 0, 0, 1048575});
  SetBins(static_cast<int>(state.range(0)));
  int d = 0;
  for (auto _ : state) {
    form->DecimalCombo->setCurrentIndex(d = (d + 1) % 6);
    form->DecimalCombo_Click();
    form->DAS_BarChart1->redraw();
  }
}
BENCHMARK(BM_DecimalsClick)->Arg(100)->Arg(32767)->Unit(benchmark::kMillisecond);

void BM_EnterDiscreteMode(benchmark::State& state) {
  Take({0, 1, 0, 1, 1048575});
  for (auto _ : state) {
    form->OptionDiscrete->setChecked(true);  // runs OptionDiscrete_Click
    form->DAS_BarChart1->redraw();
    state.PauseTiming();
    form->OptionContinuous->setChecked(true);
    state.ResumeTiming();
  }
}
BENCHMARK(BM_EnterDiscreteMode)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  auto& office = qv::testing::HeadlessOffice::Get();
  auto book = office.office().createWorkbook(false);
  // Column A: a million normal values under a header; column B: 50 distinct values.
  qv::CellBlock cells;
  cells.resize(1048576, 2);
  std::mt19937_64 gen(3);
  std::normal_distribution<double> dist(50, 10);
  std::uniform_int_distribution<int> level(1, 50);
  for (std::int64_t i = 0; i < cells.rows; ++i) {
    cells.setNumber(2 * i, std::round(dist(gen) * 100) / 100);
    cells.setNumber(2 * i + 1, level(gen));
  }
  cells.setText(0, "Value");
  cells.setText(1, "Level");
  book->write({0, 0, 0, 0, 0}, cells);
  qv::AnalysisState& s = qv::State();
  s.ExcelApp = office.shared();
  s.ActiveBook = book;
  qv::MainForm::noticeSink = [](const QString&) {};
  form = new qv::MainForm;
  form->Form_Load();
  form->show();
  benchmark::RunSpecifiedBenchmarks();
  delete form;
  s.LastRead.reset();
  s.ActiveBook.reset();
  book->close();
  return 0;
}
