// A write with proof: the same requests as the window's, and never "verified" when the recorder's memory is
// not what the write had to leave there.
#include "companion/Verify.h"

#include <map>
#include <tuple>

#include "comm/BulkWrite.h"
#include "comm/TransferWatch.h"
#include "companion/SavedSetUp.h"
#include "files/ParameterFile.h"
#include "tests/companion/RecorderTest.h"

namespace loader::test {
namespace {

const Generation& Oldest = Generations[0];
const Generation& Newest = Generations[5]; // of KOV

struct VerifyOf : CompanionRecorder, testing::WithParamInterface<Generation> {};
INSTANTIATE_TEST_SUITE_P(All, VerifyOf, testing::ValuesIn(Generations),
                         [](const auto& row) { return GenerationName(row.param); });

TEST_P(VerifyOf, WritesWithTheWindowsRequestsAndThenReadsEachSectionBack) {
  Prepare(GetParam());
  FillStore(4);
  platform.ExpectBox(20106);
  platform.ExpectBox(62701);
  Configure(Line::Ethernet);
  WriteToRecorder(window);
  const std::vector<RecordedRequest> asked = recorder.requests;
  const std::vector<std::vector<std::uint16_t>> sent = recorder.written;
  const std::vector<std::uint16_t> left = Memory();

  recorder.requests.clear();
  recorder.written.clear();
  FillMemory(GetParam(), 1);
  WholeSetUp setUp = Filled(GetParam().model, 4);
  const WriteOutcome outcome = WriteAndVerify(line, setUp, false);
  EXPECT_EQ(outcome.end, WriteEnd::Verified);
  EXPECT_EQ(outcome.sections.size(), Sections(GetParam().writeOrder).size());
  EXPECT_EQ(Memory(), left);
  std::vector<RecordedRequest> expected = asked;
  std::size_t registers = 0;
  for (const char section : Sections(GetParam().writeOrder)) {
    const Place place = PlaceIn(GetParam(), section);
    Append(expected, BlockRequests(3, place));
    registers += static_cast<std::size_t>(place.words) * static_cast<std::size_t>(place.items);
  }
  EXPECT_EQ(recorder.requests, expected);
  EXPECT_EQ(outcome.registers, registers);
  recorder.written.resize(sent.size());
  EXPECT_EQ(recorder.written, sent);
}

TEST_P(VerifyOf, NamesARegisterThatHasChangedBehindTheWrite) {
  Prepare(GetParam());
  WholeSetUp setUp = Filled(GetParam().model, 4);
  // C 3 MMAX goes to its own place in every generation; the last request that writes is over by then.
  const int number = PlaceIn(GetParam(), 'C').base + 2 * 60 + 14;
  const std::size_t writes = WriteRequests(GetParam()).size();
  recorder.onRequest = [&](int index) {
    if (static_cast<std::size_t>(index) == writes) {
      recorder.Register(number) ^= 0x0001;
    }
  };
  const WriteOutcome outcome = WriteAndVerify(line, setUp, true);
  EXPECT_EQ(outcome.end, WriteEnd::Different);
  EXPECT_FALSE(outcome.stored);
  const std::int16_t wanted = WithSetUp(setUp, [] { return NumValue("C", 2, "MMAX"); });
  ASSERT_EQ(outcome.different.size(), 1U);
  EXPECT_EQ(outcome.different[0],
            (RegisterDifference{"C", 2, "MMAX", number, wanted, static_cast<std::int16_t>(wanted ^ 0x0001)}));
}

// Each register of every section that is written, altered after the write, is found: one by one.
TEST_P(VerifyOf, FindsExactlyTheRegisterThatWasAltered) {
  Prepare(GetParam());
  WholeSetUp setUp = Filled(GetParam().model, 4);
  const std::size_t writes = WriteRequests(GetParam()).size();
  for (const char section : Sections(GetParam().writeOrder)) {
    const Place place = PlaceIn(GetParam(), section);
    for (const int word : {0, place.words * place.items / 2, place.words * place.items - 1}) {
      recorder.requests.clear();
      recorder.onRequest = [&](int index) {
        if (static_cast<std::size_t>(index) == writes) {
          recorder.Register(place.base + word) ^= 0x8000;
        }
      };
      const WriteOutcome outcome = WriteAndVerify(line, setUp, false);
      EXPECT_EQ(outcome.end, WriteEnd::Different);
      ASSERT_EQ(outcome.different.size(), 1U) << section << word;
      EXPECT_EQ(outcome.different[0].number, place.base + word);
      EXPECT_EQ(outcome.different[0].found,
                static_cast<std::int16_t>(outcome.different[0].expected ^ 0x8000));
    }
  }
}

struct Verify : CompanionRecorder {};

TEST_F(Verify, StoresAfterAGoodComparisonAlone) {
  Prepare(Newest);
  WholeSetUp setUp = Filled("KOV", 4);
  EXPECT_FALSE(WriteAndVerify(line, setUp, false).stored);
  EXPECT_NE(recorder.Register(40001), 1);
  const WriteOutcome outcome = WriteAndVerify(line, setUp, true);
  EXPECT_EQ(outcome.end, WriteEnd::Verified);
  EXPECT_TRUE(outcome.stored);
  EXPECT_EQ(recorder.Register(40001), 1);
  EXPECT_EQ(recorder.requests.back(), (RecordedRequest{16, 40001, 1}));
}

TEST_F(Verify, ACommandToStoreThatFailsIsTold) {
  Prepare(Newest);
  WholeSetUp setUp = Filled("KOV", 4);
  ASSERT_EQ(WriteAndVerify(line, setUp, true).end, WriteEnd::Verified);
  recorder.FaultAt(Fault::NoReply, static_cast<int>(2 * recorder.requests.size()) - 1);
  const WriteOutcome outcome = WriteAndVerify(line, setUp, true);
  EXPECT_EQ(outcome.end, WriteEnd::NotStored);
  EXPECT_NE(outcome.reason, u"");
}

TEST_F(Verify, ABusyRecorderIsNotWritten) {
  Prepare(Newest);
  recorder.PutState(0x80);
  EXPECT_TRUE(ReadRecorder(line, {}, AskState::Yes).busy);
  EXPECT_FALSE(ReadRecorder(line, {}).busy); // it is not asked
  const std::vector<std::uint16_t> before = Memory();
  WholeSetUp setUp = Filled("KOV", 4);
  const WriteOutcome outcome = WriteAndVerify(line, setUp, false);
  EXPECT_EQ(outcome.end, WriteEnd::NotWritten);
  EXPECT_NE(outcome.reason.find(u"現在記録または演算中のため書き込みできません"), std::u16string::npos);
  EXPECT_EQ(Memory(), before);
}

// The USB link takes a call that fails for a success: what it brought is the exchange before.
TEST_F(Verify, AUsbCallThatFailsIsNeverASuccess) {
  Prepare(Oldest);
  line = On(Line::Usb);
  const std::vector<std::uint16_t> start = Memory();
  WholeSetUp setUp = Filled("KOV", 4);
  int steps = 0;
  WatchOfTransfers.mayGo = [&steps](const BlockStep&) { return ++steps > 0; };
  ASSERT_EQ(WriteAndVerify(line, setUp, false).end, WriteEnd::Verified);
  const std::vector<std::uint16_t> left = Memory();
  std::map<WriteEnd, int> ends;
  for (int failing = 0; failing < steps; ++failing) {
    PutMemory(start);
    int step = 0;
    std::size_t asked = 0;
    WatchOfTransfers.mayGo = [&](const BlockStep&) {
      platform.usb.throwOnOpen = step++ == failing;
      asked = platform.usb.throwOnOpen ? recorder.requests.size() : asked;
      return true;
    };
    const WriteOutcome outcome = WriteAndVerify(line, setUp, false);
    WatchOfTransfers.mayGo = {};
    platform.usb.throwOnOpen = false;
    ++ends[outcome.end];
    EXPECT_NE(outcome.end, WriteEnd::Verified) << failing;
    EXPECT_NE(outcome.end, WriteEnd::Different) << failing;
    EXPECT_EQ(recorder.requests.size(), asked) << "it went on behind " << failing;
    EXPECT_TRUE(outcome.end != WriteEnd::NotWritten || Memory() == start) << failing;
    EXPECT_TRUE(outcome.end != WriteEnd::NotCompared || Memory() == left) << failing;
  }
  EXPECT_GT(steps, 100);
  EXPECT_GT(ends[WriteEnd::NotCompared], 40);
  EXPECT_GT(ends[WriteEnd::Mixture], 40);
  // A read that went so is none.
  int step = 0;
  WatchOfTransfers.mayGo = [&](const BlockStep&) {
    platform.usb.throwOnOpen = ++step == 20;
    return true;
  };
  EXPECT_THROW((void)ReadRecorder(line, {}), Undone);
  WatchOfTransfers.mayGo = {};
  platform.usb.throwOnOpen = false;
}

// Ended by its user at any request: the recorder is untouched, or it is said to hold a mixture, or all went
// and was not compared.
TEST_F(Verify, StoppedAtAnyRequestItSaysWhatTheRecorderHolds) {
  Prepare(Oldest);
  const std::vector<std::uint16_t> start = Memory();
  WholeSetUp setUp = Filled("KOV", 4);
  bool stopped = false;
  line.stopped = [&stopped] { return stopped; };
  std::map<WriteEnd, int> ends;
  for (int last = 0; ends[WriteEnd::Verified] == 0; ++last) {
    ASSERT_LT(last, 1000);
    PutMemory(start);
    stopped = false;
    int step = 0;
    WatchOfTransfers.mayGo = [&](const BlockStep&) { return !(stopped = step++ >= last); };
    const WriteOutcome outcome = WriteAndVerify(line, setUp, false);
    WatchOfTransfers.mayGo = {};
    ++ends[outcome.end];
    EXPECT_EQ(platform.socket.state, 0) << "the link is open at " << last;
    if (outcome.end == WriteEnd::NotWritten) {
      EXPECT_EQ(Memory(), start);
    }
    if (outcome.end != WriteEnd::Verified) {
      EXPECT_NE(outcome.reason.find(u"stopped: "), std::u16string::npos);
    }
  }
  EXPECT_EQ(ends[WriteEnd::Different], 0);
  EXPECT_GT(ends[WriteEnd::NotWritten], 10);
  EXPECT_GT(ends[WriteEnd::Mixture], 50);
  EXPECT_GT(ends[WriteEnd::NotCompared], 40);
}

// --- Every fault at every request of the whole of it: state, present set-up, write, comparison, store

using FaultOnLine = std::tuple<Fault, Line>;

std::vector<FaultOnLine> AllFaultsOnAllLines() {
  std::vector<FaultOnLine> rows;
  for (const Line on : AllLines) {
    for (const Fault fault : AllFaults) {
      if (FaultExists(fault, on)) {
        rows.emplace_back(fault, on);
      }
    }
  }
  return rows;
}

struct FaultyWrite : CompanionRecorder {
  // Everything of a faulty exchange that may still be on its way has come, and the plug is in again.
  void Settle() {
    platform.time.Advance(20000);
    for (const Line on : AllLines) {
      WireOf(on).waiting.clear();
    }
    platform.serial.lost = false;
    recorder.ClearFaults();
    recorder.requests.clear();
    recorder.written.clear();
    recorder.replies.clear();
  }
  // The fault at every `stride`-th request of the whole of it.
  void TryAt(const Generation& generation, Fault fault, Line on, int stride) {
    Settle();
    Prepare(generation);
    line = On(on);
    const std::vector<std::uint16_t> start = Memory();
    WholeSetUp setUp = Filled(generation.model, 4);
    RecorderRead present = ReadRecorder(line, {}, AskState::Yes);
    const std::string backup = WithSetUp(present.setUp, ParamFileBytes);
    ASSERT_EQ(WriteAndVerify(line, setUp, true).end, WriteEnd::Verified);
    const std::vector<std::uint16_t> left = Memory();
    const int requests = static_cast<int>(recorder.requests.size());
    std::map<WriteEnd, int> ends;
    for (int faulty = 0; faulty < requests; faulty += stride) {
      Settle();
      PutMemory(start);
      recorder.FaultAt(fault, faulty);
      try {
        RecorderRead read = ReadRecorder(line, {}, AskState::Yes);
        EXPECT_EQ(WithSetUp(read.setUp, ParamFileBytes), backup) << faulty;
      } catch (const Undone&) {
        EXPECT_EQ(Memory(), start) << faulty;
        continue;
      }
      const WriteOutcome outcome = WriteAndVerify(line, setUp, true);
      ++ends[outcome.end];
      switch (outcome.end) {
      case WriteEnd::Verified:
      case WriteEnd::NotStored:
        EXPECT_EQ(Memory(), left) << faulty;
        break;
      case WriteEnd::NotWritten:
        EXPECT_EQ(Memory(), start) << faulty;
        break;
      default:
        EXPECT_NE(outcome.reason, u"") << faulty;
      }
    }
    // The link judges a reply by less than all of it: a fault that it lets pass is none to it.
    const int failed = ends[WriteEnd::Mixture] + ends[WriteEnd::NotCompared];
    EXPECT_TRUE(failed == 0 || failed > requests / stride / 4) << failed;
    EXPECT_TRUE(failed > 0 || ends[WriteEnd::Verified] > requests / stride / 2);
  }
};

struct FaultAtEveryRequest : FaultyWrite, testing::WithParamInterface<FaultOnLine> {};
INSTANTIATE_TEST_SUITE_P(All, FaultAtEveryRequest, testing::ValuesIn(AllFaultsOnAllLines()),
                         [](const auto& row) {
                           return std::string(FaultName(std::get<0>(row.param))) +
                                  LineName(std::get<1>(row.param));
                         });

TEST_P(FaultAtEveryRequest, IsNeverVerifiedWithAnotherMemoryAndTheBackupIsWhole) {
  const auto [fault, on] = GetParam();
  TryAt(Oldest, fault, on, 1);
}

// The others share all code behind the exchange: every so many requests will do.
struct FaultInGeneration : FaultyWrite, testing::WithParamInterface<Generation> {};
INSTANTIATE_TEST_SUITE_P(All, FaultInGeneration, testing::ValuesIn(Generations),
                         [](const auto& row) { return GenerationName(row.param); });

TEST_P(FaultInGeneration, IsNeverVerifiedWithAnotherMemoryAndTheBackupIsWhole) {
  for (const Fault fault : {Fault::NoReply, Fault::ErrorReply, Fault::ClosedInside}) {
    TryAt(GetParam(), fault, Line::Ethernet, 5);
  }
}

} // namespace
} // namespace loader::test
