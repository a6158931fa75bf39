// The template of the text output: a byte for the model and for whether the run goes through files, then
// changes of the store (a number and a text of an arbitrary item each), then the template.
#include <algorithm>
#include <fstream>
#include <optional>
#include <string>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "files/TextOutput.h"
#include "tests/fuzz/FuzzPlatform.h"
#include "tests/fuzz/FuzzStore.h"

namespace loader::fuzz {

namespace {

// What a recorder or a file may bring: any number, any text of the code page.
void ChangeStore(FuzzInput& input) {
  for (int changes = input.Choice(8); changes > 0; --changes) {
    ParamSection& section = ParamStore[static_cast<std::size_t>(input.Byte()) % ParamStore.size()];
    ParamItem& item = section.Items[static_cast<std::size_t>(input.Byte()) % section.Items.size()];
    const std::size_t which = input.Byte();
    const std::int16_t number = input.Number16();
    if (!item.NumRecords.empty()) {
      item.NumRecords[which % item.NumRecords.size()].Value = number;
    }
    const std::string_view bytes = input.ShortText();
    if (!item.TextRecords.empty()) {
      SetText(item.TextRecords[which % item.TextRecords.size()], FromCodePage(bytes), SlotValue);
    }
  }
}

std::string Values() {
  std::string all;
  ForEachRecord(
      ParamStore,
      [&](const ParamNumRecord& record) {
        all.append(reinterpret_cast<const char*>(&record.Value), sizeof record.Value);
      },
      [&](const ParamTextRecord& record) { all += ToUtf8(record.Value); });
  return all;
}

std::optional<std::string> Printed(std::string_view bytes) {
  try {
    return PrintedSheet(bytes);
  } catch (const RunTimeFailure&) {
    return std::nullopt;
  }
}

void CheckLines(std::string_view bytes, std::string_view sheet) {
  constexpr std::size_t LongestLine = 2047;
  while (!bytes.empty()) {
    Require(!sheet.empty(), "every line of the template has its line");
    const std::string_view line = TakeLine(bytes);
    const std::string_view printed = sheet.substr(0, sheet.find("\r\n"));
    Require(printed.size() < sheet.size(), "a line of the sheet has its end");
    sheet.remove_prefix(printed.size() + 2);
    Require(printed.size() <= LongestLine, "a line fits its buffer");
    Require(printed.find_first_of("\r\n") == std::string_view::npos, "a value breaks no line");
    if (std::ranges::count(line, '"') < 2) {
      Require(printed == line.substr(0, line.find('\0')), "a line without a field is copied");
    }
  }
  Require(sheet.empty(), "the sheet has no line of its own");
}

void CheckFiles(std::string_view bytes, const std::optional<std::string>& printed,
                const std::filesystem::path& folder, FuzzPlatform& platform) {
  const std::filesystem::path sheet = folder / "sheet.txt";
  std::ofstream(folder / ("Text" + ModelCode + ".Ini"), std::ios::binary) << bytes;
  std::ofstream(sheet, std::ios::binary) << "older";
  platform.fileDialogs.chosen = sheet;
  platform.boxes.shown.clear();
  WriteTextOutput();
  Require(ReadWholeFile(sheet) == printed.value_or("older"), "a sheet is printed whole or not at all");
  Require(platform.BoxesOf(11002) == (printed ? 0 : 1), "a sheet that is not printed is told");
  Require(!std::filesystem::exists(folder / "sheet.txt.new"), "no other file is left");
}

void RunOne(FuzzInput input) {
  static FuzzPlatform platform;
  static const std::filesystem::path folder = platform.MakeFolder();
  const int way = input.Choice(16);
  StartWithShippedStore((way & 1) != 0 ? "RUG" : "KOV");
  ChangeStore(input);
  const std::string_view bytes = input.RestText();
  const std::string before = Values();
  const std::optional<std::string> printed = Printed(bytes);
  if (printed) {
    CheckLines(bytes, *printed);
  }
  if (way >= 14) {
    CheckFiles(bytes, printed, folder, platform);
  }
  Require(Values() == before, "a print changes nothing in the store");
}

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::RunOne(loader::fuzz::FuzzInput(data, size));
  return 0;
}
