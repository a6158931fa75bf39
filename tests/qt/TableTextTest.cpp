// Tables: cells for a spreadsheet, the text that is looked for, columns that are dragged, the menu.
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>

#include "qt/FindBar.h"
#include "qt/GridView.h"
#include "qt/HeadingView.h"
#include "qt/TableText.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

// --- Without a widget

struct SheetScreen : Screen {
  SheetScreen() : Screen("frmSheet") {
    grid.Resize(4, 4); // a heading and a fixed column
    const char16_t* texts[3][3] = {
        {u"ﾎﾞｲﾗ", u"℃", u"12.5"}, {u"PUMP", u"", u"１２"}, {u"pump 2", u"kPa", u"-3"}};
    for (int row = 0; row < 3; ++row) {
      for (int col = 0; col < 3; ++col) {
        grid.SetText(row + 1, col + 1, texts[row][col]);
      }
    }
    model.Take(grid);
  }
  Grid grid{*this, "grid"};
  GridModel model;
  std::function<bool(int)> none = [](int) { return false; };
  std::pair<int, int> Find(const char16_t* text, int row, int col, Direction direction = Direction::Forward) {
    const QModelIndex found =
        FindText(model, model.index(row, col), QString::fromUtf16(text), direction, none);
    return {found.row(), found.column()};
  }
};

TEST(TableText, CellsAreTabSeparatedAsTheyAreShown) {
  SheetScreen sheet;
  EXPECT_EQ(QStringLiteral("ﾎﾞｲﾗ\t12.5\nPUMP\t１２"), TabSeparated(sheet.model, {0, 1}, {0, 2}));
  EXPECT_EQ(QStringLiteral("-3"), TabSeparated(sheet.model, {2}, {2}));
  EXPECT_EQ(QString(), TabSeparated(sheet.model, {}, {}));
}

TEST(TableText, NoCellLeavesItsPlaceInTheSpreadsheet) {
  SheetScreen sheet;
  sheet.grid.SetText(1, 1, u"a\tb\nc");
  sheet.grid.SetText(1, 2, u"\"q\" r");
  sheet.grid.SetText(1, 3, u"5\"");
  sheet.model.Take(sheet.grid);
  EXPECT_EQ(QStringLiteral("a b c\t\"\"\"q\"\" r\"\t5\""), TabSeparated(sheet.model, {0}, {0, 1, 2}));
}

using Place = std::pair<int, int>;

TEST(TableText, IsFoundRowByRowAndRoundTheEnd) {
  SheetScreen sheet;
  EXPECT_EQ((Place{2, 0}), sheet.Find(u"pump", 1, 0));
  EXPECT_EQ((Place{1, 0}), sheet.Find(u"pump", 2, 0));
  EXPECT_EQ((Place{1, 0}), sheet.Find(u"pump", 2, 0, Direction::Backward));
  EXPECT_EQ((Place{2, 0}), sheet.Find(u"pump", 1, 0, Direction::Backward));
  EXPECT_EQ((Place{2, 1}), sheet.Find(u"kPa", 2, 1)) << "the one place is found again";
  EXPECT_EQ((Place{-1, -1}), sheet.Find(u"fan", 0, 0));
  EXPECT_EQ((Place{-1, -1}), sheet.Find(u"", 0, 0));
}

TEST(TableText, WidthAndCaseOfCharactersDoNotMatter) {
  SheetScreen sheet;
  EXPECT_EQ((Place{0, 0}), sheet.Find(u"ボイラ", 1, 1));
  EXPECT_EQ((Place{1, 2}), sheet.Find(u"12", 0, 2));
  EXPECT_EQ((Place{2, 1}), sheet.Find(u"ＫＰＡ", 0, 0));
}

TEST(TableText, AHiddenColumnHoldsNothingAndNoCurrentCellBeginsAtTheEnds) {
  SheetScreen sheet;
  sheet.none = [](int col) { return col == 0; };
  EXPECT_EQ((Place{-1, -1}), sheet.Find(u"pump", 0, 0));
  const auto all = [](int) { return false; };
  EXPECT_EQ(0, FindText(sheet.model, {}, QStringLiteral("i"), Direction::Forward, all).row() + 1) << "none";
  EXPECT_EQ(1, FindText(sheet.model, {}, QStringLiteral("p"), Direction::Forward, all).row());
  EXPECT_EQ(2, FindText(sheet.model, {}, QStringLiteral("p"), Direction::Backward, all).row());
  EXPECT_FALSE(FindText(GridModel(), {}, QStringLiteral("p"), Direction::Forward, all).isValid());
}

