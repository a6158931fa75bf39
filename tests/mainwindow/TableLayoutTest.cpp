// The layout of the small tables, and the one that nothing touches.
#include "mainwindow/TableLayouts.h"
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

struct SmallColumn {
  const char* table;
  int column;
  const char* heading;
  int width;
};
void PrintTo(const SmallColumn& row, std::ostream* out) {
  *out << row.table << " " << row.column << " " << row.heading;
}
class SmallTableColumn : public MainWindow, public testing::WithParamInterface<SmallColumn> {
protected:
  void ExpectColumn() {
    const Grid& grid = GridNamed(GetParam().table);
    EXPECT_EQ(1, grid.FixedRows);
    EXPECT_EQ(1, grid.FixedCols);
    EXPECT_EQ(GetParam().heading, CellText(grid, 0, GetParam().column));
    EXPECT_EQ(GetParam().width, grid.ColWidth(GetParam().column));
  }
};
TEST_P(SmallTableColumn, HasItsHeadingAndWidthOnKov) {
  Open("KOV");
  ExpectColumn();
}
TEST_P(SmallTableColumn, HasItsHeadingAndWidthOnRug) {
  Open("RUG");
  ExpectColumn();
}
const auto NameByTableAndColumn = [](const auto& tested) {
  return std::string(tested.param.table) + "Column" + std::to_string(tested.param.column);
};
INSTANTIATE_TEST_SUITE_P(Messages, SmallTableColumn,
                         testing::Values(SmallColumn{"fgrMess", 0, "", 650},
                                         SmallColumn{"fgrMess", 1, "メッセージ", 4500},
                                         SmallColumn{"fgrMess", 2, "タイミング", 900},
                                         SmallColumn{"fgrMess", 3, "DI No/警報Ch", 1250},
                                         SmallColumn{"fgrMess", 4, "警報No.", 1110}),
                         NameByTableAndColumn);
INSTANTIATE_TEST_SUITE_P(Units, SmallTableColumn,
                         testing::Values(SmallColumn{"fgrUnit", 0, "", 700},
                                         SmallColumn{"fgrUnit", 1, "単位名", 1500}),
                         NameByTableAndColumn);
INSTANTIATE_TEST_SUITE_P(Constants, SmallTableColumn,
                         testing::Values(SmallColumn{"fgrConst", 0, "", 720},
                                         SmallColumn{"fgrConst", 1, "定数値", 1200}),
                         NameByTableAndColumn);
// The scripted font is 200 twips for a full-width character: the measured column is 9 x 200 x 1.1 wide.
INSTANTIATE_TEST_SUITE_P(
    Groups, SmallTableColumn,
    testing::Values(
        SmallColumn{"fgrGroup", 0, "", 1000}, SmallColumn{"fgrGroup", 1, "ﾊﾞｰｸﾞﾗﾌ/ｱﾅﾛｸﾞﾒｰﾀ選択", 2000},
        SmallColumn{"fgrGroup", 2, "カラーバー表示選択", 1980}, SmallColumn{"fgrGroup", 3, "データ１", 1500},
        SmallColumn{"fgrGroup", 4, "データ２", 1500}, SmallColumn{"fgrGroup", 5, "データ３", 1500},
        SmallColumn{"fgrGroup", 6, "データ４", 1500}, SmallColumn{"fgrGroup", 7, "データ５", 1500},
        SmallColumn{"fgrGroup", 8, "データ６", 1500}, SmallColumn{"fgrGroup", 9, "データ７", 1500},
        SmallColumn{"fgrGroup", 10, "データ８", 1500}, SmallColumn{"fgrGroup", 11, "データ９", 1500},
        SmallColumn{"fgrGroup", 12, "データ１０", 1500}, SmallColumn{"fgrGroup", 13, "画面名称", 3000},
        SmallColumn{"fgrGroup", 14, "トレンド方向", 1500}, SmallColumn{"fgrGroup", 15, "画面分割数", 1500}),
    NameByTableAndColumn);
