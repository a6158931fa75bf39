#include "paramtool/OpenAny.h"

#include <algorithm>
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

WholeSetUp OpenAny(const Call& call, std::u16string_view text) {
  const SetUpAddress address = ParseAddress(text, call.language());
  if (IsRecorder(address.place)) {
    const RecorderSession session(call, address);
    RecorderRead read = ReadRecorder(session.Line(), call.model);
    session.RequireNotStopped();
    TellFilled(call, read, session.Line());
    return std::move(read.setUp);
  }
  OpenedSetUp opened = OpenSetUp(address, call.model, call.language());
  if (opened.finding.basis == ModelBasis::FileName) {
    Output::Message(Say(Phrase::ModelByName, call.language(),
                        {{u"SETUP", text}, {u"MODEL", Widen(opened.finding.model)}}));
  }
  return std::move(opened.setUp);
}

void RequireEachNames(const std::vector<Selection>& selections, Language language) {
  if (const Selection* nothing = FirstThatNamesNothing(selections)) {
    throw Undone{Say(Phrase::SelectsNothing, language, {{u"PATTERN", nothing->Text()}})};
  }
}

} // namespace loader::paramtool
