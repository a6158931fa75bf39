// What the tests of the main window share: an open window over a fresh store of a model, and short ways to
// what it shows and to what the store holds.
#pragma once

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "mainwindow/ParameterTables.h"
#include "mainwindow/frmParamLoader.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {

constexpr Colour Gray = 0x404040;

// --- The window

inline ParamLoaderScreen& Window() {
  return *frmParamLoader;
}
inline ListBox& List(std::string_view name) {
  return ListNamed(Window(), name);
}
inline TextField& Field(std::string_view name) {
  return FieldNamed(Window(), name);
}
inline Grid& GridNamed(std::string_view name) {
  Control* control = Window().Find(name);
  if (control == nullptr || control->kind != ControlKind::Grid) {
    throw std::logic_error("no such table: " + std::string(name));
  }
  return static_cast<Grid&>(*control);
}
inline std::vector<std::string> Items(std::string_view list) {
  std::vector<std::string> items;
  for (const std::u16string& item : List(list).items) {
    items.push_back(ToUtf8(item));
  }
  return items;
}
inline std::string TextOf(const TextField& field) {
  return ToUtf8(field.text);
}
inline std::string CellText(const Grid& grid, int row, int col) {
  return ToUtf8(grid.TextMatrix(row, col));
}
// A cell of fgrCh by channel number (from 1).
inline std::string ChannelCell(int channel, int col) {
  return CellText(Window().fgrCh, 2 + channel - 1, col);
}
inline Colour ChannelBack(int channel, int col) {
  return Window().fgrCh.CellAt(2 + channel - 1, col).back;
}
// A cell of fgrOperationChSet by channel number (19 or 37 and up).
inline std::string OperationCell(int channel, int col) {
  return CellText(Window().fgrOperationChSet, 2 + channel - Profile.FirstOperationChannel, col);
}
inline Colour OperationBack(int channel, int col) {
  return Window().fgrOperationChSet.CellAt(2 + channel - Profile.FirstOperationChannel, col).back;
}
// Writes a mark into a cell, so that a test sees whether a fill left it alone.
inline void Mark(Grid& grid, int row, int col) {
  grid.SetText(row, col, u"as it was");
}

// "cmbDI(3)" as a part of a test name.
inline std::string TestName(std::string_view text) {
  std::string name;
  for (const char character : text) {
    name += std::isalnum(static_cast<unsigned char>(character)) != 0   ? std::string(1, character)
            : character == '(' || character == '_' || character == ' ' ? std::string("_")
                                                                       : std::string();
  }
  return name;
}

class MainWindow : public ::testing::Test {
protected:
  void TearDown() override {
    frmParamLoader.reset();
    StopTimer(WaitTimer2); // outlives the test
    WaitTimer2Count = 0;
  }
  void Open(std::string_view model) {
    StartWithModel(platform, model);
    OpenMainWindow();
  }

  ScriptedPlatform platform;
  ScriptedUser user;
};

class KovWindow : public MainWindow {
protected:
  void SetUp() override { Open("KOV"); }
};
class RugWindow : public MainWindow {
protected:
  void SetUp() override { Open("RUG"); }
};
// For rules that hold for both models alike.
class EitherWindow : public MainWindow, public ::testing::WithParamInterface<const char*> {
protected:
  void SetUp() override { Open(GetParam()); }
};
#define LOADER_FOR_BOTH_MODELS(suite)                                                                        \
  INSTANTIATE_TEST_SUITE_P(Models, suite, ::testing::Values("KOV", "RUG"),                                   \
                           [](const auto& tested) { return std::string(tested.param); })

} // namespace loader::test
