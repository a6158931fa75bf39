// The register map of one firmware: which value lies where.
//
// The newest firmware has the map of the shape file. How older firmware differed is told in RegisterMap.cpp
// as the history of the recorder: values that came later, blocks and values that stood elsewhere, item
// counts.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/modMain.h"
#include "simulator/Firmware.h"
#include "simulator/RegisterMemory.h"

namespace loader::simulator {

struct MapField {
  std::string section;
  int item = 0; // from 0
  std::string tag;
  int address = 0;
  int words = 1;
  int byteLength = 0; // of a text in code page 932; 0: a number of one register

  [[nodiscard]] bool IsText() const { return byteLength > 0; }
};

// The registers of one section.
struct MapBlock {
  std::string section;
  int address = 0;
  int words = 0;
};

struct RegisterMap {
  std::vector<MapField> fields; // by address
  std::vector<MapBlock> blocks; // in the order of the shape file

  [[nodiscard]] const MapField* Find(std::string_view section, int item, std::string_view tag) const;
  // The field that the register belongs to, or nullptr.
  [[nodiscard]] const MapField* FieldAt(int address) const;
  // The block that the register lies in, or nullptr.
  [[nodiscard]] const MapBlock* BlockAt(int address) const;
};

// The shape of the model: its block of the initial settings file, values at the file's defaults.
// RunTimeFailure when the file cannot be read, is malformed or has no block of the model.
[[nodiscard]] ParamStoreTable LoadShape(const std::filesystem::path& file, Model model);

// RunTimeFailure when a section of the shape leaves the register space, or a value lies outside of its item
// or on another value.
[[nodiscard]] RegisterMap MapOf(const ParamStoreTable& shape, const Firmware& firmware);

// A text as the recorder keeps it: code page 932, two bytes a register, the first in the low byte, closed by
// NULs when it is shorter than its field.
void PutText(RegisterMemory& memory, const MapField& field, std::u16string_view text);
[[nodiscard]] std::string TextBytes(const RegisterMemory& memory, const MapField& field);

} // namespace loader::simulator
