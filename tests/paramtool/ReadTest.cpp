// paramtool read, and recorders as set-ups of the other commands.
#include <QJsonArray>
#include <algorithm>
#include <sstream>

#include "tests/paramtool/TransferTest.h"
#include "tests/support/FullDisk.h"

namespace loader::test {
namespace {

struct ReadOf : TransferTest, testing::WithParamInterface<std::string> {};
INSTANTIATE_TEST_SUITE_P(All, ReadOf, testing::ValuesIn(VersionTags()),
                         [](const auto& row) { return row.param; });

// The lines of the sections that a read moves.
std::vector<std::string> MovedLines(const std::string& file) {
  std::vector<std::string> lines;
  std::istringstream in(file);
  for (std::string line; std::getline(in, line);) {
    if (std::string_view("CAGTBEONHMUDJKX").find(line[0]) != std::string_view::npos) {
      lines.push_back(line);
    }
  }
  return lines;
}

TEST_P(ReadOf, SavesTheWholeSetUpOverTcpAndSerialAlike) {
  const auto recorder = StartRecorder(GetParam());
  const std::string model = ModelOfTag(GetParam());
  const Ended tcp = Tool({"read", TcpOf(*recorder), "-o", File("tcp"), "--lang", "en"});
  // The plant of KOV has a minute of an older time, which no file gives back.
  const int expected =
      model == "KOV" && GetParam() != "V05A" && GetParam() != "V13A" ? ExitDifferent : ExitGood;
  EXPECT_EQ(tcp.status, expected) << tcp.output << tcp.errors;
  EXPECT_NE(tcp.errors.find(model + " " + GetParam()), std::string::npos) << tcp.errors;
  EXPECT_EQ(tcp.errors.find('\r'), std::string::npos) << "progress in a pipe";
  for (const std::string& address : AddressesOf(*recorder)) {
    EXPECT_EQ(Tool({"read", address, "-o", File("again")}).status, expected) << address;
    EXPECT_EQ(Read("tcp"), Read("again")) << address;
  }
  EXPECT_TRUE(Read("tcp").starts_with("LOADER ,"));
  EXPECT_EQ(MovedLines(Read("tcp")).size(), MovedLines(PlantFile(model)).size());
  if (GetParam() == "V40A" || GetParam() == "V12W") {
    EXPECT_EQ(MovedLines(Read("tcp")), MovedLines(PlantFile(model)));
  }
  EXPECT_EQ(Files(), (std::vector<std::string>{"again", "tcp"}));
}

TEST_P(ReadOf, TheReportIsAsItWas) {
  const auto recorder = StartRecorder(GetParam());
  for (const std::string language : {"ja", "en"}) {
    const Ended ended = Tool({"read", TcpOf(*recorder), "-o", File("it"), "--lang", language});
    ExpectGolden("read-" + GetParam() + "." + language + ".txt", WithoutPort(WithoutFolder(ended.output)));
  }
}

TEST_P(ReadOf, TheJsonReportTellsTheRecorderAndWhatWasFilled) {
  const auto recorder = StartRecorder(GetParam());
  const Ended ended = Tool({"read", TcpOf(*recorder) + "#7", "-o", File("it"), "--json"});
  const QJsonObject report = JsonOfOutput(ended);
  EXPECT_EQ(report["command"].toString(), "read");
  EXPECT_EQ(report["exit"].toInt(), ended.status);
  const QJsonObject there = report["recorder"].toObject();
  EXPECT_EQ(there["model"].toString().toStdString(), ModelOfTag(GetParam()));
  EXPECT_EQ(there["version"].toString().toStdString(), GetParam());
  EXPECT_EQ(there["station"].toInt(), 7);
  EXPECT_TRUE(there["generation"].isDouble());
  EXPECT_EQ(report["file"].toString().toStdString(), File("it"));
  const QJsonArray filled = report["filled"].toArray();
  EXPECT_GT(filled.size(), 40);
  for (const QJsonValue& parameter : filled) {
    const QString lacks = parameter["lacks"].toString();
    EXPECT_TRUE(lacks == "section" || lacks == "item" || lacks == "tag" || lacks == "notRead");
    EXPECT_FALSE(parameter["key"].toString().isEmpty());
  }
  const QJsonArray notKept = report["notKept"].toArray();
  EXPECT_EQ(notKept.isEmpty(), ended.status == ExitGood);
  for (const QJsonValue& parameter : notKept) {
    EXPECT_NE(parameter["value"], parameter["inFile"]);
  }
}

struct ReadCommand : TransferTest {};

TEST_F(ReadCommand, ARecorderIsASetUpOfEveryCommand) {
  const auto recorder = StartRecorder("V40A");
  ASSERT_EQ(Tool({"read", TcpOf(*recorder), "-o", File("it.KOV")}).status, ExitDifferent);
  const Ended ofFile = Tool({"show", File("it.KOV"), "CH3", "--lang", "en"});
  std::vector<std::string> addresses = AddressesOf(*recorder);
  if (addresses.size() > 1) {
    addresses.push_back("usb:" + LineFile());
  }
  for (const std::string& address : addresses) {
    const Ended shown = Tool({"show", address, "CH3", "--lang", "en"});
    EXPECT_EQ(shown.status, ExitGood) << shown.errors;
    EXPECT_EQ(shown.output, ofFile.output) << address;
  }
}

TEST_F(ReadCommand, ASetUpOfAnOlderRecorderSaysHowMuchOfItIsDefaults) {
  const auto recorder = StartRecorder("V26A");
  const Ended ended = Tool({"show", TcpOf(*recorder), "CH3", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitGood);
  EXPECT_NE(ended.errors.find("165 parameters that it does not have stand at their defaults\n"),
            std::string::npos)
      << ended.errors;
  const auto newest = StartRecorder("V40A");
  EXPECT_EQ(Tool({"show", TcpOf(*newest), "CH3"}).errors, "");
}

TEST_F(ReadCommand, AHostIsFoundByItsName) {
  const auto recorder = StartRecorder("V40A");
  const Ended ended = Tool({"show", "tcp:localhost:" + std::to_string(recorder->Port()), "CH3"});
  EXPECT_EQ(ended.status, ExitGood) << ended.errors;
}

TEST_F(ReadCommand, TheOtherModelIsToldWithBothNames) {
  const auto recorder = StartRecorder("V40A");
  const Ended ended = Tool({"read", TcpOf(*recorder), "-o", File("it"), "--model", "RUG", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_NE(ended.errors.find("the recorder is a KOV, not the RUG"), std::string::npos) << ended.errors;
  EXPECT_FALSE(Exists("it"));
}

TEST_F(ReadCommand, AVersionThatIsNoneIsTold) {
  const auto recorder = StartRecorder("V40A", {"--firmware", "X40A"});
  const Ended ended = Tool({"read", TcpOf(*recorder), "-o", File("it"), "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_NE(ended.errors.find("\"X40A\" is no version of a KOV"), std::string::npos) << ended.errors;
}

TEST_F(ReadCommand, WhatCannotBeDoneIsOneLineAndLeavesNoFile) {
  const std::vector<std::vector<std::string>> calls{
      {"read", File("no.KOV"), "-o", File("it")},
      {"read", "default:KOV", "-o", File("it")},
      {"read", "serial:" + File("no-line"), "-o", File("it")},
      {"read", "usb:" + File("no-line"), "-o", File("it")},
      {"read", "tcp:127.0.0.1:1", "-o", File("it")}, // refused, which is told at once
  };
  for (const auto& call : calls) {
    const auto began = std::chrono::steady_clock::now();
    const Ended ended = Tool(call);
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(4)) << call[1];
    EXPECT_EQ(ended.status, ExitFailed) << call[1];
    EXPECT_EQ(std::ranges::count(ended.errors, '\n'), 1) << ended.errors;
    EXPECT_NE(ended.errors.find(call[1]), std::string::npos) << ended.errors;
  }
  EXPECT_EQ(Files(), std::vector<std::string>{});
  EXPECT_EQ(Tool({"read", "tcp:127.0.0.1:1"}).status, ExitUsage);
}

TEST_F(ReadCommand, ARequestThatFailsIsToldWithSectionRegistersReasonAndBox) {
  const auto recorder = StartRecorder("V40A", {"--fault", "close-before@10"});
  const Ended ended = Tool({"read", TcpOf(*recorder), "-o", File("it"), "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_NE(ended.errors.find("registers 44449-44512 of section C (channels) could not be read"),
            std::string::npos)
      << ended.errors;
  EXPECT_NE(ended.errors.find("[タイムアウトエラー]"), std::string::npos) << ended.errors;
  EXPECT_EQ(Files(), std::vector<std::string>{});
}

TEST_F(ReadCommand, AFormerFileStaysWholeWhenTheDiskIsFull) {
  const auto recorder = StartRecorder("V40A");
  Write("it", "the former one");
  const FullDisk full(8192);
  const Ended ended = Tool({"read", TcpOf(*recorder), "-o", File("it")});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(Read("it"), "the former one");
  EXPECT_EQ(Files(), std::vector<std::string>{"it"});
}

TEST_F(ReadCommand, CtrlCAtAnyRequestLeavesNoFileAndSaysWhere) {
  const auto recorder = StartRecorder("V40A");
  for (const int signal : {SIGINT, SIGTERM}) {
    for (const int at : {1, 2, 3, 40, 80}) {
      HoldingProxy proxy(recorder->Port(), at);
      RunningProcess tool(ToolProgram(), {"read", proxy.Address(), "-o", File("it"), "--lang", "en"},
                          {.console = true});
      ASSERT_TRUE(proxy.WaitUntilHeld());
      tool.Signal(signal);
      const Ended ended = tool.Wait();
      EXPECT_EQ(ended.status, ExitFailed) << at;
      EXPECT_NE(ended.errors.find("stopped: registers "), std::string::npos) << ended.errors;
      EXPECT_EQ(std::ranges::count(ended.errors, '\n'), 1) << ended.errors;
    }
  }
  EXPECT_EQ(Files(), std::vector<std::string>{});
}

TEST_F(ReadCommand, ATerminalShowsHowFarItIs) {
  const auto recorder = StartRecorder("V40A");
  const Ended ended = RunProcess(
      "/usr/bin/script",
      {"-qec", ToolProgram().string() + " read " + TcpOf(*recorder) + " -o " + File("it") + " --lang en",
       "/dev/null"});
  EXPECT_NE(ended.output.find("\r\x1b[Kreading channels (C) 64/1800"), std::string::npos) << ended.output;
  // It is gone when the program has ended.
  const std::size_t last = ended.output.rfind("reading ");
  EXPECT_NE(ended.output.find("\r\x1b[K", last), std::string::npos);
}

} // namespace
} // namespace loader::test
