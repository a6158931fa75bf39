// The field engine over screens of the tests' own: what the pages and the dialogs share.
#include "fields/Fields.h"

#include <gtest/gtest.h>

#include <array>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "meaning/Lists.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

constexpr auto Rows = std::to_array<FieldRow>({
    {.control = "cmbStyp", .section = "C", .tag = "STYP"},
    {.control = "cmbColor", .section = "C", .tag = "COLR"},
    {.control = "cmbGC", .section = "G", .tag = "GC##", .elements = 10},
    {.control = "txtFilter", .section = "C", .tag = "FILT"},
    {.control = "txtShift", .section = "C", .tag = "PVSI"},
    {.control = "txtTag", .section = "C", .tag = "TAG", .tooLong = 62100, .forbidden = 62101},
    {.control = "txtName", .section = "G", .tag = "GNEM", .tooLong = 62202, .forbidden = 62203},
    {.control = "cmbTiming", .section = "M", .tag = "MTM1"},
    {.control = "cmbTiming1", .section = "M", .tag = "MTM2"},
    {.control = "cmbHour", .section = "E", .tag = "TSBA", .item = 0, .minutes = "cmbMinute"},
    {.control = "txtOctet", .section = "J", .tag = "IPA#", .elements = 4},
    {.control = "cmbScreenOff", .section = "H", .tag = "SHOU"},
    {.control = "txtScreenOff", .section = "H", .tag = "SHOU", .asNumber = true},
});

struct SampleScreen : Screen {
  explicit SampleScreen(StoreTime storeTime) : Screen("frmSample"), fields(*this, Rows, storeTime) {}
  TextField txtFilter{*this, "txtFilter"}; // a control of the screen's own
  FieldSet fields;
};

class FieldEngine : public ::testing::Test {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }
  void TearDown() override { StopTimer(WaitTimer2); }
  static void Set(std::string_view section, int item, std::string_view tag, int value) {
    ASSERT_TRUE(SetNumValue(section, item, tag, static_cast<std::int16_t>(value))) << tag;
  }
  static int Stored(std::string_view section, int item, std::string_view tag) {
    return NumValue(section, item, tag, -9999);
  }
  static void Leave(TextField& field, std::u16string_view text) {
    field.text = text;
    if (field.onChange) {
      field.onChange();
    }
    field.onLostFocus();
  }
  static void Show(SampleScreen& screen) {
    FillLists(screen.fields);
    FillFields(screen.fields);
  }
  ScriptedPlatform platform;
};
using AtOnce = FieldEngine;
using OnApply = FieldEngine;

// --- Tying

TEST_F(FieldEngine, TakesTheScreensControlsAndMakesTheOthers) {
  SampleScreen screen(StoreTime::AtOnce);
  EXPECT_EQ(&screen.txtFilter, FieldOf(screen.fields, "txtFilter").text);
  EXPECT_NE(nullptr, screen.Find("cmbGC(9)"));
  EXPECT_EQ("GC10", FieldOf(screen.fields, "cmbGC(9)").tag);
  EXPECT_EQ("IPA4", FieldOf(screen.fields, "txtOctet(3)").tag);
  EXPECT_EQ(FieldShape::TimeOfDay, FieldOf(screen.fields, "cmbMinute").shape);
  EXPECT_EQ(FieldShape::Number, FieldOf(screen.fields, "txtScreenOff").shape);
  EXPECT_THROW(static_cast<void>(FieldOf(screen.fields, "cmbGC(10)")), std::logic_error);
}

TEST_F(FieldEngine, RefusesAParameterWithoutAMeaningAndAControlOfAnotherKind) {
  Screen screen("frmSample");
  Label label(screen, "txtFilter");
  constexpr FieldRow taken[] = {{.control = "txtFilter", .section = "C", .tag = "FILT"}};
  EXPECT_THROW(FieldSet(screen, taken, StoreTime::AtOnce), std::logic_error);
  constexpr FieldRow unknown[] = {{.control = "txtNew", .section = "C", .tag = "NEWT"}};
  EXPECT_THROW(FieldSet(screen, unknown, StoreTime::AtOnce), std::logic_error);
}

// --- Stored at once

