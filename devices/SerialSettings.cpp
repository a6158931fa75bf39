#include "devices/SerialSettings.h"

#include <charconv>
#include <vector>

namespace loader {

namespace {

std::vector<std::string_view> Split(std::string_view text) {
  std::vector<std::string_view> parts;
  for (std::size_t comma = text.find(','); comma != std::string_view::npos; comma = text.find(',')) {
    parts.push_back(text.substr(0, comma));
    text.remove_prefix(comma + 1);
  }
  parts.push_back(text);
  return parts;
}

std::optional<int> Number(std::string_view text, int lowest, int highest) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < lowest || value > highest) {
    return std::nullopt;
  }
  return value;
}

std::optional<Parity> ParityOf(std::string_view letter) {
  if (letter == "N" || letter == "n") {
    return Parity::None;
  }
  if (letter == "O" || letter == "o") {
    return Parity::Odd;
  }
  if (letter == "E" || letter == "e") {
    return Parity::Even;
  }
  return std::nullopt;
}

} // namespace

std::optional<SerialSettings> ParseSerialSettings(std::string_view settings) {
  const std::vector<std::string_view> parts = Split(settings);
  if (parts.size() != 4) {
    return std::nullopt;
  }
  const std::optional<int> baud = Number(parts[0], 1, 4'000'000);
  const std::optional<Parity> parity = ParityOf(parts[1]);
  const std::optional<int> dataBits = Number(parts[2], 5, 8);
  const std::optional<int> stopBits = Number(parts[3], 1, 2);
  if (!baud || !parity || !dataBits || !stopBits) {
    return std::nullopt;
  }
  return SerialSettings{*baud, *parity, *dataBits, *stopBits};
}

} // namespace loader
