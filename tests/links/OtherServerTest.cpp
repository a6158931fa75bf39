// The same flows against libmodbus's own server: what we send has to be Modbus for others too.
#include "comm/RecorderCommands.h"
#include "tests/comm/StoreFilling.h"
#include "tests/links/ModbusServer.h"
#include "tests/links/RealLink.h"

namespace loader::test {
namespace {

// Registers of a recorder that answers as the generation: a value of its own in each.
Registers RegistersOf(const Generation& generation) {
  Registers registers;
  for (int number = 0; number < 9999; ++number) {
    registers[30001 + number] = 0x5A5A;
    registers[40001 + number] = (number * 7 + 257) & 0x7F7F; // single bytes of ASCII
  }
  registers[30101] = 0; // neither recording nor computing
  const auto putText = [&](int number, const std::string& text) {
    for (std::size_t i = 0; i < 4; ++i) {
      const auto byte = [&](std::size_t at) { return at < text.size() ? text[at] : '\0'; };
      registers[number + static_cast<int>(i)] = byte(2 * i) | byte(2 * i + 1) << 8;
    }
  };
  putText(30001, generation.model);
  putText(30013, generation.version);
  // The times of an old totalizer are hours and minutes.
  for (int number = 40167; number <= 40170; ++number) {
    registers[number] = number - 40160;
  }
  return registers;
}

struct OtherServer : RealLink, testing::WithParamInterface<std::tuple<Generation, Line>> {
  const Generation& generation = std::get<0>(GetParam());
  Registers before = RegistersOf(generation);
  ModbusServer server{before, Folder()};
  void SetUp() override {
    tcpPort = server.Port();
    StartLoader(generation.model, std::get<1>(GetParam()));
  }
};
INSTANTIATE_TEST_SUITE_P(All, OtherServer,
                         testing::Combine(testing::ValuesIn(SoldGenerations()), testing::ValuesIn(AllLines)),
                         [](const auto& row) {
                           return GenerationName(std::get<0>(row.param)) + "Over" +
                                  LineName(std::get<1>(row.param));
                         });

TEST_P(OtherServer, AnswersEveryRequestOfAWholeRead) {
  FillStoreWithHeld();
  Read();
  const Registers after = server.Stop();
  ExpectRegisters(before, after);
  ExpectStoreOf(generation, before);
  EXPECT_EQ(server.Answered(), static_cast<int>(ReadRequests(generation).size()));
  EXPECT_EQ(server.Refused(), 0);
}

TEST_P(OtherServer, HoldsWhatAWholeWriteHasToLeave) {
  FillStore(7);
  const Registers expected = AfterWrite(generation, before);
  Write();
  ExpectRegisters(expected, server.Stop());
  EXPECT_EQ(server.Answered(), static_cast<int>(WriteRequests(generation).size()));
  EXPECT_EQ(server.Refused(), 0);
}

TEST_P(OtherServer, TakesTheStoreCommand) {
  ExpectBox(20108);
  ExpectBox(62702);
  FixSettings(window);
  Registers expected = before;
  expected[40001] = 1;
  ExpectRegisters(expected, server.Stop());
}

} // namespace
} // namespace loader::test
