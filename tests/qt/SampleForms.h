// A window and a dialog with one control of each kind, and what a test needs to drive them.
#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>
#include <QWidget>
#include <memory>
#include <string_view>

#include "core/Text.h"
#include "qt/QtPlatform.h"
#include "qt/QtText.h"
#include "tests/qt/Boxes.h"

namespace loader::test {

[[nodiscard]] std::unique_ptr<QWidget> MakeSampleForm(std::string_view screenName);

struct SampleScreen : Screen {
  SampleScreen();
  MenuEntry menuFile{*this, "menuFile"};
  MenuEntry smenuOpen{*this, "smenuOpen"};
  MenuEntry menuLine{*this, "menuLine"};
  MenuEntry smenuMark{*this, "smenuMark(1)"};
  ToolButton tool{*this, "V(1)"};
  TabPages tbsPages{*this, "tbsPages"};
  Label lblName{*this, "lblName"};
  TextField txtName{*this, "txtName"};
  TextField txtValue{*this, "txtValue"};
  ListBox cmbKind{*this, "cmbKind"};
  ListBox cmbDI3{*this, "cmbDI(3)"};
  Label lblColour{*this, "lblColour"};
  Label lblPlain{*this, "lblPlain"};
  Button btnApply{*this, "btnApply"};
  CheckBox chkOn{*this, "chkOn"};
  Picture picLamp{*this, "picLamp(0)"};
  Frame fraBox{*this, "fraBox"};
  TextField txtOther{*this, "txtOther"};
  TextField txtAbove{*this, "txtAbove"};
  Grid fgrTable{*this, "fgrTable"};
};

struct AskScreen : Screen {
  AskScreen() : Screen("frmAsk") {}
  TextField txtYear{*this, "txtYear"};
  Button cmdEnd{*this, "cmdEnd"};
  Button cmdSet{*this, "cmdSet"};
};

// The platform with the sample forms; each test has its own.
class SampleTest : public testing::Test {
protected:
  // Shows the window and waits until it has the keyboard.
  void ShowSample();
  template <typename Widget> Widget& Find(const char* name) {
    auto* widget = Window().findChild<Widget*>(QString::fromLatin1(name));
    if (widget == nullptr) {
      throw std::logic_error(std::string("no such widget: ") + name);
    }
    return *widget;
  }
  QWidget& Window() { return *platform.screens.WindowOf(screen); }
  void Click(QWidget& widget) { QTest::mouseClick(&widget, Qt::LeftButton); }
  // True as soon as the widget has the keyboard: a window is activated by an event.
  [[nodiscard]] bool GetsFocus(const QWidget& widget) {
    return QTest::qWaitFor([&] { return widget.hasFocus(); });
  }
  // What a user does who types over the whole field.
  void TypeOver(QLineEdit& edit, const char* text);
  // A field that accepts "good" alone and otherwise complains and takes the focus back.
  void AcceptOnlyGood(TextField& field);

  Boxes boxes;
  SampleScreen screen; // outlives its window
  QtPlatform platform{{.programFolder = ".", .makeForm = MakeSampleForm, .portMap = {}}};
  int checks = 0; // that AcceptOnlyGood has run
};

} // namespace loader::test
