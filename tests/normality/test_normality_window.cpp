// The NormalityTests window on the offscreen platform: what loading shows, the knob's
// runs, the slider's re-judging, refusals, and the copy button.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <cmath>

#include "busy_indicator.h"
#include "copy_action.h"
#include "double_slider.h"
#include "normality_tests.h"
#include "normality_window.h"
#include "reference_data.h"
#include "switch_knob.h"

namespace qv {
namespace {

using test::Reference;

// Messages are collected instead of waiting for a click on a box.
struct Notices {
  Notices() {
    NormalityTests::noticeSink = [this](const QString& t) { seen.push_back(t); };
  }
  ~Notices() { NormalityTests::noticeSink = nullptr; }
  std::vector<QString> seen;
};

struct Window {
  explicit Window(const std::vector<double>& x, std::int64_t rangeCount = -1, bool truncated = false,
                  bool rangeTaken = true) {
    NormalityInput in;
    in.sample = x;
    in.rangeTaken = rangeTaken;
    in.rangeCount = rangeCount < 0 ? static_cast<std::int64_t>(x.size()) : rangeCount;
    in.truncated = truncated;
    in.significanceLevel = &level;
    w = std::make_unique<NormalityTests>(std::move(in));
    w->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(w.get()));
  }
  // The user clicks the number of a position on the knob.
  void turn(int position) {
    QTest::mouseClick(w->SwitchKnob4, Qt::LeftButton, {}, w->SwitchKnob4->labelRect(position - 1).center());
  }
  // The user drags the slider to a level.
  void slide(double to) {
    w->AlphaSlider->slider()->setValue(static_cast<int>(std::lround(to / 0.15 * DoubleSlider::kGridSteps)));
  }
  bool shown(QWidget* c) const { return !c->isHidden(); }
  bool yes() const { return shown(w->YesBell) && !shown(w->NoBell); }
  bool no() const { return shown(w->NoBell) && !shown(w->YesBell); }
  QColor verdictColour() const { return w->Label5->palette().color(QPalette::WindowText); }
  QString boldLegends() const {
    QString out;
    for (QLabel* l : {w->Label9, w->Label8, w->Label7, w->Label10})
      if (l->font().bold()) out += l->text();
    return out;
  }

