// The options of recorder-sim.
#pragma once

#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "simulator/Firmware.h"
#include "simulator/Sockets.h"

namespace loader::simulator {

struct Options {
  bool help = false;
  Model model = Model::Kov;
  std::optional<std::string> firmware; // the newest of the model when none is given
  std::optional<TcpAddress> tcp;
  bool recording = false;
  bool computing = false;
  std::optional<std::string> dump;
  std::string shape; // empty: InitSet.Ini beside the program
};

// A wrong option: the message says which, and what was expected.
struct CommandLineError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The arguments behind the program's name. `--option VALUE` and `--option=VALUE` mean the same.
[[nodiscard]] Options ParseCommandLine(std::span<const std::string> arguments);
[[nodiscard]] std::string_view HelpText();

} // namespace loader::simulator
