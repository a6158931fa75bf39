// The cells of messages, units, constants and groups.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

constexpr const char* Left = nullptr; // the cell stays as it was

std::string Expected(const char* text) {
  return text == Left ? "as it was" : text;
}

// --- Messages

struct MessageRow {
  const char* name;
  int timing;
  int source;
  int alarm;
  const char* timingText;
  const char* sourceText;
  const char* alarmText;
};
void PrintTo(const MessageRow& row, std::ostream* out) {
  *out << row.name;
}
class MessageCell : public MainWindow, public testing::WithParamInterface<MessageRow> {
protected:
  void Expect() {
    Put("M", 2, "MTM1", GetParam().timing);
    Put("M", 2, "MTM2", GetParam().source);
    Put("M", 2, "MTM3", GetParam().alarm);
    for (const int column : {2, 3, 4}) {
      Mark(Window().fgrMess, 3, column);
    }
    FillMessageRow(3);
    EXPECT_EQ(Expected(GetParam().timingText), CellText(Window().fgrMess, 3, 2));
    EXPECT_EQ(Expected(GetParam().sourceText), CellText(Window().fgrMess, 3, 3));
    EXPECT_EQ(Expected(GetParam().alarmText), CellText(Window().fgrMess, 3, 4));
  }
};
TEST_P(MessageCell, FollowsTheTimingOnKov) {
  Open("KOV");
  Expect();
}
TEST_P(MessageCell, FollowsTheTimingOnRug) {
  Open("RUG");
  Expect();
}
INSTANTIATE_TEST_SUITE_P(
    Timings, MessageCell,
    testing::Values(MessageRow{"NoneWhateverTheRestHolds", 0, 5, 3, "無し", "", ""},
                    MessageRow{"NoneWithBadRest", 0, -1, 32767, "無し", "", ""},
                    MessageRow{"DIOnFirst", 1, 0, 0, "DI ON", "DI1", ""},
                    MessageRow{"DIOnLast", 1, 15, 2, "DI ON", "DI16", ""},
                    MessageRow{"DIOnOutside", 1, 16, 0, "DI ON", Left, ""},
                    MessageRow{"DIOnNegative", 1, -1, 0, "DI ON", Left, ""},
                    MessageRow{"DIOff", 2, 9, 3, "DI OFF", "DI10", ""},
                    MessageRow{"DIOffOutside", 2, 16, 3, "DI OFF", Left, ""},
                    MessageRow{"AlarmNoChannel", 3, 0, 0, "警報発生", "無し", "1"},
                    MessageRow{"AlarmFirstChannel", 3, 1, 1, "警報発生", "チャネル1", "2"},
                    MessageRow{"AlarmLastChannelOfTheSmallerModel", 3, 30, 3, "警報発生", "チャネル30", "4"},
                    MessageRow{"AlarmOutside", 3, 73, 4, "警報発生", Left, Left},
                    MessageRow{"AlarmNegative", 3, -1, -1, "警報発生", Left, Left},
                    MessageRow{"AlarmCleared", 4, 30, 2, "警報解除", "チャネル30", "3"},
                    MessageRow{"AlarmClearedOutside", 4, 73, 4, "警報解除", Left, Left},
                    MessageRow{"TimingOutside", 5, 1, 1, Left, Left, Left},
                    MessageRow{"TimingNegative", -1, 1, 1, Left, Left, Left}),
    [](const auto& tested) { return std::string(tested.param.name); });

class MessageChannel : public MainWindow {
protected:
  // What the cell shows that held Before.
  static constexpr const char* Before = "before";
  std::string Shown(int channel) {
    Put("M", 0, "MTM1", 3);
    Put("M", 0, "MTM2", channel);
    Window().fgrMess.SetText(1, 3, FromUtf8(Before));
    FillMessageRow(1);
    return CellText(Window().fgrMess, 1, 3);
  }
};

TEST_F(MessageChannel, IsOneOfTheModelsOwnOnKov) {
  Open("KOV");
  EXPECT_EQ("チャネル30", Shown(30)); // 18 measuring and 12 operation channels
  EXPECT_EQ(Before, Shown(31));
  EXPECT_EQ(Before, Shown(72));
}

