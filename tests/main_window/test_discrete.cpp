// Discrete mode as the user meets it: the value list, the ticks applied by Resetme, the
// limits of the list, the views of the discrete table and the way back.
#include <gtest/gtest.h>

#include <QLabel>
#include <QSlider>

#include <numeric>

#include "main_window_fixture.h"

namespace qv::testing {
namespace {

CellBlock OnesTwoThrees() { return Column({"h:x", "n:1", "n:1", "n:2", "n:3", "n:3", "n:3"}); }

// A header over the numbers 1..n.
CellBlock Distinct(int n) {
  CellBlock b;
  b.resize(n + 1, 1);
  b.setText(0, "x");
  for (int i = 1; i <= n; ++i) b.setNumber(i, i);
  return b;
}

QStringList Rows(const MainForm& f) {
  QStringList rows;
  for (int i = 0; i < f.ListView2->count(); ++i) rows << f.ListView2->text(i);
  return rows;
}

QStringList BarLabels(const MainForm& f) {
  QStringList labels;
  for (int i = 0; i < f.DAS_BarChart1->barCount(); ++i) labels << f.DAS_BarChart1->barLabel(i);
  return labels;
}

// The row of the list that shows this value.
int RowOf(const MainForm& f, const QString& text) {
  for (int i = 0; i < f.ListView2->count(); ++i)
    if (f.ListView2->text(i) == text) return i;
  return -1;
}

bool SliderCaptionsVisible(const MainForm& f) {
  bool any = false;
  for (QLabel* l : f.Frame55->findChildren<QLabel*>(Qt::FindDirectChildrenOnly))
    any = any || l->isVisibleTo(f.Frame55);
  return any;
}

TEST_F(MainWindowTest, DiscreteModeListsTheValuesAndAppliesTheTicks) {
  form->Form_Load();
  Take(OnesTwoThrees());
  form->ThemedButton6->click();
  form->OptionDiscrete->click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();

  EXPECT_EQ(Rows(*form), (QStringList{"1", "2", "3"}));
  EXPECT_EQ(form->ListView2->key(2), "K3");
  EXPECT_EQ(form->ListView2->checkedTexts().size(), 3);
  EXPECT_TRUE(form->Check1->isChecked());
  EXPECT_EQ(BarValues(*form), (std::vector<double>{2, 1, 3}));
  EXPECT_EQ(BarLabels(*form), (QStringList{"1", "2", "3"}));
  EXPECT_EQ(form->DAS_BarChart1->barKey(0), "01");
  EXPECT_EQ(form->DAS_BarChart1->barColor(1), QColor(255, 0, 0));
  EXPECT_EQ(form->DAS_BarChart1->scaleTop(), 3);
  EXPECT_EQ(form->TextBox1->text(), "6") << "listing leaves the sample alone";

  // The lower area in discrete mode.
  EXPECT_EQ(form->Frame55->title(), "Discrete valuses to include/exclude");
  EXPECT_TRUE(form->Frame55->isVisibleTo(form)) << "the panel stays as it was";
  EXPECT_TRUE(form->ListView2->isVisibleTo(form->Frame55));
  EXPECT_TRUE(form->Check1->isVisibleTo(form->Frame55));
  EXPECT_TRUE(form->Resetme->isVisibleTo(form->Frame55));
  EXPECT_FALSE(form->SSlider11->isVisibleTo(form->Frame55));
  EXPECT_FALSE(form->SSlider22->isVisibleTo(form->Frame55));
  EXPECT_FALSE(SliderCaptionsVisible(*form));
  EXPECT_TRUE(form->Disabled->isVisibleTo(form));
  for (QWidget* w : {static_cast<QWidget*>(form->SwitchKnob4), static_cast<QWidget*>(form->SSliderInterval),
                     static_cast<QWidget*>(form->BinsBox), static_cast<QWidget*>(form->BinsNumber),
                     static_cast<QWidget*>(form->FrameBinning[0]), static_cast<QWidget*>(form->OptionBinning[2])})
    EXPECT_FALSE(w->isEnabled()) << w->metaObject()->className();
  EXPECT_TRUE(form->OptionDiscrete->font().bold());
  EXPECT_FALSE(form->OptionContinuous->font().bold());

  // A tick alone changes nothing; Resetme applies it.
  form->ListView2->setChecked(RowOf(*form, "2"), false);
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 3);
  form->Resetme->click();
  EXPECT_EQ(State().SampleValues, (std::vector<double>{1, 1, 3, 3, 3}));
  EXPECT_EQ(form->TextBox1->text(), "5");
  EXPECT_EQ(BarValues(*form), (std::vector<double>{2, 3}));
  EXPECT_EQ(BarLabels(*form), (QStringList{"1", "3"}));
  EXPECT_EQ(form->Label8->text(), "MIN") << "1 is still the minimum";
  EXPECT_EQ(form->Label12->text(), "MAX");

