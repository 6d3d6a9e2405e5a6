#include "bar_chart.h"

#include "chart_file.h"

#include <QHash>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <qcustomplot.h>

namespace qv {

// Tick labels of the category axis: the bars' labels at 1..n, every stride-th one.
// A plain vector indexed by position: QCPAxisTickerText keeps a map, which costs more than
// the drawing itself with tens of thousands of bars.
class CategoryTicker : public QCPAxisTicker {
 public:
  void setLabels(const QStringList& labels) { m_labels = labels; }
  void setStride(int stride) { m_stride = std::max(stride, 1); }

 protected:
  double getTickStep(const QCPRange&) override { return m_stride; }
  int getSubTickCount(double) override { return 0; }
  QVector<double> createTickVector(double, const QCPRange& range) override {
    QVector<double> ticks;
    const int n = static_cast<int>(m_labels.size());
    const double first = std::max(1.0, std::ceil((range.lower - 1.0) / m_stride) * m_stride + 1.0);
    const double last = std::min(static_cast<double>(n), range.upper);
    for (double k = first; k <= last; k += m_stride) ticks.append(k);
    return ticks;
  }
  QString getTickLabel(double tick, const QLocale&, QChar, int) override {
    const qsizetype i = std::llround(tick) - 1;
    return i >= 0 && i < m_labels.size() ? m_labels[i] : QString();
  }

 private:
  QStringList m_labels;
  int m_stride = 1;
};

// The value axis: plain numbers, or with a percent sign.
class PercentTicker : public QCPAxisTicker {
 public:
  void setSuffix(bool on) { m_suffix = on; }

 protected:
  QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override {
    const QString text = QCPAxisTicker::getTickLabel(tick, locale, formatChar, precision);
    return m_suffix ? text + QLatin1Char('%') : text;
  }

 private:
  bool m_suffix = false;
};

// Each bar's value as a percentage, over the bar's end, while the bars are wide enough.
class BarValueLabels : public QCPLayerable {
 public:
  BarValueLabels(QCustomPlot* plot, BarChart* chart) : QCPLayerable(plot, QStringLiteral("overlay")), m_chart(chart) {}

 protected:
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override {
    applyAntialiasingHint(painter, mAntialiased, QCP::aeItems);
  }
  QRect clipRect() const override { return mParentPlot->axisRect()->rect(); }
  void draw(QCPPainter* painter) override {
    const BarChart& c = *m_chart;
    const int n = c.barCount();
    if (!c.m_percentValueLabels || n == 0 || n > 500) return;
    QCPAxis* keyAxis = c.m_vertical ? mParentPlot->xAxis : mParentPlot->yAxis;
    QCPAxis* valueAxis = c.m_vertical ? mParentPlot->yAxis : mParentPlot->xAxis;
    const double slot = std::abs(keyAxis->coordToPixel(2.0) - keyAxis->coordToPixel(1.0));
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    QStringList texts;
    texts.reserve(n);
    const QFontMetricsF fm(mParentPlot->font());
    double widest = 0.0;
    for (double v : c.m_values) {
      texts.append(locale.toString(v, 'f', 1) + QLatin1Char('%'));
      widest = std::max(widest, fm.horizontalAdvance(texts.back()));
    }
    if (slot < (c.m_vertical ? widest + 2.0 : fm.height())) return;
    painter->setFont(mParentPlot->font());
    const QRect area = mParentPlot->axisRect()->rect();
    for (int i = 0; i < n; ++i) {
      const double k = keyAxis->coordToPixel(i + 1.0);
      const double v = valueAxis->coordToPixel(c.m_values[i]);
      const double zero = valueAxis->coordToPixel(0.0);
      // Over the bar's end where there is room; otherwise just inside it, in a colour
      // that stands out on the bar.
      QRectF box;
      int flags;
      bool inside;
      if (c.m_vertical) {
        inside = v - fm.height() - 2.0 < area.top();
        box = inside ? QRectF(k - widest / 2.0 - 1.0, v + 1.0, widest + 2.0, fm.height())
                     : QRectF(k - widest / 2.0 - 1.0, v - fm.height() - 1.0, widest + 2.0, fm.height());
        flags = Qt::AlignHCenter | (inside ? Qt::AlignTop : Qt::AlignBottom);
        if (inside && box.bottom() > zero) continue;  // a bar too short to hold it
      } else {
        inside = v + widest + 4.0 > area.right();
        box = inside ? QRectF(v - widest - 4.0, k - fm.height() / 2.0, widest + 2.0, fm.height())
                     : QRectF(v + 3.0, k - fm.height() / 2.0, widest + 2.0, fm.height());
        flags = (inside ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
        if (inside && box.left() < zero) continue;
      }
      const QColor bar = c.effectiveColor(c.m_colors[i]);
      painter->setPen(!inside ? kValueText : bar.lightnessF() > 0.6 ? Qt::black : Qt::white);
      painter->drawText(box, flags, texts[i]);
    }
  }

 private:
  static inline const QColor kValueText{235, 238, 242};
  BarChart* m_chart;
};

namespace {

// The smallest of 1, 2, 5, 10, 20, 50, ... that is at least k.
int niceStride(int k) {
  for (int base = 1;; base *= 10) {
    for (int m : {1, 2, 5})
      if (m * base >= k) return m * base;
    if (base > 100000000) return k;
  }
}

const QColor kPlotTop(46, 56, 68);
const QColor kPlotBottom(28, 34, 42);
const QColor kGrid(84, 96, 110);

}  // namespace

BarChart::BarChart(QWidget* parent)
    : QWidget(parent),
      m_plot(new QCustomPlot(this)),
      m_categoryTicker(new CategoryTicker),
      m_valueTicker(new PercentTicker) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_plot);

