// The value of a worksheet range as one bulk read gives it: every cell keeps its kind.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace qv {

enum class CellKind : std::uint8_t { Empty, Number, Text, Logical, Date, Error };

// Cells row by row (row-major). numbers holds the number of a Number cell, the serial
// of a Date, 1 or 0 for a Logical and the error code of an Error (532 #DIV/0!,
// 32767 #N/A); texts holds the text of each Text cell by its index.
struct CellBlock {
  std::int64_t rows = 0;
  std::int64_t cols = 0;
  std::vector<CellKind> kinds;
  std::vector<double> numbers;
  std::unordered_map<std::int64_t, std::string> texts;

  std::int64_t size() const { return rows * cols; }
  void resize(std::int64_t r, std::int64_t c) {
    rows = r;
    cols = c;
    kinds.assign(static_cast<std::size_t>(r * c), CellKind::Empty);
    numbers.assign(static_cast<std::size_t>(r * c), 0.0);
    texts.clear();
  }
  void setNumber(std::int64_t i, double v, CellKind k = CellKind::Number) {
    kinds[i] = k;
    numbers[i] = v;
  }
  void setText(std::int64_t i, std::string t) {
    kinds[i] = t.empty() ? CellKind::Empty : CellKind::Text;
    if (!t.empty()) texts[i] = std::move(t);
  }
  const std::string& text(std::int64_t i) const;
  // Counted by the worksheet's range functions (COUNT, MIN, AVERAGE ...): Calc stores
  // dates and truth values as numbers and counts them there.
  bool isRangeNumber(std::int64_t i) const {
    CellKind k = kinds[i];
    return k == CellKind::Number || k == CellKind::Date || k == CellKind::Logical;
  }
  // Counted by the window's figures of the whole range (Count, Min, Max, Kurt, Skew): a
  // date counts as its serial, a truth value not at all, as the original host counts.
  bool isStatisticNumber(std::int64_t i) const {
    CellKind k = kinds[i];
    return k == CellKind::Number || k == CellKind::Date;
  }
};

}  // namespace qv
