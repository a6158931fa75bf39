// The field engine over screens of the tests' own: what the pages and the dialogs share.
#include "fields/Fields.h"

#include <gtest/gtest.h>

#include <array>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "meaning/Lists.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

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

TEST_F(FieldEngine, RefusesRowsThatTheirMeaningForbids) {
  const auto refused = [](std::initializer_list<FieldRow> rows) {
    Screen screen("frmSample");
    try {
      const FieldSet set(screen, {rows.begin(), rows.size()}, StoreTime::OnApply);
    } catch (const std::logic_error&) {
      return true;
    }
    return false;
  };
  // A comma would reach the parameter file; or be refused where it may stand.
  EXPECT_TRUE(refused({{.control = "txtTag", .section = "C", .tag = "TAG"}}));
  EXPECT_TRUE(refused({{.control = "txtUser", .section = "K", .tag = "UNAM", .forbidden = 62101}}));
  // Eight boxes, six lists: no single field stands for them.
  EXPECT_TRUE(refused({{.control = "chkAddress", .section = "X", .tag = "EADD"}}));
  EXPECT_TRUE(refused({{.control = "cmbTerm", .section = "O", .tag = "OP11"}}));
  // What is typed would be a value that the list does not have.
  EXPECT_TRUE(refused({{.control = "txtLanguage", .section = "H", .tag = "LANG", .asNumber = true}}));
  // Filled in their order, the second would go by what the first one showed before.
  EXPECT_TRUE(refused({{.control = "cmbTiming1", .section = "M", .tag = "MTM2"},
                       {.control = "cmbTiming", .section = "M", .tag = "MTM1"}}));
  EXPECT_FALSE(refused({{.control = "cmbTiming", .section = "M", .tag = "MTM1"},
                        {.control = "cmbTiming1", .section = "M", .tag = "MTM2"}}));
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
  Put("C", 0, "STYP", 2);
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
  Put("E", 0, "TSBA", 485);
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
  EXPECT_EQ("CH 01", TrimmedText("C", 0, "TAG"));
  screen.fields.selectRefusedText = false;
  tag.selectionPending = false;
  platform.boxes.Expect(u"半角16文字以下で入力してください");
  Leave(tag, u"0123456789ABCDEF0");
  EXPECT_FALSE(tag.selectionPending);
  Leave(tag, u" Ofen ");
  EXPECT_EQ(" Ofen", TrimmedText("C", 0, "TAG"));
  // The name of a group loses its blanks at both ends when it is left.
  TextField& name = *FieldOf(screen.fields, "txtName").text;
  Leave(name, u"  炉  ");
  EXPECT_EQ(u"炉", name.text);
  EXPECT_EQ("炉", TrimmedText("G", 0, "GNEM"));
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
  Put("C", 0, "PVSI", 125);
  Show(screen);
  TextField& shift = *FieldOf(screen.fields, "txtShift").text;
  EXPECT_EQ(u"1.25", shift.text);
  channel.point = 3;
  Leave(shift, u"-0.5");
  EXPECT_EQ(u"-0.500", shift.text);
  EXPECT_EQ(-500, Stored("C", 0, "PVSI"));
}

TEST_F(AtOnce, FieldsShowTheEntryOfTheScreen) {
  Put("C", 3, "FILT", 33);
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
  EXPECT_EQ("CH 01", TrimmedText("C", 0, "TAG"));
  ASSERT_TRUE(CheckFields(screen.fields));
  EXPECT_TRUE(StoreFields(screen.fields));
  EXPECT_EQ(3, Stored("C", 0, "STYP"));
  EXPECT_EQ(12, Stored("C", 0, "FILT"));
  EXPECT_EQ("Ofen", TrimmedText("C", 0, "TAG"));
}

// Values that their lists show at another row, or not at all, and a text with blanks in front.
TEST_F(OnApply, AnApplyWithoutAChangeLeavesEveryRecordAsItIs) {
  Put("C", 0, "STYP", 2);
  Put("C", 0, "COLR", 0);
  Put("G", 0, "GC01", -32768);
  Put("G", 0, "GC02", -32763);
  Put("G", 0, "GC03", 12);
  Put("M", 0, "MTM1", 3);
  Put("M", 0, "MTM2", 99);
  Put("E", 0, "TSBA", 2000);
  PutText("C", 0, "TAG", "  x");
  PutText("G", 0, "GNEM", "  x");
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
  EXPECT_EQ("  x", TrimmedText("C", 0, "TAG"));
  EXPECT_EQ("  x", TrimmedText("G", 0, "GNEM")); // the check took the blanks off, nobody else
  EXPECT_EQ(u"x", FieldOf(screen.fields, "txtName").text->text);
}

