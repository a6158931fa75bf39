// Each kind of defect in a file of its own, made of a plant's good file; all of them in one file, as the
// program prints it; exit codes.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "companion/Check.h"
#include "core/Text.h"
#include "platform/BarePlatform.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

using enum CheckReason;
using enum Severity;

// The line of the plant's file that begins with `key` becomes `line`; without a key `line` comes at the end.
struct DefectCase {
  const char* key;
  std::string line;
  CheckReason reason;
  Severity severity;
  const char* told;  // the key that is told
  bool alone = true; // no other defect
};

std::string Fill(std::string_view begin, std::size_t length) {
  return std::string(begin) + std::string(length, 'x');
}

// Each on another parameter, so that all of them can stand in one file.
const std::vector<DefectCase>& Cases() {
  static const std::vector<DefectCase> cases{
      {"C00FILT,", "C00FILT 2", NoComma, PreventsOpening, "C00FILT"},
      {"C01FILT,", "C0xFILT,2", ItemIsNoNumber, PreventsOpening, "C0xFILT"},
      {"C02FILT,", "Q02FILT,2", UnknownSection, PreventsOpening, "Q02FILT"},
      {"C03FILT,", "C30FILT,2", UnknownItem, PreventsOpening, "C30FILT"},
      {"C04FILT,", "C04FIRT,2", UnknownTag, PreventsOpening, "C04FIRT"},
      {"C05FILT,", "C05FILT,2.5", NotANumber, PreventsOpening, "C05FILT"},
      {"C06FILT,", "C06FILT,40000", Beyond16Bits, PreventsOpening, "C06FILT"},
      {"E00TTEH,", "E00TTEH,600", TimeBeyond16Bits, PreventsOpening, "E00TTEM", false},
      {"C00TAG ,", "C00TAG ,1,2", TextWithComma, Lost, "C00TAG"},
      {"J00SDAD,", Fill("J00SDAD,", 65), TextBeyond64Characters, Lost, "J00SDAD"},
      {"C01STAG,", "C01STAG,a\tb", ControlCharacter, Doubtful, "C01STAG"},
      {"C02STAG,", "C02STAG,\x83\x65\x83", NoCharacter, Lost, "C02STAG"},
      {"C07FILT,", "C 7FILT,2", UnusualKey, Doubtful, "C 7FILT"},
      {"C08FILT,", "C08FILT,2\r\nC08FILT,3", SameKeyAgain, Lost, "C08FILT"},
      {"C00SEKI,", "C00SEKI,2", ChangedOnOpening, Lost, "C00SEKI"},
      {"C08TYPE,", "C08TYPE,14", ChangedOnOpening, Lost, "C08TYPE"},
      {"K01UNAM,", Fill("K01UNAM,", 17), TextTooLong, Doubtful, "K01UNAM"},
      {"K01PASS,", Fill("K01PASS,geheim", 17), TextTooLong, Doubtful, "K01PASS"},
      {"C03STAG,", "C03STAG,a,b", CommaInText, Doubtful, "C03STAG"},
      {"C09FILT,", "C09FILT,100", OutsideLimits, Doubtful, "C09FILT"},
      {"H00PAS1,", "H00PAS1,10001", OutsideLimits, Doubtful, "H00PAS1"},
      {"E00TSBA,", "E00TSBA,1440", OutsideLimits, Doubtful, "E00TSBA"},
      {"J00IPA1,", "J00IPA1,256", OutsideLimits, Doubtful, "J00IPA1"},
      {"C00RMAX,", "C00RMAX,14001", OutsideField, Doubtful, "C00RMAX"},
      {"C00MMAX,", "C00MMAX,5501", OutsideField, Doubtful, "C00MMAX"},
      {"A00A1VL,", "A00A1VL,-2301", OutsideField, Doubtful, "A00A1VL"},
      {"C06STYP,", "C06STYP,2", OutsideList, Doubtful, "C06STYP"},
      {"C17TYPE,", "C17TYPE,19", OutsideList, Doubtful, "C17TYPE"},
      {"X00ETRG,", "X00ETRG,7", OutsideList, Doubtful, "X00ETRG"},
      {"C17SUBC,", "C17SUBC,31", NoSuchReference, Doubtful, "C17SUBC"},
      {"C17OTCH,", "C17OTCH,30", NoSuchReference, Doubtful, "C17OTCH"},
      {"C17SDIG,", "C17SDIG,130", NoSuchReference, Doubtful, "C17SDIG"},
      {"C17SRIN,", "C17SRIN,131", NoSuchReference, Doubtful, "C17SRIN"},
      {"E00TEXT,", "E00TEXT,-1", NoSuchReference, Doubtful, "E00TEXT"},
      {"A00A1RL,", "A00A1RL,29", NoSuchReference, Doubtful, "A00A1RL"},
      {"G00GC01,", "G00GC01,-1", NoSuchReference, Doubtful, "G00GC01"},
      {"T00TMCH,", "T00TMCH,31", NoSuchReference, Doubtful, "T00TMCH"},
      {"M00MTM2,", "M00MTM2,10", NoSuchReference, Doubtful, "M00MTM2"},
      {"X01ETG1,", "X01ETG1,30", NoSuchReference, Doubtful, "X01ETG1"},
      {"O00S111,", "O00S111,30", NoSuchReference, Doubtful, "O00S111"},
      {"O02S211,", "O02S211,1283", NoSuchReference, Doubtful, "O02S211"},
      {"C12TYPE,", "C12TYPE,32", KindsCannotPair, Doubtful, "C12TYPE"},
      {"O00OP11,", "O00OP11,9", FormulaWord, Doubtful, "O00OP11"},
      {"O01OP11,", "O01OP11,3585", OutsideLimits, Doubtful, "O01OP11"},
      {"O00OP12,", "O00OP12,0", NoRule, Doubtful, "O00OP12"},
      {"O07OP12,", "O07OP12,3073", TwoAverages, Doubtful, "O07OP12"},
      {"P00PILC,", "P00PILC,RUG", OtherModel, Doubtful, "P00PILC"},
      {nullptr, "LOADER ,V210", HeadNotFirst, Doubtful, "LOADER"},
  };
  return cases;
}

