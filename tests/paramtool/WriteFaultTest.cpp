// paramtool write when something goes wrong, with the real program on real lines: never "verified" when the
// recorder's memory is not what it has to be, and the backup always there and whole. Every fault at every
// request, in virtual time, is tests/companion/VerifyTest.
#include <QJsonArray>
#include <algorithm>

#include "tests/paramtool/Shell.h"
#include "tests/paramtool/TransferTest.h"

namespace loader::test {
namespace {

// What an undisturbed write leaves, and how many requests it takes up to each step.
struct Undisturbed {
  std::map<int, int> memory;
  std::string backup;
  int readRequests = 0;
  int writeRequests = 0;
  int requests = 0;
};

struct WriteFault : TransferTest {
  std::string plant = Write("it", Changed("KOV"));

  std::vector<std::string> Call(const std::string& address, const std::string& backup) const {
    return {"write", plant, address, "--yes", "--backup", File(backup), "--lang", "en", "--json"};
  }
  Undisturbed Clean(const std::string& tag) const {
    Undisturbed clean;
    const auto recorder = StartRecorder(tag);
    {
      HoldingProxy proxy(recorder->Port(), 0);
      static_cast<void>(Tool({"write", plant, proxy.Address()}));
      clean.readRequests = proxy.Requests();
    }
    HoldingProxy proxy(recorder->Port(), 0);
    const Ended ended = Tool(Call(proxy.Address(), "clean"));
    EXPECT_EQ(ended.status, ExitGood) << ended.errors;
    clean.requests = proxy.Requests();
    // State and identity, then each section twice; read back, it is once.
    clean.writeRequests = (clean.requests - clean.readRequests - 2) / 3 * 2 + 2;
    clean.backup = Read("clean");
    clean.memory = EndAndDump(*recorder);
    return clean;
  }
  // The next write repairs whatever the one before has left.
  void ExpectRepaired(simulator::RunningSimulator& recorder, const Undisturbed& clean,
                      const std::string& what) const {
    const Ended again = Tool({"write", plant, TcpOf(recorder), "--yes", "--no-backup"});
    EXPECT_EQ(again.status, ExitGood) << what << again.errors;
    EXPECT_EQ(EndAndDump(recorder), clean.memory) << what;
  }
};

TEST_F(WriteFault, KilledAtAnyMomentTheBackupIsWholeAndTheNextWriteRepairs) {
  const Undisturbed clean = Clean("V40A");
  for (const HoldingProxy::Held held : {HoldingProxy::Held::Request, HoldingProxy::Held::Reply}) {
    for (const int part : {0, 1, 3, 5, 7, 8}) {
      const int at = clean.readRequests + 3 + part * (clean.requests - clean.readRequests - 3) / 8;
      const std::string backup =
          "backup" + std::to_string(part) + (held == HoldingProxy::Held::Reply ? "r" : "");
      const auto recorder = StartRecorder("V40A");
      HoldingProxy proxy(recorder->Port(), at, held);
      RunningProcess tool(ToolProgram(), Call(proxy.Address(), backup));
      ASSERT_TRUE(proxy.WaitUntilHeld()) << at;
      tool.Signal(Kill);
      EXPECT_EQ(tool.Wait().status, 128 + Kill);
      EXPECT_EQ(Read(backup), clean.backup) << at;
      ExpectRepaired(*recorder, clean, "killed at " + std::to_string(at));
    }
  }
}

TEST_F(WriteFault, CtrlCAtAnyMomentSaysWhatTheRecorderHolds) {
  const Undisturbed clean = Clean("V40A");
  const int write = clean.readRequests;
  const int compare = write + clean.writeRequests;
  const std::vector<std::pair<int, std::string>> moments{{2, ""},
                                                         {write + 1, "notWritten"},
                                                         {write + 4, "notWritten"},
                                                         {write + 50, "mixture"},
                                                         {compare - 1, "mixture"},
                                                         {compare + 1, "notCompared"},
                                                         {clean.requests, "notCompared"}};
  int number = 0;
  for (const auto& [at, end] : moments) {
    const std::string backup = "backup" + std::to_string(++number);
    const auto recorder = StartRecorder("V40A");
    HoldingProxy proxy(recorder->Port(), at);
    RunningProcess tool(ToolProgram(), Call(proxy.Address(), backup), {.console = true});
    ASSERT_TRUE(proxy.WaitUntilHeld()) << at;
    tool.Signal(SIGINT);
    const Ended ended = tool.Wait();
    EXPECT_EQ(ended.status, ExitFailed) << at;
    EXPECT_NE(ended.errors.find("stopped: registers "), std::string::npos) << ended.errors;
    const QJsonObject report = JsonOfOutput(ended);
    EXPECT_EQ(report["end"].toString().toStdString(), end) << at;
    EXPECT_EQ(Exists(backup), !end.empty());
    if (!end.empty()) {
      EXPECT_EQ(Read(backup), clean.backup);
      EXPECT_NE(report["repair"].toString().toStdString().find(File(backup)), std::string::npos);
    }
    if (end == "mixture") {
      EXPECT_NE(ended.errors.find("a mixture of both set-ups"), std::string::npos);
    }
    ExpectRepaired(*recorder, clean, "stopped at " + std::to_string(at));
  }
}

TEST_F(WriteFault, TheCommandThatIsToldBringsTheFormerSetUpBack) {
  const Undisturbed clean = Clean("V40A");
  const auto recorder = StartRecorder("V40A");
  HoldingProxy proxy(recorder->Port(), clean.readRequests + 30);
  RunningProcess tool(ToolProgram(), Call(proxy.Address(), "the backup"));
  ASSERT_TRUE(proxy.WaitUntilHeld());
  tool.Signal(SIGINT);
  std::string repair = JsonOfOutput(tool.Wait())["repair"].toString().toStdString();
  ASSERT_TRUE(repair.starts_with("paramtool write ")) << repair;
  // As a shell takes it; the proxy has gone, so by the recorder's own address.
  const std::size_t address = repair.find(proxy.Address());
  ASSERT_NE(address, std::string::npos) << repair;
  repair.replace(address, proxy.Address().size(), TcpOf(*recorder));
  const Ended ended = RunInShell(repair, ToolProgram().parent_path());
  EXPECT_EQ(ended.status, ExitGood) << ended.errors;
  static_cast<void>(Tool({"read", TcpOf(*recorder), "-o", File("back")}));
  EXPECT_EQ(With(With(Read("back"), "E00TTSM", "0"), "E00TTEM", "0"),
            With(With(clean.backup, "E00TTSM", "0"), "E00TTEM", "0"));
}

struct FaultKind : WriteFault, testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(All, FaultKind,
                         testing::Values("no-reply", "late", "error", "truncated", "two-more", "crc-one",
                                         "crc-both", "wrong-station", "wrong-function", "wrong-transaction",
                                         "trickle", "split", "garbage", "close-before", "close-middle",
                                         "reset"),
                         [](const auto& row) {
                           std::string name = row.param;
                           std::erase(name, '-');
                           return name;
                         });

// The worst request: one that writes. Whether the program hears of it or not, it does not call it good.
TEST_P(FaultKind, AtARequestThatWritesIsNeverCalledVerifiedWithAnotherMemory) {
  const Undisturbed clean = Clean("V05A");
  const std::size_t lines = AddressesOf(*StartRecorder("V05A")).size();
  for (std::size_t line = 0; line < lines; ++line) {
    const int at = clean.readRequests + 2 + 29 + 5; // of section C, which is read first
    const std::string name = "backup" + std::to_string(line);
    const auto recorder =
        StartRecorder("V05A", {"--fault", std::string(GetParam()) + "@" + std::to_string(at)});
    const Ended ended = Tool(Call(AddressesOf(*recorder).at(line), name));
    EXPECT_EQ(Read(name), clean.backup);
    const QJsonObject report = JsonOfOutput(ended);
    const bool verified = report["end"].toString() == "verified";
    EXPECT_EQ(verified, ended.status == ExitGood) << ended.output;
    if (verified) {
      EXPECT_EQ(EndAndDump(*recorder), clean.memory);
    } else {
      EXPECT_EQ(ended.status, ExitFailed);
      EXPECT_EQ(report["end"].toString(), "mixture");
      EXPECT_NE(ended.errors.find("section C (channels) could not be written"), std::string::npos)
          << ended.errors;
      EXPECT_EQ(report["sections"].toString(), "");
    }
  }
}

TEST_F(WriteFault, AReplyThatBreaksOffInTheComparisonIsNotVerified) {
  const Undisturbed clean = Clean("V40A");
  const auto recorder = StartRecorder("V40A", {"--fault", "reset@" + std::to_string(clean.requests - 5)});
  const Ended ended = Tool(Call(TcpOf(*recorder), "backup"));
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(JsonOfOutput(ended)["end"].toString(), "notCompared");
  EXPECT_NE(ended.errors.find("all was written, but NOT verified"), std::string::npos) << ended.errors;
}

} // namespace
} // namespace loader::test
