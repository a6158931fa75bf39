// The recorder behind its lines: takes requests, gives plans for the replies.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "simulator/Faults.h"
#include "simulator/ModbusSlave.h"
#include "simulator/Recorder.h"
#include "simulator/ReplyPlan.h"

namespace loader::simulator {

struct SimulatorSettings {
  std::vector<FaultRule> faults;
  std::uint64_t seed = 1;
  Timing timing;
  std::function<void(const std::string&)> trace;   // one line a request; empty: no trace
  std::function<void(const std::string&)> frames;  // a line a request, one a reply; empty: none
  std::function<void(const Recorder&)> whenStored; // the recorder has stored its settings
};

class Simulator {
public:
  Simulator(Recorder recorder, SimulatorSettings settings);

  // Every fault but `error` lets the recorder do what it was asked to: only the reply suffers.
  [[nodiscard]] ReplyPlan Handle(Line line, const std::string& client, std::span<const std::uint8_t> request);

  [[nodiscard]] const Recorder& TheRecorder() const { return recorder_; }

private:
  Recorder recorder_;
  SimulatorSettings settings_;
  FaultChooser faults_;
  ModbusSlave tcp_, rtu_;
  std::int64_t requests_ = 0;
};

} // namespace loader::simulator
