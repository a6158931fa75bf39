// What the tests of the alarm dialog share: the contract of a channel screen, and what became of it.
#pragma once

#include "channel/InputTypeRules.h"
#include "dialogs/frmAlarmSetting.h"
#include "tests/dialogs/DialogFixture.h"

namespace loader::test {

constexpr int KindVolts = 32; // 1 to 5 V, at position 3

class AlarmSetting : public Dialogs {
protected:
  void SetUp() override { Start(Kov); }
  bool Show(const std::function<void(AlarmSettingScreen&)>& act) {
    platform.screens.Expect<AlarmSettingScreen>("frmAlarmSetting", act);
    const bool applied = ShowAlarmSetting(caller);
    platform.time.Advance(100); // the guard
    return applied;
  }
  bool Enter(AlarmSettingScreen& screen, std::u16string_view mantissa, int exponent) {
    return user.Choose(screen.cmbAlarmSet, exponent + 9) && user.Type(screen.txtAlarmSet, mantissa) &&
           user.Click(screen.btnOk);
  }
  bool Enter(std::u16string_view mantissa, int exponent) {
    return Show([&](AlarmSettingScreen& screen) { Enter(screen, mantissa, exponent); });
  }
  void Scale(std::u16string_view minimum, std::u16string_view maximum, std::u16string_view exponentMinimum,
             std::u16string_view exponentMaximum) {
    caller.txtStMin = minimum;
    caller.txtStMax = maximum;
    caller.txtIndMin = exponentMinimum;
    caller.txtIndMax = exponentMaximum;
  }
  // A channel that refers to channel `other`, from 0; itself is channel 4.
  void ReferTo(int other) {
    caller.cmbInputType = 40;
    caller.gnChNo = 3;
    caller.cmbInputOtch = other;
  }
  // Label and value of an alarm, from 1.
  void Stands(int alarm, std::u16string_view label, std::u16string_view value) {
    caller.lblAlarmSetInput.at(static_cast<std::size_t>(alarm - 1)) = label;
    caller.txtAlarmSet.at(static_cast<std::size_t>(alarm - 1)) = value;
  }
  [[nodiscard]] std::string Label(int alarm = 1) const {
    return ToUtf8(caller.lblAlarmSetInput.at(static_cast<std::size_t>(alarm - 1)));
  }
  [[nodiscard]] std::string Value(int alarm = 1) const {
    return ToUtf8(caller.txtAlarmSet.at(static_cast<std::size_t>(alarm - 1)));
  }
  // Every field of the contract as a text.
  [[nodiscard]] Texts All() const {
    Texts all{caller.measuringChannel ? "measuring" : "operation",
              std::to_string(caller.alarmNumber),
              ToUtf8(caller.txtStMin),
              ToUtf8(caller.txtStMax),
              ToUtf8(caller.txtIndMin),
              ToUtf8(caller.txtIndMax),
              std::to_string(caller.cmbDecimal),
              std::to_string(caller.cmbInputType),
              std::to_string(caller.cmbInputOtch),
              std::to_string(caller.gnChNo)};
    for (int alarm = 1; alarm <= 4; ++alarm) {
      all.push_back(Label(alarm));
      all.push_back(Value(alarm));
    }
    return all;
  }
  void ExpectRangeMessage(std::u16string_view from, std::u16string_view to) {
    ExpectMessage(std::u16string(from) + u"から" + std::u16string(to) + u"の値を入力してください");
  }

  // 1.000 to 5.000 V stand for 10^0 to 10^2; POIN is 1.
  AlarmContract caller{
      .txtStMin = u"1.000",
      .txtStMax = u"5.000",
      .txtIndMin = u"0",
      .txtIndMax = u"2",
      .cmbDecimal = 1,
      .cmbInputType = KindVolts,
      .gnChNo = 3,
      .lblAlarmSetInput = {u"1.00E0", u"3.16E1", u"1.00E2", u"1.00E-1"},
      .txtAlarmSet = {u"1.000", u"4.000", u"5.000", u"-1.000"},
  };
};

} // namespace loader::test