TEST_F(MessageChannel, IsOneOfTheModelsOwnOnRug) {
  Open("RUG");
  EXPECT_EQ("チャネル72", Shown(72)); // 36 and 36
  EXPECT_EQ(Before, Shown(73));
}

using SmallTables = EitherWindow;
LOADER_FOR_BOTH_MODELS(SmallTables);

TEST_P(SmallTables, MessageIsShownWithoutTrailingBlanks) {
  PutText("M", 9, "MESS", " 運転開始  ");
  FillMessageRow(10);
  EXPECT_EQ(" 運転開始", CellText(Window().fgrMess, 10, 1));
}

TEST_P(SmallTables, MessageRowsAreNumbered) {
  Window().fgrMess.SetText(4, 0, {});
  FillMessageRow(4);
  EXPECT_EQ("NO.4", CellText(Window().fgrMess, 4, 0));
}

// --- Units

TEST_P(SmallTables, UnitIsShownWithoutTrailingBlanks) {
  PutText("U", 11, "UNIT", " kg/m ");
  FillUnitRow(12);
  EXPECT_EQ(" kg/m", CellText(Window().fgrUnit, 12, 1));
  EXPECT_EQ("NO.12", CellText(Window().fgrUnit, 12, 0));
}

TEST_P(SmallTables, UnitTableLeavesTheUnitListAlone) {
  UnitNames.at(156) = u"old";
  PutText("U", 0, "UNIT", "new");
  RefreshAll();
  EXPECT_EQ("new", CellText(Window().fgrUnit, 1, 1));
  EXPECT_EQ(u"old", UnitNames.at(156));
}

// --- Constants

TEST_P(SmallTables, ConstantStandsAtItsOwnPosition) {
  struct Constant {
    int value;
    int point;
    const char* text;
  };
  for (const Constant& constant :
       {Constant{0, 0, "0"}, Constant{12345, 0, "12345"}, Constant{12345, 1, "1234.5"},
        Constant{12345, 2, "123.45"}, Constant{12345, 3, "12.345"}, Constant{12345, 4, "1.2345"},
        Constant{-5, 3, "-0.005"}, Constant{32767, 0, "32767"}, Constant{-32767, 0, "-32767"},
        Constant{-32768, 0, ""}}) {
    Put("N", 0, "CONS", constant.value);
    Put("N", 0, "CONP", constant.point);
    FillConstantRow(1);
    EXPECT_EQ(constant.text, CellText(Window().fgrConst, 1, 1)) << constant.value << " " << constant.point;
  }
}

TEST_P(SmallTables, ConstantOutsideItsRecordsLimitsIsBlank) {
  PutLimits("N", 1, "CONS", -10, 10);
  Put("N", 1, "CONS", 11);
  FillConstantRow(2);
  EXPECT_EQ("", CellText(Window().fgrConst, 2, 1));
  Put("N", 1, "CONS", 10);
  FillConstantRow(2);
  EXPECT_EQ("10", CellText(Window().fgrConst, 2, 1));
}

TEST_P(SmallTables, LastConstantIsThatOfTheModel) {
  Put("N", Profile.ConstantCount - 1, "CONS", 7);
  FillConstantRow(Profile.ConstantCount);
  EXPECT_EQ("7", CellText(Window().fgrConst, Profile.ConstantCount, 1));
}

// --- Groups: lists