// --- In the table

struct TableOfSample : SampleTest {
  Grid& grid = screen.fgrTable;
  GridView& View() { return Find<GridView>("fgrTable"); }
  void SetUp() override {
    grid.Resize(5, 5);
    grid.Clear();
    for (int row = 0; row < 5; ++row) {
      for (int col = 0; col < 5; ++col) {
        grid.SetText(row, col, DecimalText(10 * row + col));
      }
    }
    grid.Row = grid.Col = 1;
    screen.tbsPages.current = 2;
    ShowSample();
    View().setFocus();
    QApplication::clipboard()->clear();
  }
  static QString Copied() { return QApplication::clipboard()->text(); }
  void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
  }
  void Copy() { Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier); }
  // The right edge of a column, by the mouse.
  void DragEdge(int col, int by) {
    QHeaderView& above = *View().horizontalHeader();
    const QPoint edge(above.sectionViewportPosition(col) + View().columnWidth(col) - 1, above.height() / 2);
    QTest::mousePress(above.viewport(), Qt::LeftButton, {}, edge);
    QTest::mouseMove(above.viewport(), edge + QPoint(by / 2, 0));
    QTest::mouseMove(above.viewport(), edge + QPoint(by, 0));
    QTest::mouseRelease(above.viewport(), Qt::LeftButton, {}, edge + QPoint(by, 0));
  }
  QMenu& Menu() {
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                            View().viewport()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(View().viewport(), &event);
    return Find<QMenu>("tableMenu");
  }
};

TEST_F(TableOfSample, CopiesTheCurrentCellOrTheMarkedOnes) {
  Copy();
  EXPECT_EQ(QStringLiteral("11"), Copied());
  Press(Qt::Key_Right, Qt::ShiftModifier);
  Press(Qt::Key_Down, Qt::ShiftModifier);
  Copy();
  EXPECT_EQ(QStringLiteral("11\t12\n21\t22"), Copied());
  EXPECT_EQ(2, grid.Row) << "the current cell goes along";
}

TEST_F(TableOfSample, CopiesAllCellsOrTheWholeRowOfAHeading) {
  grid.SetColWidth(3, 0); // hidden
  platform.userInterface.Refresh();
  Press(Qt::Key_A, Qt::ControlModifier);
  Copy();
  EXPECT_EQ(QStringLiteral("11\t12\t14\n21\t22\t24\n31\t32\t34\n41\t42\t44"), Copied());
  QHeaderView& rows = *View().verticalHeader();
  QTest::mouseClick(rows.viewport(), Qt::LeftButton, {},
                    QPoint(3, rows.sectionViewportPosition(2) + rows.sectionSize(2) / 2));
  Copy();
  EXPECT_EQ(QStringLiteral("31\t32\t34"), Copied());
  EXPECT_EQ(3, grid.Row);
  EXPECT_EQ(1, grid.Col) << "in its column";
}

