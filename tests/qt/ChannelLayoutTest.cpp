// The screens of channels, formulas and terms measured: whole on a screen of 1280 x 800, in reach on a small
// one, aligned; and what their widgets are called.
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <map>
#include <set>

#include "core/Text.h"
#include "core/modIni.h"
#include "qt/ContentsArea.h"
#include "qt/GridView.h"
#include "qt/ListBoxView.h"
#include "qt/NoteLabel.h"
#include "qt/PowerLabel.h"
#include "qt/QtText.h"
#include "qt/ReadableColour.h"
#include "tests/qt/DialogLayout.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

// What the frame of a window leaves of a screen of 1280 x 800.
constexpr QSize Desk(1268, 770);
const char* const ChannelScreens[] = {"frmChSetting", "frmOperationChSet"};

struct ChannelLayout : DialogLayout {
  void DuringAt(QSize size, std::string_view name, const std::function<void(QWidget&)>& look) {
    During(name, [&](QWidget& window) {
      window.resize(size);
      Settle();
      ASSERT_EQ(size, window.size());
      look(window);
    });
  }
};
INSTANTIATE_TEST_SUITE_P(Models, ChannelLayout, testing::Values("0", "1"),
                         [](const auto& model) { return std::string(model.param) == "0" ? "Kov" : "Rug"; });

void ExpectNoScrolling(QWidget& window) {
  const auto& area = In<ContentsArea>(window, "areaEntry");
  EXPECT_EQ(0, area.horizontalScrollBar()->maximum());
  EXPECT_EQ(0, area.verticalScrollBar()->maximum());
}

void ExpectButtonsInReach(QWidget& window) {
  for (const char* name :
       {"txtChannel", "btnTop", "btnPrev", "btnNext", "btnReset", "OKButton", "CancelButton"}) {
    const auto& widget = In<QWidget>(window, name);
    EXPECT_TRUE(window.rect().contains(QRect(PlaceOf(widget), widget.size()))) << name;
    EXPECT_FALSE(In<ContentsArea>(window, "areaEntry").isAncestorOf(&widget)) << name;
  }
}

// Texts in full, notes with all their lines.
void ExpectWholeTexts(QWidget& window) {
  int texts = 0;
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (label->isVisible() && !label->text().isEmpty()) {
      const std::string name = label->objectName().toStdString();
      if (label->wordWrap()) {
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << name;
      } else {
        EXPECT_GE(label->contentsRect().width(), label->fontMetrics().horizontalAdvance(label->text()))
            << name;
      }
      ++texts;
    }
  }
  EXPECT_GT(texts, 30);
}

// The contents have a place for each of their widgets: what is out of sight is scrolled to.
void ExpectAllOnTheContents(QWidget& window) {
  const QWidget& contents = *In<ContentsArea>(window, "areaEntry").widget();
  int widgets = 0;
  for (const QWidget* widget : contents.findChildren<QWidget*>()) {
    if (widget->isVisible()) {
      const QRect place(widget->mapTo(&contents, QPoint(0, 0)), widget->size());
      EXPECT_TRUE(contents.rect().contains(place)) << widget->objectName().toStdString();
      EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << widget->objectName().toStdString();
      ++widgets;
    }
  }
  EXPECT_GT(widgets, 80);
}

TEST_P(ChannelLayout, AllIsSeenAtOnceOnADesk) {
  for (const char* name : ChannelScreens) {
    SCOPED_TRACE(name);
    DuringAt(Desk, name, [](QWidget& window) {
      ExpectNoScrolling(window);
      ExpectButtonsInReach(window);
      ExpectWholeTexts(window);
      ExpectAllOnTheContents(window);
    });
  }
}

TEST_P(ChannelLayout, ASmallScreenScrollsUpAndDownAndKeepsTheButtons) {
  for (const char* name : ChannelScreens) {
    SCOPED_TRACE(name);
    DuringAt(InAFrame, name, [](QWidget& window) {
      const auto& area = In<ContentsArea>(window, "areaEntry");
      EXPECT_EQ(0, area.horizontalScrollBar()->maximum());
      EXPECT_GT(area.verticalScrollBar()->maximum(), 0);
      ExpectButtonsInReach(window);
      ExpectWholeTexts(window);
      ExpectAllOnTheContents(window);
    });
  }
}

