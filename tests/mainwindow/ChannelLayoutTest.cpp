// The columns of the two channel tables: headings of two rows, widths, hidden columns, text runs.
#include <optional>
#include <span>

#include "mainwindow/TableLayouts.h"
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

struct ColumnRow {
  int column;
  const char* upper;
  const char* lower;
  int kovWidth; // in twips; 0 hides
  int rugWidth;
};
void PrintTo(const ColumnRow& row, std::ostream* out) {
  *out << row.column << " " << row.upper << " " << row.lower;
}
const auto NameByColumn = [](const auto& tested) { return "Column" + std::to_string(tested.param.column); };

void ExpectHeading(const Grid& grid, const ColumnRow& row) {
  EXPECT_EQ(row.upper, CellText(grid, 0, row.column));
  EXPECT_EQ(row.lower, CellText(grid, 1, row.column));
  EXPECT_EQ(White, grid.CellAt(0, row.column).back);
  EXPECT_EQ(White, grid.CellAt(1, row.column).back);
}

class ColumnTest : public MainWindow, public testing::WithParamInterface<ColumnRow> {};

using ChannelColumnTest = ColumnTest;
TEST_P(ChannelColumnTest, HasItsHeadingsAndWidthOnKov) {
  Open("KOV");
  ExpectHeading(Window().fgrCh, GetParam());
  EXPECT_EQ(GetParam().kovWidth, Window().fgrCh.ColWidth(GetParam().column));
}
TEST_P(ChannelColumnTest, HasItsHeadingsAndWidthOnRug) {
  Open("RUG");
  ExpectHeading(Window().fgrCh, GetParam());
  EXPECT_EQ(GetParam().rugWidth, Window().fgrCh.ColWidth(GetParam().column));
}
// The scripted font is 100 twips for a half-width character: the measured column is 12 x 100 x 1.1 wide.
INSTANTIATE_TEST_SUITE_P(
    fgrCh, ChannelColumnTest,
    testing::Values(
        ColumnRow{1, "", "表示色", 700, 700}, ColumnRow{2, "", "タグNo.1", 1500, 1500},
        ColumnRow{3, "", "タグNo.2", 1500, 1500}, ColumnRow{4, "", "入力種類", 1100, 1100},
        ColumnRow{5, " ", "入力チャネル", 1100, 1100}, ColumnRow{6, "", "入力フィルタ", 1050, 1050},
        ColumnRow{7, "", "入力単位", 1500, 1500}, ColumnRow{8, "スケーリング", "ON / OFF", 1320, 1320},
        ColumnRow{9, "測定範囲", "下限値", 1700, 1700}, ColumnRow{10, "測定範囲", "上限値", 1700, 1700},
        ColumnRow{11, "工業値", "下限値", 1700, 1700}, ColumnRow{12, "工業値", "上限値", 1700, 1700},
        ColumnRow{13, "　", "開平演算", 900, 900}, ColumnRow{14, "　", "対数演算", 1700, 0},
        ColumnRow{15, "　", "差演算ﾁｬﾈﾙ", 1500, 1500}, ColumnRow{16, "表示範囲", "下限値", 1700, 1700},
        ColumnRow{17, "表示範囲", "上限値", 1700, 1700}, ColumnRow{18, "", "ゾーン領域", 0, 0},
        ColumnRow{19, "", "記録動作", 1300, 1300}, ColumnRow{20, "", "記録ﾀｲﾌﾟ", 1300, 1300},
        ColumnRow{21, "", "表示モード", 0, 0}, ColumnRow{22, "ズーム", "境界値1", 0, 0},
        ColumnRow{23, "ズーム", "位置1", 0, 0}, ColumnRow{24, "ズーム", "境界値2", 0, 0},
        ColumnRow{25, "ズーム", "位置2", 0, 0}, ColumnRow{26, "PVシフト", "シフト値", 1000, 1000},
        ColumnRow{27, "PVシフト", "傾き(%)", 1000, 1000}, ColumnRow{28, "　", "Ｆ値演算", 900, 900},
        ColumnRow{29, "積算", "積算タグ", 1500, 1500}, ColumnRow{30, "積算", "演算動作", 1300, 1300},
        ColumnRow{31, "積算", "積算タイプ", 1200, 1200}, ColumnRow{32, "積算", "外部入力", 1300, 1300},
        ColumnRow{33, "積算", "単位時間", 1000, 1000}, ColumnRow{34, "積算", "リセット動作", 1300, 1300},
        ColumnRow{35, "積算", "積算単位", 1500, 1500}, ColumnRow{36, "積算", "積算除数", 1600, 1600},
        ColumnRow{37, "積算", "下限ｶｯﾄ値", 1000, 1000}, ColumnRow{38, "積算", "リセット入力", 1300, 0},
        ColumnRow{39, "警報No.1", "警報動作", 1000, 1000},
        ColumnRow{40, "警報No.1", "警報設定値", 1300, 1300},
        ColumnRow{41, "Alarm No.1", "偏差警報比較CH.", 0, 0},
        ColumnRow{42, "警報No.1", "ＤＯリレーNo.", 1200, 1200},
        ColumnRow{43, "警報No.2", "警報動作", 1000, 1000},
        ColumnRow{44, "警報No.2", "警報設定値", 1300, 1300},
        ColumnRow{45, "Alarm No.2", "偏差警報比較CH.", 0, 0},
        ColumnRow{46, "警報No.2", "ＤＯリレーNo.", 1200, 1200},
        ColumnRow{47, "警報No.3", "警報動作", 1000, 1000},
        ColumnRow{48, "警報No.3", "警報設定値", 1300, 1300},
        ColumnRow{49, "Alarm No.3", "偏差警報比較CH.", 0, 0},
        ColumnRow{50, "警報No.3", "ＤＯリレーNo.", 1200, 1200},
        ColumnRow{51, "警報No.4", "警報動作", 1000, 1000},
        ColumnRow{52, "警報No.4", "警報設定値", 1300, 1300},
        ColumnRow{53, "Alarm No.4", "偏差警報比較CH.", 0, 0},
        ColumnRow{54, "警報No.4", "ＤＯリレーNo.", 1200, 1200}),
    NameByColumn);

