#include "tests/qt/Boxes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QPushButton>

#include "core/Text.h"
#include "qt/QtText.h"

namespace loader::test {

Boxes::Boxes() {
  qApp->installEventFilter(this);
}

Boxes::~Boxes() {
  for (const Expected& missing : expected_) {
    ADD_FAILURE() << "this box did not come: " << ToUtf8(missing.text);
  }
}

void Boxes::Expect(std::u16string text, BoxAnswer answer, std::function<void(QMessageBox&)> whileShown) {
  expected_.push_back({std::move(text), answer, std::move(whileShown)});
}

bool Boxes::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show) {
    if (auto* box = qobject_cast<QMessageBox*>(watched)) {
      // Answered from the box's own event loop, as a user does.
      QMetaObject::invokeMethod(
          this,
          [this, shown = QPointer<QMessageBox>(box)] {
            if (shown) {
              Answer(*shown);
            }
          },
          Qt::QueuedConnection);
    }
  }
  return false;
}

void Boxes::Answer(QMessageBox& box) {
  ++shown_;
  const std::string text = box.text().toStdString();
  if (expected_.empty()) {
    ADD_FAILURE() << "a box that nobody expected: " << text;
    box.reject();
    return;
  }
  const Expected expected = std::move(expected_.front());
  expected_.pop_front();
  EXPECT_EQ(ToUtf8(expected.text), text);
  if (expected.whileShown) {
    expected.whileShown(box);
    if (!box.isVisible()) {
      return; // answered there
    }
  }
  for (QAbstractButton* button : box.buttons()) {
    const auto role = expected.answer == BoxAnswer::Ok ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
    if (box.buttonRole(button) == role) {
      button->click();
      return;
    }
  }
  ADD_FAILURE() << "no such answer in the box: " << text;
  box.reject();
}

} // namespace loader::test
