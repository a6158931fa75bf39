// The choice of a unit: both shapes of its table.
#include "dialogs/frmSelectUnit.h"

#include "tests/dialogs/DialogFixture.h"

namespace loader::test {
namespace {

class SelectUnitOf : public Dialogs {
protected:
  void SetUp() override { Start(Kov); }
  // The number that the dialog hands back.
  int Choose(int unit, int inputType, bool temperatureOnly,
             const std::function<void(SelectUnitScreen&)>& act) {
    platform.screens.Expect<SelectUnitScreen>("frmSelectUnit", act);
    return SelectUnit(unit, inputType, temperatureOnly);
  }
  static void ExpectCurrent(const Grid& grid, int row, int col) {
    EXPECT_EQ(row, grid.Row);
    EXPECT_EQ(row, grid.RowSel);
    EXPECT_EQ(col, grid.Col);
  }
};

TEST_F(SelectUnitOf, HasItsCaptionsAndTheFocusOnItsTable) {
  (void)Choose(0, 30, false, [](SelectUnitScreen& screen) {
    EXPECT_EQ(u"単位選択", screen.caption);
    EXPECT_EQ(u"ＯＫ", screen.btnOk.caption);
    EXPECT_EQ(u"キャンセル", screen.btnCancel.caption);
    EXPECT_EQ(&screen.fgrUnit, screen.focusRequest);
  });
}

TEST_F(SelectUnitOf, AllUnitsStandInRowsOfSix) {
  UnitNames[167] = u"last";
  (void)Choose(0, 30, false, [](SelectUnitScreen& screen) {
    const Grid& grid = screen.fgrUnit;
    ASSERT_EQ(28, grid.Rows());
    ASSERT_EQ(6, grid.Cols());
    EXPECT_EQ(0, grid.FixedRows);
    EXPECT_EQ(0, grid.FixedCols);
    for (int unit = 0; unit < 168; ++unit) {
      EXPECT_EQ(UnitNames[static_cast<std::size_t>(unit)], grid.TextMatrix(unit / 6, unit % 6)) << unit;
    }
    EXPECT_EQ(u"゜C", grid.TextMatrix(0, 0));
    EXPECT_EQ(u"mV", grid.TextMatrix(19, 0));
    EXPECT_EQ(u"", grid.TextMatrix(0, 4)); // an empty entry is an empty cell
    EXPECT_EQ(u"last", grid.TextMatrix(27, 5));
  });
}

TEST_F(SelectUnitOf, TheTemperaturesStandAloneForTheirKindsAndWhenAsked) {
  struct Row {
    int inputType;
    bool temperatureOnly;
    bool temperatures;
  };
  for (const Row& row : {Row{0, false, true},
                         {1, false, true},
                         {29, false, true},
                         {30, false, false},
                         {41, false, false},
                         {30, true, true},
                         {40, true, true},
                         {-1, false, true}}) {
    (void)Choose(0, row.inputType, row.temperatureOnly, [&](SelectUnitScreen& screen) {
      EXPECT_EQ(row.temperatures ? 1 : 28, screen.fgrUnit.Rows()) << row.inputType;
      EXPECT_EQ(row.temperatures ? 2 : 6, screen.fgrUnit.Cols()) << row.inputType;
      EXPECT_EQ(u"゜C", screen.fgrUnit.TextMatrix(0, 0));
      EXPECT_EQ(u"゜F", screen.fgrUnit.TextMatrix(0, 1));
    });
  }
}

// Seven half-width characters of 100 twips, times 1.2.
TEST_F(SelectUnitOf, EveryColumnHasTheSameWidth) {
  for (const bool temperatures : {false, true}) {
    (void)Choose(0, 30, temperatures, [](SelectUnitScreen& screen) {
      for (int column = 0; column < screen.fgrUnit.Cols(); ++column) {
        EXPECT_EQ(840, screen.fgrUnit.ColWidth(column));
      }
    });
  }
}

TEST_F(SelectUnitOf, TheUnitInForceIsTheCurrentCell) {
  for (int unit = 0; unit < 168; ++unit) {
    (void)Choose(unit, 30, false,
                 [&](SelectUnitScreen& screen) { ExpectCurrent(screen.fgrUnit, unit / 6, unit % 6); });
  }
  (void)Choose(1, 1, false, [](SelectUnitScreen& screen) { ExpectCurrent(screen.fgrUnit, 0, 1); });
}

TEST_F(SelectUnitOf, AUnitOutsideTheTableMakesTheFirstCellCurrent) {
  for (const int unit : {-1, 168, 32767, -32768}) {
    (void)Choose(unit, 30, false, [](SelectUnitScreen& screen) { ExpectCurrent(screen.fgrUnit, 0, 0); });
  }
  for (const int unit : {2, 6, 7, 114, -1}) {
    (void)Choose(unit, 1, false, [](SelectUnitScreen& screen) { ExpectCurrent(screen.fgrUnit, 0, 0); });
  }
}

TEST_F(SelectUnitOf, EveryUnitWithANameCanBeTakenByEitherWayAndNoOther) {
  UnitNames[156] = u"own";
  for (const bool byButton : {true, false}) {
    for (int unit = 0; unit < 168; ++unit) {
      const bool named = !UnitNames[static_cast<std::size_t>(unit)].empty();
      const int chosen = Choose(0, 40, false, [&](SelectUnitScreen& screen) {
        EXPECT_FALSE(screen.refused);
        if (byButton) {
          screen.fgrUnit.SelectRow(unit / 6);
          screen.fgrUnit.Col = unit % 6;
          EXPECT_TRUE(user.Click(screen.btnOk));
        } else {
          EXPECT_TRUE(user.DoubleClick(screen.fgrUnit, unit / 6, unit % 6));
        }
        EXPECT_EQ(!named, screen.refused) << unit;
        EXPECT_EQ(!named, platform.screens.Reachable(screen)) << unit; // open still
      });
      EXPECT_EQ(named ? unit : -1, chosen);
    }
  }
}

TEST_F(SelectUnitOf, AnotherCellCanBeTakenAfterOneThatWasRefused) {
  EXPECT_EQ(114, Choose(4, 40, false, [&](SelectUnitScreen& screen) {
              EXPECT_TRUE(user.Click(screen.btnOk)); // the unit in force has no name
              EXPECT_TRUE(screen.refused);
              EXPECT_TRUE(user.DoubleClick(screen.fgrUnit, 19, 0));
            }));
}

TEST_F(SelectUnitOf, TheTemperaturesHaveTheirNumbers) {
  EXPECT_EQ(0,
            Choose(1, 1, false, [&](SelectUnitScreen& screen) { user.DoubleClick(screen.fgrUnit, 0, 0); }));
  EXPECT_EQ(1,
            Choose(0, 40, true, [&](SelectUnitScreen& screen) { user.DoubleClick(screen.fgrUnit, 0, 1); }));
  EXPECT_EQ(1, Choose(1, 1, false, [&](SelectUnitScreen& screen) { user.Click(screen.btnOk); }));
}

TEST_F(SelectUnitOf, CancelAndClosingChooseNothing) {
  EXPECT_EQ(-1, Choose(3, 30, false, [&](SelectUnitScreen& screen) {
    EXPECT_TRUE(user.Click(screen.btnCancel));
    EXPECT_FALSE(platform.screens.Reachable(screen));
  }));
  EXPECT_EQ(-1, Choose(3, 30, false, [&](SelectUnitScreen& screen) { EXPECT_TRUE(user.Escape(screen)); }));
  EXPECT_EQ(-1,
            Choose(3, 30, false, [&](SelectUnitScreen& screen) { EXPECT_TRUE(user.CloseWindow(screen)); }));
  EXPECT_EQ(-1, Choose(4, 30, false, [&](SelectUnitScreen& screen) {
    user.Click(screen.btnOk); // refused
    user.Click(screen.btnCancel);
  }));
}

TEST_F(SelectUnitOf, NothingReachesTheStore) {
  const StoreWatch store;
  (void)Choose(3, 30, false, [&](SelectUnitScreen& screen) { user.DoubleClick(screen.fgrUnit, 1, 1); });
  EXPECT_TRUE(store.Untouched());
}

} // namespace
} // namespace loader::test
