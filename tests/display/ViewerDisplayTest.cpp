// F1 on a desktop that has no viewer for the user guide.
#include <QDir>
#include <QFile>
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
    const QString place =
        QDir::temp().filePath(QStringLiteral("記録計 設定 %1").arg(QCoreApplication::applicationPid()));
    QDir().mkpath(place);
    qputenv("TMPDIR", place.toUtf8());
  }
  ~InAFolderWithBlanks() { before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before); }
  const QByteArray before = qgetenv("TMPDIR");
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
    std::ofstream(Guide()) << "<h1>guide</h1>";
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
  QTemporaryDir desktop;
  std::vector<std::pair<const char*, QByteArray>> before;
};

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