INSTANTIATE_TEST_SUITE_P(MailTriggers, SmallTableColumn,
                         testing::Values(SmallColumn{"flxEMailTriggerSetting", 0, "", 300},
                                         SmallColumn{"flxEMailTriggerSetting", 1, "タイトル", 4000},
                                         SmallColumn{"flxEMailTriggerSetting", 2, "テキスト1", 4000},
                                         SmallColumn{"flxEMailTriggerSetting", 3, "テキスト2", 4000},
                                         SmallColumn{"flxEMailTriggerSetting", 4, "トリガータイミング", 1800},
                                         SmallColumn{"flxEMailTriggerSetting", 5,
                                                     "警報CH/DI No./本体異常ﾀｲﾌﾟ/周期", 3000},
                                         SmallColumn{"flxEMailTriggerSetting", 6, "警報No./基準時間", 1500},
                                         SmallColumn{"flxEMailTriggerSetting", 7, "測定値添付", 1800},
                                         SmallColumn{"flxEMailTriggerSetting", 8, "アドレスNo.1", 1200},
                                         SmallColumn{"flxEMailTriggerSetting", 9, "アドレスNo.2", 1200},
                                         SmallColumn{"flxEMailTriggerSetting", 10, "アドレスNo.3", 1200},
                                         SmallColumn{"flxEMailTriggerSetting", 11, "アドレスNo.4", 1200},
                                         SmallColumn{"flxEMailTriggerSetting", 12, "アドレスNo.5", 1200},
                                         SmallColumn{"flxEMailTriggerSetting", 13, "アドレスNo.6", 1200},
                                         SmallColumn{"flxEMailTriggerSetting", 14, "アドレスNo.7", 1200},
                                         SmallColumn{"flxEMailTriggerSetting", 15, "アドレスNo.8", 1200}),
                         NameByTableAndColumn);

// --- Sizes and the number of each row

struct TableSize {
  const char* table;
  int kovRows; // of data
  int rugRows;
  int cols;
  const char* prefix;
};
void PrintTo(const TableSize& row, std::ostream* out) {
  *out << row.table;
}
class SmallTable : public MainWindow, public testing::WithParamInterface<TableSize> {
protected:
  void ExpectSize(int rows) {
    const Grid& grid = GridNamed(GetParam().table);
    EXPECT_EQ(1 + rows, grid.Rows());
    EXPECT_EQ(GetParam().cols, grid.Cols());
    for (int number = 1; number <= rows; ++number) {
      EXPECT_EQ(GetParam().prefix + std::to_string(number), CellText(grid, number, 0));
    }
  }
};
TEST_P(SmallTable, HasItsRowsAndTheirNumbersOnKov) {
  Open("KOV");
  ExpectSize(GetParam().kovRows);
}
TEST_P(SmallTable, HasItsRowsAndTheirNumbersOnRug) {
  Open("RUG");
  ExpectSize(GetParam().rugRows);
}
INSTANTIATE_TEST_SUITE_P(All, SmallTable,
                         testing::Values(TableSize{"fgrMess", 10, 10, 5, "NO."},
                                         TableSize{"fgrUnit", 12, 12, 2, "NO."},
                                         TableSize{"fgrConst", 20, 60, 2, "NO."},
                                         TableSize{"fgrGroup", 4, 8, 16, "ｸﾞﾙｰﾌﾟ No."},
                                         TableSize{"flxEMailTriggerSetting", 8, 8, 16, ""}),
                         [](const auto& tested) { return std::string(tested.param.table); });

TEST_F(KovWindow, MailTriggerTableHasARowForEachTriggerOfTheStore) {
  const StoreIndex section = gFFindSection("X");
  ASSERT_NE(NotFound, section);
  ParamStore[section].Items.resize(3);
  BuildTables();
  EXPECT_EQ(4, Window().flxEMailTriggerSetting.Rows());
  ParamStore[section].Items.clear();
  BuildTables();
  EXPECT_EQ(1, Window().flxEMailTriggerSetting.Rows());
}

TEST_F(KovWindow, LayoutWritesNoValues) {
  BuildTables();
  for (const char* table : {"fgrMess", "fgrUnit", "fgrConst", "fgrGroup"}) {
    const Grid& grid = GridNamed(table);
    for (int row = grid.FixedRows; row < grid.Rows(); ++row) {
      for (int col = 1; col < grid.Cols(); ++col) {
        ASSERT_EQ("", CellText(grid, row, col)) << table << " " << row << " " << col;
      }
    }
  }
  EXPECT_EQ("", ChannelCell(1, 2));
  EXPECT_EQ(White, ChannelBack(1, 1));
  EXPECT_EQ("1", CellText(Window().flxEMailTriggerSetting, 1, 0));
  EXPECT_EQ("", CellText(Window().flxEMailTriggerSetting, 1, 4));
}

TEST_F(KovWindow, LayoutLeavesTheStoreAlone) {
  Put("H", 0, "MSMP", 7);
  Put("E", 0, "TSTR", 1439);
  const auto before = AllNumbers();
  BuildTables();
  EXPECT_EQ(before, AllNumbers());
}

// --- The table of the digital inputs

using DITable = EitherWindow;
LOADER_FOR_BOTH_MODELS(DITable);
TEST_P(DITable, StaysEmpty) {
  const auto revision = Window().fgrDI.Revision();
  EXPECT_EQ(0, Window().fgrDI.Rows());
  EXPECT_EQ(0, Window().fgrDI.Cols());
  BuildTables();
  RefreshAll();
  EXPECT_EQ(revision, Window().fgrDI.Revision());
}

} // namespace
} // namespace loader::test
