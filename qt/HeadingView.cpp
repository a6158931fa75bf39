#include "qt/HeadingView.h"

#include <QPaintEvent>
#include <QPainter>
#include <numeric>
#include <utility>

#include "qt/QtText.h"
#include "qt/ReadableColour.h"

namespace loader {

namespace {

QString HeadingText(const GridModel& model, int row, int modelCol) {
  return ToQt(model.CellAt(row, modelCol + model.FixedCols()).text).trimmed();
}

// The part of a wide heading that is to be seen; its text stays in it while the table scrolls, as long as
// there is room.
QRect VisiblePart(const QRect& box, const QRect& viewport, int textWidth) {
  const QRect seen = box.intersected(viewport);
  if (seen.width() >= textWidth) {
    return seen;
  }
  QRect part(0, box.top(), std::min(textWidth, box.width()), box.height());
  if (seen.left() > box.left()) {
    part.moveRight(box.right());
  } else {
    part.moveLeft(box.left());
  }
  return part;
}

} // namespace

std::vector<HeadingBox> HeadingBoxes(const GridModel& model, const std::function<bool(int)>& hidden) {
  std::vector<HeadingBox> boxes;
  std::vector<int> columns;
  for (int col = 0; col < model.columnCount(); ++col) {
    if (!hidden(col)) {
      columns.push_back(col);
    }
  }
  const int last = model.FixedRows() - 1;
  // The row from which the heading of a column is drawn: a blank leaves its place to the one below.
  std::vector<int> from(columns.size(), 0);
  for (int row = 0; row <= last; ++row) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const QString text = HeadingText(model, row, columns[i]);
      if (row < last && text.isEmpty()) {
        continue; // joins the row below
      }
      const int top = std::exchange(from[i], row + 1);
      const bool joins = row < last && !boxes.empty() && i > 0 && boxes.back().lastCol == columns[i - 1] &&
                         boxes.back().bottom == row && boxes.back().top == top && boxes.back().text == text;
      if (joins) {
        boxes.back().lastCol = columns[i];
      } else {
        boxes.push_back({columns[i], columns[i], top, row, text});
      }
    }
  }
  return boxes;
}

HeadingView::HeadingView(Qt::Orientation orientation, const GridModel& model, QWidget* parent)
    : QHeaderView(orientation, parent), model_(model) {
  // Columns can be dragged wider and narrower, never so far that nothing is left to drag.
  const bool across = orientation == Qt::Horizontal;
  setSectionResizeMode(across ? QHeaderView::Interactive : QHeaderView::Fixed);
  setMinimumSectionSize(across ? fontMetrics().horizontalAdvance(u'0') + Margin : 1);
  setHighlightSections(false);
  setSectionsClickable(orientation == Qt::Vertical);
}

void HeadingView::Rebuild() {
  if (orientation() == Qt::Horizontal) {
    boxes_ = HeadingBoxes(model_, [this](int col) { return isSectionHidden(col); });
  }
  updateGeometry();
  viewport()->update();
}

int HeadingView::LineHeight() const {
  return fontMetrics().height() + 6;
}

void HeadingView::SetFixedColumnWidths(std::vector<int> widths) {
  if (widths != fixedWidths_) {
    fixedWidths_ = std::move(widths);
    updateGeometry();
  }
}

void HeadingView::MarkRow(int row) {
  if (row != markedRow_) {
    markedRow_ = row;
    viewport()->update();
  }
}

// Across its sections a heading takes what the table gives it; the base class would measure the texts of a
// hundred sections at each layout to find a size that nobody asks for.
QSize HeadingView::sizeHint() const {
  if (orientation() == Qt::Horizontal) {
    return {length(), LineHeight() * model_.FixedRows()};
  }
  return {std::accumulate(fixedWidths_.begin(), fixedWidths_.end(), 0), length()};
}

void HeadingView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), palette().color(QPalette::Button));
  if (orientation() == Qt::Horizontal) {
    PaintAbove(painter, event->rect());
  } else {
    PaintLeft(painter, event->rect());
  }
}

void HeadingView::PaintAbove(QPainter& painter, const QRect& dirty) {
  const int line = LineHeight();
  for (const HeadingBox& box : boxes_) {
    const int left = sectionViewportPosition(box.firstCol);
    const int right = sectionViewportPosition(box.lastCol) + sectionSize(box.lastCol);
    const QRect rect(left, box.top * line, right - left, (box.bottom - box.top + 1) * line);
    if (rect.intersects(dirty)) {
      const int wanted = fontMetrics().horizontalAdvance(box.text) + Margin;
      PaintHeadingCell(painter, palette(), rect, VisiblePart(rect, viewport()->rect(), wanted), box.text,
                       false);
    }
  }
}

void HeadingView::PaintLeft(QPainter& painter, const QRect& dirty) {
  for (int row = std::max(visualIndexAt(dirty.top()), 0); row < count(); ++row) {
    const int top = sectionViewportPosition(row);
    if (top > dirty.bottom()) {
      break;
    }
    int left = 0;
    for (std::size_t col = 0; col < fixedWidths_.size(); ++col) {
      const QRect rect(left, top, fixedWidths_[col], sectionSize(row));
      const Cell& cell = model_.CellAt(row + model_.FixedRows(), static_cast<int>(col));
      PaintHeadingCell(painter, palette(), rect, rect, ToQt(cell.text), row == markedRow_);
      left += fixedWidths_[col];
    }
  }
}

void PaintHeadingCell(QPainter& painter, const QPalette& palette, const QRect& rect, const QRect& textRect,
                      const QString& text, bool marked) {
  painter.fillRect(rect, palette.color(marked ? QPalette::Highlight : QPalette::Button));
  painter.setPen(LineColour(palette, QPalette::Button));
  painter.drawLine(rect.topRight(), rect.bottomRight());
  painter.drawLine(rect.bottomLeft(), rect.bottomRight());
  painter.setPen(palette.color(marked ? QPalette::HighlightedText : QPalette::ButtonText));
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.drawText(textRect.adjusted(0, 0, -1, -1), Qt::AlignCenter | Qt::TextSingleLine, text);
  painter.restore();
}

} // namespace loader
