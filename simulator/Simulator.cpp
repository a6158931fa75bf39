#include "simulator/Simulator.h"

#include "simulator/Trace.h"

namespace loader::simulator {

namespace {

// All that leaves, as damaged as it leaves.
Bytes BytesOf(const ReplyPlan& plan) {
  Bytes bytes;
  for (const ReplyStep& step : plan) {
    bytes.insert(bytes.end(), step.bytes.begin(), step.bytes.end());
  }
  return bytes;
}

} // namespace

Simulator::Simulator(Recorder recorder, SimulatorSettings settings)
    : recorder_(std::move(recorder)), settings_(std::move(settings)),
      faults_(settings_.faults, settings_.seed), tcp_(Line::Tcp, recorder_.station),
      rtu_(Line::Rtu, recorder_.station) {}

ReplyPlan Simulator::Handle(Line line, const std::string& client, std::span<const std::uint8_t> request) {
  ++requests_;
  const std::optional<FaultKind> fault = faults_.Next(line);
  ModbusSlave& slave = line == Line::Tcp ? tcp_ : rtu_;
  const ModbusAnswer answer =
      fault == FaultKind::Error ? slave.Refuse(request) : slave.Answer(request, recorder_.memory);
  const Request parsed = ParseRequest(line, request);
  WriteEffects effects;
  const bool obeyed = !answer.reply.empty() || answer.broadcast;
  if (parsed.IsWrite() && obeyed && answer.exception == 0) {
    effects = AfterWrite(recorder_, parsed.address, parsed.count);
    if (effects.stored && settings_.whenStored) {
      settings_.whenStored(recorder_);
    }
  }
  if (settings_.trace) {
    const std::string what = answer.damaged ? "damaged request" : Describe(parsed, recorder_.map);
    settings_.trace(std::to_string(requests_) + " " + client + ": " + what + " " +
                    Describe(answer, effects, recorder_, answer.reply.empty() ? std::nullopt : fault));
  }
  ReplyPlan plan = PlanReply(line, request.size(), answer.reply, fault, settings_.timing);
  if (settings_.frames) {
    const std::string head = std::to_string(requests_) + " " + client + ": ";
    settings_.frames(head + "> " + HexOf(request));
    if (const Bytes sent = BytesOf(plan); !sent.empty()) {
      settings_.frames(head + "< " + HexOf(sent));
    }
  }
  return plan;
}

} // namespace loader::simulator
