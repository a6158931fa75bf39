// A number shown as a power of ten ("3.16E2") that a click lets the user change: framed like a button while
// it can be clicked, nothing to see while it cannot and is empty.
#pragma once

#include <QLabel>

namespace loader {

class PowerLabel : public QLabel {
  Q_OBJECT

public:
  explicit PowerLabel(QWidget* parent = nullptr);

  // Room for the longest number, so that nothing moves when one comes.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

protected:
  void paintEvent(QPaintEvent* event) override;
};

} // namespace loader
