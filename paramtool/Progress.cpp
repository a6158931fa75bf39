#include "paramtool/Progress.h"

#include "companion/Losses.h"
#include "core/Text.h"

namespace loader::paramtool {

void Progress::Show(const BlockStep& step) {
  if (line_.IsSeen()) {
    line_.Show(Say(step.writing ? Phrase::ProgressWriting : Phrase::ProgressReading, language_,
                   {{u"SECTION", SectionName(step.section, language_)},
                    {u"CODE", Widen(step.section)},
                    {u"DONE", DecimalText(step.done)},
                    {u"ALL", DecimalText(step.all)}}));
  }
}

} // namespace loader::paramtool
