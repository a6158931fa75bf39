#include "qt/Binder.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QHash>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>

#include "qt/BindingRules.h"
#include "qt/ChangeMark.h"
#include "qt/PageOf.h"
#include "qt/QtText.h"
#include "qt/UserInterface.h"

namespace loader {

namespace {

// The objects of the form that can show a record, by name. Widgets of Qt's own making (a view inside a list)
// carry names of their own and never match.
QHash<QString, QObject*> NamedObjects(QWidget& form) {
  QHash<QString, QObject*> named{{form.objectName(), &form}};
  for (QObject* object : form.findChildren<QObject*>()) {
    const bool shows = object->isWidgetType() || qobject_cast<QAction*>(object) != nullptr;
    if (shows && !named.contains(object->objectName())) {
      named.insert(object->objectName(), object);
    }
  }
  return named;
}

void ShowEnabled(Binding& binding) {
  if (!binding.fresh && binding.enabled == binding.control.enabled) {
    return;
  }
  binding.enabled = binding.control.enabled;
  if (auto* action = qobject_cast<QAction*>(&binding.object)) {
    action->setEnabled(binding.enabled);
  } else {
    binding.widget->setEnabled(binding.enabled);
  }
}

void ShowVisible(Binding& binding) {
  if (!binding.fresh && binding.visible == binding.control.visible) {
    return;
  }
  binding.visible = binding.control.visible;
  if (auto* action = qobject_cast<QAction*>(&binding.object)) {
    action->setVisible(binding.visible);
  } else if (auto* menu = qobject_cast<QMenu*>(&binding.object)) {
    menu->menuAction()->setVisible(binding.visible);
  } else {
    binding.widget->setVisible(binding.visible);
  }
}

// A label that has a colour of its own keeps it.
void ShowMarked(Binding& binding) {
  if (binding.marked == binding.control.marked || binding.hasBackColour || binding.widget == nullptr) {
    return;
  }
  binding.marked = binding.control.marked;
  ShowChangeMark(*binding.widget, binding.marked);
}

// A label that has a handler: the others are no more than text.
bool CanBeClicked(const Control& control) {
  return control.kind == ControlKind::Label && static_cast<const Label&>(control).onClick != nullptr;
}

void PrepareForm(QWidget& form) {
  // A page that scrolls is no place for the keyboard; its fields are, and it follows them.
  for (QScrollArea* page : form.findChildren<QScrollArea*>()) {
    page->setFocusPolicy(Qt::NoFocus);
  }
  // What comes and goes while the form is open keeps its place, so that nothing else moves.
  for (QWidget* widget : form.findChildren<QWidget*>()) {
    if (widget->property("keepsPlace").toBool()) {
      QSizePolicy policy = widget->sizePolicy();
      policy.setRetainSizeWhenHidden(true);
      widget->setSizePolicy(policy);
    }
  }
  // Enter in a field presses no button, unless the form names one as the default.
  if (qobject_cast<QDialog*>(form.window()) != nullptr) {
    for (QPushButton* button : form.findChildren<QPushButton*>()) {
      button->setAutoDefault(button->isDefault());
    }
  }
}

} // namespace

std::string WidgetName(const std::string& controlName) {
  const std::size_t open = controlName.find('(');
  if (open == std::string::npos || controlName.back() != ')') {
    return controlName;
  }
  return controlName.substr(0, open) + "_" + controlName.substr(open + 1, controlName.size() - open - 2);
}

Binder::Binder(UserInterface& userInterface, Screen& boundScreen, QWidget& formWindow,
               const FormMaker& makePage, std::vector<std::string>& missing)
    : screen(boundScreen), window(formWindow), userInterface_(userInterface), makePage_(makePage),
      missing_(missing), unbound_(boundScreen.controls.begin(), boundScreen.controls.end()) {
  FindPages();
  BindForm(window);
  TellMissing();
  userInterface_.Opened(*this);
}

Binder::~Binder() {
  Release();
}

void Binder::Release() {
  userInterface_.Closed(*this);
  if (byControl_.empty()) {
    return; // done before: the widgets may have gone since
  }
  for (Binding& binding : bindings_) {
    Leave(binding.object);
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&binding.object)) {
      Leave(*tabs->tabBar());
    }
  }
  for (const QPointer<QObject>& helper : helpers_) {
    if (helper != nullptr) {
      Leave(*helper);
      helper->deleteLater(); // it may be the one that has closed the screen
    }
  }
  byObject_.clear();
  byControl_.clear();
}

