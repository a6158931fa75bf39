// What the screen of the measuring channels and that of the operation channels share: tags, ranges,
// recording, integration, alarms, colour, units; loading a channel, "適用", and the cascades of the position,
// of the logarithm and of the F value (ChannelCascades).
//
// A screen works on copies in its fields; nothing reaches the store before "適用", which then stores field by
// field and stops at the first that is refused: what was stored before it stays stored.
#pragma once

#include <array>
#include <deque>
#include <functional>
#include <span>
#include <string_view>

#include "dialogs/Browsing.h"
#include "meaning/ParameterText.h"

namespace loader {

struct ChannelScreen;

// What picking another row of a list does to other fields.
struct Cascade {
  std::string_view control;
  void (*run)(ChannelScreen&);
};

// What tells one screen from the other. The tables behind the spans live as long as the program.
struct ChannelScreenDesign {
  std::string_view name;
  TextId caption;
  bool operation; // the limits and positions of kind 40 throughout, without a reference
  BrowsingRange channels;
  EntryTexts entryTexts;
  TextId subtraction; // of lblSUB, with @CHNO@
  std::span<const FieldRow> fields;
  std::span<const std::string_view> applied; // tags in the order of "適用", UNIT and SEUN among them
  std::span<const CaptionOf> labels = {};    // beside those that both screens have
  std::span<const CaptionOf> frames = {};
  std::span<const Cascade> cascades = {};
};

struct ChannelScreen : Screen {
  ChannelScreen(const ChannelScreenDesign& screenDesign, std::function<void()> applied);

  const ChannelScreenDesign design;
  BrowsingFrame browsing; // its entry is CurrentChannel, from 0
  std::deque<Label> labels;
  std::deque<Frame> frames;
  FieldSet fields;

  Label lblSelUnit{*this, "lblSelUnit"};
  Button cmdUnitSelect{*this, "cmdUnitSelect"};
  Label lblSelSekiUnit{*this, "lblSelSekiUnit"};
  Button cmdSekiUnitSelect{*this, "cmdSekiUnitSelect"};
  // Beside the numbers: that of the measuring range, that of the engineering value, that of the record range
  // and that of the alarms. Empty where the numbers have none, or none that is known.
  Label lblStUnit{*this, "lblStUnit"};
  Label lblIndUnit{*this, "lblIndUnit"};
  Label lblRecUnit{*this, "lblRecUnit"};
  Label lblAlarmUnit{*this, "lblAlarmUnit"};
  Label lblColor{*this, "lblColor"}; // the swatch beside the colours
  Label lblSUB{*this, "lblSUB"};
  static constexpr int Alarms = 4;
  std::deque<Label> lblAlarmSetInput; // by alarm, from 0: "lblAlarmSetInput1" up

  // In force for the texts that the fields show. Those that a list shows follow it by TakeShown, within the
  // cascade that moves the texts along; a list that shows no row leaves what the store holds in force.
  int CurrentUnit = 0;
  int CurrentSekiUnit = 0;
  int CurrentPoint = 0; // POIN
  int FPoint = 0;       // FPOI of section H
  bool FtioOn = false;  // the F value function
  int InputType = 0;    // the kind; 40 on the operation screen
  bool ScalingOn = false;
  bool LogOn = false;    // never where the model has no logarithm, whatever TAIS holds
  int OtherChannel = -1; // what kind 40 refers to, from 0
  // While the screen itself picks rows: a list's handler runs then as for the user's pick, its cascade does
  // not.
  bool LoadingFlag = false;

  // What a screen adds.
  std::function<void()> onLoad;        // before the fields of a channel are filled
  std::function<bool()> mayApply;      // asked before anything is stored; false: nothing is
  std::function<bool()> othersChanged; // a change outside fields and units
  std::function<void()> storeOthers;   // the store of that, before the fields
  std::function<void()> onApplied;     // the store may have changed, also by a partial write

  ChannelRow row; // behind the pointer that the fields get
};

// The channel as the screen shows it, for positions and limits.
[[nodiscard]] ChannelRow RowOf(const ChannelScreen& screen);
// Takes over what the lists show; runs nothing.
void TakeShown(ChannelScreen& screen);
// The units, the swatch and the alarms under the logarithm, as they stand.
void ShowDerived(ChannelScreen& screen);

// The field of a tag of sections C and A; null where the screen does not have it.
[[nodiscard]] Field* FindField(ChannelScreen& screen, std::string_view tag);

// Modal, from `channel` on, which counts from 0.
void ShowChannelScreen(ChannelScreen& screen, int channel);

} // namespace loader
