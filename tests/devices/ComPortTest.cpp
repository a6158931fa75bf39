// What of a COM port no line of a test can show, and what its wait takes without an event loop.
#include "devices/ComPort.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <utility>
#include <vector>

#include "platform/RunTimeFailure.h"
#include "tests/devices/SerialLine.h"

namespace loader::test {
namespace {

constexpr SerialSettings Usual{19200, Parity::Odd, 8, 1};

std::u16string Name(const SerialLine& line) {
  return {line.Device().begin(), line.Device().end()};
}

struct ComPorts : testing::Test {
  ComPorts() {
    WhenDeviceFails = [this](std::u16string_view device, std::u16string_view reason) {
      told.emplace_back(device, reason);
    };
  }
  ~ComPorts() override { WhenDeviceFails = {}; }

  std::vector<std::pair<std::u16string, std::u16string>> told;
};

TEST(ComPortNames, APortAboveNineNeedsThePrefixAndAllGetIt) {
  EXPECT_EQ(u"\\\\.\\COM1", DeviceNameOf(u"COM1"));
  EXPECT_EQ(u"\\\\.\\COM12", DeviceNameOf(u"COM12"));
  EXPECT_EQ(u"\\\\.\\COM12", DeviceNameOf(u"\\\\.\\COM12"));
}

TEST(ComPortReasons, AreTheSystemsWithoutALineEnd) {
  const std::u16string reason = SystemReason(ERROR_ACCESS_DENIED);
  ASSERT_FALSE(reason.empty());
  EXPECT_GT(reason.back(), u' ');
  EXPECT_NE(reason, SystemReason(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(u"error 536870911", SystemReason(0x1FFFFFFF)); // no system has words for it
}

// A port that another program has open is refused by the system in the same way as this file.
TEST_F(ComPorts, ADeviceInUseIsRefusedWithTheSystemsReason) {
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "loader-in-use";
  std::ofstream(path).put('x');
  const HANDLE other =
      CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, other);
  const std::u16string device = u"\\\\?\\" + path.u16string();
  EXPECT_THROW(ComPort(device, Usual, false), RunTimeFailure);
  CloseHandle(other);
  ASSERT_EQ(1U, told.size());
  EXPECT_EQ(device, told[0].first);
  EXPECT_EQ(SystemReason(ERROR_SHARING_VIOLATION), told[0].second);
}

TEST_F(ComPorts, WhatIsNoSerialPortIsRefusedAndLetGo) {
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "loader-no-port";
  std::ofstream(path).put('x');
  EXPECT_THROW(ComPort(u"\\\\?\\" + path.u16string(), Usual, false), RunTimeFailure);
  EXPECT_EQ(1U, told.size());
  EXPECT_TRUE(std::filesystem::remove(path)); // an open file can't be removed
}

TEST_F(ComPorts, AWaitEndsOnTheByteAndNotBefore) {
  const SerialLine line;
  ComPort port(Name(line), Usual, false);
  EXPECT_EQ(WAIT_TIMEOUT, WaitForSingleObject(port.Arrived(), 0));
  EXPECT_FALSE(port.WaitForBytes(50));
  const std::uint8_t byte = 7;
  line.Send(std::span(&byte, 1));
  EXPECT_TRUE(port.WaitForBytes(10'000));
  EXPECT_EQ(Bytes{7}, port.Take(5));
  EXPECT_EQ(WAIT_TIMEOUT, WaitForSingleObject(port.Arrived(), 0));
}

TEST_F(ComPorts, AReadUnderWayDoesNotHoldUpTheClosing) {
  const SerialLine line;
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 10; ++i) {
    const ComPort port(Name(line), Usual, false);
    EXPECT_FALSE(port.Lost());
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_TRUE(told.empty());
}

TEST_F(ComPorts, APortIsLeftAsItWasFound) {
  const SerialLine line;
  const std::string before = line.Settings();
  { const ComPort port(Name(line), {9600, Parity::Odd, 8, 2}, true); }
  EXPECT_EQ(before, line.Settings());
}

TEST_F(ComPorts, ALineThatIsUnpluggedEndsTheWaitAndIsToldOnce) {
  SerialLine line;
  ComPort port(Name(line), Usual, false);
  line.Unplug();
  EXPECT_FALSE(port.WaitForBytes(10'000));
  EXPECT_TRUE(port.Lost());
  EXPECT_EQ(WAIT_TIMEOUT, WaitForSingleObject(port.Arrived(), 0));
  EXPECT_FALSE(port.WaitUntilWritten(10'000));
  EXPECT_FALSE(port.WaitForBytes(10'000));
  EXPECT_THROW(port.Write(Bytes{1}), RunTimeFailure);
  ASSERT_EQ(1U, told.size());
  EXPECT_EQ(Name(line), told[0].first);
}

} // namespace
} // namespace loader::test
