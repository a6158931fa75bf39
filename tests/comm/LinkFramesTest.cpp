// The requests byte for byte, and what is taken from a reply.
#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

struct LinkFrames : LinkFixture {
  // Opens the line and answers every request with the bytes.
  void Answer(Line line, Bytes reply) {
    WireOf(line).onSend = [this, line, reply](const Bytes&) { WireOf(line).Reply(reply); };
    OpenLink(line);
  }
  void Set(std::int32_t number, std::int16_t count) {
    CommLink.RegAddress = number;
    CommLink.RegCount = count;
  }
  std::string Sent(Line line) { return ToHex(WireOf(line).sent.at(0)); }
};

struct RtuFrames : LinkFrames, ::testing::WithParamInterface<Line> {};
INSTANTIATE_TEST_SUITE_P(Links, RtuFrames, ::testing::Values(Line::Usb, Line::Serial),
                         [](const auto& line) { return std::string(LineName(line.param)); });

TEST_P(RtuFrames, AReadOfTheFirstInputRegisterUsesFunction4AndAddress0) {
  Answer(GetParam(), Hex("01 04 02 12 34 B4 47"));
  Set(30001, 1);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(Sent(GetParam()), "01 04 00 00 00 01 31 CA");
}

TEST_P(RtuFrames, AReadOfTheFirstHoldingRegisterUsesFunction3AndAddress0) {
  Answer(GetParam(), WithCheckValue(Hex("01 03 02 12 34")));
  Set(40001, 1);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(Sent(GetParam()), "01 03 00 00 00 01 84 0A");
}

TEST_P(RtuFrames, AReadOf31000UsesAddress999) {
  Answer(GetParam(), WithCheckValue(Hex("01 04 02 12 34")));
  Set(31000, 1);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(Sent(GetParam()), "01 04 03 E7 00 01 81 B9");
}

TEST_P(RtuFrames, TheSixteenRegistersOfTheIdentityAreAskedForInOneRequest) {
  Bytes reply = Hex("01 04 20");
  reply.resize(3 + 32);
  Answer(GetParam(), WithCheckValue(reply));
  Set(30001, 16);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(Sent(GetParam()), "01 04 00 00 00 10 F1 C6");
}

TEST_P(RtuFrames, ARequestFor64RegistersSends8BytesAndTakes133) {
  Bytes reply = Hex("01 03 80");
  for (int i = 0; i < 64; ++i) {
    reply.push_back(static_cast<std::uint8_t>(i));
    reply.push_back(static_cast<std::uint8_t>(200 - i));
  }
  Answer(GetParam(), WithCheckValue(reply));
  Set(40001, 64);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(Sent(GetParam()), "01 03 00 00 00 40 44 3A");
  EXPECT_EQ(CommLink.ExpectLen, 133);
  EXPECT_EQ(CommLink.RecvLen, 133);
  for (std::size_t i = 0; i < 64; ++i) {
    EXPECT_EQ(CommLink.RxWords[2 * i], 200 - i);
    EXPECT_EQ(CommLink.RxWords[2 * i + 1], i);
  }
}

TEST_P(RtuFrames, RegistersAreKeptLowByteFirst) {
  Answer(GetParam(), Hex("01 03 04 12 34 FF FE 7E F5"));
  Set(40001, 2);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(ToHex({CommLink.RxWords.begin(), CommLink.RxWords.begin() + 4}), "34 12 FE FF");
}

TEST_P(RtuFrames, AWriteCarriesTheRegistersHighByteFirst) {
  Answer(GetParam(), Hex("01 10 07 CF 00 02 70 83"));
  Set(42000, 2);
  CommLink.TxWords[0] = 0x00; // 256
  CommLink.TxWords[1] = 0x01;
  CommLink.TxWords[2] = 0xFE; // -2
  CommLink.TxWords[3] = 0xFF;
  EXPECT_TRUE(gFWriteRegs());
  EXPECT_EQ(Sent(GetParam()), "01 10 07 CF 00 02 04 01 00 FF FE 58 03");
  EXPECT_EQ(CommLink.ExpectLen, 8);
}

TEST_P(RtuFrames, AWriteOf64RegistersSends137Bytes) {
  Answer(GetParam(), WithCheckValue(Hex("01 10 00 00 00 40")));
  Set(40001, 64);
  EXPECT_TRUE(gFWriteRegs());
  EXPECT_EQ(WireOf(GetParam()).sent.at(0).size(), 137U);
  EXPECT_EQ(ToHex(Bytes(WireOf(GetParam()).sent[0].begin(), WireOf(GetParam()).sent[0].begin() + 7)),
            "01 10 00 00 00 40 80");
}

TEST_P(RtuFrames, TheStationGoesIntoTheFrame) {
  WireOf(GetParam()).onSend = [this](const Bytes&) {
    WireOf(GetParam()).Reply(WithCheckValue(Hex("FF 03 02 00 00")));
  };
  Settings.ConfiguredLink = static_cast<std::int16_t>(GetParam());
  Settings.StationSetting = 255;
  ASSERT_TRUE(gFLinkOpen());
  Set(40001, 1);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(Sent(GetParam()), "FF 03 00 00 00 01 91 D4");
}

