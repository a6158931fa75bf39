// Requests and replies byte for byte, and the cutting of a stream of bytes into requests.
#include "simulator/ModbusSlave.h"

#include <gmock/gmock.h>

#include "simulator/CheckValue.h"
#include "simulator/Framer.h"

namespace loader::simulator {
namespace {

Bytes Rtu(Bytes bytes) {
  const std::uint16_t check = CheckValue(bytes);
  bytes.push_back(static_cast<std::uint8_t>(check & 0xFF));
  bytes.push_back(static_cast<std::uint8_t>(check >> 8));
  return bytes;
}

class TcpSlave : public testing::Test {
protected:
  RegisterMemory memory;
  ModbusSlave slave{Line::Tcp, 1};

  Bytes Reply(const Bytes& request) { return slave.Answer(request, memory).reply; }
};

TEST_F(TcpSlave, ReadsHoldingRegistersByFunction3) {
  memory.At(44001) = 0x1234;
  memory.At(44002) = 0xABCD;

  EXPECT_EQ(Reply({0x00, 0x07, 0, 0, 0, 6, 1, 3, 0x0F, 0xA0, 0, 2}),
            (Bytes{0x00, 0x07, 0, 0, 0, 7, 1, 3, 4, 0x12, 0x34, 0xAB, 0xCD}));
}

TEST_F(TcpSlave, ReadsInputRegistersByFunction4) {
  memory.At(30001) = 0x4F4B;
  memory.At(40001) = 0x1111;

  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 1, 4, 0, 0, 0, 1}), (Bytes{0, 1, 0, 0, 0, 5, 1, 4, 2, 0x4F, 0x4B}));
}

TEST_F(TcpSlave, WritesRegistersByFunction16) {
  EXPECT_EQ(Reply({0, 2, 0, 0, 0, 11, 1, 16, 0, 10, 0, 2, 4, 0, 1, 0, 25}),
            (Bytes{0, 2, 0, 0, 0, 6, 1, 16, 0, 10, 0, 2}));
  EXPECT_EQ(memory.At(40011), 1);
  EXPECT_EQ(memory.At(40012), 25);
}

TEST_F(TcpSlave, WritesOneRegisterByFunction6) {
  EXPECT_EQ(Reply({0, 3, 0, 0, 0, 6, 1, 6, 0, 0, 0xFF, 0xFE}),
            (Bytes{0, 3, 0, 0, 0, 6, 1, 6, 0, 0, 0xFF, 0xFE}));
  EXPECT_EQ(memory.At(40001), 0xFFFE);
}

TEST_F(TcpSlave, AnswersEveryStation) {
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 99, 4, 0, 0, 0, 1}).at(6), 99);
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 0, 4, 0, 0, 0, 1}).at(6), 0);
}

TEST_F(TcpSlave, RefusesAnotherFunction) {
  for (const std::uint8_t function : Bytes{1, 2, 5, 7, 8, 11, 15, 17, 22, 23, 43, 100}) {
    const ModbusAnswer answer = slave.Answer(Bytes{0, 1, 0, 0, 0, 6, 1, function, 0, 0, 0, 1}, memory);
    if (answer.damaged) {
      EXPECT_TRUE(function == 15 || function == 22 || function == 23) << "longer than these requests are";
      continue;
    }
    EXPECT_EQ(answer.exception, 1) << int{function};
    EXPECT_EQ(answer.reply, (Bytes{0, 1, 0, 0, 0, 3, 1, static_cast<std::uint8_t>(function | 0x80), 1}));
  }
  EXPECT_EQ(memory, RegisterMemory{});
}

TEST_F(TcpSlave, RefusesAnAddressOutsideOfTheTables) {
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 1, 3, 0x27, 0x0E, 0, 1}).size(), 11U) << "49999";
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 1, 3, 0x27, 0x0F, 0, 1}), (Bytes{0, 1, 0, 0, 0, 3, 1, 0x83, 2}))
      << "50000";
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 1, 4, 0x27, 0x0E, 0, 2}), (Bytes{0, 1, 0, 0, 0, 3, 1, 0x84, 2}));
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 9, 1, 16, 0x27, 0x0F, 0, 1, 2, 0, 1}),
            (Bytes{0, 1, 0, 0, 0, 3, 1, 0x90, 2}));
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 1, 6, 0x27, 0x0F, 0, 1}), (Bytes{0, 1, 0, 0, 0, 3, 1, 0x86, 2}));
}

