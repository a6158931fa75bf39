#include "paramtool/OpenAny.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "companion/Losses.h"
#include "core/Text.h"
#include "paramtool/RecorderSession.h"

namespace loader::paramtool {

namespace {

// A default that stands for what an older recorder does not have is no value of the recorder's.
void TellFilled(const Call& call, RecorderRead& read, const RecorderLine& line) {
  const SetUpInForce inForce(read.setUp);
  const auto filled =
      std::ranges::count_if(FilledByRead(read.recorder.generation), [](const FilledParameter& parameter) {
        return parameter.fate != ReadFate::NotMoved;
      });
  if (filled > 0) {
    Output::Message(Say(Phrase::RecorderFilled, call.language(),
                        {{u"SETUP", line.address.text},
                         {u"RECORDER", RecorderText(read.recorder, line)},
                         {u"COUNT", DecimalText(filled)}}));
  }
}

} // namespace

OpenedSetUp OpenFile(const Call& call, const SetUpAddress& address) {
  OpenedSetUp opened = OpenSetUp(address, call.model, call.language());
  if (opened.finding.basis == ModelBasis::FileName) {
    Output::Message(Say(Phrase::ModelByName, call.language(),
                        {{u"SETUP", address.text}, {u"MODEL", Widen(opened.finding.model)}}));
  }
  if (!opened.defects.empty()) { // it opens with them
    const auto count = DecimalText(static_cast<std::int64_t>(opened.defects.size()));
    Output::Message(
        Say(Phrase::SetUpLosesText, call.language(), {{u"SETUP", address.text}, {u"COUNT", count}}));
  }
  return opened;
}

WholeSetUp OpenAny(const Call& call, std::u16string_view text) {
  const SetUpAddress address = ParseAddress(text, call.language());
  if (IsRecorder(address.place)) {
    const RecorderSession session(call, address);
    RecorderRead read = ReadRecorder(session.Line(), call.model);
    session.RequireNotStopped();
    TellFilled(call, read, session.Line());
    return std::move(read.setUp);
  }
  return OpenFile(call, address).setUp;
}

void RequireOtherFile(const std::filesystem::path& file, const SetUpAddress& address, Language language) {
  std::error_code none; // two files are the same only when both are there
  if (address.place == Place::File && std::filesystem::equivalent(file, PathOf(address.where), none)) {
    throw Undone{Say(Phrase::OutputIsInput, language, {{u"FILE", file.u16string()}})};
  }
}

void RequireEachNames(const std::vector<Selection>& selections, Language language) {
  if (const Selection* nothing = FirstThatNamesNothing(selections)) {
    throw Undone{Say(Phrase::SelectsNothing, language, {{u"PATTERN", nothing->Text()}})};
  }
}

} // namespace loader::paramtool
