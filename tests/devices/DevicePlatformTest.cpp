#include "devices/DevicePlatform.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <array>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "comm/modComunication.h"
#include "core/OwnTexts.h"
#include "platform/RunTimeFailure.h"
#include "tests/devices/SerialLine.h"
#include "tests/devices/TestSystem.h"
#include "tests/support/ProcessorTime.h"

namespace loader::test {
namespace {

TEST(Devices, AProgramOnThemLoadsNoOtherQtThanTheirs) {
  const DevicePlatform platform;
  EXPECT_EQ(LoadedQtLibraries(), QtLibrariesOfTheDevices());
}

struct WithoutWindow : testing::Test {
  // Runs the event loop until the timer has run.
  int RoundsUntil(const bool& ran) {
    int rounds = 0;
    for (; !ran; ++rounds) {
      DoEvents();
    }
    return rounds;
  }
  // Runs the event loop until it has come, for some seconds at most.
  static bool Comes(const std::function<bool()>& come) {
    Timer limit;
    bool over = false;
    limit.onTimer = [&] { over = true; };
    StartTimer(limit, 5000);
    while (!come() && !over) {
      DoEvents();
    }
    StopTimer(limit);
    return come();
  }
  static SocketControl& SocketTo(int port) {
    SocketControl& socket = ThePlatform().winSock;
    socket.RemoteHost = u"127.0.0.1";
    socket.RemotePort = port;
    return socket;
  }
  DevicePlatform platform;
};

TEST_F(WithoutWindow, TheProgramFolderIsThatOfTheExecutable) {
  EXPECT_EQ(ThePlatform().programFolder, ThisProgram().parent_path());
}

// The system's own words, for who asks why.
TEST_F(WithoutWindow, ADeviceThatFailsTellsWhy) {
  std::vector<std::pair<std::u16string, std::u16string>> told;
  WhenDeviceFails = [&](std::u16string_view device, std::u16string_view reason) {
    told.emplace_back(device, reason);
  };
  platform.serial.CommPort = 16;
  EXPECT_THROW(platform.serial.SetPortOpen(true), RunTimeFailure);
  ASSERT_EQ(told.size(), 1U);
  EXPECT_EQ(told[0].first, NameOfPort16());
  EXPECT_EQ(told[0].second, ReasonForNoDevice());

  QTcpServer gone;
  ASSERT_TRUE(gone.listen(QHostAddress::LocalHost));
  platform.socket.RemoteHost = u"127.0.0.1";
  platform.socket.RemotePort = gone.serverPort();
  gone.close();
  platform.socket.Connect();
  while (told.size() < 2) {
    DoEvents();
  }
  EXPECT_EQ(told[1].first, u"127.0.0.1");
  EXPECT_EQ(told[1].second, u"Connection refused");
  WhenDeviceFails = {};
}

TEST_F(WithoutWindow, AWaitTakesNoProcessor) {
  bool fired = false;
  Timer timer;
  timer.onTimer = [&] { fired = true; };
  QElapsedTimer elapsed;
  elapsed.start();
  const double before = ProcessorMs();
  StartTimer(timer, 300);
  EXPECT_LE(RoundsUntil(fired), 2);
  EXPECT_GE(elapsed.elapsed(), 299);
  EXPECT_LT(ProcessorMs() - before, 30);
  StopTimer(timer);
}

TEST_F(WithoutWindow, AHandlerThatFailsIsToldAndEndsNothing) {
  Timer timer;
  std::vector<std::u16string> lines;
  platform.bare.boxes.sink = [&](const std::u16string& line) { lines.push_back(line); };
  bool ran = false;
  timer.onTimer = [&] {
    ran = true;
    if (lines.empty()) {
      throw std::runtime_error("first");
    }
    throw 2; // nothing that has a text
  };
  StartTimer(timer, 1);
  RoundsUntil(ran);
  ran = false;
  RoundsUntil(ran);
  StopTimer(timer);
  EXPECT_EQ(lines,
            (std::vector<std::u16string>{u"first", std::u16string(OwnText(OwnTextId::UnknownFailure))}));
}

TEST_F(WithoutWindow, ALoopThatShowsNothingReturnsForEveryEvent) {
  int fired = 0;
  Timer timer;
  timer.onTimer = [&] { ++fired; };
  StartTimer(timer, 1);
  int rounds = 0;
  while (fired < 20) {
    const int before = fired;
    DoEvents();
    EXPECT_LE(fired, before + 1);
    ++rounds;
  }
  StopTimer(timer);
  EXPECT_LE(rounds, 40);
}

TEST_F(WithoutWindow, TheSocketConnectsFromTheEventLoop) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  SocketControl& socket = SocketTo(server.serverPort());
  bool connected = false;
  socket.onConnect = [&] { connected = true; };
  socket.Connect();
  EXPECT_FALSE(connected);
  EXPECT_TRUE(Comes([&] { return connected; }));
  EXPECT_EQ(socket.State(), 7);
  socket.Close();
  socket.onConnect = nullptr;
}

// The port that isn't there is the device's own failure: the bare one would say so of every port.
TEST_F(WithoutWindow, ThePortsAreTheSystems) {
  ThePlatform().MSComm1.CommPort = 16;
  try {
    ThePlatform().MSComm1.SetPortOpen(true);
    FAIL() << "there is a port 16";
  } catch (const RunTimeFailure& failure) {
    EXPECT_NE(std::string(failure.what()).find(QString::fromStdU16String(NameOfPort16()).toStdString()),
              std::string::npos)
        << failure.what();
  }
}

TEST_F(WithoutWindow, AConnectionThatIsRefusedIsToldAtOnceToWhoAsksForIt) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const int port = server.serverPort();
  server.close();
  SocketControl& socket = SocketTo(port);
  bool failed = false;
  socket.onFailure = [&] { failed = true; };
  socket.Connect();
  EXPECT_FALSE(failed) << "nobody waits for it yet";
  EXPECT_TRUE(Comes([&] { return failed; }));
  EXPECT_EQ(socket.State(), 9);
  socket.Close();
  socket.onFailure = nullptr;
}

