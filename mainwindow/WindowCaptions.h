// The texts of the main window outside of its pages.
#pragma once

#include "mainwindow/frmParamLoader.h"

namespace loader {

// Of the window, its menus, tool buttons and buttons.
void SetCaptions(ParamLoaderScreen& window);
// The tabs, with their captions.
void AddPages(ParamLoaderScreen& window);

} // namespace loader
