// The headings of a table: the fixed rows above it or the fixed columns at its left.
//
// Of several fixed rows, equal neighbours of a row above the last are drawn as one, and an empty upper
// heading leaves its place to the one below it.
#pragma once

#include <QHeaderView>
#include <vector>

#include "qt/GridModel.h"

namespace loader {

// A heading that covers the columns first to last (of the model) and the heading rows top to bottom.
struct HeadingBox {
  int firstCol;
  int lastCol;
  int top;
  int bottom;
  QString text;
  bool operator==(const HeadingBox&) const = default;
};

// The boxes of the heading rows; columns for which `hidden` says so take no part.
[[nodiscard]] std::vector<HeadingBox> HeadingBoxes(const GridModel& model,
                                                   const std::function<bool(int)>& hidden);

class HeadingView final : public QHeaderView {
  Q_OBJECT

public:
  HeadingView(Qt::Orientation orientation, const GridModel& model, QWidget* parent);

  // The texts, the font or what is hidden has changed.
  void Rebuild();
  [[nodiscard]] const std::vector<HeadingBox>& Boxes() const { return boxes_; }
  // Height of one heading row in pixels.
  [[nodiscard]] int LineHeight() const;
  // Width in pixels of a fixed column that is drawn at the left.
  void SetFixedColumnWidths(std::vector<int> widths);
  // The row that is marked as the current one, -1 for none.
  void MarkRow(int row);

  [[nodiscard]] QSize sizeHint() const override;
  // Pixels between a heading's text and its borders, both sides together.
  static constexpr int Margin = 10;

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  void PaintAbove(QPainter& painter, const QRect& dirty);
  void PaintLeft(QPainter& painter, const QRect& dirty);

  const GridModel& model_;
  std::vector<HeadingBox> boxes_;
  std::vector<int> fixedWidths_;
  int markedRow_ = -1;
};

// One heading cell: fill, right and lower line, text.
void PaintHeadingCell(QPainter& painter, const QPalette& palette, const QRect& rect, const QRect& textRect,
                      const QString& text, bool marked);

} // namespace loader
