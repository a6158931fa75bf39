// The model list: what a pick of the user asks, keeps and rebuilds.
#include <filesystem>

#include "core/modIniReadWrite.h"
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

constexpr std::u16string_view Question = u"パラメータ設定機種を切替えますか？";

class ModelChange : public MainWindow {
protected:
  int SavedType() { return ParseInt16(GetIniValue("LOADER", "TYPE", LoaderIniPath())).value_or(-999); }
  void OpenWithType(std::string_view type) {
    platform.WriteFile("LOADER.INI", "[LOADER]\r\nTYPE=" + std::string(type) +
                                         "\r\nCOMMUNICATION=1\r\nCOM=0\r\nSTNO=1\r\nIP=192.168.1.1\r\n");
    ASSERT_TRUE(Main([] {}));
    OpenMainWindow();
  }
  void Pick(int row, BoxAnswer answer = BoxAnswer::Ok) {
    platform.boxes.Expect(Question, answer);
    user.Choose(Window().cmbType, row);
  }
};

TEST_F(ModelChange, PickOfTheSavedModelAsksNothing) {
  Open("KOV");
  PutText("C", 0, "TAG", "MINE");
  user.Choose(Window().cmbType, 0);
  EXPECT_TRUE(platform.boxes.shown.empty());
  EXPECT_EQ(Padded64("MINE"), StoredText("C", 0, "TAG"));
  EXPECT_EQ("CH 01", ChannelCell(1, 2)) << "refreshed";
  EXPECT_TRUE(ParamStoreBackup.empty());
}

TEST_F(ModelChange, PickOfTheSavedModelAsksNothingOnRugEither) {
  Open("RUG");
  user.Choose(Window().cmbType, 1);
  EXPECT_TRUE(platform.boxes.shown.empty());
  EXPECT_TRUE(ParamStoreBackup.empty());
}

TEST_F(ModelChange, AsksWithOkAndCancel) {
  Open("KOV");
  Pick(1, BoxAnswer::Cancel);
  ASSERT_EQ(1U, platform.boxes.shown.size());
  EXPECT_EQ(BoxButtons::OkCancel, platform.boxes.shown[0].buttons);
}

TEST_F(ModelChange, CancelRestoresTheListAndLeavesTheStore) {
  Open("KOV");
  PutText("C", 0, "TAG", "MINE");
  Window().CopySourceRow = 3;
  Pick(1, BoxAnswer::Cancel);
  EXPECT_EQ(0, Window().cmbType.index);
  EXPECT_EQ(Padded64("MINE"), StoredText("C", 0, "TAG"));
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ(0, SavedType());
  EXPECT_TRUE(ParamStoreBackup.empty());
  EXPECT_EQ(3, Window().CopySourceRow);
}

TEST_F(ModelChange, CancelRestoresTheListOnRug) {
  Open("RUG");
  Pick(0, BoxAnswer::Cancel);
  EXPECT_EQ(1, Window().cmbType.index);
  EXPECT_EQ("RUG", ModelCode);
  EXPECT_EQ(1, SavedType());
}

// The comparison is with the file, whatever it holds by now.
TEST_F(ModelChange, ComparesWithTheFileAndNotWithTheModelInForce) {
  Open("KOV");
  SetIniValue("LOADER", "TYPE", u"1", LoaderIniPath());
  user.Choose(Window().cmbType, 1);
  EXPECT_TRUE(platform.boxes.shown.empty());
  EXPECT_EQ("KOV", ModelCode);
}

TEST_F(ModelChange, WritesTheModelToTheFile) {
  Open("KOV");
  Pick(1);
  EXPECT_EQ(1, SavedType());
  Pick(0);
  EXPECT_EQ(0, SavedType());
}

TEST_F(ModelChange, SavesTheProgramsSettings) {
  Open("KOV");
  Settings.ConfiguredLink = 2;
  Settings.ComPortIndex = 4;
  Settings.StationSetting = 33;
  Settings.RecorderIpAddress = u"10.1.2.3";
  Pick(1);
  EXPECT_EQ(u"2", GetIniValue("LOADER", "COMMUNICATION", LoaderIniPath()));
  EXPECT_EQ(u"4", GetIniValue("LOADER", "COM", LoaderIniPath()));
  EXPECT_EQ(u"33", GetIniValue("LOADER", "STNO", LoaderIniPath()));
  EXPECT_EQ(u"10.1.2.3", GetIniValue("LOADER", "IP", LoaderIniPath()));
}

