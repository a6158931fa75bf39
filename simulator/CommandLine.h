// The options of recorder-sim.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "simulator/Faults.h"
#include "simulator/Firmware.h"
#include "simulator/ReplyPlan.h"
#include "simulator/Server.h"
#include "simulator/Sockets.h"

namespace loader::simulator {

struct Options {
  bool help = false;
  // Model and firmware of the memory file when they are not given; KOV and the newest firmware without one.
  std::optional<Model> model;
  std::optional<std::string> firmware;
  std::optional<int> station;
  bool recording = false;
  bool computing = false;

  std::vector<TcpAddress> tcp;
  std::vector<std::string> rtu; // names of the links
  Timing timing;
  std::chrono::seconds idle = UsualIdleTime; // 0: idle TCP clients are kept

  std::optional<std::string> load, save, dump;
  std::string shape; // empty: InitSet.Ini beside the program
  std::optional<std::uint16_t> pattern;

  bool trace = false;
  bool traceFrames = false;
  std::vector<FaultRule> faults;
  std::uint64_t seed = 1;
};

// A wrong option: the message says which, and what was expected.
struct CommandLineError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The arguments behind the program's name. `--option VALUE` and `--option=VALUE` mean the same. Without a
// line the recorder serves TCP at its standard address.
[[nodiscard]] Options ParseCommandLine(std::span<const std::string> arguments);
[[nodiscard]] std::string HelpText();

} // namespace loader::simulator
