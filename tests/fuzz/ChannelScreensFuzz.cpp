// The screens of the measuring and of the operation channels over a hostile store, and a user who picks,
// types, leaves, goes elsewhere, applies, and does as much in the dialogs that open on the way.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "channel/modUtil.h"
#include "channelscreens/frmChSetting.h"
#include "channelscreens/frmOperationChSet.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "meaning/ParameterText.h"
#include "tests/fuzz/FuzzPlatform.h"
#include "tests/fuzz/FuzzStore.h"

namespace loader::fuzz {

namespace {

// --- The store

struct Snapshot { // all of it
  std::vector<std::int16_t> numbers;
  std::vector<std::u16string> texts;
};

Snapshot TakeSnapshot() {
  Snapshot taken;
  ForEachRecord(
      ParamStore, [&](const ParamNumRecord& record) { taken.numbers.push_back(record.Value); },
      [&](const ParamTextRecord& record) { taken.texts.push_back(record.Value); });
  return taken;
}

// One number that another store hardly has: what is compared behind every step.
std::uint64_t Digest() {
  std::uint64_t digest = 14695981039346656037ULL;
  const auto add = [&](std::uint16_t word) { digest = (digest ^ word) * 1099511628211ULL; };
  ForEachRecord(
      ParamStore, [&](const ParamNumRecord& record) { add(static_cast<std::uint16_t>(record.Value)); },
      [&](const ParamTextRecord& record) { std::ranges::for_each(record.Value, add); });
  return digest;
}

// Section and item of what has changed since.
std::vector<std::pair<std::string, int>> ChangedItems(const Snapshot& before) {
  std::vector<std::pair<std::string, int>> changed;
  std::size_t number = 0;
  std::size_t text = 0;
  for (const ParamSection& section : ParamStore) {
    for (std::size_t item = 0; item < section.Items.size(); ++item) {
      bool differs = false;
      for (const ParamNumRecord& record : section.Items[item].NumRecords) {
        differs = record.Value != before.numbers[number++] || differs;
      }
      for (const ParamTextRecord& record : section.Items[item].TextRecords) {
        differs = record.Value != before.texts[text++] || differs;
      }
      if (differs) {
        changed.emplace_back(Trim(std::string_view(section.Code)), static_cast<int>(item));
      }
    }
  }
  return changed;
}

// --- What a screen shows

using Shown = std::vector<std::tuple<std::u16string, int, bool, bool>>;

Shown ShownOn(const Screen& screen) {
  Shown shown;
  for (const Control* control : screen.controls) {
    std::u16string text;
    int row = 0;
    if (control->kind == ControlKind::TextField) {
      text = static_cast<const TextField*>(control)->text;
    } else if (control->kind == ControlKind::ListBox) {
      row = static_cast<const ListBox*>(control)->index;
    } else if (control->kind == ControlKind::Label) {
      text = static_cast<const Label*>(control)->caption;
    }
    shown.emplace_back(text, row, control->enabled, control->marked);
  }
  return shown;
}

// --- A user

// The keyboard is in a field until another control is reached; a field that asks it back keeps it.
class User {
public:
  User(FuzzInput& input, FuzzPlatform& platform) : input_(input), platform_(platform) {}

