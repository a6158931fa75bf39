// recorder-sim as a user starts it: lines, ends, files.
#include <gmock/gmock.h>

#include <chrono>
#include <fstream>

#include "simulator/MemoryFile.h"
#include "simulator/ReplyPlan.h"
#include "simulator/Server.h"
#include "tests/simulator/Clients.h"
#include "tests/simulator/RunningSimulator.h"
#include "tests/simulator/TestRecorder.h"

namespace loader::simulator {
namespace {

using testing::HasSubstr;

const Bytes WriteType = {0, 1, 0, 0, 0, 9, 1, 16, 0x0F, 0xA8, 0, 1, 2, 0, 5}; // 44009 = 5
const Bytes StoreCommand = {0, 2, 0, 0, 0, 9, 1, 16, 0, 0, 0, 1, 2, 0, 1};

struct Target {
  const char* model;
  const char* tag;
};

class Programs : public testing::TestWithParam<Target> {
protected:
  TestRecorder expected{GetParam().model == std::string("KOV") ? Model::Kov : Model::Rug, GetParam().tag};
};

INSTANTIATE_TEST_SUITE_P(OfEveryGeneration, Programs,
                         testing::Values(Target{"KOV", "V00A"}, Target{"KOV", "V06A"}, Target{"KOV", "V14A"},
                                         Target{"KOV", "V18A"}, Target{"KOV", "V27A"}, Target{"KOV", "V40A"},
                                         Target{"RUG", "V09W"}, Target{"RUG", "V10W"}),
                         [](const auto& of) { return std::string(of.param.tag); });

TEST_P(Programs, ServeTheirMemoryToAClientOfLibmodbusOverTcp) {
  const RunningSimulator simulator({"--model", GetParam().model, "--firmware", GetParam().tag, "--tcp", "0"});

  EXPECT_TRUE(ReadAll(ConnectTcp(simulator.Port()).get()) == expected.memory);
}

TEST(Program, ServesSeveralClientsOverTcp) {
  const RunningSimulator simulator({"--tcp", "0"});
  const ModbusClient first = ConnectTcp(simulator.Port());
  const ModbusClient second = ConnectTcp(simulator.Port());
  std::uint16_t value = 0;

  EXPECT_EQ(modbus_write_register(first.get(), 98, 5), 1);
  EXPECT_EQ(modbus_read_registers(second.get(), 98, 1, &value), 1);
  EXPECT_EQ(value, 5);
  EXPECT_EQ(modbus_read_registers(first.get(), 98, 1, &value), 1);
}

TEST(Program, ClosesATcpConnectionThatIsNoModbusAndServesTheOthers) {
  const RunningSimulator simulator({"--tcp", "0"});
  RawClient stranger = RawClient::Tcp(simulator.Port());

  stranger.Send({'G', 'E', 'T', ' ', '/', '\r', '\n'});

  EXPECT_TRUE(stranger.ReceiveToEnd().empty());
  RawClient client = RawClient::Tcp(simulator.Port());
  client.Send(WriteType);
  EXPECT_EQ(client.Receive(12).size(), 12U);
}

class ProgramEnds : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(OnOrders, ProgramEnds,
                         testing::Values(test::Interrupt, test::Terminate, test::HangUp));

TEST_P(ProgramEnds, CleanlyWithItsMemoryWritten) {
  const TestFolder folder;
  RunningSimulator simulator({"--tcp", "0", "--dump", folder.File("dump")});
  const ModbusClient client = ConnectTcp(simulator.Port()); // does not hold it up

  const Ended ended = simulator.Stop(GetParam());

  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.errors, "");
  EXPECT_EQ(ContentOf(folder / "dump"), DumpText(TestRecorder(Model::Kov, "V40A").memory));
}

TEST(Program, TellsThatAPortIsTaken) {
  const RunningSimulator first({"--tcp", "0"});

  const Ended second = RunSimulator({"--tcp", std::to_string(first.Port())});

  EXPECT_EQ(second.status, 1);
  EXPECT_EQ(second.output, "");
  EXPECT_THAT(second.errors, HasSubstr("recorder-sim: cannot listen on 127.0.0.1:" +
                                       std::to_string(first.Port()) + ": Address already in use"));
}

TEST(Program, TellsThatAnAddressIsNotOfThisMachine) {
  const Ended ended = RunSimulator({"--tcp", "203.0.113.1:0"});

  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.errors, HasSubstr("cannot listen on 203.0.113.1:0: "));
}

TEST(Program, TellsHowToUseIt) {
  const Ended ended = RunSimulator({"--help"});

  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.output, HasSubstr("Usage: recorder-sim"));
  EXPECT_EQ(ended.errors, "");
}

TEST(Program, RefusesAWrongOption) {
  const Ended ended = RunSimulator({"--speed", "9600"});

  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.output, "");
  EXPECT_EQ(ended.errors, "recorder-sim: unknown option \"--speed\"\nTry recorder-sim --help.\n");
}

TEST(Program, TellsThatItsShapeIsMissing) {
  const Ended ended = RunSimulator({"--shape", "/no/such/file", "--tcp", "0"});

  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.errors, HasSubstr("/no/such/file"));
}

