// The row of a channel as a whole: shading, tags that a model lacks, rows that do not exist.
#include "mainwindow/TableCells.h"
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

TEST(ShadeColour, IsDarkGray) {
  EXPECT_EQ(0x404040U, GrayCellColor);
}

// --- Shading

struct Shading {
  int type;
  int scaling;
  bool other;  // column 5: the other channel
  bool scale;  // column 8: the scaling
  bool ranged; // columns 9 to 14
};
void PrintTo(const Shading& row, std::ostream* out) {
  *out << "TYPE " << row.type << " SCAL " << row.scaling;
}
constexpr Colour Shade(bool applies) {
  return applies ? 0xFFFFFF : 0x404040;
}
class ShadingTest : public MainWindow, public testing::WithParamInterface<Shading> {};
TEST_P(ShadingTest, OfAChannelRowTellsWhatApplies) {
  for (const char* model : {"KOV", "RUG"}) {
    frmParamLoader.reset();
    Open(model);
    Put("C", 3, "TYPE", GetParam().type);
    Put("C", 3, "SCAL", GetParam().scaling);
    FillChannelRow(4);
    EXPECT_EQ(Shade(GetParam().other), ChannelBack(4, 5)) << model;
    EXPECT_EQ(0xFFFFFFU, ChannelBack(4, 7)) << model;
    EXPECT_EQ(Shade(GetParam().scale), ChannelBack(4, 8)) << model;
    for (const int column : {9, 10, 11, 12, 13, 14}) {
      EXPECT_EQ(Shade(GetParam().ranged), ChannelBack(4, column)) << model << " " << column;
    }
  }
}
const auto NameOfShading = [](const auto& tested) {
  const int type = tested.param.type;
  return std::string("Type") + (type < 0 ? "Minus" : "") + std::to_string(std::abs(type)) + "Scaling" +
         std::to_string(tested.param.scaling);
};
INSTANTIATE_TEST_SUITE_P(
    Rows, ShadingTest,
    testing::Values(Shading{-1, 0, false, true, false}, Shading{0, 0, false, true, false},
                    Shading{0, 1, false, true, true}, Shading{1, 0, false, false, false},
                    Shading{1, 1, false, false, true}, Shading{12, 0, false, false, false},
                    Shading{14, 0, false, false, false}, Shading{15, 0, false, false, false},
                    Shading{24, 0, false, false, false}, Shading{24, 1, false, false, true},
                    Shading{25, 0, false, true, false}, Shading{30, 0, false, true, false},
                    Shading{30, 1, false, true, true}, Shading{30, 2, false, true, true},
                    Shading{33, 0, false, true, false}, Shading{39, 0, false, true, false},
                    Shading{40, 0, true, false, true}, Shading{40, 1, true, false, true},
                    Shading{41, 0, false, true, false}, Shading{41, 1, false, true, true}),
    NameOfShading);

class OperationShadingTest : public MainWindow, public testing::WithParamInterface<Shading> {};
TEST_P(OperationShadingTest, OfAnOperationRowTellsWhatApplies) {
  for (const char* model : {"KOV", "RUG"}) {
    frmParamLoader.reset();
    Open(model);
    const int channel = Profile.FirstOperationChannel + 3;
    Put("C", channel - 1, "TYPE", GetParam().type);
    Put("C", channel - 1, "SCAL", GetParam().scaling);
    FillOperationRow(channel);
    EXPECT_EQ(0xFFFFFFU, OperationBack(channel, 8)) << "no column for the other channel";
    EXPECT_EQ(0xFFFFFFU, OperationBack(channel, 10)) << model;
    EXPECT_EQ(Shade(GetParam().scale), OperationBack(channel, 11)) << model;
    for (const int column : {12, 13, 14, 15, 16, 17}) {
      EXPECT_EQ(Shade(GetParam().ranged), OperationBack(channel, column)) << model << " " << column;
    }
  }
}
// The kinds that cannot be scaled end at 14 here.
INSTANTIATE_TEST_SUITE_P(
    Rows, OperationShadingTest,
    testing::Values(Shading{0, 0, false, true, false}, Shading{1, 0, false, false, false},
                    Shading{1, 1, false, false, true}, Shading{14, 0, false, false, false},
                    Shading{15, 0, false, true, false}, Shading{24, 0, false, true, false},
                    Shading{24, 1, false, true, true}, Shading{30, 1, false, true, true},
                    Shading{40, 0, true, false, true}, Shading{41, 0, false, true, false}),
    NameOfShading);

