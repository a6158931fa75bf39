#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "tests/devices/LineSettings.h"
#include "tests/devices/SerialLine.h"

namespace loader::test {

// The slave of the pseudo-terminal is the device.
struct SerialLine::FarEnd {
  int master = -1;
  std::string device;
};

SerialLine::SerialLine() : far_(std::make_unique<FarEnd>()) {
  std::array<char, 256> name{};
  int slave = -1;
  if (openpty(&far_->master, &slave, name.data(), nullptr, nullptr) != 0) {
    throw std::runtime_error("no pseudo-terminal");
  }
  far_->device = name.data();
  close(slave);
}

SerialLine::SerialLine(const std::filesystem::path& programFolder, const std::string& port) : SerialLine() {
  std::filesystem::remove(programFolder / port);
  std::filesystem::create_symlink(far_->device, programFolder / port);
}

SerialLine::~SerialLine() {
  Unplug();
}

const std::string& SerialLine::Device() const {
  return far_->device;
}

void SerialLine::Unplug() {
  if (far_->master >= 0) {
    close(std::exchange(far_->master, -1));
  }
}

void SerialLine::Send(std::span<const std::uint8_t> bytes) const {
  ASSERT_EQ(static_cast<ssize_t>(bytes.size()), write(far_->master, bytes.data(), bytes.size()));
}

Bytes SerialLine::Receive(std::size_t count) const {
  Bytes bytes(count);
  std::size_t have = 0;
  while (have < count) {
    const ssize_t got = read(far_->master, bytes.data() + have, count - have);
    if (got <= 0) {
      ADD_FAILURE() << "the line is dead";
      break;
    }
    have += static_cast<std::size_t>(got);
  }
  return bytes;
}

std::string SerialLine::Settings() const {
  termios settings{};
  return tcgetattr(far_->master, &settings) == 0 ? SettingsText(settings) : "";
}

} // namespace loader::test
