// A walk over every screen as it is shown: each record has its widget and each input widget its record, every
// widget has a name that can be spoken, the tab order follows the reading order, and nothing is cut.
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleOptionComboBox>
#include <QTabWidget>
#include <gtest/gtest.h>

#include "comm/frmIPSetting.h"
#include "comm/frmTimeChange.h"
#include "core/modMain.h"
#include "mainwindow/frmAbout.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/GridView.h"
#include "qt/QtPlatform.h"
#include "tests/qt/MainWindowFixture.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

bool IsInput(const QWidget& widget) {
  return qobject_cast<const QLineEdit*>(&widget) != nullptr ||
         qobject_cast<const QComboBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
         qobject_cast<const GridView*>(&widget) != nullptr;
}

// Parts that Qt makes inside its own widgets (the buttons of a tool bar or of a tab bar) have no name of
// ours.
std::vector<QWidget*> NamedWidgets(QWidget& window) {
  std::vector<QWidget*> named;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    const bool qtsOwn = widget->objectName().isEmpty() ||
                        widget->objectName().startsWith(QStringLiteral("qt_")) ||
                        widget->objectName().startsWith(QStringLiteral("Scroll"));
    if (!qtsOwn) {
      named.push_back(widget);
    }
  }
  return named;
}

// "cmbDI(3)" for "cmbDI_3".
std::string ControlName(const QWidget& widget, const Screen& screen) {
  const std::string name = widget.objectName().toStdString();
  const std::size_t line = name.rfind('_');
  if (screen.Find(name) != nullptr || line == std::string::npos) {
    return name;
  }
  return name.substr(0, line) + "(" + name.substr(line + 1) + ")";
}

void ExpectRecordsAndNames(QWidget& window, const Screen& screen) {
  for (const QWidget* widget : NamedWidgets(window)) {
    if (IsInput(*widget)) {
      const std::string name = widget->objectName().toStdString();
      EXPECT_NE(nullptr, screen.Find(ControlName(*widget, screen))) << screen.name << "." << name;
      EXPECT_FALSE(widget->accessibleName().isEmpty()) << screen.name << "." << name;
    }
  }
}

// Pixels of a text that has to fit into a widget, and what there is for it.
struct Room {
  int needed;
  int there;
};

Room WidthFor(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    if (label->wordWrap()) {
      return {label->heightForWidth(label->width()), label->height()};
    }
    return {label->text().isEmpty() ? 0 : label->sizeHint().width(), label->width()};
  }
  if (const auto* button = qobject_cast<const QPushButton*>(&widget)) {
    return {button->fontMetrics().horizontalAdvance(button->text()), button->width() - 4};
  }
  if (const auto* frame = qobject_cast<const QGroupBox*>(&widget)) {
    return {frame->fontMetrics().horizontalAdvance(frame->title()), frame->width()};
  }
  if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
    QStyleOptionComboBox option;
    option.initFrom(list);
    const QRect inside =
        list->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, list);
    return {list->fontMetrics().horizontalAdvance(list->currentText()), inside.width()};
  }
  return {0, 0};
}

void ExpectNothingCut(QWidget& window, const std::string& where) {
  int seen = 0;
  for (const QWidget* widget : NamedWidgets(window)) {
    if (!widget->isVisible()) {
      continue;
    }
    const auto* label = qobject_cast<const QLabel*>(widget);
    if (label != nullptr && label->text().isEmpty()) {
      continue; // a picture, or a place for a text to come
    }
    ++seen;
    const Room room = WidthFor(*widget);
    const std::string name = where + ": " + widget->objectName().toStdString();
    EXPECT_LE(room.needed, room.there + 1) << name;
    EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << name;
  }
  EXPECT_GT(seen, 2) << where;
}

