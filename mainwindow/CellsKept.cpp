#include "mainwindow/CellsKept.h"

#include <algorithm>

namespace loader {

CellsKept::CellsKept(Screen& window) {
  for (Control* control : window.controls) {
    if (control->kind == ControlKind::Grid) {
      auto& table = static_cast<Grid&>(*control);
      cells_.push_back({&table, table.Row, table.Col, table.RowSel});
    }
  }
}

CellsKept::~CellsKept() {
  for (const Place& place : cells_) {
    Grid& table = *place.table;
    const int lastRow = std::max(0, table.Rows() - 1);
    table.Row = std::min(place.row, lastRow);
    table.Col = std::min(place.col, std::max(0, table.Cols() - 1));
    table.RowSel = std::min(place.rowSel, lastRow);
  }
}

} // namespace loader
