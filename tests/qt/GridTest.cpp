// The table: one pass for a rewrite, headings, widths, colours, the current cell both ways, the keyboard.
#include <QAbstractItemModelTester>
#include <QHelpEvent>
#include <QImage>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTextDocument>
#include <QToolTip>

#include "qt/GridView.h"
#include "qt/HeadingView.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

struct GridTest : SampleTest {
  Grid& grid = screen.fgrTable;
  GridView& View() { return Find<GridView>("fgrTable"); }
  GridModel& Model() { return static_cast<GridModel&>(*View().model()); }
  void Refresh() { platform.userInterface.Refresh(); }
  // Rows and columns with the heading rows and the first column fixed; the third page in front.
  void ShowGrid(int rows, int cols, int headingRows = 1) {
    grid.FixedRows = headingRows;
    grid.Resize(rows, cols);
    screen.tbsPages.current = 2;
    ShowSample();
  }
  void Fill(std::u16string_view prefix) {
    for (int row = 0; row < grid.Rows(); ++row) {
      for (int col = 0; col < grid.Cols(); ++col) {
        grid.SetText(row, col, std::u16string(prefix) + DecimalText(row * 100 + col));
      }
    }
  }
  QString CellText(int row, int col) {
    return Model().index(row - grid.FixedRows, col - grid.FixedCols).data().toString();
  }
  QPoint Middle(int row, int col) {
    return View().visualRect(Model().index(row - grid.FixedRows, col - grid.FixedCols)).center();
  }
  QColor PixelInside(int row, int col) {
    const QRect cell = View().visualRect(Model().index(row - grid.FixedRows, col - grid.FixedCols));
    const QPoint spot = View().viewport()->mapTo(&View(), QPoint(cell.right() - 4, cell.top() + 3));
    return View().grab().toImage().pixelColor(spot);
  }
};

TEST_F(GridTest, ARewriteOfAllCellsIsOnePass) {
  ShowGrid(36, 55, 2);
  Fill(u"old");
  Refresh();
  QSignalSpy changes(&Model(), &QAbstractItemModel::dataChanged);
  QSignalSpy resets(&Model(), &QAbstractItemModel::modelReset);
  grid.Redraw = false;
  Fill(u"new");
  Refresh();
  EXPECT_EQ(0, changes.count() + resets.count()); // nothing is drawn while Redraw is off
  EXPECT_EQ(QStringLiteral("old505"), CellText(5, 5));
  grid.Redraw = true;
  Refresh();
  Refresh();
  EXPECT_EQ(1, changes.count());
  EXPECT_EQ(0, resets.count());
  EXPECT_EQ(QStringLiteral("new505"), CellText(5, 5));
}

TEST_F(GridTest, AChangeOfSizeIsOneReset) {
  ShowGrid(4, 4);
  QSignalSpy changes(&Model(), &QAbstractItemModel::dataChanged);
  QSignalSpy resets(&Model(), &QAbstractItemModel::modelReset);
  grid.Resize(74, 55);
  Fill(u"x");
  Refresh();
  EXPECT_EQ(0, changes.count());
  EXPECT_EQ(1, resets.count());
  EXPECT_EQ(73, Model().rowCount());
  EXPECT_EQ(54, Model().columnCount());
}

TEST_F(GridTest, ARewriteWithTheSameTextsIsNoChange) {
  ShowGrid(5, 5);
  Fill(u"x");
  Refresh();
  QSignalSpy changes(&Model(), &QAbstractItemModel::dataChanged);
  Fill(u"x");
  Refresh();
  EXPECT_EQ(0, changes.count());
}

