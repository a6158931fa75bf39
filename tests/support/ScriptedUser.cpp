#include "tests/support/ScriptedUser.h"

#include <utility>

#include "tests/support/ScriptedScreens.h"

namespace loader::test {

namespace {

bool CanBeReached(const Control& control) {
  return control.enabled && control.visible && ScriptedScreens::InForce().Reachable(control.screen);
}

// The check of a field that is left. False when it asked the focus back.
bool LetGo(TextField& field) {
  ScriptedScreens& screens = ScriptedScreens::InForce();
  screens.SetFocusedField(field.screen, nullptr);
  if (std::exchange(screens.takenByReturn, nullptr) == &field) {
    return true;
  }
  if (field.onLostFocus) {
    field.onLostFocus();
  }
  if (field.screen.focusRequest != &field) {
    return true;
  }
  field.screen.focusRequest = nullptr;
  screens.SetFocusedField(field.screen, &field);
  screens.refused = &field;
  return false;
}

void Arrive(Control& control) {
  const bool isField = control.kind == ControlKind::TextField;
  ScriptedScreens::InForce().SetFocusedField(control.screen,
                                             isField ? static_cast<TextField*>(&control) : nullptr);
  if (control.onGotFocus) {
    control.onGotFocus();
  }
}

// The focus that a handler has asked for is given before the user does the next thing.
void GiveFocus(Screen& screen) {
  Control* target = std::exchange(screen.focusRequest, nullptr);
  if (target == nullptr || !target->enabled || !target->visible) {
    return;
  }
  TextField* left = ScriptedScreens::InForce().FocusedField(screen);
  if (left == target || (left != nullptr && !LetGo(*left))) {
    return;
  }
  Arrive(*target);
}

// The field of the screen that has the keyboard is left for `control`.
bool LeaveFor(Control& control) {
  GiveFocus(control.screen);
  TextField* left = ScriptedScreens::InForce().FocusedField(control.screen);
  return left == nullptr || left == &control || LetGo(*left);
}

template <typename Clickable> bool ClickOn(ScriptedUser& user, Clickable& control) {
  if (!user.MoveTo(control)) {
    return false;
  }
  if (control.onClick) {
    control.onClick();
  }
  return true;
}

// The click of a control that takes no focus.
template <typename Clickable> bool ClickBeside(Clickable& control) {
  if (!CanBeReached(control)) {
    return false;
  }
  GiveFocus(control.screen);
  TextField* field = ScriptedScreens::InForce().FocusedField(control.screen);
  // The check may have disabled the control.
  if (!LeaveFor(control) || !CanBeReached(control)) {
    return false;
  }
  ScriptedScreens::InForce().SetFocusedField(control.screen, field);
  if (control.onClick) {
    control.onClick();
  }
  return true;
}

} // namespace

bool ScriptedUser::MoveTo(Control& control) {
  if (!CanBeReached(control) || !LeaveFor(control)) {
    return false;
  }
  Arrive(control);
  return true;
}

bool ScriptedUser::Type(TextField& field, std::u16string_view text) {
  if (field.readOnly || !MoveTo(field)) {
    return false;
  }
  ScriptedScreens& screens = ScriptedScreens::InForce();
  screens.takenByReturn = nullptr;
  screens.refused = nullptr;
  field.text = text;
  if (field.onChange) {
    field.onChange();
  }
  return true;
}

bool ScriptedUser::PressReturn(TextField& field) {
  ScriptedScreens& screens = ScriptedScreens::InForce();
  const bool there = CanBeReached(field) && screens.FocusedField(field.screen) == &field;
  if (!there && !MoveTo(field)) {
    return false;
  }
  if (field.readOnly || screens.takenByReturn == &field) {
    return true;
  }
  // One that was refused and is as it was then is checked when it is left, whatever the guard lets pass here.
  const bool asItWasRefused = screens.refused == &field;
  Screen& screen = field.screen;
  if (!LetGo(field)) {
    return false;
  }
  if (screens.Reachable(screen) && screen.focusRequest == nullptr) {
    screens.SetFocusedField(screen, &field);
    screens.takenByReturn = asItWasRefused ? nullptr : &field;
    field.selStart = 0;
    field.selLength = static_cast<int>(field.text.size());
    field.selectionPending = true;
  }
  return true;
}

bool ScriptedUser::Leave(TextField& field) {
  return LetGo(field);
}

bool ScriptedUser::Choose(ListBox& list, int row) {
  if (!MoveTo(list)) {
    return false;
  }
  SelectRow(list, row);
  return true;
}

bool ScriptedUser::Click(Button& button) {
  return ClickOn(*this, button);
}

bool ScriptedUser::Click(CheckBox& box) {
  if (!MoveTo(box)) {
    return false;
  }
  box.checked = !box.checked;
  if (box.onClick) {
    box.onClick();
  }
  return true;
}

bool ScriptedUser::Click(ToolButton& button) {
  return ClickBeside(button);
}

bool ScriptedUser::Click(MenuEntry& entry) {
  return ClickBeside(entry);
}

bool ScriptedUser::Click(Label& label) {
  return label.onClick && ClickBeside(label);
}

bool ScriptedUser::DoubleClick(Grid& grid, int row, int col) {
  if (!MoveTo(grid)) {
    return false;
  }
  grid.SelectRow(row);
  grid.Col = col;
  if (grid.onDoubleClick) {
    grid.onDoubleClick();
  }
  return true;
}

bool ScriptedUser::ChoosePage(TabPages& pages, int page) {
  if (!MoveTo(pages)) {
    return false;
  }
  SelectPage(pages, page);
  return true;
}

bool ScriptedUser::CloseWindow(Screen& screen) {
  const ScriptedScreens& screens = ScriptedScreens::InForce();
  if (!screens.Reachable(screen)) {
    return false;
  }
  const std::size_t before = screens.closed.size();
  ThePlatform().screens.Close(screen);
  return screens.closed.size() > before;
}

bool ScriptedUser::Escape(Screen& screen) {
  return ScriptedScreens::InForce().FrontModal() == &screen && CloseWindow(screen);
}

} // namespace loader::test
