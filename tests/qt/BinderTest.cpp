// Each kind of control: what the user does, what the program changes, focus, selection, state.
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>

#include "qt/LampView.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

using BinderTest = SampleTest;

TEST(WidgetName, AnElementOfAnArrayTakesAnUnderline) {
  EXPECT_EQ("cmbDI_3", WidgetName("cmbDI(3)"));
  EXPECT_EQ("txtName", WidgetName("txtName"));
}

TEST_F(BinderTest, EveryRecordFindsItsWidget) {
  ShowSample();
  EXPECT_TRUE(platform.screens.MissingWidgets().empty());
}

TEST_F(BinderTest, ARecordWithoutAWidgetIsNamed) {
  TextField extra(screen, "txtNowhere");
  ShowSample();
  EXPECT_EQ(std::vector<std::string>{"frmSample.txtNowhere"}, platform.screens.MissingWidgets());
}

TEST_F(BinderTest, ARecordOfAnotherKindThanItsWidgetIsADefect) {
  TextField extra(screen, "page0");
  EXPECT_THROW(platform.screens.Show(screen), std::logic_error);
}

// text field

TEST_F(BinderTest, TypingGoesIntoTheRecordLetterByLetter) {
  ShowSample();
  std::vector<std::u16string> seen;
  screen.txtName.onChange = [&] { seen.push_back(screen.txtName.text); };
  TypeOver(Find<QLineEdit>("txtName"), "abc");
  EXPECT_EQ((std::vector<std::u16string>{u"a", u"ab", u"abc"}), seen);
}

TEST_F(BinderTest, APastedTextEndsAtItsFirstLineBreak) {
  ShowSample();
  auto& edit = Find<QLineEdit>("txtName");
  for (const char16_t* pasted : {u"taro@heat\r\n", u"taro@heat\nsecond", u"taro@heat\u2028second"}) {
    edit.setFocus();
    edit.selectAll();
    QApplication::clipboard()->setText(QString::fromUtf16(pasted));
    QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(u"taro@heat", screen.txtName.text);
    EXPECT_EQ(QStringLiteral("taro@heat"), edit.text());
    EXPECT_EQ(9, edit.cursorPosition());
  }
}

TEST_F(BinderTest, APasteWithALineBreakKeepsWhatStandsAroundIt) {
  ShowSample();
  auto& edit = Find<QLineEdit>("txtName");
  const auto paste = [&](const char* before, int from, int length, const char16_t* pasted) {
    screen.txtName.text = u"";
    platform.userInterface.Refresh();
    edit.setFocus();
    QTest::keyClicks(&edit, QString::fromLatin1(before));
    edit.setSelection(from, length);
    QApplication::clipboard()->setText(QString::fromUtf16(pasted));
    QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(FromQt(edit.text()), screen.txtName.text);
    return edit.text();
  };
  EXPECT_EQ(QStringLiteral("furXnace"), paste("furnace", 3, 0, u"X\n"));
  EXPECT_EQ(4, edit.cursorPosition());
  QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(QStringLiteral("furnace"), edit.text());
  EXPECT_EQ(u"furnace", screen.txtName.text);
  EXPECT_EQ(QStringLiteral("abcnace"), paste("furnace", 0, 3, u"\nabc\ndef"));
  EXPECT_EQ(3, edit.cursorPosition());
  EXPECT_EQ(QStringLiteral("Xfurnace"), paste("furnace", 0, 0, u"X\r\nY"));
  EXPECT_EQ(QStringLiteral("aab"),
            paste("ab", 1, 0, u"a\n")); // what was inserted repeats what stands before it
  EXPECT_EQ(QStringLiteral("furnace"), paste("furnace", 7, 0, u"\n"));
}

TEST_F(BinderTest, ACharacterThatTheRecorderDoesNotKnowIsShownAsItWillBeStored) {
  ShowSample();
  auto& edit = Find<QLineEdit>("txtName");
  edit.setFocus();
  QApplication::clipboard()->setText(QStringLiteral("caf\u00E9 温度① \U0001F600"));
  QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(u"caf? 温度① ?", screen.txtName.text);
  EXPECT_EQ(QStringLiteral("caf? 温度① ?"), edit.text());
}

// Just after a box has gone, or while the user works in another program.
TEST_F(BinderTest, ABoxBelongsOverTheWindowThoughItHasNotTheKeyboard) {
  ShowSample();
  QApplication::setActiveWindow(nullptr);
  const QWidget* parent = nullptr;
  boxes.Expect(u"text", BoxAnswer::Ok, [&](QMessageBox& box) { parent = box.parentWidget(); });
  ShowMessage(u"text");
  EXPECT_EQ(&Window(), parent);
}

