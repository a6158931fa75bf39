#include "tools/parameters/ParametersDocument.h"

#include <algorithm>
#include <array>
#include <locale>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include "channelscreens/frmChSetting.h"
#include "channelscreens/frmOperationChSet.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "dialogs/frmConstSetting.h"
#include "dialogs/frmEMailTriggerSetting.h"
#include "dialogs/frmGroupSetting.h"
#include "dialogs/frmMsgSetting.h"
#include "dialogs/frmUnitSetting.h"
#include "mainwindow/SettingsPages.h"
#include "mainwindow/TableCells.h"
#include "meaning/Meaning.h"

namespace loader::parameters {

namespace {

constexpr std::string_view Introduction = R"(# Parameters

Made from the meaning table (`meaning/MeaningTable.cpp`) and `data/InitSet.Ini`; do not edit it. After a change of either:

    build/release/bin/parameters data/InitSet.Ini > docs/parameters.md

How to read the tables:

- *Meaning* is what the stored number stands for. `3 = T熱電対` is a stored value and its text; of a long list the first and
  the last row are given. "at POIN" tells where the decimal point stands: 125 at position 1 is 12.5.
- *Limits* are those of the stored number, `KOV` / `RUG` where the models differ. A number at a channel's position may be
  limited by its input kind instead.
- *Shown by* names the columns of the tables and the fields of the pages. What has none is kept in files and recorders.
  `fgrOperationChSet` shows the columns of `fgrCh` from 6 on, three further right.
- A tag with `#` is a family: `A#VL` is `A1VL` to `A4VL`.
- Where the registers lie: [register-map.md](register-map.md).
)";

struct Model {
  std::string_view code;
  std::u16string_view versionTag;
  void (*take)();
};
constexpr std::array<Model, 2> Models{{{"KOV", u"V00L", TakeKovProfile}, {"RUG", u"V00W", TakeRugProfile}}};
constexpr std::size_t Kov = 0;

// --- Words for the rules

std::string_view Where(Position position) {
  switch (position) {
  case Position::Whole:
    return "";
  case Position::Channel:
    return "at POIN";
  case Position::FValue:
    return "at POIN, under FTIO at FPOI";
  case Position::Measuring:
    return "at the position of the input kind";
  case Position::Terminals:
    return "at the position of the input kind, for another channel's value at that of its kind";
  case Position::Engineering:
    return "at POIN under scaling and for another channel's value, else at that of the input kind";
  case Position::RecordRange:
    return "at FPOI under FTIO, else as the engineering value";
  case Position::Constant:
    return "at CONP";
  }
  return "";
}

std::string_view Limited(Within within) {
  switch (within) {
  case Within::Record:
    return "";
  case Within::Kind:
    return "limited by the input kind";
  case Within::Terminals:
    return "limited by the terminals: -1000 to 5500";
  case Within::Engineering:
    return "without scaling limited by the input kind; under the logarithm -9 to 9";
  case Within::RecordRange:
    return "without scaling and FTIO limited by the input kind; under the logarithm -9 to 9";
  case Within::Alarm:
    return "without scaling and FTIO limited by the input kind";
  }
  return "";
}

std::string_view UnderLog(UnderLogarithm rule) {
  switch (rule) {
  case UnderLogarithm::AsEver:
    return "";
  case UnderLogarithm::Exponent:
    return "under the logarithm a whole exponent";
  case UnderLogarithm::Power:
    return "under the logarithm an exponent, shown as a power of ten";
  case UnderLogarithm::Scaled:
    return "under the logarithm on the scale of the measuring range, shown as a power of ten";
  }
  return "";
}

std::string Joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) {
    if (!part.empty()) {
      text += (text.empty() ? "" : "; ") + std::string(part);
    }
  }
  return text;
}

// --- Lists

// Reserved rows have no text and are left out.
std::string ListWords(const ChoiceList& list, int rows) {
  constexpr std::size_t MostRows = 14;
  std::vector<std::string> words;
  for (int row = 0; row < rows; ++row) {
    if (const auto text = RowText(list, row); text && !text->empty()) {
      words.push_back(std::to_string(ValueOfRow(list, row)) + " = " + ToUtf8(Trim(*text)));
    }
  }
  if (words.size() > MostRows) {
    words.erase(words.begin() + 2, words.end() - 1);
    words.insert(words.begin() + 2, "…");
  }
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : ", ") + word;
  }
  if (list.specials.first <= list.specials.last) {
    text += "; " + std::to_string(list.specials.first) + " to " + std::to_string(list.specials.last) +
            ": contents of other kinds, kept";
  }
  return text;
}

