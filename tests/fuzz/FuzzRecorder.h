// A recorder on the wires of the fuzz platform: two tables of registers that the input fills. It answers
// Modbus RTU and Modbus/TCP; its frames are put together here, by other code than the program's own.
#pragma once

#include <array>
#include <cstdint>

#include "tests/fuzz/FuzzPlatform.h"

namespace loader::fuzz {

class FuzzRecorder {
public:
  static constexpr std::size_t TableRegisters = 10000;

  std::array<std::uint16_t, TableRegisters> input{};   // 30001 up
  std::array<std::uint16_t, TableRegisters> holding{}; // 40001 up

  // The good reply to a good request; a register number behind the table starts at its front again. A write
  // changes the holding table.
  Bytes Answer(const Bytes& frame, bool tcp);
  // A text from a register of the input table on, two characters in each.
  void PutText(std::size_t at, std::string_view text, std::size_t registers);

private:
  Bytes Serve(std::span<const std::uint8_t> request);
};

// Error reply (station, function + 128, code 4) to the request.
Bytes ErrorReplyTo(const Bytes& frame, bool tcp);
// The last two bytes become the check value of those in front of them.
void PutCheck(Bytes& frame);

// The link layer, its settings and the generation as at the start of the program.
void ResetLink();

} // namespace loader::fuzz
