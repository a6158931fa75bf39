// What the printed sheet says for the parameters that belong to no channel: the first value of each list, the
// last and one behind it.
#include "tests/files/SheetValues.h"

#include "core/modMain.h"
#include "meaning/Meaning.h"
#include "operation/Formula.h"

namespace loader::test {
namespace {

using OtherSheetValues = SheetValues;

TEST_F(OtherSheetValues, OfDisplaysAreTheEntriesOfTheirLists) {
  for (const char* tag : {"GC01", "GC02", "GC09", "GC10"}) {
    Expect(
        "G", 0,
        {{tag, 0, "無し"}, {tag, 1, "ﾁｬﾈﾙ1"}, {tag, 72, "ﾁｬﾈﾙ72"}, {tag, -1, "-1"}, {tag, -32768, "-32768"}});
  }
  Expect("T", 0,
         {{"THOU", 0, "上下"},
          {"THOU", 1, "左右"},
          {"THOU", 2, "上下"},
          {"TMCH", 0, "ﾁｬﾈﾙ無し"},
          {"TMCH", 1, "ﾁｬﾈﾙ１"},
          {"TMCH", 72, "ﾁｬﾈﾙ７２"},
          {"TMCH", 73, "73"},
          {"TBUN", 1, "1"},
          {"TBUN", 20, "20"},
          {"TBUN", 99, "99"},
          {"TPVD", 0, "ﾁｬﾈﾙNo.表示"},
          {"TPVD", 2, "単位表示"},
          {"TPVD", 3, "3"},
          {"TMEM", 0, "無し"},
          {"TMEM", 1, "有り"},
          {"TMEM", 2, "2"}});
  Expect("B", 0,
         {{"BHOU", 0, "上下"},
          {"BHOU", 1, "左右"},
          {"BHOU", 2, "2"},
          {"BBRM", 0, "バーグラフ"},
          {"BBRM", 1, "アナログメータ"},
          {"BBRM", 2, "2"}});
}

TEST_F(OtherSheetValues, OfTheRecorderAreTheEntriesOfTheirLists) {
  Expect("H", 0, {{"KLOC", 0, "OFF"},        {"KLOC", 2, "記録キーロック"},
                  {"KLOC", 3, "3"},          {"BETU", 0, "分割しない"},
                  {"BETU", 4, "1ヶ月"},      {"BETU", 5, "5"},
                  {"MSMP", 0, "1秒"},        {"MSMP", 19, "12時間"},
                  {"MSMP", 20, "20"},        {"SSMP", 0, "1秒"},
                  {"SSMP", 19, "12時間"},    {"SSMP", 20, "20"},
                  {"ALMH", 0, "0"},          {"ALMH", 100, "100"},
                  {"ALMH", 101, ""},         {"ALML", 0, "OFF"},
                  {"ALML", 1, "ON"},         {"ALML", 2, "2"},
                  {"ASBY", 0, "アスキー"},   {"ASBY", 1, "バイナリ"},
                  {"ASBY", 2, "2"},          {"FSTN", -200, "-200"},
                  {"FSTN", 2000, "2000"},    {"FSTN", 2001, ""},
                  {"FZTI", 1, "1"},          {"FZTI", 100, "100"},
                  {"FZTI", 0, ""},           {"FPOI", 0, "0"},
                  {"FPOI", 4, "4"},          {"FPOI", 5, "5"},
                  {"FTIT", -200, "-200"},    {"FTIT", 2000, "2000"},
                  {"FTIT", -201, ""},        {"BAAL", 0, "   無し"},
                  {"BAAL", 36, "36"},        {"BAAL", 37, "37"},
                  {"CFFL", 0, "   無し"},    {"CFFL", 36, "36"},
                  {"CFFL", 37, "37"},        {"SHOU", 0, "常時点灯"},
                  {"SHOU", 8, "１時間"},     {"SHOU", 9, "9"},
                  {"SHOU", 60, "60"},        {"PAS1", 9999, "9999"},
                  {"PAS2", 0, "0"},          {"RPAS", 10000, ""},
                  {"COMS", 1, "1"},          {"COMS", 247, "247"},
                  {"COMS", 248, ""},         {"COMB", 0, "9600"},
                  {"COMB", 1, "19200"},      {"COMB", 2, "2"},
                  {"COMP", 0, "無し"},       {"COMP", 2, "偶数"},
                  {"COMP", 3, "3"},          {"TIMF", 0, "2004/09/27"},
                  {"TIMF", 4, " Sep-27-04"}, {"TIMF", 5, "5"},
                  {"TIMS", 1, "1"},          {"CMPL", 0, "1/1"},
                  {"CMPL", 3, "1/60"},       {"CMPL", 4, "4"},
                  {"FIFO", 0, "OFF"},        {"FIFO", 1, "ON"},
                  {"FIFO", 2, "2"},          {"LANG", 0, "English"},
                  {"LANG", 1, "French"},     {"LANG", 2, "2"},
                  {"LOGO", 0, "Password"},   {"LOGO", 1, "Logon"},
                  {"LOGO", 2, "2"},          {"TBKC", 0, "白"},
                  {"TBKC", 1, "黒"},         {"TBKC", 2, "2"},
                  {"HBKC", 0, "白"},         {"HBKC", 1, "黒"},
                  {"HBKC", 2, "2"},          {"YEAR", 26, "26"},
                  {"MONT", 12, "12"},        {"DAYS", 31, "31"},
                  {"HOUR", 23, "23"},        {"MINT", 59, "59"}});
}

TEST_F(OtherSheetValues, OfMessagesFollowTheirTiming) {
  Expect("M", 0,
         {{"MTM1", 0, "無し"},
          {"MTM1", 4, "警報解除"},
          {"MTM1", 5, "5"},
          {"MCOR", 1, "赤"},
          {"MCOR", 14, "銀鼠"},
          {"MCOR", 15, "15"}});
  Expect("M", 0,
         {{"MTM1", 0, "無し"},        {"MTM2", 3, ""},         {"MTM3", 3, ""},          {"MTM1", 1, "DI ON"},
          {"MTM2", 0, "DI1"},         {"MTM2", 15, "DI16"},    {"MTM2", 16, "16"},       {"MTM3", 3, ""},
          {"MTM1", 2, "DI OFF"},      {"MTM2", 1, "DI2"},      {"MTM1", 3, "警報発生"},  {"MTM2", 0, "無し"},
          {"MTM2", 30, "チャネル30"}, {"MTM2", 31, "31"},      {"MTM3", 0, "1"},         {"MTM3", 3, "4"},
          {"MTM3", 4, "4"},           {"MTM1", 4, "警報解除"}, {"MTM2", 1, "チャネル1"}, {"MTM1", 9, "9"},
          {"MTM2", 3, "3"},           {"MTM3", 2, "2"}});
}

TEST_F(OtherSheetValues, OfTheTotalizerAreTimesAndEntries) {
  Expect("E", 0,
         {{"TTSH", 23, "23"},
          {"TTSH", 24, ""},
          {"TTSM", 59, "59"},
          {"TTEH", 0, "0"},
          {"TTEM", 60, ""},
          {"TSBA", 485, "8:05"},
          {"TSBA", 1439, "23:59"},
          {"TSBA", 1440, "1440"},
          {"TSTR", 0, "0:00"},
          {"TSTR", -1, "-1"},
          {"TSTO", 600, "10:00"},
          {"TSTO", 32767, "32767"},
          {"TCYC", 0, "10分"},
          {"TCYC", 9, "24時間"},
          {"TCYC", 10, "10"},
          {"TWDY", 0, "日曜日"},
          {"TWDY", 6, "土曜日"},
          {"TWDY", 7, "7"},
          {"TDAY", 0, "1"},
          {"TDAY", 30, "31"},
          {"TDAY", 31, "31"},
          {"TEXT", 0, "DI1"},
          {"TEXT", 10, "ﾁｬﾈﾙ1 警報1"},
          {"TEXT", 298, "298"},
          {"TIMH", 1440, "1440"},
          {"TIMA", 0, ""},
          {"TIMT", 1, "1"}});
  Expect("Z", 0,
         {{"TOTA", 0, "OFF"},
          {"TOTA", 1, "ON"},
          {"TOTA", 2, "2"},
          {"TSTM", 0, "/s"},
          {"TSTM", 3, "/day"},
          {"TSTM", 4, "4"},
          {"TSIG", 0, "常時動作"},
          {"TSIG", 3, "時間"},
          {"TSIG", 4, "4"}});
  Expect("D", 0, {{"DIKI", 0, "機能無し"}, {"DIKI", 5, "画面点灯"}, {"DIKI", 6, "6"}});
}

TEST_F(OtherSheetValues, OfTheNetworkAreSwitchesAndLevels) {
  for (const char* tag : {"ETHE", "MAIL", "FTPF", "FTPA", "WEBF", "WEBA", "WEBM", "MOTC"}) {
    Expect("J", 0, {{tag, 0, "OFF"}, {tag, 1, "ON"}, {tag, 2, "2"}, {tag, -1, "-1"}});
  }
  Expect("K", 0,
         {{"LVEL", 0, "管理者"},
          {"LVEL", 1, "ゲスト"},
          {"LVEL", 2, "operator"},
          {"LVEL", 3, "ゲスト"},
          {"LVEL", 4, "4"}});
  Expect("L", 0,
         {{"MODF", 0, "slave"},
          {"MODF", 1, "master"},
          {"MODF", 2, "2"},
          {"RETN", 0, "200ms"},
          {"RETN", 5, "10s"},
          {"RETN", 6, "6"}});
}

TEST_F(OtherSheetValues, OfMailsFollowTheirTiming) {
  Expect("X", 0,
         {{"ETRG", 0, "無し"},
          {"ETG1", 3, ""},
          {"ETG2", 3, ""},
          {"ETRG", 1, "DI ON"},
          {"ETG1", 9, "DI10"},
          {"ETG2", 3, ""},
          {"ETRG", 2, "DI OFF"},
          {"ETG1", 0, "DI1"},
          {"ETRG", 3, "警報発生"},
          {"ETG1", 29, "ﾁｬﾈﾙ30"},
          {"ETG1", 30, "30"},
          {"ETG2", 0, "1"},
          {"ETG2", 3, "4"},
          {"ETG2", 4, "4"},
          {"ETRG", 4, "警報解除"},
          {"ETG1", 0, "ﾁｬﾈﾙ1"},
          {"ETRG", 5, "本体異常警報"},
          {"ETG1", 0, "全Ch警報論理和出力"},
          {"ETG1", 3, "メモリカードフル"},
          {"ETG1", 4, "4"},
          {"ETG2", 3, ""},
          {"ETRG", 6, "定周期"},
          {"ETG1", 0, "1時間"},
          {"ETG1", 6, "1日"},
          {"ETG1", 7, "7"},
          {"ETG2", 0, "0"},
          {"ETG2", 23, "23"},
          {"ETG2", 24, "24"},
          {"ETRG", 7, "7"},
          {"ETG1", 3, "3"},
          {"EPVA", 0, "無し"},
          {"EPVA", 1, "有り"},
          {"EPVA", 2, "2"},
          {"EADD", 0, ""},
          {"EADD", 0b10000101, "1 3 8"},
          {"EADD", 255, "1 2 3 4 5 6 7 8"}});
  EXPECT_EQ("1 2 3 4 5 6 7 8", ToUtf8(gFTextValueMail("X", 0, "EADD")));
  EXPECT_EQ("", Text("X", 0, "EADA")); // no such parameter
}

TEST_F(OtherSheetValues, OfConstantsStandAtTheirOwnPosition) {
  Expect("N", 0,
         {{"CONP", 0, "0"},
          {"CONP", 4, "4"},
          {"CONS", 31416, "3.1416"},
          {"CONS", -32768, ""},
          {"CONP", 5, "5"},
          {"CONS", 12, "12"}});
}

TEST_F(OtherSheetValues, OfFormulasStandWhereTheirFirstTermsDo) {
  Put("O", 11, "OP11", FormulaCompose(1, 1)); // ABS
  Put("O", 11, "S111", FormulaCompose(4, 11));
  Put("O", 11, "OP41", FormulaCompose(0, 1));
  Put("O", 11, "S141", FormulaCompose(0, 17));
  EXPECT_EQ("ABS(K12)", Text("O", 11, "OP11"));
  EXPECT_EQ("", Text("O", 11, "OP21"));
  EXPECT_EQ("", Text("O", 11, "OP31"));
  EXPECT_EQ("C18", Text("O", 11, "OP41"));
}

TEST_F(OtherSheetValues, OfSectionsThatTheSheetLeavesOutAreEmpty) {
  Expect("I", 0, {{"DCOL", 1, ""}, {"DREM", 1, ""}, {"DREO", 1, ""}, {"DRMN", 1, ""}, {"DRMX", 1, ""}});
  Expect("F", 0, {{"FIX", 1, ""}});
  Expect("S", 0, {{"SYS1", 1, ""}});
  EXPECT_EQ("", Text("R", 0, "ANY"));
}

TEST_F(OtherSheetValues, OfATagThatDoesNotExistAreEmpty) {
  for (const char* section : {"C", "A", "G", "H", "X", "O"}) {
    EXPECT_EQ("", Text(section, 0, "QQQQ"));
    EXPECT_EQ("", Text(section, 0, ""));
  }
}

TEST_F(OtherSheetValues, OfAnItemThatDoesNotExistFail) {
  for (const int item : {-1, 30, 32767, -32768}) {
    EXPECT_THROW(Text("C", item, "TYPE"), RunTimeFailure) << item;
    EXPECT_THROW(Text("C", item, "QQQQ"), RunTimeFailure) << item;
    EXPECT_THROW(Text("A", item, "A1TY"), RunTimeFailure) << item;
    EXPECT_THROW(Text("X", item, "ETTL"), RunTimeFailure) << item;
    EXPECT_THROW(Text("I", item, "DCOL"), RunTimeFailure) << item;
  }
  EXPECT_THROW(Text("Q", 0, "TYPE"), RunTimeFailure);
}

// Whatever a file or a recorder brings: a listed value prints as a text, and never as nothing unless the list
// itself says nothing for it.
TEST_F(OtherSheetValues, OfListsAreNeverNothing) {
  for (const ParamSection& section : ParamStore) {
    const std::string code(Trim(std::string_view(section.Code)));
    for (const ParamNumRecord& record : std::vector(section.Items.front().NumRecords)) {
      const std::string tag(Trim(std::string_view(record.Tag)));
      const MeaningRow& row = MeaningOf(code, tag);
      const bool listed = FormIn(row, View::Sheet).choices != nullptr;
      if (!listed || !IsPrinted(row.meaning) || tag == "UNIT" || tag == "SEUN") {
        continue; // a reserved unit has an empty name
      }
      for (int value = -40; value < 400; ++value) {
        Put(code, 0, tag, value);
        EXPECT_NE("", Text(code, 0, tag)) << code << tag << " " << value;
      }
    }
  }
}

} // namespace
} // namespace loader::test
