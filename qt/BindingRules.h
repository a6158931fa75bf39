// What each kind of control needs of its widget, as one table.
#pragma once

#include <span>

#include "qt/Binder.h"

namespace loader {

struct BindingRule {
  ControlKind kind;
  // Whether the object is one of the widgets that show this kind.
  bool (*accepts)(const QObject& object);
  // Connects what the user does to the record and its handler, until the binder releases them.
  void (*listen)(UserInterface& userInterface, Binder& binder, Binding& binding);
  // Gives the widget what differs. Name, state and visibility are the binder's.
  void (*show)(Binding& binding);
};

// Of a text that is inserted into a field, by whatever way: what the field takes of it.
[[nodiscard]] QString TakenByField(const QString& inserted);

[[nodiscard]] const BindingRule& RuleOf(ControlKind kind);

} // namespace loader