TEST_F(ModelChange, KeepsTheOldStoreAside) {
  Open("KOV");
  PutText("C", 0, "TAG", "MINE");
  Put("C", 0, "TYPE", 20);
  const ParamStoreTable before = ParamStore;
  Pick(1);
  ASSERT_EQ(before.size(), ParamStoreBackup.size());
  ASSERT_EQ(30U, ParamStoreBackup[0].Items.size());
  EXPECT_EQ(72U, ParamStore[0].Items.size());
  std::swap(ParamStore, ParamStoreBackup);
  EXPECT_EQ(Padded64("MINE"), StoredText("C", 0, "TAG"));
  EXPECT_EQ(20, Stored("C", 0, "TYPE"));
  std::swap(ParamStore, ParamStoreBackup);
}

TEST_F(ModelChange, TakesTheProfileOfTheNewModel) {
  Open("KOV");
  Pick(1);
  EXPECT_EQ("RUG", ModelCode);
  EXPECT_EQ("V00W", VersionTag);
  EXPECT_EQ(36, Profile.ChannelCount);
  Pick(0);
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ("V00L", VersionTag);
  EXPECT_EQ(18, Profile.ChannelCount);
}

TEST_F(ModelChange, LaysTheTablesOutForTheNewModel) {
  Open("KOV");
  Pick(1);
  EXPECT_EQ(1, Window().cmbType.index);
  EXPECT_EQ(38, Window().fgrCh.Rows());
  EXPECT_EQ(38, Window().fgrOperationChSet.Rows());
  EXPECT_EQ(61, Window().fgrConst.Rows());
  EXPECT_EQ(9, Window().fgrGroup.Rows());
  EXPECT_FALSE(List("cmbTota").visible);
  EXPECT_TRUE(List("cmbDI(10)").visible);
  Pick(0);
  EXPECT_EQ(0, Window().cmbType.index);
  EXPECT_EQ(20, Window().fgrCh.Rows());
  EXPECT_EQ(14, Window().fgrOperationChSet.Rows());
  EXPECT_EQ(21, Window().fgrConst.Rows());
  EXPECT_EQ(5, Window().fgrGroup.Rows());
  EXPECT_TRUE(List("cmbTota").visible);
  EXPECT_FALSE(List("cmbDI(10)").visible);
}

TEST_F(ModelChange, RefillsTheListsForTheNewModel) {
  Open("KOV");
  EXPECT_EQ(29U, List("cmbCFFull").items.size());
  EXPECT_EQ(130U, List("cmbText").items.size());
  Pick(1);
  EXPECT_EQ(37U, List("cmbCFFull").items.size());
  EXPECT_EQ(304U, List("cmbText").items.size());
}

TEST_F(ModelChange, ShowsTheNewStore) {
  Open("KOV");
  Pick(1);
  EXPECT_EQ("CH36", ChannelCell(36, 0));
  EXPECT_EQ("K熱電対", ChannelCell(36, 4));
  EXPECT_EQ("CH37", OperationCell(37, 0));
  EXPECT_EQ("CH72", OperationCell(72, 0));
  EXPECT_EQ("ｸﾞﾙｰﾌﾟ No.8", CellText(Window().fgrGroup, 8, 0));
}

TEST_F(ModelChange, ForgetsTheRowToCopyFrom) {
  Open("KOV");
  Window().CopySourceRow = 9;
  Pick(1);
  EXPECT_EQ(0, Window().CopySourceRow);
}

TEST_F(ModelChange, KeepsThePage) {
  Open("KOV");
  user.ChoosePage(Window().tbsParameter, 2);
  Pick(1);
  EXPECT_EQ(2, Window().tbsParameter.current);
}

TEST_F(ModelChange, LeavesTheUserUnitsOfTheListAsTheyAre) {
  Open("KOV");
  UnitNames.at(156) = u"old";
  Pick(1);
  EXPECT_EQ(u"old", UnitNames.at(156));
}

TEST_F(ModelChange, EndsTheProgramWhenTheStoreCannotBeRebuilt) {
  Open("KOV");
  platform.boxes.Expect(Question, BoxAnswer::Ok,
                        [this] { std::filesystem::remove(platform.folder / "InitSet.Ini"); });
  platform.boxes.Expect(u"初期ファイルが存在しないか、初期ファイルが不正です");
  user.Choose(Window().cmbType, 1);
  EXPECT_TRUE(platform.screens.programEnded);
}

