// Far ends for the three links: a TCP server and a pseudo-terminal, both in this process.
#pragma once

#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <array>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/Platform.h"
#include "qt/QtPlatform.h"
#include "tests/support/ProcessorTime.h"

namespace loader::test {

// A pseudo-terminal whose slave is the device and whose master is the far end of the line.
class PseudoTerminal {
public:
  PseudoTerminal() {
    std::array<char, 256> name{};
    if (openpty(&master_, &slave_, name.data(), nullptr, nullptr) != 0) {
      throw std::runtime_error("no pseudo-terminal");
    }
    path = name.data();
    close(slave_);
  }
  ~PseudoTerminal() { Unplug(); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  void Unplug() {
    if (master_ >= 0) {
      close(std::exchange(master_, -1));
    }
  }
  void Send(std::span<const std::uint8_t> bytes) const {
    ASSERT_EQ(static_cast<ssize_t>(bytes.size()), write(master_, bytes.data(), bytes.size()));
  }
  // Sleeps until so many bytes have arrived at the far end.
  [[nodiscard]] Bytes Receive(std::size_t count) const {
    Bytes bytes(count);
    std::size_t have = 0;
    while (have < count) {
      const ssize_t got = read(master_, bytes.data() + have, count - have);
      if (got <= 0) {
        ADD_FAILURE() << "the line is dead";
        break;
      }
      have += static_cast<std::size_t>(got);
    }
    return bytes;
  }

  std::string path;

private:
  int master_ = -1;
  int slave_ = -1;
};

// The platform with a program folder of its own.
class DeviceTest : public testing::Test {
protected:
  void Link(const char* name, const std::string& device) {
    std::filesystem::create_symlink(device, Folder() / name);
  }
  [[nodiscard]] std::filesystem::path Folder() const { return folder_.path().toStdString(); }
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
  QtPlatform platform{
      {.programFolder = Folder(), .makeForm = MakeForm, .portMap = [this](int) { return serverPort; }}};
};

} // namespace loader::test
