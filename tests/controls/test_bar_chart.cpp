// The bar chart: bars in order, scale, direction, gap, colours and many bars.
#include <gtest/gtest.h>

#include <QTest>
#include <qcustomplot.h>

#include "bar_chart.h"

namespace qv {
namespace {

// A histogram's bars as the main window builds them: keys "01".."09", "10", ...
std::vector<BarChart::Bar> histogram(int n, QColor color = QColor()) {
  std::vector<BarChart::Bar> bars;
  for (int i = 1; i <= n; ++i)
    bars.push_back({QString("%1").arg(i, 2, 10, QLatin1Char('0')), QString("[%1, %2)").arg(i * 10).arg(i * 10 + 10),
                    color, static_cast<double>(i % 7)});
  return bars;
}

struct Shown {
  explicit Shown(QSize size = {900, 500}) {
    chart.resize(size);
    chart.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&chart));
  }
  QCPAxis* keyAxis() const { return chart.isVertical() ? chart.plot()->xAxis : chart.plot()->yAxis; }
  QCPAxis* valueAxis() const { return chart.isVertical() ? chart.plot()->yAxis : chart.plot()->xAxis; }
  QCPBars* bars(int i) const { return qobject_cast<QCPBars*>(chart.plot()->plottable(i)); }
  BarChart chart;
};

TEST(BarChart, TwelveBarsKeepKeysLabelsAndValuesInOrder) {
  Shown w;
  w.chart.setBars(histogram(12, QColor(255, 0, 0)));
  w.chart.redraw();
  ASSERT_EQ(w.chart.barCount(), 12);
  const char* keys[] = {"01", "02", "03", "04", "05", "06", "07", "08", "09", "10", "11", "12"};
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(w.chart.barKey(i), keys[i]);
    EXPECT_EQ(w.chart.barLabel(i), QString("[%1, %2)").arg((i + 1) * 10).arg((i + 1) * 10 + 10));
    EXPECT_EQ(w.chart.barValue(i), (i + 1) % 7);
    EXPECT_EQ(w.chart.barColor(i), QColor(255, 0, 0));
  }
  // On screen: bar i at position i with its value, and its label under it.
  ASSERT_EQ(w.chart.plot()->plottableCount(), 1);
  const auto data = w.bars(0)->data();
  ASSERT_EQ(data->size(), 12);
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(data->at(i)->key, i + 1.0);
    EXPECT_EQ(data->at(i)->value, (i + 1) % 7);
  }
  EXPECT_EQ(w.chart.labelStride(), 1);
  QStringList labels;
  for (int i = 0; i < 12; ++i) labels << w.chart.barLabel(i);
  EXPECT_EQ(w.keyAxis()->tickVectorLabels(), labels.toVector());
}

TEST(BarChart, ScaleTopSetsTheValueAxis) {
  struct Case {
    double top;
    bool capAtHundred;
    double expectedUpper;
  } cases[] = {
      {50.0, false, 52.5},  {100.0, true, 100.0}, {98.0, true, 100.0}, {50.0, true, 52.5},
      {200.0, true, 210.0}, {0.0, false, 6.3},  // no top: the tallest bar, 6
      {-3.0, false, 6.3},
  };
  for (const Case& c : cases) {
    BarChart chart;
    chart.setBars(histogram(12));
    chart.setPercentSettings(false, false, c.capAtHundred);
    chart.setScaleTop(c.top);
    EXPECT_EQ(chart.scaleTop(), c.top);
    EXPECT_DOUBLE_EQ(chart.plot()->yAxis->range().upper, c.expectedUpper) << c.top << " " << c.capAtHundred;
    EXPECT_EQ(chart.plot()->yAxis->range().lower, 0.0);
  }
  BarChart empty;
  EXPECT_EQ(empty.plot()->yAxis->range().upper, 1.0);
}

TEST(BarChart, DirectionSwapsKeyAndValueAxes) {
  Shown w;
  w.chart.setBars(histogram(12));
  w.chart.setScaleTop(6);
  QCustomPlot* p = w.chart.plot();
  struct Case {
    bool vertical;
    QCPAxis* key;
    QCPAxis* value;
  } cases[] = {{false, p->yAxis, p->xAxis}, {true, p->xAxis, p->yAxis}, {false, p->yAxis, p->xAxis}};
  for (const Case& c : cases) {
    w.chart.setVertical(c.vertical);
    w.chart.redraw();
    EXPECT_EQ(w.chart.isVertical(), c.vertical);
    EXPECT_EQ(w.bars(0)->keyAxis(), c.key);
    EXPECT_EQ(w.bars(0)->valueAxis(), c.value);
    EXPECT_EQ(c.key->range(), QCPRange(0.5, 12.5));
    EXPECT_DOUBLE_EQ(c.value->range().upper, 6.3);
    EXPECT_EQ(c.key->tickVectorLabels().value(0), "[10, 20)");
    EXPECT_EQ(c.key->tickVectorLabels().size(), 12);
    // Horizontal bars list the first bin at the top.
    EXPECT_EQ(p->yAxis->rangeReversed(), !c.vertical);
  }
}

