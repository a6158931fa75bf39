// What the cores of the bulk read and write return, without a question and without a box of their own: a box
// that no test expects fails it.
#include "comm/TransferResult.h"

#include <algorithm>
#include <ostream>

#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "tests/comm/CommFixture.h"
#include "tests/comm/Generations.h"
#include "tests/comm/StoreFilling.h"

namespace loader {

void PrintTo(const TransferResult& result, std::ostream* out) {
  *out << "end " << static_cast<int>(result.end) << " sections " << result.sections << " section "
       << result.section << (result.request.writing ? " write of " : " read of ") << result.request.registers
       << " from " << result.request.firstRegister << " code " << static_cast<int>(result.request.code) << " "
       << result.detail;
}

} // namespace loader

namespace loader::test {
namespace {

constexpr std::string_view KovRead = "CAGTBHMUDENOJKXLY";
constexpr std::string_view KovWrite = "CAGTBHMUDEONJKXLY";

struct Transfers : RecorderFixture {
  void StartOn(Line line) {
    Start("KOV", "V40A");
    Configure(line);
  }
  // Reads once without a fault and counts the requests.
  std::size_t RequestsOf(TransferResult (*transfer)(const FlowCallbacks&, const TransferTalk&)) {
    EXPECT_TRUE(transfer({}, {}).IsDone());
    const std::size_t count = recorder.requests.size();
    recorder.requests.clear();
    recorder.written.clear();
    return count;
  }
  // Lets each request of a transfer fail once and compares what is told with the request as it was seen.
  void FailEachRequest(TransferResult (*transfer)(const FlowCallbacks&, const TransferTalk&),
                       std::string_view order, TransferEnd beforeSections, std::size_t requestsBefore) {
    const std::size_t count = RequestsOf(transfer);
    std::string reached; // the sections in which a request has failed, each once
    for (std::size_t at = 0; at < count; ++at) {
      SCOPED_TRACE(at);
      recorder.requests.clear();
      recorder.ClearFaults();
      recorder.FaultAt(Fault::WrongTransaction, static_cast<int>(at));
      const TransferResult result = transfer({}, {});
      ASSERT_EQ(at + 1, recorder.requests.size());
      const RecordedRequest& seen = recorder.requests.back();
      EXPECT_EQ((FailedRequest{seen.function == 16, seen.number, static_cast<std::int16_t>(seen.count),
                               ResultWrongTransaction}),
                result.request);
      EXPECT_FALSE(result.IsDone());
      EXPECT_EQ("", result.detail);
      if (at < requestsBefore) {
        EXPECT_TRUE(result.end == beforeSections || result.end == TransferEnd::IdentityNotRead);
        continue;
      }
      EXPECT_EQ(TransferEnd::RequestFailed, result.end);
      reached += reached.ends_with(result.section) ? "" : result.section;
      EXPECT_EQ(order.substr(0, result.sections.size()), result.sections);
      EXPECT_EQ(order.substr(result.sections.size(), 1), result.section);
    }
    EXPECT_EQ(order, reached);
  }
};

// --- The read

TEST_F(Transfers, AReadThatIsDoneNamesItsSections) {
  StartOn(Line::Ethernet);
  EXPECT_EQ((TransferResult{.sections = std::string(KovRead)}), ReadSetUp({}, {}));
  EXPECT_EQ(0, platform.socket.state);
}

TEST_F(Transfers, AReadTellsWhichRequestFailed) {
  StartOn(Line::Ethernet);
  FailEachRequest(ReadSetUp, KovRead, TransferEnd::IdentityNotRead, 1);
}

TEST_F(Transfers, AReadSendsTheFramesOfTheWindow) {
  for (const Generation& generation : Generations) {
    SCOPED_TRACE(generation.version);
    Start(generation.model, generation.version);
    Configure(Line::Ethernet);
    recorder.requests.clear();
    platform.ExpectBox(20104);
    ReadFromRecorder(window);
    const std::vector<RecordedRequest> ofTheWindow = recorder.requests;
    const ParamStoreTable store = ParamStore;
    Start(generation.model, generation.version);
    recorder.requests.clear();
    EXPECT_TRUE(ReadSetUp({}, {}).IsDone());
    EXPECT_EQ(ofTheWindow, recorder.requests);
    EXPECT_TRUE(store == ParamStore);
  }
}

TEST_F(Transfers, TheWordsOfAReadComeWhileTheLinkIsOpenAndWhenItHasClosed) {
  StartOn(Line::Serial);
  std::vector<std::string> steps;
  const auto note = [&](const char* where) {
    return [&, where](const TransferResult& result) {
      EXPECT_TRUE(result.IsDone());
      steps.push_back(where + std::string(platform.serial.open ? " open after " : " closed after ") +
                      log.steps.back());
    };
  };
  EXPECT_TRUE(ReadSetUp(window, {.whileOpen = note("first"), .whenClosed = note("then")}).IsDone());
  EXPECT_EQ((std::vector<std::string>{"first open after lamp on", "then closed after lamp off"}), steps);
  EXPECT_EQ((std::vector<std::string>{"disabled", "lamp on", "lamp off", "refresh", "enabled"}), log.steps);
}

TEST_F(Transfers, ARecorderThatDoesNotAnswerIsToldBehindTheLinksOwnMessage) {
  StartOn(Line::Serial);
  recorder.FaultAt(Fault::NoReply, 0);
  platform.ExpectBox(11000);
  EXPECT_EQ((TransferResult{.end = TransferEnd::IdentityNotRead,
                            .section = "P",
                            .request = {false, 30001, 16, ResultNoAnswer}}),
            ReadSetUp({}, {}));
  EXPECT_FALSE(platform.serial.open);
}

TEST_F(Transfers, ALinkThatDoesNotOpenIsToldAlone) {
  StartOn(Line::Serial);
  platform.serial.failOpen = true;
  EXPECT_EQ(TransferResult{.end = TransferEnd::LinkNotOpened}, ReadSetUp(window, {}));
  EXPECT_EQ(TransferResult{.end = TransferEnd::LinkNotOpened}, WriteSetUp(window, {}));
  EXPECT_TRUE(log.steps.empty());
}

TEST_F(Transfers, AnotherModelIsTold) {
  StartOn(Line::Ethernet);
  recorder.PutIdentity("RUG", "V10W");
  const TransferResult expected{.end = TransferEnd::OtherModel, .section = "P"};
  EXPECT_EQ(expected, ReadSetUp({}, {}));
  EXPECT_EQ(expected, WriteSetUp({}, {}));
}

TEST_F(Transfers, AVersionTagOfAnotherShapeIsTold) {
  StartOn(Line::Ethernet);
  recorder.PutIdentity("KOV", "X40A");
  const TransferResult expected{.end = TransferEnd::NoVersion, .section = "P"};
  EXPECT_EQ(expected, ReadSetUp({}, {}));
  EXPECT_EQ(expected, WriteSetUp({}, {}));
}

TEST_F(Transfers, AGenerationWithoutSectionsIsNoTransfer) {
  StartOn(Line::Ethernet);
  ModelCode = "BIQ";
  RecorderGeneration = 9;
  recorder.PutIdentity("BIQ", "");
  const TransferResult expected{.end = TransferEnd::NothingToTransfer};
  EXPECT_EQ(expected, ReadSetUp({}, {}));
  EXPECT_EQ(expected, WriteSetUp({}, {}));
  EXPECT_TRUE(expected.IsDone()) << "as the window says it";
}

TEST_F(Transfers, ASectionThatTheStoreLacksIsToldWithItsReason) {
  StartOn(Line::Ethernet);
  std::erase_if(ParamStore, [](const ParamSection& section) { return section.Code == "T  "; });
  const TransferResult expected{.end = TransferEnd::SectionUnfit,
                                .sections = "CAG",
                                .section = "T",
                                .detail = "no such section in the store"};
  EXPECT_EQ(expected, ReadSetUp({}, {}));
  EXPECT_EQ(expected, WriteSetUp({}, {}));
}

TEST_F(Transfers, AStoreWithoutTheIdentityIsToldWithItsReason) {
  StartOn(Line::Ethernet);
  std::erase_if(ParamStore, [](const ParamSection& section) { return section.Code == "P  "; });
  EXPECT_EQ((TransferResult{.end = TransferEnd::IdentityNotRead,
                            .section = "P",
                            .detail = "no such section in the store"}),
            ReadSetUp({}, {}));
}

// --- The write

TEST_F(Transfers, AWriteThatIsDoneNamesItsSections) {
  StartOn(Line::Ethernet);
  EXPECT_EQ((TransferResult{.sections = std::string(KovWrite)}), WriteSetUp({}, {}));
}

TEST_F(Transfers, AWriteTellsWhichRequestFailed) {
  StartOn(Line::Ethernet);
  FailEachRequest(WriteSetUp, KovWrite, TransferEnd::StateNotRead, 2);
}

TEST_F(Transfers, AWriteSendsTheFramesOfTheWindow) {
  for (const Generation& generation : Generations) {
    SCOPED_TRACE(generation.version);
    const auto prepare = [&] {
      Start(generation.model, generation.version);
      Configure(Line::Ethernet);
      recorder.FillWithPattern();
      recorder.PutIdentity(generation.model, generation.version);
      recorder.PutState(0);
      recorder.requests.clear();
      recorder.written.clear();
    };
    prepare();
    platform.ExpectBox(20106);
    platform.ExpectBox(62701);
    WriteToRecorder(window);
    const std::vector<RecordedRequest> ofTheWindow = recorder.requests;
    const std::vector<std::vector<std::uint16_t>> written = recorder.written;
    ASSERT_FALSE(written.empty());
    prepare();
    EXPECT_TRUE(WriteSetUp({}, {}).IsDone());
    EXPECT_EQ(ofTheWindow, recorder.requests);
    EXPECT_EQ(written, recorder.written);
  }
}

TEST_F(Transfers, ABusyRecorderIsToldWithNothingWritten) {
  StartOn(Line::Serial);
  recorder.PutState(0x0001);
  std::vector<std::string> steps;
  const auto note = [&](const TransferResult& result) {
    EXPECT_EQ(TransferEnd::RecorderBusy, result.end);
    steps.push_back(log.steps.back());
  };
  EXPECT_EQ((TransferResult{.end = TransferEnd::RecorderBusy, .section = "S"}),
            WriteSetUp(window, {.whileOpen = note, .whenClosed = note}));
  EXPECT_EQ((std::vector<std::string>{"lamp on", "lamp off"}), steps);
  EXPECT_EQ(1U, recorder.requests.size());
}

TEST_F(Transfers, AStateThatTheStoreCannotHoldIsToldWithItsReason) {
  StartOn(Line::Ethernet);
  DropTag("S", "SYS1");
  EXPECT_EQ((TransferResult{
                .end = TransferEnd::StateNotRead, .section = "S", .detail = "section S has no state word"}),
            WriteSetUp({}, {}));
}

TEST_F(Transfers, ASectionInTheInputRegistersIsARequestThatWasRefused) {
  StartOn(Line::Ethernet);
  ParamStore[gFFindSection("T")].BaseAddress = 30261;
  const TransferResult result = WriteSetUp({}, {});
  EXPECT_EQ(TransferEnd::RequestFailed, result.end);
  EXPECT_EQ("T", result.section);
  EXPECT_EQ((FailedRequest{true, 30261, 32, ResultRefused}), result.request);
}

} // namespace
} // namespace loader::test
