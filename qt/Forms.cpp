#include "qt/Forms.h"

#include <QDialog>
#include <QMainWindow>
#include <array>

#include "qt/FormIcons.h"
#include "qt/FormTexts.h"
#include "ui_frmAbout.h"
#include "ui_frmAlarmSetting.h"
#include "ui_frmChSetting.h"
#include "ui_frmConstSetting.h"
#include "ui_frmEMailTriggerSetting.h"
#include "ui_frmFormula.h"
#include "ui_frmGroupSetting.h"
#include "ui_frmIPSetting.h"
#include "ui_frmMsgSetting.h"
#include "ui_frmOpSetting.h"
#include "ui_frmOperationChSet.h"
#include "ui_frmParamLoader.h"
#include "ui_frmParamLoader_pageChannel.h"
#include "ui_frmParamLoader_pageDisplay.h"
#include "ui_frmParamLoader_pageEthernet.h"
#include "ui_frmParamLoader_pageMail.h"
#include "ui_frmParamLoader_pageOperation.h"
#include "ui_frmParamLoader_pageRecorder.h"
#include "ui_frmSelectUnit.h"
#include "ui_frmTimeChange.h"
#include "ui_frmUnitSetting.h"

namespace loader {

namespace {

template <typename Window, typename Form> std::unique_ptr<QWidget> Make() {
  auto window = std::make_unique<Window>();
  Form form;
  form.setupUi(window.get());
  return window;
}

struct FormEntry {
  std::string_view name;
  std::unique_ptr<QWidget> (*make)();
};

constexpr auto AllForms = std::to_array<FormEntry>({
    {"frmParamLoader", Make<QMainWindow, Ui::frmParamLoader>},
    {"frmParamLoader.pageChannel", Make<QWidget, Ui::frmParamLoader_pageChannel>},
    {"frmParamLoader.pageOperation", Make<QWidget, Ui::frmParamLoader_pageOperation>},
    {"frmParamLoader.pageRecorder", Make<QWidget, Ui::frmParamLoader_pageRecorder>},
    {"frmParamLoader.pageDisplay", Make<QWidget, Ui::frmParamLoader_pageDisplay>},
    {"frmParamLoader.pageEthernet", Make<QWidget, Ui::frmParamLoader_pageEthernet>},
    {"frmParamLoader.pageMail", Make<QWidget, Ui::frmParamLoader_pageMail>},
    {"frmAbout", Make<QDialog, Ui::frmAbout>},
    {"frmIPSetting", Make<QDialog, Ui::frmIPSetting>},
    {"frmTimeChange", Make<QDialog, Ui::frmTimeChange>},
    {"frmGroupSetting", Make<QDialog, Ui::frmGroupSetting>},
    {"frmMsgSetting", Make<QDialog, Ui::frmMsgSetting>},
    {"frmUnitSetting", Make<QDialog, Ui::frmUnitSetting>},
    {"frmSelectUnit", Make<QDialog, Ui::frmSelectUnit>},
    {"frmConstSetting", Make<QDialog, Ui::frmConstSetting>},
    {"frmAlarmSetting", Make<QDialog, Ui::frmAlarmSetting>},
    {"frmEMailTriggerSetting", Make<QDialog, Ui::frmEMailTriggerSetting>},
    {"frmChSetting", Make<QDialog, Ui::frmChSetting>},
    {"frmOperationChSet", Make<QDialog, Ui::frmOperationChSet>},
    {"frmFormula", Make<QDialog, Ui::frmFormula>},
    {"frmOpSetting", Make<QDialog, Ui::frmOpSetting>},
});

} // namespace

std::unique_ptr<QWidget> MakeForm(std::string_view name) {
  for (const FormEntry& form : AllForms) {
    if (form.name == name) {
      std::unique_ptr<QWidget> made = form.make();
      GiveFormTexts(*made, name);
      GiveFormIcons(*made, name);
      return made;
    }
  }
  return nullptr;
}

} // namespace loader