std::string Changed(std::string bytes, const DefectCase& change) {
  if (change.key == nullptr) {
    return bytes + change.line + "\r\n";
  }
  const std::size_t at = bytes.find(std::string("\r\n") + change.key);
  if (at == std::string::npos) {
    ADD_FAILURE() << change.key;
    return bytes;
  }
  const std::size_t end = bytes.find("\r\n", at + 2);
  return bytes.replace(at + 2, end - at - 2, change.line);
}

std::string AllInOne() {
  std::string bytes = PlantFile("KOV");
  for (const DefectCase& change : Cases()) {
    bytes = change.reason == OtherModel ? bytes : Changed(bytes, change); // the file's name does that
  }
  bytes.replace(bytes.find("\r\n"), 2, "\n");
  bytes.resize(bytes.size() - 2);
  return bytes;
}

class CheckedPlants : public ToolTest {
protected:
  static CheckedFile Checked(std::string_view bytes, const std::string& model = {}) {
    return CheckBytes(u"plant", bytes, model, {Language::English, false});
  }
  // Behind the plant's file: making it puts a platform of its own in force.
  const std::string& kov_ = PlantFile("KOV");
  const std::string& rug_ = PlantFile("RUG");
  BarePlatform platform_{{.programFolder = LOADER_DATA_DIR}};
};

TEST_F(CheckedPlants, AreClean) {
  for (const std::string* bytes : {&kov_, &rug_}) {
    const CheckedFile checked = Checked(*bytes);
    EXPECT_TRUE(checked.opens);
    EXPECT_TRUE(checked.missing.empty());
    for (const CheckDefect& defect : checked.defects) {
      ADD_FAILURE() << ToUtf8(defect.key + u": " + defect.message + u" " + defect.value.value_or(u""));
    }
  }
}

TEST_F(CheckedPlants, WithOneDefectTellIt) {
  for (const DefectCase& change : Cases()) {
    SCOPED_TRACE(change.line);
    const std::string bytes = Changed(kov_, change);
    // A recorder's own word for its model is heard only where the user has not said it.
    const CheckedFile checked = Checked(bytes, change.reason == OtherModel ? "" : "KOV");
    EXPECT_EQ(checked.opens, change.severity != PreventsOpening);
    const auto told = std::ranges::find(checked.defects, change.reason, &CheckDefect::reason);
    ASSERT_NE(told, checked.defects.end());
    EXPECT_EQ(told->severity, change.severity);
    EXPECT_TRUE(ToUtf8(told->key).starts_with(change.told)) << ToUtf8(told->key);
    std::istringstream lines(bytes);
    std::string line;
    for (std::size_t number = 0; number < told->line; ++number) {
      std::getline(lines, line);
    }
    EXPECT_TRUE(line.starts_with(change.told)) << line;
    EXPECT_EQ(checked.defects.size() == 1, change.alone);
    EXPECT_EQ(ToUtf8(told->value.value_or(u"")).find("geheim"), std::string::npos);
  }
}