TEST_F(TcpSlave, RefusesACountThatModbusDoesNotAllow) {
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 1, 3, 0, 0, 0, 126}), (Bytes{0, 1, 0, 0, 0, 3, 1, 0x83, 3}));
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 1, 3, 0, 0, 0, 0}), (Bytes{0, 1, 0, 0, 0, 3, 1, 0x83, 3}));
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 1, 3, 0, 0, 0, 125}).size(), 9U + 250U);
}

TEST_F(TcpSlave, GoesOnAfterADamagedRequest) {
  EXPECT_TRUE(slave.Answer(Bytes{0, 1, 0, 0, 0, 2, 1, 3}, memory).damaged) << "a read without an address";
  EXPECT_TRUE(slave.Answer(Bytes{0, 1, 0, 0, 0, 9, 1, 16, 0, 0, 0, 4, 8, 1, 1}, memory).damaged)
      << "data missing";
  EXPECT_EQ(memory.At(40001), 0);
  EXPECT_EQ(Reply({0, 1, 0, 0, 0, 6, 1, 4, 0, 0, 0, 1}).size(), 11U);
}

TEST_F(TcpSlave, RefusingLeavesTheMemoryAlone) {
  const ModbusAnswer answer = slave.Refuse(Bytes{0, 3, 0, 0, 0, 6, 1, 6, 0, 0, 0, 9});

  EXPECT_EQ(answer.reply, (Bytes{0, 3, 0, 0, 0, 3, 1, 0x86, 4}));
  EXPECT_EQ(answer.exception, 4);
  EXPECT_EQ(memory, RegisterMemory{});
}

class RtuSlave : public testing::Test {
protected:
  RegisterMemory memory;
  ModbusSlave slave{Line::Rtu, 1};
};

TEST_F(RtuSlave, AnswersWithACheckValue) {
  memory.At(40001) = 0x1234;

  EXPECT_EQ(slave.Answer(Rtu({1, 3, 0, 0, 0, 1}), memory).reply, Rtu({1, 3, 2, 0x12, 0x34}));
}

TEST_F(RtuSlave, StoresForTheFrameOfTheStoreCommand) {
  const Bytes command = {0x01, 0x10, 0x00, 0x00, 0x00, 0x01, 0x02, 0x00, 0x01, 0x67, 0x90};

  EXPECT_EQ(slave.Answer(command, memory).reply, (Bytes{0x01, 0x10, 0x00, 0x00, 0x00, 0x01, 0x01, 0xC9}));
  EXPECT_EQ(memory.At(40001), 1);
}

TEST_F(RtuSlave, IsSilentForAnotherStationAndAnswersTheNextRequest) {
  const ModbusAnswer other = slave.Answer(Rtu({2, 3, 0, 0, 0, 1}), memory);

  EXPECT_TRUE(other.reply.empty());
  EXPECT_FALSE(other.damaged);
  EXPECT_EQ(other.silence, "it is for another station");
  EXPECT_EQ(slave.Answer(Rtu({1, 3, 0, 0, 0, 1}), memory).reply.size(), 7U);
}

TEST_F(RtuSlave, ObeysABroadcastInSilence) {
  const ModbusAnswer answer = slave.Answer(Rtu({0, 6, 0, 0, 0, 9}), memory);

  EXPECT_TRUE(answer.reply.empty());
  EXPECT_TRUE(answer.broadcast);
  EXPECT_EQ(memory.At(40001), 9);
}

TEST_F(RtuSlave, IsSilentForADamagedRequest) {
  Bytes request = Rtu({1, 6, 0, 0, 0, 9});
  request.back() ^= 1;

  const ModbusAnswer answer = slave.Answer(request, memory);

  EXPECT_TRUE(answer.reply.empty());
  EXPECT_TRUE(answer.damaged);
  EXPECT_EQ(memory.At(40001), 0);
  EXPECT_EQ(slave.Answer(Rtu({1, 3, 0, 0, 0, 1}), memory).reply.size(), 7U);
}

TEST_F(RtuSlave, RefusesAFunctionOfUnknownLength) {
  EXPECT_EQ(slave.Answer(Rtu({1, 43, 14, 1, 0}), memory).reply, Rtu({1, 0xAB, 1}));
  EXPECT_TRUE(slave.Answer(Rtu({2, 43, 14, 1, 0}), memory).reply.empty()) << "of another station";
}

