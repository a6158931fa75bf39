// What the cells of the channel tables show of lists, texts, colours and plain numbers.
#include <optional>

#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

constexpr int FirstOperationOfKov = 19;

// --- Cells that show an entry of a list

constexpr const char* Left = nullptr; // the cell stays as it was

struct ListCell {
  int column;                  // of fgrCh
  std::optional<int> opColumn; // of fgrOperationChSet
  const char* section;
  const char* tag;
  int value;
  const char* text;
};
void PrintTo(const ListCell& cell, std::ostream* out) {
  *out << cell.tag << "=" << cell.value << ": " << (cell.text == Left ? "left" : cell.text);
}
const auto NameByTagAndValue = [](const auto& tested) {
  const int value = tested.param.value;
  return std::string(tested.param.tag) + (value < 0 ? "Minus" : "") + std::to_string(std::abs(value));
};

class ListCellTest : public MainWindow, public testing::WithParamInterface<ListCell> {
protected:
  static std::string Expected() { return GetParam().text == Left ? "as it was" : GetParam().text; }
};

// In both channel tables where both have the column.
TEST_P(ListCellTest, ShowsTheEntryAtTheStoredValue) {
  Open("KOV");
  Put(GetParam().section, 1, GetParam().tag, GetParam().value);
  Mark(Window().fgrCh, 3, GetParam().column);
  FillChannelRow(2);
  EXPECT_EQ(Expected(), ChannelCell(2, GetParam().column));
  if (GetParam().opColumn) {
    Put(GetParam().section, FirstOperationOfKov, GetParam().tag, GetParam().value);
    Mark(Window().fgrOperationChSet, 3, *GetParam().opColumn);
    FillOperationRow(FirstOperationOfKov + 1);
    EXPECT_EQ(Expected(), OperationCell(FirstOperationOfKov + 1, *GetParam().opColumn));
  }
}

INSTANTIATE_TEST_SUITE_P(
    InputKinds, ListCellTest,
    testing::Values(ListCell{4, 8, "C", "TYPE", -32768, Left}, ListCell{4, 8, "C", "TYPE", -1, Left},
                    ListCell{4, 8, "C", "TYPE", 0, "ｽｷｯﾌﾟ"}, ListCell{4, 8, "C", "TYPE", 1, "K熱電対"},
                    ListCell{4, 8, "C", "TYPE", 2, "E熱電対"}, ListCell{4, 8, "C", "TYPE", 3, "J熱電対"},
                    ListCell{4, 8, "C", "TYPE", 4, "T熱電対"}, ListCell{4, 8, "C", "TYPE", 5, "R熱電対"},
                    ListCell{4, 8, "C", "TYPE", 6, "S熱電対"}, ListCell{4, 8, "C", "TYPE", 7, "B熱電対"},
                    ListCell{4, 8, "C", "TYPE", 8, "N熱電対"}, ListCell{4, 8, "C", "TYPE", 9, "W熱電対"},
                    ListCell{4, 8, "C", "TYPE", 10, "L熱電対"}, ListCell{4, 8, "C", "TYPE", 11, "U熱電対"},
                    ListCell{4, 8, "C", "TYPE", 12, "PN熱電対"}, ListCell{4, 8, "C", "TYPE", 13, ""},
                    ListCell{4, 8, "C", "TYPE", 20, "Pt100"}, ListCell{4, 8, "C", "TYPE", 21, "JPt100"},
                    ListCell{4, 8, "C", "TYPE", 22, ""}, ListCell{4, 8, "C", "TYPE", 30, "50mV"},
                    ListCell{4, 8, "C", "TYPE", 31, "500mV"}, ListCell{4, 8, "C", "TYPE", 32, "1-5V"},
                    ListCell{4, 8, "C", "TYPE", 33, "0-5V"}, ListCell{4, 8, "C", "TYPE", 34, ""},
                    ListCell{4, 8, "C", "TYPE", 40, "他ﾁｬﾈﾙ"}, ListCell{4, 8, "C", "TYPE", 41, ""},
                    ListCell{4, 8, "C", "TYPE", 42, Left}, ListCell{4, 8, "C", "TYPE", 32767, Left}),
    NameByTagAndValue);

