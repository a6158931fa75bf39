#include "simulator/Recorder.h"

#include <array>

namespace loader::simulator {

namespace {

constexpr int LastStation = 247;

bool Touches(int command, int address, int count) {
  return command != 0 && command >= address && command < address + count;
}

int AddressOf(const RegisterMap& map, std::string_view section, std::string_view tag) {
  const MapField* field = map.Find(section, 0, tag);
  return field == nullptr ? 0 : field->address;
}

int DaysOf(int year, int month) {
  constexpr std::array<int, 12> Days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0; // 2000 to 2099
  return month == 2 && leap ? 29 : Days[static_cast<std::size_t>(month - 1)];
}

bool IsTime(const ClockSetting& time) {
  return time.year >= 0 && time.year <= 99 && time.month >= 1 && time.month <= 12 && time.day >= 1 &&
         time.day <= DaysOf(time.year, time.month) && time.hour >= 0 && time.hour <= 23 && time.minute >= 0 &&
         time.minute <= 59;
}

int ClockValue(const Recorder& recorder, std::string_view tag) {
  const MapField* field = recorder.map.Find("H", 0, tag);
  return field == nullptr ? -1 : static_cast<std::int16_t>(recorder.memory.At(field->address));
}

void SetClock(Recorder& recorder, WriteEffects& effects) {
  const ClockSetting time{ClockValue(recorder, "YEAR"), ClockValue(recorder, "MONT"),
                          ClockValue(recorder, "DAYS"), ClockValue(recorder, "HOUR"),
                          ClockValue(recorder, "MINT")};
  if (IsTime(time)) {
    recorder.clock = time;
    effects.clockSet = true;
  } else {
    effects.clockRefused = true;
  }
}

} // namespace

Recorder SwitchOn(const Firmware& firmware, const RegisterMap& map, const RegisterMemory& start,
                  const Status& status) {
  Recorder recorder{firmware, map, start, start};
  recorder.storeCommand = AddressOf(map, "F", "FIX");
  recorder.clockCommand = AddressOf(map, "H", "TIMS");
  PutStatus(status, map, recorder.memory);
  if (const MapField* station = map.Find("H", 0, "COMS")) {
    const int value = start.At(station->address);
    if (value >= 1 && value <= LastStation) {
      recorder.station = value;
    }
  }
  return recorder;
}

WriteEffects AfterWrite(Recorder& recorder, int address, int count) {
  WriteEffects effects;
  if (Touches(recorder.storeCommand, address, count) && recorder.memory.At(recorder.storeCommand) != 0) {
    recorder.kept = recorder.memory;
    recorder.kept.At(recorder.storeCommand) = 0; // the command is no setting
    effects.stored = true;
  }
  if (Touches(recorder.clockCommand, address, count) && recorder.memory.At(recorder.clockCommand) == 1) {
    SetClock(recorder, effects);
  }
  return effects;
}

} // namespace loader::simulator
