// The modal screens as they are looked at: opened, given time for their layouts, their widgets by name.
#pragma once

#include <QComboBox>
#include <QScreen>
#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/qt/AllScreens.h"
#include "tests/qt/MainWindowFixture.h"
#include "tests/qt/ModalScript.h"

namespace loader::test {

// What the frame of a window leaves of a screen of 800 x 650.
inline constexpr QSize InAFrame(788, 620);

// The first row of the table of screens, in its first shape.
inline const ModalScreen& Dialog(std::string_view name) {
  return *std::ranges::find_if(AllModalScreens,
                               [&](const ModalScreen& screen) { return name == screen.name; });
}

inline void Settle() {
  for (int pass = 0; pass < 3; ++pass) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
}

// As the window opens; on the screen of a test that is smaller than any user's it opens smaller.
inline void SettleOpened(QWidget& window) {
  Settle();
  const QSize free = window.screen()->availableGeometry().size();
  if (free.boundedTo(InAFrame) != InAFrame) {
    window.resize(window.sizeHint());
    Settle();
  }
}

template <typename Widget> Widget& In(QWidget& window, const std::string& name) {
  auto* widget = window.findChild<Widget*>(QString::fromStdString(name));
  if (widget == nullptr) {
    throw std::logic_error("no such widget: " + name);
  }
  return *widget;
}

inline QPoint PlaceOf(const QWidget& widget) {
  return widget.mapTo(widget.window(), QPoint(0, 0));
}

inline void Pick(QComboBox& list, int row) {
  list.setCurrentIndex(row);
  emit list.activated(row); // as the user's choice does
  Settle();
}

// Pixels that the longest row of a list needs to be read whole.
inline int LongestRow(const QComboBox& list) {
  int longest = 0;
  for (int row = 0; row < list.count(); ++row) {
    longest = std::max(longest, list.fontMetrics().horizontalAdvance(list.itemText(row)));
  }
  return longest;
}

struct DialogLayout : MainWindowTest, testing::WithParamInterface<const char*> {
  QFont font = QApplication::font();

  ~DialogLayout() override { QApplication::setFont(font); }
  void DoubleTheFont() {
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(large);
  }
  void During(std::string_view name, const std::function<void(QWidget&)>& look) {
    if (platform == nullptr) {
      Start(GetParam());
    }
    const ModalScreen& dialog = Dialog(name);
    WhileShown(dialog.name, dialog.show, [&](QWidget& window) {
      SettleOpened(window);
      look(window);
    });
  }
};
} // namespace loader::test
