// One exchange on each link: its result codes, messages and waits.
#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

// A read of one holding register; the good reply holds 0x1234.
struct Exchange : LinkFixture {
  void Open(Line line) {
    OpenLink(line);
    CommLink.RegAddress = 40001;
    CommLink.RegCount = 1;
    startedAt = platform.time.millisecondsNow;
  }
  void AnswerOnce(Line line, const Bytes& reply, int milliseconds = 1) {
    ScriptedWire& wire = WireOf(line);
    wire.onSend = [&wire, reply, milliseconds](const Bytes&) { wire.Reply(reply, milliseconds); };
  }
  std::int64_t Took() { return platform.time.millisecondsNow - startedAt; }
  std::int64_t startedAt = 0;
};

const Bytes GoodRtu = WithCheckValue(Hex("01 03 02 12 34"));
const Bytes GoodTcp = Hex("00 00 00 00 00 05 01 03 02 12 34");

Bytes WithWrongBytes(Bytes reply, bool low, bool high) {
  if (low) {
    reply.at(reply.size() - 2) ^= 0xFF;
  }
  if (high) {
    reply.at(reply.size() - 1) ^= 0xFF;
  }
  return reply;
}

// --- Serial

TEST_F(Exchange, OnSerialAGoodReplyIsCode0) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, GoodRtu);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 0);
  EXPECT_EQ(Took(), 1);
  EXPECT_FALSE(WaitTimer.Enabled);
}

TEST_F(Exchange, OnSerialSuccessfulRequestsFollowEachOtherWithoutDelay) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, GoodRtu);
  for (int i = 0; i < 10; ++i) {
    EXPECT_TRUE(gFReadRegs());
  }
  EXPECT_EQ(Took(), 10);
}

TEST_F(Exchange, OnSerialOneWrongCheckByteIsAccepted) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, WithWrongBytes(GoodRtu, true, false));
  EXPECT_TRUE(gFReadRegs());
  AnswerOnce(Line::Serial, WithWrongBytes(GoodRtu, false, true));
  EXPECT_TRUE(gFReadRegs());
}

TEST_F(Exchange, OnSerialTwoWrongCheckBytesAreCode2AndAPauseAndNoMessage) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, WithWrongBytes(GoodRtu, true, true));
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 2);
  EXPECT_GE(Took(), 101);
  EXPECT_LE(Took(), 110);
}

TEST_F(Exchange, OnSerialThereIsOneAttemptAndNoRetry) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, WithWrongBytes(GoodRtu, true, true));
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(platform.serial.wire.sent.size(), 1U);
}

TEST_F(Exchange, OnSerialNoReplyEndsAfterFiveSecondsWithOneMessage) {
  Open(Line::Serial);
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
  EXPECT_EQ(Took(), 5000);
}

TEST_F(Exchange, OnSerialAReplyOfTheLastMomentIsTaken) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, GoodRtu, 5000);
  EXPECT_TRUE(gFReadRegs());
}

TEST_F(Exchange, OnSerialAnErrorReplyDoesNotEndTheWaitAndStaysInTheBuffer) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, Hex("01 83 02 C0 F1"));
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
  EXPECT_EQ(platform.serial.wire.waiting.size(), 5U);
}

TEST_F(Exchange, OnSerialBytesLeftInTheBufferSpoilTheNextExchange) {
  Open(Line::Serial);
  platform.serial.wire.waiting = Hex("01 83 02 C0 F1");
  AnswerOnce(Line::Serial, GoodRtu);
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
  EXPECT_EQ(platform.serial.wire.waiting.size(), 12U);
}

TEST_F(Exchange, OnSerialTwoBytesTooManyNeverMatch) {
  Open(Line::Serial);
  Bytes reply = GoodRtu;
  reply.insert(reply.end(), {0x55, 0xAA});
  AnswerOnce(Line::Serial, reply);
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
  EXPECT_EQ(Took(), 5000);
}

