// A recorder's memory as text.
#include "simulator/MemoryFile.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "tests/simulator/TestRecorder.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::simulator {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct Target {
  Model model;
  const char* tag;
};

class MemoryTexts : public testing::TestWithParam<Target> {};

INSTANTIATE_TEST_SUITE_P(OfEveryGeneration, MemoryTexts,
                         testing::Values(Target{Model::Kov, "V00A"}, Target{Model::Kov, "V06A"},
                                         Target{Model::Kov, "V14A"}, Target{Model::Kov, "V18A"},
                                         Target{Model::Kov, "V27A"}, Target{Model::Kov, "V40A"},
                                         Target{Model::Rug, "V09W"}, Target{Model::Rug, "V10W"}),
                         [](const auto& of) { return std::string(of.param.tag); });

TEST_P(MemoryTexts, ReadBackGiveTheSameMemory) {
  const TestRecorder recorder(GetParam().model, GetParam().tag);
  const std::string text = MemoryText(recorder.firmware, recorder.map, recorder.memory);

  RegisterMemory again;
  ReadMemoryText(text, recorder.map, again);

  EXPECT_TRUE(again == recorder.memory);
  EXPECT_EQ(ReadMemoryHead(text).model, GetParam().model);
  EXPECT_EQ(ReadMemoryHead(text).firmware, GetParam().tag);
}

TEST_P(MemoryTexts, OfRandomRegistersReadBackGiveTheSameMemory) {
  const TestRecorder recorder(GetParam().model, GetParam().tag);
  RegisterMemory memory;
  std::mt19937 random(1);
  for (const int first : {FirstInput, FirstHolding}) {
    for (int address = first; address < first + TableRegisters; ++address) {
      memory.At(address) = static_cast<std::uint16_t>(random());
    }
  }
  RegisterMemory again;

  ReadMemoryText(MemoryText(recorder.firmware, recorder.map, memory), recorder.map, again);

  EXPECT_TRUE(again == memory);
}

class KovMemory : public testing::Test {
protected:
  TestRecorder recorder{Model::Kov, "V40A"};
  RegisterMemory memory;

  void Read(std::string_view text) { ReadMemoryText(text, recorder.map, memory); }
  std::string Refusal(std::string_view text) {
    try {
      (void)ReadMemoryHead(text);
      Read(text);
    } catch (const MemoryFileError& error) {
      return error.what();
    }
    return "accepted";
  }
};

TEST_F(KovMemory, TextNamesValuesByTag) {
  const std::string text = MemoryText(recorder.firmware, recorder.map, recorder.memory);

  EXPECT_THAT(text, HasSubstr("\nmodel,KOV\nfirmware,V40A\n"));
  EXPECT_THAT(text, HasSubstr("\nC 1 TAG,1号炉 上段\n"));
  EXPECT_THAT(text, HasSubstr("\nC 1 TYPE,1\n"));
  EXPECT_THAT(text, HasSubstr("\nC 1 PVSI,-12\n"));
  EXPECT_THAT(text, HasSubstr("\nP 1 PVER,V40A\n"));
  EXPECT_THAT(text, Not(HasSubstr("\n44001,")));
}

TEST_F(KovMemory, TextNamesOtherRegistersThatAreNotZero) {
  recorder.memory.At(40099) = 0x12AB;

  EXPECT_THAT(MemoryText(recorder.firmware, recorder.map, recorder.memory), HasSubstr("\n40099,0x12AB\n"));
}

TEST_F(KovMemory, TextWritesATextThatItsCharactersDoNotTellAsRegisters) {
  const int address = recorder.Address("C", 0, "TAG");
  for (int word = 0; word < 8; ++word) {
    recorder.memory.At(address + word) = 0;
  }
  recorder.memory.At(address) = 0x0041;     // "A", NUL
  recorder.memory.At(address + 1) = 0x0042; // and more behind it

  const std::string text = MemoryText(recorder.firmware, recorder.map, recorder.memory);

  EXPECT_THAT(text, HasSubstr("\n44001,0x0041\n44002,0x0042\n"));
  EXPECT_THAT(text, Not(HasSubstr("C 1 TAG,")));
}

TEST_F(KovMemory, ReadsValuesAndRegisters) {
  Read("# a comment\r\n\r\nC 2 TAG,炉, 上 \nC 2 TYPE, 33\n40099,0x00FF\n40100,-2\nH 1 PAS1,-1");

  EXPECT_EQ(memory.At(44061 + 8), 33);
  EXPECT_EQ(TextBytes(memory, recorder.Field("C", 1, "TAG")).substr(0, 7), "\x98\x46, \x8F\xE3 ")
      << "a text goes to the end of its line";
  EXPECT_EQ(memory.At(40099), 0x00FF);
  EXPECT_EQ(memory.At(40100), 0xFFFE);
  EXPECT_EQ(memory.At(recorder.Address("H", 0, "PAS1")), 0xFFFF);
}