std::string Choices(const ChoiceList& list) {
  std::array<std::string, Models.size()> words;
  for (std::size_t model = 0; model < Models.size(); ++model) {
    Models[model].take();
    words[model] = ListWords(list, RowCount(list));
  }
  Models[Kov].take();
  const std::string both = words[0] == words[1] ? words[0] : words[0] + " (`KOV`); " + words[1] + " (`RUG`)";
  return std::string(list.name) + ": " + both;
}

// What the deciding parameter's values make of the list, each list once.
std::string DecidedChoices(const Meaning& meaning) {
  std::vector<std::pair<const ChoiceList*, std::string>> lists;
  for (std::size_t value = 0; value < meaning.byDecider.size(); ++value) {
    const ChoiceList* list = meaning.byDecider[value];
    const auto known = std::ranges::find(lists, list, &std::pair<const ChoiceList*, std::string>::first);
    if (known != lists.end()) {
      known->second += ", " + std::to_string(value);
    } else {
      lists.emplace_back(list, std::to_string(value));
    }
  }
  std::string text;
  for (const auto& [list, values] : lists) {
    text += (text.empty() ? "" : "<br>") + std::string("`") + std::string(meaning.decidedBy) + "` " + values +
            ": " + (list == nullptr ? "no meaning" : Choices(*list));
  }
  return text;
}

std::string MeaningWords(const MeaningRow& row) {
  const Meaning& meaning = row.meaning;
  switch (meaning.sense) {
  case Sense::Number:
    return Joined({"number", Where(meaning.number.position), Limited(meaning.number.within),
                   UnderLog(meaning.number.logarithm)});
  case Sense::Plain:
    return "number";
  case Sense::Choice:
  case Sense::ColourNumber:
    if (!meaning.byDecider.empty()) {
      return DecidedChoices(meaning);
    }
    return Choices(*meaning.choices) + (meaning.otherChoices == nullptr ? ""
                                                                        : "<br>or, on older recorders, " +
                                                                              Choices(*meaning.otherChoices));
  case Sense::TimeOfDay:
    return "minutes since midnight";
  case Sense::Octet:
    return "one of the four numbers of an address";
  case Sense::AddressMask:
    return "bit n stands for mail address n + 1";
  case Sense::FormulaWord:
    return "high byte and low byte of a term of a formula";
  case Sense::Text:
    return Joined({"text", meaning.text.form == TextForm::AsTyped ? "" : "blanks at both ends are removed",
                   meaning.text.commaRefused ? "a comma is refused" : ""});
  }
  return "";
}

std::string UseWords(const Meaning& meaning) {
  std::string_view use;
  switch (meaning.use) {
  case Use::Setting:
    break;
  case Use::Unshown:
    use = "no screen shows it";
    break;
  case Use::Clock:
    use = "the recorder's clock, written by its command alone";
    break;
  case Use::Command:
    use = "a command";
    break;
  case Use::Identity:
    use = "read only";
    break;
  }
  return Joined({use, meaning.kovOnly ? "screens of `KOV` alone show it" : "",
                 meaning.secret ? "a secret: reports hide it" : "",
                 meaning.printed == Printed::Never   ? "the printed sheet leaves it empty"
                 : meaning.printed == Printed::OnKov ? "the sheet of `KOV` alone prints it"
                                                     : "",
                 meaning.dependsOn.empty() ? std::string() : "depends on " + std::string(meaning.dependsOn)});
}

// --- Where the screens show it

using Places = std::map<std::string, std::vector<std::string>>; // by section and the family's tag

std::string KeyOf(std::string_view section, std::string_view tag) {
  const Meaning& meaning = MeaningOf(section, tag).meaning;
  return std::string(meaning.section) + " " + std::string(meaning.tag);
}

