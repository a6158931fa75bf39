#include "companion/FleetList.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

#include "companion/Parameters.h"
#include "core/Text.h"
#include "platform/FileName.h"

namespace loader {

namespace {

// --- CSV

struct Record {
  int line = 0; // where it begins
  std::vector<std::u16string> fields;
  std::optional<Phrase> defect;
};

constexpr std::u16string_view Blanks = u" \t";

class CsvReader {
public:
  explicit CsvReader(std::u16string_view text) : rest_(text) {}

  // Empty at the end. Comments and lines without content are passed over.
  std::optional<Record> Next() {
    while (!rest_.empty()) {
      if (IsComment()) {
        (void)TakeLine();
        continue;
      }
      Record record = ReadRecord();
      if (record.defect ||
          std::ranges::any_of(record.fields, [](const auto& field) { return !field.empty(); })) {
        return record;
      }
    }
    return std::nullopt;
  }

private:
  [[nodiscard]] bool IsComment() const {
    const std::size_t first = rest_.find_first_not_of(Blanks);
    return first != std::u16string_view::npos && rest_[first] == u'#';
  }
  [[nodiscard]] bool AtLineEnd() const {
    return rest_.empty() || rest_.front() == u'\n' || rest_.front() == u'\r';
  }
  char16_t Take() {
    const char16_t taken = rest_.front();
    rest_.remove_prefix(1);
    if (taken == u'\n' || (taken == u'\r' && !rest_.starts_with(u'\n'))) {
      ++line_;
    }
    return taken;
  }
  // With its end.
  std::u16string TakeLine() {
    std::u16string line;
    while (!AtLineEnd()) {
      line += Take();
    }
    EndLine();
    return line;
  }
  void EndLine() {
    if (rest_.starts_with(u"\r\n")) {
      rest_.remove_prefix(1);
    }
    if (!rest_.empty()) {
      Take();
    }
  }

  Record ReadRecord() {
    Record record{.line = line_, .fields = {}, .defect = {}};
    while (true) {
      record.fields.push_back(ReadField(record));
      if (record.defect) {
        (void)TakeLine();
        return record;
      }
      if (AtLineEnd()) {
        EndLine();
        return record;
      }
      Take(); // the comma
    }
  }

  std::u16string ReadField(Record& record) {
    while (!rest_.empty() && Blanks.find(rest_.front()) != std::u16string_view::npos) {
      Take();
    }
    if (rest_.starts_with(u'"')) {
      return ReadQuoted(record);
    }
    std::u16string field;
    while (!AtLineEnd() && rest_.front() != u',') {
      field += Take();
    }
    if (field.find(u'"') != std::u16string::npos) {
      record.defect = Phrase::FleetStrayQuote;
    }
    return std::u16string(Trim(field));
  }

  std::u16string ReadQuoted(Record& record) {
    Take();
    std::u16string field;
    while (!rest_.empty()) {
      const char16_t c = Take();
      if (c != u'"') {
        field += c;
      } else if (rest_.starts_with(u'"')) {
        field += Take();
      } else {
        SkipToComma(record);
        return field;
      }
    }
    record.defect = Phrase::FleetOpenQuote;
    return field;
  }
  void SkipToComma(Record& record) {
    while (!AtLineEnd() && rest_.front() != u',') {
      if (Blanks.find(Take()) == std::u16string_view::npos) {
        record.defect = Phrase::FleetStrayQuote;
      }
    }
  }

  std::u16string_view rest_;
  int line_ = 1;
};

// --- The list

enum Column : std::size_t { Name, Address, Model, File, Columns };
constexpr std::array<std::u16string_view, Columns> ColumnNames{u"name", u"address", u"model", u"file"};

std::u16string Number(std::size_t number) {
  return DecimalText(static_cast<std::int64_t>(number));
}

class ListReader {
public:
  ListReader(std::string_view bytes, Language language) : language_(language) {
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(ByteOrderMark)) {
      bytes.remove_prefix(ByteOrderMark.size());
    }
    text_ = FromUtf8(bytes);
    if (ToUtf8(text_) != bytes) {
      Report(FirstLineNotUtf8(bytes), Phrase::FleetNotUtf8);
    }
  }

  FleetList Read() {
    if (!list_.defects.empty()) {
      return std::move(list_); // none of its texts can be trusted
    }
    CsvReader csv(text_);
    const auto head = csv.Next();
    if (!head || !TakeHead(*head)) {
      Report(head ? head->line : 1, Phrase::FleetNoHead);
      return std::move(list_);
    }
    while (const auto record = csv.Next()) {
      TakeRecord(*record);
    }
    if (list_.recorders.empty() && list_.defects.empty()) {
      Report(head->line, Phrase::FleetNoRecorder);
    }
    return std::move(list_);
  }

private:
  void Report(int line, Phrase reason, std::initializer_list<Filling> fillings = {}) {
    list_.defects.push_back({line, Say(reason, language_, fillings)});
  }

