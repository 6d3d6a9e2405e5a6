// The report sheet as data. Rows and columns below are zero-based: row 0 is the
// sheet's row 1, column 1 is B.
#include "report_sheet.h"

#include <algorithm>

#include "number_text.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

constexpr std::int32_t kColB = 1, kColL = 11, kColT = 19, kColZ = 25;

CellRangeRef Cells(int sheet, std::int32_t col0, std::int32_t row0, std::int32_t col1, std::int32_t row1) {
  return CellRangeRef{sheet, col0, row0, col1, row1};
}

CellRangeRef Row(const CellRangeRef& r, std::int32_t k) {
  return CellRangeRef{r.sheet, r.firstCol, r.firstRow + k, r.lastCol, r.firstRow + k};
}

CellFormat Background(int index) {
  CellFormat f;
  f.background = ColorIndexRgb(index);
  return f;
}

CellFormat TableRegion(int font, int interior) {
  CellFormat f;
  f.bold = true;
  f.fontColor = ColorIndexRgb(font);
  f.background = ColorIndexRgb(interior);
  f.centredHorizontally = true;
  return f;
}

CellFormat PercentRow() {
  CellFormat f = Background(34);
  f.numberFormat = "0.0%";
  return f;
}

// Kurtosis and skewness go in rounded; with no value, the error text the window shows.
void SetRoundedOrError(CellBlock& b, std::int64_t i, std::optional<double> x, int decimals) {
  if (x)
    b.setNumber(i, Round(*x, decimals));
  else
    b.setText(i, "#DIV/0!");
}

RangeBorders Group(BorderLine left, BorderLine insideVertical) {
  RangeBorders b;
  b.diagonalDown = b.diagonalUp = BorderLine::None;
  b.left = left;
  b.top = b.bottom = BorderLine::None;
  b.right = BorderLine::Thin;
  b.insideVertical = insideVertical;
  b.insideHorizontal = BorderLine::None;
  return b;
}

double Total(std::span<const double> counts) {
  double t = 0;
  for (double c : counts) t += c;
  return t;
}

}  // namespace

std::optional<std::string> ReportRefusal(const ReportInput& in) {
  if (in.sample.empty()) return std::string("The sample is empty: there is nothing to export.");
  if (!in.discrete && in.sample.size() < 2)
    return std::string("At least 2 values are needed in continuous mode: there is nothing to export.");
  std::size_t bins = in.binCounts.size();
  if (bins == 0 || in.binLabels.size() != bins) return std::string("The table is empty: there is nothing to export.");
  if (bins > static_cast<std::size_t>(kMaxReportBins))
    return "The report holds at most 1,022 bins, one per column from C on; this table has " +
           std::to_string(bins) + ". Lower the number of bins and export again.";
  if (in.includeObservations && static_cast<std::int64_t>(in.sample.size()) > kMaxReportObservations)
    return "At most 1,048,575 observations fit below Z1; the sample has " + std::to_string(in.sample.size()) +
           ". Untick \"Include observations\" and export again.";
  if (Total(in.binCounts) == 0)
    return std::string("No value of the sample lies in the table: there is nothing to export.");
  return std::nullopt;
}

std::optional<std::string> FreeReportName(const std::function<bool(const std::string&)>& sheetExists) {
  for (int i = 1; i <= kMaxReportSheets; ++i) {
    std::string name = "Binsight" + std::to_string(i);
    if (!sheetExists(name)) return name;
  }
  return std::nullopt;
}

