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

// Some styles open a list like a menu, over its field, as high as the screen and without a scroll bar: of the
// hundred and more inputs of a formula those at the end are out of the mouse's reach.
int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* returnData) const {
  return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, returnData);
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
