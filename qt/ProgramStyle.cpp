#include "qt/ProgramStyle.h"

#include <QFrame>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>
#include <array>

#include "qt/FormIcons.h"
#include "qt/ReadableColour.h"

namespace loader {

namespace {

// A style draws edges by shades of the window's colour, of which black and white have none.
constexpr std::array Edged{QStyle::PE_FrameLineEdit,  QStyle::PE_PanelButtonCommand,
                           QStyle::PE_FrameGroupBox,  QStyle::PE_IndicatorCheckBox,
                           QStyle::PE_FrameTabWidget, QStyle::PE_Frame,
                           QStyle::PE_FrameMenu};

void DrawEdge(QPainter& painter, const QColor& colour, const QRect& rect) {
  painter.save();
  painter.setPen(colour);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect.adjusted(0, 0, -1, -1));
  painter.restore();
}

// A dark palette has no shades that its lines could be drawn in, nor has one of high contrast.
bool HasFaintGridLines(const QPalette& palette) {
  return IsFlat(palette) || ReadableOn(palette.color(QPalette::Active, QPalette::Base)) == QColor(Qt::white);
}

bool IsLevelLine(QStyle::ControlElement element, const QStyleOption* option) {
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  return element == QStyle::CE_ShapedFrame && frame != nullptr && frame->frameShape == QFrame::HLine;
}

} // namespace

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
  if (hint == SH_ComboBox_Popup) {
    return 0;
  }
  if (hint == SH_Table_GridLineColor && option != nullptr && HasFaintGridLines(option->palette)) {
    return static_cast<int>(LineColour(option->palette, QPalette::Base).rgba());
  }
  return QProxyStyle::styleHint(hint, option, widget, returnData);
}

// A field that can only be read has the window's colour, as a label has, in any palette.
void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  if (element != PE_PanelLineEdit || frame == nullptr || !frame->state.testFlag(State_ReadOnly)) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
  } else {
    QStyleOptionFrame readOnly(*frame);
    readOnly.palette.setBrush(QPalette::Base, frame->palette.window());
    QProxyStyle::drawPrimitive(element, &readOnly, painter, widget);
  }
  if (!IsFlat(option->palette) || std::find(Edged.begin(), Edged.end(), element) == Edged.end()) {
    return;
  }
  DrawEdge(*painter, LineColour(option->palette), option->rect);
  // Which answer of a question the Return key gives: the style tells it by a shade.
  if (element == PE_PanelButtonCommand && option->state.testFlag(State_HasFocus)) {
    DrawEdge(*painter, FocusColour(option->palette), option->rect);
    DrawEdge(*painter, FocusColour(option->palette), option->rect.adjusted(1, 1, -1, -1));
  }
}

// The tab of the page that shows has a bar in the colour of what has the keyboard.
void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  QProxyStyle::drawControl(element, option, painter, widget);
  if (!IsFlat(option->palette)) {
    return;
  }
  if (IsLevelLine(element, option)) {
    const QRect& room = option->rect;
    painter->fillRect(room.left(), room.center().y(), room.width(), 1, LineColour(option->palette));
    return;
  }
  if (element != CE_TabBarTabShape) {
    return;
  }
  DrawEdge(*painter, LineColour(option->palette), option->rect);
  if (option->state.testFlag(State_Selected)) {
    constexpr int Thick = 3;
    const QRect& tab = option->rect;
    painter->fillRect(tab.left(), tab.top(), tab.width(), Thick, FocusColour(option->palette));
  }
}

void ProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (control == CC_ScrollBar && IsFlat(option->palette)) {
    DrawEdge(*painter, LineColour(option->palette),
             proxy()->subControlRect(control, option, SC_ScrollBarSlider, widget));
  }
}

} // namespace loader
