// A Japanese input method at work in the fields, by real keys: composing, converting, committing, and leaving
// a field in the middle of it.
#include <QDeadlineTimer>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMenuBar>

#include "tests/display/ChannelFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

constexpr Key Backspace{0xff08};

// What the input method has shown and made in the field that has the keyboard.
class Compositions final : public QObject {
public:
  Compositions() { qApp->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::InputMethod && watched->isWidgetType()) {
      const auto& input = *static_cast<QInputMethodEvent*>(event);
      shown = input.preeditString();
      if (!input.commitString().isEmpty()) {
        ++commits;
      }
    }
    return false;
  }
  QString shown;
  int commits = 0;
};

struct InputMethod : ChannelOnTheDisplay {
  // Types letters that the input method makes kana of. It takes its time to come to a window that has just
  // got the keyboard, and nothing tells when it is there: the first letter is taken away again as long as it
  // comes plain.
  void Compose(QLineEdit& field, std::string_view letters, const char* kana) {
    ASSERT_EQ(&field, QApplication::focusWidget());
    const QString before = field.text();
    const std::string_view first = letters.substr(0, 1);
    const QDeadlineTimer patience(Patience);
    const auto comes = [&] {
      hands.Type(first);
      return QTest::qWaitFor([&] { return !input.shown.isEmpty() || field.text() != before; });
    };
    while (comes() && input.shown.isEmpty() && !patience.hasExpired()) {
      hands.Press(Backspace);
      ASSERT_TRUE(QTest::qWaitFor([&] { return field.text() == before; }));
    }
    ASSERT_FALSE(input.shown.isEmpty()) << "no input method";
    hands.Type(letters.substr(1));
    ExpectShown(kana);
    EXPECT_EQ(before.toStdString(), field.text().toStdString()) << "a composition is no part of the text";
  }
  void ExpectShown(const char* kana) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return input.shown == QString::fromUtf8(kana); }))
        << kana << " is not what is composed: " << input.shown.toStdString();
  }
  // By the space bar, to whatever the input method offers first; what it shows then.
  std::string Converted() {
    const QString kana = input.shown;
    hands.Type(" ");
    EXPECT_TRUE(QTest::qWaitFor([&] { return input.shown != kana; })) << "not converted";
    return input.shown.toStdString();
  }
  void ExpectText(QLineEdit& field, const std::string& text) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return field.text().toStdString() == text; }))
        << text << " is not what stands in the field: " << field.text().toStdString();
    EXPECT_EQ("", input.shown.toStdString());
  }
  void EnterEmptied(QLineEdit& field) {
    hands.Click(field);
    hands.SelectAll();
    hands.Press(Backspace);
    ASSERT_TRUE(QTest::qWaitFor([&] { return field.text().isEmpty(); }));
  }
  static constexpr int Patience = 20000;
  Compositions input;
};

// --- The dialog of a channel

TEST_F(InputMethod, ATagIsComposedConvertedCommittedAndApplied) {
  OpenProgram();
  OpenedByDoubleClick(KovChannel, 0, [&](QWidget& screen) {
    auto& tag = Field(screen, "txtChannelTag");
    EnterEmptied(tag);
    Compose(tag, "dennatsu", "でんあつ");
    const std::string word = Converted();
    hands.Press(Key::Return);
    ExpectText(tag, word);
    EXPECT_EQ(&tag, QApplication::focusWidget());
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(QString(), tag.selectedText()) << "the Return that commits has been one of the field";
    EXPECT_EQ("CH 01", TrimmedText("C", 0, "TAG"));
    ClickApply(screen);
    EXPECT_EQ(word, TrimmedText("C", 0, "TAG"));
  });
}

TEST_F(InputMethod, AClickOnApplyInTheMiddleAppliesWhatIsSeen) {
  OpenProgram();
  OpenedByDoubleClick(KovChannel, 0, [&](QWidget& screen) {
    auto& tag = Field(screen, "txtChannelTag");
    EnterEmptied(tag);
    Compose(tag, "ondo", "おんど");
    ClickApply(screen);
    ExpectText(tag, "おんど");
    EXPECT_EQ("おんど", TrimmedText("C", 0, "TAG"));
  });
}

// The field holds 16 bytes, which are eight characters in full width.
TEST_F(InputMethod, TheLimitOfAFieldCountsWhatIsCommittedAndRefusesIt) {
  OpenProgram();
  OpenedByDoubleClick(KovChannel, 0, [&](QWidget& screen) {
    auto& tag = Field(screen, "txtChannelTag");
    EnterEmptied(tag);
    Compose(tag, "aiueoaiue", "あいうえおあいうえ");
    EXPECT_EQ(0, boxes.Shown());
    ExpectBox(Replace(LoadText(62100), u"@LEN@", u"16"));
    ClickApply(screen);
    EXPECT_EQ(1, boxes.Shown());
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(&tag, QApplication::focusWidget());
    ExpectText(tag, "あいうえおあいうえ");
    EXPECT_EQ("CH 01", TrimmedText("C", 0, "TAG"));
  });
}

// --- The pages of the main window, which store at once

struct InputMethodOnAPage : InputMethod {
  void SetUp() override {
    OpenProgram();
    ClickTab(EthernetPage);
    EnterEmptied(Name());
  }
  QLineEdit& Name() { return Field(Window(), "txtUserName_0"); }
  static std::string Stored() { return TrimmedText("K", 0, "UNAM"); }
  std::string storedAtTheEntry;
  void ExpectTaken(const char* text) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Stored() == text; })) << Stored();
    ExpectText(Name(), text);
  }
};

