#include "comm/BulkRead.h"

#include "core/TextTable.h"
#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

struct ReadFlow : RecorderFixture {};

TEST_F(ReadFlow, TakesTheRecordersSetUpIntoTheStoreAndShowsIt) {
  Start("KOV", "V40A");
  Configure(Line::Ethernet);
  recorder.PutText(44001, "TC-101", 16);
  recorder.Register(44001 + 8) = 20;
  recorder.PutText(40321, "m3/h", 8);
  platform.ExpectBox(20104);

  ReadFromRecorder(window);

  EXPECT_EQ(TextOf("C", 0, "TAG"), "TC-101");
  EXPECT_EQ(Number("C", 0, "TYPE"), 20);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "refresh", "enabled"}));
  EXPECT_EQ(platform.socket.state, 0);
}

} // namespace
} // namespace loader::test
