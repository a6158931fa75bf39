// Rows, stored values and texts of the choice lists.
#include <gtest/gtest.h>

#include <set>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "meaning/Lists.h"
#include "meaning/Meaning.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

class ChoiceLists : public ::testing::Test {
protected:
  void Start(std::string_view model) { StartWithModel(platform, model); }
  static std::string Text(const ChoiceList& list, int value) {
    const auto text = ValueText(list, value);
    return text ? ToUtf8(*text) : "none";
  }
  ScriptedPlatform platform;
};

std::set<const ChoiceList*> EveryList() {
  std::set<const ChoiceList*> all;
  for (const MeaningRow& row : Meanings()) {
    for (const Form& form : row.forms) {
      all.insert(form.choices);
    }
    all.insert(row.meaning.otherChoices);
    all.insert(row.meaning.byDecider.begin(), row.meaning.byDecider.end());
  }
  all.erase(nullptr);
  return all;
}

TEST_F(ChoiceLists, GoFromRowToValueAndBack) {
  for (const char* model : {"KOV", "RUG"}) {
    Start(model);
    EXPECT_GT(EveryList().size(), 50U);
    for (const ChoiceList* list : EveryList()) {
      ASSERT_GT(RowCount(*list), 0) << list->name;
      for (int row = 0; row < RowCount(*list); ++row) {
        EXPECT_EQ(row, RowOfValue(*list, ValueOfRow(*list, row))) << model << " " << list->name;
        EXPECT_EQ(RowText(*list, row), ValueText(*list, ValueOfRow(*list, row))) << list->name << " " << row;
        EXPECT_TRUE(RowText(*list, row).has_value()) << model << " " << list->name << " " << row;
      }
    }
  }
}

TEST_F(ChoiceLists, FillAControlWithTheirTextsAndValues) {
  Start("KOV");
  Screen screen("frmSample");
  ListBox list(screen, "cmbList");
  AddItem(list, u"left over");
  list.index = 0;
  FillChoices(list, lists::ReportCycles);
  EXPECT_EQ((std::vector<std::u16string>{u"OFF", u"日報", u"月報", u"年報", u"外部入力"}), list.items);
  EXPECT_EQ((std::vector<std::int32_t>{15, 0, 1, 3, 6}), list.itemData);
  EXPECT_EQ(-1, list.index);
}

TEST_F(ChoiceLists, AReportCycleThatIsNoneSelectsNothingAndReadsAsOffInATable) {
  Start("KOV");
  for (const int value : {2, 4, 5, 7, -1, 32767}) {
    EXPECT_EQ(std::nullopt, RowOfValue(lists::ReportCycles, value)) << value;
    EXPECT_EQ("none", Text(lists::ReportCycles, value)) << value;
    EXPECT_EQ("OFF", Text(lists::ReportCyclesOrOff, value)) << value;
  }
}

TEST_F(ChoiceLists, TheFiveContentsOfAGroupSlotStandAtRowsOfChannels) {
  Start("KOV");
  for (int n = 0; n < 5; ++n) {
    EXPECT_EQ(19 + n, RowOfValue(lists::GroupSlots, -32768 + n)) << n;
    EXPECT_EQ(19 + n, ValueOfRow(lists::GroupSlots, 19 + n)) << n; // what is picked there is a channel
  }
  EXPECT_EQ(std::nullopt, RowOfValue(lists::GroupSlots, -32763));
  EXPECT_EQ(std::nullopt, RowOfValue(lists::GroupSlots, -1));
  EXPECT_EQ(std::nullopt, RowOfValue(lists::GroupSlots, 31));
  Start("RUG");
  EXPECT_EQ(72, RowOfValue(lists::GroupSlots, 72));
}

TEST_F(ChoiceLists, StepOverTheInputsThatAModelLacks) {
  Start("KOV");
  EXPECT_EQ(130, RowCount(lists::ExternalInputs));
  EXPECT_EQ("DI10", Text(lists::ExternalInputs, 9));
  EXPECT_EQ("ﾁｬﾈﾙ1 警報1", Text(lists::ExternalInputs, 10));
  EXPECT_EQ("無し", Text(lists::ResetInputs, 0));
  EXPECT_EQ("DI10", Text(lists::ResetInputs, 10));
  EXPECT_EQ("ﾁｬﾈﾙ1 警報1", Text(lists::ResetInputs, 11));
  EXPECT_EQ("ﾁｬﾈﾙ30 警報4", Text(lists::ResetInputs, 130));
  Start("RUG");
  EXPECT_EQ(304, RowCount(lists::ExternalInputs));
  EXPECT_EQ("DI11", Text(lists::ExternalInputs, 10));
}

TEST_F(ChoiceLists, OfMailsAndMessagesEndWithTheModelsChannels) {
  Start("KOV");
  EXPECT_EQ("ﾁｬﾈﾙ30", Text(lists::MailChannels, 29));
  EXPECT_EQ("none", Text(lists::MailChannels, 30));
  EXPECT_EQ("none", Text(lists::MailChannels, -1));
  EXPECT_EQ("DI10", Text(lists::MailInputs, 9));
  EXPECT_EQ("none", Text(lists::MailInputs, 10));
  EXPECT_EQ("チャネル30", Text(lists::MessageChannels, 30));
  EXPECT_EQ("none", Text(lists::MessageChannels, 31));
  EXPECT_EQ(10, RowCount(lists::MessageInputs));
  EXPECT_EQ("DI16", Text(lists::MessageInputs, 15)); // a table shows it, no screen offers it
  Start("RUG");
  EXPECT_EQ("ﾁｬﾈﾙ72", Text(lists::MailChannels, 71));
  EXPECT_EQ("none", Text(lists::MailChannels, 72));
}

TEST_F(ChoiceLists, OfAScreenOfferTheFirstAndTheFourthUserLevelAsZeroAndOne) {
  Start("KOV");
  EXPECT_EQ(2, RowCount(lists::OfferedLevels));
  EXPECT_EQ("管理者", Text(lists::OfferedLevels, 0));
  EXPECT_EQ("ゲスト", Text(lists::OfferedLevels, 1));
  EXPECT_EQ(std::nullopt, RowOfValue(lists::OfferedLevels, 3));
}

TEST_F(ChoiceLists, CountFromOneWhereTheStoreDoes) {
  Start("KOV");
  EXPECT_EQ(std::nullopt, RowOfValue(lists::Colours, 0));
  EXPECT_EQ(0, RowOfValue(lists::Colours, 1));
  EXPECT_EQ(13, RowOfValue(lists::Colours, 14));
  EXPECT_EQ("赤", Text(lists::Colours, 1));
  EXPECT_EQ("none", Text(lists::Colours, 0));
  EXPECT_EQ(20, RowCount(lists::Divisions));
  EXPECT_EQ(1, ValueOfRow(lists::Divisions, 0));
}

TEST_F(ChoiceLists, TagsOfGroupSlotsHaveTwoDigits) {
  EXPECT_EQ("GC01", GroupSlotTag(1));
  EXPECT_EQ("GC10", GroupSlotTag(10));
}

} // namespace
} // namespace loader::test
