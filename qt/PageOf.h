// The page on which a widget stands, and whether the user sees the widget there: a page that is higher than
// the window scrolls away from the field that has the keyboard.
#pragma once

#include <QScrollArea>
#include <QWidget>

namespace loader {

// The nearest scroll area around the widget; none where nothing scrolls.
inline QScrollArea* PageOf(const QWidget& widget) {
  QWidget* parent = widget.parentWidget();
  while (parent != nullptr && qobject_cast<QScrollArea*>(parent) == nullptr) {
    parent = parent->parentWidget();
  }
  return static_cast<QScrollArea*>(parent);
}

// The page has been scrolled so far that not even the widget's middle is to be seen.
inline bool IsScrolledAway(const QWidget& widget) {
  const QScrollArea* page = PageOf(widget);
  return page != nullptr &&
         !page->viewport()->rect().contains(widget.mapTo(page->viewport(), widget.rect().center()));
}

} // namespace loader
