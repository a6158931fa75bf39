// recorder-sim as a user starts it where there are pseudo-terminals: RTU lines, their links, signals.
#include <gmock/gmock.h>
#include <signal.h>

#include <chrono>
#include <fstream>

#include "simulator/ReplyPlan.h"
#include "tests/simulator/Clients.h"
#include "tests/simulator/RunningSimulator.h"
#include "tests/simulator/TestRecorder.h"

namespace loader::simulator {
namespace {

using testing::HasSubstr;

struct Target {
  const char* model;
  const char* tag;
};

class RtuPrograms : public testing::TestWithParam<Target> {
protected:
  TestRecorder expected{GetParam().model == std::string("KOV") ? Model::Kov : Model::Rug, GetParam().tag};
};

INSTANTIATE_TEST_SUITE_P(OfEveryGeneration, RtuPrograms,
                         testing::Values(Target{"KOV", "V00A"}, Target{"KOV", "V06A"}, Target{"KOV", "V14A"},
                                         Target{"KOV", "V18A"}, Target{"KOV", "V27A"}, Target{"KOV", "V40A"},
                                         Target{"RUG", "V09W"}, Target{"RUG", "V10W"}),
                         [](const auto& of) { return std::string(of.param.tag); });

TEST_P(RtuPrograms, ServeTheirMemoryToAClientOfLibmodbusOverRtu) {
  const TestFolder folder;
  const RunningSimulator simulator(
      {"--model", GetParam().model, "--firmware", GetParam().tag, "--rtu", folder / "COM1"});

  EXPECT_TRUE(ReadAll(ConnectRtu(folder / "COM1").get()) == expected.memory);
}

TEST(RtuProgram, ServesTcpAndRtuAtTheSameTime) {
  const TestFolder folder;
  const RunningSimulator simulator({"--tcp", "0", "--rtu", folder / "COM1"}, 2);
  EXPECT_EQ(simulator.Lines().at(1), (folder / "COM1").string());
  const ModbusClient tcp = ConnectTcp(simulator.Port());
  const ModbusClient rtu = ConnectRtu(folder / "COM1");

  EXPECT_EQ(modbus_write_register(tcp.get(), 100, 1234), 1);
  std::uint16_t value = 0;
  EXPECT_EQ(modbus_read_registers(rtu.get(), 100, 1, &value), 1);
  EXPECT_EQ(value, 1234);
}

TEST(RtuProgram, AnswersOnAnRtuLineToItsStationOnly) {
  const TestFolder folder;
  const RunningSimulator simulator({"--rtu", folder / "COM1", "--station", "9"});
  const ModbusClient client = ConnectRtu(folder / "COM1");
  std::uint16_t value = 0;

  modbus_set_slave(client.get(), 9);
  EXPECT_EQ(modbus_read_registers(client.get(), 0, 1, &value), 1);
  modbus_set_slave(client.get(), 1);
  modbus_set_response_timeout(client.get(), 0, 50000);
  EXPECT_EQ(modbus_read_registers(client.get(), 0, 1, &value), -1);
  EXPECT_EQ(errno, ETIMEDOUT);
}

TEST(RtuProgram, AnswersAnUnknownFunctionOnAnRtuLineOnceTheLineIsSilent) {
  const TestFolder folder;
  const RunningSimulator simulator({"--rtu", folder / "COM1"});
  RawClient client = RawClient::Rtu(folder / "COM1");

  client.Send({0x01, 0x2B, 0x0E, 0x01, 0x00, 0x70, 0x77});

  EXPECT_EQ(client.Receive(5), (Bytes{0x01, 0xAB, 0x01, 0x9E, 0xF0}));
}

TEST(RtuProgram, DropsAnUnfinishedRequestOnceTheLineIsSilent) {
  const TestFolder folder;
  RunningSimulator simulator({"--rtu", folder / "COM1", "--trace"});
  RawClient client = RawClient::Rtu(folder / "COM1");
  client.Send({0x01, 0x03, 0x00}); // the beginning of a read
  const ModbusClient next = ConnectRtu(folder / "COM1");
  std::uint16_t value = 0;
  int tries = 1;
  modbus_set_response_timeout(next.get(), 0, 300000);
  while (modbus_read_registers(next.get(), 0, 1, &value) != 1 && tries < 20) {
    ++tries; // taken for the rest of that beginning
  }

  EXPECT_LE(tries, 2);
  EXPECT_THAT(simulator.Stop(SIGTERM).errors, HasSubstr("damaged request -> no reply: Invalid CRC"));
}

TEST(RtuProgram, ForgetsWhatAClientOfTheTerminalLeftUnread) {
  const TestFolder folder;
  const RunningSimulator simulator({"--tcp", "0", "--rtu", folder / "COM1"}, 2);
  const ModbusClient tcp = ConnectTcp(simulator.Port());
  std::uint16_t value = 0;
  {
    RawClient gone = RawClient::Rtu(folder / "COM1");
    gone.Send({0x01, 0x03, 0x00, 0x00, 0x00, 0x01, 0x84, 0x0A});
    // The reply to this read is on the line when the write behind it is done.
    gone.Send({0x01, 0x06, 0x00, 0x64, 0x00, 0x07, 0x89, 0xD7});
    while (value != 7) {
      ASSERT_EQ(modbus_read_registers(tcp.get(), 100, 1, &value), 1);
    }
  }
  // Once it answers here the recorder has seen that the line was closed.
  ASSERT_EQ(modbus_read_registers(tcp.get(), 100, 1, &value), 1);
  RawClient next = RawClient::Rtu(folder / "COM1");
  next.Send({0x01, 0x03, 0x00, 0x64, 0x00, 0x01, 0xC5, 0xD5});

  EXPECT_EQ(next.Receive(7), (Bytes{0x01, 0x03, 0x02, 0x00, 0x07, 0xF9, 0x86}));
}

TEST(RtuProgram, KeepsThePaceOfAWire) {
  const TestFolder folder;
  const RunningSimulator simulator({"--rtu", folder / "COM1", "--pace", "19200", "--turnaround", "20"});
  const ModbusClient client = ConnectRtu(folder / "COM1");
  std::vector<std::uint16_t> values(64);

  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(modbus_read_registers(client.get(), 0, 64, values.data()), 64);

  EXPECT_GE(std::chrono::steady_clock::now() - start, WireTime(19200, 8 + 133) + Milliseconds(20));
}

class RtuProgramEnds : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(OnSignals, RtuProgramEnds, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_P(RtuProgramEnds, CleanlyWithItsLinkGone) {
  const TestFolder folder;
  RunningSimulator simulator({"--rtu", folder / "COM1", "--tcp", "0"}, 2);
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "COM1"));
  const ModbusClient client = ConnectTcp(simulator.Port()); // does not hold it up