TEST_F(GridTest, TheModelKeepsTheRulesOfModels) {
  ShowGrid(6, 6);
  QAbstractItemModelTester tester(&Model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  Fill(u"a");
  Refresh();
  grid.Resize(3, 9);
  Refresh();
  grid.Resize(0, 0);
  Refresh();
  EXPECT_EQ(0, Model().rowCount());
}

TEST_F(GridTest, WhatIsPaintedIsOneStateEvenWhileTheRecordShrinks) {
  ShowGrid(10, 10);
  Fill(u"x");
  Refresh();
  grid.Redraw = false;
  grid.Resize(2, 2);
  View().grab(); // paints the ten rows of the last refresh
  EXPECT_EQ(QStringLiteral("x909"), CellText(9, 9));
  grid.Redraw = true;
  Refresh();
  EXPECT_EQ(1, Model().rowCount());
}

// headings

using Boxes2 = std::vector<HeadingBox>;

TEST_F(GridTest, EqualNeighboursOfTheUpperRowAreOneHeading) {
  ShowGrid(4, 6, 2);
  for (int col = 1; col < 6; ++col) {
    grid.SetText(0, col, col == 1 ? u" " : col < 4 ? u"アラーム" : u"記録");
    grid.SetText(1, col, u"c" + DecimalText(col));
  }
  Refresh();
  const Boxes2 expected{{1, 2, 0, 0, QStringLiteral("アラーム")}, {3, 4, 0, 0, QStringLiteral("記録")},
                        {0, 0, 0, 1, QStringLiteral("c1")},       {1, 1, 1, 1, QStringLiteral("c2")},
                        {2, 2, 1, 1, QStringLiteral("c3")},       {3, 3, 1, 1, QStringLiteral("c4")},
                        {4, 4, 1, 1, QStringLiteral("c5")}};
  EXPECT_EQ(expected, View().Headings().Boxes());
}

TEST_F(GridTest, AHiddenColumnDoesNotPartEqualNeighbours) {
  ShowGrid(4, 5, 2);
  for (int col = 1; col < 5; ++col) {
    grid.SetText(0, col, col == 2 ? u"hidden" : u"same");
    grid.SetText(1, col, u"x");
  }
  grid.SetColWidth(2, 0);
  Refresh();
  EXPECT_TRUE(View().isColumnHidden(1));
  const HeadingBox first{0, 3, 0, 0, QStringLiteral("same")};
  EXPECT_EQ(first, View().Headings().Boxes().front());
}

TEST_F(GridTest, OneHeadingRowMergesNothing) {
  ShowGrid(4, 4, 1);
  for (int col = 1; col < 4; ++col) {
    grid.SetText(0, col, u"same");
  }
  Refresh();
  EXPECT_EQ(3U, View().Headings().Boxes().size());
}

TEST_F(GridTest, TwoHeadingRowsTakeTheHeightOfTwo) {
  ShowGrid(4, 4, 2);
  EXPECT_EQ(2 * View().Headings().LineHeight(), View().Headings().height());
}

TEST_F(GridTest, TheFirstColumnStaysWhileTheRestScrolls) {
  ShowGrid(10, 40);
  Fill(u"wide text ");
  Refresh();
  const int before = View().verticalHeader()->x();
  View().horizontalScrollBar()->setValue(View().horizontalScrollBar()->maximum());
  ASSERT_GT(View().horizontalScrollBar()->value(), 0);
  EXPECT_EQ(before, View().verticalHeader()->x());
  EXPECT_TRUE(View().verticalHeader()->isVisible());
  EXPECT_EQ(QStringLiteral("wide text 300"), Model().headerData(2, Qt::Vertical, Qt::DisplayRole).toString());
}

TEST_F(GridTest, HeadingsAreTold) {
  ShowGrid(4, 3, 2);
  grid.SetText(0, 1, u"アラーム");
  grid.SetText(1, 1, u"種類");
  grid.SetText(1, 2, u"タグ");
  Refresh();
  EXPECT_EQ(QStringLiteral("アラーム 種類"),
            Model().headerData(0, Qt::Horizontal, Qt::DisplayRole).toString());
  EXPECT_EQ(QStringLiteral("タグ"), Model().headerData(1, Qt::Horizontal, Qt::DisplayRole).toString());
}

TEST_F(GridTest, NoFixedRowsOrColumnsMeansNoHeadings) {
  grid.FixedCols = 0;
  ShowGrid(4, 4, 0);
  EXPECT_TRUE(View().horizontalHeader()->isHidden());
  EXPECT_TRUE(View().verticalHeader()->isHidden());
  EXPECT_EQ(4, Model().rowCount());
}

// widths

// Behind the cell's margins and its line.
TEST_F(GridTest, WidthsAreTwipsOfTextInProportionToTheFont) {
  constexpr int Around = 2 * GridView::CellMargin + 1;
  ShowGrid(3, 3);
  QFont font = View().font();
  font.setPixelSize(12);
  View().setFont(font);
  grid.SetColWidth(1, 1500);
  Refresh();
  EXPECT_NEAR(100, View().columnWidth(0) - Around, 1);
  font.setPixelSize(24); // 200 %
  View().setFont(font);
  EXPECT_NEAR(200, View().columnWidth(0) - Around, 2);
}

// Sixteen bytes in 1500 twips; wide letters of a proportional font may need more.
TEST_F(GridTest, ATagOfFullLengthIsNotCut) {
  ShowGrid(3, 3);
  grid.SetColWidth(1, 1500);
  for (const int pixels : {12, 18, 24}) {
    QFont font = View().font();
    font.setPixelSize(pixels);
    View().setFont(font);
    Refresh();
    const int room = View().visualRect(Model().index(0, 0)).width() - GridView::CellMargin - 1;
    for (const char16_t* tag : {u"一号炉出口温度計", u"ﾆｭｳｺｳ ｵﾝﾄﾞｹｲ 01", u"TIC-1234 No.0001"}) {
      EXPECT_LE(View().fontMetrics().horizontalAdvance(QString::fromUtf16(tag)), room) << pixels;
    }
  }
}

TEST_F(GridTest, ACutTextIsToldWholeAndLetterByLetter) {
  ShowGrid(3, 3);
  grid.SetColWidth(1, 600);
  grid.SetText(1, 1, u"P&ID \"A\" > 100 <b>x</b>  y");
  grid.SetText(2, 1, u"short");
  Refresh();
  const auto tipOver = [this](int row) {
    const QPoint spot = View().visualRect(Model().index(row, 0)).center();
    QHelpEvent help(QEvent::ToolTip, spot, View().viewport()->mapToGlobal(spot));
    QApplication::sendEvent(View().viewport(), &help);
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    EXPECT_TRUE(QToolTip::text().isEmpty() || Qt::mightBeRichText(QToolTip::text()));
    return shown.toPlainText();
  };
  EXPECT_EQ(QString(), tipOver(1));
  EXPECT_EQ(QStringLiteral("P&ID \"A\" > 100 <b>x</b>  y"), tipOver(0));
}

TEST_F(GridTest, AColumnIsNeverNarrowerThanItsHeading) {
  ShowGrid(3, 4, 2);
  grid.SetText(0, 1, u"とても長い見出しの文字列です");
  grid.SetText(1, 1, u"短い");
  grid.SetText(1, 2, u"警報CH/DI No./本体異常ﾀｲﾌﾟ/周期");
  grid.SetColWidth(1, 300);
  grid.SetColWidth(2, 300);
  Refresh();
  const QFontMetrics metrics = View().horizontalHeader()->fontMetrics();
  EXPECT_GT(View().columnWidth(0), metrics.horizontalAdvance(QStringLiteral("とても長い見出しの文字列です")));
  EXPECT_GT(View().columnWidth(1),
            metrics.horizontalAdvance(QStringLiteral("警報CH/DI No./本体異常ﾀｲﾌﾟ/周期")));
}

TEST_F(GridTest, TheFixedColumnIsAsWideAsItsWidestText) {
  ShowGrid(9, 3);
  grid.SetColWidth(0, 300);
  grid.SetText(8, 0, u"ｸﾞﾙｰﾌﾟ No.8");
  Refresh();
  EXPECT_GT(View().verticalHeader()->width(),
            View().fontMetrics().horizontalAdvance(QStringLiteral("ｸﾞﾙｰﾌﾟ No.8")));
}

TEST_F(GridTest, WidthZeroHidesAndAWidthShowsAgain) {
  ShowGrid(3, 4);
  grid.SetColWidth(2, 0);
  Refresh();
  EXPECT_TRUE(View().isColumnHidden(1));
  grid.SetColWidth(2, 700);
  Refresh();
  EXPECT_FALSE(View().isColumnHidden(1));
}

// colours

struct GridColours : GridTest {
  void ShowColours() {
    ShowGrid(4, 4);
    grid.SetBack(1, 1, 0x404040);
    grid.SetBack(1, 2, 0xFFFF00);
    grid.SetBack(1, 3, White);
    for (const int col : {1, 2, 3}) {
      grid.SetColWidth(col, 600); // all within the window
    }
    Refresh();
  }
  // Of a full block, as it is painted.
  QColor TextColour(int col) {
    grid.SetText(1, col, u"\u2588\u2588");
    Refresh();
    const QRect cell = View().visualRect(Model().index(0, col - grid.FixedCols));
    const QPoint spot(cell.left() + GridView::CellMargin + View().fontMetrics().height() / 2,
                      cell.center().y());
    return View().grab().toImage().pixelColor(View().viewport()->mapTo(&View(), spot));
  }
};

TEST_F(GridColours, APrescribedColourIsShownAsItIs) {
  ShowColours();
  EXPECT_EQ(QColor(0x40, 0x40, 0x40), PixelInside(1, 1));
  EXPECT_EQ(QColor(0xFF, 0xFF, 0), PixelInside(1, 2));
}

TEST_F(GridColours, TextIsLightOnDarkAndDarkOnLight) {
  ShowColours();
  EXPECT_GT(TextColour(1).lightness(), 200);
  EXPECT_LT(TextColour(2).lightness(), 60);
}

TEST_F(GridColours, WhiteIsTheBaseOfThePaletteLightOrDark) {
  ShowColours();
  EXPECT_EQ(View().palette().color(QPalette::Base), PixelInside(1, 3));
  QPalette dark = View().palette();
  dark.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
  dark.setColor(QPalette::Text, Qt::white);
  View().setPalette(dark);
  EXPECT_EQ(QColor(0x20, 0x20, 0x20), PixelInside(1, 3));
  EXPECT_EQ(QColor(Qt::white), TextColour(3));
}

// Gray says that a cell does not apply: nearly the gray of a dark palette, it is drawn lighter, with text
// that can be read on it.
TEST_F(GridColours, AShadeIsToldFromADarkBase) {
  ShowColours();
  for (const int base : {0x20, 0x2D, 0x3D, 0x50}) {
    QPalette dark = View().palette();
    dark.setColor(QPalette::Base, QColor(base, base, base));
    dark.setColor(QPalette::Text, Qt::white);
    View().setPalette(dark);
    EXPECT_GE(std::abs(PixelInside(1, 1).lightness() - base), 32) << base;
    EXPECT_GT(TextColour(1).lightness() - PixelInside(1, 1).lightness(), 80) << base;
    EXPECT_EQ(QColor(0xFF, 0xFF, 0), PixelInside(1, 2)) << base;
  }
}

TEST_F(GridColours, AlignmentIsTheCells) {
  ShowGrid(3, 4);
  grid.SetAlignment(1, 1, CellAlignment::Right);
  grid.SetAlignment(1, 2, CellAlignment::Centre);
  Refresh();
  const auto of = [&](int col) {
    return Model().index(0, col).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
  };
  EXPECT_EQ(Qt::AlignRight | Qt::AlignVCenter, of(0));
  EXPECT_EQ(Qt::Alignment(Qt::AlignCenter), of(1));
  EXPECT_EQ(Qt::AlignLeft | Qt::AlignVCenter, of(2));
}

// current cell

TEST_F(GridTest, ArrowsMoveTheCurrentCellOfTheRecord) {
  ShowGrid(5, 5, 2);
  grid.SelectRow(2);
  grid.Col = 1;
  Refresh();
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Down);
  QTest::keyClick(&View(), Qt::Key_Right);
  EXPECT_EQ(3, grid.Row);
  EXPECT_EQ(2, grid.Col);
  EXPECT_EQ(3, grid.RowSel);
}

