// `paramtool decode` over what recorder-sim has traced of libmodbus's own client, and over hex of hand.
#include <gtest/gtest.h>
#include <modbus/modbus.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/paramtool/ToolTest.h"
#include "tests/simulator/Clients.h"

namespace loader::test {
namespace {

// The frame of a line has the client's port in front, which is another one in each run.
std::string WithoutPorts(const std::string& trace) {
  std::string text;
  std::istringstream lines(trace);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t mark = line.find_first_of("<>");
    text += line.substr(0, line.find(' ')) + " client: " + line.substr(mark) + "\n";
  }
  return text;
}

class DecodeCommand : public ToolTest {
protected:
  // What an engineer's own program asks: who is there, two channels, the passwords, a write, a wrong address.
  static void Ask(modbus_t* client) {
    std::uint16_t values[125] = {};
    EXPECT_EQ(modbus_read_input_registers(client, 0, 16, values), 16);
    EXPECT_EQ(modbus_read_registers(client, 4000, 64, values), 64);
    EXPECT_EQ(modbus_read_registers(client, 4064, 30, values), 30);
    EXPECT_EQ(modbus_read_registers(client, 10, 60, values), 60);
    EXPECT_EQ(modbus_write_register(client, 4030, 4), 1);
    EXPECT_EQ(modbus_read_registers(client, 9999, 1, values), -1);
  }
  std::string TraceOf(const std::string& tag, bool tcp) const {
    const auto recorder = StartRecorder(tag, {"--trace-frames"});
    Ask(tcp ? simulator::ConnectTcp(recorder->Port()).get() : simulator::ConnectRtu(LineFile()).get());
    return WithoutPorts(recorder->Stop(SIGTERM).errors);
  }
  [[nodiscard]] static Ended Decode(const std::string& input, std::vector<std::string> more) {
    more.insert(more.begin(), {"decode", "-", "--lang", "en"});
    return Tool(std::move(more), {.input = input});
  }
};

TEST_F(DecodeCommand, NamesTheRegistersOfATrace) {
  for (const std::string tag : {"V40A", "V12W"}) {
    const std::string trace = TraceOf(tag, true);
    for (const std::string language : {"ja", "en"}) {
      const Ended ended = Tool({"decode", Write("trace.txt", trace), "--lang", language});
      EXPECT_EQ(ended.status, ExitGood) << ended.errors;
      EXPECT_EQ(ended.errors, "");
      ExpectGolden("decode." + tag + "." + language + ".txt", ended.output);
    }
  }
}

TEST_F(DecodeCommand, KnowsTheLayoutOfAnOlderFirmware) {
  const std::string trace = TraceOf("V05A", false);
  const Ended ended = Decode(trace, {});
  EXPECT_EQ(ended.status, ExitGood) << ended.errors;
  ExpectGolden("decode.V05A.txt", ended.output);
  EXPECT_EQ(Decode(trace, {"--firmware", "V05A"}).output, ended.output);
  EXPECT_NE(Decode(trace, {"--firmware", "V40A"}).output, ended.output);
}

TEST_F(DecodeCommand, ReportsAsJson) {
  const Ended ended = Decode("01 03 0F A8 00 01 06 FE\n01 03 02 00 01 79 84\n01 03 02 00 01 79 85\n",
                             {"--model", "KOV", "--json"});
  EXPECT_EQ(ended.status, ExitDifferent);
  ExpectGolden("decode.json", ended.output);
}

TEST_F(DecodeCommand, ShowsNoSecret) {
  // PAS1, PAS2, RPAS and a user's password are set and read back.
  const auto recorder = StartRecorder("V40A", {"--trace-frames"});
  const simulator::ModbusClient client = simulator::ConnectTcp(recorder->Port());
  std::uint16_t values[125] = {};
  EXPECT_EQ(modbus_read_input_registers(client.get(), 0, 16, values), 16);
  const Ended shown = Tool({"show", "default:KOV", "H00PAS1", "--json"});
  ASSERT_EQ(shown.status, ExitGood);
  constexpr int Secret = 7531;
  // Wherever they lie: every register of section H carries the secret.
  std::fill(std::begin(values), std::end(values), static_cast<std::uint16_t>(Secret));
  EXPECT_EQ(modbus_write_registers(client.get(), 10, 60, values), 60);
  const Ended ended = Decode(recorder->Stop(SIGTERM).errors, {});
  const auto lineOf = [&](const std::string& key, const std::string& output) {
    const std::size_t at = output.find("  " + key + "  ");
    return at == std::string::npos ? std::string() : output.substr(at, output.find('\n', at) - at);
  };
  for (const char* key : {"H00PAS1", "H00PAS2", "H00RPAS"}) {
    EXPECT_NE(lineOf(key, ended.output).find("••••"), std::string::npos) << key << ended.output;
    EXPECT_EQ(lineOf(key, ended.output).find("7531"), std::string::npos) << key;
  }
  EXPECT_NE(lineOf("H00ALMH", ended.output).find("7531"), std::string::npos) << "the others are shown";
}

TEST_F(DecodeCommand, TellsDamageAndEndsWith1) {
  const Ended ended = Decode("> 01 03 0F A8 00 01 06 FE\n< 01 03 02 00 01 79\n> 01 03 0F A8 0G 01 06 FA\n",
                             {"--model", "KOV"});
  EXPECT_EQ(ended.status, ExitDifferent);
  EXPECT_EQ(ended.output, "1: > RTU #1 read 44009 - no reply\n"
                          "2: < RTU - the check value is wrong\n"
                          "3: > - not hex throughout\n"
                          "frames: 3, not understood: 2\n");
}

TEST_F(DecodeCommand, CannotReadWhatIsNoTrace) {
  EXPECT_EQ(Tool({"decode", File("absent")}).status, ExitFailed);
  const Ended words = Decode("1 x: read 64 holding registers 44001-44064 (C 1: all) -> 137 bytes\n", {});
  EXPECT_EQ(words.status, ExitFailed);
  EXPECT_EQ(words.errors, "paramtool: -: no frames in hex (recorder-sim writes them with --trace-frames)\n");
  const Ended model = Decode("01 03 0F A8 00 01 06 FE\n", {});
  EXPECT_EQ(model.status, ExitFailed);
  EXPECT_EQ(model.errors, "paramtool: -: does not tell the model; say it with --model\n");
  EXPECT_EQ(Decode("01 03 0F A8 00 01 06 FE\n", {"--firmware", "X"}).status, ExitUsage);
  EXPECT_EQ(Decode("01 03 0F A8 00 01 06 FE\n", {"--firmware", "V12W", "--model", "KOV"}).status, ExitUsage);
}

TEST_F(DecodeCommand, OfTwoClientsThatCountAlikeGivesEachItsReply) {
  const std::string trace = Write("two.txt", "> 00 01 00 00 00 06 01 03 03 E8 00 01\n"
                                             "> 00 01 00 00 00 06 01 03 07 D0 00 02\n"
                                             "< 00 01 00 00 00 05 01 03 02 00 00\n"
                                             "< 00 01 00 00 00 07 01 03 04 00 00 00 00\n");
  EXPECT_EQ(Tool({"decode", trace, "--model", "KOV", "--lang", "en"}).status, ExitGood);
}

TEST_F(DecodeCommand, RefusesWhatHasNoEnd) {
  const Ended ended = Tool({"decode", "/dev/zero", "--model", "KOV", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_NE(ended.errors.find("more than 4 MB"), std::string::npos) << ended.errors;
}

} // namespace
} // namespace loader::test