using OperationColumnTest = ColumnTest;
TEST_P(OperationColumnTest, HasItsHeadingsAndWidthOnKov) {
  Open("KOV");
  ExpectHeading(Window().fgrOperationChSet, GetParam());
  EXPECT_EQ(GetParam().kovWidth, Window().fgrOperationChSet.ColWidth(GetParam().column));
}
TEST_P(OperationColumnTest, HasItsHeadingsAndWidthOnRug) {
  Open("RUG");
  ExpectHeading(Window().fgrOperationChSet, GetParam());
  EXPECT_EQ(GetParam().rugWidth, Window().fgrOperationChSet.ColWidth(GetParam().column));
}
INSTANTIATE_TEST_SUITE_P(
    fgrOperationChSet, OperationColumnTest,
    testing::Values(
        ColumnRow{1, "", "表示色", 700, 700}, ColumnRow{2, "", "タグNo.1", 1500, 1500},
        ColumnRow{3, "", "タグNo.2", 1500, 1500}, ColumnRow{4, "", "式 B01", 4500, 4500},
        ColumnRow{5, "", "式 B02", 4500, 4500}, ColumnRow{6, "", "式 B03", 4500, 4500},
        ColumnRow{7, "", "式 結果", 4500, 4500}, ColumnRow{8, "", "入力種類", 0, 0},
        ColumnRow{9, "", "入力フィルタ", 1050, 1050}, ColumnRow{10, "", "入力単位", 1500, 1500},
        ColumnRow{11, "スケーリング", "ON / OFF", 0, 0}, ColumnRow{12, "測定範囲", "下限値", 1700, 1700},
        ColumnRow{13, "測定範囲", "上限値", 1700, 1700}, ColumnRow{14, "工業値", "下限値", 1700, 1700},
        ColumnRow{15, "工業値", "上限値", 1700, 1700}, ColumnRow{16, "　", "開平演算", 900, 900},
        ColumnRow{17, "　", "対数演算", 1000, 0}, ColumnRow{18, "　", "差演算ﾁｬﾈﾙ", 1500, 1500},
        ColumnRow{19, "表示範囲", "下限値", 1700, 1700}, ColumnRow{20, "表示範囲", "上限値", 1700, 1700},
        ColumnRow{21, "", "ゾーン領域", 0, 0}, ColumnRow{22, "", "記録動作", 1300, 1300},
        ColumnRow{23, "", "記録ﾀｲﾌﾟ", 1300, 1300}, ColumnRow{24, "", "表示モード", 0, 0},
        ColumnRow{25, "ズーム", "境界値1", 0, 0}, ColumnRow{26, "ズーム", "位置1", 0, 0},
        ColumnRow{27, "ズーム", "境界値2", 0, 0}, ColumnRow{28, "ズーム", "位置2", 0, 0},
        ColumnRow{29, "PVシフト", "シフト値", 1000, 1000}, ColumnRow{30, "PVシフト", "傾き(%)", 1000, 1000},
        ColumnRow{31, "　", "Ｆ値演算", 900, 900}, ColumnRow{32, "積算", "積算タグ", 1500, 1500},
        ColumnRow{33, "積算", "演算動作", 1300, 1300}, ColumnRow{34, "積算", "積算タイプ", 1200, 1200},
        ColumnRow{35, "積算", "外部入力", 1300, 1300}, ColumnRow{36, "積算", "単位時間", 1000, 1000},
        ColumnRow{37, "積算", "リセット動作", 1300, 1300}, ColumnRow{38, "積算", "積算単位", 1500, 1500},
        ColumnRow{39, "積算", "積算除数", 1600, 1600}, ColumnRow{40, "積算", "下限ｶｯﾄ値", 1000, 1000},
        ColumnRow{41, "積算", "リセット入力", 1300, 0}, ColumnRow{42, "警報No.1", "警報動作", 1000, 1000},
        ColumnRow{43, "警報No.1", "警報設定値", 1300, 1300},
        ColumnRow{44, "警報No.1", "偏差警報比較CH.", 0, 0},
        ColumnRow{45, "警報No.1", "ＤＯリレーNo.", 1200, 1200},
        ColumnRow{46, "警報No.2", "警報動作", 1000, 1000},
        ColumnRow{47, "警報No.2", "警報設定値", 1300, 1300},
        ColumnRow{48, "警報No.2", "偏差警報比較CH.", 0, 0},
        ColumnRow{49, "警報No.2", "ＤＯリレーNo.", 1200, 1200},
        ColumnRow{50, "警報No.3", "警報動作", 1000, 1000},
        ColumnRow{51, "警報No.3", "警報設定値", 1300, 1300},
        ColumnRow{52, "警報No.3", "偏差警報比較CH.", 0, 0},
        ColumnRow{53, "警報No.3", "ＤＯリレーNo.", 1200, 1200},
        ColumnRow{54, "警報No.4", "警報動作", 1000, 1000},
        ColumnRow{55, "警報No.4", "警報設定値", 1300, 1300},
        ColumnRow{56, "警報No.4", "偏差警報比較CH.", 0, 0},
        ColumnRow{57, "警報No.4", "ＤＯリレーNo.", 1200, 1200}),
    NameByColumn);

