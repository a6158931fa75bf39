// The flow of the bulk write: what it asks, shows and leaves behind.
#include "comm/BulkWrite.h"

#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

struct WriteFlow : RecorderFixture {
  void StartOn(Line line) {
    Start("KOV", "V40A");
    Configure(line);
  }
  [[nodiscard]] int WritesSeen() const {
    return static_cast<int>(
        std::count_if(recorder.requests.begin(), recorder.requests.end(),
                      [](const RecordedRequest& request) { return request.function == 16; }));
  }
};

TEST_F(WriteFlow, AsksFirstAndACancelEndsIt) {
  StartOn(Line::Ethernet);
  platform.ExpectBox(20106, BoxAnswer::Cancel);
  WriteToRecorder(window);
  EXPECT_TRUE(platform.socket.connected.empty());
  EXPECT_TRUE(log.steps.empty());
}

TEST_F(WriteFlow, ALinkThatDoesNotOpenEndsItWithNothingChangedOnTheWindow) {
  StartOn(Line::Ethernet);
  platform.socket.connectDelay = -1;
  platform.ExpectBox(20106);
  platform.ExpectBox(11000);
  WriteToRecorder(window);
  EXPECT_TRUE(log.steps.empty());
}

TEST_F(WriteFlow, ABusyRecorderIsRefusedBeforeItsVersionIsLookedAt) {
  StartOn(Line::Serial);
  recorder.PutState(0x0080);
  recorder.PutIdentity("XYZ", "");
  platform.ExpectBox(20106);
  bool open = true;
  std::string lastStep;
  platform.ExpectBox(20107, BoxAnswer::Ok, [&] {
    open = platform.serial.open;
    lastStep = log.steps.back();
  });
  WriteToRecorder(window);
  EXPECT_EQ(recorder.requests.size(), 1U);
  EXPECT_FALSE(open);
  EXPECT_EQ(lastStep, "lamp off");
  EXPECT_EQ(log.steps.back(), "enabled");
}

TEST_F(WriteFlow, AStateThatCannotBeReadHasNoMessageOfItsOwn) {
  StartOn(Line::Ethernet);
  recorder.FaultAt(Fault::NoReply, 0);
  platform.ExpectBox(20106);
  platform.ExpectBox(11000);
  WriteToRecorder(window);
  EXPECT_EQ(recorder.requests.size(), 1U);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "enabled"}));
}

TEST_F(WriteFlow, AnotherModelIsRefusedWithNothingWritten) {
  StartOn(Line::Ethernet);
  recorder.PutIdentity("RUG", "V10W");
  platform.ExpectBox(20106);
  platform.ExpectBox(11015);
  WriteToRecorder(window);
  EXPECT_EQ(WritesSeen(), 0);
}

TEST_F(WriteFlow, AFailedRequestEndsQuietlyBehindTheLinksMessage) {
  StartOn(Line::Ethernet);
  recorder.FaultAt(Fault::NoReply, 2 + 29 + 3); // in the write of C
  platform.ExpectBox(20106);
  platform.ExpectBox(11000);
  WriteToRecorder(window);
  EXPECT_EQ(WritesSeen(), 4);
  EXPECT_EQ(log.steps.back(), "enabled");
}

TEST_F(WriteFlow, TheSectionsBeforeAFailureStayWritten) {
  StartOn(Line::Ethernet);
  recorder.FillWithPattern();
  recorder.PutIdentity("KOV", "V40A");
  recorder.PutState(0);
  recorder.FaultAt(Fault::NoReply, 2 + 2 * 29); // the read of A
  platform.ExpectBox(20106);
  platform.ExpectBox(11000);
  WriteToRecorder(window);
  EXPECT_EQ(recorder.Register(44001 + 14), 5000);
  EXPECT_EQ(recorder.Register(41001), ScriptedRecorder::Pattern(41001));
}

