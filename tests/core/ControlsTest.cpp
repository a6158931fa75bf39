#include "platform/Controls.h"

#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"

namespace loader {
namespace {

struct SampleScreen : Screen {
  SampleScreen() : Screen("frmSample") {}
  ListBox cmbKind{*this, "cmbKind"};
  TextField txtName{*this, "txtName"};
  TabPages tbsPages{*this, "tbsPages"};
  Grid fgrTable{*this, "fgrTable"};
};

TEST(Controls, RegisterThemselvesInTheirScreenUnderTheirName) {
  SampleScreen screen;
  EXPECT_EQ(&screen.cmbKind, screen.Find("cmbKind"));
  EXPECT_EQ(nullptr, screen.Find("cmbNothing"));
  EXPECT_EQ("cmbDI(3)", ElementName("cmbDI", 3));
}

TEST(Controls, TwoControlsOfOneNameAreADefect) {
  SampleScreen screen;
  EXPECT_THROW(Label(screen, "txtName"), std::logic_error);
}

TEST(ListBoxRecord, SelectionByTheProgramRunsTheChangeHandler) {
  SampleScreen screen;
  int changes = 0;
  screen.cmbKind.onChange = [&] { ++changes; };
  AddItem(screen.cmbKind, u"OFF");
  AddItem(screen.cmbKind, u"ON", 7);
  SelectRow(screen.cmbKind, 1);
  EXPECT_EQ(1, screen.cmbKind.index);
  EXPECT_EQ(7, screen.cmbKind.itemData[1]);
  EXPECT_EQ(1, changes);
}

TEST(ListBoxRecord, TellsTheRowThatStoodBeforeThePick) {
  SampleScreen screen;
  ListBox& list = screen.cmbKind;
  AddItem(list, u"A");
  AddItem(list, u"B");
  SelectRow(list, 1);
  EXPECT_EQ(-1, list.indexBefore);
  ShowRow(list, 0); // nobody has picked it
  EXPECT_EQ(-1, list.indexBefore);
  SelectRow(list, 1);
  EXPECT_EQ(0, list.indexBefore);
  SelectRow(list, 1);
  EXPECT_EQ(1, list.indexBefore);
  SelectRow(list, 2);
  EXPECT_EQ(1, list.indexBefore);
}

TEST(ListBoxRecord, ARowOutsideTheListLeavesTheSelectionAndRunsNothing) {
  SampleScreen screen;
  AddItem(screen.cmbKind, u"OFF");
  SelectRow(screen.cmbKind, 0);
  screen.cmbKind.onChange = [] { FAIL() << "ran for a row outside"; };
  SelectRow(screen.cmbKind, 1);
  SelectRow(screen.cmbKind, -1);
  SelectRow(screen.cmbKind, 70000);
  EXPECT_EQ(0, screen.cmbKind.index);
}

TEST(ListBoxRecord, FillTakesTheFirstTextsAndSelectsNothing) {
  SampleScreen screen;
  const std::vector<std::u16string> texts{u"a", u"b", u"c"};
  FillList(screen.cmbKind, texts, 2);
  EXPECT_EQ((std::vector<std::u16string>{u"a", u"b"}), screen.cmbKind.items);
  EXPECT_EQ(-1, screen.cmbKind.index);
  FillList(screen.cmbKind, texts, 9);
  EXPECT_EQ(3U, screen.cmbKind.items.size());
}

TEST(FieldRecord, AFocusRequestIsKeptByTheScreenWithTheSelection) {
  SampleScreen screen;
  screen.txtName.text = u"abc";
  RequestFocusAndSelectAll(screen.txtName);
  EXPECT_EQ(&screen.txtName, screen.focusRequest);
  EXPECT_EQ(0, screen.txtName.selStart);
  EXPECT_EQ(3, screen.txtName.selLength);
  EXPECT_TRUE(screen.txtName.selectionPending);
}

TEST(PagesRecord, SelectionByTheProgramRunsTheChangeHandlerAndAPageOutsideDoesNothing) {
  SampleScreen screen;
  screen.tbsPages.pages = {{u"one"}, {u"two"}};
  int changes = 0;
  screen.tbsPages.onChange = [&] { ++changes; };
  SelectPage(screen.tbsPages, 1);
  SelectPage(screen.tbsPages, 2);
  EXPECT_EQ(1, screen.tbsPages.current);
  EXPECT_EQ(1, changes);
}

TEST(GridRecord, KeepsItsCellsWhenItGrows) {
  SampleScreen screen;
  Grid& grid = screen.fgrTable;
  grid.Resize(2, 2);
  grid.SetText(1, 1, u"x");
  grid.SetBack(1, 1, 0x404040);
  grid.Resize(4, 3);
  EXPECT_EQ(u"x", grid.TextMatrix(1, 1));
  EXPECT_EQ(0x404040U, grid.CellAt(1, 1).back);
  EXPECT_EQ(u"", grid.TextMatrix(3, 2));
}

TEST(GridRecord, TheRevisionMovesOnlyWhenSomethingChanges) {
  SampleScreen screen;
  Grid& grid = screen.fgrTable;
  grid.Resize(2, 2);
  grid.SetText(0, 0, u"x");
  const auto before = grid.Revision();
  grid.SetText(0, 0, u"x");
  grid.SetColWidth(0, grid.ColWidth(0));
  EXPECT_EQ(before, grid.Revision());
  grid.SetText(0, 0, u"y");
  EXPECT_NE(before, grid.Revision());
}

TEST(GridRecord, AnIndexOutsideIsARunTimeFailure) {
  SampleScreen screen;
  Grid& grid = screen.fgrTable;
  grid.Resize(2, 2);
  EXPECT_THROW(grid.SetText(2, 0, u"x"), RunTimeFailure);
  EXPECT_THROW(grid.SetBack(0, -1, White), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(grid.ColWidth(2)), RunTimeFailure);
  EXPECT_THROW(grid.SelectRow(2), RunTimeFailure);
  EXPECT_THROW(grid.Resize(-1, 2), RunTimeFailure);
}

TEST(GridRecord, ClearEmptiesCellsAndKeepsTheSize) {
  SampleScreen screen;
  Grid& grid = screen.fgrTable;
  grid.Resize(2, 3);
  grid.SetText(1, 2, u"x");
  grid.Clear();
  EXPECT_EQ(u"", grid.TextMatrix(1, 2));
  EXPECT_EQ(2, grid.Rows());
  EXPECT_EQ(3, grid.Cols());
}

} // namespace
} // namespace loader
