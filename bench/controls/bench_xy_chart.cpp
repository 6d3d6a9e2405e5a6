// Drawing a million points: an XY chart (the P-P plot's look) and the plotter with its
// line, offscreen at the sizes the windows give them. The plotter's drag step redraws
// the line's layer only.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <qcustomplot.h>

#include <cmath>
#include <random>
#include <vector>

#include "plotter.h"
#include "xy_chart.h"

namespace {

constexpr std::size_t kPoints = 1048576;

// An ascending sample curve with noise across it, as a P-P plot of a large sample.
void Points(std::vector<double>& x, std::vector<double>& y) {
  std::mt19937_64 gen(7);
  std::normal_distribution<double> noise(0, 1.5);
  x.resize(kPoints);
  y.resize(kPoints);
  for (std::size_t i = 0; i < kPoints; ++i) {
    x[i] = 100.0 * (static_cast<double>(i) + 0.5) / kPoints;
    y[i] = x[i] + noise(gen);
  }
}

void BM_XYChartMillionPoints(benchmark::State& state) {
  std::vector<double> x, y;
  Points(x, y);
  qv::XYChart chart;
  chart.resize(473, 241);
  chart.show();
  qv::ChartCurve main;
  main.Key = "Main";
  main.Color = 0xFF0000;
  main.Width = 3;
  main.CurveStyle = 1;
  main.PointSize = 2;
  main.PointStyle = 2;
  for (auto _ : state) {
    chart.removeAllCurves();
    chart.setXBounds(0, 100);
    chart.addCurve(main);
    chart.setCurveData("Main", kPoints, x, y);
    chart.redraw();
    benchmark::DoNotOptimize(chart.grab());
  }
}

void BM_PlotterMillionPoints(benchmark::State& state) {
  std::vector<double> x, y;
  Points(x, y);
  qv::Plotter plotter;
  plotter.resize(505, 249);
  plotter.show();
  qv::PlotterCurve lie;
  lie.Key = "Lie";
  lie.Width = 3;
  for (auto _ : state) {
    plotter.removeAllCurves();
    plotter.setXBounds(0, 100);
    plotter.addCurve(lie);
    plotter.setCurveData("Lie", kPoints, x, y);
    plotter.redraw();
    benchmark::DoNotOptimize(plotter.grab());
  }
}

// One step of a drag over a million-point curve: move the line, draw the line's layer,
// and paint the widget.
void BM_PlotterDragStep(benchmark::State& state) {
  std::vector<double> x, y;
  Points(x, y);
  qv::Plotter plotter;
  plotter.resize(505, 249);
  plotter.show();
  qv::PlotterCurve lie;
  lie.Key = "Lie";
  lie.Width = 3;
  plotter.setXBounds(0, 100);
  plotter.addCurve(lie);
  plotter.setCurveData("Lie", kPoints, x, y);
  plotter.enableCursor(true);
  plotter.redraw();
  double at = 0;
  for (auto _ : state) {
    at = at >= 99 ? 1 : at + 0.37;
    plotter.moveCursor(at);
    plotter.plot()->repaint();
  }
}

BENCHMARK(BM_XYChartMillionPoints)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlotterMillionPoints)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlotterDragStep)->Unit(benchmark::kMicrosecond);

}  // namespace
