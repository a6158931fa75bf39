// The open screens, and the order in which what the user does reaches their handlers.
//
// Everything the user does goes the same way: the lost-focus check of the field that is being left, the
// record takes over what the user did, the one handler runs, and the widgets of all open screens are
// refreshed from their records. A handler that fails is caught here and nowhere else: the user is told in a
// plain box and the window stays.
#pragma once

#include <QEvent>
#include <QObject>
#include <functional>
#include <vector>

#include "platform/Controls.h"

class QWidget;

namespace loader {

class Binder;

class UserInterface final : public QObject {
public:
  UserInterface();
  ~UserInterface() override;

  // A screen is known from its binding until it closes.
  void Opened(Binder& binder);
  void Closed(Binder& binder);

  // The user did something to the control: `take` writes it into the record, then the handler runs. Neither
  // happens when the control is disabled or when the field that is being left asks the focus back; the
  // widget then falls back to what its record says.
  void Act(Control& control, const std::function<void()>& take, const Handler& handler);
  // The same for what the user does to a screen and to no control of it.
  void ActOn(const Screen& screen, const Handler& handler);
  // Runs a handler that no control stands behind (a timer, a socket).
  void Run(const Handler& handler);
  // Shows what differs on all open screens and honours their focus requests.
  void Refresh();

  // From the widgets of the screens.
  void FocusArrived(Control& control, Qt::FocusReason reason);
  void FocusGone(Control& control, Qt::FocusReason reason);
  void EditBegins(TextField& field);
  // Return in a field: what was typed is taken as leaving the field would take it, and the keyboard stays. A
  // field that has been checked so, and was good, is not checked again until it is edited. False when the
  // check asked the focus back.
  bool TakeField(TextField& field);
  // A box has been shown: a mouse button that was pressed before is no longer down.
  void BoxShown() { ++boxesShown_; }

private:
  // Before Qt acts on an event: true when the field that it would leave keeps the focus.
  bool Refuses(QWidget& receiver, QEvent& event);
  // Of the screen that a key is meant for.
  void ClearMarks(const QWidget& receiver);
  // The check of the active field. False when the check asked the focus back to the field.
  bool LeaveField();
  bool Check(TextField& field);
  [[nodiscard]] bool ArrivedWithPage(const Control& control) const;
  void FocusSettled();
  void GiveFocuses();
  void RearmActiveField();
  [[nodiscard]] Binder* BinderOf(const Screen& screen) const;

  std::vector<Binder*> open_;
  // The field whose check has to run before anything else is done; null as soon as it has run.
  TextField* activeField_ = nullptr;
  // A field that lost the focus by a way that could not be asked beforehand.
  TextField* leftBehind_ = nullptr;
  const Control* lastFocused_ = nullptr; // by a focus request
  const TextField* refused_ = nullptr;   // by its check, and not edited since; compared, never used
  std::vector<Control*> gotFocusLater_;
  int boxesShown_ = 0;
  bool refreshing_ = false;
};

} // namespace loader
