// Tool tips of a table: which row it is when its tag has scrolled away, and what a cell holds that shows only
// a part.
#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QTextDocument>
#include <QToolTip>

#include "core/modMain.h"
#include "mainwindow/ParameterTables.h"
#include "qt/GridView.h"
#include "qt/QtText.h"
#include "tests/qt/MainWindowFixture.h"

namespace loader::test {
namespace {

// What is shown, letter by letter; empty when there is no tip.
QString TipAt(QWidget& widget, const QPoint& spot) {
  QToolTip::hideText();
  QHelpEvent help(QEvent::ToolTip, spot, widget.mapToGlobal(spot));
  QApplication::sendEvent(&widget, &help);
  QTextDocument shown;
  shown.setHtml(QToolTip::text());
  return shown.toPlainText();
}

struct GridTips : MainWindowTest {
  GridView& Table(const char* name, int page) {
    SelectPage(frmParamLoader->tbsParameter, page);
    platform->userInterface.Refresh();
    return Find<GridView>(name);
  }
  static QString TipOfRow(GridView& view, int row) {
    QHeaderView& left = *view.verticalHeader();
    return TipAt(*left.viewport(), {5, left.sectionViewportPosition(row) + 4});
  }
  static QString TipOfCell(GridView& view, int row, int col) {
    const QRect cell = view.visualRect(view.model()->index(row, col));
    return TipAt(*view.viewport(), cell.intersected(view.viewport()->rect()).center());
  }
};

TEST_F(GridTips, TheHeadingOfARowTellsTheTagOfItsChannel) {
  Start("0");
  FindTextRecord("C", 2, "TAG")->Value = u"炉 <A> & B";
  RefreshAll();
  GridView& channels = Table("fgrCh", ChannelPage);
  EXPECT_EQ(QStringLiteral("CH 01"), TipOfRow(channels, 0));
  EXPECT_EQ(QStringLiteral("炉 <A> & B"), TipOfRow(channels, 2));
  GridView& operations = Table("fgrOperationChSet", OperationPage);
  EXPECT_EQ(ToQt(frmParamLoader->fgrOperationChSet.TextMatrix(4, 2)).trimmed(), TipOfRow(operations, 2));
  EXPECT_FALSE(TipOfRow(operations, 2).isEmpty());
}

TEST_F(GridTips, WithoutATagTheHeadingOfARowTellsNothing) {
  Start("0");
  FindTextRecord("C", 0, "TAG")->Value = u"  ";
  RefreshAll();
  EXPECT_EQ(QString(), TipOfRow(Table("fgrCh", ChannelPage), 0));
  EXPECT_EQ(QString(), TipOfRow(Table("fgrMess", DisplayPage), 0));
}

TEST_F(GridTips, TheHeadingsAboveTellNothingThatTheyShow) {
  Start("0");
  QHeaderView& above = *Table("fgrCh", ChannelPage).horizontalHeader();
  EXPECT_EQ(QString(), TipAt(*above.viewport(), {above.sectionViewportPosition(1) + 5, 4}));
}

TEST_F(GridTips, ACellThatStandsHalfOutsideTheTableTellsItsText) {
  Start("0");
  FindTextRecord("C", 0, "TAG")->Value = u"一号炉出口温度計";
  RefreshAll();
  GridView& view = Table("fgrCh", ChannelPage);
  constexpr int TagOfTheView = 1;
  EXPECT_EQ(QString(), TipOfCell(view, 0, TagOfTheView));
  const QRect tag = view.visualRect(view.model()->index(0, TagOfTheView));
  view.horizontalScrollBar()->setValue(tag.center().x());
  EXPECT_EQ(QStringLiteral("一号炉出口温度計"), TipOfCell(view, 0, TagOfTheView));
}

} // namespace
} // namespace loader::test
