// When the bytes of a reply leave.
#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

#include "simulator/ModbusSlave.h"

namespace loader::simulator {

using Microseconds = std::chrono::microseconds;

// What happens to the connection when a step's bytes have left.
enum class Ending { None, Close, Reset };

struct ReplyStep {
  Microseconds after{0}; // since the first byte of the request arrived
  Bytes bytes;
  Ending ending = Ending::None;
};
using ReplyPlan = std::vector<ReplyStep>;

} // namespace loader::simulator