void Binder::Watch(QObject& object, Binding& binding) {
  byObject_.emplace(&object, &binding);
  if (object.isWidgetType()) {
    object.installEventFilter(this);
  }
}

void Binder::Leave(QObject& object) {
  QObject::disconnect(&object, nullptr, this, nullptr);
  object.removeEventFilter(this);
}

void Binder::FindPages() {
  for (QTabWidget* tabs : window.findChildren<QTabWidget*>()) {
    shownPages_.emplace_back(tabs, tabs->currentIndex());
    for (int index = 0; index < tabs->count(); ++index) {
      auto* page = qobject_cast<QScrollArea*>(tabs->widget(index));
      if (page != nullptr && page->widget() == nullptr) {
        latePages_.push_back(page);
      }
    }
  }
}

void Binder::WatchPages() {
  for (auto& [tabs, page] : shownPages_) {
    if (page != tabs->currentIndex()) {
      page = tabs->currentIndex();
      pageTurned = true;
    }
  }
}

bool Binder::MakeShownPages() {
  const auto shown = std::stable_partition(latePages_.begin(), latePages_.end(),
                                           [this](QScrollArea* page) { return !page->isVisibleTo(&window); });
  const std::vector<QScrollArea*> pages(shown, latePages_.end());
  latePages_.erase(shown, latePages_.end());
  // cppcheck-suppress invalidContainer ; they are copies of what was erased
  for (QScrollArea* page : pages) {
    MakePage(*page);
  }
  if (!pages.empty()) {
    TellMissing();
  }
  return !pages.empty();
}

void Binder::MakePage(QScrollArea& page) {
  std::unique_ptr<QWidget> contents = makePage_(screen.name + "." + page.objectName().toStdString());
  if (contents == nullptr) {
    throw std::logic_error("no form for the page " + page.objectName().toStdString() + " of " + screen.name);
  }
  QWidget& form = *contents;
  page.setWidget(contents.release());
  BindForm(form);
}

void Binder::TellMissing() {
  if (!latePages_.empty()) {
    return;
  }
  for (const Control* control : unbound_) {
    // A separator needs no widget.
    if (control->kind != ControlKind::MenuEntry || static_cast<const MenuEntry*>(control)->caption != u"-") {
      missing_.push_back(screen.name + "." + control->name);
      qWarning("no widget for %s", missing_.back().c_str());
    }
  }
}

void Binder::BindForm(QWidget& form) {
  PrepareForm(form);
  const QHash<QString, QObject*> objects = NamedObjects(form);
  std::erase_if(unbound_, [&](Control* control) {
    QObject* object = objects.value(QString::fromStdString(WidgetName(control->name)));
    if (object != nullptr) {
      Bind(*control, *object);
    }
    return object != nullptr;
  });
}

void Binder::Bind(Control& control, QObject& object) {
  const BindingRule& rule = RuleOf(control.kind);
  if (!rule.accepts(object)) {
    throw std::logic_error("the widget of " + control.name + " on " + screen.name + " is of another kind");
  }
  auto* widget = object.isWidgetType() ? static_cast<QWidget*>(&object) : nullptr;
  Binding& binding = bindings_.emplace_back(Binding{.control = control, .object = object, .widget = widget});
  Watch(object, binding);
  byControl_.emplace(&control, &binding);
  if (widget != nullptr) {
    if (!widget->accessibleName().isEmpty()) {
      widget->setProperty(NamedByForm, true);
      widget->setToolTip(widget->accessibleName()); // the form names what no caption on the screen names
    } else if (qobject_cast<QLabel*>(widget) == nullptr) {
      widget->setAccessibleName(object.objectName()); // until a caption names it; a label's text is its name
    }
    if (const auto* tabs = qobject_cast<const QTabWidget*>(widget)) {
      Watch(*tabs->tabBar(), binding); // the part that takes the focus
    }
  }
  rule.listen(userInterface_, *this, binding);
}

