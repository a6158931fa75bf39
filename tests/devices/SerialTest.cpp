// MSComm1 and USBOCX1 over lines of the test's own.
#include <QElapsedTimer>
#include <array>
#include <numeric>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "devices/QtSerial.h"
#include "platform/RunTimeFailure.h"
#include "tests/devices/DeviceTest.h"
#include "tests/devices/TestSystem.h"

namespace loader::test {
namespace {

// serial port

struct Serial : DeviceTest {
  SerialLine line{Folder(), "COM1"};
  SerialControl& port = ThePlatform().MSComm1;
  void LoseTheDevice() {
    line.Unplug();
    ASSERT_TRUE(Until([&] {
      try {
        return port.InBufferCount() < 0;
      } catch (const RunTimeFailure&) {
        return true;
      }
    }));
  }
};

TEST_F(Serial, OpensALineWithOddParity) {
  EXPECT_FALSE(port.PortOpen());
  port.SetPortOpen(true);
  EXPECT_TRUE(port.PortOpen());
  port.SetPortOpen(false);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(Serial, TheLineIsSetAsTheSettingsSay) {
  for (const auto& [settings, handshaking, set] :
       {std::tuple{"19200,O,8,1", 0, "19200 odd"}, std::tuple{"9600,N,8,2", 0, "9600 two"},
        std::tuple{"38400,E,8,1", 2, "38400 handshake"}}) {
    port.Settings = settings;
    port.Handshaking = handshaking;
    port.SetPortOpen(true);
    EXPECT_EQ(set, line.Settings()) << settings;
    port.SetPortOpen(false);
  }
}

TEST_F(Serial, APortOfTwoDigitsIsThatPort) {
  const SerialLine twelve(Folder(), "COM12");
  port.CommPort = 12;
  port.SetPortOpen(true);
  port.Output(Bytes{5});
  EXPECT_EQ(Bytes{5}, twelve.Receive(1));
}

TEST_F(Serial, FramesGoOutOneAfterTheOther) {
  port.SetPortOpen(true);
  Bytes frame = AllBytes();
  for (std::uint8_t i = 0; i < 4; ++i) {
    frame[0] = i;
    port.Output(frame);
  }
  port.Output({});
  const Bytes all = line.Receive(1024);
  for (std::uint8_t i = 0; i < 4; ++i) {
    EXPECT_EQ(i, all[256U * i]);
    EXPECT_EQ(255, all[256U * i + 255]);
  }
}

TEST_F(Serial, OpensAgainAfterItWasClosed) {
  for (std::uint8_t i = 0; i < 3; ++i) {
    port.SetPortOpen(true);
    port.Output(Bytes{i});
    EXPECT_EQ(Bytes{i}, line.Receive(1));
    line.Send(Bytes{i});
    ASSERT_TRUE(Until([&] { return port.InBufferCount() == 1; }));
    EXPECT_EQ(Bytes{i}, port.Input());
    port.SetPortOpen(false);
  }
}

TEST_F(Serial, APortInUseIsRefusedAndToldUntilItIsFree) {
  if (!PortsAreForOneProgram()) {
    GTEST_SKIP() << "wine gives a port to whoever asks for it";
  }
  port.SetPortOpen(true);
  std::vector<std::u16string> reasons;
  WhenDeviceFails = [&](std::u16string_view, std::u16string_view reason) { reasons.emplace_back(reason); };
  QtSerial other(Folder());
  EXPECT_THROW(other.SetPortOpen(true), RunTimeFailure);
  EXPECT_FALSE(other.PortOpen());
  WhenDeviceFails = {};
  ASSERT_EQ(1U, reasons.size());
  EXPECT_FALSE(reasons[0].empty());
  port.SetPortOpen(false);
  other.SetPortOpen(true);
  EXPECT_TRUE(other.PortOpen());
}

TEST_F(Serial, EveryByteGoesOutAsItIs) {
  port.SetPortOpen(true);
  port.Output(AllBytes());
  EXPECT_EQ(AllBytes(), line.Receive(256));
}

TEST_F(Serial, EveryByteComesInAsItIs) {
  port.SetPortOpen(true);
  line.Send(AllBytes());
  ASSERT_TRUE(Until([&] { return port.InBufferCount() == 256; }));
  EXPECT_EQ(AllBytes(), port.Input());
  EXPECT_EQ(0, port.InBufferCount());
}

TEST_F(Serial, CountsBytesThatTrickleIn) {
  port.SetPortOpen(true);
  const Bytes all = AllBytes();
  for (int i = 0; i < 8; ++i) {
    line.Send(std::span(all).subspan(static_cast<std::size_t>(i), 1));
    ASSERT_TRUE(Until([&] { return port.InBufferCount() == i + 1; }));
  }
}

TEST_F(Serial, InputLenLimitsWhatInputTakes) {
  port.SetPortOpen(true);
  const Bytes bytes{1, 2, 3, 4, 5};
  line.Send(bytes);
  ASSERT_TRUE(Until([&] { return port.InBufferCount() == 5; }));
  port.InputLen = 2;
  EXPECT_EQ((Bytes{1, 2}), port.Input());
  port.InputLen = 0;
  EXPECT_EQ((Bytes{3, 4, 5}), port.Input());
}

TEST_F(Serial, WhatNobodyFetchedStaysForTheNextExchange) {
  port.SetPortOpen(true);
  line.Send(Bytes{1, 0x83, 2, 0, 0});
  ASSERT_TRUE(Until([&] { return port.InBufferCount() == 5; }));
  port.Output(Bytes{1, 3});
  EXPECT_EQ(5, port.InBufferCount());
}

TEST_F(Serial, ALostDeviceIsARunTimeFailureAndClosesQuietly) {
  port.SetPortOpen(true);
  LoseTheDevice();
  EXPECT_THROW((void)port.InBufferCount(), RunTimeFailure);
  EXPECT_THROW((void)port.Input(), RunTimeFailure);
  EXPECT_THROW(port.Output(AllBytes()), RunTimeFailure);
  EXPECT_TRUE(port.PortOpen());
  EXPECT_NO_THROW(port.SetPortOpen(false));
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(Serial, WhyADeviceWentIsToldOnce) {
  std::vector<std::u16string> devices;
  std::vector<std::u16string> reasons;
  WhenDeviceFails = [&](std::u16string_view device, std::u16string_view reason) {
    devices.emplace_back(device);
    reasons.emplace_back(reason);
  };
  port.SetPortOpen(true);
  LoseTheDevice();
  (void)ProcessorMsOfWaiting(50);
  port.SetPortOpen(false);
  WhenDeviceFails = {};
  ASSERT_EQ(1U, devices.size());
  EXPECT_TRUE(QString::fromStdString(line.Device()).endsWith(QString::fromStdU16String(devices[0])))
      << line.Device();
  EXPECT_FALSE(reasons[0].empty());
}

TEST_F(Serial, ALostDeviceCostsNoProcessorTime) {
  port.SetPortOpen(true);
  LoseTheDevice();
  EXPECT_LT(ProcessorMsOfWaiting(200), 20);
}

TEST_F(Serial, OpensAgainAfterTheDeviceCameBack) {
  port.SetPortOpen(true);
  LoseTheDevice();
  port.SetPortOpen(false);
  const SerialLine again(Folder(), "COM1");
  port.SetPortOpen(true);
  port.Output(Bytes{7});
  EXPECT_EQ(Bytes{7}, again.Receive(1));
}

TEST_F(Serial, APortThatIsNotThereIsARunTimeFailure) {
  port.CommPort = 16;
  EXPECT_THROW(port.SetPortOpen(true), RunTimeFailure);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(Serial, ANumberOutsideThePortsIsARunTimeFailure) {
  for (const int number : {0, -1, 17}) {
    port.CommPort = static_cast<std::int16_t>(number);
    EXPECT_THROW(port.SetPortOpen(true), RunTimeFailure) << number;
  }
}

TEST_F(Serial, SettingsThatSayNothingAreARunTimeFailure) {
  port.Settings = "fast";
  EXPECT_THROW(port.SetPortOpen(true), RunTimeFailure);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(Serial, AClosedPortTakesAndGivesNothing) {
  EXPECT_THROW(port.Output(AllBytes()), RunTimeFailure);
  EXPECT_THROW((void)port.InBufferCount(), RunTimeFailure);
  EXPECT_THROW((void)port.Input(), RunTimeFailure);
  EXPECT_NO_THROW(port.SetPortOpen(false));
}

TEST_F(Serial, WaitingForAByteCostsNoProcessorTime) {
  port.SetPortOpen(true);
  EXPECT_LT(ProcessorMsOfWaiting(300), 20);
}

// USB

struct Usb : DeviceTest {
  SerialLine line{Folder(), "USB"};
  UsbControl& usb = ThePlatform().USBOCX1;
  std::array<std::int32_t, 256> words{};
};

TEST_F(Usb, WithoutADeviceThereIsNoHandle) {
  line.Unplug();
  EXPECT_EQ(-1, usb.Open(0));
}

TEST_F(Usb, WritesOneByteOfEachWord) {
  std::int32_t handle = usb.Open(0);
  ASSERT_NE(-1, handle);
  std::iota(words.begin(), words.end(), 0);
  EXPECT_NE(0, usb.Write(handle, words, 256, 1000));
  EXPECT_EQ(AllBytes(), line.Receive(256));
}

TEST_F(Usb, ReadsOneByteIntoEachWord) {
  std::int32_t handle = usb.Open(0);
  line.Send(AllBytes());
  EXPECT_EQ(256, usb.Read(handle, words, 256, 1000));
  for (int i = 0; i < 256; ++i) {
    EXPECT_EQ(i, words[static_cast<std::size_t>(i)]);
  }
}

TEST_F(Usb, WaitsForTheByteThatCompletesTheReplyAndNoLonger) {
  std::int32_t handle = usb.Open(0);
  std::thread recorder([&] {
    for (const std::uint8_t byte : AllBytes()) {
      line.Send(std::span(&byte, 1));
      std::this_thread::yield();
    }
  });
  QElapsedTimer waited;
  waited.start();
  EXPECT_EQ(133, usb.Read(handle, words, 133, 60'000));
  EXPECT_LT(waited.elapsed(), 10'000);
  recorder.join();
  EXPECT_EQ(132, words[132]);
}

TEST_F(Usb, AShortReplyIsWhatCameWithinTheTime) {
  std::int32_t handle = usb.Open(0);
  line.Send(Bytes{1, 0x83, 2, 0xC0, 0xF1});
  QElapsedTimer waited;
  waited.start();
  EXPECT_EQ(5, usb.Read(handle, words, 133, 100));
  EXPECT_GE(waited.elapsed(), 99);
  EXPECT_EQ(0x83, words[1]);
}

TEST_F(Usb, NoReplyIsZeroAndCostsNoProcessorTime) {
  std::int32_t handle = usb.Open(0);
  const double before = ProcessorMs();
  EXPECT_EQ(0, usb.Read(handle, words, 133, 200));
  EXPECT_LT(ProcessorMs() - before, 20);
}

TEST_F(Usb, AHandleThatIsNoneReadsAndWritesNothing) {
  std::int32_t handle = -1;
  EXPECT_EQ(0, usb.Read(handle, words, 10, 10));
  EXPECT_EQ(0, usb.Write(handle, words, 10, 10));
  handle = usb.Open(0);
  usb.Close(handle);
  EXPECT_EQ(0, usb.Write(handle, words, 10, 10));
}

TEST_F(Usb, OpensForEachExchange) {
  for (std::int32_t i = 0; i < 3; ++i) {
    std::int32_t handle = usb.Open(0);
    ASSERT_NE(-1, handle);
    words[0] = i;
    EXPECT_EQ(1, usb.Write(handle, words, 1, 1000));
    EXPECT_EQ(Bytes{static_cast<std::uint8_t>(i)}, line.Receive(1));
    line.Send(AllBytes());
    EXPECT_EQ(256, usb.Read(handle, words, 256, 1000));
    EXPECT_EQ(255, words[255]);
    usb.Close(handle);
  }
}

TEST_F(Usb, OpensAgainAlthoughItWasLeftOpen) {
  std::int32_t first = usb.Open(0);
  std::int32_t second = usb.Open(0);
  EXPECT_NE(first, second);
  EXPECT_EQ(0, usb.Write(first, words, 1, 100));
  EXPECT_NE(0, usb.Write(second, words, 1, 100));
}

TEST_F(Usb, ADeviceThatIsUnpluggedReadsAndWritesNothing) {
  std::int32_t handle = usb.Open(0);
  line.Unplug();
  EXPECT_EQ(0, usb.Read(handle, words, 10, 1000));
  EXPECT_EQ(0, usb.Write(handle, words, 10, 1000));
  usb.Close(handle);
  EXPECT_EQ(-1, usb.Open(0));
}

TEST_F(Usb, ACountBeyondTheWordsIsCutOrRefused) {
  std::int32_t handle = usb.Open(0);
  line.Send(AllBytes());
  std::array<std::int32_t, 4> few{};
  EXPECT_EQ(4, usb.Read(handle, few, 300, 100));
  EXPECT_EQ(0, usb.Write(handle, few, 300, 100));
  EXPECT_EQ(0, usb.Read(handle, few, -1, 100));
}

} // namespace
} // namespace loader::test