TEST_F(BinderTest, AFieldTakesNoDropThatWouldPassItsCheckBy) {
  ShowSample();
  EXPECT_FALSE(Find<QLineEdit>("txtName").acceptDrops());
}

TEST_F(BinderTest, ATextSetByTheProgramIsShownAndRunsNothing) {
  ShowSample();
  screen.txtName.onChange = [] { FAIL() << "ran"; };
  screen.txtName.text = u"温度１";
  platform.userInterface.Refresh();
  EXPECT_EQ(QStringLiteral("温度１"), Find<QLineEdit>("txtName").text());
}

TEST_F(BinderTest, TheCursorStaysWhereItWasWhenTheProgramChangesTheText) {
  ShowSample();
  auto& edit = Find<QLineEdit>("txtName");
  TypeOver(edit, "12345");
  edit.setCursorPosition(2);
  screen.txtName.text = u"54321";
  platform.userInterface.Refresh();
  EXPECT_EQ(QStringLiteral("54321"), edit.text());
  EXPECT_EQ(2, edit.cursorPosition());
}

TEST_F(BinderTest, TheSelectionStaysWhenTheProgramChangesTheText) {
  ShowSample();
  auto& edit = Find<QLineEdit>("txtName");
  TypeOver(edit, "12345");
  edit.setSelection(1, 3);
  screen.txtName.text = u"54321";
  platform.userInterface.Refresh();
  EXPECT_EQ(QStringLiteral("432"), edit.selectedText());
}

TEST_F(BinderTest, ARefreshWithoutAChangeTouchesNothing) {
  ShowSample();
  auto& edit = Find<QLineEdit>("txtName");
  TypeOver(edit, "12345");
  QSignalSpy changes(&edit, &QLineEdit::textChanged);
  edit.setSelection(1, 3);
  platform.userInterface.Refresh();
  EXPECT_EQ(QStringLiteral("234"), edit.selectedText());
  EXPECT_EQ(0, changes.count());
}

TEST_F(BinderTest, AHandlerMayRewriteTheFieldThatIsTypedIn) {
  ShowSample();
  screen.txtName.onChange = [&] {
    if (screen.txtName.text == u"ab") {
      screen.txtName.text = u"a";
    }
  };
  auto& edit = Find<QLineEdit>("txtName");
  TypeOver(edit, "ab");
  EXPECT_EQ(QStringLiteral("a"), edit.text());
}

TEST_F(BinderTest, AFocusRequestWithSelectionIsHonouredOnce) {
  ShowSample();
  screen.txtValue.text = u"123.45";
  RequestFocusAndSelect(screen.txtValue, 1, 3);
  platform.userInterface.Refresh();
  auto& edit = Find<QLineEdit>("txtValue");
  EXPECT_TRUE(edit.hasFocus());
  EXPECT_EQ(QStringLiteral("23."), edit.selectedText());
  EXPECT_EQ(nullptr, screen.focusRequest);
  EXPECT_FALSE(screen.txtValue.selectionPending);
  Find<QLineEdit>("txtName").setFocus();
  platform.userInterface.Refresh();
  EXPECT_FALSE(edit.hasFocus());
}

TEST_F(BinderTest, ASelectionOutsideTheTextIsCutToIt) {
  ShowSample();
  screen.txtValue.text = u"ab";
  RequestFocusAndSelect(screen.txtValue, 1, 30);
  platform.userInterface.Refresh();
  EXPECT_EQ(QStringLiteral("b"), Find<QLineEdit>("txtValue").selectedText());
}

TEST_F(BinderTest, AFocusRequestForAHiddenControlLeavesTheFocus) {
  ShowSample();
  Find<QLineEdit>("txtName").setFocus();
  RequestFocus(screen.txtOther); // on another page
  platform.userInterface.Refresh();
  EXPECT_TRUE(Find<QLineEdit>("txtName").hasFocus());
  EXPECT_EQ(nullptr, screen.focusRequest);
}

TEST_F(BinderTest, AReadOnlyFieldTakesNoLetters) {
  screen.txtName.readOnly = true;
  screen.txtName.text = u"fixed";
  ShowSample();
  auto& edit = Find<QLineEdit>("txtName");
  QTest::keyClicks(&edit, QStringLiteral("x"));
  EXPECT_EQ(QStringLiteral("fixed"), edit.text());
  EXPECT_EQ(u"fixed", screen.txtName.text);
}

TEST_F(BinderTest, EnteringAFieldRunsItsFocusHandlerOnce) {
  ShowSample();
  Find<QLineEdit>("txtName").setFocus();
  int got = 0;
  screen.txtValue.onGotFocus = [&] { ++got; };
  Click(Find<QLineEdit>("txtValue"));
  EXPECT_EQ(1, got);
}

