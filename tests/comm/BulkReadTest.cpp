// The flow of the bulk read: what it asks, shows and leaves behind.
#include "comm/BulkRead.h"

#include "core/modIni.h"
#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

struct ReadFlow : RecorderFixture {
  void StartOn(Line line) {
    Start("KOV", "V40A");
    Configure(line);
  }
};

TEST_F(ReadFlow, AsksFirstAndACancelEndsIt) {
  StartOn(Line::Ethernet);
  platform.ExpectBox(20104, BoxAnswer::Cancel);
  ReadFromRecorder(window);
  EXPECT_TRUE(platform.socket.connected.empty());
  EXPECT_TRUE(log.steps.empty());
}

TEST_F(ReadFlow, ALinkThatDoesNotOpenEndsItWithNothingChangedOnTheWindow) {
  StartOn(Line::Serial);
  platform.serial.failOpen = true;
  platform.ExpectBox(20104);
  platform.ExpectBox(11004);
  ReadFromRecorder(window);
  EXPECT_TRUE(log.steps.empty());
}

TEST_F(ReadFlow, ARefusedRecorderEndsInTheInterruptedMessage) {
  StartOn(Line::Ethernet);
  recorder.PutIdentity("RUG", "V10W");
  platform.ExpectBox(20104);
  platform.ExpectBox(11015);
  platform.ExpectBox(11013);
  ReadFromRecorder(window);
  EXPECT_EQ(recorder.requests.size(), 1U);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "refresh", "enabled"}));
}

TEST_F(ReadFlow, TheInterruptedMessageComesWhileTheLampIsOnAndTheLinkOpen) {
  StartOn(Line::Serial);
  recorder.FaultAt(Fault::NoReply, 3);
  platform.ExpectBox(20104);
  platform.ExpectBox(11000);
  bool open = false;
  std::string lastStep;
  platform.ExpectBox(11013, BoxAnswer::Ok, [&] {
    open = platform.serial.open;
    lastStep = log.steps.back();
  });
  ReadFromRecorder(window);
  EXPECT_TRUE(open);
  EXPECT_EQ(lastStep, "lamp on");
  EXPECT_FALSE(platform.serial.open);
}

TEST_F(ReadFlow, AFailureAtHLeavesTheSectionsBeforeItRead) {
  StartOn(Line::Ethernet);
  recorder.FillWithPattern();
  recorder.PutIdentity("KOV", "V40A");
  // P, C 29, A 8, G 2, T, B: the next request is that of H.
  recorder.FaultAt(Fault::NoReply, 1 + 29 + 8 + 2 + 1 + 1);
  platform.ExpectBox(20104);
  platform.ExpectBox(11000);
  platform.ExpectBox(11013);
  ReadFromRecorder(window);
  EXPECT_EQ(recorder.requests.back().number, 40011);
  EXPECT_EQ(Stored("C", 29, "MMAX"),
            static_cast<std::int16_t>(ScriptedRecorder::Pattern(44001 + 29 * 60 + 14)));
  EXPECT_EQ(Stored("B", 3, "BHOU"), static_cast<std::int16_t>(ScriptedRecorder::Pattern(40301 + 3 * 4)));
  EXPECT_EQ(Stored("H", 0, "MONT"), 1);
  EXPECT_EQ(Stored("M", 0, "MCOR"), 1);
}

TEST_F(ReadFlow, AlsoAFailedReadTakesOverTheUserUnitsAndRefreshes) {
  StartOn(Line::Ethernet);
  gFParamValue("U", 0, "UNIT", u"kWh", SlotBoth);
  recorder.FaultAt(Fault::NoReply, 0);
  platform.ExpectBox(20104);
  platform.ExpectBox(11000);
  platform.ExpectBox(11012);
  platform.ExpectBox(11013);
  ReadFromRecorder(window);
  EXPECT_EQ(UnitNames.at(156), u"kWh");
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "refresh", "enabled"}));
}

