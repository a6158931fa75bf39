// What a terminal was set to by whoever holds its other end, as a text.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <termios.h>
#include <utility>

namespace loader::test {

// "19200 odd handshake". A pseudo-terminal has no parity on its line, and always eight data bits; of the
// parity it keeps only that it would be odd.
[[nodiscard]] inline std::string SettingsText(const termios& settings) {
  constexpr std::array<std::pair<speed_t, const char*>, 4> Speeds{
      {{B9600, "9600"}, {B19200, "19200"}, {B38400, "38400"}, {B115200, "115200"}}};
  const auto* const speed = std::find_if(
      Speeds.begin(), Speeds.end(), [&](const auto& known) { return known.first == cfgetospeed(&settings); });
  std::string text = speed == Speeds.end() ? "another speed" : speed->second;
  text += (settings.c_cflag & PARODD) != 0 ? " odd" : "";
  text += (settings.c_cflag & CSTOPB) != 0 ? " two" : "";
  text += (settings.c_cflag & CRTSCTS) != 0 ? " handshake" : "";
  return text;
}

} // namespace loader::test
