// What the user does to the records, by the rules of the user interface: a disabled or hidden control takes
// nothing, a window behind a modal screen takes nothing, and a field's lost-focus check runs before the click
// that took the focus is acted on.
//
// Where the keyboard is belongs to the screen, not to the user: a modal screen opens over the field of the
// window behind it, which is left only when the user goes on there.
#pragma once

#include <string_view>

#include "platform/Controls.h"

namespace loader::test {

class ScriptedUser {
public:
  // Focus to the control, with the lost-focus check of the field of its screen that had it. False when that
  // check asked the focus back, or the control cannot be reached: then nothing else happens.
  bool MoveTo(Control& control);
  bool Type(TextField& field, std::u16string_view text);
  // Takes what was typed as leaving the field would; the keyboard stays. A field that was good is not checked
  // again until it is edited. False when the check asked the focus back, or the field cannot be reached.
  bool PressReturn(TextField& field);
  // Leaves the field for nothing in particular.
  bool Leave(TextField& field);
  bool Choose(ListBox& list, int row);
  bool Click(Button& button);
  bool Click(CheckBox& box);
  // These take no focus: the field that had it is checked, and still has it afterwards.
  bool Click(ToolButton& button);
  bool Click(MenuEntry& entry);
  // A label that nobody handles takes no click.
  bool Click(Label& label);
  bool DoubleClick(Grid& grid, int row, int col);
  bool ChoosePage(TabPages& pages, int page);

  // Closes the screen by the cross of its window, or a modal one by the Escape key. Neither is a leaving of
  // the field with the keyboard; both ask the close query. True when it has closed. Escape does nothing to a
  // screen that is not modal.
  bool CloseWindow(Screen& screen);
  bool Escape(Screen& screen);
};

} // namespace loader::test
