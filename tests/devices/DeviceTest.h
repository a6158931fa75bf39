// What a test of the devices stands on: a platform with a program folder of its own, and an event loop to
// wait in.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <filesystem>
#include <functional>
#include <memory>

#include "devices/QtSocket.h"
#include "platform/Platform.h"
#include "tests/devices/SerialLine.h"
#include "tests/support/ProcessorTime.h"

namespace loader::test {

// The platform that the program tests, in force until it goes: each test program has its own.
[[nodiscard]] std::shared_ptr<void> TestedPlatform(const std::filesystem::path& programFolder,
                                                   const PortMap& portMap);

// The platform with a program folder of its own.
class DeviceTest : public testing::Test {
protected:
  [[nodiscard]] std::filesystem::path Folder() const { return folder_.path().toStdU16String(); }
  // Runs the event loop until it is true; false after two seconds.
  template <typename Condition> bool Until(Condition condition) {
    Timer limit;
    StartTimer(limit, 2000);
    limit.onTimer = [&] { StopTimer(limit); };
    while (!condition() && limit.Enabled) {
      DoEvents();
    }
    const bool met = condition();
    StopTimer(limit);
    return met;
  }
  // Runs the event loop for so long; the processor time that took.
  double ProcessorMsOfWaiting(int milliseconds) {
    Timer end;
    end.onTimer = [&] { StopTimer(end); };
    const double before = ProcessorMs();
    StartTimer(end, milliseconds);
    while (end.Enabled) {
      DoEvents();
    }
    return ProcessorMs() - before;
  }
  [[nodiscard]] static Bytes AllBytes() {
    Bytes bytes;
    for (int i = 0; i < 256; ++i) {
      bytes.push_back(static_cast<std::uint8_t>(i));
    }
    return bytes;
  }

private:
  QTemporaryDir folder_;

protected:
  int serverPort = 0;
  std::shared_ptr<void> platform = TestedPlatform(Folder(), [this](int) { return serverPort; });
};

} // namespace loader::test
