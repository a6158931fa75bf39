// The screens of the channels, opened from their tables and worked by mouse and keyboard.
#pragma once

#include <QLabel>
#include <cstdlib>

#include "tests/display/DisplayFixture.h"

namespace loader::test {

struct ScreenOfAModel {
  const char* name;
  const char* model; // TYPE of LOADER.INI
  const char* screen;
  const char* table;
  int page;
};
inline void PrintTo(const ScreenOfAModel& screen, std::ostream* out) {
  *out << screen.name;
}
// RUG has no operation channels.
inline constexpr ScreenOfAModel Screens[] = {
    {"KovChannel", "0", "frmChSetting", "fgrCh", ChannelPage},
    {"RugChannel", "1", "frmChSetting", "fgrCh", ChannelPage},
    {"KovOperation", "0", "frmOperationChSet", "fgrOperationChSet", OperationPage}};

struct ChannelOnTheDisplay : OnTheDisplay {
  // Behind the screen the keyboard is in the row that opened it.
  void Opened(const ScreenOfAModel& which, int row, const std::function<void()>& open,
              const std::function<void(QWidget&)>& act) {
    auto& table = Find<GridView>(which.table);
    InTheScreen(which.screen, open, act);
    EXPECT_TRUE(hands.BecomesActive(Window())) << "behind the screen";
    EXPECT_EQ(&table, QApplication::focusWidget());
    EXPECT_EQ(row, table.currentIndex().row());
  }
  void OpenedByDoubleClick(const ScreenOfAModel& which, int row, const std::function<void(QWidget&)>& act) {
    Opened(
        which, row, [&] { DoubleClickCell(Find<GridView>(which.table), row); }, act);
  }
  void OpenedByEnter(const ScreenOfAModel& which, int row, const std::function<void(QWidget&)>& act) {
    ClickCell(Find<GridView>(which.table), row);
    Opened(
        which, row, [&] { hands.Press(Key::Return); }, act);
  }
  // The entry of a list that reads so.
  void ChooseText(QWidget& screen, const char* list, const char* text) {
    auto& box = In<QComboBox>(screen, list);
    const int row = box.findText(QString::fromUtf8(text));
    ASSERT_GE(row, 0) << text;
    Choose(box, row);
  }
  // The list that has the keyboard goes to a row by the arrow keys.
  void ArrowTo(QComboBox& list, int row) {
    TabTo(list);
    for (int steps = std::abs(row - list.currentIndex()); steps > 0; --steps) {
      hands.Press(row < list.currentIndex() ? Key::Up : Key::Down);
    }
    EXPECT_EQ(row, list.currentIndex());
  }
  // In full, for the keyboard: a field that the Tab key enters is typed over.
  void TypeInto(QWidget& screen, const char* field, std::string_view text) {
    TabTo(Field(screen, field));
    hands.SelectAll();
    hands.Type(text);
  }
  static std::string Caption(QWidget& screen, const char* label) {
    return In<QLabel>(screen, label).text().trimmed().toStdString(); // a formula ends with a blank
  }
  bool RowShows(const char* table, int row, std::string_view text) {
    const QAbstractItemModel& model = *Find<GridView>(table).model();
    for (int col = 0; col < model.columnCount(); ++col) {
      if (model.index(row, col).data().toString().trimmed() == QString::fromUtf8(text)) {
        return true;
      }
    }
    return false;
  }
  void ClickApply(QWidget& screen) { hands.Click(In<QPushButton>(screen, "OKButton")); }
  void ClickClose(QWidget& screen) {
    hands.Click(In<QPushButton>(screen, "CancelButton"));
    EXPECT_FALSE(screen.isVisible());
  }
};

inline constexpr const ScreenOfAModel& KovChannel = Screens[0];
inline constexpr const ScreenOfAModel& KovOperation = Screens[2];

} // namespace loader::test
