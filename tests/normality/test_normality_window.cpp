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
#include <algorithm>
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

struct Window {
  explicit Window(const std::vector<double>& x, std::int64_t rangeCount = -1, bool truncated = false,
                  bool rangeTaken = true, QWidget* owner = nullptr) {
    // Messages are collected instead of waiting for a click on a box.
    NormalityTests::noticeSink = [this](const QString& t) { notices.push_back(t); };
    const std::int64_t count = rangeCount < 0 ? static_cast<std::int64_t>(x.size()) : rangeCount;
    w = std::make_unique<NormalityTests>(NormalityInput{x, rangeTaken, count, truncated, &level}, owner);
    w->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(w.get()));
  }
  ~Window() { NormalityTests::noticeSink = nullptr; }
  // The user clicks the number of a position on the knob.
  void turn(int position) {
    QTest::mouseClick(w->SwitchKnob4, Qt::LeftButton, {}, w->SwitchKnob4->labelRect(position - 1).center());
  }
  // The user drags the slider to a level.
  void slide(double to) {
    w->AlphaSlider->slider()->setValue(static_cast<int>(std::lround(to / 0.15 * DoubleSlider::kGridSteps)));
  }
  // Which of these are shown, one '1' or '0' each.
  static std::string shown(std::initializer_list<QWidget*> widgets) {
    std::string out;
    for (QWidget* c : widgets) out += c->isHidden() ? '0' : '1';
    return out;
  }
  // The picture on show and the caption: "yes: Accept normality!".
  std::string verdict() const {
    const char* bells[] = {"none", "no", "yes", "both"};
    return bells[2 * !w->YesBell->isHidden() + !w->NoBell->isHidden()] + (": " + w->Label5->text().toStdString());
  }
  // The critical value and the slider with their captions, the busy mark, and JBFew.
  std::string extras() const {
    return shown({w->CriticalBox, w->Label2, w->AlphaSlider, w->Label12, w->Label4, w->Gif89a1, w->JBFew});
  }
  // TestStat, CriticalBox and Pval.
  std::string boxes() const {
    return (w->TestStat->text() + "|" + w->CriticalBox->text() + "|" + w->Pval->text()).toStdString();
  }
  QString boldLegends() const {
    QString out;
    for (QLabel* l : {w->Label9, w->Label8, w->Label7, w->Label10}) out += l->font().bold() ? l->text() : "";
    return out;
  }

  std::vector<QString> notices;
  std::optional<double> level;
  std::unique_ptr<NormalityTests> w;
};

const std::vector<double>& Sample(const char* name) { return test::Reference().sample(name); }

// The first row is the run at load: the knob stands on 2 already, and a click there is no
// move. Each run puts the slider back on 0.05.
TEST(NormalityWindow, LoadingAndTheKnobRunTheTestOfEachPosition) {
  const std::vector<double>& x = Sample("normal50");
  const ShapiroWilkResult sw = ShapiroWilk(x, 0.05);
  const AndersonDarlingResult ad = AndersonDarling(x);
  const JarqueBeraResult jb = JarqueBera(x, 80, 0.05);
  const LillieforsResult lf = Lilliefors(x);
  struct Case { int position; const char *testUsed, *legend; const TestDisplay* expected; const char* extras; };
  const Case cases[] = {
      {2, "Anderson Darling test", "Anderson Darling", &ad, "0000000"},
      {1, "Shapiro-Wilk test", "Shapiro-Wilk", &sw, "1100000"},
      {3, "Jacques Bera test", "Jacques Bera", &jb, "1111000"},
      {4, "Lilliefors test", "Lillefors", &lf, "1100000"},
      {2, "Anderson Darling test", "Anderson Darling", &ad, "0000000"},
      {3, "Jacques Bera test", "Jacques Bera", &jb, "1111000"},
      {1, "Shapiro-Wilk test", "Shapiro-Wilk", &sw, "1100000"}};
  Window t(x, 80, /*truncated=*/true);
  NormalityTests& w = *t.w;
  EXPECT_EQ(t.shown({w.Transform}) + w.Transform->text().toStdString(), "1Truncated Range");
  for (const Case& c : cases) {
    t.turn(c.position);
    const TestDisplay& e = *c.expected;
    EXPECT_EQ(w.TestChoice, c.position);
    EXPECT_EQ(w.TestUsed->text(), c.testUsed);
    EXPECT_EQ(t.boldLegends(), c.legend);
    // Anderson-Darling leaves the hidden critical box alone.
    const std::string critical = c.position == 2 ? w.CriticalBox->text().toStdString() : e.criticalBox;
    EXPECT_EQ(t.boxes(), e.testStat + "|" + critical + "|" + e.pval) << c.testUsed;
    EXPECT_EQ(t.extras(), c.extras) << c.testUsed;
    ASSERT_EQ(e.bell, Bell::Yes) << c.testUsed;
    EXPECT_EQ(t.verdict(), "yes: Accept normality!") << c.testUsed;
    EXPECT_EQ(w.Label5->palette().color(QPalette::WindowText), QColor(0, 0, 255));
    EXPECT_EQ(w.AlphaSlider->position(), 0.05);
    EXPECT_EQ(t.level, 0.05);
  }
  EXPECT_TRUE(t.notices.empty());
  const AndersonDarlingResult rejected = AndersonDarling(Sample("exp40"));
  Window r(Sample("exp40"));
  EXPECT_EQ(r.boxes(), rejected.testStat + "||" + rejected.pval);
  EXPECT_EQ(r.verdict(), "no: Reject normality!");
  EXPECT_EQ(r.w->Label5->palette().color(QPalette::WindowText), QColor(255, 0, 0));
  EXPECT_EQ(r.shown({r.w->Transform}), "0");
}

