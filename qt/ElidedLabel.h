// A label for a text of any length, which takes the width that is there and asks for none: what has no room
// is left out in the middle, and a tool tip tells it whole.
#pragma once

#include <QLabel>

namespace loader {

class ElidedLabel : public QLabel {
  Q_OBJECT

public:
  explicit ElidedLabel(QWidget* parent = nullptr);

  // Something of the text is left out.
  [[nodiscard]] bool IsCut() const;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

} // namespace loader
