// The knob: positions, setting by text, and which moves count as the user's.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "switch_knob.h"

namespace qv {
namespace {

// The main window's knob has "1".."9", the normality window's "1".."4", each valued i.
void fill(SwitchKnob& knob, int n) {
  for (int i = 1; i <= n; ++i) knob.addPosition(QString::number(i), i);
}

// The settings the user chose, as the knob reported them: "3 8".
std::string moves(const QSignalSpy& spy) {
  QStringList out;
  for (const QList<QVariant>& signal : spy) out << signal.at(0).toString();
  return out.join(' ').toStdString();
}

struct Shown {
  explicit Shown(int n, const char* setting = "5") {
    fill(knob, n);
    knob.setSetting(setting);
    knob.resize(knob.sizeHint());
    knob.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&knob));
  }
  SwitchKnob knob;
  QSignalSpy spy{&knob, &SwitchKnob::userChangedSetting};  // the user's moves only
};

TEST(SwitchKnob, SettingByTextAndReadBack) {
  SwitchKnob knob;
  QSignalSpy spy(&knob, &SwitchKnob::userChangedSetting);
  EXPECT_EQ(knob.setting(), QString());
  EXPECT_FALSE(knob.setSetting("1"));
  fill(knob, 9);
  EXPECT_EQ(knob.setting(), "1");  // the first position until one is set
  struct Case { const char* text; bool found; int after; } cases[] = {  // after: the position's text and value
      {"5", true, 5}, {"9", true, 9}, {"10", false, 9}, {"", false, 9}, {" 1", false, 9}, {"1", true, 1}};
  for (const Case& c : cases) {
    EXPECT_EQ(knob.setSetting(c.text), c.found) << c.text;
    EXPECT_EQ(knob.setting(), QString::number(c.after)) << c.text;
    EXPECT_EQ(knob.settingValue(), c.after) << c.text;
  }
  EXPECT_EQ(moves(spy), "") << "a setting from code is no move of the user";
}

// Each label is hit by its own click: all lie inside the widget and no two overlap. A
// click on the current position is no move.
TEST(SwitchKnob, ClickOnALabelChoosesItsPosition) {
  struct Case { int positions; const char* start; int clicked; const char* emitted; } cases[] = {
      {9, "5", 0, "1"}, {9, "5", 8, "9"}, {9, "5", 3, "4"}, {9, "5", 4, nullptr},
      {4, "2", 0, "1"}, {4, "2", 3, "4"}, {4, "2", 1, nullptr}, {2, "1", 1, "2"}};
  for (const Case& c : cases) {
    Shown s(c.positions, c.start);
    for (int i = 0; i < c.positions; ++i) {
      EXPECT_TRUE(s.knob.rect().contains(s.knob.labelRect(i))) << c.positions << " positions, label " << i;
      for (int j = i + 1; j < c.positions; ++j) EXPECT_FALSE(s.knob.labelRect(i).intersects(s.knob.labelRect(j)));
    }
    QTest::mouseClick(&s.knob, Qt::LeftButton, {}, s.knob.labelRect(c.clicked).center());
    EXPECT_EQ(moves(s.spy), c.emitted ? c.emitted : "") << c.positions << " positions, label " << c.clicked;
    EXPECT_EQ(s.knob.setting(), c.emitted ? c.emitted : c.start);
  }
}

TEST(SwitchKnob, DraggingTurnsToTheNearestPosition) {
  Shown s(9);
  QTest::mousePress(&s.knob, Qt::LeftButton, {}, s.knob.knobPoint(2));
  QTest::mouseMove(&s.knob, s.knob.knobPoint(7));
  QTest::mouseRelease(&s.knob, Qt::LeftButton, {}, s.knob.knobPoint(7));
  EXPECT_EQ(moves(s.spy), "3 8");
  // Straight below the centre lies the gap between the ends: the nearer end wins.
  const QPoint centre = s.knob.rect().center();
  QTest::mouseClick(&s.knob, Qt::LeftButton, {}, centre + QPoint(-4, 20));
  EXPECT_EQ(s.knob.setting(), "1");
  QTest::mouseClick(&s.knob, Qt::LeftButton, {}, centre + QPoint(4, 20));
  EXPECT_EQ(s.knob.setting(), "9");
}

TEST(SwitchKnob, KeysStepAndStopAtTheEndsAndADisabledKnobTakesNoInput) {
  Shown s(9);
  struct Case { Qt::Key key; const char* setting; bool emits; } cases[] = {
      {Qt::Key_Right, "6", true}, {Qt::Key_Up, "7", true},     {Qt::Key_Left, "6", true},  {Qt::Key_End, "9", true},
      {Qt::Key_Right, "9", false}, {Qt::Key_Home, "1", true}, {Qt::Key_Down, "1", false}};
  for (const Case& c : cases) {
    s.spy.clear();
    QTest::keyClick(&s.knob, c.key);
    EXPECT_EQ(s.knob.setting(), c.setting);
    EXPECT_EQ(moves(s.spy), c.emits ? c.setting : "") << c.key;
  }
  s.knob.setEnabled(false);
  s.spy.clear();
  QTest::mouseClick(&s.knob, Qt::LeftButton, {}, s.knob.labelRect(8).center());
  QTest::keyClick(&s.knob, Qt::Key_Right);
  EXPECT_EQ(moves(s.spy), "");
  EXPECT_EQ(s.knob.setting(), "1");
  EXPECT_TRUE(s.knob.setSetting("2")) << "code still sets a disabled knob";
}

}  // namespace
}  // namespace qv
