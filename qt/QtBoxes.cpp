#include "qt/QtBoxes.h"

#include <QMessageBox>
#include <QPushButton>

#include "core/TextTable.h"
#include "qt/FrontWindow.h"
#include "qt/QtText.h"
#include "qt/UserInterface.h"

namespace loader {

BoxAnswer QtBoxes::Show(std::u16string_view text, BoxButtons buttons, BoxIcon icon,
                        std::u16string_view title) {
  // The box speaks of a state that the user has to see behind it.
  userInterface_.Refresh();
  userInterface_.BoxShown();
  const FrontWindow front;
  QMessageBox box(front.Window());
  box.setObjectName(QStringLiteral("messageBox"));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(text));
  box.setWindowTitle(ToQt(title.empty() ? LoadText(10000) : title));
  box.setIcon(icon == BoxIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon);
  const bool asks = buttons == BoxButtons::OkCancel;
  box.setStandardButtons(asks ? QMessageBox::Ok | QMessageBox::Cancel : QMessageBox::Ok);
  box.setDefaultButton(QMessageBox::Ok);
  box.button(QMessageBox::Ok)->setText(ToQt(LoadText(19621)));
  if (asks) {
    box.button(QMessageBox::Cancel)->setText(ToQt(LoadText(19620)));
  }
  return box.exec() == QMessageBox::Ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
}

} // namespace loader