TEST_P(ChannelLayout, ASmallScreenHasRoomForTwoColumnsBesideEachOther) {
  for (const char* name : ChannelScreens) {
    DuringAt(InAFrame, name, [&](QWidget& window) {
      const auto& channel = In<QWidget>(window, "columnChannel");
      EXPECT_EQ(PlaceOf(channel).y(), PlaceOf(In<QWidget>(window, "columnRanges")).y()) << name;
      EXPECT_GT(PlaceOf(In<QWidget>(window, "columnMore")).y(), PlaceOf(channel).y() + channel.height())
          << name;
    });
  }
}

TEST_P(ChannelLayout, LargePrintScrollsAndCutsNothing) {
  DoubleTheFont();
  for (const char* name : ChannelScreens) {
    SCOPED_TRACE(name);
    for (const QSize size : {InAFrame, Desk}) {
      DuringAt(size, name, [](QWidget& window) {
        ExpectButtonsInReach(window);
        ExpectWholeTexts(window);
        ExpectAllOnTheContents(window);
      });
    }
  }
  DuringAt(InAFrame, "frmChSetting", [](QWidget& window) {
    EXPECT_EQ(0, In<ContentsArea>(window, "areaEntry").horizontalScrollBar()->maximum());
  });
}

TEST_P(ChannelLayout, TheFormulasHaveTheLongestTextThatThereIsAndTheirButtonsBeside) {
  for (const QSize size : {InAFrame, Desk}) {
    DuringAt(size, "frmOperationChSet", [&](QWidget& window) {
      for (const char* number : {"1", "2", "3", "4"}) {
        const auto& text = In<QLabel>(window, std::string("lblFormula") + number);
        EXPECT_EQ(QStringLiteral("MAX(K11,M12)+MAX(K11,M12)+MAX(K11,M12)"), text.text());
        EXPECT_TRUE(window.rect().contains(QRect(PlaceOf(text), text.size())));
        const auto& set = In<QPushButton>(window, std::string("cmdFormulaSet") + number);
        const auto& clear = In<QPushButton>(window, std::string("cmdFormulaDel") + number);
        EXPECT_EQ(set.y(), clear.y());
        EXPECT_NEAR(text.geometry().center().y(), set.geometry().center().y(), 1);
        EXPECT_LT(text.geometry().right(), set.x());
        EXPECT_LT(set.geometry().right(), clear.x());
      }
    });
  }
}

TEST_P(ChannelLayout, LowerAndUpperValuesStandInTwoColumnsOverAllRanges) {
  constexpr std::array Lower{"txtStMin", "txtIndMin", "txtPVShift", "txtRecRangeMin"};
  constexpr std::array Upper{"txtStMax", "txtIndMax", "txtPVSlope", "txtRecRangeMax"};
  for (const char* name : ChannelScreens) {
    SCOPED_TRACE(name);
    DuringAt(Desk, name, [&](QWidget& window) {
      std::set<std::pair<int, int>> lower;
      std::set<std::pair<int, int>> upper;
      for (std::size_t row = 0; row < Lower.size(); ++row) {
        const auto& low = In<QLineEdit>(window, Lower[row]);
        const auto& high = In<QLineEdit>(window, Upper[row]);
        EXPECT_EQ(PlaceOf(low).y(), PlaceOf(high).y()) << Lower[row];
        lower.emplace(PlaceOf(low).x(), low.width());
        upper.emplace(PlaceOf(high).x(), high.width());
      }
      EXPECT_EQ(1U, lower.size());
      EXPECT_EQ(1U, upper.size());
    });
  }
}