TEST_F(BinderTest, ComingBackFromABoxRunsNoFocusHandler) {
  ShowSample();
  int got = 0;
  screen.txtName.onGotFocus = [&] { ++got; };
  Find<QLineEdit>("txtName").setFocus();
  ASSERT_EQ(1, got);
  boxes.Expect(u"done");
  ShowMessage(u"done");
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
  EXPECT_TRUE(GetsFocus(Find<QLineEdit>("txtName")));
  EXPECT_EQ(1, got);
}

// label

TEST_F(BinderTest, ALabelShowsItsCaptionAsPlainText) {
  ShowSample();
  screen.lblPlain.caption = u"<b>A & B</b>";
  platform.userInterface.Refresh();
  EXPECT_EQ(QStringLiteral("<b>A & B</b>"), Find<QLabel>("lblPlain").text());
  EXPECT_EQ(Qt::PlainText, Find<QLabel>("lblPlain").textFormat());
}

TEST_F(BinderTest, ALabelColourIsASwatchWithReadableText) {
  ShowSample();
  screen.lblColour.hasBackColour = true;
  screen.lblColour.backColour = 0x000080;
  platform.userInterface.Refresh();
  auto& label = Find<QLabel>("lblColour");
  EXPECT_TRUE(label.autoFillBackground());
  EXPECT_EQ(QColor(0, 0, 0x80), label.palette().color(QPalette::Window));
  EXPECT_GT(label.palette().color(QPalette::WindowText).lightness(), 200);
  screen.lblColour.hasBackColour = false;
  platform.userInterface.Refresh();
  EXPECT_FALSE(label.autoFillBackground());
}

TEST_F(BinderTest, AClickOnALabelRunsItsHandler) {
  int clicks = 0;
  screen.lblColour.caption = u"colour";
  screen.lblColour.onClick = [&] { ++clicks; };
  ShowSample();
  Click(Find<QLabel>("lblColour"));
  EXPECT_EQ(1, clicks);
}

TEST_F(BinderTest, ALabelThatCanBeClickedCanBeUsedFromTheKeyboard) {
  int clicks = 0;
  screen.lblColour.caption = u"colour";
  screen.lblColour.onClick = [&] { ++clicks; };
  ShowSample();
  auto& label = Find<QLabel>("lblColour");
  EXPECT_NE(0, label.focusPolicy() & Qt::TabFocus);
  const QImage without = label.grab().toImage();
  label.setFocus(Qt::TabFocusReason);
  EXPECT_NE(without, label.grab().toImage()); // the focus is seen
  QTest::keyClick(&label, Qt::Key_Space);
  EXPECT_EQ(1, clicks);
  EXPECT_EQ(Qt::NoFocus, Find<QLabel>("lblPlain").focusPolicy());
}

// buttons

TEST_F(BinderTest, AClickOnAButtonRunsItsHandler) {
  ShowSample();
  int clicks = 0;
  screen.btnApply.onClick = [&] { ++clicks; };
  auto& button = Find<QPushButton>("btnApply");
  EXPECT_EQ(QStringLiteral("適用"), button.text());
  Click(button);
  EXPECT_EQ(1, clicks);
  button.setFocus();
  QTest::keyClick(&button, Qt::Key_Space);
  EXPECT_EQ(2, clicks);
  QTest::keyClick(&button, Qt::Key_Return);
  EXPECT_EQ(3, clicks);
}

TEST_F(BinderTest, ADisabledButtonTakesNoClick) {
  ShowSample();
  screen.btnApply.onClick = [] { FAIL() << "ran"; };
  screen.btnApply.enabled = false;
  platform.userInterface.Refresh();
  Click(Find<QPushButton>("btnApply"));
  EXPECT_FALSE(Find<QPushButton>("btnApply").isEnabled());
}

TEST_F(BinderTest, AControlThatTheProgramJustDisabledTakesNoClickEither) {
  ShowSample();
  screen.btnApply.onClick = [] { FAIL() << "ran"; };
  screen.btnApply.enabled = false; // not yet on the screen
  Click(Find<QPushButton>("btnApply"));
  EXPECT_FALSE(Find<QPushButton>("btnApply").isEnabled());
}

TEST_F(BinderTest, ACheckBoxTellsItsStateBothWays) {
  ShowSample();
  auto& box = Find<QCheckBox>("chkOn");
  bool seen = false;
  screen.chkOn.onClick = [&] { seen = screen.chkOn.checked; };
  box.click();
  EXPECT_TRUE(seen);
  screen.chkOn.checked = false;
  platform.userInterface.Refresh();
  EXPECT_FALSE(box.isChecked());
}

