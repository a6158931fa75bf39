// The two single commands: store the settings, set the clock.
#include "comm/RecorderCommands.h"

#include "core/TextTable.h"
#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

struct Commands : RecorderFixture {
  void StartOn(Line line, std::string_view version = "V40A") {
    Start("KOV", version);
    Configure(line);
  }
  const ClockSetting clock{25, 7, 4, 13, 5};
};

struct StoreSettings : Commands {};

TEST_F(StoreSettings, WritesTheValue1WithNoCheckBeforeIt) {
  StartOn(Line::Serial);
  recorder.PutIdentity("???", "????");
  recorder.PutState(0xFFFF);
  platform.ExpectBox(20108);
  platform.ExpectBox(62702);
  FixSettings(window);
  ASSERT_EQ(platform.serial.wire.sent.size(), 1U);
  EXPECT_EQ(ToHex(platform.serial.wire.sent[0]), "01 10 00 00 00 01 02 00 01 67 90");
  EXPECT_EQ(recorder.Register(40001), 1);
}

TEST_F(StoreSettings, GoesOverEthernetAndUsbToo) {
  StartOn(Line::Ethernet);
  platform.ExpectBox(20108);
  platform.ExpectBox(62702);
  FixSettings(window);
  EXPECT_EQ(ToHex(platform.socket.wire.sent.at(0)), "00 00 00 00 00 09 01 10 00 00 00 01 02 00 01");
  Configure(Line::Usb);
  platform.ExpectBox(20108);
  platform.ExpectBox(62702);
  FixSettings(window);
  EXPECT_EQ(ToHex(platform.usb.wire.sent.at(0)), "01 10 00 00 00 01 02 00 01 67 90");
}

TEST_F(StoreSettings, ACancelEndsIt) {
  StartOn(Line::Serial);
  platform.ExpectBox(20108, BoxAnswer::Cancel);
  FixSettings(window);
  EXPECT_TRUE(platform.serial.opened.empty());
  EXPECT_TRUE(log.steps.empty());
}

TEST_F(StoreSettings, ALinkThatDoesNotOpenEndsIt) {
  StartOn(Line::Serial);
  platform.serial.failOpen = true;
  platform.ExpectBox(20108);
  platform.ExpectBox(11004);
  FixSettings(window);
  EXPECT_TRUE(log.steps.empty());
}

TEST_F(StoreSettings, FreesTheWindowAtTheEnd) {
  StartOn(Line::Serial);
  platform.ExpectBox(20108);
  platform.ExpectBox(62702);
  FixSettings(window);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "enabled"}));
  EXPECT_FALSE(platform.serial.open);
}

TEST_F(StoreSettings, AFailedWriteShowsTheLinksMessageAlone) {
  StartOn(Line::Serial);
  recorder.FaultAt(Fault::NoReply, 0);
  platform.ExpectBox(20108);
  platform.ExpectBox(11000);
  FixSettings(window);
  EXPECT_EQ(log.steps.back(), "enabled");
}

TEST_F(StoreSettings, ADamagedReplyHasNoMessageAtAll) {
  StartOn(Line::Serial);
  recorder.FaultAt(Fault::BothCheckBytesWrong, 0);
  platform.ExpectBox(20108);
  FixSettings(window);
  EXPECT_EQ(CommLink.ResultCode, 2);
}

TEST_F(StoreSettings, TheWordOffsetCountsDouble) {
  StartOn(Line::Serial);
  NumRecord("F", 0, "FIX").WordOffset = 3;
  platform.ExpectBox(20108);
  platform.ExpectBox(62702);
  FixSettings(window);
  EXPECT_EQ(recorder.requests, (std::vector<RecordedRequest>{{16, 40007, 1}}));
}

TEST_F(StoreSettings, TheHighByteOfItsRegisterIs0) {
  StartOn(Line::Serial);
  EXPECT_TRUE(gFLinkOpen());
  CommLink.TxWords.fill(0xEE);
  platform.ExpectBox(62702);
  EXPECT_TRUE(gFFixSettings());
  EXPECT_EQ(recorder.written.back(), std::vector<std::uint16_t>{1});
}

TEST_F(StoreSettings, AStoreWithoutTheCommandSendsNothing) {
  StartOn(Line::Serial);
  std::erase_if(ParamStore, [](const ParamSection& section) { return section.Code == "F  "; });
  EXPECT_TRUE(gFLinkOpen());
  EXPECT_FALSE(gFFixSettings());
  EXPECT_TRUE(recorder.requests.empty());
}

TEST_F(StoreSettings, ACommandRegisterThatNoFrameHoldsSendsNothing) {
  StartOn(Line::Serial);
  EXPECT_TRUE(gFLinkOpen());
  for (const std::int32_t base : {30001, 17, -40001, std::numeric_limits<std::int32_t>::max()}) {
    ParamStore[gFFindSection("F")].BaseAddress = base;
    NumRecord("F", 0, "FIX").WordOffset = 1;
    EXPECT_FALSE(gFFixSettings()) << base;
  }
  EXPECT_TRUE(recorder.requests.empty());
}

struct SetClock : Commands {};