TEST(Program, ServesTheNewestLayoutUnderATagOfAnotherForm) {
  RunningSimulator simulator({"--firmware", "V10W", "--tcp", "0"});
  const RegisterMemory memory = ReadAll(ConnectTcp(simulator.Port()).get());
  TestRecorder expected(Model::Kov, "V40A");
  PutText(expected.memory, expected.Field("P", 0, "PVER"), u"V10W");

  EXPECT_TRUE(memory == expected.memory);
  EXPECT_THAT(simulator.Stop(test::Terminate).errors, HasSubstr("V10W is no tag of a KOV"));
}

TEST(Program, ReportsRecordingAndComputing) {
  const RunningSimulator simulator({"--recording", "--computing", "--tcp", "0"});
  std::uint16_t status = 0;

  EXPECT_EQ(modbus_read_input_registers(ConnectTcp(simulator.Port()).get(), 100, 1, &status), 1);
  EXPECT_EQ(status, 0x0081);
}

TEST(Program, TracesOnTheErrorOutput) {
  RunningSimulator simulator({"--trace", "--tcp", "0"});
  std::uint16_t values[6] = {1, 25, 7, 4, 13, 5};
  EXPECT_EQ(modbus_write_registers(ConnectTcp(simulator.Port()).get(), 10, 6, values), 6);

  const Ended ended = simulator.Stop(test::Terminate);

  EXPECT_EQ(ended.output, "");
  EXPECT_THAT(ended.errors,
              HasSubstr(": write 6 holding registers 40011-40016 (H 1: TIMS, YEAR, MONT, DAYS, HOUR, "
                        "MINT) clock set to 2025-07-04 13:05; -> 12 bytes\n"));
}

TEST(Program, ShowsFramesOnTheErrorOutput) {
  RunningSimulator simulator({"--trace-frames", "--tcp", "0"});
  std::uint16_t values[1] = {0};
  EXPECT_EQ(modbus_read_registers(ConnectTcp(simulator.Port()).get(), 9, 1, values), 1);

  const Ended ended = simulator.Stop(test::Terminate);

  EXPECT_THAT(ended.errors, HasSubstr(": > 00 01 00 00 00 06 01 03 00 09 00 01\n"));
  EXPECT_THAT(ended.errors, HasSubstr(": < 00 01 00 00 00 05 01 03 02 00 00\n"));
  EXPECT_EQ(ended.errors.find("read 1"), std::string::npos) << "words are another option";
}

TEST(Program, ForgetsAWriteAtARestartUnlessItWasStored) {
  const TestFolder folder;
  const std::string memory = folder.File("memory.txt");
  {
    RunningSimulator simulator({"--tcp", "0", "--save", memory});
    RawClient client = RawClient::Tcp(simulator.Port());
    client.Send(WriteType);
    EXPECT_EQ(client.Receive(12).size(), 12U);
    EXPECT_EQ(simulator.Stop(test::Terminate).status, 0);
  }
  std::uint16_t type = 0;
  {
    RunningSimulator simulator({"--tcp", "0", "--load", memory, "--save", memory});
    const ModbusClient modbus = ConnectTcp(simulator.Port());
    EXPECT_EQ(modbus_read_registers(modbus.get(), 4008, 1, &type), 1);
    EXPECT_EQ(type, 1) << "forgotten";
    RawClient client = RawClient::Tcp(simulator.Port());
    client.Send(WriteType);
    EXPECT_EQ(client.Receive(12).size(), 12U);
    client.Send(StoreCommand);
    EXPECT_EQ(client.Receive(12).size(), 12U);
    EXPECT_THAT(ContentOf(memory), HasSubstr("\nC 1 TYPE,5\n")) << "at once, not at the end";
    EXPECT_EQ(simulator.Stop(test::Kill).status, 128 + test::Kill) << "the plug is pulled";
  }
  const RunningSimulator again({"--tcp", "0", "--load", memory});
  EXPECT_EQ(modbus_read_registers(ConnectTcp(again.Port()).get(), 4008, 1, &type), 1);
  EXPECT_EQ(type, 5);
}

TEST(Program, TakesModelAndFirmwareFromItsMemoryFile) {
  const TestFolder folder;
  const TestRecorder rug(Model::Rug, "V09W");
  std::ofstream(folder / "memory.txt") << MemoryText(rug.firmware, rug.map, rug.memory);

  const RunningSimulator simulator({"--tcp", "0", "--load", folder.File("memory.txt")});

  EXPECT_TRUE(ReadAll(ConnectTcp(simulator.Port()).get()) == rug.memory);
}

TEST(Program, StartsWithTheIdentityThatAMemoryFileDoesNotTell) {
  const TestFolder folder;
  std::ofstream(folder / "memory.txt") << "C 1 TYPE,7\n";

  const RunningSimulator simulator({"--tcp", "0", "--load", folder.File("memory.txt"), "--model", "RUG"});

  RegisterMemory expected;
  const TestRecorder rug(Model::Rug, NewestTag(Model::Rug));
  PutIdentity(rug.firmware, rug.map, expected);
  expected.At(rug.Address("C", 0, "TYPE")) = 7;
  EXPECT_TRUE(ReadAll(ConnectTcp(simulator.Port()).get()) == expected);
}

