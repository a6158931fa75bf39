#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <fstream>
#include <string_view>
#include <utility>

#include "tests/support/BreakWindows.h"
#include "tests/support/Process.h"

namespace loader::test {

namespace {

constexpr DWORD Patience = 60000; // milliseconds without a byte until a test gives up
constexpr int BySignal = 128;

class Handle {
public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  ~Handle() { Close(); }
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    Close();
    handle_ = std::exchange(other.handle_, nullptr);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  [[nodiscard]] HANDLE Get() const { return handle_; }
  [[nodiscard]] bool IsOpen() const { return handle_ != nullptr; }
  void Close() {
    if (handle_ != nullptr) {
      ::CloseHandle(std::exchange(handle_, nullptr));
    }
  }

private:
  HANDLE handle_ = nullptr;
};

std::wstring Wide(std::string_view text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

// As the program's start takes it apart again: backslashes count double in front of a quotation mark only.
std::wstring Quoted(std::wstring_view word) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t character : word) {
    if (character == L'"') {
      quoted.append(backslashes + 1, L'\\');
    }
    backslashes = character == L'\\' ? backslashes + 1 : 0;
    quoted += character;
  }
  return quoted.append(backslashes, L'\\') + L"\"";
}

// The names of the variables don't care about case here.
bool SameName(std::wstring_view left, std::wstring_view right) {
  const auto nameOf = [](std::wstring_view entry) { return entry.substr(0, entry.find(L'=', 1)); };
  const std::wstring_view a = nameOf(left);
  const std::wstring_view b = nameOf(right);
  return ::CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

// The test's own, with those of the options in place of what has their name.
std::wstring Environment(const std::vector<std::string>& wanted) {
  std::vector<std::wstring> own;
  std::wstring block;
  for (const std::string& entry : wanted) {
    own.push_back(Wide(entry));
    block += own.back() + L'\0';
  }
  wchar_t* const all = ::GetEnvironmentStringsW();
  for (const wchar_t* at = all; *at != L'\0';) {
    const std::wstring_view entry(at);
    if (std::ranges::none_of(own, [&](const std::wstring& each) { return SameName(each, entry); })) {
      block += std::wstring(entry) + L'\0';
    }
    at += entry.size() + 1;
  }
  ::FreeEnvironmentStringsW(all);
  return block + L'\0';
}

// A pipe whose reading end can be waited for; the other end is inherited.
struct Pipe {
  Handle reading, writing;
};
Pipe MakePipe() {
  static std::atomic<int> count = 0;
  const std::wstring name = L"\\\\.\\pipe\\loader-test-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                            std::to_wstring(++count);
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  Pipe pipe;
  pipe.reading = Handle(::CreateNamedPipeW(name.c_str(), PIPE_ACCESS_INBOUND | FILE_FLAG_OVERLAPPED,
                                           PIPE_TYPE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1, 0,
                                           65536, 0, nullptr));
  pipe.writing = Handle(::CreateFileW(name.c_str(), GENERIC_WRITE, 0, &inherited, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  return pipe;
}

Handle OpenInherited(const std::filesystem::path& file, DWORD access, DWORD how) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  return Handle(::CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              &inherited, how, FILE_ATTRIBUTE_NORMAL, nullptr));
}

enum class Got { Some, End, Nothing };

// The next bytes, once there are some.
Got ReadPart(HANDLE pipe, std::string& text, std::size_t most) {
  const Handle event(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
  OVERLAPPED operation{};
  operation.hEvent = event.Get();
  std::array<char, 65536> bytes{};
  DWORD count = 0;
  if (::ReadFile(pipe, bytes.data(), static_cast<DWORD>(std::min(most, bytes.size())), nullptr, &operation) ==
      0) {
    if (::GetLastError() != ERROR_IO_PENDING) {
      return Got::End;
    }
    if (::WaitForSingleObject(event.Get(), Patience) != WAIT_OBJECT_0) {
      ::CancelIo(pipe);
      (void)::GetOverlappedResult(pipe, &operation, &count, TRUE);
      return Got::Nothing;
    }
  }
  if (::GetOverlappedResult(pipe, &operation, &count, FALSE) == 0) {
    return Got::End;
  }
  text.append(bytes.data(), count);
  return Got::Some;
}

// Up to the end of the output, or up to `lines` line ends when that is not negative. False when nothing came
// for too long.
bool ReadOutput(HANDLE pipe, int lines, std::string& text) {
  while (lines < 0 || std::ranges::count(text, '\n') < lines) {
    // Byte by byte only where the program goes on behind the line that is waited for.
    const Got got = ReadPart(pipe, text, lines < 0 ? 65536 : 1);
    if (got != Got::Some) {
      return got == Got::End;
    }
  }
  return true;
}

// Starts it with these three handles and no other one of the test's.
PROCESS_INFORMATION Start(std::wstring command, std::wstring environment, std::array<HANDLE, 3> handles,
                          bool console) {
  PROCESS_INFORMATION process{};
  SIZE_T size = 0;
  ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
  std::vector<char> room(size);
  auto* const list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(room.data());
  ::InitializeProcThreadAttributeList(list, 1, 0, &size);
  ::UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles.data(), sizeof handles,
                              nullptr, nullptr);
  STARTUPINFOEXW start{};
  start.StartupInfo.cb = sizeof start;
  start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  start.StartupInfo.hStdInput = handles[0];
  start.StartupInfo.hStdOutput = handles[1];
  start.StartupInfo.hStdError = handles[2];
  start.lpAttributeList = list;
  // Of the test's own group: in a new one Ctrl+C is switched off, under Wine Ctrl+Break with it.
  const DWORD flags = CREATE_UNICODE_ENVIRONMENT | EXTENDED_STARTUPINFO_PRESENT |
                      (console ? DWORD{CREATE_NO_WINDOW} : DWORD{0}); // a console without a window
  if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, flags, environment.data(), nullptr,
                       &start.StartupInfo, &process) == 0) {
    process = {};
  }
  ::DeleteProcThreadAttributeList(list);
  return process;
}

} // namespace

