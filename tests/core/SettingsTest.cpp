// Start-up: the model, its profile, and what LOADER.INI keeps.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modIniReadWrite.h"
#include "core/modMain.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

class Start : public testing::Test {
protected:
  void LoaderIni(std::string_view bytes) { platform.WriteFile("LOADER.INI", bytes); }
  [[nodiscard]] std::string LoaderIni() const { return platform.ReadFile("LOADER.INI"); }
  [[nodiscard]] bool LoaderIniExists() const {
    return std::filesystem::exists(platform.folder / "LOADER.INI");
  }

  ScriptedPlatform platform;
};

constexpr std::string_view CreatedIni =
    "[LOADER]\r\nTYPE=0\r\nCOMMUNICATION=0\r\nCOM=0\r\nSTNO=1\r\nIP=192.168.1.1\r\n";

// --- The profile

struct ProfileField {
  const char* name;
  std::int16_t ModelProfile::*field;
  std::int16_t kov;
  std::int16_t rug;
};
void PrintTo(const ProfileField& field, std::ostream* out) {
  *out << field.name;
}

constexpr ProfileField ProfileFields[] = {
    {"ChannelCount", &ModelProfile::ChannelCount, 18, 36},
    {"OperationChannelCount", &ModelProfile::OperationChannelCount, 12, 36},
    {"FirstOperationChannel", &ModelProfile::FirstOperationChannel, 19, 37},
    {"ConstantCount", &ModelProfile::ConstantCount, 20, 60},
    {"MessageCount", &ModelProfile::MessageCount, 10, 10},
    {"UnitCount", &ModelProfile::UnitCount, 12, 12},
    {"DigitalInputCount", &ModelProfile::DigitalInputCount, 10, 16},
    {"TriggerDIListSize", &ModelProfile::TriggerDIListSize, 10, 16},
    {"CommInputCount", &ModelProfile::CommInputCount, 12, 36},
    {"TotalizerCount", &ModelProfile::TotalizerCount, 30, 72},
    {"OperationResultCount", &ModelProfile::OperationResultCount, 3, 3},
    {"AlarmOutputListSize", &ModelProfile::AlarmOutputListSize, 29, 37},
    {"OtherChannelListSize", &ModelProfile::OtherChannelListSize, 30, 72},
    {"GroupCount", &ModelProfile::GroupCount, 4, 8},
    {"GroupChannelLast", &ModelProfile::GroupChannelLast, 9, 9},
};
static_assert(std::size(ProfileFields) * sizeof(std::int16_t) == sizeof(ModelProfile),
              "a field without its row");

class Profiles : public testing::TestWithParam<ProfileField> {
protected:
  ScriptedPlatform platform;
};

TEST_P(Profiles, HaveTheNumberOfKOV) {
  StartWithModel(platform, "KOV");
  EXPECT_EQ(GetParam().kov, Profile.*GetParam().field);
}

TEST_P(Profiles, HaveTheNumberOfRUG) {
  StartWithModel(platform, "RUG");
  EXPECT_EQ(GetParam().rug, Profile.*GetParam().field);
}

TEST_P(Profiles, TakeTheNumberOfTheModelSelectedLast) {
  StartWithModel(platform, "RUG");
  platform.WriteFile("LOADER.INI", "[LOADER]\r\nTYPE=0\r\n");
  SelectModel();
  EXPECT_EQ(GetParam().kov, Profile.*GetParam().field);
  platform.WriteFile("LOADER.INI", "[LOADER]\r\nTYPE=1\r\n");
  SelectModel();
  EXPECT_EQ(GetParam().rug, Profile.*GetParam().field);
}

INSTANTIATE_TEST_SUITE_P(All, Profiles, testing::ValuesIn(ProfileFields),
                         [](const testing::TestParamInfo<ProfileField>& field) { return field.param.name; });

// The start values stand before the first model selection: a load that fails in it leaves them to be seen.
TEST_F(Start, SetsTheStartCountsBeforeTheModelIsSelected) {
  LoaderIni("[LOADER]\r\nTYPE=none\r\n");
  platform.ExpectBox(11005);
  EXPECT_FALSE(Main([] {}));
  ModelProfile expected;
  expected.ConstantCount = 20;
  expected.MessageCount = 10;
  expected.UnitCount = 12;
  expected.DigitalInputCount = 16;
  expected.CommInputCount = 12;
  expected.TotalizerCount = 72;
  expected.OperationResultCount = 3;
  EXPECT_EQ(expected, Profile);
  EXPECT_EQ("", ModelCode);
}

TEST_F(Start, NamesTheModelAndItsBlock) {
  StartWithModel(platform, "KOV");
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ("V00L", VersionTag);
  StartWithModel(platform, "RUG");
  EXPECT_EQ("RUG", ModelCode);
  EXPECT_EQ("V00W", VersionTag);
}

