// The bar chart: bars in order, scale, direction, gap, colours and many bars.
#include <gtest/gtest.h>

#include <QTest>
#include <qcustomplot.h>

#include "bar_chart.h"

namespace qv {
namespace {

QString rangeLabel(int i) { return QString("[%1, %2)").arg(i * 10).arg(i * 10 + 10); }

// A histogram's bars as the main window builds them: keys "01".."09", "10", ..., values i % 7.
std::vector<BarChart::Bar> histogram(int n, QColor color = QColor()) {
  std::vector<BarChart::Bar> bars;
  for (int i = 1; i <= n; ++i)
    bars.push_back({QString("%1").arg(i, 2, 10, QLatin1Char('0')), rangeLabel(i), color, static_cast<double>(i % 7)});
  return bars;
}

void show(BarChart& chart, QSize size = {900, 500}) {
  chart.resize(size);
  chart.show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&chart));
}

QCPBars* bars(const BarChart& chart, int i = 0) { return qobject_cast<QCPBars*>(chart.plot()->plottable(i)); }

// Bar i stands at i + 1 with its value and its label; the percent sign goes on the value
// axis only, whichever way the bars stand.
TEST(BarChart, DirectionSwapsKeyAndValueAxesAndKeepsTheBarsInOrder) {
  BarChart chart;
  show(chart);
  chart.setBars(histogram(12));
  chart.setScaleTop(6);
  QCustomPlot* p = chart.plot();
  QStringList labels;
  for (int i = 1; i <= 12; ++i) labels << rangeLabel(i);
  struct Case { bool vertical, percent; QCPAxis *key, *value; } cases[] = {
      {false, true, p->yAxis, p->xAxis}, {true, false, p->xAxis, p->yAxis}, {false, false, p->yAxis, p->xAxis},
      {true, true, p->xAxis, p->yAxis}};
  for (const Case& c : cases) {
    chart.setVertical(c.vertical);
    chart.setPercentSettings(c.percent, !c.percent, !c.percent);
    chart.redraw();
    EXPECT_EQ(bars(chart)->keyAxis(), c.key);
    EXPECT_EQ(bars(chart)->valueAxis(), c.value);
    EXPECT_EQ(c.key->range(), QCPRange(0.5, 12.5));
    EXPECT_DOUBLE_EQ(c.value->range().upper, 6.3);
    EXPECT_EQ(chart.labelStride(), 1);
    EXPECT_EQ(c.key->tickVectorLabels(), labels.toVector());
    EXPECT_EQ(p->yAxis->rangeReversed(), !c.vertical) << "horizontal bars list the first bin at the top";
    const QVector<QString> values = c.value->tickVectorLabels();
    ASSERT_FALSE(values.isEmpty());
    for (const QString& label : values) EXPECT_EQ(label.endsWith('%'), c.percent) << label.toStdString();
  }
  ASSERT_EQ(p->plottableCount(), 1);
  const auto data = bars(chart)->data();
  ASSERT_EQ(data->size(), 12);
  for (int i = 0; i < 12; ++i) EXPECT_TRUE(data->at(i)->key == i + 1.0 && data->at(i)->value == (i + 1) % 7) << i;
}

TEST(BarChart, ScaleTopSetsTheValueAxisAndMarginsAreNeverNegative) {
  struct Case { double top; bool capAtHundred; double expectedUpper; } cases[] = {
      {50.0, false, 52.5}, {100.0, true, 100.0}, {98.0, true, 100.0}, {50.0, true, 52.5}, {200.0, true, 210.0},
      {0.0, false, 6.3}, {-3.0, false, 6.3}};  // no top: the tallest bar, 6
  for (const Case& c : cases) {
    BarChart chart;
    chart.setBars(histogram(12));
    chart.setPercentSettings(false, false, c.capAtHundred);
    chart.setScaleTop(c.top);
    EXPECT_DOUBLE_EQ(chart.plot()->yAxis->range().upper, c.expectedUpper) << c.top << " " << c.capAtHundred;
    EXPECT_EQ(chart.plot()->yAxis->range().lower, 0.0);
  }
  BarChart empty;
  EXPECT_EQ(empty.plot()->yAxis->range().upper, 1.0) << "an empty chart";
  empty.setMargin(25);
  EXPECT_EQ(empty.plot()->plotLayout()->margins(), QMargins(25, 25, 25, 25));
  empty.setMargin(-3);
  EXPECT_EQ(empty.plot()->plotLayout()->margins(), QMargins());
}

