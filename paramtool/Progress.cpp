#include "paramtool/Progress.h"

#include <cstdio>

#include "companion/Losses.h"
#include "core/Text.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace loader::paramtool {

namespace {

constexpr const char* ClearLine = "\r\x1b[K";

bool ErrorsGoToATerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return ::isatty(STDERR_FILENO) != 0;
#endif
}

} // namespace

Progress::Progress(Language language) : language_(language), shown_(ErrorsGoToATerminal()) {}

Progress::~Progress() {
  if (anything_) {
    std::fputs(ClearLine, stderr);
  }
}

void Progress::Show(const BlockStep& step) {
  if (!shown_) {
    return;
  }
  anything_ = true;
  const std::string line =
      ToUtf8(Say(step.writing ? Phrase::ProgressWriting : Phrase::ProgressReading, language_,
                 {{u"SECTION", SectionName(step.section, language_)},
                  {u"CODE", Widen(step.section)},
                  {u"DONE", DecimalText(step.done)},
                  {u"ALL", DecimalText(step.all)}}));
  std::fprintf(stderr, "%s%s", ClearLine, line.c_str());
  std::fflush(stderr);
}

} // namespace loader::paramtool
