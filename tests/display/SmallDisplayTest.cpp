// What has to have room on a small display: a long list.
#include <QScreen>

#include "tests/display/ChannelFixture.h"

namespace loader::test {
namespace {

struct OnAnyDisplay : ChannelOnTheDisplay {
  // Opens the list at a row, by the mouse, and measures what comes up as the user sees it.
  void ExpectHalfTheScreenAtMost(QWidget& screen, const char* name, int row) {
    auto& list = In<QComboBox>(screen, name);
    ASSERT_GT(list.count(), 40) << "not a long list";
    EXPECT_TRUE(hands.BecomesActive(screen));
    hands.ClickToOpen(list);
    const QAbstractItemView& rows = *list.view();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activePopupWidget() == rows.window(); }));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(rows.window()));
    const QRect room = list.screen()->availableGeometry();
    const QRect popup = rows.window()->frameGeometry();
    EXPECT_LE(popup.height(), room.height() / 2);
    EXPECT_TRUE(room.contains(popup)) << popup.top() << " to " << popup.bottom();
    EXPECT_EQ(row, list.currentIndex());
    const QRect current = rows.visualRect(rows.currentIndex());
    EXPECT_EQ(row, rows.currentIndex().row());
    EXPECT_TRUE(rows.viewport()->rect().contains(current)) << "opens elsewhere than at its row";
    // Not at the rim, where there are rows on both sides.
    if (row > 30 && row < list.count() - 30) {
      EXPECT_NEAR(rows.viewport()->rect().center().y(), current.center().y(), current.height());
    }
    hands.Press(Key::Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !rows.isVisible(); }));
    EXPECT_EQ(row, list.currentIndex());
  }
};

TEST_F(OnAnyDisplay, ALongListTakesHalfOfItAtMostAndOpensAtItsRow) {
  OpenProgram();
  ClickTab(RecorderPage);
  std::vector<std::u16string> rows;
  for (int row = 0; row < 120; ++row) {
    rows.push_back(DecimalText(row));
  }
  auto& record = static_cast<ListBox&>(*frmParamLoader->Find("cmbMainSample"));
  FillList(record, rows);
  for (const int row : {0, 60, 119}) {
    record.index = row;
    platform->userInterface.Refresh();
    ExpectHalfTheScreenAtMost(Window(), "cmbMainSample", row);
  }
}

} // namespace
} // namespace loader::test
