// Discrete mode: distinct texts, the filter of ticks against filtering the cells again,
// and the counts over the whole range.
#include <gtest/gtest.h>

#include <random>

#include "cells.h"
#include "discrete.h"
#include "sample.h"
#include "worksheet_functions.h"

namespace qv {
namespace {

using namespace test;
using Texts = std::vector<std::string>;
using Counts = std::vector<std::int64_t>;

// A distinct value is the text it shows: ticking "0.3" keeps and counts =0.1+0.2 too, as
// COUNTIF does, and only values shown with that very text.
TEST(Discrete, ValuesShownWithTheSameTextAreOneRow) {
  const double sum = 0.1 + 0.2, near = 0.3 + 1e-16, far = 0.3 + 1e-13;
  struct Case { std::vector<Cell> cells; Texts ticked; Counts counts; std::vector<double> kept; } cases[] = {
      {{0.3, sum, 0.5, 0.5}, {"0.3", "0.5"}, {2, 2}, {0.3, sum, 0.5, 0.5}},
      {{0.3, sum, 0.5, 0.5}, {"0.3"}, {2}, {0.3, sum}},
      {{0.3, sum, 0.5, 0.5}, {"0.5"}, {2}, {0.5, 0.5}},
      {{sum, near, far, "0.3"}, {"0.3"}, {3}, {0.3, sum, near}},  // far shows 0.3000000000001
      {{-sum, -0.3, 0.3}, {"-0.3"}, {2}, {-sum, -0.3}},
      {{1e308, -1e308, 1e308 * (1 + 1e-15)}, {"1E+308"}, {2}, {1e308, 1e308 * (1 + 1e-15)}},
      {{1e-300, 0.0, -0.0}, {"0"}, {2}, {-0.0, 0.0}},
  };
  for (const Case& c : cases) {
    CellBlock block = Column(c.cells);
    std::vector<double> sorted = BuildSample(block, SampleFilter::Discrete);
    EXPECT_EQ(TabulateDiscrete(block, c.ticked).BinCounts, c.counts) << c.ticked[0];
    std::vector<double> kept = FilterCheckedValues(sorted, c.ticked);
    EXPECT_EQ(kept, c.kept) << c.ticked[0];
    for (const std::string& t : c.ticked)
      EXPECT_EQ(CountIf(block, t), TabulateDiscrete(block, Texts{t}).BinCounts[0]) << t;
  }
  DistinctValues d = UniqueValuesForCols(BuildSample(Column({0.3, sum, 0.5, 0.5}), SampleFilter::Discrete));
  EXPECT_EQ(d.texts, (Texts{"0.3", "0.5"}));
  // In order of first occurrence, with the user's mark; -0 and 0 are one. The limits of
  // the list (more than 50, fewer than 3) are checked through the main window.
  d = UniqueValuesForCols(std::vector<double>{3, 1, 3, 0.1 + 0.2, 2, 0.3, -0.0, 0.0, 1}, ',');
  EXPECT_EQ(d.texts, (Texts{"3", "1", "0,3", "2", "0"}));
  EXPECT_EQ(d.values[2], 0.1 + 0.2);
}

TEST(Discrete, FilterEqualsFilteringTheCellsAgain) {
  std::mt19937_64 rng(2);
  std::vector<Cell> cells;
  for (int i = 0; i < 2000; ++i) {
    const std::uint64_t kind = rng() % 6;  // numeric text enters here
    cells.push_back(kind == 0   ? Truth(rng() % 2 == 0)
                    : kind == 1 ? Cell(std::to_string(rng() % 5))
                    : kind == 2 ? Blank()
                                : Cell(static_cast<double>(rng() % 9) / 2 - 1));
  }
  CellBlock block = Column(cells);
  std::vector<double> whole = BuildSample(block, SampleFilter::Discrete);
  for (Texts ticked : {Texts{}, Texts{"0"}, Texts{"-1", "3.5", "2"}, Texts{"2", "2", "-0"},
                       Texts{"4", "1.5", "0", "-0.5", "-1", "3"}}) {
    std::vector<double> anew;  // LoadDiscreteSample: the cells in order, then a sort
    for (std::int64_t i = 0; i < block.size(); ++i) {
      CellKind k = block.kinds[i];
      if (k == CellKind::Empty) continue;
      double x = k == CellKind::Text      ? std::stod(block.text(i))
                 : k == CellKind::Logical ? -block.numbers[i]
                                          : block.numbers[i];
      if (std::any_of(ticked.begin(), ticked.end(), [&](auto& t) { return std::stod(t) == x; }))
        anew.push_back(x);
    }
    std::sort(anew.begin(), anew.end());
    EXPECT_EQ(FilterCheckedValues(whole, ticked), anew) << ticked.size();
  }
}

TEST(Discrete, CountsAreCountIfOverTheWholeRange) {
  // Numbers, both zeros, truth values and a date (stored as 1/0 and a serial), numeric and
  // other text, a blank and an error.
  CellBlock block = Column({2.5, 2.5, 1.0, -0.0, 0.0, Truth(true), Truth(false), DateSerial(1),
                            "12", "x", "X", Blank(), ErrorCell(532), 12.0, -1.0});
  Texts criteria{"2.5", "1", "0", "-0", "12", "x", "-1", "7", "1", "abc"};
  Counts expected;
  for (const std::string& c : criteria) expected.push_back(CountIf(block, c));
  EXPECT_EQ(TabulateDiscrete(block, criteria).BinCounts, expected);
  EXPECT_EQ(TabulateDiscrete(block, criteria).BinLabels, criteria);
  EXPECT_EQ(TabulateDiscrete(block, Texts{"2,5"}, ',').BinCounts, Counts{2});  // decimal comma
}

}  // namespace
}  // namespace qv
