// The plot-data export's way into the spreadsheet: a workbook's sheets by role.
#pragma once

#include <memory>

#include "visualize_window.h"

namespace qv {

class Workbook;

// Sheets of `book`: names compared as the office compares them, new sheets after the
// last, cells written in one bulk call from A1, then that sheet shown with B2 selected.
// Nothing with a null book.
PlotDataSheets WorkbookPlotData(std::shared_ptr<Workbook> book);

}  // namespace qv
