// Taking a range and what the user then sees: the statistics, the table, the bin
// controls, the truncation sliders, and the refusals.
#include <gtest/gtest.h>

#include <functional>

#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>

#include "cumulative_window.h"
#include "normality_window.h"
#include "plotter.h"
#include "rounded_text.h"
#include "visualize_window.h"
#include "worksheet_functions.h"
#include "xy_chart.h"

#include "main_window_fixture.h"

namespace qv::testing {
namespace {

TEST_F(MainWindowTest, AcceptedRangeFillsTheWindow) {
  form->Form_Load();
  Take(HeaderTwentyThreeBlanks());
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  EXPECT_EQ(form->TextBox14->text().toStdString(), "'[" + book->name() + "]Sheet1'!$A$1:$A$24");
  EXPECT_EQ(book->resolveName(kDataName), (CellRangeRef{0, 0, 0, 0, 23}));
  const std::pair<QLineEdit*, const char*> boxes[] = {
      {form->TextBox1, "20"},   {form->Miss, "4"},       {form->TextBox2, "10.5"}, {form->TextBox4, "1"},
      {form->TextBox5, "5.5"},  {form->TextBox6, "10.5"}, {form->TextBox7, "15.5"}, {form->TextBox8, "20"},
      {form->Range, "19"},      {form->TextBox3, "5.92"}, {form->CV, "56%"}};
  for (auto [box, text] : boxes) EXPECT_EQ(box->text(), text) << box->objectName().toStdString();
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

TEST_F(MainWindowTest, AnEmptyAreaBelowTheDataIsNoSecondArea) {
  form->Form_Load();
  book->write({0, 0, 0, 0, 0}, Column({"h:x", "n:1", "n:2", "n:3", "n:4", "n:5"}));
  book->select({CellRangeRef{0, 0, 0, 0, 5}, CellRangeRef{0, 2, 19, 2, 24}});  // A1:A6, C20:C25
  form->UseSelection = true;
  form->InputButton1_Click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("|").toStdString();
  EXPECT_EQ(State().InputRange, (CellRangeRef{0, 0, 0, 0, 5}));
  EXPECT_EQ(form->TextBox1->text(), "5");
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
  EXPECT_EQ(book->selection().areas, (std::vector<CellRangeRef>{{0, 0, 4, 0, 5}}));  // the error cells
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
  const QString kurt = form->krt->text(), skew = form->skw->text();
  form->SSlider22->setPosition(15);
  form->SSlider22_MouseUp();
  EXPECT_EQ(form->TextBox1->text() + " " + form->Miss->text() + " " + form->TextBox8->text(), "15 9 15");
  EXPECT_EQ(form->Label8->text() + form->Label12->text(), "MIN*Max");
  EXPECT_EQ(form->krt->text() + form->skw->text(), kurt + skew) << "the range's kurtosis and skewness stay";
  EXPECT_EQ(form->SSliderInterval->upperBound(), 14) << "the width slider spans the cut sample";
  // An edit in the sheet shows at the next release, with no new pick.
  book->write({0, 0, 1, 0, 0}, Column({"n:3.5"}));  // the 1 becomes 3.5
  form->SSlider11->setPosition(1);
  form->SSlider11_MouseUp();
  EXPECT_EQ(form->TextBox4->text() + " " + form->Label8->text(), "2 MIN") << "the range's minimum is 2 too";
  // Crossing is refused and the slider goes back.
  form->SSlider11->setPosition(16);
  form->SSlider11_MouseUp();
  EXPECT_EQ(notices.value(0), "Maximum value should be greater than the Minimum value");
  EXPECT_EQ(form->SSlider11->position(), 1);
  EXPECT_EQ(form->TextBox1->text(), "15");
  // Back to the whole range: marks off, every value in.
  form->Resetme_Click();
  EXPECT_EQ(form->Label8->text() + form->Label12->text() + " " + form->TextBox1->text() + " " +
                form->TextBox4->text(),
            "MINMAX 20 2");
}

// The normality button and the two plot buttons under the statistics open their windows
// on the sample of the moment.
TEST_F(MainWindowTest, WindowsOpenOnTheTruncatedSample) {
  form->Form_Load();
  Take(HeaderTwentyThreeBlanks());
  form->SSlider22->setPosition(15);
  form->SSlider22_MouseUp();
  const std::size_t n = State().SampleValues.size();
  ASSERT_EQ(n, 15u);
  const auto shown = [](QWidget* w, QWidget* transform, std::size_t points) {  // "points, truncated"
    return QString("%1%2").arg(points).arg(transform->isVisibleTo(w) ? ", truncated" : "").toStdString();
  };
  struct Case { QPushButton* button; std::function<std::string(QWidget*)> seen; std::string expected; };
  const Case cases[] = {
      {form->Normality,
       [&](QWidget* w) {
         auto* v = qobject_cast<NormalityTests*>(w);
         if (!v) return std::string();
         return v->TestUsed->text().toStdString() + (v->TestStat->text().isEmpty() ? "" : ", a statistic") +
                (v->Transform->isVisibleTo(v) ? ", truncated" : "");
       },
       "Anderson Darling test, a statistic, truncated"},
      {form->QQplot,
       [&](QWidget* w) {
         auto* v = qobject_cast<Visualize*>(w);
         return v ? shown(v, v->Transform, v->NormalDist->pointCount(QStringLiteral("Main"))) : "";
       },
       "15, truncated"},
      {form->SonicClick16,
       [&](QWidget* w) {
         auto* c = qobject_cast<Cumulat*>(w);
         return c ? shown(c, c->Transform, c->PlotterView->pointCount(QStringLiteral("Lie"))) : "";
       },
       "15, truncated"},
  };
  for (const Case& c : cases) {
    std::string seen = "no window";
    QTimer::singleShot(0, [&] {
      QWidget* w = QApplication::activeModalWidget();
      ASSERT_NE(w, nullptr);
      seen = c.seen(w);
      w->close();
    });
    c.button->click();
    EXPECT_EQ(seen, c.expected) << c.button->objectName().toStdString();
  }
}

bool Readable(const QString& text) {
  return !text.contains("NaN") && !text.contains("Inf") && !text.startsWith("Text") && text.size() <= 24;
}

TEST_F(MainWindowTest, HugeValuesShowFiguresOrErrorTextsNeverNaN) {
  form->Form_Load();
  Take(Column({"h:x", "n:1e308", "n:-1e308", "n:0", "n:1"}));
  const std::vector<double> x{1e308, -1e308, 0, 1};
  ASSERT_TRUE(Stdev(x).has_value() && Kurt(x).has_value() && Skew(x).has_value());
  const std::pair<QLineEdit*, std::string> boxes[] = {  // the range, 2E+308, is no double
      {form->TextBox1, "4"},       {form->TextBox2, "0.25"},  {form->TextBox3, RoundedText(*Stdev(x), 2)},
      {form->Range, "#NUM!"},      {form->TextBox4, "-1E+308"}, {form->TextBox6, "0.5"},
      {form->TextBox8, "1E+308"},  {form->CV, "#NUM!"},      {form->krt, RoundedText(*Kurt(x), 2)},
      {form->skw, RoundedText(*Skew(x), 2)}};
  for (const auto& [box, text] : boxes)
    EXPECT_EQ(box->text().toStdString(), text) << box->objectName().toStdString();
  ASSERT_EQ(form->DAS_BarChart1->barCount(), 5);
  EXPECT_EQ(form->DAS_BarChart1->barLabel(0), "-1E+308 to -6E+307");
  EXPECT_EQ(form->DAS_BarChart1->barLabel(4), "6E+307 to 1E+308");
  EXPECT_EQ(BarValues(*form), (std::vector<double>{1, 0, 2, 0, 1}));
  for (QLineEdit* box : {form->TextBox5, form->TextBox7, form->Miss})
    EXPECT_TRUE(Readable(box->text())) << box->objectName().toStdString() << box->text().toStdString();
  EXPECT_EQ(form->SSlider11->valueText(), "-1E+308");
  EXPECT_EQ(form->SSlider22->valueText(), "1E+308");
  EXPECT_GT(form->SSlider22->slider()->width(), 20) << "the labels leave the sliders their room";
  // Bins by width cannot be made over a span beyond the largest double: refused, clearly.
  form->SSliderInterval->setPosition(1e307);
  form->SSliderInterval_Change();
  ASSERT_EQ(notices.size(), 1);
  EXPECT_FALSE(notices[0].contains("NaN")) << notices[0].toStdString();
  EXPECT_TRUE(notices[0].startsWith("The values span more than the largest number"));
  for (int i = 0; i < form->DAS_BarChart1->barCount(); ++i)
    EXPECT_TRUE(Readable(form->DAS_BarChart1->barLabel(i))) << i;
}

// Every refresh reads the range again when a cell of it changed: the figures of the whole
// range and the ends of the sliders follow at once.
TEST_F(MainWindowTest, EveryRefreshFollowsAnEditOfTheRange) {
  form->Form_Load();
  Take(HeaderTwentyThreeBlanks());
  const QString kurtBefore = form->krt->text();
  book->write({0, 0, 24, 0, 0}, Column({"n:1000"}));  // below the range: nothing changes
  book->write({0, 0, 23, 0, 0}, Column({"n:1000"}));  // the 20 becomes 1000
  form->DecimalCombo->setCurrentIndex(3);
  form->DecimalCombo_Click();
  std::vector<double> now;
  for (int v = 1; v <= 19; ++v) now.push_back(v);
  now.push_back(1000);
  EXPECT_NE(form->krt->text(), kurtBefore);
  EXPECT_EQ(form->krt->text().toStdString(), RoundedText(*Kurt(now), 3));
  EXPECT_EQ(form->skw->text().toStdString(), RoundedText(*Skew(now), 3));
  EXPECT_EQ(form->Label12->text() + " " + form->TextBox8->text(), "*Max 19")
      << "the handle stays at 20, below the new maximum";
  // One click of Resetme takes the new ends.
  book->write({0, 0, 23, 0, 0}, Column({"n:2000"}));
  form->Resetme_Click();
  EXPECT_EQ(form->SSlider22->upperBound(), 2000);
  EXPECT_EQ(form->SSlider22->position(), 2000);
  EXPECT_EQ(form->TextBox8->text() + form->Label12->text(), "2000MAX");
  // The knob's table too; the low handle stays at 1, so the new -50 is cut and marked.
  book->write({0, 0, 1, 0, 0}, Column({"n:-50"}));
  form->BinsBox->setText("4");
  EXPECT_EQ(form->SSlider11->lowerBound(), -50);
  EXPECT_EQ(form->TextBox4->text() + " " + form->Label8->text(), "2 *Min");
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 4);
}

// Truth values: the range's figures skip them, the sample takes them as -1 and 0 when
// they lie within the bounds.
TEST_F(MainWindowTest, TruthValuesAreNoFigureOfTheRangeButEnterTheSample) {
  form->Form_Load();
  Take(Column({"h:x", "l:1", "n:-2", "n:5", "n:7", "n:9", "l:0", "d:3"}));
  const std::vector<double> numbers{-2, 5, 7, 9, 3};  // the date as its serial
  EXPECT_EQ(form->SSlider11->lowerBound(), -2);
  EXPECT_EQ(form->SSlider22->upperBound(), 9);
  EXPECT_EQ(State().SampleValues, (std::vector<double>{-2, -1, 0, 5, 7, 9}));
  EXPECT_EQ(form->TextBox1->text() + " " + form->Miss->text(), "6 2") << "missing: the header and the date";
  EXPECT_EQ(form->krt->text().toStdString(), RoundedText(*Kurt(numbers), 2));
  EXPECT_EQ(form->skw->text().toStdString(), RoundedText(*Skew(numbers), 2));
  EXPECT_EQ(form->Label8->text() + form->Label12->text(), "MINMAX");
}

TEST_F(MainWindowTest, ThePickerOpensOverTheDocumentInFront) {
  form->Form_Load();
  book->write({0, 0, 0, 0, 0}, HeaderTwentyThreeBlanks());
  std::shared_ptr<Workbook> other = office().createWorkbook(false);
  other->write({0, 0, 0, 0, 0}, HeaderTwentyThreeBlanks());
  other->activate();
  picked = CellRangeRef{0, 0, 0, 0, 23};
  form->InputButton1_Click();
  EXPECT_EQ(pickedOver, other->name());
  EXPECT_TRUE(form->TextBox14->text().isEmpty()) << "a pick in another workbook is refused";
  EXPECT_FALSE(book->resolveName(kDataName).has_value());
  other->close();
  // Over the attached workbook the same pick is taken.
  book->activate();
  form->InputButton1_Click();
  EXPECT_EQ(pickedOver, book->name());
  EXPECT_EQ(form->TextBox1->text(), "20");
}

// The truncation handles stop at the range's exact ends and at every multiple of 10^-d
// between them, so the bound the label shows is the bound in force.
TEST_F(MainWindowTest, TruncationStepsAreTheShownDecimals) {
  form->Form_Load();
  Take(Column({"h:x", "n:1.005", "n:5.25", "n:3.3333", "n:10", "n:7"}));
  DoubleSlider* high = form->SSlider22;
  QSlider* grid = high->slider();
  EXPECT_EQ(grid->minimum(), 0);
  EXPECT_EQ(grid->maximum(), 900);  // 1.005, 1.01 ... 9.99, 10
  for (int step : {0, 1, 2, 425, 899, 900}) {
    grid->setValue(step);
    EXPECT_EQ(high->position(), step ? high->valueText().toDouble() : 1.005)
        << step << " shows " << high->valueText().toStdString();
  }
  grid->setValue(425);
  EXPECT_EQ(high->valueText(), "5.25");
  form->SSlider22_MouseUp();
  EXPECT_EQ(form->TextBox8->text() + " " + form->TextBox1->text(), "5.25 3")
      << "the value equal to the shown bound stays in";
  // At no decimals the steps are whole numbers.
  form->DecimalCombo->setCurrentIndex(0);
  form->DecimalCombo_Click();
  form->Resetme_Click();
  EXPECT_EQ(grid->maximum(), 9);  // 1.005, 2 ... 9, 10
  grid->setValue(8);
  EXPECT_EQ(high->position(), 9);
}

}  // namespace
}  // namespace qv::testing
