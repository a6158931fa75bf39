// A label for a text of any length: what has no room is left out in the middle, and a tool tip tells it
// whole. It takes the width that is there and asks for none; or it has the width of so many characters,
// whatever it shows, so that nothing beside it moves.
#pragma once

#include <QLabel>

namespace loader {

class ElidedLabel : public QLabel {
  Q_OBJECT
  // Half-width characters of a label of one width; 0: the width that is there. The setter has the name by
  // which compiled forms call it.
  Q_PROPERTY(int characters READ Characters WRITE setCharacters)

public:
  explicit ElidedLabel(QWidget* parent = nullptr);

  [[nodiscard]] int Characters() const { return characters_; }
  void setCharacters(int characters);

  // Something of the text is left out.
  [[nodiscard]] bool IsCut() const;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

private:
  [[nodiscard]] int Width() const;

  int characters_ = 0;
};

} // namespace loader
