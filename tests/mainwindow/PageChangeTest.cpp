// What a change of the page does: copy kind, edit commands, focus, refill of the channel tables.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

struct PageRow {
  int page;
  CopyKinds kind;
  bool editCommands;
};
void PrintTo(const PageRow& row, std::ostream* out) {
  *out << "page " << row.page;
}
constexpr PageRow PageRows[] = {
    {0, CopyKinds::Channels, true}, {1, CopyKinds::OperationChannels, true},
    {2, CopyKinds::None, false},    {3, CopyKinds::None, true},
    {4, CopyKinds::None, false},    {5, CopyKinds::None, false},
};

class PageChange : public MainWindow, public testing::WithParamInterface<PageRow> {
protected:
  void SetUp() override {
    Open("KOV");
    // From a page of the other sort, so that every effect shows.
    user.ChoosePage(Window().tbsParameter, GetParam().editCommands ? 2 : 0);
    Window().CopySourceRow = 7;
    Window().CopyKind = CopyKinds::Units;
    Window().focusRequest = nullptr;
  }
};

TEST_P(PageChange, ForgetsTheRowToCopyFromAndTakesItsTable) {
  user.ChoosePage(Window().tbsParameter, GetParam().page);
  EXPECT_EQ(0, Window().CopySourceRow);
  EXPECT_EQ(GetParam().kind, Window().CopyKind);
}

TEST_P(PageChange, EnablesCopyAndPasteOnTablePagesOnly) {
  user.ChoosePage(Window().tbsParameter, GetParam().page);
  EXPECT_EQ(GetParam().editCommands, Window().smenuCopy.enabled);
  EXPECT_EQ(GetParam().editCommands, Window().smenuPaste.enabled);
  EXPECT_TRUE(Window().V(1).enabled);
  EXPECT_EQ(GetParam().editCommands, Window().V(2).enabled);
  EXPECT_EQ(GetParam().editCommands, Window().V(3).enabled);
  EXPECT_TRUE(Window().V(4).enabled);
}

TEST_P(PageChange, MovesTheFocusToTheDisplayPeriodOnSettingsPagesOnly) {
  user.ChoosePage(Window().tbsParameter, GetParam().page);
  // On pages 4 and 5 too, although the list lies on page 2.
  EXPECT_EQ(GetParam().editCommands ? nullptr : Window().Find("cmbMainSample"), Window().focusRequest);
}

TEST_P(PageChange, HoldsWhateverCausedIt) {
  SelectPage(Window().tbsParameter, GetParam().page);
  EXPECT_EQ(0, Window().CopySourceRow);
  EXPECT_EQ(GetParam().kind, Window().CopyKind);
  EXPECT_EQ(GetParam().editCommands, Window().smenuCopy.enabled);
  EXPECT_EQ(GetParam().editCommands, Window().V(3).enabled);
}

INSTANTIATE_TEST_SUITE_P(All, PageChange, testing::ValuesIn(PageRows),
                         [](const auto& tested) { return "Page" + std::to_string(tested.param.page); });

TEST_F(KovWindow, ToolButtonsAreEnabledAgainOnATablePage) {
  Window().V(1).enabled = false;
  Window().V(4).enabled = false;
  user.ChoosePage(Window().tbsParameter, 3);
  for (int button = 1; button <= 4; ++button) {
    EXPECT_TRUE(Window().V(button).enabled) << button;
  }
}

TEST_F(KovWindow, OtherToolButtonsAreEnabledOnASettingsPage) {
  Window().V(1).enabled = false;
  Window().V(4).enabled = false;
  user.ChoosePage(Window().tbsParameter, 5);
  EXPECT_TRUE(Window().V(1).enabled);
  EXPECT_TRUE(Window().V(4).enabled);
}

// --- The refill

using PageRefill = EitherWindow;
LOADER_FOR_BOTH_MODELS(PageRefill);

TEST_P(PageRefill, RewritesEveryChannelOnPage0) {
  user.ChoosePage(Window().tbsParameter, 2);
  for (int channel = 1; channel <= Profile.ChannelCount; ++channel) {
    PutText("C", channel - 1, "TAG", "T" + std::to_string(channel));
  }
  user.ChoosePage(Window().tbsParameter, 0);
  for (int channel = 1; channel <= Profile.ChannelCount; ++channel) {
    EXPECT_EQ("T" + std::to_string(channel), ChannelCell(channel, 2));
  }
  EXPECT_TRUE(Window().fgrCh.Redraw);
}

TEST_P(PageRefill, RewritesEveryOperationChannelOnPage1) {
  const int first = Profile.FirstOperationChannel;
  for (int n = 0; n < Profile.OperationChannelCount; ++n) {
    PutText("C", first - 1 + n, "TAG", "OP" + std::to_string(n));
  }
  user.ChoosePage(Window().tbsParameter, 1);
  for (int n = 0; n < Profile.OperationChannelCount; ++n) {
    EXPECT_EQ("OP" + std::to_string(n), OperationCell(first + n, 2));
  }
  EXPECT_TRUE(Window().fgrOperationChSet.Redraw);
}

