// The templates of the text output: finished pages whose placeholders name the parameters of their model.
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "meaning/Meaning.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace loader {
namespace {

// A4 landscape in a small fixed pitch. The buffer of a line, 2047 bytes, is far wider.
constexpr std::size_t PageColumns = 160;

constexpr std::string_view DateTimeKey = "OUTPUTDATETIMESTRING";
constexpr std::size_t DateTimeColumns = std::string_view("2026/11/21 12:00:00").size();

// A right-aligned number ends two columns before the closing quote.
constexpr std::size_t ColumnsBehindNumber = 2;
// Six digits, a sign and a point.
constexpr std::size_t NumberColumns = 8;

// One quoted word of a line.
struct Field {
  std::size_t line = 0;  // from 1
  std::size_t start = 0; // column of the opening quote, from 0
  std::size_t width = 0; // columns, quotes included
  std::string key;       // trimmed

  [[nodiscard]] std::string Section() const { return key.substr(0, 1); }
  [[nodiscard]] std::string Tag() const { return key.size() > 3 ? key.substr(3) : std::string(); }
  // From 0; -1 when the key holds no item number.
  [[nodiscard]] int Item() const {
    const bool digits = key.size() > 3 && std::isdigit(static_cast<unsigned char>(key[1])) != 0 &&
                        std::isdigit(static_cast<unsigned char>(key[2])) != 0;
    return digits ? (key[1] - '0') * 10 + (key[2] - '0') - 1 : -1;
  }
};

std::ostream& operator<<(std::ostream& out, const Field& field) {
  return out << "line " << field.line << ", column " << field.start << ": \"" << field.key << "\"";
}

std::string KeyOf(std::string_view section, int item, std::string_view tag) {
  return std::string(Trim(section)) + Narrow(PaddedDecimal(item + 1, 2)) + std::string(Trim(tag));
}

class TextTemplate : public testing::TestWithParam<const char*> {
protected:
  void SetUp() override {
    test::StartWithModel(platform, GetParam());
    bytes = ReadWholeFile(std::filesystem::path(LOADER_DATA_DIR) / ("Text" + ModelCode + ".Ini"));
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t end = std::min(bytes.find("\r\n", at), bytes.size());
      lines.push_back(bytes.substr(at, end - at));
      at = end + 2;
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
      TakeFields(i);
    }
  }

  // The quote is no second byte of any character of the code page, so bytes can be searched for it.
  void TakeFields(std::size_t lineIndex) {
    const std::string& line = lines[lineIndex];
    for (std::size_t open = line.find('"'); open != std::string::npos;) {
      const std::size_t close = line.find('"', open + 1);
      if (close == std::string::npos) {
        return;
      }
      const std::string_view key = std::string_view(line).substr(open + 1, close - open - 1);
      fields.push_back({lineIndex + 1, open, close - open + 1, std::string(Trim(key))});
      open = line.find('"', close + 1);
    }
  }

  [[nodiscard]] std::vector<Field> ParameterFields() const {
    std::vector<Field> found;
    std::ranges::copy_if(fields, std::back_inserter(found),
                         [](const Field& field) { return field.key != DateTimeKey; });
    return found;
  }

  test::ScriptedPlatform platform;
  std::string bytes;
  std::vector<std::string> lines; // without their line ends
  std::vector<Field> fields;
};

INSTANTIATE_TEST_SUITE_P(BothModels, TextTemplate, testing::Values("KOV", "RUG"),
                         [](const auto& model) { return std::string(model.param); });

TEST_P(TextTemplate, IsTextOfTheCodePage) {
  ASSERT_FALSE(bytes.empty());
  EXPECT_EQ(ToCodePage(FromCodePage(bytes)), bytes);
}

TEST_P(TextTemplate, EndsEveryLineWithCrLfAndHoldsNoOtherControlCharacter) {
  EXPECT_TRUE(bytes.ends_with("\r\n"));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto control = std::ranges::find_if(
        lines[i], [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
    EXPECT_EQ(control, lines[i].end()) << "line " << i + 1;
  }
}

TEST_P(TextTemplate, FitsThePage) {
  static_assert(PageColumns <= 2047, "the buffer of a line");
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_LE(lines[i].size(), PageColumns) << "line " << i + 1;
  }
}

