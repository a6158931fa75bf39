// paramtool: the set-ups of recorders from the command line and in scripts.
#include <QCoreApplication>
#include <csignal>
#ifdef Q_OS_UNIX
#include <array>
#include <fcntl.h>
#include <unistd.h>
#endif

#include "core/modMain.h"
#include "devices/DevicePlatform.h"
#include "paramtool/Command.h"
#include "platform/DataFolder.h"

namespace {

// The number of a standard stream that was closed before the program began goes to the next file or socket
// that is opened, and messages would go into a recorder or a backup. So something stands there that nothing
// can be read from or written to: what could not be told is still a failed output.
void KeepStandardStreams() {
#ifdef Q_OS_UNIX
  constexpr std::array<int, 3> OtherWay{O_WRONLY, O_RDONLY, O_RDONLY}; // than each is used
  for (int stream = 0; stream < static_cast<int>(OtherWay.size()); ++stream) {
    if (::fcntl(stream, F_GETFD) < 0) {
      static_cast<void>(
          ::open("/dev/null", OtherWay.at(static_cast<std::size_t>(stream)))); // the lowest free one
    }
  }
#endif
}

} // namespace

int main(int argc, char** argv) {
  KeepStandardStreams();
  // A reader that has gone is told by the failed write: a transfer is never cut short by it.
  std::signal(SIGPIPE, SIG_IGN);
  const QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("paramtool"));
  QCoreApplication::setApplicationVersion(QStringLiteral(LOADER_VERSION));
  const loader::BarePlatform platform({.programFolder = loader::DataFolder(loader::ProgramFolderOr({}))});
  loader::TakeStartValues();
  return static_cast<int>(loader::paramtool::Run(QCoreApplication::arguments()));
}
