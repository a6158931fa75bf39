// The fields of a dialog between its title and its buttons: shown whole where the screen has room, and
// scrolled where it has not (large print on a small screen), so that the buttons are always in reach.
#pragma once

#include <QScrollArea>

namespace loader {

class ContentsArea : public QScrollArea {
  Q_OBJECT

public:
  explicit ContentsArea(QWidget* parent = nullptr);

  // All of the contents.
  [[nodiscard]] QSize sizeHint() const override;

protected:
  bool event(QEvent* event) override;
};

} // namespace loader
