#include "qt/ChangeMark.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>

#include "qt/PowerLabel.h"
#include "qt/ReadableColour.h"

namespace loader {

namespace {

// What a widget of its kind draws behind its text.
struct Roles {
  QPalette::ColorRole background;
  QPalette::ColorRole text;
};
Roles RolesOf(const QWidget& widget) {
  if (qobject_cast<const QLineEdit*>(&widget) != nullptr) {
    return {QPalette::Base, QPalette::Text};
  }
  if (qobject_cast<const QComboBox*>(&widget) != nullptr) {
    return {QPalette::Button, QPalette::ButtonText};
  }
  const bool power = qobject_cast<const PowerLabel*>(&widget) != nullptr;
  return {power ? QPalette::Button : QPalette::Window, QPalette::WindowText};
}

int Mixed(int background, int selection) {
  constexpr int Parts = 5; // one of them the selection's
  return (background * (Parts - 1) + selection) / Parts;
}

} // namespace

QColor ChangeTint(const QColor& background, const QColor& selection) {
  return {Mixed(background.red(), selection.red()), Mixed(background.green(), selection.green()),
          Mixed(background.blue(), selection.blue())};
}

void ShowChangeMark(QWidget& widget, bool marked) {
  auto* label = qobject_cast<QLabel*>(&widget);
  const bool tinted = marked && (label == nullptr || !label->text().isEmpty());
  QPalette palette; // nothing of its own: what is around the widget decides
  if (tinted) {
    const QPalette& plain = widget.palette();
    const auto [background, text] = RolesOf(widget);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
      const QColor tint =
          ChangeTint(plain.color(group, background), plain.color(QPalette::Active, QPalette::Highlight));
      palette.setColor(group, background, tint);
      if (ContrastOf(tint, plain.color(group, text)) < ReadableContrast) {
        palette.setColor(group, text, FadedOn(tint, plain.color(QPalette::Active, text)));
      }
    }
  }
  widget.setPalette(palette);
  if (label != nullptr && RolesOf(widget).background == QPalette::Window) {
    label->setAutoFillBackground(tinted);
  }
}

} // namespace loader
