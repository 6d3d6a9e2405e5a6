// The export of a report and the highlighting, carried out on a workbook: the steps the
// main window's Excel, ComboHighlight and CondFormat handlers run.
#pragma once

#include <optional>
#include <string>

#include "office.h"
#include "report_sheet.h"

namespace qv {

// Puts a built report on its sheet: cells, formats, borders, widths, chart, then the
// observations. Throws OfficeError at the step the office refuses.
void WriteReport(Workbook& book, const ReportSheet& report);

struct ExportOutcome {
  bool done = false;
  std::string sheetName;  // the sheet added, also when the export failed after adding it
  std::string notice;     // what the user is told when not done
};

// The whole export: refuses what cannot be reported before any sheet is added, finds a
// free name, holds off screen updates while it writes, and shows the report sheet with
// A1 selected. The screen lock is released on every path.
ExportOutcome ExportReport(Workbook& book, const ReportInput& input);

// Clears every conditional format from the range, then adds the rules of the choice
// (none for the neutral entry); the range's sheet comes forward with the range selected.
void ApplyHighlight(Workbook& book, const CellRangeRef& range, const std::string& choice);
// Takes the conditional formats off the range, the user's too; cells outside the range
// keep theirs.
void ClearHighlight(Workbook& book, const CellRangeRef& range);

}  // namespace qv
