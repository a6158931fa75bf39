// The keys and letters of the menus, files that are dragged onto the window, and how high a list opens.
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QUrl>

#include "core/OwnTexts.h"
#include "core/TextTable.h"
#include "qt/ActionKeys.h"
#include "qt/ListBoxView.h"
#include "qt/QtText.h"
#include "tests/qt/Boxes.h"
#include "tests/qt/MainWindowFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

TEST(LetterOf, IsWhatACaptionShowsAtItsEnd) {
  EXPECT_EQ(QChar(u'O'), LetterOf(u"開く(O)"));
  EXPECT_EQ(QChar(u'F'), LetterOf(u"検索(F)..."));
  EXPECT_EQ(QChar(u'C'), LetterOf(u"コピー(C)\tCtrl+Shift+C"));
  for (const char16_t* caption :
       {u"", u"USB", u"終了(&X)", u"(12)", u"(AB)", u"O)", u"開く(O) 他", u"℃(o)"}) {
    EXPECT_TRUE(LetterOf(caption).isNull()) << QString::fromUtf16(caption).toStdString();
  }
}

struct MenuKeys : MainWindowTest {
  Boxes boxes;
  void TearDown() override { StopTimer(WaitTimer2); }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window())); // behind a box
    QTest::keyClick(Window().focusWidget() == nullptr ? &Window() : Window().focusWidget(), key, modifiers);
  }
  static std::u16string Text(int id) { return std::u16string(LoadText(TextId::At(id))); }
};

TEST_F(MenuKeys, AreShownInTheMenusAndInTheTips) {
  Start("0");
  struct Shown {
    const char* action;
    const char* key;
  };
  for (const Shown shown :
       {Shown{"smenuOpen", "Ctrl+O"}, Shown{"smenuOverWrite", "Ctrl+S"}, Shown{"smenuTextWrite", "Ctrl+P"},
        Shown{"keyRead", "F5"}, Shown{"keyWrite", "F9"}, Shown{"menuGuide", "F1"}}) {
    EXPECT_EQ(QKeySequence(QString::fromLatin1(shown.key)), Find<QAction>(shown.action).shortcut());
  }
  EXPECT_EQ(QStringLiteral("読み出し"), Find<QAction>("keyRead").text());
  EXPECT_EQ(QStringLiteral("書き込み"), Find<QAction>("keyWrite").text());
  EXPECT_TRUE(Find<QPushButton>("btnRegRead").toolTip().contains(QStringLiteral("読み出し (F5)")));
  EXPECT_TRUE(Find<QPushButton>("btnRegWrite").toolTip().contains(QStringLiteral("書き込み (F9)")));
  EXPECT_EQ(QStringLiteral("開く (Ctrl+O)"), Find<QAction>("V_1").toolTip());
  EXPECT_EQ(QStringLiteral("コピー (Ctrl+C)"), Find<QAction>("V_2").toolTip());
  EXPECT_TRUE(Find<QMenu>("menuRS").actions().contains(&Find<QAction>("keyWrite")));
}

TEST_F(MenuKeys, ReadAndWriteAskAsTheirButtonsDo) {
  Start("0");
  boxes.Expect(Text(20104), BoxAnswer::Cancel);
  Press(Qt::Key_F5);
  EXPECT_EQ(1, boxes.Shown());
  boxes.Expect(Text(20106), BoxAnswer::Cancel);
  Press(Qt::Key_F9);
  EXPECT_EQ(2, boxes.Shown());
}

TEST_F(MenuKeys, NoneActsBehindABox) {
  Start("0");
  boxes.Expect(Text(20106), BoxAnswer::Cancel, [&](QMessageBox& box) {
    for (const Qt::Key key : {Qt::Key_F5, Qt::Key_F9, Qt::Key_F1}) {
      QTest::keyClick(&box, key);
    }
    QTest::keyClick(&box, Qt::Key_O, Qt::ControlModifier);
    box.reject();
  });
  Press(Qt::Key_F9);
  EXPECT_EQ(1, boxes.Shown());
}