// The columns of one table stand together: "`fgrCh` 39, 43".
void AddCells(Places& places, std::string_view table, std::span<const CellSource> cells) {
  Places own;
  for (const CellSource& cell : cells) {
    std::vector<std::string>& columns = own[KeyOf(cell.meaning->meaning.section, cell.tag)];
    const bool mask = FormIn(*cell.meaning, View::Table).sense == Sense::AddressMask; // a column for each bit
    columns.push_back((columns.empty() ? "`" + std::string(table) + "` " : "") + std::to_string(cell.column) +
                      (mask ? " to " + std::to_string(cell.column + MailAddresses - 1) : ""));
  }
  for (const auto& [key, columns] : own) {
    places[key].insert(places[key].end(), columns.begin(), columns.end());
  }
}

// The fields of a screen; those of the main window's pages stand without its name.
void AddFields(Places& places, std::string_view screen, std::span<const FieldRow> fields) {
  for (const FieldRow& field : fields) {
    std::string tag(field.tag);
    for (std::size_t digit = tag.rfind('#'); digit != std::string::npos; digit = tag.rfind('#')) {
      tag[digit] = digit + 1 == tag.size() ? '1' : '0'; // the first of the family
    }
    std::string name(field.control);
    if (field.elements == 0 &&
        MeaningOf(field.section, tag).meaning.tag.find('#') != std::string_view::npos) {
      name.back() = '#'; // "cmbAlarmType1" to "4" stand for one family
    }
    std::string control = screen.empty() ? "" : "`" + std::string(screen) + "` ";
    control += "`" + name + (field.elements == 0 ? "`" : "(n)`");
    if (!field.minutes.empty()) {
      control += " `" + std::string(field.minutes) + "`";
    }
    std::vector<std::string>& known = places[KeyOf(field.section, tag)];
    if (std::ranges::find(known, control) == known.end()) {
      known.push_back(std::move(control));
    }
  }
}

Places AllPlaces() {
  Places places;
  AddCells(places, "fgrCh", ChannelCells());
  AddCells(places, "fgrGroup", GroupCells());
  AddCells(places, "fgrMess", MessageCells());
  AddCells(places, "fgrUnit", UnitCells());
  AddCells(places, "fgrConst", ConstantCells());
  AddCells(places, "flxEMailTriggerSetting", MailTriggerCells());
  for (const std::string_view tag : {"OP11", "S111", "S211"}) {
    places[KeyOf("O", tag)].push_back("`fgrOperationChSet` 4 to 7");
  }
  AddFields(places, "", SettingsFields());
  AddFields(places, "frmChSetting", ChannelFields());
  AddFields(places, "frmOperationChSet", OperationChannelFields());
  for (const char* screen : {"`frmChSetting`", "`frmOperationChSet`"}) { // the units are labels with a button
    places[KeyOf("C", "UNIT")].push_back(std::string(screen) + " `lblSelUnit`");
    places[KeyOf("C", "SEUN")].push_back(std::string(screen) + " `lblSelSekiUnit`");
  }
  AddFields(places, "frmGroupSetting", GroupFields());
  AddFields(places, "frmMsgSetting", MessageFields());
  AddFields(places, "frmUnitSetting", UnitFields());
  AddFields(places, "frmConstSetting", ConstantFields());
  AddFields(places, "frmEMailTriggerSetting", MailTriggerFields());
  places[KeyOf("X", "EADD")].push_back("`frmEMailTriggerSetting` `chkRecvMailAddNo(n)`");
  return places;
}

std::string PlaceWords(const Places& places, const Meaning& meaning) {
  const auto found = places.find(std::string(meaning.section) + " " + std::string(meaning.tag));
  std::string text;
  if (found != places.end()) {
    for (const std::string& place : found->second) {
      text += (text.empty() ? "" : ", ") + place;
    }
  }
  return text;
}

// --- The document

template <typename Record> const Record* Find(const std::vector<Record>& records, std::string_view tag) {
  const auto found = std::ranges::find_if(
      records, [&](const Record& record) { return Trim(std::string_view(record.Tag)) == tag; });
  return found == records.end() ? nullptr : &*found;
}

std::string LimitWords(const ParamItem& item, std::string_view tag) {
  if (const ParamTextRecord* text = Find(item.TextRecords, tag)) {
    return std::to_string(text->ByteLength) + " bytes";
  }
  const ParamNumRecord* number = Find(item.NumRecords, tag);
  return number == nullptr ? ""
                           : std::to_string(number->MinValue) + " to " + std::to_string(number->MaxValue);
}

