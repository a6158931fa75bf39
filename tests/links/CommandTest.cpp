// The two single commands, over every link.
#include "comm/BulkWrite.h"
#include "comm/RecorderCommands.h"
#include "tests/links/RealLink.h"
#include "tests/links/RecorderRegisters.h"

namespace loader::test {
namespace {

struct Command : RealLink, testing::WithParamInterface<std::tuple<const char*, Line>> {
  const char* model = std::get<0>(GetParam());
  const Line line = std::get<1>(GetParam());
  const char* version = std::string_view(model) == "KOV" ? "V40A" : "V12W";
  std::filesystem::path kept = Folder() / "kept.txt";
};
INSTANTIATE_TEST_SUITE_P(All, Command,
                         testing::Combine(testing::Values("KOV", "RUG"), testing::ValuesIn(AllLines)),
                         [](const auto& row) {
                           return std::string(std::get<0>(row.param)) + "Over" +
                                  LineName(std::get<1>(row.param));
                         });

TEST_P(Command, StoringTheSettingsMakesAWriteLast) {
  StartRecorder(model, version, {"--save", kept.string()});
  StartLoader(model, line);
  Read();
  log.steps.clear();
  SetText(TextRecord("C", 2, "TAG"), u"kept tag", SlotValue);
  Write();
  log.steps.clear();
  ExpectBox(20108);
  ExpectBox(62702);
  FixSettings(window);
  ExpectFreeWindow();
  (void)EndRecorder();
  EXPECT_NE(simulator::ContentOf(kept).find("C 3 TAG,kept tag\n"), std::string::npos);
}

TEST_P(Command, AWriteThatWasNotStoredIsForgotten) {
  StartRecorder(model, version, {"--save", kept.string()});
  StartLoader(model, line);
  Read();
  log.steps.clear();
  SetText(TextRecord("C", 2, "TAG"), u"lost tag", SlotValue);
  Write();
  (void)EndRecorder();
  const std::string memory = simulator::ContentOf(kept);
  EXPECT_NE(memory.find("C 3 TAG,"), std::string::npos);
  EXPECT_EQ(memory.find("lost tag"), std::string::npos);
}

TEST_P(Command, SettingTheClockWritesSixRegistersAndNothingElse) {
  StartRecorder(model, version);
  StartLoader(model, line);
  Registers expected = RegistersOverTcp(tcpPort);
  SetRecorderClock({.year = 31, .month = 2, .day = 28, .hour = 23, .minute = 59}, window);
  ExpectFreeWindow();
  int number = 40011;
  for (const int value : {1, 31, 2, 28, 23, 59}) {
    expected[number++] = value;
  }
  ExpectRegisters(expected, EndRecorder());
}

TEST_P(Command, ABusyRecorderIsLeftAlone) {
  StartRecorder(model, version, {"--recording"});
  StartLoader(model, line);
  const Registers before = RegistersOverTcp(tcpPort);
  ExpectBox(62502);
  SetRecorderClock({.year = 31, .month = 2, .day = 28, .hour = 23, .minute = 59}, window);
  ExpectFreeWindow();
  log.steps.clear();
  ExpectBox(20106);
  ExpectBox(20107);
  WriteToRecorder(window);
  ExpectFreeWindow();
  ExpectRegisters(before, EndRecorder());
}

} // namespace
} // namespace loader::test
