// The rows of the operation channels: number, formulas, limits of their own.
#include "channelscreens/frmOperationChSet.h"
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

using OperationRows = EitherWindow;
LOADER_FOR_BOTH_MODELS(OperationRows);

// --- Where a channel stands

TEST_P(OperationRows, StandAtTheChannelNumberLessTheMeasuringChannels) {
  const int first = Profile.FirstOperationChannel;
  const int last = first + Profile.OperationChannelCount - 1;
  PutText("C", first - 1, "TAG", "first");
  PutText("C", last - 1, "TAG", "last");
  FillOperationRow(first);
  FillOperationRow(last);
  EXPECT_EQ("first", CellText(Window().fgrOperationChSet, 2, 2));
  EXPECT_EQ("last", CellText(Window().fgrOperationChSet, Window().fgrOperationChSet.Rows() - 1, 2));
}

TEST_P(OperationRows, TakeTheirAlarmsFromTheirOwnItem) {
  const int first = Profile.FirstOperationChannel;
  Put("A", first - 1, "A1TY", 2);
  Put("A", first - 1, "A4RL", 9);
  FillOperationRow(first);
  EXPECT_EQ("L", OperationCell(first, 42));
  EXPECT_EQ("9", OperationCell(first, 57));
}

// --- The formulas

TEST_P(OperationRows, ShowTheirFourFormulas) {
  const int first = Profile.FirstOperationChannel;
  Put("O", 0, "OP11", FormulaCompose(0, 1)); // C01
  Put("O", 0, "OP12", FormulaCompose(1, 1)); // + ABS(T02)
  Put("O", 0, "S112", FormulaCompose(1, 1));
  Put("O", 0, "OP21", FormulaCompose(8, 1)); // MAX(C03,K01)
  Put("O", 0, "S121", FormulaCompose(0, 2));
  Put("O", 0, "S221", FormulaCompose(4, 0));
  Put("O", 0, "OP31", FormulaCompose(0, 1)); // D05
  Put("O", 0, "S131", FormulaCompose(2, 4));
  Put("O", 0, "OP41", FormulaCompose(0, 1)); // B03
  Put("O", 0, "S141", FormulaCompose(5, 2));
  FillOperationRow(first);
  EXPECT_EQ("C01+ABS(T02)", OperationCell(first, 4));
  EXPECT_EQ("MAX(C03,K01)", OperationCell(first, 5));
  EXPECT_EQ("D05", OperationCell(first, 6));
  EXPECT_EQ("B03", OperationCell(first, 7));
}

TEST_P(OperationRows, TakeTheirFormulasByTheirNumberAmongTheOperationChannels) {
  const int last = Profile.FirstOperationChannel + Profile.OperationChannelCount - 1;
  Put("O", Profile.OperationChannelCount - 1, "OP41", FormulaCompose(0, 1));
  Put("O", Profile.OperationChannelCount - 1, "S141", FormulaCompose(4, 11));
  FillOperationRow(last);
  FillOperationRow(last - 1);
  EXPECT_EQ("K12", OperationCell(last, 7));
  EXPECT_EQ("", OperationCell(last - 1, 7));
}

TEST_P(OperationRows, AreEmptyWhereThereIsNoFormula) {
  const int first = Profile.FirstOperationChannel;
  for (int column = 4; column <= 7; ++column) {
    Mark(Window().fgrOperationChSet, 2, column);
  }
  FillOperationRow(first);
  for (int column = 4; column <= 7; ++column) {
    EXPECT_EQ("", OperationCell(first, column));
  }
}

// --- Limits and positions: those of another channel's input, without a partner

TEST_P(OperationRows, ShowTheirRangesAtTheirPositionWhateverTheStoredKind) {
  const int first = Profile.FirstOperationChannel;
  const int item = first - 1;
  Put("C", item, "POIN", 2);
  for (const int type : {0, 1, 30, 40}) {
    Put("C", item, "TYPE", type);
    Put("C", item, "OTCH", 0);
    for (const char* tag : {"MMIN", "MMAX", "SMIN", "SMAX", "RMIN", "RMAX"}) {
      Put("C", item, tag, 32767);
    }
    FillOperationRow(first);
    for (const int column : {12, 13, 14, 15, 19, 20}) {
      EXPECT_EQ("327.67", OperationCell(first, column)) << type << " " << column;
    }
  }
}