TEST_F(GridTest, AClickMovesTheCurrentCellThenRunsTheHandler) {
  ShowGrid(5, 5);
  int row = -1;
  grid.onClick = [&] { row = grid.Row; };
  QTest::mouseClick(View().viewport(), Qt::LeftButton, Qt::NoModifier, Middle(3, 2));
  EXPECT_EQ(3, row);
  EXPECT_EQ(2, grid.Col);
}

TEST_F(GridTest, ADoubleClickOpensTheRow) {
  ShowGrid(5, 5);
  int opened = -1;
  grid.onDoubleClick = [&] { opened = grid.Row; };
  const QPoint cell = Middle(4, 1);
  QTest::mouseClick(View().viewport(), Qt::LeftButton, Qt::NoModifier, cell);
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, Qt::NoModifier, cell);
  EXPECT_EQ(4, opened);
}

TEST_F(GridTest, EnterOpensTheRowOnce) {
  ShowGrid(5, 5);
  grid.SelectRow(2);
  Refresh();
  int opened = 0;
  grid.onDoubleClick = [&] { ++opened; };
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Return);
  QTest::keyClick(&View(), Qt::Key_Enter);
  EXPECT_EQ(2, opened);
}

TEST_F(GridTest, TheFirstColumnChoosesAndOpensItsRow) {
  ShowGrid(5, 5);
  int opened = -1;
  grid.onDoubleClick = [&] { opened = grid.Row; };
  QHeaderView& left = *View().verticalHeader();
  const QPoint spot(5, left.sectionViewportPosition(2) + 4);
  QTest::mouseClick(left.viewport(), Qt::LeftButton, Qt::NoModifier, spot);
  EXPECT_EQ(3, grid.Row);
  QTest::mouseDClick(left.viewport(), Qt::LeftButton, Qt::NoModifier, spot);
  EXPECT_EQ(3, opened);
}

