// Every kind of fault at every request of a whole read and a whole write, on all three links: the prescribed
// code and messages, no hang, the window free again, the store and the recorder in the prescribed state.
#include <tuple>

#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "tests/comm/CommFixture.h"
#include "tests/comm/Generations.h"

namespace loader::test {
namespace {

const Generation& Newest = Generations[5]; // of KOV

// What one exchange makes of a fault.
struct Outcome {
  bool passes = false;
  std::vector<int> codes; // any of these
  int message = 0;        // of the link; 0: none
};

const Outcome Passes{true, {0}, 0};
const Outcome TimesOut{false, {200}, 11000};

Outcome OnSerial(Fault fault) {
  switch (fault) {
  case Fault::OneCheckByteWrong:
  case Fault::WrongStation:
  case Fault::WrongFunction:
  case Fault::Trickle:
  case Fault::SplitInTwo:
    return Passes;
  case Fault::BothCheckBytesWrong:
    return {false, {2}, 0};
  default:
    return TimesOut; // also an error reply: it never has the expected length
  }
}

Outcome OnEthernet(Fault fault) {
  switch (fault) {
  case Fault::WrongStation:
  case Fault::WrongFunction:
  case Fault::Trickle:
  case Fault::SplitInTwo:
    return Passes;
  case Fault::WrongTransaction:
    return {false, {10}, 0};
  default:
    return TimesOut;
  }
}

Outcome OnUsb(Fault fault) {
  switch (fault) {
  case Fault::OneCheckByteWrong:
  case Fault::WrongStation:
  case Fault::WrongFunction:
  case Fault::Trickle:
  case Fault::SplitInTwo:
  case Fault::TwoBytesTooMany: // no more than the expected length is taken; see SpoilsTheNext
    return Passes;
  case Fault::ErrorReply:
    return {false, {3}, 11001};
  case Fault::BothCheckBytesWrong:
  case Fault::GarbageBefore:
    return {false, {2}, 11001};
  case Fault::Truncated:
  case Fault::ClosedInside:
    return {false, {2, 4}, 11001};
  default:
    return {false, {1}, 11000};
  }
}

Outcome OutcomeOf(Fault fault, Line line) {
  return line == Line::Usb ? OnUsb(fault) : line == Line::Ethernet ? OnEthernet(fault) : OnSerial(fault);
}

// On USB no more than the expected length is taken, and what is left lies in front of the next reply. Two
// bytes too many thus spoil the exchange after; so does garbage where the shifted reply happens to have one
// right check byte, which is enough.
bool SpoilsTheNext(Fault fault, Line line, const Bytes& goodReply) {
  if (line != Line::Usb) {
    return false;
  }
  if (fault != Fault::GarbageBefore) {
    return fault == Fault::TwoBytesTooMany;
  }
  Bytes taken = Garbage;
  taken.insert(taken.end(), goodReply.begin(), goodReply.end());
  taken.resize(goodReply.size());
  const Bytes right = WithCheckValue(Bytes(taken.begin(), taken.end() - 2));
  return right[right.size() - 2] == taken[taken.size() - 2] || right.back() == taken.back();
}

using FaultOnLine = std::tuple<Fault, Line>;

std::vector<FaultOnLine> AllFaultsOnAllLines() {
  std::vector<FaultOnLine> rows;
  for (const Line line : AllLines) {
    for (const Fault fault : AllFaults) {
      if (FaultExists(fault, line)) {
        rows.emplace_back(fault, line);
      }
    }
  }
  return rows;
}

struct Faults : RecorderFixture, ::testing::WithParamInterface<FaultOnLine> {
  void SetUp() override {
    Start(Newest.model, Newest.version);
    fault = std::get<0>(GetParam());
    line = std::get<1>(GetParam());
    Configure(line);
    for (ParamSection& section : ParamStore) {
      std::int16_t value = 0;
      for (ParamItem& item : section.Items) {
        for (ParamNumRecord& record : item.NumRecords) {
          SetNumber(record, ++value, SlotBoth);
        }
      }
    }
    storeBefore = ParamStore;
  }

