// paramtool: the set-ups of recorders from the command line and in scripts.
#include <QCoreApplication>

#include "core/modMain.h"
#include "devices/DevicePlatform.h"
#include "paramtool/Command.h"
#include "paramtool/StandardStreams.h"
#include "platform/DataFolder.h"

int main(int argc, char** argv) {
  loader::paramtool::PrepareStandardStreams();
  const QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("paramtool"));
  QCoreApplication::setApplicationVersion(QStringLiteral(LOADER_VERSION));
  const loader::BarePlatform platform({.programFolder = loader::DataFolder(loader::ProgramFolderOr({}))});
  loader::TakeStartValues();
  return static_cast<int>(loader::paramtool::Run(QCoreApplication::arguments()));
}
