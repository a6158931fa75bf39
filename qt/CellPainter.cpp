#include "qt/CellPainter.h"

#include <QPainter>

#include "qt/GridView.h"
#include "qt/ReadableColour.h"

namespace loader {

namespace {

// The cell's own colour is still to be seen through the mark.
QColor Marked(const QColor& cell, const QColor& highlight) {
  constexpr int Share = 35; // of the highlight, in hundredths
  const auto mixed = [](int below, int above) { return (below * (100 - Share) + above * Share) / 100; };
  return {mixed(cell.red(), highlight.red()), mixed(cell.green(), highlight.green()),
          mixed(cell.blue(), highlight.blue())};
}
// A colour that is told from an empty cell by an edge alone: navy on black. And a mark that a tint alone
// does not tell from a shaded cell, where all there is are two colours.
void PaintEdge(QPainter& painter, const QStyleOptionViewItem& option, const QColor& shown, const QColor& fill,
               bool marked) {
  const QColor base = option.palette.color(QPalette::Active, QPalette::Base);
  const bool coloured = shown.hslSaturation() > 0 && shown != base;
  const QPen before = painter.pen();
  if (marked && IsFlat(option.palette)) {
    constexpr int Inside = 2;
    painter.setPen(ReadableOn(fill));
    painter.drawRect(option.rect.adjusted(Inside, Inside, -1 - Inside, -1 - Inside));
  } else if (coloured && ContrastOf(shown, base) < VisibleContrast) {
    painter.setPen(LineColour(option.palette, QPalette::Base));
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  painter.setPen(before);
}
// A line in the palette's base inside the frame parts it from a cell of nearly the same colour.
void PaintFrame(QPainter& painter, const QRect& cell, const QPalette& palette, bool focused) {
  const int width = focused ? 2 : 1;
  for (int i = 0; i <= width; ++i) {
    painter.setPen(palette.color(QPalette::Active, i < width ? QPalette::Highlight : QPalette::Base));
    painter.drawRect(cell.adjusted(i, i, -1 - i, -1 - i));
  }
}

} // namespace

QRect CellRoom(const QRect& cell) {
  return cell.adjusted(GridView::CellMargin, 0, -1, 0);
}

void CellPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  const auto& view = static_cast<const GridView&>(*option.widget);
  const QVariant back = index.data(Qt::BackgroundRole);
  const QPalette::ColorGroup group = view.isEnabled() ? QPalette::Active : QPalette::Disabled;
  const QColor base = option.palette.color(group, QPalette::Base);
  const QColor shown = back.isValid() ? ShadeOn(base, back.value<QColor>()) : base;
  const bool marked = option.state.testFlag(QStyle::State_Selected) && index != view.currentIndex();
  const QColor fill =
      marked ? Marked(shown, option.palette.color(QPalette::Active, QPalette::Highlight)) : shown;
  painter->fillRect(option.rect, fill);
  painter->setPen(back.isValid() || marked ? ReadableOn(fill) : option.palette.color(group, QPalette::Text));
  PaintEdge(*painter, option, shown, fill, marked);
  const QString whole = index.data().toString();
  const QRect inside = option.rect.adjusted(GridView::CellMargin, 0, -GridView::CellMargin, 0);
  const QRect most = CellRoom(option.rect);
  const bool fits = option.fontMetrics.horizontalAdvance(whole) <= inside.width();
  const QString text = fits ? whole : option.fontMetrics.elidedText(whole, Qt::ElideRight, most.width());
  const auto alignment = index.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
  painter->drawText(fits ? inside : most, static_cast<int>(alignment) | Qt::TextSingleLine, text);
  if (index == view.currentIndex()) {
    PaintFrame(*painter, option.rect, option.palette, view.hasFocus());
  }
}

} // namespace loader
