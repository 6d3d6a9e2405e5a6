// Plotter: the curves are QCustomPlot graphs named by key; the line and its mark on the
// curve live on a buffered layer of their own, redrawn alone while the line moves.
#include "plotter.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

#include "xy_chart.h"

namespace qv {

namespace {

constexpr const char* kCursorLayer = "cursor";
const QColor kBackground(16, 24, 32);
const QColor kScale(200, 208, 216);
const QColor kGrid(60, 72, 84);

Qt::PenStyle PenStyleOf(int lineStyle) {
  switch (lineStyle) {
    case 1: return Qt::DashLine;
    case 2: return Qt::DotLine;
    default: return Qt::SolidLine;
  }
}

void StyleAxis(QCPAxis* axis) {
  axis->setBasePen(QPen(kScale));
  axis->setTickPen(QPen(kScale));
  axis->setSubTickPen(QPen(kScale));
  axis->setTickLabelColor(kScale);
  axis->grid()->setPen(QPen(kGrid, 0, Qt::DotLine));
  // A white zero line would read as the dragged line.
  axis->grid()->setZeroLinePen(QPen(kGrid, 0, Qt::SolidLine));
}

}  // namespace

Plotter::Plotter(QWidget* parent) : CurveChart(parent) {
  m_plot->setBackground(kBackground);
  StyleAxis(m_plot->xAxis);
  StyleAxis(m_plot->yAxis);
  m_plot->xAxis->setRange(0, 1);
  m_plot->yAxis->setRange(0, 100);

  m_plot->addLayer(kCursorLayer, m_plot->layer("main"), QCustomPlot::limAbove);
  QCPLayer* layer = m_plot->layer(kCursorLayer);
  layer->setMode(QCPLayer::lmBuffered);
  m_line = new QCPItemStraightLine(m_plot);
  m_line->setLayer(layer);
  m_line->setPen(QPen(Qt::white, 1));
  m_line->setClipToAxisRect(true);
  m_marker = new QCPItemTracer(m_plot);
  m_marker->setLayer(layer);
  m_marker->setStyle(QCPItemTracer::tsCircle);
  m_marker->setSize(7);
  m_marker->setPen(QPen(Qt::white, 1));
  m_marker->setBrush(Qt::NoBrush);
  m_line->setVisible(false);
  m_marker->setVisible(false);

  connect(m_plot, &QCustomPlot::mousePress, this, &Plotter::press);
  connect(m_plot, &QCustomPlot::mouseMove, this, &Plotter::drag);
  connect(m_plot, &QCustomPlot::mouseRelease, this, &Plotter::release);
  // The line follows the left button only; the right one opens the Save menu.
}

Plotter::~Plotter() = default;

// The line reads the first curve.
QCPGraph* Plotter::cursorGraph() const { return m_plot->graphCount() > 0 ? m_plot->graph(0) : nullptr; }

void Plotter::removeAllCurves() {
  m_plot->clearGraphs();
  m_looks.clear();
  placeCursor();
  scheduleRedraw();
}

void Plotter::setXBounds(float low, float high) {
  if (!std::isfinite(low) || !std::isfinite(high)) return;
  if (high < low) std::swap(low, high);
  if (low == high) {
    // One value: a scale of width 0 draws nothing, so open it a little either side.
    const float pad = low == 0 ? 1.0f : std::abs(low) * 0.01f;
    low -= pad;
    high += pad;
  }
  m_plot->xAxis->setRange(low, high);
  placeCursor();
  scheduleRedraw();
}

void Plotter::addCurve(const PlotterCurve& c) {
  QCPGraph* g = replaceGraph(c.Key);
  g->setPen(QPen(ComColor(c.Color.value_or(kDefaultColor)), std::max(1, c.Width), PenStyleOf(c.LineStyle)));
  m_looks.insert(c.Key, c);
  if (std::isfinite(c.Min) && std::isfinite(c.Max) && c.Min < c.Max) m_plot->yAxis->setRange(c.Min, c.Max);
  m_plot->yAxis->setTickLabels(c.bShowScale);
  scheduleRedraw();
}

bool Plotter::setCurveData(const QString& key, std::size_t n, std::span<const double> x,
                           std::span<const double> y) {
  QCPGraph* g = fillGraph(key, n, x, y);
  if (!g) return false;
  const PlotterCurve look = m_looks.value(key);
  if (look.bAutoScale && !g->data()->isEmpty()) {
    bool found = false;
    const QCPRange heights = g->data()->valueRange(found);
    double low = std::min(look.Min, heights.lower);
    double high = std::max(look.Max, heights.upper);
    if (!(high > low)) high = low + 1;
    m_plot->yAxis->setRange(low, high);
  }
  placeCursor();
  scheduleRedraw();
  return true;
}

void Plotter::enableCursor(bool on) {
  m_cursorOn = on;
  m_plot->setCursor(on ? Qt::SizeHorCursor : Qt::ArrowCursor);
  if (on) {
    const QCPRange r = m_plot->xAxis->range();
    m_cursorX = r.center();
    if (QCPGraph* g = cursorGraph(); g && !g->data()->isEmpty()) {
      // The middle of the curve's part that is on the scale.
      const double first = std::max(g->data()->constBegin()->key, r.lower);
      const double last = std::min((g->data()->constEnd() - 1)->key, r.upper);
      if (first <= last) m_cursorX = (first + last) / 2;
    }
  }
  placeCursor();
  m_plot->layer(kCursorLayer)->replot();
}

std::optional<double> Plotter::valueAt(double x) const {
  QCPGraph* g = cursorGraph();
  if (!g || g->data()->isEmpty()) return std::nullopt;
  auto begin = g->data()->constBegin();
  auto end = g->data()->constEnd();
  auto at = std::lower_bound(begin, end, x, [](const QCPGraphData& p, double k) { return p.key < k; });
  if (at == end) return (end - 1)->value;
  if (at->key == x || at == begin) return at->value;
  const QCPGraphData& a = *(at - 1);
  const QCPGraphData& b = *at;
  return a.value + (b.value - a.value) * (x - a.key) / (b.key - a.key);
}

void Plotter::moveCursor(double x) {
  QCPGraph* g = cursorGraph();
  if (!m_cursorOn || !g || g->data()->isEmpty() || !std::isfinite(x)) return;
  const QCPRange r = m_plot->xAxis->range();
  double low = std::max(g->data()->constBegin()->key, r.lower);
  double high = std::min((g->data()->constEnd() - 1)->key, r.upper);
  if (low > high) {  // the curve lies off the scale: the scale's ends hold
    low = r.lower;
    high = r.upper;
  }
  m_cursorX = std::clamp(x, low, high);
  placeCursor();
  m_plot->layer(kCursorLayer)->replot();
  emit cursorMoved(g->name(), static_cast<float>(m_cursorX), static_cast<float>(valueAt(m_cursorX).value_or(0)));
}

void Plotter::placeCursor() {
  const std::optional<double> y = valueAt(m_cursorX);
  const bool shown = m_cursorOn && y.has_value();
  m_line->setVisible(shown);
  m_marker->setVisible(shown);
  if (!shown) return;
  m_line->point1->setCoords(m_cursorX, 0);
  m_line->point2->setCoords(m_cursorX, 1);
  m_marker->position->setCoords(m_cursorX, *y);
}

void Plotter::press(QMouseEvent* event) {
  if (!m_cursorOn || event->button() != Qt::LeftButton) return;
  if (!m_plot->axisRect()->rect().contains(event->pos())) return;
  m_dragging = true;
  moveCursor(m_plot->xAxis->pixelToCoord(event->position().x()));
}

void Plotter::drag(QMouseEvent* event) {
  if (m_dragging) moveCursor(m_plot->xAxis->pixelToCoord(event->position().x()));
}

void Plotter::release(QMouseEvent* event) {
  if (m_dragging && event->button() == Qt::LeftButton) m_dragging = false;
}

int Plotter::pixelOf(double x) const { return static_cast<int>(std::lround(m_plot->xAxis->coordToPixel(x))); }

}  // namespace qv
