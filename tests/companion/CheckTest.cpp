// The parts of a check that need no plant: small files, encodings, secrets, what is no text at all.
#include "companion/Check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "companion/CheckParts.h"
#include "core/Text.h"
#include "tests/companion/CompanionTest.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

constexpr Speech English{Language::English, false};

class Checks : public CompanionTest {
protected:
  static CheckedFile Checked(std::string_view bytes, const std::string& model = "KOV",
                             std::u16string_view name = u"x") {
    return CheckBytes(name, bytes, model, English);
  }
  static std::vector<CheckReason> Reasons(const CheckedFile& checked) {
    std::vector<CheckReason> reasons;
    for (const CheckDefect& defect : checked.defects) {
      reasons.push_back(defect.reason);
    }
    return reasons;
  }
};
using R = std::vector<CheckReason>;

TEST_F(Checks, FindNothingInTheInitialSettings) {
  for (const char* model : {"KOV", "RUG"}) {
    const CheckedFile checked = Checked(BytesOf(std::string("default:") + model), "");
    EXPECT_TRUE(checked.opens);
    EXPECT_EQ(checked.model, model);
    EXPECT_EQ(checked.finding.basis, ModelBasis::Content);
    EXPECT_EQ(Reasons(checked), R{});
    EXPECT_TRUE(checked.missing.empty());
  }
}

TEST_F(Checks, OfABinaryFileAnEmptyOneAndOtherEncodingsSaySo) {
  const CheckedFile empty = Checked("");
  EXPECT_EQ(Reasons(empty), R{CheckReason::EmptyFile});
  EXPECT_TRUE(empty.opens);

  const CheckedFile binary = Checked(std::string(1000, '\0') + "\x7F"
                                                               "ELF");
  EXPECT_FALSE(binary.opens);
  EXPECT_EQ(binary.defects.front().reason, CheckReason::Binary);

  std::string wide = "\xFF\xFE";
  for (const char byte : BytesOf("default:KOV")) {
    wide += {byte, '\0'};
  }
  const CheckedFile utf16 = Checked(wide);
  EXPECT_FALSE(utf16.opens);
  EXPECT_EQ(utf16.defects.front().reason, CheckReason::Utf16);
  EXPECT_EQ(utf16.defects.size(), MostDefectsOfNoText);
  EXPECT_GT(utf16.untold, 1000U);
  EXPECT_EQ(utf16.defects[1].severity, Severity::PreventsOpening) << "not crowded out by what is doubtful";

  const CheckedFile utf8 = Checked("LOADER ,V210\r\nC00TAG ,\xE7\x82\x89\xE6\xB8\xA9\r\n");
  EXPECT_TRUE(utf8.opens);
  EXPECT_EQ(Reasons(utf8), R{CheckReason::Utf8});
  const CheckedFile marked = Checked("\xEF\xBB\xBFLOADER ,V210\r\nC00TYPE,2\r\n");
  EXPECT_FALSE(marked.opens);
  EXPECT_EQ(Reasons(marked), (R{CheckReason::Utf8, CheckReason::ItemIsNoNumber, CheckReason::NoHead}));
  // The same text as the window writes it.
  EXPECT_EQ(Reasons(Checked("LOADER ,V210\r\nC00TAG ," + ToCodePage(u"炉温・ﾛ") + "\r\n")), R{});
}

