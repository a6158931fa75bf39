#include <QFile>
#include <QJsonArray>

#include "comm/RecorderCheck.h"
#include "companion/Decode.h"
#include "core/Text.h"
#include "core/WholeSetUp.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"

namespace loader::paramtool {

namespace {

constexpr int NewestGeneration = 5; // its layout is that of all of today

// A file, or the standard input for "-".
std::string TextOf(const Call& call) {
  const std::u16string name = call.Argument(0);
  QFile file(Q(name));
  const bool open = name == u"-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
  if (!open) {
    throw Undone{Say(Phrase::SetUpNotThere, call.language(),
                     {{u"SETUP", name}, {u"REASON", file.errorString().toStdU16String()}})};
  }
  const QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError) {
    throw Undone{Say(Phrase::SetUpNotThere, call.language(),
                     {{u"SETUP", name}, {u"REASON", file.errorString().toStdU16String()}})};
  }
  return bytes.toStdString();
}

// --- The recorder of the trace

struct Recorder {
  std::string model;
  std::u16string version; // empty: not known, taken as the newest
  int generation = NewestGeneration;
};

bool IsModel(std::u16string_view text) {
  return text == u"KOV" || text == u"RUG";
}

std::string ModelOfVersion(std::u16string_view version) {
  for (const char* model : {"KOV", "RUG"}) {
    if (GenerationOfTag(model, version)) {
      return model;
    }
  }
  return {};
}

// What the options say, then what the trace itself does. Section P lies at one place in all recorders.
Recorder RecorderOf(const Call& call, const std::vector<TraceLine>& lines) {
  WholeSetUp any = InitialSetUp("KOV", call.language());
  const TraceIdentity said =
      WithSetUp(any, [&] { return DecodeTrace(lines, NewestGeneration, call.speech).identity; });
  Recorder recorder{call.model, call.Value("firmware")};
  const std::string ofOption = ModelOfVersion(recorder.version);
  if (!recorder.version.empty() && (ofOption.empty() || (!call.model.empty() && ofOption != call.model))) {
    throw WrongUsage{Say(Phrase::DecodeWrongFirmware, call.language(), {{u"TAG", recorder.version}})};
  }
  if (recorder.model.empty()) {
    recorder.model = !ofOption.empty() ? ofOption : IsModel(said.model) ? Narrow(said.model) : std::string();
  }
  if (recorder.model.empty()) {
    throw Undone{Say(Phrase::DecodeNoModel, call.language(), {{u"FILE", call.Argument(0)}})};
  }
  if (recorder.version.empty() && GenerationOfTag(recorder.model, said.version)) {
    recorder.version = said.version;
  }
  recorder.generation = GenerationOfTag(recorder.model, recorder.version).value_or(NewestGeneration);
  return recorder;
}

// --- Words

Phrase DefectPhrase(FrameDefect defect) {
  switch (defect) {
  case FrameDefect::NotHex:
    return Phrase::DecodeNotHex;
  case FrameDefect::WrongCheck:
    return Phrase::DecodeWrongCheck;
  case FrameDefect::CutShort:
    return Phrase::DecodeCutShort;
  case FrameDefect::TooLong:
    return Phrase::DecodeTooLong;
  case FrameDefect::UnknownFunction:
    return Phrase::DecodeUnknownFunction;
  case FrameDefect::NoRequest:
    return Phrase::DecodeNoRequest;
  case FrameDefect::OtherRequest:
  case FrameDefect::None:
    break;
  }
  return Phrase::DecodeOtherRequest;
}

std::u16string RegistersText(int address, int count) {
  const std::u16string first = DecimalText(address);
  return count <= 1 ? first : first + u"-" + DecimalText(address + count - 1);
}

std::u16string WhatText(const Call& call, const DecodedFrame& frame) {
  if (frame.exception != 0) {
    return Say(Phrase::DecodeException, call.language(), {{u"CODE", DecimalText(frame.exception)}});
  }
  if (frame.address == 0) {
    return Say(Phrase::DecodeFunction, call.language(), {{u"FUNCTION", DecimalText(frame.function)}});
  }
  const bool write = frame.function == 6 || frame.function == 16;
  return Say(write ? Phrase::DecodeWrite : Phrase::DecodeRead, call.language(),
             {{u"REGISTERS", RegistersText(frame.address, frame.count)}});
}

std::u16string MarkOf(Direction direction) {
  return direction == Direction::Request ? u">" : direction == Direction::Reply ? u"<" : u"?";
}

std::u16string FrameLine(const Call& call, const DecodedFrame& frame) {
  std::u16string line = DecimalText(static_cast<std::int64_t>(frame.line)) + u": " + MarkOf(frame.direction);
  if (frame.wire != Wire::Unknown) {
    line += frame.wire == Wire::Rtu ? u" RTU" : u" TCP";
  }
  if (frame.function != 0) {
    line += u" #" + DecimalText(frame.station) + u" " + WhatText(call, frame);
  }
  if (frame.unanswered) {
    line += u" - " + std::u16string(PhraseText(Phrase::DecodeUnanswered, call.language()));
  }
  return IsUnderstood(frame)
             ? line
             : line + u" - " + std::u16string(PhraseText(DefectPhrase(frame.defect), call.language()));
}

// A password is not told by its length or by its words either.
std::u16string ValueText(const Call& call, const DecodedValue& value) {
  if (!call.speech.secrets && IsSecret(value.field.ref)) {
    return std::u16string(HiddenSecret);
  }
  if (!value.value) {
    return std::u16string(PhraseText(Phrase::DecodePart, call.language()));
  }
  const std::u16string raw = RawText(*value.value);
  return value.text.empty() ? raw : raw + u" (" + value.text + u")";
}

void TellFrame(Call& call, const DecodedFrame& frame) {
  call.out.Line(FrameLine(call, frame));
  for (const DecodedValue& value : frame.values) {
    const ParameterRef& ref = value.field.ref;
    call.out.Line(u"    " + RegistersText(value.field.address, value.field.words) + u"  " +
                  Widen(KeyOf(ref)) + u"  " + NameOf(ref, call.language()) + u": " + ValueText(call, value));
  }
  if (frame.nameless > 0) {
    call.out.Line(u"    " +
                  Say(Phrase::DecodeNameless, call.language(), {{u"COUNT", DecimalText(frame.nameless)}}));
  }
}

// --- JSON

constexpr std::array<const char*, 8> DefectKeys{"",        "notHex",          "check",     "cutShort",
                                                "tooLong", "unknownFunction", "noRequest", "otherRequest"};

QJsonObject JsonOfValue(const Call& call, const DecodedValue& value) {
  QJsonObject json = JsonOf(value.field.ref, call.language());
  json.insert(QStringLiteral("register"), value.field.address);
  json.insert(QStringLiteral("words"), value.field.words);
  json.insert(QStringLiteral("value"), value.value ? JsonValueOf(value.field.ref, *value.value, call.speech)
                                                   : QJsonValue(QJsonValue::Null));
  json.insert(QStringLiteral("text"), Q(ValueText(call, value)));
  return json;
}

QJsonObject JsonOfFrame(const Call& call, const DecodedFrame& frame) {
  QJsonArray values;
  for (const DecodedValue& value : frame.values) {
    values.append(JsonOfValue(call, value));
  }
  const char* direction = frame.direction == Direction::Request ? "request"
                          : frame.direction == Direction::Reply ? "reply"
                                                                : "unknown";
  QJsonObject json{{QStringLiteral("line"), static_cast<int>(frame.line)},
                   {QStringLiteral("direction"), QLatin1String(direction)},
                   {QStringLiteral("wire"), QLatin1String(frame.wire == Wire::Rtu   ? "rtu"
                                                          : frame.wire == Wire::Tcp ? "tcp"
                                                                                    : "unknown")},
                   {QStringLiteral("station"), frame.station},
                   {QStringLiteral("function"), frame.function},
                   {QStringLiteral("register"), frame.address},
                   {QStringLiteral("count"), frame.count},
                   {QStringLiteral("exception"), frame.exception},
                   {QStringLiteral("unanswered"), frame.unanswered},
                   {QStringLiteral("nameless"), frame.nameless},
                   {QStringLiteral("values"), values}};
  json.insert(QStringLiteral("defect"),
              IsUnderstood(frame)
                  ? QJsonValue(QJsonValue::Null)
                  : QJsonValue(QLatin1String(DefectKeys.at(static_cast<std::size_t>(frame.defect)))));
  return json;
}

void TellJson(Call& call, const Recorder& recorder, const DecodedTrace& trace) {
  QJsonArray frames;
  for (const DecodedFrame& frame : trace.frames) {
    frames.append(JsonOfFrame(call, frame));
  }
  QJsonObject report = call.Report();
  report.insert(QStringLiteral("model"), Q(recorder.model));
  report.insert(QStringLiteral("firmware"),
                recorder.version.empty() ? QJsonValue(QJsonValue::Null) : QJsonValue(Q(recorder.version)));
  report.insert(QStringLiteral("frames"), frames);
  call.out.Json(report);
}

} // namespace

