// The side dialogs measured: what has to hold on a small screen, in a font of double size, for both models
// and whatever is chosen in them; and what their widgets are called.
#include <QCheckBox>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QToolTip>
#include <array>
#include <map>
#include <string>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "qt/ContentsArea.h"
#include "qt/ElidedLabel.h"
#include "qt/GridView.h"
#include "qt/ListBoxView.h"
#include "qt/QtText.h"
#include "qt/ReadableColour.h"
#include "tests/qt/DialogLayout.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

constexpr std::array BrowsingButtons{"btnTop", "btnPrev", "btnNext", "btnReset", "btnOk", "btnCancel"};
const char* const BrowsingDialogs[] = {"frmGroupSetting", "frmMsgSetting", "frmUnitSetting",
                                       "frmConstSetting", "frmEMailTriggerSetting"};

// Where everything that is to be seen stands.
std::map<std::string, QRect> PlacesIn(const QWidget& window) {
  std::map<std::string, QRect> places{{"", window.rect()}};
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->isVisible() && !widget->objectName().isEmpty()) {
      places[widget->objectName().toStdString()] = {PlaceOf(*widget), widget->size()};
    }
  }
  return places;
}

INSTANTIATE_TEST_SUITE_P(Models, DialogLayout, testing::Values("0", "1"),
                         [](const auto& model) { return std::string(model.param) == "0" ? "Kov" : "Rug"; });

TEST_P(DialogLayout, EachFitsTheSmallScreenWithoutScrolling) {
  for (const ModalScreen& dialog : AllModalScreens) {
    SCOPED_TRACE(dialog.name);
    if (dialog.large) {
      continue;
    }
    During(dialog.name, [](const QWidget& window) {
      EXPECT_LE(window.width(), InAFrame.width());
      EXPECT_LE(window.height(), InAFrame.height());
      for (const ContentsArea* area : window.findChildren<ContentsArea*>()) {
        EXPECT_EQ(0, area->horizontalScrollBar()->maximum());
        EXPECT_EQ(0, area->verticalScrollBar()->maximum());
      }
    });
  }
}

TEST_P(DialogLayout, TheButtonsStandAlikeInEachBrowsingDialog) {
  std::map<std::string, QRect> first;
  for (const char* name : BrowsingDialogs) {
    SCOPED_TRACE(name);
    During(name, [&](QWidget& window) {
      for (std::size_t at = 0; at < BrowsingButtons.size(); ++at) {
        const auto& button = In<QPushButton>(window, BrowsingButtons[at]);
        // The first four from the left edge, the last two from the right one, all from the lower one.
        const bool left = at < 4;
        const QPoint corner = left ? window.rect().bottomLeft() : window.rect().bottomRight();
        const QRect place(PlaceOf(button) - corner, button.size());
        EXPECT_EQ(place, first.emplace(BrowsingButtons[at], place).first->second) << BrowsingButtons[at];
      }
      const auto& label = In<QLabel>(window, "lblSelectNo");
      const QRect place(PlaceOf(label) - window.rect().bottomLeft(), QSize(0, label.height()));
      EXPECT_EQ(place, first.emplace("lblSelectNo", place).first->second);
      const int gap = PlaceOf(In<QPushButton>(window, "btnOk")).x() -
                      In<QPushButton>(window, "btnReset").geometry().right();
      EXPECT_GE(gap, 24);
    });
  }
  EXPECT_EQ(BrowsingButtons.size() + 1, first.size());
}

TEST_P(DialogLayout, TheSlotsOfAGroupStandInTwoColumnsOfFive) {
  During("frmGroupSetting", [](QWidget& window) {
    for (int slot = 0; slot < 10; ++slot) {
      const auto& list = In<QComboBox>(window, "cmbGC_" + std::to_string(slot));
      const auto& head = In<QComboBox>(window, slot < 5 ? "cmbGC_0" : "cmbGC_5");
      const auto& beside = In<QComboBox>(window, "cmbGC_" + std::to_string(slot % 5));
      EXPECT_EQ(PlaceOf(head).x(), PlaceOf(list).x()) << slot;
      EXPECT_EQ(PlaceOf(beside).y(), PlaceOf(list).y()) << slot;
    }
  });
}

