// The running spreadsheet, as the small object model the program uses: an office to
// attach to, its workbooks, their sheets, ranges and names. Nothing here exposes the
// office's own API; every failure of the office becomes an OfficeError.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "address.h"
#include "cell_block.h"
#include "sheet_format.h"

namespace qv {

class OfficeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Nothing listens where we look for the office.
class NoOfficeError : public OfficeError {
 public:
  using OfficeError::OfficeError;
};

class Workbook;

// How a caller waits for the office. The hook is handed each office call and returns
// once that call has run, on whatever thread it chose (a window keeps painting meanwhile);
// it may end the process instead, but never return early. Without a hook every call
// runs inline on the caller's thread. Calls made from inside a call run inline.
using OfficeCallWaiter = std::function<void(const std::function<void()>& call)>;
void SetOfficeCallWaiter(OfficeCallWaiter waiter);

// How far the bulk read or write under way has come, for a waiter that shows progress
// (it may ask from any thread). `total` is 0 while no bulk call runs.
struct OfficeProgress {
  enum class Work { None, Reading, Writing };
  Work work = Work::None;
  std::int64_t done = 0;   // cells
  std::int64_t total = 0;  // cells
};
OfficeProgress CurrentOfficeProgress();

class Office {
 public:
  // The connection used when QUANTAVUE_CONNECT does not name another.
  static std::string DefaultConnection();
  // Attaches to an office that already listens on `connection` (a UNO connection
  // string such as "pipe,name=quantavue;urp;"); never starts one. Throws NoOfficeError
  // when none answers, OfficeError when the pipe is a link, no socket, or belongs to
  // another user.
  static std::unique_ptr<Office> Attach(const std::string& connection);

  ~Office();
  Office(const Office&) = delete;
  Office& operator=(const Office&) = delete;

  // The spreadsheet document the office shows in front, or null when the active
  // document is none or no spreadsheet.
  std::shared_ptr<Workbook> activeWorkbook();
  // A new empty spreadsheet document (hidden for tests and tools).
  std::shared_ptr<Workbook> createWorkbook(bool hidden);
  std::shared_ptr<Workbook> openWorkbook(const std::string& path, bool hidden);

  // A worksheet function evaluated by the office itself, on a range of a workbook or on
  // an array; for checking our own functions against the office's.
  double callFunction(const std::string& name, const Workbook& book, const CellRangeRef& range);
  double callFunction(const std::string& name, const std::vector<double>& values);
  double callFunction(const std::string& name, const Workbook& book, const CellRangeRef& range,
                      const std::string& criterion);
  // Each number a scalar argument: ROUND(x; d), LN(x).
  double callScalar(const std::string& name, const std::vector<double>& args);

  struct Impl;