ReportSheet BuildReportSheet(const ReportInput& in, int sheet, const std::string& sheetName) {
  ReportSheet r;
  r.sheet = sheet;
  const auto bins = static_cast<std::int32_t>(in.binCounts.size());
  const std::int32_t lastCol = kColB + bins;
  const double total = Total(in.binCounts);

  // The table: row 1, rows 3-4, rows 6-7, each a block of its own so that the empty rows
  // between them stay untouched.
  CellsAt labels{Cells(sheet, kColB, 0, lastCol, 0), {}};
  CellsAt counts{Cells(sheet, kColB, 2, lastCol, 3), {}};
  CellsAt accumulated{Cells(sheet, kColB, 5, lastCol, 6), {}};
  const std::int64_t w = bins + 1;
  labels.cells.resize(1, w);
  counts.cells.resize(2, w);
  accumulated.cells.resize(2, w);
  labels.cells.setText(0, "Bins");
  counts.cells.setText(0, "Frequency");
  counts.cells.setText(w, "Percentage");
  accumulated.cells.setText(0, "Accumulated frequency");
  accumulated.cells.setText(w, "Accumulated percentage");
  double sum = 0;
  for (std::int32_t i = 0; i < bins; ++i) {
    const std::int64_t c = i + 1;
    const std::string& label = in.binLabels[static_cast<std::size_t>(i)];
    labels.cells.setText(c, in.discrete ? "Val=" + label : label);
    const double n = in.binCounts[static_cast<std::size_t>(i)];
    counts.cells.setNumber(c, n);
    counts.cells.setNumber(w + c, n / total);
    sum += n;
    accumulated.cells.setNumber(c, sum);
    accumulated.cells.setNumber(w + c, sum / total);
  }

  // The statistics block: titles in row 33, figures in row 34 as the window shows them.
  CellsAt stats{Cells(sheet, kColB, 32, kColL, 33), {}};
  stats.cells.resize(2, 11);
  static const char* const kTitles[11] = {"Range address", "Valid observations", "Sample average",
                                          "Sample standard deviation", "Minimum", "Q25", "Q50   (Median)",
                                          "Q75", "Maximum", "Kurtosis", "Skewness"};
  for (int k = 0; k < 11; ++k) stats.cells.setText(k, kTitles[k]);
  stats.cells.setText(11, in.rangeAddress);
  for (int k = 0; k < 8; ++k) stats.cells.setNumber(12 + k, Val(in.boxes[static_cast<std::size_t>(k)], in.decimalMark));
  SetRoundedOrError(stats.cells, 20, Kurt(in.sample), in.decimals);
  SetRoundedOrError(stats.cells, 21, Skew(in.sample), in.decimals);

  r.cells = {std::move(labels), std::move(counts), std::move(accumulated), std::move(stats)};
  r.lastUsedColumn = std::max(lastCol, kColL);

  r.regionA = Cells(sheet, kColB, 0, lastCol, 0);
  r.regionC = Cells(sheet, kColB, 2, lastCol, 3);
  r.regionF = Cells(sheet, kColB, 5, lastCol, 6);
  r.statistics = Cells(sheet, kColB, 32, kColL, 33);

  CellFormat statsFormat;
  statsFormat.bold = true;
  statsFormat.fontColor = ColorIndexRgb(49);
  statsFormat.centredHorizontally = true;
  statsFormat.centredVertically = true;
  statsFormat.wrap = true;
  r.formats = {
      {Cells(sheet, kColB, 0, kColL, 33), Background(45)},
      {r.regionA, TableRegion(8, 33)},
      {r.regionC, TableRegion(49, 8)},
      {Row(r.regionC, 1), PercentRow()},
      {r.regionF, TableRegion(49, 8)},
      {Row(r.regionF, 1), PercentRow()},
      {r.statistics, statsFormat},
      {Row(r.statistics, 0), Background(8)},
      {Row(r.statistics, 1), Background(34)},
  };

  // Four groups split by thin vertical rules, no rule at the top or bottom.
  r.borders = {
      {Cells(sheet, 1, 32, 1, 33), Group(BorderLine::None, BorderLine::NotSet)},
      {Cells(sheet, 2, 32, 4, 33), Group(BorderLine::Thin, BorderLine::None)},
      {Cells(sheet, 5, 32, 9, 33), Group(BorderLine::Thin, BorderLine::None)},
      {Cells(sheet, 10, 32, 11, 33), Group(BorderLine::Thin, BorderLine::NotSet)},
  };

  // The chart of the frequencies over B9:J31, scaled to 1.2 times the largest number of
  // rows 3 and 4 (the percentages there are below every count).
  double top = 0;
  for (std::int32_t i = 0; i < bins; ++i) {
    const double n = in.binCounts[static_cast<std::size_t>(i)];
    top = std::max({top, n, n / total});
  }
  ColumnChartSpec& c = r.chart;
  c.name = sheetName;
  c.area = Cells(sheet, 1, 8, 9, 30);
  c.categories = Cells(sheet, 2, 0, lastCol, 0);
  c.values = Cells(sheet, 2, 2, lastCol, 2);
  c.seriesName = Cells(sheet, 1, 2, 1, 2);
  c.valueMax = 1.2 * top;
  c.tickFont = "Arial Black";
  c.tickSize = 9;
  c.tickColor = ColorIndexRgb(6);
  c.axisLineColor = ColorIndexRgb(2);
  c.wallColor = ColorIndexRgb(7);
  c.pageColor = ColorIndexRgb(55);
  c.gapWidth = 1;
  c.barColor = ColorIndexRgb(13);
  c.barOutlineColor = ColorIndexRgb(2);
  c.labelFont = "Arial Black";
  c.labelSize = 12;
  c.labelBold = true;
  c.labelColor = ColorIndexRgb(2);
  r.hasChart = top > 0;

  if (in.includeObservations) {
    CellsAt obs{Cells(sheet, kColZ, 1, kColZ, static_cast<std::int32_t>(in.sample.size())), {}};
    obs.cells.rows = static_cast<std::int64_t>(in.sample.size());
    obs.cells.cols = 1;
    obs.cells.kinds.assign(in.sample.size(), CellKind::Number);
    obs.cells.numbers.assign(in.sample.begin(), in.sample.end());
    r.observations = std::move(obs);
    CellFormat title;
    title.bold = true;
    title.centredHorizontally = true;
    title.underline = true;
    r.observationsTitle = FormatAt{Cells(sheet, kColT, 0, kColT, 0), title};
  }
  r.selected = Cells(sheet, 0, 0, 0, 0);
  return r;
}

}  // namespace qv