TEST_F(TableOfSample, HomeAndEndGoToTheEnds) {
  Press(Qt::Key_End);
  EXPECT_EQ(4, grid.Col);
  Press(Qt::Key_Home);
  EXPECT_EQ(1, grid.Col);
  Press(Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ((Place{4, 4}), (Place{grid.Row, grid.Col}));
  Press(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ((Place{1, 1}), (Place{grid.Row, grid.Col}));
}

TEST_F(TableOfSample, TypedDigitsGoToTheCellThatBeginsWithThem) {
  QTest::keyClicks(&View(), QStringLiteral("3"));
  EXPECT_EQ(3, grid.Row);
}

TEST_F(TableOfSample, FindsAndGoesOnAndBack) {
  Press(Qt::Key_F, Qt::ControlModifier);
  auto& text = Find<QLineEdit>("findText");
  ASSERT_TRUE(text.hasFocus());
  QTest::keyClicks(&text, QStringLiteral("2"));
  Press(Qt::Key_Return);
  EXPECT_EQ((Place{1, 2}), (Place{grid.Row, grid.Col}));
  Press(Qt::Key_F3);
  EXPECT_EQ((Place{2, 1}), (Place{grid.Row, grid.Col}));
  Press(Qt::Key_Escape);
  EXPECT_TRUE(View().hasFocus());
  EXPECT_FALSE(text.isVisible());
  Press(Qt::Key_F3);
  EXPECT_EQ((Place{2, 2}), (Place{grid.Row, grid.Col}));
  Press(Qt::Key_F3, Qt::ShiftModifier);
  Press(Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ((Place{1, 2}), (Place{grid.Row, grid.Col}));
}

TEST_F(TableOfSample, TellsWhatIsNotThereAndStays) {
  Press(Qt::Key_F3); // nothing to go on with: it asks
  auto& text = Find<QLineEdit>("findText");
  ASSERT_TRUE(text.hasFocus());
  QTest::keyClicks(&text, QStringLiteral("nowhere"));
  Press(Qt::Key_Return);
  const auto& note = Find<QLabel>("findNote");
  EXPECT_TRUE(note.isVisible());
  QCoreApplication::sendPostedEvents();
  EXPECT_GE(note.mapTo(&View(), QPoint()).x(), text.mapTo(&View(), QPoint(text.width(), 0)).x()) << "over it";
  EXPECT_EQ(QStringLiteral("見つかりません"), Find<QLabel>("findNote").text());
  EXPECT_EQ((Place{1, 1}), (Place{grid.Row, grid.Col}));
  QTest::keyClicks(&text, QStringLiteral("x"));
  EXPECT_FALSE(Find<QLabel>("findNote").isVisible());
}

TEST_F(TableOfSample, TheFieldDoesNotCoverWhatIsFound) {
  View().setMinimumSize(150, 150);
  QCoreApplication::sendPostedEvents();
  Press(Qt::Key_F, Qt::ControlModifier);
  auto& text = Find<QLineEdit>("findText");
  for (const char16_t* wanted : {u"14", u"44", u"12", u"42"}) {
    text.setText(QString::fromUtf16(wanted));
    Press(Qt::Key_Return);
    const QRect cell =
        View().visualRect(View().currentIndex()).translated(View().viewport()->geometry().topLeft());
    EXPECT_EQ(QString::fromUtf16(wanted), View().currentIndex().data().toString());
    EXPECT_FALSE(text.parentWidget()->geometry().intersects(cell))
        << QString::fromUtf16(wanted).toStdString();
  }
}

TEST_F(TableOfSample, TheMenuOpensTheRowCopiesAndFinds) {
  int opened = 0;
  screen.fgrTable.onDoubleClick = [&] { ++opened; };
  View().SetOpensRows(true);
  QTest::keyClick(&Menu(), Qt::Key_O); // by its letter
  EXPECT_EQ(1, opened);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QTest::keyClick(&Menu(), Qt::Key_C);
  EXPECT_EQ(QStringLiteral("11"), Copied());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QTest::keyClick(&Menu(), Qt::Key_F);
  EXPECT_TRUE(Find<QLineEdit>("findText").isVisible());
}

TEST_F(TableOfSample, ACellThatIsWholeHasNoToolTip) {
  EXPECT_TRUE(View().toolTip().isEmpty());
  EXPECT_TRUE(View().model()->index(0, 0).data(Qt::ToolTipRole).toString().isEmpty());
}

// --- Columns

TEST_F(TableOfSample, AColumnCanBeDraggedAndStaysSo) {
  const int before = View().columnWidth(1);
  DragEdge(1, 30);
  EXPECT_EQ(before + 30, View().columnWidth(1));
  const QSize hint = View().sizeHint();
  grid.SetText(0, 2, u"a new heading"); // laid out again
  platform.userInterface.Refresh();
  EXPECT_EQ(before + 30, View().columnWidth(1));
  EXPECT_EQ(hint.height(), View().sizeHint().height());
}

TEST_F(TableOfSample, ATableThatIsBuiltAnewForgetsWhatWasDragged) {
  const int before = View().columnWidth(1);
  View().setColumnWidth(1, before + 30);
  grid.Clear();
  for (int col = 0; col < 5; ++col) {
    grid.SetText(0, col, DecimalText(col)); // to the same headings
  }
  platform.userInterface.Refresh();
  EXPECT_EQ(before, View().columnWidth(1));
}

TEST_F(TableOfSample, NoColumnCanBeDraggedAway) {
  DragEdge(1, -500);
  EXPECT_GT(View().columnWidth(1), 8);
}

TEST_F(TableOfSample, ADoubleClickOnItsEdgeFitsAColumn) {
  grid.SetText(2, 2, u"a rather long text in a cell of its own");
  platform.userInterface.Refresh();
  const int wanted =
      View().fontMetrics().horizontalAdvance(QStringLiteral("a rather long text in a cell of its own")) +
      2 * GridView::CellMargin + 1;
  ASSERT_LT(View().columnWidth(1), wanted);
  emit View().horizontalHeader()->sectionHandleDoubleClicked(1);
  EXPECT_EQ(wanted, View().columnWidth(1));
}

} // namespace
} // namespace loader::test
