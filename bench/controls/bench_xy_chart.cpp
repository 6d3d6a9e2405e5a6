// Drawing a million points: an XY chart (the P-P plot's look) and the plotter with its
// line, offscreen at the sizes the windows give them. The plotter's drag step redraws
// the line's layer only. Saving such a chart as a file.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <qcustomplot.h>

#include <cmath>
#include <random>
#include <vector>

#include "chart_file.h"
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

qv::ChartCurve PPLook() {
  qv::ChartCurve main;
  main.Key = "Main";
  main.Color = 0xFF0000;
  main.Width = 3;
  main.CurveStyle = 1;
  main.PointSize = 2;
  main.PointStyle = 2;
  return main;
}

qv::PlotterCurve LieLook() {
  qv::PlotterCurve lie;
  lie.Key = "Lie";
  lie.Width = 3;
  return lie;
}

// Fills a chart of either kind with the million points and draws it.
template <class Chart, class Look>
void Fill(Chart& chart, const Look& look, const std::vector<double>& x, const std::vector<double>& y) {
  chart.removeAllCurves();
  chart.setXBounds(0, 100);
  chart.addCurve(look);
  chart.setCurveData(look.Key, kPoints, x, y);
  chart.redraw();
}

template <class Chart, class Look>
void MillionPoints(benchmark::State& state, QSize size, const Look& look) {
  std::vector<double> x, y;
  Points(x, y);
  Chart chart;
  chart.resize(size);
  chart.show();
  for (auto _ : state) {
    Fill(chart, look, x, y);
    benchmark::DoNotOptimize(chart.grab());
  }
}

void BM_XYChartMillionPoints(benchmark::State& state) { MillionPoints<qv::XYChart>(state, {473, 241}, PPLook()); }
void BM_PlotterMillionPoints(benchmark::State& state) { MillionPoints<qv::Plotter>(state, {505, 249}, LieLook()); }

// Saving the P-P plot of a million points as a file at the size on screen: PNG, SVG, PDF.
void BM_SaveChartMillionPoints(benchmark::State& state) {
  static const char* kSuffix[] = {"png", "svg", "pdf"};
  std::vector<double> x, y;
  Points(x, y);
  qv::XYChart chart;
  chart.resize(473, 241);
  chart.show();
  Fill(chart, PPLook(), x, y);
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("chart.") + kSuffix[state.range(0)]);
  for (auto _ : state) {
    QString problem = qv::SaveChart(chart.plot(), path, chart.plot()->size());
    if (!problem.isEmpty()) state.SkipWithError(problem.toStdString().c_str());
  }
  state.SetLabel(std::string(kSuffix[state.range(0)]) + ", " + std::to_string(QFileInfo(path).size() / 1024) + " KiB");
}

// One step of a drag over a million-point curve: move the line, draw the line's layer,
// and paint the widget.
void BM_PlotterDragStep(benchmark::State& state) {
  std::vector<double> x, y;
  Points(x, y);
  qv::Plotter plotter;
  plotter.resize(505, 249);
  plotter.show();
  Fill(plotter, LieLook(), x, y);
  plotter.enableCursor(true);
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
BENCHMARK(BM_SaveChartMillionPoints)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}  // namespace