  const Ended ended = simulator.Stop(GetParam());

  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.errors, "");
  EXPECT_FALSE(std::filesystem::is_symlink(folder / "COM1"));
}

TEST(RtuProgram, UsesNoProcessorTimeWhileItWaits) {
  RunningSimulator simulator({"--tcp", "0"});
  const ModbusClient client = ConnectTcp(simulator.Port());
  std::uint16_t value = 0;
  EXPECT_EQ(modbus_read_registers(client.get(), 0, 1, &value), 1);
  const auto switches = [&] {
    const std::string status = ContentOf("/proc/" + std::to_string(simulator.ProcessId()) + "/status");
    const std::string name = "\nvoluntary_ctxt_switches:";
    return std::stol(status.substr(status.find(name) + name.size()));
  };
  // A reply that is silence: while the client waits for it, nothing wakes the recorder up.
  modbus_set_response_timeout(client.get(), 0, 300000);
  const long before = switches();
  EXPECT_EQ(modbus_receive_confirmation(client.get(), std::vector<std::uint8_t>(260).data()), -1);
  EXPECT_LE(switches(), before + 1) << "one for falling asleep";
}

TEST(RtuProgram, LeavesAFileInTheWayOfItsLinkAlone) {
  const TestFolder folder;
  std::ofstream(folder / "COM1") << "precious";

  const Ended ended = RunSimulator({"--rtu", folder / "COM1"});

  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.errors, HasSubstr("there is a file of that name"));
  EXPECT_EQ(ContentOf(folder / "COM1"), "precious");
}

TEST(RtuProgram, ReplacesALinkThatWasLeftBehind) {
  const TestFolder folder;
  std::filesystem::create_symlink("/dev/pts/nowhere", folder / "COM1");

  RunningSimulator simulator({"--rtu", folder / "COM1"});

  EXPECT_NE(std::filesystem::read_symlink(folder / "COM1"), "/dev/pts/nowhere");
  EXPECT_EQ(simulator.Stop(SIGTERM).status, 0);
}

TEST(RtuProgram, LeavesALinkAloneThatIsNoLongerItsOwn) {
  const TestFolder folder;
  RunningSimulator simulator({"--rtu", folder / "COM1"});
  std::filesystem::remove(folder / "COM1");
  std::filesystem::create_symlink("/dev/null", folder / "COM1");

  EXPECT_EQ(simulator.Stop(SIGTERM).status, 0);
  EXPECT_EQ(std::filesystem::read_symlink(folder / "COM1"), "/dev/null");
}

TEST(RtuProgram, NeverDropsAnRtuLine) {
  const TestFolder folder;
  const RunningSimulator simulator({"--tcp", "0", "--rtu", folder / "COM1", "--idle", "1"}, 2);
  const ModbusClient rtu = ConnectRtu(folder / "COM1");
  RawClient idle = RawClient::Tcp(simulator.Port());
  EXPECT_TRUE(idle.ReceiveToEnd().empty()); // the line has been idle for longer by now
  std::uint16_t value = 0;
  EXPECT_EQ(modbus_read_registers(rtu.get(), 100, 1, &value), 1);
}

} // namespace
} // namespace loader::simulator