TEST_P(TextTemplate, ClosesEveryQuote) {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(std::ranges::count(lines[i], '"') % 2, 0) << "line " << i + 1;
  }
}

TEST_P(TextTemplate, NamesTheModelInItsHead) {
  ASSERT_GE(lines.size(), 2U);
  EXPECT_NE(lines[1].find(ModelCode), std::string::npos);
}

TEST_P(TextTemplate, ShowsTheDateAndTimeOnceInAFieldThatHoldsThem) {
  const auto isDateTime = [](const Field& field) { return field.key == DateTimeKey; };
  ASSERT_EQ(std::ranges::count_if(fields, isDateTime), 1);
  EXPECT_GE(std::ranges::find_if(fields, isDateTime)->width, DateTimeColumns);
}

// Any other quoted word would end the processing of its line.
TEST_P(TextTemplate, QuotesOnlyParametersOfTheStore) {
  for (const Field& field : ParameterFields()) {
    ASSERT_GE(field.Item(), 0) << field;
    EXPECT_TRUE(FindNumRecord(field.Section(), field.Item(), field.Tag()) != nullptr ||
                FindTextRecord(field.Section(), field.Item(), field.Tag()) != nullptr)
        << field;
  }
}

// The first term of each formula stands for the whole formula.
bool IsPartOfAFormula(std::string_view tag) {
  static const std::set<std::string_view> Formulas{"OP11", "OP21", "OP31", "OP41"};
  return !Formulas.contains(tag);
}

// What the sheet leaves empty has no place on it; a model uses as many digital inputs as it has.
bool IsOnThePage(std::string_view section, int item, std::string_view tag) {
  if (!IsPrinted(MeaningOf(section, tag).meaning)) {
    return false;
  }
  if (section == "D") {
    return item < Profile.DigitalInputCount;
  }
  return section != "O" || !IsPartOfAFormula(tag);
}

TEST_P(TextTemplate, NamesEveryParameterOfTheModelExactlyOnce) {
  std::map<std::string, int> expected;
  for (const ParamSection& section : ParamStore) {
    for (std::size_t i = 0; i < section.Items.size(); ++i) {
      const auto expect = [&](std::string_view tag) {
        if (IsOnThePage(Trim(std::string_view(section.Code)), static_cast<int>(i), Trim(tag))) {
          ++expected[KeyOf(section.Code, static_cast<int>(i), tag)];
        }
      };
      for (const ParamTextRecord& record : section.Items[i].TextRecords) {
        expect(record.Tag);
      }
      for (const ParamNumRecord& record : section.Items[i].NumRecords) {
        expect(record.Tag);
      }
    }
  }
  std::map<std::string, int> named;
  for (const Field& field : ParameterFields()) {
    ++named[field.key];
  }
  for (const auto& [key, count] : expected) {
    EXPECT_EQ(named[key], count) << key;
  }
  for (const auto& [key, count] : named) {
    EXPECT_TRUE(expected.contains(key)) << key << " has no place on the page";
  }
}

TEST_P(TextTemplate, KeepsItsFieldsApart) {
  for (const Field& field : fields) {
    const std::string& line = lines[field.line - 1];
    EXPECT_TRUE(field.start == 0 || line[field.start - 1] != '"') << field;
  }
}

// --- width of the fields

// The lists whose entries a number is printed as; several where the choice depends on another parameter or on
// the age of the recorder.
struct ListField {
  std::string_view section;
  std::string_view tag;
  const Catalogue* list;
};