// The other channel counts from 0, without an entry for "none".
INSTANTIATE_TEST_SUITE_P(OtherChannel, ListCellTest,
                         testing::Values(ListCell{5, std::nullopt, "C", "OTCH", -1, Left},
                                         ListCell{5, std::nullopt, "C", "OTCH", 0, "チャネル1"},
                                         ListCell{5, std::nullopt, "C", "OTCH", 29, "チャネル30"},
                                         ListCell{5, std::nullopt, "C", "OTCH", 71, "チャネル72"},
                                         ListCell{5, std::nullopt, "C", "OTCH", 72, Left}),
                         NameByTagAndValue);

INSTANTIATE_TEST_SUITE_P(
    Units, ListCellTest,
    testing::Values(ListCell{7, 10, "C", "UNIT", -1, Left}, ListCell{7, 10, "C", "UNIT", 0, "゜C"},
                    ListCell{7, 10, "C", "UNIT", 1, "゜F"}, ListCell{7, 10, "C", "UNIT", 4, ""},
                    ListCell{7, 10, "C", "UNIT", 114, "mV"}, ListCell{7, 10, "C", "UNIT", 151, "mPa･s"},
                    ListCell{7, 10, "C", "UNIT", 167, ""}, ListCell{7, 10, "C", "UNIT", 168, Left},
                    ListCell{35, 38, "C", "SEUN", -1, Left}, ListCell{35, 38, "C", "SEUN", 0, "゜C"},
                    ListCell{35, 38, "C", "SEUN", 53, "m3"}, ListCell{35, 38, "C", "SEUN", 167, ""},
                    ListCell{35, 38, "C", "SEUN", 168, Left}),
    NameByTagAndValue);

INSTANTIATE_TEST_SUITE_P(
    Switches, ListCellTest,
    testing::Values(ListCell{8, 11, "C", "SCAL", -1, Left}, ListCell{8, 11, "C", "SCAL", 0, "OFF"},
                    ListCell{8, 11, "C", "SCAL", 1, "ON"}, ListCell{8, 11, "C", "SCAL", 2, Left},
                    ListCell{13, 16, "C", "ROOT", -1, Left}, ListCell{13, 16, "C", "ROOT", 0, "OFF"},
                    ListCell{13, 16, "C", "ROOT", 1, "ON"}, ListCell{13, 16, "C", "ROOT", 2, Left},
                    ListCell{14, 17, "C", "TAIS", -1, Left}, ListCell{14, 17, "C", "TAIS", 0, "OFF"},
                    ListCell{14, 17, "C", "TAIS", 1, "ON"}, ListCell{14, 17, "C", "TAIS", 2, Left},
                    ListCell{28, 31, "C", "FTIO", -1, Left}, ListCell{28, 31, "C", "FTIO", 0, "OFF"},
                    ListCell{28, 31, "C", "FTIO", 1, "ON"}, ListCell{28, 31, "C", "FTIO", 2, Left},
                    ListCell{34, 37, "C", "SRES", -1, Left}, ListCell{34, 37, "C", "SRES", 0, "OFF"},
                    ListCell{34, 37, "C", "SRES", 1, "ON"}, ListCell{34, 37, "C", "SRES", 2, Left}),
    NameByTagAndValue);

