// The cascades of the screen of an operation channel: position, logarithm and F value move the point under
// the same integers.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "dialogs/frmAlarmSetting.h"
#include "dialogs/frmSelectUnit.h"
#include "tests/channelscreens/OperationFixture.h"

namespace loader::test {
namespace {

// The channel of these tests: FPoint is 3.
constexpr int Channel = 20;
constexpr std::pair<const char*, int> Integers[] = {{"MMIN", -1000}, {"MMAX", 5000}, {"SMIN", 3},
                                                    {"SMAX", 7},     {"PVSI", 25},   {"RMIN", 4},
                                                    {"RMAX", 8},     {"SECU", 60}};
constexpr int Alarm = 700;

// What is shown of these integers in one state of the three lists.
struct Shows {
  int decimal, log, fValue; // rows of cmbDecimal, cmbTaisu, cmbFtio
  const char *stMin, *stMax, *indMin, *indMax, *shift, *recMin, *recMax, *lowCut, *alarm;
};
constexpr Shows States[] = {
    {0, 0, 0, "-1000", "5000", "3", "7", "25", "4", "8", "60", "700"},
    {1, 0, 0, "-100.0", "500.0", "0.3", "0.7", "2.5", "0.4", "0.8", "6.0", "70.0"},
    {2, 0, 0, "-10.00", "50.00", "0.03", "0.07", "0.25", "0.04", "0.08", "0.60", "7.00"},
    {3, 0, 0, "-1.000", "5.000", "0.003", "0.007", "0.025", "0.004", "0.008", "0.060", "0.700"},
    {4, 0, 0, "-0.1000", "0.5000", "0.0003", "0.0007", "0.0025", "0.0004", "0.0008", "0.0060", "0.0700"},
    // The F value: record range, low cut and alarms stand in FPoint.
    {0, 0, 1, "-1000", "5000", "3", "7", "25", "0.004", "0.008", "0.060", "0.700"},
    {1, 0, 1, "-100.0", "500.0", "0.3", "0.7", "2.5", "0.004", "0.008", "0.060", "0.700"},
    {2, 0, 1, "-10.00", "50.00", "0.03", "0.07", "0.25", "0.004", "0.008", "0.060", "0.700"},
    {3, 0, 1, "-1.000", "5.000", "0.003", "0.007", "0.025", "0.004", "0.008", "0.060", "0.700"},
    {4, 0, 1, "-0.1000", "0.5000", "0.0003", "0.0007", "0.0025", "0.004", "0.008", "0.060", "0.700"},
    // The logarithm: whole exponents; alarms on the scale of the measuring range.
    {0, 1, 0, "-1000", "5000", "3", "7", "25", "4", "8", "60", "700"},
    {1, 1, 0, "-100.0", "500.0", "3", "7", "2.5", "4", "8", "6.0", "70.0"},
    {2, 1, 0, "-10.00", "50.00", "3", "7", "0.25", "4", "8", "0.60", "7.00"},
    {3, 1, 0, "-1.000", "5.000", "3", "7", "0.025", "4", "8", "0.060", "0.700"},
    {4, 1, 0, "-0.1000", "0.5000", "3", "7", "0.0025", "4", "8", "0.0060", "0.0700"},
    // Both: the rules of the logarithm; the low cut knows none.
    {0, 1, 1, "-1000", "5000", "3", "7", "25", "4", "8", "0.060", "700"},
    {1, 1, 1, "-100.0", "500.0", "3", "7", "2.5", "4", "8", "0.060", "70.0"},
    {2, 1, 1, "-10.00", "50.00", "3", "7", "0.25", "4", "8", "0.060", "7.00"},
    {3, 1, 1, "-1.000", "5.000", "3", "7", "0.025", "4", "8", "0.060", "0.700"},
    {4, 1, 1, "-0.1000", "0.5000", "3", "7", "0.0025", "4", "8", "0.060", "0.0700"},
};
// 3 + (700 + 1000) x 4 / 6000 = 4.133 as a power of ten.
constexpr const char* AlarmPowerText = "1.35E4";

using ShownTexts = std::map<std::string, std::string>;

ShownTexts Expected(const Shows& state) {
  ShownTexts texts{{"txtStMin", state.stMin},
                   {"txtStMax", state.stMax},
                   {"txtIndMin", state.indMin},
                   {"txtIndMax", state.indMax},
                   {"txtPVShift", state.shift},
                   {"txtRecRangeMin", state.recMin},
                   {"txtRecRangeMax", state.recMax},
                   {"txtSecu", state.lowCut},
                   {"cmbDecimal", std::to_string(state.decimal)},
                   {"cmbTaisu", std::to_string(state.log)},
                   {"cmbFtio", std::to_string(state.fValue)}};
  for (const char* number : {"1", "2", "3", "4"}) {
    texts["txtAlarmSet" + std::string(number)] = state.alarm;
    texts["lblAlarmSetInput" + std::string(number)] = state.log == 1 ? AlarmPowerText : "";
  }
  return texts;
}

class OperationCascade : public OperationScreen {
protected:
  void SetUp() override {
    OperationScreen::SetUp();
    PutIntegers();
  }
  static void PutIntegers() {
    for (const auto& [tag, value] : Integers) {
      Put("C", Channel, tag, value);
    }
    for (const char* tag : {"A1VL", "A2VL", "A3VL", "A4VL"}) {
      Put("A", Channel, tag, Alarm);
    }
    Put("H", 0, "FPOI", 3);
  }
  static void PutState(const Shows& state) {
    Put("C", Channel, "POIN", state.decimal);
    Put("C", Channel, "TAIS", state.log);
    Put("C", Channel, "FTIO", state.fValue);
  }
  static const Shows& StateOf(int decimal, int log, int fValue) {
    return *std::ranges::find_if(States, [&](const Shows& state) {
      return state.decimal == decimal && state.log == log && state.fValue == fValue;
    });
  }
  // From a state, the pick of one row: every control shows what the state afterwards shows, and no control
  // beside those shows anything else than before.
  void ExpectPick(const Shows& from, const char* list, int row, const Shows& to) {
    PutState(from);
    const WholeStore before;
    Open(Channel, [&](OperationChSetScreen& screen) {
      ShownTexts expected = FieldsShownOf(screen);
      for (const auto& [name, text] : Expected(to)) {
        expected[name] = text;
      }
      const ShownTexts shownBefore = FieldsShownOf(screen);
      ASSERT_TRUE(Pick(screen, list, row));
      EXPECT_EQ(expected, FieldsShownOf(screen))
          << list << " from " << from.decimal << from.log << from.fValue;
      for (const Control* control : screen.controls) {
        const auto text = shownBefore.find(control->name);
        const bool changed = text != shownBefore.end() && expected.at(control->name) != text->second;
        EXPECT_EQ(changed && control->name != list, control->marked) << control->name;
      }
      ExpectUsable(screen, to.log == 1);
    });
    EXPECT_EQ(before, WholeStore()) << "no cascade stores";
  }
  void ExpectUsable(OperationChSetScreen& screen, bool log) {
    const std::set<std::string> withLog{"lblAlarmSetInput1", "lblAlarmSetInput2", "lblAlarmSetInput3",
                                        "lblAlarmSetInput4"};
    const std::set<std::string> withoutLog{"txtAlarmSet1", "txtAlarmSet2", "txtAlarmSet3", "txtAlarmSet4",
                                           "cmbDecimal",   "cmbSUBCh",     "cmbFtio"};
    for (const Control* control : screen.controls) {
      const bool usable = withLog.contains(control->name)      ? log
                          : withoutLog.contains(control->name) ? !log
                                                               : true;
      EXPECT_EQ(usable, control->enabled) << control->name;
    }
  }
};

TEST_F(OperationCascade, EveryStateIsShownAsItIsLoaded) {
  for (const Shows& state : States) {
    PutState(state);
    Open(Channel, [&](OperationChSetScreen& screen) {
      const ShownTexts shown = FieldsShownOf(screen);
      for (const auto& [name, text] : Expected(state)) {
        EXPECT_EQ(text, shown.at(name)) << name << state.decimal << state.log << state.fValue;
      }
      for (const Control* control : screen.controls) {
        EXPECT_FALSE(control->marked) << control->name;
      }
      ExpectUsable(screen, state.log == 1);
    });
  }
}

TEST_F(OperationCascade, APositionMovesThePointOfWhatStandsInIt) {
  for (const Shows& from : States) {
    for (int row = 0; row <= 4 && from.log == 0; ++row) {
      ExpectPick(from, "cmbDecimal", row, StateOf(row, 0, from.fValue));
    }
  }
}

TEST_F(OperationCascade, TheLogarithmReadsTheIntegersAsExponents) {
  for (const Shows& from : States) {
    for (const int row : {0, 1}) {
      ExpectPick(from, "cmbTaisu", row, StateOf(from.decimal, row, from.fValue));
    }
  }
}

TEST_F(OperationCascade, TheFValueMovesRecordRangeLowCutAndAlarms) {
  for (const Shows& from : States) {
    for (int row = 0; row <= 1 && from.log == 0; ++row) {
      ExpectPick(from, "cmbFtio", row, StateOf(from.decimal, 0, row));
    }
  }
}

TEST_F(OperationCascade, OfRugHaveNoLogarithm) {
  Start("RUG");
  Put("H", 0, "FPOI", 3);
  Put("C", 40, "POIN", 2);
  Put("C", 40, "RMAX", 1234);
  Put("C", 40, "TAIS", 1);
  Open(40, [&](OperationChSetScreen& screen) {
    EXPECT_FALSE(Pick(screen, "cmbTaisu", 1)) << "hidden";
    EXPECT_EQ("12.34", Shown(screen, "txtRecRangeMax"));
    Pick(screen, "cmbDecimal", 1);
    EXPECT_EQ("123.4", Shown(screen, "txtRecRangeMax"));
    Pick(screen, "cmbFtio", 1);
    EXPECT_EQ("1.234", Shown(screen, "txtRecRangeMax"));
  });
}

// --- Blanks and refusals

TEST_F(OperationCascade, AnIntegerThatIsNoExponentIsBlankAndStaysBlank) {
  PutState(StateOf(1, 0, 0));
  Put("C", Channel, "SMIN", -9);
  Put("C", Channel, "SMAX", 10);
  Put("C", Channel, "RMAX", -10);
  Open(Channel, [&](OperationChSetScreen& screen) {
    Pick(screen, "cmbTaisu", 1);
    EXPECT_EQ("-9", Shown(screen, "txtIndMin"));
    EXPECT_EQ("", Shown(screen, "txtIndMax"));
    EXPECT_EQ("", Shown(screen, "txtRecRangeMax"));
    EXPECT_EQ("", Caption(screen, "lblAlarmSetInput1")) << "no scale";
    Enter(screen, "txtIndMax", "9");
    EXPECT_NE("", Caption(screen, "lblAlarmSetInput1"));
    Pick(screen, "cmbTaisu", 0);
    EXPECT_EQ("0.9", Shown(screen, "txtIndMax"));
    EXPECT_EQ("", Shown(screen, "txtRecRangeMax"));
  });
}

TEST_F(OperationCascade, ABlankFieldIsSkipped) {
  PutState(StateOf(2, 0, 0));
  Put("C", Channel, "MMIN", -32768);
  Open(Channel, [&](OperationChSetScreen& screen) {
    EXPECT_EQ("", Shown(screen, "txtStMin"));
    Pick(screen, "cmbDecimal", 1);
    EXPECT_EQ("", Shown(screen, "txtStMin"));
    EXPECT_EQ("500.0", Shown(screen, "txtStMax"));
  });
}

TEST_F(OperationCascade, AnExponentAboveNineIsRefused) {
  PutState(StateOf(0, 1, 0));
  ExpectMessage("-9から9の値を入力してください");
  Open(Channel, [&](OperationChSetScreen& screen) { EXPECT_FALSE(Enter(screen, "txtIndMin", "10")); });
}

// --- Alarms under the logarithm

TEST_F(OperationCascade, TheScaleRewritesTheAlarmsAsItIsTyped) {
  PutState(StateOf(2, 1, 0));
  Open(Channel, [&](OperationChSetScreen& screen) {
    user.Type(FieldNamed(screen, "txtIndMax"), u"3"); // both exponents 3
    for (const char* number : {"1", "2", "3", "4"}) {
      EXPECT_EQ("1.00E3", Caption(screen, "lblAlarmSetInput" + std::string(number)));
    }
  });
}

TEST_F(OperationCascade, AnAlarmIsSetAsAPowerOnTheScaleOfThisChannel) {
  PutState(StateOf(2, 1, 1));
  Open(Channel, [&](OperationChSetScreen& screen) {
    platform.screens.Expect<AlarmSettingScreen>("frmAlarmSetting", [&](AlarmSettingScreen& alarm) {
      EXPECT_EQ("1.35", ToUtf8(alarm.txtAlarmSet.text));
      user.Type(alarm.txtAlarmSet, u"1.00");
      user.Choose(alarm.cmbAlarmSet, 9 + 5); // 10^5, half of 3 to 7: half of -10.00 to 50.00
      user.Click(alarm.btnOk);
    });
    user.Click(LabelNamed(screen, "lblAlarmSetInput3"));
    EXPECT_EQ("1.00E5", Caption(screen, "lblAlarmSetInput3"));
    EXPECT_EQ("20.00", Shown(screen, "txtAlarmSet3"));
    EXPECT_EQ("7.00", Shown(screen, "txtAlarmSet2"));
    Press(screen, "OKButton");
  });
  EXPECT_EQ(2000, Stored("A", Channel, "A3VL"));
}

// --- Units

TEST_F(OperationCascade, BothUnitsAreChosenFromTheWholeList) {
  for (const auto& [button, label] :
       {std::pair{"cmdUnitSelect", "lblSelUnit"}, {"cmdSekiUnitSelect", "lblSelSekiUnit"}}) {
    Open(Channel, [&, name = button, shown = label](OperationChSetScreen& screen) {
      const std::string before = Caption(screen, shown);
      platform.screens.Expect<SelectUnitScreen>("frmSelectUnit", [&](SelectUnitScreen& units) {
        EXPECT_EQ(6, units.fgrUnit.Cols());
        user.Click(units.btnCancel);
      });
      Press(screen, name);
      EXPECT_EQ(before, Caption(screen, shown));
      platform.screens.Expect<SelectUnitScreen>(
          "frmSelectUnit", [&](SelectUnitScreen& units) { user.DoubleClick(units.fgrUnit, 13, 4); });
      Press(screen, name);
      EXPECT_EQ("%", Caption(screen, shown));
    });
  }
}

} // namespace
} // namespace loader::test
