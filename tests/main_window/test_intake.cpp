// Taking a range and what the user then sees: the statistics, the table, the bin
// controls, the truncation sliders, and the refusals.
#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>

#include "normality_window.h"

#include "main_window_fixture.h"

namespace qv::testing {
namespace {

TEST_F(MainWindowTest, AcceptedRangeFillsTheWindow) {
  form->Form_Load();
  EXPECT_EQ(form->height(), 1600 / 15);
  Take(HeaderTwentyThreeBlanks());
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  EXPECT_EQ(form->TextBox14->text().toStdString(), "'[" + book->name() + "]Sheet1'!$A$1:$A$24");
  EXPECT_EQ(book->resolveName(kDataName), (CellRangeRef{0, 0, 0, 0, 23}));
  struct Box {
    QLineEdit* box;
    const char* text;
  } boxes[] = {{form->TextBox1, "20"}, {form->Miss, "4"},     {form->TextBox2, "10.5"},
               {form->TextBox4, "1"},  {form->TextBox5, "5.5"}, {form->TextBox6, "10.5"},
               {form->TextBox7, "15.5"}, {form->TextBox8, "20"}, {form->Range, "19"},
               {form->TextBox3, "5.92"}, {form->CV, "56%"}};
  for (const Box& b : boxes) EXPECT_EQ(b.box->text().toStdString(), b.text) << b.box->objectName().toStdString();
  EXPECT_EQ(form->height(), 10488 / 15);
  EXPECT_TRUE(form->DAS_BarChart1->isVisibleTo(form));
  ASSERT_EQ(form->DAS_BarChart1->barCount(), 5);
  EXPECT_EQ(BarValues(*form), (std::vector<double>{4, 4, 4, 4, 4}));
  EXPECT_EQ(form->DAS_BarChart1->barLabel(0), "1 to 4.8");
  EXPECT_EQ(form->DAS_BarChart1->barKey(4), "05");
}

TEST_F(MainWindowTest, WholeColumnIsCutAndTheSameAddressIsNotReadAgain) {
  form->Form_Load();
  book->write({0, 0, 0, 0, 0}, HeaderTwentyThreeBlanks());
  picked = CellRangeRef{0, 0, 0, 0, 1048575};  // the whole of column A
  form->InputButton1_Click();
  EXPECT_EQ(State().InputRange, (CellRangeRef{0, 0, 0, 0, 23}));
  EXPECT_EQ(form->Miss->text(), "4");
  // Picking the same range again tabulates, but the sample is not read again.
  book->write({0, 0, 1, 0, 0}, Column({"n:100"}));
  form->BinsBox->setText("3");
  form->InputButton1_Click();
  EXPECT_EQ(form->TextBox8->text(), "20");
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 5) << "the knob's number of bins again";
  // The next refresh reads the changed cells.
  form->Resetme_Click();
  EXPECT_EQ(form->TextBox8->text(), "100");
}

TEST_F(MainWindowTest, RefusedRanges) {
  // Two non-empty cells are too few: nothing is taken.
  Take(Column({"h:x", "n:1"}));
  EXPECT_FALSE(State().InputRange.has_value());
  EXPECT_TRUE(form->TextBox14->text().isEmpty());
  // Only texts: the range is taken, but there is nothing to tabulate.
  Take(Column({"t:a", "t:b", "t:c", "t:d"}), {0, 2, 0, 0, 0});
  EXPECT_TRUE(form->NumberOfValues->isVisibleTo(form));
  EXPECT_EQ(form->NumberOfValues->text(), "At least 2 non missing values are required in the range to analyze...");
  // Two areas selected, taken automatically.
  book->write({0, 4, 0, 0, 0}, Column({"n:1", "n:2", "n:3"}));
  book->write({0, 6, 0, 0, 0}, Column({"n:4", "n:5", "n:6"}));
  book->select({CellRangeRef{0, 4, 0, 4, 2}, CellRangeRef{0, 6, 0, 6, 2}});
  form->UseSelection = true;
  form->InputButton1_Click();
  ASSERT_EQ(notices.size(), 1);
  EXPECT_EQ(notices[0], "Binsight does not work with non contiguous range");
  EXPECT_TRUE(form->UseSelection) << "a refused automatic intake keeps taking the selection";
}

TEST_F(MainWindowTest, ErrorCellsEndTheProgram) {
  book->write({0, 0, 0, 0, 0}, Column({"h:x", "n:1", "n:2", "n:3"}));
  book->setFormula(0, 0, 4, "=1/0");
  book->setFormula(0, 0, 5, "=NA()");
  picked = CellRangeRef{0, 0, 0, 0, 5};
  form->InputButton1_Click();
  ASSERT_EQ(notices.size(), 1);
  EXPECT_EQ(notices[0].toStdString(),
            "The selected range contains 2 cells values errors begining with a # sign!\r"
            "              Binsight does not support ranges with error values");
  EXPECT_TRUE(closed());
  EXPECT_FALSE(book->resolveName(kDataName).has_value());
  Selection sel = book->selection();
  ASSERT_EQ(sel.areas.size(), 1u);
  EXPECT_EQ(sel.areas[0], (CellRangeRef{0, 0, 4, 0, 5}));
}

TEST_F(MainWindowTest, AutomaticIntakeNeedsMoreThanThreeNumbers) {
  book->write({0, 0, 0, 0, 0}, Column({"h:x", "n:1", "n:2", "n:3", "n:4"}));
  book->select({CellRangeRef{0, 0, 0, 0, 3}});  // three numbers: the strip stays
  form->Form_Load();
  EXPECT_TRUE(form->TextBox14->text().isEmpty());
  EXPECT_EQ(form->height(), 1600 / 15);
  delete form;
  form = new MainForm;
  book->select({CellRangeRef{0, 0, 0, 0, 4}});  // four: taken at once
  form->Form_Load();
  EXPECT_EQ(form->TextBox1->text(), "4");
  EXPECT_FALSE(form->UseSelection);
}

TEST_F(MainWindowTest, BinRulesTypedNumbersAndTheKnob) {
  form->Form_Load();
  Take(HeaderTwentyThreeBlanks());
  form->BinsBox->setText("12a");  // the letter is eaten, 12 stays
  EXPECT_EQ(form->BinsBox->text(), "12");
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 12);
  form->BinsBox->setText("101");
  EXPECT_EQ(notices.value(0), "Limited to 100 intervals");
  EXPECT_EQ(form->BinsBox->text(), "5");
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 5);
  form->BinsNumber_Click(1);  // Sturges: Ceiling(Ln 20 + 1) = 4
  EXPECT_EQ(State().NumberOfBins, 4);
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 4);
  EXPECT_EQ(form->SwitchKnob4->setting(), "5") << "a rule does not move the knob";
  // The width slider: span 19 in 2 parts gives Round(2) + 1 = 3 bins, by width.
  form->SSliderInterval->setPosition(9.5);
  form->SSliderInterval_Change();
  EXPECT_EQ(State().BinMark, "Blue");
  EXPECT_EQ(BarValues(*form), (std::vector<double>{7, 6, 7}));  // [1, 7.33], (7.33, 13.67], (13.67, 20]
  // A decimals click repeats the table by width, with the new labels.
  form->DecimalCombo->setCurrentIndex(0);
  form->DecimalCombo_Click();
  EXPECT_EQ(form->DAS_BarChart1->barLabel(0), "1 to 7");
  EXPECT_EQ(form->TextBox3->text(), "6");
}

