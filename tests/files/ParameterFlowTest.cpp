// Open and Save, from the file dialog to the screen.
#include "tests/files/ParameterFileSupport.h"

#include "core/TextTable.h"
#include "core/modIni.h"
#include "core/modIniReadWrite.h"
#include "tests/support/System.h"

namespace loader::test {
namespace {

class ParameterFlows : public ParameterFiles {
protected:
  // Answers the next dialog with a file of the program folder.
  void Choose(std::string_view name) {
    platform.fileDialogs.answers.push_back(platform.folder / PathOf(FromUtf8(name)));
  }
  void Cancel() { platform.fileDialogs.answers.emplace_back(); }
  void Open() {
    OpenParameterFile([this] { ++refreshes; });
  }
  void RemoveInitialSettings() { std::filesystem::remove(platform.folder / "InitSet.Ini"); }

  int refreshes = 0;
};

// --- The dialogs

struct Dialog {
  const char* model;
  const char* kind;
  int filter;
  int title;
};
void PrintTo(const Dialog& dialog, std::ostream* out) {
  *out << dialog.kind << " of " << dialog.model;
}

class FileDialogsOfModels : public ParameterFlows, public testing::WithParamInterface<Dialog> {};

TEST_P(FileDialogsOfModels, AskWithTheFilterOfTheModelAndNoName) {
  StartWithModel(platform, GetParam().model);
  const bool save = std::string_view(GetParam().kind) == "save";
  // Twice: no dialog remembers the one before.
  for (int time = 0; time < 2; ++time) {
    platform.WriteFile("a.any", "LOADER ,V210\r\n");
    Choose("a.any");
    save ? SaveParameterFile() : Open();
  }
  ASSERT_EQ(2U, platform.fileDialogs.shown.size());
  for (const ScriptedFileDialogs::Shown& shown : platform.fileDialogs.shown) {
    EXPECT_EQ(GetParam().kind, shown.kind);
    EXPECT_EQ(AskBeforeOverwrite, shown.asked.Flags);
    EXPECT_TRUE(shown.asked.CancelError);
    EXPECT_TRUE(shown.asked.FileName.empty());
    EXPECT_EQ(LoadText(TextId::At(GetParam().filter)), shown.asked.Filter);
    EXPECT_EQ(LoadText(TextId::At(GetParam().title)), shown.asked.DialogTitle);
  }
}

INSTANTIATE_TEST_SUITE_P(All, FileDialogsOfModels,
                         testing::Values(Dialog{"KOV", "open", 10703, 10015},
                                         Dialog{"RUG", "open", 10704, 10015},
                                         Dialog{"KOV", "save", 10703, 10016},
                                         Dialog{"RUG", "save", 10704, 10016}));

TEST(FileDialogTexts, AreThoseOfTheModels) {
  EXPECT_EQ(u"*.KOV(パラメータファイル)|*.KOV", LoadText(10703));
  EXPECT_EQ(u"*.RUG(パラメータファイル)|*.RUG", LoadText(10704));
  EXPECT_EQ(u"パラメータファイルを開く", LoadText(10015));
  EXPECT_EQ(u"パラメータファイルの保存", LoadText(10016));
}

// --- Open

TEST_F(ParameterFlows, ChangeNothingWhenTheUserCancelsAnOpen) {
  Put("C", 0, "FILT", 9);
  Cancel();
  Open();
  EXPECT_EQ(9, Stored("C", 0, "FILT"));
  EXPECT_EQ(0, refreshes);
}

TEST_F(ParameterFlows, LayAFileOverAFreshStore) {
  Put("C", 0, "FILT", 9);
  SetText(TextRecord("C", 1, "STAG"), u"edited", SlotValue);
  platform.WriteFile("a.KOV", "LOADER ,V210\r\nC01FILT,4\r\n");
  Choose("a.KOV");
  Open();
  EXPECT_EQ(0, Stored("C", 0, "FILT"));
  EXPECT_EQ(4, Stored("C", 1, "FILT"));
  EXPECT_EQ("CH 02", TrimmedText("C", 1, "STAG"));
  EXPECT_EQ(1, refreshes);
}

TEST_F(ParameterFlows, OpenAFileOfTheHeadAloneAsAllDefaults) {
  const std::string defaults = Saved();
  Put("C", 0, "FILT", 9);
  platform.WriteFile("a.KOV", "LOADER ,V210\r\n");
  Choose("a.KOV");
  Open();
  EXPECT_EQ(defaults, Saved());
  EXPECT_EQ(1, refreshes);
}

TEST_F(ParameterFlows, EnterTheUserUnitsOfTheFileIntoTheUnitList) {
  platform.WriteFile("a.KOV", "LOADER ,V210\r\nU00UNIT,m/s  \r\nU11UNIT, l/h\r\n");
  Choose("a.KOV");
  Open();
  EXPECT_EQ(u"m/s", UnitNames.at(156));
  EXPECT_EQ(u"", UnitNames.at(157));
  EXPECT_EQ(u" l/h", UnitNames.at(167));
  EXPECT_EQ(FixedText(u"m/s"), TextRecord("U", 0, "UNIT").Value);
}

TEST_F(ParameterFlows, EmptyTheUserUnitsThatAFileDoesNotName) {
  UnitNames.at(160) = u"old";
  platform.WriteFile("a.KOV", "LOADER ,V210\r\n");
  Choose("a.KOV");
  Open();
  EXPECT_EQ(u"", UnitNames.at(160));
}

TEST_F(ParameterFlows, ShowTheStoreAfterTheUnitListFollowed) {
  platform.WriteFile("a.KOV", "LOADER ,V210\r\nU00UNIT,m/s\r\nC00FILT,4\r\n");
  Choose("a.KOV");
  std::u16string unit;
  int filter = 0;
  OpenParameterFile([&] {
    unit = UnitNames.at(156);
    filter = NumValue("C", 0, "FILT");
  });
  EXPECT_EQ(u"m/s", unit);
  EXPECT_EQ(4, filter);
}

TEST_F(ParameterFlows, TellThatAFileDoesNotLoadAndTakeTheDefaults) {
  const std::string defaults = Saved();
  Put("C", 0, "FILT", 9);
  platform.WriteFile("a.KOV", "LOADER ,V210\r\nC01FILT,4\r\nC02QQQQ,1\r\n");
  Choose("a.KOV");
  platform.ExpectBox(11003);
  Open();
  EXPECT_EQ(defaults, Saved());
  EXPECT_EQ(1, refreshes);
  ASSERT_EQ(1U, platform.boxes.shown.size());
  EXPECT_EQ(u"読み込みに失敗しました", platform.boxes.shown[0].text);
  EXPECT_EQ(BoxButtons::Ok, platform.boxes.shown[0].buttons);
  EXPECT_FALSE(platform.screens.programEnded);
}

TEST_F(ParameterFlows, KeepThePartLaidStoreUntilTheMessageIsAnswered) {
  platform.WriteFile("a.KOV", "LOADER ,V210\r\nC01FILT,4\r\nC02QQQQ,1\r\n");
  Choose("a.KOV");
  int whileShown = 0;
  int refreshesWhileShown = -1;
  platform.ExpectBox(11003, BoxAnswer::Ok, [&] {
    whileShown = NumValue("C", 1, "FILT");
    refreshesWhileShown = refreshes;
  });
  Open();
  EXPECT_EQ(4, whileShown);
  EXPECT_EQ(0, refreshesWhileShown);
  EXPECT_EQ(0, Stored("C", 1, "FILT"));
}

TEST_F(ParameterFlows, LeaveTheUnitListAsItWasAfterAFailedOpen) {
  UnitNames.at(156) = u"old";
  platform.WriteFile("a.KOV", "LOADER ,V210\r\nU00UNIT,m/s\r\nC02QQQQ,1\r\n");
  Choose("a.KOV");
  platform.ExpectBox(11003);
  Open();
  EXPECT_EQ(u"old", UnitNames.at(156));
}

TEST_F(ParameterFlows, TellThatAFileIsNotThere) {
  Choose("nowhere.KOV");
  platform.ExpectBox(11003);
  Open();
  EXPECT_EQ(1, refreshes);
}

TEST_F(ParameterFlows, TellThatAFolderIsNoFile) {
  std::filesystem::create_directory(platform.folder / "folder.KOV");
  Choose("folder.KOV");
  platform.ExpectBox(11003);
  Open();
  EXPECT_EQ(1, refreshes);
}

TEST_F(ParameterFlows, EndTheProgramWhenTheStoreCannotBeRebuiltBeforeTheOpen) {
  platform.WriteFile("a.KOV", "LOADER ,V210\r\nC01FILT,4\r\n");
  RemoveInitialSettings();
  Choose("a.KOV");
  platform.ExpectBox(11005);
  Open();
  EXPECT_TRUE(platform.screens.programEnded);
  EXPECT_EQ(0, refreshes);
  EXPECT_EQ(0, Stored("C", 1, "FILT"));
}

TEST_F(ParameterFlows, EndTheProgramWhenTheStoreCannotBeRebuiltAfterAFailedOpen) {
  platform.WriteFile("a.KOV", "no parameter file");
  Choose("a.KOV");
  platform.ExpectBox(11003, BoxAnswer::Ok, [this] { RemoveInitialSettings(); });
  platform.ExpectBox(11005);
  Open();
  EXPECT_TRUE(platform.screens.programEnded);
  EXPECT_EQ(0, refreshes);
}

TEST_F(ParameterFlows, DoNotLookAtTheExtension) {
  platform.WriteFile("a.RUG", "LOADER ,V210\r\nC01FILT,4\r\n");
  Choose("a.RUG");
  Open();
  EXPECT_EQ(4, Stored("C", 1, "FILT"));
}

TEST_F(ParameterFlows, DoNotOpenAFileOfTheLargerModel) {
  StartWithModel(platform, "RUG");
  ASSERT_TRUE(gFSaveParamFile(platform.folder / "large.RUG"));
  StartWithModel(platform, "KOV");
  const std::string defaults = Saved();
  Choose("large.RUG");
  platform.ExpectBox(11003);
  Open();
  EXPECT_EQ(defaults, Saved());
}

TEST_F(ParameterFlows, OpenAFileOfTheSmallerModelInPart) {
  Put("C", 29, "FILT", 5);
  ASSERT_TRUE(gFSaveParamFile(platform.folder / "small.KOV"));
  StartWithModel(platform, "RUG");
  Choose("small.KOV");
  Open();
  EXPECT_EQ(5, Stored("C", 29, "FILT"));
  EXPECT_EQ("CH 31", TrimmedText("C", 30, "TAG"));
}

TEST_F(ParameterFlows, TakeAModelThatWasChangedByHandAtTheNextOpen) {
  platform.WriteFile("a.KOV", "LOADER ,V210\r\nC71FILT,4\r\n");
  ASSERT_TRUE(SetIniValue("LOADER", "TYPE", u"1", LoaderIniPath()));
  Choose("a.KOV");
  Open();
  EXPECT_EQ("RUG", ModelCode);
  EXPECT_EQ(4, Stored("C", 71, "FILT"));
}

// --- Save

TEST_F(ParameterFlows, WriteNothingWhenTheUserCancelsASave) {
  Cancel();
  SaveParameterFile();
  for (const auto& entry : std::filesystem::directory_iterator(platform.folder)) {
    EXPECT_TRUE(entry.path().extension() == ".Ini" || entry.path().extension() == ".INI") << entry.path();
  }
}

TEST_F(ParameterFlows, SaveTheStoreUnderTheChosenName) {
  Put("C", 0, "FILT", 9);
  Choose("chosen.KOV");
  SaveParameterFile();
  EXPECT_EQ(Saved(), platform.ReadFile("chosen.KOV"));
}

TEST_F(ParameterFlows, TellThatASaveFailed) {
  Put("C", 0, "FILT", 9);
  Choose("nowhere/a.KOV");
  platform.ExpectBox(11002);
  SaveParameterFile();
  ASSERT_EQ(1U, platform.boxes.shown.size());
  EXPECT_EQ(u"保存に失敗しました", platform.boxes.shown[0].text);
  EXPECT_EQ(9, Stored("C", 0, "FILT"));
}

TEST_F(ParameterFlows, SaveAndOpenUnderAJapaneseName) {
  Put("C", 0, "FILT", 9);
  Choose("設定 表.KOV");
  SaveParameterFile();
  Put("C", 0, "FILT", 1);
  Choose("設定 表.KOV");
  Open();
  EXPECT_EQ(9, Stored("C", 0, "FILT"));
}

// --- What is no file at all

TEST_F(ParameterFlows, ThatMeetAPipeOrAFolderSayAtOnceThatTheyFailed) {
  ASSERT_TRUE(MakePipe(platform.folder / "pipe.KOV"));
  std::filesystem::create_directory(platform.folder / "folder.KOV");
  for (const char* name : {"pipe.KOV", "folder.KOV"}) {
    Choose(name);
    platform.ExpectBox(11003);
    Open();
    Choose(name);
    platform.ExpectBox(11002);
    SaveParameterFile();
  }
  EXPECT_EQ(4U, platform.boxes.shown.size());
  EXPECT_EQ(2, refreshes);
}

} // namespace
} // namespace loader::test
