// Ctrl+C and its like (SIGINT, SIGTERM, SIGHUP) as a call out of the event loop.
#pragma once

#include <QSocketNotifier>
#include <array>
#include <csignal>
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
  static constexpr std::array<int, 3> Signals{SIGINT, SIGTERM, SIGHUP};
  std::array<struct sigaction, Signals.size()> before_{};
  std::array<int, 2> pipe_{-1, -1};
  std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace loader::paramtool
