// The report as data: what each cell will hold and how it is formatted, without the office.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "report_sheet.h"

namespace qv {
namespace {

// Ten values, tabulated as the window would: 1..10 in 3 bins of 4, 3, 3.
struct Fixture {
  std::vector<double> sample{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  ReportInput in() const {
    ReportInput r;
    r.binLabels = {"1 to 4", "4 to 7", "7 to 10"};
    r.binCounts = {4, 3, 3};
    r.rangeAddress = "$A$2:$A$11";
    r.boxes = {"10", "5.5", "3.03", "1", "3.25", "5.5", "7.75", "10"};
    r.sample = sample;
    r.decimals = 2;
    return r;
  }
};

const CellBlock& Block(const ReportSheet& s, int row0) {
  for (const CellsAt& c : s.cells)
    if (c.at.firstRow == row0) return c.cells;
  throw std::runtime_error("no block at that row");
}

TEST(ReportSheet, StatisticsReadTheBoxesAndRoundKurtosisAndSkewness) {
  struct Case {  // figures: C34..J34
    const char* name; std::vector<double> sample; std::array<std::string, 8> boxes; char mark; int decimals;
    std::vector<double> figures; std::optional<double> kurt, skew;
  };
  const std::vector<Case> cases = {
      // Kurt and Skew of 1..10 from the spreadsheet: -1.2 and 0.
      {"point", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {"10", "5.5", "3.03", "1", "3.25", "5.5", "7.75", "10"}, '.', 2,
       {10, 5.5, 3.03, 1, 3.25, 5.5, 7.75, 10}, -1.2, 0},
      // A comma mark reads back with the comma; the empty deviation box is 0.
      {"comma", {1, 2, 4, 8}, {"4", "3,75", "", "1", "1,75", "3", "5", "8"}, ',', 1,
       {4, 3.75, 0, 1, 1.75, 3, 5, 8}, 0.8, 1.1},
      // Three values: Kurt has no value, Skew of {1,2,4} is 0.935219529.
      {"three", {1, 2, 4}, {"3", "2.33", "1.53", "1", "1.5", "2", "3", "4"}, '.', 3,
       {3, 2.33, 1.53, 1, 1.5, 2, 3, 4}, std::nullopt, 0.935},
      // No spread: neither has a value.
      {"flat", {2, 2, 2, 2, 2}, {"5", "2", "0", "2", "2", "2", "2", "2"}, '.', 2,
       {5, 2, 0, 2, 2, 2, 2, 2}, std::nullopt, std::nullopt},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Fixture f;
    ReportInput in = f.in();
    in.sample = c.sample;
    in.boxes = c.boxes;
    in.decimalMark = c.mark;
    in.decimals = c.decimals;
    const ReportSheet sheet = BuildReportSheet(in, 0, "Binsight1");
    const CellBlock& st = Block(sheet, 32);
    ASSERT_EQ(st.cols, 11);
    EXPECT_EQ(st.text(11), "$A$2:$A$11");
    for (int k = 0; k < 8; ++k) EXPECT_EQ(st.numbers[12 + k], c.figures[k]) << "column " << char('C' + k);
    for (auto [i, v] : {std::pair{20, c.kurt}, std::pair{21, c.skew}}) {
      if (v) {
        ASSERT_EQ(st.kinds[i], CellKind::Number);
        EXPECT_NEAR(st.numbers[i], *v, 1e-12);
      } else {
        EXPECT_EQ(st.text(i), "#DIV/0!");
      }
    }
  }
}

TEST(ReportSheet, DiscreteLabelsAndPercentCountsStillSumToOne) {
  Fixture f;
  ReportInput in = f.in();
  in.discrete = true;
  in.binLabels = {"1", "2", "3"};
  in.binCounts = {50, 25, 25};  // left as percentages by a "Pct" drawing
  ReportSheet s = BuildReportSheet(in, 0, "Binsight1");
  EXPECT_EQ(Block(s, 0).text(1), "Val=1");
  EXPECT_EQ(Block(s, 0).text(3), "Val=3");
  EXPECT_EQ(Block(s, 2).numbers[1], 50);
  EXPECT_EQ(Block(s, 2).numbers[5], 0.5);
  EXPECT_EQ(Block(s, 5).numbers[7], 1.0);
  EXPECT_DOUBLE_EQ(s.chart.valueMax, 60);
}

TEST(ReportSheet, RegionsFollowTheTableWhileTheBackgroundStopsAtL) {
  Fixture f;
  ReportInput in = f.in();
  in.binLabels.assign(12, "x");
  in.binCounts.assign(12, 1);
  in.binCounts[4] = 40;
  ReportSheet s = BuildReportSheet(in, 0, "Binsight1");
  EXPECT_EQ(A1Address(s.regionA), "$B$1:$N$1");
  EXPECT_EQ(A1Address(s.regionC), "$B$3:$N$4");
  EXPECT_EQ(A1Address(s.regionF), "$B$6:$N$7");
  EXPECT_EQ(A1Address(s.formats[0].range), "$B$1:$L$34");  // the colours: ReportOffice.OneSampleCellByCell
  EXPECT_EQ(A1Address(s.formats[3].range), "$B$4:$N$4");
  EXPECT_EQ(s.lastUsedColumn, 13);
  // One tallest bar of 40: value scale 0 to 48; the chart covers B9:J31 and reads the counts.
  EXPECT_DOUBLE_EQ(s.chart.valueMax, 48);
  EXPECT_EQ(A1Address(s.chart.area), "$B$9:$J$31");
  EXPECT_EQ(A1Address(s.chart.values), "$C$3:$N$3");
  EXPECT_EQ(A1Address(s.chart.categories), "$C$1:$N$1");
}

TEST(ReportSheet, RefusalsBeforeAnySheet) {
  Fixture f;
  std::vector<double> one{3}, big(kMaxReportObservations + 1, 1.0);
  const auto bins = [](int n) {
    return [n](ReportInput& r) { r.binLabels.assign(n, "x"); r.binCounts.assign(n, 1); };
  };
  // needle "": accepted
  struct Case { const char* name; std::function<void(ReportInput&)> change; const char* needle; };
  const std::vector<Case> cases = {
      {"fine", [](ReportInput&) {}, ""},
      {"empty", [](ReportInput& r) { r.sample = {}; }, "empty"},
      {"one continuous", [&](ReportInput& r) { r.sample = one; }, "At least 2"},
      {"one discrete",
       [&](ReportInput& r) { r.sample = one; r.discrete = true; r.binLabels = {"3"}; r.binCounts = {1}; },
       ""},
      {"1022 bins", bins(1022), ""},
      {"1023 bins", bins(1023), "at most 1,022 bins"},
      {"all outside", [](ReportInput& r) { r.binCounts = {0, 0, 0}; }, "No value"},
      {"too many observations", [&](ReportInput& r) { r.sample = big; r.includeObservations = true; },
       "1,048,575"},
      {"many without observations", [&](ReportInput& r) { r.sample = big; }, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ReportInput in = f.in();
    c.change(in);
    const std::string why = ReportRefusal(in).value_or("");
    EXPECT_TRUE(*c.needle ? why.find(c.needle) != std::string::npos : why.empty()) << why;
  }
}

TEST(ReportSheet, FirstFreeNameFromOneToHundred) {
  std::set<std::string> taken;
  auto exists = [&](const std::string& n) { return taken.count(n) > 0; };
  EXPECT_EQ(FreeReportName(exists), "Binsight1");
  taken = {"Binsight1", "Binsight2", "Binsight4"};
  EXPECT_EQ(FreeReportName(exists), "Binsight3");
  for (int i = 1; i <= 100; ++i) taken.insert("Binsight" + std::to_string(i));
  EXPECT_FALSE(FreeReportName(exists));
}

TEST(SheetFormat, ColourIndexesAndComColours) {
  EXPECT_EQ((std::vector<Rgb>{ColorIndexRgb(13), ColorIndexRgb(55), ColorIndexRgb(kAutomaticColorIndex)}),
            (std::vector<Rgb>{0x800080, 0x333399, 0x000000}));
  EXPECT_EQ((std::vector<Rgb>{ComColorRgb(49407), ComColorRgb(13551615), ComColorRgb(-16383844)}),
            (std::vector<Rgb>{0xFFC000, 0xFFC7CE, 0x9C0006}));
}

}  // namespace
}  // namespace qv