TEST_F(InputMethodOnAPage, NothingIsStoredBeforeItIsCommittedAndTheTabKeyStoresIt) {
  const std::string before = Stored();
  Compose(Name(), "ondo", "おんど");
  EXPECT_EQ(before, Stored());
  hands.Press(Key::Return);
  ExpectText(Name(), "おんど");
  EXPECT_EQ(before, Stored()) << "the Return that commits has been one of the field";
  hands.Press(Key::Tab);
  ExpectTaken("おんど");
  EXPECT_NE(&Name(), QApplication::focusWidget());
}

TEST_F(InputMethodOnAPage, AClickIntoAnotherFieldStoresWhatIsSeen) {
  Compose(Name(), "ondo", "おんど");
  hands.Click(Field(Window(), "txtUserName_1"));
  ExpectTaken("おんど");
  EXPECT_EQ(&Field(Window(), "txtUserName_1"), QApplication::focusWidget());
}

TEST_F(InputMethodOnAPage, AnotherPageStoresWhatIsSeen) {
  Compose(Name(), "ondo", "おんど");
  ClickTab(DisplayPage);
  ExpectTaken("おんど");
  EXPECT_EQ("", Field(Window(), "txtUserName_1").text().toStdString());
}

TEST_F(InputMethodOnAPage, AListThatOpensStoresWhatIsSeen) {
  Compose(Name(), "ondo", "おんど");
  hands.Click(Find<QComboBox>("cmbUserLevel_0"));
  ExpectTaken("おんど");
  hands.Press(Key::Escape);
}

// They are the input method's as long as it composes; behind the commit they are the window's again.
TEST_F(InputMethodOnAPage, TheKeysOfTheWindowDoNothingInTheMiddle) {
  const std::string before = Stored();
  Compose(Name(), "ondo", "おんど");
  hands.Press(Key::F5);
  for (const char letter : {'o', 's', 'p'}) {
    hands.PressHolding(Hands::Held::Ctrl, static_cast<unsigned char>(letter));
  }
  hands.Press(Key::F9);
  ExpectShown("ｏｎｄｏ"); // the last of them has come there, and so have the others
  EXPECT_EQ(0, boxes.Shown());
  EXPECT_EQ(before, Stored());
  hands.Press(Key::Return);
  ExpectText(Name(), "ｏｎｄｏ");
  bool asked = false;
  boxes.Expect(std::u16string(LoadText(20106)), BoxAnswer::Cancel, [&](QMessageBox&) { asked = true; });
  hands.Press(Key::F9);
  EXPECT_TRUE(QTest::qWaitFor([&] { return asked; }, Patience));
  EXPECT_EQ("ｏｎｄｏ", Stored()) << "checked and stored before the question";
}

// The recorder would get what the window shows: the question of the write waits for the whole of it.
TEST_F(InputMethodOnAPage, AClickOnWriteInTheMiddleAsksBehindWhatIsStored) {
  Compose(Name(), "ondo", "おんど");
  std::string stored;
  boxes.Expect(std::u16string(LoadText(20106)), BoxAnswer::Cancel, [&](QMessageBox&) { stored = Stored(); });
  hands.Click(Find<QPushButton>("btnRegWrite"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return boxes.Shown() == 1; }, Patience));
  EXPECT_EQ("おんど", stored);
  ExpectText(Name(), "おんど");
}

TEST_F(InputMethodOnAPage, AMenuThatOpensInTheMiddleLosesNothing) {
  Compose(Name(), "ondo", "おんど");
  QMenuBar& bar = Find<QMenuBar>("menuBar");
  auto& menu = Find<QMenu>("menuFile");
  frmParamLoader->smenuTextWrite.onClick = [this] { storedAtTheEntry = Stored(); };
  hands.ClickAt(bar, bar.actionGeometry(menu.menuAction()).center());
  ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activePopupWidget() == &menu; }));
  hands.ClickAt(menu, menu.actionGeometry(&Find<QAction>("smenuTextWrite")).center());
  EXPECT_TRUE(QTest::qWaitFor([&] { return storedAtTheEntry == "おんど"; })) << storedAtTheEntry;
  ExpectText(Name(), "おんど");
}

TEST_F(InputMethodOnAPage, FullWidthDigitsBecomeTheNumber) {
  ClickTab(RecorderPage);
  auto& number = Field(Window(), "txtAlarmHist");
  EnterEmptied(number);
  Compose(number, "12", "12");
  hands.Press(Key::F9); // in full width
  ExpectShown("１２");
  hands.Press(Key::Return);
  ExpectText(number, "１２");
  hands.Press(Key::Tab);
  ExpectText(number, "12");
  EXPECT_EQ(12, NumRecord("H", 0, "ALMH").Value);
  EnterEmptied(number);
  Compose(number, "34", "34");
  hands.Press(Key::F9);
  ExpectShown("３４");
  ClickTab(DisplayPage);
  EXPECT_EQ(34, NumRecord("H", 0, "ALMH").Value);
}

TEST_F(InputMethodOnAPage, ALetterInANumberIsRefusedInTheMiddle) {
  ClickTab(RecorderPage);
  auto& number = Field(Window(), "txtAlarmHist");
  EnterEmptied(number);
  Compose(number, "a", "あ");
  ExpectBox(std::u16string(LoadText(62200)));
  ClickTab(DisplayPage);
  ExpectKeyboardBackIn(number, "あ");
  EXPECT_EQ(1, boxes.Shown());
}

} // namespace
} // namespace loader::test
