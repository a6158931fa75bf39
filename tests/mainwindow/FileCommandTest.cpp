// Open, Save and text output from the window, and when they are not offered.
#include <functional>

#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

class FileCommands : public EitherWindow {
protected:
  // Answers the next dialog with a file of the program folder.
  void Choose(std::string_view name) { platform.fileDialogs.answers.push_back(platform.folder / name); }
  void Cancel() { platform.fileDialogs.answers.emplace_back(); }
  bool IsKov() const { return std::string_view(GetParam()) == "KOV"; }
};
LOADER_FOR_BOTH_MODELS(FileCommands);

// --- Open

TEST_P(FileCommands, OpenAsksWithTheModelsFilterAndNoName) {
  Cancel();
  user.Click(Window().smenuOpen);
  ASSERT_EQ(1U, platform.fileDialogs.shown.size());
  const auto& shown = platform.fileDialogs.shown[0];
  EXPECT_EQ("open", shown.kind);
  EXPECT_EQ("パラメータファイルを開く", ToUtf8(shown.asked.DialogTitle));
  EXPECT_EQ(IsKov() ? "*.KOV(パラメータファイル)|*.KOV" : "*.RUG(パラメータファイル)|*.RUG",
            ToUtf8(shown.asked.Filter));
  EXPECT_EQ("", ToUtf8(shown.asked.FileName));
}

TEST_P(FileCommands, OpenThatIsCancelledChangesNothing) {
  PutText("C", 0, "TAG", "MINE");
  Cancel();
  user.Click(Window().smenuOpen);
  EXPECT_EQ(Padded64("MINE"), StoredText("C", 0, "TAG"));
  EXPECT_EQ("CH 01", ChannelCell(1, 2)) << "refreshed";
  EXPECT_TRUE(platform.boxes.shown.empty());
}

TEST_P(FileCommands, OpenShowsTheFileOverTheDefaults) {
  PutText("C", 1, "TAG", "MINE");
  Put("H", 0, "MSMP", 4);
  platform.WriteFile("a.any", "LOADER ,V210\r\nC00TAG ,BOILER\r\nH00ALMH,12\r\nM09MESS,Last\r\n");
  Choose("a.any");
  user.Click(Window().smenuOpen);
  EXPECT_EQ("BOILER", ChannelCell(1, 2));
  EXPECT_EQ("CH 02", ChannelCell(2, 2));
  EXPECT_EQ(0, List("cmbMainSample").index);
  EXPECT_EQ("12", TextOf(Field("txtAlarmHist")));
  EXPECT_EQ("Last", CellText(Window().fgrMess, 10, 1));
}

TEST_P(FileCommands, OpenBringsTheFilesUnitsIntoTheUnitLists) {
  platform.WriteFile("a.any", "LOADER ,V210\r\nU00UNIT,kg/m\r\nC00UNIT,156\r\n");
  Choose("a.any");
  user.Click(Window().smenuOpen);
  EXPECT_EQ("kg/m", CellText(Window().fgrUnit, 1, 1));
  EXPECT_EQ("kg/m", ChannelCell(1, 7));
}

TEST_P(FileCommands, OpenFromTheFirstToolButtonIsTheSame) {
  platform.WriteFile("a.any", "LOADER ,V210\r\nC00TAG ,BOILER\r\n");
  Choose("a.any");
  user.Click(Window().V(1));
  EXPECT_EQ("open", platform.fileDialogs.shown.at(0).kind);
  EXPECT_EQ("BOILER", ChannelCell(1, 2));
}

TEST_P(FileCommands, OpenThatFailsLeavesTheInitialSettingsOnTheScreen) {
  PutText("C", 0, "TAG", "MINE");
  FillChannelRow(1);
  platform.WriteFile("bad.any", "LOADER ,V210\r\nC00TAG ,BOILER\r\nno comma\r\n");
  Choose("bad.any");
  platform.boxes.Expect(u"読み込みに失敗しました");
  user.Click(Window().smenuOpen);
  EXPECT_EQ("CH 01", ChannelCell(1, 2));
  EXPECT_EQ(Padded64("CH 01"), StoredText("C", 0, "TAG"));
  EXPECT_FALSE(platform.screens.programEnded);
}

TEST_P(FileCommands, OpenOfAMissingFileFailsTheSameWay) {
  PutText("C", 0, "TAG", "MINE");
  Choose("nowhere.any");
  platform.boxes.Expect(u"読み込みに失敗しました");
  user.Click(Window().smenuOpen);
  EXPECT_EQ("CH 01", ChannelCell(1, 2));
}