TEST_F(LinkFrames, AReadOverEthernetHasTheSevenByteHeader) {
  Answer(Line::Ethernet, Hex("00 00 00 00 00 07 01 03 04 12 34 FF FE"));
  Set(40012, 2);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(Sent(Line::Ethernet), "00 00 00 00 00 06 01 03 00 0B 00 02");
  EXPECT_EQ(ToHex({CommLink.RxWords.begin(), CommLink.RxWords.begin() + 4}), "34 12 FE FF");
}

TEST_F(LinkFrames, AReadOfAnInputRegisterOverEthernetUsesFunction4) {
  Answer(Line::Ethernet, Hex("00 00 00 00 00 05 01 04 02 12 34"));
  Set(31000, 1);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(Sent(Line::Ethernet), "00 00 00 00 00 06 01 04 03 E7 00 01");
}

TEST_F(LinkFrames, ARequestFor64RegistersOverEthernetSends12BytesAndTakes137) {
  Bytes reply = Hex("00 00 00 00 00 83 01 03 80");
  reply.resize(137, 0x7E);
  Answer(Line::Ethernet, reply);
  Set(40001, 64);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(Sent(Line::Ethernet), "00 00 00 00 00 06 01 03 00 00 00 40");
  EXPECT_EQ(CommLink.ExpectLen, 137);
  EXPECT_EQ(CommLink.RxWords[127], 0x7E);
}

TEST_F(LinkFrames, AWriteOverEthernetTellsItsLength) {
  Answer(Line::Ethernet, Hex("00 00 00 00 00 06 01 10 07 CF 00 02"));
  Set(42000, 2);
  CommLink.TxWords[1] = 0x01;
  CommLink.TxWords[2] = 0xFE;
  CommLink.TxWords[3] = 0xFF;
  EXPECT_TRUE(gFWriteRegs());
  EXPECT_EQ(Sent(Line::Ethernet), "00 00 00 00 00 0B 01 10 07 CF 00 02 04 01 00 FF FE");
  EXPECT_EQ(CommLink.ExpectLen, 12);
}

TEST_F(LinkFrames, AWriteOf64RegistersOverEthernetSends141Bytes) {
  Answer(Line::Ethernet, Hex("00 00 00 00 00 06 01 10 00 00 00 40"));
  Set(40001, 64);
  EXPECT_TRUE(gFWriteRegs());
  EXPECT_EQ(WireOf(Line::Ethernet).sent.at(0).size(), 141U);
  EXPECT_EQ(WireOf(Line::Ethernet).sent[0][5], 135);
}

TEST_F(LinkFrames, TheTransactionNumberGoesUpWithEachFrame) {
  platform.socket.wire.onSend = [this](const Bytes& request) {
    platform.socket.wire.Reply({request[0], request[1], 0, 0, 0, 5, 1, 3, 2, 0, 0});
  };
  OpenLink(Line::Ethernet);
  Set(40001, 1);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(ToHex(platform.socket.wire.sent.at(1)), "00 01 00 00 00 06 01 03 00 00 00 01");
  EXPECT_EQ(CommLink.TransactionNo, 2);
}

TEST_F(LinkFrames, TheTransactionNumberAfter32767Is0) {
  platform.socket.wire.onSend = [this](const Bytes& request) {
    platform.socket.wire.Reply({request[0], request[1], 0, 0, 0, 5, 1, 3, 2, 0, 0});
  };
  OpenLink(Line::Ethernet);
  CommLink.TransactionNo = 32767;
  Set(40001, 1);
  EXPECT_TRUE(gFReadRegs());
  EXPECT_TRUE(gFReadRegs());
  EXPECT_EQ(ToHex(platform.socket.wire.sent.at(0)), "7F FF 00 00 00 06 01 03 00 00 00 01");
  EXPECT_EQ(ToHex(platform.socket.wire.sent.at(1)), "00 00 00 00 00 06 01 03 00 00 00 01");
}

TEST_F(LinkFrames, ConnectingAnewDoesNotResetTheTransactionNumber) {
  CommLink.TransactionNo = 17;
  OpenLink(Line::Ethernet);
  EXPECT_EQ(CommLink.TransactionNo, 17);
}

struct AllLinks : LinkFrames, ::testing::WithParamInterface<Line> {};
INSTANTIATE_TEST_SUITE_P(Links, AllLinks, ::testing::ValuesIn(AllLines),
                         [](const auto& line) { return std::string(LineName(line.param)); });

TEST_P(AllLinks, AWriteToAnInputRegisterSendsNothingAndShowsNothing) {
  OpenLink(GetParam());
  Set(30001, 1);
  EXPECT_FALSE(gFWriteRegs());
  EXPECT_EQ(CommLink.ResultCode, 1);
  EXPECT_TRUE(WireOf(GetParam()).sent.empty());
}

TEST_F(LinkFrames, ARefusedWriteOverEthernetHasConsumedATransactionNumber) {
  OpenLink(Line::Ethernet);
  Set(39999, 1);
  EXPECT_FALSE(gFWriteRegs());
  EXPECT_EQ(CommLink.TransactionNo, 1);
}

