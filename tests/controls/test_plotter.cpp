// Plotter: the read-out of the curve under the line, the line held at the curve's ends,
// the report of each move, and a drag with the mouse.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <qcustomplot.h>

#include <limits>
#include <vector>

#include "plotter.h"

namespace qv {
namespace {

PlotterCurve Lie() {
  PlotterCurve c;
  c.Name = "Curve 1";
  c.Key = "Lie";
  c.Min = 0;
  c.Max = 100;
  return c;
}

struct Fixture {
  Plotter plotter;
  Fixture(std::vector<double> x, std::vector<double> y, float low, float high) {
    plotter.resize(500, 250);
    plotter.setXBounds(low, high);
    plotter.addCurve(Lie());
    plotter.setCurveData("Lie", x.size(), x, y);
    plotter.enableCursor(true);
  }
};

TEST(Plotter, ReadOut) {
  // The cumulative curve of 1, 2, 2, 4.
  Fixture f({1, 2, 2, 4}, {12.5, 50, 50, 87.5}, 1, 4);
  struct Case {
    double x, y;
  };
  const Case cases[] = {
      {1, 12.5},     // first point
      {1.5, 31.25},  // halfway on the segment to (2, 50)
      {2, 50},       // the first of the tied points
      {3, 68.75},    // halfway from (2, 50) to (4, 87.5)
      {4, 87.5},     // last point
      {0, 12.5},     // before the first point: its value
      {9, 87.5},     // after the last: its value
  };
  for (const Case& c : cases) EXPECT_DOUBLE_EQ(f.plotter.valueAt(c.x).value(), c.y) << c.x;
  Plotter empty;
  EXPECT_FALSE(empty.valueAt(1).has_value());
}

TEST(Plotter, LineStaysWithinTheCurveAndTheScale) {
  struct Case {
    const char* name;
    float low, high;
    double to;
    float x, y;
  };
  // Curve from 1 to 4 at heights 12.5 to 87.5.
  const Case cases[] = {
      {"inside", 0, 5, 3, 3, 68.75f},
      {"beyond the right end", 0, 5, 50, 4, 87.5f},
      {"beyond the left end", 0, 5, -50, 1, 12.5f},
      {"scale narrower than the curve", 1.5f, 3, 99, 3, 68.75f},
  };
  for (const Case& c : cases) {
    Fixture f({1, 2, 2, 4}, {12.5, 50, 50, 87.5}, c.low, c.high);
    QSignalSpy moved(&f.plotter, &Plotter::cursorMoved);
    f.plotter.moveCursor(c.to);
    ASSERT_EQ(moved.count(), 1) << c.name;
    EXPECT_EQ(moved[0][0].toString(), QString("Lie")) << c.name;
    EXPECT_FLOAT_EQ(moved[0][1].toFloat(), c.x) << c.name;
    EXPECT_FLOAT_EQ(moved[0][2].toFloat(), c.y) << c.name;
  }
}

TEST(Plotter, NoReportBeforeTheLineIsOnOrWithoutACurve) {
  Plotter p;
  QSignalSpy moved(&p, &Plotter::cursorMoved);
  p.setXBounds(0, 3);
  p.addCurve(Lie());
  const std::vector<double> x = {1, 2}, y = {10, 20};
  p.setCurveData("Lie", 2, x, y);
  p.moveCursor(1.5);  // the line is not on yet
  p.enableCursor(true);
  EXPECT_DOUBLE_EQ(p.cursorX(), 1.5);  // in the middle of the curve
  p.moveCursor(std::numeric_limits<double>::quiet_NaN());
  p.removeAllCurves();
  p.moveCursor(1.5);
  EXPECT_EQ(moved.count(), 0);
}

TEST(Plotter, MouseDrag) {
  Fixture f({0, 10}, {0, 100}, 0, 10);
  f.plotter.show();
  f.plotter.redraw();
  QSignalSpy moved(&f.plotter, &Plotter::cursorMoved);
  QWidget* surface = f.plotter.plot();
  const int y = f.plotter.plot()->axisRect()->center().y();
  QTest::mousePress(surface, Qt::LeftButton, {}, QPoint(f.plotter.pixelOf(2.5), y));
  QMouseEvent move(QEvent::MouseMove, QPointF(f.plotter.pixelOf(7.5), y), surface->mapToGlobal(QPointF(0, 0)),
                   Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(surface, &move);
  QMouseEvent beyond(QEvent::MouseMove, QPointF(surface->width() + 300, y), surface->mapToGlobal(QPointF(0, 0)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(surface, &beyond);
  QTest::mouseRelease(surface, Qt::LeftButton, {}, QPoint(surface->width() - 1, y));
  ASSERT_EQ(moved.count(), 3);
  // Pixels are whole: the line lands within a pixel's width of where the mouse was.
  const double pixel = 10.0 / f.plotter.plot()->axisRect()->width();
  EXPECT_NEAR(moved[0][1].toFloat(), 2.5, pixel);
  EXPECT_NEAR(moved[0][2].toFloat(), 25, 10 * pixel);
  EXPECT_NEAR(moved[1][1].toFloat(), 7.5, pixel);
  EXPECT_FLOAT_EQ(moved[2][1].toFloat(), 10);  // dragged past the end: held at it
  EXPECT_FLOAT_EQ(moved[2][2].toFloat(), 100);
  // After the release the mouse moves the line no more.
  QMouseEvent after(QEvent::MouseMove, QPointF(f.plotter.pixelOf(5), y), surface->mapToGlobal(QPointF(0, 0)),
                    Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(surface, &after);
  EXPECT_EQ(moved.count(), 3);
}

TEST(Plotter, OneCurvePerKeyAndAutoScale) {
  Plotter p;
  PlotterCurve c = Lie();
  c.Max = 0.5;
  c.bAutoScale = true;
  p.addCurve(c);
  p.addCurve(c);  // the swap back and forth adds "Lie" twice: the user sees one
  EXPECT_EQ(p.curveCount(), 1);
  const std::vector<double> x = {0, 1, 2}, y = {0.1, 0.8, 0.2};
  p.setCurveData("Lie", 3, x, y);
  EXPECT_EQ(p.yLow(), 0);
  EXPECT_DOUBLE_EQ(p.yHigh(), 0.8);  // the curve reaches above Max
  EXPECT_EQ(p.curve("Lie").Name, QString("Curve 1"));
  // One value: a scale of width 0 is opened around it.
  p.setXBounds(3, 3);
  EXPECT_LT(p.xLow(), 3);
  EXPECT_GT(p.xHigh(), 3);
}

}  // namespace
}  // namespace qv