TEST_P(PageRefill, LeavesTheOtherTablesAlone) {
  PutText("M", 0, "MESS", "late");
  PutText("U", 0, "UNIT", "late");
  PutText("G", 0, "GNEM", "late");
  Put("N", 0, "CONS", 42);
  PutText("X", 0, "ETTL", "late");
  for (const int page : {1, 2, 3, 4, 5, 0}) {
    user.ChoosePage(Window().tbsParameter, page);
  }
  EXPECT_EQ("", CellText(Window().fgrMess, 1, 1));
  EXPECT_EQ("", CellText(Window().fgrUnit, 1, 1));
  EXPECT_EQ("GROUP1", CellText(Window().fgrGroup, 1, 13));
  EXPECT_EQ("0", CellText(Window().fgrConst, 1, 1));
  EXPECT_EQ("", CellText(Window().flxEMailTriggerSetting, 1, 1));
}

TEST_P(PageRefill, LeavesTheChannelTablesAloneOnTheOtherPages) {
  PutText("C", 0, "TAG", "late");
  PutText("C", Profile.FirstOperationChannel - 1, "TAG", "late");
  for (const int page : {2, 3, 4, 5}) {
    user.ChoosePage(Window().tbsParameter, page);
  }
  EXPECT_EQ("CH 01", ChannelCell(1, 2));
  EXPECT_NE("late", OperationCell(Profile.FirstOperationChannel, 2));
}

TEST_P(PageRefill, KeepsTheCurrentRow) {
  Window().fgrCh.SelectRow(9);
  user.ChoosePage(Window().tbsParameter, 3);
  user.ChoosePage(Window().tbsParameter, 0);
  EXPECT_EQ(9, Window().fgrCh.Row);
}

// --- Tables that take the focus

struct TableRow {
  const char* table;
  CopyKinds kind;
  int number;
};
void PrintTo(const TableRow& row, std::ostream* out) {
  *out << row.table;
}
class TableFocus : public MainWindow, public testing::WithParamInterface<TableRow> {
protected:
  void SetUp() override {
    Open("KOV");
    Window().CopyKind = CopyKinds::None;
    Window().CopySourceRow = 5;
  }
};

TEST_P(TableFocus, MakesItTheTableToCopyIn) {
  user.MoveTo(GridNamed(GetParam().table));
  EXPECT_EQ(GetParam().kind, Window().CopyKind);
  EXPECT_EQ(GetParam().number, static_cast<int>(Window().CopyKind));
  EXPECT_EQ(0, Window().CopySourceRow);
}

TEST_P(TableFocus, KeepsTheRowToCopyFromInTheSameTable) {
  user.MoveTo(GridNamed(GetParam().table));
  Window().CopySourceRow = 3;
  user.MoveTo(Window().cmbType);
  user.MoveTo(GridNamed(GetParam().table));
  EXPECT_EQ(3, Window().CopySourceRow);
}

INSTANTIATE_TEST_SUITE_P(All, TableFocus,
                         testing::Values(TableRow{"fgrCh", CopyKinds::Channels, 0},
                                         TableRow{"fgrMess", CopyKinds::Messages, 1},
                                         TableRow{"fgrUnit", CopyKinds::Units, 2},
                                         TableRow{"fgrOperationChSet", CopyKinds::OperationChannels, 3},
                                         TableRow{"fgrGroup", CopyKinds::Groups, 4},
                                         TableRow{"fgrConst", CopyKinds::Constants, 5}),
                         [](const auto& tested) { return std::string(tested.param.table); });

TEST_F(KovWindow, NoTableIsNumberSix) {
  EXPECT_EQ(6, static_cast<int>(CopyKinds::None));
}

TEST_F(KovWindow, DITableReactsToNothing) {
  Grid& table = Window().fgrDI;
  table.visible = true; // whether it is shown or not
  table.Resize(3, 3);
  Window().CopyKind = CopyKinds::Groups;
  Window().CopySourceRow = 5;
  EXPECT_TRUE(user.DoubleClick(table, 1, 1));
  EXPECT_EQ(CopyKinds::Groups, Window().CopyKind);
  EXPECT_EQ(5, Window().CopySourceRow);
  EXPECT_TRUE(platform.screens.shownModally.empty());
}

TEST_F(KovWindow, MailTriggerTableIsNoTableToCopyIn) {
  user.ChoosePage(Window().tbsParameter, 5);
  Window().CopySourceRow = 5;
  EXPECT_TRUE(user.MoveTo(Window().flxEMailTriggerSetting));
  EXPECT_EQ(CopyKinds::None, Window().CopyKind);
  EXPECT_EQ(5, Window().CopySourceRow);
}

TEST_F(KovWindow, DisplayPageKeepsCopyAndPasteThoughNoTableIsChosen) {
  user.ChoosePage(Window().tbsParameter, 3);
  EXPECT_EQ(CopyKinds::None, Window().CopyKind);
  const auto numbers = AllNumbers();
  EXPECT_TRUE(user.Click(Window().smenuCopy));
  EXPECT_TRUE(user.Click(Window().smenuPaste));
  EXPECT_TRUE(user.Click(Window().V(2)));
  EXPECT_TRUE(user.Click(Window().V(3)));
  EXPECT_EQ(CopyKinds::None, Window().CopyKind);
  EXPECT_EQ(0, Window().CopySourceRow);
  EXPECT_EQ(numbers, AllNumbers());
}

} // namespace
} // namespace loader::test
