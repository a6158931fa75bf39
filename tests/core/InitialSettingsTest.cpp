// The load of the initial settings, and the defaults that depend on the item.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/System.h"

namespace loader::test {
namespace {

// --- The load

class InitialSettings : public testing::Test {
protected:
  void Load(std::string_view model, std::string_view block) {
    platform.WriteFile("LOADER.INI",
                       std::string("[LOADER]\r\nTYPE=") + (model == "RUG" ? "1" : "0") + "\r\n");
    platform.WriteFile("InitSet.Ini", std::string("2   ,") + (model == "RUG" ? "V00W" : "V00L") + ",0\r\n" +
                                          std::string(block));
    ASSERT_TRUE(gFLoadInitSetteiData());
  }
  ScriptedPlatform platform;
};

TEST_F(InitialSettings, ReplaceTheStoreWhole) {
  Load("KOV", "1,C,44001,60,2\r\n0,A,0,0,1,0,9\r\n");
  FindNumRecord("C", 0, "A")->Value = 5;
  Load("KOV", "1,D,44001,60,2\r\n0,A,0,0,1,0,9\r\n");
  EXPECT_EQ(1U, ParamStore.size());
  EXPECT_EQ(nullptr, FindNumRecord("C", 0, "A"));
  EXPECT_EQ(1, FindNumRecord("D", 0, "A")->Value);
}

TEST_F(InitialSettings, ResetEveryValue) {
  Load("KOV", "1,C,44001,60,1\r\n0,A,0,0,1,0,9\r\n0,T,1,1,x,8\r\n");
  SetNumber(*FindNumRecord("C", 0, "A"), 5, SlotBoth);
  SetText(*FindTextRecord("C", 0, "T"), u"y", SlotBoth);
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ(1, FindNumRecord("C", 0, "A")->Value);
  EXPECT_EQ(1, FindNumRecord("C", 0, "A")->ReadValue);
  EXPECT_EQ(FixedText(u"x"), FindTextRecord("C", 0, "T")->Value);
  EXPECT_EQ(FixedText(u"x"), FindTextRecord("C", 0, "T")->ReadValue);
}

TEST_F(InitialSettings, AreReadInTheCodePage) {
  Load("KOV", "; \x95\x5C\r\n1,C,44001,60,1\r\n0,T,0,1,\x83\x5C\xB1\x81\x60,8\r\n");
  EXPECT_EQ(FixedText(u"ソｱ\uFF5E"), FindTextRecord("C", 0, "T")->DefaultValue);
}

TEST_F(InitialSettings, ThatFailLeaveTheStoreAsItWas) {
  Load("KOV", "1,C,44001,60,1\r\n0,A,0,0,1,0,9\r\n");
  ModeCheckOff = 3;
  for (const char* bytes : {"", "2   ,V00L,5\r\n1,D,x,60,1\r\n", "2   ,V00L,5\r\n0,A,0,0,1,0,9\r\n"}) {
    platform.WriteFile("InitSet.Ini", bytes);
    EXPECT_FALSE(gFLoadInitSetteiData());
    ASSERT_EQ(1U, ParamStore.size());
    EXPECT_EQ("C  ", ParamStore[0].Code);
    EXPECT_EQ(3, ModeCheckOff);
  }
}

TEST_F(InitialSettings, ThatAreMissingFail) {
  std::filesystem::remove(platform.folder / "InitSet.Ini");
  EXPECT_FALSE(gFLoadInitSetteiData());
  std::filesystem::create_directory(platform.folder / "InitSet.Ini");
  EXPECT_FALSE(gFLoadInitSetteiData());
}

TEST_F(InitialSettings, SetTheModeCheckOfTheModel) {
  platform.WriteFile("InitSet.Ini", "2   ,V00L,3\r\n2   ,V00W,4\r\n");
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ(3, ModeCheckOff);
  platform.WriteFile("LOADER.INI", "[LOADER]\r\nTYPE=1\r\n");
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ(4, ModeCheckOff);
}

TEST_F(InitialSettings, OfRandomBytesFail) {
  unsigned state = 1;
  for (int round = 0; round < 20; ++round) {
    std::string bytes;
    for (int i = 0; i < 10'000; ++i) {
      state = state * 1664525U + 1013904223U;
      bytes += static_cast<char>(state >> 24U);
    }
    platform.WriteFile("InitSet.Ini", bytes);
    EXPECT_FALSE(gFLoadInitSetteiData());
  }
}

TEST_F(InitialSettings, OfOneHugeLineFail) {
  platform.WriteFile("InitSet.Ini", std::string(20'000'000, ','));
  EXPECT_FALSE(gFLoadInitSetteiData());
}

TEST_F(InitialSettings, ThatEndAnywhereLoadOrFail) {
  const std::string shipped = platform.ReadFile("InitSet.Ini");
  const std::string whole = shipped.substr(shipped.find("2   ,V00L"), 3000);
  int loaded = 0;
  for (std::size_t end = 0; end < whole.size(); end += 7) {
    platform.WriteFile("InitSet.Ini", std::string_view(whole).substr(0, end));
    loaded += gFLoadInitSetteiData() ? 1 : 0;
  }
  EXPECT_LT(50, loaded); // a file that ends behind a whole row is a smaller store
  EXPECT_GT(400, loaded);
}

// --- The defaults that depend on the item

class ItemDefaults : public InitialSettings {
protected:
  static constexpr std::string_view Block = "0,TAG,0,1,CH,16\r\n0,TAG2,44,1,two,16\r\n0,STAG,52,1,SUM,"
                                            "16\r\n0,COLR,30,0,7,1,14\r\n0,RECO,21,0,0,0,1\r\n";
  void LoadModel(const std::string& model) {
    Load(model, "1,C,44001,60," + std::string(model == "RUG" ? "72" : "30") + "\r\n" + std::string(Block) +
                    "1,G,40761,20," + (model == "RUG" ? "8" : "4") + "\r\n0,GNEM,0,1,GROUP,16\r\n");
  }
  static std::u16string Text(int item, std::string_view tag, std::string_view section = "C") {
    const ParamTextRecord& record = *FindTextRecord(section, item, tag);
    EXPECT_EQ(record.Value, record.ReadValue);
    EXPECT_EQ(record.Value, record.DefaultValue);
    return std::u16string(TrimRight(record.DefaultValue));
  }
  static int Number(int item, std::string_view tag) {
    const ParamNumRecord& record = *FindNumRecord("C", item, tag);
    EXPECT_EQ(record.Value, record.ReadValue);
    EXPECT_EQ(record.Value, record.DefaultValue);
    return record.DefaultValue;
  }
};

TEST_F(ItemDefaults, NumberTheTagsOfAllChannels) {
  LoadModel("KOV");
  EXPECT_EQ(u"CH 01", Text(0, "TAG"));
  EXPECT_EQ(u"CH 03", Text(2, "TAG"));
  EXPECT_EQ(u"CH 18", Text(17, "TAG"));
  EXPECT_EQ(u"CH 19", Text(18, "TAG"));
  EXPECT_EQ(u"CH 30", Text(29, "TAG"));
  LoadModel("RUG");
  EXPECT_EQ(u"CH 37", Text(36, "TAG"));
  EXPECT_EQ(u"CH 72", Text(71, "TAG"));
}

TEST_F(ItemDefaults, NumberTheTotalizerTagsFromTheirOwnDefault) {
  LoadModel("KOV");
  EXPECT_EQ(u"SUM 01", Text(0, "STAG"));
  EXPECT_EQ(u"SUM 19", Text(18, "STAG"));
  EXPECT_EQ(u"SUM 30", Text(29, "STAG"));
}

TEST_F(ItemDefaults, EmptyTheSecondTags) {
  LoadModel("KOV");
  for (int item = 0; item < 30; ++item) {
    EXPECT_EQ(u"", Text(item, "TAG2")) << item;
  }
}

TEST_F(ItemDefaults, NumberTheGroupNamesWithoutABlank) {
  LoadModel("KOV");
  EXPECT_EQ(u"GROUP1", Text(0, "GNEM", "G"));
  EXPECT_EQ(u"GROUP4", Text(3, "GNEM", "G"));
  LoadModel("RUG");
  EXPECT_EQ(u"GROUP8", Text(7, "GNEM", "G"));
}

TEST_F(ItemDefaults, ColourTheMeasuringChannelsInOrderA) {
  for (const char* model : {"KOV", "RUG"}) {
    LoadModel(model);
    for (int item = 0; item < Profile.ChannelCount; ++item) {
      EXPECT_EQ(ColourOrderA[static_cast<std::size_t>(item)], Number(item, "COLR")) << model << item;
    }
  }
  LoadModel("KOV");
  EXPECT_EQ(11, Number(4, "COLR"));
  EXPECT_EQ(1, Number(10, "COLR")); // the eleventh starts anew
}

TEST_F(ItemDefaults, ColourTheOperationChannelsOfKOVInOrderB) {
  LoadModel("KOV");
  const std::vector<int> expected = {5, 6, 8, 9, 1, 2, 3, 4, 11, 10, 5, 6};
  for (int j = 0; j < 12; ++j) {
    EXPECT_EQ(expected[static_cast<std::size_t>(j)], Number(18 + j, "COLR")) << j;
  }
}

TEST_F(ItemDefaults, ColourTheOperationChannelsOfRUGInOrderA) {
  LoadModel("RUG");
  for (int j = 0; j < 36; ++j) {
    EXPECT_EQ(ColourOrderA[static_cast<std::size_t>(j)], Number(36 + j, "COLR")) << j;
  }
}

TEST_F(ItemDefaults, RecordOnlyOperationChannelsByDefault) {
  LoadModel("KOV");
  for (int item = 0; item < 30; ++item) {
    EXPECT_EQ(item < 18 ? 0 : 1, Number(item, "RECO")) << item;
  }
}

TEST_F(ItemDefaults, TrimTheDefaultTextOnBothSides) {
  Load("KOV", "1,C,44001,60,30\r\n0,TAG,0,1,\"  CH  \",16\r\n1,G,40761,20,4\r\n0,GNEM,0,1,\" G \",16\r\n");
  EXPECT_EQ(u"CH 01", Text(0, "TAG"));
  EXPECT_EQ(u"G1", Text(0, "GNEM", "G"));
}

TEST_F(ItemDefaults, KeepTheBlankBehindAnEmptyDefaultText) {
  Load("KOV", "1,C,44001,60,30\r\n0,TAG,0,1,,16\r\n");
  EXPECT_EQ(u" 01", Text(0, "TAG"));
}

TEST_F(ItemDefaults, PassOverWhatTheStoreLacks) {
  Load("KOV", "1,H,40011,40,1\r\n0,A,0,0,1,0,9\r\n");
  Load("KOV", "1,C,44001,60,30\r\n0,COLR,30,0,7,1,14\r\n");
  EXPECT_EQ(1, Number(0, "COLR"));
}

TEST_F(ItemDefaults, PassOverItemsThatTheSectionLacks) {
  Load("KOV", "1,C,44001,60,20\r\n" + std::string(Block) + "1,G,40761,20,2\r\n0,GNEM,0,1,GROUP,16\r\n");
  EXPECT_EQ(u"CH 20", Text(19, "TAG"));
  EXPECT_EQ(u"GROUP2", Text(1, "GNEM", "G"));
}

TEST_F(ItemDefaults, LeaveTheItemsBehindTheChannelsOfTheModel) {
  Load("KOV", "1,C,44001,60,31\r\n" + std::string(Block) + "1,G,40761,20,5\r\n0,GNEM,0,1,GROUP,16\r\n");
  EXPECT_EQ(u"CH", Text(30, "TAG"));
  EXPECT_EQ(u"two", Text(30, "TAG2"));
  EXPECT_EQ(7, Number(30, "COLR"));
  EXPECT_EQ(u"GROUP", Text(4, "GNEM", "G"));
}

// --- Files and lines

TEST(TextLines, EndInCarriageReturnsAndLineFeeds) {
  using Lines = std::vector<std::u16string_view>;
  EXPECT_EQ((Lines{u"a", u"b"}), SplitLines(u"a\r\nb\r\n"));
  EXPECT_EQ((Lines{u"a", u"b"}), SplitLines(u"a\nb"));
  EXPECT_EQ((Lines{u"a", u"b"}), SplitLines(u"a\rb\r"));
  EXPECT_EQ((Lines{u"a", u"", u"b"}), SplitLines(u"a\r\n\r\nb"));
  EXPECT_EQ((Lines{u"a", u"", u"b"}), SplitLines(u"a\n\nb"));
  EXPECT_EQ((Lines{u"a", u"", u"b"}), SplitLines(u"a\n\rb"));
  EXPECT_EQ((Lines{u""}), SplitLines(u"\r\n"));
  EXPECT_EQ((Lines{}), SplitLines(u""));
}

TEST_F(InitialSettings, AreReadAsWholeFiles) {
  const std::string bytes("a\0\r\n\x1A\xFF", 6);
  platform.WriteFile("any", bytes);
  EXPECT_EQ(bytes, ReadWholeFile(platform.folder / "any"));
  platform.WriteFile("empty", "");
  EXPECT_EQ("", ReadWholeFile(platform.folder / "empty"));
  EXPECT_THROW(static_cast<void>(ReadWholeFile(platform.folder / "nowhere")), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(ReadWholeFile(platform.folder)), RunTimeFailure);
}

TEST_F(InitialSettings, ThatAreAPipeFailAtOnce) {
  Load("KOV", "1,C,44001,60,1\r\n0,A,0,0,1,0,9\r\n");
  std::filesystem::remove(platform.folder / "InitSet.Ini");
  ASSERT_TRUE(MakePipe(platform.folder / "InitSet.Ini"));
  EXPECT_FALSE(gFLoadInitSetteiData());
  EXPECT_EQ(1U, ParamStore.size()) << "as it was";
}

} // namespace
} // namespace loader::test
