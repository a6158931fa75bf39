// The desktop's style, whatever it is, with one picture of the program's own, with fields that can only be
// read told from those that can be typed into, with lists that open below their field, and with edges that
// can be seen in a palette of high contrast.
#pragma once

#include <QProxyStyle>

namespace loader {

// A tool bar that is too short shows a button for what is left over. Qt makes the button with every tool bar
// and reads its pictures from files, and for the first file all plugins for pictures are loaded. Ours is
// drawn when it is needed.
class ProgramStyle final : public QProxyStyle {
public:
  using QProxyStyle::QProxyStyle;
  [[nodiscard]] QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                                   const QWidget* widget) const override;
  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* returnData) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
};

} // namespace loader