TEST_F(MenuKeys, AreOfferedWhileTheirButtonsAre) {
  Start("0");
  frmParamLoader->btnRegRead.enabled = false;
  frmParamLoader->btnRegWrite.enabled = false;
  platform->userInterface.Refresh();
  EXPECT_FALSE(Find<QAction>("keyRead").isEnabled());
  Press(Qt::Key_F5);
  Press(Qt::Key_F9);
  EXPECT_EQ(0, boxes.Shown());
  frmParamLoader->btnRegRead.enabled = true;
  platform->userInterface.Refresh();
  EXPECT_TRUE(Find<QAction>("keyRead").isEnabled());
  EXPECT_FALSE(Find<QAction>("keyWrite").isEnabled());
}

// A value that is refused is not written by a key.
TEST_F(MenuKeys, AWrongFieldIsCheckedFirst) {
  Start("0");
  QTabBar& bar = *Find<QTabWidget>("tbsParameter").tabBar();
  QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(RecorderPage).center());
  auto& field = Find<QLineEdit>("txtAlarmHist");
  field.setFocus();
  field.selectAll();
  QTest::keyClicks(&field, QStringLiteral("bad"));
  boxes.Expect(Text(62200));
  Press(Qt::Key_F9);
  EXPECT_EQ(1, boxes.Shown());
}

TEST_F(MenuKeys, TheGuideThatIsMissingIsTold) {
  Start("0");
  const QString place = folder.filePath(QStringLiteral("docs/user-guide.ja.html"));
  boxes.Expect(u"説明書が見つかりません。\n" + FromQt(QDir::toNativeSeparators(place)));
  Press(Qt::Key_F1);
  EXPECT_EQ(1, boxes.Shown());
}

TEST_F(MenuKeys, TheLettersOfTheCaptionsWorkInTheOpenMenu) {
  Start("0");
  auto& menu = Find<QMenu>("menuFile");
  int chosen = 0;
  frmParamLoader->smenuTextWrite.onClick = [&] { ++chosen; };
  menu.popup(Window().mapToGlobal(QPoint(10, 30)));
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  QTest::keyClick(&menu, Qt::Key_T);
  EXPECT_EQ(1, chosen);
  EXPECT_FALSE(menu.isVisible());
  menu.popup(Window().mapToGlobal(QPoint(10, 30)));
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  QTest::keyClick(&menu, Qt::Key_Q); // of no entry
  EXPECT_TRUE(menu.isVisible());
  menu.close();
  EXPECT_EQ(1, chosen);
}

// --- The status line

TEST_F(MenuKeys, TheStatusLineIsTheWindowsLast) {
  Start("1");
  auto& recorder = Find<QLabel>("statusRecorder");
  EXPECT_TRUE(recorder.text().startsWith(QStringLiteral("通信先: RUG ")));
  EXPECT_TRUE(recorder.isVisible());
  EXPECT_GT(recorder.mapTo(&Window(), QPoint(0, recorder.height())).y(), Window().height() - 6);
  frmParamLoader->statusDone.caption = u"12:00 読み出し RUG V12W 192.168.1.1";
  platform->userInterface.Refresh();
  EXPECT_EQ(QStringLiteral("12:00 読み出し RUG V12W 192.168.1.1"), Find<QLabel>("statusDone").text());
  EXPECT_LE(recorder.fontMetrics().horizontalAdvance(
                QStringLiteral("通信先: RUG イーサネット 192.168.100.100 ｽﾃｰｼｮﾝ No. 255")),
            recorder.contentsRect().width())
      << "the longest text is cut";
}

// --- Files that are dragged

struct Dragged : MenuKeys {
  QString file;
  void SetUp() override {
    Start("0");
    file = folder.filePath(QStringLiteral("BOILER.KOV"));
    std::ofstream(file.toStdString(), std::ios::binary) << "LOADER ,V210\r\nC00TAG ,BOILER\r\n";
  }
  template <typename Event> bool Send(const QList<QUrl>& urls) {
    QMimeData dragged;
    dragged.setUrls(urls);
    Event event(QPoint(100, 100), Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QApplication::sendEvent(&Window(), &event);
    EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction)
        << "the file would be moved away";
    return event.isAccepted();
  }
  bool Enter(const QList<QUrl>& urls) {
    const bool taken = Send<QDragEnterEvent>(urls);
    QDragLeaveEvent leave;
    QApplication::sendEvent(&Window(), &leave);
    return taken;
  }
  struct DropAt : QDropEvent {
    DropAt(QPoint at, Qt::DropActions actions, const QMimeData* data, Qt::MouseButtons buttons,
           Qt::KeyboardModifiers modifiers)
        : QDropEvent(QPointF(at), actions, data, buttons, modifiers) {}
  };
  // What was taken is dropped.
  bool Drop(const QList<QUrl>& urls) { return Send<QDragEnterEvent>(urls) && Send<DropAt>(urls); }
  // Something that comes in between: what was taken is no longer.
  bool DropAfter(const QList<QUrl>& urls, const std::function<void()>& between) {
    EXPECT_TRUE(Send<QDragEnterEvent>(urls));
    between();
    return Send<DropAt>(urls);
  }
  std::u16string Question() const {
    return Replace(OwnText(OwnTextId::OpenDroppedFile), u"@FILE@", u"BOILER.KOV");
  }
};