TEST_F(WriteFlow, TheEndMessageShowsWhileTheLinkIsOpenAndTheLampOn) {
  StartOn(Line::Serial);
  platform.ExpectBox(20106);
  bool open = false;
  std::string lastStep;
  platform.ExpectBox(62701, BoxAnswer::Ok, [&] {
    open = platform.serial.open;
    lastStep = log.steps.back();
  });
  WriteToRecorder(window);
  EXPECT_TRUE(open);
  EXPECT_EQ(lastStep, "lamp on");
}

TEST_F(WriteFlow, TheWholeWriteTellsWhetherItCameThrough) {
  StartOn(Line::Ethernet);
  EXPECT_TRUE(gFLinkOpen());
  platform.ExpectBox(62701);
  EXPECT_TRUE(gFWriteAll());
  recorder.PutIdentity("RUG", "V10W");
  platform.ExpectBox(11015);
  EXPECT_FALSE(gFWriteAll());
}

TEST_F(WriteFlow, AGenerationWithoutAWriterShowsTheEndMessageAtOnce) {
  StartOn(Line::Ethernet);
  ModelCode = "BIQ"; // a model without version tags keeps the generation
  RecorderGeneration = 9;
  recorder.PutIdentity("BIQ", "");
  platform.ExpectBox(20106);
  platform.ExpectBox(62701);
  WriteToRecorder(window);
  EXPECT_EQ(WritesSeen(), 0);
}

TEST_F(WriteFlow, ASectionGoesOutEvenWhenNoValueHasChanged) {
  StartOn(Line::Ethernet);
  platform.ExpectBox(20106);
  platform.ExpectBox(62701);
  WriteToRecorder(window);
  const int first = WritesSeen();
  platform.ExpectBox(20106);
  platform.ExpectBox(62701);
  WriteToRecorder(window);
  EXPECT_EQ(WritesSeen(), 2 * first);
}

TEST_F(WriteFlow, TheBlockBufferStartsEmpty) {
  StartOn(Line::Ethernet);
  CommLink.BlockBuf.fill(0xEE);
  platform.ExpectBox(20106);
  platform.ExpectBox(62701);
  WriteToRecorder(window);
  EXPECT_EQ(CommLink.BlockBuf.back(), 0);
  EXPECT_EQ(CommLink.BlockBuf[5000], 0); // beyond the largest section
}

TEST_F(WriteFlow, ASectionInTheInputRegistersIsAFailedWriteWithoutAMessage) {
  StartOn(Line::Ethernet);
  ParamStore[gFFindSection("T")].BaseAddress = 30261;
  platform.ExpectBox(20106);
  WriteToRecorder(window);
  EXPECT_EQ(CommLink.ResultCode, 1);
}

TEST_F(WriteFlow, ASectionBelowTheRegistersIsAFailedWriteWithoutAMessage) {
  StartOn(Line::Ethernet);
  ParamStore[gFFindSection("T")].BaseAddress = 261;
  platform.ExpectBox(20106);
  WriteToRecorder(window);
  EXPECT_EQ(log.steps.back(), "enabled");
}

TEST_F(WriteFlow, ASectionThatTheStoreLacksIsAFailedWrite) {
  StartOn(Line::Ethernet);
  std::erase_if(ParamStore, [](const ParamSection& section) { return section.Code == "T  "; });
  platform.ExpectBox(20106);
  WriteToRecorder(window);
  EXPECT_EQ(recorder.requests.back(), (RecordedRequest{16, 40761 + 64, 16})); // G was the last
}

TEST_F(WriteFlow, ARecordThatPointsOutsideTheBlockWritesNothingOfItsSection) {
  StartOn(Line::Ethernet);
  ParamStore[gFFindSection("T")].Items[3].NumRecords[0].WordOffset = 32000;
  platform.ExpectBox(20106);
  WriteToRecorder(window);
  EXPECT_EQ(recorder.requests.back(), (RecordedRequest{3, 40261, 32}));
}

} // namespace
} // namespace loader::test
