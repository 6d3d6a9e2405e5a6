// The plot-data export into a real workbook of a headless office: the cells read back,
// the lowest free sheet name, and no sheet of the user's written over.
#include <gtest/gtest.h>

#include <QRadioButton>

#include "office_fixture.h"
#include "plot_data_sheets.h"
#include "themed_button.h"
#include "visualize_window.h"

namespace qv::testing {
namespace {

std::optional<int> SheetIndex(Workbook& book, const std::string& name) {
  for (int i = 0;; ++i) {
    try {
      if (book.sheetName(i) == name) return i;
    } catch (const OfficeError&) {
      return std::nullopt;
    }
  }
}

class PlotDataExport : public OfficeTest {};

TEST_F(PlotDataExport, SheetsAndCells) {
  std::vector<QString> notices;
  Visualize::noticeSink = [&](const QString& t) { notices.push_back(t); };
  // The user's own cells, and a sheet of the user's under a plot-data name.
  CellBlock mine = Column({"t:mine", "n:42"});
  book->write({0, 0, 0, 0, 1}, mine);
  const int users = book->addSheetLast("PP-PlotData2");
  book->write({users, 0, 0, 0, 1}, mine);

  VisualizeInput in;
  for (int i = 1; i <= 25; ++i) in.sample.push_back(i * 0.37 + (i % 4) * 0.11);
  in.shownMean = 5.2;
  in.shownStdev = 2.7;
  in.sheets = WorkbookPlotData(book);
  Visualize w(in);
  w.option(Distribution::Weibull)->click();
  w.Excel->click();
  w.option(Distribution::Beta)->click();  // refused: values above 1
  w.option(Distribution::Gama)->click();
  w.Excel->click();
  ASSERT_EQ(notices.size(), 1u);  // Beta's refusal only

  struct Expect { const char* name; Distribution d; };
  const std::size_t n = in.sample.size();
  for (const Expect& e : {Expect{"PP-PlotData1", Distribution::Weibull}, Expect{"PP-PlotData3", Distribution::Gama}}) {
    const std::optional<int> sheet = SheetIndex(*book, e.name);
    ASSERT_TRUE(sheet.has_value()) << e.name;
    const CellBlock cells = book->read({*sheet, 0, 0, 2, static_cast<std::int32_t>(n)});
    const CellBlock expected = PlotDataBlock(GenerateArrays(e.d, in.sample, in.shownMean, in.shownStdev).arrays);
    EXPECT_EQ(cells.text(0) + "|" + cells.text(1) + "|" + cells.text(2),
              "Actual value|Observed percentile|Expected percentile") << e.name;
    for (std::int64_t i = 3; i < expected.size(); ++i) {
      ASSERT_EQ(cells.kinds[i], CellKind::Number) << e.name << " " << i;
      EXPECT_EQ(cells.numbers[i], expected.numbers[i]) << e.name << " " << i;
    }
    // Nothing below the last row.
    EXPECT_EQ(book->read({*sheet, 0, static_cast<std::int32_t>(n + 1), 2, static_cast<std::int32_t>(n + 1)}).kinds[0],
              CellKind::Empty);
  }
  // The new sheets come last, in the order they were added.
  EXPECT_EQ(SheetIndex(*book, "PP-PlotData1"), users + 1);
  EXPECT_EQ(SheetIndex(*book, "PP-PlotData3"), users + 2);
  // The user's cells are as they were.
  for (int sheet : {0, users}) {
    const CellBlock still = book->read({sheet, 0, 0, 1, 2});
    EXPECT_EQ(still.text(0), "mine");
    EXPECT_EQ(still.numbers[2], 42);
    EXPECT_EQ(still.kinds[1], CellKind::Empty);
    EXPECT_EQ(still.kinds[4], CellKind::Empty);
  }
  EXPECT_TRUE(book->sheetExists("pp-plotdata3"));  // names compare in any case
  EXPECT_FALSE(book->sheetExists("PP-PlotData4"));
  Visualize::noticeSink = nullptr;
}

}  // namespace
}  // namespace qv::testing
