#include "paramtool/ProgressLine.h"

#include <string>

#include "core/Text.h"
#include "paramtool/StandardStreams.h"

namespace loader::paramtool {

namespace {

constexpr const char* ClearLine = "\r\x1b[K";

void Write(const std::string& text) {
  WriteToErrors(ClearLine + text);
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