TEST_P(OperationRows, ShowNoMeasuringValueBelowMinus32767) {
  const int first = Profile.FirstOperationChannel;
  Put("C", first - 1, "POIN", 0);
  Put("C", first - 1, "MMIN", -32767);
  Put("C", first - 1, "MMAX", -32768);
  FillOperationRow(first);
  EXPECT_EQ("-32767", OperationCell(first, 12));
  EXPECT_EQ("", OperationCell(first, 13));
}

TEST_P(OperationRows, ShowTheRecordRangeAndTheAlarmsAtTheFValuesPosition) {
  const int first = Profile.FirstOperationChannel;
  const int item = first - 1;
  Put("C", item, "POIN", 1);
  Put("C", item, "FTIO", 1);
  Put("H", 0, "FPOI", 3);
  for (const char* tag : {"SMIN", "RMIN", "SECU"}) {
    Put("C", item, tag, 1234);
  }
  Put("A", item, "A1VL", 1234);
  FillOperationRow(first);
  EXPECT_EQ("123.4", OperationCell(first, 14));
  EXPECT_EQ("1.234", OperationCell(first, 19));
  EXPECT_EQ("1.234", OperationCell(first, 40));
  EXPECT_EQ("1.234", OperationCell(first, 43));
}

TEST_P(OperationRows, ShowAlarmsWithinTheirRecordsLimits) {
  const int first = Profile.FirstOperationChannel;
  const int item = first - 1;
  Put("C", item, "TYPE", 1);
  Put("C", item, "POIN", 0);
  PutLimits("A", item, "A1VL", -100, 100);
  Put("A", item, "A1VL", 100);
  Put("A", item, "A2VL", 30000);
  FillOperationRow(first);
  EXPECT_EQ("100", OperationCell(first, 43));
  EXPECT_EQ("30000", OperationCell(first, 47));
  Put("A", item, "A1VL", 101);
  FillOperationRow(first);
  EXPECT_EQ("", OperationCell(first, 43));
}

// RUG has no logarithm: there TAIS, from a file of hand, counts as off.
TEST_P(OperationRows, ShowExponentsUnderTheLogarithm) {
  const int first = Profile.FirstOperationChannel;
  const int item = first - 1;
  Put("C", item, "TAIS", 1);
  Put("C", item, "SMIN", -3);
  Put("C", item, "SMAX", 10);
  Put("C", item, "RMIN", -3);
  Put("C", item, "RMAX", 10);
  FillOperationRow(first);
  const bool kov = ModelCode == "KOV";
  EXPECT_EQ(kov ? "-3" : "-0.3", OperationCell(first, 14));
  EXPECT_EQ(kov ? "" : "1.0", OperationCell(first, 15));
  EXPECT_EQ(kov ? "1.00E-3" : "-0.3", OperationCell(first, 19));
  EXPECT_EQ(kov ? "" : "1.0", OperationCell(first, 20));
}

// --- Fresh values

TEST_P(OperationRows, AreShownOnlyAndNotRecordedAtFirst) {
  EXPECT_EQ("表示のみ", OperationCell(Profile.FirstOperationChannel, 22));
  EXPECT_EQ("記録有り", ChannelCell(1, 19));
}

TEST_F(KovWindow, OperationRowsStartWithTheirOwnColours) {
  EXPECT_EQ(0x00FFFFU, OperationBack(19, 1)); // colour 5
  EXPECT_EQ(0xFF0000U, ChannelBack(1, 1));    // colour 1
}

TEST_F(RugWindow, OperationRowsStartWithTheColoursOfTheChannels) {
  EXPECT_EQ(0xFF0000U, OperationBack(37, 1));
  EXPECT_EQ(0xFF0000U, ChannelBack(1, 1));
}

// They belong to the screen of an operation channel: a read that ends behind it refills the tables.
TEST_F(KovWindow, FillingTheTableLeavesTheFormulasAloneThatAreBeingEdited) {
  OperationChSetScreen screen;
  LoadEntry(screen.browsing, 18);
  screen.FormulaWork[2][1].Func = 8;
  const FormulaTable edited = screen.FormulaWork;
  Put("O", 0, "OP11", FormulaCompose(0, 1));
  Put("O", 0, "OP31", FormulaCompose(1, 1));
  RefreshAll();
  EXPECT_EQ("ABS(C01)", OperationCell(19, 6));
  EXPECT_EQ(edited, screen.FormulaWork);
}

} // namespace
} // namespace loader::test
