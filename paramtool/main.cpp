// paramtool: the set-ups of recorders from the command line and in scripts.
#include <QCoreApplication>
#include <csignal>

#include "core/modMain.h"
#include "devices/DevicePlatform.h"
#include "paramtool/Command.h"
#include "platform/DataFolder.h"

int main(int argc, char** argv) {
  // A reader that has gone is told by the failed write: a transfer is never cut short by it.
  std::signal(SIGPIPE, SIG_IGN);
  const QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("paramtool"));
  QCoreApplication::setApplicationVersion(QStringLiteral(LOADER_VERSION));
  const loader::BarePlatform platform({.programFolder = loader::DataFolder(loader::ProgramFolderOr({}))});
  loader::TakeStartValues();
  return static_cast<int>(loader::paramtool::Run(QCoreApplication::arguments()));
}
