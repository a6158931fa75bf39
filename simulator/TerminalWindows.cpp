#include "platform/RunTimeFailure.h"
#include "simulator/Terminal.h"

namespace loader::simulator {

std::string_view TerminalHelp() {
  return "  --rtu LINK             not on Windows, which has no pseudo-terminals: take --tcp\n";
}

Terminal::Terminal(std::filesystem::path link) : link_(std::move(link)) {
  throw RunTimeFailure("cannot make the line " + link_.string() +
                       ": there are no RTU lines on Windows, which has no pseudo-terminals; take --tcp");
}

// There is no terminal that these could be asked of.
Terminal::~Terminal() = default;

Passed Terminal::Read(std::span<std::uint8_t>) {
  return LineEnded;
}

Passed Terminal::Write(std::span<const std::uint8_t>) {
  return LineEnded;
}

bool Terminal::TakeClosing() {
  return false;
}

void Terminal::Replug() {}

} // namespace loader::simulator