TEST_F(CheckedPlants, WithWhatTheWindowTakesTellNothing) {
  for (const DefectCase& change : std::vector<DefectCase>{
           {"O02OP11,", "O02OP11,2048", NoRule, Doubtful, ""}, // the rule of a first term is never printed
           {"C16RMAX,", "C16RMAX,6000", OutsideField, Doubtful, ""},  // a channel that measures nothing
           {"C18RMAX,", "C18RMAX,32000", OutsideField, Doubtful, ""}, // an operation channel has no kind
           {"K00UNAM,", "K00UNAM,a,b", CommaInText, Doubtful, ""},
           {"H00SHOU,", "H00SHOU,45", OutsideList, Doubtful, ""},         // typed
           {"H00BETU,", "H00BETU,8", OutsideList, Doubtful, ""},          // of the other generation's list
           {"M08MTM2,", "M08MTM2,30", NoSuchReference, Doubtful, ""},     // without a meaning
           {"G00GC01,", "G00GC01,-32768", NoSuchReference, Doubtful, ""}, // no channel, and none is meant
           {"C03TYPE,", "C03TYPE,40", KindsCannotPair, Doubtful, ""},
           {"C00TAG ,", "C00TAG ,\x81\x45\xA5", NoCharacter, Lost, ""}, // both middle dots
       }) {
    const CheckedFile checked = Checked(Changed(kov_, change), "KOV");
    EXPECT_TRUE(checked.opens);
    for (const CheckDefect& defect : checked.defects) {
      ADD_FAILURE() << change.line << ": " << ToUtf8(defect.key + u": " + defect.message);
    }
  }
}

TEST_F(CheckedPlants, OfTheOtherModelAreHeldAgainstItsLists) {
  const auto only = [&](const DefectCase& change) {
    const CheckedFile checked = Checked(Changed(rug_, change), "RUG");
    ASSERT_EQ(checked.defects.size(), 1U) << change.line;
    EXPECT_EQ(checked.defects[0].reason, change.reason) << change.line;
    EXPECT_EQ(ToUtf8(checked.defects[0].key), change.told);
  };
  only({"C37OTCH,", "C37OTCH,72", NoSuchReference, Doubtful, "C37OTCH"});
  only({"M05MTM2,", "M05MTM2,16", NoSuchReference, Doubtful, "M05MTM2"});
  only({"C01TYPE,", "C01TYPE,20", KindsCannotPair, Doubtful, "C01TYPE"});
  EXPECT_TRUE(Checked(Changed(rug_, {"C01TYPE,", "C01TYPE,40", KindsCannotPair, Doubtful, ""}), "RUG")
                  .defects.empty());
}

// --- The program

using CheckCommand = ToolTest;

