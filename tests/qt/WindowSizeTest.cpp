// The size of windows and boxes as they open: no larger than the screen, wide enough for their titles, and
// messages whose words stay whole.
#include <QGridLayout>
#include <QLabel>
#include <QScreen>

#include "core/TextTable.h"
#include "qt/MessageLines.h"
#include "qt/WindowSize.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

QRect FreeArea(const QWidget& window) {
  return window.screen()->availableGeometry();
}

using WindowSizeTest = SampleTest;

TEST_F(WindowSizeTest, AWindowThatIsLargerThanTheScreenOpensInIt) {
  screen.widthPixels = 5000;
  screen.heightPixels = 4000;
  ShowSample();
  EXPECT_TRUE(FreeArea(Window()).contains(Window().frameGeometry()));
  EXPECT_GT(Window().height(), FreeArea(Window()).height() * 8 / 10);
  EXPECT_GT(Window().width(), FreeArea(Window()).width() * 9 / 10);
}

TEST_F(WindowSizeTest, AWindowThatFitsOpensInItsOwnSize) {
  screen.widthPixels = 500;
  screen.heightPixels = 400;
  ShowSample();
  EXPECT_EQ(QSize(500, 400), Window().size());
}

TEST_F(WindowSizeTest, AStandingWindowBesideTheScreenIsMovedIntoIt) {
  screen.widthPixels = 500;
  screen.heightPixels = 400;
  ShowSample();
  const QRect free = FreeArea(Window());
  Window().move(free.right() - 100, free.bottom() - 100);
  FitToScreen(Window());
  EXPECT_TRUE(free.contains(Window().frameGeometry()));
  EXPECT_EQ(QSize(500, 400), Window().size());
}

TEST_F(WindowSizeTest, ADialogShowsItsWholeTitle) {
  ShowSample();
  AskScreen ask;
  ask.caption = u"とても長い題名を持つ小さな画面";
  int width = 0;
  QMetaObject::invokeMethod(
      &platform.userInterface,
      [&] {
        width = platform.screens.WindowOf(ask)->width();
        platform.screens.Close(ask);
      },
      Qt::QueuedConnection);
  platform.screens.ShowModal(ask);
  EXPECT_GE(width, WidthForTitle(ToQt(ask.caption)));
}

TEST_F(WindowSizeTest, ABoxWithFewWordsShowsItsWholeTitle) {
  ShowSample();
  boxes.Expect(u"OK?", BoxAnswer::Ok, [](QMessageBox& box) {
    EXPECT_GE(box.width(), WidthForTitle(box.windowTitle()));
    EXPECT_GT(WidthForTitle(box.windowTitle()), box.fontMetrics().horizontalAdvance(box.windowTitle()) + 100);
  });
  ShowMessage(u"OK?");
}

// lines of a message

QStringList ShownLines(QMessageBox& box) {
  for (QLabel* label : box.findChildren<QLabel*>()) {
    if (label->isVisible() && label->pixmap().isNull()) {
      EXPECT_FALSE(label->wordWrap());
      EXPECT_GE(label->width(), label->sizeHint().width()) << "cut";
      EXPECT_GE(label->height(), label->sizeHint().height()) << "cut";
      return label->text().split(u'\n');
    }
  }
  return {};
}

TEST_F(WindowSizeTest, ALongMessageIsShownWholeInLinesOfWholeWords) {
  ShowSample();
  const std::u16string text(LoadText(62701));
  boxes.Expect(text, BoxAnswer::Ok, [&](QMessageBox& box) {
    const QStringList lines = ShownLines(box);
    EXPECT_GT(lines.size(), 1);
    EXPECT_EQ(ToQt(text), lines.join(QString()));
    EXPECT_TRUE(FreeArea(box).contains(box.frameGeometry()));
  });
  ShowMessage(text);
}

TEST_F(WindowSizeTest, AMessageInLargePrintIsNotCut) {
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPointSizeF(3 * before.pointSizeF());
  QApplication::setFont(large);
  ShowSample();
  const std::u16string text(LoadText(62701));
  boxes.Expect(text, BoxAnswer::Ok, [&](QMessageBox& box) {
    EXPECT_EQ(ToQt(text), ShownLines(box).join(QString()));
    EXPECT_TRUE(FreeArea(box).contains(box.frameGeometry()));
  });
  ShowMessage(text);
  QApplication::setFont(before);
}

TEST_F(WindowSizeTest, AShortMessageIsOneLine) {
  ShowSample();
  boxes.Expect(std::u16string(LoadText(20102)), BoxAnswer::Ok,
               [](QMessageBox& box) { EXPECT_EQ(QStringList{ToQt(LoadText(20102))}, ShownLines(box)); });
  ShowMessage(LoadText(20102));
}

// Each character is as wide as its bytes in code page 932.
int HalfWidths(const QString& text) {
  return static_cast<int>(CodePageLength(FromQt(text)));
}

struct BrokenMessage {
  const char16_t* text;
  int width;
  const char16_t* lines;
};
class MessageLines : public testing::TestWithParam<BrokenMessage> {};

TEST_P(MessageLines, EndBetweenWords) {
  const BrokenMessage& message = GetParam();
  EXPECT_EQ(QString::fromUtf16(message.lines).toStdString(),
            BrokenIntoLines(QString::fromUtf16(message.text), HalfWidths, message.width).toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    All, MessageLines,
    testing::Values(BrokenMessage{u"一行です", 20, u"一行です"},
                    // the hyphen joins
                    BrokenMessage{u"通信方法はRS-232Cです", 14, u"通信方法は\nRS-232Cです"},
                    BrokenMessage{u"本体のModbus設定", 10, u"本体の\nModbus設定"},
                    // half-width katakana with their voice marks
                    BrokenMessage{u"本体のﾊﾞｰｼﾞｮﾝを見る", 14, u"本体の\nﾊﾞｰｼﾞｮﾝを見る"},
                    // katakana and kanji
                    BrokenMessage{u"新しいパラメータを開く", 16, u"新しい\nパラメータを開く"},
                    BrokenMessage{u"使う単位設定値を見る", 12, u"使う\n単位設定値を\n見る"},
                    // no mark begins a line
                    BrokenMessage{u"はい、いいえ。", 8, u"はい、\nいいえ。"},
                    // what was two lines stays two
                    BrokenMessage{u"一\n二", 20, u"一\n二"},
                    // a word wider than the line is broken all the same
                    BrokenMessage{u"ABCDEFGH", 4, u"ABCD\nEFGH"},
                    // no last line of one word when the lines can share
                    BrokenMessage{u"ああ いい うう ええ", 14, u"ああ いい\nうう ええ"},
                    BrokenMessage{u"", 10, u""}));

} // namespace
} // namespace loader::test
