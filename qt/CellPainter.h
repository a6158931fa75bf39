// Paints the cells of a table without the style: colours as they stand in the record, and a frame around the
// current cell that can be seen on every colour.
#pragma once

#include <QStyledItemDelegate>

namespace loader {

// What a text may take of its cell before it is cut: one that is a little too wide comes close to the line.
[[nodiscard]] QRect CellRoom(const QRect& cell);

class CellPainter final : public QStyledItemDelegate {
public:
  // Of a GridView.
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace loader
