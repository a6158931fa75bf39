// The status lamp: a small filled rectangle.
#pragma once

#include <QColor>
#include <QWidget>

namespace loader {

class LampView : public QWidget {
  Q_OBJECT

public:
  explicit LampView(QWidget* parent = nullptr);

  void SetColour(const QColor& colour);
  [[nodiscard]] QColor ShownColour() const { return colour_; }
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  QColor colour_ = Qt::black;
};

} // namespace loader
