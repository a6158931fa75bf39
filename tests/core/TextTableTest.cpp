#include "core/TextTable.h"
#include "core/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace loader {
namespace {

std::string Utf8Of(int id) {
  return ToUtf8(LoadText(TextId::At(id)));
}

int RowsBetween(int first, int last) {
  return static_cast<int>(std::ranges::count_if(
      AllTexts(), [&](const TextRow& row) { return row.id >= first && row.id <= last; }));
}

TEST(TextTable, Holds1831Rows) {
  EXPECT_EQ(AllTexts().size(), 1831U);
}

TEST(TextTable, IdsAreUniqueAndAscending) {
  const auto rows = AllTexts();
  const auto disorder =
      std::ranges::adjacent_find(rows, [](const TextRow& a, const TextRow& b) { return a.id >= b.id; });
  EXPECT_TRUE(disorder == rows.end()) << disorder->id;
}

TEST(TextTable, RunsNameExactlyTheRows) {
  std::set<int> ids;
  for (const TextRow& row : AllTexts()) {
    ids.insert(row.id);
  }
  for (int id = 0; id <= 70000; ++id) {
    ASSERT_EQ(TextIdExists(id), ids.contains(id)) << id;
  }
}

TEST(TextTable, EveryTextComesBackUnchangedFromTheCodePage) {
  for (const TextRow& row : AllTexts()) {
    const std::string bytes = ToCodePage(row.text);
    EXPECT_TRUE(FromCodePage(bytes) == row.text) << row.id;
    EXPECT_EQ(std::ranges::count(bytes, '?'), std::ranges::count(row.text, u'?')) << row.id;
  }
}

TEST(TextTable, NoTextIsEmpty) {
  for (const TextRow& row : AllTexts()) {
    EXPECT_FALSE(row.text.empty()) << row.id;
  }
}

TEST(TextTable, EveryIdLoadsItsOwnText) {
  for (const TextRow& row : AllTexts()) {
    ASSERT_TRUE(LoadText(TextId::At(row.id)) == row.text) << row.id;
  }
}

TEST(TextTable, MissingIdIsADefectOfTheProgram) {
  for (const int id :
       {-1, 0, 9999, 10022, 18175, 18199, 21006, 21066, 22004, 22040, 31013, 39002, 45573, 64001, 70000}) {
    EXPECT_THROW((void)TextId::At(id), std::logic_error) << id;
  }
}

TEST(TextTable, OffsetFromAnIdIsChecked) {
  EXPECT_EQ((TextId(30000) + 13).value, 30013);
  EXPECT_THROW((void)(TextId(30000) + 14), std::logic_error);
  EXPECT_THROW((void)(TextId(30000) + -1), std::logic_error);
}

// --- counted ranges

struct CountedRange {
  int first;
  int last;
  int rows;
};

// Test lists show what is tested in place of raw bytes.
void PrintTo(const CountedRange& range, std::ostream* out) {
  *out << range.rows << " rows";
}

class TextRange : public testing::TestWithParam<CountedRange> {};

TEST_P(TextRange, HasItsCount) {
  EXPECT_EQ(RowsBetween(GetParam().first, GetParam().last), GetParam().rows);
}

// The lists from 30000 to 39007 take 128 rows: that many ids the catalogues need.
INSTANTIATE_TEST_SUITE_P(
    All, TextRange,
    testing::Values(
        CountedRange{10000, 10021, 22}, CountedRange{10500, 10522, 23}, CountedRange{10600, 10603, 4},
        CountedRange{10700, 10705, 6}, CountedRange{11000, 11016, 17}, CountedRange{18000, 18211, 198},
        CountedRange{19614, 19627, 14}, CountedRange{20100, 20117, 18}, CountedRange{20900, 20901, 2},
        CountedRange{21003, 21217, 206}, CountedRange{22000, 22231, 218}, CountedRange{23000, 23017, 18},
        CountedRange{24000, 24005, 6}, CountedRange{25000, 25018, 19}, CountedRange{26000, 26048, 49},
        CountedRange{27000, 27000, 1}, CountedRange{28000, 28005, 6}, CountedRange{30000, 39007, 128},
        CountedRange{40000, 40297, 298}, CountedRange{41000, 59001, 241}, CountedRange{60000, 61904, 231},
        CountedRange{60800, 60929, 130}, CountedRange{62000, 62004, 5}, CountedRange{62100, 62702, 37},
        CountedRange{63100, 63129, 30}, CountedRange{63300, 63800, 33}, CountedRange{64000, 64000, 1}),
    [](const auto& tested) {
      return "From" + std::to_string(tested.param.first) + "To" + std::to_string(tested.param.last);
    });

// --- texts that code and user rely on

struct NamedText {
  int id;
  const char* text;
};

void PrintTo(const NamedText& named, std::ostream* out) {
  *out << named.text;
}

class NamedTexts : public testing::TestWithParam<NamedText> {};

TEST_P(NamedTexts, ReadAsTheyStand) {
  EXPECT_EQ(Utf8Of(GetParam().id), GetParam().text);
}

const auto NameById = [](const auto& tested) { return "Id" + std::to_string(tested.param.id); };

INSTANTIATE_TEST_SUITE_P(
    Titles, NamedTexts,
    testing::Values(NamedText{10000, "パラメータローダ"}, NamedText{10001, "ﾁｬﾈﾙ設定"},
                    NamedText{10002, "演算ﾁｬﾈﾙ設定"}, NamedText{10003, "メッセージ設定"},
                    NamedText{10004, "単位作成"}, NamedText{10005, "バージョン情報"},
                    NamedText{10006, "単位選択"}, NamedText{10007, "グループ設定"},
                    NamedText{10008, "式@FormulaSel@の設定"}, NamedText{10009, "式B01設定"},
                    NamedText{10010, "式B02設定"}, NamedText{10011, "式B03設定"},
                    NamedText{10012, "式結果設定"}, NamedText{10013, "演算、入力ﾁｬﾈﾙ設定"},
                    NamedText{10014, "DI設定"}, NamedText{10015, "パラメータファイルを開く"},
                    NamedText{10016, "パラメータファイルの保存"}, NamedText{10017, "パラメータテキスト出力"},
                    NamedText{10018, "E-mail トリガー設定"}, NamedText{10019, "IPアドレス設定"},
                    NamedText{10020, "時間設定"}, NamedText{10021, "定数設定"}),
    NameById);

INSTANTIATE_TEST_SUITE_P(
    MenusAndTips, NamedTexts,
    testing::Values(NamedText{10500, "ファイル(&F)"}, NamedText{10501, "開く(O)"},
                    NamedText{10502, "ファイルに保存(S)"}, NamedText{10503, "テキスト出力(T)"},
                    NamedText{10504, "-"}, NamedText{10505, "終了(&X)"}, NamedText{10506, "編集(&E)"},
                    NamedText{10507, "コピー(C)"}, NamedText{10508, "貼り付け(V)"},
                    NamedText{10509, "通信(&R)"}, NamedText{10510, "通信方法"}, NamedText{10511, "USB"},
                    NamedText{10512, "イーサネット"}, NamedText{10513, "RS-232C"},
                    NamedText{10514, "IP アドレス"}, NamedText{10515, "ポート(&P)"}, NamedText{10516, "COM1"},
                    NamedText{10520, "COM5"}, NamedText{10521, "ヘルプ(&H)"},
                    NamedText{10522, "バージョン情報"}, NamedText{10600, "開く"}, NamedText{10601, "コピー"},
                    NamedText{10602, "貼り付け"}, NamedText{10603, "ヘルプ"}),
    NameById);

INSTANTIATE_TEST_SUITE_P(Filters, NamedTexts,
                         testing::Values(NamedText{10700, "*.VOQ(パラメータファイル)|*.VOQ"},
                                         NamedText{10701, "*.DAX(パラメータファイル)|*.DAX"},
                                         NamedText{10702, "*.BIQ(パラメータファイル)|*.BIQ"},
                                         NamedText{10703, "*.KOV(パラメータファイル)|*.KOV"},
                                         NamedText{10704, "*.RUG(パラメータファイル)|*.RUG"},
                                         NamedText{10705, "*.Txt(パラメータテキストファイル)|*.Txt"}),
                         NameById);

INSTANTIATE_TEST_SUITE_P(
    Messages, NamedTexts,
    testing::Values(
        NamedText{11000, "タイムアウトエラー"}, NamedText{11001, "受信データエラー"},
        NamedText{11002, "保存に失敗しました"}, NamedText{11003, "読み込みに失敗しました"},
        NamedText{11004, "ポートオープン出来ません"},
        NamedText{11005, "初期ファイルが存在しないか、初期ファイルが不正です"},
        NamedText{11008, "変更されたデータが保存されていません。終了しますか？"},
        NamedText{11012, "バージョンチェックエラー"}, NamedText{11013, "データ読み出し処理が中断されました"},
        NamedText{11015,
                  "パラメータローダと本体のモードが正しくありません。正しい本体又はモードを使用して下さい。"},
        NamedText{11016, "パラメータ設定機種を切替えますか？"},
        NamedText{20100, "アプリケーションを終了しますか？"}, NamedText{20102, "通信中は終了できません"},
        NamedText{20104, "読み込みますか？"}, NamedText{20106, "書き込みますか?"},
        NamedText{20107, "現在記録または演算中のため書き込みできません"},
        NamedText{20108, "設定値の記憶を行いますか?"}, NamedText{20110, "メッセージコピー"},
        NamedText{20111, "単位名コピー"}, NamedText{20114, "チャネルコピー"},
        NamedText{62105, "このチャネルの次のチャネルが初期化されます"},
        NamedText{62106, "このチャネルの次のチャネルが初期化されます"},
        NamedText{62102, "数字を入力してください"}, NamedText{62200, "数字ではありません。"},
        NamedText{62302, "数値のみで入力してください"}, NamedText{62402, "数値のみで入力してください"},
        NamedText{62403, "19～30を入力してください"},
        NamedText{62405, "AVG演算またはSUM演算は、1つの式に1回しか使用できません"},
        NamedText{62406, "四則演算を設定してください"}, NamedText{62407, "入力を設定してください"},
        NamedText{62500, "日付が不正です。 "}, NamedText{62501, "ﾊﾞｰｼﾞｮﾝ1.0のため書き込みできません。"},
        NamedText{62502, "現在記録または積算中のため書き込み出来ません。"},
        NamedText{62602, "数値のみで入力してください"},
        NamedText{62701,
                  "書き込み完了しました。本体の設定値を記憶させるには、「設定値記憶」を行ってください。"},
        NamedText{62702, "設定値記憶完了しました"}, NamedText{63510, "ﾁｬﾈﾙ"}, NamedText{63520, "DI"},
        NamedText{63535, "本体異常警報ﾀｲﾌﾟ"}, NamedText{63536, "チャネル"}, NamedText{63537, "警報No."},
        NamedText{63538, "DI No."}, NamedText{63547, "時間周期"}, NamedText{63548, "基準時間"},
        NamedText{63800, "無し"}, NamedText{64000, "バージョン　"}),
    NameById);

INSTANTIATE_TEST_SUITE_P(
    CaptionsAndButtons, NamedTexts,
    testing::Values(NamedText{18000, "編集するチャネルをダブルクリックしてください"},
                    NamedText{18003, "単位名"}, NamedText{18043, "警報設定"},
                    NamedText{18059, "送信先アドレス№"}, NamedText{18087, "時間は２４時制で入力してください"},
                    NamedText{18093, "通信状態:"}, NamedText{18094, "チャネル設定"},
                    NamedText{18095, "本体設定"}, NamedText{18096, "画面設定"},
                    NamedText{18097, "イーサネット設定"}, NamedText{18098, "メール設定"},
                    NamedText{18151, "E-maiｌ設定"}, NamedText{18157, "演算設定"}, NamedText{18174, " "},
                    NamedText{18180, "ﾄﾚﾝﾄﾞ表示圧縮率"}, NamedText{18190, "SUM             タイマー周期"},
                    NamedText{18211, "ヒストリカル背景色"}, NamedText{19614, "トップ"},
                    NamedText{19615, "前"}, NamedText{19616, "次"}, NamedText{19617, "元に戻す"},
                    NamedText{19618, "適用"}, NamedText{19619, "終了"}, NamedText{19620, "キャンセル"},
                    NamedText{19621, "ＯＫ"}, NamedText{19622, "変更"}, NamedText{19623, "読み出し"},
                    NamedText{19624, "書き込み"}, NamedText{19625, "設定値記憶"},
                    NamedText{19626, "時刻設定"}, NamedText{19627, "削除"}, NamedText{27000, "ﾁｬﾈﾙ無し"},
                    NamedText{37031, "無し"}, NamedText{37032, "ﾁｬﾈﾙ"}, NamedText{52000, "   無し"},
                    NamedText{52001, "   無し"}),
    NameById);

// --- placeholders

TEST(TextTable, TextsHoldThePlaceholdersThatAreReplacedInThem) {
  const std::map<int, std::vector<std::u16string_view>> placeholders = {
      {10008, {u"@FormulaSel@"}},
      {20109, {u"@COPYCH@", u"@CHNOSAKI@"}},
      {20112, {u"@COPYCH@", u"@CHNOSAKI@"}},
      {20113, {u"@CHNOSAPR@"}},
      {20115, {u"@FORMIN@", u"@FORMAX@"}},
      {20116, {u"@MID@"}},
      {20117, {u"@LEN@"}},
      {62100, {u"@LEN@"}},
      {62101, {u"@MID@"}},
      {62103, {u"@CHASU@"}},
      {62104, {u"@CHNO@"}},
      {62107, {u"@LEN@"}},
      {62108, {u"@MID@"}},
      {62201, {u"@FORMIN@", u"@FORMAX@"}},
      {62202, {u"@LEN@"}},
      {62203, {u"@MID@"}},
      {62300, {u"@LEN@"}},
      {62301, {u"@MID@"}},
      {62303, {u"@MSGSU@"}},
      {62400, {u"@LEN@"}},
      {62401, {u"@MID@"}},
      {62404, {u"@CHNO@"}},
      {62408, {u"@LEN@"}},
      {62409, {u"@MID@"}},
      {62600, {u"@LEN@"}},
      {62601, {u"@MID@"}},
      {62603, {u"@UNISU@"}},
  };
  for (const TextRow& row : AllTexts()) {
    const auto wanted = placeholders.find(row.id);
    if (wanted == placeholders.end()) {
      EXPECT_EQ(row.text.find(u'@'), std::u16string_view::npos) << row.id;
      continue;
    }
    for (const std::u16string_view placeholder : wanted->second) {
      EXPECT_NE(row.text.find(placeholder), std::u16string_view::npos) << row.id;
    }
  }
}

// --- column runs

struct Column {
  std::string upper;
  std::string lower;
  std::string width;
};

// The columns of a grid by number. A run ends with its column number and starts behind the free id or the
// number of the run before it, so its length (3 or 4) follows from the ids alone.
std::map<int, Column> ColumnsOf(const std::vector<int>& threeIdStarts, const std::vector<int>& fourIdStarts) {
  std::map<int, Column> columns;
  for (const int id : threeIdStarts) {
    columns[std::stoi(Utf8Of(id + 2))] = {"", Utf8Of(id), Utf8Of(id + 1)};
  }
  for (const int id : fourIdStarts) {
    columns[std::stoi(Utf8Of(id + 3))] = {Utf8Of(id), Utf8Of(id + 1), Utf8Of(id + 2)};
  }
  return columns;
}

std::vector<int> Every(int step, int first, int last) {
  std::vector<int> ids;
  for (int id = first; id <= last; id += step) {
    ids.push_back(id);
  }
  return ids;
}

std::vector<int> Join(std::vector<std::vector<int>> parts) {
  std::vector<int> all;
  for (const auto& part : parts) {
    all.insert(all.end(), part.begin(), part.end());
  }
  return all;
}

std::map<int, Column> ChannelColumns() {
  return ColumnsOf({21003, 21007, 21011, 21015, 21019, 21023, 21067, 21071, 21075, 21079},
                   Join({Every(4, 21026, 21062), Every(4, 21082, 21214)}));
}

std::map<int, Column> OperationColumns() {
  return ColumnsOf(Join({Every(4, 22005, 22033), {22037, 22041, 22085, 22089, 22093, 22097}}),
                   Join({Every(4, 22044, 22080), Every(4, 22100, 22224), {22228}}));
}

TEST(ChannelGridTexts, NumberTheColumns1To54) {
  const auto columns = ChannelColumns();
  ASSERT_EQ(columns.size(), 54U);
  EXPECT_EQ(columns.begin()->first, 1);
  EXPECT_EQ(columns.rbegin()->first, 54);
}

TEST(ChannelGridTexts, GiveHeadingsAndWidths) {
  const auto columns = ChannelColumns();
  const std::map<int, Column> expected = {
      {1, {"", "表示色", "700"}},
      {2, {"", "タグNo.1", "1500"}},
      {3, {"", "タグNo.2", "1500"}},
      {4, {"", "入力種類", "1100"}},
      {5, {" ", "入力チャネル", "1100"}},
      {6, {"", "入力フィルタ", "1050"}},
      {7, {"", "入力単位", "1500"}},
      {8, {"スケーリング", "ON / OFF", "スケーリング"}}, // a word in place of a width is measured
      {9, {"測定範囲", "下限値", "1700"}},
      {10, {"測定範囲", "上限値", "1700"}},
      {11, {"工業値", "下限値", "1700"}},
      {12, {"工業値", "上限値", "1700"}},
      {13, {"　", "開平演算", "900"}},
      {14, {"　", "対数演算", "1700"}},
      {15, {"　", "差演算ﾁｬﾈﾙ", "1500"}},
      {16, {"表示範囲", "下限値", "1700"}},
      {17, {"表示範囲", "上限値", "1700"}},
      {18, {"", "ゾーン領域", "0"}},
      {19, {"", "記録動作", "1300"}},
      {20, {"", "記録ﾀｲﾌﾟ", "1300"}},
      {21, {"", "表示モード", "0"}},
      {22, {"ズーム", "境界値1", "0"}},
      {23, {"ズーム", "位置1", "0"}},
      {24, {"ズーム", "境界値2", "0"}},
      {25, {"ズーム", "位置2", "0"}},
      {26, {"PVシフト", "シフト値", "1000"}},
      {27, {"PVシフト", "傾き(%)", "1000"}},
      {28, {"　", "Ｆ値演算", "900"}},
      {29, {"積算", "積算タグ", "1500"}},
      {30, {"積算", "演算動作", "1300"}},
      {31, {"積算", "積算タイプ", "1200"}},
      {32, {"積算", "外部入力", "1300"}},
      {33, {"積算", "単位時間", "1000"}},
      {34, {"積算", "リセット動作", "1300"}},
      {35, {"積算", "積算単位", "1500"}},
      {36, {"積算", "積算除数", "1600"}},
      {37, {"積算", "下限ｶｯﾄ値", "1000"}},
      {38, {"積算", "リセット入力", "1300"}},
  };
  for (const auto& [number, column] : expected) {
    EXPECT_EQ(columns.at(number).upper, column.upper) << number;
    EXPECT_EQ(columns.at(number).lower, column.lower) << number;
    EXPECT_EQ(columns.at(number).width, column.width) << number;
  }
  for (int alarm = 0; alarm < 4; ++alarm) {
    const int first = 39 + 4 * alarm;
    const std::string name = "警報No." + std::to_string(alarm + 1);
    EXPECT_EQ(columns.at(first).upper + columns.at(first).lower + columns.at(first).width,
              name + "警報動作1000");
    EXPECT_EQ(columns.at(first + 1).upper + columns.at(first + 1).lower + columns.at(first + 1).width,
              name + "警報設定値1300");
    EXPECT_EQ(columns.at(first + 2).upper + columns.at(first + 2).lower + columns.at(first + 2).width,
              "Alarm No." + std::to_string(alarm + 1) + "偏差警報比較CH.0");
    EXPECT_EQ(columns.at(first + 3).upper + columns.at(first + 3).lower + columns.at(first + 3).width,
              name + "ＤＯリレーNo.1200");
  }
}

TEST(OperationGridTexts, NumberTheColumns1To57) {
  const auto columns = OperationColumns();
  ASSERT_EQ(columns.size(), 57U);
  EXPECT_EQ(columns.begin()->first, 1);
  EXPECT_EQ(columns.rbegin()->first, 57);
}

TEST(OperationGridTexts, PutTheFormulasBehindTheTags) {
  const auto columns = OperationColumns();
  for (int same = 1; same <= 3; ++same) {
    EXPECT_EQ(columns.at(same).lower, ChannelColumns().at(same).lower);
    EXPECT_EQ(columns.at(same).width, ChannelColumns().at(same).width);
  }
  EXPECT_EQ(columns.at(4).lower + columns.at(4).width, "式 B014500");
  EXPECT_EQ(columns.at(5).lower + columns.at(5).width, "式 B024500");
  EXPECT_EQ(columns.at(6).lower + columns.at(6).width, "式 B034500");
  EXPECT_EQ(columns.at(7).lower + columns.at(7).width, "式 結果4500");
  EXPECT_EQ(columns.at(8).lower + columns.at(8).width, "入力種類0");
}

TEST(OperationGridTexts, RepeatTheChannelColumnsThreePlacesFurtherRight) {
  const auto channel = ChannelColumns();
  const auto operation = OperationColumns();
  for (int number = 6; number <= 54; ++number) {
    const Column& from = channel.at(number);
    const Column& to = operation.at(number + 3);
    EXPECT_EQ(to.lower, from.lower) << number;
    if (from.upper.starts_with("Alarm No.")) {
      EXPECT_EQ(to.upper, "警報No." + from.upper.substr(9)) << number;
    } else {
      EXPECT_EQ(to.upper, from.upper) << number;
    }
    if (number == 8) {
      EXPECT_EQ(to.width, "0"); // an operation channel has no scaling
    } else if (number == 14) {
      EXPECT_EQ(to.width, "1000");
    } else {
      EXPECT_EQ(to.width, from.width) << number;
    }
  }
}

// Texts of consecutive ids from `first` on.
struct GridRun {
  const char* name;
  int first;
  std::vector<const char*> texts;
};

void PrintTo(const GridRun& run, std::ostream* out) {
  *out << run.texts.size() << " texts";
}

class GridTexts : public testing::TestWithParam<GridRun> {};

TEST_P(GridTexts, DescribeTheGrid) {
  int id = GetParam().first;
  for (const char* text : GetParam().texts) {
    EXPECT_EQ(Utf8Of(id), text) << id;
    ++id;
  }
}

// A width that is a word ("カラーバー表示選択" of the groups) is measured.
// clang-format off
INSTANTIATE_TEST_SUITE_P(
    All, GridTexts,
    testing::Values(
        GridRun{"Channel", 20900, {"CH", "700"}},
        GridRun{"Operation", 22002, {"CH", "700"}},
        GridRun{"Message", 23000, {"4", "NO.", "650"}},
        GridRun{"MessageColumns", 23006, {"メッセージ", "4500", "1", "タイミング", "900", "2",
                                          "DI No/警報Ch", "1250", "3", "警報No.", "1110", "4"}},
        GridRun{"Unit", 24000, {"1", "NO.", "700", "単位名", "1500", "1"}},
        GridRun{"DI", 25000, {"6", "11", "DI", "700", "表示色", "700", "1", "記録ﾀｲﾌﾟ", "1300", "2",
                              "記録動作", "1300", "3", "下限値", "1700", "4", "上限値", "1700", "5"}},
        GridRun{"Group", 26001, {"16", "ｸﾞﾙｰﾌﾟ No.", "1000", "ﾊﾞｰｸﾞﾗﾌ/ｱﾅﾛｸﾞﾒｰﾀ選択", "2000", "1",
                                 "カラーバー表示選択", "カラーバー表示選択", "2",
                                 "データ１", "1500", "3", "データ２", "1500", "4", "データ３", "1500", "5",
                                 "データ４", "1500", "6", "データ５", "1500", "7", "データ６", "1500", "8",
                                 "データ７", "1500", "9", "データ８", "1500", "10", "データ９", "1500", "11",
                                 "データ１０", "1500", "12", "画面名称", "3000", "13",
                                 "トレンド方向", "1500", "14", "画面分割数", "1500", "15"}},
        GridRun{"Constant", 28000, {"1", "NO.", "720", "定数値", "1200", "1"}},
        GridRun{"MailTrigger", 63100, {"タイトル", "4000", "テキスト1", "4000", "テキスト2", "4000",
                                       "トリガータイミング", "1800", "警報CH/DI No./本体異常ﾀｲﾌﾟ/周期", "3000",
                                       "警報No./基準時間", "1500", "測定値添付", "1800",
                                       "アドレスNo.1", "1200", "アドレスNo.2", "1200", "アドレスNo.3", "1200",
                                       "アドレスNo.4", "1200", "アドレスNo.5", "1200", "アドレスNo.6", "1200",
                                       "アドレスNo.7", "1200", "アドレスNo.8", "1200"}}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

} // namespace
} // namespace loader
