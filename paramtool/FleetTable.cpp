#include "paramtool/FleetTable.h"

#include <QJsonArray>
#include <algorithm>
#include <array>

#include "core/Text.h"
#include "paramtool/Json.h"

namespace loader::paramtool {

namespace {

struct Range {
  char16_t first;
  char16_t last;
};
// Those that a terminal shows twice as wide. Of a surrogate pair each half counts for one column.
constexpr auto Wide = std::to_array<Range>({{0x1100, 0x115F},
                                            {0x2E80, 0x303E},
                                            {0x3041, 0xA4CF},
                                            {0xAC00, 0xD7A3},
                                            {0xF900, 0xFAFF},
                                            {0xFE30, 0xFE6F},
                                            {0xFF00, 0xFF60},
                                            {0xFFE0, 0xFFE6}});

constexpr std::size_t Columns = 5;
using Row = std::array<std::u16string, Columns>;

std::vector<Row> RowsOf(const FleetOrder& order, const FleetReport& report) {
  const auto head = [&](Phrase phrase) { return std::u16string(PhraseText(phrase, order.language)); };
  std::vector<Row> rows{{head(Phrase::FleetHeadName), head(Phrase::FleetHeadAddress),
                         head(Phrase::FleetHeadRecorder), head(Phrase::FleetHeadResult),
                         head(Phrase::FleetHeadSeconds)}};
  for (std::size_t i = 0; i < report.results.size(); ++i) {
    const FleetResult& result = report.results[i];
    rows.push_back({order.recorders[i].name, order.recorders[i].address.text, result.recorder, result.text,
                    SecondsText(result.child.seconds)});
  }
  return rows;
}

std::u16string Count(const FleetReport& report, FleetOutcome outcome) {
  return DecimalText(static_cast<std::int64_t>(report.Count(outcome)));
}

const char* Word(FleetOutcome outcome) {
  switch (outcome) {
  case FleetOutcome::Good:
    return "good";
  case FleetOutcome::Different:
    return "different";
  case FleetOutcome::Failed:
    return "failed";
  case FleetOutcome::Stopped:
    break;
  }
  return "stopped";
}

QJsonObject JsonOfResult(const FleetOrder& order, const FleetRecorder& recorder, const FleetResult& result) {
  QJsonObject json{{QStringLiteral("name"), Q(recorder.name)},
                   {QStringLiteral("address"), Q(recorder.address.text)},
                   {QStringLiteral("model"), Q(recorder.model)},
                   {QStringLiteral("file"), Q(FileOf(order, recorder).u16string())},
                   {QStringLiteral("line"), recorder.line},
                   {QStringLiteral("outcome"), QLatin1String(Word(result.outcome))},
                   {QStringLiteral("text"), Q(result.text)},
                   {QStringLiteral("seconds"), result.child.seconds}};
  if (!result.child.report.isEmpty()) {
    json.insert(QStringLiteral("report"), result.child.report);
  }
  return json;
}

} // namespace

std::size_t ColumnsOf(std::u16string_view text) {
  std::size_t columns = 0;
  for (const char16_t c : text) {
    const bool wide =
        std::ranges::any_of(Wide, [c](const Range& range) { return c >= range.first && c <= range.last; });
    columns += wide ? 2U : 1U;
  }
  return columns;
}

std::u16string SecondsText(double seconds) {
  return QString::number(seconds, 'f', 1).toStdU16String();
}

std::vector<std::u16string> FleetTable(const FleetOrder& order, const FleetReport& report) {
  const std::vector<Row> rows = RowsOf(order, report);
  std::array<std::size_t, Columns> widths{};
  for (const Row& row : rows) {
    for (std::size_t column = 0; column < Columns; ++column) {
      widths[column] = std::max(widths[column], ColumnsOf(row[column]));
    }
  }
  std::vector<std::u16string> lines;
  for (const Row& row : rows) {
    std::u16string line;
    for (std::size_t column = 0; column < Columns; ++column) {
      const std::u16string blanks(widths[column] - ColumnsOf(row[column]), u' ');
      const bool isLast = column + 1 == Columns; // numbers, at the right
      line += isLast ? blanks + row[column] : row[column] + blanks + u"  ";
    }
    lines.push_back(line);
  }
  lines.push_back(Say(Phrase::FleetSum, order.language,
                      {{u"ALL", DecimalText(static_cast<std::int64_t>(report.results.size()))},
                       {u"GOOD", Count(report, FleetOutcome::Good)},
                       {u"DIFFERENT", Count(report, FleetOutcome::Different)},
                       {u"FAILED", Count(report, FleetOutcome::Failed)},
                       {u"STOPPED", Count(report, FleetOutcome::Stopped)}}));
  return lines;
}

void AddFleetJson(QJsonObject& json, const FleetOrder& order, const FleetReport& report) {
  QJsonArray recorders;
  for (std::size_t i = 0; i < report.results.size(); ++i) {
    recorders.append(JsonOfResult(order, order.recorders[i], report.results[i]));
  }
  QJsonObject counts;
  for (const FleetOutcome outcome :
       {FleetOutcome::Good, FleetOutcome::Different, FleetOutcome::Failed, FleetOutcome::Stopped}) {
    counts.insert(QLatin1String(Word(outcome)), static_cast<int>(report.Count(outcome)));
  }
  QJsonArray commits;
  for (const FleetCommit& commit : report.commits) {
    commits.append(QJsonObject{{QStringLiteral("folder"), Q(commit.workTree.u16string())},
                               {QStringLiteral("commit"), Q(std::string_view(commit.id))},
                               {QStringLiteral("text"), Q(commit.text)}});
  }
  json.insert(QStringLiteral("action"), QLatin1String(NameOf(order.action)));
  json.insert(QStringLiteral("recorders"), recorders);
  json.insert(QStringLiteral("counts"), counts);
  json.insert(QStringLiteral("commits"), commits);
  json.insert(QStringLiteral("interrupted"), report.interrupted);
  json.insert(QStringLiteral("seconds"), report.seconds);
}

} // namespace loader::paramtool
