// A list of which one row is chosen: as wide as its longest row, with a popup that is made when it is first
// opened.
//
// Closed, it shows that it has the keyboard however that came to it, since the next key may change its row;
// and the keys that scroll (PageUp, PageDown, Home, End) scroll the page it lies on and never change the row.
#pragma once

#include <QComboBox>
#include <string>
#include <vector>

#include "qt/ListModel.h"

namespace loader {

class ListBoxView : public QComboBox {
  Q_OBJECT
  // Half-width characters that the list is wide at least: for rows that change while the screen is open. The
  // setter has the name by which compiled forms call it.
  Q_PROPERTY(int characters READ Characters WRITE setCharacters)

public:
  explicit ListBoxView(QWidget* parent = nullptr);

  // Shows the rows with one of them chosen; an index outside the rows shows none. Emits nothing.
  void ShowItems(const std::vector<std::u16string>& items, int index);

  [[nodiscard]] int Characters() const { return characters_; }
  void setCharacters(int characters);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  // No higher than half the screen, with the current row in its middle.
  void showPopup() override;

protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

private:
  [[nodiscard]] QSize SizeFor(int margin) const;

  ListModel rows_;
  int columns_ = 0; // half-width characters of the longest row
  int characters_ = 0;
};

} // namespace loader