// --- A model number above the list

TEST_F(ModelChange, AsksForRugAlthoughItIsTheModelUnderANumberAboveTheList) {
  OpenWithType("5");
  Pick(1, BoxAnswer::Cancel);
  EXPECT_EQ(1, Window().cmbType.index) << "a row outside the list leaves it";
  EXPECT_EQ(5, SavedType());
}

// The list has no such row: it shows the model in force.
TEST_F(ModelChange, CancelShowsTheModelInForceWhereTheSavedRowDoesNotExist) {
  OpenWithType("5");
  Pick(0, BoxAnswer::Cancel);
  EXPECT_EQ(1, Window().cmbType.index);
  EXPECT_EQ("RUG", ModelCode);
  EXPECT_EQ(5, SavedType());
}

TEST_F(ModelChange, TakesRugOnceMoreUnderANumberAboveTheList) {
  OpenWithType("5");
  PutText("C", 0, "TAG", "MINE");
  Pick(1);
  EXPECT_EQ(1, SavedType());
  EXPECT_EQ("RUG", ModelCode);
  EXPECT_EQ(38, Window().fgrCh.Rows());
  EXPECT_FALSE(ParamStoreBackup.empty());
}

TEST_F(ModelChange, NegativeModelNumberIsHandledAlike) {
  OpenWithType("-1");
  EXPECT_EQ("RUG", ModelCode);
  Pick(1, BoxAnswer::Cancel);
  EXPECT_EQ(1, Window().cmbType.index);
}

// Where the program's folder cannot be written. The rebuild reads the model from the file.
TEST_F(ModelChange, ThatCannotBeSavedLeavesAllAsItIs) {
  Open("KOV");
  PutText("C", 0, "TAG", "MINE");
  std::filesystem::remove(LoaderIniPath());
  std::filesystem::create_directory(LoaderIniPath());
  platform.boxes.Expect(Question);
  platform.boxes.Expect(u"保存に失敗しました");
  user.Choose(Window().cmbType, 1);
  EXPECT_EQ(0, Window().cmbType.index);
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ(Padded64("MINE"), StoredText("C", 0, "TAG"));
  EXPECT_TRUE(ParamStoreBackup.empty());
}

// --- Who runs the handler

TEST_F(ModelChange, RefillOfTheListAsksNothing) {
  Open("RUG");
  SetIniValue("LOADER", "TYPE", u"0", LoaderIniPath());
  BuildTables();
  EXPECT_TRUE(platform.boxes.shown.empty());
  EXPECT_EQ(1, Window().cmbType.index);
}

TEST_F(ModelChange, IsNotOfferedDuringAnExchange) {
  Open("KOV");
  CallbacksOf(Window(), Flow::ReadOrWrite).setControlsEnabled(false);
  EXPECT_FALSE(user.Choose(Window().cmbType, 1));
  EXPECT_EQ("KOV", ModelCode);
}

// --- A file that has lost its model while the program ran

struct LostModel {
  const char* name;
  const char* model;
  const char* file; // LOADER.INI by then; nullptr: it is gone
};
void PrintTo(const LostModel& lost, std::ostream* out) {
  *out << lost.name;
}
class ModelChangeOverALostType : public ModelChange, public testing::WithParamInterface<LostModel> {};
TEST_P(ModelChangeOverALostType, CancelShowsTheModelInForce) {
  Open(GetParam().model);
  const int inForce = Window().cmbType.index;
  if (GetParam().file == nullptr) {
    std::filesystem::remove(LoaderIniPath());
  } else {
    platform.WriteFile("LOADER.INI", GetParam().file);
  }
  Pick(1 - inForce, BoxAnswer::Cancel);
  EXPECT_EQ(inForce, Window().cmbType.index);
  EXPECT_EQ(GetParam().model, ModelCode);
}
INSTANTIATE_TEST_SUITE_P(Files, ModelChangeOverALostType,
                         testing::Values(LostModel{"KovKeyGone", "KOV", "[LOADER]\r\nCOM=0\r\n"},
                                         LostModel{"RugKeyGone", "RUG", "[LOADER]\r\nCOM=0\r\n"},
                                         LostModel{"RugNoNumber", "RUG", "[LOADER]\r\nTYPE=x\r\n"},
                                         LostModel{"RugFileGone", "RUG", nullptr},
                                         LostModel{"KovNumberAboveTheList", "KOV", "[LOADER]\r\nTYPE=5\r\n"}),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace loader::test
