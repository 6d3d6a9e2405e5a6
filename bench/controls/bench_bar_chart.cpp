// Drawing a histogram: hand over the bars, replot and grab the picture, offscreen, 900x500.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <memory>

#include "bar_chart.h"

namespace {

std::vector<qv::BarChart::Bar> bars(int n, int shift) {
  std::vector<qv::BarChart::Bar> result;
  result.reserve(n);
  for (int i = 1; i <= n; ++i) {
    const double x = (i - n / 2.0) / (n / 6.0);
    result.push_back({QString("%1").arg(i, 2, 10, QLatin1Char('0')), QString("%1 - %2").arg(i).arg(i + 1), QColor(),
                      std::round(100.0 * std::exp(-0.5 * x * x)) + (i + shift) % 3});
  }
  return result;
}

std::unique_ptr<qv::BarChart> shownChart() {
  auto chart = std::make_unique<qv::BarChart>();
  chart->resize(900, 500);
  chart->show();
  QApplication::processEvents();
  return chart;
}

// A chart that draws for the first time: a new widget receives its first bars.
void BM_FirstDraw(benchmark::State& state) {
  const auto data = bars(static_cast<int>(state.range(0)), 0);
  for (auto _ : state) {
    state.PauseTiming();
    auto chart = shownChart();
    state.ResumeTiming();
    chart->setBars(data);
    chart->setScaleTop(102);
    chart->redraw();
    benchmark::DoNotOptimize(chart->grab());
    state.PauseTiming();
    chart.reset();
    QApplication::processEvents();
    state.ResumeTiming();
  }
}

// The same chart drawn again with new values, as every move of a control does.
void BM_Redraw(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  const auto a = bars(n, 0);
  const auto b = bars(n, 1);
  auto chart = shownChart();
  chart->setBars(a);
  chart->redraw();
  bool flip = false;
  for (auto _ : state) {
    flip = !flip;
    chart->clear();
    chart->setBars(flip ? b : a);
    chart->setScaleTop(102);
    chart->redraw();
    benchmark::DoNotOptimize(chart->grab());
  }
}

BENCHMARK(BM_FirstDraw)->Arg(100)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Redraw)->Arg(100)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);

}  // namespace