// --- The runs of text ids

struct RunRow {
  int column;
  int first; // upper heading, or lower heading in a run of three
  int last;  // column number
};
void PrintTo(const RunRow& row, std::ostream* out) {
  *out << row.column << ": " << row.first << " to " << row.last;
}
void ExpectRun(const ColumnSpec& spec, const RunRow& row) {
  EXPECT_EQ(row.last, spec.column.value);
  EXPECT_EQ(row.last - 1, spec.width.value);
  EXPECT_EQ(row.last - 2, spec.lower.value);
  const bool four = row.last - row.first == 3;
  EXPECT_EQ(four, spec.upper.has_value());
  if (four && spec.upper) {
    EXPECT_EQ(row.first, spec.upper->value);
  }
  EXPECT_EQ(row.column, LayoutNumber(spec.column));
}
class RunTest : public testing::TestWithParam<RunRow> {};

using ChannelRun = RunTest;
TEST_P(ChannelRun, HoldsTheColumn) {
  ASSERT_EQ(54U, ChannelColumns().size());
  ExpectRun(ChannelColumns()[static_cast<std::size_t>(GetParam().column - 1)], GetParam());
}
INSTANTIATE_TEST_SUITE_P(
    fgrCh, ChannelRun,
    testing::Values(RunRow{1, 21003, 21005}, RunRow{2, 21007, 21009}, RunRow{3, 21011, 21013},
                    RunRow{4, 21015, 21017}, RunRow{5, 21210, 21213}, RunRow{6, 21019, 21021},
                    RunRow{7, 21023, 21025}, RunRow{8, 21026, 21029}, RunRow{9, 21030, 21033},
                    RunRow{10, 21034, 21037}, RunRow{11, 21042, 21045}, RunRow{12, 21046, 21049},
                    RunRow{13, 21050, 21053}, RunRow{14, 21038, 21041}, RunRow{15, 21054, 21057},
                    RunRow{16, 21058, 21061}, RunRow{17, 21062, 21065}, RunRow{18, 21067, 21069},
                    RunRow{19, 21071, 21073}, RunRow{20, 21075, 21077}, RunRow{21, 21079, 21081},
                    RunRow{22, 21082, 21085}, RunRow{23, 21086, 21089}, RunRow{24, 21090, 21093},
                    RunRow{25, 21094, 21097}, RunRow{26, 21098, 21101}, RunRow{27, 21102, 21105},
                    RunRow{28, 21106, 21109}, RunRow{29, 21110, 21113}, RunRow{30, 21114, 21117},
                    RunRow{31, 21118, 21121}, RunRow{32, 21122, 21125}, RunRow{33, 21126, 21129},
                    RunRow{34, 21130, 21133}, RunRow{35, 21134, 21137}, RunRow{36, 21138, 21141},
                    RunRow{37, 21142, 21145}, RunRow{38, 21214, 21217}, RunRow{39, 21146, 21149},
                    RunRow{40, 21150, 21153}, RunRow{41, 21154, 21157}, RunRow{42, 21158, 21161},
                    RunRow{43, 21162, 21165}, RunRow{44, 21166, 21169}, RunRow{45, 21170, 21173},
                    RunRow{46, 21174, 21177}, RunRow{47, 21178, 21181}, RunRow{48, 21182, 21185},
                    RunRow{49, 21186, 21189}, RunRow{50, 21190, 21193}, RunRow{51, 21194, 21197},
                    RunRow{52, 21198, 21201}, RunRow{53, 21202, 21205}, RunRow{54, 21206, 21209}),
    NameByColumn);