Exit RunDecode(Call& call) {
  const std::vector<TraceLine> lines = ReadTraceLines(TextOf(call));
  if (lines.empty()) {
    throw Undone{Say(Phrase::DecodeNoFrames, call.language(), {{u"FILE", call.Argument(0)}})};
  }
  const Recorder recorder = RecorderOf(call, lines);
  if (recorder.version.empty()) {
    Output::Message(Say(Phrase::DecodeNewest, call.language(), {{u"MODEL", Widen(recorder.model)}}));
  }
  WholeSetUp shape = InitialSetUp(recorder.model, call.language());
  const SetUpInForce inForce(shape);
  const DecodedTrace trace = DecodeTrace(lines, recorder.generation, call.speech);
  if (call.json) {
    TellJson(call, recorder, trace);
  } else {
    for (const DecodedFrame& frame : trace.frames) {
      TellFrame(call, frame);
    }
  }
  const auto bad =
      std::ranges::count_if(trace.frames, [](const auto& frame) { return !IsUnderstood(frame); });
  if (!call.json) {
    call.out.Line(Say(Phrase::DecodeCounts, call.language(),
                      {{u"FRAMES", DecimalText(static_cast<std::int64_t>(trace.frames.size()))},
                       {u"BAD", DecimalText(bad)}}));
  }
  return bad == 0 ? Exit::Good : Exit::Different;
}

} // namespace loader::paramtool