constexpr ListField ListFields[] = {
    {"C", "TYPE", &InputTypeNames},
    {"C", "SUBC", &SubtractList},
    {"C", "RECM", &RecordModeList},
    {"C", "OTCH", &NoneChannelList},
    {"C", "UNIT", &UnitNames},
    {"C", "COLR", &ColorNames},
    {"C", "SCAL", &ScaleList},
    {"C", "TAIS", &TaisList},
    {"C", "ROOT", &RootList},
    {"C", "RECO", &RecordDisplayList},
    {"C", "FTIO", &FValueSwitchList},
    {"C", "SEKI", &TotalKindList},
    {"C", "STYP", &ReportCycleList},
    {"C", "SBAS", &PerUnitTimeList},
    {"C", "SRES", &ResetSwitchList},
    {"C", "SEUN", &UnitNames},
    {"C", "SDIG", &AlarmSourceList},
    {"C", "SRIN", &AlarmSourceList},
    {"A", "A1TY", &AlarmTypeList},
    {"A", "A2TY", &AlarmTypeList},
    {"A", "A3TY", &AlarmTypeList},
    {"A", "A4TY", &AlarmTypeList},
    {"A", "A1RL", &RelayList},
    {"A", "A2RL", &RelayList},
    {"A", "A3RL", &RelayList},
    {"A", "A4RL", &RelayList},
    {"G", "GC01", &GroupChannelList},
    {"G", "GC02", &GroupChannelList},
    {"G", "GC03", &GroupChannelList},
    {"G", "GC04", &GroupChannelList},
    {"G", "GC05", &GroupChannelList},
    {"G", "GC06", &GroupChannelList},
    {"G", "GC07", &GroupChannelList},
    {"G", "GC08", &GroupChannelList},
    {"G", "GC09", &GroupChannelList},
    {"G", "GC10", &GroupChannelList},
    {"T", "THOU", &BarDirectionList},
    {"T", "TMCH", &GroupChannelList},
    {"T", "TBUN", &DivisionList},
    {"T", "TPVD", &ColorBarList},
    {"T", "TMEM", &TrendScaleList},
    {"T", "TMEM", &YesNoList},
    {"B", "BHOU", &BarDirectionList},
    {"B", "BPVD", &LinkSwitchList},
    {"B", "BPVM", &LinkSwitchList},
    {"B", "BBRM", &BarMeterList},
    {"H", "KLOC", &KeyLockList},
    {"H", "BETU", &FileSplitList},
    {"H", "BETU", &DailyFileList},
    {"H", "MSMP", &SampleCycleList},
    {"H", "SSMP", &SampleCycleList},
    {"H", "ALML", &AlarmLatchList},
    {"H", "ASBY", &CommCodeList},
    {"H", "BAAL", &RelayList},
    {"H", "SHOU", &BacklightList},
    {"H", "SHOU", &ScreenOffList},
    {"H", "CFFL", &RelayList},
    {"H", "COMB", &BaudList},
    {"H", "COMP", &ParityList},
    {"H", "TIMF", &DateFormatList},
    {"H", "CMPL", &CompressionList},
    {"H", "FIFO", &OverwriteList},
    {"H", "LANG", &LanguageList},
    {"H", "LOGO", &LoginModeList},
    {"H", "TBKC", &TrendBackgroundList},
    {"H", "HBKC", &HistoryBackgroundList},
    {"H", "FPOI", &DecimalPointList},
    {"M", "MCOR", &ColorNames},
    {"M", "MTM1", &MessageTimingList},
    {"M", "MTM2", &NoneChannelList},
    {"M", "MTM2", &DINames},
    {"M", "MTM3", &AlarmNumberList},
    {"D", "DIKI", &DIFunctionList},
    {"E", "TCYC", &TotalCycleList},
    {"E", "TWDY", &WeekdayList},
    {"E", "TDAY", &DayList},
    {"E", "TEXT", &AlarmSourceList},
    {"J", "ETHE", &EthernetSwitchLists[0]},
    {"J", "MAIL", &EthernetSwitchLists[1]},
    {"J", "FTPF", &EthernetSwitchLists[2]},
    {"J", "FTPA", &EthernetSwitchLists[3]},
    {"J", "WEBF", &EthernetSwitchLists[4]},
    {"J", "WEBA", &EthernetSwitchLists[5]},
    {"J", "WEBM", &EthernetSwitchLists[6]},
    {"J", "MOTC", &EthernetSwitchLists[7]},
    {"K", "LVEL", &UserLevelList},
    {"X", "ETRG", &MailTriggerList},
    {"X", "ETG1", &DINames},
    {"X", "ETG1", &NoneChannelList},
    {"X", "ETG1", &RecorderAlarmList},
    {"X", "ETG1", &MailPeriodList},
    {"X", "ETG2", &AlarmNumberList},
    {"X", "ETG2", &HourList},
    {"X", "EPVA", &YesNoList},
    {"L", "MODF", &MasterSlaveList},
    {"L", "RETN", &RetryIntervalList},
    {"Z", "TOTA", &TotalSwitchList},
    {"Z", "TSTM", &TotalUnitTimeList},
    {"Z", "TSIG", &OperationKindList},
};

