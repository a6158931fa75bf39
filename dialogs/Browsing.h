// The frame of the screens that show one entry at a time: "トップ", "前", "次", "元に戻す", "適用", "終了"
// and the number of the entry.
//
// Moving to another entry shows it as the store holds it, without a question: what was not applied is gone.
// "適用" stores and stays; closing stores nothing.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "channel/modUtil.h"
#include "fields/Captions.h"
#include "fields/Fields.h"
#include "platform/Controls.h"

namespace loader {

// The entries of a screen, from 0.
struct BrowsingRange {
  int first = 0;
  int last = 0;
  int top = first; // where "トップ" goes; it need not lie in the range
};

// What a typed entry number that is refused is answered with.
struct EntryTexts {
  TextId notANumber;
  TextId outOfRange;
  std::u16string_view placeholder = {}; // in outOfRange, for the last number
};

// The controls carry these names on the side dialogs; the channel screens have others for three of them.
struct BrowsingNames {
  std::string_view number = "txtSelectNo";
  std::string_view apply = "btnOk";
  std::string_view close = "btnCancel";
};

struct BrowsingFrame {
  BrowsingFrame(Screen& owner, BrowsingRange entries, std::optional<EntryTexts> entryTexts,
                BrowsingNames names = {});
  BrowsingFrame(const BrowsingFrame&) = delete;
  BrowsingFrame& operator=(const BrowsingFrame&) = delete;

  Screen& screen;
  const BrowsingRange range;
  const std::optional<EntryTexts> texts; // none: the number is read-only
  int entry = 0;                         // the one that is shown

  TextField number; // the entry's number, from 1
  Button btnTop{screen, "btnTop"};
  Button btnPrev{screen, "btnPrev"};
  Button btnNext{screen, "btnNext"};
  Button btnReset{screen, "btnReset"};
  Button apply;
  Button close;

  // What the screen adds: `onLoad` shows the values of the entry, `onApply` is "適用".
  std::function<void()> onLoad;
  std::function<void()> onApply;
  std::u16string numberCaption; // before the number, in its field
  bool numberEdited = false;    // since the entry was shown: only then does leaving the number mean anything
};

// Shows the entry, be it the one that stands.
void LoadEntry(BrowsingFrame& frame, int index);

// A dialog that is this frame around a table of fields.
struct EntryDialog : Screen {
  EntryDialog(std::string screenName, TextId windowText, BrowsingRange entries,
              std::optional<EntryTexts> entryTexts, std::span<const FieldRow> rows,
              std::span<const CaptionOf> labelCaptions, std::span<const CaptionOf> frameCaptions = {});

  BrowsingFrame browsing;
  const std::span<const CaptionOf> captions; // of the labels
  std::deque<Label> labels;
  std::deque<Frame> frames;
  FieldSet fields;

  // What a dialog adds. Lists are refilled, shown and hidden by what decides them without a word of it.
  std::function<void()> onLoaded;      // the fields show the entry
  std::function<bool()> othersChanged; // a change outside the fields
  std::function<void()> onStored;      // the fields have been stored
  std::function<void()> onApplied;     // "適用" has passed its checks, be it without a change
};
// A list that another one decides is hidden while it offers nothing, with its label.
void ShowDecidedLists(EntryDialog& dialog);
// Shows entry `index`, and the dialog until it is closed.
void ShowEntryDialog(EntryDialog& dialog, int index);

} // namespace loader
