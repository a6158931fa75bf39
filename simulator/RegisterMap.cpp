#include "simulator/RegisterMap.h"

#include <algorithm>
#include <optional>

#include "core/Text.h"
#include "core/modFile.h"

namespace loader::simulator {

namespace {

constexpr int Never = 99;

// The first generation of KOV's firmware that has the section, and of RUG's.
struct SectionHistory {
  std::string_view section;
  int sinceKov, sinceRug;
};
constexpr SectionHistory Sections[] = {
    {"C", 0, 20},
    {"A", 0, 20},
    {"G", 0, 20},
    {"T", 0, 20},
    {"B", 0, 20},
    {"H", 0, 20},
    {"M", 0, 20},
    {"U", 0, 20},
    {"D", 0, 20},
    {"P", 0, 20},
    {"F", 0, 20},
    {"S", 0, 20},
    {"E", 2, 20}, // the totalizer came with generation 2, with a layout of
                  // its own
    {"Z", 3, 20},
    {"N", 3, 20},
    {"O", 3, 20}, // constants and operation channels
    {"J", 4, 20},
    {"K", 4, 20},
    {"X", 4, 20}, // network, users, mail
    {"I", 4, 20},
    {"L", 4, Never},
    {"Y", 4, Never}, // RUG was never a serial master
};

// Values that came later than their section.
struct TagHistory {
  std::string_view section, tag;
  int sinceKov, sinceRug;
};
constexpr TagHistory Tags[] = {
    {"C", "SUBC", 1, 20}, {"C", "ROOT", 2, 20}, {"C", "FTIO", 2, 20}, {"C", "SEKI", 2, 20},
    {"C", "SEUN", 2, 20}, {"C", "SECU", 2, 20}, {"C", "TAG2", 3, 20}, {"C", "STAG", 3, 20},
    {"C", "RECM", 3, 20}, {"C", "OTCH", 3, 20}, {"C", "SSCL", 3, 20}, {"C", "STYP", 3, 20},
    {"C", "SDIG", 3, 20}, {"C", "SBAS", 3, 20}, {"C", "SRES", 3, 20}, {"C", "TAIS", 5, 21},
    {"C", "SRIN", 5, 20}, {"T", "TPVD", 1, 20}, {"T", "TMEM", 1, 20}, {"B", "BBRM", 1, 20},
    {"H", "TIMS", 1, 20}, {"H", "YEAR", 1, 20}, {"H", "MONT", 1, 20}, {"H", "DAYS", 1, 20},
    {"H", "HOUR", 1, 20}, {"H", "MINT", 1, 20}, {"H", "ASBY", 1, 20}, {"H", "FSTN", 1, 20},
    {"H", "FZTI", 1, 20}, {"H", "FPOI", 1, 20}, {"H", "FTIR", 1, 20}, {"H", "SHOU", 3, 20},
    {"H", "CFFL", 3, 20}, {"H", "FTIT", 3, 20}, {"H", "BAAL", 3, 20}, {"H", "COMS", 3, 20},
    {"H", "COMB", 3, 20}, {"H", "COMP", 3, 20}, {"H", "PAS1", 3, 20}, {"H", "PAS2", 3, 20},
    {"H", "RPAS", 3, 20}, {"H", "BETU", 4, 20},
};

// A block that stood elsewhere, by so many registers.
struct MovedBlock {
  std::string_view section;
  int first, last; // generations
  int shift;
};
constexpr MovedBlock MovedBlocks[] = {{"M", 0, 2, -22}, {"D", 0, 2, 5}, {"H", 0, 0, 6}, {"E", 2, 2, 60}};

// A value that stood at another word of its item.
struct MovedTag {
  std::string_view section, tag;
  int first, last;
  int word;
};
constexpr MovedTag MovedTags[] = {
    {"C", "SEKI", 2, 2, 35}, {"C", "SEUN", 2, 2, 40}, {"C", "SECU", 2, 2, 41}, {"C", "FTIO", 2, 2, 42},
    {"H", "MSMP", 0, 0, 2},  {"H", "SSMP", 0, 0, 3},  {"H", "ALMH", 0, 0, 18}, {"H", "ALML", 0, 0, 19},
};

// Fewer items than today.
struct ItemHistory {
  std::string_view section;
  int first, last;
  int items;
};
constexpr ItemHistory Items[] = {
    {"C", 0, 1, 9}, {"A", 0, 1, 9}, {"C", 2, 2, 18}, {"A", 2, 2, 18},
    {"G", 0, 0, 1}, {"T", 0, 0, 1}, {"B", 0, 0, 1},  {"D", 0, 2, 5},
};

// The whole totalizer block of generation 2: switches and start and stop as hours and minutes.
struct OldField {
  std::string_view tag;
  int word;
};
constexpr OldField OldTotalizer[] = {{"TOTA", 0}, {"TSTM", 1}, {"TCYC", 2}, {"TSIG", 4},
                                     {"TTSH", 6}, {"TTSM", 7}, {"TTEH", 8}, {"TTEM", 9}};

bool Has(const Firmware& firmware, int sinceKov, int sinceRug) {
  return firmware.generation >= (firmware.IsKov() ? sinceKov : sinceRug);
}

bool Covers(const Firmware& firmware, int first, int last) {
  return firmware.IsKov() && firmware.generation >= first && firmware.generation <= last;
}

bool HasSection(const Firmware& firmware, std::string_view section) {
  for (const SectionHistory& row : Sections) {
    if (row.section == section) {
      return Has(firmware, row.sinceKov, row.sinceRug);
    }
  }
  // A section that the history does not know came with the newest firmware.
  return Has(firmware, 5, 21);
}

bool HasTag(const Firmware& firmware, std::string_view section, std::string_view tag) {
  for (const TagHistory& row : Tags) {
    if (row.section == section && row.tag == tag) {
      return Has(firmware, row.sinceKov, row.sinceRug);
    }
  }
  return true;
}

int ItemCount(const Firmware& firmware, std::string_view section, int today) {
  for (const ItemHistory& row : Items) {
    if (row.section == section && Covers(firmware, row.first, row.last)) {
      return std::min(row.items, today);
    }
  }
  return today;
}

int BlockShift(const Firmware& firmware, std::string_view section) {
  for (const MovedBlock& row : MovedBlocks) {
    if (row.section == section && Covers(firmware, row.first, row.last)) {
      return row.shift;
    }
  }
  return 0;
}

int WordOf(const Firmware& firmware, std::string_view section, std::string_view tag, int today) {
  for (const MovedTag& row : MovedTags) {
    if (row.section == section && row.tag == tag && Covers(firmware, row.first, row.last)) {
      return row.word;
    }
  }
  return today;
}

// The values of one item, at words relative to the item.
std::vector<MapField> ItemFields(const ParamSection& section, const Firmware& firmware) {
  const std::string code(Trim(section.Code));
  std::vector<MapField> fields;
  if (code == "E" && Covers(firmware, 2, 2)) {
    for (const OldField& old : OldTotalizer) {
      fields.push_back({code, 0, std::string(old.tag), old.word, 1, 0});
    }
    return fields;
  }
  const ParamItem& item = section.Items.front();
  for (const ParamTextRecord& record : item.TextRecords) {
    const std::string tag(Trim(record.Tag));
    if (HasTag(firmware, code, tag) && record.ByteLength > 0) {
      fields.push_back({code, 0, tag, WordOf(firmware, code, tag, record.WordOffset),
                        (record.ByteLength + 1) / 2, record.ByteLength});
    }
  }
  for (const ParamNumRecord& record : item.NumRecords) {
    const std::string tag(Trim(record.Tag));
    if (HasTag(firmware, code, tag)) {
      fields.push_back({code, 0, tag, WordOf(firmware, code, tag, record.WordOffset), 1, 0});
    }
  }
  return fields;
}

void RequireRegisters(int address, int words, const std::string& what) {
  const int last = address + words - 1;
  if (words < 1 || !RegisterMemory::Exists(address) || !RegisterMemory::Exists(last) ||
      address / 10000 != last / 10000) {
    throw RunTimeFailure(what + " lies outside of the register space");
  }
}

void RequireApart(const std::vector<MapField>& fields) {
  for (std::size_t i = 1; i < fields.size(); ++i) {
    const MapField& before = fields[i - 1];
    if (before.address + before.words > fields[i].address) {
      throw RunTimeFailure(before.section + " " + before.tag + " and " + fields[i].section + " " +
                           fields[i].tag + " lie on the same register " + std::to_string(fields[i].address));
    }
  }
}

} // namespace

ParamStoreTable LoadShape(const std::filesystem::path& file, Model model) {
  std::int32_t modeCheckOff = 0;
  return BuildStore(ReadInitBlock(FromCodePage(ReadWholeFile(file)), Widen(BlockTag(model))), modeCheckOff);
}

RegisterMap MapOf(const ParamStoreTable& shape, const Firmware& firmware) {
  RegisterMap map;
  for (const ParamSection& section : shape) {
    const std::string code(Trim(section.Code));
    if (!HasSection(firmware, code)) {
      continue;
    }
    const int items = ItemCount(firmware, code, section.ItemCount);
    const int address = section.BaseAddress + BlockShift(firmware, code);
    RequireRegisters(address, items * section.ItemWords, "section " + code);
    map.blocks.push_back({code, address, items * section.ItemWords});
    const std::vector<MapField> fields = ItemFields(section, firmware);
    for (int item = 0; item < items; ++item) {
      for (MapField field : fields) {
        if (field.address < 0 || field.address + field.words > section.ItemWords) {
          throw RunTimeFailure(code + " " + field.tag + " lies outside of its item");
        }
        field.item = item;
        field.address += address + item * section.ItemWords;
        map.fields.push_back(std::move(field));
      }
    }
  }
  std::stable_sort(map.fields.begin(), map.fields.end(),
                   [](const MapField& left, const MapField& right) { return left.address < right.address; });
  RequireApart(map.fields);
  return map;
}

const MapField* RegisterMap::Find(std::string_view section, int item, std::string_view tag) const {
  for (const MapField& field : fields) {
    if (field.section == section && field.item == item && field.tag == tag) {
      return &field;
    }
  }
  return nullptr;
}

const MapField* RegisterMap::FieldAt(int address) const {
  const auto after =
      std::upper_bound(fields.begin(), fields.end(), address,
                       [](int wanted, const MapField& field) { return wanted < field.address; });
  if (after == fields.begin()) {
    return nullptr;
  }
  const MapField& field = *std::prev(after);
  return address < field.address + field.words ? &field : nullptr;
}

const MapBlock* RegisterMap::BlockAt(int address) const {
  for (const MapBlock& block : blocks) {
    if (address >= block.address && address < block.address + block.words) {
      return &block;
    }
  }
  return nullptr;
}

void PutText(RegisterMemory& memory, const MapField& field, std::u16string_view text) {
  std::string bytes = ToCodePage(text);
  bytes.resize(static_cast<std::size_t>(field.words) * 2, '\0');
  if (bytes.size() > static_cast<std::size_t>(field.byteLength)) {
    bytes[static_cast<std::size_t>(field.byteLength)] = '\0'; // the odd byte of a field of odd length
  }
  for (int word = 0; word < field.words; ++word) {
    const auto at = static_cast<std::size_t>(word) * 2;
    const auto low = static_cast<unsigned char>(bytes[at]);
    const auto high = static_cast<unsigned char>(bytes[at + 1]);
    memory.At(field.address + word) = static_cast<std::uint16_t>(low | (high << 8));
  }
}

std::string TextBytes(const RegisterMemory& memory, const MapField& field) {
  std::string bytes;
  for (int word = 0; word < field.words; ++word) {
    const std::uint16_t value = memory.At(field.address + word);
    bytes.push_back(static_cast<char>(value & 0xFF));
    bytes.push_back(static_cast<char>(value >> 8));
  }
  bytes.resize(static_cast<std::size_t>(field.byteLength));
  return bytes;
}

} // namespace loader::simulator
