// The screen of the measuring channels: loading, what can be used, "適用" and its partial write.
#include <gtest/gtest.h>

#include "tests/channelscreens/Desk.h"

namespace loader::test {
namespace {

TEST(ChSetting, ShowsTheChannelAsTheStoreHoldsIt) {
  Desk desk;
  desk.Open(2);
  EXPECT_EQ("3", ToUtf8(desk.screen->browsing.number.text));
  EXPECT_EQ("CH 03", desk.Shown("txtChannelTag"));
  EXPECT_EQ(1, desk.Row("cmbInputType"));
  EXPECT_EQ("0.0", desk.Shown("txtStMin"));
  EXPECT_EQ("500.0", desk.Shown("txtStMax"));
  EXPECT_EQ("500.0", desk.Shown("txtIndMax"));
  EXPECT_EQ("゜C", desk.Caption("lblSelUnit"));
  EXPECT_EQ("ﾁｬﾈﾙ3 = ﾁｬﾈﾙ3 - 設定ﾁｬﾈﾙ", desk.Caption("lblSUB"));
}

TEST(ChSetting, AppliesNothingWithoutAChange) {
  for (const std::string_view model : {"KOV", "RUG"}) {
    Desk desk(model);
    for (int channel = 0; channel < Profile.ChannelCount; ++channel) {
      const auto before = AllNumbers();
      desk.Open(channel);
      EXPECT_TRUE(desk.Apply());
      EXPECT_EQ(before, AllNumbers()) << channel;
    }
  }
}

} // namespace
} // namespace loader::test
