// Range addresses as the user reads them (Excel's A1 form) and as the office's names
// hold them; pure text work, no office needed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qv {

// A block of cells on one sheet, zero-based and inclusive.
struct CellRangeRef {
  int sheet = 0;
  std::int32_t firstCol = 0, firstRow = 0, lastCol = 0, lastRow = 0;

  std::int64_t rows() const { return std::int64_t(lastRow) - firstRow + 1; }
  std::int64_t cols() const { return std::int64_t(lastCol) - firstCol + 1; }
  std::int64_t count() const { return rows() * cols(); }
  bool operator==(const CellRangeRef&) const = default;
};

std::string ColumnLetters(std::int32_t col);
// $A$2:$A$101, or $B$3 for one cell.
std::string A1Address(const CellRangeRef& r);
// [book.ods]Sheet1!$A$2:$A$101; the book-and-sheet part quoted as a whole when either
// needs it, quotes doubled: '[book.ods]My Data'!$A$1:$A$21.
std::string ExternalAddress(const CellRangeRef& r, std::string_view book, std::string_view sheet);
// The office's absolute form for a workbook name: $Sheet1.$A$2:$A$101, $'My Data'.$A$1.
std::string CalcAddress(const CellRangeRef& r, std::string_view sheet);
// The cells two ranges share; none when they lie apart or on different sheets.
std::optional<CellRangeRef> Intersect(const CellRangeRef& a, const CellRangeRef& b);
// The document's file name from its URL, %-escapes decoded: "file:///tmp/My%20book.ods"
// gives "My book.ods".
std::string BookNameFromUrl(std::string_view url);

}  // namespace qv