using OperationRun = RunTest;
TEST_P(OperationRun, HoldsTheColumn) {
  ASSERT_EQ(57U, OperationColumns().size());
  ExpectRun(OperationColumns()[static_cast<std::size_t>(GetParam().column - 1)], GetParam());
}
INSTANTIATE_TEST_SUITE_P(
    fgrOperationChSet, OperationRun,
    testing::Values(RunRow{1, 22005, 22007}, RunRow{2, 22009, 22011}, RunRow{3, 22013, 22015},
                    RunRow{4, 22017, 22019}, RunRow{5, 22021, 22023}, RunRow{6, 22025, 22027},
                    RunRow{7, 22029, 22031}, RunRow{8, 22033, 22035}, RunRow{9, 22037, 22039},
                    RunRow{10, 22041, 22043}, RunRow{11, 22044, 22047}, RunRow{12, 22048, 22051},
                    RunRow{13, 22052, 22055}, RunRow{14, 22060, 22063}, RunRow{15, 22064, 22067},
                    RunRow{16, 22068, 22071}, RunRow{17, 22056, 22059}, RunRow{18, 22072, 22075},
                    RunRow{19, 22076, 22079}, RunRow{20, 22080, 22083}, RunRow{21, 22085, 22087},
                    RunRow{22, 22089, 22091}, RunRow{23, 22093, 22095}, RunRow{24, 22097, 22099},
                    RunRow{25, 22100, 22103}, RunRow{26, 22104, 22107}, RunRow{27, 22108, 22111},
                    RunRow{28, 22112, 22115}, RunRow{29, 22116, 22119}, RunRow{30, 22120, 22123},
                    RunRow{31, 22124, 22127}, RunRow{32, 22128, 22131}, RunRow{33, 22132, 22135},
                    RunRow{34, 22136, 22139}, RunRow{35, 22140, 22143}, RunRow{36, 22144, 22147},
                    RunRow{37, 22148, 22151}, RunRow{38, 22152, 22155}, RunRow{39, 22156, 22159},
                    RunRow{40, 22160, 22163}, RunRow{41, 22228, 22231}, RunRow{42, 22164, 22167},
                    RunRow{43, 22168, 22171}, RunRow{44, 22172, 22175}, RunRow{45, 22176, 22179},
                    RunRow{46, 22180, 22183}, RunRow{47, 22184, 22187}, RunRow{48, 22188, 22191},
                    RunRow{49, 22192, 22195}, RunRow{50, 22196, 22199}, RunRow{51, 22200, 22203},
                    RunRow{52, 22204, 22207}, RunRow{53, 22208, 22211}, RunRow{54, 22212, 22215},
                    RunRow{55, 22216, 22219}, RunRow{56, 22220, 22223}, RunRow{57, 22224, 22227}),
    NameByColumn);

