#include "tests/links/RecorderRegisters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

#include "core/Text.h"
#include "core/modMain.h"
#include "tests/comm/ExpectedMemory.h"
#include "tests/comm/ExpectedStore.h"

namespace loader::test {

namespace {

constexpr std::int16_t HeldNumber = 111;
constexpr std::u16string_view HeldText = u"held";
constexpr int TableRegisters = 9999;
constexpr int FirstInput = 30001, FirstHolding = 40001;

using ReadFunction = int (*)(modbus_t*, int, int, std::uint16_t*);

void ReadTable(modbus_t* client, ReadFunction read, int first, Registers& registers) {
  std::array<std::uint16_t, MODBUS_MAX_READ_REGISTERS> words{};
  for (int at = 0; at < TableRegisters; at += static_cast<int>(words.size())) {
    const int count = std::min(static_cast<int>(words.size()), TableRegisters - at);
    ASSERT_EQ(read(client, at, count, words.data()), count) << modbus_strerror(errno);
    for (int i = 0; i < count; ++i) {
      registers[first + at + i] = words.at(static_cast<std::size_t>(i));
    }
  }
}

// One value of the store as the registers tell it.
struct Decoder {
  const Generation& generation;
  const Registers& registers;
  char section;
  int item;

  [[nodiscard]] int Word(int byte) const {
    const Place place = PlaceIn(generation, section);
    return registers.at(place.base + item * place.words + byte / 2);
  }
  [[nodiscard]] int Signed(int byte) const { return static_cast<std::int16_t>(Word(byte)); }

  // An old firmware's number of an input kind: resistance thermometers and voltages have moved since.
  [[nodiscard]] int InputKind(int kind) const {
    constexpr std::array<int, 6> Today{20, 21, 30, 31, 32, 33};
    const int known = generation.number == 0 ? 5 : 6;
    const bool moved = generation.number <= 2 && kind >= 13 && kind < 13 + known;
    return moved ? Today.at(static_cast<std::size_t>(kind - 13)) : kind;
  }

  // The values of generation 2 that follow rules of their own.
  [[nodiscard]] int Special(std::string_view tag) const {
    if (section == 'C') {
      return tag == "SEKI" ? 1 : Word(70) == 1 ? 0 : 15;
    }
    const Decoder totalizer{generation, registers, 'E', item};
    if (section == 'E') {
      return tag == "TSTR" ? 60 * Word(12) + Word(14) : 60 * Word(16) + Word(18);
    }
    return totalizer.Signed(tag == "TOTA" ? 0 : tag == "TSTM" ? 2 : 8);
  }

  [[nodiscard]] int Number(const ParamNumRecord& record) const {
    const std::string tag(Trim(record.Tag));
    if (IsSpecial(generation, section, tag)) {
      return Special(tag);
    }
    const Source source = SourceIn(generation, section, item, tag);
    switch (source.kind) {
    case Source::Default:
      return record.DefaultValue;
    case Source::Kept:
      return section == 'P' ? Signed(2 * record.WordOffset) : HeldNumber;
    case Source::Byte:
      return Signed(source.byte);
    case Source::Own:
      break;
    }
    const int value = Signed(2 * record.WordOffset);
    return section == 'C' && tag == "TYPE" ? InputKind(value) : value;
  }

  [[nodiscard]] std::u16string Text(const ParamTextRecord& record) const {
    const Source source = SourceIn(generation, section, item, Trim(record.Tag));
    if (source.kind == Source::Default) {
      return record.DefaultValue;
    }
    if (source.kind == Source::Kept && section != 'P') {
      return FixedText(HeldText);
    }
    std::string bytes;
    for (int byte = 0; byte < record.ByteLength; ++byte) {
      const int word = Word(2 * record.WordOffset + byte);
      bytes.push_back(static_cast<char>(byte % 2 == 0 ? word & 0xFF : word >> 8));
    }
    const std::u16string text = FromCodePage(bytes);
    return FixedText(text.substr(0, text.find(u'\0')));
  }
};

} // namespace

Registers RegistersOverTcp(int port) {
  Registers registers;
  const std::unique_ptr<modbus_t, decltype(&modbus_free)> client(modbus_new_tcp("127.0.0.1", port),
                                                                 &modbus_free);
  if (modbus_connect(client.get()) != 0) {
    ADD_FAILURE() << modbus_strerror(errno);
    return registers;
  }
  ReadTable(client.get(), modbus_read_registers, FirstHolding, registers);
  ReadTable(client.get(), modbus_read_input_registers, FirstInput, registers);
  modbus_close(client.get());
  return registers;
}

void FillStoreWithHeld() {
  for (ParamSection& section : ParamStore) {
    for (ParamItem& item : section.Items) {
      for (ParamNumRecord& record : item.NumRecords) {
        SetNumber(record, HeldNumber, SlotBoth);
      }
      for (ParamTextRecord& record : item.TextRecords) {
        SetText(record, HeldText, SlotBoth);
      }
    }
  }
}

void ExpectStoreOf(const Generation& generation, const Registers& registers) {
  int values = 0;
  for (const ParamSection& section : ParamStore) {
    for (std::size_t i = 0; i < section.Items.size(); ++i) {
      const Decoder decoder{generation, registers, section.Code[0], static_cast<int>(i)};
      for (const ParamNumRecord& record : section.Items[i].NumRecords) {
        EXPECT_EQ(record.Value, decoder.Number(record)) << section.Code << i << record.Tag;
        ++values;
      }
      for (const ParamTextRecord& record : section.Items[i].TextRecords) {
        EXPECT_EQ(ToUtf8(record.Value), ToUtf8(decoder.Text(record))) << section.Code << i << record.Tag;
        ++values;
      }
    }
  }
  EXPECT_GT(values, 1000);
}

Registers AfterWrite(const Generation& generation, const Registers& before) {
  Memory memory;
  for (int number = FirstHolding; number < FirstHolding + TableRegisters; ++number) {
    memory.push_back(static_cast<std::uint16_t>(before.at(number)));
  }
  for (const char section : Sections(generation.writeOrder)) {
    LaySection(memory, generation, section);
  }
  Registers after = before;
  for (std::size_t i = 0; i < memory.size(); ++i) {
    after[FirstHolding + static_cast<int>(i)] = memory[i];
  }
  return after;
}

void ExpectRegisters(const Registers& expected, const Registers& found) {
  ASSERT_EQ(expected.size(), found.size());
  for (const auto& [number, value] : expected) {
    EXPECT_EQ(found.at(number), value) << "register " << number;
  }
}

} // namespace loader::test
