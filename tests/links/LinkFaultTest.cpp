// What goes wrong on a real line: no crash, no hang, the prescribed messages, a window that is free again,
// and a recorder that can be read right after.
#include <QElapsedTimer>
#include <QTcpServer>

#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "tests/links/RealLink.h"
#include "tests/links/RecorderRegisters.h"

namespace loader::test {
namespace {

enum class Outcome {
  Passes,       // the exchange does not mind
  TimesOut,     // text 11000
  TimesOutSoon, // text 11000, because USB has a short time-out of its own or sees the end of the device
  Silent,       // a result code without a message
  BadReply,     // text 11001
};

struct FaultRow {
  Line line;
  const char* kind;
  Outcome outcome;
};
void PrintTo(const FaultRow& row, std::ostream* out) {
  *out << row.kind << " over " << LineName(row.line);
}
std::string NameOf(const testing::TestParamInfo<FaultRow>& row) {
  std::string name = std::string(LineName(row.param.line)) + "_" + row.param.kind;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

constexpr std::array<FaultRow, 45> FaultRows{{
    {Line::Ethernet, "no-reply", Outcome::TimesOut},
    {Line::Ethernet, "late", Outcome::TimesOut},
    {Line::Ethernet, "error", Outcome::TimesOut},
    {Line::Ethernet, "truncated", Outcome::TimesOut},
    {Line::Ethernet, "two-more", Outcome::TimesOut},
    {Line::Ethernet, "wrong-station", Outcome::Passes},
    {Line::Ethernet, "wrong-function", Outcome::Passes},
    {Line::Ethernet, "wrong-transaction", Outcome::Silent},
    {Line::Ethernet, "trickle", Outcome::Passes},
    {Line::Ethernet, "split", Outcome::Passes},
    {Line::Ethernet, "garbage", Outcome::TimesOut},
    {Line::Ethernet, "close-before", Outcome::TimesOut},
    {Line::Ethernet, "close-middle", Outcome::TimesOut},
    {Line::Ethernet, "reset", Outcome::TimesOut},
    {Line::Serial, "no-reply", Outcome::TimesOut},
    {Line::Serial, "late", Outcome::TimesOut},
    {Line::Serial, "error", Outcome::TimesOut},
    {Line::Serial, "truncated", Outcome::TimesOut},
    {Line::Serial, "two-more", Outcome::TimesOut},
    {Line::Serial, "crc-one", Outcome::Passes},
    {Line::Serial, "crc-both", Outcome::Silent},
    {Line::Serial, "wrong-station", Outcome::Passes},
    {Line::Serial, "wrong-function", Outcome::Passes},
    {Line::Serial, "trickle", Outcome::Passes},
    {Line::Serial, "split", Outcome::Passes},
    {Line::Serial, "garbage", Outcome::TimesOut},
    {Line::Serial, "close-before", Outcome::TimesOut},
    {Line::Serial, "close-middle", Outcome::TimesOut},
    {Line::Serial, "reset", Outcome::TimesOut},
    {Line::Usb, "no-reply", Outcome::TimesOutSoon},
    {Line::Usb, "late", Outcome::TimesOutSoon},
    {Line::Usb, "error", Outcome::BadReply},
    {Line::Usb, "truncated", Outcome::BadReply},
    {Line::Usb, "two-more", Outcome::Passes}, // only as many bytes are taken as are wanted
    {Line::Usb, "crc-one", Outcome::Passes},
    {Line::Usb, "crc-both", Outcome::BadReply},
    {Line::Usb, "wrong-station", Outcome::Passes},
    {Line::Usb, "wrong-function", Outcome::Passes},
    {Line::Usb, "trickle", Outcome::Passes},
    {Line::Usb, "split", Outcome::Passes},
    {Line::Usb, "garbage", Outcome::BadReply},
    {Line::Usb, "close-before", Outcome::TimesOutSoon},
    {Line::Usb, "close-middle", Outcome::TimesOutSoon},
    {Line::Usb, "reset", Outcome::TimesOutSoon},
    {Line::Usb, "wrong-transaction", Outcome::Passes},
}};

std::vector<FaultRow> FailingRows() {
  std::vector<FaultRow> rows;
  std::copy_if(FaultRows.begin(), FaultRows.end(), std::back_inserter(rows),
               [](const FaultRow& row) { return row.outcome != Outcome::Passes; });
  return rows;
}

struct LinkFault : RealLink, testing::WithParamInterface<FaultRow> {
  static constexpr int IdentityRequest = 1; // of a read
  static constexpr int FirstSectionRequest = 2;

  // A fault that passes is given its time; a wait for nothing is shortened.
  void StartWith(int request, int watchdog) {
    StartRecorder(
        "KOV", "V40A",
        {"--fault", std::string(GetParam().kind) + "@" + std::to_string(request), "--late", "2500"});
    StartLoader("KOV", GetParam().line);
    timers.longest = GetParam().outcome == Outcome::Passes ? WaitMilliseconds : watchdog;
  }
  void ExpectMessageOfTheLink() {
    switch (GetParam().outcome) {
    case Outcome::TimesOut:
    case Outcome::TimesOutSoon:
      ExpectBox(11000);
      break;
    case Outcome::BadReply:
      ExpectBox(11001);
      break;
    default:
      break;
    }
  }
  [[nodiscard]] bool Passes() const { return GetParam().outcome == Outcome::Passes; }
  void ExpectTheNextReadToGoWell() {
    log.steps.clear();
    const Registers registers = RegistersOverTcp(tcpPort);
    FillStoreWithHeld();
    timers.longest = WaitMilliseconds;
    Read();
    ExpectStoreOf(Generations[5], registers);
  }
};
INSTANTIATE_TEST_SUITE_P(All, LinkFault, testing::ValuesIn(FaultRows), NameOf);

TEST_P(LinkFault, InAReadIsToldAndTheNextReadGoesWell) {
  StartWith(IdentityRequest, 150);
  ExpectBox(20104);
  ExpectMessageOfTheLink();
  if (!Passes()) {
    ExpectBox(11012);
    ExpectBox(11013);
  }
  ReadFromRecorder(window);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "refresh", "enabled"}));
  ExpectFreeWindow();
  ExpectTheNextReadToGoWell();
}

