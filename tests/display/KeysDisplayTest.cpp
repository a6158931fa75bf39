// The keys of the main window and of its tables, behind a click as a user begins.
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>

#include "tests/display/DisplayFixture.h"

namespace loader::test {
namespace {

struct KeysOnTheDisplay : OnTheDisplay {
  void SetUp() override {
    OpenProgram();
    ASSERT_EQ(QSize(800, 650), Window().size());
  }
  GridView& Channels() { return Find<GridView>("fgrCh"); }
};

TEST_F(KeysOnTheDisplay, F9AsksAndNoKeyActsBehindTheQuestion) {
  ClickCell(Channels(), 2, 1);
  boxes.Expect(std::u16string(LoadText(20106)), BoxAnswer::Cancel, [this](QMessageBox& box) {
    EXPECT_TRUE(hands.BecomesActive(box));
    hands.Press(Key::F5);
    hands.Press(Key::F9);
    hands.PressHolding(Hands::Held::Ctrl, 'o');
    EXPECT_TRUE(box.isVisible());
    hands.Press(Key::Escape);
  });
  hands.Press(Key::F9);
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_TRUE(hands.BecomesActive(Window()));
  EXPECT_TRUE(Channels().hasFocus());
  EXPECT_TRUE(frmParamLoader->statusDone.caption.empty());
}

TEST_F(KeysOnTheDisplay, TheLetterOfAnEntryWorksInTheMenuThatAClickHasOpened) {
  int chosen = 0;
  frmParamLoader->smenuTextWrite.onClick = [&] { ++chosen; };
  QMenuBar& bar = Find<QMenuBar>("menuBar");
  auto& menu = Find<QMenu>("menuFile");
  hands.ClickAt(bar, bar.actionGeometry(menu.menuAction()).center());
  ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activePopupWidget() == &menu; }));
  hands.Press(static_cast<Key>('t'));
  EXPECT_TRUE(QTest::qWaitFor([&] { return chosen == 1; }));
  EXPECT_FALSE(menu.isVisible());
}

TEST_F(KeysOnTheDisplay, ATextIsFoundAndItsCellCopied) {
  ClickCell(Channels(), 0, 1);
  hands.PressHolding(Hands::Held::Ctrl, 'f');
  auto* text = Window().findChild<QLineEdit*>(QStringLiteral("findText"));
  ASSERT_NE(nullptr, text);
  EXPECT_TRUE(text->hasFocus());
  EXPECT_TRUE(Channels().rect().contains(text->parentWidget()->geometry())) << "stands outside of its table";
  hands.Type("ch 05");
  hands.Press(Key::Return);
  EXPECT_EQ(6, frmParamLoader->fgrCh.Row);
  hands.Press(Key::Escape);
  EXPECT_TRUE(Channels().hasFocus());
  hands.PressHolding(Hands::Held::CtrlShift, 'c');
  EXPECT_EQ(QStringLiteral("CH 05"), QApplication::clipboard()->text());
  hands.Press(Key::F3); // the one place
  EXPECT_EQ(6, frmParamLoader->fgrCh.Row);
}

TEST_F(KeysOnTheDisplay, AColumnIsDraggedAndCellsAreMarkedByTheMouse) {
  GridView& table = Channels();
  QHeaderView& above = *table.horizontalHeader();
  const int before = table.columnWidth(1);
  const QPoint edge(above.sectionViewportPosition(1) + before - 1, above.height() - 6);
  hands.Drag(*above.viewport(), edge, edge + QPoint(40, 0));
  EXPECT_EQ(before + 40, table.columnWidth(1));
  const auto middle = [&](int row, int col) {
    return table.visualRect(table.model()->index(row, col)).center();
  };
  hands.Drag(*table.viewport(), middle(0, 1), middle(1, 1));
  hands.PressHolding(Hands::Held::CtrlShift, 'c');
  EXPECT_EQ(QStringLiteral("CH 01\nCH 02"), QApplication::clipboard()->text());
}

} // namespace
} // namespace loader::test
