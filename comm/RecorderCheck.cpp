#include "comm/RecorderCheck.h"

#include <algorithm>
#include <array>

#include "comm/ParameterTelegram.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modMain.h"
#include "platform/Platform.h"

namespace loader {

std::int16_t RecorderGeneration = 0;

namespace {

constexpr std::size_t ModelWidth = 3;
constexpr std::size_t VersionTagWidth = 4;
constexpr unsigned RecordingBit = 0;
constexpr unsigned ComputingBit = 7;

// The version tag of a model is "V", two digits and this letter.
struct TagShape {
  std::string_view model;
  char16_t letter;
};
constexpr std::array<TagShape, 2> TagShapes{{{"KOV", u'A'}, {"RUG", u'W'}}};

struct GenerationRange {
  std::string_view model;
  int first; // both ends included
  int last;
  std::int16_t generation;
};
constexpr std::array<GenerationRange, 8> GenerationRanges{{
    {"KOV", 0, 5, 0},
    {"KOV", 6, 13, 1},
    {"KOV", 14, 17, 2},
    {"KOV", 18, 26, 3},
    {"KOV", 27, 39, 4},
    {"KOV", 40, 99, 5},
    {"RUG", 0, 9, 20},
    {"RUG", 10, 99, 21},
}};

const TagShape* ShapeOf(std::string_view model) {
  const auto shape = std::find_if(TagShapes.begin(), TagShapes.end(),
                                  [&](const TagShape& candidate) { return candidate.model == model; });
  return shape == TagShapes.end() ? nullptr : &*shape;
}

// The record's text without blanks at its ends, which also goes back into the record. Empty when the store
// has no such record.
std::u16string TrimmedInPlace(std::string_view tag) {
  ParamTextRecord* record = FindTextRecord("P", 0, tag);
  if (record == nullptr) {
    return {};
  }
  std::u16string text(Trim(record->Value));
  SetText(*record, text, SlotValue);
  return text;
}

// One section of one item. A store whose section cannot be laid over a recorder at all is told like a
// recorder that does not answer.
TransferResult ReadItem(std::string_view sectionCode, TransferEnd notRead) {
  TransferResult result{.section = std::string(sectionCode)};
  try {
    const StoreIndex section = gFFindSection(sectionCode);
    if (!gFReadBlock(section, 0)) {
      result.end = notRead;
      result.request = RequestUnderWay(false);
      return result;
    }
    if (!gFParseItem(sectionCode, 0, section, 0)) {
      throw RunTimeFailure("section " + std::string(sectionCode) + " has no item");
    }
    return {};
  } catch (const RunTimeFailure& failure) {
    result.end = notRead;
    result.detail = failure.what();
    return result;
  }
}

TransferResult EndedInIdentity(TransferEnd end) {
  return {.end = end, .section = "P"};
}

} // namespace

RecorderIdentity ReadIdentity() {
  RecorderIdentity identity;
  identity.result = ReadItem("P", TransferEnd::IdentityNotRead);
  const auto text = [](std::string_view tag, std::size_t width) {
    const ParamTextRecord* record = FindTextRecord("P", 0, tag);
    return record == nullptr ? std::u16string() : std::u16string(Trim(record->Value).substr(0, width));
  };
  if (identity.result.IsDone()) {
    identity.model = Narrow(text("PILC", ModelWidth));
    identity.versionTag = text("PVER", VersionTagWidth);
  }
  return identity;
}

TransferResult CheckRecorder() {
  TransferResult read = ReadItem("P", TransferEnd::IdentityNotRead);
  if (!read.IsDone()) {
    return read;
  }
  const std::string model = Narrow(TrimmedInPlace("PILC").substr(0, ModelWidth));
  if (model != ModelCode && ModeCheckOff == 0) {
    return EndedInIdentity(TransferEnd::OtherModel);
  }
  const std::u16string tag = TrimmedInPlace("PVER").substr(0, VersionTagWidth);
  if (ShapeOf(model) == nullptr) {
    return {}; // another model has no version test and keeps the generation that was left from earlier
  }
  const std::optional<std::int16_t> generation = GenerationOfTag(model, tag);
  if (!generation) {
    return EndedInIdentity(TransferEnd::NoVersion);
  }
  RecorderGeneration = *generation;
  return {};
}

void TellCheck(const TransferResult& result) {
  if (result.end == TransferEnd::OtherModel) {
    ShowMessage(LoadText(11015));
  } else if (result.end == TransferEnd::IdentityNotRead || result.end == TransferEnd::NoVersion) {
    ShowMessage(LoadText(11012));
  }
}

bool gFCheckRecorder() {
  const TransferResult result = CheckRecorder();
  TellCheck(result);
  return result.IsDone();
}

TransferResult CheckState() {
  const auto ended = [](TransferEnd end, const char* why) {
    return TransferResult{.end = end, .section = "S", .detail = why};
  };
  TransferResult read = ReadItem("S", TransferEnd::StateNotRead);
  if (!read.IsDone()) {
    return read;
  }
  const ParamNumRecord* state = FindNumRecord("S", 0, "SYS1");
  if (state == nullptr) {
    return ended(TransferEnd::StateNotRead, "section S has no state word");
  }
  const auto bits = static_cast<std::uint16_t>(state->Value);
  const bool busy = (bits >> RecordingBit & 1U) != 0 || (bits >> ComputingBit & 1U) != 0;
  return busy ? ended(TransferEnd::RecorderBusy, "") : TransferResult{};
}

std::int16_t gFRecorderBusy() {
  switch (CheckState().end) {
  case TransferEnd::Done:
    return RecorderFree;
  case TransferEnd::RecorderBusy:
    return RecorderBusy;
  default:
    return RecorderNotRead;
  }
}

std::optional<std::int16_t> GenerationOfTag(std::string_view model, std::u16string_view tag) {
  const TagShape* shape = ShapeOf(model);
  if (shape == nullptr || tag.size() != VersionTagWidth || tag[0] != u'V' || !IsDigit(tag[1]) ||
      !IsDigit(tag[2]) || tag[3] != shape->letter) {
    return std::nullopt;
  }
  const int number = (tag[1] - u'0') * 10 + (tag[2] - u'0');
  const auto range =
      std::find_if(GenerationRanges.begin(), GenerationRanges.end(), [&](const GenerationRange& candidate) {
        return candidate.model == model && number >= candidate.first && number <= candidate.last;
      });
  return range->generation; // the ranges of a model cover all two-digit numbers
}

} // namespace loader
