// What a cascade has rewritten is tinted until the next key, readable in light and dark.
#include "qt/ChangeMark.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <set>

#include "qt/ListBoxView.h"
#include "qt/ReadableColour.h"
#include "tests/qt/DialogLayout.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

using Names = std::set<std::string>;

QPalette::ColorRole BackgroundOf(const QWidget& widget) {
  if (qobject_cast<const QLineEdit*>(&widget) != nullptr) {
    return QPalette::Base;
  }
  return qobject_cast<const QComboBox*>(&widget) != nullptr ? QPalette::Button : QPalette::Window;
}

QPalette::ColorRole TextOf(const QWidget& widget) {
  if (qobject_cast<const QLineEdit*>(&widget) != nullptr) {
    return QPalette::Text;
  }
  return qobject_cast<const QComboBox*>(&widget) != nullptr ? QPalette::ButtonText : QPalette::WindowText;
}

bool IsTinted(const QWidget& widget) {
  const auto role = BackgroundOf(widget);
  const QPalette plain = QApplication::palette();
  const QColor tint = ChangeTint(plain.color(QPalette::Active, role), plain.color(QPalette::Highlight));
  return widget.palette().color(QPalette::Active, role) == tint;
}

Names TintedIn(const QWidget& window) {
  Names names;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    const bool shows = qobject_cast<const QLineEdit*>(widget) != nullptr ||
                       qobject_cast<const QComboBox*>(widget) != nullptr ||
                       qobject_cast<const QLabel*>(widget) != nullptr;
    if (shows && IsTinted(*widget)) {
      names.insert(widget->objectName().toStdString());
    }
  }
  return names;
}

// A middle pixel near the right edge, where no text is.
QColor DrawnOn(QWidget& widget) {
  const QImage picture = widget.grab().toImage();
  return QColor(picture.pixel(picture.width() - 10, picture.height() / 2));
}

struct ColoursOf {
  const char* name;
  QRgb window;
  QRgb base;
  QRgb selection;
};
void PrintTo(const ColoursOf& colours, std::ostream* out) {
  *out << colours.name;
}
const ColoursOf LightAndDark[] = {{"Light", 0xFFEFEFEF, 0xFFFFFFFF, 0xFF308CC6},
                                  {"Dark", 0xFF2E2E2E, 0xFF1B1B1B, 0xFF2A6DB5}};

// A channel of 1 to 5 V on a scale.
struct ChangeMark : MainWindowTest, testing::WithParamInterface<ColoursOf> {
  const QPalette before = QApplication::palette();

  ~ChangeMark() override { QApplication::setPalette(before); }
  void During(const std::function<void(QWidget&)>& look) {
    QPalette palette{QColor(GetParam().window), QColor(GetParam().window)};
    palette.setColor(QPalette::Base, QColor(GetParam().base));
    palette.setColor(QPalette::Highlight, QColor(GetParam().selection));
    QApplication::setPalette(palette);
    Start("0");
    for (const int channel : {0, 1}) {
      for (const auto& [tag, value] : {std::pair{"TYPE", 32},
                                       {"SCAL", 1},
                                       {"MMIN", 1000},
                                       {"MMAX", 5000},
                                       {"SMIN", -1000},
                                       {"SMAX", 3000},
                                       {"POIN", 2}}) {
        SetNumValue("C", channel, tag, static_cast<std::int16_t>(value));
      }
    }
    WhileShown(
        "frmChSetting", [] { ShowChSetting(1); },
        [&](QWidget& window) {
          Settle();
          look(window);
        });
  }
  // OFF of scaling rewrites ranges and alarms.
  static void PickOwnScale(QWidget& window) { Pick(In<QComboBox>(window, "cmbScale"), 0); }
};
INSTANTIATE_TEST_SUITE_P(Palettes, ChangeMark, testing::ValuesIn(LightAndDark),
                         [](const auto& colours) { return std::string(colours.param.name); });

TEST_P(ChangeMark, WhatIsRewrittenIsTintedAndNothingElse) {
  During([](QWidget& window) {
    EXPECT_EQ(Names{}, TintedIn(window));
    PickOwnScale(window);
    const Names tinted = TintedIn(window);
    for (const char* name : {"txtIndMin", "txtIndMax", "cmbDecimal", "txtRecRangeMax", "txtAlarmSet4"}) {
      EXPECT_TRUE(tinted.contains(name)) << name;
    }
    for (const char* name :
         {"cmbScale", "txtChannelTag", "cmbInputType", "cmbSdig", "txtChannel", "lblColor"}) {
      EXPECT_FALSE(tinted.contains(name)) << name;
    }
  });
}

