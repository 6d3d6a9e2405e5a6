// The double slider: exact positions, bounds, the label, and the user's moves.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QSlider>
#include <QStyle>
#include <QTest>
#include <cmath>
#include <limits>

#include "double_slider.h"

namespace qv {
namespace {

TEST(DoubleSlider, PositionsFromCodeStayExactWithinTheBounds) {
  struct Case { double lower, upper, set, expected; } cases[] = {
      {0.0, 10.0, 3.14159, 3.14159}, {0.0, 10.0, 0.1 + 0.2, 0.1 + 0.2},  // not the 0.3 of a rounded grid
      {-2.5, 7.25, 7.25, 7.25},      {-2.5, 7.25, -2.5, -2.5},
      {0.0, 10.0, -5.0, 0.0},        {0.0, 10.0, 12.0, 10.0},
      {1.5, 1.5, 7.0, 1.5},  // a constant sample: both bounds equal
      {-1e300, 1e300, 123.456, 123.456}, {0.0, 0.15, 0.05, 0.05}};  // the significance slider
  for (const Case& c : cases) {
    DoubleSlider s;
    QSignalSpy moved(&s, &DoubleSlider::valueChanged);
    QSignalSpy released(&s, &DoubleSlider::mouseReleased);
    s.setBounds(c.lower, c.upper);
    s.setPosition(c.set);
    EXPECT_EQ(s.position(), c.expected) << c.lower << ".." << c.upper << " set " << c.set;
    EXPECT_EQ(moved.count() + released.count(), 0) << "code emits nothing";
  }
}

// A range wholly above the old one, set lower bound first, has for a moment lower > upper:
// the position stays between the two, whichever is lower. NaN changes nothing.
TEST(DoubleSlider, BoundsSetOneAfterTheOtherPullThePositionAlong) {
  DoubleSlider s;
  s.setBounds(0.0, 10.0);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  struct Step { char set; double value, position; } steps[] = {  // set: 'l'ower, 'u'pper bound or 'p'osition
      {'p', 8.0, 8.0},     {'u', 5.0, 5.0},   {'l', 100.0, 5.0}, {'u', 200.0, 100.0},
      {'p', 150.5, 150.5}, {'l', nan, 150.5}, {'p', nan, 150.5}};
  for (const Step& st : steps) {
    st.set == 'l' ? s.setLowerBound(st.value) : st.set == 'u' ? s.setUpperBound(st.value) : s.setPosition(st.value);
    EXPECT_EQ(s.position(), st.position) << st.set << " " << st.value;
  }
  EXPECT_EQ(s.lowerBound(), 100.0);
}

TEST(DoubleSlider, LabelShowsThePositionWithItsDecimals) {
  const QLocale saved;
  QLocale::setDefault(QLocale::c());
  struct Case { double position; int decimals; const char* text; } cases[] = {
      {3.14159, 2, "3.14"},          {3.14159, 0, "3"},  {2.675, 1, "2.7"},    {-0.001, 2, "0.00"},
      {1234567.891, 1, "1234567.9"}, {0.15, 3, "0.150"}, {-12.34, 1, "-12.3"}, {7.0, 20, "7.000000000000000"}};
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

// With these bounds lower + (upper - lower) is 15.390000000000002: the far end must still
// be exactly the upper bound, by mouse and by key. A move is released once, as the mouse
// button or the key is let go; a key that moves nothing releases nothing.
TEST(DoubleSlider, UserMovesToAnEndGiveExactlyThatBound) {
  DoubleSlider s;
  s.setBounds(-2.67, 15.39);
  s.resize(300, 30);
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
  QSlider* slider = s.slider();
  for (int toX : {10000, -10000}) {
    s.setPosition(3.0);
    // On the handle: its centre is within a few pixels of the value's share of the width.
    const QPoint from(QStyle::sliderPositionFromValue(0, DoubleSlider::kGridSteps, slider->value(), slider->width()),
                      slider->height() / 2);
    const QPoint to(toX, from.y());
    const double expected = toX > 0 ? 15.39 : -2.67;
    QSignalSpy moved(&s, &DoubleSlider::valueChanged);
    QSignalSpy released(&s, &DoubleSlider::mouseReleased);
    QTest::mousePress(slider, Qt::LeftButton, {}, from);
    QTest::mouseMove(slider, QPoint((from.x() + (toX > 0 ? slider->width() : 0)) / 2, from.y()));
    QTest::mouseMove(slider, to);
    EXPECT_EQ(released.count(), 0) << "nothing is released while dragging";
    QTest::mouseRelease(slider, Qt::LeftButton, {}, to);
    ASSERT_GE(moved.count(), 1);
    ASSERT_EQ(released.count(), 1);
    EXPECT_EQ(released.at(0).at(0).toDouble(), expected);
    EXPECT_EQ(moved.last().at(0).toDouble(), expected);
    EXPECT_EQ(s.position(), expected);
  }
  slider->setFocus();
  struct Case { Qt::Key key; int released; double position; } cases[] = {  // position NaN: strictly inside
      {Qt::Key_End, 1, 15.39}, {Qt::Key_Right, 0, 15.39}, {Qt::Key_Home, 1, -2.67}, {Qt::Key_Left, 0, -2.67},
      {Qt::Key_Right, 1, NAN}};
  for (const Case& c : cases) {
    QSignalSpy released(&s, &DoubleSlider::mouseReleased);
    QTest::keyClick(slider, c.key);
    ASSERT_EQ(released.count(), c.released) << c.key;
    if (c.released) { EXPECT_EQ(released.at(0).at(0).toDouble(), s.position()); }
    EXPECT_TRUE(std::isnan(c.position) ? s.position() > -2.67 && s.position() < 15.39 : s.position() == c.position)
        << c.key << ": " << s.position();
  }
}

}  // namespace
}  // namespace qv
