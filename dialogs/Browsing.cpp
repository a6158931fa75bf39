#include "dialogs/Browsing.h"

#include <algorithm>
#include <utility>

#include "core/Text.h"
#include "platform/Platform.h"

namespace loader {

namespace {

void LeaveNumber(BrowsingFrame& frame) {
  // Passed through on the way to another field: what was typed into the entry and not applied stays.
  if (!frame.numberEdited) {
    return;
  }
  const int shown = frame.entry + 1;
  const EntryNumberRule rule{.first = frame.range.first + 1,
                             .last = frame.range.last + 1,
                             .notANumber = frame.texts->notANumber,
                             .outOfRange = frame.texts->outOfRange,
                             .placeholder = frame.texts->placeholder,
                             .wholeOnly = true,
                             .current = shown};
  if (const std::optional<int> number = CheckEntryNumber(frame.number, rule)) {
    LoadEntry(frame, *number - 1);
  } else if (frame.number.text == DecimalText(shown)) {
    frame.numberEdited = false; // the old number has come back
  }
}

void TieButtons(BrowsingFrame& frame) {
  frame.btnTop.onClick = [&frame] { LoadEntry(frame, frame.range.top); };
  frame.btnPrev.onClick = [&frame] { LoadEntry(frame, std::max(frame.entry - 1, frame.range.first)); };
  frame.btnNext.onClick = [&frame] { LoadEntry(frame, std::min(frame.entry + 1, frame.range.last)); };
  frame.btnReset.onClick = [&frame] { LoadEntry(frame, frame.entry); };
  frame.apply.onClick = [&frame] { frame.onApply(); };
  frame.close.onClick = [&frame] { ThePlatform().screens.Close(frame.screen); };
}

void SetButtonCaptions(BrowsingFrame& frame) {
  frame.btnTop.caption = LoadText(19614);
  frame.btnPrev.caption = LoadText(19615);
  frame.btnNext.caption = LoadText(19616);
  frame.btnReset.caption = LoadText(19617);
  frame.apply.caption = LoadText(19618);
  frame.close.caption = LoadText(19619);
}

void ShowFields(EntryDialog& dialog) {
  dialog.fields.entry = dialog.browsing.entry;
  FillFields(dialog.fields);
  ShowDecidedLists(dialog);
  if (dialog.onLoaded) {
    dialog.onLoaded();
  }
}

// All checks, then all writes: a refused apply has written nothing, and one without a change writes nothing.
void ApplyFields(EntryDialog& dialog) {
  if (!CheckFields(dialog.fields)) {
    return;
  }
  const bool others = dialog.othersChanged && dialog.othersChanged();
  if (others || AnyChanged(dialog.fields)) {
    static_cast<void>(StoreFields(dialog.fields)); // all of them passed their checks
    if (dialog.onStored) {
      dialog.onStored();
    }
  }
  if (dialog.onApplied) {
    dialog.onApplied();
  }
  LoadEntry(dialog.browsing, dialog.browsing.entry); // the fields show what is stored now
}

} // namespace

BrowsingFrame::BrowsingFrame(Screen& owner, BrowsingRange entries, std::optional<EntryTexts> entryTexts,
                             BrowsingNames names)
    : screen(owner), range(entries), texts(entryTexts), number(owner, std::string(names.number)),
      apply(owner, std::string(names.apply)), close(owner, std::string(names.close)) {
  SetButtonCaptions(*this);
  TieButtons(*this);
  number.readOnly = !texts.has_value();
  if (texts) {
    number.onChange = [this] { numberEdited = true; };
    number.onLostFocus = [this] { LeaveNumber(*this); };
  }
}

void LoadEntry(BrowsingFrame& frame, int index) {
  frame.entry = index;
  frame.numberEdited = false;
  frame.number.text = frame.numberCaption + DecimalText(index + 1);
  frame.onLoad();
}

EntryDialog::EntryDialog(std::string screenName, TextId windowText, BrowsingRange entries,
                         std::optional<EntryTexts> entryTexts, std::span<const FieldRow> rows,
                         std::span<const CaptionOf> labelCaptions, std::span<const CaptionOf> frameCaptions)
    : Screen(std::move(screenName)), browsing(*this, entries, entryTexts), captions(labelCaptions),
      fields(*this, rows, StoreTime::OnApply) {
  caption = LoadText(windowText);
  MakeLabels(*this, labels, labelCaptions);
  MakeFrames(*this, frames, frameCaptions);
  FillLists(fields);
  fields.onPicked = [this](Field& /*field*/) { ShowDecidedLists(*this); };
  browsing.onLoad = [this] { ShowFields(*this); };
  browsing.onApply = [this] { ApplyFields(*this); };
}

void ShowDecidedLists(EntryDialog& dialog) {
  for (Field& field : dialog.fields.fields) {
    if (!field.meaning->meaning.byDecider.empty()) {
      field.list->visible = !field.list->items.empty();
    }
  }
  ShowLabelsWithFields(dialog, dialog.captions);
}

void ShowEntryDialog(EntryDialog& dialog, int index) {
  LoadEntry(dialog.browsing, index);
  ThePlatform().screens.ShowModal(dialog);
}

} // namespace loader
