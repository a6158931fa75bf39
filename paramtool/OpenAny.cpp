#include "paramtool/OpenAny.h"

#include <utility>

#include "core/Text.h"
#include "paramtool/RecorderSession.h"

namespace loader::paramtool {

WholeSetUp OpenAny(const Call& call, std::u16string_view text) {
  const SetUpAddress address = ParseAddress(text, call.language());
  if (IsRecorder(address.place)) {
    const RecorderSession session(call, address);
    RecorderRead read = ReadRecorder(session.Line(), call.model);
    session.RequireNotStopped();
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