// Whoever waits for a reply need not sit its time-out out. The connection still counts as one at that moment.
TEST_F(WithoutWindow, AConnectionThatTheRecorderBreaksIsToldAtOnceToWhoAsksForIt) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  SocketControl& socket = SocketTo(server.serverPort());
  bool connected = false;
  bool failed = false;
  socket.onConnect = [&] { connected = true; };
  socket.onFailure = [&] { failed = true; };
  socket.Connect();
  ASSERT_TRUE(Comes([&] { return connected && server.hasPendingConnections(); }));
  delete server.nextPendingConnection();
  EXPECT_TRUE(Comes([&] { return failed; }));
  socket.Close();
  socket.onConnect = nullptr;
  socket.onFailure = nullptr;
}

TEST(ChosenDevices, AreThoseThatTheUserNamesWithTheirSpeed) {
  const SerialLine serial;
  const SerialLine usb;
  for (const auto& [baud, settings] : {std::pair{9600, "9600 odd"}, std::pair{0, "19200 odd"}}) {
    const DevicePlatform platform({.programFolder = {},
                                   .portMap = {},
                                   .serialLine = {QString::fromStdString(serial.Device()), baud},
                                   .usbDevice = QString::fromStdString(usb.Device())});
    SerialControl& port = ThePlatform().MSComm1;
    port.CommPort = 16; // there is none; the device that is named counts
    port.SetPortOpen(true);
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(serial.Settings(), settings);
    port.SetPortOpen(false);

    std::int32_t handle = ThePlatform().USBOCX1.Open(0);
    EXPECT_GT(handle, 0);
    constexpr std::array<std::int32_t, 2> Sent{0x41, 0x42};
    EXPECT_EQ(ThePlatform().USBOCX1.Write(handle, Sent, 2, 1000), 2);
    EXPECT_EQ(usb.Receive(2), (Bytes{'A', 'B'}));
    ThePlatform().USBOCX1.Close(handle);
  }
}

} // namespace
} // namespace loader::test