TEST_F(Exchange, OnSerialAReplyInPiecesIsPutTogether) {
  Open(Line::Serial);
  platform.serial.wire.onSend = [this](const Bytes&) {
    for (std::size_t i = 0; i < GoodRtu.size(); ++i) {
      platform.serial.wire.Reply({GoodRtu[i]}, 1 + 300 * static_cast<int>(i));
    }
  };
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(CommLink.RxWords[1], 0x12);
}

TEST_F(Exchange, OnSerialStationFunctionAndByteCountAreNotLookedAt) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, WithCheckValue(Hex("63 06 77 12 34")));
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(CommLink.RxWords[0], 0x34);
}

TEST_F(Exchange, OnSerialAnErrorReplyOfTheExpectedLengthIsCode3) {
  Open(Line::Serial);
  CommLink.RegCount = 0; // the one request whose reply has the length of an error reply
  AnswerOnce(Line::Serial, Hex("01 83 02 C0 F1"));
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 3);
}

TEST_F(Exchange, OnSerialTheErrorFunctionAloneIsNoErrorReply) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, WithCheckValue(Hex("01 83 02 12 34")));
  EXPECT_TRUE(gFReadRegs()); // 7 bytes, not 5
}

TEST_F(Exchange, OnSerialALostPortShowsAsATimeOut) {
  Open(Line::Serial);
  platform.serial.lost = true;
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
  EXPECT_EQ(Took(), 5000);
  gFLinkClose();
}

TEST_F(Exchange, OnSerialAPortLostDuringTheWaitShowsAsATimeOut) {
  Open(Line::Serial);
  platform.serial.wire.onSend = [this](const Bytes&) {
    platform.time.After(100, [this] { platform.serial.lost = true; });
  };
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
}

TEST_F(Exchange, OnSerialAFailingOutputIsIgnoredToo) {
  Open(Line::Serial);
  platform.serial.failOutput = true;
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
}

TEST_F(Exchange, OnSerialAWriteThatIsAnsweredIsCode0) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, WithCheckValue(Hex("01 10 00 00 00 01")));
  EXPECT_TRUE(gFWriteRegs());
}

TEST_F(Exchange, OnSerialTheReplyToAWriteIsNotLookedAtFurther) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, WithCheckValue(Hex("07 06 99 99 99 99")));
  EXPECT_TRUE(gFWriteRegs());
}

TEST_F(Exchange, ASerialExchangeLeavesTheLinkFreeForTheNext) {
  Open(Line::Serial);
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  AnswerOnce(Line::Serial, GoodRtu);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 0);
}

// --- Ethernet

TEST_F(Exchange, OnEthernetAGoodReplyIsCode0) {
  Open(Line::Ethernet);
  AnswerOnce(Line::Ethernet, GoodTcp);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(CommLink.RxWords[1], 0x12);
  EXPECT_EQ(Took(), 1);
}

TEST_F(Exchange, OnEthernetAnotherTransactionNumberIsCode10AndAPauseAndNoMessage) {
  Open(Line::Ethernet);
  AnswerOnce(Line::Ethernet, Hex("00 01 00 00 00 05 01 03 02 12 34"));
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 10);
  EXPECT_GE(Took(), 101);
  EXPECT_LE(Took(), 110);
}

TEST_F(Exchange, OnEthernetBothBytesOfTheTransactionNumberCount) {
  Open(Line::Ethernet);
  AnswerOnce(Line::Ethernet, Hex("01 00 00 00 00 05 01 03 02 12 34"));
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 10);
}

TEST_F(Exchange, OnEthernetAnErrorFunctionIsCode3WhateverTheLength) {
  Open(Line::Ethernet);
  AnswerOnce(Line::Ethernet, Hex("00 00 00 00 00 05 01 83 02 12 34"));
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 3);
}

TEST_F(Exchange, OnEthernetARealErrorReplyIsTooShortAndTimesOut) {
  Open(Line::Ethernet);
  AnswerOnce(Line::Ethernet, Hex("00 00 00 00 00 03 01 83 02"));
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
  EXPECT_EQ(Took(), 5000);
}