TEST_F(RtuSlave, TakesAnyBytesAsDamaged) {
  for (std::size_t length = 0; length < 300; ++length) {
    EXPECT_TRUE(slave.Answer(Bytes(length, 0x41), memory).reply.empty()) << length;
  }
}

TEST(Requests, TellWhatTheyTouch) {
  const Request read = ParseRequest(Line::Tcp, Bytes{0, 1, 0, 0, 0, 6, 7, 4, 0, 100, 0, 16});
  EXPECT_EQ(read.station, 7);
  EXPECT_TRUE(read.IsRead());
  EXPECT_EQ(read.address, 30101);
  EXPECT_EQ(read.count, 16);

  const Request write = ParseRequest(Line::Rtu, Rtu({1, 16, 0, 10, 0, 6, 12}));
  EXPECT_TRUE(write.IsWrite());
  EXPECT_EQ(write.address, 40011);
  EXPECT_EQ(write.count, 6);

  const Request single = ParseRequest(Line::Rtu, Rtu({1, 6, 0, 10, 0, 6}));
  EXPECT_TRUE(single.IsWrite());
  EXPECT_EQ(single.count, 1);

  EXPECT_EQ(ParseRequest(Line::Rtu, Bytes{1, 43}).address, 0);
  EXPECT_EQ(ParseRequest(Line::Rtu, Bytes{}).function, 0);
}

TEST(RequestLengths, AreToldByTheFunction) {
  EXPECT_EQ(RtuRequestLength(Bytes{1, 3}), 8U);
  EXPECT_EQ(RtuRequestLength(Bytes{1, 6, 0}), 8U);
  EXPECT_EQ(RtuRequestLength(Bytes{1, 16, 0, 0, 0, 6, 12}), 21U);
  EXPECT_EQ(RtuRequestLength(Bytes{1, 16, 0, 0, 0, 6}), std::nullopt) << "not told yet";
  EXPECT_EQ(RtuRequestLength(Bytes{1}), std::nullopt);
  EXPECT_EQ(RtuRequestLength(Bytes{1, 17}), 4U);
  EXPECT_EQ(RtuRequestLength(Bytes{1, 23, 0, 0, 0, 1, 0, 0, 0, 1, 2}), 15U);
  EXPECT_EQ(RtuRequestLength(Bytes{1, 43, 14, 1, 0, 0, 0, 0, 0, 0, 0}), std::nullopt) << "not told at all";
}

TEST(FramerOfTcp, CutsRequestsOutOfAStream) {
  Framer framer(Line::Tcp);
  const Bytes first = {0, 1, 0, 0, 0, 6, 1, 3, 0, 0, 0, 1};
  const Bytes second = {0, 2, 0, 0, 0, 9, 1, 16, 0, 0, 0, 1, 2, 0, 1};
  Bytes stream = first;
  stream.insert(stream.end(), second.begin(), second.end());
  std::vector<Bytes> requests;
  for (const std::uint8_t byte : stream) { // as it comes in the worst case
    framer.Feed({&byte, 1});
    while (auto request = framer.Next()) {
      requests.push_back(*request);
    }
  }
  EXPECT_EQ(requests, (std::vector<Bytes>{first, second}));
  EXPECT_FALSE(framer.Waits());
  EXPECT_FALSE(framer.Lost());
}

TEST(FramerOfTcp, IsLostWhereNoRequestCanBegin) {
  for (const Bytes& wrong : {Bytes{0, 1, 0, 1, 0, 6}, Bytes{0, 1, 1, 0, 0, 6}, Bytes{0, 1, 0, 0, 0, 1},
                             Bytes{0, 1, 0, 0, 0, 255}, Bytes{'G', 'E', 'T', ' ', '/', ' '}}) {
    Framer framer(Line::Tcp);
    framer.Feed(wrong);
    EXPECT_EQ(framer.Next(), std::nullopt);
    EXPECT_TRUE(framer.Lost());
  }
}

TEST(FramerOfRtu, CutsRequestsOfKnownLength) {
  Framer framer(Line::Rtu);
  const Bytes read = Rtu({1, 3, 0, 0, 0, 1});
  framer.Feed(read);
  framer.Feed({read.data(), 5});

  EXPECT_EQ(framer.Next(), read);
  EXPECT_EQ(framer.Next(), std::nullopt);
  EXPECT_TRUE(framer.Waits());
  EXPECT_EQ(framer.TakeRest(), Bytes(read.begin(), read.begin() + 5));
  EXPECT_FALSE(framer.Waits());
}

} // namespace
} // namespace loader::simulator
