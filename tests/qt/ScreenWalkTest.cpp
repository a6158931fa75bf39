// A walk over every screen as it is shown, for both models: each record has its widget and each input widget
// its record, every widget has a name that can be spoken, the tab order follows the reading order, and
// nothing is cut.
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleOptionComboBox>
#include <QTabWidget>
#include <gtest/gtest.h>

#include <set>

#include "core/modMain.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/GridView.h"
#include "qt/QtPlatform.h"
#include "tests/qt/AllScreens.h"
#include "tests/qt/MainWindowFixture.h"
#include "tests/qt/ModalScript.h"
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

// "cmbDI_3" for "cmbDI(3)".
QString ObjectName(const Control& control) {
  return QString::fromStdString(control.name).replace(u'(', u'_').remove(u')');
}

// A line between menu entries has no name in a form.
bool IsSeparator(const Control& control) {
  return control.kind == ControlKind::MenuEntry && static_cast<const MenuEntry&>(control).caption == u"-";
}

void ExpectRecordsAndNames(QWidget& window, const Screen& screen) {
  EXPECT_FALSE(screen.controls.empty()) << screen.name;
  for (const Control* control : screen.controls) {
    EXPECT_TRUE(IsSeparator(*control) || window.findChild<QObject*>(ObjectName(*control)) != nullptr)
        << screen.name << "." << control->name << " has no widget";
  }
  for (const QWidget* widget : NamedWidgets(window)) {
    if (IsInput(*widget)) {
      const std::string name = widget->objectName().toStdString();
      EXPECT_NE(nullptr, screen.Find(ControlName(*widget, screen)))
          << screen.name << "." << name << " has no record";
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

// Tells which record is shown modally: the screens of the program are records that live while they are shown.
class ShownScreens final : public Screens {
public:
  explicit ShownScreens(Platform& inner)
      : inner_(inner), mine_{.boxes = inner.boxes,
                             .fileDialogs = inner.fileDialogs,
                             .screens = *this,
                             .timers = inner.timers,
                             .eventLoop = inner.eventLoop,
                             .clock = inner.clock,
                             .MSComm1 = inner.MSComm1,
                             .winSock = inner.winSock,
                             .USBOCX1 = inner.USBOCX1,
                             .programFolder = inner.programFolder} {
    SetPlatform(&mine_);
  }
  ~ShownScreens() override { SetPlatform(&inner_); }
  void Show(Screen& screen) override { inner_.screens.Show(screen); }
  void ShowModal(Screen& screen) override {
    front = &screen;
    inner_.screens.ShowModal(screen);
    front = nullptr;
  }
  void Close(Screen& screen) override { inner_.screens.Close(screen); }
  void EndProgram() override { inner_.screens.EndProgram(); }
  double TextWidth(std::u16string_view text) override { return inner_.screens.TextWidth(text); }

  const Screen* front = nullptr;

private:
  Platform& inner_;
  Platform mine_;
};

struct ModelOfLoader {
  const char* name;
  const char* type; // TYPE of LOADER.INI
};
void PrintTo(const ModelOfLoader& model, std::ostream* out) {
  *out << model.name;
}
const ModelOfLoader BothModels[] = {{"Kov", "0"}, {"Rug", "1"}};
const double FontSizes[] = {1.0, 2.0};

std::string NameOf(const ModelOfLoader& model, double factor) {
  return std::string(model.name) + (factor > 1 ? "InDoubleSize" : "");
}

struct ScreenWalk : MainWindowTest {
  QFont font = QApplication::font();

  ~ScreenWalk() override { QApplication::setFont(font); }
  void EnlargeFont(double factor) {
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * factor);
    QApplication::setFont(large);
  }
};

struct MainWindowWalk : ScreenWalk, testing::WithParamInterface<std::tuple<ModelOfLoader, double>> {};
INSTANTIATE_TEST_SUITE_P(Every, MainWindowWalk,
                         testing::Combine(testing::ValuesIn(BothModels), testing::ValuesIn(FontSizes)),
                         [](const auto& tested) {
                           return NameOf(std::get<0>(tested.param), std::get<1>(tested.param));
                         });

TEST_P(MainWindowWalk, ShowsItWhole) {
  const auto& [model, factor] = GetParam();
  EnlargeFont(factor);
  Start(model.type);
  auto& tabs = *Window().findChild<QTabWidget*>(QStringLiteral("tbsParameter"));
  for (int page = 0; page < tabs.count(); ++page) {
    tabs.setCurrentIndex(page);
    QCoreApplication::processEvents(); // lets the layouts settle
    const std::string where = std::string(model.name) + " page " + std::to_string(page);
    ExpectNothingCut(Window(), where);
    ExpectReadingOrder(Window(), where);
  }
  ExpectRecordsAndNames(Window(), *frmParamLoader);
  EXPECT_TRUE(platform->screens.MissingWidgets().empty());
}

struct ModalScreenWalk : ScreenWalk,
                         testing::WithParamInterface<std::tuple<ModalScreen, ModelOfLoader, double>> {};
INSTANTIATE_TEST_SUITE_P(Every, ModalScreenWalk,
                         testing::Combine(testing::ValuesIn(AllModalScreens), testing::ValuesIn(BothModels),
                                          testing::ValuesIn(FontSizes)),
                         [](const auto& tested) {
                           return std::string(std::get<0>(tested.param).name) +
                                  std::get<0>(tested.param).shape +
                                  NameOf(std::get<1>(tested.param), std::get<2>(tested.param));
                         });

TEST_P(ModalScreenWalk, ShowsItWhole) {
  const auto& [shown, model, factor] = GetParam();
  EnlargeFont(factor);
  Start(model.type);
  const ShownScreens screens(platform->platform);
  WhileShown(shown.name, shown.show, [&](QWidget& window) {
    ASSERT_NE(nullptr, screens.front);
    QCoreApplication::processEvents(); // lets the layouts settle
    ExpectNothingCut(window, shown.name);
    ExpectReadingOrder(window, shown.name);
    ExpectRecordsAndNames(window, *screens.front);
  });
  EXPECT_TRUE(platform->screens.MissingWidgets().empty());
}

// A form that is no page and not the main window's is that of a modal screen.
TEST(Forms, OfEveryModalScreenAreWalked) {
  std::set<std::string> walked;
  for (const ModalScreen& screen : AllModalScreens) {
    walked.insert(screen.name);
  }
  std::set<std::string> forms;
  for (const auto& file :
       std::filesystem::directory_iterator(std::filesystem::path(LOADER_DATA_DIR) / ".." / "qt" / "forms")) {
    const std::string name = file.path().stem().string();
    if (!name.starts_with("frmParamLoader")) {
      forms.insert(name);
    }
  }
  EXPECT_EQ(forms, walked);
}

TEST(Forms, AScreenWithoutAFormHasNone) {
  EXPECT_EQ(nullptr, MakeForm("frmNowhere"));
}

} // namespace
} // namespace loader::test
