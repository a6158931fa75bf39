// Which recorder is at the other end, and whether it is busy.
#include "comm/RecorderCheck.h"

#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

struct RecorderCheck : RecorderFixture {
  void Meet(std::string_view model, std::string_view version, std::string_view loaderModel) {
    StartWithModel(platform, loaderModel);
    recorder.PutIdentity(model, version);
    OpenLink(Line::Ethernet);
  }
};

struct VersionRow {
  const char* model;
  const char* version;
  std::int16_t generation;
};
void PrintTo(const VersionRow& row, std::ostream* out) {
  *out << row.model << row.version;
}

struct Versions : RecorderCheck, ::testing::WithParamInterface<VersionRow> {};
INSTANTIATE_TEST_SUITE_P(Tags, Versions,
                         ::testing::Values(VersionRow{"KOV", "V00A", 0}, VersionRow{"KOV", "V05A", 0},
                                           VersionRow{"KOV", "V06A", 1}, VersionRow{"KOV", "V13A", 1},
                                           VersionRow{"KOV", "V14A", 2}, VersionRow{"KOV", "V17A", 2},
                                           VersionRow{"KOV", "V18A", 3}, VersionRow{"KOV", "V26A", 3},
                                           VersionRow{"KOV", "V27A", 4}, VersionRow{"KOV", "V39A", 4},
                                           VersionRow{"KOV", "V40A", 5}, VersionRow{"KOV", "V99A", 5},
                                           VersionRow{"RUG", "V00W", 20}, VersionRow{"RUG", "V09W", 20},
                                           VersionRow{"RUG", "V10W", 21}, VersionRow{"RUG", "V99W", 21}),
                         [](const auto& row) { return std::string(row.param.model) + row.param.version; });

TEST_P(Versions, TheTagGivesTheGeneration) {
  Meet(GetParam().model, GetParam().version, GetParam().model);
  RecorderGeneration = 77;
  EXPECT_TRUE(gFCheckRecorder());
  EXPECT_EQ(RecorderGeneration, GetParam().generation);
}

TEST(GenerationOfTag, EveryTwoDigitNumberHasOne) {
  for (int number = 0; number < 100; ++number) {
    const std::u16string digits = PaddedDecimal(number, 2);
    const int kov = number <= 5    ? 0
                    : number <= 13 ? 1
                    : number <= 17 ? 2
                    : number <= 26 ? 3
                    : number <= 39 ? 4
                                   : 5;
    EXPECT_EQ(GenerationOfTag("KOV", u"V" + digits + u"A"), kov);
    EXPECT_EQ(GenerationOfTag("RUG", u"V" + digits + u"W"), number <= 9 ? 20 : 21);
  }
}

TEST(GenerationOfTag, ATagOfAnotherShapeHasNone) {
  for (const std::u16string_view tag :
       {u"", u"V", u"V4", u"V40", u"V40W", u"v40A", u"V40a", u"X40A", u"V4OA", u"V 4A", u"V-1A", u"V４0A"}) {
    EXPECT_FALSE(GenerationOfTag("KOV", tag)) << ToUtf8(tag);
  }
}

TEST_F(RecorderCheck, ReadsTheIdentityInOneRequest) {
  Meet("KOV", "V40A", "KOV");
  EXPECT_TRUE(gFCheckRecorder());
  EXPECT_EQ(recorder.requests, (std::vector<RecordedRequest>{{4, 30001, 16}}));
}

TEST_F(RecorderCheck, EachModelHasItsOwnLetter) {
  Meet("KOV", "V10W", "KOV");
  platform.ExpectBox(11012);
  EXPECT_FALSE(gFCheckRecorder());
  Meet("RUG", "V40A", "RUG");
  platform.ExpectBox(11012);
  EXPECT_FALSE(gFCheckRecorder());
}

TEST_F(RecorderCheck, ATagOfTheWrongShapeLeavesTheGeneration) {
  Meet("KOV", "V4A", "KOV");
  RecorderGeneration = 3;
  platform.ExpectBox(11012);
  EXPECT_FALSE(gFCheckRecorder());
  EXPECT_EQ(RecorderGeneration, 3);
}

TEST_F(RecorderCheck, OnlyTheFirstFourCharactersOfTheVersionCount) {
  Meet("KOV", "V27A1.3", "KOV");
  EXPECT_TRUE(gFCheckRecorder());
  EXPECT_EQ(RecorderGeneration, 4);
}

TEST_F(RecorderCheck, OnlyTheFirstThreeCharactersOfTheIdentityCount) {
  Meet("KOV-18", "V40A", "KOV");
  EXPECT_TRUE(gFCheckRecorder());
}

TEST_F(RecorderCheck, AnotherModelIsRefused) {
  Meet("RUG", "V10W", "KOV");
  platform.ExpectBox(11015);
  EXPECT_FALSE(gFCheckRecorder());
  EXPECT_EQ(RecorderGeneration, 0);
}

TEST_F(RecorderCheck, TheModelIsComparedExactly) {
  Meet("kov", "V40A", "KOV");
  platform.ExpectBox(11015);
  EXPECT_FALSE(gFCheckRecorder());
}

TEST_F(RecorderCheck, WithoutTheModeCheckTheRulesOfTheReportedModelHold) {
  Meet("RUG", "V09W", "KOV");
  ModeCheckOff = 1;
  EXPECT_TRUE(gFCheckRecorder());
  EXPECT_EQ(RecorderGeneration, 20);
}

