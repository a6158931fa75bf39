#include "paramtool/WriteReport.h"

#include <QJsonArray>
#include <array>

#include "core/Text.h"
#include "paramtool/Json.h"
#include "paramtool/TransferReport.h"

namespace loader::paramtool {

namespace {

struct FateRow {
  WriteFate fate;
  Phrase heading;
  const char* key; // in JSON
  bool inRanges;   // told in ranges, without values: the recorder has no place for any value
};
constexpr std::array<FateRow, 11> FateRows{{
    {WriteFate::NoSection, Phrase::LostNoSection, "section", true},
    {WriteFate::NoItem, Phrase::LostNoItem, "item", true},
    {WriteFate::NotWritten, Phrase::LostNotWritten, "notWritten", false},
    {WriteFate::Overlaid, Phrase::LostOverlaid, "overlaid", false},
    {WriteFate::Zero, Phrase::LostZero, "zero", false},
    {WriteFate::Default, Phrase::LostDefault, "default", false},
    {WriteFate::Limited, Phrase::LostLimited, "limited", false},
    {WriteFate::Mapped, Phrase::LostMapped, "mapped", false},
    {WriteFate::NotReadBack, Phrase::LostNotReadBack, "notReadBack", true},
    {WriteFate::Goes, Phrase::LostAltered, "altered", false},
    {WriteFate::NotMoved, Phrase::LostNotMoved, "notMoved", true},
}};

// A value by the set-up that holds it.
std::u16string Readable(WholeSetUp& setUp, const ParameterRef& ref, const Speech& speech) {
  std::u16string text = WithSetUp(setUp, [&] { return ReadableValue(ref, speech); });
  return Trim(text).empty() ? u"\"\"" : text;
}

struct Values {
  WholeSetUp& from;
  WholeSetUp& to;
};
std::u16string ArrowLine(const Call& call, const ParameterRef& ref, const Values& values) {
  std::u16string from = Readable(values.from, ref, call.speech);
  std::u16string to = Readable(values.to, ref, call.speech);
  if (from == to && (call.speech.secrets || !IsSecret(ref))) { // two values that read the same
    from += u" (" + RawText(*WithSetUp(values.from, [&] { return ValueOf(ref); })) + u")";
    to += u" (" + RawText(*WithSetUp(values.to, [&] { return ValueOf(ref); })) + u")";
  }
  return NameOf(ref, call.language()) + u": " + from + u" \u2192 " + to;
}

void SayLosses(const Call& call, WholeSetUp& setUp, WriteForecast& forecast) {
  for (const FateRow& row : FateRows) {
    std::vector<ParameterRef> refs;
    std::vector<std::u16string> lines;
    for (const LostParameter& lost : forecast.losses) {
      if (lost.fate == row.fate) {
        refs.push_back(lost.ref);
        lines.push_back(ArrowLine(call, lost.ref, {setUp, forecast.after}));
      }
    }
    if (row.inRanges) {
      lines.clear();
      for (const ParameterRange& range : RangesOf(refs)) {
        lines.push_back(RangeName(range, call.language()));
      }
    }
    SayBlock(call.out, PhraseText(row.heading, call.language()), lines);
  }
}

// How a line of a register begins, for one with an owner and for one without.
struct RegisterWords {
  Phrase owned;
  Phrase ofNone;
};
constexpr RegisterWords WrongWords{Phrase::RegisterWrong, Phrase::RegisterOfNoneWrong};
constexpr RegisterWords ChangeWords{Phrase::RegisterChanges, Phrase::RegisterOfNoneChanges};

std::u16string RegisterLine(const Call& call, const RegisterWords& words,
                            const RegisterDifference& different) {
  const ParameterRef ref{different.section, different.item, different.tag};
  const bool owned = !different.tag.empty();
  const bool hidden = owned && !call.speech.secrets && IsSecret(ref);
  const auto number = [&](std::int16_t value) {
    return hidden ? std::u16string(HiddenSecret) : DecimalText(value);
  };
  return Say(owned ? words.owned : words.ofNone, call.language(),
             {{u"NAME", NameOf(ref, call.language())},
              {u"KEY", Widen(KeyOf(ref))},
              {u"SECTION", SectionName(different.section, call.language())},
              {u"CODE", Widen(different.section)},
              {u"REGISTER", DecimalText(different.number)},
              {u"EXPECTED", number(different.expected)},
              {u"FOUND", number(different.found)}});
}

std::vector<std::u16string> RegisterLines(const Call& call, const RegisterWords& words,
                                          const std::vector<RegisterDifference>& all) {
  std::vector<std::u16string> lines;
  for (const RegisterDifference& different : all) {
    lines.push_back(RegisterLine(call, words, different));
  }
  return lines;
}

QJsonArray JsonOfRegisters(const Call& call, const std::vector<RegisterDifference>& all) {
  QJsonArray array;
  for (const RegisterDifference& different : all) {
    const ParameterRef ref{different.section, different.item, different.tag};
    const bool owned = !different.tag.empty();
    QJsonObject object =
        owned ? JsonOf(ref, call.language())
              : QJsonObject{{QStringLiteral("section"), Q(ref.section)}, {QStringLiteral("item"), ref.item}};
    const bool hidden = owned && !call.speech.secrets && IsSecret(ref);
    const auto number = [&](std::int16_t value) { return hidden ? QJsonValue() : QJsonValue(value); };
    object.insert(QStringLiteral("register"), different.number);
    object.insert(QStringLiteral("expected"), number(different.expected));
    object.insert(QStringLiteral("found"), number(different.found));
    array.append(object);
  }
  return array;
}

const char* EndKey(WriteEnd end) {
  constexpr std::array<const char*, 6> Keys{"verified", "different",   "notWritten",
                                            "mixture",  "notCompared", "notStored"};
  return Keys.at(static_cast<std::size_t>(end));
}

} // namespace

void SayForecast(const Call& call, WholeSetUp& setUp, RecorderRead& present, WriteForecast& forecast) {
  const SetUpInForce inForce(setUp);
  std::vector<std::u16string> changes;
  for (const ChangedParameter& change : forecast.changes) {
    changes.push_back(ArrowLine(call, change.ref, {present.setUp, forecast.after}));
  }
  SayBlock(call.out, PhraseText(Phrase::ChangesHeading, call.language()), changes);
  if (changes.empty()) {
    call.out.Line(PhraseText(Phrase::NoChanges, call.language()));
  }
  SayBlock(call.out, PhraseText(Phrase::UnseenHeading, call.language()),
           RegisterLines(call, ChangeWords, forecast.unseen));
  WholeSetUp wanted = CopyOfSetUp(); // the one in force cannot be put in force again
  SayLosses(call, wanted, forecast);
}

void InsertForecast(const Call& call, WholeSetUp& setUp, WriteForecast& forecast, QJsonObject& report) {
  const SetUpInForce inForce(setUp);
  QJsonArray changes;
  for (const ChangedParameter& change : forecast.changes) {
    QJsonObject object = JsonOf(change.ref, call.language());
    object.insert(QStringLiteral("before"), JsonValueOf(change.ref, change.before, call.speech));
    object.insert(QStringLiteral("after"), JsonValueOf(change.ref, change.after, call.speech));
    changes.append(object);
  }
  QJsonArray losses;
  for (const LostParameter& lost : forecast.losses) {
    QJsonObject object = JsonOf(lost.ref, call.language());
    const auto row = std::ranges::find(FateRows, lost.fate, &FateRow::fate);
    object.insert(QStringLiteral("why"), QLatin1String(row->key));
    object.insert(QStringLiteral("wanted"), JsonValueOf(lost.ref, lost.wanted, call.speech));
    object.insert(QStringLiteral("comes"), JsonValueOf(lost.ref, lost.comes, call.speech));
    losses.append(object);
  }
  report.insert(QStringLiteral("changes"), changes);
  report.insert(QStringLiteral("losses"), losses);
  report.insert(QStringLiteral("unseen"), JsonOfRegisters(call, forecast.unseen));
}

void SayDifferent(const Call& call, const std::vector<RegisterDifference>& different) {
  SayBlock(call.out, PhraseText(Phrase::DifferentHeading, call.language()),
           RegisterLines(call, WrongWords, different));
}

void InsertOutcome(const Call& call, const WriteOutcome& outcome, QJsonObject& report) {
  report.insert(QStringLiteral("end"), QLatin1String(EndKey(outcome.end)));
  report.insert(QStringLiteral("sections"), Q(std::string_view(outcome.sections)));
  report.insert(QStringLiteral("registers"), static_cast<qint64>(outcome.registers));
  report.insert(QStringLiteral("different"), JsonOfRegisters(call, outcome.different));
  report.insert(QStringLiteral("stored"), outcome.stored);
}

} // namespace loader::paramtool
