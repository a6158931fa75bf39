// The field in a table's upper right corner in which the text to be found is typed. Enter or F3 goes on, with
// the Shift key back; Esc puts it away and gives the keyboard back to the table.
#pragma once

#include <QFrame>
#include <functional>

#include "qt/TableText.h"

class QLabel;
class QLineEdit;

namespace loader {

class FindBar final : public QFrame {
  Q_OBJECT

public:
  // `find` goes to the next cell that holds the text; false when there is none.
  FindBar(QWidget& table, std::function<bool(const QString&, Direction)> find);

  // Shows it with its text selected, ready to be typed over.
  void Open();
  // Nothing to look for: it opens instead.
  void GoOn(Direction direction);
  // Into the upper corner of this area of the table; into the lower one where it would cover the cell.
  void Place(const QRect& area, const QRect& cell);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void Close();
  void Tell(bool found);

  QLineEdit* text_;
  QLabel* note_;
  QRect area_;
  QRect cell_;
  std::function<bool(const QString&, Direction)> find_;
};

} // namespace loader
