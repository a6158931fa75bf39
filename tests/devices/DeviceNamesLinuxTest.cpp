#include "devices/DeviceNamesLinux.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <fstream>

namespace loader::test {
namespace {

struct DeviceNames : testing::Test {
  QTemporaryDir folder;
  QTemporaryDir devices;
  std::filesystem::path Program() { return folder.path().toStdString(); }
  std::filesystem::path System() { return devices.path().toStdString(); }
};

TEST_F(DeviceNames, APortIsTheSystemsOwnWithoutAnEntry) {
  EXPECT_EQ(QStringLiteral("/dev/ttyS0"), SerialPortPath(Program(), 1));
  EXPECT_EQ(QStringLiteral("/dev/ttyS4"), SerialPortPath(Program(), 5));
}

TEST_F(DeviceNames, AnEntryOfTheProgramFolderComesFirst) {
  std::ofstream(System() / "device").put('x');
  std::filesystem::create_symlink(System() / "device", Program() / "COM2");
  EXPECT_EQ((System() / "device").string(), SerialPortPath(Program(), 2).toStdString());
}

TEST_F(DeviceNames, AnEntryWhoseDeviceIsGoneStandsForNoOther) {
  std::filesystem::create_symlink(System() / "gone", Program() / "COM2");
  EXPECT_EQ((Program() / "COM2").string(), SerialPortPath(Program(), 2).toStdString());
}

TEST_F(DeviceNames, UsbIsTheFirstDeviceOfItsClass) {
  EXPECT_EQ(QString(), UsbPath(Program(), System()));
  for (const char* name : {"ttyACM1", "ttyACM0", "ttyUSB0"}) {
    std::ofstream(System() / name).put('x');
  }
  EXPECT_EQ((System() / "ttyACM0").string(), UsbPath(Program(), System()).toStdString());
}

TEST_F(DeviceNames, TheEntryUsbComesFirst) {
  std::ofstream(System() / "ttyACM0").put('x');
  std::ofstream(System() / "other").put('x');
  std::filesystem::create_symlink(System() / "other", Program() / "USB");
  EXPECT_EQ((System() / "other").string(), UsbPath(Program(), System()).toStdString());
}

} // namespace
} // namespace loader::test