INSTANTIATE_TEST_SUITE_P(
    Recording, ListCellTest,
    testing::Values(ListCell{15, 18, "C", "SUBC", -1, Left}, ListCell{15, 18, "C", "SUBC", 0, "差演算無し"},
                    ListCell{15, 18, "C", "SUBC", 1, "ﾁｬﾈﾙ１"}, ListCell{15, 18, "C", "SUBC", 30, "ﾁｬﾈﾙ３０"},
                    ListCell{15, 18, "C", "SUBC", 31, "ﾁｬﾈﾙ３１"},
                    ListCell{15, 18, "C", "SUBC", 72, "ﾁｬﾈﾙ７２"}, ListCell{15, 18, "C", "SUBC", 73, Left},
                    ListCell{19, 22, "C", "RECO", -1, Left}, ListCell{19, 22, "C", "RECO", 0, "記録有り"},
                    ListCell{19, 22, "C", "RECO", 1, "表示のみ"}, ListCell{19, 22, "C", "RECO", 2, Left},
                    ListCell{20, 23, "C", "RECM", -1, Left}, ListCell{20, 23, "C", "RECM", 0, "最大最小記録"},
                    ListCell{20, 23, "C", "RECM", 1, "瞬時値記録"},
                    ListCell{20, 23, "C", "RECM", 2, "平均値記録"}, ListCell{20, 23, "C", "RECM", 3, Left}),
    NameByTagAndValue);

INSTANTIATE_TEST_SUITE_P(
    Totals, ListCellTest,
    testing::Values(ListCell{30, 33, "C", "SEKI", -1, Left}, ListCell{30, 33, "C", "SEKI", 0, "入力値の積算"},
                    ListCell{30, 33, "C", "SEKI", 1, "カウンタ"},
                    ListCell{30, 33, "C", "SEKI", 2, "時間測定"}, ListCell{30, 33, "C", "SEKI", 3, Left},
                    ListCell{33, 36, "C", "SBAS", -1, Left}, ListCell{33, 36, "C", "SBAS", 0, "/s"},
                    ListCell{33, 36, "C", "SBAS", 1, "/min"}, ListCell{33, 36, "C", "SBAS", 2, "/h"},
                    ListCell{33, 36, "C", "SBAS", 3, "/day"}, ListCell{33, 36, "C", "SBAS", 4, Left}),
    NameByTagAndValue);

// The stored report cycles are no row numbers; what is no cycle is OFF.
INSTANTIATE_TEST_SUITE_P(
    ReportCycles, ListCellTest,
    testing::Values(ListCell{31, 34, "C", "STYP", 0, "日報"}, ListCell{31, 34, "C", "STYP", 1, "月報"},
                    ListCell{31, 34, "C", "STYP", 3, "年報"}, ListCell{31, 34, "C", "STYP", 6, "外部入力"},
                    ListCell{31, 34, "C", "STYP", 15, "OFF"}, ListCell{31, 34, "C", "STYP", 2, "OFF"},
                    ListCell{31, 34, "C", "STYP", 4, "OFF"}, ListCell{31, 34, "C", "STYP", 5, "OFF"},
                    ListCell{31, 34, "C", "STYP", 7, "OFF"}, ListCell{31, 34, "C", "STYP", 16, "OFF"},
                    ListCell{31, 34, "C", "STYP", -1, "OFF"}, ListCell{31, 34, "C", "STYP", 32767, "OFF"},
                    ListCell{31, 34, "C", "STYP", -32768, "OFF"}),
    NameByTagAndValue);

