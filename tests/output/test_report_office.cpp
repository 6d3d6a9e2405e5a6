// The report, its chart and the highlighting on a real headless office, read back
// through the office.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "highlight.h"
#include "office_fixture.h"
#include "report_writer.h"

namespace qv::testing {
namespace {

CellRangeRef At(int sheet, std::int32_t col, std::int32_t row, std::int32_t col1 = -1, std::int32_t row1 = -1) {
  return CellRangeRef{sheet, col, row, col1 < 0 ? col : col1, row1 < 0 ? row : row1};
}

// 1..10 in three bins of 4, 3 and 3, with the boxes the window shows at two decimals.
struct Sample {
  std::vector<double> values{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  ReportInput input() const {
    ReportInput r;
    r.binLabels = {"1 to 4", "4 to 7", "7 to 10"};
    r.binCounts = {4, 3, 3};
    r.rangeAddress = "$A$2:$A$11";
    r.boxes = {"10", "5.5", "3.03", "1", "3.25", "5.5", "7.75", "10"};
    r.sample = values;
    return r;
  }
};

class ReportOffice : public OfficeTest {
 protected:
  // Writes the sample as the user's column A with a header, and a formula beside it.
  void SetUp() override {
    OfficeTest::SetUp();
    book->write(At(0, 0, 0), Column({"h:Weight", "n:1", "n:2", "n:3", "n:4", "n:5", "n:6", "n:7", "n:8", "n:9",
                                     "n:10"}));
    book->setFormula(0, 1, 1, "=A2*2");
  }
  CellBlock Cells(int sheet, std::int32_t c0, std::int32_t r0, std::int32_t c1, std::int32_t r1) {
    return book->read(At(sheet, c0, r0, c1, r1));
  }
  int SheetCount() {
    for (int n = 0;; ++n) try { book->sheetName(n); } catch (const OfficeError&) { return n; }
  }
};

// The shared edge between two cells carries a thin line on one side or the other.
bool ThinBetween(const Workbook::CellLook& leftCell, const Workbook::CellLook& rightCell) {
  return (leftCell.right.width > 0 && leftCell.right.color == 0) ||
         (rightCell.left.width > 0 && rightCell.left.color == 0);
}
bool NoLineBetween(const Workbook::CellLook& leftCell, const Workbook::CellLook& rightCell) {
  return leftCell.right.width == 0 && rightCell.left.width == 0;
}

TEST_F(ReportOffice, OneSampleCellByCell) {
  Sample s;
  ExportOutcome out = ExportReport(*book, s.input());
  ASSERT_TRUE(out.done) << out.notice;
  EXPECT_EQ(out.sheetName, "Binsight1");
  ASSERT_EQ(book->sheetName(1), "Binsight1");
  EXPECT_EQ(book->activeSheet(), 1);
  EXPECT_EQ(book->zoom(), 75);
  EXPECT_FALSE(book->controllersLocked());

  CellBlock t = Cells(1, 0, 0, 5, 7);  // A1:F8
  auto text = [&](int r, int c) { return t.kinds[r * 6 + c] == CellKind::Text ? t.text(r * 6 + c) : "?"; };
  auto num = [&](int r, int c) { return t.kinds[r * 6 + c] == CellKind::Number ? t.numbers[r * 6 + c] : -99.0; };
  std::string heads;  // column B, and the bins' labels
  for (int r = 0; r < 7; ++r) heads += text(r, 1) + "|";
  EXPECT_EQ(heads + text(0, 2) + "|" + text(0, 4),
            "Bins|?|Frequency|Percentage|?|Accumulated frequency|Accumulated percentage|1 to 4|7 to 10");
  const double counts[] = {4, 3, 3}, acc[] = {4, 7, 10};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(num(2, 2 + i), counts[i]);
    EXPECT_DOUBLE_EQ(num(3, 2 + i), counts[i] / 10);
    EXPECT_EQ(num(5, 2 + i), acc[i]);
  }
  EXPECT_EQ(num(6, 4), 1.0);
  for (int r : {1, 4, 7})
    for (int c = 0; c < 6; ++c) EXPECT_EQ(t.kinds[r * 6 + c], CellKind::Empty) << "row " << r + 1;
  for (int r = 0; r < 8; ++r) EXPECT_EQ(t.kinds[r * 6], CellKind::Empty) << "column A";
  for (int r : {0, 2, 3, 5, 6}) EXPECT_EQ(t.kinds[r * 6 + 5], CellKind::Empty) << "F beyond the table";

  CellBlock st = Cells(1, 1, 32, 11, 33);
  EXPECT_EQ(st.text(0), "Range address");
  EXPECT_EQ(st.text(6), "Q50   (Median)");
  EXPECT_EQ(st.text(11), "$A$2:$A$11");
  const double figures[] = {10, 5.5, 3.03, 1, 3.25, 5.5, 7.75, 10, -1.2, 0};
  for (int k = 0; k < 10; ++k) EXPECT_NEAR(st.numbers[12 + k], figures[k], 1e-12) << "column " << char('C' + k);
  EXPECT_EQ(Cells(1, 1, 31, 11, 31).kinds, std::vector<CellKind>(11, CellKind::Empty)) << "row 32";