TEST_F(MainWindowTest, TruncationFollowsTheSheetAndRefusesCrossing) {
  form->Form_Load();
  Take(HeaderTwentyThreeBlanks());
  form->SSlider22->setPosition(15);
  form->SSlider22_MouseUp();
  EXPECT_EQ(form->TextBox1->text(), "15");
  EXPECT_EQ(form->Label12->text(), "*Max");
  EXPECT_EQ(form->Label8->text(), "MIN");
  EXPECT_EQ(form->Miss->text(), "9");
  // An edit in the sheet shows at the next release, with no new pick.
  book->write({0, 0, 1, 0, 0}, Column({"n:3.5"}));  // the 1 becomes 3.5
  form->SSlider11->setPosition(1);
  form->SSlider11_MouseUp();
  EXPECT_EQ(form->TextBox4->text(), "2");
  EXPECT_EQ(form->Label8->text(), "MIN") << "the range's own minimum is now 2 too";
  // Crossing is refused and the slider goes back.
  form->SSlider11->setPosition(16);
  form->SSlider11_MouseUp();
  EXPECT_EQ(notices.value(0), "Maximum value should be greater than the Minimum value");
  EXPECT_EQ(form->SSlider11->position(), 1);
  EXPECT_EQ(form->TextBox1->text(), "15");
  // Back to the whole range: marks off, every value in.
  form->Resetme_Click();
  EXPECT_EQ(form->Label12->text(), "MAX");
  EXPECT_EQ(form->Label8->text(), "MIN");
  EXPECT_EQ(form->TextBox1->text(), "20");
  EXPECT_EQ(form->TextBox4->text(), "2");
}

}  // namespace
}  // namespace qv::testing

namespace qv::testing {
namespace {

TEST_F(MainWindowTest, NormalityWindowOpensOnTheTruncatedSample) {
  form->Form_Load();
  CellBlock col = HeaderTwentyThreeBlanks();
  Take(col);
  form->SSlider22->setPosition(15);
  form->SSlider22_MouseUp();
  QString used, stat;
  bool truncatedShown = false;
  QTimer::singleShot(0, [&] {
    auto* w = qobject_cast<NormalityTests*>(QApplication::activeModalWidget());
    ASSERT_NE(w, nullptr);
    used = w->TestUsed->text();
    stat = w->TestStat->text();
    truncatedShown = w->Transform->isVisibleTo(w);
    w->close();
  });
  form->Normality->click();
  EXPECT_EQ(used, "Anderson Darling test");
  EXPECT_FALSE(stat.isEmpty());
  EXPECT_TRUE(truncatedShown);
}

}  // namespace
}  // namespace qv::testing