TEST(BarChart, OnePlottablePerColour) {
  BarChart chart;
  std::vector<BarChart::Bar> given = histogram(6);
  for (size_t i = 0; i < given.size(); i += 2) given[i].color = QColor(255, 0, 0);
  chart.setBars(given);
  ASSERT_EQ(chart.plot()->plottableCount(), 2);
  for (int g = 0; g < 2; ++g) {
    ASSERT_EQ(bars(chart, g)->data()->size(), 3);
    for (int j = 0; j < 3; ++j) {
      const int bar = static_cast<int>(bars(chart, g)->data()->at(j)->key) - 1;
      const QColor colour = bar % 2 ? chart.palette().color(QPalette::Button) : QColor(255, 0, 0);
      EXPECT_EQ(bars(chart, g)->brush().color(), colour);
      EXPECT_EQ(bars(chart, g)->data()->at(j)->value, given[bar].value);
    }
  }
  chart.setBars(histogram(4));  // back to one colour: one plottable again
  EXPECT_EQ(chart.plot()->plottableCount(), 1);
  EXPECT_EQ(chart.barColor(0), QColor()) << "the colour is kept as given";
  chart.clear();
  EXPECT_EQ(chart.barCount(), 0);
  EXPECT_EQ(bars(chart)->data()->size(), 0);
}

// Up to the largest histogram, 32,767 bars, drawn at once. The gap is a share of a bar's
// room, 0 to 95; a gap below a pixel is no gap, and bars too thin lose their outline.
TEST(BarChart, CrowdedLabelsTurnOrThinOutAndTheGapSetsTheBarWidth) {
  struct Case { int bars; bool vertical; double rotation; bool thinned; int gap; double width; bool outline; };
  const Case cases[] = {
      {5, true, 0.0, false, 75, 0.25, true},      {12, true, -45.0, false, 0, 1.0, true},
      {60, true, -90.0, true, -5, 1.0, true},     {12, false, 0.0, false, 100, 0.05, false},
      {32767, true, -90.0, true, 20, 1.0, false}, {32767, false, 0.0, true, 30, 1.0, false}};
  for (const Case& c : cases) {
    BarChart chart;
    show(chart, {513, 265});  // the main window's chart
    chart.setVertical(c.vertical);
    chart.setBars(histogram(c.bars));
    chart.setGap(c.gap);
    chart.redraw();
    chart.redraw();  // the second pass sees the margins that the labels took
    EXPECT_EQ(chart.labelRotation(), c.rotation) << c.bars << (c.vertical ? " vertical" : " horizontal");
    EXPECT_EQ(chart.labelStride() > 1, c.thinned) << c.bars;
    EXPECT_DOUBLE_EQ(bars(chart)->width(), c.width) << c.bars << " bars, gap " << c.gap;
    EXPECT_EQ(bars(chart)->pen().style() != Qt::NoPen, c.outline) << c.bars;
    EXPECT_EQ(bars(chart)->data()->size(), c.bars);
    QCPAxis* keyAxis = c.vertical ? chart.plot()->xAxis : chart.plot()->yAxis;
    const QVector<double> ticks = keyAxis->tickVector();
    ASSERT_FALSE(ticks.isEmpty());
    EXPECT_LE(ticks.size(), 60) << "no more labels than room to read them";
    const QVector<QString> labels = keyAxis->tickVectorLabels();
    for (int i = 0; i < ticks.size(); ++i) EXPECT_EQ(labels[i], rangeLabel(static_cast<int>(ticks[i])));
    EXPECT_FALSE(chart.grab().isNull());
  }
}

}  // namespace
}  // namespace qv
