// The one analysis of the process: every window reads these fields when it needs them,
// and only the routines named beside a field write it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cell_block.h"
#include "office.h"
#include "statistics.h"

namespace qv {

class MainForm;

// The last read of the named range, kept while its cells stay unchanged so that a
// refresh neither reads nor sorts them again.
struct RangeRead {
  CellRangeRef range;
  CellBlock cells;
  std::vector<double> sortedNumbers;   // numbers and truth values, ascending
  std::vector<double> sortedDiscrete;  // the same plus numeric texts (discrete load)
  RangeFacts facts;                    // Count, Min, Max, Kurt, Skew of the range
};

struct AnalysisState {
  // AttachToExcel; never replaced.
  std::shared_ptr<Office> ExcelApp;
  std::shared_ptr<Workbook> ActiveBook;

  // InputButton1_Click; re-resolved from the workbook name by each load. Nothing until
  // a range is taken.
  std::optional<CellRangeRef> InputRange;
  // LoadSample, LoadDiscreteSample; ascending after RefreshForm_TruncatedValues.
  std::vector<double> SampleValues;

  // The table: rule, knob and box handlers, the tabulations.
  int NumberOfBins = 5;
  std::vector<std::string> BinLabels;
  std::vector<double> BinCounts;  // percentages after a "Pct" drawing, until the next tabulation

  bool ExplicitMode = false;             // OptionBinning, Calculate
  std::optional<double> BinWidth;        // SSliderInterval handler
  std::string BinMark;                   // "Red" by number of bins, "Blue" by width
  std::string FrequencyView;             // "Pct" only while a percentage drawing runs

  bool TruncationActive = false;         // Form_Load False; InitTruncationSliders, Resetme True
  std::optional<double> TruncationLow;   // LoadSample
  std::optional<double> TruncationHigh;
  std::vector<std::string> CheckedValues;  // Resetme (discrete), TabulateDiscrete
  std::vector<double> UniqueValues;        // UniqueValuesForCols

  int HelpTopic = 0;
  std::int64_t PercentileIndex = 0;  // scratch
  std::vector<double> NormalitySample;
  std::optional<double> SignificanceLevel;

  // LoadSample's cache of the range's cells; dropped whenever they may have changed.
  std::optional<RangeRead> LastRead;

  // Window objects.
  MainForm* mainForm = nullptr;
};

AnalysisState& State();

// The workbook name that links the program to the data during a run.
inline constexpr const char* kDataName = "data919234xxx";

}  // namespace qv
