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
  c.Key = "Lie";  // scale 0 to 100
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
  // The ends, halfway along two segments, the first of the tied points, and held before and after.
  const std::pair<double, double> cases[] = {{1, 12.5}, {1.5, 31.25}, {2, 50}, {3, 68.75}, {4, 87.5},
                                             {0, 12.5}, {9, 87.5}};
  for (auto [x, y] : cases) EXPECT_DOUBLE_EQ(f.plotter.valueAt(x).value(), y) << x;
  EXPECT_FALSE(Plotter().valueAt(1).has_value());
}

TEST(Plotter, LineStaysWithinTheCurveAndTheScale) {
  // Curve from 1 to 4 at heights 12.5 to 87.5.
  struct Case { const char* name; float low, high; double to; float x, y; } cases[] = {
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
  const auto moveTo = [&](double x, Qt::MouseButtons held) {
    const QPointF global = surface->mapToGlobal(QPointF(0, 0));
    QMouseEvent move(QEvent::MouseMove, QPointF(x, y), global, Qt::NoButton, held, Qt::NoModifier);
    QApplication::sendEvent(surface, &move);
  };
  QTest::mousePress(surface, Qt::LeftButton, {}, QPoint(f.plotter.pixelOf(2.5), y));
  moveTo(f.plotter.pixelOf(7.5), Qt::LeftButton);
  moveTo(surface->width() + 300, Qt::LeftButton);
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
  moveTo(f.plotter.pixelOf(5), Qt::NoButton);
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
