// The sample: the values of the named range that take part in the analysis.
//
// What: LoadSample's and LoadDiscreteSample's cell filter over one bulk read of the
// range, the sort, truncation to [low, high] and the filter of ticked values.
// Algorithm: the sample is sorted once, when its cells are read, by an LSD radix sort
// on the bit patterns of the doubles (mapped so that unsigned order is numeric order).
// Truncation is then a slice found by two binary searches, and the discrete filter an
// equal_range per ticked value: both give exactly what filtering the cells again and
// sorting anew would give.
// Accuracy: values are copied, never computed; the sort keeps every bit. -0 sorts just
// before +0; the two compare equal, so the order is the numeric order.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "cell_block.h"

namespace qv {

// Which loader's filter: both take numbers and truth values (True as -1, False as 0)
// and leave dates, blanks and errors out. LoadSample always runs with truncation in
// force and a text compares above any bound, so numeric text never enters it;
// LoadDiscreteSample has no bounds and takes numeric text, read as a number.
enum class SampleFilter { Continuous, Discrete };

// The range's sample, sorted ascending. For the continuous sample the window then
// applies the truncation bounds with TruncateSorted (at the first load they are the
// range's Min and Max, which a truth value of -1 may lie below).
std::vector<double> BuildSample(const CellBlock& cells, SampleFilter filter,
                                char decimalMark = '.');

// Ascending sort in numeric order (LSD radix sort on the bit patterns).
void SortValues(std::span<double> values);

// Shell sort with the gap sequence 1, 4, 13, 40, ..., starting at the largest gap
// below n/3; kept for the windows that sort small arrays of their own.
void ShellSortValues(std::span<double> values);

// The values v of a sorted sample with low <= v <= high, both inclusive.
std::span<const double> TruncateSorted(std::span<const double> sorted, double low, double high);

}  // namespace qv
