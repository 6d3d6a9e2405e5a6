// The distribution windows on a sample of 1,048,576 values, offscreen: each chart of
// Visualize handed its data, replotted and grabbed; Cumulat opened and drawn; one step
// of the line's drag with its read-out.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <qcustomplot.h>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "cumulative_window.h"
#include "plotter.h"
#include "visualize_window.h"
#include "xy_chart.h"

namespace {

constexpr std::size_t kValues = 1048576;

const std::vector<double>& Sample() {
  static const std::vector<double> s = [] {
    std::mt19937_64 gen(20261123);
    std::normal_distribution<double> dist(50, 10);
    std::vector<double> v(kValues);
    for (double& x : v) x = dist(gen);
    return v;
  }();
  return s;
}

qv::Visualize& Window() {
  static std::unique_ptr<qv::Visualize> w = [] {
    qv::Visualize::noticeSink = [](const QString&) {};
    qv::VisualizeInput in;
    in.sample = Sample();
    in.shownMean = 50;
    in.shownStdev = 10;
    in.shownMinimum = *std::min_element(in.sample.begin(), in.sample.end());
    in.shownMaximum = *std::max_element(in.sample.begin(), in.sample.end());
    auto v = std::make_unique<qv::Visualize>(in);
    v->show();
    v->setFixedHeight(qv::Visualize::kOpenHeight);
    QApplication::processEvents();
    return v;
  }();
  return *w;
}

// PlotPPs hands both charts their data; the upper one is drawn and grabbed.
void BM_VisualizePP(benchmark::State& state) {
  qv::Visualize& w = Window();
  for (auto _ : state) {
    w.PlotPPs();
    w.NormalDist->redraw();
    benchmark::DoNotOptimize(w.NormalDist->grab());
  }
}

// The same, the lower (detrended) chart drawn and grabbed.
void BM_VisualizeDetrended(benchmark::State& state) {
  qv::Visualize& w = Window();
  for (auto _ : state) {
    w.PlotPPs();
    w.Detrended->redraw();
    benchmark::DoNotOptimize(w.Detrended->grab());
  }
}

void BM_VisualizeQQ(benchmark::State& state) {
  qv::Visualize& w = Window();
  for (auto _ : state) {
    w.PlotQQs();
    w.NormalDist->redraw();
    benchmark::DoNotOptimize(w.NormalDist->grab());
  }
}

// Cumulat from its construction (sort check, curve, scale) to a grabbed picture.
void BM_CumulatOpen(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    qv::CumulatInput in;
    in.sample = Sample();
    std::sort(in.sample.begin(), in.sample.end());  // the record's sample is ascending
    state.ResumeTiming();
    qv::Cumulat c(in);
    c.show();
    c.PlotterView->redraw();
    benchmark::DoNotOptimize(c.grab());
    state.PauseTiming();
    c.hide();
    state.ResumeTiming();
  }
}

// One drag step: the line moves, its layer is redrawn, the boxes are filled and painted.
void BM_CumulatDragStep(benchmark::State& state) {
  qv::CumulatInput in;
  in.sample = Sample();
  std::sort(in.sample.begin(), in.sample.end());
  qv::Cumulat c(in);
  c.show();
  c.PlotterView->redraw();
  double at = 20;
  for (auto _ : state) {
    at = at >= 80 ? 20 : at + 0.29;
    c.PlotterView->moveCursor(at);
    c.repaint();
  }
}

BENCHMARK(BM_VisualizePP)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_VisualizeDetrended)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_VisualizeQQ)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CumulatOpen)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CumulatDragStep)->Unit(benchmark::kMicrosecond);

}  // namespace