  Notices notices;
  std::optional<double> level;
  std::unique_ptr<NormalityTests> w;
};

QString Q(const std::string& s) { return QString::fromStdString(s); }

const std::vector<double>& Sample(const char* name) { return Reference().sample(name); }

TEST(NormalityWindow, LoadingRunsAndersonDarling) {
  struct Case {
    const char* sample;
    bool accepted, truncated;
  } cases[] = {{"normal50", true, true}, {"exp40", false, false}};
  for (const Case& c : cases) {
    Window t(Sample(c.sample), 80, c.truncated);
    const AndersonDarlingResult ad = AndersonDarling(Sample(c.sample));
    NormalityTests& w = *t.w;
    EXPECT_EQ(w.windowTitle(), "Quantavue");
    EXPECT_TRUE(w.isModal());
    EXPECT_TRUE(w.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_NEAR(w.windowOpacity(), 0.92, 0.005);
    EXPECT_EQ(w.SwitchKnob4->setting(), "2");
    EXPECT_EQ(w.SwitchKnob4->positionCount(), 4);
    EXPECT_EQ(w.TestUsed->text(), "Anderson Darling test");
    EXPECT_EQ(t.boldLegends(), "Anderson Darling");
    EXPECT_EQ(w.TestStat->text(), Q(ad.testStat)) << c.sample;
    EXPECT_EQ(w.Pval->text(), Q(ad.pval)) << c.sample;
    EXPECT_FALSE(t.shown(w.CriticalBox) || t.shown(w.Label2) || t.shown(w.AlphaSlider) || t.shown(w.Label12));
    EXPECT_FALSE(t.shown(w.Label4) || t.shown(w.Gif89a1) || t.shown(w.JBFew));
    EXPECT_EQ(t.level, 0.05);
    EXPECT_EQ(t.yes(), c.accepted) << c.sample;
    EXPECT_EQ(t.no(), !c.accepted) << c.sample;
    EXPECT_EQ(w.Label5->text(), c.accepted ? "Accept normality!" : "Reject normality!");
    EXPECT_EQ(t.verdictColour(), c.accepted ? QColor(0, 0, 255) : QColor(255, 0, 0));
    EXPECT_TRUE(t.notices.seen.empty());
    EXPECT_EQ(t.shown(w.Transform), c.truncated);
    EXPECT_EQ(w.Transform->text(), "Truncated Range");
  }
}

TEST(NormalityWindow, KnobRunsTheTestOfEachPosition) {
  const std::vector<double>& x = Sample("normal50");
  const ShapiroWilkResult sw = ShapiroWilk(x, 0.05);
  const AndersonDarlingResult ad = AndersonDarling(x);
  const JarqueBeraResult jb = JarqueBera(x, 50, 0.05);
  const LillieforsResult lf = Lilliefors(x);
  struct Case {
    int position;
    const char* testUsed;
    const char* legend;
    const TestDisplay* expected;
    bool critical, slider;
  } cases[] = {
      {1, "Shapiro-Wilk test", "Shapiro-Wilk", &sw, true, false},
      {3, "Jacques Bera test", "Jacques Bera", &jb, true, true},
      {4, "Lilliefors test", "Lillefors", &lf, true, false},
      {2, "Anderson Darling test", "Anderson Darling", &ad, false, false},
      {3, "Jacques Bera test", "Jacques Bera", &jb, true, true},
      {1, "Shapiro-Wilk test", "Shapiro-Wilk", &sw, true, false},
  };
  Window t(x);
  for (const Case& c : cases) {
    t.turn(c.position);
    NormalityTests& w = *t.w;
    EXPECT_EQ(w.TestChoice, c.position);
    EXPECT_EQ(w.TestUsed->text(), c.testUsed);
    EXPECT_EQ(t.boldLegends(), c.legend);
    EXPECT_EQ(w.TestStat->text(), Q(c.expected->testStat)) << c.testUsed;
    EXPECT_EQ(w.Pval->text(), Q(c.expected->pval)) << c.testUsed;
    if (c.critical) {
      EXPECT_EQ(w.CriticalBox->text(), Q(c.expected->criticalBox)) << c.testUsed;
    }
    EXPECT_EQ(t.shown(w.CriticalBox), c.critical) << c.testUsed;
    EXPECT_EQ(t.shown(w.Label2), c.critical) << c.testUsed;
    EXPECT_EQ(t.shown(w.AlphaSlider), c.slider) << c.testUsed;
    EXPECT_EQ(t.shown(w.Label12), c.slider) << c.testUsed;
    EXPECT_EQ(t.yes(), c.expected->bell == Bell::Yes) << c.testUsed;
    EXPECT_EQ(w.Label5->text(), "Accept normality!");
    EXPECT_FALSE(t.shown(w.Label4) || t.shown(w.Gif89a1));
    EXPECT_EQ(w.AlphaSlider->position(), 0.05) << "the slider stands on 0.05 after every run";
  }
  EXPECT_TRUE(t.notices.seen.empty());
}

TEST(NormalityWindow, JarqueBeraWithTooFewValues) {
  const QString few = kJBTooFewText;
  struct Case {
    const char* what;
    std::int64_t rangeCount;
    QString testStat, criticalBox, pval;
  } cases[] = {
      {"a range of 20", 20, "NA", "NA", "NA"},
      {"a range of 100 truncated to 20", 100, few, "5.9900", ""},
  };
  for (const Case& c : cases) {
    Window t(Sample("normal20"), c.rangeCount);
    t.turn(3);
    NormalityTests& w = *t.w;
    EXPECT_TRUE(t.shown(w.JBFew)) << c.what;
    EXPECT_EQ(w.JBFew->text(), few);
    EXPECT_EQ(w.TestStat->text(), c.testStat) << c.what;
    EXPECT_EQ(w.CriticalBox->text(), c.criticalBox) << c.what;
    EXPECT_EQ(w.Pval->text(), c.pval) << c.what;
    EXPECT_TRUE(t.no()) << c.what;
    EXPECT_EQ(w.Label5->text(), "Reject normality!");
    EXPECT_TRUE(t.notices.seen.empty()) << "too few values is no message box";
    // Turning away removes the box before the next test starts.
    t.turn(1);
    EXPECT_FALSE(t.shown(w.JBFew)) << c.what;
    EXPECT_EQ(w.TestUsed->text(), "Shapiro-Wilk test");
  }
}

TEST(NormalityWindow, SliderRejudgesTheJarqueBeraPValueOnDisplay) {
  // jb_at_level holds p = 0.0500, shown as "0.050".
  Window t(Sample("jb_at_level"));
  t.turn(3);
  NormalityTests& w = *t.w;
  ASSERT_EQ(w.Pval->text(), "0.050");
  EXPECT_TRUE(t.no()) << "p at the level rejects";
  struct Case {
    double level;
    bool yes;
    const char* critical;
  } cases[] = {
      {0.04, true, "6.4400"}, {0.05, false, "5.9900"}, {0.051, false, "5.9500"},
      {0.049, true, "6.0300"}, {0.0, true, "0.0000"},  {0.15, false, "3.7900"},
  };
  for (const Case& c : cases) {
    t.slide(c.level);
    EXPECT_EQ(t.level, c.level);
    EXPECT_EQ(t.yes(), c.yes) << "level " << c.level;
    EXPECT_EQ(w.CriticalBox->text(), c.critical) << "level " << c.level;
    EXPECT_EQ(w.TestStat->text(), "5.9915") << "no statistic is computed again";
    EXPECT_EQ(w.Label5->text(), "Reject normality!") << "the caption stays that of the run";
  }
}

TEST(NormalityWindow, SliderLeavesNAAndZeroAlone) {
  struct Case {
    const char* sample;
    std::int64_t rangeCount;
    const char* pval;
  } cases[] = {{"normal30", 30, "NA"}, {"exp40", 40, "0.000"}};
  for (const Case& c : cases) {
    Window t(Sample(c.sample), c.rangeCount);
    t.turn(3);
    NormalityTests& w = *t.w;
    ASSERT_EQ(w.Pval->text(), c.pval);
    const bool yesBefore = t.yes(), noBefore = t.no();
    for (double level : {0.0, 0.001, 0.02, 0.05, 0.15}) {
      t.slide(level);
      EXPECT_EQ(t.level, level) << c.sample;
      if (w.Pval->text() == "NA") {
        EXPECT_EQ(t.yes(), yesBefore);
        EXPECT_EQ(t.no(), noBefore);
        EXPECT_EQ(w.CriticalBox->text(), "NA");
      } else {
        EXPECT_TRUE(t.no()) << "a p value of 0.000 rejects at " << level;
      }
    }
  }
}

TEST(NormalityWindow, SliderRejectsAPValueOfAThousandthAtEveryLevel) {
  // jb_p001 holds p = 0.0010, shown as "0.001": above a level of 0, yet rejected.
  Window t(Sample("jb_p001"));
  t.turn(3);
  ASSERT_EQ(t.w->Pval->text(), "0.001");
  for (double level : {0.0, 0.001, 0.05}) {
    t.slide(level);
    EXPECT_TRUE(t.no()) << "level " << level;
  }
}

TEST(NormalityWindow, LevelOfTheSliderCarriesToShapiroWilk) {
  // sw_at_level holds p = 0.05000 for Shapiro-Wilk; with 20 values Jarque-Bera refuses.
  Window t(Sample("sw_at_level"), 100);
  t.turn(3);
  t.slide(0.04);
  EXPECT_TRUE(t.no()) << "no p value on display reads as 0";
  t.turn(1);
  NormalityTests& w = *t.w;
  EXPECT_EQ(w.Pval->text(), "0.0500");
  EXPECT_EQ(w.CriticalBox->text(), "1.6449") << "always the 5% quantile";
  EXPECT_TRUE(t.yes()) << "0.05 > 0.04, the level the slider left";
  EXPECT_EQ(w.AlphaSlider->position(), 0.05);
  EXPECT_EQ(t.level, 0.04);
  // Anderson-Darling puts the level back to 0.05, where the same p rejects.
  t.turn(2);
  t.turn(1);
  EXPECT_TRUE(t.no());
  EXPECT_EQ(w.Label5->text(), "Reject normality!");
  // A refused Jarque-Bera run rejects at every level, 0 included.
  t.turn(3);
  t.slide(0.0);
  t.turn(4);
  t.turn(3);
  EXPECT_EQ(t.level, 0.0);
  EXPECT_TRUE(t.no());
  EXPECT_EQ(w.Label5->text(), "Reject normality!");
}

TEST(NormalityWindow, SliderDoesNothingOnLilliefors) {
  Window t(Sample("normal50"));
  t.turn(4);
  NormalityTests& w = *t.w;
  const bool yes = t.yes();
  const QString critical = w.CriticalBox->text();
  for (double level : {0.0, 0.15}) {
    t.slide(level);
    EXPECT_EQ(t.level, 0.05);
    EXPECT_EQ(t.yes(), yes);
    EXPECT_EQ(w.CriticalBox->text(), critical);
  }
}

TEST(NormalityWindow, WithoutARangeNothingRuns) {
  Window t({}, 0, false, /*rangeTaken=*/false);
  NormalityTests& w = *t.w;
  for (int position : {1, 3, 4, 2}) {
    t.turn(position);
    t.slide(0.1);
    EXPECT_EQ(w.TestChoice, position);
    EXPECT_TRUE(w.TestStat->text().isEmpty() && w.Pval->text().isEmpty() && w.CriticalBox->text().isEmpty());
    EXPECT_FALSE(t.shown(w.YesBell) || t.shown(w.NoBell) || t.shown(w.Label4) || t.shown(w.Gif89a1));
    EXPECT_EQ(w.TestUsed->text(), "Shapiro-Wilk test");
    EXPECT_FALSE(t.shown(w.AlphaSlider));
  }
  EXPECT_FALSE(t.level.has_value());
  EXPECT_TRUE(t.notices.seen.empty());
}

TEST(NormalityWindow, RefusalsShowTheirMessageAndKeepTheBoxes) {
  const QString zero = kZeroDeviationNotice, few = kTooFewObservationsNotice;
  const std::vector<double> constant(40, 2.5);
  const std::vector<double> one{7.0};
  struct Case {
    const char* what;
    const std::vector<double>* x;
    int position;  // 2: the run at load
    QString notice;
    bool sliderHidden;
  } cases[] = {
      {"constant, at load", &constant, 2, zero, false},
      {"constant, Shapiro-Wilk", &constant, 1, zero, true},
      {"constant, Jarque-Bera", &constant, 3, zero, true},
      {"constant, Lilliefors", &constant, 4, zero, false},
      {"one value, at load", &one, 2, few, false},
      {"one value, Shapiro-Wilk", &one, 1, few, true},
      {"one value, Jarque-Bera", &one, 3, few, true},
  };
  for (const Case& c : cases) {
    Window t(*c.x);
    NormalityTests& w = *t.w;
    if (c.position != 2) {
      // Show the slider first, as Jarque-Bera would, to see who hides it.
      w.AlphaSlider->show();
      w.Label5->setText("before");
      t.notices.seen.clear();
      t.turn(c.position);
    }
    ASSERT_EQ(t.notices.seen.size(), 1u) << c.what;
    EXPECT_EQ(t.notices.seen[0], c.notice) << c.what;
    EXPECT_TRUE(t.no()) << c.what;
    EXPECT_FALSE(t.shown(w.Label4) || t.shown(w.Gif89a1)) << c.what;
    EXPECT_TRUE(w.TestStat->text().isEmpty() && w.Pval->text().isEmpty()) << c.what;
    if (c.position != 2) {
      EXPECT_EQ(t.shown(w.AlphaSlider), !c.sliderHidden) << c.what;
      EXPECT_EQ(w.Label5->text(), "before") << c.what;
    }
  }
}

TEST(NormalityWindow, LillieforsBelowFourValuesWritesZeros) {
  Window t({1.0, 2.0, 4.0});  // Anderson-Darling runs at load on three values
  NormalityTests& w = *t.w;
  const bool yes = t.yes();
  t.notices.seen.clear();
  t.turn(4);
  ASSERT_EQ(t.notices.seen.size(), 1u);
  EXPECT_EQ(t.notices.seen[0], kSampleSizeNotice);
  EXPECT_EQ(w.TestStat->text(), "0.0000");
  EXPECT_EQ(w.CriticalBox->text(), "0.0000");
  EXPECT_EQ(w.Pval->text(), "NA");
  EXPECT_EQ(w.TestUsed->text(), "Lilliefors test");
  EXPECT_EQ(t.yes(), yes) << "the picture of the last run stays";
  EXPECT_EQ(w.Label5->text(), yes ? "Accept normality!" : "Reject normality!");
}

TEST(NormalityWindow, TextsFollowTheUsersDecimalMark) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  {
    Window t(Sample("normal50"));
    NormalityTests& w = *t.w;
    EXPECT_EQ(w.TestStat->text(), "0,2890");
    t.turn(3);
    ASSERT_EQ(w.Pval->text(), "0,430");
    t.slide(0.15);
    EXPECT_TRUE(t.yes()) << "\"0,430\" is read as 0.43, not as 0";
    EXPECT_EQ(w.CriticalBox->text(), "3,7900");
  }
  QLocale::setDefault(before);
}

TEST(CopyAction, PutsTheWindowOnTheClipboard) {
  Window t(Sample("normal50"));
  QGuiApplication::clipboard()->clear();
  QTest::mouseClick(t.w->CommandButton333, Qt::LeftButton);
  const QImage image = QGuiApplication::clipboard()->image();
  ASSERT_FALSE(image.isNull());
  EXPECT_EQ(image.size(), t.w->size() * t.w->devicePixelRatio());
  EXPECT_EQ(t.w->CommandButton333->toolTip(), "Copy this form to the clipboard as an image");
  // The click is placed beside the program by the build.
  EXPECT_TRUE(QFileInfo::exists(CopySoundPath())) << CopySoundPath().toStdString();
}

}  // namespace
}  // namespace qv
