// The double slider: exact positions, bounds, the label, and the user's moves.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QSlider>
#include <QStyleOptionSlider>
#include <QTest>

#include "double_slider.h"

namespace qv {
namespace {

TEST(DoubleSlider, PositionsFromCodeStayExactWithinTheBounds) {
  struct Case {
    double lower, upper, set, expected;
  } cases[] = {
      {0.0, 10.0, 3.14159, 3.14159},
      {0.0, 10.0, 0.1 + 0.2, 0.1 + 0.2},  // not the 0.3 of a rounded grid
      {-2.5, 7.25, 7.25, 7.25},
      {-2.5, 7.25, -2.5, -2.5},
      {0.0, 10.0, -5.0, 0.0},
      {0.0, 10.0, 12.0, 10.0},
      {1.5, 1.5, 7.0, 1.5},  // a constant sample: both bounds equal
      {-1e300, 1e300, 123.456, 123.456},
      {0.0, 0.15, 0.05, 0.05},  // the significance slider
  };
  for (const Case& c : cases) {
    DoubleSlider s;
    QSignalSpy moved(&s, &DoubleSlider::valueChanged);
    QSignalSpy released(&s, &DoubleSlider::mouseReleased);
    s.setBounds(c.lower, c.upper);
    s.setPosition(c.set);
    EXPECT_EQ(s.position(), c.expected) << c.lower << ".." << c.upper << " set " << c.set;
    EXPECT_EQ(s.lowerBound(), c.lower);
    EXPECT_EQ(s.upperBound(), c.upper);
    EXPECT_EQ(moved.count() + released.count(), 0) << "code emits nothing";
  }
}

TEST(DoubleSlider, BoundsSetOneAfterTheOtherPullThePositionAlong) {
  DoubleSlider s;
  s.setBounds(0.0, 10.0);
  s.setPosition(8.0);
  s.setUpperBound(5.0);
  EXPECT_EQ(s.position(), 5.0);
  // A new range wholly above the old one, lower bound first: for a moment lower > upper.
  s.setLowerBound(100.0);
  EXPECT_EQ(s.position(), 5.0) << "between the two bounds, whichever is lower";
  s.setUpperBound(200.0);
  EXPECT_EQ(s.position(), 100.0);
  s.setPosition(150.5);
  EXPECT_EQ(s.position(), 150.5);
  s.setLowerBound(std::numeric_limits<double>::quiet_NaN());
  s.setPosition(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(s.lowerBound(), 100.0);
  EXPECT_EQ(s.position(), 150.5);
}

TEST(DoubleSlider, LabelShowsThePositionWithItsDecimals) {
  const QLocale saved;
  QLocale::setDefault(QLocale::c());
  struct Case {
    double position;
    int decimals;
    const char* text;
  } cases[] = {
      {3.14159, 2, "3.14"},       {3.14159, 0, "3"},        {2.675, 1, "2.7"},
      {-0.001, 2, "0.00"},        {1234567.891, 1, "1234567.9"}, {0.15, 3, "0.150"},
      {-12.34, 1, "-12.3"},       {7.0, 20, "7.000000000000000"},
  };
  for (const Case& c : cases) {
    DoubleSlider s;
    s.setBounds(-1e7, 1e7);
    s.setDecimals(c.decimals);
    s.setPosition(c.position);
    EXPECT_EQ(s.valueText(), c.text) << c.position << " with " << c.decimals;
    EXPECT_EQ(s.position(), c.position) << "the position itself is not rounded";
  }
  QLocale::setDefault(saved);
}

struct Shown {
  Shown(double lower, double upper, double position) {
    s.setBounds(lower, upper);
    s.setPosition(position);
    s.resize(300, 30);
    s.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&s));
  }
  QPoint handleCentre() const {
    QStyleOptionSlider opt;
    opt.initFrom(s.slider());
    opt.orientation = Qt::Horizontal;
    opt.minimum = s.slider()->minimum();
    opt.maximum = s.slider()->maximum();
    opt.sliderPosition = s.slider()->sliderPosition();
    opt.sliderValue = s.slider()->value();
    opt.subControls = QStyle::SC_SliderHandle;
    return s.slider()->style()->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderHandle, s.slider()).center();
  }
  DoubleSlider s;
};

// With these bounds lower + (upper - lower) is 15.390000000000002: the far end must still be
// exactly the upper bound.
TEST(DoubleSlider, DraggingToAnEndGivesExactlyThatBound) {
  struct Case {
    double start;
    int toX;  // where the mouse is let go, in the slider's coordinates
    double expected;
  } cases[] = {{3.0, 10000, 15.39}, {3.0, -10000, -2.67}};
  for (const Case& c : cases) {
    Shown w(-2.67, 15.39, c.start);
    QSlider* slider = w.s.slider();
    QSignalSpy moved(&w.s, &DoubleSlider::valueChanged);
    QSignalSpy released(&w.s, &DoubleSlider::mouseReleased);
    const QPoint from = w.handleCentre();
    const QPoint to(c.toX, from.y());
    QTest::mousePress(slider, Qt::LeftButton, {}, from);
    QTest::mouseMove(slider, QPoint((from.x() + (c.toX > 0 ? slider->width() : 0)) / 2, from.y()));
    QTest::mouseMove(slider, to);
    EXPECT_EQ(released.count(), 0) << "nothing is released while dragging";
    QTest::mouseRelease(slider, Qt::LeftButton, {}, to);
    ASSERT_GE(moved.count(), 1);
    ASSERT_EQ(released.count(), 1);
    EXPECT_EQ(released.at(0).at(0).toDouble(), c.expected);
    EXPECT_EQ(moved.last().at(0).toDouble(), c.expected);
    EXPECT_EQ(w.s.position(), c.expected);
  }
}

TEST(DoubleSlider, KeyboardMovesAreReleasedAsTheKeyIsLetGo) {
  Shown w(-2.67, 15.39, 3.0);
  w.s.slider()->setFocus();
  struct Case {
    Qt::Key key;
    int released;  // signals on letting go of the key
    double position;
  } cases[] = {
      {Qt::Key_End, 1, 15.39}, {Qt::Key_Right, 0, 15.39}, {Qt::Key_Home, 1, -2.67}, {Qt::Key_Left, 0, -2.67},
  };
  for (const Case& c : cases) {
    QSignalSpy released(&w.s, &DoubleSlider::mouseReleased);
    QTest::keyClick(w.s.slider(), c.key);
    EXPECT_EQ(released.count(), c.released) << c.key;
    EXPECT_EQ(w.s.position(), c.position) << c.key;
    if (c.released) {
      EXPECT_EQ(released.at(0).at(0).toDouble(), c.position);
    }
  }
  QSignalSpy released(&w.s, &DoubleSlider::mouseReleased);
  QTest::keyClick(w.s.slider(), Qt::Key_Right);
  ASSERT_EQ(released.count(), 1);
  EXPECT_GT(w.s.position(), -2.67);
  EXPECT_LT(w.s.position(), 15.39);
}

}  // namespace
}  // namespace qv