TEST_P(ChannelLayout, TheAlarmsAreATable) {
  for (const char* name : ChannelScreens) {
    SCOPED_TRACE(name);
    DuringAt(Desk, name, [](QWidget& window) {
      const std::array columns{"lblAlarm", "cmbAlarmType", "txtAlarmSet", "lblAlarmSetInput", "cmbAlarmOut"};
      int right = 0;
      for (const std::string column : columns) {
        if (column == "lblAlarmSetInput" && ModelCode != "KOV") {
          continue; // without a logarithm there are no powers, and no room for them
        }
        const QWidget& first = In<QWidget>(window, column + "1");
        EXPECT_GE(first.x(), right) << column;
        constexpr int Gap = 30;
        EXPECT_LE(first.x(), right + Gap) << column;
        for (const char* row : {"2", "3", "4"}) {
          const QWidget& each = In<QWidget>(window, column + row);
          EXPECT_EQ(first.geometry().right(), each.geometry().right()) << column << row;
          const QWidget& label = In<QWidget>(window, std::string("lblAlarm") + row);
          EXPECT_NEAR(label.geometry().center().y(), each.geometry().center().y(), 1) << column << row;
        }
        right = first.geometry().right();
      }
      EXPECT_EQ(In<QWidget>(window, "lblAlarmType").x(), In<QWidget>(window, "cmbAlarmType1").x());
      EXPECT_EQ(In<QWidget>(window, "lblAlarmSet").x(), In<QWidget>(window, "txtAlarmSet1").x());
      EXPECT_EQ(In<QWidget>(window, "lblAlarmOut").x(), In<QWidget>(window, "cmbAlarmOut1").x());
    });
  }
}

TEST_P(ChannelLayout, EachListShowsItsLongestRow) {
  for (const char* name : {"frmChSetting", "frmOperationChSet", "frmOpSetting"}) {
    SCOPED_TRACE(name);
    During(name, [&](QWidget& window) {
      int lists = 0;
      for (const ListBoxView* list : window.findChildren<ListBoxView*>()) {
        if (list->isVisible()) {
          constexpr int Arrow = 20;
          EXPECT_GE(list->width(), LongestRow(*list) + Arrow) << list->objectName().toStdString();
          ++lists;
        }
      }
      EXPECT_GE(lists, 4);
    });
  }
}

TEST_P(ChannelLayout, TheSwatchBesideTheColoursShowsTheOneThatIsChosen) {
  for (const char* name : ChannelScreens) {
    SCOPED_TRACE(name);
    DuringAt(Desk, name, [](QWidget& window) {
      auto& colours = In<QComboBox>(window, "cmbDispColor");
      auto& swatch = In<QLabel>(window, "lblColor");
      EXPECT_EQ(colours.y(), swatch.y());
      EXPECT_NEAR(colours.geometry().right(), swatch.x(), 12);
      ASSERT_EQ(14, colours.count());
      for (int row = 0; row < colours.count(); ++row) {
        Pick(colours, row);
        const QImage picture = swatch.grab().toImage();
        EXPECT_EQ(ToColour(ColourTable[static_cast<std::size_t>(row) + 1]),
                  QColor(picture.pixel(picture.rect().center())))
            << row;
      }
    });
  }
}

TEST_P(ChannelLayout, TheNotesStandUnderTheKindInSmallPrint) {
  During("frmChSetting", [](QWidget& window) {
    const auto& kind = In<QWidget>(window, "cmbInputType");
    const auto& first = In<NoteLabel>(window, "lblNote1");
    const auto& second = In<NoteLabel>(window, "lblNote2");
    EXPECT_GT(first.y(), kind.geometry().bottom());
    EXPECT_GT(second.y(), first.geometry().bottom());
    EXPECT_LT(second.geometry().bottom(), In<QWidget>(window, "cmbInputOtch").y());
    EXPECT_LT(first.font().pointSizeF(), kind.font().pointSizeF());
    EXPECT_GT(first.font().pointSizeF(), 7);
  });
}

