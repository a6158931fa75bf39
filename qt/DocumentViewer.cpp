#include "qt/DocumentViewer.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>

namespace loader {

namespace {

// How the desktop's opener ends, by its manual page, when the document is there and nothing shows it.
bool FoundNoViewer(int exitCode, QProcess::ExitStatus status) {
  constexpr int NoTool = 3;
  constexpr int Failed = 4;
  return status == QProcess::NormalExit && (exitCode == NoTool || exitCode == Failed);
}

} // namespace

// Qt starts the opener too, but does not look how it ends: a user without a viewer would press F1 for
// nothing.
bool OpenInViewer(const QUrl& document, QObject& owner, std::function<void()> noViewer) {
  const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
  if (opener.isEmpty()) {
    return QDesktopServices::openUrl(document);
  }
  // Nobody's child: the opener may wait until the viewer is closed, which outlives the program.
  auto* process = new QProcess;
  process->setStandardInputFile(QProcess::nullDevice());
  process->setStandardOutputFile(QProcess::nullDevice());
  process->setStandardErrorFile(QProcess::nullDevice());
  QObject::connect(process, &QProcess::finished, &owner,
                   [noViewer = std::move(noViewer)](int exitCode, QProcess::ExitStatus status) {
                     if (FoundNoViewer(exitCode, status)) {
                       noViewer();
                     }
                   });
  QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
  process->start(opener, {QString::fromLatin1(document.toEncoded())});
  return true;
}

} // namespace loader