TEST_F(CheckCommand, OfCleanFilesEndsWith0) {
  const Ended ended = Tool({"check", Write("a.KOV", PlantFile("KOV")), Write("b.RUG", PlantFile("RUG")),
                            "default:RUG", "default:KOV", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitGood);
  EXPECT_EQ(ended.errors, "");
  EXPECT_EQ(WithoutFolder(ended.output), "FOLDER/a.KOV: KOV (by its content)\n"
                                         "FOLDER/a.KOV: opens in the window (defects: 0)\n"
                                         "FOLDER/b.RUG: RUG (by its content)\n"
                                         "FOLDER/b.RUG: opens in the window (defects: 0)\n"
                                         "default:RUG: RUG (as asked for)\n"
                                         "default:RUG: opens in the window (defects: 0)\n"
                                         "default:KOV: KOV (as asked for)\n"
                                         "default:KOV: opens in the window (defects: 0)\n");
}

TEST_F(CheckCommand, OfAllDefectsInOneFileTellsThemAll) {
  const std::string file = Write("all.RUG", AllInOne());
  for (const std::string language : {"ja", "en"}) {
    const Ended text = Tool({"check", file, "--lang", language});
    EXPECT_EQ(text.status, ExitDifferent);
    EXPECT_EQ(text.errors, "");
    ExpectGolden("check-all." + language + ".txt", WithoutFolder(text.output));
    const Ended json = Tool({"check", file, "--lang", language, "--json"});
    EXPECT_EQ(json.status, ExitDifferent);
    ExpectGolden("check-all." + language + ".json", WithoutFolder(json.output));
    for (const DefectCase& change : Cases()) {
      const std::string word = "\"reason\": \"" + std::string(ReasonWord(change.reason)) + "\"";
      EXPECT_NE(json.output.find(word), std::string::npos) << word;
    }
    EXPECT_EQ((text.output + json.output).find("geheim"), std::string::npos);
  }
}

TEST_F(CheckCommand, OfAFileThatCannotBeReadEndsWith2AndChecksTheOthers) {
  const std::string good = Write("a.KOV", PlantFile("KOV"));
  const std::string bad = Write("b.KOV", "C00TYPE 2\r\n");
  const std::string absent = File("absent");
  const Ended ended = Tool({"check", bad, absent, "tcp:localhost", good, "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(std::ranges::count(ended.errors, '\n'), 2) << ended.errors;
  EXPECT_TRUE(ended.errors.starts_with("paramtool: " + absent + ": cannot be read (")) << ended.errors;
  EXPECT_NE(ended.output.find(bad + ":1: C00TYPE…: [prevents opening] no comma\n"), std::string::npos)
      << ended.output;
  EXPECT_NE(ended.output.find(good + ": opens in the window"), std::string::npos);
  const Ended json = Tool({"check", good, absent, "--json", "--lang", "en"});
  EXPECT_EQ(json.status, ExitFailed);
  EXPECT_NE(json.output.find("\"error\": \"" + absent + ": cannot be read ("), std::string::npos);
  EXPECT_NE(json.output.find("\"opens\": true"), std::string::npos);
  EXPECT_EQ(Tool({"check", bad, good}).status, ExitDifferent);
  EXPECT_EQ(Tool({"check"}).status, ExitUsage);
}

TEST_F(CheckCommand, TellsWhichModelAFileWasTakenForAndWhy) {
  const auto heading = [&](std::string_view name, std::string_view bytes,
                           std::vector<std::string> more = {}) {
    std::vector<std::string> arguments{"check", Write(name, bytes), "--lang", "en"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const std::string output = WithoutFolder(Tool(arguments).output);
    return output.substr(0, output.find('\n'));
  };
  const std::string both = "LOADER ,V210\r\nC00FILT,2\r\n";
  EXPECT_EQ(heading("a", PlantFile("RUG")), "FOLDER/a: RUG (by its content)");
  EXPECT_EQ(heading("a", both), "FOLDER/a: KOV (fits both KOV and RUG; checked as this one)");
  EXPECT_EQ(heading("a.RUG", both), "FOLDER/a.RUG: RUG (fits both models; by its name)");
  EXPECT_EQ(heading("a", both + "P00PILC,RUG\r\n"), "FOLDER/a: RUG (by its P00PILC)");
  EXPECT_EQ(heading("a", both, {"--model", "RUG"}), "FOLDER/a: RUG (as asked for)");
  EXPECT_EQ(heading("a", "?"),
            "FOLDER/a: KOV (opens neither as KOV nor as RUG; checked as the likelier one)");
}

TEST_F(CheckCommand, PrintsOlderKeysThatCountAmongTheDefects) {
  const std::string file =
      Write("old.KOV", "LOADER ,V120\r\nC00FILT,100\r\nE00TTSH,8\r\nE00TTSM,15\r\nE00TSBA,1440\r\n");
  const Ended ended = Tool({"check", file, "--model", "KOV", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitDifferent);
  const std::string output = WithoutFolder(ended.output);
  const std::string missing = "initial settings: ";
  const std::size_t at = output.find(missing) + missing.size();
  const std::string count = output.substr(at, output.find('\n', at) - at);
  EXPECT_EQ(
      output,
      "FOLDER/old.KOV: KOV (as asked for)\n"
      "FOLDER/old.KOV:2: C00FILT: [doubtful] outside its limits (0 to 99) (CH 1 Input filter (s), 100)\n"
      "FOLDER/old.KOV:4: E00TTSM: read as E00TSTR\n"
      "FOLDER/old.KOV:5: E00TSBA: [doubtful] outside its limits (0 to 1439) (Totalizer reference time, "
      "1440)\n"
      "FOLDER/old.KOV: parameters that it does not name stay at their initial settings: " +
          count +
          "\n"
          "FOLDER/old.KOV: opens in the window (defects: 2)\n");
}

} // namespace
} // namespace loader::test
