// The chart's view as the user switches it: counts and percentages, the way back to
// counts, bar direction and gap.
#include <gtest/gtest.h>

#include <QSlider>
#include <QTest>

#include "main_window_fixture.h"

namespace qv::testing {
namespace {

// Three bins over 1, 2, 3, 3: [1, 1.67), [1.67, 2.33), [2.33, 3] hold 1, 1 and 2.
CellBlock CountsOneOneTwo() { return Column({"h:x", "n:1", "n:2", "n:3", "n:3"}); }

bool Bold(const QWidget* w) { return w->font().bold(); }

TEST_F(MainWindowTest, PercentViewConvertsTheCountsOnce) {
  form->Form_Load();
  Take(CountsOneOneTwo());
  form->BinsBox->setText("3");
  ASSERT_EQ(BarValues(*form), (std::vector<double>{1, 1, 2}));
  form->DecimalCombo->setCurrentIndex(4);
  form->DecimalCombo_Click();

  form->OptionButton6->click();
  EXPECT_EQ(BarValues(*form), (std::vector<double>{25, 25, 50}));
  EXPECT_EQ(form->DAS_BarChart1->scaleTop(), 50);
  const BarChart& chart = *form->DAS_BarChart1;
  EXPECT_TRUE(chart.percentTickSuffix() && chart.percentValueLabels() && chart.percentCapAtHundred());
  EXPECT_EQ(State().BinCounts, (std::vector<double>{25, 25, 50})) << "the table holds what the chart shows";
  EXPECT_EQ(form->DecimalCombo->currentText(), "2") << "the decimals are back at 2 after Pct";
  EXPECT_TRUE(Bold(form->OptionButton6) && !Bold(form->OptionButton5));
  EXPECT_TRUE(State().FrequencyView.empty()) << "Pct lives only during the drawing";

  // A click on the selected option is no change: nothing compounds.
  form->OptionButton6->click();
  EXPECT_EQ(BarValues(*form), (std::vector<double>{25, 25, 50}));

  // A decimals click tabulates afresh: counts, though the option still reads Pct.
  form->DecimalCombo_Click();
  EXPECT_EQ(BarValues(*form), (std::vector<double>{1, 1, 2}));
  EXPECT_TRUE(!form->DAS_BarChart1->percentTickSuffix() && form->OptionButton6->isChecked());
}

TEST_F(MainWindowTest, FreqFromPctResetsTheContinuousSetup) {
  form->Form_Load();
  Take(HeaderTwentyThreeBlanks());
  form->BinsBox->setText("12");
  form->SwitchKnob4->setSetting("8");
  form->ThemedButton6->click();
  form->SSlider22->setPosition(15);
  form->SSlider22_MouseUp();
  ASSERT_EQ(form->Label12->text(), "*Max");
  form->OptionBinning[1]->click();
  form->SSliderInterval->setPosition(7);
  form->SSliderInterval_Change();
  ASSERT_EQ(State().BinMark, "Blue");
  form->OptionButton6->click();
  ASSERT_NE(BarValues(*form), (std::vector<double>{4, 4, 4, 4, 4}));

  form->OptionButton5->click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  EXPECT_EQ(BarValues(*form), (std::vector<double>{4, 4, 4, 4, 4})) << "five bins by number over the whole range";
  EXPECT_EQ(form->DAS_BarChart1->barLabel(0), "1 to 4.8");
  EXPECT_FALSE(form->DAS_BarChart1->percentTickSuffix());
  // The count, the truncation mark, the knob, the typed number and the bin mark.
  EXPECT_EQ(QStringList({form->TextBox1->text(), form->Label12->text(), form->SwitchKnob4->setting(),
                         form->BinsBox->text(), QString::fromStdString(State().BinMark)}).join('|').toStdString(),
            "20|MAX|5||Red");
  EXPECT_EQ(form->SSlider22->position(), 20);
  EXPECT_TRUE(form->OptionBinning[0]->isChecked() && form->FrameBinning[0]->isVisibleTo(form) &&
              !form->FrameBinning[1]->isVisibleTo(form));
  EXPECT_FALSE(form->Frame55->isVisibleTo(form)) << "the panel closes";
  EXPECT_TRUE(Bold(form->OptionButton5) && !Bold(form->OptionButton6));

  // A typed number tabulates by number again.
  form->BinsBox->setText("4");
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 4);
}

TEST_F(MainWindowTest, BarDirectionAndGap) {
  form->Form_Load();
  Take(CountsOneOneTwo());
  auto moveGap = [this](double to) {  // the user drags SlideGap over its 0..100 groove
    form->SlideGap->slider()->setValue(static_cast<int>(to / 100 * DoubleSlider::kGridSteps));
  };
  auto bars = [this] {  // "vertical|horizontal, gap, margin"
    const BarChart& c = *form->DAS_BarChart1;
    return QString("%1, %2, %3").arg(c.isVertical() ? "vertical" : "horizontal").arg(c.gap()).arg(c.margin());
  };
  form->Option1->click();
  EXPECT_EQ(bars(), "horizontal, 75, 0") << "the slider's move to 30 from code changes no gap";
  EXPECT_EQ(form->SlideGap->position(), 30);
  EXPECT_TRUE(form->SlideGap->isVisibleTo(form) && Bold(form->Option1) && !Bold(form->Option2));
  moveGap(40.5);
  EXPECT_EQ(bars(), "horizontal, 40, 0") << "an integer, halves to even; no margin while horizontal";
  form->Option2->click();
  EXPECT_EQ(bars(), "vertical, 20, 0");
  EXPECT_TRUE(Bold(form->Option2) && !Bold(form->Option1));
  moveGap(55);
  EXPECT_EQ(bars(), "vertical, 55, 25");
  // Direction and gap stay across modes and views.
  form->OptionDiscrete->click();
  form->OptionButton6->click();
  form->OptionContinuous->click();
  EXPECT_EQ(bars(), "vertical, 55, 25");
  EXPECT_EQ(BarValues(*form), (std::vector<double>{1, 0, 1, 0, 2}));
}

TEST_F(MainWindowTest, DecimalsAreChosenFromTheListOnlyAndHelpButtonsSetTheTopic) {
  form->Form_Load();
  Take(HeaderTwentyThreeBlanks());
  QTest::keyClick(form->DecimalCombo, Qt::Key_4);
  EXPECT_EQ(form->DecimalCombo->currentText(), "2");
  EXPECT_EQ(form->TextBox3->text(), "5.92");
  for (int n : {1, 2, 3, 5, 8}) {
    form->ThemedButton[n]->click();
    EXPECT_EQ(State().HelpTopic, n);
  }
}

}  // namespace
}  // namespace qv::testing
