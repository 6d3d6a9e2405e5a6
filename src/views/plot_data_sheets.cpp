// The plot-data sheets of a workbook of the office.
#include "plot_data_sheets.h"

#include "office.h"

namespace qv {

PlotDataSheets WorkbookPlotData(std::shared_ptr<Workbook> book) {
  if (!book) return {};
  PlotDataSheets s;
  s.exists = [book](const std::string& name) { return book->sheetExists(name); };
  s.addLast = [book](const std::string& name) { return book->addSheetLast(name); };
  s.write = [book](int sheet, const CellBlock& cells) {
    if (cells.rows == 0 || cells.cols == 0) return;
    book->write(CellRangeRef{sheet, 0, 0, static_cast<std::int32_t>(cells.cols - 1),
                             static_cast<std::int32_t>(cells.rows - 1)},
                cells);
    // The new sheet comes to the front with B2 selected; a workbook without a window
    // (or a view that refuses) keeps its cells all the same.
    try {
      book->showSheet(sheet, CellRangeRef{sheet, 1, 1, 1, 1}, book->zoom());
    } catch (const OfficeError&) {
    }
  };
  return s;
}

}  // namespace qv
