// What an input method has in the making is no part of a field's text until it is committed; a field that is
// left in the middle of it takes what the user sees, and its check finds it there.
#include <QAction>
#include <QDialog>
#include <QInputMethodEvent>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>

#include "tests/qt/ModalScript.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

constexpr auto Complaint = u"数字ではありません。";

// An input method at work in the widget that has the keyboard. It takes no part in a change of the focus:
// what it has in the making it would keep for ever.
void Compose(const char* text) {
  QInputMethodEvent event(QString::fromUtf8(text), {});
  QApplication::sendEvent(QApplication::focusWidget(), &event);
}
void Commit(const char* text, const char* next = "") {
  QInputMethodEvent event(QString::fromUtf8(next), {});
  event.setCommitString(QString::fromUtf8(text));
  QApplication::sendEvent(QApplication::focusWidget(), &event);
}

// What a widget's input method has last shown in it.
class Shown final : public QObject {
public:
  explicit Shown(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::InputMethod) {
      text = static_cast<QInputMethodEvent*>(event)->preeditString();
    }
    return false;
  }
  QString text;
};

struct Composition : SampleTest {
  void SetUp() override {
    FillList(screen.cmbKind, std::vector<std::u16string>{u"a", u"b"});
    ShowSample();
    screen.txtName.onLostFocus = [this] { checked.push_back(screen.txtName.text); };
    const auto act = [this] { atTheAction.push_back(screen.txtName.text); };
    screen.btnApply.onClick = act;
    screen.chkOn.onClick = act;
    screen.smenuOpen.onClick = act;
    screen.tool.onClick = act;
    screen.tbsPages.onChange = act;
    TypeOver(Field(), "No.");
  }
  using SampleTest::Find;
  using SampleTest::Window;
  QLineEdit& Field() { return Find<QLineEdit>("txtName"); }
  std::string Text() { return Field().text().toStdString(); }

  std::vector<std::u16string> checked;
  std::vector<std::u16string> atTheAction;
};

TEST_F(Composition, IsNoPartOfTheTextBeforeItIsCommitted) {
  Compose("でんせん");
  platform.userInterface.Refresh();
  EXPECT_EQ(u"No.", screen.txtName.text);
  EXPECT_EQ("No.", Text());
  Commit("電線", "いち");
  EXPECT_EQ(u"No.電線", screen.txtName.text);
  Compose("");
  EXPECT_EQ(u"No.電線", screen.txtName.text);
  EXPECT_TRUE(checked.empty());
}

TEST_F(Composition, GoesOnThoughAnotherFieldIsRewritten) {
  const Shown shown(Field());
  Compose("でんせん");
  screen.txtValue.text = u"12";
  platform.userInterface.Refresh();
  EXPECT_EQ("でんせん", shown.text.toStdString());
}

// --- Leaving in the middle

struct Way {
  const char* name;
  bool acts; // what it leads to reads the field
  void (*go)(Composition&);
};
void PrintTo(const Way& way, std::ostream* out) {
  *out << way.name;
}
struct LeavingAComposition : Composition, testing::WithParamInterface<Way> {};

