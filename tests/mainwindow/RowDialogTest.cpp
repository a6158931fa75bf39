// A double click on a row of a table: which entry its dialog gets, and what is shown anew behind it.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

struct RowCase {
  const char* name;
  Grid ParamLoaderScreen::*table;
  RowDialog RowDialogs::*dialog;
  int page;
  int row;
  int kovEntry;
  int rugEntry;
};
void PrintTo(const RowCase& tested, std::ostream* out) {
  *out << tested.name;
}

class RowDialogOf : public MainWindow, public testing::WithParamInterface<RowCase> {
protected:
  std::vector<int> entries;
  void Expect(int entry) {
    Window().rowDialogs.*GetParam().dialog = [this](int shown) { entries.push_back(shown); };
    user.ChoosePage(Window().tbsParameter, GetParam().page);
    EXPECT_TRUE(user.DoubleClick(Window().*GetParam().table, GetParam().row, 1));
    EXPECT_EQ(std::vector<int>{entry}, entries);
  }
};
TEST_P(RowDialogOf, GetsItsEntryOnKov) {
  Open("KOV");
  Expect(GetParam().kovEntry);
}
TEST_P(RowDialogOf, GetsItsEntryOnRug) {
  Open("RUG");
  Expect(GetParam().rugEntry);
}
TEST_P(RowDialogOf, IsNotAskedForBeforeARowIsChosen) {
  Open("KOV");
  Grid& table = Window().*GetParam().table;
  Window().rowDialogs.*GetParam().dialog = [this](int shown) { entries.push_back(shown); };
  table.SelectRow(0);
  table.onDoubleClick();
  EXPECT_TRUE(entries.empty());
}
// It would write what it has shown over what the recorder brings meanwhile.
TEST_P(RowDialogOf, IsNotOpenedDuringAnExchange) {
  Open("KOV");
  Window().rowDialogs.*GetParam().dialog = [this](int shown) { entries.push_back(shown); };
  user.ChoosePage(Window().tbsParameter, GetParam().page);
  for (const bool linkIsOpening : {true, false}) {
    Window().flowUnderWay = linkIsOpening;
    Window().btnRegRead.enabled = linkIsOpening;
    EXPECT_TRUE(user.DoubleClick(Window().*GetParam().table, GetParam().row, 1));
    EXPECT_TRUE(entries.empty());
  }
  Window().btnRegRead.enabled = true;
  EXPECT_TRUE(user.DoubleClick(Window().*GetParam().table, GetParam().row, 1));
  EXPECT_EQ(1U, entries.size());
}
TEST_P(RowDialogOf, MayNotBeThere) {
  Open("KOV");
  Window().rowDialogs.*GetParam().dialog = {};
  user.ChoosePage(Window().tbsParameter, GetParam().page);
  EXPECT_TRUE(user.DoubleClick(Window().*GetParam().table, GetParam().row, 1));
  EXPECT_TRUE(platform.screens.shownModally.empty());
}

// Rows count the headings: two in the channel tables. Operation channels follow the 18 or 36 measuring ones.
// A mail trigger is told by its row.
INSTANTIATE_TEST_SUITE_P(
    Tables, RowDialogOf,
    testing::Values(RowCase{"Channel", &ParamLoaderScreen::fgrCh, &RowDialogs::channel, 0, 4, 2, 2},
                    RowCase{"Operation", &ParamLoaderScreen::fgrOperationChSet, &RowDialogs::operation, 1, 2,
                            18, 36},
                    RowCase{"Group", &ParamLoaderScreen::fgrGroup, &RowDialogs::group, 3, 1, 0, 0},
                    RowCase{"Message", &ParamLoaderScreen::fgrMess, &RowDialogs::message, 3, 10, 9, 9},
                    RowCase{"Unit", &ParamLoaderScreen::fgrUnit, &RowDialogs::unit, 3, 12, 11, 11},
                    RowCase{"Constant", &ParamLoaderScreen::fgrConst, &RowDialogs::constant, 1, 5, 4, 4},
                    RowCase{"MailTrigger", &ParamLoaderScreen::flxEMailTriggerSetting,
                            &RowDialogs::mailTrigger, 5, 3, 3, 3}),
    [](const auto& tested) { return std::string(tested.param.name); });

