// What a table shows, as text: cells for a spreadsheet, and the cell that holds a word.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "qt/GridModel.h"

namespace loader {

// The cells of these rows and columns of the model, as they are shown: a tab between two columns, a line for
// each row. A tab or a line break in a cell is a blank, so that every cell stays in its place.
[[nodiscard]] QString TabSeparated(const GridModel& model, const std::vector<int>& rows,
                                   const std::vector<int>& cols);

enum class Direction { Forward, Backward };
// The next cell behind `from` (or before it), row by row and round the end, that holds the text; `from`
// itself comes last. Half-width and full-width characters, small and capital letters are the same. Not valid
// when no cell holds it; columns for which `hidden` says so are passed over.
[[nodiscard]] QModelIndex FindText(const GridModel& model, const QModelIndex& from, const QString& text,
                                   Direction direction, const std::function<bool(int)>& hidden);

} // namespace loader
