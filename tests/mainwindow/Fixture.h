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
#include "tests/support/StoreNumbers.h"

namespace loader::test {

constexpr Colour Gray = 0x404040;

// --- The store

inline ParamNumRecord& NumRecord(std::string_view section, int item, std::string_view tag) {
  static ParamNumRecord none;
  ParamNumRecord* record = FindNumRecord(section, item, tag);
  EXPECT_NE(record, nullptr) << section << item << tag;
  return record == nullptr ? none : *record;
}
inline ParamTextRecord& TextRecord(std::string_view section, int item, std::string_view tag) {
  static ParamTextRecord none;
  ParamTextRecord* record = FindTextRecord(section, item, tag);
  EXPECT_NE(record, nullptr) << section << item << tag;
  return record == nullptr ? none : *record;
}
inline int Stored(std::string_view section, int item, std::string_view tag) {
  return NumRecord(section, item, tag).Value;
}
inline void Put(std::string_view section, int item, std::string_view tag, int value) {
  NumRecord(section, item, tag).Value = static_cast<std::int16_t>(value);
}
inline void PutLimits(std::string_view section, int item, std::string_view tag, int minimum, int maximum) {
  ParamNumRecord& record = NumRecord(section, item, tag);
  record.MinValue = static_cast<std::int16_t>(minimum);
  record.MaxValue = static_cast<std::int16_t>(maximum);
}
inline void PutText(std::string_view section, int item, std::string_view tag, std::string_view text) {
  SetText(TextRecord(section, item, tag), FromUtf8(text), SlotValue);
}
// The 64 characters as they stand.
inline std::string StoredText(std::string_view section, int item, std::string_view tag) {
  return ToUtf8(TextRecord(section, item, tag).Value);
}
// `text` with blanks up to 64 characters.
inline std::string Padded64(std::string_view text) {
  return ToUtf8(FixedText(FromUtf8(text)));
}
// Takes a tag out of every item of a section, as in a model that does not have it.
inline void DropTag(std::string_view section, std::string_view tag) {
  const StoreIndex index = gFFindSection(section);
  ASSERT_NE(index, NotFound) << section;
  for (ParamItem& item : ParamStore[index].Items) {
    const auto named = [&](const auto& record) { return Trim(std::string_view(record.Tag)) == tag; };
    const auto dropped = std::erase_if(item.NumRecords, named) + std::erase_if(item.TextRecords, named);
    ASSERT_EQ(1U, dropped) << section << tag;
  }
}
inline void DropSection(std::string_view section) {
  const StoreIndex index = gFFindSection(section);
  ASSERT_NE(index, NotFound) << section;
  ParamStore.erase(ParamStore.begin() + index);
}
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
