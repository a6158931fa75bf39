// Every kind of fault as a client sees it on the wire, byte for byte.
//
// The second request of each connection goes without a fault: its reply shows where the faulty one ends.
#include "tests/simulator/WireCase.h"

namespace loader::simulator {
namespace {

// Two registers of the identity of KOV, "KO" and "V-": 4F4B 2D56 on the wire, the first byte in the low one.
const Bytes TcpRequest = {0, 1, 0, 0, 0, 6, 1, 4, 0, 0, 0, 2};
const Bytes TcpNext = {0, 2, 0, 0, 0, 6, 1, 4, 0, 0, 0, 2};
const Bytes TcpNextReply = {0, 2, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56};

class TcpWire : public testing::TestWithParam<WireCase> {};

INSTANTIATE_TEST_SUITE_P(
    OfEveryFault, TcpWire,
    testing::Values(
        WireCase{"no-reply", {}, After::GoesOn},
        WireCase{"late", {0, 1, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{"error", {0, 1, 0, 0, 0, 3, 1, 0x84, 4}, After::GoesOn},
        WireCase{"truncated", {0, 1, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B}, After::GoesOn},
        WireCase{"two-more", {0, 1, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56, 0x55, 0xAA}, After::GoesOn},
        WireCase{"crc-one", {0, 1, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{"crc-both", {0, 1, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{"wrong-station", {0, 1, 0, 0, 0, 7, 2, 4, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{"wrong-function", {0, 1, 0, 0, 0, 7, 1, 5, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{"wrong-transaction", {0, 2, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{"trickle", {0, 1, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{"split", {0, 1, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{
            "garbage", {0xFF, 0x00, 0x5A, 0, 1, 0, 0, 0, 7, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{"close-before", {}, After::Ends}, WireCase{"close-middle", {0, 1, 0, 0, 0, 7}, After::Ends},
        WireCase{"reset", {}, After::IsReset}),
    NameOf);

TEST_P(TcpWire, CarriesExactlyTheseBytes) {
  const RunningSimulator simulator(Arguments(GetParam().kind, {"--tcp", "0"}));
  RawClient client = RawClient::Tcp(simulator.Port());

  client.Send(TcpRequest);

  if (GetParam().after == After::GoesOn) {
    client.Send(TcpNext);
    const Bytes expected = GetParam().reply + TcpNextReply;
    EXPECT_EQ(client.Receive(expected.size()), expected);
    return;
  }
  EXPECT_EQ(client.ReceiveToEnd(), GetParam().reply);
  EXPECT_EQ(client.WasReset(), GetParam().after == After::IsReset);
  RawClient next = RawClient::Tcp(simulator.Port());
  next.Send(TcpNext);
  EXPECT_EQ(next.Receive(TcpNextReply.size()), TcpNextReply);
}

TEST(Wire, OfEveryFaultIsTested) {
  // One row for each kind in the table above and in that of RTU lines.
  EXPECT_EQ(FaultKinds().size(), 16U);
}

} // namespace
} // namespace loader::simulator