  // Bars are rectangles on the pixel grid: antialiasing only costs time. Text stays smooth.
  m_plot->setNotAntialiasedElements(QCP::aeAll);

  QFont titleFont = font();
  QFont noteFont = font();
  if (font().pointSizeF() > 0.0) {  // a font given in pixels keeps its size
    titleFont.setPointSizeF(font().pointSizeF() + 1.0);
    noteFont.setPointSizeF(std::max(font().pointSizeF() - 1.0, 6.0));
  }
  titleFont.setBold(true);
  noteFont.setItalic(true);
  m_title = new QCPTextElement(m_plot, QStringLiteral("Chart Title"), titleFont);
  m_note = new QCPTextElement(m_plot, QStringLiteral("Notes:...."), noteFont);
  m_note->setTextFlags(Qt::AlignLeft | Qt::AlignVCenter);
  m_note->setMargins(QMargins(6, 0, 6, 3));
  m_plot->plotLayout()->insertRow(0);
  m_plot->plotLayout()->addElement(0, 0, m_title);
  m_plot->plotLayout()->addElement(2, 0, m_note);
  m_plot->plotLayout()->setRowSpacing(0);

  QLinearGradient ground(0, 0, 0, 1);
  ground.setCoordinateMode(QGradient::ObjectMode);
  ground.setColorAt(0.0, kPlotTop);
  ground.setColorAt(1.0, kPlotBottom);
  m_plot->axisRect()->setBackground(QBrush(ground));
  for (QCPAxis* axis : {m_plot->xAxis, m_plot->yAxis}) {
    axis->grid()->setPen(QPen(kGrid, 1, Qt::DotLine));
    axis->grid()->setZeroLinePen(Qt::NoPen);
    axis->setSubTicks(false);
  }

  m_baseMargins = m_plot->axisRect()->minimumMargins();
  m_valueLabels = new BarValueLabels(m_plot, this);
  connect(m_plot, &QCustomPlot::beforeReplot, this, &BarChart::layoutCategories);
  rebuildPlottables();
  applyDirection();
  applyRanges();
  AddChartFileMenu(this, m_plot);
}

BarChart::~BarChart() = default;

void BarChart::setFileBaseName(const QString& name) { SetChartFileBaseName(this, name); }

QString BarChart::barKey(int i) const { return i >= 0 && i < barCount() ? m_keys[i] : QString(); }

QString BarChart::barLabel(int i) const { return i >= 0 && i < barCount() ? m_labels[i] : QString(); }

QColor BarChart::barColor(int i) const { return i >= 0 && i < barCount() ? m_colors[i] : QColor(); }

double BarChart::barValue(int i) const { return i >= 0 && i < barCount() ? m_values[i] : 0.0; }

QString BarChart::title() const { return m_title->text(); }

QString BarChart::note() const { return m_note->text(); }

QSize BarChart::sizeHint() const { return {520, 280}; }

QColor BarChart::effectiveColor(const QColor& c) const {
  return c.isValid() ? c : palette().color(QPalette::Button);
}

void BarChart::clear() { setBars({}); }