struct LinkFailure : LinkFault {};
INSTANTIATE_TEST_SUITE_P(All, LinkFailure, testing::ValuesIn(FailingRows()), NameOf);

TEST_P(LinkFailure, BehindTheCheckKeepsWhatWasReadBefore) {
  StartWith(FirstSectionRequest, 150);
  FillStoreWithHeld();
  ExpectBox(20104);
  ExpectMessageOfTheLink();
  ExpectBox(11013);
  ReadFromRecorder(window);
  ExpectFreeWindow();
  EXPECT_EQ(TrimmedText("P", 0, "PVER"), "V40A");
  EXPECT_EQ(Stored("C", 0, "TYPE"), 111);
}

TEST_P(LinkFault, InAWriteNeverShowsTheEndMessage) {
  constexpr int FirstWriteOfASection = 2 + 29 + 1; // state, identity, the reads of section C
  StartWith(FirstWriteOfASection, 150);
  ExpectBox(20106);
  ExpectMessageOfTheLink();
  if (Passes()) {
    ExpectBox(62701);
  }
  WriteToRecorder(window);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "enabled"}));
  ExpectFreeWindow();
  ExpectTheNextReadToGoWell();
}

struct DeadRecorder : RealLink, testing::WithParamInterface<Line> {
  void SetUp() override { timers.longest = 150; }
};
INSTANTIATE_TEST_SUITE_P(All, DeadRecorder, testing::ValuesIn(AllLines),
                         [](const auto& row) { return std::string(LineName(row.param)); });

TEST_P(DeadRecorder, InTheMiddleOfAReadIsATimeOut) {
  // The tenth reply takes long enough for the recorder to die meanwhile.
  StartRecorder("KOV", "V40A", {"--fault", "no-reply@10"});
  StartLoader("KOV", GetParam());
  timers.longest = 1000;
  Timer accident;
  accident.onTimer = [&] {
    StopTimer(accident);
    (void)recorder->Stop(Kill);
  };
  ExpectBox(20104);
  ExpectBox(11000);
  ExpectBox(11013);
  window.setLamp = [&](bool on) {
    if (on) {
      StartTimer(accident, 300);
    }
  };
  ReadFromRecorder(window);
  StopTimer(accident);
  ExpectFreeWindow();
}

TEST_P(DeadRecorder, IsToldAndTheNextOneIsReadAgain) {
  StartRecorder("KOV", "V40A");
  StartLoader("KOV", GetParam());
  (void)EndRecorder();
  ExpectBox(20104);
  if (GetParam() == Line::Usb) { // opened by the first exchange
    ExpectBox(11004);
    ExpectBox(11012);
    ExpectBox(11013);
  } else {
    ExpectBox(GetParam() == Line::Ethernet ? 11000 : 11004);
  }
  std::filesystem::create_symlink("/dev/pts/no-such-terminal", Folder() / "COM1");
  std::filesystem::create_symlink("/dev/pts/no-such-terminal", Folder() / "USB");
  ReadFromRecorder(window);
  if (GetParam() != Line::Usb) {
    EXPECT_TRUE(log.steps.empty()) << "the link did not open: nothing of the window is touched";
  }
  log.steps.clear();
  timers.longest = WaitMilliseconds;
  StartRecorder("KOV", "V40A");
  Read();
}

TEST_F(RealLink, ARefusedPortTakesTheFiveSecondsOfTheWatchdog) {
  StartLoader("KOV", Line::Ethernet);
  {
    QTcpServer taken;
    ASSERT_TRUE(taken.listen(QHostAddress::LocalHost));
    tcpPort = taken.serverPort();
  }
  ExpectBox(20104);
  ExpectBox(11000);
  QElapsedTimer elapsed;
  elapsed.start();
  ReadFromRecorder(window);
  EXPECT_GE(elapsed.elapsed(), WaitMilliseconds - 1);
  EXPECT_LT(elapsed.elapsed(), 2 * WaitMilliseconds);
  EXPECT_TRUE(log.steps.empty());
  // The failed connection is left as it is; the next one begins by closing it.
  StartRecorder("KOV", "V40A");
  Read();
}

TEST_F(RealLink, TheWatchdogOfAnExchangeIsFiveSeconds) {
  StartRecorder("KOV", "V40A", {"--fault", "no-reply@1"});
  StartLoader("KOV", Line::Ethernet);
  timers.longest = 100;
  ASSERT_TRUE(gFLinkOpen());
  CommLink.RegAddress = 30001;
  CommLink.RegCount = 1;
  timers.asked.clear();
  ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, ResultNoAnswer);
  EXPECT_EQ(timers.asked, std::vector<int>{5000});
  gFLinkClose();
}

} // namespace
} // namespace loader::test