TEST_F(BinderTest, AHiddenControlIsHidden) {
  ShowSample();
  screen.txtValue.visible = false;
  platform.userInterface.Refresh();
  EXPECT_TRUE(Find<QLineEdit>("txtValue").isHidden());
  screen.txtValue.visible = true;
  platform.userInterface.Refresh();
  EXPECT_TRUE(Find<QLineEdit>("txtValue").isVisible());
}

// menu and tool bar

TEST_F(BinderTest, MenusTakeTheirCaptionsAndRunTheirEntries) {
  ShowSample();
  int opened = 0;
  screen.smenuOpen.onClick = [&] { ++opened; };
  EXPECT_EQ(QStringLiteral("ファイル(&F)"), Find<QMenu>("menuFile").title());
  EXPECT_EQ(QStringLiteral("開く(O)"), Find<QAction>("smenuOpen").text());
  EXPECT_TRUE(Find<QAction>("menuLine").isSeparator());
  Find<QAction>("smenuOpen").trigger();
  EXPECT_EQ(1, opened);
}

TEST_F(BinderTest, TheRecordHasTheSayOfACheckMark) {
  ShowSample();
  auto& action = Find<QAction>("smenuMark_1");
  action.trigger(); // flips its own mark
  EXPECT_FALSE(action.isChecked());
  screen.smenuMark.checked = true;
  platform.userInterface.Refresh();
  EXPECT_TRUE(action.isChecked());
}

TEST_F(BinderTest, ADisabledEntryIsShownDisabled) {
  ShowSample();
  screen.smenuOpen.enabled = false;
  screen.tool.enabled = false;
  platform.userInterface.Refresh();
  EXPECT_FALSE(Find<QAction>("smenuOpen").isEnabled());
  EXPECT_FALSE(Find<QAction>("V_1").isEnabled());
}

TEST_F(BinderTest, AToolButtonShowsItsTipAndRuns) {
  screen.tool.toolTip = u"コピー";
  ShowSample();
  int runs = 0;
  screen.tool.onClick = [&] { ++runs; };
  auto& bar = Find<QToolBar>("V");
  auto& action = Find<QAction>("V_1");
  EXPECT_EQ(QStringLiteral("コピー"), action.toolTip());
  Click(*bar.widgetForAction(&action));
  EXPECT_EQ(1, runs);
}

// pages, frame, lamp

TEST_F(BinderTest, ATabRunsTheHandlerWithItsPage) {
  ShowSample();
  std::vector<int> seen;
  screen.tbsPages.onChange = [&] { seen.push_back(screen.tbsPages.current); };
  QTabBar& bar = *Find<QTabWidget>("tbsPages").tabBar();
  QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, bar.tabRect(1).center());
  EXPECT_EQ(std::vector<int>{1}, seen);
}

TEST_F(BinderTest, PagesTakeCaptionVisibilityAndPageFromTheRecord) {
  ShowSample();
  screen.tbsPages.onChange = [] { FAIL() << "ran"; };
  screen.tbsPages.pages[1].visible = false;
  screen.tbsPages.pages[0].caption = u"チャネル設定";
  screen.tbsPages.current = 2;
  platform.userInterface.Refresh();
  auto& tabs = Find<QTabWidget>("tbsPages");
  EXPECT_EQ(QStringLiteral("チャネル設定"), tabs.tabText(0));
  EXPECT_FALSE(tabs.isTabVisible(1));
  EXPECT_EQ(2, tabs.currentIndex());
}

TEST_F(BinderTest, AFrameShowsItsCaption) {
  screen.fraBox.caption = u"本体設定";
  ShowSample();
  EXPECT_EQ(QStringLiteral("本体設定"), Find<QGroupBox>("fraBox").title());
}

TEST_F(BinderTest, TheLampTakesItsColour) {
  ShowSample();
  screen.picLamp.colour = 0x800000;
  platform.userInterface.Refresh();
  EXPECT_EQ(QColor(0x80, 0, 0), Find<LampView>("picLamp_0").ShownColour());
}

// names

TEST_F(BinderTest, TheFormTakesSizeAndTitleFromTheScreen) {
  screen.caption = u"パラメータローダ";
  screen.widthPixels = 640;
  screen.heightPixels = 480;
  ShowSample();
  EXPECT_EQ(QStringLiteral("パラメータローダ"), Window().windowTitle());
  EXPECT_EQ(QSize(640, 480), Window().size());
}

TEST_F(BinderTest, EveryWidgetHasAnAccessibleName) {
  ShowSample();
  EXPECT_EQ(QStringLiteral("タグNo.1"), Find<QLineEdit>("txtName").accessibleName());
  EXPECT_EQ(QStringLiteral("適用"), Find<QPushButton>("btnApply").accessibleName());
  EXPECT_EQ(QStringLiteral("cmbDI_3"), Find<QComboBox>("cmbDI_3").accessibleName());
}

} // namespace
} // namespace loader::test
