#include "companion/Merge.h"
#include "core/WholeSetUp.h"
#include "paramtool/Command.h"
#include "paramtool/EditLines.h"
#include "paramtool/OpenAny.h"

namespace loader::paramtool {

Exit RunMerge(Call& call) {
  const std::filesystem::path file = call.OutputFile();
  const std::vector<Selection> only = call.Selections("only");
  const std::vector<Selection> ignore = call.Selections("ignore");
  if (only.empty()) {
    throw WrongUsage{Say(Phrase::OptionMissing, call.language(), {{u"OPTION", u"only"}})};
  }
  WholeSetUp taken = OpenAny(call, call.Argument(0));
  WholeSetUp from = OpenAny(call, call.Argument(1));
  const SetUpInForce inForce(taken);
  RequireEachNames(only, call.language());
  RequireEachNames(ignore, call.language());
  const MergeReport report = MergeFrom(from, only, ignore, call.speech);
  return FinishEdits(call, report.edits, report.left, file);
}

} // namespace loader::paramtool