  // Everything as before the flow; what a late recorder still had to say is gone.
  void Restore() {
    platform.time.Advance(20000);
    platform.serial.wire.waiting.clear();
    platform.socket.wire.waiting.clear();
    platform.usb.wire.waiting.clear();
    platform.serial.wire.sent.clear();
    platform.socket.wire.sent.clear();
    platform.usb.wire.sent.clear();
    platform.serial.lost = false;
    platform.boxes.shown.clear();
    recorder.ClearFaults();
    recorder.requests.clear();
    recorder.written.clear();
    recorder.replies.clear();
    recorder.FillWithPattern();
    recorder.PutIdentity(Newest.model, Newest.version);
    recorder.PutState(0);
    ParamStore = storeBefore;
    log.steps.clear();
    RecorderGeneration = 0;
  }

  // The index at which the flow fails; -1 when it goes through.
  [[nodiscard]] int FailsAt(int index, const std::vector<Bytes>& goodReplies) const {
    const auto at = static_cast<std::size_t>(index);
    if (SpoilsTheNext(fault, line, goodReplies.at(at))) {
      return at + 1 == goodReplies.size() ? -1 : index + 1;
    }
    return OutcomeOf(fault, line).passes ? -1 : index;
  }
  [[nodiscard]] Outcome Failure() const {
    return line == Line::Usb && fault == Fault::TwoBytesTooMany ? Outcome{false, {2}, 11001}
                                                                : OutcomeOf(fault, line);
  }
  void ExpectLinkMessage() {
    if (Failure().message != 0) {
      platform.ExpectBox(Failure().message);
    }
  }
  void CheckCode() const {
    EXPECT_NE(std::find(Failure().codes.begin(), Failure().codes.end(), CommLink.ResultCode),
              Failure().codes.end())
        << "code " << int(CommLink.ResultCode);
  }
  void CheckEnd(int index) {
    platform.boxes.ExpectNoneLeft();
    EXPECT_FALSE(platform.serial.open) << index;
    EXPECT_EQ(platform.socket.state, 0) << index;
    EXPECT_FALSE(WaitTimer.Enabled) << index;
  }

  Fault fault{};
  Line line{};
  ParamStoreTable storeBefore;
};

bool SameValues(const ParamSection& a, const ParamSection& b) {
  for (std::size_t i = 0; i < a.Items.size(); ++i) {
    for (std::size_t n = 0; n < a.Items[i].NumRecords.size(); ++n) {
      const ParamNumRecord& one = a.Items[i].NumRecords[n];
      const ParamNumRecord& other = b.Items[i].NumRecords[n];
      if (one.Value != other.Value || one.ReadValue != other.ReadValue) {
        return false;
      }
    }
    for (std::size_t n = 0; n < a.Items[i].TextRecords.size(); ++n) {
      const ParamTextRecord& one = a.Items[i].TextRecords[n];
      const ParamTextRecord& other = b.Items[i].TextRecords[n];
      if (one.Value != other.Value || one.ReadValue != other.ReadValue) {
        return false;
      }
    }
  }
  return true;
}

std::string NameOf(const ::testing::TestParamInfo<FaultOnLine>& info) {
  return std::string(FaultName(std::get<0>(info.param))) + "On" + LineName(std::get<1>(info.param));
}

// --- Read

struct ReadFaults : Faults {
  // The sections that are read when request `failed` fails; all for -1.
  static std::vector<char> SectionsBefore(int failed) {
    std::vector<char> sections;
    int next = 1; // behind the identity
    for (const char section : Sections(Newest.readOrder)) {
      next += static_cast<int>(BlockRequests(3, PlaceIn(Newest, section)).size());
      if (failed < 0 || next <= failed) {
        sections.push_back(section);
      }
    }
    return sections;
  }

