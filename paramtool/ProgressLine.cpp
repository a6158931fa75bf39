#include "paramtool/ProgressLine.h"

#include <cstdio>
#include <string>

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

void Write(const std::string& text) {
  std::fprintf(stderr, "%s%s", ClearLine, text.c_str());
  std::fflush(stderr);
}

} // namespace

ProgressLine::ProgressLine() : terminal_(ErrorsGoToATerminal()) {}

ProgressLine::~ProgressLine() {
  Clear();
}

void ProgressLine::Show(std::u16string_view text) {
  if (terminal_) {
    Write(ToUtf8(text));
    shown_ = true;
  }
}

void ProgressLine::Clear() {
  if (shown_) {
    Write({});
    shown_ = false;
  }
}

} // namespace loader::paramtool
