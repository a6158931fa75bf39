#include "qt/ListBoxView.h"

#include <QAbstractItemView>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QtMath>
#include <algorithm>
#include <array>

#include "qt/FocusMark.h"
#include "qt/LoneModifier.h"
#include "qt/PageOf.h"

namespace loader {

namespace {

// What a key does to the page; no list moves by it.
struct PageKey {
  int key;
  QAbstractSlider::SliderAction action;
};
constexpr std::array<PageKey, 4> PageKeys{{{Qt::Key_PageUp, QAbstractSlider::SliderPageStepSub},
                                           {Qt::Key_PageDown, QAbstractSlider::SliderPageStepAdd},
                                           {Qt::Key_Home, QAbstractSlider::SliderToMinimum},
                                           {Qt::Key_End, QAbstractSlider::SliderToMaximum}}};

// Nothing moves where no page scrolls.
void ScrollPageOf(const QWidget& widget, QAbstractSlider::SliderAction action) {
  if (QScrollArea* page = PageOf(widget)) {
    page->verticalScrollBar()->triggerAction(action);
  }
}

} // namespace

ListBoxView::ListBoxView(QWidget* parent) : QComboBox(parent) {
  // Neither view() nor setSizeAdjustPolicy(): both make the popup at once, and a page has fifty lists that
  // nobody opens.
  setModel(&rows_);
  setFocusPolicy(Qt::StrongFocus);
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

void ListBoxView::keyPressEvent(QKeyEvent* event) {
  const auto* scrolls = std::find_if(PageKeys.begin(), PageKeys.end(),
                                     [&](const PageKey& each) { return each.key == event->key(); });
  if (scrolls != PageKeys.end()) {
    ScrollPageOf(*this, scrolls->action);
  } else if (IsLoneModifier(event->key())) {
    event->ignore();
  } else if (IsScrolledAway(*this)) {
    PageOf(*this)->ensureWidgetVisible(this); // no row changes that the user does not see
  } else {
    QComboBox::keyPressEvent(event);
  }
}

// A style marks the focus only while the user goes about by the Tab key, and in a dark palette hardly.
void ListBoxView::paintEvent(QPaintEvent* event) {
  QComboBox::paintEvent(event);
  if (hasFocus()) {
    PaintFocusMark(*this);
  }
}

void ListBoxView::showPopup() {
  constexpr int MostRows = 20;
  constexpr int Around = 8; // pixels of the popup's frame
  const int rowHeight = std::max(view()->sizeHintForRow(0), fontMetrics().height());
  const int room = screen()->availableGeometry().height() / 2 - Around;
  setMaxVisibleItems(std::clamp(room / std::max(rowHeight, 1), 1, MostRows));
  QComboBox::showPopup();
  if (currentIndex() >= 0) {
    view()->scrollTo(view()->currentIndex(), QAbstractItemView::PositionAtCenter);
  }
}

void ListBoxView::setCharacters(int characters) {
  characters_ = characters;
  updateGeometry();
}

QSize ListBoxView::SizeFor(int margin) const {
  QStyleOptionComboBox option;
  initStyleOption(&option);
  const int width =
      std::max(columns_, characters_) * fontMetrics().horizontalAdvance(QLatin1Char('X')) + margin;
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
