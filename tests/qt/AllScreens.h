// Every modal screen of the program, for the tests that hold for each of them: a new dialog is one more row.
#pragma once

#include <ostream>

#include "channelscreens/frmChSetting.h"
#include "channelscreens/frmFormula.h"
#include "channelscreens/frmOpSetting.h"
#include "channelscreens/frmOperationChSet.h"
#include "comm/frmIPSetting.h"
#include "comm/frmTimeChange.h"
#include "core/ModelProfile.h"
#include "dialogs/frmAlarmSetting.h"
#include "dialogs/frmConstSetting.h"
#include "dialogs/frmEMailTriggerSetting.h"
#include "dialogs/frmGroupSetting.h"
#include "dialogs/frmMsgSetting.h"
#include "dialogs/frmSelectUnit.h"
#include "dialogs/frmUnitSetting.h"
#include "mainwindow/frmAbout.h"
#include "operation/Formula.h"

namespace loader::test {

struct ModalScreen {
  const char* name;       // of the screen and of its form
  void (*show)();         // returns when it has closed; the main window is open
  const char* shape = ""; // of a screen that has more than one
  bool large = false;     // its fields scroll on a small screen
};

inline void PrintTo(const ModalScreen& screen, std::ostream* out) {
  *out << screen.name;
}

// A channel of 1 to 5 V on a scale of three decades.
inline AlarmContract SampleAlarm() {
  AlarmContract caller;
  caller.txtStMin = u"1.000";
  caller.txtStMax = u"5.000";
  caller.txtIndMin = u"0";
  caller.txtIndMax = u"3";
  caller.cmbInputType = 32;
  caller.lblAlarmSetInput.fill(u"3.16E2");
  caller.txtAlarmSet.fill(u"4.332");
  return caller;
}

// Three full terms in each formula: the longest texts that there are.
inline FormulaTable SampleFormulas() {
  FormulaTable formulas;
  for (auto& formula : formulas) {
    for (FormulaTerm& term : formula) {
      term = {.Rule = 1, .Func = 8, .Input1No = 10, .Input1Kind = 4, .Input2No = 11, .Input2Kind = 3};
      FormulaTermLength(term);
    }
  }
  return formulas;
}

inline const ModalScreen AllModalScreens[] = {
    {"frmAbout", ShowAbout},
    {"frmIPSetting", ShowIpSetting},
    {"frmTimeChange",
     [] {
       static const FlowCallbacks nobody;
       ShowTimeChange(nobody);
     }},
    {"frmGroupSetting", [] { ShowGroupSetting(0); }},
    {"frmMsgSetting", [] { ShowMsgSetting(0); }},
    {"frmUnitSetting", [] { ShowUnitSetting(0); }},
    {"frmConstSetting", [] { ShowConstSetting(0); }},
    {"frmEMailTriggerSetting", [] { ShowEMailTriggerSetting(0, [](int /*number*/) {}); }},
    {"frmSelectUnit", [] { static_cast<void>(SelectUnit(100, 40, false)); }},
    {"frmSelectUnit", [] { static_cast<void>(SelectUnit(0, 0, true)); }, "Temperatures"},
    {"frmAlarmSetting",
     [] {
       AlarmContract caller = SampleAlarm();
       static_cast<void>(ShowAlarmSetting(caller));
     }},
    {.name = "frmChSetting", .show = [] { ShowChSetting(0); }, .large = true},
    {.name = "frmOperationChSet",
     .show =
         [] {
           StoreFormulas(SampleFormulas(), 0);
           ShowOperationChSet(Profile.FirstOperationChannel - 1);
         },
     .large = true},
    {"frmFormula",
     [] {
       FormulaTable formulas = SampleFormulas();
       ShowFormula(formulas, 1);
     }},
    {"frmFormula",
     [] {
       FormulaTable formulas;
       ShowFormula(formulas, 1);
     },
     "Empty"},
    {"frmOpSetting", [] { static_cast<void>(ShowOpSetting(SampleFormulas(), 1, 2)); }},
};

} // namespace loader::test
