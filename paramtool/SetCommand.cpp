#include "companion/Edit.h"
#include "core/WholeSetUp.h"
#include "paramtool/Command.h"
#include "paramtool/EditLines.h"
#include "paramtool/OpenAny.h"

namespace loader::paramtool {

Exit RunSet(Call& call) {
  const std::filesystem::path file = call.OutputFile();
  for (int at = 1; at < call.arguments.size(); ++at) { // before a recorder is read for nothing
    if (!call.arguments.at(at).contains(QLatin1Char('='))) {
      throw WrongUsage{Say(Phrase::EditNoEquals, call.language(), {{u"ARGUMENT", call.Argument(at)}})};
    }
  }
  WholeSetUp setUp = OpenAny(call, call.Argument(0));
  const SetUpInForce inForce(setUp);
  std::vector<Edit> edits;
  for (int at = 1; at < call.arguments.size(); ++at) {
    const std::vector<Edit> more = EditsOf(call.Argument(at), call.language());
    edits.insert(edits.end(), more.begin(), more.end());
  }
  return FinishEdits(call, ApplyEdits(edits, call.speech), {}, file);
}

} // namespace loader::paramtool
