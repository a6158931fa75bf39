// What a test of a fleet and its children share of the system: gates, and the interrupt.
#pragma once

#include <filesystem>
#include <memory>

namespace loader::test {

// One of two children waits at it, the other one tells it to go on (FleetChild.h). It is there before both.
class FleetGate {
public:
  explicit FleetGate(const std::filesystem::path& gate);
  ~FleetGate();
  FleetGate(const FleetGate&) = delete;
  FleetGate& operator=(const FleetGate&) = delete;

private:
  struct Inside;
  std::unique_ptr<Inside> inside_;
};

// Ctrl+C, or what is like it on Windows: Ctrl+Break, which needs no console. What the program does at it is
// done, or on its way to the event loop, when this returns.
void InterruptThisProgram();

} // namespace loader::test