TEST_P(ChannelLayout, TheFormulaOfTheTermsScreenMovesNothingAsItGrows) {
  Start(GetParam());
  std::map<std::string, QRect> places;
  const auto look = [&](QWidget& window) {
    SettleOpened(window);
    for (const char* name : {"lblFormula", "btnPrev", "btnNext", "btnSet", "btnDelete", "OKButton"}) {
      const auto& widget = In<QWidget>(window, name);
      const QRect place(PlaceOf(widget).x(), 0, widget.width(), 0);
      EXPECT_EQ(place, places.emplace(name, place).first->second) << name;
    }
    const auto& text = In<QLabel>(window, "lblFormula");
    EXPECT_GE(text.contentsRect().width(), text.fontMetrics().horizontalAdvance(QString(40, u'M')) / 2);
  };
  FormulaTable empty{};
  WhileShown(
      "frmFormula", [&] { ShowFormula(empty, 1); }, look);
  FormulaTable full = SampleFormulas();
  WhileShown(
      "frmFormula", [&] { ShowFormula(full, 1); }, look);
}

// --- Spoken names

struct ChannelNames : DialogLayout {};
INSTANTIATE_TEST_SUITE_P(Models, ChannelNames, testing::Values("0"));

TEST_P(ChannelNames, NoTwoFieldsOfAScreenAreCalledAlike) {
  for (const char* name : {"frmChSetting", "frmOperationChSet", "frmFormula", "frmOpSetting"}) {
    SCOPED_TRACE(name);
    During(name, [](const QWidget& window) {
      std::map<QString, std::string> names;
      for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const bool input = qobject_cast<const QLineEdit*>(widget) != nullptr ||
                           qobject_cast<const QComboBox*>(widget) != nullptr ||
                           qobject_cast<const QPushButton*>(widget) != nullptr;
        if (input) {
          const auto [other, fresh] =
              names.emplace(widget->accessibleName(), widget->objectName().toStdString());
          EXPECT_TRUE(fresh) << widget->objectName().toStdString() << " and " << other->second;
        }
      }
      EXPECT_GE(names.size(), 6U);
    });
  }
}

TEST_P(ChannelNames, WhatHasNoCaptionOfItsOwnSpeaksWhatSetsItApart) {
  const auto nameOf = [](QWidget& window, const char* name) {
    return FromQt(In<QWidget>(window, name).accessibleName());
  };
  During("frmChSetting", [&](QWidget& window) {
    EXPECT_EQ(u"工業値 上限値", nameOf(window, "txtIndMax"));
    EXPECT_EQ(u"警報No.3 警報設定値", nameOf(window, "txtAlarmSet3"));
    EXPECT_EQ(u"警報No.4 DO リレーNo.", nameOf(window, "cmbAlarmOut4"));
    EXPECT_EQ(u"入力単位 選択", nameOf(window, "cmdUnitSelect"));
    EXPECT_EQ(u"積算単位 選択", nameOf(window, "cmdSekiUnitSelect"));
  });
  During("frmOperationChSet", [&](QWidget& window) {
    EXPECT_EQ(u"式B02 = 変更", nameOf(window, "cmdFormulaSet2"));
    EXPECT_EQ(u"式結果 = 削除", nameOf(window, "cmdFormulaDel4"));
  });
  During("frmOpSetting", [&](QWidget& window) { EXPECT_EQ(u"関数", nameOf(window, "cmbOpContents")); });
}

// Under the logarithm: what is clicked is a power of ten, which is told with the alarm that it belongs to.
TEST_P(ChannelNames, AnAlarmUnderTheLogarithmSpeaksItsPower) {
  Start(GetParam());
  for (const auto& [tag, value] : {std::pair{"TYPE", 32},
                                   {"SCAL", 1},
                                   {"TAIS", 1},
                                   {"MMIN", 1000},
                                   {"MMAX", 5000},
                                   {"SMIN", 0},
                                   {"SMAX", 4}}) {
    SetNumValue("C", 0, tag, static_cast<std::int16_t>(value));
  }
  SetNumValue("A", 0, "A2VL", 3000);
  During("frmChSetting", [](QWidget& window) {
    const auto& power = In<PowerLabel>(window, "lblAlarmSetInput2");
    ASSERT_FALSE(power.text().isEmpty());
    EXPECT_EQ(QStringLiteral("警報No.2 警報設定値 ") + power.text(), power.accessibleName());
    EXPECT_TRUE(power.isEnabled());
    EXPECT_NE(0, power.focusPolicy() & Qt::TabFocus);
  });
}

} // namespace
} // namespace loader::test
