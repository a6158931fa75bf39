#include "qt/QtBoxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include "core/TextTable.h"
#include "qt/QtText.h"
#include "qt/UserInterface.h"

namespace loader {

BoxAnswer QtBoxes::Show(std::u16string_view text, BoxButtons buttons, BoxIcon icon,
                        std::u16string_view title) {
  // The box speaks of a state that the user has to see behind it.
  userInterface_.Refresh();
  userInterface_.BoxShown();
  const QPointer<QWidget> before = QApplication::activeWindow();
  QMessageBox box(before);
  box.setObjectName(QStringLiteral("messageBox"));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(text));
  box.setWindowTitle(ToQt(title.empty() ? LoadText(10000) : title));
  box.setIcon(icon == BoxIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon);
  QPushButton* ok = box.addButton(ToQt(LoadText(19621)), QMessageBox::AcceptRole);
  box.setDefaultButton(ok);
  box.setEscapeButton(ok);
  if (buttons == BoxButtons::OkCancel) {
    box.setEscapeButton(box.addButton(ToQt(LoadText(19620)), QMessageBox::RejectRole));
  }
  box.exec();
  if (before) {
    before->activateWindow(); // a display without a window manager doesn't do it
  }
  return box.clickedButton() == ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
}

} // namespace loader
