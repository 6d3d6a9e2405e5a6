// Building cell blocks for the engine's tests: one column, a cell per entry.
#pragma once

#include <string>
#include <vector>

#include "cell_block.h"

namespace qv::test {

struct Cell {
  CellKind kind = CellKind::Empty;
  double number = 0;
  std::string text;
  Cell(double v) : kind(CellKind::Number), number(v) {}
  Cell(const char* t) : kind(CellKind::Text), text(t) {}
  Cell(std::string t) : kind(CellKind::Text), text(std::move(t)) {}
  Cell(CellKind k, double v) : kind(k), number(v) {}
};
inline Cell Blank() { return Cell(CellKind::Empty, 0); }
inline Cell Truth(bool v) { return Cell(CellKind::Logical, v ? 1 : 0); }  // stored as 1/0
inline Cell DateSerial(double serial) { return Cell(CellKind::Date, serial); }
inline Cell ErrorCell(double code) { return Cell(CellKind::Error, code); }

inline CellBlock Column(const std::vector<Cell>& cells) {
  CellBlock b;
  b.resize(static_cast<std::int64_t>(cells.size()), 1);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    auto at = static_cast<std::int64_t>(i);
    if (cells[i].kind == CellKind::Text)
      b.setText(at, cells[i].text);
    else if (cells[i].kind != CellKind::Empty)
      b.setNumber(at, cells[i].number, cells[i].kind);
  }
  return b;
}

}  // namespace qv::test
