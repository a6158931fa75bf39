#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <string>
#include <windows.h>

#include "core/Text.h"
#include "paramtool/StandardStreams.h"

namespace loader::paramtool {

namespace {

// Null where the stream goes to no console.
HANDLE ConsoleOf(DWORD stream) {
  const HANDLE handle = GetStdHandle(stream);
  DWORD mode = 0;
  return handle != nullptr && handle != INVALID_HANDLE_VALUE && GetConsoleMode(handle, &mode) != 0 ? handle
                                                                                                   : nullptr;
}

// The progress line clears itself by a sequence that a console obeys only when it is told to.
void ObeySequences(HANDLE console) {
  DWORD mode = 0;
  if (console != nullptr && GetConsoleMode(console, &mode) != 0) {
    SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  }
}

// In UTF-16: the code page of the console belongs to the user, and would stay changed behind this program.
bool WriteToConsole(HANDLE console, std::string_view text) {
  constexpr std::size_t AtATime = 8192; // an old console takes no more than 64 KB
  const std::u16string wide = FromUtf8(text);
  for (std::size_t at = 0; at < wide.size();) {
    const auto length = static_cast<DWORD>(std::min(AtATime, wide.size() - at));
    DWORD written = 0;
    if (WriteConsoleW(console, wide.data() + at, length, &written, nullptr) == 0 || written == 0) {
      return false;
    }
    at += written;
  }
  return true;
}

bool Write(DWORD stream, std::FILE* file, std::string_view text) {
  if (const HANDLE console = ConsoleOf(stream); console != nullptr) {
    return WriteToConsole(console, text);
  }
  const bool all = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  return std::fflush(file) == 0 && all;
}

} // namespace

void PrepareStandardStreams() {
  for (std::FILE* const stream : {stdin, stdout, stderr}) {
    if (_fileno(stream) >= 0) {
      _setmode(_fileno(stream), _O_BINARY);
    }
  }
  ObeySequences(ConsoleOf(STD_ERROR_HANDLE));
}

bool ErrorsGoToATerminal() {
  return ConsoleOf(STD_ERROR_HANDLE) != nullptr;
}

bool WriteToOutput(std::string_view text) {
  return Write(STD_OUTPUT_HANDLE, stdout, text);
}

void WriteToErrors(std::string_view text) {
  (void)Write(STD_ERROR_HANDLE, stderr, text);
}

} // namespace loader::paramtool