void Binder::RefreshWidgets() {
  const QString title = ToQt(screen.caption);
  if (window.windowTitle() != title) {
    window.setWindowTitle(title);
  }
  // A page that is made on the way adds bindings, which are shown in the same pass.
  std::size_t next = 0;
  do {
    for (; next < bindings_.size(); ++next) {
      Binding& binding = bindings_[next];
      RuleOf(binding.control.kind).show(binding);
      ShowEnabled(binding);
      ShowVisible(binding);
      ShowMarked(binding);
      binding.fresh = false;
    }
  } while (MakeShownPages());
  WatchPages();
}

void Binder::ClearMarks() {
  for (Binding& binding : bindings_) {
    binding.control.marked = false;
    ShowMarked(binding);
  }
}

void Binder::EnterPage() {
  const auto* page = qobject_cast<QScrollArea*>(window.focusWidget());
  if (page == nullptr) {
    return;
  }
  for (QWidget* field = page->nextInFocusChain(); field != page; field = field->nextInFocusChain()) {
    if ((field->focusPolicy() & Qt::TabFocus) != 0 && field->isEnabled() && field->isVisibleTo(page) &&
        page->isAncestorOf(field)) {
      field->setFocus(Qt::OtherFocusReason);
      return;
    }
  }
}

void Binder::EnterTabsOf(const Control& control) {
  const QWidget* widget = WidgetOf(control);
  const bool waits = std::find(unbound_.begin(), unbound_.end(), &control) != unbound_.end();
  for (const auto& [tabs, page] : shownPages_) {
    const bool on = widget != nullptr && tabs->isAncestorOf(widget);
    if (tabs->currentWidget() != nullptr && (waits || (on && !tabs->currentWidget()->isAncestorOf(widget)))) {
      tabs->tabBar()->setFocus(Qt::OtherFocusReason);
      return;
    }
  }
}

bool Binder::CanTakeFocus(const Control& control) const {
  const QWidget* widget = WidgetOf(control);
  return widget != nullptr && widget->isVisibleTo(&window) && widget->isEnabledTo(&window);
}

bool Binder::GiveFocus(const Control& control) {
  if (!CanTakeFocus(control)) {
    return false;
  }
  QWidget* widget = WidgetOf(control);
  widget->setFocus(Qt::OtherFocusReason);
  // A page follows the Tab key by itself, but not a focus that the program gives.
  if (QScrollArea* page = PageOf(*widget)) {
    page->ensureWidgetVisible(widget);
  }
  return true;
}

QWidget* Binder::WidgetOf(const Control& control) const {
  const auto found = byControl_.find(&control);
  return found == byControl_.end() ? nullptr : found->second->widget;
}

Control* Binder::ControlOf(const QObject& object) const {
  const auto found = byObject_.find(&object);
  return found == byObject_.end() ? nullptr : &found->second->control;
}

namespace {

// Of keys that do nothing by themselves or that scroll the page: none.
bool Types(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) {
    return true; // letters that an input method makes
  }
  const auto& key = static_cast<const QKeyEvent&>(event);
  return !key.text().isEmpty() || key.matches(QKeySequence::Paste);
}

// Given by the program or by a click, perhaps on the rim that was left to be seen; not the one that comes
// back from a box or a list.
bool IsNewFocus(const QFocusEvent& event) {
  return event.reason() == Qt::OtherFocusReason || event.reason() == Qt::MouseFocusReason;
}