const ParamSection* SectionOf(const ParamStoreTable& store, std::string_view code) {
  const auto found = std::ranges::find_if(
      store, [&](const ParamSection& section) { return Trim(std::string_view(section.Code)) == code; });
  return found == store.end() ? nullptr : &*found;
}

// The first tag of a family that the item has.
std::string FirstTagOf(const ParamItem& item, const MeaningRow& row) {
  const auto isOf = [&](const auto& record) { return FindMeaning(row.meaning.section, record.Tag) == &row; };
  if (const auto text = std::ranges::find_if(item.TextRecords, isOf); text != item.TextRecords.end()) {
    return std::string(Trim(std::string_view(text->Tag)));
  }
  const auto number = std::ranges::find_if(item.NumRecords, isOf);
  return number == item.NumRecords.end() ? std::string() : std::string(Trim(std::string_view(number->Tag)));
}

std::string FamilyName(const Meaning& meaning, Language language) {
  return ToUtf8(ParameterName(meaning, meaning.tag, language));
}

void WriteSection(std::ostream& out, const SectionNames& names, const ParamItem& kov, const ParamItem& rug,
                  const Places& places) {
  out << "\n## Section " << names.code << ": " << names.description
      << "\n\n| Tag | Name | Meaning | Limits | Shown by |\n|---|---|---|---|---|\n";
  for (const MeaningRow& row : Meanings()) {
    if (row.meaning.section != names.code) {
      continue;
    }
    const std::string tag = FirstTagOf(kov, row);
    const std::string ofKov = LimitWords(kov, tag);
    const std::string ofRug = LimitWords(rug, tag);
    const std::string use = UseWords(row.meaning);
    out << "| `" << row.meaning.tag << "` | " << FamilyName(row.meaning, Language::Japanese) << "<br>"
        << FamilyName(row.meaning, Language::English) << " | " << MeaningWords(row)
        << (use.empty() ? "" : "<br>(" + use + ")") << " | "
        << (ofKov == ofRug ? ofKov : ofKov + " / " + ofRug) << " | " << PlaceWords(places, row.meaning)
        << " |\n";
  }
}

std::string_view ViewName(View view) {
  switch (view) {
  case View::Table:
    return "tables";
  case View::Screen:
    return "screens";
  case View::Sheet:
    return "text output";
  }
  return "";
}

void WriteDifferences(std::ostream& out) {
  out << "\n## What is shown differently\n\n"
         "Tables, screens and the printed sheet show a parameter as the tables above say. These are the "
         "places "
         "where one of\nthem shows it otherwise, each deliberate.\n\n| Parameter | Where | What | Why "
         "|\n|---|---|---|---|\n";
  for (const Difference& difference : Differences()) {
    std::string what = "number";
    if (difference.choices != nullptr) {
      what = Choices(*difference.choices);
    } else if (difference.sense == Sense::Number) {
      what = Joined({"number", Where(difference.number.position), Limited(difference.number.within),
                     UnderLog(difference.number.logarithm)});
    }
    out << "| " << difference.section << " `" << difference.tag << "` | " << ViewName(difference.view)
        << " | " << what << " | " << difference.reason << " |\n";
  }
}

} // namespace

std::string Document(std::u16string_view initialSettings) {
  gFInitCatalogues();
  std::array<ParamStoreTable, Models.size()> stores;
  for (std::size_t model = 0; model < Models.size(); ++model) {
    std::int32_t modeCheckOff = 0;
    stores[model] = BuildStore(ReadInitBlock(initialSettings, Models[model].versionTag), modeCheckOff);
  }
  Models[Kov].take();
  const Places places = AllPlaces();
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << Introduction;
  for (const SectionNames& names : Sections()) {
    const ParamSection* kov = SectionOf(stores[0], names.code);
    const ParamSection* rug = SectionOf(stores[1], names.code);
    if (kov != nullptr && rug != nullptr &&
        !(kov->Items.front().NumRecords.empty() && kov->Items.front().TextRecords.empty())) {
      WriteSection(out, names, kov->Items.front(), rug->Items.front(), places);
    }
  }
  WriteDifferences(out);
  return out.str();
}

} // namespace loader::parameters
