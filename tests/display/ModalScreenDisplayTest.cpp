// A value refused inside a modal screen: the box comes up over the screen, and behind it the field has the
// keyboard again, not the window behind.
#include "comm/frmIPSetting.h"
#include "comm/frmTimeChange.h"
#include "core/ModelProfile.h"
#include "tests/display/DisplayFixture.h"

namespace loader::test {
namespace {

// --- The address screen

struct AddressScreen : OnTheDisplay, testing::WithParamInterface<const char*> {
  void During(const std::function<void(QWidget&)>& act) {
    OpenProgram();
    Settings.RecorderIpAddress = u"192.168.1.1";
    Settings.StationSetting = 1;
    OnTheDisplay::During("frmIPSetting", ShowIpSetting, act);
  }
};
INSTANTIATE_TEST_SUITE_P(Fields, AddressScreen, testing::Values("txtIP_0", "txtIP_3", "txtStationNo"),
                         [](const auto& tested) { return std::string(tested.param); });

TEST_P(AddressScreen, AClickOnOkWithAWrongValueTakesNothingAndTheKeyboardIsBackInTheField) {
  During([&](QWidget& screen) {
    QLineEdit& field = Field(screen, GetParam());
    hands.TypeOver(field, "300");
    ExpectRangeBox(0, 255);
    auto& ok = In<QPushButton>(screen, "cmdOK");
    hands.Click(ok);
    EXPECT_TRUE(screen.isVisible());
    EXPECT_FALSE(ok.isDown());
    ExpectKeyboardBackIn(field, "300");
    EXPECT_EQ(1, boxes.Shown());
    EXPECT_EQ(u"192.168.1.1", Settings.RecorderIpAddress);
    hands.Type("12");
    EXPECT_EQ("12", field.text().toStdString());
    hands.Click(ok);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_TRUE(Settings.StationSetting == 12 || Settings.RecorderIpAddress == u"12.168.1.1" ||
              Settings.RecorderIpAddress == u"192.168.1.12");
}

TEST_P(AddressScreen, ByTheKeyboardAloneItIsTheSame) {
  During([&](QWidget& screen) {
    QLineEdit& field = Field(screen, GetParam());
    while (QApplication::focusWidget() != &field) {
      hands.Press(Key::Tab);
    }
    hands.SelectAll();
    hands.Type("300");
    ExpectRangeBox(0, 255);
    hands.Press(Key::Tab);
    ExpectKeyboardBackIn(field, "300");
    hands.Type("7");
    while (QApplication::focusWidget() != &In<QPushButton>(screen, "cmdOK")) {
      hands.Press(Key::Tab);
    }
    hands.Type(" ");
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(1, boxes.Shown());
  });
  EXPECT_TRUE(Settings.StationSetting == 7 || Settings.RecorderIpAddress == u"7.168.1.1" ||
              Settings.RecorderIpAddress == u"192.168.1.7");
}

TEST_P(AddressScreen, EscapeClosesItWithAWrongValueInAFieldAndTakesNothing) {
  During([&](QWidget& screen) {
    hands.TypeOver(Field(screen, GetParam()), "300");
    hands.Press(Key::Escape);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(0, boxes.Shown());
  EXPECT_EQ(u"192.168.1.1", Settings.RecorderIpAddress);
  EXPECT_EQ(1, Settings.StationSetting);
}

// --- The clock screen

struct ClockField {
  const char* name;
  int lowest;
  int highest;
};
void PrintTo(const ClockField& field, std::ostream* out) {
  *out << field.name;
}

struct ClockScreen : OnTheDisplay, testing::WithParamInterface<ClockField> {
  void During(const std::function<void(QWidget&)>& act) {
    OpenProgram();
    const FlowCallbacks callbacks;
    OnTheDisplay::During(
        "frmTimeChange", [&] { ShowTimeChange(callbacks); }, act);
  }
};
using AnyClock = ClockScreen;
INSTANTIATE_TEST_SUITE_P(Fields, ClockScreen,
                         testing::Values(ClockField{"txtYear", 0, 99}, ClockField{"txtMonth", 1, 12},
                                         ClockField{"txtMinute", 0, 59}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(ClockScreen, AClickOnOkWithAWrongValueSendsNothingAndTheKeyboardIsBackInTheField) {
  During([&](QWidget& screen) {
    QLineEdit& field = Field(screen, GetParam().name);
    hands.TypeOver(field, "100");
    ExpectRangeBox(GetParam().lowest, GetParam().highest);
    hands.Click(In<QPushButton>(screen, "cmdOK"));
    ExpectKeyboardBackIn(field, "100");
    EXPECT_EQ(1, boxes.Shown());
    hands.Type("11");
    EXPECT_EQ("11", field.text().toStdString());
  });
}

TEST_P(ClockScreen, ByTheKeyboardAloneItIsTheSame) {
  During([&](QWidget& screen) {
    QLineEdit& field = Field(screen, GetParam().name);
    while (QApplication::focusWidget() != &field) {
      hands.Press(Key::Tab);
    }
    hands.SelectAll();
    hands.Type("100");
    ExpectRangeBox(GetParam().lowest, GetParam().highest);
    hands.Press(Key::Tab);
    ExpectKeyboardBackIn(field, "100");
    WaitForTheGuard();
    hands.Type("11");
    hands.Press(Key::Tab);
    EXPECT_NE(&field, QApplication::focusWidget());
    EXPECT_EQ("11", field.text().toStdString());
    EXPECT_EQ(1, boxes.Shown());
  });
}

// Each field is good, and the date is none: no field is at fault, and the keyboard stays where the user has
// it.
TEST_F(AnyClock, ADateThatIsNoneLeavesTheKeyboardOnTheButton) {
  During([&](QWidget& screen) {
    hands.TypeOver(Field(screen, "txtMonth"), "2");
    hands.TypeOver(Field(screen, "txtDay"), "30");
    auto& ok = In<QPushButton>(screen, "cmdOK");
    ExpectBox(std::u16string(LoadText(62500)));
    hands.Click(ok);
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(&ok, QApplication::focusWidget());
    EXPECT_TRUE(screen.isVisible());
  });
}

} // namespace
} // namespace loader::test