// Of two neighbours in the tab order that lie in the same frame, the second is below or to the right.
void ExpectReadingOrder(QWidget& window, const std::string& where) {
  const QWidget* before = nullptr;
  for (QWidget* widget = window.nextInFocusChain(); widget != &window; widget = widget->nextInFocusChain()) {
    const bool stops = widget->isVisible() && widget->isEnabled() && IsInput(*widget) &&
                       (widget->focusPolicy() & Qt::TabFocus) != 0;
    if (!stops) {
      continue;
    }
    if (before != nullptr && before->parentWidget() == widget->parentWidget()) {
      const bool below = widget->y() >= before->y() + before->height();
      const bool beside = widget->x() >= before->x() + before->width();
      EXPECT_TRUE(below || beside) << where << ": " << before->objectName().toStdString() << " then "
                                   << widget->objectName().toStdString();
    }
    before = widget;
  }
}

struct ScreenWalk : MainWindowTest {
  QFont font = QApplication::font();

  ~ScreenWalk() override { QApplication::setFont(font); }
  void EnlargeFont(double factor) {
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * factor);
    QApplication::setFont(large);
  }
  void WalkMainWindow(const char* model, double factor) {
    EnlargeFont(factor);
    Start(model);
    auto& tabs = *Window().findChild<QTabWidget*>(QStringLiteral("tbsParameter"));
    for (int page = 0; page < tabs.count(); ++page) {
      tabs.setCurrentIndex(page);
      QCoreApplication::processEvents(); // lets the layouts settle
      const std::string where = std::string(model) + " page " + std::to_string(page);
      ExpectNothingCut(Window(), where);
      ExpectReadingOrder(Window(), where);
    }
    ExpectRecordsAndNames(Window(), *frmParamLoader);
    EXPECT_TRUE(platform->screens.MissingWidgets().empty());
  }
  // Shows a modal screen and walks it.
  void WalkModal(const std::function<void()>& show, const char* name, double factor) {
    EnlargeFont(factor);
    Start("0");
    bool walked = false;
    QMetaObject::invokeMethod(
        &platform->userInterface,
        [&] {
          QWidget* window = QApplication::activeModalWidget();
          ASSERT_NE(nullptr, window);
          EXPECT_EQ(name, window->objectName().toStdString());
          ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
          ExpectNothingCut(*window, name);
          ExpectReadingOrder(*window, name);
          for (const QWidget* widget : NamedWidgets(*window)) {
            EXPECT_FALSE(IsInput(*widget) && widget->accessibleName().isEmpty())
                << widget->objectName().toStdString();
          }
          walked = true;
          window->close();
        },
        Qt::QueuedConnection);
    show();
    EXPECT_TRUE(walked);
    EXPECT_TRUE(platform->screens.MissingWidgets().empty());
  }
};

TEST_F(ScreenWalk, MainWindowOfKov) {
  WalkMainWindow("0", 1.0);
}
TEST_F(ScreenWalk, MainWindowOfRug) {
  WalkMainWindow("1", 1.0);
}
TEST_F(ScreenWalk, MainWindowOfRugInDoubleSize) {
  WalkMainWindow("1", 2.0);
}
TEST_F(ScreenWalk, VersionScreen) {
  WalkModal(ShowAbout, "frmAbout", 1.0);
}
TEST_F(ScreenWalk, AddressScreen) {
  WalkModal(ShowIpSetting, "frmIPSetting", 1.0);
}
TEST_F(ScreenWalk, AddressScreenInDoubleSize) {
  WalkModal(ShowIpSetting, "frmIPSetting", 2.0);
}
TEST_F(ScreenWalk, ClockScreen) {
  const FlowCallbacks callbacks;
  WalkModal([&] { ShowTimeChange(callbacks); }, "frmTimeChange", 1.0);
}
TEST_F(ScreenWalk, ClockScreenInDoubleSize) {
  const FlowCallbacks callbacks;
  WalkModal([&] { ShowTimeChange(callbacks); }, "frmTimeChange", 2.0);
}

TEST(Forms, AScreenWithoutAFormHasNone) {
  EXPECT_EQ(nullptr, MakeForm("frmNowhere"));
}

} // namespace
} // namespace loader::test
