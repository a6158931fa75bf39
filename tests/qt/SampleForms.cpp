#include "tests/qt/SampleForms.h"

#include <QDialog>
#include <QMainWindow>

#include "ui_frmAsk.h"
#include "ui_frmSample.h"

namespace loader::test {

namespace {
template <typename Window, typename Form> std::unique_ptr<QWidget> Make() {
  auto window = std::make_unique<Window>();
  Form form;
  form.setupUi(window.get());
  return window;
}
} // namespace

std::unique_ptr<QWidget> MakeSampleForm(std::string_view screenName) {
  if (screenName == "frmSample") {
    return Make<QMainWindow, Ui::frmSample>();
  }
  if (screenName == "frmAsk") {
    return Make<QDialog, Ui::frmAsk>();
  }
  return nullptr;
}

SampleScreen::SampleScreen() : Screen("frmSample") {
  tbsPages.pages = {{u"first"}, {u"second"}, {u"third"}};
  tbsPages.current = 0;
  menuFile.caption = u"ファイル(&F)";
  smenuOpen.caption = u"開く(O)";
  menuLine.caption = u"-";
  smenuMark.caption = u"COM1";
  btnApply.caption = u"適用";
  lblName.caption = u"タグNo.1";
}

void SampleTest::ShowSample() {
  platform.screens.Show(screen);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
}

void SampleTest::TypeOver(QLineEdit& edit, const char* text) {
  edit.setFocus(Qt::MouseFocusReason);
  edit.selectAll();
  QTest::keyClicks(&edit, QString::fromLatin1(text));
}

void SampleTest::AcceptOnlyGood(TextField& field) {
  field.onLostFocus = [this, &field] {
    ++checks;
    if (field.text != u"good") {
      ShowMessage(u"数字ではありません。");
      RequestFocusAndSelectAll(field);
    }
  };
}

} // namespace loader::test