// The lists have 16 digital inputs; this model has 10 and steps over the last six.
INSTANTIATE_TEST_SUITE_P(
    ExternalInputsOfKov, ListCellTest,
    testing::Values(
        ListCell{32, 35, "C", "SDIG", -32768, Left}, ListCell{32, 35, "C", "SDIG", -1, Left},
        ListCell{32, 35, "C", "SDIG", 0, "DI1"}, ListCell{32, 35, "C", "SDIG", 9, "DI10"},
        ListCell{32, 35, "C", "SDIG", 10, "ﾁｬﾈﾙ1 警報1"}, ListCell{32, 35, "C", "SDIG", 13, "ﾁｬﾈﾙ1 警報4"},
        ListCell{32, 35, "C", "SDIG", 129, "ﾁｬﾈﾙ30 警報4"},
        ListCell{32, 35, "C", "SDIG", 297, "ﾁｬﾈﾙ72 警報4"}, ListCell{32, 35, "C", "SDIG", 298, Left},
        ListCell{32, 35, "C", "SDIG", 32767, Left}, ListCell{38, 41, "C", "SRIN", -1, Left},
        ListCell{38, 41, "C", "SRIN", 0, "無し"}, ListCell{38, 41, "C", "SRIN", 1, "DI1"},
        ListCell{38, 41, "C", "SRIN", 10, "DI10"}, ListCell{38, 41, "C", "SRIN", 11, "ﾁｬﾈﾙ1 警報1"},
        ListCell{38, 41, "C", "SRIN", 130, "ﾁｬﾈﾙ30 警報4"},
        ListCell{38, 41, "C", "SRIN", 298, "ﾁｬﾈﾙ72 警報4"}, ListCell{38, 41, "C", "SRIN", 299, Left},
        ListCell{38, 41, "C", "SRIN", -32768, Left}, ListCell{38, 41, "C", "SRIN", 32767, Left}),
    NameByTagAndValue);

INSTANTIATE_TEST_SUITE_P(
    Alarms, ListCellTest,
    testing::Values(ListCell{39, 42, "A", "A1TY", -1, Left}, ListCell{39, 42, "A", "A1TY", 0, "OFF"},
                    ListCell{39, 42, "A", "A1TY", 1, "H"}, ListCell{39, 42, "A", "A1TY", 2, "L"},
                    ListCell{39, 42, "A", "A1TY", 3, Left}, ListCell{43, 46, "A", "A2TY", 1, "H"},
                    ListCell{43, 46, "A", "A2TY", 3, Left}, ListCell{47, 50, "A", "A3TY", 2, "L"},
                    ListCell{47, 50, "A", "A3TY", 3, Left}, ListCell{51, 54, "A", "A4TY", 1, "H"},
                    ListCell{51, 54, "A", "A4TY", 3, Left}, ListCell{42, 45, "A", "A1RL", -1, Left},
                    ListCell{42, 45, "A", "A1RL", 0, "無し"}, ListCell{42, 45, "A", "A1RL", 1, "1"},
                    ListCell{42, 45, "A", "A1RL", 36, "36"}, ListCell{42, 45, "A", "A1RL", 37, Left},
                    ListCell{46, 49, "A", "A2RL", 2, "2"}, ListCell{46, 49, "A", "A2RL", 37, Left},
                    ListCell{50, 53, "A", "A3RL", 28, "28"}, ListCell{50, 53, "A", "A3RL", 37, Left},
                    ListCell{54, 57, "A", "A4RL", 4, "4"}, ListCell{54, 57, "A", "A4RL", 37, Left}),
    NameByTagAndValue);

// --- External inputs of the model with 16 digital inputs

struct RugInput {
  int value;
  const char* text;
};
TEST_F(RugWindow, ExternalInputIsTheEntryAtItsValue) {
  for (const RugInput& input :
       {RugInput{0, "DI1"}, RugInput{9, "DI10"}, RugInput{10, "DI11"}, RugInput{15, "DI16"},
        RugInput{16, "ﾁｬﾈﾙ1 警報1"}, RugInput{303, "ﾁｬﾈﾙ72 警報4"}, RugInput{304, "as it was"},
        RugInput{-1, "as it was"}}) {
    Put("C", 0, "SDIG", input.value);
    Mark(Window().fgrCh, 2, 32);
    FillChannelRow(1);
    EXPECT_EQ(input.text, ChannelCell(1, 32)) << input.value;
  }
}