TEST_F(ReadFlow, TheUserUnitsAreThereWhenTheWindowIsRefreshed) {
  StartOn(Line::Ethernet);
  recorder.PutText(40321, "m3/h", 8);
  std::u16string shown;
  window.refresh = [&] { shown = UnitNames.at(156); };
  platform.ExpectBox(20104);
  ReadFromRecorder(window);
  EXPECT_EQ(shown, u"m3/h");
}

TEST_F(ReadFlow, TheWholeReadTellsWhetherItCameThrough) {
  StartOn(Line::Ethernet);
  EXPECT_TRUE(gFLinkOpen());
  EXPECT_TRUE(gFReadAll());
  recorder.PutIdentity("RUG", "V10W");
  platform.ExpectBox(11015);
  EXPECT_FALSE(gFReadAll());
}

TEST_F(ReadFlow, AGenerationWithoutAReaderReadsNothingAndSucceeds) {
  StartOn(Line::Ethernet);
  RecorderGeneration = 9;
  ModelCode = "BIQ"; // a model without version tags keeps the generation
  recorder.PutIdentity("BIQ", "");
  platform.ExpectBox(20104);
  ReadFromRecorder(window);
  EXPECT_EQ(recorder.requests.size(), 1U);
}

TEST_F(ReadFlow, WithoutTheModeCheckAThirdModelIsReadByTheGenerationThatWasLeft) {
  StartOn(Line::Ethernet);
  ModeCheckOff = 1;
  RecorderGeneration = 5;
  recorder.PutIdentity("BIQ", "");
  platform.ExpectBox(20104);
  ReadFromRecorder(window);
  EXPECT_EQ(recorder.requests.back().number, 40211); // Y
}

TEST_F(ReadFlow, ASectionThatTheStoreLacksIsAFailedRead) {
  StartOn(Line::Ethernet);
  std::erase_if(ParamStore, [](const ParamSection& section) { return section.Code == "T  "; });
  platform.ExpectBox(20104);
  platform.ExpectBox(11013);
  ReadFromRecorder(window);
  EXPECT_EQ(recorder.requests.back().number, 40761 + 64); // G was the last
}

TEST_F(ReadFlow, ASectionBeyondTheBlockBufferIsAFailedRead) {
  StartOn(Line::Ethernet);
  ParamStore[gFFindSection("T")].ItemWords = 2000;
  platform.ExpectBox(20104);
  platform.ExpectBox(11013);
  ReadFromRecorder(window);
}

TEST_F(ReadFlow, ARecordThatPointsOutsideTheBlockIsAFailedRead) {
  StartOn(Line::Ethernet);
  ParamStore[gFFindSection("T")].Items[3].NumRecords[0].WordOffset = 32000;
  platform.ExpectBox(20104);
  platform.ExpectBox(11013);
  ReadFromRecorder(window);
  EXPECT_EQ(log.steps.back(), "enabled");
}

TEST_F(ReadFlow, GoesWithoutAWindow) {
  StartOn(Line::Usb);
  platform.ExpectBox(20104);
  ReadFromRecorder({});
  EXPECT_EQ(recorder.requests.back().number, 40211);
}

TEST_F(ReadFlow, AFailureThatPassesThroughLeavesTheWindowFree) {
  StartOn(Line::Ethernet);
  window.refresh = [] { throw std::logic_error("a defect of the window"); };
  platform.ExpectBox(20104);
  EXPECT_THROW(ReadFromRecorder(window), std::logic_error);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "enabled"}));
}

TEST_F(ReadFlow, TheLinkIsOpenedOnceAndClosedAtTheEnd) {
  StartOn(Line::Serial);
  platform.ExpectBox(20104);
  ReadFromRecorder(window);
  EXPECT_EQ(platform.serial.opened.size(), 1U);
  EXPECT_FALSE(platform.serial.open);
}

TEST_F(ReadFlow, ASecondReadReadsAnew) {
  StartOn(Line::Ethernet);
  platform.ExpectBox(20104);
  ReadFromRecorder(window);
  recorder.Register(40011 + 6) = 2; // KLOC
  platform.ExpectBox(20104);
  ReadFromRecorder(window);
  EXPECT_EQ(Stored("H", 0, "KLOC"), 2);
}

} // namespace
} // namespace loader::test