TEST_F(KovMemory, ReadsPastAByteOrderMark) {
  Read("\xEF\xBB\xBF"
       "C 1 TYPE,5\n");
  EXPECT_EQ(memory.At(44009), 5);
}

TEST_F(KovMemory, RefusesALineThatIsWrongAndNamesIt) {
  EXPECT_EQ(Refusal("C 1 TYPE,1\nC 1 TYPE 1\n"), "line 2: there is no comma in \"C 1 TYPE 1\"");
  EXPECT_EQ(Refusal("C 31 TYPE,1"), "line 1: this recorder has no value \"C 31 TYPE\"");
  EXPECT_EQ(Refusal("C 0 TYPE,1"), "line 1: this recorder has no value \"C 0 TYPE\"");
  EXPECT_EQ(Refusal("C TYPE,1"), "line 1: this recorder has no value \"C TYPE\"");
  EXPECT_EQ(Refusal("Q 1 TYPE,1"), "line 1: this recorder has no value \"Q 1 TYPE\"");
  EXPECT_EQ(Refusal("C 1 NONE,1"), "line 1: this recorder has no value \"C 1 NONE\"");
  EXPECT_EQ(Refusal("C 1 TYPE,x"), "line 1: \"x\" is no whole number from -32768 to 32767");
  EXPECT_EQ(Refusal("C 1 TYPE,32768"), "line 1: \"32768\" is no whole number from -32768 to 32767");
  EXPECT_EQ(Refusal("C 1 TYPE,"), "line 1: \"\" is no whole number from -32768 to 32767");
  EXPECT_EQ(Refusal("\n\nC 1 TAG,1234567890123456\nC 1 TAG,12345678901234567"),
            "line 4: the text is longer than the 16 bytes of its field");
  EXPECT_EQ(Refusal("40000,1"), "line 1: there is no register 40000");
  EXPECT_EQ(Refusal("50000,1"), "line 1: there is no register 50000");
  EXPECT_EQ(Refusal("40001,0x10000"), "line 1: \"0x10000\" is no value of a register, such as 0x12AB");
  EXPECT_EQ(Refusal("40001,"), "line 1: \"\" is no value of a register, such as 0x12AB");
  EXPECT_EQ(Refusal("model,VOX"), "line 1: \"VOX\" is no model: KOV or RUG");
  EXPECT_EQ(Refusal("firmware,V 4"), "line 1: \"V 4\" is no firmware tag, such as V40A");
}

TEST_F(KovMemory, DumpNamesEveryRegister) {
  memory.At(40001) = 1;
  memory.At(49999) = 0xABCD;

  const std::string dump = DumpText(memory);

  EXPECT_THAT(dump, StartsWith("30001 = 0x0000\n30002 = 0x0000\n"));
  EXPECT_THAT(dump, HasSubstr("\n39999 = 0x0000\n40001 = 0x0001\n40002 = 0x0000\n"));
  EXPECT_TRUE(dump.ends_with("\n49999 = 0xABCD\n"));
  EXPECT_EQ(std::count(dump.begin(), dump.end(), '\n'), 2 * TableRegisters);
}

class WholeFiles : public testing::Test {
protected:
  const test::TemporaryFolder temporary{"recorder-sim-test-"};
  const std::filesystem::path& folder = temporary.Path();

  static std::string Content(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
  }
};

TEST_F(WholeFiles, ReplaceTheOldOne) {
  WriteWholeFile(folder / "memory", "old");
  WriteWholeFile(folder / "memory", "new");

  EXPECT_EQ(Content(folder / "memory"), "new");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1) << "nothing else is left";
}

TEST_F(WholeFiles, LeaveTheOldOneWhenTheyCannotBeWritten) {
  std::filesystem::create_directory(folder / "memory"); // a file cannot take its place
  std::ofstream(folder / "memory" / "inside") << "kept";

  EXPECT_THROW(WriteWholeFile(folder / "memory", "new"), RunTimeFailure);

  EXPECT_EQ(Content(folder / "memory" / "inside"), "kept");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1) << "nothing else is left";
  EXPECT_THROW(WriteWholeFile(folder / "no" / "memory", "new"), RunTimeFailure);
}

} // namespace
} // namespace loader::simulator
