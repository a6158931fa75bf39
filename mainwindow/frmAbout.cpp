#include "mainwindow/frmAbout.h"

#include "core/Text.h"
#include "core/TextTable.h"
#include "platform/Platform.h"

#ifndef LOADER_VERSION
#error "the build gives the program's version"
#endif

namespace loader {

AboutScreen::AboutScreen() : Screen("frmAbout") {
  caption = LoadText(10005);
  lblTitle.caption = LoadText(10000);
  lblVersion.caption = std::u16string(LoadText(64000)) + Widen(LOADER_VERSION);
  cmdOK.caption = LoadText(19621);
  cmdOK.onClick = [this] { ThePlatform().screens.Close(*this); };
}

void ShowAbout() {
  AboutScreen screen;
  ThePlatform().screens.ShowModal(screen);
}

} // namespace loader
