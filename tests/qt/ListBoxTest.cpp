// Lists: what the user chooses, what the program fills and selects, how wide they are.
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QWheelEvent>

#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

using ListBoxTest = SampleTest;

TEST_F(ListBoxTest, AChoiceOfTheUserRunsTheHandlerOnce) {
  FillList(screen.cmbKind, std::vector<std::u16string>{u"OFF", u"ON", u"AUTO"});
  screen.cmbKind.index = 0;
  ShowSample();
  std::vector<int> seen;
  screen.cmbKind.onChange = [&] { seen.push_back(screen.cmbKind.index); };
  auto& combo = Find<QComboBox>("cmbKind");
  combo.setFocus();
  QTest::keyClick(&combo, Qt::Key_Down);
  EXPECT_EQ(std::vector<int>{1}, seen);
  EXPECT_EQ(QStringLiteral("ON"), combo.currentText());
}

// Whoever answers a pick with a cascade has to know the row that stands already.
TEST_F(ListBoxTest, AChoiceOfTheUserTellsTheRowThatStoodBefore) {
  FillList(screen.cmbKind, std::vector<std::u16string>{u"OFF", u"ON", u"AUTO"});
  screen.cmbKind.index = 0;
  ShowSample();
  std::vector<int> before;
  screen.cmbKind.onChange = [&] { before.push_back(screen.cmbKind.indexBefore); };
  auto& combo = Find<QComboBox>("cmbKind");
  combo.setFocus();
  QTest::keyClick(&combo, Qt::Key_Down);
  emit combo.activated(1);
  EXPECT_EQ((std::vector<int>{0, 1}), before);
}

TEST_F(ListBoxTest, AListSetByTheProgramIsShownAndRunsNothing) {
  ShowSample();
  screen.cmbKind.onChange = [] { FAIL() << "ran"; };
  FillList(screen.cmbKind, std::vector<std::u16string>{u"２線式", u"３線式"});
  screen.cmbKind.index = 1;
  platform.userInterface.Refresh();
  auto& combo = Find<QComboBox>("cmbKind");
  EXPECT_EQ(2, combo.count());
  EXPECT_EQ(QStringLiteral("３線式"), combo.currentText());
}

TEST_F(ListBoxTest, AnIndexOutsideTheListShowsNothingChosen) {
  FillList(screen.cmbKind, std::vector<std::u16string>{u"OFF", u"ON"});
  screen.cmbKind.index = 5;
  ShowSample();
  EXPECT_EQ(-1, Find<QComboBox>("cmbKind").currentIndex());
}

TEST_F(ListBoxTest, AHandlerThatTurnsBackTheChoiceIsShown) {
  FillList(screen.cmbKind, std::vector<std::u16string>{u"KOV", u"RUG"});
  screen.cmbKind.index = 0;
  ShowSample();
  screen.cmbKind.onChange = [&] { screen.cmbKind.index = 0; };
  auto& combo = Find<QComboBox>("cmbKind");
  combo.setFocus();
  QTest::keyClick(&combo, Qt::Key_Down);
  EXPECT_EQ(0, combo.currentIndex());
}

TEST_F(ListBoxTest, AListWhoseHandlerRewritesOtherFieldsShowsThemAll) {
  FillList(screen.cmbKind, std::vector<std::u16string>{u"K", u"1-5V"});
  FillList(screen.cmbDI3, std::vector<std::u16string>{u"off"});
  ShowSample();
  screen.cmbKind.onChange = [&] {
    screen.txtValue.text = u"5.000";
    screen.txtName.enabled = false;
    FillList(screen.cmbDI3, std::vector<std::u16string>{u"x", u"y", u"z"});
    SelectRow(screen.cmbDI3, 2);
    screen.lblPlain.caption = u"V";
    screen.chkOn.checked = true;
  };
  int other = 0;
  screen.cmbDI3.onChange = [&] { ++other; };
  auto& combo = Find<QComboBox>("cmbKind");
  combo.setFocus();
  QTest::keyClick(&combo, Qt::Key_Down);
  EXPECT_EQ(QStringLiteral("5.000"), Find<QLineEdit>("txtValue").text());
  EXPECT_FALSE(Find<QLineEdit>("txtName").isEnabled());
  EXPECT_EQ(QStringLiteral("z"), Find<QComboBox>("cmbDI_3").currentText());
  EXPECT_EQ(QStringLiteral("V"), Find<QLabel>("lblPlain").text());
  EXPECT_TRUE(Find<QCheckBox>("chkOn").isChecked());
  EXPECT_EQ(1, other);
}

TEST_F(ListBoxTest, AListIsAsWideAsItsLongestRowUpToALimit) {
  const auto widthWith = [this](const std::u16string& row) {
    FillList(screen.cmbKind, std::vector<std::u16string>{u"OFF", row});
    platform.userInterface.Refresh();
    return Find<QComboBox>("cmbKind").minimumSizeHint().width();
  };
  ShowSample();
  const QFontMetrics metrics = Find<QComboBox>("cmbKind").fontMetrics();
  const int narrow = widthWith(u"ON");
  const int wide = widthWith(u"上下限警報");
  EXPECT_GT(narrow, metrics.horizontalAdvance(QStringLiteral("OFF")));
  EXPECT_EQ(7 * metrics.horizontalAdvance(u'X'), wide - narrow); // ten half widths against three
  EXPECT_EQ(widthWith(std::u16string(24, u'x')), widthWith(std::u16string(60, u'x')));
}

TEST_F(ListBoxTest, TheRowsOfAListAreLaidOutWhenItIsOpenedNotBefore) {
  FillList(screen.cmbKind, std::vector<std::u16string>{u"OFF", u"ON"});
  ShowSample();
  auto& combo = Find<QComboBox>("cmbKind");
  EXPECT_EQ(nullptr, combo.findChild<QAbstractItemView*>());
  combo.showPopup();
  ASSERT_NE(nullptr, combo.findChild<QAbstractItemView*>());
  EXPECT_EQ(2, combo.findChild<QAbstractItemView*>()->model()->rowCount());
  combo.hidePopup();
}

TEST_F(ListBoxTest, TheWheelOverAListChangesNothing) {
  FillList(screen.cmbKind, std::vector<std::u16string>{u"a", u"b", u"c"});
  screen.cmbKind.index = 1;
  ShowSample();
  auto& combo = Find<QComboBox>("cmbKind");
  combo.setFocus();
  const QPoint middle = combo.rect().center();
  QWheelEvent wheel(middle, combo.mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&combo, &wheel);
  EXPECT_EQ(1, combo.currentIndex());
  EXPECT_EQ(1, screen.cmbKind.index);
}

} // namespace
} // namespace loader::test