TEST(Program, RefusesTheMemoryOfAnotherRecorder) {
  const TestFolder folder;
  std::ofstream(folder / "memory.txt") << "model,RUG\nfirmware,V09W\n";

  const Ended model = RunSimulator({"--tcp", "0", "--load", folder.File("memory.txt"), "--model", "KOV"});
  EXPECT_EQ(model.status, 1);
  EXPECT_THAT(model.errors, HasSubstr("memory.txt is the memory of a RUG"));

  const Ended firmware =
      RunSimulator({"--tcp", "0", "--load", folder.File("memory.txt"), "--firmware", "V12W"});
  EXPECT_EQ(firmware.status, 1);
  EXPECT_THAT(firmware.errors, HasSubstr("memory.txt is the memory of firmware V09W"));
}

TEST(Program, NamesTheLineOfAMemoryFileThatIsWrong) {
  const TestFolder folder;
  std::ofstream(folder / "memory.txt") << "C 1 TYPE,1\nC 99 TYPE,1\n";

  const Ended ended = RunSimulator({"--tcp", "0", "--load", folder.File("memory.txt")});

  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.errors, HasSubstr("memory.txt, line 2: this recorder has no value \"C 99 TYPE\""));
}

TEST(Program, TellsThatItCannotKeepItsMemory) {
  const TestFolder folder;
  RunningSimulator simulator({"--tcp", "0", "--save", folder.File("no/memory.txt")});
  RawClient client = RawClient::Tcp(simulator.Port());
  client.Send(StoreCommand);
  EXPECT_EQ(client.Receive(12), (Bytes{0, 2, 0, 0, 0, 6, 1, 16, 0, 0, 0, 1})) << "the line stays alive";

  const Ended ended = simulator.Stop(test::Terminate);

  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.errors, HasSubstr("cannot write "));
}

TEST(Program, DumpsItsWorkingMemoryAtTheEnd) {
  const TestFolder folder;
  RunningSimulator simulator({"--tcp", "0", "--pattern", "A55A", "--dump", folder.File("dump.txt")});
  RawClient client = RawClient::Tcp(simulator.Port());
  client.Send(WriteType);
  EXPECT_EQ(client.Receive(12).size(), 12U);
  EXPECT_EQ(simulator.Stop(test::Terminate).status, 0);

  TestRecorder expected(Model::Kov, "V40A");
  FillUnused(expected.map, 0xA55A, expected.memory);
  expected.memory.At(44009) = 5;
  EXPECT_TRUE(ContentOf(folder / "dump.txt") == DumpText(expected.memory));
}

// --- Many clients, and idle ones

const Bytes ReadIdentity = {0, 1, 0, 0, 0, 6, 1, 4, 0, 0, 0, 2};
const Bytes IdentityReply = {0, 1, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56};

std::vector<RawClient> Connect(const RunningSimulator& simulator, std::size_t count) {
  std::vector<RawClient> clients;
  for (std::size_t i = 0; i < count; ++i) {
    clients.push_back(RawClient::Tcp(simulator.Port()));
  }
  return clients;
}

TEST(Program, ServesTwoHundredClientsAtATime) {
  const RunningSimulator simulator({"--tcp", "0"});
  std::vector<RawClient> clients = Connect(simulator, 200);
  for (int round = 0; round < 2; ++round) {
    for (RawClient& client : clients) {
      client.Send(ReadIdentity);
    }
    for (std::size_t i = 0; i < clients.size(); ++i) {
      ASSERT_EQ(clients[i].Receive(IdentityReply.size()), IdentityReply) << i;
    }
  }
}

TEST(Program, DropsAnIdleClientAndNoneThatWaitsForAReply) {
  const RunningSimulator simulator({"--tcp", "0", "--idle", "1", "--fault", "late@1", "--late", "1800"});
  RawClient waiting = RawClient::Tcp(simulator.Port());
  waiting.Send(ReadIdentity);
  RawClient idle = RawClient::Tcp(simulator.Port());

  EXPECT_TRUE(idle.ReceiveToEnd().empty());
  EXPECT_FALSE(idle.WasReset());
  EXPECT_EQ(waiting.Receive(IdentityReply.size()), IdentityReply);
  EXPECT_TRUE(waiting.ReceiveToEnd().empty()) << "idle by now";
}

TEST(Program, ServesAClientThatWaitsForAPlaceOnceIdleOnesHaveGone) {
  const RunningSimulator simulator({"--tcp", "0", "--idle", "1"});
  const std::vector<RawClient> idle = Connect(simulator, MostClients);
  RawClient late = RawClient::Tcp(simulator.Port());
  late.Send(ReadIdentity);
  EXPECT_EQ(late.Receive(IdentityReply.size()), IdentityReply);
}

} // namespace
} // namespace loader::simulator