TEST_F(Checks, OfLinesThatAreWrittenOtherwiseSaySo) {
  EXPECT_EQ(Reasons(Checked("LOADER ,V210\r\nC00FILT,2")), R{CheckReason::NoLastLineEnd});
  const CheckedFile ends = Checked("LOADER ,V210\r\nC00FILT,2\nC01FILT,2\rC02FILT,2\r\n");
  ASSERT_EQ(Reasons(ends), R{CheckReason::LineEnd});
  EXPECT_EQ(ends.defects[0].line, 2U);
  EXPECT_NE(ends.defects[0].message.find(u": 2,"), std::u16string::npos) << ToUtf8(ends.defects[0].message);
  EXPECT_EQ(Reasons(Checked("C00FILT,2\r\n")), R{CheckReason::NoHead});
  EXPECT_EQ(Reasons(Checked("C00FILT,2\r\nLOADER ,V210\r\n")), R{CheckReason::HeadNotFirst});
  for (const char* key : {"C 0FILT", "C0 FILT", "C+0FILT", "C00FILTER", "C-0FILT"}) {
    const CheckedFile odd = Checked("LOADER ,V210\r\n" + std::string(key) + ",2\r\n");
    EXPECT_TRUE(odd.opens) << key;
    EXPECT_EQ(Reasons(odd), R{CheckReason::UnusualKey}) << key;
  }
  EXPECT_EQ(Reasons(Checked("LOADER ,V210\r\nC00FILT   ,2\r\nC00TAG ,x   \r\n")), R{}) << "blanks are none";
  EXPECT_EQ(Reasons(Checked("LOADER ,V210\r\nc00FILT,2\r\n")), R{CheckReason::UnknownSection});
}

TEST_F(Checks, OfAKeyThatStandsTwiceTellTheLaterLine) {
  const CheckedFile same = Checked("LOADER ,V210\r\nC00FILT,2\r\nC00FILT,2\r\n");
  ASSERT_EQ(Reasons(same), R{CheckReason::SameKeyAgain});
  EXPECT_EQ(same.defects[0].line, 3U);
  EXPECT_EQ(same.defects[0].severity, Severity::Doubtful);
  const CheckedFile other = Checked("LOADER ,V210\r\nC00FILT,2\r\nC 0FILT,3\r\n");
  ASSERT_EQ(Reasons(other), (R{CheckReason::UnusualKey, CheckReason::SameKeyAgain}));
  EXPECT_EQ(other.defects[1].severity, Severity::Lost);
}

TEST_F(Checks, OlderKeysAreNoDefects) {
  const CheckedFile older = Checked("LOADER ,V210\r\nE00TTSH,8\r\nE00TTSM,15\r\nE00TOTA,1\r\nT00TPVM,1\r\n");
  EXPECT_EQ(Reasons(older), R{});
  ASSERT_EQ(older.olderKeys.size(), 3U);
  EXPECT_EQ(older.olderKeys[0].readAs, "E00TSTR");
  EXPECT_FALSE(older.olderKeys[0].superseded);
  EXPECT_EQ(older.olderKeys[1].readAs, "Z00TOTA");
  EXPECT_EQ(older.olderKeys[2].readAs, "B00BPVM");
  const CheckedFile both = Checked("LOADER ,V210\r\nE00TTSH,8\r\nE00TTSM,15\r\nE00TSTR,495\r\n");
  EXPECT_EQ(Reasons(both), R{});
  EXPECT_TRUE(both.olderKeys.at(0).superseded);
  // What an older key sets is checked as what it is.
  const CheckedFile late = Checked("LOADER ,V210\r\nE00TTSH,23\r\nE00TTSM,90\r\n");
  ASSERT_EQ(Reasons(late), R{CheckReason::OutsideLimits});
  EXPECT_EQ(late.defects[0].line, 3U);
  EXPECT_EQ(KeyOf(*late.defects[0].ref), "E00TSTR");
}

TEST_F(Checks, CountWhatTheFileDoesNotName) {
  const CheckedFile checked = Checked("LOADER ,V210\r\nC00FILT,2\r\nE00TTSM,5\r\n");
  WholeSetUp initial = InitialSetUp("KOV", Language::English);
  const std::size_t all = WithSetUp(initial, [] { return AllParameters().size(); });
  EXPECT_EQ(checked.missing.size(), all - 3) << "TTSM is named, and TSTR is set by it";
}

TEST_F(Checks, CountNoParameterWhoseLineIsBad) {
  const std::size_t good = Checked("LOADER ,V210\r\nC00FILT,2\r\nE00TTSM,5\r\nE00TSTR,5\r\n").missing.size();
  const std::size_t bad = Checked("LOADER ,V210\r\nC00FILT,x\r\nE00TTSH,600\r\nE00TTSM,5\r\n").missing.size();
  EXPECT_EQ(bad, good - 1) << "TTSH is named";
}