// --- Sizes and the first column

TEST_F(KovWindow, ChannelTableHas18RowsAndTheOperationTable12) {
  EXPECT_EQ(2, Window().fgrCh.FixedRows);
  EXPECT_EQ(1, Window().fgrCh.FixedCols);
  EXPECT_EQ(20, Window().fgrCh.Rows());
  EXPECT_EQ(55, Window().fgrCh.Cols());
  EXPECT_EQ(2, Window().fgrOperationChSet.FixedRows);
  EXPECT_EQ(1, Window().fgrOperationChSet.FixedCols);
  EXPECT_EQ(14, Window().fgrOperationChSet.Rows());
  EXPECT_EQ(58, Window().fgrOperationChSet.Cols());
}

TEST_F(RugWindow, ChannelTableHas36RowsAndTheOperationTable36) {
  EXPECT_EQ(38, Window().fgrCh.Rows());
  EXPECT_EQ(55, Window().fgrCh.Cols());
  EXPECT_EQ(38, Window().fgrOperationChSet.Rows());
  EXPECT_EQ(58, Window().fgrOperationChSet.Cols());
}

using ChannelTables = EitherWindow;
LOADER_FOR_BOTH_MODELS(ChannelTables);

TEST_P(ChannelTables, NumberTheirRowsInAFirstColumnOf700Twips) {
  EXPECT_EQ(700, Window().fgrCh.ColWidth(0));
  EXPECT_EQ(700, Window().fgrOperationChSet.ColWidth(0));
  EXPECT_EQ("", CellText(Window().fgrCh, 0, 0));
  EXPECT_EQ("", CellText(Window().fgrCh, 1, 0));
  EXPECT_EQ("", CellText(Window().fgrOperationChSet, 1, 0));
  for (int channel = 1; channel <= Profile.ChannelCount; ++channel) {
    EXPECT_EQ("CH" + std::to_string(channel), ChannelCell(channel, 0));
  }
  for (int n = 0; n < Profile.OperationChannelCount; ++n) {
    const int channel = Profile.ChannelCount + 1 + n;
    EXPECT_EQ("CH" + std::to_string(channel), OperationCell(channel, 0));
  }
}

