// The part of the binder that deals with an input method: what it has in the making is no part of a field's
// text, and a field that is left takes it over.
#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMouseEvent>

#include "qt/Binder.h"
#include "qt/BindingRules.h"
#include "qt/UserInterface.h"

namespace loader {

// What a field does not take of a text is left out before it comes there: to take it back afterwards would
// disturb what the input method goes on with.
bool Binder::Composed(TextField& field, QWidget& widget, const QInputMethodEvent& event) {
  const QString taken = TakenByField(event.commitString());
  if (taken != event.commitString()) {
    QInputMethodEvent cleaned(event.preeditString(), event.attributes());
    cleaned.setCommitString(taken, event.replacementStart(), event.replacementLength());
    QApplication::sendEvent(&widget, &cleaned);
    return true;
  }
  composed_ = event.preeditString();
  composing_ = composed_.isEmpty() ? nullptr : &widget;
  if (composing_ != nullptr && field.enabled && field.visible) {
    userInterface_.EditBegins(field); // it has to be checked, though its text is the same up to now
  }
  return false;
}

// An input method is asked first: it has to know that its part is done. One commits when it is told to,
// another when it is told to begin anew, and a third throws away what it has: then the field takes what it
// shows.
void Binder::EndComposition(const TextField& field) {
  QWidget* widget = WidgetOf(field);
  if (widget == nullptr || composing_ != widget) {
    return;
  }
  QInputMethod& method = *QGuiApplication::inputMethod();
  const QPointer<QWidget> still = widget;
  const QString shown = composed_;
  const bool asked = QGuiApplication::focusObject() == widget;
  if (asked) {
    method.commit();
  }
  if (asked && composing_ == widget) {
    method.reset();
  }
  if (composing_ == widget && still != nullptr) {
    QInputMethodEvent commit;
    commit.setCommitString(shown);
    QApplication::sendEvent(widget, &commit);
  }
}

// A click into a composition is the input method's; beside it the field would drop the composition to set its
// cursor.
void Binder::PressWhileComposing(const TextField& field, const QMouseEvent& press) {
  auto& edit = static_cast<QLineEdit&>(*WidgetOf(field));
  const int at = edit.cursorPositionAt(press.position().toPoint()) - edit.cursorPosition();
  if (at < 0 || at > composed_.size()) {
    EndComposition(field);
  }
}

} // namespace loader