TEST_F(AtOnce, AListStoresTheValueOfItsRow) {
  SampleScreen screen(StoreTime::AtOnce);
  Show(screen);
  ListBox& cycle = *FieldOf(screen.fields, "cmbStyp").list;
  EXPECT_EQ(0, cycle.index); // OFF is stored as 15
  SelectRow(cycle, 3);
  EXPECT_EQ(3, Stored("C", 0, "STYP"));
  SelectRow(cycle, 4);
  EXPECT_EQ(6, Stored("C", 0, "STYP"));
  SelectRow(*FieldOf(screen.fields, "cmbColor").list, 13);
  EXPECT_EQ(14, Stored("C", 0, "COLR"));
}

TEST_F(AtOnce, AValueThatIsNoRowLeavesTheListAndTheStore) {
  SampleScreen screen(StoreTime::AtOnce);
  Show(screen);
  Set("C", 0, "STYP", 2);
  FillFields(screen.fields);
  EXPECT_EQ(0, FieldOf(screen.fields, "cmbStyp").list->index);
  EXPECT_EQ(2, Stored("C", 0, "STYP"));
}

TEST_F(AtOnce, AGoodNumberIsStoredWhenItsFieldIsLeftAndABadOneNot) {
  SampleScreen screen(StoreTime::AtOnce);
  Show(screen);
  Leave(screen.txtFilter, u"12.9");
  EXPECT_EQ(12, Stored("C", 0, "FILT"));
  EXPECT_EQ(u"12", screen.txtFilter.text);
  std::string refused;
  screen.fields.onRefusedNumber = [&](TextField& field) { refused = field.name; };
  platform.boxes.Expect(u"0から99の値を入力してください");
  Leave(screen.txtFilter, u"100");
  EXPECT_EQ(12, Stored("C", 0, "FILT"));
  EXPECT_EQ("txtFilter", refused);
  EXPECT_TRUE(WaitTimer2.Enabled);
}

TEST_F(AtOnce, FieldsOfOneSettingFollowEachOther) {
  SampleScreen screen(StoreTime::AtOnce);
  Show(screen);
  Leave(*FieldOf(screen.fields, "txtScreenOff").text, u"5");
  EXPECT_EQ(5, FieldOf(screen.fields, "cmbScreenOff").list->index);
  SelectRow(*FieldOf(screen.fields, "cmbScreenOff").list, 2);
  EXPECT_EQ(u"2", FieldOf(screen.fields, "txtScreenOff").text->text);
  EXPECT_EQ(2, Stored("H", 0, "SHOU"));
}

TEST_F(AtOnce, TheTwoListsOfATimeStoreItsMinutes) {
  Set("E", 0, "TSBA", 485);
  SampleScreen screen(StoreTime::AtOnce);
  Show(screen);
  const Field& time = FieldOf(screen.fields, "cmbHour");
  EXPECT_EQ(8, time.list->index);
  EXPECT_EQ(5, time.minutes->index);
  SelectRow(*time.list, 23);
  EXPECT_EQ(23 * 60 + 5, Stored("E", 0, "TSBA"));
  SelectRow(*time.minutes, 59);
  EXPECT_EQ(1439, Stored("E", 0, "TSBA"));
}

TEST_F(AtOnce, ATextIsRefusedWithTheMessagesOfItsRow) {
  SampleScreen screen(StoreTime::AtOnce);
  Show(screen);
  TextField& tag = *FieldOf(screen.fields, "txtTag").text;
  platform.boxes.Expect(u"「,」は入力できません");
  Leave(tag, u"A,B");
  EXPECT_EQ(&tag, screen.focusRequest);
  EXPECT_EQ(1, tag.selStart);
  EXPECT_EQ(1, tag.selLength);
  EXPECT_EQ("CH 01", ToUtf8(TrimRight(FindTextRecord("C", 0, "TAG")->Value)));
  screen.fields.selectRefusedText = false;
  tag.selectionPending = false;
  platform.boxes.Expect(u"半角16文字以下で入力してください");
  Leave(tag, u"0123456789ABCDEF0");
  EXPECT_FALSE(tag.selectionPending);
  Leave(tag, u" Ofen ");
  EXPECT_EQ(u" Ofen", TrimRight(FindTextRecord("C", 0, "TAG")->Value));
  // The name of a group loses its blanks at both ends when it is left.
  TextField& name = *FieldOf(screen.fields, "txtName").text;
  Leave(name, u"  炉  ");
  EXPECT_EQ(u"炉", name.text);
  EXPECT_EQ(u"炉", TrimRight(FindTextRecord("G", 0, "GNEM")->Value));
}