TEST_P(FileCommands, OpenThatFailsLeavesTheUnitListAsItWas) {
  UnitNames.at(156) = u"old";
  platform.WriteFile("bad.any", "LOADER ,V210\r\nU00UNIT,new\r\nno comma\r\n");
  Choose("bad.any");
  platform.boxes.Expect(u"読み込みに失敗しました");
  user.Click(Window().smenuOpen);
  EXPECT_EQ(u"old", UnitNames.at(156));
}

TEST_P(FileCommands, OpenEndsTheProgramWhenTheStoreCannotBeRebuilt) {
  std::filesystem::remove(platform.folder / "InitSet.Ini");
  platform.WriteFile("a.any", "LOADER ,V210\r\n");
  Choose("a.any");
  platform.boxes.Expect(u"初期ファイルが存在しないか、初期ファイルが不正です");
  user.Click(Window().smenuOpen);
  EXPECT_TRUE(platform.screens.programEnded);
}

TEST_P(FileCommands, OpenEndsTheProgramWhenTheSecondRebuildFails) {
  platform.WriteFile("bad.any", "no comma\r\n");
  Choose("bad.any");
  platform.boxes.Expect(u"読み込みに失敗しました", BoxAnswer::Ok,
                        [this] { std::filesystem::remove(platform.folder / "InitSet.Ini"); });
  platform.boxes.Expect(u"初期ファイルが存在しないか、初期ファイルが不正です");
  user.Click(Window().smenuOpen);
  EXPECT_TRUE(platform.screens.programEnded);
}

TEST_P(FileCommands, OpenAsksNothingAboutUnsavedChanges) {
  user.Type(Field("txtAlarmHist"), u"9");
  platform.WriteFile("a.any", "LOADER ,V210\r\n");
  Choose("a.any");
  user.Click(Window().smenuOpen);
  EXPECT_TRUE(platform.boxes.shown.empty());
  EXPECT_EQ("0", TextOf(Field("txtAlarmHist")));
}

TEST_P(FileCommands, OpenKeepsThePageAndTheRowToCopyFrom) {
  user.ChoosePage(Window().tbsParameter, 3);
  user.MoveTo(Window().fgrMess);
  Window().CopySourceRow = 4;
  platform.WriteFile("a.any", "LOADER ,V210\r\n");
  Choose("a.any");
  user.Click(Window().smenuOpen);
  EXPECT_EQ(3, Window().tbsParameter.current);
  EXPECT_EQ(4, Window().CopySourceRow);
  EXPECT_EQ(CopyKinds::Messages, Window().CopyKind);
}

// --- Save

TEST_P(FileCommands, SaveAsksWithTheModelsFilterAndNoName) {
  Cancel();
  user.Click(Window().smenuOverWrite);
  ASSERT_EQ(1U, platform.fileDialogs.shown.size());
  const auto& shown = platform.fileDialogs.shown[0];
  EXPECT_EQ("save", shown.kind);
  EXPECT_EQ("パラメータファイルの保存", ToUtf8(shown.asked.DialogTitle));
  EXPECT_EQ(IsKov() ? "*.KOV(パラメータファイル)|*.KOV" : "*.RUG(パラメータファイル)|*.RUG",
            ToUtf8(shown.asked.Filter));
  EXPECT_EQ("", ToUtf8(shown.asked.FileName));
}

TEST_P(FileCommands, SaveWritesWhatTheFieldsHold) {
  user.Type(Field("txtAlarmHist"), u"17");
  user.Choose(List("cmbMainSample"), 6);
  Choose("out.any");
  user.Click(Window().smenuOverWrite);
  const std::string saved = platform.ReadFile("out.any");
  EXPECT_EQ(0U, saved.find("LOADER ,V210\r\n"));
  EXPECT_NE(std::string::npos, saved.find("H00ALMH,17\r\n"));
  EXPECT_NE(std::string::npos, saved.find("H00MSMP,6\r\n"));
}

TEST_P(FileCommands, SaveThatFailsIsToldAndLeavesTheStore) {
  const auto before = AllNumbers();
  Choose("no/such/folder/out.any");
  platform.boxes.Expect(u"保存に失敗しました");
  user.Click(Window().smenuOverWrite);
  EXPECT_EQ(before, AllNumbers());
}

TEST_P(FileCommands, SaveThatIsCancelledEndsWithoutAWord) {
  Cancel();
  user.Click(Window().smenuOverWrite);
  EXPECT_TRUE(platform.boxes.shown.empty());
}

