#include "address.h"

#include <algorithm>
#include <cctype>

namespace qv {

std::string ColumnLetters(std::int32_t col) {
  std::string s;
  for (std::int64_t c = std::int64_t(col) + 1; c > 0; c = (c - 1) / 26)
    s.insert(s.begin(), char('A' + (c - 1) % 26));
  return s;
}

static std::string Cell(std::int32_t col, std::int32_t row) {
  return "$" + ColumnLetters(col) + "$" + std::to_string(std::int64_t(row) + 1);
}

std::string A1Address(const CellRangeRef& r) {
  std::string a = Cell(r.firstCol, r.firstRow);
  if (r.count() > 1) a += ":" + Cell(r.lastCol, r.lastRow);
  return a;
}

static bool NeedsQuotes(std::string_view s) {
  if (s.empty()) return true;
  for (char c : s)
    if (!(std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.' ||
          static_cast<unsigned char>(c) >= 0x80))
      return true;
  return std::isdigit(static_cast<unsigned char>(s[0]));
}

static std::string Quoted(std::string_view s) {
  std::string q = "'";
  for (char c : s) {
    q += c;
    if (c == '\'') q += '\'';
  }
  return q + "'";
}

std::string ExternalAddress(const CellRangeRef& r, std::string_view book, std::string_view sheet) {
  std::string prefix = "[" + std::string(book) + "]" + std::string(sheet);
  bool quote = NeedsQuotes(sheet) || book.find_first_of(" '-()&,;+") != std::string_view::npos;
  return (quote ? Quoted(prefix) : prefix) + "!" + A1Address(r);
}

std::string CalcAddress(const CellRangeRef& r, std::string_view sheet) {
  std::string s = "$" + (NeedsQuotes(sheet) ? Quoted(sheet) : std::string(sheet)) + ".";
  s += Cell(r.firstCol, r.firstRow);
  if (r.count() > 1) s += ":" + Cell(r.lastCol, r.lastRow);
  return s;
}

std::optional<CellRangeRef> Intersect(const CellRangeRef& a, const CellRangeRef& b) {
  if (a.sheet != b.sheet) return std::nullopt;
  CellRangeRef r{a.sheet, std::max(a.firstCol, b.firstCol), std::max(a.firstRow, b.firstRow),
                 std::min(a.lastCol, b.lastCol), std::min(a.lastRow, b.lastRow)};
  if (r.firstCol > r.lastCol || r.firstRow > r.lastRow) return std::nullopt;
  return r;
}

std::string BookNameFromUrl(std::string_view url) {
  std::size_t slash = url.find_last_of('/');
  std::string_view name = slash == std::string_view::npos ? url : url.substr(slash + 1);
  std::string out;
  for (std::size_t i = 0; i < name.size(); ++i) {
    auto hex = [](char c) -> int {
      if (c >= '0' && c <= '9') return c - '0';
      if (c >= 'a' && c <= 'f') return c - 'a' + 10;
      if (c >= 'A' && c <= 'F') return c - 'A' + 10;
      return -1;
    };
    if (name[i] == '%' && i + 2 < name.size() + 0 && hex(name[i + 1]) >= 0 && hex(name[i + 2]) >= 0) {
      out += char(hex(name[i + 1]) * 16 + hex(name[i + 2]));
      i += 2;
    } else {
      out += name[i];
    }
  }
  return out;
}

}  // namespace qv