TEST_F(Checks, SeeTheValuesBehindALineThatPreventsOpening) {
  const CheckedFile checked = Checked("LOADER ,V210\r\nC00TYPE\r\nC00FILT,99x\r\nC01FILT,100\r\n");
  EXPECT_FALSE(checked.opens);
  ASSERT_EQ(Reasons(checked), (R{CheckReason::NoComma, CheckReason::NotANumber, CheckReason::OutsideLimits}));
  EXPECT_EQ(checked.defects[2].line, 4U);
}

TEST_F(Checks, TakeAModelThatIsUnsettledForTheLikelierOne) {
  const CheckedFile both = Checked("LOADER ,V210\r\nC00FILT,2\r\n", "");
  EXPECT_EQ(both.finding.basis, ModelBasis::Both);
  EXPECT_TRUE(both.opens);
  const CheckedFile neither = Checked("LOADER ,V210\r\nC40FILT,2\r\nC00FILT,x\r\n", "");
  EXPECT_EQ(neither.finding.basis, ModelBasis::Neither);
  EXPECT_EQ(neither.model, "RUG");
  EXPECT_EQ(Reasons(neither), R{CheckReason::NotANumber});
}

TEST_F(Checks, TellAFileThatCallsItselfAnotherModel) {
  EXPECT_EQ(Reasons(Checked("LOADER ,V210\r\nC40FILT,2\r\nP00PILC,KOV\r\n", "")), R{CheckReason::OtherModel});
  EXPECT_EQ(Reasons(Checked("LOADER ,V210\r\nC40FILT,2\r\n", "", u"plant.kov")), R{CheckReason::OtherModel});
  EXPECT_EQ(Reasons(Checked("LOADER ,V210\r\nC40FILT,2\r\nP00PILC,RUG\r\n", "", u"plant.rug")), R{});
  EXPECT_EQ(Reasons(Checked("LOADER ,V210\r\nC40FILT,2\r\nP00PILC,KOV\r\n", "RUG", u"x.KOV")), R{})
      << "the user said so";
}

TEST_F(Checks, TakeAWholeFileForItsOwnModelThoughOneDamagedLineFitsTheLargerOne) {
  std::string bytes = BytesOf("default:KOV");
  bytes.replace(bytes.find("C00NIPO"), 7, "C50NIPO");
  const CheckedFile checked = Checked(bytes, "");
  EXPECT_EQ(checked.model, "KOV");
  EXPECT_FALSE(checked.opens);
  EXPECT_EQ(Reasons(checked), R{CheckReason::UnknownItem});
  bytes.replace(bytes.find("C01NIPO"), 7, "C01NIPX");
  EXPECT_EQ(Checked(bytes, "").model, "KOV") << "of one that opens as neither too";
}

// --- Secrets

TEST_F(Checks, NeverTellASecret) {
  for (const char* line : {
           "K00PASS,geheim\x83",         // half a character
           "K00PASS,geheimgeheimgeheim", // too long
           "K00PASX,geheim",             // a damaged key
           "K99PASS,geheim",
           "Q00PASS,geheim",                //
           "K00PASS geheim",                // no comma
           "K00PASSgeheim,",                // the comma in another place
           "K00PASS\tgeheim",               //
           "K00UNAM,nobody0K00PASS,geheim", // two lines in one
           "J00SDAD,K00PASS,geheim,K00PASS,geheim0123456789012345678901234567890123456789",
           "K00PASS,\r\ngeheim",
           "K00PASS,\r\ngeheim,x",
           "K00PASS,g1\r\nx1geheim", //
           "H00PAS1,geheim",
       }) {
    const std::string bytes = "LOADER ,V210\r\n" + std::string(line) + "\r\n" + line + "\r\n";
    const CheckedFile checked = Checked(bytes);
    ASSERT_FALSE(checked.defects.empty()) << line;
    for (const CheckDefect& defect : checked.defects) {
      EXPECT_EQ(ToUtf8(defect.key + u" " + defect.message + u" " + defect.value.value_or(u"")).find("geheim"),
                std::string::npos)
          << line << ": " << ToUtf8(defect.message);
    }
  }
  const CheckedFile told =
      CheckBytes(u"x", "LOADER ,V210\r\nH00PAS1,geheim\r\n", "KOV", {Language::English, true});
  ASSERT_EQ(Reasons(told), R{CheckReason::NotANumber});
  EXPECT_EQ(told.defects[0].value, u"geheim");
}

