// The report sheet as data: the cells it holds, the formats, borders, column widths
// and chart that go on it, worked out from the analysis without the office. The
// writer (report_writer.h) puts it on a new sheet.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "address.h"
#include "cell_block.h"
#include "sheet_format.h"

namespace qv {

// The office's sheet: 1,024 columns and 1,048,576 rows.
inline constexpr std::int32_t kSheetColumns = 1024;
inline constexpr std::int32_t kSheetRows = 1048576;
// Bins start in column C.
inline constexpr int kMaxReportBins = kSheetColumns - 2;
// Observations start in Z2.
inline constexpr std::int64_t kMaxReportObservations = kSheetRows - 1;
inline constexpr int kMaxReportSheets = 100;

struct ReportInput {
  std::vector<std::string> binLabels;
  std::vector<double> binCounts;  // counts; in discrete mode whatever the last drawing left
  bool discrete = false;
  std::string rangeAddress;           // the whole input range, $A$2:$A$101
  std::array<std::string, 8> boxes;   // the texts of TextBox1 .. TextBox8
  std::span<const double> sample;     // SampleValues, ascending
  int decimals = 2;
  char decimalMark = '.';
  bool includeObservations = false;
};

// Why the export cannot be made, before any sheet is added; nothing when it can.
std::optional<std::string> ReportRefusal(const ReportInput& in);

// "Binsight" and the smallest free number from 1 to 100; nothing when all are taken.
std::optional<std::string> FreeReportName(const std::function<bool(const std::string&)>& sheetExists);
inline constexpr const char* kNoFreeReportName =
    "No report sheet can be added: the names Binsight1 to Binsight100 are all taken. Delete or rename "
    "one of those sheets and export again.";

struct CellsAt {
  CellRangeRef at;  // top-left cell; the block's size gives the rest
  CellBlock cells;
};

struct FormatAt {
  CellRangeRef range;
  CellFormat format;
};

struct BordersAt {
  CellRangeRef range;
  RangeBorders borders;
};

struct ReportSheet {
  int sheet = 0;
  // Table rows and statistics, written before any format; each block has no blank cell.
  std::vector<CellsAt> cells;
  // Applied in this order after the cells: a later format overrides an earlier one.
  std::vector<FormatAt> formats;
  std::vector<BordersAt> borders;
  // Columns made to fit after the cells are written, and again after formatting.
  std::int32_t lastUsedColumn = 0;
  std::int32_t refitLastColumn = 11;  // A:L
  // The regions of the table, as the chart and later exports find them.
  CellRangeRef regionA, regionC, regionF, statistics;
  // Written after the chart: the observations in Z2 down and T1's format.
  std::optional<CellsAt> observations;
  std::optional<FormatAt> observationsTitle;
  ColumnChartSpec chart;
  bool hasChart = false;
  // Shown with A1 selected, at 75%.
  CellRangeRef selected;
  int zoom = 75;
};

ReportSheet BuildReportSheet(const ReportInput& in, int sheet, const std::string& sheetName);

}  // namespace qv
