// The bytes of one run, taken from the front. An input that is used up gives zeros, so that every input is a
// whole run and a shorter one is a simpler one.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace loader::fuzz {

// Ends the process with the name of the promise that does not hold: the fuzzer then keeps the input.
void Require(bool holds, std::string_view promise);

class FuzzInput {
public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

  [[nodiscard]] bool Empty() const { return rest_.empty(); }

  std::uint8_t Byte() {
    if (rest_.empty()) {
      return 0;
    }
    const std::uint8_t byte = rest_.front();
    rest_ = rest_.subspan(1);
    return byte;
  }
  // 0 up to, and without, `choices`.
  int Choice(int choices) { return Byte() % choices; }
  bool Flag() { return (Byte() & 1) != 0; }
  // Low byte first.
  std::int16_t Number16() {
    const unsigned low = Byte();
    return static_cast<std::int16_t>(low | static_cast<unsigned>(Byte()) << 8);
  }
  std::int32_t Number32() {
    const auto low = static_cast<std::uint16_t>(Number16());
    const auto high = static_cast<std::uint16_t>(Number16());
    return static_cast<std::int32_t>(low | static_cast<std::uint32_t>(high) << 16);
  }
  // Up to `count` bytes.
  std::span<const std::uint8_t> Take(std::size_t count) {
    const auto taken = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }
  std::span<const std::uint8_t> Rest() { return Take(rest_.size()); }
  std::string_view RestText() { return AsText(Rest()); }
  // As many bytes as the next byte says.
  std::string_view ShortText() {
    const std::size_t count = Byte();
    return AsText(Take(count));
  }

private:
  static std::string_view AsText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }
  std::span<const std::uint8_t> rest_;
};

} // namespace loader::fuzz
