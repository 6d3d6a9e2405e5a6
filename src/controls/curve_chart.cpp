#include "curve_chart.h"

#include <QMetaObject>
#include <QVBoxLayout>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

#include "chart_file.h"

namespace qv {

CurveChart::CurveChart(QWidget* parent) : QWidget(parent), m_plot(new QCustomPlot(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_plot);
  // A million points stay quick only without antialiasing.
  m_plot->setNotAntialiasedElements(QCP::aeAll);
  m_plot->setPlottingHint(QCP::phFastPolylines, true);
  AddChartFileMenu(this, m_plot);
}

CurveChart::~CurveChart() = default;

void CurveChart::setFileBaseName(const QString& name) { SetChartFileBaseName(this, name); }

QCPGraph* CurveChart::graph(const QString& key) const {
  for (int i = 0; i < m_plot->graphCount(); ++i)
    if (m_plot->graph(i)->name() == key) return m_plot->graph(i);
  return nullptr;
}

QCPGraph* CurveChart::replaceGraph(const QString& key) {
  if (QCPGraph* old = graph(key)) m_plot->removeGraph(old);
  QCPGraph* g = m_plot->addGraph();
  g->setName(key);
  g->setAdaptiveSampling(true);
  return g;
}

QCPGraph* CurveChart::fillGraph(const QString& key, std::size_t n, std::span<const double> x,
                                std::span<const double> y) {
  QCPGraph* g = graph(key);
  if (!g) return nullptr;
  n = std::min({n, x.size(), y.size()});
  QVector<QCPGraphData> points;
  points.reserve(static_cast<qsizetype>(n));
  bool sorted = true;
  for (std::size_t i = 0; i < n; ++i) {
    if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
    if (!points.isEmpty() && x[i] < points.back().key) sorted = false;
    points.append(QCPGraphData(x[i], y[i]));
  }
  // The plots hand their points in ascending order: then no sort is needed.
  g->data()->set(points, sorted);
  return g;
}

int CurveChart::curveCount() const { return m_plot->graphCount(); }
bool CurveChart::hasCurve(const QString& key) const { return graph(key) != nullptr; }

std::size_t CurveChart::pointCount(const QString& key) const {
  QCPGraph* g = graph(key);
  return g ? static_cast<std::size_t>(g->data()->size()) : 0;
}

double CurveChart::pointX(const QString& key, std::size_t i) const {
  QCPGraph* g = graph(key);
  return g ? g->data()->at(static_cast<int>(i))->key : 0.0;
}

double CurveChart::pointY(const QString& key, std::size_t i) const {
  QCPGraph* g = graph(key);
  return g ? g->data()->at(static_cast<int>(i))->value : 0.0;
}

double CurveChart::xLow() const { return m_plot->xAxis->range().lower; }
double CurveChart::xHigh() const { return m_plot->xAxis->range().upper; }
double CurveChart::yLow() const { return m_plot->yAxis->range().lower; }
double CurveChart::yHigh() const { return m_plot->yAxis->range().upper; }

void CurveChart::redraw() {
  m_redrawPending = false;
  m_plot->replot(QCustomPlot::rpImmediateRefresh);
}

void CurveChart::scheduleRedraw() {
  if (m_redrawPending) return;
  m_redrawPending = true;
  QMetaObject::invokeMethod(this, [this] {
    if (m_redrawPending) redraw();
  }, Qt::QueuedConnection);
}

}  // namespace qv
