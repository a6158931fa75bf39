#include "tests/e2e/TourSetup.h"

#include <QCoreApplication>
#include <QDir>
#include <cstdio>
#include <fstream>
#include <set>
#include <string>

#include "core/Text.h"
#include "core/modMain.h"
#include "mainwindow/frmParamLoader.h"
#include "platform/DataFolder.h"

namespace loader::tour {

namespace fs = std::filesystem;

void CompareMemories(const Memory& untouched, const Memory& written, const Memory& changed,
                     const Plant& plant) {
  // The register that stores the settings, the one that sets the clock, and the time of day, which runs on.
  const std::set<int> commands{40001, 40011, 40015, 40016};
  if (untouched.empty() || untouched.size() != written.size()) {
    throw TourFailure(QStringLiteral("the recorder does not tell its memory"));
  }
  int compared = 0;
  for (const auto& [number, before] : untouched) {
    if (commands.contains(number)) {
      continue;
    }
    const auto change = changed.find(number);
    const int wanted = change == changed.end() ? before : change->second;
    if (written.at(number) != wanted) {
      throw TourFailure(QStringLiteral("register %1 of the recorder holds %2 in place of %3")
                            .arg(number)
                            .arg(written.at(number))
                            .arg(wanted));
    }
    ++compared;
  }
  std::printf("tour: %s: %d registers of the recorder hold what they have to, %zu of them changed\n",
              plant.model, compared, changed.size());
}

QString FailureOf(QtPlatform& platform, const std::function<void()>& visit) {
  QString failure;
  platform.screens.Run([&] {
    if (!Main(OpenMainWindow)) {
      failure = QStringLiteral("the program did not start");
      return;
    }
    QMetaObject::invokeMethod(
        qApp,
        [&] {
          try {
            visit();
          } catch (const TourFailure& stopped) {
            failure = QString::fromStdString(stopped.what());
            platform.screens.EndProgram();
          }
        },
        Qt::QueuedConnection);
  });
  return failure;
}

QString MakeFolder(const QStringList& arguments) {
  const bool made = arguments.size() == 2 && QDir().mkpath(arguments.at(1));
  return made ? QDir(arguments.at(1)).absolutePath() : QString();
}

fs::path MakeProgramFolder(const fs::path& folder, const Plant& plant) {
  const fs::path program = folder / ("program-" + std::string(plant.model));
  fs::remove_all(program);
  fs::create_directories(program);
  const fs::path data = DataFolder(PathOf(QCoreApplication::applicationDirPath().toStdU16String()));
  for (const char* file : {"InitSet.Ini", "TextKOV.Ini", "TextRUG.Ini"}) {
    if (fs::exists(data / file)) {
      fs::copy_file(data / file, program / file);
    }
  }
  std::ofstream(program / "LOADER.INI", std::ios::binary)
      << "[LOADER]\r\nTYPE=" << (plant.model[0] == 'R' ? 1 : 0)
      << "\r\nCOMMUNICATION=1\r\nCOM=0\r\nSTNO=1\r\nIP=127.0.0.1\r\n";
  return program;
}

} // namespace loader::tour
