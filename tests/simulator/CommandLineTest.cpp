// The options: what they mean, and what is said about wrong ones.
#include "simulator/CommandLine.h"

#include <gmock/gmock.h>

namespace loader::simulator {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

Options Parse(std::initializer_list<std::string> arguments) {
  return ParseCommandLine(std::vector<std::string>(arguments));
}

std::string Refusal(std::initializer_list<std::string> arguments) {
  try {
    (void)Parse(arguments);
  } catch (const CommandLineError& error) {
    return error.what();
  }
  return "accepted";
}

TEST(CommandLine, WithoutOptionsServesTcpToThisMachineOnly) {
  const Options options = Parse({});

  ASSERT_EQ(options.tcp.size(), 1U);
  EXPECT_EQ(options.tcp[0].host, "127.0.0.1");
  EXPECT_EQ(options.tcp[0].port, 502);
  EXPECT_TRUE(options.rtu.empty());
  EXPECT_FALSE(options.model);
  EXPECT_FALSE(options.firmware);
  EXPECT_FALSE(options.recording || options.computing || options.trace || options.traceFrames ||
               options.help);
  EXPECT_EQ(options.timing.pace, 0);
  EXPECT_EQ(options.timing.turnaround, 0ms);
}

TEST(CommandLine, WithAnRtuLineServesNoTcpUnlessAsked) {
  EXPECT_TRUE(Parse({"--rtu", "COM1"}).tcp.empty());
  const Options both = Parse({"--rtu", "COM1", "--tcp"});
  EXPECT_THAT(both.rtu, ElementsAre("COM1"));
  EXPECT_EQ(both.tcp.at(0).port, 502);
}

TEST(CommandLine, TakesTcpAddresses) {
  EXPECT_EQ(Parse({"--tcp", "1502"}).tcp.at(0).host, "127.0.0.1");
  EXPECT_EQ(Parse({"--tcp", "1502"}).tcp.at(0).port, 1502);
  EXPECT_EQ(Parse({"--tcp", "0.0.0.0:0"}).tcp.at(0).host, "0.0.0.0");
  EXPECT_EQ(Parse({"--tcp", "0.0.0.0:0"}).tcp.at(0).port, 0);
  EXPECT_EQ(Parse({"--tcp=[::1]:1502"}).tcp.at(0).host, "::1");
  EXPECT_EQ(Parse({"--tcp", "--trace"}).tcp.at(0).port, 502) << "without a value";
  EXPECT_EQ(Parse({"--tcp", "1", "--tcp", "2"}).tcp.size(), 2U);
}

TEST(CommandLine, TakesTheRecorder) {
  const Options options =
      Parse({"--model", "RUG", "--firmware", "V09W", "--station", "12", "--recording", "--computing"});

  EXPECT_EQ(options.model, Model::Rug);
  EXPECT_EQ(options.firmware, "V09W");
  EXPECT_EQ(options.station, 12);
  EXPECT_TRUE(options.recording);
  EXPECT_TRUE(options.computing);
  EXPECT_EQ(Parse({"--model=kov"}).model, Model::Kov);
}

TEST(CommandLine, TakesFilesAndPattern) {
  const Options options =
      Parse({"--load", "a", "--save=b", "--dump", "c", "--shape", "d", "--pattern", "A55A"});

  EXPECT_EQ(options.load, "a");
  EXPECT_EQ(options.save, "b");
  EXPECT_EQ(options.dump, "c");
  EXPECT_EQ(options.shape, "d");
  EXPECT_EQ(options.pattern, 0xA55A);
  EXPECT_EQ(Parse({"--pattern", "0x00ff"}).pattern, 0x00FF);
}

TEST(CommandLine, TakesTimes) {
  const Options options = Parse({"--pace", "19200", "--turnaround", "15", "--late", "100"});

  EXPECT_EQ(options.timing.pace, 19200);
  EXPECT_EQ(options.timing.turnaround, 15ms);
  EXPECT_EQ(options.timing.late, 100ms);
}

TEST(CommandLine, TakesFaults) {
  const Options options =
      Parse({"--fault", "no-reply@3", "--fault", "late:5%", "--seed", "18446744073709551615"});

  ASSERT_EQ(options.faults.size(), 2U);
  EXPECT_EQ(options.faults[0].request, 3);
  EXPECT_EQ(options.faults[1].kind, FaultKind::Late);
  EXPECT_EQ(options.seed, 18446744073709551615U);
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
  EXPECT_EQ(Refusal({"--modell", "KOV"}), "unknown option \"--modell\"");
  EXPECT_EQ(Refusal({"KOV"}), "unknown option \"KOV\"");
  EXPECT_EQ(Refusal({"--trace=yes"}), "--trace takes no value");
  EXPECT_EQ(Refusal({"--model"}), "--model needs a value");
  EXPECT_EQ(Refusal({"--rtu", "--trace"}), "--rtu needs a value");
}

TEST(CommandLine, RefusesWrongValues) {
  EXPECT_EQ(Refusal({"--model", "VOX"}), "--model: \"VOX\" is not a model: KOV or RUG");
  EXPECT_THAT(Refusal({"--firmware", "V40A40A40A"}), HasSubstr("is not a firmware tag"));
  EXPECT_THAT(Refusal({"--firmware="}), HasSubstr("is not a firmware tag"));
  for (const char* wrong : {"", "x", "65536", "-1", ":502", "host:", "1.2.3.4:x", "1:2:3x"}) {
    EXPECT_THAT(Refusal({std::string("--tcp=") + wrong}), HasSubstr("is not [ADDR:]PORT")) << wrong;
  }
  EXPECT_EQ(Refusal({"--station", "0"}), "--station: \"0\" is not a whole number from 1 to 247");
  EXPECT_EQ(Refusal({"--station", "248"}), "--station: \"248\" is not a whole number from 1 to 247");
  EXPECT_THAT(Refusal({"--pace", "49"}), HasSubstr("from 50 to 10000000"));
  EXPECT_THAT(Refusal({"--pace", "fast"}), HasSubstr("is not a whole number"));
  EXPECT_THAT(Refusal({"--turnaround", "-1"}), HasSubstr("from 0 to 3600000"));
  EXPECT_THAT(Refusal({"--late", "1.5"}), HasSubstr("is not a whole number"));
  for (const char* wrong : {"", "A5", "A55A5", "G000", "0x1"}) {
    EXPECT_THAT(Refusal({std::string("--pattern=") + wrong}), HasSubstr("four hexadecimal digits")) << wrong;
  }
  EXPECT_THAT(Refusal({"--fault", "nothing@1"}), HasSubstr("is not KIND@N or KIND:P%"));
  EXPECT_THAT(Refusal({"--seed", "-1"}), HasSubstr("not negative"));
  EXPECT_THAT(Refusal({"--save="}), HasSubstr("is not the name of a file"));
}

TEST(CommandLineHelp, NamesEveryOptionAndEveryKindOfFault) {
  const std::string help = HelpText();
  for (const char* option :
       {"--help",  "--model", "--firmware",     "--station", "--recording", "--computing", "--tcp",
        "--rtu",   "--pace",  "--turnaround",   "--load",    "--save",      "--dump",      "--pattern",
        "--shape", "--trace", "--trace-frames", "--fault",   "--seed",      "--late",      "--idle"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
  for (const FaultKindRow& row : FaultKinds()) {
    EXPECT_THAT(help, HasSubstr("\n  " + std::string(row.name) + " ")) << row.name;
  }
  EXPECT_TRUE(Parse({"--help"}).help);
  EXPECT_TRUE(Parse({"-h"}).help);
}

TEST(CommandLine, TakesTheTimeAfterWhichAnIdleClientIsDropped) {
  EXPECT_EQ(Parse({}).idle, 60s);
  EXPECT_EQ(Parse({"--idle", "5"}).idle, 5s);
  EXPECT_EQ(Parse({"--idle", "0"}).idle, 0s);
  EXPECT_THAT(Refusal({"--idle", "-1"}), HasSubstr("is not a whole number from 0 to 86400"));
}

} // namespace
} // namespace loader::simulator
