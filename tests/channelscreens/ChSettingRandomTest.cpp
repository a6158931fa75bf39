// The screen of the measuring channels with stores and users as the dice fall: what nobody changed is not
// written, and nothing reaches the store but by "適用".
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "channel/InputTypeRules.h"
#include "channelscreens/ChannelCascades.h"
#include "dialogs/frmAlarmSetting.h"
#include "dialogs/frmSelectUnit.h"
#include "tests/channelscreens/AnyBoxes.h"
#include "tests/channelscreens/Desk.h"

namespace loader::test {
namespace {

// --- Nothing is written that nobody changed

class Dice {
public:
  explicit Dice(unsigned seed) : generator_(seed) {}
  int Between(int first, int last) { return std::uniform_int_distribution<int>(first, last)(generator_); }
  bool Head() { return Between(0, 1) == 1; }

private:
  std::mt19937 generator_;
};

// A channel that a recorder may hold and of which every field shows a value; its neighbours are skipped.
void PutRandomChannel(Dice& dice, int channel, bool kov) {
  ChSettingScreen screen;
  for (const int neighbour : {channel - 1, channel + 1}) {
    if (neighbour >= 0 && neighbour < Profile.ChannelCount) {
      Put("C", neighbour, "TYPE", 0);
    }
  }
  LoadEntry(screen.browsing, channel);
  for (const Field& field : screen.fields.fields) {
    if (field.list != nullptr) {
      const auto& data = field.list->itemData;
      Put(field.row->section, channel, field.tag,
          data[static_cast<std::size_t>(dice.Between(0, static_cast<int>(data.size()) - 1))]);
    } else if (field.shape == FieldShape::Text) {
      PutText("C", channel, field.tag, std::string(static_cast<std::size_t>(dice.Between(0, 3)), ' ') + "T");
    }
  }
  const int kind = Stored("C", channel, "TYPE");
  const bool log = kov && Stored("C", channel, "TAIS") == 1;
  const bool fValue = Stored("C", channel, "FTIO") == 1;
  const bool byKind = kind != 40 && ((kind >= 1 && kind <= 29) || Stored("C", channel, "SCAL") == 0);
  Put("H", 0, "FPOI", dice.Between(0, 4));
  Put("C", channel, "UNIT", kind < 30 ? dice.Between(0, 1) : dice.Between(0, 160));
  Put("C", channel, "SEUN", dice.Between(0, 160));
  const InputRangeEntry& range =
      InputRangeTable[static_cast<std::size_t>(kind)][Stored("C", channel, "UNIT") == 0 ? 0 : 1];
  const auto put = [&](const char* section, const std::string& tag, int minimum, int maximum) {
    Put(section, channel, tag, dice.Between(minimum, maximum));
  };
  put("C", "FILT", 0, 99);
  for (const char* tag : {"MMIN", "MMAX"}) {
    kind == 40 ? put("C", tag, -32767, 32767) : put("C", tag, -1000, 5500);
  }
  const auto ranged = [&](const char* section, const std::string& tag, bool exponent, bool atFValue) {
    if (atFValue && fValue && !log) {
      put(section, tag, -32767, 32767);
    } else if (byKind) {
      put(section, tag, range.MinValue, range.MaxValue);
    } else if (exponent && log) {
      put(section, tag, -9, 9);
    } else {
      put(section, tag, -32767, 32767);
    }
  };
  ranged("C", "SMIN", true, false);
  ranged("C", "SMAX", true, false);
  ranged("C", "RMIN", true, true);
  ranged("C", "RMAX", true, true);
  ranged("C", "SECU", false, true);
  for (const char number : {'1', '2', '3', '4'}) {
    ranged("A", std::string("A") + number + "VL", false, true);
  }
  put("C", "PVSI", -32767, 32767);
  put("C", "PVKA", 0, 999);
  put("C", "SSCL", 1, 32767);
}

TEST(ChSettingRandom, WritesNothingToAStoreWhereEveryFieldShowsAValue) {
  for (const bool kov : {true, false}) {
    Desk desk(kov ? "KOV" : "RUG");
    Dice dice(11);
    for (int store = 0; store < 500; ++store) {
      const int channel = dice.Between(0, Profile.ChannelCount - 1);
      PutRandomChannel(dice, channel, kov);
      const WholeStore before;
      desk.Open(channel);
      for (const Field& field : desk.screen->fields.fields) {
        if (field.shape == FieldShape::Number) {
          EXPECT_NE("", ToUtf8(field.text->text)) << field.tag << " of kind " << desk.screen->InputType;
        } else if (field.list != nullptr) {
          EXPECT_LE(0, field.list->index) << field.tag;
        }
      }
      ASSERT_TRUE(desk.Apply());
      EXPECT_EQ(1, desk.applied);
      desk.applied = 0;
      ASSERT_EQ(before, WholeStore()) << "store " << store;
      ASSERT_TRUE(desk.platform.boxes.shown.empty());
      // An apply with a change elsewhere writes that change alone, and forgets a reference without its kind.
      if (Stored("C", channel, "TYPE") != 40) {
        Put("C", channel, "OTCH", 0);
        LoadEntry(desk.screen->browsing, channel);
      }
      WholeStore expected;
      const int filter = Stored("C", channel, "FILT") == 50 ? 51 : 50;
      desk.Text("txtInputFilter").text = FromUtf8(std::to_string(filter));
      ASSERT_TRUE(desk.Apply());
      desk.applied = 0;
      Put("C", channel, "FILT", filter);
      const WholeStore after;
      EXPECT_EQ(filter, Stored("C", channel, "FILT"));
      const auto differs = std::ranges::mismatch(expected.numbers, after.numbers);
      ASSERT_NE(expected.numbers.end(), differs.in1);
      EXPECT_EQ(filter, *differs.in2);
      EXPECT_TRUE(std::equal(differs.in1 + 1, expected.numbers.end(), differs.in2 + 1));
      EXPECT_EQ(expected.texts, after.texts);
    }
  }
}

// --- Anything that a user may do

void ExpectAsFreshlyOpened(const ChSettingScreen& screen) {
  ChSettingScreen fresh;
  LoadEntry(fresh.browsing, screen.browsing.entry);
  EXPECT_EQ(ShownOf(fresh), ShownOf(screen));
  ASSERT_EQ(fresh.controls.size(), screen.controls.size());
  for (std::size_t i = 0; i < fresh.controls.size(); ++i) {
    EXPECT_EQ(fresh.controls[i]->enabled, screen.controls[i]->enabled) << fresh.controls[i]->name;
    EXPECT_FALSE(screen.controls[i]->marked) << fresh.controls[i]->name;
  }
}

// A failed apply has stored nothing behind the field that asked for the focus.
void ExpectNothingBehind(const ChSettingScreen& screen, const WholeStore& before) {
  if (screen.focusRequest == nullptr) {
    return;
  }
  const auto failing = std::ranges::find_if(
      screen.fields.fields, [&](const Field& field) { return field.text == screen.focusRequest; });
  if (failing == screen.fields.fields.end()) {
    return;
  }
  std::size_t at = 0;
  bool behind = false;
  const int channel = screen.browsing.entry;
  std::map<std::string, std::int16_t> old; // of this channel
  for (const ParamSection& section : ParamStore) {
    for (std::size_t item = 0; item < section.Items.size(); ++item) {
      for (const ParamNumRecord& record : section.Items[item].NumRecords) {
        if (static_cast<int>(item) == channel && (Trim(section.Code) == "C" || Trim(section.Code) == "A")) {
          old[std::string(Trim(std::string_view(record.Tag)))] = before.numbers[at];
        }
        ++at;
      }
    }
  }
  for (const Field& field : screen.fields.fields) { // loaded in the order in which they are stored
    behind = behind || &field == &*failing;
    if (behind && field.shape != FieldShape::Text && old.contains(field.tag)) {
      EXPECT_EQ(old[field.tag], Stored(field.row->section, channel, field.tag)) << field.tag;
    }
  }
}

constexpr std::array MovedTags{"MMIN", "MMAX", "SMIN", "SMAX", "PVSI", "RMIN",
                               "RMAX", "SECU", "A1VL", "A2VL", "A3VL", "A4VL"};

NumberReading ReadField(ChSettingScreen& screen, const Field& field) {
  const ChannelRow row = RowOf(screen);
  const ParamNumRecord& record = NumRecord(field.row->section, screen.browsing.entry, field.tag);
  return ReadTyped(*field.meaning, View::Screen, field.text->text, record, screen.browsing.entry, &row);
}

// Blank, or refused: what a cascade does not move.
bool AllCanBeRead(ChSettingScreen& screen) {
  return std::ranges::all_of(MovedTags, [&](const char* tag) {
    const Field& field = *FindField(screen, tag);
    return field.text->text.empty() || ReadField(screen, field).stored.has_value();
  });
}

// What moves the point keeps the integers, or blanks what the new limits refuse.
void PickAPosition(Desk& desk, Dice& dice) {
  ChSettingScreen& screen = *desk.screen;
  const char* list =
      std::array{"cmbTaisu", "cmbFtio", "cmbDecimal"}[static_cast<std::size_t>(dice.Between(0, 2))];
  if (!desk.user.MoveTo(desk.List(list)) || !AllCanBeRead(screen)) {
    return;
  }
  std::map<std::string, std::optional<std::int16_t>> before;
  for (const char* tag : MovedTags) {
    before[tag] = ShownInteger(screen, tag);
  }
  desk.Pick(list, dice.Between(0, 4));
  for (const char* tag : MovedTags) {
    const std::optional<std::int16_t> after = ShownInteger(screen, tag);
    EXPECT_TRUE(!after || after == before[tag]) << list << " " << tag;
  }
}

// A range that cannot be typed is one that "適用" takes or passes over.
void ExpectNoRangeStuck(ChSettingScreen& screen) {
  for (const char* tag : {"MMIN", "MMAX", "SMIN", "SMAX"}) {
    const Field& field = *FindField(screen, tag);
    if (!field.text->enabled && !field.text->text.empty()) {
      EXPECT_TRUE(ReadField(screen, field).stored) << tag << " " << ToUtf8(field.text->text);
    }
  }
}

void DoAnything(Desk& desk, Dice& dice) {
  static const std::vector<std::u16string> Typed{u"",      u"0",    u"1",     u"-9",   u"9",     u"500.0",
                                                 u"12.34", u"x",    u"99999", u"-1e3", u"-0.05", u"32767",
                                                 u"3.141", u"2,71", u"1.",    u".5",   u"１２"};
  ChSettingScreen& screen = *desk.screen;
  std::deque<Field>& fields = screen.fields.fields;
  Field& field = fields[static_cast<std::size_t>(dice.Between(0, static_cast<int>(fields.size()) - 1))];
  switch (dice.Between(0, 4)) {
  case 0:
    PickAPosition(desk, dice);
    return;
  case 1: // rather a list that sets something off
    desk.Pick(std::array{"cmbInputType", "cmbScale", "cmbTaisu", "cmbFtio", "cmbDecimal",
                         "cmbInputOtch"}[static_cast<std::size_t>(dice.Between(0, 5))],
              dice.Between(0, 5));
    return;
  case 2:
    if (screen.cmdUnitSelect.enabled) {
      desk.platform.screens.Expect<SelectUnitScreen>("frmSelectUnit", [&](SelectUnitScreen& units) {
        desk.user.DoubleClick(units.fgrUnit, 0, dice.Between(0, 1));
      });
      screen.cmdUnitSelect.onClick();
    } else if (screen.lblAlarmSetInput[2].enabled) {
      desk.platform.screens.Expect<AlarmSettingScreen>("frmAlarmSetting", [&](AlarmSettingScreen& alarm) {
        desk.user.Type(alarm.txtAlarmSet, u"2");
        desk.user.Choose(alarm.cmbAlarmSet, dice.Between(0, 18));
        desk.user.Click(alarm.btnOk);
      });
      screen.lblAlarmSetInput[2].onClick();
    }
    return;
  default:
    break;
  }
  if (field.list != nullptr) {
    desk.user.Choose(*field.list,
                     dice.Between(0, std::max(0, static_cast<int>(field.list->items.size()) - 1)));
  } else if (desk.user.Type(
                 *field.text,
                 Typed[static_cast<std::size_t>(dice.Between(0, static_cast<int>(Typed.size()) - 1))]) &&
             dice.Head()) {
    desk.user.Leave(*field.text);
    desk.platform.time.Advance(100);
  }
}

TEST(ChSettingRandom, WhateverTheUserDoesTheStoreWaitsForIt) {
  for (const char* model : {"KOV", "RUG"}) {
    Desk desk(model);
    Dice dice(7);
    const AnyBoxes boxes([&dice] { return dice.Head() ? BoxAnswer::Ok : BoxAnswer::Cancel; });
    desk.Open(0);
    int failed = 0;
    int stored = 0;
    for (int step = 0; step < 6000; ++step) {
      const WholeStore before;
      BrowsingFrame& frame = desk.screen->browsing;
      const int what = dice.Between(0, 19);
      if (what == 0) { // somewhere else, or the same again
        Button* buttons[] = {&frame.btnTop, &frame.btnPrev, &frame.btnNext, &frame.btnReset};
        buttons[dice.Between(0, 3)]->onClick();
        ExpectAsFreshlyOpened(*desk.screen);
        EXPECT_EQ(before, WholeStore());
      } else if (what == 1) {
        desk.screen->focusRequest = nullptr;
        const int shownBefore = boxes.shown;
        frame.apply.onClick();
        if (boxes.shown == shownBefore && desk.screen->focusRequest == nullptr) {
          ++stored;
          ExpectAsFreshlyOpened(*desk.screen);
        } else {
          ++failed;
          ExpectNothingBehind(*desk.screen, before);
        }
        desk.platform.time.Advance(100);
        desk.screen->focusRequest = nullptr;
      } else {
        DoAnything(desk, dice);
        EXPECT_EQ(before, WholeStore());
      }
      ExpectNoRangeStuck(*desk.screen);
      EXPECT_FALSE(desk.screen->LoadingFlag);
      if (::testing::Test::HasFailure()) {
        FAIL() << model << " step " << step;
      }
    }
    EXPECT_LT(20, failed);
    EXPECT_LT(20, stored);
  }
}

} // namespace
} // namespace loader::test