TEST(BarChart, GapSetsTheBarWidth) {
  struct Case {
    int bars, gap, expectedGap;
    double width;
  } cases[] = {
      {5, 20, 20, 0.8}, {5, 75, 75, 0.25}, {5, 30, 30, 0.7},   {5, 0, 0, 1.0},
      {5, -5, 0, 1.0},  {5, 100, 95, 0.05}, {32767, 20, 20, 1.0},  // a gap below a pixel
  };
  Shown w;
  for (const Case& c : cases) {
    w.chart.setBars(histogram(c.bars));
    w.chart.setGap(c.gap);
    w.chart.redraw();
    EXPECT_EQ(w.chart.gap(), c.expectedGap);
    EXPECT_DOUBLE_EQ(w.bars(0)->width(), c.width) << c.bars << " bars, gap " << c.gap;
  }
}

TEST(BarChart, OnePlottablePerColour) {
  BarChart chart;
  std::vector<BarChart::Bar> bars = histogram(6);
  for (size_t i = 0; i < bars.size(); i += 2) bars[i].color = QColor(255, 0, 0);
  chart.setBars(bars);
  ASSERT_EQ(chart.plot()->plottableCount(), 2);
  for (int g = 0; g < 2; ++g) {
    auto* group = qobject_cast<QCPBars*>(chart.plot()->plottable(g));
    ASSERT_EQ(group->data()->size(), 3);
    for (int j = 0; j < 3; ++j) {
      const int bar = static_cast<int>(group->data()->at(j)->key) - 1;
      EXPECT_EQ(group->brush().color(), bars[bar].color.isValid() ? bars[bar].color : chart.palette().color(QPalette::Button));
      EXPECT_EQ(group->data()->at(j)->value, bars[bar].value);
    }
  }
  chart.setBars(histogram(4));  // back to one colour: one plottable again
  EXPECT_EQ(chart.plot()->plottableCount(), 1);
  EXPECT_EQ(chart.barColor(0), QColor()) << "the colour is kept as given";
  chart.clear();
  EXPECT_EQ(chart.barCount(), 0);
  EXPECT_EQ(qobject_cast<QCPBars*>(chart.plot()->plottable(0))->data()->size(), 0);
}

TEST(BarChart, PercentSettingsMarkTheValueAxis) {
  Shown w;
  w.chart.setBars({{"01", "a", QColor(), 25}, {"02", "b", QColor(), 25}, {"03", "c", QColor(), 50}});
  w.chart.setScaleTop(50);
  for (bool on : {true, false, true}) {
    w.chart.setPercentSettings(on, on, on);
    w.chart.redraw();
    EXPECT_EQ(w.chart.percentTickSuffix(), on);
    EXPECT_EQ(w.chart.percentValueLabels(), on);
    EXPECT_EQ(w.chart.percentCapAtHundred(), on);
    const QVector<QString> labels = w.valueAxis()->tickVectorLabels();
    ASSERT_FALSE(labels.isEmpty());
    for (const QString& label : labels) EXPECT_EQ(label.endsWith('%'), on) << label.toStdString();
  }
}

TEST(BarChart, CrowdedLabelsTurnAndThousandsThinOut) {
  struct Case {
    int bars;
    bool vertical;
    double rotation;
    bool thinned;
  } cases[] = {
      {5, true, 0.0, false},   {12, true, -45.0, false}, {60, true, -90.0, true},
      {12, false, 0.0, false}, {32767, true, -90.0, true}, {32767, false, 0.0, true},
  };
  for (const Case& c : cases) {
    Shown w({513, 265});  // the main window's chart
    w.chart.setVertical(c.vertical);
    w.chart.setBars(histogram(c.bars));
    w.chart.redraw();
    w.chart.redraw();  // the second pass sees the margins that the labels took
    EXPECT_EQ(w.chart.labelRotation(), c.rotation) << c.bars << (c.vertical ? " vertical" : " horizontal");
    EXPECT_EQ(w.chart.labelStride() > 1, c.thinned) << c.bars;
    const QVector<double> ticks = w.keyAxis()->tickVector();
    const QVector<QString> labels = w.keyAxis()->tickVectorLabels();
    ASSERT_FALSE(ticks.isEmpty());
    EXPECT_LE(ticks.size(), 60) << "no more labels than room to read them";
    for (int i = 0; i < ticks.size(); ++i) EXPECT_EQ(labels[i], w.chart.barLabel(static_cast<int>(ticks[i]) - 1));
  }
}

TEST(BarChart, TakesTheLargestHistogramInOneDrawing) {
  Shown w;
  w.chart.setBars(histogram(32767));
  w.chart.setScaleTop(6);
  w.chart.redraw();
  ASSERT_EQ(w.chart.barCount(), 32767);
  EXPECT_EQ(w.chart.barKey(32766), "32767");
  EXPECT_EQ(w.chart.barLabel(32766), "[327670, 327680)");
  EXPECT_EQ(w.chart.barValue(32766), 32767 % 7);
  ASSERT_EQ(w.chart.plot()->plottableCount(), 1);
  EXPECT_EQ(w.bars(0)->data()->size(), 32767);
  EXPECT_EQ(w.bars(0)->pen().style(), Qt::NoPen) << "thin bars carry no outline";
  EXPECT_FALSE(w.chart.grab().isNull());
}

TEST(BarChart, FixedTextsAndMargin) {
  BarChart chart;
  EXPECT_EQ(chart.title(), "Chart Title");
  EXPECT_EQ(chart.note(), "Notes:....");
  chart.setMargin(25);
  EXPECT_EQ(chart.margin(), 25);
  EXPECT_EQ(chart.plot()->plotLayout()->margins(), QMargins(25, 25, 25, 25));
  chart.setMargin(0);
  EXPECT_EQ(chart.plot()->plotLayout()->margins(), QMargins());
}

}  // namespace
}  // namespace qv
