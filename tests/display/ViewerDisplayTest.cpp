// F1 with a viewer as a desktop has it, by its entry among the applications, and on a desktop that has none.
#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>
#include <QStandardPaths>
#include <filesystem>
#include <fstream>

#include "core/OwnTexts.h"
#include "tests/display/DisplayFixture.h"

namespace loader::test {
namespace {

constexpr Key F1{0xffbe};

// Temporary folders lie in one whose name a viewer has to be given unharmed.
struct InAFolderWithBlanks {
  InAFolderWithBlanks() {
    QDir().mkpath(place);
    qputenv("TMPDIR", place.toUtf8());
  }
  ~InAFolderWithBlanks() {
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
    QDir(place).removeRecursively(); // the toolkit leaves something of its own there
  }
  const QByteArray before = qgetenv("TMPDIR");
  const QString machines = QDir::tempPath();
  const QString place = machines + QStringLiteral("/記録計 設定 %1").arg(QCoreApplication::applicationPid());
};

// A desktop of its own: what the machine has installed is not seen.
struct Viewer : InAFolderWithBlanks, OnTheDisplay {
  void SetUp() override {
    const std::filesystem::path home = Home();
    std::filesystem::create_directories(home / "applications");
    std::filesystem::create_directory(home / "bin");
    for (const char* name :
         {"HOME", "XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"}) {
      Put(name, desktop.path().toUtf8());
    }
    for (const char* name : {"XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "BROWSER"}) {
      Put(name, {});
    }
    OpenProgram();
    std::filesystem::create_directory(Guide().parent_path());
    std::ofstream(Guide())
        << "<!DOCTYPE html>\n<html><title>guide</title></html>\n"; // known by its first line
  }
  ~Viewer() override {
    for (const auto& [name, value] : before) {
      value.isNull() ? qunsetenv(name) : qputenv(name, value);
    }
  }
  void Put(const char* name, const QByteArray& value) {
    before.emplace_back(name, qgetenv(name));
    value.isNull() ? qunsetenv(name) : qputenv(name, value);
  }
  // Of the machine's programs those that the desktop's opener needs, and no browser.
  void LeaveOnlyTheOpener() {
    for (const char* name :
         {"xdg-open", "sh", "sed",   "awk",      "grep",    "egrep", "cut", "head",     "tail",     "tr",
          "cat",      "ls", "uname", "basename", "dirname", "which", "env", "readlink", "xdg-mime", "file"}) {
      const QString program = QStandardPaths::findExecutable(QString::fromLatin1(name));
      if (!program.isEmpty()) {
        QFile::link(program, desktop.filePath(QStringLiteral("bin/") + QString::fromLatin1(name)));
      }
    }
    Put("PATH", desktop.filePath(QStringLiteral("bin")).toUtf8());
  }
  [[nodiscard]] std::filesystem::path Home() const { return desktop.path().toStdString(); }
  [[nodiscard]] std::filesystem::path Guide() const {
    return std::filesystem::path(folder.path().toStdString()) / "docs" / "user-guide.ja.html";
  }
  void ExpectNoViewerTold() {
    bool told = false;
    boxes.Expect(Replace(OwnText(OwnTextId::NoViewer), u"@FILE@", FromUtf8(Guide().string())), BoxAnswer::Ok,
                 [&](QMessageBox&) { told = true; });
    hands.Press(F1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return told; }, Patience)) << "silence";
    EXPECT_TRUE(hands.BecomesActive(Window()));
  }
  static constexpr int Patience = 20000;
  // No blank in its name: the opener takes the places of the applications apart at blanks.
  QTemporaryDir desktop{machines + QStringLiteral("/desktop-XXXXXX")};
  std::vector<std::pair<const char*, QByteArray>> before;
};

TEST_F(Viewer, OfTheDesktopGetsTheGuide) {
  if (QStandardPaths::findExecutable(QStringLiteral("xdg-open")).isEmpty()) {
    GTEST_SKIP() << "xdg-open is not installed";
  }
  ASSERT_TRUE(folder.path().contains(QStringLiteral("記録計 設定")));
  const QString seen = desktop.filePath(QStringLiteral("seen"));
  const std::filesystem::path home = Home();
  std::ofstream(home / "bin" / "viewer")
      << "#!/bin/sh\nprintf '%s' \"$1\" >'" << seen.toStdString() << ".part'\nmv '" << seen.toStdString()
      << ".part' '" << seen.toStdString() << "'\n";
  std::filesystem::permissions(home / "bin" / "viewer", std::filesystem::perms::owner_all);
  std::ofstream(home / "applications" / "viewer.desktop")
      << "[Desktop Entry]\nType=Application\nName=Viewer\nExec=" << (home / "bin" / "viewer").string()
      << " %f\nMimeType=text/html;\n";
  std::ofstream(home / "mimeapps.list") << "[Default Applications]\ntext/html=viewer.desktop\n";
  const QFileSystemWatcher watcher({desktop.path()}); // its event ends the wait
  hands.Press(F1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(seen); }, Patience)) << "no viewer has come";
  std::ifstream file(seen.toStdString());
  EXPECT_EQ(Guide().string(), std::string(std::istreambuf_iterator<char>(file), {}));
  EXPECT_EQ(0, boxes.Shown());
}

TEST_F(Viewer, ThatTheDesktopsOpenerDoesNotFindIsTold) {
  if (QStandardPaths::findExecutable(QStringLiteral("xdg-open")).isEmpty()) {
    GTEST_SKIP() << "xdg-open is not installed";
  }
  LeaveOnlyTheOpener();
  ExpectNoViewerTold();
}

TEST_F(Viewer, ThatNobodyCouldStartIsTold) {
  Put("PATH", desktop.filePath(QStringLiteral("bin")).toUtf8());
  ExpectNoViewerTold();
}

} // namespace
} // namespace loader::test
