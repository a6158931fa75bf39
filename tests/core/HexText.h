// Codes and characters as tables have them.
#pragma once

#include <string>
#include <string_view>

namespace loader {

[[nodiscard]] inline std::string Hex(unsigned value, int digits) {
  static constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string text;
  for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) {
    text += Digits[value >> shift & 0xFU];
  }
  return text;
}

} // namespace loader