  void CheckStore(const ParamStoreTable& goodStore, int failed) {
    const std::vector<char> read = SectionsBefore(failed);
    for (std::size_t s = 0; s < ParamStore.size(); ++s) {
      const char code = ParamStore[s].Code[0];
      const bool taken =
          std::find(read.begin(), read.end(), code) != read.end() || (code == 'P' && failed != 0);
      EXPECT_TRUE(SameValues(ParamStore[s], taken ? goodStore[s] : storeBefore[s]))
          << "section " << code << ", failure at request " << failed;
    }
  }
};
INSTANTIATE_TEST_SUITE_P(All, ReadFaults, ::testing::ValuesIn(AllFaultsOnAllLines()), NameOf);

TEST_P(ReadFaults, AtEveryRequestOfAWholeRead) {
  Restore();
  platform.ExpectBox(20104);
  ReadFromRecorder(window);
  const ParamStoreTable goodStore = ParamStore;
  const std::vector<RecordedRequest> whole = ReadRequests(Newest);
  const int last = static_cast<int>(whole.size()) - 1;
  ASSERT_EQ(recorder.requests, whole);
  const std::vector<Bytes> goodReplies = recorder.replies;

  for (int index = 0; index <= last; ++index) {
    Restore();
    recorder.FaultAt(fault, index);
    const int failed = FailsAt(index, goodReplies);
    platform.ExpectBox(20104);
    if (failed >= 0) {
      ExpectLinkMessage();
      if (failed == 0) {
        platform.ExpectBox(11012);
      }
      platform.ExpectBox(11013);
    }
    const std::int64_t started = platform.time.millisecondsNow;

    ReadFromRecorder(window);

    CheckEnd(index);
    EXPECT_EQ(static_cast<int>(recorder.requests.size()), failed < 0 ? last + 1 : failed + 1);
    EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "refresh", "enabled"}));
    EXPECT_LT(platform.time.millisecondsNow - started, 7000) << index;
    if (failed >= 0) {
      CheckCode();
    }
    CheckStore(goodStore, failed);
    if (HasFailure()) {
      FAIL() << "at request " << index;
    }
  }
}

// --- Write

struct WriteFaults : Faults {
  // The holding registers once the first `count` requests of a good run were served.
  static std::vector<std::uint16_t> MemoryAfter(const std::vector<RecordedRequest>& requests,
                                                const std::vector<std::vector<std::uint16_t>>& written,
                                                std::size_t count) {
    std::vector<std::uint16_t> memory;
    for (int number = 40001; number <= 50000; ++number) {
      memory.push_back(ScriptedRecorder::Pattern(number));
    }
    for (std::size_t request = 0; request < count; ++request) {
      std::copy(written[request].begin(), written[request].end(),
                memory.begin() + (requests[request].function == 16 ? requests[request].number - 40001 : 0));
    }
    return memory;
  }
  std::vector<std::uint16_t> Memory() {
    std::vector<std::uint16_t> memory;
    for (int number = 40001; number <= 50000; ++number) {
      memory.push_back(recorder.Register(number));
    }
    return memory;
  }
};
INSTANTIATE_TEST_SUITE_P(All, WriteFaults, ::testing::ValuesIn(AllFaultsOnAllLines()), NameOf);

TEST_P(WriteFaults, AtEveryRequestOfAWholeWrite) {
  Restore();
  platform.ExpectBox(20106);
  platform.ExpectBox(62701);
  WriteToRecorder(window);
  const std::vector<RecordedRequest> whole = WriteRequests(Newest);
  const int last = static_cast<int>(whole.size()) - 1;
  ASSERT_EQ(recorder.requests, whole);
  const std::vector<std::vector<std::uint16_t>> written = recorder.written;
  const std::vector<Bytes> goodReplies = recorder.replies;

  for (int index = 0; index <= last; ++index) {
    Restore();
    recorder.FaultAt(fault, index);
    const int failed = FailsAt(index, goodReplies);
    platform.ExpectBox(20106);
    if (failed >= 0) {
      ExpectLinkMessage();
      if (failed == 1) {
        platform.ExpectBox(11012); // the identity; the state before it has no message of its own
      }
    } else {
      platform.ExpectBox(62701);
    }
    const std::int64_t started = platform.time.millisecondsNow;

    WriteToRecorder(window);

    CheckEnd(index);
    const std::size_t served = static_cast<std::size_t>(failed < 0 ? last + 1 : failed + 1);
    EXPECT_EQ(recorder.requests.size(), served);
    EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "enabled"}));
    EXPECT_LT(platform.time.millisecondsNow - started, 7000) << index;
    if (failed >= 0) {
      CheckCode();
    }
    EXPECT_EQ(Memory(), MemoryAfter(whole, written, served));
    if (HasFailure()) {
      FAIL() << "at request " << index;
    }
  }
}

} // namespace
} // namespace loader::test