 private:
  explicit Office(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

// What the user has selected in a workbook.
struct Selection {
  std::vector<CellRangeRef> areas;  // one per separate block of cells
};

class Workbook {
 public:
  struct Impl;
  explicit Workbook(std::unique_ptr<Impl> impl);
  ~Workbook();

  // The name shown in external addresses: the file name, or the title of an unsaved
  // document ("Untitled 1").
  std::string name() const;
  bool sameDocument(const Workbook& other) const;
  // Brings the office's window with this workbook to the front.
  void activate();

  int activeSheet();
  std::string sheetName(int sheet);
  // The cells of the selection; throws when the selection is no cells (a picture).
  Selection selection();
  // The office's own range picker: returns the range the user picks, or nothing when
  // the user cancels. `wait` runs while the user picks (it should keep the caller's
  // windows alive).
  std::optional<CellRangeRef> pickRange(const std::string& title, const std::function<void()>& wait);
  // Cancels the pick in progress, started from this or any other workbook object (from
  // `wait`, or from another window); the pick ends even when the office no longer answers.
  void abortPick();
  // Whether a pick is in progress in the process.
  bool picking() const;
  // The used area of a sheet; nothing for an empty sheet.
  std::optional<CellRangeRef> usedRange(int sheet);

  // The value of a range in bulk calls, every cell with its kind.
  CellBlock read(const CellRangeRef& range);
  // The same for the used part of a range only: the cells that can hold anything, so a
  // whole column selected is not read to its last row. Empty when nothing is used there.
  CellBlock readUsed(const CellRangeRef& range);
  // Formula cells of a range whose result is an error.
  std::vector<CellRangeRef> errorFormulaCells(const CellRangeRef& range);
  void select(const std::vector<CellRangeRef>& areas);

  // Our own name leaves the document's modified flag as it found it, so that the
  // office does not ask to save a document whose cells nobody changed.
  void defineName(const std::string& name, const CellRangeRef& range);
  std::optional<CellRangeRef> resolveName(const std::string& name);
  void deleteName(const std::string& name);
  bool modified();

  // $A$2:$A$101, or [book.ods]Sheet1!$A$2:$A$101 with external.
  std::string address(const CellRangeRef& range, bool external);

  // Change tracking: after watch(range), changed() tells whether a cell inside it has
  // changed since the last call of watch or clearChanged.
  void watch(const CellRangeRef& range);
  bool changed() const;
  void clearChanged();

  // Writing, for tests, tools and reports. Numbers, texts and blanks by bulk call; Date
  // and Logical cells get a date or truth-value number format.
  void write(const CellRangeRef& at, const CellBlock& values);
  void setFormula(int sheet, std::int32_t col, std::int32_t row, const std::string& formula);
  // A small rectangle drawn on a sheet and selected, as a user selecting a picture.
  void drawRectangle(int sheet);
  void setModified(bool modified);
  void save(const std::string& path);
  void close();

  // Sheets by name: the office compares names without regard to case. A failing look-up
  // counts as no such sheet.
  bool sheetExists(const std::string& name);
  // A new empty sheet of that name after the last one, in one step; its index.
  int addSheetLast(const std::string& name);

  // Formats and layout of a report.
  void format(const CellRangeRef& range, const CellFormat& format);
  void setBorders(const CellRangeRef& range, const RangeBorders& borders);
  // Columns first..last of a sheet take the width their contents need.
  void fitColumns(int sheet, std::int32_t firstCol, std::int32_t lastCol);
  // Left-to-right table layout on a sheet.
  void setLeftToRight(int sheet);
  // Makes the sheet the active one, selects `select` and sets its zoom (percent).
  void showSheet(int sheet, const CellRangeRef& select, int zoom);
  void addColumnChart(int sheet, const ColumnChartSpec& chart);

  // Conditional formatting: one format on the range with the rules, first rule first;
  // each rule's colours go in a cell style of its own.
  void addHighlight(const CellRangeRef& range, const std::vector<HighlightRule>& rules);
  // Takes the range out of every conditional format of its sheet: a format inside it
  // goes, one reaching beyond it keeps the cells outside.
  void clearHighlights(const CellRangeRef& range);

  // Screen updating held off while a lock lives; released on every path.
  class ScreenLock {
   public:
    explicit ScreenLock(Workbook& book);
    ~ScreenLock();
    ScreenLock(const ScreenLock&) = delete;
    ScreenLock& operator=(const ScreenLock&) = delete;

   private:
    Workbook& book_;
    bool locked_ = false;
  };
  bool controllersLocked();

  // Reading formats back, for tests and tools.
  struct Line {
    std::int32_t width = 0;  // 1/100 mm; 0 for none
    Rgb color = 0;
  };
  struct CellLook {
    bool bold = false;
    bool underline = false;
    std::optional<Rgb> fontColor;   // none for the automatic colour
    std::optional<Rgb> background;  // none when transparent
    std::string numberFormat;
    bool centredHorizontally = false, centredVertically = false, wrap = false;
    Line left, top, right, bottom, diagonalDown, diagonalUp;
  };
  CellLook look(int sheet, std::int32_t col, std::int32_t row);
  bool columnFitted(int sheet, std::int32_t col);
  int zoom();
  struct HighlightFormat {
    std::vector<CellRangeRef> ranges;
    std::vector<HighlightRule> rules;  // colours from the rules' cell styles
    // The first cell knows it carries a format: the office draws it without a reload.
    bool drawn = false;
  };
  std::vector<HighlightFormat> highlights(int sheet);
  struct Rect {
    std::int32_t x = 0, y = 0, width = 0, height = 0;  // 1/100 mm
  };
  Rect cellsRect(const CellRangeRef& range);
  struct ChartLook {
    std::string name;
    int count = 0;  // charts on the sheet
    Rect rect;
    int series = 0;
    std::vector<double> values;
    std::vector<std::string> categories;
    std::string seriesName;
    bool columns = false;  // a plain vertical column chart
    double valueMin = 0, valueMax = 0;
    bool valueAxisShown = true, valueGridShown = true, legendShown = true;
    std::string tickFont;
    double tickSize = 0;
    Rgb tickColor = 0, axisLineColor = 0, wallColor = 0, pageColor = 0;
    std::int32_t gapWidth = 0;
    bool gradient = false;
    Rgb gradientStart = 0, gradientEnd = 0;
    Rgb outlineColor = 0;
    bool outlineSolid = false;
    bool labelNumberOnly = false;
    std::string labelFont;
    double labelSize = 0;
    bool labelBold = false;
    Rgb labelColor = 0;
    std::int16_t tableLayout = -1;  // the sheet's writing mode; 0 left to right
  };
  ChartLook chart(int sheet);
  // A PNG picture of a sheet's used area as the office draws it, for documentation.
  void exportPicture(int sheet, const std::string& path);
  // The formulas of a range as the cells hold them (the value's text for a constant).
  std::vector<std::string> formulas(const CellRangeRef& range);

  Impl& impl() const { return *impl_; }

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace qv
