// Every kind of fault as a client on a pseudo-terminal sees it, byte for byte.
//
// The second request of each connection goes without a fault: its reply shows where the faulty one ends.
#include "tests/simulator/WireCase.h"

namespace loader::simulator {
namespace {

const Bytes RtuRequest = {1, 4, 0, 0, 0, 2, 0x71, 0xCB};
const Bytes RtuReply = {1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56, 0x00, 0x28};

class RtuWire : public testing::TestWithParam<WireCase> {};

INSTANTIATE_TEST_SUITE_P(
    OfEveryFault, RtuWire,
    testing::Values(
        WireCase{"no-reply", {}, After::GoesOn}, WireCase{"late", RtuReply, After::GoesOn},
        WireCase{"error", {1, 0x84, 4, 0x42, 0xC3}, After::GoesOn},
        WireCase{"truncated", {1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56}, After::GoesOn},
        WireCase{"two-more", {1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56, 0x00, 0x28, 0x55, 0xAA}, After::GoesOn},
        WireCase{"crc-one", {1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56, 0x00, 0xD7}, After::GoesOn},
        WireCase{"crc-both", {1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56, 0xFF, 0xD7}, After::GoesOn},
        WireCase{"wrong-station", {2, 4, 4, 0x4F, 0x4B, 0x2D, 0x56, 0x33, 0x28}, After::GoesOn},
        WireCase{"wrong-function", {1, 5, 4, 0x4F, 0x4B, 0x2D, 0x56, 0x01, 0xF9}, After::GoesOn},
        WireCase{"wrong-transaction", RtuReply, After::GoesOn}, WireCase{"trickle", RtuReply, After::GoesOn},
        WireCase{"split", RtuReply, After::GoesOn},
        WireCase{"garbage", {0xFF, 0x00, 0x5A, 1, 4, 4, 0x4F, 0x4B, 0x2D, 0x56, 0x00, 0x28}, After::GoesOn},
        WireCase{"close-before", {}, After::Ends}, WireCase{"close-middle", {1, 4, 4, 0x4F}, After::Ends},
        WireCase{"reset", {}, After::Ends}),
    NameOf);

TEST_P(RtuWire, CarriesExactlyTheseBytes) {
  const TestFolder folder;
  const RunningSimulator simulator(Arguments(GetParam().kind, {"--rtu", folder / "COM1"}));
  RawClient client = RawClient::Rtu(folder / "COM1");
  const std::filesystem::path device = std::filesystem::read_symlink(folder / "COM1");

  client.Send(RtuRequest);

  if (GetParam().after == After::GoesOn) {
    client.Send(RtuRequest);
    const Bytes expected = GetParam().reply + RtuReply;
    EXPECT_EQ(client.Receive(expected.size()), expected);
    return;
  }
  EXPECT_EQ(client.ReceiveToEnd(), GetParam().reply);
  EXPECT_NE(std::filesystem::read_symlink(folder / "COM1"), device) << "the line is back under its name";
  RawClient next = RawClient::Rtu(folder / "COM1");
  next.Send(RtuRequest);
  EXPECT_EQ(next.Receive(RtuReply.size()), RtuReply);
}

} // namespace
} // namespace loader::simulator
