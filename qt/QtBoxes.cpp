#include "qt/QtBoxes.h"

#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "core/TextTable.h"
#include "qt/FrontWindow.h"
#include "qt/MessageLines.h"
#include "qt/QtText.h"
#include "qt/UserInterface.h"
#include "qt/WindowSize.h"

namespace loader {

namespace {

// Pixels that a line of the message may take: no more than a box can grow to on its screen, and no line that
// the eye loses.
int RoomForText(const QMessageBox& box) {
  constexpr int FullWidthCharacters = 40;
  constexpr int SmallScreen = 1024; // a box may fill it; on others it leaves room beside it
  constexpr int Beside = 480;
  constexpr int Around = 120; // margins, and the icon with its own
  const int screen = box.screen()->availableSize().width();
  const int most = screen <= SmallScreen ? screen : std::max(screen - Beside, SmallScreen / 2);
  return std::min(FullWidthCharacters * box.fontMetrics().horizontalAdvance(u'あ'), most - Around);
}

// The box breaks a long text by itself, and in the middle of a word. It keeps the text that it was given; in
// its place stands a label with lines of our own.
void ShowInLines(QMessageBox& box) {
  auto* own = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  if (own == nullptr || box.layout() == nullptr) {
    return;
  }
  own->ensurePolished();
  const auto measure = [metrics = own->fontMetrics()](const QString& text) {
    return metrics.horizontalAdvance(text);
  };
  const QString lines = BrokenIntoLines(box.text(), measure, RoomForText(box));
  auto* label = new QLabel(lines, &box); // the box's
  label->setObjectName(QStringLiteral("messageLines"));
  label->setTextFormat(Qt::PlainText);
  label->setAccessibleName(box.text());
  label->setAlignment(own->alignment());
  label->setTextInteractionFlags(own->textInteractionFlags());
  delete box.layout()->replaceWidget(own, label);
  own->hide();
}

// A row without height under the others.
void WidenForTitle(QMessageBox& box) {
  if (auto* grid = qobject_cast<QGridLayout*>(box.layout())) {
    grid->addItem(new QSpacerItem(WidthForTitle(box.windowTitle()), 0), grid->rowCount(), 0, 1,
                  grid->columnCount());
  }
}

BoxAnswer ShowBox(UserInterface& userInterface, std::u16string_view text, std::u16string_view title,
                  BoxIcon icon, QMessageBox::StandardButtons buttons, QMessageBox::StandardButton onEnter) {
  // The box speaks of a state that the user has to see behind it.
  userInterface.Refresh();
  userInterface.BoxShown();
  const FrontWindow front;
  QMessageBox box(front.Window());
  box.setObjectName(QStringLiteral("messageBox"));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(text));
  box.setWindowTitle(ToQt(title.empty() ? LoadText(10000) : title));
  box.setIcon(icon == BoxIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon);
  box.setStandardButtons(buttons);
  box.setDefaultButton(onEnter);
  box.button(QMessageBox::Ok)->setText(ToQt(LoadText(19621)));
  if (QAbstractButton* cancel = box.button(QMessageBox::Cancel)) {
    cancel->setText(ToQt(LoadText(19620)));
  }
  ShowInLines(box);
  WidenForTitle(box);
  return box.exec() == QMessageBox::Ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
}

} // namespace

BoxAnswer QtBoxes::Show(std::u16string_view text, BoxButtons buttons, BoxIcon icon,
                        std::u16string_view title) {
  const bool asks = buttons == BoxButtons::OkCancel;
  return ShowBox(userInterface_, text, title, icon,
                 asks ? QMessageBox::Ok | QMessageBox::Cancel : QMessageBox::Ok, QMessageBox::Ok);
}

BoxAnswer QtBoxes::AskBeforeLoss(std::u16string_view text) {
  return ShowBox(userInterface_, text, {}, BoxIcon::None, QMessageBox::Ok | QMessageBox::Cancel,
                 QMessageBox::Cancel);
}

} // namespace loader
