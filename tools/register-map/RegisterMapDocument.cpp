#include "tools/register-map/RegisterMapDocument.h"

#include <algorithm>
#include <array>
#include <locale>
#include <sstream>

#include "comm/GenerationLayout.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "meaning/Meaning.h"

namespace loader::registermap {

namespace {

constexpr std::string_view Introduction = R"(# Register map

Made from `data/InitSet.Ini`; do not edit it. After a change of that file:

    build/release/bin/register-map data/InitSet.Ini > docs/register-map.md

How to read the tables:

- A *section* is a run of *items* of the same size. The tables give the registers of item 0; item *n* lies *n* times the
  item's words further.
- Registers are numbered from 1 with the table in front. 4xxxx are read with function 3 and written with function 16,
  3xxxx are read with function 4. A request names the register less 40001 or 30001: register 44001 is 4000 (0x0FA0).
- A *number* is one register, signed 16 bits. A *text* is bytes of code page 932, two in a register, the first in the low
  byte, filled with NULs.
- *Default* is what the loader starts with. It numbers `TAG` and `STAG` of the channels ("CH 01") and `GNEM` of the groups
  ("GROUP1"), empties `TAG2`, gives the channels their colours (`COLR`) and records the operation channels (`RECO` 1).
- *Limits* are those of the screens; a register takes every value.
)";

struct Model {
  std::string_view code;
  std::u16string_view versionTag;
};
constexpr std::array<Model, 2> Models{{{"KOV", u"V00L"}, {"RUG", u"V00W"}}};

std::string_view Trimmed(const std::string& padded) {
  return Trim(std::string_view(padded));
}

std::string_view NameOf(std::string_view code) {
  const auto found = std::ranges::find(Sections(), code, &SectionNames::code);
  return found == Sections().end() ? std::string_view{} : found->description;
}

std::string Range(int first, int last) {
  return first == last ? std::to_string(first) : std::to_string(first) + " to " + std::to_string(last);
}

int RegisterCount(const ParamSection& section) {
  return section.ItemWords * section.ItemCount;
}

void WriteOverview(std::ostream& out, const ParamStoreTable& store) {
  out << "| Section | One item is | Base | Item words | Items | Registers |\n|---|---|---|---|---|---|\n";
  for (const ParamSection& section : store) {
    out << "| " << Trimmed(section.Code) << " | " << NameOf(Trimmed(section.Code)) << " | "
        << section.BaseAddress << " | " << section.ItemWords << " | " << section.ItemCount << " | "
        << Range(section.BaseAddress, section.BaseAddress + RegisterCount(section) - 1) << " |\n";
  }
}

void WriteText(std::ostream& out, const ParamSection& section, const ParamTextRecord& text) {
  const int first = section.BaseAddress + text.WordOffset;
  out << "| `" << Trimmed(text.Tag) << "` | " << Range(first, first + text.ByteLength / 2 - 1) << " | "
      << text.WordOffset << " | text | " << text.ByteLength << " | \"" << ToUtf8(TrimRight(text.DefaultValue))
      << "\" | |\n";
}

void WriteNumber(std::ostream& out, const ParamSection& section, const ParamNumRecord& number) {
  out << "| `" << Trimmed(number.Tag) << "` | " << section.BaseAddress + number.WordOffset << " | "
      << number.WordOffset << " | number | 2 | " << number.DefaultValue << " | " << number.MinValue << " to "
      << number.MaxValue << " |\n";
}

void WriteSection(std::ostream& out, std::string_view model, const ParamSection& section) {
  const ParamItem& item = section.Items.front();
  if (item.TextRecords.empty() && item.NumRecords.empty()) {
    return;
  }
  out << "\n### " << model << ", section " << Trimmed(section.Code) << ": " << NameOf(Trimmed(section.Code))
      << "\n\n"
      << "Base " << section.BaseAddress << ", " << section.ItemWords << " words an item, "
      << section.ItemCount << (section.ItemCount == 1 ? " item.\n\n" : " items.\n\n")
      << "| Tag | Register | Word | Kind | Bytes | Default | Limits |\n|---|---|---|---|---|---|---|\n";
  for (const ParamTextRecord& text : item.TextRecords) {
    WriteText(out, section, text);
  }
  for (const ParamNumRecord& number : item.NumRecords) {
    WriteNumber(out, section, number);
  }
}

// Only KOV has recorders of these generations.
constexpr std::string_view OlderGenerations = R"(
## KOV, older generations

Recorders of generations 0 to 2 keep these sections elsewhere; sections that are not named keep their registers. From
generation 3 on the tables above hold. Inside their items, `SEKI`, `SEUN`, `SECU` and `FTIO` of section C, the switches of
section Z, the times of section E (generation 2) and `MSMP`, `SSMP`, `ALMH` and `ALML` of section H (generation 0) have
words of their own: see `comm/ReadLayouts.h`.

| Section | Generation 0 | Generation 1 | Generation 2 | Generation 3 and later |
|---|---|---|---|---|
)";

void WriteOlderGenerations(std::ostream& out, const ParamStoreTable& store) {
  out << OlderGenerations;
  for (const BlockShift& shift : BlockShifts) {
    const auto section = std::ranges::find_if(
        store, [&](const ParamSection& candidate) { return Trimmed(candidate.Code) == shift.section; });
    if (section == store.end()) {
      continue;
    }
    const auto block = [&](int words) {
      const int first = section->BaseAddress + words;
      return Range(first, first + RegisterCount(*section) - 1) +
             (words == 0 ? "" : " (" + std::string(words > 0 ? "+" : "") + std::to_string(words) + ")");
    };
    out << "| " << shift.section;
    for (const int words : shift.byGeneration) {
      out << " | " << block(words);
    }
    out << " | " << block(0) << " |\n";
  }
}

} // namespace

std::string Document(std::u16string_view initialSettings) {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << Introduction;
  for (const Model& model : Models) {
    std::int32_t modeCheckOff = 0;
    const ParamStoreTable store = BuildStore(ReadInitBlock(initialSettings, model.versionTag), modeCheckOff);
    out << "\n## " << model.code << "\n\n";
    WriteOverview(out, store);
    for (const ParamSection& section : store) {
      WriteSection(out, model.code, section);
    }
    if (model.code == "KOV") {
      WriteOlderGenerations(out, store);
    }
  }
  return out.str();
}

} // namespace loader::registermap
