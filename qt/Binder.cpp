#include "qt/Binder.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <stdexcept>

#include "qt/BindingRules.h"
#include "qt/QtText.h"
#include "qt/UserInterface.h"

namespace loader {

namespace {

// The object of the form that carries the name and can show the kind. Widgets of Qt's own making (a view
// inside a list) carry names of their own and never match.
QObject* FindObject(QWidget& window, const QString& name) {
  if (window.objectName() == name) {
    return &window;
  }
  for (QObject* candidate : window.findChildren<QObject*>(name)) {
    if (candidate->isWidgetType() || qobject_cast<QAction*>(candidate) != nullptr) {
      return candidate;
    }
  }
  return nullptr;
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

// A label that has a handler: the others are no more than text.
bool CanBeClicked(const Control& control) {
  return control.kind == ControlKind::Label && static_cast<const Label&>(control).onClick != nullptr;
}

} // namespace

std::string WidgetName(const std::string& controlName) {
  const std::size_t open = controlName.find('(');
  if (open == std::string::npos || controlName.back() != ')') {
    return controlName;
  }
  return controlName.substr(0, open) + "_" + controlName.substr(open + 1, controlName.size() - open - 2);
}

Binder::Binder(UserInterface& userInterface, Screen& boundScreen, QWidget& formWindow)
    : screen(boundScreen), window(formWindow), userInterface_(userInterface) {
  PrepareWindow();
  for (Control* control : screen.controls) {
    Bind(*control);
  }
  userInterface_.Opened(*this);
}

Binder::~Binder() {
  Release();
}

void Binder::Release() {
  userInterface_.Closed(*this);
  for (const auto& [object, binding] : byObject_) {
    QObject::disconnect(object, nullptr, this, nullptr);
    const_cast<QObject*>(object)->removeEventFilter(this);
  }
  byObject_.clear();
  byControl_.clear();
}

void Binder::PrepareWindow() {
  // A page that scrolls is no place for the keyboard; its fields are, and it follows them.
  for (QScrollArea* page : window.findChildren<QScrollArea*>()) {
    page->setFocusPolicy(Qt::NoFocus);
  }
  // Enter in a field presses no button, unless the form names one as the default.
  if (qobject_cast<QDialog*>(&window) != nullptr) {
    for (QPushButton* button : window.findChildren<QPushButton*>()) {
      button->setAutoDefault(button->isDefault());
    }
  }
}

void Binder::Bind(Control& control) {
  const QString name = QString::fromStdString(WidgetName(control.name));
  QObject* object = FindObject(window, name);
  if (object == nullptr) {
    // A separator needs no widget.
    if (control.kind != ControlKind::MenuEntry || static_cast<MenuEntry&>(control).caption != u"-") {
      missing.push_back(control.name);
    }
    return;
  }
  const BindingRule& rule = RuleOf(control.kind);
  if (!rule.accepts(*object)) {
    throw std::logic_error("the widget of " + control.name + " on " + screen.name + " is of another kind");
  }
  auto* widget = object->isWidgetType() ? static_cast<QWidget*>(object) : nullptr;
  Binding& binding = bindings_.emplace_back(Binding{.control = control, .object = *object, .widget = widget});
  byObject_.emplace(object, &binding);
  byControl_.emplace(&control, &binding);
  if (widget != nullptr) {
    if (widget->accessibleName().isEmpty()) {
      widget->setAccessibleName(name);
    }
    widget->installEventFilter(this);
    if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
      byObject_.emplace(tabs->tabBar(), &binding); // the part that takes the focus
      tabs->tabBar()->installEventFilter(this);
    }
  }
  rule.listen(userInterface_, *this, binding);
}

void Binder::RefreshWidgets() {
  const QString title = ToQt(screen.caption);
  if (window.windowTitle() != title) {
    window.setWindowTitle(title);
  }
  for (Binding& binding : bindings_) {
    RuleOf(binding.control.kind).show(binding);
    ShowEnabled(binding);
    ShowVisible(binding);
    binding.fresh = false;
  }
}

bool Binder::GiveFocus(Control& control) {
  QWidget* widget = WidgetOf(control);
  if (widget == nullptr || !widget->isVisibleTo(&window) || !widget->isEnabledTo(&window)) {
    return false;
  }
  widget->setFocus(Qt::OtherFocusReason);
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

bool Binder::eventFilter(QObject* watched, QEvent* event) {
  Control* control = ControlOf(*watched);
  if (control == nullptr) {
    return false;
  }
  switch (event->type()) {
  case QEvent::FocusIn:
    userInterface_.FocusArrived(*control, static_cast<QFocusEvent*>(event)->reason());
    return false;
  case QEvent::FocusOut:
    userInterface_.FocusGone(*control, static_cast<QFocusEvent*>(event)->reason());
    return false;
  case QEvent::Wheel:
    // The wheel scrolls the page; it never changes a list that happens to pass under it.
    if (control->kind == ControlKind::ListBox) {
      event->ignore();
      return true;
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
    return KeyOnClickable(*control, static_cast<QKeyEvent*>(event)->key());
  default:
    return false;
  }
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
