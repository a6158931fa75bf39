// Cuts the bytes that arrive on a line into whole requests.
#pragma once

#include <chrono>
#include <optional>

#include "simulator/ModbusSlave.h"

namespace loader::simulator {

// After so long a silence what has arrived on an RTU line is all that will come. Modbus says 3.5 characters;
// a program's bytes come less evenly than those of a wire.
constexpr std::chrono::milliseconds LineSilence{100};

class Framer {
public:
  explicit Framer(Line line) : line_(line) {}

  void Feed(std::span<const std::uint8_t> bytes) {
    waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
  }
  // The next whole request, taken out. On an RTU line that is one whose length is told by its function.
  [[nodiscard]] std::optional<Bytes> Next();
  // All that waits, taken out: what an RTU line has brought when it has fallen silent.
  [[nodiscard]] Bytes TakeRest();
  // True when bytes wait that are no whole request (yet).
  [[nodiscard]] bool Waits() const { return !waiting_.empty(); }
  // True when the bytes of a TCP connection cannot be Modbus: there is no way to find the next request.
  [[nodiscard]] bool Lost() const { return lost_; }

private:
  [[nodiscard]] std::optional<std::size_t> TcpLength();
  Line line_;
  Bytes waiting_;
  bool lost_ = false;
};

} // namespace loader::simulator