TEST_F(GridTest, ARowSelectedByTheProgramIsTheCurrentOneAndRunsNothing) {
  ShowGrid(5, 5);
  grid.onClick = [] { FAIL() << "ran"; };
  grid.SelectRow(3);
  Refresh();
  EXPECT_EQ(2, View().currentIndex().row());
  EXPECT_EQ(3, grid.Row);
  EXPECT_EQ(0, grid.Col); // the program's column stays its own
}

TEST_F(GridTest, TheCurrentRowOfTheProgramDoesNotScrollTheTable) {
  ShowGrid(200, 5);
  View().verticalScrollBar()->setValue(100);
  grid.SelectRow(1);
  Refresh();
  EXPECT_EQ(100, View().verticalScrollBar()->value());
}

TEST_F(GridTest, TheCurrentCellStaysWhenTheTableIsRewritten) {
  ShowGrid(5, 5);
  View().setFocus();
  QTest::mouseClick(View().viewport(), Qt::LeftButton, Qt::NoModifier, Middle(3, 2));
  Fill(u"new");
  Refresh();
  EXPECT_EQ(2, View().currentIndex().row());
  EXPECT_EQ(1, View().currentIndex().column());
}

TEST_F(GridTest, TheFocusRunsItsHandler) {
  ShowGrid(5, 5);
  Find<QLineEdit>("txtAbove").setFocus();
  int got = 0;
  grid.onGotFocus = [&] { ++got; };
  QTest::mouseClick(View().viewport(), Qt::LeftButton, Qt::NoModifier, Middle(2, 2));
  EXPECT_EQ(1, got);
}

