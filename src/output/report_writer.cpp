#include "report_writer.h"

#include "highlight.h"

namespace qv {

void WriteReport(Workbook& book, const ReportSheet& r) {
  // The background comes first, whatever the table's width; the cells go in as blocks.
  book.format(r.formats.front().range, r.formats.front().format);
  for (const CellsAt& c : r.cells) book.write(c.at, c.cells);
  book.fitColumns(r.sheet, 0, r.lastUsedColumn);
  for (std::size_t i = 1; i < r.formats.size(); ++i) book.format(r.formats[i].range, r.formats[i].format);
  for (const BordersAt& b : r.borders) book.setBorders(b.range, b.borders);
  // Fitted again after the bold formats: the columns behind L keep the first fit.
  book.fitColumns(r.sheet, 0, r.refitLastColumn);
  if (r.hasChart) {
    // The chart's rectangle is read from the cells, in a left-to-right sheet.
    book.setLeftToRight(r.sheet);
    book.addColumnChart(r.sheet, r.chart);
  }
  if (r.observations) {
    book.write(r.observations->at, r.observations->cells);
    book.format(r.observationsTitle->range, r.observationsTitle->format);
  }
}

ExportOutcome ExportReport(Workbook& book, const ReportInput& input) {
  ExportOutcome out;
  if (std::optional<std::string> why = ReportRefusal(input)) {
    out.notice = *why;
    return out;
  }
  std::optional<std::string> name = FreeReportName([&](const std::string& n) { return book.sheetExists(n); });
  if (!name) {
    out.notice = kNoFreeReportName;
    return out;
  }
  int sheet = -1;
  try {
    Workbook::ScreenLock lock(book);
    sheet = book.addSheetLast(*name);
    out.sheetName = *name;
    ReportSheet report = BuildReportSheet(input, sheet, *name);
    // Shown before it is filled: bringing forward a sheet whose chart is already there
    // costs a drawing of the chart.
    book.showSheet(sheet, report.selected, report.zoom);
    WriteReport(book, report);
  } catch (const OfficeError& e) {
    out.notice = std::string("The export did not complete: ") + e.what() + ".";
    if (sheet >= 0) out.notice += " The sheet " + *name + " holds only part of the report.";
    return out;
  }
  out.done = true;
  return out;
}

void ClearHighlight(Workbook& book, const CellRangeRef& range) {
  book.activate();
  book.select({range});
  book.clearHighlights(range);
}

void ApplyHighlight(Workbook& book, const CellRangeRef& range, const std::string& choice) {
  ClearHighlight(book, range);
  book.addHighlight(range, HighlightRules(choice));
}

}  // namespace qv
