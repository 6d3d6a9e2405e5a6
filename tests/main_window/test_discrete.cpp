// Discrete mode as the user meets it: the value list, the ticks applied by Resetme, the
// limits of the list, the views of the discrete table and the way back.
#include <gtest/gtest.h>

#include <QLabel>
#include <QSlider>

#include <numeric>

#include "main_window_fixture.h"

namespace qv::testing {
namespace {

// Listed as "1", "2", "3" in rows 0, 1, 2, counted 2, 1 and 3.
CellBlock OnesTwoThrees() { return Column({"h:x", "n:1", "n:1", "n:2", "n:3", "n:3", "n:3"}); }

CellBlock Distinct(int n) {  // a header over the numbers 1..n
  CellBlock b;
  b.resize(n + 1, 1);
  b.setText(0, "x");
  for (int i = 1; i <= n; ++i) b.setNumber(i, i);
  return b;
}

// The bars as "label:value ...".
std::string Bars(const MainForm& f) {
  QStringList out;
  for (int i = 0; i < f.DAS_BarChart1->barCount(); ++i)
    out << f.DAS_BarChart1->barLabel(i) + ":" + QString::number(f.DAS_BarChart1->barValue(i), 'g', 17);
  return out.join(" ").toStdString();
}

// The mode as the window shows it: the panel's title and whether it is open; '1' or '0'
// for each part shown in the panel (the list, Check1, Resetme, the truncation sliders and
// their captions, the help buttons [4] and [5]) and for Disabled; '1' or '0' for each bin
// control enabled; the bold mode option.
std::string Mode(const MainForm& f) {
  std::string out = f.Frame55->title().toStdString() + (f.Frame55->isVisibleTo(&f) ? " open " : " closed ");
  for (const QWidget* w : std::initializer_list<const QWidget*>{f.ListView2, f.Check1, f.Resetme, f.SSlider11,
       f.SSlider22, f.Label13[3], f.Label13[4], f.ThemedButton[4], f.ThemedButton[5]})
    out += w->isVisibleTo(f.Frame55) ? '1' : '0';
  out += f.Disabled->isVisibleTo(&f) ? "1 " : "0 ";
  for (const QWidget* w : std::initializer_list<const QWidget*>{f.SwitchKnob4, f.SSliderInterval, f.BinsBox,
       f.BinsNumber, f.FrameBinning[0], f.OptionBinning[2]})
    out += w->isEnabled() ? '1' : '0';
  if (f.OptionDiscrete->font().bold()) out += " discrete";
  return out + (f.OptionContinuous->font().bold() ? " continuous" : "");
}

TEST_F(MainWindowTest, DiscreteModeAppliesTheTicksAndContinuousModeForgetsThem) {
  form->Form_Load();
  Take(OnesTwoThrees());
  form->ThemedButton6->click();
  form->OptionDiscrete->click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  EXPECT_EQ(form->ListView2->checkedTexts(), (QStringList{"1", "2", "3"}));
  EXPECT_TRUE(form->Check1->isChecked());
  EXPECT_EQ(Bars(*form), "1:2 2:1 3:3");
  EXPECT_EQ(form->DAS_BarChart1->barColor(1), QColor(255, 0, 0));
  EXPECT_EQ(form->DAS_BarChart1->scaleTop(), 3);
  EXPECT_EQ(form->TextBox1->text(), "6") << "listing leaves the sample alone";
  EXPECT_EQ(Mode(*form), "Discrete valuses to include/exclude open 1110000101 000000 discrete") << "the panel stays";

  // A tick alone changes nothing; Resetme applies it.
  form->ListView2->setChecked(1, false);
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 3);
  form->Resetme->click();
  EXPECT_EQ(State().SampleValues, (std::vector<double>{1, 1, 3, 3, 3}));
  EXPECT_EQ(form->TextBox1->text(), "5");
  EXPECT_EQ(Bars(*form), "1:2 3:3");
  EXPECT_EQ(form->Label8->text() + form->Label12->text(), "MINMAX") << "1 and 3 are still the ends";

  // Without the largest value the sample is marked as cut.
  form->ListView2->setChecked(2, false);
  form->Resetme->click();
  EXPECT_EQ(form->TextBox1->text() + " " + form->TextBox8->text() + " " + form->Label12->text(), "2 1 *Max");
  EXPECT_EQ(Bars(*form), "1:2");