TEST_F(Dragged, OneFileOfThisMachineIsTakenAndNothingElse) {
  EXPECT_TRUE(Window().acceptDrops());
  const QUrl url = QUrl::fromLocalFile(file);
  EXPECT_TRUE(Enter({url}));
  EXPECT_FALSE(Enter({}));
  EXPECT_FALSE(Enter({url, url}));
  EXPECT_FALSE(Enter({QUrl::fromLocalFile(folder.path())}));
  EXPECT_FALSE(Enter({QUrl(QStringLiteral("http://example.org/BOILER.KOV"))}));
  EXPECT_FALSE(Enter({QUrl::fromLocalFile(folder.filePath(QStringLiteral("none.KOV")))}));
}

TEST_F(Dragged, IsOpenedBehindTheQuestionAfterTheDropIsAnswered) {
  EXPECT_TRUE(Drop({QUrl::fromLocalFile(file)}));
  EXPECT_EQ(0, boxes.Shown()) << "the other program still waits";
  boxes.Expect(Question(), BoxAnswer::Ok);
  EXPECT_TRUE(QTest::qWaitFor([&] { return boxes.Shown() == 1; }));
  EXPECT_EQ(Padded64("BOILER"), StoredText("C", 0, "TAG"));
  EXPECT_TRUE(Find<QLabel>("statusDone").text().endsWith(QStringLiteral("開く BOILER.KOV")));
}

TEST_F(Dragged, IsRefusedDuringAnExchangeAndBehindABox) {
  frmParamLoader->flowUnderWay = true;
  EXPECT_FALSE(Enter({QUrl::fromLocalFile(file)}));
  frmParamLoader->flowUnderWay = false;
  EXPECT_FALSE(DropAfter({QUrl::fromLocalFile(file)}, [] { frmParamLoader->flowUnderWay = true; }));
  frmParamLoader->flowUnderWay = false;
  boxes.Expect(Text(20106), BoxAnswer::Cancel, [&](QMessageBox& box) {
    EXPECT_FALSE(Drop({QUrl::fromLocalFile(file)}));
    box.reject();
  });
  Press(Qt::Key_F9);
  QCoreApplication::processEvents();
  EXPECT_EQ(1, boxes.Shown());
}

// --- Long lists

TEST_F(MenuKeys, ALongListTakesHalfTheScreenAtMostAndOpensAtItsRow) {
  Start("1");
  ListBoxView list(&Window());
  std::vector<std::u16string> rows;
  for (int row = 0; row < 150; ++row) {
    rows.push_back(u"row " + DecimalText(row));
  }
  list.ShowItems(rows, 100);
  list.show();
  list.showPopup();
  const QAbstractItemView& popup = *list.view();
  EXPECT_LE(popup.window()->height(), list.screen()->availableGeometry().height() / 2);
  const QRect place = popup.visualRect(list.model()->index(100, 0));
  EXPECT_TRUE(popup.viewport()->rect().contains(place));
  EXPECT_GT(place.top(), 2 * place.height()) << "with rows above it";
  EXPECT_GT(popup.viewport()->height() - place.bottom(), 2 * place.height()) << "and below";
  list.hidePopup();
  QFont large = list.font();
  large.setPointSizeF(large.pointSizeF() * 3);
  list.setFont(large);
  list.showPopup();
  EXPECT_LE(popup.window()->height(), list.screen()->availableGeometry().height() / 2) << "in large print";
  list.hidePopup();
}

} // namespace
} // namespace loader::test