// A Jarque-Bera p of NA, 0.000 or 0.001 (above a level of 0, yet rejected) is rejected at
// every level; Lilliefors (p NA) keeps its verdict, its boxes and the level 0.05.
TEST(NormalityWindow, SliderCannotTurnTheseVerdicts) {
  struct Case { const char* sample; std::int64_t rangeCount; int position; QString pval; bool yes; } cases[] = {
      {"normal30", 30, 3, "NA", false}, {"exp40", 40, 3, "0.000", false},
      {"jb_p001", -1, 3, "0.001", false}, {"normal50", -1, 4, "NA", true}};
  for (const Case& c : cases) {
    Window t(Sample(c.sample), c.rangeCount);
    t.turn(c.position);
    ASSERT_EQ(t.w->Pval->text(), c.pval);
    const std::string boxes = t.boxes();
    if (c.rangeCount == 30) { EXPECT_EQ(t.shown({t.w->JBFew}) + boxes, "1NA|NA|NA"); }
    for (double level : {0.0, 0.001, 0.02, 0.05, 0.15}) {
      t.slide(level);
      EXPECT_EQ(t.level, c.position == 4 ? 0.05 : level) << c.sample;
      EXPECT_EQ(t.verdict(), c.yes ? "yes: Accept normality!" : "no: Reject normality!") << c.sample << ", " << level;
      if (c.pval == "NA") { EXPECT_EQ(t.boxes(), boxes) << c.sample; }
    }
  }
}

// sw_at_level holds p = 0.05000 for Shapiro-Wilk. Its 20 values are too few for
// Jarque-Bera: JBFew shows (no message box) until the knob turns away, and with a range
// of 100 cut to 20 the p box is empty, read as 0: rejected at every level, 0 included.
// Shapiro-Wilk takes the level the slider left; Anderson-Darling puts it back to 0.05.
TEST(NormalityWindow, LevelOfTheSliderCarriesToShapiroWilk) {
  Window t(Sample("sw_at_level"), 100);
  const std::string sw = ShapiroWilk(Sample("sw_at_level"), 0.05).testStat + "|1.6449|0.0500";  // the 5% quantile
  const std::string jb = std::string(kJBTooFewText) + "|5.9900|", jb0 = std::string(kJBTooFewText) + "|0.0000|";
  struct Step { int turn; std::string boxes; double slide; const char* verdict; double level; } steps[] = {
      {3, jb, 0.04, "no: Reject normality!", 0.04},  {1, sw, -1, "yes: Accept normality!", 0.04},
      {2, "", -1, "yes: Accept normality!", 0.05},   {1, sw, -1, "no: Reject normality!", 0.05},
      {3, jb, 0.0, "no: Reject normality!", 0.0},    {4, "", -1, "yes: Accept normality!", 0.0},
      {3, jb0, -1, "no: Reject normality!", 0.0}};  // boxes "": not checked; slide -1: no move
  for (const Step& s : steps) {
    t.turn(s.turn);
    EXPECT_EQ(t.shown({t.w->JBFew}), s.turn == 3 ? "1" : "0") << s.turn;
    if (!s.boxes.empty()) { EXPECT_EQ(t.boxes(), s.boxes); }
    EXPECT_EQ(t.w->AlphaSlider->position(), 0.05) << "on 0.05 after every run, whatever the level";
    if (s.slide >= 0) t.slide(s.slide);
    EXPECT_EQ(t.verdict(), s.verdict) << "test " << s.turn << " after " << s.slide;
    EXPECT_EQ(t.level, s.level) << "test " << s.turn << " after " << s.slide;
  }
  EXPECT_EQ(t.w->JBFew->text(), kJBTooFewText);
  EXPECT_TRUE(t.notices.empty());
}