struct GroupCellRow {
  const char* section;
  const char* tag;
  int value;
  int column;
  const char* text;
};
void PrintTo(const GroupCellRow& row, std::ostream* out) {
  *out << row.tag << "=" << row.value;
}
class GroupCell : public MainWindow, public testing::WithParamInterface<GroupCellRow> {};
TEST_P(GroupCell, ShowsWhatTheGroupHolds) {
  for (const char* model : {"KOV", "RUG"}) {
    frmParamLoader.reset();
    Open(model);
    const int last = Profile.GroupCount - 1;
    Put(GetParam().section, last, GetParam().tag, GetParam().value);
    Mark(Window().fgrGroup, last + 1, GetParam().column);
    FillGroupTable();
    EXPECT_EQ(Expected(GetParam().text), CellText(Window().fgrGroup, last + 1, GetParam().column)) << model;
  }
}
const auto NameByTagAndValue = [](const auto& tested) {
  const int value = tested.param.value;
  return std::string(tested.param.tag) + (value < 0 ? "Minus" : "") + std::to_string(std::abs(value));
};
INSTANTIATE_TEST_SUITE_P(
    Lists, GroupCell,
    testing::Values(GroupCellRow{"B", "BBRM", -1, 1, Left}, GroupCellRow{"B", "BBRM", 0, 1, "バーグラフ"},
                    GroupCellRow{"B", "BBRM", 1, 1, "アナログメータ"}, GroupCellRow{"B", "BBRM", 2, 1, Left},
                    GroupCellRow{"T", "TPVD", -1, 2, Left}, GroupCellRow{"T", "TPVD", 0, 2, "ﾁｬﾈﾙNo.表示"},
                    GroupCellRow{"T", "TPVD", 1, 2, "ﾀｸﾞNo.表示"},
                    GroupCellRow{"T", "TPVD", 2, 2, "単位表示"}, GroupCellRow{"T", "TPVD", 3, 2, Left}),
    NameByTagAndValue);

// Compared with 1: anything else is up and down.
INSTANTIATE_TEST_SUITE_P(TrendDirection, GroupCell,
                         testing::Values(GroupCellRow{"T", "THOU", 0, 14, "上下"},
                                         GroupCellRow{"T", "THOU", 1, 14, "左右"},
                                         GroupCellRow{"T", "THOU", 2, 14, "上下"},
                                         GroupCellRow{"T", "THOU", -1, 14, "上下"},
                                         GroupCellRow{"T", "THOU", 32767, 14, "上下"}),
                         NameByTagAndValue);

INSTANTIATE_TEST_SUITE_P(Divisions, GroupCell,
                         testing::Values(GroupCellRow{"T", "TBUN", 1, 15, "1"},
                                         GroupCellRow{"T", "TBUN", 20, 15, "20"},
                                         GroupCellRow{"T", "TBUN", 0, 15, "0"},
                                         GroupCellRow{"T", "TBUN", -32768, 15, "-32768"},
                                         GroupCellRow{"T", "TBUN", 32767, 15, "32767"}),
                         NameByTagAndValue);

// The five special contents stand at entries 19 to 23.
INSTANTIATE_TEST_SUITE_P(SpecialContents, GroupCell,
                         testing::Values(GroupCellRow{"G", "GC01", -32768, 3, "ﾁｬﾈﾙ１９"},
                                         GroupCellRow{"G", "GC02", -32767, 4, "ﾁｬﾈﾙ２０"},
                                         GroupCellRow{"G", "GC03", -32766, 5, "ﾁｬﾈﾙ２１"},
                                         GroupCellRow{"G", "GC04", -32765, 6, "ﾁｬﾈﾙ２２"},
                                         GroupCellRow{"G", "GC05", -32764, 7, "ﾁｬﾈﾙ２３"},
                                         GroupCellRow{"G", "GC06", -32763, 8, Left},
                                         GroupCellRow{"G", "GC07", -1, 9, Left}),
                         NameByTagAndValue);

INSTANTIATE_TEST_SUITE_P(
    Slots, GroupCell,
    testing::Values(GroupCellRow{"G", "GC01", 0, 3, "ﾁｬﾈﾙ無し"}, GroupCellRow{"G", "GC01", 1, 3, "ﾁｬﾈﾙ１"},
                    GroupCellRow{"G", "GC02", 2, 4, "ﾁｬﾈﾙ２"}, GroupCellRow{"G", "GC03", 3, 5, "ﾁｬﾈﾙ３"},
                    GroupCellRow{"G", "GC04", 4, 6, "ﾁｬﾈﾙ４"}, GroupCellRow{"G", "GC05", 5, 7, "ﾁｬﾈﾙ５"},
                    GroupCellRow{"G", "GC06", 6, 8, "ﾁｬﾈﾙ６"}, GroupCellRow{"G", "GC07", 7, 9, "ﾁｬﾈﾙ７"},
                    GroupCellRow{"G", "GC08", 8, 10, "ﾁｬﾈﾙ８"}, GroupCellRow{"G", "GC09", 9, 11, "ﾁｬﾈﾙ９"},
                    GroupCellRow{"G", "GC10", 30, 12, "ﾁｬﾈﾙ３０"}, GroupCellRow{"G", "GC10", 73, 12, Left},
                    GroupCellRow{"G", "GC10", 32767, 12, Left}),
    NameByTagAndValue);

