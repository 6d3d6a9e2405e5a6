// Highlighting and clearing on a real headless office: the rules on the range, the
// user's own formats, and the user's cells left as they were.
#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "highlight.h"
#include "office_fixture.h"
#include "report_writer.h"

namespace qv::testing {
namespace {

using K = HighlightRule::Kind;

class HighlightOffice : public OfficeTest {
 protected:
  // Twenty values under a header in A1:A21; the range is A2:A21.
  void SetUp() override {
    OfficeTest::SetUp();
    CellBlock b;
    b.resize(21, 1);
    b.setText(0, "Value");
    for (int i = 1; i <= 20; ++i) b.setNumber(i, 21 - i);
    book->write(range0, b);
  }
  const CellRangeRef range0{0, 0, 0, 0, 20};
  const CellRangeRef range{0, 0, 1, 0, 20};
};

TEST_F(HighlightOffice, EachChoiceLeavesExactlyItsRules) {
  struct Case {
    int index; std::vector<K> kinds; std::vector<int> ranks; std::vector<Rgb> fills; std::optional<Rgb> font;
  };
  const Case cases[] = {
      {1, {K::BottomN, K::TopN}, {1, 1}, {0xFFC000, 0xB4C6E7}, std::nullopt},
      {2, {K::TopPercent}, {10}, {0xFFC7CE}, 0x9C0006},
      {3, {K::BottomPercent}, {10}, {0xFFC7CE}, 0x9C0006},
      {4, {K::TopPercent}, {25}, {0xFFC7CE}, 0x9C0006},
      {5, {K::BottomPercent}, {25}, {0xFFC7CE}, 0x9C0006},
      {0, {}, {}, {}, std::nullopt},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(kHighlightChoices[c.index]);
    ApplyHighlight(*book, range, kHighlightChoices[c.index]);
    std::vector<Workbook::HighlightFormat> f = book->highlights(0);
    if (c.kinds.empty()) {
      EXPECT_TRUE(f.empty());
      continue;
    }
    ASSERT_EQ(f.size(), 1u) << "one choice in force at a time";
    EXPECT_EQ(f[0].ranges, std::vector<CellRangeRef>{range});
    EXPECT_TRUE(f[0].drawn) << "the cells must know their format, or Calc shows it only after a reload";
    ASSERT_EQ(f[0].rules.size(), c.kinds.size());
    for (std::size_t i = 0; i < c.kinds.size(); ++i) {
      const auto& r = f[0].rules[i];
      EXPECT_EQ(std::tuple(r.kind, r.rank, r.background, r.fontColor),
                std::tuple(c.kinds[i], c.ranks[i], c.fills[i], c.font)) << "rule " << i;
    }
  }
}

TEST_F(HighlightOffice, RulesSurviveAnXlsxRoundTrip) {
  ApplyHighlight(*book, range, kHighlightChoices[1]);
  std::string path = std::filesystem::temp_directory_path() / "quantavue-highlight.xlsx";
  book->save(path);
  std::shared_ptr<Workbook> again = office().openWorkbook(path, true);
  std::vector<Workbook::HighlightFormat> f = again->highlights(0);
  again->close();
  std::filesystem::remove(path);
  ASSERT_EQ(f.size(), 1u);
  ASSERT_EQ(f[0].rules.size(), 2u);
  EXPECT_TRUE(f[0].rules[0].kind == K::BottomN && f[0].rules[0].background == 0xFFC000u);
  EXPECT_TRUE(f[0].rules[1].kind == K::TopN && f[0].rules[1].background == 0xB4C6E7u);
}

TEST_F(HighlightOffice, ClearKeepsTheUsersFormatsOutsideTheRange) {
  // The user's own rules: one over A1:C30 reaching beyond the range, one inside it, one
  // elsewhere.
  HighlightRule users{K::TopN, 3, std::nullopt, 0x00FF00};
  book->addHighlight(CellRangeRef{0, 0, 0, 2, 29}, {users});
  book->addHighlight(CellRangeRef{0, 0, 4, 0, 6}, {users});
  book->addHighlight(CellRangeRef{0, 5, 0, 5, 9}, {users});
  ApplyHighlight(*book, range, kHighlightChoices[2]);
  ClearHighlight(*book, range);
  std::vector<Workbook::HighlightFormat> f = book->highlights(0);
  ASSERT_EQ(f.size(), 2u);
  std::int64_t covered = 0;
  for (const Workbook::HighlightFormat& h : f) {
    for (const CellRangeRef& r : h.ranges) {
      EXPECT_FALSE(Intersect(r, range)) << A1Address(r);
      covered += r.count();
    }
    ASSERT_EQ(h.rules.size(), 1u);
    EXPECT_EQ(h.rules[0].rank, 3);
  }
  EXPECT_EQ(covered, 3 * 30 - 20 + 10) << "A1, A22:A30, B1:C30 and F1:F10";
}

TEST_F(HighlightOffice, TheUsersSheetIsUntouchedByAWholeSession) {
  book->setFormula(0, 1, 1, "=A2*2");
  book->setFormula(0, 1, 2, "=SUM(A2:A21)");
  CellBlock extra;
  extra.resize(2, 1);
  extra.setText(0, "note");
  extra.setNumber(1, 45000, CellKind::Date);
  book->write(CellRangeRef{0, 2, 0, 2, 1}, extra);
  const CellRangeRef used{0, 0, 0, 30, 40};
  CellBlock before = book->read(used);
  std::vector<std::string> formulasBefore = book->formulas(used);

  std::vector<double> sample;
  for (int i = 1; i <= 20; ++i) sample.push_back(i);
  ReportInput in;
  in.binLabels = {"1 to 10", "10 to 20"};
  in.binCounts = {10, 10};
  in.rangeAddress = "$A$2:$A$21";
  in.sample = sample;
  in.includeObservations = true;
  ASSERT_TRUE(ExportReport(*book, in).done);
  ApplyHighlight(*book, range, kHighlightChoices[1]);
  ApplyHighlight(*book, range, kHighlightChoices[4]);
  ClearHighlight(*book, range);
  ASSERT_TRUE(ExportReport(*book, in).done);

  CellBlock after = book->read(used);
  EXPECT_TRUE(after.kinds == before.kinds && after.numbers == before.numbers && after.texts == before.texts);
  EXPECT_EQ(book->formulas(used), formulasBefore);
  EXPECT_EQ(book->sheetName(0), "Sheet1");
  EXPECT_EQ(book->sheetName(2), "Binsight2");
}

}  // namespace
}  // namespace qv::testing