TEST_F(KovWindow, GrayCellStillHoldsItsValue) {
  Put("C", 0, "TYPE", 1);
  Put("C", 0, "SCAL", 0);
  Put("C", 0, "OTCH", 4);
  Put("C", 0, "MMIN", 0);
  Put("C", 0, "ROOT", 1);
  FillChannelRow(1);
  EXPECT_EQ(Gray, ChannelBack(1, 5));
  EXPECT_EQ("チャネル5", ChannelCell(1, 5));
  EXPECT_EQ(Gray, ChannelBack(1, 8));
  EXPECT_EQ("OFF", ChannelCell(1, 8));
  EXPECT_EQ(Gray, ChannelBack(1, 9));
  EXPECT_EQ("0.0", ChannelCell(1, 9));
  EXPECT_EQ("ON", ChannelCell(1, 13));
}

TEST_F(KovWindow, ShadingComesAndGoesWithTheKind) {
  Put("C", 0, "TYPE", 40);
  FillChannelRow(1);
  EXPECT_EQ(White, ChannelBack(1, 9));
  Put("C", 0, "TYPE", 1);
  FillChannelRow(1);
  EXPECT_EQ(Gray, ChannelBack(1, 9));
}

TEST_F(KovWindow, OtherCellsOfARowAreWhite) {
  for (const int column : {2, 3, 4, 6, 7, 15, 16, 17, 19, 20, 26, 31, 39, 40, 42, 54}) {
    EXPECT_EQ(White, ChannelBack(1, column)) << column;
  }
}

// --- Tags that a model does not have

struct CellTag {
  const char* section;
  const char* tag;
  int column;
};
void PrintTo(const CellTag& row, std::ostream* out) {
  *out << row.section << row.tag;
}
class MissingTag : public MainWindow, public testing::WithParamInterface<CellTag> {};
TEST_P(MissingTag, LeavesItsCellAndFillsTheOthers) {
  Open("KOV");
  DropTag(GetParam().section, GetParam().tag);
  Grid& grid = Window().fgrCh;
  for (int column = 0; column < grid.Cols(); ++column) {
    Mark(grid, 2, column);
  }
  FillChannelRow(1);
  EXPECT_EQ("as it was", ChannelCell(1, GetParam().column));
  // Every other cell that has a source is written: columns 1, 18, 21 to 25 and the four hidden ones have
  // none.
  int left = 0;
  for (int column = 0; column < grid.Cols(); ++column) {
    left += ChannelCell(1, column) == "as it was" ? 1 : 0;
  }
  EXPECT_EQ(1 + 1 + 1 + 5 + 4, left);
}
INSTANTIATE_TEST_SUITE_P(
    All, MissingTag,
    testing::Values(CellTag{"C", "TAG", 2}, CellTag{"C", "TAG2", 3}, CellTag{"C", "TYPE", 4},
                    CellTag{"C", "OTCH", 5}, CellTag{"C", "FILT", 6}, CellTag{"C", "UNIT", 7},
                    CellTag{"C", "SCAL", 8}, CellTag{"C", "MMIN", 9}, CellTag{"C", "MMAX", 10},
                    CellTag{"C", "SMIN", 11}, CellTag{"C", "SMAX", 12}, CellTag{"C", "ROOT", 13},
                    CellTag{"C", "TAIS", 14}, CellTag{"C", "SUBC", 15}, CellTag{"C", "RMIN", 16},
                    CellTag{"C", "RMAX", 17}, CellTag{"C", "RECO", 19}, CellTag{"C", "RECM", 20},
                    CellTag{"C", "PVSI", 26}, CellTag{"C", "PVKA", 27}, CellTag{"C", "FTIO", 28},
                    CellTag{"C", "STAG", 29}, CellTag{"C", "SEKI", 30}, CellTag{"C", "STYP", 31},
                    CellTag{"C", "SDIG", 32}, CellTag{"C", "SBAS", 33}, CellTag{"C", "SRES", 34},
                    CellTag{"C", "SEUN", 35}, CellTag{"C", "SSCL", 36}, CellTag{"C", "SECU", 37},
                    CellTag{"C", "SRIN", 38}, CellTag{"A", "A1TY", 39}, CellTag{"A", "A1VL", 40},
                    CellTag{"A", "A1RL", 42}, CellTag{"A", "A2TY", 43}, CellTag{"A", "A2VL", 44},
                    CellTag{"A", "A2RL", 46}, CellTag{"A", "A3TY", 47}, CellTag{"A", "A3VL", 48},
                    CellTag{"A", "A3RL", 50}, CellTag{"A", "A4TY", 51}, CellTag{"A", "A4VL", 52},
                    CellTag{"A", "A4RL", 54}),
    [](const auto& tested) { return std::string(tested.param.tag); });

