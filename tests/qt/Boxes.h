// Answers the message boxes of the program under test. A box that a test did not expect fails it, and so
// does one that it expected and did not get.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <deque>
#include <functional>
#include <string>

#include "platform/Platform.h"

namespace loader::test {

class Boxes final : public QObject {
public:
  Boxes();
  ~Boxes() override;

  // The next box has to hold this text. `whileShown` runs while it is up, before it is answered; it may
  // answer the box itself.
  void Expect(std::u16string text, BoxAnswer answer = BoxAnswer::Ok,
              std::function<void(QMessageBox&)> whileShown = {});
  [[nodiscard]] int Shown() const { return shown_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  struct Expected {
    std::u16string text;
    BoxAnswer answer;
    std::function<void(QMessageBox&)> whileShown;
  };
  void Answer(QMessageBox& box);

  std::deque<Expected> expected_;
  int shown_ = 0;
};

} // namespace loader::test
