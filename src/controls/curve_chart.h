// What the curve charts share: a QCustomPlot filling the widget, curves as its graphs
// found by key, their points read back as drawn, one redraw per pass of the event loop,
// and the right-click Save menu.
#pragma once

#include <QString>
#include <QWidget>

#include <cstddef>
#include <span>

class QCustomPlot;
class QCPGraph;

namespace qv {

class CurveChart : public QWidget {
  Q_OBJECT

 public:
  ~CurveChart() override;

  int curveCount() const;
  bool hasCurve(const QString& key) const;
  // A curve's points as drawn.
  std::size_t pointCount(const QString& key) const;
  double pointX(const QString& key, std::size_t i) const;
  double pointY(const QString& key, std::size_t i) const;
  double xLow() const;
  double xHigh() const;
  double yLow() const;
  double yHigh() const;

  // Draws now rather than at the next pass of the event loop.
  void redraw();
  QCustomPlot* plot() const { return m_plot; }
  // The file name the chart's Save menu offers first, without extension ("Chart").
  void setFileBaseName(const QString& name);

 protected:
  explicit CurveChart(QWidget* parent);
  QCPGraph* graph(const QString& key) const;
  // A new empty curve named key, in place of any curve of that key.
  QCPGraph* replaceGraph(const QString& key);
  // Gives the curve of key the first n points of x and y whose coordinates are finite
  // numbers; null for an unknown key.
  QCPGraph* fillGraph(const QString& key, std::size_t n, std::span<const double> x, std::span<const double> y);
  void scheduleRedraw();

  QCustomPlot* m_plot;

 private:
  bool m_redrawPending = false;
};

}  // namespace qv