  bool MoveTo(Control& control) {
    if (!control.enabled || !control.visible) {
      return false;
    }
    if (at_ != nullptr && at_ != &control) {
      TextField& left = *at_;
      at_ = nullptr;
      if (left.onLostFocus) {
        left.onLostFocus();
      }
      if (left.screen.focusRequest == &left) {
        left.screen.focusRequest = nullptr;
        at_ = &left;
        return false;
      }
    }
    at_ = control.kind == ControlKind::TextField ? static_cast<TextField*>(&control) : nullptr;
    return control.enabled; // the check may have disabled it
  }
  void Type(TextField& field) {
    constexpr const char16_t* Often[] = {u"",      u"0",     u"1",     u"-9",    u"9",
                                         u"10",    u"500.0", u"12.34", u"99999", u"-1e3",
                                         u"-0.05", u"32767", u"3.141", u"-32768"};
    const std::size_t which = input_.Byte() % (std::size(Often) + 2);
    const std::u16string text =
        which < std::size(Often) ? std::u16string(Often[which]) : FromCodePage(input_.ShortText());
    if (field.readOnly || !MoveTo(field)) {
      return;
    }
    field.text = text;
    if (field.onChange) {
      field.onChange();
    }
  }
  void Pick(ListBox& list) {
    const int row = input_.Byte();
    if (MoveTo(list) && !list.items.empty()) {
      SelectRow(list, row % static_cast<int>(list.items.size()));
    }
  }
  // Anything with any control.
  void Do(Control& control) {
    switch (control.kind) {
    case ControlKind::TextField:
      Type(static_cast<TextField&>(control));
      break;
    case ControlKind::ListBox:
      Pick(static_cast<ListBox&>(control));
      break;
    case ControlKind::Button:
      Click(static_cast<Button&>(control));
      break;
    case ControlKind::Label:
      Click(static_cast<Label&>(control));
      break;
    case ControlKind::Grid:
      DoubleClick(static_cast<Grid&>(control));
      break;
    default:
      break;
    }
  }
  // A modal screen, until it is closed or the user has had enough of it.
  void BeBefore(Screen& screen) {
    TextField* behind = at_;
    at_ = nullptr;
    platform_.screens.closed = nullptr;
    for (int step = input_.Choice(12); step > 0 && platform_.screens.closed != &screen; --step) {
      Do(*screen.controls[input_.Byte() % screen.controls.size()]);
      screen.focusRequest = nullptr;
    }
    at_ = behind;
  }

private:
  template <typename Clickable> void Click(Clickable& control) {
    if (control.onClick && MoveTo(control)) {
      control.onClick();
    }
  }
  void DoubleClick(Grid& grid) {
    const int cell = input_.Byte();
    if (MoveTo(grid) && grid.Rows() > grid.FixedRows && grid.Cols() > grid.FixedCols) {
      grid.Row = grid.FixedRows + cell % (grid.Rows() - grid.FixedRows);
      grid.Col = grid.FixedCols + cell / 7 % (grid.Cols() - grid.FixedCols);
      if (grid.onDoubleClick) {
        grid.onDoubleClick();
      }
    }
  }

