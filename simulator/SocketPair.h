// A connection inside this program: what goes in at one end comes out at the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "simulator/Sockets.h"

namespace loader::simulator {

// RunTimeFailure when the system refuses.
class SocketPair {
public:
  SocketPair();

  [[nodiscard]] int Inner() const { return inner_.Number(); }
  // All of the bytes can be read at the inner end when it returns.
  void GiveInner(std::span<const std::uint8_t> bytes);
  // Drops what waits at the inner end.
  void EmptyInner();
  // So many bytes, which were sent at the inner end in one go.
  [[nodiscard]] std::vector<std::uint8_t> TakeOuter(std::size_t count);

private:
  Descriptor inner_, outer_;
};

// Whether libmodbus's RTU works on a socket. Where it does not it takes the handle of a serial port only.
extern const bool RtuTakesSockets;

} // namespace loader::simulator