TEST_P(AllLinks, AWriteBelow40001IsARunTimeFailure) {
  OpenLink(GetParam());
  Set(40000, 1);
  EXPECT_THROW(static_cast<void>(gFWriteRegs()), RunTimeFailure);
  Set(29999, 1);
  EXPECT_THROW(static_cast<void>(gFWriteRegs()), RunTimeFailure);
  EXPECT_TRUE(WireOf(GetParam()).sent.empty());
}

TEST_P(AllLinks, AWriteBeyondTheAddressesIsARunTimeFailure) {
  OpenLink(GetParam());
  Set(40001 + 65536, 1);
  EXPECT_THROW(static_cast<void>(gFWriteRegs()), RunTimeFailure);
  Set(std::numeric_limits<std::int32_t>::max(), 1);
  EXPECT_THROW(static_cast<void>(gFWriteRegs()), RunTimeFailure);
  Set(std::numeric_limits<std::int32_t>::min(), 1);
  EXPECT_THROW(static_cast<void>(gFWriteRegs()), RunTimeFailure);
}

TEST_P(AllLinks, AReadTakesTheAddressModulo10000) {
  OpenLink(GetParam());
  Set(40000, 1); // nothing lies in front of the first register
  EXPECT_THROW(static_cast<void>(gFReadRegs()), RunTimeFailure);
  Set(-5, 1);
  EXPECT_THROW(static_cast<void>(gFReadRegs()), RunTimeFailure);
}

TEST_P(AllLinks, MoreThan64RegistersAreARunTimeFailure) {
  OpenLink(GetParam());
  for (const std::int16_t count : std::initializer_list<std::int16_t>{65, 125, 32767, -1, -32768}) {
    Set(40001, count);
    EXPECT_THROW(static_cast<void>(gFReadRegs()), RunTimeFailure) << count;
    EXPECT_THROW(static_cast<void>(gFWriteRegs()), RunTimeFailure) << count;
  }
  EXPECT_TRUE(WireOf(GetParam()).sent.empty());
}

TEST_F(LinkFrames, AReplyThatDoesNotFitTheBufferIsARunTimeFailure) {
  TakeReply(Bytes(257, 0x11));
  EXPECT_EQ(CommLink.RecvBuf.back(), 0x11);
  EXPECT_THROW(TakeReply(Bytes(258, 0x22)), RunTimeFailure);
  EXPECT_EQ(CommLink.RecvBuf.front(), 0x11);
}

struct CheckValue : LinkFixture {};

TEST_F(CheckValue, OfAFrameIsModbusCrc16OverAllButItsLastTwoBytes) {
  const Bytes frame = Hex("01 04 00 00 00 10 F1 C6");
  std::copy(frame.begin(), frame.end(), CommLink.SendBuf.begin());
  CommLink.SendLen = 8;
  const std::int32_t check = gFCrc16(1);
  EXPECT_EQ(check & 0xFF, 0xF1);
  EXPECT_EQ(check >> 8 & 0xFF, 0xC6);
}

TEST_F(CheckValue, IsASignedNumber) {
  const Bytes frame = Hex("01 04 00 00 00 10 F1 C6");
  std::copy(frame.begin(), frame.end(), CommLink.SendBuf.begin());
  CommLink.SendLen = 8;
  EXPECT_EQ(gFCrc16(1), 0xC6F1 - 0x10000);
  const Bytes positive = Hex("01 03 00 00 00 40 44 3A");
  std::copy(positive.begin(), positive.end(), CommLink.SendBuf.begin());
  EXPECT_EQ(gFCrc16(1), 0x3A44);
}

TEST_F(CheckValue, TheSelectorChoosesTheBuffer) {
  const Bytes frame = Hex("01 83 02 C0 F1");
  std::copy(frame.begin(), frame.end(), CommLink.RecvBuf.begin());
  CommLink.RecvLen = 5;
  EXPECT_EQ(gFCrc16(0) & 0xFFFF, 0xF1C0);
  EXPECT_EQ(gFCrc16(1), -1); // the other buffer is empty
}

// The rule as it is told for a signed register, step by step.
std::int32_t CheckValueBySignedSteps(const Bytes& bytes) {
  std::int32_t check = -1;
  for (const std::uint8_t byte : bytes) {
    check ^= byte;
    for (int shift = 0; shift < 8; ++shift) {
      const bool bit0 = (check & 1) != 0;
      const bool negative = check < 0;
      check &= 32767;
      check /= 2;
      check |= negative ? 16384 : 0;
      if (bit0) {
        check ^= -24575;
      }
    }
  }
  return check;
}

TEST_F(CheckValue, AgreesWithTheSignedStepsForEveryByte) {
  for (int value = 0; value < 256; ++value) {
    const Bytes frame{static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(255 - value), 0x5A};
    std::copy(frame.begin(), frame.end(), CommLink.SendBuf.begin());
    CommLink.SendLen = 5;
    EXPECT_EQ(gFCrc16(1), CheckValueBySignedSteps(frame)) << value;
  }
}

} // namespace
} // namespace loader::test
