// paramtool write: what it tells, what it writes, what it leaves.
#include <QJsonArray>
#include <algorithm>
#include <set>
#include <sstream>

#include "tests/paramtool/TransferTest.h"
#include "tests/support/FullDisk.h"

namespace loader::test {
namespace {

constexpr int MaxOfChannel3 = 44001 + 2 * 60 + 14; // the register of C02MMAX of a KOV

std::vector<std::string> LinesOf(const std::string& file) {
  std::vector<std::string> lines;
  std::istringstream in(file);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

struct WriteOf : TransferTest, testing::WithParamInterface<std::string> {
  std::string Plant() const { return Write("it", Changed(ModelOfTag(GetParam()))); }
};
INSTANTIATE_TEST_SUITE_P(All, WriteOf, testing::ValuesIn(VersionTags()),
                         [](const auto& row) { return row.param; });

TEST_P(WriteOf, ADryRunWritesNothing) {
  const auto untouched = StartRecorder(GetParam());
  const std::map<int, int> before = EndAndDump(*untouched);
  const auto recorder = StartRecorder(GetParam());
  const Ended ended = Tool({"write", Plant(), TcpOf(*recorder), "--lang", "en"});
  EXPECT_EQ(ended.status, ExitDifferent);
  EXPECT_NE(ended.output.find("nothing was written; --yes writes it"), std::string::npos);
  EXPECT_EQ(Files(), (std::vector<std::string>{"dump", "it"}));
  EXPECT_EQ(EndAndDump(*recorder), before);
}

TEST_P(WriteOf, WritesWithProofAndKeepsTheFormerSetUp) {
  const std::size_t lines = AddressesOf(*StartRecorder(GetParam())).size();
  for (std::size_t line = 0; line < lines; ++line) {
    const auto recorder = StartRecorder(GetParam());
    const std::string address = AddressesOf(*recorder).at(line);
    const std::string backup = "b" + std::to_string(line);
    static_cast<void>(Tool({"read", address, "-o", File("former")}));
    const Ended ended =
        Tool({"write", Plant(), address, "--yes", "--backup", File(backup), "--json", "--lang", "en"});
    ASSERT_EQ(ended.status, ExitGood) << ended.output << ended.errors;
    EXPECT_EQ(Read(backup), Read("former"));
    const QJsonObject report = JsonOfOutput(ended);
    EXPECT_EQ(report["end"].toString(), "verified");
    EXPECT_FALSE(report["stored"].toBool(true));
    EXPECT_FALSE(report["dryRun"].toBool(true));
    EXPECT_EQ(report["different"].toArray().size(), 0);
    EXPECT_GT(report["registers"].toInt(), 2000);
    EXPECT_EQ(report["backup"].toString().toStdString(), File(backup));
    // It holds now what the first report said it would.
    static_cast<void>(Tool({"read", address, "-o", File("after")}));
    EXPECT_NE(Read("after").find("\r\nC02MMAX,777\r\n"), std::string::npos);
    const Ended again = Tool({"write", File("it"), address, "--json", "--lang", "en"});
    EXPECT_EQ(JsonOfOutput(again)["changes"].toArray().size(), 0);
    EXPECT_EQ(JsonOfOutput(again)["unseen"].toArray().size(), 0);
    EXPECT_EQ(JsonOfOutput(again)["losses"], report["losses"]);
  }
}

// But for what that generation cannot take, as the write of the backup tells.
TEST_P(WriteOf, TheFormerSetUpComesBackFromTheBackup) {
  const auto recorder = StartRecorder(GetParam());
  static_cast<void>(Tool({"read", TcpOf(*recorder), "-o", File("former")}));
  ASSERT_EQ(Tool({"write", Plant(), TcpOf(*recorder), "--yes", "--backup", File("b")}).status, ExitGood);
  const Ended ended = Tool({"write", File("b"), TcpOf(*recorder), "--yes", "--no-backup", "--json"});
  ASSERT_EQ(ended.status, ExitGood);
  std::set<std::string> lost{"E00TTSM", "E00TTEM"}; // which no file can keep
  for (const QJsonValue& parameter : JsonOfOutput(ended)["losses"].toArray()) {
    lost.insert(parameter["key"].toString().toStdString());
  }
  static_cast<void>(Tool({"read", TcpOf(*recorder), "-o", File("back")}));
  const std::vector<std::string> former = LinesOf(Read("former"));
  const std::vector<std::string> back = LinesOf(Read("back"));
  ASSERT_EQ(former.size(), back.size());
  for (std::size_t i = 0; i < former.size(); ++i) {
    EXPECT_TRUE(former[i] == back[i] || lost.contains(former[i].substr(0, former[i].find(','))))
        << former[i] << back[i];
  }
}

struct DryRun : TransferTest, testing::WithParamInterface<std::string> {};
INSTANTIATE_TEST_SUITE_P(Some, DryRun, testing::Values("V05A", "V26A", "V40A", "V09W"),
                         [](const auto& row) { return row.param; });

TEST_P(DryRun, TheReportIsAsItWas) {
  const auto recorder = StartRecorder(GetParam());
  const std::string file = Write("it", Changed(ModelOfTag(GetParam())));
  for (const std::string language : {"ja", "en"}) {
    const Ended ended = Tool({"write", file, TcpOf(*recorder), "--lang", language});
    ExpectGolden("write-" + GetParam() + "." + language + ".txt", WithoutPort(WithoutFolder(ended.output)));
    const Ended json = Tool({"write", file, TcpOf(*recorder), "--lang", language, "--json"});
    ExpectGolden("write-" + GetParam() + "." + language + ".json", WithoutPort(WithoutFolder(json.output)));
  }
}

struct WriteCommand : TransferTest {
  std::string plant = Write("it", Changed("KOV"));
  // No file of a backup, and the recorder as it was.
  void ExpectUntouched(simulator::RunningSimulator& recorder) const {
    EXPECT_EQ(EndAndDump(recorder).at(MaxOfChannel3), 5000);
    for (const std::string& name : Files()) {
      EXPECT_TRUE(name == "it" || name == "dump" || name == "there") << name;
    }
  }
};

TEST_F(WriteCommand, TheOtherModelIsRefusedWithBothNames) {
  const auto recorder = StartRecorder("V40A");
  const std::string other = Write("there", PlantFile("RUG"));
  const Ended ended = Tool({"write", other, TcpOf(*recorder), "--yes", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_NE(ended.errors.find("the recorder is a KOV, not the RUG"), std::string::npos) << ended.errors;
  ExpectUntouched(*recorder);
}

TEST_F(WriteCommand, ABusyRecorderIsRefusedWithTheWindowsText) {
  for (const char* busy : {"--recording", "--computing"}) {
    const auto recorder = StartRecorder("V40A", {busy});
    const Ended dry = Tool({"write", plant, TcpOf(*recorder), "--lang", "en"});
    EXPECT_EQ(dry.status, ExitDifferent);
    EXPECT_NE(dry.output.find("recording or computing"), std::string::npos);
    EXPECT_TRUE(JsonOfOutput(Tool({"write", plant, TcpOf(*recorder), "--json"}))["busy"].toBool());
    const Ended ended = Tool({"write", plant, TcpOf(*recorder), "--yes"});
    EXPECT_EQ(ended.status, ExitFailed);
    EXPECT_NE(ended.errors.find("現在記録または演算中のため書き込みできません"), std::string::npos);
    ExpectUntouched(*recorder);
  }
}

TEST_F(WriteCommand, WithoutABackupThatStandsNothingIsWritten) {
  const auto recorder = StartRecorder("V40A");
  const std::string there = Write("there", "the last good backup");
  const Ended stands = Tool({"write", plant, TcpOf(*recorder), "--yes", "--backup", there, "--lang", "en"});
  EXPECT_EQ(stands.status, ExitFailed);
  EXPECT_NE(stands.errors.find("nothing was written"), std::string::npos) << stands.errors;
  EXPECT_EQ(Read("there"), "the last good backup");
  const Ended nowhere =
      Tool({"write", plant, TcpOf(*recorder), "--yes", "--backup", File("no/folder"), "--lang", "en"});
  EXPECT_EQ(nowhere.status, ExitFailed);
  EXPECT_NE(nowhere.errors.find("there is no backup, so nothing was written"), std::string::npos);
  ExpectUntouched(*recorder);
}

TEST_F(WriteCommand, WithoutRoomForABackupNothingIsWritten) {
  const auto recorder = StartRecorder("V40A");
  {
    const FullDisk full(8192);
    const Ended ended = Tool({"write", plant, TcpOf(*recorder), "--yes", "--lang", "en"});
    EXPECT_EQ(ended.status, ExitFailed);
    EXPECT_NE(ended.errors.find("there is no backup, so nothing was written"), std::string::npos)
        << ended.errors;
  }
  ExpectUntouched(*recorder);
}

TEST_F(WriteCommand, TheBackupStandsBesideTheFileAndOverwritesNone) {
  const auto recorder = StartRecorder("V40A");
  ASSERT_EQ(Tool({"write", plant, TcpOf(*recorder), "--yes"}).status, ExitGood);
  const Ended second = Tool({"write", plant, TcpOf(*recorder), "--yes", "--lang", "en"});
  ASSERT_EQ(second.status, ExitGood);
  const auto backups = [this] {
    std::vector<std::string> names = Files();
    std::erase_if(names, [](const std::string& name) { return !name.ends_with(".KOV"); });
    return names;
  };
  ASSERT_EQ(backups().size(), 2U);
  for (const std::string& name : backups()) {
    EXPECT_TRUE(name.starts_with("tcp_127.0.0.1_" + std::to_string(recorder->Port()) + "-20")) << name;
    EXPECT_EQ(Tool({"show", File(name), "CH3"}).status, ExitGood);
  }
  EXPECT_NE(second.errors.find("the present set-up is saved to " + NativeFile("tcp_127.0.0.1_")),
            std::string::npos)
      << second.errors;
  ASSERT_EQ(Tool({"write", plant, TcpOf(*recorder), "--yes", "--no-backup"}).status, ExitGood);
  EXPECT_EQ(backups().size(), 2U);
}

TEST_F(WriteCommand, StoresWhenAskedTo) {
  for (const bool store : {false, true}) {
    const auto recorder = StartRecorder("V40A", {"--save", File("saved")});
    std::vector<std::string> call{"write", plant, TcpOf(*recorder), "--yes", "--no-backup", "--lang", "en"};
    if (store) {
      call.emplace_back("--store");
    }
    const Ended ended = Tool(call);
    EXPECT_EQ(ended.status, ExitGood) << ended.errors;
    EXPECT_NE(ended.output.find(store ? "the recorder has stored its settings\n"
                                      : "the recorder has not stored its settings"),
              std::string::npos);
    static_cast<void>(recorder->Stop(SIGTERM));
    EXPECT_EQ(Read("saved").find("C 3 MMAX,777\n") != std::string::npos, store);
  }
}

TEST_F(WriteCommand, WhatIsNoFileOrNoRecorderIsToldSo) {
  const std::vector<std::vector<std::string>> calls{
      {"write", "default:KOV", "tcp:127.0.0.1:1"},
      {"write", "tcp:127.0.0.1:1", "tcp:127.0.0.1:1"},
      {"write", plant, plant},
      {"write", File("absent"), "tcp:127.0.0.1:1"},
      {"write", Write("there", "LOADER ,V210\r\nC00NONE,1\r\n"), "tcp:127.0.0.1:1", "--model", "KOV"},
      {"write", plant, "tcp:127.0.0.1:1"},
  };
  for (const auto& call : calls) {
    const Ended ended = Tool(call);
    EXPECT_EQ(ended.status, ExitFailed) << testing::PrintToString(call);
    EXPECT_EQ(std::ranges::count(ended.errors, '\n'), 1) << ended.errors;
  }
  EXPECT_EQ(Tool({"write", plant, "tcp:127.0.0.1:1", "--backup", "x", "--no-backup"}).status, ExitUsage);
  EXPECT_EQ(Tool({"write", plant}).status, ExitUsage);
}

TEST_F(WriteCommand, SecretsAreHiddenUnlessAskedFor) {
  const auto recorder = StartRecorder("V40A");
  for (const bool asked : {false, true}) {
    for (const bool json : {false, true}) {
      std::vector<std::string> call{"write", plant, TcpOf(*recorder), "--lang", "en"};
      if (asked) {
        call.emplace_back("--secrets");
      }
      if (json) {
        call.emplace_back("--json");
      }
      const Ended ended = Tool(call);
      EXPECT_EQ(ended.output.find("4321") != std::string::npos, asked) << ended.output;
      EXPECT_NE(ended.output.find("Password of the parameters"), std::string::npos) << "it differs";
    }
  }
}

// It opens, as an empty one does, and the rest of the recorder would be reset.
TEST_F(WriteCommand, HalfAFileIsNotWritten) {
  const auto recorder = StartRecorder("V40A");
  for (const std::size_t size : {std::size_t{0}, PlantFile("KOV").size() / 2}) {
    const std::string half = Write("it", PlantFile("KOV").substr(0, PlantFile("KOV").rfind('\n', size) + 1));
    std::vector<std::string> call{"write", half, TcpOf(*recorder), "--lang", "en", "--model", "KOV"};
    const Ended dry = Tool(call);
    EXPECT_EQ(dry.status, ExitDifferent);
    EXPECT_NE(dry.output.find("Not in the file, so at the initial settings:\n"), std::string::npos);
    call.emplace_back("--yes");
    const Ended ended = Tool(call);
    EXPECT_EQ(ended.status, ExitFailed);
    EXPECT_NE(ended.errors.find("names only a part of the model's items"), std::string::npos) << ended.errors;
  }
  ExpectUntouched(*recorder);
}

// A few lines may be missing, as in a file of an older program; each is told.
TEST_F(WriteCommand, WhatTheFileDoesNotNameIsTold) {
  const auto recorder = StartRecorder("V40A");
  std::string bytes = PlantFile("KOV");
  const std::size_t at = bytes.find("\nC02MMAX,") + 1;
  const std::string file = Write("it", bytes.erase(at, bytes.find('\n', at) + 1 - at));
  const std::vector<std::string> call{"write",  file, TcpOf(*recorder), "--yes", "--no-backup",
                                      "--lang", "en"};
  const Ended ended = Tool(call);
  EXPECT_EQ(ended.status, ExitGood);
  EXPECT_NE(ended.output.find(
                "Not in the file, so at the initial settings:\n  CH 3 Measuring range, upper limit\n"),
            std::string::npos)
      << ended.output;
  const QJsonObject report = JsonOfOutput(Tool({"write", file, TcpOf(*recorder), "--json"}));
  ASSERT_EQ(report["notInFile"].toArray().size(), 1);
  EXPECT_EQ(report["notInFile"].toArray()[0].toObject()["key"].toString(), QStringLiteral("C02MMAX"));
}

// All of such a line is its key.
TEST_F(WriteCommand, APasswordInALineWithoutACommaIsNoKey) {
  std::string bytes = PlantFile("KOV");
  const std::size_t at = bytes.find("\nH00PAS1,") + 1;
  bytes.replace(at, bytes.find("\r\n", at) - at, "H00PAS1;8642");
  const std::string bad = Write("bad.KOV", bytes);
  for (const std::vector<std::string>& call : std::vector<std::vector<std::string>>{
           {"write", bad, "tcp:127.0.0.1:1"}, {"show", bad}, {"compare", bad, plant}, {"check", bad}}) {
    const Ended ended = Tool(call);
    EXPECT_NE((ended.output + ended.errors).find("H00PAS1"), std::string::npos) << call[0];
    EXPECT_EQ((ended.output + ended.errors).find("8642"), std::string::npos) << call[0];
  }
}

// A closed stream's number goes to the next file or socket: no message may go there.
TEST_F(WriteCommand, WithClosedStreamsNothingStrayGoesAnywhere) {
  for (const std::string closed : {"2>&-", "1>&- 2>&-", "0<&- 1>&- 2>&-"}) {
    const auto recorder = StartRecorder("V40A");
    std::filesystem::remove(File("b"));
    std::string command = "exec \"$0\" \"$@\" " + closed;
    const Ended ended = RunProcess("/bin/sh", {"-c", command, ToolProgram().string(), "write", plant,
                                               TcpOf(*recorder), "--yes", "--backup", File("b")});
    EXPECT_EQ(ended.status, closed == "2>&-" ? ExitGood : ExitFailed) << closed; // the report is lost
    EXPECT_EQ(Read("b").find("paramtool"), std::string::npos);
    EXPECT_EQ(Tool({"write", plant, TcpOf(*recorder)}).status, ExitGood) << closed;
  }
}

TEST_F(WriteCommand, NothingToChangeAndNothingToLoseIsEqual) {
  const auto recorder = StartRecorder("V40A");
  ASSERT_EQ(Tool({"write", plant, TcpOf(*recorder), "--yes", "--no-backup"}).status, ExitGood);
  const Ended ended = Tool({"write", plant, TcpOf(*recorder), "--lang", "en"});
  EXPECT_EQ(ended.status, ExitGood) << ended.output;
  EXPECT_NE(ended.output.find("A write changes no parameter"), std::string::npos);
}

} // namespace
} // namespace loader::test
