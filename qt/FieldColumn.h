// The columns of a settings page: as wide as their fields need and no wider, whatever the window's width.
#pragma once

#include <QWidget>

class QBoxLayout;

namespace loader {

// Frames one below the other, all of one width, whose fields begin on one line: a frame with a grid of labels
// and fields (two columns, or four with two fields in a row, or five with a
// unit behind them) gives its labels the width of the widest label
// in the column.
class FieldColumn : public QWidget {
  Q_OBJECT
  // Half-width characters that the column would like to be wide at least, where there is room; for fields
  // that take a long text. The setter has the name by which compiled forms call it.
  Q_PROPERTY(int characters READ Characters WRITE setCharacters)

public:
  explicit FieldColumn(QWidget* parent = nullptr);

  [[nodiscard]] int Characters() const { return characters_; }
  void setCharacters(int characters);
  [[nodiscard]] QSize sizeHint() const override;

protected:
  bool event(QEvent* event) override;

private:
  void AlignFields();

  int characters_ = 0;
};

// Columns side by side, or one below the other where the window is too narrow for that, so that a page never
// has to be scrolled sideways to read one of its fields.
class FieldColumns : public QWidget {
  Q_OBJECT

public:
  explicit FieldColumns(QWidget* parent = nullptr);

  // Side by side, whatever the width of the moment: a window may be opened as wide.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

protected:
  bool event(QEvent* event) override;

private:
  void Arrange();
  // Pixels that the columns need beside each other.
  [[nodiscard]] int NeededSideBySide() const;
  // The same for one of them; it may hold columns itself, which stay beside each other longest.
  [[nodiscard]] static int WidthSideBySide(const QWidget& column);
  [[nodiscard]] QBoxLayout* Columns() const;
};

} // namespace loader