struct RunningProcess::Parts {
  Handle process, output;
  DWORD id = 0;
  bool console = false;
};

RunningProcess::RunningProcess(const std::filesystem::path& program, std::vector<std::string> arguments,
                               const ProcessOptions& options)
    : parts_(std::make_unique<Parts>()) {
  std::wstring command = Quoted(program.wstring());
  for (const std::string& argument : arguments) {
    command += L" " + Quoted(Wide(argument));
  }
  std::ofstream(folder_ / "input", std::ios::binary) << options.input;
  Pipe pipe = MakePipe();
  const Handle input = OpenInherited(folder_ / "input", GENERIC_READ, OPEN_EXISTING);
  const Handle errors = OpenInherited(folder_ / "errors", GENERIC_WRITE, CREATE_ALWAYS);
  const PROCESS_INFORMATION process = Start(std::move(command), Environment(options.environment),
                                            {input.Get(), pipe.writing.Get(), errors.Get()}, options.console);
  if (process.hProcess == nullptr) {
    ADD_FAILURE() << program << " does not start: Windows error " << ::GetLastError();
  }
  ::CloseHandle(process.hThread);
  parts_->process = Handle(process.hProcess);
  parts_->id = process.dwProcessId;
  parts_->console = options.console;
  parts_->output = std::move(pipe.reading);
}

RunningProcess::~RunningProcess() {
  if (parts_->process.IsOpen()) {
    Signal(Kill);
    ::WaitForSingleObject(parts_->process.Get(), INFINITE);
  }
}

int RunningProcess::ProcessId() const {
  return static_cast<int>(parts_->id);
}

std::string RunningProcess::ReadLines(int lines) {
  EXPECT_TRUE(ReadOutput(parts_->output.Get(), lines, read_)) << "nothing came; so far: " << read_;
  return read_;
}

std::string RunningProcess::ErrorsSoFar() const {
  return ContentOf(folder_ / "errors");
}

void RunningProcess::Signal(int signal) const {
  if (signal == Kill) {
    ::TerminateProcess(parts_->process.Get(), BySignal + Kill);
  } else if (signal == Interrupt && parts_->console) {
    EXPECT_EQ(RunProcess(SEND_CTRL_C, {std::to_string(parts_->id)}).status, 0);
  } else {
    EXPECT_TRUE(Handle(BeginBreak(parts_->process.Get())).IsOpen()) << "Windows error " << ::GetLastError();
  }
}

void RunningProcess::CloseOutput() {
  parts_->output.Close();
}

Ended RunningProcess::Wait() {
  Ended ended;
  if (parts_->output.IsOpen() && !ReadOutput(parts_->output.Get(), -1, read_)) {
    ADD_FAILURE() << "the program hangs; so far: " << read_ << ErrorsSoFar();
    Signal(Kill);
  }
  ended.output = read_;
  DWORD status = 0;
  if (parts_->process.IsOpen()) {
    ::WaitForSingleObject(parts_->process.Get(), INFINITE);
    ::GetExitCodeProcess(parts_->process.Get(), &status);
    ended.status = static_cast<int>(status);
  }
  parts_->process.Close();
  ended.errors = ErrorsSoFar();
  return ended;
}

} // namespace loader::test