  static int FirstLineNotUtf8(std::string_view bytes) {
    for (int line = 1;; ++line) {
      const std::string_view text = bytes.substr(0, bytes.find('\n'));
      if (ToUtf8(FromUtf8(text)) != text || text.size() == bytes.size()) {
        return line;
      }
      bytes.remove_prefix(text.size() + 1);
    }
  }

  bool TakeHead(const Record& head) {
    places_.fill(NoPlace);
    for (std::size_t place = 0; place < head.fields.size(); ++place) {
      const auto column = std::ranges::find(ColumnNames, head.fields[place]);
      if (column == ColumnNames.end()) {
        return false;
      }
      std::size_t& known = places_[static_cast<std::size_t>(column - ColumnNames.begin())];
      if (known != NoPlace) {
        return false;
      }
      known = place;
    }
    width_ = head.fields.size();
    return !head.defect && places_[Name] != NoPlace && places_[Address] != NoPlace &&
           places_[File] != NoPlace;
  }

  [[nodiscard]] std::u16string Field(const Record& record, Column column) const {
    return places_[column] == NoPlace ? std::u16string() : record.fields[places_[column]];
  }

  void TakeRecord(const Record& record) {
    if (record.defect) {
      Report(record.line, *record.defect);
      return;
    }
    if (record.fields.size() != width_) {
      Report(record.line, Phrase::FleetFieldCount,
             {{u"COUNT", Number(record.fields.size())}, {u"WANTED", Number(width_)}});
      return;
    }
    const std::size_t before = list_.defects.size();
    CheckTexts(record);
    FleetRecorder recorder;
    recorder.line = record.line;
    recorder.name = Field(record, Name);
    recorder.model = CheckedModel(record);
    recorder.file = Field(record, File);
    if (list_.defects.size() == before && TakeAddress(recorder, Field(record, Address))) {
      CheckTwice(recorder);
      list_.recorders.push_back(std::move(recorder));
    }
  }

  void CheckTexts(const Record& record) {
    for (const Column column : {Name, Address, File}) {
      const std::u16string text = Field(record, column);
      if (text.empty()) {
        Report(record.line, Phrase::FleetEmptyField, {{u"COLUMN", ColumnNames[column]}});
      } else if (HasControlCharacter(text)) {
        Report(record.line, Phrase::FleetControlCharacter, {{u"COLUMN", ColumnNames[column]}});
      }
    }
  }

  std::string CheckedModel(const Record& record) {
    const std::u16string model = Field(record, Model);
    if (!model.empty() && !IsModelCode(Narrow(model))) {
      Report(record.line, Phrase::FleetUnknownModel, {{u"MODEL", model}});
      return {};
    }
    return Narrow(model);
  }

  bool TakeAddress(FleetRecorder& recorder, const std::u16string& text) {
    try {
      recorder.address = ParseAddress(text, language_);
    } catch (const Undone& undone) {
      list_.defects.push_back({recorder.line, undone.message});
      return false;
    }
    if (!IsRecorder(recorder.address.place)) {
      Report(recorder.line, Phrase::NotARecorder, {{u"SETUP", text}});
      return false;
    }
    return true;
  }

  // What stands for a recorder may stand once in its column.
  void CheckTwice(const FleetRecorder& recorder) {
    const std::u16string station = u"#" + DecimalText(recorder.address.station);
    RequireFirst(Name, recorder.name, recorder.name, recorder.line);
    RequireFirst(Address, WireOf(recorder.address) + station, recorder.address.text, recorder.line);
    RequireFirst(File, FileKey(PathOf(recorder.file)), recorder.file, recorder.line);
  }
  void RequireFirst(Column column, const std::u16string& key, std::u16string_view shown, int line) {
    const auto [known, first] = seen_[column].emplace(key, line);
    if (!first) {
      Report(line, Phrase::FleetTwice,
             {{u"COLUMN", ColumnNames[column]}, {u"TEXT", shown}, {u"LINE", DecimalText(known->second)}});
    }
  }

  static constexpr std::size_t NoPlace = Columns;
  Language language_;
  std::u16string text_;
  FleetList list_;
  std::array<std::size_t, Columns> places_{};
  std::size_t width_ = 0;
  std::array<std::map<std::u16string, int>, Columns> seen_;
};

std::u16string Lowered(std::u16string text) {
  std::ranges::transform(text, text.begin(), [](char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
  });
  return text;
}

} // namespace

FleetList ReadFleetList(std::string_view bytes, Language language) {
  return ListReader(bytes, language).Read();
}

std::u16string WireOf(const SetUpAddress& address) {
  if (address.place == Place::Tcp) {
    return u"tcp:" + Lowered(address.where) + u":" + DecimalText(address.port);
  }
  // A link to a device is the device.
  std::error_code absent;
  const std::filesystem::path device = std::filesystem::weakly_canonical(PathOf(address.where), absent);
  return (address.place == Place::Serial ? u"serial:" : u"usb:") +
         FileKey(absent ? PathOf(address.where) : device);
}

} // namespace loader