TEST_F(RugWindow, ChannelTablesHideNothingButTheLogarithmAndTheResetInputMore) {
  const auto hidden = [](const Grid& grid) {
    std::vector<int> columns;
    for (int column = 0; column < grid.Cols(); ++column) {
      if (grid.ColWidth(column) == 0) {
        columns.push_back(column);
      }
    }
    return columns;
  };
  EXPECT_EQ((std::vector<int>{14, 18, 21, 22, 23, 24, 25, 38, 41, 45, 49, 53}), hidden(Window().fgrCh));
  EXPECT_EQ((std::vector<int>{8, 11, 17, 21, 24, 25, 26, 27, 28, 41, 44, 48, 52, 56}),
            hidden(Window().fgrOperationChSet));
}

// Any other model than KOV.
TEST_F(KovWindow, ChannelTablesHideTheKovColumnsUnderAnUnknownModel) {
  ModelCode = "BIQ";
  BuildTables();
  EXPECT_EQ(0, Window().fgrCh.ColWidth(14));
  EXPECT_EQ(0, Window().fgrCh.ColWidth(38));
  EXPECT_EQ(0, Window().fgrOperationChSet.ColWidth(17));
  EXPECT_EQ(0, Window().fgrOperationChSet.ColWidth(41));
}

// --- Measured widths

// The scripted platform with a font of one width for every text.
class Font final : public Screens {
public:
  explicit Font(double textWidth) : before_(ThePlatform()), width_(textWidth) { SetPlatform(&mine_); }
  ~Font() override { SetPlatform(&before_); }
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;
  void Show(Screen& screen) override { before_.screens.Show(screen); }
  void ShowModal(Screen& screen) override { before_.screens.ShowModal(screen); }
  void Close(Screen& screen) override { before_.screens.Close(screen); }
  void EndProgram() override { before_.screens.EndProgram(); }
  double TextWidth(std::u16string_view text) override {
    measured = text;
    return width_;
  }
  std::u16string measured;

private:
  Platform& before_;
  double width_;
  Platform mine_{before_.boxes, before_.fileDialogs, *this,           before_.timers,  before_.eventLoop,
                 before_.clock, before_.MSComm1,     before_.winSock, before_.USBOCX1, before_.programFolder};
};

TEST_F(KovWindow, MeasuredWidthIsTheWholePartTimes1Point1Rounded) {
  struct Measured {
    double text;
    int column;
  };
  for (const Measured& measured :
       {Measured{0.0, 0}, Measured{1234.0, 1357}, Measured{1234.99, 1357}, Measured{1236.0, 1360},
        Measured{1236.5, 1360}, Measured{1233.9, 1356}, Measured{9.99, 10}, Measured{1000.0, 1100}}) {
    Font font(measured.text);
    EXPECT_EQ(measured.column, LayoutWidth(21028)) << measured.text;
  }
}

TEST_F(KovWindow, MeasuredWidthsAreThoseOfTheirHeadings) {
  Font font(1.0);
  EXPECT_EQ(1, LayoutWidth(21028));
  EXPECT_EQ("スケーリング", ToUtf8(font.measured));
  EXPECT_EQ(1, LayoutWidth(26008));
  EXPECT_EQ("カラーバー表示選択", ToUtf8(font.measured));
}

TEST_F(KovWindow, NumberedWidthsAreNotMeasured) {
  Font font(1.0);
  EXPECT_EQ(1700, LayoutWidth(21032));
  EXPECT_EQ(0, LayoutWidth(22046));
  EXPECT_EQ("", ToUtf8(font.measured));
}

TEST_F(KovWindow, MeasureTextWidthAsksTheFontOfTheTables) {
  Font font(12.75);
  EXPECT_EQ(12.75, MeasureTextWidth(u"表示"));
  EXPECT_EQ("表示", ToUtf8(font.measured));
}

} // namespace
} // namespace loader::test
