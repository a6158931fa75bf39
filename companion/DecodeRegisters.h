// Which parameter lies on which register of a recorder, by the layout that its firmware has for the reader.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "comm/ReadLayouts.h"
#include "companion/Parameters.h"

namespace loader {

enum class RegisterSense {
  Number,
  Text,
  InputKind,  // an input kind as an older recorder numbers it
  InputKind0, // the same of the oldest firmware
  TotalKind,  // a switch in place of a kind of totalizing
  OldTime,    // two words: hours and minutes
};

struct RegisterField {
  int address = 0; // 3xxxx or 4xxxx
  int words = 1;
  int bytes = 0; // of a text
  RegisterSense sense = RegisterSense::Number;
  ParameterRef ref;
};

// All of them by address. The model is that of the set-up in force. Sections P, F and S lie where they lie on
// any recorder.
[[nodiscard]] std::vector<RegisterField> FieldsOfGeneration(int generation);

// What has passed: the registers with the number of the exchange that brought them.
class RegisterImage {
public:
  void Put(int address, std::uint16_t value, int exchange) { seen_[address] = {value, exchange}; }
  // The registers of a field, of one exchange or of two that follow each other: what is older is of another
  // read. Empty where one is missing.
  [[nodiscard]] std::optional<std::vector<std::uint16_t>> Of(const RegisterField& field) const;

private:
  struct Seen {
    std::uint16_t value;
    int exchange;
  };
  std::map<int, Seen> seen_;
};

// The value of the field's registers, today's number of an input kind included.
[[nodiscard]] StoredValue ValueOfRegisters(const RegisterField& field,
                                           const std::vector<std::uint16_t>& registers);

// The value as an engineer reads it, where it stands for itself: an entry of a list, a time, addresses. Empty
// where its number says as much, and where other parameters decide what it means.
[[nodiscard]] std::u16string TextOfItself(const ParameterRef& ref, const StoredValue& value,
                                          const Speech& speech);

} // namespace loader