  FuzzInput& input_;
  FuzzPlatform& platform_;
  TextField* at_ = nullptr;
};

// --- Promises

class Session {
public:
  Session(FuzzInput& input, FuzzPlatform& platform, bool operation, bool whole)
      : input_(input), platform_(platform), user_(input, platform), operation_(operation), whole_(whole) {
    platform_.screens.onModal = [this](Screen& modal) {
      modalShown_ = true;
      user_.BeBefore(modal);
    };
    screen_ = Make([this] { ++told_; });
    untouched_ = Make({});
    LoadEntry(screen_->browsing, FirstEntry());
    ExpectAsStored();
    ExpectThatApplyWithoutAChangeWritesNothing();
  }
  ~Session() { platform_.screens.onModal = nullptr; }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void Step() {
    const int what = input_.Choice(16);
    const int boxes = platform_.boxes.Count();
    modalShown_ = false;
    if (what == 0) {
      Apply();
    } else if (what == 1) {
      Navigate();
    } else if (what == 2) {
      platform_.time.Advance(input_.Byte());
    } else if (what < 8) { // rather one that sets something off
      constexpr std::string_view Rather[] = {"cmbInputType",      "cmbScale",      "cmbTaisu",
                                             "cmbFtio",           "cmbDecimal",    "cmbInputOtch",
                                             "lblAlarmSetInput1", "cmdUnitSelect", "cmdFormulaSet1"};
      if (Control* control = screen_->Find(Rather[input_.Byte() % std::size(Rather)])) {
        user_.Do(*control);
      }
    } else {
      Control& control = *screen_->controls[input_.Byte() % screen_->controls.size()];
      if (&control != &screen_->browsing.apply) {
        user_.Do(control);
      }
    }
    Require(what == 0 || Digest() == stored_, "nothing reaches the store before it is applied");
    Require(what == 0 || modalShown_ || platform_.boxes.Count() <= boxes + 1, "one step is told once");
    screen_->focusRequest = nullptr;
    ExpectSound();
  }

private:
  // Shared, since it ends as what it was made: a screen has no virtual destructor.
  std::shared_ptr<ChannelScreen> Make(std::function<void()> applied) const {
    if (operation_) {
      return std::make_shared<OperationChSetScreen>(std::move(applied));
    }
    return std::make_shared<ChSettingScreen>(std::move(applied));
  }
  int FirstEntry() {
    const int first = operation_ ? Profile.FirstOperationChannel - 1 : 0;
    const int count = operation_ ? Profile.OperationChannelCount : Profile.ChannelCount;
    return first + input_.Byte() % count;
  }
  // The screen shows what one that nobody has touched shows. A store with a piece missing leaves fields as
  // they are.
  void ExpectAsStored() {
    if (whole_) {
      LoadEntry(untouched_->browsing, screen_->browsing.entry);
      Require(ShownOn(*untouched_) == ShownOn(*screen_),
              "a channel that was loaded is shown as it is stored");
    }
    Require(std::ranges::none_of(screen_->controls, [](const Control* control) { return control->marked; }),
            "loading marks nothing");
  }
  void ExpectThatApplyWithoutAChangeWritesNothing() {
    const BoxAnswer answer = std::exchange(platform_.boxes.answer, BoxAnswer::Cancel);
    screen_->browsing.apply.onClick();
    platform_.boxes.answer = answer;
    Require(!whole_ || Digest() == stored_, "apply without a change writes nothing");
    stored_ = Digest();
    LoadEntry(screen_->browsing, screen_->browsing.entry);
    platform_.time.Advance(100);
    screen_->focusRequest = nullptr;
  }
  void Navigate() {
    BrowsingFrame& frame = screen_->browsing;
    Button* buttons[] = {&frame.btnTop, &frame.btnPrev, &frame.btnNext, &frame.btnReset};
    Button& button = *buttons[input_.Choice(4)];
    if (user_.MoveTo(button)) {
      button.onClick();
      ExpectAsStored();
    }
  }
  void Apply() {
    if (!user_.MoveTo(screen_->browsing.apply)) {
      return;
    }
    screen_->focusRequest = nullptr;
    platform_.boxes.answer = input_.Flag() ? BoxAnswer::Ok : BoxAnswer::Cancel;
    const int boxes = platform_.boxes.Count();
    const int told = told_;
    const Snapshot before = TakeSnapshot();
    const std::map<std::string, std::int16_t> numbersBefore = NumbersOfTheChannel();
    const std::vector<std::u16string> tags = Tags();
    screen_->browsing.apply.onClick();
    const int shown = platform_.boxes.Count() - boxes;
    platform_.time.Advance(100);
    Require(shown <= 2, "an apply asks for the pair and tells of one field");
    Require(told_ - told <= 1, "an apply is told once");
    Require(told_ > told || Digest() == stored_, "an apply that was given up writes nothing");
    const int channel = screen_->browsing.entry;
    for (const auto& [section, item] : ChangedItems(before)) {
      const bool own = (section == "C" || section == "A") && item == channel;
      const bool partner = !operation_ && shown > 0 && (section == "C" || section == "A") &&
                           item == channel + 1 && ChannelPairKind(channel) == PairLeader;
      const bool formulas =
          operation_ && section == "O" && item == channel - (Profile.FirstOperationChannel - 1);
      Require(own || partner || formulas, "an apply writes its channel, its partner and its formulas");
    }
    ExpectNothingBehindTheFocus(numbersBefore);
    stored_ = Digest();
    if (shown == 0 && screen_->focusRequest == nullptr && whole_) {
      ExpectApplied();
      Require(Tags() == tags, "the tags that were applied are those that were shown");
    }
  }
  [[nodiscard]] std::vector<std::u16string> Tags() const {
    std::vector<std::u16string> tags;
    for (const Field& field : screen_->fields.fields) {
      if (field.shape == FieldShape::Text) {
        tags.emplace_back(TrimRight(field.text->text));
      }
    }
    return tags;
  }
  void ExpectApplied() {
    ExpectAsStored();
    for (const Field& field : screen_->fields.fields) {
      const bool range =
          field.tag == "MMIN" || field.tag == "MMAX" || field.tag == "SMIN" || field.tag == "SMAX";
      Require(field.shape != FieldShape::Number || !field.text->text.empty() ||
                  (range && !field.text->enabled),
              "what was applied can be shown");
    }
    const int boxes = platform_.boxes.Count();
    screen_->browsing.apply.onClick();
    Require(platform_.boxes.Count() == boxes && Digest() == stored_,
            "a second apply changes nothing and tells nothing");
  }
  [[nodiscard]] std::map<std::string, std::int16_t> NumbersOfTheChannel() const {
    std::map<std::string, std::int16_t> numbers;
    for (const Field& field : screen_->fields.fields) {
      if (const ParamNumRecord* record =
              FindNumRecord(field.row->section, screen_->browsing.entry, field.tag)) {
        numbers[field.tag] = record->Value;
      }
    }
    return numbers;
  }
  // A refused field and what comes after it are as they were.
  void ExpectNothingBehindTheFocus(const std::map<std::string, std::int16_t>& before) {
    const auto& fields = screen_->fields.fields;
    const auto refused = std::ranges::find_if(fields, [&](const Field& field) {
      return field.text != nullptr && field.text == screen_->focusRequest;
    });
    if (refused == fields.end()) {
      return;
    }
    const std::map<std::string, std::int16_t> after = NumbersOfTheChannel();
    const auto& applied = screen_->design.applied;
    for (auto tag = std::ranges::find(applied, refused->tag); tag != applied.end(); ++tag) {
      const auto was = before.find(std::string(*tag));
      Require(was == before.end() || after.at(was->first) == was->second,
              "what stands behind a refused field is not stored");
    }
  }
  void ExpectSound() {
    Require(!screen_->LoadingFlag, "a screen that stands does not load");
    for (const Control* control : screen_->controls) {
      if (control->kind == ControlKind::ListBox) {
        const auto& list = static_cast<const ListBox&>(*control);
        Require(list.index >= -1 && list.index < static_cast<int>(list.items.size()),
                "a list shows one of its rows or none");
      }
    }
    if (!whole_) {
      return;
    }
    for (const Field& field : screen_->fields.fields) { // what cannot be typed cannot be in the way
      const bool range =
          field.tag == "MMIN" || field.tag == "MMAX" || field.tag == "SMIN" || field.tag == "SMAX";
      if (range && !field.text->enabled && !field.text->text.empty()) {
        const ChannelRow row = RowOf(*screen_);
        const ParamNumRecord* record = FindNumRecord(field.row->section, screen_->browsing.entry, field.tag);
        Require(ReadTyped(*field.meaning, View::Screen, field.text->text, *record, row.item, &row)
                    .stored.has_value(),
                "no kind is stuck");
      }
    }
  }

