// A value refused in the main window: the click that left it is not acted on, and the field has the keyboard
// again.
#include <QComboBox>

#include "tests/display/DisplayFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

struct NumberFieldOnTheDisplay : OnTheDisplay {
  void SetUp() override {
    OpenProgram();
    ClickTab(RecorderPage);
    ASSERT_EQ(RecorderPage, Pages().currentIndex());
    before = AllNumbers();
    hands.TypeOver(Hysteresis(), "bad");
  }
  QTabWidget& Pages() { return Find<QTabWidget>("tbsParameter"); }
  QLineEdit& Hysteresis() { return Field(Window(), "txtAlarmHist"); }
  void ExpectRefused() {
    ExpectKeyboardBackIn(Hysteresis(), "bad");
    EXPECT_EQ(1, boxes.Shown());
    EXPECT_EQ(before, AllNumbers());
  }
  void ExpectNoNumberBox() { ExpectBox(std::u16string(LoadText(62200))); }
  std::vector<std::int16_t> before;
};

TEST_F(NumberFieldOnTheDisplay, AClickOnAnotherPagesTabDoesNotTurnThePage) {
  ExpectNoNumberBox();
  ClickTab(DisplayPage);
  ExpectRefused();
  EXPECT_EQ(RecorderPage, Pages().currentIndex());
  EXPECT_EQ(RecorderPage, frmParamLoader->tbsParameter.current);
  WaitForTheGuard();
  hands.Type("12");
  ClickTab(DisplayPage);
  EXPECT_EQ(DisplayPage, Pages().currentIndex());
  EXPECT_EQ(12, Stored("H", 0, "ALMH"));
}

TEST_F(NumberFieldOnTheDisplay, AClickOnAButtonAsksNothing) {
  ExpectNoNumberBox();
  auto& button = Find<QPushButton>("btnRegRead");
  hands.Click(button);
  ExpectRefused();
  EXPECT_FALSE(button.isDown());
}

TEST_F(NumberFieldOnTheDisplay, AClickOnAListDoesNotOpenIt) {
  ExpectNoNumberBox();
  hands.Click(Find<QComboBox>("cmbMainSample"));
  ExpectRefused();
  EXPECT_EQ(nullptr, QApplication::activePopupWidget());
}

TEST_F(NumberFieldOnTheDisplay, AClickIntoAnotherFieldDoesNotEnterIt) {
  ExpectNoNumberBox();
  hands.Click(Field(Window(), "txtpPassword"));
  ExpectRefused();
}

// The Return that takes the box away is not one in the field behind it.
TEST_F(NumberFieldOnTheDisplay, ReturnShowsOneMessageAndThenTakesTheMendedValue) {
  ExpectNoNumberBox();
  hands.Press(Key::Return);
  ExpectRefused();
  WaitForTheGuard();
  hands.Type("12");
  hands.Press(Key::Return);
  EXPECT_EQ(&Hysteresis(), QApplication::focusWidget());
  EXPECT_EQ("12", Hysteresis().selectedText().toStdString());
  EXPECT_EQ(12, Stored("H", 0, "ALMH"));
}

TEST_F(NumberFieldOnTheDisplay, TheTabKeyStays) {
  ExpectNoNumberBox();
  hands.Press(Key::Tab);
  ExpectRefused();
  WaitForTheGuard();
  hands.Type("12");
  hands.Press(Key::Tab);
  EXPECT_NE(&Hysteresis(), QApplication::focusWidget());
  EXPECT_EQ(12, Stored("H", 0, "ALMH"));
}

} // namespace
} // namespace loader::test
