#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPalette>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <algorithm>
#include <array>

#include "qt/QtText.h"
#include "qt/System.h"

namespace loader {

QStringList ProgramFamilies() {
  return {QStringLiteral("Yu Gothic UI"), QStringLiteral("Meiryo UI"), QStringLiteral("Meiryo"),
          QStringLiteral("MS UI Gothic"), QStringLiteral("Noto Sans CJK JP")};
}

// There is no SVG module here: the pictures were drawn from the same files when the program was built, in the
// sizes that the scales of Windows ask for (cmake/WindowsIcons.cmake).
QImage DrawProgramIcon(std::string_view name, const QSize& size) {
  constexpr std::array Sizes{16, 20, 24, 28, 32, 36, 40, 48, 56, 64, 72, 80, 96, 128, 256};
  const int wanted = std::min(size.width(), size.height());
  const auto* drawn = std::lower_bound(Sizes.begin(), Sizes.end() - 1, wanted);
  const QImage picture(
      QStringLiteral(":/icons/%1x%1/%2.png").arg(*drawn).arg(QString::fromStdString(std::string(name))));
  return picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation)
      .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// The attributes of a folder say nothing of who may write into it; only a file that comes to be does.
bool FolderCanBeWritten(const std::filesystem::path& folder) {
  QTemporaryFile file(ToQt(folder.u16string()) + QStringLiteral("/loader-XXXXXX.tmp"));
  return file.open();
}

namespace {
// The folder in which a double click or the menu starts the program.
bool IsInstallation(const QString& folder) {
  return QFileInfo(folder) == QFileInfo(QCoreApplication::applicationDirPath()) &&
         QFileInfo::exists(folder + QStringLiteral("/uninstall.exe"));
}
} // namespace

// Nobody looks for a file of his where programs are installed. On a stick the files stay with the program.
QString FolderForFiles() {
  const QString current = QDir::currentPath();
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const bool unsuited = IsInstallation(current) || !FolderCanBeWritten(current.toStdU16String());
  return unsuited && QFileInfo(documents).isDir() ? documents : current;
}

// The history is in the registry, where Qt leaves no other place for it: what was not there before goes
// again.
struct ForgottenHistory::State {
  QSettings settings{QSettings::UserScope, QStringLiteral("QtProject")};
  QMap<QString, QVariant> before;
};

namespace {
QString HistoryGroup() {
  return QStringLiteral("FileDialog");
}
} // namespace

ForgottenHistory::ForgottenHistory() : state_(std::make_unique<State>()) {
  state_->settings.beginGroup(HistoryGroup());
  for (const QString& key : state_->settings.allKeys()) {
    state_->before.insert(key, state_->settings.value(key));
  }
}

ForgottenHistory::~ForgottenHistory() {
  state_->settings.sync();
  for (const QString& key : state_->settings.allKeys()) {
    if (!state_->before.contains(key)) {
      state_->settings.remove(key);
    }
  }
  for (auto entry = state_->before.cbegin(); entry != state_->before.cend(); ++entry) {
    state_->settings.setValue(entry.key(), entry.value());
  }
}

// With dark windows where the user has chosen dark applications: Qt 6.4 takes the colours over only when
// asked to.
void PrepareDesktop() {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "windows:darkmode=2");
  }
}

// The system's own style draws light parts on any ground.
QString BaseStyle() {
  const QPalette palette = QGuiApplication::palette();
  const bool dark =
      palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
  return dark ? QStringLiteral("fusion") : QString();
}

} // namespace loader
