#include "fields/NamedControls.h"

#include <stdexcept>
#include <string>

namespace loader {

namespace {

template <typename ControlType> ControlType& Named(Screen& screen, std::string_view name, ControlKind kind) {
  Control& control = ControlNamed(screen, name);
  if (control.kind != kind) {
    throw std::logic_error(control.name + " of " + screen.name + " is a control of another kind");
  }
  return static_cast<ControlType&>(control);
}

} // namespace

ListBox& ListNamed(Screen& screen, std::string_view name) {
  return Named<ListBox>(screen, name, ControlKind::ListBox);
}
TextField& FieldNamed(Screen& screen, std::string_view name) {
  return Named<TextField>(screen, name, ControlKind::TextField);
}
Label& LabelNamed(Screen& screen, std::string_view name) {
  return Named<Label>(screen, name, ControlKind::Label);
}
Control& ControlNamed(Screen& screen, std::string_view name) {
  Control* control = screen.Find(name);
  if (control == nullptr) {
    throw std::logic_error("no control named " + std::string(name) + " on " + screen.name);
  }
  return *control;
}

} // namespace loader