  // Formats, cell by cell: colours are the palette's, as RGB.
  struct Look {  // font none: automatic
    const char* cell; std::int32_t col, row; bool bold; std::optional<Rgb> font, fill; const char* format;
    bool centred;
  };
  const Look looks[] = {
      {"A1", 0, 0, false, std::nullopt, std::nullopt, "General", false},
      {"B1", 1, 0, true, 0x00FFFF, 0x00CCFF, "General", true},
      {"E1", 4, 0, true, 0x00FFFF, 0x00CCFF, "General", true},
      {"F1", 5, 0, false, std::nullopt, 0xFF9900, "General", false},
      {"M1", 12, 0, false, std::nullopt, std::nullopt, "General", false},
      {"B2", 1, 1, false, std::nullopt, 0xFF9900, "General", false},
      {"C3", 2, 2, true, 0x003366, 0x00FFFF, "General", true},
      {"C4", 2, 3, true, 0x003366, 0xCCFFFF, "0.0%", true},
      {"E6", 4, 5, true, 0x003366, 0x00FFFF, "General", true},
      {"E7", 4, 6, true, 0x003366, 0xCCFFFF, "0.0%", true},
      {"L20", 11, 19, false, std::nullopt, 0xFF9900, "General", false},
      {"B33", 1, 32, true, 0x003366, 0x00FFFF, "General", true},
      {"L34", 11, 33, true, 0x003366, 0xCCFFFF, "General", true},
      {"L35", 11, 34, false, std::nullopt, std::nullopt, "General", false},
  };
  for (const Look& l : looks) {
    SCOPED_TRACE(l.cell);
    Workbook::CellLook got = book->look(1, l.col, l.row);
    EXPECT_EQ(std::tuple(got.bold, got.fontColor, got.background, got.numberFormat, got.centredHorizontally),
              std::tuple(l.bold, l.font, l.fill, std::string(l.format), l.centred));
  }
  Workbook::CellLook h = book->look(1, 6, 32);
  EXPECT_TRUE(h.wrap && h.centredVertically);

