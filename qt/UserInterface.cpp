#include "qt/UserInterface.h"

#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <utility>

#include "devices/RunHandler.h"
#include "qt/Application.h"
#include "qt/Binder.h"
#include "qt/LoneModifier.h"

namespace loader {

namespace {

// The focus goes to a popup, a menu or another window and comes back by itself: that is no leaving.
bool ComesBackByItself(Qt::FocusReason reason) {
  return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
         reason == Qt::MenuBarFocusReason;
}

// The widget that a press on `pressed` gives the focus to, by Qt's own rule; null when none takes it.
QWidget* FocusTaker(QWidget& pressed) {
  for (QWidget* widget = &pressed; widget != nullptr; widget = widget->parentWidget()) {
    QWidget* taker = widget;
    while (taker->focusProxy() != nullptr) {
      taker = taker->focusProxy();
    }
    if (widget->isEnabled() && (widget->focusPolicy() & Qt::ClickFocus) != 0 &&
        (taker->focusPolicy() & Qt::ClickFocus) != 0) {
      return taker;
    }
    if (widget->isWindow()) {
      break;
    }
  }
  return nullptr;
}

bool PressLeaves(QWidget& pressed, const QMouseEvent& press, const QWidget& field) {
  // A tab acts on the press and takes no focus by it.
  if (const auto* bar = qobject_cast<const QTabBar*>(&pressed)) {
    const int tab = bar->tabAt(press.position().toPoint());
    return press.button() == Qt::LeftButton && tab >= 0 && tab != bar->currentIndex() &&
           bar->isTabEnabled(tab);
  }
  const QWidget* taker = FocusTaker(pressed);
  return taker != nullptr && taker != &field;
}

bool IsPress(const QEvent& event) {
  return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
}

bool EventLeaves(QWidget& receiver, const QEvent& event, const QWidget& field) {
  if (IsPress(event)) {
    return PressLeaves(receiver, static_cast<const QMouseEvent&>(event), field);
  }
  if (event.type() == QEvent::KeyPress) {
    const int key = static_cast<const QKeyEvent&>(event).key();
    return &receiver == &field && (key == Qt::Key_Tab || key == Qt::Key_Backtab);
  }
  // A mnemonic. That of the menu bar opens a menu, whose entries are checked when they are chosen.
  return event.type() == QEvent::Shortcut && &receiver != &field &&
         qobject_cast<const QMenuBar*>(&receiver) == nullptr;
}

// Something that the user types, a mnemonic among it, before anything acts on it.
bool IsTyped(const QEvent& event) {
  if (event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride) {
    return !IsLoneModifier(static_cast<const QKeyEvent&>(event).key());
  }
  return event.type() == QEvent::InputMethod;
}

// The window that a key belongs to: an open list belongs to the one below it.
const QWidget* KeyWindow(const QWidget& receiver) {
  const QWidget* window = receiver.window();
  while (window->windowType() == Qt::Popup && window->parentWidget() != nullptr) {
    window = window->parentWidget()->window();
  }
  return window;
}

} // namespace

UserInterface::UserInterface() {
  QObject::connect(qApp, &QApplication::focusChanged, this, [this] { FocusSettled(); });
  if (auto* application = dynamic_cast<Application*>(qApp)) {
    application->refuses = [this](QWidget& receiver, QEvent& event) { return Refuses(receiver, event); };
  }
}

UserInterface::~UserInterface() {
  if (auto* application = dynamic_cast<Application*>(qApp)) {
    application->refuses = nullptr;
  }
}

void UserInterface::Opened(Binder& binder) {
  open_.push_back(&binder);
}

void UserInterface::Closed(Binder& binder) {
  std::erase(open_, &binder);
  const auto ofScreen = [&](const Control* control) {
    return control != nullptr && &control->screen == &binder.screen;
  };
  if (ofScreen(activeField_)) {
    activeField_ = nullptr;
  }
  if (ofScreen(leftBehind_)) {
    leftBehind_ = nullptr;
  }
  if (ofScreen(refused_)) {
    refused_ = nullptr;
  }
  std::erase_if(gotFocusLater_, ofScreen);
}

void UserInterface::Act(Control& control, const std::function<void()>& take, const Handler& handler) {
  if (refreshing_ || BinderOf(control.screen) == nullptr) {
    return;
  }
  const auto usable = [&] { return control.enabled && control.visible; };
  if (ArrivedWithPage(control)) {
    activeField_ = nullptr;
  }
  // Only a field of the same screen is left by this; one of a screen behind waits.
  const bool leaves =
      activeField_ != nullptr && activeField_ != &control && &activeField_->screen == &control.screen;
  if (!usable() || (leaves && !LeaveField()) || !usable()) {
    Refresh();
    return;
  }
  const Handler running = handler; // the handler may replace itself
  Run([&] {
    take();
    if (running) {
      running();
    }
  });
  RearmActiveField();
}

void UserInterface::ActOn(const Screen& screen, const Handler& handler) {
  const bool leaves = activeField_ != nullptr && &activeField_->screen == &screen;
  if (refreshing_ || BinderOf(screen) == nullptr || (leaves && !LeaveField())) {
    return;
  }
  Run(handler);
  RearmActiveField();
}

void UserInterface::Run(const Handler& handler) {
  RunHandler(handler);
  Refresh();
}

void UserInterface::Refresh() {
  if (refreshing_) {
    return;
  }
  // A handler of a control that got the focus may change the records again; nothing asks for more passes than
  // that, so the bound only keeps two handlers from playing ball for ever.
  constexpr int MaxPasses = 8;
  for (int pass = 0; pass < MaxPasses; ++pass) {
    refreshing_ = true;
    for (std::size_t i = 0; i < open_.size(); ++i) {
      open_[i]->RefreshWidgets();
    }
    refreshing_ = false;
    GiveFocuses();
    const std::vector<Control*> arrived = std::exchange(gotFocusLater_, {});
    if (arrived.empty()) {
      return;
    }
    for (Control* control : arrived) {
      Run(control->onGotFocus);
    }
  }
}

void UserInterface::GiveFocuses() {
  for (std::size_t i = 0; i < open_.size(); ++i) {
    Binder& binder = *open_[i];
    Control* target = std::exchange(binder.screen.focusRequest, nullptr);
    const bool pageTurned = std::exchange(binder.pageTurned, false);
    if (target == nullptr) {
      binder.EnterPage();
      continue;
    }
    // A field is left only for a control that takes the focus; one that is asked in vain leaves all as it is.
    const bool leaves = activeField_ != nullptr && activeField_ != target &&
                        &activeField_->screen == &binder.screen && binder.CanTakeFocus(*target);
    if (leaves && !LeaveField()) {
      continue; // the field has asked it back, and has it
    }
    lastFocused_ = target;
    if (binder.GiveFocus(*target)) {
      if (target->kind == ControlKind::TextField) {
        activeField_ = static_cast<TextField*>(target);
      }
    } else if (pageTurned) {
      // To a page that isn't the target's: a refused field may turn to another page than its own, and what
      // the user types next is meant for it. The tabs take it, where it changes nothing, and not the field
      // that the keyboard came to with the page.
      activeField_ = nullptr;
      binder.EnterTabsOf(*target);
    }
  }
}

// The pages tell of a change when it is done: a field that is seen then lies on the page that has come, and
// has got the focus with it. To check it would turn the page away again from a user who comes back to mend
// it.
bool UserInterface::ArrivedWithPage(const Control& control) const {
  if (control.kind != ControlKind::TabPages || activeField_ == nullptr) {
    return false;
  }
  const Binder* binder = BinderOf(activeField_->screen);
  const QWidget* field = binder == nullptr ? nullptr : binder->WidgetOf(*activeField_);
  const auto* pages =
      binder == nullptr ? nullptr : qobject_cast<const QTabWidget*>(binder->WidgetOf(control));
  return field != nullptr && pages != nullptr && pages->isAncestorOf(field) && field->isVisible() &&
         pages->currentIndex() != static_cast<const TabPages&>(control).current;
}

bool UserInterface::LeaveField() {
  // What an input method has in the making is a part of what the user leaves behind, so the check has to see
  // it.
  if (activeField_ != nullptr) {
    if (Binder* binder = BinderOf(activeField_->screen)) {
      binder->EndComposition(*activeField_);
    }
  }
  TextField* field = std::exchange(activeField_, nullptr);
  return field == nullptr || Check(*field);
}

bool UserInterface::Check(TextField& field) {
  if (!field.onLostFocus) {
    return true;
  }
  lastFocused_ = nullptr;
  Run(field.onLostFocus);
  const bool good = lastFocused_ != &field;
  if (!good) {
    refused_ = &field;
  }
  return good;
}

void UserInterface::EditBegins(TextField& field) {
  activeField_ = &field;
  if (refused_ == &field) {
    refused_ = nullptr;
  }
}

bool UserInterface::TakeField(TextField& field) {
  if (refreshing_ || field.readOnly || !field.enabled || !field.visible) {
    return true;
  }
  const Screen& screen = field.screen;
  // For a moment behind its message a check may pass a field over. One that was refused and is as it was then
  // has to be checked when it is left, whatever comes of this.
  const bool asItWasRefused = refused_ == &field;
  if (activeField_ == &field && !LeaveField()) {
    return false;
  }
  const Binder* binder = BinderOf(screen);
  const QWidget* widget = binder == nullptr ? nullptr : binder->WidgetOf(field);
  if (widget == nullptr || binder->window.focusWidget() != widget) {
    return true; // the check has closed the screen or gone elsewhere
  }
  if (asItWasRefused) {
    activeField_ = &field;
  }
  field.selStart = 0;
  field.selLength = static_cast<int>(field.text.size());
  field.selectionPending = true;
  Refresh();
  return true;
}

void UserInterface::ClearMarks(const QWidget& receiver) {
  const QWidget* window = KeyWindow(receiver);
  for (Binder* binder : open_) {
    if (&binder->window == window) {
      binder->ClearMarks();
    }
  }
}

bool UserInterface::Refuses(QWidget& receiver, QEvent& event) {
  if (IsTyped(event)) {
    ClearMarks(receiver);
  }
  if (activeField_ == nullptr || refreshing_) {
    return false;
  }
  const Binder* binder = BinderOf(activeField_->screen);
  QWidget* field = binder != nullptr ? binder->WidgetOf(*activeField_) : nullptr;
  if (field == nullptr || receiver.window() != field->window() || !EventLeaves(receiver, event, *field)) {
    return false;
  }
  const int boxesBefore = boxesShown_;
  if (!LeaveField()) {
    return true;
  }
  if (boxesShown_ == boxesBefore || !IsPress(event)) {
    return false;
  }
  // The check let the field go but had something to say: the button of the mouse came up over the box, so
  // acting on the press now would leave a button of the screen down.
  if (QWidget* taker = FocusTaker(receiver)) {
    taker->setFocus(Qt::MouseFocusReason);
  }
  return true;
}

void UserInterface::FocusArrived(Control& control, Qt::FocusReason reason) {
  if (control.kind == ControlKind::TextField) {
    activeField_ = static_cast<TextField*>(&control);
  }
  if (ComesBackByItself(reason) || !control.onGotFocus) {
    return;
  }
  if (refreshing_) {
    gotFocusLater_.push_back(&control);
  } else {
    Run(control.onGotFocus);
  }
}

void UserInterface::FocusGone(Control& control, Qt::FocusReason reason) {
  if (activeField_ != &control || ComesBackByItself(reason)) {
    return;
  }
  // A field that a refresh hid, disabled or turned away from was taken from the user, not left by the user.
  leftBehind_ = refreshing_ ? nullptr : activeField_;
  activeField_ = nullptr;
}

// Qt has finished moving the focus: now a check may show its box and take the focus back.
void UserInterface::FocusSettled() {
  TextField* left = std::exchange(leftBehind_, nullptr);
  if (left == nullptr || BinderOf(left->screen) == nullptr) {
    return;
  }
  TextField* arrived = std::exchange(activeField_, nullptr);
  if (Check(*left) && activeField_ == nullptr) {
    activeField_ = arrived;
  }
}

// An action that takes no focus (a menu entry) leaves the user in the field where he was.
void UserInterface::RearmActiveField() {
  const QWidget* focused = QApplication::focusWidget();
  if (activeField_ != nullptr || focused == nullptr) {
    return;
  }
  for (const Binder* binder : open_) {
    Control* control = binder->ControlOf(*focused);
    if (control != nullptr && control->kind == ControlKind::TextField) {
      activeField_ = static_cast<TextField*>(control);
      return;
    }
  }
}

Binder* UserInterface::BinderOf(const Screen& screen) const {
  const auto found =
      std::find_if(open_.begin(), open_.end(), [&](const Binder* open) { return &open->screen == &screen; });
  return found == open_.end() ? nullptr : *found;
}

} // namespace loader