constexpr Way Ways[] = {
    {"Tab", false, [](Composition& at) { QTest::keyClick(&at.Field(), Qt::Key_Tab); }},
    {"AnotherField", false,
     [](Composition& at) { QTest::mouseClick(&at.Find<QLineEdit>("txtValue"), Qt::LeftButton); }},
    {"AList", false,
     [](Composition& at) {
       QTest::mouseClick(&at.Find<QWidget>("cmbKind"), Qt::LeftButton);
       EXPECT_NE(nullptr, QApplication::activePopupWidget());
       QApplication::activePopupWidget()->close();
     }},
    {"AButton", true,
     [](Composition& at) { QTest::mouseClick(&at.Find<QPushButton>("btnApply"), Qt::LeftButton); }},
    {"AMark", true,
     [](Composition& at) {
       auto& box = at.Find<QWidget>("chkOn");
       QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box.height() / 2));
     }},
    {"AMenuEntry", true, [](Composition& at) { at.Find<QAction>("smenuOpen").trigger(); }},
    {"AShortcut", true,
     [](Composition& at) { QTest::keyClick(&at.Window(), Qt::Key_O, Qt::ControlModifier); }},
    {"AToolButton", true,
     [](Composition& at) {
       QTest::mouseClick(at.Find<QToolBar>("V").widgetForAction(&at.Find<QAction>("V_1")), Qt::LeftButton);
     }},
    {"AnotherPage", true,
     [](Composition& at) {
       QTabBar& bar = *at.Find<QTabWidget>("tbsPages").tabBar();
       QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, bar.tabRect(1).center());
     }},
};
INSTANTIATE_TEST_SUITE_P(By, LeavingAComposition, testing::ValuesIn(Ways),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(LeavingAComposition, TakesWhatIsSeenBeforeTheCheckAndBeforeWhatFollows) {
  const Shown shown(Field());
  Compose("でんせん");
  GetParam().go(*this);
  EXPECT_EQ(u"No.でんせん", screen.txtName.text);
  EXPECT_EQ("No.でんせん", Text());
  EXPECT_EQ("", shown.text.toStdString());
  EXPECT_EQ(std::vector<std::u16string>{u"No.でんせん"}, checked);
  EXPECT_EQ(std::vector<std::u16string>(GetParam().acts ? 1 : 0, u"No.でんせん"), atTheAction);
}

TEST_P(LeavingAComposition, ThatIsWrongActsOnNothingAndComesBackAfterOneMessage) {
  AcceptOnlyGood(screen.txtName);
  Field().clear();
  screen.txtName.text.clear();
  TypeOver(Field(), "good");
  Compose("でんせん");
  boxes.Expect(Complaint);
  if (GetParam().name == std::string_view("AList")) {
    QTest::mouseClick(&Find<QWidget>("cmbKind"), Qt::LeftButton);
    EXPECT_EQ(nullptr, QApplication::activePopupWidget());
  } else {
    GetParam().go(*this);
  }
  EXPECT_TRUE(GetsFocus(Field()));
  EXPECT_EQ("goodでんせん", Field().selectedText().toStdString());
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_EQ(1, checks);
  EXPECT_TRUE(atTheAction.empty());
}

// The field itself would drop it to set its cursor.
TEST_F(Composition, AClickBesideItInTheSameFieldTakesIt) {
  Compose("でんせん");
  QTest::mouseClick(&Field(), Qt::LeftButton, Qt::NoModifier, QPoint(3, Field().height() / 2));
  EXPECT_EQ(u"No.でんせん", screen.txtName.text);
  EXPECT_EQ(0, Field().cursorPosition());
  EXPECT_TRUE(checked.empty());
}

TEST_F(Composition, AClickIntoItIsTheInputMethods) {
  const Shown shown(Field());
  Compose("でんせんでんせん");
  const int before = Field().fontMetrics().horizontalAdvance(Field().text());
  QTest::mouseClick(&Field(), Qt::LeftButton, Qt::NoModifier, QPoint(before + 20, Field().height() / 2));
  EXPECT_EQ("でんせんでんせん", shown.text.toStdString());
  EXPECT_EQ(u"No.", screen.txtName.text);
}

// Return has had the field checked, and nobody has written a letter since: composing is editing.
TEST_F(Composition, InAnEmptyFieldThatWasCheckedIsCheckedAgain) {
  Field().clear();
  TypeOver(Field(), "x");
  QTest::keyClick(&Field(), Qt::Key_Backspace);
  QTest::keyClick(&Field(), Qt::Key_Return);
  ASSERT_EQ(std::vector<std::u16string>{u""}, checked);
  Compose("あ");
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ((std::vector<std::u16string>{u"", u"あ"}), checked);
  EXPECT_EQ(std::vector<std::u16string>{u"あ"}, atTheAction);
}

// --- Keys that come through while an input method is at work

TEST_F(Composition, EnterInTheMiddlePressesNoDefaultButton) {
  AskScreen ask;
  int pressed = 0;
  ask.cmdSet.onClick = [&] { ++pressed; };
  WhileShown(
      "frmAsk", [&] { platform.screens.ShowModal(ask); },
      [&](QWidget& window) {
        window.findChild<QPushButton*>(QStringLiteral("cmdSet"))->setDefault(true);
        auto& field = *window.findChild<QLineEdit*>(QStringLiteral("txtYear"));
        field.setFocus();
        Compose("にせん");
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_EQ(0, pressed);
        Commit("二千");
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_EQ(1, pressed);
      });
  EXPECT_EQ(u"二千", ask.txtYear.text);
}

// --- What a field takes

// The code of the wave dash that an input method makes on this system, and the one that the recorder's stands
// for.
TEST_F(Composition, ACharacterThatTheRecorderWritesOtherwiseIsTakenSo) {
  const Shown shown(Field());
  Commit("\xE3\x80\x9C", "つぎ");
  EXPECT_EQ("No.\xEF\xBD\x9E", Text());
  EXPECT_EQ(u"No.\uFF5E", screen.txtName.text);
  EXPECT_EQ("つぎ", shown.text.toStdString());
  Commit("次");
  EXPECT_EQ(u"No.\uFF5E次", screen.txtName.text);
}

TEST_F(Composition, OfSeveralLinesIsTakenAsOne) {
  Commit("一行\n二行", "つぎ");
  EXPECT_EQ(u"No.一行", screen.txtName.text);
  EXPECT_EQ("No.一行", Text());
}

TEST_F(Composition, ThatIsCommittedIsOneStepBack) {
  QTest::keyClick(&Field(), Qt::Key_Home); // what is typed in one go is one step
  QTest::keyClick(&Field(), Qt::Key_End);
  Commit("\xE3\x80\x9C");
  Field().undo();
  EXPECT_EQ("No.", Text());
  EXPECT_EQ(u"No.", screen.txtName.text);
}

} // namespace
} // namespace loader::test