// --- The model in LOADER.INI

TEST_F(Start, InAnEmptyFolderCreatesTheSettingsAndComesUpAsKOV) {
  ASSERT_FALSE(LoaderIniExists());
  bool shown = false;
  EXPECT_TRUE(Main([&] { shown = true; }));
  EXPECT_TRUE(shown);
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ(CreatedIni, LoaderIni());
}

TEST_F(Start, AddsAMissingTypeAndLeavesTheOtherKeys) {
  LoaderIni("[LOADER]\r\nCOMMUNICATION=1\r\nCOM=2\r\n");
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ("[LOADER]\r\nCOMMUNICATION=1\r\nCOM=2\r\nTYPE=0\r\n", LoaderIni());
}

TEST_F(Start, AddsTheTypeToAnEmptyFile) {
  LoaderIni("");
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ("[LOADER]\r\nTYPE=0\r\n", LoaderIni());
}

// The value that stands for an absent key cannot be told from it.
TEST_F(Start, TakesTheTypeERRORAsMissing) {
  LoaderIni("[LOADER]\r\nTYPE=ERROR\r\n");
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ("[LOADER]\r\nTYPE=0\r\n", LoaderIni());
}

struct Type {
  const char* text;
  const char* model;
};
void PrintTo(const Type& type, std::ostream* out) {
  *out << "TYPE=" << type.text;
}

class Types : public Start, public testing::WithParamInterface<Type> {};

TEST_P(Types, SelectTheModelAndStayInTheFile) {
  const std::string ini = "[LOADER]\r\nTYPE=" + std::string(GetParam().text) + "\r\n";
  LoaderIni(ini);
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ(GetParam().model, ModelCode);
  EXPECT_EQ(ini, LoaderIni());
}

INSTANTIATE_TEST_SUITE_P(All, Types,
                         testing::Values(Type{"0", "KOV"}, Type{"1", "RUG"}, Type{"5", "RUG"},
                                         Type{"-1", "RUG"}, Type{"32767", "RUG"}, Type{"-32768", "RUG"},
                                         Type{" 0 ", "KOV"}, Type{"+0", "KOV"}, Type{"000", "KOV"},
                                         Type{"\"1\"", "RUG"}, Type{"'0'", "KOV"}));

class BadTypes : public Start, public testing::WithParamInterface<const char*> {};

TEST_P(BadTypes, FailTheLoadAsAWhole) {
  StartWithModel(platform, "KOV");
  const std::size_t sections = ParamStore.size();
  const std::string ini = "[LOADER]\r\nTYPE=" + std::string(GetParam()) + "\r\n";
  LoaderIni(ini);
  EXPECT_FALSE(gFLoadInitSetteiData());
  EXPECT_EQ(sections, ParamStore.size());
  EXPECT_EQ(ini, LoaderIni());
}

TEST_P(BadTypes, EndTheStart) {
  LoaderIni("[LOADER]\r\nTYPE=" + std::string(GetParam()) + "\r\n");
  platform.ExpectBox(11005);
  bool shown = false;
  EXPECT_FALSE(Main([&] { shown = true; }));
  EXPECT_FALSE(shown);
}

INSTANTIATE_TEST_SUITE_P(All, BadTypes,
                         testing::Values("70000", "32768", "-32769", "abc", "", "1.5", "KOV", "0x1", "1 2",
                                         "error"));

TEST_F(Start, FindsTheTypeWithoutRegardToCase) {
  LoaderIni("[loader]\r\nType=1\r\n");
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ("RUG", ModelCode);
}

TEST_F(Start, SelectsTheModelAnewAtEachRebuild) {
  StartWithModel(platform, "KOV");
  LoaderIni("[LOADER]\r\nTYPE=1\r\n");
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ("RUG", ModelCode);
  EXPECT_EQ(72, ParamStore.front().ItemCount);
}

// --- LOADER.INI that cannot be written

TEST_F(Start, IgnoresThatTheSettingsCannotBeCreated) {
  ThePlatform().programFolder = platform.folder / "InitSet.Ini"; // a file: nothing can lie in it
  SelectModel();
  EXPECT_EQ("KOV", ModelCode);
  SaveCommSettings();
  EXPECT_TRUE(LoadCommSettings());
  EXPECT_EQ(1, Settings.StationSetting);
}

TEST_F(Start, IgnoresThatTheTypeCannotBeAdded) {
  std::filesystem::create_directory(platform.folder / "LOADER.INI");
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ("KOV", ModelCode);
  SaveCommSettings();
  EXPECT_FALSE(LoadCommSettings());
}

TEST_F(Start, TakesASettingsFileThatCannotBeLookedAtAsMissing) {
  std::filesystem::create_symlink("LOADER.INI", platform.folder / "LOADER.INI"); // leads to itself
  EXPECT_TRUE(LoadCommSettings());
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ("KOV", ModelCode);
}

