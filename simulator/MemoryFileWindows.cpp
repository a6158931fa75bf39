#include <windows.h>

#include <algorithm>
#include <memory>

#include "core/PathText.h"
#include "core/Text.h"
#include "simulator/MemoryFile.h"

namespace loader::simulator {

namespace {

struct ReasonRow {
  DWORD error;
  const char* text;
};
constexpr ReasonRow Reasons[] = {
    {ERROR_PATH_NOT_FOUND, "No such folder"},
    {ERROR_ACCESS_DENIED, "Permission denied"},
    {ERROR_SHARING_VIOLATION, "another program has the file open"},
    {ERROR_DISK_FULL, "No space left on device"},
    {ERROR_FILENAME_EXCED_RANGE, "File name too long"},
};

std::string Reason(DWORD error) {
  const auto* const row =
      std::ranges::find_if(Reasons, [&](const ReasonRow& each) { return each.error == error; });
  return row != std::end(Reasons) ? row->text : "Windows error " + std::to_string(error);
}

// 0, or Windows' error.
DWORD Write(const std::filesystem::path& file, std::string_view content) {
  struct Closer {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
  };
  const HANDLE opened =
      ::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) {
    return ::GetLastError();
  }
  const std::unique_ptr<void, Closer> owner(opened);
  DWORD written = 0;
  if (::WriteFile(opened, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) == 0) {
    return ::GetLastError();
  }
  if (written != content.size()) {
    return ERROR_DISK_FULL;
  }
  return ::FlushFileBuffers(opened) != 0 ? 0 : ::GetLastError();
}

} // namespace

void WriteWholeFile(const std::filesystem::path& file, std::string_view content) {
  std::filesystem::path part = file;
  part += ".part" + std::to_string(::GetCurrentProcessId());
  DWORD error = Write(part, content);
  if (error == 0 &&
      ::MoveFileExW(part.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
    error = ::GetLastError();
  }
  if (error != 0) {
    std::error_code ignored;
    std::filesystem::remove(part, ignored);
    throw RunTimeFailure("cannot write " + ToUtf8(PathText(file)) + ": " + Reason(error));
  }
}

} // namespace loader::simulator
