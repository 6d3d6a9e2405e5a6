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

struct Shown {
  explicit Shown(int n) {
    fill(knob, n);
    knob.resize(knob.sizeHint());
    knob.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&knob));
  }
  SwitchKnob knob;
};

QString lastText(const QSignalSpy& spy) { return spy.isEmpty() ? QString() : spy.last().at(0).toString(); }

TEST(SwitchKnob, SettingByTextAndReadBack) {
  SwitchKnob knob;
  QSignalSpy spy(&knob, &SwitchKnob::userChangedSetting);
  EXPECT_EQ(knob.setting(), QString());
  EXPECT_FALSE(knob.setSetting("1"));
  fill(knob, 9);
  EXPECT_EQ(knob.setting(), "1");  // the first position until one is set

  struct Case {
    const char* text;
    bool found;
    const char* after;
    int value;
  } cases[] = {
      {"5", true, "5", 5}, {"9", true, "9", 9}, {"10", false, "9", 9},
      {"", false, "9", 9}, {" 1", false, "9", 9}, {"1", true, "1", 1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(knob.setSetting(c.text), c.found) << c.text;
    EXPECT_EQ(knob.setting(), c.after) << c.text;
    EXPECT_EQ(knob.settingValue(), c.value) << c.text;
  }
  EXPECT_EQ(spy.count(), 0) << "a setting from code is no move of the user";
}

TEST(SwitchKnob, ClickOnALabelChoosesItsPosition) {
  struct Case {
    int positions;
    const char* start;
    int clicked;
    const char* emitted;  // nullptr: no signal
  } cases[] = {
      {9, "5", 0, "1"}, {9, "5", 8, "9"}, {9, "5", 3, "4"}, {9, "5", 4, nullptr},
      {4, "2", 0, "1"}, {4, "2", 3, "4"}, {4, "2", 1, nullptr},
  };
  for (const Case& c : cases) {
    Shown s(c.positions);
    s.knob.setSetting(c.start);
    QSignalSpy spy(&s.knob, &SwitchKnob::userChangedSetting);
    QTest::mouseClick(&s.knob, Qt::LeftButton, {}, s.knob.labelRect(c.clicked).center());
    if (c.emitted) {
      ASSERT_EQ(spy.count(), 1) << c.positions << " positions, label " << c.clicked;
      EXPECT_EQ(lastText(spy), c.emitted);
      EXPECT_EQ(s.knob.setting(), c.emitted);
    } else {
      EXPECT_EQ(spy.count(), 0) << "the current position clicked again";
      EXPECT_EQ(s.knob.setting(), c.start);
    }
  }
}

TEST(SwitchKnob, DraggingTurnsToTheNearestPosition) {
  Shown s(9);
  s.knob.setSetting("5");
  QSignalSpy spy(&s.knob, &SwitchKnob::userChangedSetting);
  QTest::mousePress(&s.knob, Qt::LeftButton, {}, s.knob.knobPoint(2));
  QTest::mouseMove(&s.knob, s.knob.knobPoint(7));
  QTest::mouseRelease(&s.knob, Qt::LeftButton, {}, s.knob.knobPoint(7));
  ASSERT_EQ(spy.count(), 2);
  EXPECT_EQ(spy.at(0).at(0).toString(), "3");
  EXPECT_EQ(lastText(spy), "8");
  // Straight below the centre lies the gap between the ends: the nearer end wins.
  const QPoint centre = s.knob.rect().center();
  QTest::mouseClick(&s.knob, Qt::LeftButton, {}, centre + QPoint(-4, 20));
  EXPECT_EQ(s.knob.setting(), "1");
  QTest::mouseClick(&s.knob, Qt::LeftButton, {}, centre + QPoint(4, 20));
  EXPECT_EQ(s.knob.setting(), "9");
}

TEST(SwitchKnob, KeysStepAndStopAtTheEnds) {
  Shown s(9);
  s.knob.setSetting("5");
  struct Case {
    Qt::Key key;
    const char* setting;
    bool emits;
  } cases[] = {
      {Qt::Key_Right, "6", true}, {Qt::Key_Up, "7", true},  {Qt::Key_Left, "6", true},
      {Qt::Key_End, "9", true},   {Qt::Key_Right, "9", false}, {Qt::Key_Home, "1", true},
      {Qt::Key_Down, "1", false},
  };
  for (const Case& c : cases) {
    QSignalSpy spy(&s.knob, &SwitchKnob::userChangedSetting);
    QTest::keyClick(&s.knob, c.key);
    EXPECT_EQ(s.knob.setting(), c.setting);
    EXPECT_EQ(spy.count(), c.emits ? 1 : 0) << c.setting;
  }
}

TEST(SwitchKnob, DisabledKnobTakesNoInput) {
  Shown s(9);
  s.knob.setSetting("5");
  s.knob.setEnabled(false);
  QSignalSpy spy(&s.knob, &SwitchKnob::userChangedSetting);
  QTest::mouseClick(&s.knob, Qt::LeftButton, {}, s.knob.labelRect(0).center());
  QTest::keyClick(&s.knob, Qt::Key_Right);
  EXPECT_EQ(spy.count(), 0);
  EXPECT_EQ(s.knob.setting(), "5");
  EXPECT_TRUE(s.knob.setSetting("2")) << "code still sets a disabled knob";
}

// Each label must be hit by its own click: no two overlap, and all lie inside the widget.
TEST(SwitchKnob, LabelsAreApartAndInside) {
  for (int n : {2, 4, 9}) {
    Shown s(n);
    for (int i = 0; i < n; ++i) {
      EXPECT_TRUE(s.knob.rect().contains(s.knob.labelRect(i))) << n << " positions, label " << i;
      for (int j = i + 1; j < n; ++j)
        EXPECT_FALSE(s.knob.labelRect(i).intersects(s.knob.labelRect(j))) << n << ": " << i << ", " << j;
    }
  }
}

}  // namespace
}  // namespace qv
