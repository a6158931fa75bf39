// What a program may watch of a transfer, and what it learns of a recorder beside the flows of the window.
#include "comm/TransferWatch.h"

#include <string>
#include <vector>

#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "comm/ParameterTelegram.h"
#include "comm/WriteLayouts.h"
#include "comm/modUsb.h"
#include "tests/comm/WriteFixture.h"

namespace loader::test {
namespace {

struct Watch : WriteOf {
  ~Watch() override { WatchOfTransfers = {}; }
  void Open() { ASSERT_TRUE(gFLinkOpen()); }
};

TEST_F(Watch, HearsOfEachRequestBeforeItGoes) {
  Prepare(Generations[5]);
  Open();
  std::vector<std::string> heard;
  WatchOfTransfers.mayGo = [&](const BlockStep& step) {
    heard.push_back(std::string(step.section) + (step.writing ? " w " : " r ") + std::to_string(step.done) +
                    "/" + std::to_string(step.all));
    EXPECT_EQ(recorder.requests.size() + 1, heard.size());
    return true;
  };
  ASSERT_TRUE(gFReadBlock(gFFindSection("G"), 0));
  ASSERT_TRUE(gFWriteBlock(gFFindSection("G"), 0));
  EXPECT_EQ(heard, (std::vector<std::string>{"G r 0/80", "G r 64/80", "G w 0/80", "G w 64/80"}));
}

TEST_F(Watch, EndsATransferWhoseRequestItDoesNotLetGo) {
  Prepare(Generations[5]);
  int left = 12;
  WatchOfTransfers.mayGo = [&left](const BlockStep&) { return left-- > 0; };
  const TransferResult result = ReadSetUp(window, {});
  EXPECT_EQ(result.end, TransferEnd::RequestFailed);
  EXPECT_EQ(result.section, "C");
  EXPECT_EQ(result.request, (FailedRequest{false, 44001 + 11 * 64, 64, ResultStopped}));
  EXPECT_EQ(recorder.requests.size(), 12U);
  EXPECT_EQ(platform.socket.state, 0);
}

TEST_F(Watch, GetsABlockThatHasComeOrGoneAsAWhole) {
  Prepare(Generations[0]);
  Open();
  std::vector<std::vector<std::uint8_t>> blocks;
  std::vector<bool> writing;
  WatchOfTransfers.whole = [&](const WholeBlock& block) {
    EXPECT_EQ(block.section, gFFindSection("M"));
    EXPECT_EQ(block.registerOffset, -22);
    blocks.emplace_back(block.bytes.begin(), block.bytes.end());
    writing.push_back(block.writing);
  };
  ASSERT_TRUE(gFReadBlock(gFFindSection("M"), -22));
  gFBlockPutWord(77, 0);
  ASSERT_TRUE(gFWriteBlock(gFFindSection("M"), -22));
  EXPECT_EQ(writing, (std::vector<bool>{false, true}));
  ASSERT_EQ(blocks[0].size(), 440U);
  EXPECT_EQ(blocks[0][0] | blocks[0][1] << 8, ScriptedRecorder::Pattern(40509));
  EXPECT_EQ(blocks[1][0], 77);
  recorder.FaultAt(Fault::ErrorReply, static_cast<int>(recorder.requests.size()) + 2);
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadBlock(gFFindSection("M"), -22));
  EXPECT_EQ(blocks.size(), 2U);
}

TEST_F(Watch, AUsbCallThatFailsIsCounted) {
  Prepare(Generations[5]);
  Configure(Line::Usb);
  Open();
  const std::uint32_t before = UsbFailuresTakenForSuccess;
  ASSERT_TRUE(gFReadBlock(gFFindSection("S"), 0));
  EXPECT_EQ(UsbFailuresTakenForSuccess, before);
  platform.usb.throwOnOpen = true;
  EXPECT_TRUE(gFReadBlock(gFFindSection("S"), 0));
  EXPECT_EQ(UsbFailuresTakenForSuccess, before + 1);
}

TEST_F(Watch, AnyRecorderSaysWhoItIs) {
  Prepare(Generations[5]);
  Open();
  for (const Generation& generation : Generations) {
    recorder.PutIdentity(generation.model, generation.version);
    const RecorderIdentity identity = ReadIdentity();
    EXPECT_TRUE(identity.result.IsDone());
    EXPECT_EQ(identity.model, generation.model);
    EXPECT_EQ(Narrow(identity.versionTag), generation.version);
  }
  recorder.PutIdentity("  ABCDE", " V40A9");
  EXPECT_EQ(ReadIdentity().model, "ABC");
  EXPECT_EQ(ReadIdentity().versionTag, u"V40A");
  recorder.FaultAt(Fault::NoReply, static_cast<int>(recorder.requests.size()));
  platform.ExpectBox(11000);
  EXPECT_EQ(ReadIdentity().result.end, TransferEnd::IdentityNotRead);
}

TEST_F(Watch, ThePlansAreTheOrdersOfTheFlows) {
  for (const Generation& generation : Generations) {
    const ReadPlan* read = FindReadPlan(generation.number);
    const WritePlan* write = FindWritePlan(generation.number);
    ASSERT_TRUE(read != nullptr && write != nullptr);
    const std::vector<char> readOrder = Sections(generation.readOrder);
    const std::vector<char> writeOrder = Sections(generation.writeOrder);
    EXPECT_EQ(read->sections, std::string(readOrder.begin(), readOrder.end()));
    EXPECT_EQ(write->sections, std::string(writeOrder.begin(), writeOrder.end()));
  }
  EXPECT_EQ(FindReadPlan(7), nullptr);
  EXPECT_EQ(FindWritePlan(7), nullptr);
}

} // namespace
} // namespace loader::test
