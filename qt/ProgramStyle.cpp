#include "qt/ProgramStyle.h"

#include <QStyleOption>

#include "qt/FormIcons.h"

namespace loader {

QIcon ProgramStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                                 const QWidget* widget) const {
  // No tool bar of the program stands upright.
  return which == SP_ToolBarHorizontalExtensionButton ? DrawnIcon("more")
                                                      : QProxyStyle::standardIcon(which, option, widget);
}

// A field that can only be read has the window's colour, as a label has, in any palette.
void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  if (element != PE_PanelLineEdit || frame == nullptr || !frame->state.testFlag(State_ReadOnly)) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  QStyleOptionFrame readOnly(*frame);
  readOnly.palette.setBrush(QPalette::Base, frame->palette.window());
  QProxyStyle::drawPrimitive(element, &readOnly, painter, widget);
}

} // namespace loader
