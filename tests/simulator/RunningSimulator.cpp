#include "tests/simulator/RunningSimulator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string_view>
#include <utility>

namespace loader::simulator {

Ended RunSimulator(std::vector<std::string> arguments) {
  return test::RunProcess(RECORDER_SIM, std::move(arguments));
}

RunningSimulator::RunningSimulator(std::vector<std::string> arguments, int lines)
    : process_(RECORDER_SIM, std::move(arguments)) {
  greeting_ = process_.ReadLines(lines);
  std::istringstream text(greeting_);
  constexpr std::string_view Ready = "listening on ";
  for (std::string line; std::getline(text, line);) {
    EXPECT_TRUE(line.starts_with(Ready)) << line;
    lines_.push_back(line.substr(std::min(line.size(), Ready.size())));
  }
  EXPECT_EQ(lines_.size(), static_cast<std::size_t>(lines)) << process_.ErrorsSoFar();
}

int RunningSimulator::Port() const {
  return lines_.empty() ? 0 : std::stoi(lines_.front().substr(lines_.front().rfind(':') + 1));
}

Ended RunningSimulator::Stop(int signal) {
  process_.Signal(signal);
  Ended ended = process_.Wait();
  ended.output.erase(0, greeting_.size());
  return ended;
}

} // namespace loader::simulator
