// Cuts the bytes that arrive on a line into whole requests.
#pragma once

#include <optional>

#include "simulator/ModbusSlave.h"

namespace loader::simulator {

class Framer {
public:
  explicit Framer(Line line) : line_(line) {}

  void Feed(std::span<const std::uint8_t> bytes) {
    waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
  }
  // The next whole request, taken out.
  [[nodiscard]] std::optional<Bytes> Next();
  // True when bytes wait that are no whole request (yet).
  [[nodiscard]] bool Waits() const { return !waiting_.empty(); }
  // True when the bytes of a TCP connection cannot be Modbus: there is no way to find the next request.
  [[nodiscard]] bool Lost() const { return lost_; }

private:
  [[nodiscard]] std::optional<std::size_t> Length();
  Line line_;
  Bytes waiting_;
  bool lost_ = false;
};

} // namespace loader::simulator
