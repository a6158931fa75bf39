// Faults on request: what can go wrong between a recorder and a loader, switched on by number or by chance.
#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <string_view>
#include <vector>

#include "simulator/ModbusSlave.h"

namespace loader::simulator {

enum class FaultKind {
  NoReply,
  Late,
  Error,
  Truncated,
  TwoMore,
  CrcOne,
  CrcBoth,
  WrongStation,
  WrongFunction,
  WrongTransaction,
  Trickle,
  Split,
  Garbage,
  CloseBefore,
  CloseMiddle,
  Reset,
};

struct FaultKindRow {
  FaultKind kind;
  std::string_view name;
  std::string_view meaning;
  bool onTcp, onRtu; // where there is such a fault
};
[[nodiscard]] std::span<const FaultKindRow> FaultKinds();
[[nodiscard]] const FaultKindRow& RowOf(FaultKind kind);
[[nodiscard]] bool AppliesTo(FaultKind kind, Line line);

struct FaultRule {
  FaultKind kind = FaultKind::NoReply;
  std::int64_t request = 0; // the number of the request, from 1; 0: by chance
  double chance = 0;        // 0 to 1
};
// "KIND@N" or "KIND:P%". Nothing for any other text.
[[nodiscard]] std::optional<FaultRule> ParseFault(std::string_view text);

// Decides request by request. The same rules and the same seed decide the same for the same run of requests.
class FaultChooser {
public:
  FaultChooser() = default;
  FaultChooser(std::vector<FaultRule> rules, std::uint64_t seed) : rules_(std::move(rules)), random_(seed) {}

  // The fault of the next request on that line: of the rules that hit and apply, the first.
  [[nodiscard]] std::optional<FaultKind> Next(Line line);

private:
  std::vector<FaultRule> rules_;
  std::mt19937_64 random_;
  std::int64_t requests_ = 0;
};

// The reply as this fault leaves it. Where only its header is falsified, its check value is right again.
[[nodiscard]] Bytes Damaged(FaultKind kind, Line line, Bytes reply);

} // namespace loader::simulator