TEST_F(AtOnce, AnOctetIsStoredAsItsPlainNumber) {
  SampleScreen screen(StoreTime::AtOnce);
  Show(screen);
  TextField& octet = *FieldOf(screen.fields, "txtOctet(1)").text;
  Leave(octet, u"007");
  EXPECT_EQ(u"7", octet.text);
  EXPECT_EQ(7, Stored("J", 0, "IPA2"));
  platform.boxes.Expect(u"0から255の値を入力してください");
  Leave(octet, u"");
  EXPECT_EQ(7, Stored("J", 0, "IPA2"));
}

TEST_F(AtOnce, NumbersStandAtThePositionOfTheChannelThatTheScreenShows) {
  SampleScreen screen(StoreTime::AtOnce);
  ChannelRow channel;
  channel.point = 2;
  screen.fields.channel = [&channel] { return &channel; };
  Set("C", 0, "PVSI", 125);
  Show(screen);
  TextField& shift = *FieldOf(screen.fields, "txtShift").text;
  EXPECT_EQ(u"1.25", shift.text);
  channel.point = 3;
  Leave(shift, u"-0.5");
  EXPECT_EQ(u"-0.500", shift.text);
  EXPECT_EQ(-500, Stored("C", 0, "PVSI"));
}

TEST_F(AtOnce, FieldsShowTheEntryOfTheScreen) {
  Set("C", 3, "FILT", 33);
  SampleScreen screen(StoreTime::AtOnce);
  screen.fields.entry = 3;
  Show(screen);
  EXPECT_EQ(u"33", screen.txtFilter.text);
  Leave(screen.txtFilter, u"44");
  EXPECT_EQ(44, Stored("C", 3, "FILT"));
  EXPECT_EQ(0, Stored("C", 0, "FILT"));
}

// --- Stored on apply

TEST_F(OnApply, NothingReachesTheStoreBefore) {
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  SelectRow(*FieldOf(screen.fields, "cmbStyp").list, 3);
  Leave(screen.txtFilter, u"12");
  Leave(*FieldOf(screen.fields, "txtTag").text, u"Ofen");
  EXPECT_EQ(15, Stored("C", 0, "STYP"));
  EXPECT_EQ(0, Stored("C", 0, "FILT"));
  EXPECT_EQ("CH 01", ToUtf8(TrimRight(FindTextRecord("C", 0, "TAG")->Value)));
  ASSERT_TRUE(CheckFields(screen.fields));
  EXPECT_TRUE(StoreFields(screen.fields));
  EXPECT_EQ(3, Stored("C", 0, "STYP"));
  EXPECT_EQ(12, Stored("C", 0, "FILT"));
  EXPECT_EQ("Ofen", ToUtf8(TrimRight(FindTextRecord("C", 0, "TAG")->Value)));
}

// Values that their lists show at another row, or not at all, and a text with blanks in front.
TEST_F(OnApply, AnApplyWithoutAChangeLeavesEveryRecordAsItIs) {
  Set("C", 0, "STYP", 2);
  Set("C", 0, "COLR", 0);
  Set("G", 0, "GC01", -32768);
  Set("G", 0, "GC02", -32763);
  Set("G", 0, "GC03", 12);
  Set("M", 0, "MTM1", 3);
  Set("M", 0, "MTM2", 99);
  Set("E", 0, "TSBA", 2000);
  SetText(*FindTextRecord("C", 0, "TAG"), u"  x", SlotValue);
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  EXPECT_EQ(-1, FieldOf(screen.fields, "cmbStyp").list->index);
  EXPECT_EQ(19, FieldOf(screen.fields, "cmbGC(0)").list->index);
  EXPECT_EQ(-1, FieldOf(screen.fields, "cmbGC(1)").list->index);
  EXPECT_EQ(-1, FieldOf(screen.fields, "cmbHour").list->index);
  ASSERT_TRUE(CheckFields(screen.fields));
  EXPECT_TRUE(StoreFields(screen.fields));
  EXPECT_EQ(2, Stored("C", 0, "STYP"));
  EXPECT_EQ(0, Stored("C", 0, "COLR"));
  EXPECT_EQ(-32768, Stored("G", 0, "GC01"));
  EXPECT_EQ(-32763, Stored("G", 0, "GC02"));
  EXPECT_EQ(12, Stored("G", 0, "GC03"));
  EXPECT_EQ(99, Stored("M", 0, "MTM2"));
  EXPECT_EQ(2000, Stored("E", 0, "TSBA"));
  EXPECT_EQ(u"  x", TrimRight(FindTextRecord("C", 0, "TAG")->Value));
}

