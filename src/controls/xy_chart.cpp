// XYChart: curves as QCustomPlot graphs, found by key in the graph's name.
#include "xy_chart.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

namespace qv {

namespace {

Qt::PenStyle PenStyleOf(int lineStyle) {
  switch (lineStyle) {
    case 0: return Qt::NoPen;
    case 2: return Qt::DashLine;
    case 3: return Qt::DotLine;
    default: return Qt::SolidLine;
  }
}

// Minor ticks: the ticker's own count stays, the minor ticks are shown or not.
void ShowSubTicks(QCPAxis* axis, int count) { axis->setSubTicks(count > 0); }

}  // namespace

QColor ComColor(std::uint32_t bgr) {
  return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>((bgr >> 8) & 0xFF),
                static_cast<int>((bgr >> 16) & 0xFF));
}

XYChart::XYChart(QWidget* parent) : CurveChart(parent) {
  m_plot->xAxis2->setVisible(true);
  m_plot->yAxis2->setVisible(true);
  m_plot->xAxis2->setTickLabels(false);
  m_plot->yAxis2->setTickLabels(false);
  connect(m_plot->xAxis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), m_plot->xAxis2,
          qOverload<const QCPRange&>(&QCPAxis::setRange));
  connect(m_plot->yAxis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), m_plot->yAxis2,
          qOverload<const QCPRange&>(&QCPAxis::setRange));
  m_plot->xAxis->setRange(0, 1);
  m_plot->yAxis->setRange(0, 1);
  QPen grid(QColor(210, 210, 210), 0, Qt::DotLine);
  m_plot->xAxis->grid()->setPen(grid);
  m_plot->yAxis->grid()->setPen(grid);
}

XYChart::~XYChart() = default;

void XYChart::removeAllCurves() {
  m_plot->clearGraphs();
  m_looks.clear();
  scheduleRedraw();
}

void XYChart::setXBounds(float low, float high) {
  if (!std::isfinite(low) || !std::isfinite(high)) return;
  if (high < low) std::swap(low, high);
  m_plot->xAxis->setRange(low, high);
  scheduleRedraw();
}

void XYChart::addCurve(const ChartCurve& c) {
  QCPGraph* g = replaceGraph(c.Key);
  m_looks.insert(c.Key, c);
  QPen pen(ComColor(c.Color), std::max(0, c.Width), PenStyleOf(c.LineStyle));
  if (c.CurveStyle == 1) {
    // The sample's own points: marks in PointColor, joined by a hairline in Color.
    pen.setWidth(1);
    g->setLineStyle(QCPGraph::lsLine);
  } else {
    g->setLineStyle(c.LineStyle == 0 ? QCPGraph::lsNone : QCPGraph::lsLine);
  }
  g->setPen(pen);
  if (c.PointStyle == 2) {
    const double side = 2.0 * std::max(0, c.PointSize) + 1;
    QColor mark = ComColor(c.PointColor);
    g->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssSquare, mark, mark, side));
  } else {
    g->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssNone));
  }
  double low = c.Min, high = c.Max;
  if (std::isfinite(low) && std::isfinite(high) && low != high) {
    if (high < low) std::swap(low, high);
    m_plot->yAxis->setRange(low, high);
  }
  m_plot->yAxis->setTickLabels(c.bShowScale || m_plot->yAxis->tickLabels());
  ShowSubTicks(m_plot->xAxis, c.SubTickerNum);
  ShowSubTicks(m_plot->yAxis, c.SubTickerNum);
  scheduleRedraw();
}

bool XYChart::setCurveData(const QString& key, std::size_t n, std::span<const double> x,
                           std::span<const double> y) {
  if (!fillGraph(key, n, x, y)) return false;
  scheduleRedraw();
  return true;
}

ChartCurve XYChart::curve(const QString& key) const {
  return m_looks.value(key);
}

}  // namespace qv
