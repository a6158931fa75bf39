#include "simulator/MemoryFile.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <functional>

#include "core/Text.h"

namespace loader::simulator {

namespace {

std::string Hexadecimal(std::uint16_t value) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "0x%04X", static_cast<unsigned>(value));
  return text.data();
}

std::optional<int> ToNumber(std::string_view text, int base, int lowest, int highest) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (text.empty() || error != std::errc{} || end != text.data() + text.size() || number < lowest ||
      number > highest) {
    return std::nullopt;
  }
  return number;
}

// The field's text when its characters tell all of its bytes.
std::optional<std::string> PlainText(const RegisterMemory& memory, const MapField& field) {
  const std::string bytes = TextBytes(memory, field);
  const std::u16string text = FromCodePage(std::string_view(bytes).substr(0, bytes.find('\0')));
  for (const char16_t character : text) {
    if (character < u' ' || character == 0x7F) {
      return std::nullopt;
    }
  }
  RegisterMemory again;
  PutText(again, field, text);
  for (int word = 0; word < field.words; ++word) {
    if (again.At(field.address + word) != memory.At(field.address + word)) {
      return std::nullopt;
    }
  }
  return ToUtf8(text);
}

std::string RegisterLines(const RegisterMemory& memory, int address, int count) {
  std::string lines;
  for (int i = address; i < address + count; ++i) {
    if (memory.At(i) != 0) {
      lines += std::to_string(i) + "," + Hexadecimal(memory.At(i)) + "\n";
    }
  }
  return lines;
}

std::string FieldLines(const RegisterMemory& memory, const MapField& field) {
  const std::string name = field.section + " " + std::to_string(field.item + 1) + " " + field.tag + ",";
  if (!field.IsText()) {
    return name + std::to_string(static_cast<std::int16_t>(memory.At(field.address))) + "\n";
  }
  const std::optional<std::string> text = PlainText(memory, field);
  return text ? name + *text + "\n" : RegisterLines(memory, field.address, field.words);
}

struct MemoryLine {
  std::string_view name, value; // in front of the first comma, and behind it
};

[[noreturn]] void Refuse(std::size_t lineNumber, const std::string& why) {
  throw MemoryFileError("line " + std::to_string(lineNumber) + ": " + why);
}

// Runs over the lines that are neither empty nor comments. `take` throws RunTimeFailure on a line that is
// wrong.
void ForEachLine(std::string_view text, const std::function<void(const MemoryLine&)>& take) {
  constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(ByteOrderMark)) {
    text.remove_prefix(ByteOrderMark.size());
  }
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) {
      line.remove_suffix(1);
    }
    if (Trim(line).empty() || line.starts_with('#')) {
      continue;
    }
    const std::size_t comma = line.find(',');
    if (comma == std::string_view::npos) {
      Refuse(number, "there is no comma in \"" + std::string(line) + "\"");
    }
    try {
      take({Trim(line.substr(0, comma)), line.substr(comma + 1)});
    } catch (const RunTimeFailure& failure) {
      Refuse(number, failure.what());
    }
  }
}

// "C 1 TAG": section, item from 1, tag.
const MapField& NamedField(std::string_view name, const RegisterMap& map) {
  const std::size_t first = name.find(' ');
  const std::size_t second = first == std::string_view::npos ? first : name.find(' ', first + 1);
  if (second != std::string_view::npos) {
    const std::optional<int> item = ToNumber(name.substr(first + 1, second - first - 1), 10, 1, 32767);
    const MapField* field =
        item ? map.Find(name.substr(0, first), *item - 1, name.substr(second + 1)) : nullptr;
    if (field != nullptr) {
      return *field;
    }
  }
  throw RunTimeFailure("this recorder has no value \"" + std::string(name) + "\"");
}

void TakeRegister(int address, std::string_view value, RegisterMemory& memory) {
  const std::string_view digits = Trim(value);
  const std::optional<int> number = digits.starts_with("0x") ? ToNumber(digits.substr(2), 16, 0, 0xFFFF)
                                                             : ToNumber(digits, 10, -32768, 65535);
  if (!number) {
    throw RunTimeFailure("\"" + std::string(value) + "\" is no value of a register, such as 0x12AB");
  }
  memory.At(address) = static_cast<std::uint16_t>(*number);
}

void TakeField(const MapField& field, std::string_view value, RegisterMemory& memory) {
  if (!field.IsText()) {
    const std::optional<int> number = ToNumber(Trim(value), 10, -32768, 32767);
    if (!number) {
      throw RunTimeFailure("\"" + std::string(value) + "\" is no whole number from -32768 to 32767");
    }
    memory.At(field.address) = static_cast<std::uint16_t>(*number);
    return;
  }
  const std::u16string text = FromUtf8(value);
  if (CodePageLength(text) > static_cast<std::size_t>(field.byteLength)) {
    throw RunTimeFailure("the text is longer than the " + std::to_string(field.byteLength) +
                         " bytes of its field");
  }
  PutText(memory, field, text);
}

bool IsHead(std::string_view name) {
  return name == "model" || name == "firmware";
}

} // namespace

std::string MemoryText(const Firmware& firmware, const RegisterMap& map, const RegisterMemory& memory) {
  std::string text = "# The memory of a simulated recorder: section, item and tag, or a register.\nmodel," +
                     std::string(ModelName(firmware.model)) + "\nfirmware," + firmware.tag + "\n";
  for (const MapField& field : map.fields) {
    text += FieldLines(memory, field);
  }
  for (const int first : {FirstInput, FirstHolding}) {
    for (int address = first; address < first + TableRegisters; ++address) {
      if (map.FieldAt(address) == nullptr) {
        text += RegisterLines(memory, address, 1);
      }
    }
  }
  return text;
}

MemoryHead ReadMemoryHead(std::string_view text) {
  MemoryHead head;
  ForEachLine(text, [&](const MemoryLine& line) {
    const std::string_view value = Trim(line.value);
    if (line.name == "model") {
      if (value != "KOV" && value != "RUG") {
        throw RunTimeFailure("\"" + std::string(value) + "\" is no model: KOV or RUG");
      }
      head.model = value == "KOV" ? Model::Kov : Model::Rug;
    } else if (line.name == "firmware") {
      if (!IsTag(value)) {
        throw RunTimeFailure("\"" + std::string(value) + "\" is no firmware tag, such as V40A");
      }
      head.firmware = std::string(value);
    }
  });
  return head;
}

void ReadMemoryText(std::string_view text, const RegisterMap& map, RegisterMemory& memory) {
  ForEachLine(text, [&](const MemoryLine& line) {
    if (IsHead(line.name)) {
      return;
    }
    if (const std::optional<int> address = ToNumber(line.name, 10, 0, 99999)) {
      if (!RegisterMemory::Exists(*address)) {
        throw RunTimeFailure("there is no register " + std::to_string(*address));
      }
      TakeRegister(*address, line.value, memory);
    } else {
      TakeField(NamedField(line.name, map), line.value, memory);
    }
  });
}

std::string DumpText(const RegisterMemory& memory) {
  std::string text;
  for (const int first : {FirstInput, FirstHolding}) {
    for (int address = first; address < first + TableRegisters; ++address) {
      text += std::to_string(address) + " = " + Hexadecimal(memory.At(address)) + "\n";
    }
  }
  return text;
}

} // namespace loader::simulator
