// What the two ends of a serial line agree on.
#pragma once

#include <optional>
#include <string_view>

namespace loader {

enum class Parity { None, Odd, Even };

struct SerialSettings {
  int baud;
  Parity parity;
  int dataBits; // 5 to 8
  int stopBits; // 1, 2
};

// "19200,O,8,1": baud, parity (N, O, E), data bits (5 to 8), stop bits (1, 2); empty when it is no such text.
[[nodiscard]] std::optional<SerialSettings> ParseSerialSettings(std::string_view settings);

} // namespace loader
