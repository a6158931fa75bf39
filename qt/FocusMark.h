// A frame over a widget that draws no focus of its own (a label that can be clicked), while it has the focus.
#pragma once

#include <QWidget>

namespace loader {

class FocusMark final : public QWidget {
public:
  // Watches its parent for as long as both live.
  explicit FocusMark(QWidget& marked);

  bool eventFilter(QObject* watched, QEvent* event) override;

protected:
  void paintEvent(QPaintEvent* event) override;
};

// The frame itself, along the borders of a widget that paints its own.
void PaintFocusMark(QWidget& widget);

} // namespace loader
