#include "simulator/Commissioning.h"

#include <algorithm>

#include "core/Text.h"

namespace loader::simulator {

namespace {

constexpr int Unlimited = 32767;

// What a generation of KOV's firmware has room for. RUG never had less than today.
struct Capability {
  int generation;
  int channels;         // that another value may refer to, from 1
  int relays;           // of a channel alarm
  int digitalInputs;    // that a message or a mail may refer to
  int digitalFunctions; // DIKI counts from 0
  int externalInputs;   // digital inputs and channel alarms, from 0
};
constexpr Capability Capabilities[] = {
    {0, 9, 10, 5, 2, Unlimited},
    {1, 9, 10, 5, 2, Unlimited},
    {2, 18, 10, 5, 4, Unlimited},
    {3, 18, Unlimited, Unlimited, Unlimited, 82},
    {4, 18, Unlimited, Unlimited, Unlimited, 82},
};
constexpr Capability Today{5, Unlimited, Unlimited, Unlimited, Unlimited, Unlimited};

const Capability& CapabilityOf(const Firmware& firmware) {
  const auto row = std::find_if(std::begin(Capabilities), std::end(Capabilities),
                                [&](const Capability& old) { return old.generation == firmware.generation; });
  return firmware.IsKov() && row != std::end(Capabilities) ? *row : Today;
}

// Input kinds by their numbers up to generation 2; those below 13 have kept theirs.
struct OldKind {
  int today, old;
};
constexpr OldKind OldKinds[] = {{20, 13}, {21, 14}, {30, 15}, {31, 16}, {32, 17}, {33, 18}};

int KindFor(int generation, int kind) {
  if (generation > 2 || kind < 13) {
    return kind;
  }
  for (const OldKind& row : OldKinds) {
    if (row.today == kind) {
      // The first firmware has one 5 V range for 1-5 V and 0-5 V.
      return generation == 0 ? std::min(row.old, 17) : row.old;
    }
  }
  return 0; // skipped: the firmware has no such input
}

const ParamNumRecord* FindNumber(const ParamStoreTable& setup, std::string_view code, int item,
                                 std::string_view tag) {
  for (const ParamSection& section : setup) {
    if (Trim(section.Code) != code || item < 0 || static_cast<std::size_t>(item) >= section.Items.size()) {
      continue;
    }
    for (const ParamNumRecord& record : section.Items[static_cast<std::size_t>(item)].NumRecords) {
      if (Trim(record.Tag) == tag) {
        return &record;
      }
    }
  }
  return nullptr;
}

int Number(const ParamStoreTable& setup, std::string_view code, int item, std::string_view tag) {
  const ParamNumRecord* record = FindNumber(setup, code, item, tag);
  return record == nullptr ? 0 : record->Value;
}

std::u16string_view TextOf(const ParamStoreTable& setup, const MapField& field) {
  for (const ParamSection& section : setup) {
    if (Trim(section.Code) != field.section) {
      continue;
    }
    for (const ParamTextRecord& record : section.Items[static_cast<std::size_t>(field.item)].TextRecords) {
      if (Trim(record.Tag) == field.tag) {
        return TrimRight(std::u16string_view(record.Value));
      }
    }
  }
  return {};
}

int UpTo(int value, int highest) {
  return value > highest ? 0 : value;
}

int Below(int value, int bound) {
  return value >= bound ? 0 : value;
}

// A reference that depends on the timing beside it: a digital input for 1 and 2, a channel for 3 and 4.
int TriggerFor(const Capability& capability, int timing, int value) {
  if (timing == 1 || timing == 2) {
    return Below(value, capability.digitalInputs);
  }
  return timing == 3 || timing == 4 ? Below(value, capability.channels) : value;
}

// The totalizer of generation 2: its switches are in today's section Z, its times count minutes today.
int OldTotalizerValue(const ParamStoreTable& setup, std::string_view tag) {
  if (tag == "TOTA" || tag == "TSTM" || tag == "TSIG") {
    return Number(setup, "Z", 0, tag);
  }
  const int start = Number(setup, "E", 0, "TSTR");
  const int stop = Number(setup, "E", 0, "TSTO");
  if (tag == "TTSH") {
    return start / 60;
  }
  if (tag == "TTSM") {
    return start % 60;
  }
  if (tag == "TTEH") {
    return stop / 60;
  }
  return tag == "TTEM" ? stop % 60 : Number(setup, "E", 0, tag);
}

bool IsAlarmRelay(const MapField& field) {
  return field.section == "A" && field.tag.size() == 4 && field.tag.substr(2) == "RL";
}

// The value as this firmware keeps it.
int ValueFor(const ParamStoreTable& setup, const Firmware& firmware, const MapField& field) {
  const Capability& capability = CapabilityOf(firmware);
  const int value = Number(setup, field.section, field.item, field.tag);
  const auto is = [&](std::string_view section, std::string_view tag) {
    return field.section == section && field.tag == tag;
  };
  if (firmware.IsKov() && is("C", "TYPE")) {
    return KindFor(firmware.generation, value);
  }
  if (firmware.IsKov() && firmware.generation == 2) {
    if (field.section == "E") {
      return OldTotalizerValue(setup, field.tag);
    }
    if (is("C", "SEKI")) { // a switch then: totals by day
      return value == 1 && Number(setup, "C", field.item, "STYP") == 0 ? 1 : 0;
    }
  }
  if (is("C", "SUBC") || (field.section == "G" && field.tag.starts_with("GC"))) {
    return UpTo(value, capability.channels);
  }
  if (is("C", "OTCH")) {
    return Below(value, capability.channels);
  }
  if (is("C", "SDIG") || is("E", "TEXT")) {
    return Below(value, capability.externalInputs);
  }
  if (IsAlarmRelay(field)) {
    return UpTo(value, capability.relays);
  }
  if (is("D", "DIKI")) {
    return Below(value, capability.digitalFunctions);
  }
  if (is("M", "MTM2")) {
    return TriggerFor(capability, Number(setup, "M", field.item, "MTM1"), value);
  }
  if (is("X", "ETG1")) {
    return TriggerFor(capability, Number(setup, "X", field.item, "ETRG"), value);
  }
  return value;
}

} // namespace

void PutIdentity(const Firmware& firmware, const RegisterMap& map, RegisterMemory& memory) {
  if (const MapField* model = map.Find("P", 0, "PILC")) {
    PutText(memory, *model, Widen(std::string(ModelName(firmware.model)) + "-100"));
  }
  if (const MapField* tag = map.Find("P", 0, "PVER")) {
    PutText(memory, *tag, Widen(firmware.tag));
  }
}

void Commission(const ParamStoreTable& setup, const Firmware& firmware, const RegisterMap& map,
                RegisterMemory& memory) {
  for (const MapField& field : map.fields) {
    if (field.IsText()) {
      PutText(memory, field, TextOf(setup, field));
    } else {
      memory.At(field.address) = static_cast<std::uint16_t>(ValueFor(setup, firmware, field));
    }
  }
  PutIdentity(firmware, map, memory);
}

void FillUnused(const RegisterMap& map, std::uint16_t pattern, RegisterMemory& memory) {
  for (const int first : {FirstInput, FirstHolding}) {
    for (int address = first; address < first + TableRegisters; ++address) {
      if (map.FieldAt(address) == nullptr) {
        memory.At(address) = pattern;
      }
    }
  }
}

void PutStatus(const Status& status, const RegisterMap& map, RegisterMemory& memory) {
  if (const MapField* field = map.Find("S", 0, "SYS1")) {
    memory.At(field->address) =
        static_cast<std::uint16_t>((status.recording ? 0x0001U : 0U) | (status.computing ? 0x0080U : 0U));
  }
}

} // namespace loader::simulator
