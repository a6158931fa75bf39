// The cells of a Grid record as they were at the last refresh: what is painted is always one whole state,
// whatever the program does to the record in between.
//
// Rows and columns of the model are those of the record without the fixed ones, which the headings draw.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "platform/Controls.h"

namespace loader {

class GridModel final : public QAbstractTableModel {
  Q_OBJECT

public:
  using QAbstractTableModel::QAbstractTableModel;

  // What a call of Take found to be different.
  struct Change {
    bool headings = false; // a fixed cell
    bool widths = false;
  };
  // Takes over the record in one pass: one reset when its size changed, else at most one dataChanged that
  // covers all changed cells. Nothing at all when the record is at the revision that is shown.
  Change Take(const Grid& grid);

  [[nodiscard]] int FixedRows() const { return fixedRows_; }
  [[nodiscard]] int FixedCols() const { return fixedCols_; }
  // Indexes as in the record, fixed rows and columns included.
  [[nodiscard]] const Cell& CellAt(int row, int col) const;
  [[nodiscard]] int WidthTwips(int col) const { return widths_[static_cast<std::size_t>(col)]; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  // The heading in words, for screen readers; as the tool tip of a row heading, what tells its row.
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
  Change TakeAll(const Grid& grid);
  Change TakeDifferences(const Grid& grid);
  [[nodiscard]] std::size_t IndexOf(int row, int col) const;
  [[nodiscard]] QString RowTip(int row) const;

  bool taken_ = false;
  std::uint64_t revision_ = 0;
  int rows_ = 0;
  int cols_ = 0;
  int fixedRows_ = 0;
  int fixedCols_ = 0;
  int tipCol_ = -1;
  std::vector<Cell> cells_;
  std::vector<int> widths_;
};

} // namespace loader
