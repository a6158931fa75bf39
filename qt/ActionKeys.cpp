#include "qt/ActionKeys.h"

#include <QAbstractButton>
#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenu>

#include "qt/QtText.h"

namespace loader {

namespace {

constexpr const char* PressesProperty = "presses";
constexpr const char* KeyOfProperty = "keyOf";

QAction* ActionThatPresses(const QAbstractButton& button) {
  for (QAction* action : button.window()->findChildren<QAction*>()) {
    if (action->property(PressesProperty).toString() == button.objectName()) {
      return action;
    }
  }
  return nullptr;
}

QString WithKey(const QString& text, const QKeySequence& key) {
  return key.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText));
}

// Offers the action while its button can be pressed.
class FollowsButton final : public QObject {
public:
  FollowsButton(QAbstractButton& button, QAction& action) : QObject(&button), action_(action) {
    button.installEventFilter(this);
    action.setEnabled(button.isEnabled());
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange) {
      action_.setEnabled(static_cast<QAbstractButton*>(watched)->isEnabled());
    }
    return false;
  }

private:
  QAction& action_;
};

bool IsLetter(QChar character) {
  return character >= u'A' && character <= u'Z';
}

class MenuLetters final : public QObject {
public:
  explicit MenuLetters(QMenu& menu) : QObject(&menu) { menu.installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) {
      return false;
    }
    auto& menu = static_cast<QMenu&>(*watched);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    QAction* entry = EntryOf(menu, key);
    if (entry == nullptr) {
      return false;
    }
    menu.setActiveAction(entry);
    QKeyEvent choice(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&menu, &choice);
    return true;
  }

private:
  static QAction* EntryOf(const QMenu& menu, const QKeyEvent& key) {
    if ((key.modifiers() & ~Qt::ShiftModifier) != Qt::NoModifier || key.text().size() != 1) {
      return nullptr;
    }
    const QChar letter = key.text().front().toUpper();
    for (QAction* entry : menu.actions()) {
      if (entry->isEnabled() && entry->isVisible() && LetterOf(entry->text()) == letter) {
        return entry;
      }
    }
    return nullptr;
  }
};

} // namespace

QChar LetterOf(QStringView text) {
  const QStringView caption = text.left(text.indexOf(u'\t')); // without its key
  const qsizetype close = caption.lastIndexOf(u')');
  const QStringView behind = caption.mid(close + 1);
  const bool letter = close >= 2 && caption[close - 2] == u'(' && IsLetter(caption[close - 1]) &&
                      (behind.isEmpty() || behind == QStringView(u"..."));
  return letter && !caption.contains(u'&') ? caption[close - 1] : QChar();
}

void LetLettersWork(QMenu& menu) {
  new MenuLetters(menu); // the menu's own
}

void TieActionOf(QAbstractButton& button) {
  if (QAction* action = ActionThatPresses(button)) {
    new FollowsButton(button, *action); // the button's own
    QObject::connect(action, &QAction::triggered, &button, &QAbstractButton::click);
  }
}

void ShowCaptionOnAction(QAbstractButton& button, const QString& caption) {
  if (QAction* action = ActionThatPresses(button)) {
    action->setText(caption);
    button.setToolTip(PlainTip(WithKey(caption, action->shortcut())));
  }
}

QString TipWithKey(const QAction& action, const QString& tip) {
  const QString name = action.property(KeyOfProperty).toString();
  const QAction* same =
      name.isEmpty() || action.parent() == nullptr ? nullptr : action.parent()->findChild<QAction*>(name);
  return same == nullptr ? tip : WithKey(tip, same->shortcut());
}

} // namespace loader
