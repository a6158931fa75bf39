#include "devices/DeviceNamesWindows.h"

#include <gtest/gtest.h>

#include <array>

#include "devices/DeviceNames.h"
#include "tests/devices/SerialLine.h"

namespace loader::test {
namespace {

TEST(DeviceNames, APortOfTheProgramIsTheSystemsOfThatNumber) {
  EXPECT_EQ(QStringLiteral("COM1"), SerialPortPath("folder", 1));
  EXPECT_EQ(QStringLiteral("COM16"), SerialPortPath("folder", 16));
}

TEST(DeviceNames, ANumberIsThatOfAComPortOrNone) {
  EXPECT_EQ(3, ComNumber(u"COM3"));
  EXPECT_EQ(256, ComNumber(u"COM256"));
  for (const char16_t* name : {u"", u"COM", u"LPT1", u"COM-1", u"COM1x", u"xCOM1", u"COM999999999999"}) {
    EXPECT_EQ(0, ComNumber(name)) << QString::fromUtf16(name).toStdString();
  }
}

TEST(DeviceNames, TheFirstIsTheOneWithTheLowestNumber) {
  const std::array<std::u16string, 4> names{u"COM12", u"LPT1", u"COM3", u"COM20"};
  EXPECT_EQ(u"COM3", FirstComPort(names));
  EXPECT_EQ(u"COM12", FirstComPort(std::span(names).first(2)));
  EXPECT_EQ(u"", FirstComPort(std::span(names).subspan(1, 1)));
  EXPECT_EQ(u"", FirstComPort({}));
}

TEST(DeviceNames, UsbIsThePortOfAUsbDeviceThatIsPluggedIn) {
  EXPECT_EQ(QString(), UsbPath("folder"));
  {
    const SerialLine notUsb("folder", "COM2");
    EXPECT_EQ(QString(), UsbPath("folder"));
    const SerialLine usb("folder", "USB");
    EXPECT_EQ(usb.Device(), UsbPath("folder").toStdString());
  }
  EXPECT_EQ(QString(), UsbPath("folder"));
}

} // namespace
} // namespace loader::test
