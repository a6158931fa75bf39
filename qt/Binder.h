// Ties the widgets of a form to the control records of a screen by object name: record "cmbDI(3)" to widget
// "cmbDI_3". It holds no rule of any screen.
//
// | record     | widget                 | what the user does      |
// | TextField  | QLineEdit              | each edit               |
// | ListBox    | ListBoxView            | each choice             |
// | Label      | QLabel                 | click (when handled)    |
// |            | QGroupBox, as a title  | nothing                 |
// | Button     | QAbstractButton        | click                   |
// | CheckBox   | QAbstractButton        | click                   |
// | ToolButton | QAction                | trigger                 |
// | MenuEntry  | QAction or QMenu       | trigger                 |
// | Frame      | QGroupBox, any QWidget | nothing                 |
// | TabPages   | QTabWidget             | page change             |
// | Picture    | LampView               | nothing                 |
// | Grid       | GridView               | cell, click, open       |
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/Controls.h"
#include "qt/Forms.h"

class QInputMethodEvent;
class QKeyEvent;
class QMouseEvent;
class QScrollArea;
class QTabWidget;
class QWidget;

namespace loader {

class UserInterface;

// A record, its widget, and what the widget was last given.
struct Binding {
  Control& control;
  QObject& object;
  QWidget* widget; // null for an action
  bool fresh = true;
  bool enabled = true;
  bool visible = true;
  bool marked = false;
  std::u16string text{};
  bool hasBackColour = false;
  Colour backColour = 0;
};

class Binder final : public QObject {
public:
  // Widgets and records of the same name have to be of matching kinds: a mismatch is a defect of the form
  // (std::logic_error). Pages that the form leaves empty come from `makePage` when they are first shown. A
  // record that has no widget when all pages are there is passed over and added to `missing`: "screen.name".
  // Both have to outlive the binder.
  Binder(UserInterface& userInterface, Screen& boundScreen, QWidget& formWindow, const FormMaker& makePage,
         std::vector<std::string>& missing);
  ~Binder() override;

  // Cuts widgets and records apart for good: the screen has closed, and its records may go before the form.
  void Release();
  // An object that was made beside a widget, to reach its record: it goes when they are cut apart.
  void GoesWithRecords(QObject& helper) { helpers_.emplace_back(&helper); }
  // Shows what differs between the records and what the widgets were given, and makes the page that is shown
  // if it isn't there yet. Focus requests stay.
  void RefreshWidgets();
  // What a cascade has marked is seen now: the user goes on.
  void ClearMarks();
  // Gives the keyboard to the first field of a page that it came to when there was nothing on it yet.
  void EnterPage();
  // Gives the keyboard to the tabs of a control whose page does not show; does nothing with another control.
  void EnterTabsOf(const Control& control);
  // A composition in the field that an input method has in the making becomes text, as the user sees it.
  // Nothing is done where there is none.
  void EndComposition(const TextField& field);
  // False when the control is hidden, disabled or on another page.
  [[nodiscard]] bool CanTakeFocus(const Control& control) const;
  // False, and nothing is done, when the control can't take it.
  bool GiveFocus(const Control& control);

  [[nodiscard]] QWidget* WidgetOf(const Control& control) const;
  [[nodiscard]] Control* ControlOf(const QObject& object) const;

  Screen& screen;
  QWidget& window;
  // A page has come to the front since this was last looked at, by the user or by the program.
  bool pageTurned = false;

  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  // Ties the records that have no widget yet to the widgets of a form: the window's or a page's.
  void BindForm(QWidget& form);
  void Bind(Control& control, QObject& object);
  void Watch(QObject& object, Binding& binding);
  void Leave(QObject& object);
  void FindPages();
  void WatchPages();
  // True when a page was made.
  bool MakeShownPages();
  void MakePage(QScrollArea& page);
  void TellMissing(); // nothing as long as a page is to come
  bool KeyOnClickable(Control& control, int key);
  void EnterDialog(QObject& first);
  bool KeyOnField(TextField& field, const QKeyEvent& key);
  // True when the field has been given another event in its place.
  bool Composed(TextField& field, QWidget& widget, const QInputMethodEvent& event);
  void PressWhileComposing(const TextField& field, const QMouseEvent& press);

  UserInterface& userInterface_;
  const FormMaker& makePage_;
  std::vector<std::string>& missing_;
  std::vector<Control*> unbound_;
  std::vector<std::pair<QTabWidget*, int>> shownPages_;
  std::vector<QScrollArea*> latePages_; // still empty
  std::deque<Binding> bindings_;        // fixed addresses
  std::vector<QPointer<QObject>> helpers_;
  bool entered_ = false;               // a control has had the keyboard
  const QObject* composing_ = nullptr; // the field in which an input method is at work
  QString composed_;                   // what it shows there
  std::unordered_map<const QObject*, Binding*> byObject_;
  std::unordered_map<const Control*, Binding*> byControl_;
};

// The property of a widget whose spoken name its form gives: no caption replaces it.
constexpr const char* NamedByForm = "namedByForm";

// "cmbDI_3" for "cmbDI(3)".
[[nodiscard]] std::string WidgetName(const std::string& controlName);

} // namespace loader