// --- The communication settings

TEST_F(Start, ReadsTheCommunicationSettings) {
  LoaderIni("[LOADER]\r\nTYPE=0\r\nCOMMUNICATION=2\r\nCOM=4\r\nSTNO=255\r\nIP=10.0.0.7\r\n");
  EXPECT_TRUE(LoadCommSettings());
  EXPECT_EQ(2, Settings.ConfiguredLink);
  EXPECT_EQ(4, Settings.ComPortIndex);
  EXPECT_EQ(255, Settings.StationSetting);
  EXPECT_EQ(u"10.0.0.7", Settings.RecorderIpAddress);
}

TEST_F(Start, TakesTheDefaultsWithoutASettingsFile) {
  Settings = {7, 7, 7, u"x"};
  EXPECT_TRUE(LoadCommSettings());
  EXPECT_EQ(0, Settings.ConfiguredLink);
  EXPECT_EQ(0, Settings.ComPortIndex);
  EXPECT_EQ(1, Settings.StationSetting);
  EXPECT_EQ(u"192.168.1.1", Settings.RecorderIpAddress);
  EXPECT_FALSE(LoaderIniExists());
}

TEST_F(Start, ReadsSettingsOutsideTheirMeaningAsTheyAre) {
  LoaderIni("[LOADER]\r\nCOMMUNICATION=-5\r\nCOM=99\r\nSTNO=32767\r\nIP=no address\r\n");
  EXPECT_TRUE(LoadCommSettings());
  EXPECT_EQ(-5, Settings.ConfiguredLink);
  EXPECT_EQ(99, Settings.ComPortIndex);
  EXPECT_EQ(32767, Settings.StationSetting);
  EXPECT_EQ(u"no address", Settings.RecorderIpAddress);
}

struct Lacking {
  const char* key;
  std::int16_t link;
  std::int16_t com;
  std::int16_t station;
};
void PrintTo(const Lacking& lacking, std::ostream* out) {
  *out << lacking.key;
}

class LackingKeys : public Start, public testing::WithParamInterface<Lacking> {
protected:
  // A settings file in which the key of the test reads `line`.
  static std::string IniWith(std::string_view line) {
    std::string ini = "[LOADER]\r\n";
    for (const auto& [key, value] : {std::pair{"COMMUNICATION", "2"}, std::pair{"COM", "3"},
                                     std::pair{"STNO", "17"}, std::pair{"IP", "10.0.0.7"}}) {
      ini += std::string_view(key) == GetParam().key ? std::string(line)
                                                     : std::string(key) + "=" + value + "\r\n";
    }
    return ini;
  }
  void ExpectWhatWasReadBefore() const {
    EXPECT_EQ(GetParam().link, Settings.ConfiguredLink);
    EXPECT_EQ(GetParam().com, Settings.ComPortIndex);
    EXPECT_EQ(GetParam().station, Settings.StationSetting);
    EXPECT_EQ(u"192.168.1.1", Settings.RecorderIpAddress);
  }
};

TEST_P(LackingKeys, EndTheReadingAndKeepWhatCameBefore) {
  LoaderIni(IniWith(""));
  Settings = {7, 7, 7, u"x"};
  EXPECT_FALSE(LoadCommSettings());
  ExpectWhatWasReadBefore();
}

TEST_P(LackingKeys, AreAlikeToKeysThatAreNoNumber) {
  for (const char* value : {"=abc\r\n", "=\r\n", "=32768\r\n", "=1.5\r\n"}) {
    LoaderIni(IniWith(std::string(GetParam().key) + value));
    EXPECT_FALSE(LoadCommSettings()) << value;
    ExpectWhatWasReadBefore();
  }
}

INSTANTIATE_TEST_SUITE_P(All, LackingKeys,
                         testing::Values(Lacking{"COMMUNICATION", 0, 0, 1}, Lacking{"COM", 2, 0, 1},
                                         Lacking{"STNO", 2, 3, 1}));

TEST_F(Start, LeavesTheWordERRORAsAnAddressThatIsMissing) {
  LoaderIni("[LOADER]\r\nCOMMUNICATION=1\r\nCOM=0\r\nSTNO=1\r\n");
  EXPECT_TRUE(LoadCommSettings());
  EXPECT_EQ(u"ERROR", Settings.RecorderIpAddress);
}

TEST_F(Start, WritesTheFourCommunicationSettingsAndNoType) {
  LoaderIni("; mine\r\n[LOADER]\r\nTYPE=1\r\nIP=old\r\n");
  Settings = {1, 4, 200, u"10.0.0.7"};
  SaveCommSettings();
  EXPECT_EQ("; mine\r\n[LOADER]\r\nTYPE=1\r\nIP=10.0.0.7\r\nCOMMUNICATION=1\r\nCOM=4\r\nSTNO=200\r\n",
            LoaderIni());
}