// Columns that a word takes; one that reads as a number is right-aligned.
std::size_t WordColumns(std::u16string_view word) {
  const bool number = ParseInt32(word).has_value();
  return CodePageLength(word) + (number ? ColumnsBehindNumber : 0);
}

std::size_t ListColumns(std::string_view section, std::string_view tag) {
  std::size_t columns = 0;
  for (const ListField& field : ListFields) {
    if (field.section == section && field.tag == tag) {
      for (const std::u16string& entry : *field.list) {
        columns = std::max(columns, WordColumns(entry));
      }
    }
  }
  return columns;
}

// Three terms with two operators between them, each the widest function with inputs such as "M256".
std::size_t FormulaColumns() {
  constexpr std::size_t InputColumns = 4;
  std::size_t term = 0;
  for (const std::u16string& pattern : FunctionList) {
    const std::size_t inputs = pattern.find(u",B)") == std::u16string::npos ? 1 : 2;
    term = std::max(term, CodePageLength(pattern) + inputs * (InputColumns - 1));
  }
  return 3 * term + 2;
}

// The numbers of all eight addresses with a blank between them.
constexpr std::size_t AddressListColumns = 8 + 7;

// A number without a point, whatever its limits: five digits and a sign.
constexpr std::size_t PlainNumberColumns = 6;
bool IsPlainNumber(const Field& field) {
  const Sense sense = MeaningOf(field.Section(), field.Tag()).meaning.sense;
  return sense == Sense::Octet || sense == Sense::Plain;
}

// The widest text of a parameter, in columns of its field.
std::size_t ColumnsNeeded(const Field& field) {
  if (const ParamTextRecord* text = FindTextRecord(field.Section(), field.Item(), field.Tag())) {
    return static_cast<std::size_t>(text->ByteLength);
  }
  if (field.Section() == "O") {
    return FormulaColumns();
  }
  if (field.Section() == "X" && field.Tag() == "EADD") {
    return AddressListColumns;
  }
  const std::size_t list = ListColumns(field.Section(), field.Tag());
  const std::size_t number = IsPlainNumber(field) ? PlainNumberColumns : NumberColumns;
  return list != 0 ? list : number + ColumnsBehindNumber;
}

// A user unit may take its whole record, and may read as a number.
void FillUserUnits() {
  for (int item = 0; item < Profile.UnitCount; ++item) {
    const ParamTextRecord* unit = FindTextRecord("U", item, "UNIT");
    ASSERT_NE(unit, nullptr);
    UnitNames[UserUnitIndex(item + 1, Profile.UnitCount)] =
        std::u16string(static_cast<std::size_t>(unit->ByteLength), u'9');
  }
}

TEST_P(TextTemplate, GivesEveryFieldTheWidthOfItsLongestValue) {
  FillUserUnits();
  for (const Field& field : ParameterFields()) {
    EXPECT_GE(field.width, ColumnsNeeded(field)) << field;
  }
}

TEST_P(TextTemplate, GivesEveryChannelSlotTheWidthOfTheWordAndNumberOfTheLastChannel) {
  const int channels = Profile.ChannelCount + Profile.OperationChannelCount;
  const std::size_t needed = CodePageLength(std::u16string(LoadText(37032)) + DecimalText(channels));
  for (const Field& field : ParameterFields()) {
    if (field.Tag().starts_with("GC") || field.Tag() == "SUBC" || field.Tag() == "TMCH" ||
        field.Tag() == "ETG1") {
      EXPECT_GE(field.width, needed) << field;
    }
  }
}

// A row of the table that names nothing would let its field pass as a plain number.
TEST_P(TextTemplate, HasAFieldForEveryListOfTheWidthTable) {
  for (const ListField& list : ListFields) {
    EXPECT_NE(FindNumRecord(list.section, 0, list.tag), nullptr) << list.section << " " << list.tag;
    EXPECT_FALSE(list.list->empty()) << list.section << " " << list.tag;
  }
}

} // namespace
} // namespace loader
