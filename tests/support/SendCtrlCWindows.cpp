// send-ctrl-c PROCESS: a Ctrl+C on the console of a process, as if it were typed there. A program of its own,
// because whoever does it leaves its own console for that.
#include <windows.h>

#include <cstdlib>

int main(int count, char** words) {
  const DWORD process = count == 2 ? std::strtoul(words[1], nullptr, 10) : 0;
  ::FreeConsole();
  const bool sent = ::AttachConsole(process) != 0 &&
                    ::SetConsoleCtrlHandler(nullptr, TRUE) != 0 && // it comes to this program too
                    ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != 0;
  return sent ? 0 : static_cast<int>(::GetLastError());
}
