// An XY chart on QCustomPlot: curves by key, each a graph with its own look, sharing one
// horizontal and one vertical scale. Built for plots of every value of a large sample:
// a curve's data arrive whole in one call and are drawn without antialiasing.
#pragma once

#include <QHash>
#include <QString>

#include <cstdint>
#include <span>

#include "curve_chart.h"

namespace qv {

// A curve's properties under the names the charts of the windows give them. Colours are
// COM colour values, 0x00BBGGRR (0xFF0000 is blue).
struct ChartCurve {
  QString Key;
  double Min = 0;            // the vertical scale while this curve is the last added
  double Max = 100;
  std::uint32_t Color = 0;   // the line
  int Width = 1;             // line width in pixels
  int CurveStyle = 0;        // 0: a line through the points; 1: the points marked, joined thinly
  int LineStyle = 1;         // 1: solid; 2: dashed; 3: dotted; 0: none
  std::uint32_t PointColor = 0;
  int PointSize = 1;         // marks' size in pixels is 2 * PointSize + 1
  int PointStyle = 0;        // 2: filled square marks; 5: no marks
  int SubTickerNum = 0;      // minor ticks between two labelled ones, 0 for none
  bool bShowScale = true;    // the vertical scale carries numbers
};

// 0x00BBGGRR to a colour.
QColor ComColor(std::uint32_t bgr);

class XYChart : public CurveChart {
  Q_OBJECT

 public:
  explicit XYChart(QWidget* parent = nullptr);
  ~XYChart() override;

  void removeAllCurves();
  // Bounds of the horizontal scale (single precision, as the windows hand them over).
  void setXBounds(float low, float high);
  // Adds a curve without data; a curve of the same key is replaced. The vertical scale
  // takes the curve's Min and Max.
  void addCurve(const ChartCurve& curve);
  // Replaces a curve's data with the first n points of x and y in one call. Points whose
  // coordinates are not finite numbers are left out. False for an unknown key.
  bool setCurveData(const QString& key, std::size_t n, std::span<const double> x,
                    std::span<const double> y);

  // A curve's look.
  ChartCurve curve(const QString& key) const;

 private:
  QHash<QString, ChartCurve> m_looks;
};

}  // namespace qv
