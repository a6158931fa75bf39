// Ctrl+C and its like (SIGINT, SIGTERM, SIGHUP; on Windows Ctrl+Break and the closed console too) as a call
// out of the event loop.
#pragma once

#include <functional>
#include <memory>

namespace loader::paramtool {

// From its making to its end; one at a time. Before and after, the signals do what they did. A signal that
// was ignored (nohup) stays ignored.
class FleetSignals {
public:
  explicit FleetSignals(std::function<void()> stop);
  ~FleetSignals();
  FleetSignals(const FleetSignals&) = delete;
  FleetSignals& operator=(const FleetSignals&) = delete;

private:
  struct Inside;
  std::unique_ptr<Inside> inside_;
};

} // namespace loader::paramtool
