#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QSettings>
#include <QSvgRenderer>
#include <QTemporaryDir>

#include "qt/QtText.h"
#include "qt/System.h"

namespace loader {

QStringList ProgramFamilies() {
  return {QStringLiteral("Noto Sans CJK JP")};
}

QImage DrawProgramIcon(std::string_view name, const QSize& size) {
  QSvgRenderer drawing(QString::fromStdString(":/icons/" + std::string(name) + ".svg"));
  drawing.setAspectRatioMode(Qt::KeepAspectRatio);
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawing.render(&painter);
  return image;
}

bool FolderCanBeWritten(const std::filesystem::path& folder) {
  return QFileInfo(ToQt(folder.u16string())).isWritable();
}

QString FolderForFiles() {
  return QDir::currentPath();
}

// The settings of this process go to a folder that is gone with the dialog.
struct ForgottenHistory::State {
  QTemporaryDir folder;
};

ForgottenHistory::ForgottenHistory() : state_(std::make_unique<State>()) {
  if (state_->folder.isValid()) {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, state_->folder.path());
  }
}

ForgottenHistory::~ForgottenHistory() = default;

void PrepareDesktop() {}

QString BaseStyle() {
  return {};
}

} // namespace loader
