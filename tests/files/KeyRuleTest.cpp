// The rules that the reader applies to the tags of older and present files.
#include "tests/files/ParameterFileSupport.h"

#include <tuple>

namespace loader::test {
namespace {

using KeyRules = ParameterFiles;

std::string ReadAs(std::string_view lines) {
  return LoadParamBytes(lines) ? "loaded" : "failed";
}

// --- Tags and sections of older files

TEST_F(KeyRules, TakeTPVMAsBPVMOfSectionB) {
  EXPECT_EQ("loaded", ReadAs("T03TPVM,1\r\n"));
  EXPECT_EQ(1, Stored("B", 3, "BPVM"));
}

TEST_F(KeyRules, TakeBMEMAsTMEMOfSectionT) {
  EXPECT_EQ("loaded", ReadAs("B02BMEM,1\r\n"));
  EXPECT_EQ(1, Stored("T", 2, "TMEM"));
}

TEST_F(KeyRules, TakeTheNewTagsInTheirOwnSections) {
  EXPECT_EQ("loaded", ReadAs("B03BPVM,1\r\nT02TMEM,1\r\n"));
  EXPECT_EQ(1, Stored("B", 3, "BPVM"));
  EXPECT_EQ(1, Stored("T", 2, "TMEM"));
}

class TotalizerSwitches : public ParameterFiles,
                          public testing::WithParamInterface<std::tuple<const char*, const char*>> {};

TEST_P(TotalizerSwitches, LieInSectionZWhateverSectionTheFileNames) {
  const auto& [section, tag] = GetParam();
  EXPECT_EQ("loaded", ReadAs(std::string(section) + "00" + tag + ",1\r\n"));
  EXPECT_EQ(1, Stored("Z", 0, tag));
}

INSTANTIATE_TEST_SUITE_P(All, TotalizerSwitches,
                         testing::Combine(testing::Values("E", "Z", "C"),
                                          testing::Values("TOTA", "TSTM", "TSIG")));

// --- The comma

class TextsWithComma : public ParameterFiles,
                       public testing::WithParamInterface<std::tuple<const char*, const char*>> {};

// Deliberate: the writer writes the comma and the reader empties the text.
TEST_P(TextsWithComma, AreEmptied) {
  const auto& [section, tag] = GetParam();
  SetText(TextRecord(section, 1, tag), u"before", SlotValue);
  EXPECT_EQ("loaded", ReadAs(std::string(section) + "01" + tag + ",A,B\r\n"));
  EXPECT_EQ("", TrimmedText(section, 1, tag));
}

INSTANTIATE_TEST_SUITE_P(All, TextsWithComma,
                         testing::Values(std::tuple("C", "TAG"), std::tuple("C", "TAG2"),
                                         std::tuple("G", "GNEM"), std::tuple("M", "MESS"),
                                         std::tuple("U", "UNIT")));

TEST_F(KeyRules, EmptyATextWhoseOnlyCharacterIsAComma) {
  EXPECT_EQ("loaded", ReadAs("C00TAG ,,\r\n"));
  EXPECT_EQ("", TrimmedText("C", 0, "TAG"));
}

TEST_F(KeyRules, FailOnACommaInTheUnitNumberOfAChannel) {
  EXPECT_EQ("failed", ReadAs("C00UNIT,1,2\r\n"));
}

class TextsThatKeepTheirComma : public ParameterFiles,
                                public testing::WithParamInterface<std::tuple<const char*, const char*>> {};

TEST_P(TextsThatKeepTheirComma, KeepIt) {
  const auto& [section, tag] = GetParam();
  EXPECT_EQ("loaded", ReadAs(std::string(section) + "00" + tag + ",A,B\r\n"));
  EXPECT_EQ("A,B", TrimmedText(section, 0, tag));
}

INSTANTIATE_TEST_SUITE_P(All, TextsThatKeepTheirComma,
                         testing::Values(std::tuple("C", "STAG"), std::tuple("J", "SDAD"),
                                         std::tuple("J", "SDNM"), std::tuple("J", "RAD1"),
                                         std::tuple("J", "RAD8"), std::tuple("K", "UNAM"),
                                         std::tuple("K", "PASS"), std::tuple("X", "ECM1"),
                                         std::tuple("X", "ECM2"), std::tuple("X", "ETTL"),
                                         std::tuple("P", "PILC"), std::tuple("P", "SNO."),
                                         std::tuple("P", "PVER")));

// --- Input kinds

struct Kind {
  const char* written;
  std::int16_t stored;
};
void PrintTo(const Kind& kind, std::ostream* out) {
  *out << kind.written << " as " << kind.stored;
}

class InputKinds : public ParameterFiles, public testing::WithParamInterface<Kind> {};

TEST_P(InputKinds, AreRenumbered) {
  EXPECT_EQ("loaded", ReadAs("C04TYPE," + std::string(GetParam().written) + "\r\n"));
  EXPECT_EQ(GetParam().stored, Stored("C", 4, "TYPE"));
}

INSTANTIATE_TEST_SUITE_P(Old, InputKinds,
                         testing::Values(Kind{"13", 20}, Kind{"14", 21}, Kind{"15", 30}, Kind{"16", 31},
                                         Kind{"17", 32}, Kind{"18", 33}));
INSTANTIATE_TEST_SUITE_P(Present, InputKinds,
                         testing::Values(Kind{"0", 0}, Kind{"1", 1}, Kind{"12", 12}, Kind{"19", 19},
                                         Kind{"20", 20}, Kind{"21", 21}, Kind{"30", 30}, Kind{"33", 33},
                                         Kind{"40", 40}));
// The text of the value is compared: only blanks behind it are cut before.
INSTANTIATE_TEST_SUITE_P(Spelled, InputKinds,
                         testing::Values(Kind{"13  ", 20}, Kind{" 13", 13}, Kind{"013", 13},
                                         Kind{"+13", 13}));

// --- Old times

TEST_F(KeyRules, JoinHoursAndMinutesOfTheStart) {
  EXPECT_EQ("loaded", ReadAs("E00TTSH,1\r\nE00TTSM,30\r\n"));
  EXPECT_EQ(90, Stored("E", 0, "TSTR"));
}

TEST_F(KeyRules, JoinHoursAndMinutesOfTheStop) {
  EXPECT_EQ("loaded", ReadAs("E00TTEH,23\r\nE00TTEM,59\r\n"));
  EXPECT_EQ(1439, Stored("E", 0, "TSTO"));
}

TEST_F(KeyRules, KeepTheHoursOfStartAndStopApart) {
  EXPECT_EQ("loaded", ReadAs("E00TTSH,1\r\nE00TTEH,2\r\nE00TTSM,5\r\nE00TTEM,7\r\n"));
  EXPECT_EQ(65, Stored("E", 0, "TSTR"));
  EXPECT_EQ(127, Stored("E", 0, "TSTO"));
}

TEST_F(KeyRules, StoreTheHoursUnderTheirOwnTagsToo) {
  EXPECT_EQ("loaded", ReadAs("E00TTSH,7\r\nE00TTEH,8\r\n"));
  EXPECT_EQ(7, Stored("E", 0, "TTSH"));
  EXPECT_EQ(8, Stored("E", 0, "TTEH"));
}

// Deliberate: the minutes of an old time have no other home than the joined time.
TEST_F(KeyRules, LeaveTheOldMinutesAtTheirDefaults) {
  EXPECT_EQ("loaded", ReadAs("E00TTSH,1\r\nE00TTSM,30\r\nE00TTEH,2\r\nE00TTEM,40\r\n"));
  EXPECT_EQ(0, Stored("E", 0, "TTSM"));
  EXPECT_EQ(0, Stored("E", 0, "TTEM"));
}

TEST_F(KeyRules, CountNoHoursWhenTheHoursComeLater) {
  EXPECT_EQ("loaded", ReadAs("E00TTSM,30\r\nE00TTSH,1\r\nE00TTEM,20\r\nE00TTEH,1\r\n"));
  EXPECT_EQ(30, Stored("E", 0, "TSTR"));
  EXPECT_EQ(20, Stored("E", 0, "TSTO"));
}

TEST_F(KeyRules, LetAPresentTimeBehindAnOldOneWin) {
  EXPECT_EQ("loaded", ReadAs("E00TTSH,1\r\nE00TTSM,30\r\nE00TSTR,600\r\n"));
  EXPECT_EQ(600, Stored("E", 0, "TSTR"));
}

TEST_F(KeyRules, ForgetTheHoursWithTheFile) {
  EXPECT_EQ("loaded", ReadAs("E00TTSH,5\r\nE00TTEH,5\r\n"));
  EXPECT_EQ("loaded", ReadAs("E00TTSM,1\r\nE00TTEM,2\r\n"));
  EXPECT_EQ(1, Stored("E", 0, "TSTR"));
  EXPECT_EQ(2, Stored("E", 0, "TSTO"));
}

TEST_F(KeyRules, TakeTheLargestTimeThatANumberHolds) {
  EXPECT_EQ("loaded", ReadAs("E00TTSH,546\r\nE00TTSM,7\r\n"));
  EXPECT_EQ(32767, Stored("E", 0, "TSTR"));
}

class BadTimes : public ParameterFiles, public testing::WithParamInterface<const char*> {};

TEST_P(BadTimes, FailTheLoad) {
  EXPECT_EQ("failed", ReadAs(GetParam()));
  EXPECT_EQ(0, Stored("E", 0, "TSTR"));
  EXPECT_EQ(0, Stored("E", 0, "TSTO"));
}

INSTANTIATE_TEST_SUITE_P(Start, BadTimes,
                         testing::Values("E00TTSH,546\r\nE00TTSM,8\r\n",     // the sum
                                         "E00TTSH,547\r\nE00TTSM,-100\r\n",  // the hours in minutes
                                         "E00TTSH,547\r\nE00TTSM,100\r\n",   // the same
                                         "E00TTSH,-547\r\nE00TTSM,100\r\n",  // below the range
                                         "E00TTSH,1\r\nE00TTSM,32767\r\n",   // the sum again
                                         "E00TTSH,32768\r\nE00TTSM,0\r\n",   // the hours
                                         "E00TTSH,\r\n", "E00TTSH,1:30\r\n", // no number
                                         "E00TTSH,1\r\nE00TTSM,\r\n",        // no minutes
                                         "E00TTSH,1\r\nE00TTSM,x\r\n"));     // no number
INSTANTIATE_TEST_SUITE_P(Stop, BadTimes,
                         testing::Values("E00TTEH,546\r\nE00TTEM,8\r\n", "E00TTEH,547\r\nE00TTEM,-100\r\n",
                                         "E00TTEH,x\r\n", "E00TTEH,1\r\nE00TTEM,\r\n"));

// --- Totalizer kind and report cycle

TEST_F(KeyRules, SwitchTheReportOffForAZeroTotalizerKind) {
  Put("C", 0, "STYP", 3);
  EXPECT_EQ("loaded", ReadAs("C00SEKI,0\r\n"));
  EXPECT_EQ(15, Stored("C", 0, "STYP"));
  EXPECT_EQ(1, Stored("C", 0, "SEKI"));
}

class TotalKinds : public ParameterFiles, public testing::WithParamInterface<const char*> {};

TEST_P(TotalKinds, OtherThanZeroMakeADailyReport) {
  Put("C", 7, "SEKI", 2);
  EXPECT_EQ("loaded", ReadAs("C07SEKI," + std::string(GetParam()) + "\r\n"));
  EXPECT_EQ(0, Stored("C", 7, "STYP"));
  EXPECT_EQ(1, Stored("C", 7, "SEKI"));
}

INSTANTIATE_TEST_SUITE_P(All, TotalKinds, testing::Values("1", "2", "3", "-1", "32767"));

TEST_F(KeyRules, SetTheReportOfThatChannelOnly) {
  EXPECT_EQ("loaded", ReadAs("C01SEKI,1\r\n"));
  EXPECT_EQ(15, Stored("C", 0, "STYP"));
  EXPECT_EQ(0, Stored("C", 1, "STYP"));
  EXPECT_EQ(15, Stored("C", 2, "STYP"));
}

TEST_F(KeyRules, LetAReportCycleBehindTheTotalizerKindWin) {
  EXPECT_EQ("loaded", ReadAs("C00SEKI,1\r\nC00STYP,3\r\n"));
  EXPECT_EQ(3, Stored("C", 0, "STYP"));
}

TEST_F(KeyRules, LetATotalizerKindBehindTheReportCycleWin) {
  EXPECT_EQ("loaded", ReadAs("C00STYP,3\r\nC00SEKI,0\r\n"));
  EXPECT_EQ(15, Stored("C", 0, "STYP"));
}

TEST_F(KeyRules, FailOnATotalizerKindThatIsNoNumber) {
  EXPECT_EQ("failed", ReadAs("C00SEKI,x\r\n"));
  EXPECT_EQ("failed", ReadAs("C00SEKI,\r\n"));
  EXPECT_EQ("failed", ReadAs("C00SEKI,32768\r\n"));
}

TEST_F(KeyRules, FailOnATotalizerKindOfAChannelThatDoesNotExist) {
  EXPECT_EQ("failed", ReadAs("C30SEKI,1\r\n"));
}

TEST_F(SmallStore, TakesATotalizerKindWithoutAReportCycle) {
  Start("1,C,44001,60,2\r\n0,SEKI,34,0,1,0,3\r\n");
  EXPECT_TRUE(LoadParamBytes("C00SEKI,0\r\n"));
  EXPECT_EQ(1, NumValue("C", 0, "SEKI"));
}

} // namespace
} // namespace loader::test
