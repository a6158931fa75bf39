// The part of the tour that edits the set-up in its dialogs.
#pragma once

#include <functional>
#include <string_view>

#include "tests/e2e/Guest.h"
#include "tests/e2e/RecorderProcess.h"

namespace loader::tour {

// The store has to hold the number, and its register of the recorder at the end of the tour.
void NoteChange(Memory& changed, std::string_view section, int item, std::string_view tag, int value);

class DialogTour {
public:
  // `changed` gets the registers that the recorder has to hold after the write.
  DialogTour(Guest& guest, Memory& changed) : guest_(guest), changed_(changed) {}

  // A group, a message, a unit, a constant and a mail trigger.
  void EditTheSideDialogs();
  // Kind, unit, reference, and an alarm: under the logarithm where the model has one.
  void SetUpAChannel();
  // A formula of two terms, and another one deleted.
  void SetUpAnOperationChannel();
  // Onto another one without a pair.
  void CopyAChannel();

private:
  // Opens the dialog of a row by a double click, works in it, and closes it by its button.
  void InTheDialogOf(const char* table, int row, const char* dialog, const char* close,
                     const std::function<void()>& work);
  // The same within a dialog: by a click.
  void InTheScreenOf(QWidget& button, const char* screen, const std::function<void()>& work);
  void Expect(std::string_view section, std::string_view tag, int value, int item = 0) {
    NoteChange(changed_, section, item, tag, value);
  }
  // Whatever `edit` changes in the store, the recorder has to hold it in the end.
  void NotingAll(const std::function<void()>& edit);

  Guest& guest_;
  Memory& changed_;
};

} // namespace loader::tour
