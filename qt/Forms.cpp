#include "qt/Forms.h"

#include <QDialog>
#include <QMainWindow>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <array>
#include <vector>

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

// The widgets that the Tab key meets from `first` on, round to it again.
std::vector<QWidget*> TabRound(QWidget& first) {
  std::vector<QWidget*> round;
  QWidget* widget = &first;
  do {
    if ((widget->focusPolicy() & Qt::TabFocus) != 0) {
      round.push_back(widget);
    }
    widget = widget->nextInFocusChain();
  } while (widget != &first);
  return round;
}

// Setting the order of a form with pages, Qt 6.4 can close the pages' fields into a round of their own that
// the Tab key neither enters nor leaves. They are tied behind the tabs again, in their order.
void JoinTabRounds(QWidget& window) {
  const auto* tabs = window.findChild<QTabWidget*>();
  if (tabs == nullptr) {
    return;
  }
  const std::vector<QWidget*> round = TabRound(*tabs->tabBar());
  for (int page = 0; page < tabs->count(); ++page) {
    for (QWidget* field : tabs->widget(page)->findChildren<QWidget*>()) {
      const bool named = !field->objectName().isEmpty() && (field->focusPolicy() & Qt::TabFocus) != 0 &&
                         !field->objectName().startsWith(QStringLiteral("qt_"));
      if (!named || std::find(round.begin(), round.end(), field) != round.end()) {
        continue;
      }
      QWidget* before = tabs->tabBar();
      for (QWidget* next : TabRound(*field)) {
        QWidget::setTabOrder(before, next);
        before = next;
      }
      return;
    }
  }
}

template <typename Window, typename Form> std::unique_ptr<QWidget> Make() {
  auto window = std::make_unique<Window>();
  Form form;
  form.setupUi(window.get());
  JoinTabRounds(*window);
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
