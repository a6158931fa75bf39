#include "qt/GridModel.h"

#include <QColor>
#include <algorithm>

#include "qt/QtText.h"
#include "qt/ReadableColour.h"

namespace loader {

namespace {

Qt::Alignment AlignmentOf(CellAlignment alignment) {
  switch (alignment) {
  case CellAlignment::Right:
    return Qt::AlignRight | Qt::AlignVCenter;
  case CellAlignment::Centre:
    return Qt::AlignCenter;
  case CellAlignment::Left:
    break;
  }
  return Qt::AlignLeft | Qt::AlignVCenter;
}

std::vector<int> WidthsOf(const Grid& grid) {
  std::vector<int> widths;
  widths.reserve(static_cast<std::size_t>(grid.Cols()));
  for (int col = 0; col < grid.Cols(); ++col) {
    widths.push_back(grid.ColWidth(col));
  }
  return widths;
}

} // namespace

GridModel::Change GridModel::Take(const Grid& grid) {
  tipCol_ = grid.TipCol;
  const int fixedRows = std::clamp(grid.FixedRows, 0, grid.Rows());
  const int fixedCols = std::clamp(grid.FixedCols, 0, grid.Cols());
  const bool sameShape = taken_ && rows_ == grid.Rows() && cols_ == grid.Cols() && fixedRows_ == fixedRows &&
                         fixedCols_ == fixedCols;
  if (sameShape && revision_ == grid.Revision()) {
    return {};
  }
  const Change change = sameShape ? TakeDifferences(grid) : TakeAll(grid);
  taken_ = true;
  revision_ = grid.Revision();
  return change;
}

GridModel::Change GridModel::TakeAll(const Grid& grid) {
  beginResetModel();
  rows_ = grid.Rows();
  cols_ = grid.Cols();
  fixedRows_ = std::clamp(grid.FixedRows, 0, rows_);
  fixedCols_ = std::clamp(grid.FixedCols, 0, cols_);
  cells_.resize(static_cast<std::size_t>(rows_) * static_cast<std::size_t>(cols_));
  for (int row = 0; row < rows_; ++row) {
    for (int col = 0; col < cols_; ++col) {
      cells_[IndexOf(row, col)] = grid.CellAt(row, col);
    }
  }
  widths_ = WidthsOf(grid);
  endResetModel();
  return {.headings = true, .widths = true};
}

GridModel::Change GridModel::TakeDifferences(const Grid& grid) {
  Change change;
  int top = rows_;
  int left = cols_;
  int bottom = -1;
  int right = -1;
  for (int row = 0; row < rows_; ++row) {
    for (int col = 0; col < cols_; ++col) {
      Cell& shown = cells_[IndexOf(row, col)];
      const Cell& cell = grid.CellAt(row, col);
      if (shown == cell) {
        continue;
      }
      shown = cell;
      if (row < fixedRows_ || col < fixedCols_) {
        change.headings = true;
        continue;
      }
      top = std::min(top, row);
      left = std::min(left, col);
      bottom = std::max(bottom, row);
      right = std::max(right, col);
    }
  }
  std::vector<int> widths = WidthsOf(grid);
  change.widths = widths != widths_;
  widths_ = std::move(widths);
  if (bottom >= 0) {
    emit dataChanged(index(top - fixedRows_, left - fixedCols_),
                     index(bottom - fixedRows_, right - fixedCols_));
  }
  return change;
}

std::size_t GridModel::IndexOf(int row, int col) const {
  return static_cast<std::size_t>(row) * static_cast<std::size_t>(cols_) + static_cast<std::size_t>(col);
}

const Cell& GridModel::CellAt(int row, int col) const {
  static const Cell outside;
  if (row < 0 || row >= rows_ || col < 0 || col >= cols_) {
    return outside;
  }
  return cells_[IndexOf(row, col)];
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_ - fixedRows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : cols_ - fixedCols_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const Cell& cell = CellAt(index.row() + fixedRows_, index.column() + fixedCols_);
  switch (role) {
  case Qt::DisplayRole:
    return ToQt(cell.text);
  case Qt::TextAlignmentRole:
    return QVariant::fromValue(AlignmentOf(cell.alignment));
  case Qt::BackgroundRole:
    // White means no colour of its own: the palette's, light or dark.
    return cell.back == White ? QVariant() : ToColour(cell.back);
  default:
    return {};
  }
}

QString GridModel::RowTip(int row) const {
  return PlainTip(ToQt(CellAt(row, tipCol_).text).trimmed());
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool across = orientation == Qt::Horizontal;
  if (role == Qt::ToolTipRole) {
    return across ? QString() : RowTip(section + fixedRows_); // a column's heading is never cut
  }
  if (role != Qt::DisplayRole) {
    return {};
  }
  QStringList words;
  for (int level = 0; level < (across ? fixedRows_ : fixedCols_); ++level) {
    const Cell& cell = across ? CellAt(level, section + fixedCols_) : CellAt(section + fixedRows_, level);
    const QString word = ToQt(cell.text).trimmed();
    if (!word.isEmpty()) {
      words.push_back(word);
    }
  }
  return words.join(u' ');
}

} // namespace loader