TEST_F(KovWindow, MissingColourLeavesTheColour) {
  Put("C", 0, "COLR", 2);
  FillChannelRow(1);
  DropTag("C", "COLR");
  FillChannelRow(1);
  EXPECT_EQ(0x0000FFU, ChannelBack(1, 1));
}

TEST_F(KovWindow, MissingPositionCountsAsZero) {
  Put("C", 0, "TYPE", 40);
  Put("C", 0, "SMIN", 77);
  DropTag("C", "POIN");
  FillChannelRow(1);
  EXPECT_EQ("77", ChannelCell(1, 11));
}

TEST_F(KovWindow, ChannelBeyondTheStoreGetsItsNumberOnly) {
  const StoreIndex section = gFFindSection("C");
  ParamStore[section].Items.resize(5);
  BuildTables();
  FillChannelRow(6);
  EXPECT_EQ("CH6", ChannelCell(6, 0));
  EXPECT_EQ("", ChannelCell(6, 2));
  EXPECT_EQ("", ChannelCell(6, 4));
  FillChannelRow(5);
  EXPECT_EQ("CH 05", ChannelCell(5, 2));
}

TEST_F(KovWindow, TablesSurviveAStoreWithoutSections) {
  for (const char* section : {"A", "C", "G", "T", "B", "M", "U", "N", "X", "O", "H"}) {
    DropSection(section);
  }
  BuildTables();
  RefreshAll();
  EXPECT_EQ("CH1", ChannelCell(1, 0));
  EXPECT_EQ("", ChannelCell(1, 2));
  EXPECT_EQ("NO.1", CellText(Window().fgrMess, 1, 0));
}

// --- Rows that do not exist

using RowsOutside = EitherWindow;
LOADER_FOR_BOTH_MODELS(RowsOutside);
TEST_P(RowsOutside, AreFilledByNobody) {
  const int channels = Profile.ChannelCount;
  const int last = channels + Profile.OperationChannelCount;
  const auto revisions = [] {
    std::vector<std::uint64_t> all;
    for (const char* table : {"fgrCh", "fgrOperationChSet", "fgrConst", "fgrMess", "fgrUnit"}) {
      all.push_back(GridNamed(table).Revision());
    }
    return all;
  };
  const auto before = revisions();
  for (const int number : {-32768, -1, 0, channels + 1, 32767}) {
    FillChannelRow(number);
  }
  for (const int number : {-32768, 0, 1, channels, last + 1, 32767}) {
    FillOperationRow(number);
  }
  for (const int number : {-1, 0, 61, 32767}) {
    FillConstantRow(number);
    FillMessageRow(number);
    FillUnitRow(number);
  }
  EXPECT_EQ(before, revisions());
}

TEST_P(RowsOutside, FillOfOneRowLeavesTheOthers) {
  for (int channel = 1; channel <= Profile.ChannelCount; ++channel) {
    PutText("C", channel - 1, "TAG", "new");
  }
  FillChannelRow(7);
  EXPECT_EQ("CH 06", ChannelCell(6, 2));
  EXPECT_EQ("new", ChannelCell(7, 2));
  EXPECT_EQ("CH 08", ChannelCell(8, 2));
}

TEST_P(RowsOutside, FillWithoutAChangeLeavesNothingToDraw) {
  const auto revision = Window().fgrCh.Revision();
  FillChannelTable();
  EXPECT_EQ(revision, Window().fgrCh.Revision());
}

} // namespace
} // namespace loader::test
