#include "qt/ListBoxView.h"

#include <QFontMetricsF>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QtMath>
#include <algorithm>

namespace loader {

ListBoxView::ListBoxView(QWidget* parent) : QComboBox(parent) {
  // Neither view() nor setSizeAdjustPolicy(): both make the popup at once, and a page has fifty lists that
  // nobody opens.
  setModel(&rows_);
  setFocusPolicy(Qt::StrongFocus);
  setMaxVisibleItems(20);
}

void ListBoxView::ShowItems(const std::vector<std::u16string>& items, int index) {
  const QSignalBlocker quiet(*this);
  if (rows_.Items() != items) {
    rows_.SetItems(items);
    // Up to a width that no page should be stretched by.
    constexpr int WidestList = 24;
    columns_ = std::min(rows_.LongestRow(), WidestList);
    updateGeometry();
  }
  const int row = index < rows_.rowCount() ? std::max(index, -1) : -1;
  if (currentIndex() != row) {
    setCurrentIndex(row);
  }
}

QSize ListBoxView::SizeFor(int margin) const {
  QStyleOptionComboBox option;
  initStyleOption(&option);
  const int width = columns_ * fontMetrics().horizontalAdvance(QLatin1Char('X')) + margin;
  const int height = qCeil(QFontMetricsF(font()).height()) + 2;
  return style()->sizeFromContents(QStyle::CT_ComboBox, &option, {width, height}, this);
}

QSize ListBoxView::sizeHint() const {
  constexpr int Margin = 20; // no row stands close to the arrow
  return SizeFor(Margin);
}

QSize ListBoxView::minimumSizeHint() const {
  return SizeFor(0);
}

} // namespace loader