TEST_F(RugWindow, ResetInputIsNotEvenRead) {
  for (const int value : {0, 1, 10, 11, 130, 299, -1}) {
    Put("C", 0, "SRIN", value);
    Put("C", 36, "SRIN", value);
    FillChannelRow(1);
    FillOperationRow(37);
    EXPECT_EQ("", ChannelCell(1, 38)) << value;
    EXPECT_EQ("", OperationCell(37, 41)) << value;
  }
}

TEST_F(KovWindow, UserUnitShowsInTheChannels) {
  UnitNames.at(156) = u"kg/m";
  UnitNames.at(167) = u"rev";
  Put("C", 0, "UNIT", 156);
  Put("C", 0, "SEUN", 167);
  FillChannelRow(1);
  EXPECT_EQ("kg/m", ChannelCell(1, 7));
  EXPECT_EQ("rev", ChannelCell(1, 35));
}

// --- Tags

struct TagColumn {
  const char* tag;
  int column;
  int opColumn;
};
void PrintTo(const TagColumn& row, std::ostream* out) {
  *out << row.tag;
}
class TagCell : public MainWindow, public testing::WithParamInterface<TagColumn> {
protected:
  void SetUp() override { Open("KOV"); }
};
TEST_P(TagCell, ShowsTheTextWithoutTrailingBlanks) {
  PutText("C", 0, GetParam().tag, "  炉 1  ");
  PutText("C", 18, GetParam().tag, "  演算 1  ");
  FillChannelRow(1);
  FillOperationRow(19);
  EXPECT_EQ("  炉 1", ChannelCell(1, GetParam().column));
  EXPECT_EQ("  演算 1", OperationCell(19, GetParam().opColumn));
  EXPECT_EQ(CellAlignment::Left, Window().fgrCh.CellAt(2, GetParam().column).alignment);
  EXPECT_EQ(CellAlignment::Left, Window().fgrOperationChSet.CellAt(2, GetParam().opColumn).alignment);
}
TEST_P(TagCell, ShowsAllSixtyFourCharacters) {
  const std::string text(64, 'x');
  PutText("C", 0, GetParam().tag, text);
  FillChannelRow(1);
  EXPECT_EQ(text, ChannelCell(1, GetParam().column));
}
TEST_P(TagCell, IsEmptyForAnEmptyTag) {
  Mark(Window().fgrCh, 2, GetParam().column);
  PutText("C", 0, GetParam().tag, "");
  FillChannelRow(1);
  EXPECT_EQ("", ChannelCell(1, GetParam().column));
}
INSTANTIATE_TEST_SUITE_P(Tags, TagCell,
                         testing::Values(TagColumn{"TAG", 2, 2}, TagColumn{"TAG2", 3, 3},
                                         TagColumn{"STAG", 29, 32}),
                         [](const auto& tested) { return std::string(tested.param.tag); });

// --- The colour

struct ColourRow {
  int value;
  Colour colour;
};
void PrintTo(const ColourRow& row, std::ostream* out) {
  *out << "colour " << row.value;
}
class ColourCell : public MainWindow, public testing::WithParamInterface<ColourRow> {
protected:
  void SetUp() override { Open("KOV"); }
};
TEST_P(ColourCell, IsPaintedWithoutText) {
  Put("C", 0, "COLR", GetParam().value);
  Put("C", 18, "COLR", GetParam().value);
  FillChannelRow(1);
  FillOperationRow(19);
  EXPECT_EQ(GetParam().colour, ChannelBack(1, 1));
  EXPECT_EQ(GetParam().colour, OperationBack(19, 1));
  EXPECT_EQ("", ChannelCell(1, 1));
  EXPECT_EQ("", OperationCell(19, 1));
}
INSTANTIATE_TEST_SUITE_P(Table, ColourCell,
                         testing::Values(ColourRow{1, 0xFF0000}, ColourRow{2, 0x0000FF},
                                         ColourRow{3, 0x800080}, ColourRow{4, 0x008000},
                                         ColourRow{5, 0x00FFFF}, ColourRow{6, 0xFFFF00},
                                         ColourRow{7, 0x808080}, ColourRow{8, 0x000080},
                                         ColourRow{9, 0x965036}, ColourRow{10, 0x674196},
                                         ColourRow{11, 0x007B43}, ColourRow{12, 0x00A3AF},
                                         ColourRow{13, 0x928C36}, ColourRow{14, 0xAFAFB0}),
                         [](const auto& tested) { return "Colour" + std::to_string(tested.param.value); });

