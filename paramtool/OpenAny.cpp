#include "paramtool/OpenAny.h"

#include <filesystem>
#include <system_error>

#include "core/Text.h"
#include "paramtool/RecorderSession.h"

namespace loader::paramtool {

OpenedSetUp OpenFile(const Call& call, const SetUpAddress& address) {
  OpenedSetUp opened = OpenSetUp(address, call.model, call.language());
  if (opened.finding.basis == ModelBasis::FileName) {
    Output::Message(Say(Phrase::ModelByName, call.language(),
                        {{u"SETUP", address.text}, {u"MODEL", Widen(opened.finding.model)}}));
  }
  return opened;
}

WholeSetUp OpenAny(const Call& call, std::u16string_view text) {
  const SetUpAddress address = ParseAddress(text, call.language());
  if (IsRecorder(address.place)) {
    const RecorderSession session(call, address);
    RecorderRead read = ReadRecorder(session.Line(), call.model);
    session.RequireNotStopped();
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
