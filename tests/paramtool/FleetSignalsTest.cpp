#include "paramtool/FleetSignals.h"

#include <csignal>
#include <gtest/gtest.h>

namespace loader::test {
namespace {

TEST(FleetSignals, DoAfterwardsWhatTheyDidBefore) {
  struct sigaction before {};
  sigaction(SIGINT, nullptr, &before);
  struct sigaction meanwhile {};
  {
    const paramtool::FleetSignals signals([] {});
    sigaction(SIGINT, nullptr, &meanwhile);
  }
  struct sigaction after {};
  sigaction(SIGINT, nullptr, &after);
  EXPECT_NE(before.sa_handler, meanwhile.sa_handler);
  EXPECT_EQ(before.sa_handler, after.sa_handler);
}

} // namespace
} // namespace loader::test