struct TimingDialog {
  const char* name;
  const char* timing;
  std::array<const char*, 2> decided;
};
const TimingDialog TimingDialogs[] = {
    {"frmMsgSetting", "cmbTiming", {"cmbTiming1", "cmbTiming2"}},
    {"frmEMailTriggerSetting", "cmbTriggerTiming", {"cmbTimingSetting1", "cmbTimingSetting2"}}};

void ExpectNothingMoves(QWidget& window, const TimingDialog& dialog) {
  auto& timing = In<QComboBox>(window, dialog.timing);
  std::map<std::string, QRect> places;
  for (int row = 0; row < timing.count(); ++row) {
    Pick(timing, row);
    for (const auto& [name, place] : PlacesIn(window)) {
      EXPECT_EQ(place, places.emplace(name, place).first->second) << name << " at timing " << row;
    }
  }
  EXPECT_GT(places.size(), 15U);
}

TEST_P(DialogLayout, NothingMovesWhateverTheTiming) {
  for (const TimingDialog& dialog : TimingDialogs) {
    SCOPED_TRACE(dialog.name);
    During(dialog.name, [&](QWidget& window) { ExpectNothingMoves(window, dialog); });
  }
}

TEST_P(DialogLayout, NothingMovesWhateverTheTimingInAFontOfDoubleSize) {
  DoubleTheFont();
  for (const TimingDialog& dialog : TimingDialogs) {
    SCOPED_TRACE(dialog.name);
    During(dialog.name, [&](QWidget& window) { ExpectNothingMoves(window, dialog); });
  }
}

TEST_P(DialogLayout, EachListShowsItsLongestRowWhateverTheTiming) {
  int shown = 0;
  for (const TimingDialog& dialog : TimingDialogs) {
    SCOPED_TRACE(dialog.name);
    During(dialog.name, [&](QWidget& window) {
      auto& timing = In<QComboBox>(window, dialog.timing);
      for (int row = 0; row < timing.count(); ++row) {
        Pick(timing, row);
        for (const char* name : dialog.decided) {
          const auto& list = In<QComboBox>(window, name);
          constexpr int Arrow = 20;
          EXPECT_GE(list.width(), LongestRow(list) + Arrow) << name << " at timing " << row;
          shown += list.isVisible() ? 1 : 0;
        }
      }
    });
  }
  EXPECT_EQ(6 + 9, shown);
}

TEST_P(DialogLayout, AnAddressOfFullLengthIsElidedAndWidensNothing) {
  Start(GetParam());
  QSize before;
  During("frmEMailTriggerSetting", [&](const QWidget& window) { before = window.size(); });
  SetText(*FindTextRecord("J", 0, "RAD3"), std::u16string(64, u'W'), SlotValue);
  During("frmEMailTriggerSetting", [&](QWidget& window) {
    EXPECT_EQ(before, window.size());
    for (int box = 0; box < 8; ++box) {
      const auto& label = In<ElidedLabel>(window, "lblRecvMailAdd_" + std::to_string(box));
      const auto& check = In<QCheckBox>(window, "chkRecvMailAddNo_" + std::to_string(box));
      EXPECT_EQ(box == 2, label.IsCut()) << box;
      EXPECT_NEAR(PlaceOf(check).y() + check.height() / 2, PlaceOf(label).y() + label.height() / 2, 2) << box;
      EXPECT_LE(PlaceOf(check).x() + check.width(), PlaceOf(label).x()) << box;
      EXPECT_LE(PlaceOf(label).x() + label.width(), window.width()) << box;
    }
  });
}

TEST_P(DialogLayout, AnAddressThatIsElidedIsToldWholeByATip) {
  Start(GetParam());
  SetText(*FindTextRecord("J", 0, "RAD1"), u"a@b.example", SlotValue);
  SetText(*FindTextRecord("J", 0, "RAD3"), std::u16string(64, u'W'), SlotValue);
  During("frmEMailTriggerSetting", [&](QWidget& window) {
    QToolTip::hideText();
    const auto tipOf = [&](const char* name) {
      auto& label = In<ElidedLabel>(window, name);
      QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), label.mapToGlobal(QPoint(2, 2)));
      QApplication::sendEvent(&label, &help);
      return QToolTip::text();
    };
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().isEmpty(); })); // that of another test
    EXPECT_EQ(QString(), tipOf("lblRecvMailAdd_0"));
    EXPECT_TRUE(tipOf("lblRecvMailAdd_2").contains(QString(64, u'W')));
  });
}

