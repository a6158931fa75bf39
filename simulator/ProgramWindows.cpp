#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "core/Text.h"
#include "platform/RunTimeFailure.h"
#include "simulator/Program.h"
#include "simulator/SocketPair.h"

namespace loader::simulator {

void PrepareOutput() {
  for (std::FILE* output : {stdout, stderr}) {
    ::_setmode(::_fileno(output), _O_BINARY);
  }
  static const UINT before = ::GetConsoleOutputCP();
  if (before != 0 && ::SetConsoleOutputCP(CP_UTF8) != 0) {
    std::atexit([] { ::SetConsoleOutputCP(before); });
  }
}

// What main is given has lost every character that the machine's code page does not have.
std::vector<std::string> ProgramArguments(int, char**) {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> words(
      ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
  std::vector<std::string> arguments;
  for (int i = 1; words != nullptr && i < count; ++i) {
    const std::wstring_view word(words.get()[i]);
    arguments.push_back(ToUtf8(std::u16string(word.begin(), word.end())));
  }
  return arguments;
}

// The library takes a narrow name for one in the machine's code page.
std::filesystem::path FileOf(const std::string& argument) {
  return PathOf(FromUtf8(argument));
}

std::filesystem::path ProgramFile() {
  constexpr DWORD LongestName = 32768;
  std::wstring name(LongestName, L'\0');
  name.resize(::GetModuleFileNameW(nullptr, name.data(), LongestName));
  return name;
}

std::string_view StopHelp() {
  return "Ctrl+C, Ctrl+Break or the end\nof its console ends it.";
}

namespace {

// Never taken down: Windows may tell of an order while the program ends.
SocketPair& Orders() {
  static SocketPair& pair = *new SocketPair;
  return pair;
}

// Runs in a thread that Windows makes for it.
BOOL WINAPI TellToStop(DWORD event) {
  constexpr std::array<std::uint8_t, 1> Order{1};
  Orders().GiveInner(Order);
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
    // The console is being closed, and Windows ends the program when this returns: it shall end by itself.
    ::WaitForSingleObject(::GetCurrentProcess(), INFINITE);
  }
  return TRUE;
}

} // namespace

int StopDescriptor() {
  const int descriptor = Orders().Inner();
  ::SetConsoleCtrlHandler(nullptr, FALSE); // whoever started it may have switched Ctrl+C off
  if (::SetConsoleCtrlHandler(&TellToStop, TRUE) == 0) {
    throw RunTimeFailure("no orders to stop: Windows error " + std::to_string(::GetLastError()));
  }
  return descriptor;
}

} // namespace loader::simulator
