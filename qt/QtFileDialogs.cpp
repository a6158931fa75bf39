#include "qt/QtFileDialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QStringList>

#include "core/OwnTexts.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "qt/FrontWindow.h"
#include "qt/QtText.h"
#include "qt/System.h"
#include "qt/UserInterface.h"

namespace loader {

namespace {

enum class Purpose { Open, Save };

bool HasExtension(const QString& path) {
  return QFileInfo(path).fileName().lastIndexOf(u'.') > 0;
}

// Qt's dialog takes a quote for the border between two names: a"b.KOV would be saved as b.KOV in some other
// folder.
bool HasQuote(const QFileDialog& dialog) {
  const auto* name =
      dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")); // none in a platform's own dialog
  return name != nullptr && name->text().contains(u'"');
}

// The path that the user chose, the extension appended where it is to be; empty when he gave up.
QString Ask(const CommonDialog& asked, Purpose purpose, const QString& lastPath) {
  const FileFilter filter = FilterOf(asked.Filter);
  const FrontWindow front;
  // Asked again, it begins where the name belongs: a platform's own dialog takes the last part of it only.
  const QString folder = lastPath.isEmpty() ? FolderForFiles() : QFileInfo(lastPath).absolutePath();
  QFileDialog dialog(front.Window(), ToQt(asked.DialogTitle), folder);
  dialog.setObjectName(QStringLiteral("fileDialog"));
  dialog.setAcceptMode(purpose == Purpose::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(purpose == Purpose::Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setOption(QFileDialog::DontConfirmOverwrite); // asked below, about the whole name
  dialog.setNameFilter(filter.nameFilter);
  // A platform's own dialog would take one from the filter's caption, up to its first blank.
  dialog.setDefaultSuffix(purpose == Purpose::Save ? filter.extension : QString());
  if (!lastPath.isEmpty()) {
    dialog.selectFile(lastPath);
  }
  while (true) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
      return {};
    }
    if (purpose == Purpose::Open || !HasQuote(dialog)) {
      break;
    }
    ShowMessage(OwnText(OwnTextId::QuoteInFileName));
  }
  QString path = QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
  if (purpose == Purpose::Save && !filter.extension.isEmpty() && !HasExtension(path)) {
    path += u'.' + filter.extension;
  }
  return path;
}

bool MayOverwrite(const QString& path) {
  const std::u16string name = FromQt(QFileInfo(path).fileName());
  return AskOkCancel(Replace(OwnText(OwnTextId::OverwriteFile), u"@FILE@", name));
}

long Show(CommonDialog& dialog, Purpose purpose) {
  const ForgottenHistory history;
  QString path = ToQt(dialog.FileName);
  do {
    path = Ask(dialog, purpose, path);
    if (path.isEmpty()) {
      return FileDialogCancelled;
    }
  } while (purpose == Purpose::Save && (dialog.Flags & AskBeforeOverwrite) != 0 && QFileInfo::exists(path) &&
           !MayOverwrite(path));
  dialog.FileName = FromQt(path);
  dialog.FileTitle = FromQt(QFileInfo(path).fileName());
  return 0;
}

} // namespace

FileFilter FilterOf(std::u16string_view filter) {
  const QString whole = ToQt(filter);
  const qsizetype bar = whole.indexOf(u'|');
  const QString caption = bar < 0 ? whole : whole.left(bar);
  const QString pattern = bar < 0 ? whole : whole.mid(bar + 1);
  const QString extension = pattern.section(u'.', -1);
  QStringList patterns{pattern};
  for (const QString& variant : {pattern.toUpper(), pattern.toLower()}) {
    if (!patterns.contains(variant)) {
      patterns.push_back(variant);
    }
  }
  return {caption + QStringLiteral(" (") + patterns.join(u' ') + u')',
          extension.contains(u'*') ? QString() : extension};
}

long QtFileDialogs::ShowOpen(CommonDialog& dialog) {
  userInterface_.Refresh();
  userInterface_.BoxShown();
  return Show(dialog, Purpose::Open);
}

long QtFileDialogs::ShowSave(CommonDialog& dialog) {
  userInterface_.Refresh();
  userInterface_.BoxShown();
  return Show(dialog, Purpose::Save);
}

} // namespace loader