TEST_F(OnApply, WhatTheUserPicksInPlaceOfASpecialContentIsAChannel) {
  Set("G", 0, "GC01", -32768);
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  ListBox& slot = *FieldOf(screen.fields, "cmbGC(0)").list;
  SelectRow(slot, 20);
  EXPECT_TRUE(StoreFields(screen.fields));
  EXPECT_EQ(20, Stored("G", 0, "GC01"));
}

TEST_F(OnApply, AnEntryShowsNoRowOfTheEntryBefore) {
  Set("C", 1, "STYP", 2);
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  SelectRow(*FieldOf(screen.fields, "cmbStyp").list, 3);
  screen.fields.entry = 1;
  FillFields(screen.fields);
  EXPECT_EQ(-1, FieldOf(screen.fields, "cmbStyp").list->index);
}

TEST_F(OnApply, TheListOfADecidedParameterFollowsTheDecidingOne) {
  SampleScreen screen(StoreTime::OnApply);
  Field& source = FieldOf(screen.fields, "cmbTiming1");
  Set("M", 0, "MTM1", 1);
  FillList(screen.fields, source);
  EXPECT_EQ(10U, source.list->items.size());
  Set("M", 0, "MTM1", 4);
  FillList(screen.fields, source);
  EXPECT_EQ(31U, source.list->items.size());
  EXPECT_EQ(u"無し", source.list->items.front());
  Set("M", 0, "MTM1", 0);
  FillList(screen.fields, source);
  EXPECT_TRUE(source.list->items.empty());
  // A list that has become empty stores 0.
  Set("M", 0, "MTM2", 7);
  EXPECT_TRUE(StoreField(screen.fields, source));
  EXPECT_EQ(0, Stored("M", 0, "MTM2"));
}

TEST_F(OnApply, OfTwoBadFieldsTheFirstAloneSpeaksAndNothingIsStored) {
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  const auto filter = Stored("C", 0, "FILT");
  screen.txtFilter.text = u"100";
  FieldOf(screen.fields, "txtTag").text->text = u"a,b";
  platform.boxes.Expect(u"0から99の値を入力してください");
  EXPECT_FALSE(CheckFields(screen.fields));
  EXPECT_EQ(&screen.txtFilter, screen.focusRequest);
  EXPECT_EQ(filter, Stored("C", 0, "FILT"));
}

TEST_F(FieldEngine, PassesOverParametersThatTheModelDoesNotHave) {
  ParamStore[gFFindSection("J")].Items.front().NumRecords.clear();
  ParamStore[gFFindSection("G")].Items.front().TextRecords.clear();
  SampleScreen screen(StoreTime::OnApply);
  FieldOf(screen.fields, "txtOctet(0)").text->text = u"as it was";
  FieldOf(screen.fields, "txtName").text->text = u"as, it was";
  Show(screen);
  EXPECT_EQ(u"as it was", FieldOf(screen.fields, "txtOctet(0)").text->text);
  FieldOf(screen.fields, "txtOctet(0)").text->onLostFocus();
  FieldOf(screen.fields, "txtName").text->onLostFocus();
  EXPECT_TRUE(CheckFields(screen.fields));
  EXPECT_TRUE(StoreFields(screen.fields));
}

} // namespace
} // namespace loader::test