// A style marks a box only while the user goes about by the Tab key, and in a dark palette hardly.
TEST_P(DialogLayout, ABoxThatHasTheKeyboardIsMarked) {
  During("frmEMailTriggerSetting", [](QWidget& window) {
    auto& box = In<QCheckBox>(window, "chkRecvMailAddNo_3");
    const auto edge = [&] {
      const QImage picture = box.grab().toImage();
      return picture.pixelColor(picture.width() / 2, 0);
    };
    EXPECT_NE(FocusColour(box.palette()), edge());
    box.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(FocusColour(box.palette()), edge());
  });
}

// On a screen that is too small for large print the fields scroll; the buttons are always in reach.
TEST_P(DialogLayout, ASmallerWindowScrollsTheFieldsAndKeepsTheButtons) {
  for (const char* name : {"frmGroupSetting", "frmEMailTriggerSetting"}) {
    SCOPED_TRACE(name);
    During(name, [](QWidget& window) {
      const auto& area = In<ContentsArea>(window, "areaEntry");
      const int contents = area.widget()->minimumSizeHint().height();
      window.resize(window.width(), window.height() - area.height() + contents - 100);
      Settle();
      EXPECT_EQ(100, area.verticalScrollBar()->maximum());
      for (const char* button : BrowsingButtons) {
        const auto& widget = In<QPushButton>(window, button);
        EXPECT_TRUE(window.rect().contains(QRect(PlaceOf(widget), widget.size()))) << button;
      }
    });
  }
}

TEST_P(DialogLayout, TheUnitsScrollUpAndDownOnlyAndTheCurrentOneIsInView) {
  Start(GetParam());
  for (const int unit : {0, 100, 167}) {
    WhileShown(
        "frmSelectUnit", [unit] { static_cast<void>(SelectUnit(unit, 40, false)); },
        [&](QWidget& window) {
          SettleOpened(window);
          auto& table = In<GridView>(window, "fgrUnit");
          EXPECT_EQ(28, table.model()->rowCount());
          EXPECT_EQ(6, table.model()->columnCount());
          EXPECT_EQ(0, table.horizontalScrollBar()->maximum());
          EXPECT_GT(table.verticalScrollBar()->maximum(), 0);
          EXPECT_EQ(unit / 6, table.currentIndex().row());
          EXPECT_EQ(unit % 6, table.currentIndex().column());
          const QRect cell = table.visualRect(table.currentIndex());
          EXPECT_TRUE(table.viewport()->rect().contains(cell)) << unit;
          EXPECT_GE(table.viewport()->height() / cell.height(), 20);
          EXPECT_TRUE(table.hasFocus());
        });
  }
}

TEST_P(DialogLayout, AReadOnlyNumberHasTheWindowsColourAndAnotherHasNot) {
  const QPalette light = QApplication::palette();
  for (const QRgb window : {0xFFEFEFEFU, 0xFF2E2E2EU}) {
    const QColor base = window == 0xFFEFEFEFU ? QColor(Qt::white) : QColor(0x1B, 0x1B, 0x1B);
    QPalette palette{QColor(window), QColor(window)};
    palette.setColor(QPalette::Base, base);
    QApplication::setPalette(palette);
    for (const char* name : BrowsingDialogs) {
      SCOPED_TRACE(name);
      During(name, [&](QWidget& dialog) {
        auto& number = In<QLineEdit>(dialog, "txtSelectNo");
        const QImage picture = number.grab().toImage();
        const QColor inside(picture.pixel(picture.width() - 8, picture.height() / 2));
        EXPECT_EQ(number.isReadOnly() ? QColor(window) : base, inside);
        const std::string_view which = name;
        EXPECT_EQ(which == "frmGroupSetting" || which == "frmEMailTriggerSetting", number.isReadOnly());
      });
    }
  }
  QApplication::setPalette(light);
}

