#include "mainwindow/WindowCaptions.h"

#include <array>

#include "core/OwnTexts.h"
#include "core/TextTable.h"

namespace loader {

namespace {

// Text ids of the pages' captions, in page order.
constexpr std::array<TextId, PageCount> PageCaptions{18094, 18157, 18095, 18096, 18097, 18098};

} // namespace

void SetCaptions(ParamLoaderScreen& window) {
  window.caption = LoadText(10000);
  struct MenuCaption {
    MenuEntry& entry;
    TextId text;
  };
  const MenuCaption menus[] = {
      {window.menuFile, 10500},
      {window.smenuOpen, 10501},
      {window.smenuOverWrite, 10502},
      {window.smenuTextWrite, 10503},
      {window.menuLine, 10504},
      {window.smenuEnd, 10505},
      {window.menuEdit, 10506},
      {window.smenuCopy, 10507},
      {window.smenuPaste, 10508},
      {window.menuRS, 10509},
      {window.menuRScomunication, 10510},
      {window.menuRScomunicationf(0), 10511},
      {window.menuRScomunicationf(1), 10512},
      {window.menuRScomunicationf(2), 10513},
      {window.menuRSipaddr, 10514},
      {window.smenuTermset, 10515},
      {window.smenuCOM(0), 10516},
      {window.smenuCOM(1), 10517},
      {window.smenuCOM(2), 10518},
      {window.smenuCOM(3), 10519},
      {window.smenuCOM(4), 10520},
      {window.menuHelp, 10521},
      {window.menuVersion, 10522},
  };
  for (const MenuCaption& menu : menus) {
    menu.entry.caption = LoadText(menu.text);
  }
  window.menuGuide.caption = OwnText(OwnTextId::UserGuide);
  constexpr TextId FirstToolTip = 10600;
  for (int button = 1; button <= window.V.Count(); ++button) {
    window.V(button).toolTip = LoadText(FirstToolTip + (button - 1));
  }
  window.lblCommStatus.caption = LoadText(18093);
  window.btnRegRead.caption = LoadText(19623);
  window.btnRegWrite.caption = LoadText(19624);
  window.cmdFIX.caption = LoadText(19625);
  window.cmdTime.caption = LoadText(19626);
}

void AddPages(ParamLoaderScreen& window) {
  window.tbsParameter.pages.clear();
  for (const TextId caption : PageCaptions) {
    window.tbsParameter.pages.push_back({std::u16string(LoadText(caption))});
  }
}

} // namespace loader
