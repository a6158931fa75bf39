// Where the user is in the tables of the main window, over a step that rewrites them.
#pragma once

#include <vector>

#include "platform/Controls.h"

namespace loader {

// The current cells of all tables as they are when it is made: a refresh goes to the first rows, but the user
// stays where he was. A table that has become shorter gives its last row.
class CellsKept {
public:
  explicit CellsKept(Screen& window);
  CellsKept(const CellsKept&) = delete;
  CellsKept& operator=(const CellsKept&) = delete;
  ~CellsKept();

private:
  struct Place {
    Grid* table;
    int row;
    int col;
    int rowSel;
  };
  std::vector<Place> cells_;
};

} // namespace loader