TEST_F(OnApply, WhatTheUserPicksInPlaceOfASpecialContentIsAChannel) {
  Put("G", 0, "GC01", -32768);
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  ListBox& slot = *FieldOf(screen.fields, "cmbGC(0)").list;
  SelectRow(slot, 20);
  EXPECT_TRUE(StoreFields(screen.fields));
  EXPECT_EQ(20, Stored("G", 0, "GC01"));
}

TEST_F(OnApply, AnEntryShowsNoRowOfTheEntryBefore) {
  Put("C", 1, "STYP", 2);
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  SelectRow(*FieldOf(screen.fields, "cmbStyp").list, 3);
  screen.fields.entry = 1;
  FillFields(screen.fields);
  EXPECT_EQ(-1, FieldOf(screen.fields, "cmbStyp").list->index);
}

TEST_F(OnApply, ASlotThatWasPickedIsAChannelAlsoWhenThePickGoesBackToTheFirstRow) {
  Put("G", 0, "GC01", -32768);
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  ListBox& slot = *FieldOf(screen.fields, "cmbGC(0)").list;
  SelectRow(slot, 19); // stands there already
  EXPECT_TRUE(StoreFields(screen.fields));
  EXPECT_EQ(-32768, Stored("G", 0, "GC01"));
  SelectRow(slot, 20);
  SelectRow(slot, 19);
  EXPECT_TRUE(StoreFields(screen.fields));
  EXPECT_EQ(19, Stored("G", 0, "GC01"));
}

TEST_F(OnApply, APickIsToldOnceAndTheRowThatStandsIsNone) {
  SampleScreen screen(StoreTime::OnApply);
  std::vector<std::string> told;
  screen.fields.onPicked = [&](Field& field) { told.push_back(field.tag); };
  Show(screen);
  EXPECT_TRUE(told.empty());
  ListBox& cycle = *FieldOf(screen.fields, "cmbStyp").list;
  SelectRow(cycle, 0);
  EXPECT_TRUE(told.empty());
  SelectRow(cycle, 2);
  SelectRow(cycle, 2);
  EXPECT_EQ(std::vector<std::string>{"STYP"}, told);
}

// What the user picks decides at once, long before it is stored.
TEST_F(OnApply, TheListOfADecidedParameterFollowsTheFieldOfTheDecidingOne) {
  Put("M", 0, "MTM1", 1);
  Put("M", 0, "MTM2", 7);
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  ListBox& timing = *FieldOf(screen.fields, "cmbTiming").list;
  ListBox& source = *FieldOf(screen.fields, "cmbTiming1").list;
  EXPECT_EQ(10U, source.items.size());
  EXPECT_EQ(7, source.index);
  SelectRow(timing, 4);
  EXPECT_EQ(31U, source.items.size());
  EXPECT_EQ(u"無し", source.items.front());
  EXPECT_EQ(0, source.index);
  SelectRow(source, 3);
  SelectRow(timing, 4); // stands there already
  EXPECT_EQ(3, source.index);
  EXPECT_EQ(1, Stored("M", 0, "MTM1"));
  SelectRow(timing, 0);
  EXPECT_TRUE(source.items.empty());
  // A list that a pick has emptied stores 0.
  EXPECT_TRUE(StoreFields(screen.fields));
  EXPECT_EQ(0, Stored("M", 0, "MTM1"));
  EXPECT_EQ(0, Stored("M", 0, "MTM2"));
}

TEST_F(OnApply, AnotherEntryBringsTheRowsOfItsOwn) {
  Put("M", 0, "MTM1", 1);
  Put("M", 1, "MTM1", 3);
  Put("M", 1, "MTM2", 30);
  Put("M", 2, "MTM1", 9); // no timing
  SampleScreen screen(StoreTime::OnApply);
  Show(screen);
  const ListBox& source = *FieldOf(screen.fields, "cmbTiming1").list;
  screen.fields.entry = 1;
  FillFields(screen.fields);
  EXPECT_EQ(31U, source.items.size());
  EXPECT_EQ(30, source.index);
  screen.fields.entry = 2;
  FillFields(screen.fields);
  EXPECT_EQ(-1, FieldOf(screen.fields, "cmbTiming").list->index);
  EXPECT_TRUE(source.items.empty());
}

// A pair of channels shares its terminals: the second one's kinds go by the first one's.
TEST_F(OnApply, AnotherChannelBringsTheKindsOfItsOwn) {
  constexpr FieldRow kind[] = {{.control = "cmbInputType", .section = "C", .tag = "TYPE"}};
  Put("C", 0, "TYPE", 31);
  Put("C", 1, "TYPE", 31);
  Screen screen("frmSample");
  FieldSet fields(screen, kind, StoreTime::OnApply);
  FillLists(fields);
  FillFields(fields);
  const ListBox& list = *fields.fields.front().list;
  EXPECT_GT(list.items.size(), 10U);
  fields.entry = 1;
  FillFields(fields);
  EXPECT_EQ((std::vector<std::int32_t>{0, 31, 40}), list.itemData);
  EXPECT_EQ(1, list.index);
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
