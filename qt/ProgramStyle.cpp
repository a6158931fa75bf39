#include "qt/ProgramStyle.h"

#include "qt/FormIcons.h"

namespace loader {

QIcon ProgramStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                                 const QWidget* widget) const {
  // No tool bar of the program stands upright.
  return which == SP_ToolBarHorizontalExtensionButton ? DrawnIcon("more")
                                                      : QProxyStyle::standardIcon(which, option, widget);
}

} // namespace loader