TEST_F(SetClock, SendsSixRegistersInOneRequestOf21Bytes) {
  StartOn(Line::Serial);
  SetRecorderClock(clock, window);
  ASSERT_EQ(platform.serial.wire.sent.size(), 3U);
  EXPECT_EQ(ToHex(platform.serial.wire.sent[2]),
            "01 10 00 0A 00 06 0C 00 01 00 19 00 07 00 04 00 0D 00 05 F9 DC");
  EXPECT_EQ(platform.serial.wire.sent[2].size(), 21U);
}

TEST_F(SetClock, AsksForTheStateThenForTheIdentityThenWrites) {
  StartOn(Line::Ethernet);
  SetRecorderClock(clock, window);
  EXPECT_EQ(recorder.requests, (std::vector<RecordedRequest>{{4, 30101, 1}, {4, 30001, 16}, {16, 40011, 6}}));
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "enabled"}));
  EXPECT_EQ(platform.socket.state, 0);
}

TEST_F(SetClock, TheHighByteOfEachRegisterIs0) {
  StartOn(Line::Ethernet);
  CommLink.TxWords.fill(0xEE);
  SetRecorderClock(clock, window);
  EXPECT_EQ(recorder.written.back(), (std::vector<std::uint16_t>{1, 25, 7, 4, 13, 5}));
}

TEST_F(SetClock, ShowsNoMessageAfterSuccess) {
  StartOn(Line::Ethernet);
  SetRecorderClock(clock, window);
  EXPECT_TRUE(platform.boxes.shown.empty());
}

TEST_F(SetClock, ABusyRecorderIsRefusedWithTheLampStillOnAndTheLinkClosed) {
  StartOn(Line::Serial);
  recorder.PutState(1);
  bool open = true;
  std::string lastStep;
  platform.ExpectBox(62502, BoxAnswer::Ok, [&] {
    open = platform.serial.open;
    lastStep = log.steps.back();
  });
  SetRecorderClock(clock, window);
  EXPECT_FALSE(open);
  EXPECT_EQ(lastStep, "lamp on");
  EXPECT_EQ(recorder.requests.size(), 1U);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "enabled"}));
}

TEST_F(SetClock, AStateThatCannotBeReadShowsTheLinksMessageAlone) {
  StartOn(Line::Ethernet);
  recorder.FaultAt(Fault::NoReply, 0);
  platform.ExpectBox(11000);
  SetRecorderClock(clock, window);
  EXPECT_EQ(recorder.requests.size(), 1U);
}

TEST_F(SetClock, ARefusedRecorderIsNotSet) {
  StartOn(Line::Ethernet);
  recorder.PutIdentity("KOV", "V40W");
  platform.ExpectBox(11012);
  SetRecorderClock(clock, window);
  EXPECT_EQ(recorder.requests.size(), 2U);
}

TEST_F(SetClock, ALinkThatDoesNotOpenEndsIt) {
  StartOn(Line::Serial);
  platform.serial.failOpen = true;
  platform.ExpectBox(11004);
  SetRecorderClock(clock, window);
  EXPECT_TRUE(log.steps.empty());
}

TEST_F(SetClock, TheFirstLayoutCannotBeSetAndABoxSaysSo) {
  StartOn(Line::Ethernet, "V05A");
  platform.ExpectBox(62501);
  SetRecorderClock(clock, window);
  EXPECT_EQ(platform.boxes.shown.at(0).icon, BoxIcon::Exclamation);
  EXPECT_EQ(recorder.requests.size(), 2U);
}

TEST_F(SetClock, EveryOtherLayoutIsSetAtTheSamePlace) {
  for (const std::string_view version : {"V06A", "V14A", "V18A", "V27A", "V40A"}) {
    StartOn(Line::Ethernet, version);
    SetRecorderClock(clock, window);
    EXPECT_EQ(recorder.requests.back(), (RecordedRequest{16, 40011, 6})) << version;
  }
}

TEST_F(SetClock, AFailedWriteShowsTheLinksMessageAndCountsAsDone) {
  StartOn(Line::Serial);
  EXPECT_TRUE(gFLinkOpen());
  recorder.FaultAt(Fault::NoReply, 1);
  platform.ExpectBox(11000);
  EXPECT_TRUE(gFSetClock(clock));
}

TEST_F(SetClock, AFailedCheckIsFalse) {
  StartOn(Line::Serial);
  EXPECT_TRUE(gFLinkOpen());
  recorder.PutIdentity("RUG", "V10W");
  platform.ExpectBox(11015);
  EXPECT_FALSE(gFSetClock(clock));
}

TEST_F(SetClock, TheWordOffsetCountsDouble) {
  StartOn(Line::Ethernet);
  NumRecord("H", 0, "TIMS").WordOffset = 5;
  SetRecorderClock(clock, window);
  EXPECT_EQ(recorder.requests.back(), (RecordedRequest{16, 40021, 6}));
}

TEST_F(SetClock, AStoreWithoutTheClockSendsNothing) {
  StartOn(Line::Ethernet);
  std::erase_if(ParamStore[gFFindSection("H")].Items[0].NumRecords,
                [](const ParamNumRecord& record) { return record.Tag == "TIMS"; });
  SetRecorderClock(clock, window);
  EXPECT_EQ(recorder.requests.size(), 2U);
}

TEST_F(SetClock, TheStoreKeepsItsOwnClockFields) {
  StartOn(Line::Ethernet);
  SetRecorderClock(clock, window);
  EXPECT_EQ(Stored("H", 0, "YEAR"), 0);
  EXPECT_EQ(recorder.Register(40012), 25);
}

} // namespace
} // namespace loader::test