TEST_F(Exchange, OnEthernetAnErrorReplyOfTheExpectedLengthIsCode3) {
  Open(Line::Ethernet);
  CommLink.RegCount = 0;
  AnswerOnce(Line::Ethernet, Hex("00 00 00 00 00 03 01 83 02"));
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 3);
}

TEST_F(Exchange, OnEthernetTwoBytesTooManyNeverMatch) {
  Open(Line::Ethernet);
  Bytes reply = GoodTcp;
  reply.insert(reply.end(), {0x55, 0xAA});
  AnswerOnce(Line::Ethernet, reply);
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
}

TEST_F(Exchange, OnEthernetStationFunctionAndCountsAreNotLookedAt) {
  Open(Line::Ethernet);
  AnswerOnce(Line::Ethernet, Hex("00 00 77 77 77 77 63 06 77 12 34"));
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(CommLink.RxWords[0], 0x34);
}

TEST_F(Exchange, OnEthernetAConnectionThatIsGoneIsCode100WithItsMessage) {
  Open(Line::Ethernet);
  platform.socket.failSend = true;
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 100);
  EXPECT_EQ(Took(), 0);
}

TEST_F(Exchange, OnEthernetAConnectionThatClosesDuringTheWaitTimesOut) {
  Open(Line::Ethernet);
  platform.socket.wire.onSend = [this](const Bytes&) {
    platform.time.After(10, [this] { platform.socket.state = 8; });
  };
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
}

TEST_F(Exchange, TheEventLoopRunsDuringAWait) {
  Open(Line::Ethernet);
  AnswerOnce(Line::Ethernet, GoodTcp, 1000);
  int blinks = 0;
  Timer lamp{50, false, [&] { ++blinks; }};
  StartTimer(lamp, 50);
  EXPECT_TRUE(gFReadRegs());
  StopTimer(lamp);
  EXPECT_EQ(blinks, 19);
}

TEST_F(Exchange, AWaitSleepsBetweenEvents) {
  Open(Line::Ethernet);
  const int before = platform.time.eventsRun;
  AnswerOnce(Line::Ethernet, GoodTcp, 4000);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(platform.time.eventsRun - before, 1);
}

// --- The pause

TEST_F(Exchange, APauseAcrossMidnightEndsAtMostATenthOfASecondBehindIt) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, WithWrongBytes(GoodRtu, true, true));
  const std::int64_t midnight = platform.time.millisecondsNow + 51; // 50 ms into the pause
  platform.time.millisecondsAtMidnight = midnight - 86400000;
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 2);
  EXPECT_GT(platform.time.millisecondsNow, midnight);
  EXPECT_LE(platform.time.millisecondsNow, midnight + 100);
}

TEST_F(Exchange, APauseThatEndsAtMidnightIsNotStuck) {
  for (int early = 0; early <= 102; ++early) {
    Open(Line::Serial);
    AnswerOnce(Line::Serial, WithWrongBytes(GoodRtu, true, true));
    const std::int64_t midnight = platform.time.millisecondsNow + 1 + early;
    platform.time.millisecondsAtMidnight = midnight - 86400000;
    EXPECT_FALSE(gFReadRegs());
    EXPECT_LE(platform.time.millisecondsNow, midnight + 101) << early;
    EXPECT_GE(Took(), early < 100 ? early : 90) << early;
    gFLinkClose();
    platform.time.millisecondsAtMidnight = platform.time.millisecondsNow - 43200000;
  }
}

TEST_F(Exchange, TheEventLoopRunsDuringAPause) {
  Open(Line::Serial);
  AnswerOnce(Line::Serial, WithWrongBytes(GoodRtu, true, true));
  int blinks = 0;
  Timer lamp{10, false, [&] { ++blinks; }};
  StartTimer(lamp, 10);
  EXPECT_FALSE(gFReadRegs());
  StopTimer(lamp);
  EXPECT_GE(blinks, 9);
  EXPECT_LE(blinks, 11);
}

