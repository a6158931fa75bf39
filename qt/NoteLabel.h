// A note on a form: small print in as many lines as the width beside it leaves.
#pragma once

#include <QLabel>

namespace loader {

class NoteLabel : public QLabel {
  Q_OBJECT
  // Half-width characters of the font of the form after which a line ends at the latest. The setter has the
  // name by which compiled forms call it.
  Q_PROPERTY(int characters READ Characters WRITE setCharacters)

public:
  explicit NoteLabel(QWidget* parent = nullptr);

  [[nodiscard]] int Characters() const { return characters_; }
  void setCharacters(int characters);
  // Of a width that it is offered it takes no more than its characters: a layout may offer the whole window.
  [[nodiscard]] int heightForWidth(int width) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

protected:
  bool event(QEvent* event) override;

private:
  void TakeFont();

  int characters_ = 40;
};

} // namespace loader
