#include "devices/SerialSettings.h"

#include <gtest/gtest.h>

namespace loader::test {
namespace {

TEST(SerialSettingsText, TakesBaudParityDataAndStopBits) {
  const auto settings = ParseSerialSettings("19200,O,8,1");
  ASSERT_TRUE(settings);
  EXPECT_EQ(19200, settings->baud);
  EXPECT_EQ(Parity::Odd, settings->parity);
  EXPECT_EQ(8, settings->dataBits);
  EXPECT_EQ(1, settings->stopBits);
  EXPECT_EQ(Parity::Even, ParseSerialSettings("9600,e,7,2")->parity);
  EXPECT_EQ(2, ParseSerialSettings("9600,N,7,2")->stopBits);
}

TEST(SerialSettingsText, RefusesWhatSaysNothing) {
  for (const char* text : {"", "19200", "19200,O,8", "19200,O,8,1,1", "x,O,8,1", "0,O,8,1", "-1,O,8,1",
                           "19200,X,8,1", "19200,O,9,1", "19200,O,8,3", "19200,O,8,", "99999999999,N,8,1"}) {
    EXPECT_FALSE(ParseSerialSettings(text)) << text;
  }
}

} // namespace
} // namespace loader::test