TEST_F(Checks, SendNoControlCharacterToATerminal) {
  const CheckedFile checked = Checked("LOADER ,V210\r\nC00\x1B[2J,1\r\nJ00SDAD,a\x1B]0;x\x07"
                                      "b\r\n");
  ASSERT_GE(checked.defects.size(), 3U);
  for (const CheckDefect& defect : checked.defects) {
    for (const char16_t character : defect.key + defect.message + defect.value.value_or(u"")) {
      EXPECT_GE(character, u' ');
    }
  }
}

// --- What a save and an open would not keep

TEST_F(Checks, TellAFileThatDoesNotOpenAgainOnceItIsSaved) {
  // Without its minutes the hour is never made minutes of; a save writes both.
  const CheckedFile checked = Checked("LOADER ,V210\r\nE00TTEH,600\r\n");
  EXPECT_TRUE(checked.opens);
  ASSERT_EQ(Reasons(checked), (R{CheckReason::NotKept, CheckReason::OutsideLimits}));
  EXPECT_NE(checked.defects[0].message.find(u"E00TTEM"), std::u16string::npos);
}

TEST_F(Checks, CompareTheSetUpWithWhatASaveAndAnOpenLeave) {
  const WholeSetUp& initial = InitialSetUp("KOV", Language::English);
  WholeSetUp setUp = initial;
  const SetUpInForce inForce(setUp);
  CheckedFile result;
  check::Findings findings(result, English);
  const check::LaidLines none(findings);
  check::CheckSaveAndOpen(findings, none, initial);
  EXPECT_EQ(Reasons(result), R{});
  PutText("M", 0, "MESS", "a,b"); // from a recorder
  Put("C", 3, "SEKI", 2);
  check::CheckSaveAndOpen(findings, none, initial);
  ASSERT_EQ(Reasons(result), (R{CheckReason::NotKept, CheckReason::NotKept}));
  EXPECT_EQ(result.defects[0].key, u"C03SEKI");
  EXPECT_EQ(result.defects[1].value, u"a,b");
}

TEST_F(Checks, HaveAWordForEveryReason) {
  std::vector<std::string_view> words;
  for (int reason = 0; reason <= static_cast<int>(CheckReason::TwoAverages); ++reason) {
    words.push_back(ReasonWord(static_cast<CheckReason>(reason)));
  }
  std::ranges::sort(words);
  EXPECT_EQ(std::ranges::adjacent_find(words), words.end());
  EXPECT_FALSE(words.front().empty());
}

// --- Size

TEST_F(Checks, OfAHugeFileTakeTimeByItsSizeAndTellNoMoreThanTheMost) {
  using Clock = std::chrono::steady_clock;
  const auto took = [](std::string_view bytes) {
    const auto start = Clock::now();
    const CheckedFile checked = Checked(bytes, "");
    EXPECT_LE(checked.defects.size(), MostDefectsTold);
    EXPECT_FALSE(checked.opens);
    EXPECT_NE(std::ranges::find(checked.defects, Severity::PreventsOpening, &CheckDefect::severity),
              checked.defects.end());
    for (const CheckDefect& defect : checked.defects) {
      EXPECT_LT(defect.value.value_or(u"").size(), 70U);
    }
    return std::chrono::duration<double>(Clock::now() - start).count();
  };
  constexpr std::size_t Size = 5'000'000;
  RecordProperty("one_line", std::to_string(took(std::string(Size, 'x'))));
  RecordProperty("line_ends", std::to_string(took(std::string(Size, '\n'))));
  RecordProperty("one_value", std::to_string(took("C00TYPE," + std::string(Size, '1'))));
  std::string lines;
  while (lines.size() < Size) {
    lines += "C00TIPE,1\r\n";
  }
  const double all = took(lines);
  const double half = took(std::string_view(lines).substr(0, lines.size() / 2));
  EXPECT_LT(all, 6 * half + 1) << "by its size, not by its square";
}

} // namespace
} // namespace loader::test
