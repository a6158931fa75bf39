#include "qt/Forms.h"

#include <QDialog>
#include <QMainWindow>
#include <array>

#include "ui_frmAbout.h"
#include "ui_frmIPSetting.h"
#include "ui_frmParamLoader.h"
#include "ui_frmTimeChange.h"

// The icons lie in a library, where nothing but this call pulls them in; it can't stand in a namespace.
static void LoadIcons() {
  Q_INIT_RESOURCE(icons);
}

namespace loader {

namespace {

template <typename Window, typename Form> std::unique_ptr<QWidget> Make() {
  auto window = std::make_unique<Window>();
  Form form;
  form.setupUi(window.get());
  return window;
}

struct FormEntry {
  std::string_view screenName;
  std::unique_ptr<QWidget> (*make)();
};

constexpr auto AllForms = std::to_array<FormEntry>({
    {"frmParamLoader", Make<QMainWindow, Ui::frmParamLoader>},
    {"frmAbout", Make<QDialog, Ui::frmAbout>},
    {"frmIPSetting", Make<QDialog, Ui::frmIPSetting>},
    {"frmTimeChange", Make<QDialog, Ui::frmTimeChange>},
});

} // namespace

std::unique_ptr<QWidget> MakeForm(std::string_view screenName) {
  LoadIcons();
  for (const FormEntry& form : AllForms) {
    if (form.screenName == screenName) {
      return form.make();
    }
  }
  return nullptr;
}

} // namespace loader