void BarChart::setBars(const std::vector<Bar>& bars) {
  const qsizetype n = static_cast<qsizetype>(bars.size());
  m_keys.clear();
  m_labels.clear();
  m_colors.clear();
  m_values.clear();
  m_keys.reserve(n);
  m_labels.reserve(n);
  m_colors.reserve(n);
  m_values.reserve(n);
  for (const Bar& b : bars) {
    m_keys.append(b.key);
    m_labels.append(b.label);
    m_colors.append(b.color);
    m_values.append(b.value);
  }

  // Shaping text is slow: of a long list, measure only a few of the longest labels.
  const QFontMetricsF fm(m_plot->xAxis->tickLabelFont());
  qsizetype longest = 0;
  for (const QString& label : m_labels) longest = std::max(longest, label.size());
  m_widestLabel = 0.0;
  int measured = 0;
  for (const QString& label : m_labels) {
    if (n > 64 && label.size() < longest - 1) continue;
    m_widestLabel = std::max(m_widestLabel, fm.horizontalAdvance(label));
    if (++measured == 64) break;
  }
  m_categoryTicker->setLabels(m_labels);
  rebuildPlottables();
  applyRanges();
  scheduleReplot();
}

// One QCPBars per colour, each filled with a single setData: a drawing in one colour, the
// usual case, is one plottable.
void BarChart::rebuildPlottables() {
  const int n = barCount();
  QVector<QColor> groupColors;
  QVector<QVector<double>> groupKeys;
  QVector<QVector<double>> groupValues;

  const QColor firstColor = n > 0 ? effectiveColor(m_colors[0]) : QColor();
  const bool oneColor = std::all_of(m_colors.cbegin(), m_colors.cend(),
                                    [&](const QColor& c) { return effectiveColor(c) == firstColor; });
  if (oneColor) {
    QVector<double> keys(n);
    for (int i = 0; i < n; ++i) keys[i] = i + 1.0;
    groupColors.append(n > 0 ? firstColor : effectiveColor(QColor()));
    groupKeys.append(keys);
    groupValues.append(m_values);
  } else {
    QHash<QRgb, int> groupOf;
    for (int i = 0; i < n; ++i) {
      const QColor c = effectiveColor(m_colors[i]);
      auto it = groupOf.find(c.rgba());
      if (it == groupOf.end()) {
        it = groupOf.insert(c.rgba(), static_cast<int>(groupColors.size()));
        groupColors.append(c);
        groupKeys.emplace_back();
        groupValues.emplace_back();
      }
      groupKeys[*it].append(i + 1.0);
      groupValues[*it].append(m_values[i]);
    }
  }

  QCPAxis* keyAxis = m_vertical ? m_plot->xAxis : m_plot->yAxis;
  QCPAxis* valueAxis = m_vertical ? m_plot->yAxis : m_plot->xAxis;
  while (m_groups.size() > static_cast<size_t>(groupColors.size())) {
    m_plot->removePlottable(m_groups.back());
    m_groups.pop_back();
  }
  while (m_groups.size() < static_cast<size_t>(groupColors.size())) {
    auto* bars = new QCPBars(keyAxis, valueAxis);
    bars->setPen(Qt::NoPen);
    m_groups.push_back(bars);
  }
  for (qsizetype g = 0; g < groupColors.size(); ++g) {
    m_groups[g]->setBrush(groupColors[g]);
    m_groups[g]->setData(groupKeys[g], groupValues[g], /*alreadySorted=*/true);
  }
}

void BarChart::applyDirection() {
  QCPAxis* keyAxis = m_vertical ? m_plot->xAxis : m_plot->yAxis;
  QCPAxis* valueAxis = m_vertical ? m_plot->yAxis : m_plot->xAxis;
  for (QCPBars* bars : m_groups) {
    bars->setKeyAxis(keyAxis);
    bars->setValueAxis(valueAxis);
  }
  keyAxis->setTicker(m_categoryTicker);
  valueAxis->setTicker(m_valueTicker);
  keyAxis->grid()->setVisible(false);
  valueAxis->grid()->setVisible(true);
  keyAxis->setTickLength(0, 3);
  valueAxis->setTickLength(0, 4);
  valueAxis->setTickLabelRotation(0);
  // Horizontal bars read from the top down, as a list does.
  keyAxis->setRangeReversed(!m_vertical);
  valueAxis->setRangeReversed(false);
}

