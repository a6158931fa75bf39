#include "simulator/Trace.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace loader::simulator {

namespace {

constexpr std::array<std::string_view, 5> ExceptionNames = {
    "no exception", "illegal function", "illegal data address", "illegal data value", "slave device failure"};

struct FunctionName {
  int function;
  std::string_view verb, registers;
};
constexpr FunctionName Functions[] = {{3, "read", "holding register"},
                                      {4, "read", "input register"},
                                      {6, "write", "holding register"},
                                      {16, "write", "holding register"}};

bool SameItem(const MapField& left, const MapField& right) {
  return left.section == right.section && left.item == right.item;
}

std::size_t FieldsOfItem(const RegisterMap& map, const MapField& of) {
  return static_cast<std::size_t>(std::count_if(map.fields.begin(), map.fields.end(),
                                                [&](const MapField& field) { return SameItem(field, of); }));
}

} // namespace

std::string NamesOf(const RegisterMap& map, int address, int count) {
  std::vector<const MapField*> touched;
  for (const MapField& field : map.fields) {
    if (field.address < address + count && field.address + field.words > address) {
      touched.push_back(&field);
    }
  }
  std::string names;
  for (auto first = touched.begin(); first != touched.end();) {
    const auto last =
        std::find_if(first, touched.end(), [&](const MapField* field) { return !SameItem(*field, **first); });
    names +=
        (names.empty() ? "" : "; ") + (*first)->section + " " + std::to_string((*first)->item + 1) + ": ";
    if (static_cast<std::size_t>(last - first) == FieldsOfItem(map, **first) && last - first > 1) {
      names += "all";
    } else {
      for (auto field = first; field != last; ++field) {
        names += (field == first ? "" : ", ") + (*field)->tag;
      }
    }
    first = last;
  }
  return names.empty() ? "no value" : names;
}

std::string Describe(const Request& request, const RegisterMap& map) {
  for (const FunctionName& row : Functions) {
    if (row.function == request.function) {
      const bool one = request.count == 1;
      std::string text = std::string(row.verb) + " " + std::to_string(request.count) + " " +
                         std::string(row.registers) + (one ? " " : "s ") + std::to_string(request.address);
      if (!one) {
        text += "-" + std::to_string(request.address + request.count - 1);
      }
      return text + " (" + NamesOf(map, request.address, request.count) + ")";
    }
  }
  return "function " + std::to_string(request.function);
}

std::string Describe(const ModbusAnswer& answer, const WriteEffects& effects, const Recorder& recorder,
                     std::optional<FaultKind> fault) {
  std::string text;
  if (effects.stored) {
    text += "settings stored; ";
  }
  if (effects.clockSet && recorder.clock) {
    std::array<char, 64> time{};
    const ClockSetting& clock = *recorder.clock;
    std::snprintf(time.data(), time.size(), "clock set to 20%02d-%02d-%02d %02d:%02d; ", clock.year,
                  clock.month, clock.day, clock.hour, clock.minute);
    text += time.data();
  }
  if (effects.clockRefused) {
    text += "clock not set: no such date and time; ";
  }
  if (fault) {
    text += "fault " + std::string(RowOf(*fault).name) + "; ";
  }
  if (answer.exception != 0) {
    const auto code = static_cast<std::size_t>(answer.exception);
    const std::string_view name = code < ExceptionNames.size() ? ExceptionNames[code] : "unknown";
    return text + "-> exception " + std::to_string(answer.exception) + " (" + std::string(name) + ")";
  }
  if (answer.reply.empty()) {
    return text + "-> no reply: " + answer.silence;
  }
  return text + "-> " + std::to_string(answer.reply.size()) + " bytes";
}

std::string HexOf(std::span<const std::uint8_t> bytes) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    text += text.empty() ? "" : " ";
    text += Digits[byte >> 4];
    text += Digits[byte & 0xF];
  }
  return text;
}

} // namespace loader::simulator