// Brings back what was scrolled away. A page does so by itself for the Tab key only, and not for a focus that
// the program gives, nor for a letter that goes into a field.
void ShowOnItsPage(QWidget& widget) {
  if (IsScrolledAway(widget)) {
    PageOf(widget)->ensureWidgetVisible(&widget);
  }
}

} // namespace

bool Binder::eventFilter(QObject* watched, QEvent* event) {
  Control* control = ControlOf(*watched);
  if (control == nullptr) {
    return false;
  }
  switch (event->type()) {
  case QEvent::FocusIn:
    if (IsNewFocus(*static_cast<const QFocusEvent*>(event))) {
      ShowOnItsPage(static_cast<QWidget&>(*watched));
    }
    EnterDialog(*watched);
    userInterface_.FocusArrived(*control, static_cast<QFocusEvent*>(event)->reason());
    return false;
  case QEvent::FocusOut:
    userInterface_.FocusGone(*control, static_cast<QFocusEvent*>(event)->reason());
    return false;
  case QEvent::Wheel:
    // The wheel scrolls the page; it never changes a list that happens to pass under it, nor turns to another
    // page, past the check of the field that has the keyboard.
    if (control->kind == ControlKind::ListBox || control->kind == ControlKind::TabPages) {
      event->ignore();
      return true;
    }
    return false;
  case QEvent::MouseButtonPress:
    if (composing_ == watched) {
      PressWhileComposing(static_cast<TextField&>(*control), *static_cast<const QMouseEvent*>(event));
    }
    return false;
  case QEvent::MouseButtonRelease: {
    const auto& release = static_cast<const QMouseEvent&>(*event);
    const auto& widget = static_cast<const QWidget&>(*watched);
    if (CanBeClicked(*control) && release.button() == Qt::LeftButton &&
        widget.rect().contains(release.position().toPoint())) {
      userInterface_.Act(
          *control, [] {}, static_cast<Label*>(control)->onClick);
    }
    return false;
  }
  case QEvent::KeyPress:
  case QEvent::InputMethod:
    if (control->kind == ControlKind::TextField && Types(*event)) {
      ShowOnItsPage(static_cast<QWidget&>(*watched));
    }
    if (event->type() == QEvent::InputMethod) {
      return control->kind == ControlKind::TextField &&
             Composed(static_cast<TextField&>(*control), static_cast<QWidget&>(*watched),
                      *static_cast<const QInputMethodEvent*>(event));
    }
    if (control->kind == ControlKind::TextField) {
      return KeyOnField(static_cast<TextField&>(*control), *static_cast<QKeyEvent*>(event));
    }
    return KeyOnClickable(*control, static_cast<QKeyEvent*>(event)->key());
  default:
    return false;
  }
}

// A dialog opens to have its first field typed over, as if the Tab key had come to it.
void Binder::EnterDialog(QObject& first) {
  const bool opens = !std::exchange(entered_, true) && qobject_cast<QDialog*>(&window) != nullptr;
  auto* edit = qobject_cast<QLineEdit*>(&first);
  if (opens && edit != nullptr && !edit->hasSelectedText()) {
    edit->selectAll();
  }
}

// A key that is held down counts once: it would take away the message of the field that it has had checked.
bool Binder::KeyOnField(TextField& field, const QKeyEvent& key) {
  const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  if (enter && composing_ != nullptr && composing_ == WidgetOf(field)) {
    return true; // meant for the composition, neither for the field nor for a default button
  }
  if (!enter || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
    return false;
  }
  return key.isAutoRepeat() || !userInterface_.TakeField(field);
}

// Enter presses the button that has the focus, Enter or the space bar a label that can be clicked.
bool Binder::KeyOnClickable(Control& control, int key) {
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (control.kind == ControlKind::Button && enter) {
    userInterface_.Act(
        control, [] {}, static_cast<Button&>(control).onClick);
    return true;
  }
  if (CanBeClicked(control) && (enter || key == Qt::Key_Space)) {
    userInterface_.Act(
        control, [] {}, static_cast<Label&>(control).onClick);
    return true;
  }
  return false;
}

} // namespace loader