// --- USB

TEST_F(Exchange, OnUsbAGoodReplyIsCode0) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, GoodRtu);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(CommLink.RxWords[1], 0x12);
}

TEST_F(Exchange, OnUsbTheDeviceIsOpenedAndClosedForEachExchange) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, GoodRtu);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(platform.usb.opens, 2);
  EXPECT_EQ(platform.usb.closes, 2);
}

TEST_F(Exchange, OnUsbTheFrameGoesOneByteInEachWord) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, GoodRtu);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(UsbSendWords[0], 1);
  EXPECT_EQ(UsbSendWords[1], 3);
  EXPECT_EQ(UsbSendWords[6], 0x84);
  EXPECT_EQ(UsbRecvWords[3], 0x12);
}

TEST_F(Exchange, OnUsbNoReplyIsCode1WithTheTimeOutMessageAfterOneSecond) {
  Open(Line::Usb);
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 1);
  EXPECT_LE(Took(), 2000);
  EXPECT_EQ(platform.usb.closes, 1);
}

TEST_F(Exchange, OnUsbAFailedWriteIsCode200AndLeavesTheDeviceOpen) {
  Open(Line::Usb);
  platform.usb.failWrite = true;
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 200);
  EXPECT_EQ(platform.usb.opens, 1);
  EXPECT_EQ(platform.usb.closes, 0);
}

TEST_F(Exchange, OnUsbOneWrongCheckByteIsAccepted) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, WithWrongBytes(GoodRtu, true, false));
  EXPECT_TRUE(gFReadRegs());
  AnswerOnce(Line::Usb, WithWrongBytes(GoodRtu, false, true));
  EXPECT_TRUE(gFReadRegs());
}

TEST_F(Exchange, OnUsbTwoWrongCheckBytesAreCode2WithAMessage) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, WithWrongBytes(GoodRtu, true, true));
  platform.ExpectBox(11001);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 2);
  EXPECT_GE(Took(), 100);
}

TEST_F(Exchange, OnUsbAnErrorReplyIsCode3WithAMessage) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, Hex("01 83 02 C0 F1"));
  platform.ExpectBox(11001);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 3);
}

TEST_F(Exchange, OnUsbAnErrorReplyWithOneRightCheckByteIsCode3Too) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, Hex("01 83 02 C0 00"));
  platform.ExpectBox(11001);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 3);
}

TEST_F(Exchange, OnUsbAShortReplyIsCode4WithAMessage) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, WithCheckValue(Hex("01 03 02")));
  platform.ExpectBox(11001);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 4);
}

TEST_F(Exchange, OnUsbASingleByteIsADamagedReply) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, Hex("01"));
  platform.ExpectBox(11001);
  EXPECT_FALSE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 2);
}

TEST_F(Exchange, OnUsbNoMoreThanTheExpectedLengthIsRead) {
  Open(Line::Usb);
  Bytes reply = GoodRtu;
  reply.insert(reply.end(), {0x55, 0xAA});
  AnswerOnce(Line::Usb, reply);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(platform.usb.wire.waiting.size(), 2U);
}

TEST_F(Exchange, OnUsbAFailingCallCountsAsSuccessWithStaleRegisters) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, GoodRtu);
  EXPECT_TRUE(gFReadRegs());
  platform.usb.throwOnOpen = true;
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(CommLink.ResultCode, 0);
  EXPECT_EQ(CommLink.RxWords[1], 0x12);
}

TEST_F(Exchange, OnUsbTheEventLoopRunsBetweenWriteAndRead) {
  Open(Line::Usb);
  AnswerOnce(Line::Usb, GoodRtu, 5);
  const int before = platform.time.eventsRun;
  EXPECT_TRUE(gFReadRegs());
  EXPECT_GT(platform.time.eventsRun, before);
}

} // namespace
} // namespace loader::test
