// Return in an edit field takes what was typed, as leaving the field would, and the keyboard stays.
#include <QInputMethodEvent>
#include <QPushButton>

#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

constexpr auto Complaint = u"数字ではありません。";

struct ReturnKey : SampleTest, testing::WithParamInterface<Qt::Key> {
  void SetUp() override {
    ShowSample();
    AcceptOnlyGood(screen.txtName);
    screen.btnApply.onClick = [this] { ++applied; };
  }
  QLineEdit& Field() { return Find<QLineEdit>("txtName"); }
  QLineEdit& Other() { return Find<QLineEdit>("txtValue"); }
  void Press() { QTest::keyClick(&Field(), GetParam()); }
  void ExpectKeyboardIn(QLineEdit& field, const char* selected) {
    EXPECT_TRUE(GetsFocus(field));
    EXPECT_EQ(selected, field.selectedText().toStdString());
  }
  int applied = 0;
};
INSTANTIATE_TEST_SUITE_P(Keys, ReturnKey, testing::Values(Qt::Key_Return, Qt::Key_Enter),
                         [](const auto& tested) {
                           return tested.param == Qt::Key_Enter ? "Enter" : "Return";
                         });

TEST_P(ReturnKey, ChecksTheFieldOnceAndKeepsTheKeyboardWithTheTextSelected) {
  TypeOver(Field(), "good");
  Press();
  EXPECT_EQ(1, checks);
  ExpectKeyboardIn(Field(), "good");
}

TEST_P(ReturnKey, SelectsWhatTheCheckHasMadeOfTheText) {
  screen.txtName.onLostFocus = [this] { screen.txtName.text = u"good.00"; };
  TypeOver(Field(), "good");
  Press();
  ExpectKeyboardIn(Field(), "good.00");
}

TEST_P(ReturnKey, InAWrongFieldShowsItsOneMessage) {
  TypeOver(Field(), "bad");
  boxes.Expect(Complaint);
  Press();
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_EQ(1, checks);
  ExpectKeyboardIn(Field(), "bad");
}

TEST_P(ReturnKey, AFieldThatWasTakenIsLeftUneditedWithoutAnotherCheck) {
  TypeOver(Field(), "good");
  Press();
  QTest::keyClick(&Field(), Qt::Key_Tab);
  EXPECT_FALSE(Field().hasFocus());
  EXPECT_EQ(1, checks);
}

TEST_P(ReturnKey, ASecondReturnChecksNothingThatNobodyHasEdited) {
  TypeOver(Field(), "good");
  Press();
  Press();
  EXPECT_EQ(1, checks);
  ExpectKeyboardIn(Field(), "good");
}

TEST_P(ReturnKey, AnEditBehindItIsCheckedAgain) {
  TypeOver(Field(), "good");
  Press();
  QTest::keyClicks(&Field(), QStringLiteral("bad"));
  boxes.Expect(Complaint);
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(2, checks);
  EXPECT_EQ(0, applied);
  ExpectKeyboardIn(Field(), "bad");
}

TEST_P(ReturnKey, AButtonBehindItWorksWithoutAnotherCheck) {
  TypeOver(Field(), "good");
  Press();
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(1, applied);
  EXPECT_EQ(1, checks);
}

TEST_P(ReturnKey, AWrongFieldIsCheckedAgainWhenItIsLeft) {
  TypeOver(Field(), "bad");
  boxes.Expect(Complaint);
  Press();
  boxes.Expect(Complaint);
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(2, boxes.Shown());
  EXPECT_EQ(0, applied);
}

// The guard of the checks passes a field over for a moment behind its message: Return then is no leave to go.
TEST_P(ReturnKey, AWrongFieldThatTheGuardPassesOverIsStillCheckedWhenItIsLeft) {
  bool guarded = false;
  screen.txtName.onLostFocus = [&] {
    ++checks;
    if (!guarded) {
      ShowMessage(Complaint);
      RequestFocusAndSelectAll(screen.txtName);
    }
  };
  TypeOver(Field(), "bad");
  boxes.Expect(Complaint);
  Press();
  guarded = true;
  Press();
  guarded = false;
  EXPECT_EQ(1, boxes.Shown());
  boxes.Expect(Complaint);
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(2, boxes.Shown());
  EXPECT_EQ(0, applied);
}

TEST_P(ReturnKey, HeldDownCountsOnce) {
  TypeOver(Field(), "bad");
  boxes.Expect(Complaint);
  Press();
  for (int repeat = 0; repeat < 5; ++repeat) {
    QKeyEvent press(QEvent::KeyPress, GetParam(), {}, QStringLiteral("\r"), true);
    QApplication::sendEvent(&Field(), &press);
  }
  EXPECT_EQ(1, checks);
  EXPECT_EQ(1, boxes.Shown());
}

TEST_P(ReturnKey, ThatEndsACompositionTakesNothing) {
  TypeOver(Field(), "good");
  QInputMethodEvent composing(QStringLiteral("あ"), {});
  QApplication::sendEvent(&Field(), &composing);
  Press();
  EXPECT_EQ(0, checks);
  QInputMethodEvent done(QString(), {});
  done.setCommitString(QStringLiteral("x"));
  QApplication::sendEvent(&Field(), &done);
  boxes.Expect(Complaint);
  Press();
  EXPECT_EQ(1, checks);
}

TEST_P(ReturnKey, WithAModifierIsAnotherKey) {
  TypeOver(Field(), "good");
  QTest::keyClick(&Field(), GetParam(), Qt::ControlModifier);
  EXPECT_EQ(0, checks);
}

TEST_P(ReturnKey, InAFieldThatCanOnlyBeReadDoesNothing) {
  screen.txtName.readOnly = true;
  platform.userInterface.Refresh();
  Field().setFocus();
  Press();
  EXPECT_EQ(0, checks);
  EXPECT_TRUE(GetsFocus(Field()));
}

TEST_P(ReturnKey, LeavesTheKeyboardWhereTheCheckHasPutIt) {
  screen.txtName.onLostFocus = [this] { RequestFocus(screen.txtValue); };
  TypeOver(Field(), "good");
  Press();
  EXPECT_TRUE(GetsFocus(Other()));
  EXPECT_TRUE(Field().selectedText().isEmpty());
}

// As a dialog does whose last field ends it.
TEST_P(ReturnKey, ACheckMayCloseItsScreen) {
  screen.txtName.onLostFocus = [this] { platform.screens.Close(screen); };
  TypeOver(Field(), "good");
  Press();
  EXPECT_EQ(nullptr, platform.screens.WindowOf(screen));
}

TEST_P(ReturnKey, InAFieldWithoutACheckSelectsItsText) {
  TypeOver(Other(), "anything");
  QTest::keyClick(&Other(), GetParam());
  ExpectKeyboardIn(Other(), "anything");
}

} // namespace
} // namespace loader::test