TEST_F(Start, ReadsBackWhatItWrote) {
  Settings = {2, 3, 99, u"recorder.example"};
  SaveCommSettings();
  Settings = {};
  EXPECT_TRUE(LoadCommSettings());
  EXPECT_EQ(2, Settings.ConfiguredLink);
  EXPECT_EQ(3, Settings.ComPortIndex);
  EXPECT_EQ(99, Settings.StationSetting);
  EXPECT_EQ(u"recorder.example", Settings.RecorderIpAddress);
}

// --- Single values

TEST_F(Start, GivesAValueInTheCodePageOfTheSystem) {
  LoaderIni("[LOADER]\r\nIP=\x95\x5C\xB1\r\n");
  EXPECT_EQ(u"表ｱ", GetIniValue("LOADER", "IP", LoaderIniPath()));
  EXPECT_TRUE(SetIniValue("LOADER", "IP", u"ソ\uFF5E", LoaderIniPath()));
  EXPECT_EQ("[LOADER]\r\nIP=\x83\x5C\x81\x60\r\n", LoaderIni());
}

TEST_F(Start, GivesAtMost254BytesOfAValue) {
  LoaderIni("[LOADER]\r\nIP=" + std::string(400, 'x') + "\r\n");
  EXPECT_EQ(std::u16string(254, u'x'), GetIniValue("LOADER", "IP", LoaderIniPath()));
}

TEST_F(Start, TellsWhetherAValueWasWritten) {
  EXPECT_TRUE(SetIniValue("LOADER", "COM", u"1", LoaderIniPath()));
  EXPECT_FALSE(SetIniValue("LOADER", "COM", u"1", platform.folder / "nowhere" / "LOADER.INI"));
}

TEST_F(Start, KeepsItsSettingsInTheProgramFolder) {
  EXPECT_EQ(platform.folder / "LOADER.INI", LoaderIniPath());
}

// --- The entry routine

TEST_F(Start, FillsTheCataloguesAndTheStoreBeforeTheWindowIsShown) {
  UnitNames.clear();
  std::size_t sections = 0;
  std::size_t units = 0;
  EXPECT_TRUE(Main([&] {
    sections = ParamStore.size();
    units = UnitNames.size();
  }));
  EXPECT_EQ(23U, sections);
  EXPECT_EQ(168U, units);
}

struct BadInitSet {
  const char* what;
  const char* bytes;
};
void PrintTo(const BadInitSet& bad, std::ostream* out) {
  *out << bad.what;
}

class BadInitSets : public Start, public testing::WithParamInterface<BadInitSet> {};

TEST_P(BadInitSets, EndTheStartBeforeTheWindowIsShown) {
  platform.WriteFile("InitSet.Ini", GetParam().bytes);
  platform.ExpectBox(11005);
  bool shown = false;
  EXPECT_FALSE(Main([&] { shown = true; }));
  EXPECT_FALSE(shown);
  ASSERT_EQ(1U, platform.boxes.shown.size());
  EXPECT_EQ(u"初期ファイルが存在しないか、初期ファイルが不正です", platform.boxes.shown[0].text);
  EXPECT_EQ(BoxButtons::Ok, platform.boxes.shown[0].buttons);
  EXPECT_EQ(u"", platform.boxes.shown[0].title);
}

INSTANTIATE_TEST_SUITE_P(All, BadInitSets,
                         testing::Values(BadInitSet{"empty", ""},
                                         BadInitSet{"comments only", "; nothing\r\n"},
                                         BadInitSet{"no block of KOV", "2   ,V00W,0\r\n1,C,44001,60,72\r\n"},
                                         BadInitSet{"a bad number", "2   ,V00L,0\r\n1,C,x,60,30\r\n"},
                                         BadInitSet{"binary", "\x7F"
                                                              "ELF\x02\x01\x01"}));

TEST_F(Start, EndsWhenTheInitialSettingsAreMissing) {
  std::filesystem::remove(platform.folder / "InitSet.Ini");
  platform.ExpectBox(11005);
  bool shown = false;
  EXPECT_FALSE(Main([&] { shown = true; }));
  EXPECT_FALSE(shown);
}

TEST_F(Start, RebuildsTheStoreOrEndsTheProgram) {
  StartWithModel(platform, "KOV");
  EXPECT_TRUE(RebuildStoreOrEnd());
  EXPECT_FALSE(platform.screens.programEnded);
  platform.WriteFile("InitSet.Ini", "");
  platform.ExpectBox(11005);
  EXPECT_FALSE(RebuildStoreOrEnd());
  EXPECT_TRUE(platform.screens.programEnded);
}

} // namespace
} // namespace loader::test
