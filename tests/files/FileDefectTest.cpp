// What the reader tells of a parameter file's defects, to those who want to hear it.
#include "tests/files/ParameterFileSupport.h"

#include <algorithm>
#include <ostream>
#include <random>
#include <vector>

namespace loader {

void PrintTo(const FileDefect& defect, std::ostream* out) {
  *out << "reason " << static_cast<int>(defect.reason) << " line " << defect.line << " key \"" << defect.key
       << "\" value \"" << ToUtf8(defect.value) << "\" parameter " << defect.section << defect.item
       << defect.tag;
}

} // namespace loader

namespace loader::test {
namespace {

using Defects = std::vector<FileDefect>;

struct Told {
  bool opens;
  Defects defects;
};

Told Read(std::string_view bytes) {
  Told told{};
  told.opens = LoadParamBytes(bytes, [&](const FileDefect& defect) { told.defects.push_back(defect); });
  return told;
}

// A bad line, and what is told of it where it is the third of a file.
struct BadLine {
  const char* name;
  std::string line;
  FileDefect defect;
};

const BadLine BadLines[] = {
    {"NoComma", "C00FILT 7", {LineDefect::NoComma, 3, "C00FILT 7", u"", "", 0, ""}},
    {"EmptyLine", "", {LineDefect::NoComma, 3, "", u"", "", 0, ""}},
    {"ItemIsNoNumber", "CxxFILT,7", {LineDefect::ItemIsNoNumber, 3, "CxxFILT", u"7", "C", 0, "FILT"}},
    {"KeyTooShort", "C,7", {LineDefect::ItemIsNoNumber, 3, "C", u"7", "C", 0, ""}},
    {"UnknownSection", "Q00FILT,7", {LineDefect::UnknownSection, 3, "Q00FILT", u"7", "Q", 0, "FILT"}},
    {"UnknownItem", "C30FILT,7", {LineDefect::UnknownItem, 3, "C30FILT", u"7", "C", 30, "FILT"}},
    {"NegativeItem", "C-1FILT,7", {LineDefect::UnknownItem, 3, "C-1FILT", u"7", "C", -1, "FILT"}},
    {"UnknownTag", "C00FILX,7", {LineDefect::UnknownTag, 3, "C00FILX", u"7", "C", 0, "FILX"}},
    {"NoTag", "C00,7", {LineDefect::UnknownTag, 3, "C00", u"7", "C", 0, ""}},
    {"NotANumber", "C00FILT ,7x ", {LineDefect::NotANumber, 3, "C00FILT", u"7x", "C", 0, "FILT"}},
    {"NoNumber", "C00FILT,", {LineDefect::NotANumber, 3, "C00FILT", u"", "C", 0, "FILT"}},
    {"SignAlone", "C00FILT,-", {LineDefect::NotANumber, 3, "C00FILT", u"-", "C", 0, "FILT"}},
    {"Fraction", "C00FILT,1.5", {LineDefect::NotANumber, 3, "C00FILT", u"1.5", "C", 0, "FILT"}},
    {"FullWidthDigit", "C00FILT,\x82\x56", {LineDefect::NotANumber, 3, "C00FILT", u"７", "C", 0, "FILT"}},
    {"Beyond16Bits", "C00FILT,32768", {LineDefect::Beyond16Bits, 3, "C00FILT", u"32768", "C", 0, "FILT"}},
    {"Below16Bits",
     "C00FILT,  -32769",
     {LineDefect::Beyond16Bits, 3, "C00FILT", u"  -32769", "C", 0, "FILT"}},
    {"Beyond64Bits",
     "C00FILT,99999999999999999999",
     {LineDefect::Beyond16Bits, 3, "C00FILT", u"99999999999999999999", "C", 0, "FILT"}},
    {"OldHourBeyond", "E00TTSH,40000", {LineDefect::Beyond16Bits, 3, "E00TTSH", u"40000", "E", 0, "TTSH"}},
    {"OldHourNone", "E00TTEH,x", {LineDefect::NotANumber, 3, "E00TTEH", u"x", "E", 0, "TTEH"}},
    {"OldMinutesNone", "E00TTSM,x", {LineDefect::NotANumber, 3, "E00TTSM", u"x", "E", 0, "TSTR"}},
    {"TotalKindNone", "C00SEKI,x", {LineDefect::NotANumber, 3, "C00SEKI", u"x", "C", 0, "SEKI"}},
    {"MovedByARule", "B99BMEM,1", {LineDefect::UnknownItem, 3, "B99BMEM", u"1", "T", 99, "TMEM"}},
};

class FileDefects : public ParameterFiles {
protected:
  void SetUp() override {
    ParameterFiles::SetUp();
    defaults_ = ParamStore;
  }
  static std::string FileOf(const std::string& line) {
    return "LOADER ,V210\r\nC01FILT,8\r\n" + line + "\r\nC02FILT,9\r\n";
  }
  ParamStoreTable defaults_;
};

TEST_F(FileDefects, AreToldEachInAFileOfItsOwn) {
  for (const BadLine& bad : BadLines) {
    SCOPED_TRACE(bad.name);
    ParamStore = defaults_;
    const Told told = Read(FileOf(bad.line));
    EXPECT_FALSE(told.opens);
    EXPECT_EQ(Defects{bad.defect}, told.defects);
    EXPECT_TRUE(PreventsOpening(bad.defect.reason));
    // What stands in front of the bad line is laid, as without a sink; nothing behind it.
    EXPECT_EQ(bad.defect.reason == LineDefect::NoComma ? 0 : 8, Stored("C", 1, "FILT"));
    EXPECT_EQ(0, Stored("C", 2, "FILT"));
  }
}

TEST_F(FileDefects, AreToldAllInOneFile) {
  std::string file = "LOADER ,V210\r\n";
  Defects expected;
  std::size_t line = 1;
  for (const BadLine& bad : BadLines) {
    file += bad.line + "\r\nC00FILT,7\r\n";
    expected.push_back(bad.defect);
    expected.back().line = ++line;
    ++line;
  }
  const std::string defaults = Saved();
  const Told told = Read(file);
  EXPECT_FALSE(told.opens);
  EXPECT_EQ(expected, told.defects);
  EXPECT_EQ(defaults, Saved()) << "a file with a line without a comma changes nothing";
}

TEST_F(FileDefects, AreToldOfATimeThatIsNoneInMinutes) {
  const Told told = Read("E00TTSH,1000\r\nE00TTSM,0\r\nE00TTEH,546\r\nE00TTEM,8\r\n");
  EXPECT_FALSE(told.opens);
  EXPECT_EQ((Defects{{LineDefect::TimeBeyond16Bits, 2, "E00TTSM", u"0", "E", 0, "TSTR"},
                     {LineDefect::TimeBeyond16Bits, 4, "E00TTEM", u"8", "E", 0, "TSTO"}}),
            told.defects);
}

TEST_F(FileDefects, AreToldOfATextThatACommaEmpties) {
  const Told told = Read("C00FILT,7\r\nG01GNEM,A,B\r\nC00STAG,C,D\r\n");
  EXPECT_TRUE(told.opens);
  EXPECT_EQ((Defects{{LineDefect::TextWithComma, 2, "G01GNEM", u"A,B", "G", 1, "GNEM"}}), told.defects)
      << "STAG may hold one";
  EXPECT_FALSE(PreventsOpening(LineDefect::TextWithComma));
  EXPECT_EQ("", TrimmedText("G", 1, "GNEM"));
  EXPECT_EQ("C,D", TrimmedText("C", 0, "STAG"));
}

TEST_F(FileDefects, AreToldOfATextThatIsCut) {
  const Told told = Read("J00SDAD," + std::string(64, 'x') + "\r\nJ00SDAD," + std::string(65, 'x') +
                         "\r\nC00FILT," + std::string(70, '0') + "1\r\n");
  EXPECT_TRUE(told.opens);
  EXPECT_EQ(
      (Defects{{LineDefect::TextBeyond64Characters, 2, "J00SDAD", std::u16string(65, u'x'), "J", 0, "SDAD"}}),
      told.defects)
      << "a number is not cut";
  EXPECT_FALSE(PreventsOpening(LineDefect::TextBeyond64Characters));
  EXPECT_EQ(1, Stored("C", 0, "FILT"));
}

TEST_F(FileDefects, AreNoneInWhatTheWindowSaved) {
  const Told told = Read(Saved());
  EXPECT_TRUE(told.opens);
  EXPECT_EQ(Defects{}, told.defects);
}

TEST_F(FileDefects, CountLinesWhateverEndsThem) {
  EXPECT_EQ(4U, Read("LOADER ,V210\rC00FILT,1\nC00FILT,2\r\nC00FILT,x").defects.at(0).line);
}

TEST_F(FileDefects, KeepTheBytesOfAKey) {
  EXPECT_EQ("\x95\x5C\xFF", Read("\x95\x5C\xFF  ,7\r\n").defects.at(0).key);
}

// Everything of a store, so that two ways through the reader can be compared.
struct Outcome {
  bool opens;
  ParamStoreTable store;
  bool operator==(const Outcome&) const = default;
};

// With a sink and without one the reader comes to the same, and a file that does not open has a defect that
// prevents it; one that opens has none.
TEST_F(FileDefects, ChangeNothingOfWhatAnOpenDoes) {
  const std::string whole = Saved();
  std::mt19937 random(13);
  int failed = 0;
  for (int round = 0; round < 120; ++round) {
    std::string bytes = whole;
    for (int flips = 1 + round % 4; flips > 0; --flips) {
      bytes[random() % bytes.size()] = static_cast<char>(random());
    }
    ParamStore = defaults_;
    const Outcome silent{LoadParamBytes(bytes), ParamStore};
    ParamStore = defaults_;
    const Told told = Read(bytes);
    ASSERT_TRUE((silent == Outcome{told.opens, ParamStore})) << round;
    ASSERT_EQ(told.opens, std::ranges::none_of(told.defects, PreventsOpening, &FileDefect::reason)) << round;
    ASSERT_TRUE(std::ranges::is_sorted(told.defects, {}, &FileDefect::line)) << round;
    failed += told.opens ? 0 : 1;
  }
  EXPECT_LT(20, failed);
  EXPECT_GT(120, failed);
}

} // namespace
} // namespace loader::test
