// The sample: which cells enter, the radix sort against std::sort and ShellSortValues,
// and truncation as a slice against filtering the cells and sorting anew.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "cells.h"
#include "sample.h"

namespace qv {
namespace {

using namespace test;

TEST(Sample, OnlyNumbersAndTruthValuesEnterTheContinuousSample) {
  CellBlock cells = Column({"Weight", 3.0, Truth(true), Truth(false), DateSerial(45000), " 12 ",
                            Blank(), ErrorCell(532), -2.5, "2,5"});
  EXPECT_EQ(BuildSample(cells, SampleFilter::Continuous), (std::vector<double>{-2.5, -1, 0, 3}));
  // Without bounds numeric text enters, read with the user's decimal mark.
  EXPECT_EQ(BuildSample(cells, SampleFilter::Discrete), (std::vector<double>{-2.5, -1, 0, 3, 12}));
  EXPECT_EQ(BuildSample(cells, SampleFilter::Discrete, ','),
            (std::vector<double>{-2.5, -1, 0, 2.5, 3, 12}));
}

std::vector<std::uint64_t> SortedBits(const std::vector<double>& v) {
  std::vector<std::uint64_t> b;
  for (double x : v) b.push_back(std::bit_cast<std::uint64_t>(x));
  std::sort(b.begin(), b.end());
  return b;
}

TEST(Sample, RadixSortGivesTheNumericOrderOfEverySort) {
  // Both zeros, denormals, the extremes, infinities, ties on a grid, runs that share
  // their high bits, and wide normals. Sizes around the small-sort limit and the Shell
  // gaps 4, 13, 40, 121.
  const double inf = std::numeric_limits<double>::infinity();
  const double special[] = {
      0.0, -0.0, 5e-324, -5e-324, 2.2250738585072014e-308, std::numeric_limits<double>::max(), -1e308, 1e-300, inf, -inf};
  std::mt19937_64 rng(7);
  std::normal_distribution<double> normal(0, 1e6);
  for (std::size_t n : {0u, 1u, 2u, 13u, 40u, 121u, 122u, 256u, 257u, 1000u, 100000u}) {
    std::vector<double> input(n);
    for (double& x : input) {
      const std::uint64_t kind = rng() % 4;
      x = kind == 0   ? special[rng() % 10]
          : kind == 1 ? static_cast<double>(rng() % 41) * 0.5 - 10
          : kind == 2 ? 1.0 + std::ldexp(static_cast<double>(rng() >> 12), -52)
                      : normal(rng);
    }
    std::vector<double> radix = input, reference = input, shell = input;
    SortValues(radix);
    std::sort(reference.begin(), reference.end());
    ShellSortValues(shell);
    for (std::size_t i = 0; i < n; ++i) {
      ASSERT_EQ(radix[i], reference[i]) << "n " << n << " at " << i;
      ASSERT_EQ(shell[i], reference[i]) << "n " << n << " at " << i;
      ASSERT_FALSE(i > 0 && radix[i] == 0 && std::signbit(radix[i]) && !std::signbit(radix[i - 1]))
          << "-0 sorts before +0";
    }
    EXPECT_EQ(SortedBits(radix), SortedBits(input)) << "every bit pattern comes back, n " << n;
    std::vector<double> again = radix;
    SortValues(again);
    EXPECT_EQ(SortedBits(again), SortedBits(radix));
  }
}

TEST(Sample, TruncationSliceEqualsFilteringTheCellsAgain) {
  std::mt19937_64 rng(11);
  std::vector<Cell> cells;
  for (int i = 0; i < 3000; ++i) {
    const std::uint64_t kind = rng() % 6;
    cells.push_back(kind == 0   ? Blank()
                    : kind == 1 ? Truth(rng() % 2 == 0)
                    : kind == 2 ? Cell("7")
                                : Cell(static_cast<double>(rng() % 41) / 4 - 5));  // ties on the bounds
  }
  CellBlock block = Column(cells);
  std::vector<double> sorted = BuildSample(block, SampleFilter::Continuous);
  struct Bounds { double low, high; } bounds[] = {
      {-5, 5}, {-1, 0}, {0, 0}, {-0.0, 0.0}, {1.25, 1.25}, {1.3, 1.4}, {2, 1}, {-100, 100}};
  for (Bounds b : bounds) {
    std::vector<double> anew;  // LoadSample's loop with the bounds, then a sort
    for (std::int64_t i = 0; i < block.size(); ++i) {
      CellKind k = block.kinds[i];
      double v = k == CellKind::Logical ? -block.numbers[i] : block.numbers[i];
      if ((k == CellKind::Number || k == CellKind::Logical) && v >= b.low && v <= b.high)
        anew.push_back(v);
    }
    std::sort(anew.begin(), anew.end());
    std::span<const double> slice = TruncateSorted(sorted, b.low, b.high);
    EXPECT_EQ(std::vector<double>(slice.begin(), slice.end()), anew) << b.low << " " << b.high;
  }
}

}  // namespace
}  // namespace qv
