#include "qt/Application.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QLibraryInfo>
#include <QStyleFactory>
#include <QWidget>
#include <algorithm>

#include "qt/ProgramStyle.h"
#include "qt/ReadableColour.h"
#include "qt/System.h"

namespace loader {

namespace {

bool WritesJapanese(const QFont& font) {
  const QString family = font.families().value(0);
  return ProgramFamilies().contains(family) ||
         QFontDatabase::writingSystems(family).contains(QFontDatabase::Japanese);
}

// A font that was chosen for Japanese, or the program's own. The pages are laid out for its size; of another
// font only a size that none has unless large print was asked for is taken over.
QFont JapaneseFont(QFont chosen) {
  if (WritesJapanese(chosen)) {
    return chosen;
  }
  constexpr double ProgramPoints = 9;
  constexpr double LargestDefault = 12;
  // Only of a size in pixels need the font itself be asked, which is loaded for it.
  const double points = chosen.pointSizeF() > 0 ? chosen.pointSizeF() : QFontInfo(chosen).pointSizeF();
  chosen.setPointSizeF(points > LargestDefault ? points : ProgramPoints);
  // The chosen family only stands in where ours isn't installed: for a font of two families Qt asks the
  // system for the fallbacks of every script before it draws the first character, for a font of one when it
  // meets a character that the family lacks.
  const QStringList families = ProgramFamilies();
  const auto there = std::find_if(families.begin(), families.end(),
                                  [](const QString& family) { return QFontDatabase::hasFamily(family); });
  chosen.setFamilies(there != families.end() ? QStringList{*there}
                                             : QStringList{families.front(), chosen.family()});
  return chosen;
}

} // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  TakeStyle(BaseStyle());
  setFont(JapaneseFont(font()));
  KeepReadable();
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

bool Application::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationFontChange && !WritesJapanese(font())) {
    setFont(JapaneseFont(font()));
  } else if (event->type() == QEvent::ApplicationPaletteChange) {
    // A desktop that turns dark while the program runs may need another style to be read on.
    if (const QString base = BaseStyle(); base != base_) {
      TakeStyle(base);
    }
    KeepReadable();
  }
  return QApplication::event(event);
}

void Application::TakeStyle(const QString& base) {
  base_ = base;
  // Belongs to the application from here on.
  setStyle(new ProgramStyle(base.isEmpty() ? nullptr : QStyleFactory::create(base)));
}

void Application::KeepReadable() {
  const QPalette readable = WithReadableDisabled(WithReadableSelection(palette()));
  if (readable != palette()) {
    setPalette(readable);
  }
}

} // namespace loader