  // Four groups split by thin rules, none at the top or the bottom or inside a group.
  for (std::int32_t row : {32, 33}) {
    SCOPED_TRACE(row + 1);
    std::vector<Workbook::CellLook> r;
    for (std::int32_t c = 0; c <= 12; ++c) r.push_back(book->look(1, c, row));
    EXPECT_TRUE(NoLineBetween(r[0], r[1])) << "A|B";
    for (int edge : {1, 4, 9, 11}) EXPECT_TRUE(ThinBetween(r[edge], r[edge + 1])) << "after column " << edge;
    for (int edge : {2, 3, 5, 6, 7, 8}) EXPECT_TRUE(NoLineBetween(r[edge], r[edge + 1])) << "inside, after " << edge;
    for (int c = 1; c <= 11; ++c)
      EXPECT_TRUE(r[c].top.width == 0 && r[c].bottom.width == 0 && r[c].diagonalDown.width == 0 &&
                  r[c].diagonalUp.width == 0) << "column " << c;
  }
  for (std::int32_t c = 0; c <= 11; ++c) EXPECT_TRUE(book->columnFitted(1, c)) << "column " << c;
}

TEST_F(ReportOffice, ModesAndObservations) {
  struct Case {
    const char* name; bool discrete, observations; std::vector<std::string> labels;
    std::vector<double> counts; std::vector<std::string> row1; std::vector<double> row3, row4;
  };
  const std::vector<Case> cases = {
      {"continuous", false, false, {"1 to 4", "4 to 7", "7 to 10"}, {4, 3, 3}, {"1 to 4", "4 to 7", "7 to 10"},
       {4, 3, 3}, {0.4, 0.3, 0.3}},
      {"discrete", true, true, {"1", "2", "3"}, {5, 3, 2}, {"Val=1", "Val=2", "Val=3"}, {5, 3, 2}, {0.5, 0.3, 0.2}},
      // A discrete table after a percentage drawing keeps the percentages in row 3.
      {"discrete pct", true, false, {"1", "2"}, {60, 40}, {"Val=1", "Val=2"}, {60, 40}, {0.6, 0.4}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Sample s;
    ReportInput in = s.input();
    in.discrete = c.discrete;
    in.includeObservations = c.observations;
    in.binLabels = c.labels;
    in.binCounts = c.counts;
    ExportOutcome out = ExportReport(*book, in);
    ASSERT_TRUE(out.done) << out.notice;
    int sheet = book->activeSheet();
    const auto n = static_cast<std::int32_t>(c.labels.size());
    CellBlock t = Cells(sheet, 2, 0, 1 + n, 3);
    for (std::int32_t i = 0; i < n; ++i) {
      EXPECT_EQ(t.text(i), c.row1[i]);
      EXPECT_EQ(t.numbers[2 * n + i], c.row3[i]);
      EXPECT_NEAR(t.numbers[3 * n + i], c.row4[i], 1e-15);
    }
    CellBlock z = Cells(sheet, 25, 0, 25, 11);
    EXPECT_EQ(z.kinds[0], CellKind::Empty) << "Z1";
    const Workbook::CellLook t1 = book->look(sheet, 19, 0);
    EXPECT_TRUE(t1.underline == c.observations && t1.bold == c.observations) << "T1";
    for (int i = 0; i < 10; ++i)
      EXPECT_TRUE(c.observations ? z.numbers[1 + i] == s.values[i] : z.kinds[1 + i] == CellKind::Empty)
          << "Z" << i + 2;
    EXPECT_EQ(z.kinds[11], CellKind::Empty) << "Z12";
  }
  EXPECT_EQ(book->sheetName(3), "Binsight3");
}

TEST_F(ReportOffice, RefusalsAddNoSheet) {
  Sample s;
  std::vector<double> one{4};
  struct Case { const char* name; std::function<void(ReportInput&)> change; const char* needle; };
  const std::vector<Case> cases = {
      {"empty", [](ReportInput& r) { r.sample = {}; }, "empty"},
      {"one value", [&](ReportInput& r) { r.sample = one; }, "At least 2"},
      {"1023 bins", [](ReportInput& r) { r.binLabels.assign(1023, "x"); r.binCounts.assign(1023, 1); },
       "1,022"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ReportInput in = s.input();
    c.change(in);
    ExportOutcome out = ExportReport(*book, in);
    EXPECT_FALSE(out.done);
    EXPECT_NE(out.notice.find(c.needle), std::string::npos) << out.notice;
    EXPECT_TRUE(SheetCount() == 1 && !book->controllersLocked());
  }
  // Every name taken (a deleted or renamed one would be found again).
  for (int i = 1; i <= 100; ++i) book->addSheetLast((i % 2 ? "binsight" : "Binsight") + std::to_string(i));
  ExportOutcome out = ExportReport(*book, s.input());
  EXPECT_FALSE(out.done);
  EXPECT_EQ(out.notice, kNoFreeReportName);
  EXPECT_EQ(SheetCount(), 101);
}

TEST_F(ReportOffice, AFailedExportSaysSo) {
  // An office of the test's own that goes away under the export.
  std::unique_ptr<HeadlessOffice> other = HeadlessOffice::StartAnother();
  std::shared_ptr<Workbook> doomed = other->office().createWorkbook(true);
  other->Kill();
  ExportOutcome out = ExportReport(*doomed, Sample().input());
  EXPECT_FALSE(out.done);
  EXPECT_NE(out.notice.find("did not complete"), std::string::npos) << out.notice;
}

TEST_F(ReportOffice, ChartOfTheFrequencies) {
  Sample s;
  ReportInput in = s.input();
  in.binLabels = {"a", "b", "c", "d", "e"};
  in.binCounts = {2, 40, 5, 0, 3};
  ExportOutcome out = ExportReport(*book, in);
  ASSERT_TRUE(out.done) << out.notice;
  Workbook::ChartLook c = book->chart(1);
  // One plain column chart of the counts, written left to right, with no value axis, grid or legend.
  EXPECT_EQ(std::tuple(c.count, c.columns, c.series, c.seriesName, c.tableLayout),
            std::tuple(1, true, 1, std::string("Frequency"), std::int16_t{0}));
  EXPECT_EQ(c.values, (std::vector<double>{2, 40, 5, 0, 3}));
  EXPECT_EQ(c.categories, (std::vector<std::string>{"a", "b", "c", "d", "e"}));
  EXPECT_EQ(c.valueMin, 0);
  EXPECT_DOUBLE_EQ(c.valueMax, 48);
  EXPECT_EQ(std::tuple(c.valueAxisShown, c.valueGridShown, c.legendShown), std::tuple(false, false, false));
  EXPECT_EQ(std::tuple(c.tickFont, c.tickSize, c.labelFont, c.labelSize, c.labelBold, c.labelNumberOnly),
            std::tuple(std::string("Arial Black"), 9.0, std::string("Arial Black"), 12.0, true, true));
  // Ticks, axis line, wall, page, outline, labels, the gradient's start.
  EXPECT_EQ((std::vector<Rgb>{c.tickColor, c.axisLineColor, c.wallColor, c.pageColor, c.outlineColor,
                              c.labelColor, c.gradientStart}),
            (std::vector<Rgb>{0xFFFF00, 0xFFFFFF, 0xFF00FF, 0x333399, 0xFFFFFF, 0xFFFFFF, 0x800080}));
  EXPECT_EQ(std::tuple(c.gapWidth, c.gradient, c.outlineSolid), std::tuple(1, true, true));
  for (int shift : {0, 8, 16}) EXPECT_GT((c.gradientEnd >> shift) & 0xFF, (0x800080u >> shift) & 0xFF);
  // Over B9:J31 as the final widths place it.
  const Workbook::Rect area = book->cellsRect(At(1, 1, 8, 9, 30));
  for (auto [got, want] : {std::pair(c.rect.x, area.x), std::pair(c.rect.y, area.y),
                           std::pair(c.rect.width, area.width), std::pair(c.rect.height, area.height)})
    EXPECT_NEAR(got, want, 2);
}

}  // namespace
}  // namespace qv::testing