  // Without the largest value the sample is marked as cut.
  form->ListView2->setChecked(RowOf(*form, "3"), false);
  form->Resetme->click();
  EXPECT_EQ(form->TextBox1->text(), "2");
  EXPECT_EQ(form->TextBox8->text(), "1");
  EXPECT_EQ(form->Label12->text(), "*Max");
  EXPECT_EQ(BarValues(*form), (std::vector<double>{2}));
}

TEST_F(MainWindowTest, UntickedZeroStaysOut) {
  form->Form_Load();
  Take(Column({"h:x", "n:0", "n:0", "n:1", "n:2", "n:2"}));
  form->OptionDiscrete->click();
  ASSERT_EQ(Rows(*form), (QStringList{"0", "1", "2"}));
  form->ListView2->setChecked(0, false);
  form->Resetme->click();
  EXPECT_EQ(State().SampleValues, (std::vector<double>{1, 2, 2}));
  EXPECT_EQ(form->Label8->text(), "*Min");
  EXPECT_EQ(BarLabels(*form), (QStringList{"1", "2"}));
}

TEST_F(MainWindowTest, TheListTakesAtMostFiftyValuesAndAtLeastThree) {
  form->Form_Load();
  Take(Distinct(50));
  form->OptionDiscrete->click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  EXPECT_EQ(form->ListView2->count(), 50);
  EXPECT_EQ(form->ListView2->text(49), "50");
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 50);
  EXPECT_EQ(form->DAS_BarChart1->barKey(9), "10");

  form->OptionContinuous->click();
  Take(Distinct(51), {0, 1, 0, 1, 0});
  form->OptionDiscrete->click();
  ASSERT_EQ(notices.size(), 1);
  EXPECT_EQ(notices[0], "More then 50 discrete different values detected!");
  EXPECT_EQ(form->ListView2->count(), 0);
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 0);
  EXPECT_TRUE(form->OptionDiscrete->isChecked()) << "the window stays in discrete mode";
  EXPECT_TRUE(form->Disabled->isVisibleTo(form));
  EXPECT_EQ(form->TextBox1->text(), "51");

  // Two values: no list and no message; the chart stays as it was.
  notices.clear();
  form->OptionContinuous->click();
  Take(Column({"h:x", "n:1", "n:2"}), {0, 2, 0, 2, 0});
  int bars = form->DAS_BarChart1->barCount();
  form->OptionDiscrete->click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  EXPECT_EQ(form->ListView2->count(), 0);
  EXPECT_EQ(form->DAS_BarChart1->barCount(), bars);
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
  EXPECT_EQ(BarValues(*form), (std::vector<double>{2, 1, 3})) << "counted anew, still discrete";
  EXPECT_FALSE(form->DAS_BarChart1->percentTickSuffix());
  EXPECT_TRUE(form->OptionDiscrete->isChecked());
  EXPECT_EQ(form->ListView2->count(), 3);

  // Unticking all changes the list only; Resetme then empties the table.
  form->Check1->click();
  EXPECT_TRUE(form->ListView2->checkedTexts().isEmpty());
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 3);
  form->Resetme->click();
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 0);
  EXPECT_EQ(State().NumberOfBins, 0);
  EXPECT_TRUE(State().SampleValues.empty());
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  form->Check1->click();
  form->Resetme->click();
  EXPECT_EQ(BarValues(*form), (std::vector<double>{2, 1, 3}));
  EXPECT_EQ(form->TextBox1->text(), "6");
}

TEST_F(MainWindowTest, BackToContinuousForgetsTheTicks) {
  form->Form_Load();
  Take(OnesTwoThrees());
  form->ThemedButton6->click();
  form->OptionDiscrete->click();
  form->ListView2->setChecked(RowOf(*form, "2"), false);
  form->Resetme->click();
  ASSERT_EQ(form->TextBox1->text(), "5");
  form->OptionButton6->click();  // leaving from Pct selects Freq on the way

  form->OptionContinuous->click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  EXPECT_EQ(form->TextBox1->text(), "6");
  EXPECT_EQ(BarValues(*form), (std::vector<double>{2, 0, 1, 0, 3}));
  EXPECT_FALSE(form->DAS_BarChart1->percentTickSuffix());
  EXPECT_TRUE(form->OptionButton5->isChecked());
  EXPECT_TRUE(form->OptionButton5->font().bold());
  EXPECT_FALSE(form->OptionButton6->font().bold());
  EXPECT_EQ(form->Frame55->title(), "Truncarte range");
  EXPECT_FALSE(form->Frame55->isVisibleTo(form));
  EXPECT_TRUE(form->SSlider22->isVisibleTo(form->Frame55));
  EXPECT_TRUE(SliderCaptionsVisible(*form));
  EXPECT_FALSE(form->ListView2->isVisibleTo(form->Frame55));
  EXPECT_FALSE(form->Disabled->isVisibleTo(form));
  EXPECT_TRUE(form->SwitchKnob4->isEnabled());
  EXPECT_TRUE(form->FrameBinning[0]->isEnabled());
  EXPECT_TRUE(form->OptionBinning[2]->isEnabled());
  EXPECT_EQ(form->DAS_BarChart1->barColor(0), form->palette().color(QPalette::Button));

  form->OptionDiscrete->click();
  EXPECT_EQ(Rows(*form), (QStringList{"1", "2", "3"}));
  EXPECT_EQ(form->ListView2->checkedTexts().size(), 3);
  EXPECT_EQ(BarValues(*form), (std::vector<double>{2, 1, 3}));
}

TEST_F(MainWindowTest, DiscreteModeWithNoRangeTaken) {
  form->Form_Load();
  form->OptionDiscrete->click();
  EXPECT_TRUE(notices.isEmpty());
  EXPECT_EQ(form->ListView2->count(), 0);
  EXPECT_TRUE(form->Disabled->isVisibleTo(form));
  form->Resetme->click();
  form->OptionContinuous->click();
  EXPECT_TRUE(notices.isEmpty());
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 0);
  EXPECT_EQ(form->height(), 1600 / 15);
}

}  // namespace
}  // namespace qv::testing