TEST_F(KovWindow, ColourOutsideTheTableLeavesTheCell) {
  Put("C", 0, "COLR", 3);
  FillChannelRow(1);
  for (const int value : {0, 15, -1, 32767, -32768}) {
    Put("C", 0, "COLR", value);
    FillChannelRow(1);
    EXPECT_EQ(0x800080U, ChannelBack(1, 1)) << value;
  }
}

// --- Plain numbers

TEST_F(KovWindow, FilterSlopeAndDivisorStandAtPosition0WhateverThePoint) {
  for (const int point : {0, 2, 4}) {
    Put("C", 0, "POIN", point);
    Put("C", 0, "FILT", 25);
    Put("C", 0, "PVKA", 105);
    Put("C", 0, "SSCL", 1000);
    FillChannelRow(1);
    EXPECT_EQ("25", ChannelCell(1, 6));
    EXPECT_EQ("105", ChannelCell(1, 27));
    EXPECT_EQ("1000", ChannelCell(1, 36));
  }
}

TEST_F(KovWindow, ShiftStandsAtTheChannelsPositionAlsoUnderTheFValue) {
  Put("C", 0, "PVSI", -125);
  Put("C", 0, "POIN", 2);
  Put("H", 0, "FPOI", 0);
  for (const int fValue : {0, 1}) {
    Put("C", 0, "FTIO", fValue);
    FillChannelRow(1);
    EXPECT_EQ("-1.25", ChannelCell(1, 26));
  }
}

TEST_F(KovWindow, LowCutStandsAtTheRowsPosition) {
  Put("C", 0, "SECU", 1234);
  Put("C", 0, "POIN", 2);
  Put("H", 0, "FPOI", 3);
  FillChannelRow(1);
  EXPECT_EQ("12.34", ChannelCell(1, 37));
  Put("C", 0, "FTIO", 1);
  FillChannelRow(1);
  EXPECT_EQ("1.234", ChannelCell(1, 37));
  Put("C", 0, "FTIO", 2); // neither off nor on
  FillChannelRow(1);
  EXPECT_EQ("12.34", ChannelCell(1, 37));
}

struct NumberColumn {
  const char* tag;
  int column;
  int opColumn;
};
TEST_F(KovWindow, NumberOutsideItsRecordsLimitsIsBlank) {
  Put("C", 0, "POIN", 0);
  Put("C", 18, "POIN", 0);
  for (const NumberColumn& number :
       {NumberColumn{"FILT", 6, 9}, NumberColumn{"PVSI", 26, 29}, NumberColumn{"PVKA", 27, 30},
        NumberColumn{"SSCL", 36, 39}, NumberColumn{"SECU", 37, 40}}) {
    for (const int item : {0, 18}) {
      PutLimits("C", item, number.tag, -5, 20);
    }
    const auto shown = [&](int value) {
      Put("C", 0, number.tag, value);
      Put("C", 18, number.tag, value);
      FillChannelRow(1);
      FillOperationRow(19);
      EXPECT_EQ(ChannelCell(1, number.column), OperationCell(19, number.opColumn)) << number.tag;
      return ChannelCell(1, number.column);
    };
    EXPECT_EQ("20", shown(20)) << number.tag;
    EXPECT_EQ("", shown(21)) << number.tag;
    EXPECT_EQ("-5", shown(-5)) << number.tag;
    EXPECT_EQ("", shown(-6)) << number.tag;
  }
}

} // namespace
} // namespace loader::test
