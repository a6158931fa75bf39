// Copy and paste by clicks on the rows and on the toolbar.
#include <QAction>
#include <QToolBar>

#include "tests/display/DisplayFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

struct CopyPasteOnTheDisplay : OnTheDisplay {
  void SetUp() override { OpenProgram(); }
  GridView& Table() { return Find<GridView>("fgrCh"); }
  void ClickChannel(int channel) { ClickCell(Table(), channel - 1, 1); }
  void ClickTool(const char* action) {
    auto& tool = Find<QAction>(action);
    for (QObject* of : tool.associatedObjects()) {
      if (auto* bar = qobject_cast<QToolBar*>(of)) {
        hands.Click(*bar->widgetForAction(&tool));
      }
    }
  }
};

TEST_F(CopyPasteOnTheDisplay, TheKeyboardStaysInTheRowThatWasPastedTo) {
  PutText("C", 0, "TAG", "FURNACE");
  ClickChannel(1);
  ClickTool("V_2");
  for (const int channel : {5, 9}) {
    ClickChannel(channel);
    ExpectBox(u"1CHを" + DecimalText(channel) + u"CHにコピーしますか？");
    ClickTool("V_3");
    EXPECT_TRUE(hands.BecomesActive(Window()));
    EXPECT_EQ(&Table(), QApplication::focusWidget());
    EXPECT_EQ(channel - 1, Table().currentIndex().row());
    EXPECT_EQ("FURNACE", TrimmedText("C", channel - 1, "TAG"));
  }
  EXPECT_EQ(2, boxes.Shown());
}

} // namespace
} // namespace loader::test