TEST_F(RecorderCheck, WithoutTheModeCheckAWrongTagOfTheReportedModelIsRefused) {
  Meet("RUG", "V40A", "KOV");
  ModeCheckOff = -1;
  platform.ExpectBox(11012);
  EXPECT_FALSE(gFCheckRecorder());
}

TEST_F(RecorderCheck, AThirdModelPassesWithTheGenerationThatWasLeft) {
  Meet("BIQ", "????", "KOV");
  ModeCheckOff = 1;
  EXPECT_TRUE(gFCheckRecorder());
  EXPECT_EQ(RecorderGeneration, 0);
  RecorderGeneration = 4;
  EXPECT_TRUE(gFCheckRecorder());
  EXPECT_EQ(RecorderGeneration, 4);
}

TEST_F(RecorderCheck, AThirdModelPassesWhenItIsTheOneInForce) {
  Meet("BIQ", "", "KOV");
  ModelCode = "BIQ";
  EXPECT_TRUE(gFCheckRecorder());
}

TEST_F(RecorderCheck, BlanksAroundTheIdentityAreTrimmed) {
  Meet("  KOV  ", " V40A", "KOV");
  EXPECT_TRUE(gFCheckRecorder());
  EXPECT_EQ(RecorderGeneration, 5);
}

TEST_F(RecorderCheck, TheTrimmedTextsGoBackIntoTheStore) {
  Meet("  KOV", "  V40A", "KOV");
  EXPECT_TRUE(gFCheckRecorder());
  EXPECT_EQ(TextRecord("P", 0, "PILC").Value, FixedText(u"KOV"));
  EXPECT_EQ(TextRecord("P", 0, "PVER").Value, FixedText(u"V40A"));
  EXPECT_EQ(TextRecord("P", 0, "PVER").ReadValue, FixedText(u"  V40A"));
}

TEST_F(RecorderCheck, TheSerialNumberStaysInTheStoreAlsoAfterARefusal) {
  Meet("RUG", "V10W", "KOV");
  recorder.PutText(30005, "SN-0815", 16);
  platform.ExpectBox(11015);
  EXPECT_FALSE(gFCheckRecorder());
  EXPECT_EQ(TrimmedText("P", 0, "SNO."), "SN-0815");
}

TEST_F(RecorderCheck, ARecorderThatDoesNotAnswerShowsTwoMessagesInARow) {
  Meet("KOV", "V40A", "KOV");
  recorder.FaultAt(Fault::NoReply, 0);
  platform.ExpectBox(11000);
  platform.ExpectBox(11012);
  EXPECT_FALSE(gFCheckRecorder());
}

TEST_F(RecorderCheck, AStoreWithoutTheIdentitySectionIsAFailedCheck) {
  Meet("KOV", "V40A", "KOV");
  std::erase_if(ParamStore, [](const ParamSection& section) { return section.Code == "P  "; });
  platform.ExpectBox(11012);
  EXPECT_FALSE(gFCheckRecorder());
}

TEST_F(RecorderCheck, AnIdentitySectionThatFitsNoBlockIsAFailedCheck) {
  Meet("KOV", "V40A", "KOV");
  ParamStore[gFFindSection("P")].ItemWords = 6000;
  platform.ExpectBox(11012);
  EXPECT_FALSE(gFCheckRecorder());
}

TEST_F(RecorderCheck, AnIdentityWithoutItsTagIsAnotherModel) {
  Meet("KOV", "V40A", "KOV");
  ParamStore[gFFindSection("P")].Items[0].TextRecords.clear();
  platform.ExpectBox(11015);
  EXPECT_FALSE(gFCheckRecorder());
}

// --- Busy

struct RecorderState : RecorderCheck {
  std::int16_t Ask(std::uint16_t state) {
    recorder.PutState(state);
    return gFRecorderBusy();
  }
};

TEST_F(RecorderState, OnlyBits0And7Count) {
  Meet("KOV", "V40A", "KOV");
  EXPECT_EQ(Ask(0x0000), 0);
  EXPECT_EQ(Ask(0x0001), 1); // recording
  EXPECT_EQ(Ask(0x0080), 1); // computing
  EXPECT_EQ(Ask(0x0081), 1);
  EXPECT_EQ(Ask(0x0100), 0);
  EXPECT_EQ(Ask(0xFF7E), 0);
  EXPECT_EQ(Ask(0x8080), 1);
  EXPECT_EQ(Ask(0xFFFF), 1);
}

TEST_F(RecorderState, IsReadFromItsSectionInOneRequestAndKept) {
  Meet("KOV", "V40A", "KOV");
  EXPECT_EQ(Ask(0x0102), 0);
  EXPECT_EQ(recorder.requests, (std::vector<RecordedRequest>{{4, 30101, 1}}));
  EXPECT_EQ(Stored("S", 0, "SYS1"), 0x0102);
}

TEST_F(RecorderState, ThatCannotBeReadIs2BehindTheLinksMessage) {
  Meet("KOV", "V40A", "KOV");
  recorder.FaultAt(Fault::NoReply, 0);
  platform.ExpectBox(11000);
  EXPECT_EQ(gFRecorderBusy(), 2);
}

TEST_F(RecorderState, WithoutItsSectionOrTagIs2) {
  Meet("KOV", "V40A", "KOV");
  ParamStore[gFFindSection("S")].Items[0].NumRecords.clear();
  EXPECT_EQ(gFRecorderBusy(), 2);
  std::erase_if(ParamStore, [](const ParamSection& section) { return section.Code == "S  "; });
  EXPECT_EQ(gFRecorderBusy(), 2);
}

} // namespace
} // namespace loader::test