// --- Spoken names

struct DialogNames : DialogLayout {
  static std::u16string NameOf(QWidget& window, const char* name) {
    return FromQt(In<QWidget>(window, name).accessibleName());
  }
};
INSTANTIATE_TEST_SUITE_P(Models, DialogNames, testing::Values("0"));

TEST_P(DialogNames, NothingIsCalledByItsNameInTheCode) {
  for (const ModalScreen& dialog : AllModalScreens) {
    SCOPED_TRACE(dialog.name);
    int named = 0;
    During(dialog.name, [&](const QWidget& window) {
      for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const QString name = widget->accessibleName();
        named += name.isEmpty() ? 0 : 1;
        EXPECT_FALSE(!name.isEmpty() && name == widget->objectName()) << name.toStdString();
      }
    });
    EXPECT_GT(named, 0);
  }
}

TEST_P(DialogNames, ABoxSpeaksItsNumberAndTellsItsAddress) {
  Start(GetParam());
  SetText(*FindTextRecord("J", 0, "RAD8"), u"night@example.co.jp", SlotValue);
  During("frmEMailTriggerSetting", [](QWidget& window) {
    EXPECT_EQ(u"送信先アドレス№ 1", NameOf(window, "chkRecvMailAddNo_0"));
    EXPECT_EQ(u"送信先アドレス№ 8", NameOf(window, "chkRecvMailAddNo_7"));
    EXPECT_EQ(u"night@example.co.jp",
              FromQt(In<QWidget>(window, "chkRecvMailAddNo_7").accessibleDescription()));
  });
}

TEST_P(DialogNames, WhatHasNoCaptionOfItsOwnSpeaksWhatSetsItApart) {
  During("frmGroupSetting", [](QWidget& window) {
    EXPECT_EQ(u"トレンドの目盛表示", NameOf(window, "cmbScale"));
    EXPECT_EQ(u"トレンドの目盛表示 チャネル", NameOf(window, "cmbScaleCh"));
    EXPECT_EQ(u"データ１０", NameOf(window, "cmbGC_9"));
  });
  During("frmSelectUnit", [](QWidget& window) { EXPECT_EQ(u"単位選択", NameOf(window, "fgrUnit")); });
  During("frmAlarmSetting", [](QWidget& window) {
    EXPECT_EQ(u"警報設定値 仮数", NameOf(window, "txtAlarmSet"));
    EXPECT_EQ(u"警報設定値 指数", NameOf(window, "cmbAlarmSet"));
  });
}

// --- The keyboard

TEST_P(DialogNames, ADialogThatBeginsWithANumberOpensToHaveItTypedOver) {
  During("frmAlarmSetting", [](QWidget& window) {
    EXPECT_TRUE(In<QLineEdit>(window, "txtAlarmSet").hasFocus());
    EXPECT_EQ(QStringLiteral("3.16"), In<QLineEdit>(window, "txtAlarmSet").selectedText());
  });
  During("frmConstSetting", [](QWidget& window) {
    EXPECT_EQ(In<QLineEdit>(window, "txtMessage").text(), In<QLineEdit>(window, "txtMessage").selectedText());
    EXPECT_FALSE(In<QLineEdit>(window, "txtMessage").text().isEmpty());
  });
}

TEST_P(DialogNames, AnEntryNumberAndReturnGoToTheEntry) {
  Start(GetParam());
  SetText(*FindTextRecord("M", 4, "MESS"), u"fifth", SlotValue);
  During("frmMsgSetting", [](QWidget& window) {
    auto& number = In<QLineEdit>(window, "txtSelectNo");
    number.setFocus(Qt::MouseFocusReason);
    number.selectAll();
    QTest::keyClicks(&number, QStringLiteral("5"));
    QTest::keyClick(&number, Qt::Key_Return);
    EXPECT_EQ(QStringLiteral("fifth"), In<QLineEdit>(window, "txtMessage").text());
    EXPECT_EQ(QStringLiteral("5"), number.selectedText());
    EXPECT_TRUE(number.hasFocus());
    EXPECT_TRUE(window.isVisible());
  });
}

} // namespace
} // namespace loader::test