// The slider re-judges the four-decimal p the run held, not the three decimals shown, and
// computes no statistic again: jb_at_level holds p = 0.0500 (the run rejects), x0503 holds
// 0.0503 (the run accepts); both show "0.050". The caption stays that of the run.
TEST(NormalityWindow, SliderRejudgesTheHeldJarqueBeraPValue) {
  // normal50 and one more value, moved until the four-decimal p is 0.0503.
  std::vector<double> x0503 = Sample("normal50");
  double lo = x0503.back(), hi = lo + 100.0;
  auto p4 = [&](double t) {
    std::vector<double> y = x0503;
    y.push_back(t);
    return std::stod(*JBpValueArray(JBStatArray(y)));
  };
  for (int k = 0; k < 200 && p4(lo) != 0.0503; ++k) {
    const double mid = (lo + hi) / 2;
    (p4(mid) >= 0.0503 ? lo : hi) = mid;
  }
  ASSERT_EQ(p4(lo), 0.0503);
  x0503.push_back(lo);
  std::sort(x0503.begin(), x0503.end());
  struct Level { double level; const char* critical; bool yesAt0500, yesAt0503; } const levels[] = {
      {0.04, "6.4400", true, true},  {0.05, "5.9900", false, true}, {0.051, "5.9500", false, false},
      {0.049, "6.0300", true, true}, {0.0, "0.0000", true, true},   {0.15, "3.7900", false, false}};
  for (bool held0503 : {false, true}) {
    Window t(held0503 ? x0503 : Sample("jb_at_level"));
    t.turn(3);
    ASSERT_EQ(t.w->Pval->text(), "0.050");
    const std::string caption = held0503 ? ": Accept normality!" : ": Reject normality!";
    const char* p = held0503 ? "3" : "0";
    EXPECT_EQ(t.verdict(), (held0503 ? "yes" : "no") + caption) << "the run at 0.05, p 0.050" << p;
    const std::string stat = t.w->TestStat->text().toStdString();
    for (const Level& c : levels) {
      t.slide(c.level);
      EXPECT_EQ(t.level, c.level);
      const bool yes = held0503 ? c.yesAt0503 : c.yesAt0500;
      EXPECT_EQ(t.verdict(), (yes ? "yes" : "no") + caption) << "level " << c.level << ", p 0.050" << p;
      EXPECT_EQ(t.boxes(), stat + "|" + c.critical + "|0.050") << "level " << c.level;
    }
  }
}

// While a message is up the window that would cover it steps aside: the owner (the main
// window) for Lilliefors' count, this window for a refusal; both are put back after.
TEST(NormalityWindow, MessagesMinimiseTheWindowTheyWouldHide) {
  const std::vector<double> three{1.0, 2.0, 4.0}, constant(40, 2.5);
  struct Case { const std::vector<double>* x; int position; bool ownerAside, windowAside; } cases[] = {
      {&three, 4, true, false}, {&constant, 4, false, true}, {&three, 1, false, true}};
  for (const Case& c : cases) {
    QWidget owner;
    owner.resize(200, 100);
    owner.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&owner));
    Window t(*c.x, -1, false, true, &owner);
    std::vector<std::pair<bool, bool>> states;  // owner, window minimised at each message
    NormalityTests::noticeSink = [&](const QString&) {
      states.emplace_back(owner.isMinimized(), t.w->isMinimized());
    };
    t.turn(c.position);
    const std::string what = std::to_string(c.x->size()) + " values, test " + std::to_string(c.position);
    ASSERT_EQ(states.size(), 1u) << what;
    EXPECT_EQ(states[0].first, c.ownerAside) << what;
    EXPECT_EQ(states[0].second, c.windowAside) << what;
    EXPECT_FALSE(owner.isMinimized()) << what;
    EXPECT_FALSE(t.w->isMinimized()) << what;
  }
}

