// Discrete mode: the distinct values of the sample, the filter of the ticked values and
// the table of one row per ticked value.
//
// What: UniqueValuesForCols (distinct by the text form of the value, in order of first
// occurrence), the listing rules of OptionDiscrete (fewer than 3 values: no list; more
// than 50 distinct: refused), LoadDiscreteSample's filter (a value stays when it shows
// as a ticked text; each cell keeps its multiplicity) and TabulateDiscrete's counts
// (COUNTIF over the whole range for each ticked text).
// A distinct value is the text it shows at 15 significant digits: =0.1+0.2 is listed,
// counted and kept under the row "0.3", as the spreadsheet's COUNTIF counts it.
// Algorithm: one hashed pass over the texts; the filter searches the sorted sample in a
// window of relative width 1e-14 around each ticked number and turns only the values
// in it into text, which gives what filtering the cells and sorting anew gives.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "cell_block.h"
#include "tabulation.h"

namespace qv {

inline constexpr std::size_t kMaxDiscreteValues = 50;
inline constexpr const char* kTooManyDiscreteText =
    "More then 50 discrete different values detected!";

// UniqueValues, with the text of each list row.
struct DistinctValues {
  std::vector<double> values;      // UniqueValues(1..u), first occurrences
  std::vector<std::string> texts;  // the text form that decided distinctness
};

DistinctValues UniqueValuesForCols(std::span<const double> values, char decimalMark = '.');

// OptionDiscrete's steps 8 to 10 over the current sample.
struct DiscreteList {
  enum class Status {
    TooFewValues,   // fewer than 3 values: the list stays empty, no message
    TooManyValues,  // notice is kTooManyDiscreteText; list and chart are emptied
    Listed,         // unique holds the rows, all to be ticked
  };
  Status status = Status::TooFewValues;
  std::string notice;
  DistinctValues unique;
};

DiscreteList ListDiscreteValues(std::span<const double> sample, char decimalMark = '.');

// LoadDiscreteSample's filter over the sorted discrete sample (BuildSample with
// SampleFilter::Discrete): the values that show as some checked text.
std::vector<double> FilterCheckedValues(std::span<const double> sorted,
                                        std::span<const std::string> checkedValues,
                                        char decimalMark = '.');

// TabulateDiscrete's table: one bin per checked text, labelled by it, counted by
// COUNTIF over every cell of the range (so a count does not depend on other ticks).
FrequencyTable TabulateDiscrete(const CellBlock& range, std::span<const std::string> checkedValues,
                                char decimalMark = '.');

}  // namespace qv