TEST_P(FileCommands, SavedSettingsComeBackOnTheScreen) {
  user.Type(Field("txtAlarmHist"), u"17");
  user.Type(Field("txtRecvMailAdd(7)"), u"plant@example.jp");
  user.Choose(List("cmbTsbah"), 23);
  user.Choose(List("cmbTsbam"), 59);
  Choose("out.any");
  user.Click(Window().smenuOverWrite);
  user.Type(Field("txtAlarmHist"), u"1");
  user.Type(Field("txtRecvMailAdd(7)"), u"other");
  user.Choose(List("cmbTsbah"), 0);
  Choose("out.any");
  user.Click(Window().smenuOpen);
  EXPECT_EQ("17", TextOf(Field("txtAlarmHist")));
  EXPECT_EQ("plant@example.jp", TextOf(Field("txtRecvMailAdd(7)")));
  EXPECT_EQ(23, List("cmbTsbah").index);
  EXPECT_EQ(59, List("cmbTsbam").index);
}

// A wrong value in a field holds up the command that took the focus from it.
TEST_P(FileCommands, SaveWaitsForAFieldThatFails) {
  user.Type(Field("txtAlarmHist"), u"101");
  platform.boxes.Expect(u"0から100の値を入力してください");
  EXPECT_FALSE(user.Click(Window().smenuOverWrite));
  EXPECT_TRUE(platform.fileDialogs.shown.empty());
}

// --- Text output

TEST_P(FileCommands, TextOutputPrintsWhatTheFieldsHoldByTheTemplateOfTheModel) {
  const std::string mine = IsKov() ? "TextKOV.Ini" : "TextRUG.Ini";
  platform.WriteFile(mine, "[\"H01ALMH\"] [\"C01TAG\"]\r\n");
  user.Type(Field("txtAlarmHist"), u"17");
  Choose("sheet.txt");
  user.Click(Window().smenuTextWrite);
  ASSERT_EQ(1U, platform.fileDialogs.shown.size());
  EXPECT_EQ("save", platform.fileDialogs.shown[0].kind);
  EXPECT_EQ("[     17  ] [CH 01   ]\r\n", platform.ReadFile("sheet.txt"));
  EXPECT_TRUE(platform.boxes.shown.empty());
}

TEST_P(FileCommands, TextOutputThatFailsIsTold) {
  Choose("sheet.txt"); // the template is missing
  platform.ExpectBox(11002);
  user.Click(Window().smenuTextWrite);
  EXPECT_FALSE(std::filesystem::exists(platform.folder / "sheet.txt"));
}

TEST_P(FileCommands, TextOutputWaitsForAFieldThatFails) {
  user.Type(Field("txtAlarmHist"), u"101");
  platform.boxes.Expect(u"0から100の値を入力してください");
  EXPECT_FALSE(user.Click(Window().smenuTextWrite));
  EXPECT_TRUE(platform.fileDialogs.shown.empty());
}

// --- During an exchange

struct Busy {
  const char* name;
  bool read;  // btnRegRead is enabled
  bool write; // btnRegWrite is enabled
};
void PrintTo(const Busy& busy, std::ostream* out) {
  *out << busy.name;
}
class FileCommandsWhileBusy : public MainWindow, public testing::WithParamInterface<Busy> {
protected:
  void SetUp() override {
    Open("KOV");
    Window().btnRegRead.enabled = GetParam().read;
    Window().btnRegWrite.enabled = GetParam().write;
  }
};
TEST_P(FileCommandsWhileBusy, ReturnAtOnce) {
  user.Click(Window().smenuOpen);
  user.Click(Window().V(1));
  user.Click(Window().smenuOverWrite);
  user.Click(Window().smenuTextWrite);
  EXPECT_TRUE(platform.fileDialogs.shown.empty());
  EXPECT_TRUE(platform.boxes.shown.empty());
}
TEST_P(FileCommandsWhileBusy, AreOfferedAgainAfterwards) {
  Window().btnRegRead.enabled = true;
  Window().btnRegWrite.enabled = true;
  platform.fileDialogs.answers.resize(4);
  user.Click(Window().smenuOpen);
  user.Click(Window().V(1));
  user.Click(Window().smenuOverWrite);
  user.Click(Window().smenuTextWrite);
  EXPECT_EQ(4U, platform.fileDialogs.shown.size());
}
INSTANTIATE_TEST_SUITE_P(Exchange, FileCommandsWhileBusy,
                         testing::Values(Busy{"Read", false, true}, Busy{"Write", true, false},
                                         Busy{"Both", false, false}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(KovWindow, VersionScreenIsOfferedDuringAnExchange) {
  Window().btnRegRead.enabled = false;
  platform.screens.Expect("frmAbout");
  user.Click(Window().menuVersion);
  EXPECT_EQ(std::vector<std::string>{"frmAbout"}, platform.screens.shownModally);
}

TEST_F(KovWindow, PagesChangeDuringAnExchange) {
  Window().btnRegRead.enabled = false;
  EXPECT_TRUE(user.ChoosePage(Window().tbsParameter, 4));
  EXPECT_EQ(4, Window().tbsParameter.current);
}

} // namespace
} // namespace loader::test
