// The Excel, ComboHighlight and CondFormat controls of the main window, clicked as a
// user would, against a real headless office.
#include <gtest/gtest.h>

#include <QDir>
#include <cmath>
#include <numeric>
#include <random>

#include "highlight.h"
#include "main_window_fixture.h"

namespace qv::testing {
namespace {

class ExportWindow : public MainWindowTest {
 protected:
  // The twenty numbers in A1:A24; taking them draws the knob's 5 bins.
  void SetUp() override {
    MainWindowTest::SetUp();
    form->Form_Load();
    Take(HeaderTwentyThreeBlanks());
    ASSERT_TRUE(State().InputRange);
  }
  void Choose(int index) {
    form->ComboHighlight->setCurrentIndex(index);
    emit form->ComboHighlight->activated(index);
  }
};

TEST_F(ExportWindow, ExcelWritesTheTableOfTheScreenInCounts) {
  form->OptionButton6->click();  // a percentage drawing rewrites BinCounts
  form->CheckInclude->setChecked(true);
  form->Excel->click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("\n").toStdString();
  const int sheet = book->activeSheet();
  ASSERT_EQ(book->sheetName(sheet), "Binsight1");
  EXPECT_EQ(book->read(CellRangeRef{sheet, 2, 2, 6, 2}).numbers, (std::vector<double>{4, 4, 4, 4, 4}));
  CellBlock st = book->read(CellRangeRef{sheet, 1, 33, 2, 33});
  EXPECT_EQ(st.text(0), "$A$1:$A$24");
  EXPECT_EQ(st.numbers[1], 20);
  CellBlock z = book->read(CellRangeRef{sheet, 25, 1, 25, 20});
  EXPECT_TRUE(z.numbers.front() == 1 && z.numbers.back() == 20);
  EXPECT_FALSE(book->controllersLocked());
}

TEST_F(ExportWindow, ATruncatedSampleIsReportedAgainstTheWholeRange) {
  form->SSlider22->setPosition(15);
  form->SSlider22_MouseUp();
  form->CheckInclude->setChecked(true);
  form->Excel->click();
  EXPECT_TRUE(notices.isEmpty()) << notices.join("\n").toStdString();
  const int sheet = book->activeSheet();
  const std::vector<double> counts = book->read(CellRangeRef{sheet, 2, 2, 6, 3}).numbers;
  EXPECT_EQ(std::accumulate(counts.begin(), counts.begin() + 5, 0.0), 15);
  EXPECT_NEAR(std::accumulate(counts.begin() + 5, counts.end(), 0.0), 1, 1e-12);
  CellBlock st = book->read(CellRangeRef{sheet, 1, 33, 2, 33});
  EXPECT_EQ(st.text(0), "$A$1:$A$24");
  EXPECT_EQ(st.numbers[1], 15);
  CellBlock z = book->read(CellRangeRef{sheet, 25, 0, 25, 17});
  EXPECT_TRUE(z.kinds[0] == CellKind::Empty && z.numbers[15] == 15 && z.kinds[16] == CellKind::Empty);
}

TEST_F(ExportWindow, ExcelRefusesAnEmptySample) {
  // A truncation that keeps no value leaves nothing to describe.
  State().SampleValues.clear();
  form->Excel->click();
  ASSERT_EQ(notices.size(), 1);
  EXPECT_FALSE(book->sheetExists("Binsight1"));
}

TEST_F(ExportWindow, EveryChoiceRunsAndClearTakesTheMarksOff) {
  const CellRangeRef range = *State().InputRange;
  EXPECT_FALSE(form->CondFormat->isVisibleTo(form));
  Choose(1);
  ASSERT_EQ(book->highlights(0).size(), 1u);
  EXPECT_TRUE(book->highlights(0)[0].rules.size() == 2 && form->CondFormat->isVisibleTo(form));
  Choose(2);
  Choose(2);  // the entry already shown runs again
  ASSERT_EQ(book->highlights(0).size(), 1u);
  EXPECT_EQ(book->highlights(0)[0].rules.size(), 1u);
  EXPECT_EQ(book->highlights(0)[0].ranges, std::vector<CellRangeRef>{range});
  form->CondFormat->click();
  EXPECT_TRUE(book->highlights(0).empty());
  EXPECT_TRUE(form->ComboHighlight->currentIndex() == 2 && form->CondFormat->isVisibleTo(form));
  Choose(4);
  Choose(0);
  EXPECT_TRUE(book->highlights(0).empty());
  EXPECT_FALSE(form->CondFormat->isVisibleTo(form));
  EXPECT_TRUE(notices.isEmpty()) << notices.join("\n").toStdString();
}

// A picture of a report sheet for the README: run with QUANTAVUE_SHOTS=<folder>. The
// office draws it with its graphics filters (libreoffice-draw).
TEST_F(MainWindowTest, SpreadsheetPictures) {
  const QString dir = qEnvironmentVariable("QUANTAVUE_SHOTS");
  if (dir.isEmpty()) GTEST_SKIP() << "set QUANTAVUE_SHOTS to a folder to take the pictures";
  QDir().mkpath(dir);
  CellBlock col;
  col.resize(41, 1);
  col.setText(0, "Delivery time (h)");
  std::mt19937_64 gen(20261123);
  std::gamma_distribution<double> dist(4.0, 6.0);
  for (int i = 1; i < 41; ++i) col.setNumber(i, std::round(dist(gen) * 10) / 10);
  form->Form_Load();
  Take(col);
  form->SwitchKnob4->setSetting("7");
  form->SwitchKnob4_Change();
  form->Excel->click();
  ASSERT_TRUE(notices.isEmpty()) << notices.join("\n").toStdString();
  book->exportPicture(book->activeSheet(), (dir + "/report-sheet.png").toStdString());
}

}  // namespace
}  // namespace qv::testing