TEST(NormalityWindow, WithoutARangeNothingRuns) {
  Window t({}, 0, false, /*rangeTaken=*/false);
  NormalityTests& w = *t.w;
  for (int position : {1, 3, 4, 2}) {
    t.turn(position);
    t.slide(0.1);
    EXPECT_EQ(w.TestChoice, position);
    EXPECT_EQ(t.boxes(), "||");
    EXPECT_EQ(t.shown({w.YesBell, w.NoBell, w.Label4, w.Gif89a1, w.AlphaSlider}), "00000");
    EXPECT_EQ(w.TestUsed->text(), "Shapiro-Wilk test");
  }
  EXPECT_FALSE(t.level.has_value());
  EXPECT_TRUE(t.notices.empty());
}

// A refusal shows its message and the NoBell, and leaves the boxes and the caption as
// they were; Shapiro-Wilk and Jarque-Bera hide the slider. Lilliefors below 4 values is
// no refusal: it writes zeros and keeps the picture of the last run.
TEST(NormalityWindow, RefusalsShowTheirMessageAndKeepTheBoxes) {
  const QString zero = kZeroDeviationNotice, few = kTooFewObservationsNotice;
  const std::vector<double> constant(40, 2.5), one{7.0};
  struct Case { const std::vector<double>* x; int position; QString notice; bool sliderHidden; } cases[] = {
      {&constant, 2, zero, false}, {&constant, 1, zero, true}, {&constant, 3, zero, true},  // 2: the run at load
      {&constant, 4, zero, false}, {&one, 2, few, false},      {&one, 1, few, true},     {&one, 3, few, true}};
  for (const Case& c : cases) {
    Window t(*c.x);
    NormalityTests& w = *t.w;
    if (c.position != 2) {
      w.AlphaSlider->show();  // as Jarque-Bera would, to see who hides it
      w.Label5->setText("before");
      t.notices.clear();
      t.turn(c.position);
    }
    const std::string what = std::to_string(c.x->size()) + " values, test " + std::to_string(c.position);
    EXPECT_EQ(t.notices, std::vector<QString>{c.notice}) << what;
    EXPECT_EQ(t.shown({w.YesBell, w.NoBell, w.Label4, w.Gif89a1}), "0100") << what;
    EXPECT_EQ(t.boxes(), "||") << what;
    if (c.position != 2) {
      EXPECT_EQ(t.shown({w.AlphaSlider}), c.sliderHidden ? "0" : "1") << what;
      EXPECT_EQ(w.Label5->text(), "before") << what;
    }
  }
  Window t({1.0, 2.0, 4.0});  // Anderson-Darling runs at load on three values
  const std::string verdict = t.verdict();
  t.notices.clear();
  t.turn(4);
  EXPECT_EQ(t.notices, std::vector<QString>{kSampleSizeNotice});
  EXPECT_EQ(t.boxes(), "0.0000|0.0000|NA");
  EXPECT_EQ(t.w->TestUsed->text(), "Lilliefors test");
  EXPECT_EQ(t.verdict(), verdict) << "the picture of the last run stays";
}

TEST(NormalityWindow, TextsFollowTheUsersDecimalMark) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  {
    Window t(Sample("normal50"));
    EXPECT_EQ(t.w->TestStat->text(), "0,2890");
    t.turn(1);
    EXPECT_EQ(t.boxes(), "0,9813|1,6449|0,6061");
    t.turn(4);
    EXPECT_EQ(t.w->CriticalBox->text(), "0,1253");
    t.turn(3);
    ASSERT_EQ(t.boxes(), "1,6864|5,9900|0,430");
    t.slide(0.15);  // the p value travels as its text and is read back with the same mark
    EXPECT_EQ(t.verdict(), "yes: Accept normality!") << "\"0,430\" is read as 0.43, not as 0";
    EXPECT_EQ(t.w->CriticalBox->text(), "3,7900");
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
  // The click is placed beside the program by the build.
  EXPECT_TRUE(QFileInfo::exists(CopySoundPath())) << CopySoundPath().toStdString();
}

}  // namespace
}  // namespace qv