  // Back to continuous mode: every value, the continuous setup, and counts.
  form->OptionButton6->click();  // leaving from Pct selects Freq on the way
  form->OptionContinuous->click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  EXPECT_EQ(form->TextBox1->text(), "6");
  EXPECT_EQ(BarValues(*form), (std::vector<double>{2, 0, 1, 0, 3}));
  EXPECT_FALSE(form->DAS_BarChart1->percentTickSuffix());
  EXPECT_TRUE(form->OptionButton5->isChecked());
  EXPECT_TRUE(form->OptionButton5->font().bold() && !form->OptionButton6->font().bold());
  EXPECT_EQ(Mode(*form), "Truncarte range closed 0011111010 111111 continuous");
  EXPECT_EQ(form->DAS_BarChart1->barColor(0), form->palette().color(QPalette::Button));
  form->OptionDiscrete->click();
  EXPECT_EQ(form->ListView2->checkedTexts(), (QStringList{"1", "2", "3"}));
  EXPECT_EQ(Bars(*form), "1:2 2:1 3:3");
}

// More than 50 values: a message, no list and no chart; two values: no list and no
// message, and the chart stays as it was. The window stays in discrete mode.
TEST_F(MainWindowTest, TheListTakesAtMostFiftyValuesAndAtLeastThree) {
  form->Form_Load();
  struct Case { int values, listed, bars; const char* notice; } cases[] = {  // bars -1: as before
      {51, 0, 0, "More then 50 discrete different values detected!"}, {2, 0, -1, nullptr}, {50, 50, 50, nullptr}};
  for (const Case& c : cases) {
    form->OptionContinuous->click();
    Take(Distinct(c.values), {0, c.values, 0, c.values, 0});
    const int before = form->DAS_BarChart1->barCount();
    notices.clear();
    form->OptionDiscrete->click();
    EXPECT_EQ(notices, c.notice ? QStringList{c.notice} : QStringList()) << c.values;
    EXPECT_EQ(form->ListView2->count(), c.listed) << c.values;
    EXPECT_EQ(form->DAS_BarChart1->barCount(), c.bars < 0 ? before : c.bars) << c.values;
    EXPECT_TRUE(form->OptionDiscrete->isChecked() && form->Disabled->isVisibleTo(form)) << c.values;
    EXPECT_EQ(form->TextBox1->text(), QString::number(c.values));
  }
  EXPECT_EQ(form->ListView2->text(49), "50");
  EXPECT_EQ(form->DAS_BarChart1->barKey(9), "10");
}

TEST_F(MainWindowTest, DiscreteTableWithNothingTickedOrInPercentages) {
  form->Form_Load();
  Take(OnesTwoThrees());
  form->OptionDiscrete->click();
  form->OptionButton6->click();
  std::vector<double> pct = BarValues(*form);
  ASSERT_EQ(pct.size(), 3u);
  EXPECT_NEAR(pct[0], 100.0 * 2 / 6, 1e-4);
  EXPECT_NEAR(pct[2], 50, 1e-4);
  EXPECT_NEAR(std::accumulate(pct.begin(), pct.end(), 0.0), 100, 1e-4);
  EXPECT_TRUE(form->DAS_BarChart1->percentTickSuffix());
  EXPECT_FLOAT_EQ(form->DAS_BarChart1->scaleTop(), 50);
  form->OptionButton5->click();
  EXPECT_EQ(Bars(*form), "1:2 2:1 3:3") << "counted anew, still discrete";
  EXPECT_FALSE(form->DAS_BarChart1->percentTickSuffix());
  EXPECT_TRUE(form->OptionDiscrete->isChecked() && form->ListView2->count() == 3);

  // Unticking all changes the list only; Resetme then empties the table.
  form->Check1->click();
  EXPECT_TRUE(form->ListView2->checkedTexts().isEmpty());
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 3);
  form->Resetme->click();
  EXPECT_EQ(form->DAS_BarChart1->barCount() + State().NumberOfBins, 0);
  EXPECT_TRUE(State().SampleValues.empty());
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  form->Check1->click();
  form->Resetme->click();
  EXPECT_EQ(Bars(*form), "1:2 2:1 3:3");
  EXPECT_EQ(form->TextBox1->text(), "6");
}

TEST_F(MainWindowTest, DiscreteModeWithNoRangeTakenThenAnUntickedZero) {
  form->Form_Load();
  form->OptionDiscrete->click();
  EXPECT_TRUE(form->ListView2->count() == 0 && form->Disabled->isVisibleTo(form));
  form->Resetme->click();
  form->OptionContinuous->click();
  EXPECT_TRUE(notices.isEmpty());
  EXPECT_TRUE(form->DAS_BarChart1->barCount() == 0 && form->height() == 1600 / 15);
  // A zero is a value like any other: unticked, it stays out.
  Take(Column({"h:x", "n:0", "n:0", "n:1", "n:2", "n:2"}));
  form->OptionDiscrete->click();
  ASSERT_EQ(form->ListView2->checkedTexts(), (QStringList{"0", "1", "2"}));
  form->ListView2->setChecked(0, false);
  form->Resetme->click();
  EXPECT_EQ(State().SampleValues, (std::vector<double>{1, 2, 2}));
  EXPECT_EQ(form->Label8->text(), "*Min");
  EXPECT_EQ(Bars(*form), "1:1 2:2");
}

// A value is listed, counted and kept by the text it shows: =0.1+0.2 is "0.3".
TEST_F(MainWindowTest, DistinctValuesAreTheTextsTheCellsShow) {
  form->Form_Load();
  book->write({0, 0, 0, 0, 0}, Column({"h:x", "n:0.3", "b", "n:0.5", "n:0.5"}));
  book->setFormula(0, 0, 2, "=0.1+0.2");
  picked = CellRangeRef{0, 0, 0, 0, 4};
  form->InputButton1_Click();
  form->OptionDiscrete->click();
  EXPECT_EQ(form->ListView2->checkedTexts(), (QStringList{"0.3", "0.5"}));
  EXPECT_EQ(Bars(*form), "0.3:2 0.5:2") << "COUNTIF counts =0.1+0.2 under 0.3";
  form->ListView2->setChecked(1, false);
  form->Resetme->click();
  EXPECT_EQ(State().SampleValues, (std::vector<double>{0.3, 0.1 + 0.2}));
  EXPECT_EQ(form->TextBox1->text(), "2");
  EXPECT_EQ(Bars(*form), "0.3:2");
}

}  // namespace
}  // namespace qv::testing