  FuzzInput& input_;
  FuzzPlatform& platform_;
  User user_;
  const bool operation_;
  const bool whole_;
  bool modalShown_ = false; // in this step
  int told_ = 0;            // how often an apply was told
  std::shared_ptr<ChannelScreen> screen_;
  std::shared_ptr<ChannelScreen> untouched_; // another one, before which nobody sits
  std::uint64_t stored_ = Digest();          // the store as it was applied last
};

void RunOne(FuzzInput input) {
  FuzzPlatform platform;
  const int model = input.Choice(8);
  StartWithShippedStore((model & 1) != 0 ? "RUG" : "KOV");
  if (model == 6) {
    ModelCode = "BIQ"; // some rules still know it
  }
  const bool operation = (model & 2) != 0;
  FillStore(input);
  PatchStore(input);
  const std::uint64_t complete = Digest();
  DropFromStore(input);
  const bool whole = Digest() == complete;
  {
    Session session(input, platform, operation, whole);
    for (int step = 0; step < 64 && !input.Empty(); ++step) {
      session.Step();
    }
  }
  RequireSoundStore(ParamStore);
  platform.time.Advance(100);
  Require(!WaitTimer2.Enabled, "the guard ends by itself");
}

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::RunOne(loader::fuzz::FuzzInput(data, size));
  return 0;
}
