#include "qt/ActionKeys.h"

#include <QAbstractButton>
#include <QAction>
#include <QEvent>

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

} // namespace

QString WithMnemonic(std::u16string_view caption) {
  QString text = ToQt(caption);
  const qsizetype close = text.lastIndexOf(u')');
  const QStringView behind = QStringView(text).mid(close + 1);
  const bool letter = close >= 2 && text[close - 2] == u'(' && IsLetter(text[close - 1]) &&
                      (behind.isEmpty() || behind == u"...");
  if (letter && !text.contains(u'&')) {
    text.insert(close - 1, u'&');
  }
  return text;
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