void BarChart::applyRanges() {
  const int n = barCount();
  QCPAxis* keyAxis = m_vertical ? m_plot->xAxis : m_plot->yAxis;
  QCPAxis* valueAxis = m_vertical ? m_plot->yAxis : m_plot->xAxis;
  keyAxis->setRange(0.5, std::max(n, 1) + 0.5);

  double top = m_scaleTop;
  double lowest = 0.0;
  if (n > 0) {
    const auto [lo, hi] = std::minmax_element(m_values.cbegin(), m_values.cend());
    if (top <= 0.0) top = *hi;
    lowest = std::min(0.0, *lo * 1.05);
  }
  double upper = top > 0.0 ? top * 1.05 : 1.0;
  if (m_percentCap && top > 0.0 && top <= 100.0) upper = std::min(upper, 100.0);
  valueAxis->setRange(lowest, upper);
}

void BarChart::setScaleTop(double top) {
  if (std::isnan(top)) return;
  m_scaleTop = top;
  applyRanges();
  scheduleReplot();
}

void BarChart::setPercentSettings(bool tickSuffix, bool valueLabels, bool capAtHundred) {
  m_percentTicks = tickSuffix;
  m_percentValueLabels = valueLabels;
  m_percentCap = capAtHundred;
  m_valueTicker->setSuffix(tickSuffix);
  applyRanges();
  scheduleReplot();
}

void BarChart::setVertical(bool vertical) {
  if (vertical == m_vertical) return;
  m_vertical = vertical;
  applyDirection();
  applyRanges();
  scheduleReplot();
}

void BarChart::setGap(int gap) {
  m_gap = std::clamp(gap, 0, 95);
  scheduleReplot();
}

void BarChart::setMargin(int margin) {
  m_margin = std::max(margin, 0);
  m_plot->plotLayout()->setMargins(QMargins(m_margin, m_margin, m_margin, m_margin));
  scheduleReplot();
}

// Before each replot: how the category labels fit the room of a bar, how wide the bars
// are drawn, and whether they are wide enough to deserve an outline.
void BarChart::layoutCategories() {
  const int n = barCount();
  QCPAxis* keyAxis = m_vertical ? m_plot->xAxis : m_plot->yAxis;
  QCPAxisRect* rect = m_plot->axisRect();
  double length = m_vertical ? rect->width() : rect->height();
  if (length < 10.0) length = (m_vertical ? width() : height()) - 80.0;  // not laid out yet
  const double slot = std::max(length, 1.0) / std::max(n, 1);

  const double h = QFontMetricsF(keyAxis->tickLabelFont()).height();
  int stride = 1;
  double rotation = 0.0;
  if (m_vertical) {
    if (m_widestLabel + 6.0 > slot) {
      // Turned by 45 degrees, neighbouring labels stand slot/sqrt(2) apart.
      if (slot >= 1.5 * h) {
        rotation = -45.0;
      } else {
        rotation = -90.0;
        stride = niceStride(static_cast<int>(std::ceil(1.2 * h / slot)));
      }
    }
  } else {
    stride = niceStride(static_cast<int>(std::ceil(1.1 * h / slot)));
  }
  // A turned label reaches to the left of its bar, and QCustomPlot leaves out a label that
  // would cross the widget's edge: keep room for the first one.
  int leftRoom = 0;
  if (rotation == -45.0 && n > 0) {
    const double w = QFontMetricsF(keyAxis->tickLabelFont()).horizontalAdvance(m_labels[0]);
    leftRoom = static_cast<int>(std::ceil(0.7072 * (w + h) + keyAxis->tickLabelPadding() - slot / 2.0));
  }
  QMargins minimum = m_baseMargins;
  minimum.setLeft(std::max(minimum.left(), leftRoom));
  rect->setMinimumMargins(minimum);
  m_labelStride = stride;
  m_labelRotation = rotation;
  m_categoryTicker->setStride(stride);
  keyAxis->setTickLabelRotation(rotation);

  // A gap narrower than a pixel falls between pixel centres only now and then and draws
  // as stripes: bars that thin are drawn edge to edge.
  const double barWidth = slot * m_gap / 100.0 < 1.0 ? 1.0 : (100 - m_gap) / 100.0;
  const bool outline = slot * barWidth >= 4.0;
  for (QCPBars* bars : m_groups) {
    bars->setWidth(barWidth);
    bars->setPen(outline ? QPen(bars->brush().color().darker(170), 1.0) : QPen(Qt::NoPen));
  }
}

void BarChart::scheduleReplot() { m_plot->replot(QCustomPlot::rpQueuedReplot); }

void BarChart::redraw() { m_plot->replot(QCustomPlot::rpImmediateRefresh); }

bool BarChart::savePng(const QString& path) {
  redraw();
  return grab().save(path, "PNG");
}

}  // namespace qv