// --- What is shown anew

class BehindADialog : public MainWindow {
protected:
  void SetUp() override {
    Open("KOV");
    for (Grid* table : Tables()) {
      table->SetText(table->FixedRows, 0, u"old");
    }
  }
  static std::vector<Grid*> Tables() {
    ParamLoaderScreen& window = Window();
    return {
        &window.fgrCh,    &window.fgrOperationChSet,     &window.fgrGroup, &window.fgrMess, &window.fgrUnit,
        &window.fgrConst, &window.flxEMailTriggerSetting};
  }
  // The tables whose first row was written anew when `table` had shown its dialog. The mail table has no
  // caption in its first column.
  std::vector<std::string> WrittenAnewBehind(Grid& table, RowDialog RowDialogs::*dialog) {
    Window().rowDialogs.*dialog = [](int) {};
    table.SelectRow(table.FixedRows);
    table.onDoubleClick();
    std::vector<std::string> anew;
    for (const Grid* shown : Tables()) {
      if (CellText(*shown, shown->FixedRows, 0) != "old") {
        anew.push_back(shown->name);
      }
    }
    return anew;
  }
};

using Names = std::vector<std::string>;
const Names All{"fgrCh", "fgrOperationChSet", "fgrGroup", "fgrMess", "fgrUnit", "fgrConst"};

TEST_F(BehindADialog, OfAChannelIsEverything) {
  EXPECT_EQ(All, WrittenAnewBehind(Window().fgrCh, &RowDialogs::channel));
}
TEST_F(BehindADialog, OfAnOperationChannelIsEverything) {
  EXPECT_EQ(All, WrittenAnewBehind(Window().fgrOperationChSet, &RowDialogs::operation));
}
TEST_F(BehindADialog, OfAGroupAreTheGroupsAndTheChannels) {
  EXPECT_EQ((Names{"fgrCh", "fgrGroup"}), WrittenAnewBehind(Window().fgrGroup, &RowDialogs::group));
}
TEST_F(BehindADialog, OfAMessageAreTheMessages) {
  EXPECT_EQ(Names{"fgrMess"}, WrittenAnewBehind(Window().fgrMess, &RowDialogs::message));
}
TEST_F(BehindADialog, OfAUnitAreTheUnitsAndTheChannels) {
  EXPECT_EQ((Names{"fgrCh", "fgrUnit"}), WrittenAnewBehind(Window().fgrUnit, &RowDialogs::unit));
}
TEST_F(BehindADialog, OfAConstantAreTheConstants) {
  EXPECT_EQ(Names{"fgrConst"}, WrittenAnewBehind(Window().fgrConst, &RowDialogs::constant));
}
TEST_F(BehindADialog, OfAMailTriggerIsNothing) {
  EXPECT_EQ(Names{}, WrittenAnewBehind(Window().flxEMailTriggerSetting, &RowDialogs::mailTrigger));
}
// A refresh goes to the first rows; the user is where he opened the dialog.
TEST_F(BehindADialog, TheUserIsWhereHeWas) {
  Window().rowDialogs.channel = [](int) {};
  int column = 1;
  for (Grid* table : Tables()) {
    table->SelectRow(table->FixedRows + 2);
    table->Col = column++ % table->Cols();
  }
  Window().CopySourceRow = 2;
  Window().fgrCh.onDoubleClick();
  column = 1;
  for (const Grid* table : Tables()) {
    EXPECT_EQ(table->FixedRows + 2, table->Row) << table->name;
    EXPECT_EQ(table->FixedRows + 2, table->RowSel) << table->name;
    EXPECT_EQ(column++ % table->Cols(), table->Col) << table->name;
  }
  EXPECT_EQ(2, Window().CopySourceRow);
}
TEST_F(BehindADialog, ATableIsDrawnAgainWhenItIsWhole) {
  (void)WrittenAnewBehind(Window().fgrCh, &RowDialogs::channel);
  for (const Grid* table : Tables()) {
    EXPECT_TRUE(table->Redraw) << table->name;
  }
}

} // namespace
} // namespace loader::test
