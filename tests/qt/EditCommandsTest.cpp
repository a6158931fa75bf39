// Copy, paste and the change of model with the real widgets: what the user sees of them.
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabWidget>

#include "core/ModelProfile.h"
#include "qt/GridView.h"
#include "tests/qt/Boxes.h"
#include "tests/qt/MainWindowFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

struct EditCommands : MainWindowTest {
  Boxes boxes;

  void Press(QWidget& widget, Qt::Key key, int times = 1) {
    for (int n = 0; n < times; ++n) {
      QTest::keyClick(&widget, key);
    }
  }
  void Trigger(const char* action) { Find<QAction>(action).trigger(); }
  // As the user does it, who sees the list open.
  void PickModel(int row) {
    boxes.Expect(u"パラメータ設定機種を切替えますか？");
    auto& models = Find<QComboBox>("cmbType");
    models.setFocus();
    models.setCurrentIndex(row);
    emit models.activated(row);
  }
};

TEST_F(EditCommands, AChannelIsCopiedAndPastedFromTheTable) {
  Start("0");
  PutText("C", 1, "TAG", "FURNACE");
  auto& table = Find<GridView>("fgrCh");
  table.setFocus();
  Press(table, Qt::Key_Down); // channel 2
  Trigger("smenuCopy");
  for (const int channel : {9, 18}) {
    Press(table, Qt::Key_Down, channel - table.currentIndex().row() - 1);
    ASSERT_EQ(channel - 1, table.currentIndex().row());
    boxes.Expect(u"2CHを" + DecimalText(channel) + u"CHにコピーしますか？");
    Trigger(channel == 9 ? "smenuPaste" : "V_3");
    EXPECT_EQ("FURNACE", TrimmedText("C", channel - 1, "TAG"));
    EXPECT_EQ(channel - 1, table.currentIndex().row()) << "where the user pasted";
    EXPECT_EQ(QStringLiteral("FURNACE"), table.model()->index(channel - 1, 1).data().toString());
    EXPECT_EQ(&table, Window().focusWidget());
  }
}

TEST_F(EditCommands, AnOperationChannelIsCopiedAndPastedByTheKeyboard) {
  Start("1");
  PutText("C", 36, "TAG", "SUM");
  Find<QTabWidget>("tbsParameter").setCurrentIndex(OperationPage);
  auto& table = Find<GridView>("fgrOperationChSet");
  table.setFocus();
  QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
  Press(table, Qt::Key_Down, 35);
  boxes.Expect(u"37CHを72CHにコピーしますか？");
  QTest::keyClick(&table, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ("SUM", TrimmedText("C", 71, "TAG"));
  EXPECT_EQ(35, table.currentIndex().row());
}

// The keys belong to the text of a field that has the keyboard.
TEST_F(EditCommands, InAFieldTheKeysCopyAndPasteItsText) {
  Start("0");
  Find<QTabWidget>("tbsParameter").setCurrentIndex(OperationPage);
  frmParamLoader->fgrOperationChSet.SelectRow(7);
  auto& field = Find<QLineEdit>("txtHPLP");
  field.setFocus();
  QGuiApplication::clipboard()->setText(QStringLiteral("12"));
  field.selectAll();
  QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(QStringLiteral("12"), field.text());
  field.selectAll();
  QTest::keyClick(&field, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(0, boxes.Shown());
  EXPECT_EQ(0, frmParamLoader->CopySourceRow);
}

TEST_F(EditCommands, TheWarningOfAPartnerStandsOnALineOfItsOwn) {
  Start("0");
  Put("C", 0, "TYPE", 20);
  auto& table = Find<GridView>("fgrCh");
  table.setFocus();
  Trigger("V_2");
  Press(table, Qt::Key_Down, 2); // channel 3, whose partner 4 is a thermocouple
  boxes.Expect(u"1CHを3CHにコピーしますか？\n4 CHが初期化されます", BoxAnswer::Cancel,
               [](QMessageBox& box) { EXPECT_EQ(QStringLiteral("チャネルコピー"), box.windowTitle()); });
  Trigger("V_3");
  EXPECT_EQ(1, Stored("C", 2, "TYPE"));
}

TEST_F(EditCommands, AChangeOfModelLeavesTheUserWhereHeWas) {
  Start("1");
  auto& pages = Find<QTabWidget>("tbsParameter");
  pages.setCurrentIndex(OperationPage);
  auto& table = Find<GridView>("fgrOperationChSet");
  table.setFocus();
  Press(table, Qt::Key_Down, 9);
  Press(table, Qt::Key_Right, 3);
  const int row = table.currentIndex().row();
  const int column = table.currentIndex().column();
  table.horizontalScrollBar()->setValue(80);
  const int scrolled = table.horizontalScrollBar()->value();
  ASSERT_GT(scrolled, 0);
  PickModel(0);
  ASSERT_EQ("KOV", ModelCode);
  QCoreApplication::processEvents();
  EXPECT_EQ(OperationPage, pages.currentIndex());
  EXPECT_EQ(row, table.currentIndex().row());
  EXPECT_EQ(column, table.currentIndex().column());
  EXPECT_EQ(scrolled, table.horizontalScrollBar()->value());
}

} // namespace
} // namespace loader::test
