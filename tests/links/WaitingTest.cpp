// A wait costs no processor time: the program sleeps until the byte that completes the reply.
#include <QElapsedTimer>

#include "tests/links/RealLink.h"
#include "tests/support/ProcessorTime.h"

namespace loader::test {
namespace {

constexpr double MostOfOneCore = 0.02;

struct Waiting : RealLink, testing::WithParamInterface<Line> {
  // One request that is answered that late, or byte by byte; the share of one core that waiting for it takes.
  double ShareOfARequest(std::vector<std::string> fault) {
    StartRecorder("KOV", "V40A", std::move(fault));
    StartLoader("KOV", GetParam());
    EXPECT_TRUE(gFLinkOpen());
    CommLink.RegAddress = 30001;
    CommLink.RegCount = 16;
    QElapsedTimer elapsed;
    elapsed.start();
    const double before = ProcessorMs();
    EXPECT_TRUE(gFReadRegs());
    const double used = ProcessorMs() - before;
    waited = static_cast<double>(elapsed.nsecsElapsed()) / 1e6;
    gFLinkClose();
    return used / waited;
  }
  double waited = 0;
};
INSTANTIATE_TEST_SUITE_P(All, Waiting, testing::ValuesIn(AllLines),
                         [](const auto& row) { return std::string(LineName(row.param)); });

TEST_P(Waiting, ForALateReplyTakesNoProcessor) {
  EXPECT_LT(ShareOfARequest({"--fault", "late@1", "--late", "800"}), MostOfOneCore);
  EXPECT_GE(waited, 800);
}

TEST_P(Waiting, ForAReplyThatComesByteByByteTakesHardlyMore) {
  EXPECT_LT(ShareOfARequest({"--fault", "trickle@1"}), MostOfOneCore);
  EXPECT_GE(waited, 36 * 20); // 37 bytes on RTU, 41 on TCP
}

} // namespace
} // namespace loader::test
