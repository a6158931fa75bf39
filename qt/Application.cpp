#include "qt/Application.h"

#include <QFont>
#include <QLibraryInfo>
#include <QWidget>

namespace loader {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  // One family for all scripts, so that half-width katakana, digits and kanji stand on one line; without it
  // the system's own font serves.
  QFont text = font();
  text.setFamilies({QStringLiteral("Noto Sans CJK JP"), text.family()});
  setFont(text);
  // The file dialog speaks Japanese where Qt's translations are installed.
  if (translator_.load(QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    installTranslator(&translator_);
  }
}

bool Application::notify(QObject* receiver, QEvent* event) {
  ++eventsGiven_;
  if (refuses && receiver->isWidgetType() && refuses(*static_cast<QWidget*>(receiver), *event)) {
    return true;
  }
  return QApplication::notify(receiver, event);
}

} // namespace loader