TEST_P(ChangeMark, TheTintIsDrawnAndItsTextCanBeRead) {
  During([](QWidget& window) {
    auto& drawn = In<QLineEdit>(window, "txtRecRangeMax");
    const QColor plain = DrawnOn(drawn);
    PickOwnScale(window);
    EXPECT_EQ(drawn.palette().color(QPalette::Base), DrawnOn(drawn));
    EXPECT_NE(plain, DrawnOn(drawn));
    auto& unit = In<QLabel>(window, "lblSelUnit");
    EXPECT_EQ(unit.palette().color(QPalette::Disabled, QPalette::Window), DrawnOn(unit));
    int tinted = 0;
    for (const std::string& name : TintedIn(window)) {
      const auto& widget = In<QWidget>(window, name);
      for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        EXPECT_GE(ContrastOf(widget.palette().color(group, BackgroundOf(widget)),
                             widget.palette().color(group, TextOf(widget))),
                  ReadableContrast)
            << name << " in group " << group;
      }
      ++tinted;
    }
    EXPECT_GE(tinted, 8);
  });
}

TEST_P(ChangeMark, TheNextKeyTakesTheTintAwayAndALoneModifierDoesNot) {
  During([](QWidget& window) {
    auto& tag = In<QLineEdit>(window, "txtChannelTag");
    const QColor plain = DrawnOn(In<QLineEdit>(window, "txtRecRangeMax"));
    tag.setFocus(Qt::TabFocusReason);
    PickOwnScale(window);
    const Names tinted = TintedIn(window);
    for (const Qt::Key modifier :
         {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta, Qt::Key_AltGr}) {
      for (const auto type : {QEvent::ShortcutOverride, QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, modifier, Qt::NoModifier);
        QCoreApplication::sendEvent(&tag, &event);
      }
      EXPECT_EQ(tinted, TintedIn(window));
    }
    QTest::keyClick(&tag, Qt::Key_A);
    EXPECT_EQ(Names{}, TintedIn(window));
    EXPECT_EQ(plain, DrawnOn(In<QLineEdit>(window, "txtRecRangeMax")));
    EXPECT_FALSE(In<QLabel>(window, "lblSelUnit").autoFillBackground());
  });
}

TEST_P(ChangeMark, ACascadeOfTheKeyItselfIsSeen) {
  During([](QWidget& window) {
    auto& scale = In<ListBoxView>(window, "cmbScale");
    scale.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&scale, Qt::Key_Up); // OFF
    EXPECT_TRUE(TintedIn(window).contains("txtRecRangeMax"));
    QTest::keyClick(&scale, Qt::Key_Down); // ON rewrites nothing
    EXPECT_EQ(0, scale.currentIndex() - 1);
    EXPECT_EQ(Names{}, TintedIn(window));
  });
}

TEST_P(ChangeMark, TypingByAnInputMethodTakesItAwayToo) {
  During([](QWidget& window) {
    PickOwnScale(window);
    QInputMethodEvent typed;
    typed.setCommitString(QStringLiteral("温"));
    QCoreApplication::sendEvent(&In<QLineEdit>(window, "txtChannelTag"), &typed);
    EXPECT_EQ(Names{}, TintedIn(window));
  });
}

TEST_P(ChangeMark, AKeyInAnotherWindowLeavesIt) {
  During([this](QWidget& window) {
    PickOwnScale(window);
    const Names tinted = TintedIn(window);
    QTest::keyClick(&Window(), Qt::Key_A);
    EXPECT_EQ(tinted, TintedIn(window));
    EXPECT_FALSE(tinted.empty());
  });
}

TEST_P(ChangeMark, AnotherChannelHasNone) {
  During([](QWidget& window) {
    for (const char* button : {"btnPrev", "btnNext", "btnReset"}) {
      PickOwnScale(window);
      EXPECT_FALSE(TintedIn(window).empty()) << button;
      QTest::mouseClick(&In<QPushButton>(window, button), Qt::LeftButton);
      EXPECT_EQ(Names{}, TintedIn(window)) << button;
    }
  });
}

} // namespace
} // namespace loader::test