// A slot takes the channels that the model has.
TEST_F(KovWindow, GroupSlotEndsAtTheLastChannelOfTheModel) {
  Put("G", 0, "GC10", 31);
  Mark(Window().fgrGroup, 1, 12);
  FillGroupTable();
  EXPECT_EQ("as it was", CellText(Window().fgrGroup, 1, 12));
}
TEST_F(RugWindow, GroupSlotEndsAtTheLastChannelOfTheModel) {
  Put("G", 0, "GC09", 31);
  Put("G", 0, "GC10", 72);
  FillGroupTable();
  EXPECT_EQ("ﾁｬﾈﾙ３１", CellText(Window().fgrGroup, 1, 11));
  EXPECT_EQ("ﾁｬﾈﾙ７２", CellText(Window().fgrGroup, 1, 12));
}

TEST_F(KovWindow, GroupShowsAsManySlotsAsTheModelHas) {
  for (int slot = 1; slot <= 10; ++slot) {
    Mark(Window().fgrGroup, 1, 2 + slot);
  }
  Profile.GroupChannelLast = 5;
  FillGroupTable();
  EXPECT_EQ("ﾁｬﾈﾙ無し", CellText(Window().fgrGroup, 1, 8));
  EXPECT_EQ("as it was", CellText(Window().fgrGroup, 1, 9));
}

// --- Groups: the walk

TEST_P(SmallTables, GroupsWalkTheirThreeSectionsInParallel) {
  for (int item = 0; item < Profile.GroupCount; ++item) {
    PutText("G", item, "GNEM", " 系統" + std::to_string(item) + "  ");
    Put("T", item, "TBUN", 10 + item);
    Put("B", item, "BBRM", item % 2);
  }
  FillGroupTable();
  for (int item = 0; item < Profile.GroupCount; ++item) {
    const Grid& grid = Window().fgrGroup;
    EXPECT_EQ(" 系統" + std::to_string(item), CellText(grid, item + 1, 13));
    EXPECT_EQ(std::to_string(10 + item), CellText(grid, item + 1, 15));
    EXPECT_EQ(item % 2 == 0 ? "バーグラフ" : "アナログメータ", CellText(grid, item + 1, 1));
    EXPECT_EQ(CellAlignment::Left, grid.CellAt(item + 1, 13).alignment);
  }
  EXPECT_TRUE(Window().fgrGroup.Redraw);
}

TEST_P(SmallTables, GroupsWithoutTheirBarSectionLeaveItsColumn) {
  DropSection("B");
  Mark(Window().fgrGroup, 1, 1);
  PutText("G", 0, "GNEM", "new");
  FillGroupTable();
  EXPECT_EQ("as it was", CellText(Window().fgrGroup, 1, 1));
  EXPECT_EQ("new", CellText(Window().fgrGroup, 1, 13));
}

TEST_P(SmallTables, MissingTagsLeaveTheirCells) {
  struct Missing {
    const char* section;
    const char* tag;
    const char* table;
    int column;
  };
  for (const Missing& missing : {Missing{"M", "MESS", "fgrMess", 1}, Missing{"M", "MTM1", "fgrMess", 2},
                                 Missing{"U", "UNIT", "fgrUnit", 1}, Missing{"N", "CONS", "fgrConst", 1},
                                 Missing{"T", "TPVD", "fgrGroup", 2}, Missing{"G", "GC03", "fgrGroup", 5},
                                 Missing{"G", "GNEM", "fgrGroup", 13}, Missing{"T", "THOU", "fgrGroup", 14},
                                 Missing{"T", "TBUN", "fgrGroup", 15}}) {
    DropTag(missing.section, missing.tag);
    Mark(GridNamed(missing.table), 1, missing.column);
    RefreshAll();
    EXPECT_EQ("as it was", CellText(GridNamed(missing.table), 1, missing.column)) << missing.tag;
  }
}

} // namespace
} // namespace loader::test
