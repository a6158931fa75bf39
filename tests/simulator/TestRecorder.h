// A recorder's memory at hand: the shape that ships, a firmware, its map, and the plant commissioned in it.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "core/Text.h"
#include "simulator/Commissioning.h"
#include "simulator/Plant.h"
#include "simulator/Recorder.h"
#include "simulator/RegisterMap.h"

namespace loader::simulator {

inline const char* const ShippedShape = LOADER_DATA_DIR "/InitSet.Ini";

struct TestRecorder {
  TestRecorder(Model model, std::string_view tag)
      : shape(LoadShape(ShippedShape, model)), firmware(FirmwareOf(model, tag)), map(MapOf(shape, firmware)) {
    Commission(PlantSetup(shape, model), firmware, map, memory);
  }

  // The field must exist. Items count from 0.
  [[nodiscard]] const MapField& Field(std::string_view section, int item, std::string_view tag) const {
    const MapField* field = map.Find(section, item, tag);
    if (field == nullptr) {
      throw std::out_of_range("no field " + std::string(section) + std::to_string(item) + std::string(tag));
    }
    return *field;
  }
  [[nodiscard]] int Address(std::string_view section, int item, std::string_view tag) const {
    return Field(section, item, tag).address;
  }
  [[nodiscard]] int Number(std::string_view section, int item, std::string_view tag) const {
    return static_cast<std::int16_t>(memory.At(Address(section, item, tag)));
  }
  // As UTF-8, up to the first NUL.
  [[nodiscard]] std::string Text(std::string_view section, int item, std::string_view tag) const {
    const std::string bytes = TextBytes(memory, Field(section, item, tag));
    return ToUtf8(FromCodePage(bytes.substr(0, bytes.find('\0'))));
  }
  [[nodiscard]] bool Has(std::string_view section, int item, std::string_view tag) const {
    return map.Find(section, item, tag) != nullptr;
  }
  [[nodiscard]] Recorder On(const Status& status = {}) const {
    return SwitchOn(firmware, map, memory, status);
  }

  ParamStoreTable shape;
  Firmware firmware;
  RegisterMap map;
  RegisterMemory memory;
};

} // namespace loader::simulator
