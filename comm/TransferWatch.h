// What a program may watch of a transfer while it runs: its progress, and the blocks that came and went. The
// window watches nothing, so that every function here is empty for it.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "core/modMain.h"

namespace loader {

// The next request of a section's block.
struct BlockStep {
  std::string_view section; // its code, trimmed
  bool writing = false;
  std::int32_t done = 0; // registers of the block that have gone, and all of them
  std::int32_t all = 0;
};

// A section's block that has come or gone as a whole.
struct WholeBlock {
  StoreIndex section = NotFound;
  std::int16_t registerOffset = 0; // of the block, from the section's BaseAddress
  bool writing = false;
  std::span<const std::uint8_t> bytes; // of all its registers, low byte first; good during the call
};

struct TransferWatch {
  // Before each request of a block. False ends the transfer: the request is not sent, and its result is
  // ResultStopped.
  std::function<bool(const BlockStep&)> mayGo = {};
  std::function<void(const WholeBlock&)> whole = {};
};
extern TransferWatch WatchOfTransfers;

} // namespace loader