TEST_F(GridTest, TabLeavesTheTable) {
  ShowGrid(5, 5);
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Tab);
  EXPECT_FALSE(View().hasFocus());
}

TEST_F(GridTest, TheCurrentCellIsFramedWhereverTheFocusIs) {
  ShowGrid(4, 4);
  grid.SelectRow(2);
  grid.Col = 2;
  Refresh();
  View().setFocus();
  const QRect cell = View().visualRect(View().currentIndex());
  const auto edge = [&](int inset) {
    return View().viewport()->grab().toImage().pixelColor(cell.left() + inset, cell.center().y());
  };
  const QColor frame = View().palette().color(QPalette::Highlight);
  EXPECT_EQ(frame, edge(0));
  EXPECT_EQ(frame, edge(1));
  Find<QLineEdit>("txtAbove").setFocus();
  EXPECT_EQ(frame, edge(0));
  EXPECT_NE(frame, edge(1));
}

TEST_F(GridTest, ADisabledTableTakesNoClick) {
  ShowGrid(4, 4);
  grid.enabled = false;
  grid.onClick = [] { FAIL() << "ran"; };
  Refresh();
  QTest::mouseClick(View().viewport(), Qt::LeftButton, Qt::NoModifier, Middle(2, 2));
  EXPECT_EQ(0, grid.Row);
}

TEST_F(GridTest, AStaleClickAfterTheTableShrankIsHarmless) {
  ShowGrid(6, 6);
  const QPoint cell = Middle(5, 5);
  grid.Resize(2, 2); // not yet on the screen
  QTest::mouseClick(View().viewport(), Qt::LeftButton, Qt::NoModifier, cell);
  EXPECT_LT(grid.Row, 2);
}

} // namespace
} // namespace loader::test
