// The list of a plant's recorders: a CSV file that says where each recorder is and which file is its own.
//
//   name,address,model,file
//   Boiler 1,tcp:192.168.1.11,RUG,boiler1.RUG
//   "Dryer, left",serial:/dev/ttyUSB0@19200#2,,dryer.KOV
//
// UTF-8, with or without a byte order mark. The columns may stand in any order; `model` may be empty or left
// out. Fields in quotes as in RFC 4180; what is not in quotes has no blanks at its ends. A line that begins
// with '#' is a comment; lines without content are passed over.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "companion/Phrases.h"
#include "companion/SetUps.h"

namespace loader {

struct FleetRecorder {
  int line = 0; // in the list, from 1
  std::u16string name;
  SetUpAddress address;
  std::string model;   // empty: not said
  std::u16string file; // as it is written
};

struct FleetListDefect {
  int line = 0;
  std::u16string reason;
};

struct FleetList {
  std::vector<FleetRecorder> recorders;
  std::vector<FleetListDefect> defects; // in the order of their lines; with one the list is not to be used
};
// All defects of the list, and no recorder twice: neither its name nor its address nor its file.
[[nodiscard]] FleetList ReadFleetList(std::string_view bytes, Language language);

// What two recorders that cannot be talked to at the same time have in common: the serial device, however
// it is named, the host with its port, the USB device.
[[nodiscard]] std::u16string WireOf(const SetUpAddress& address);

} // namespace loader
