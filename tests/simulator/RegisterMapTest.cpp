// Where the values lie, firmware by firmware. The numbers are written out: they judge the history tables.
#include <gmock/gmock.h>

#include <fstream>
#include <set>

#include "tests/simulator/TestRecorder.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::simulator {
namespace {

using testing::ElementsAre;

struct BlockCase {
  Model model;
  const char* tag;
  const char* section;
  int address; // 0: the firmware has no such section
};

class Blocks : public testing::TestWithParam<BlockCase> {};

INSTANTIATE_TEST_SUITE_P(
    OfEveryGeneration, Blocks,
    testing::Values(
        // Messages: 22 registers lower up to generation 2.
        BlockCase{Model::Kov, "V00A", "M", 40509}, BlockCase{Model::Kov, "V06A", "M", 40509},
        BlockCase{Model::Kov, "V14A", "M", 40509}, BlockCase{Model::Kov, "V18A", "M", 40531},
        BlockCase{Model::Kov, "V27A", "M", 40531}, BlockCase{Model::Kov, "V40A", "M", 40531},
        BlockCase{Model::Rug, "V09W", "M", 40801}, BlockCase{Model::Rug, "V10W", "M", 40801},
        // Digital inputs: 5 registers higher up to generation 2.
        BlockCase{Model::Kov, "V00A", "D", 40066}, BlockCase{Model::Kov, "V06A", "D", 40066},
        BlockCase{Model::Kov, "V14A", "D", 40066}, BlockCase{Model::Kov, "V18A", "D", 40061},
        BlockCase{Model::Rug, "V09W", "D", 40061},
        // General settings: 6 registers higher in the first firmware, which has no clock registers.
        BlockCase{Model::Kov, "V00A", "H", 40017}, BlockCase{Model::Kov, "V06A", "H", 40011},
        BlockCase{Model::Kov, "V14A", "H", 40011}, BlockCase{Model::Kov, "V40A", "H", 40011},
        // The totalizer: none before generation 2, 60 registers higher in it.
        BlockCase{Model::Kov, "V00A", "E", 0}, BlockCase{Model::Kov, "V06A", "E", 0},
        BlockCase{Model::Kov, "V14A", "E", 40161}, BlockCase{Model::Kov, "V18A", "E", 40101},
        BlockCase{Model::Rug, "V09W", "E", 40101},
        // What came later.
        BlockCase{Model::Kov, "V14A", "N", 0}, BlockCase{Model::Kov, "V18A", "N", 40371},
        BlockCase{Model::Kov, "V14A", "O", 0}, BlockCase{Model::Kov, "V18A", "O", 43001},
        BlockCase{Model::Kov, "V18A", "J", 0}, BlockCase{Model::Kov, "V27A", "J", 41501},
        BlockCase{Model::Kov, "V18A", "K", 0}, BlockCase{Model::Kov, "V27A", "K", 40851},
        BlockCase{Model::Kov, "V18A", "X", 0}, BlockCase{Model::Kov, "V27A", "X", 42001},
        BlockCase{Model::Kov, "V18A", "L", 0}, BlockCase{Model::Kov, "V27A", "L", 40201},
        BlockCase{Model::Kov, "V18A", "Y", 0}, BlockCase{Model::Kov, "V27A", "Y", 40211},
        BlockCase{Model::Rug, "V10W", "L", 0}, BlockCase{Model::Rug, "V10W", "Y", 0},
        BlockCase{Model::Rug, "V09W", "J", 41401}, BlockCase{Model::Rug, "V09W", "X", 41801},
        // What has always been where it is.
        BlockCase{Model::Kov, "V00A", "C", 44001}, BlockCase{Model::Kov, "V40A", "C", 44001},
        BlockCase{Model::Rug, "V10W", "C", 45201}, BlockCase{Model::Kov, "V00A", "P", 30001},
        BlockCase{Model::Rug, "V10W", "P", 30001}, BlockCase{Model::Kov, "V00A", "S", 30101},
        BlockCase{Model::Kov, "V00A", "F", 40001}, BlockCase{Model::Rug, "V10W", "F", 40001}),
    [](const auto& of) { return std::string(of.param.tag) + "_" + of.param.section; });

TEST_P(Blocks, LieWhereTheFirmwareHasThem) {
  const TestRecorder recorder(GetParam().model, GetParam().tag);
  int address = 0;
  for (const MapBlock& block : recorder.map.blocks) {
    if (block.section == GetParam().section) {
      address = block.address;
    }
  }
  EXPECT_EQ(address, GetParam().address);
}

struct FieldCase {
  const char* tag;
  const char* section;
  int item;
  const char* value;
  int address; // 0: the firmware has no such value
};

class Fields : public testing::TestWithParam<FieldCase> {};

INSTANTIATE_TEST_SUITE_P(
    OfEveryGeneration, Fields,
    testing::Values(
        // Generation 2 kept four channel values elsewhere: words 35, 40, 41 and 42 of an item of 60.
        FieldCase{"V14A", "C", 1, "SEKI", 44001 + 60 + 35},
        FieldCase{"V14A", "C", 1, "SEUN", 44001 + 60 + 40},
        FieldCase{"V14A", "C", 1, "SECU", 44001 + 60 + 41},
        FieldCase{"V14A", "C", 1, "FTIO", 44001 + 60 + 42},
        FieldCase{"V18A", "C", 1, "SEKI", 44001 + 60 + 34},
        FieldCase{"V18A", "C", 1, "SEUN", 44001 + 60 + 36},
        FieldCase{"V18A", "C", 1, "SECU", 44001 + 60 + 37},
        FieldCase{"V18A", "C", 1, "FTIO", 44001 + 60 + 33}, FieldCase{"V06A", "C", 1, "SEKI", 0},
        FieldCase{"V06A", "C", 1, "FTIO", 0}, FieldCase{"V06A", "C", 1, "ROOT", 0},
        FieldCase{"V14A", "C", 1, "ROOT", 44001 + 60 + 31}, FieldCase{"V00A", "C", 1, "SUBC", 0},
        FieldCase{"V06A", "C", 1, "SUBC", 44001 + 60 + 9}, FieldCase{"V14A", "C", 0, "TAG2", 0},
        FieldCase{"V14A", "C", 0, "STAG", 0}, FieldCase{"V18A", "C", 0, "TAG2", 44045},
        FieldCase{"V18A", "C", 0, "STAG", 44053}, FieldCase{"V14A", "C", 0, "RECM", 0},
        FieldCase{"V14A", "C", 0, "OTCH", 0}, FieldCase{"V14A", "C", 0, "SSCL", 0},
        FieldCase{"V14A", "C", 0, "STYP", 0}, FieldCase{"V14A", "C", 0, "SDIG", 0},
        FieldCase{"V14A", "C", 0, "SBAS", 0}, FieldCase{"V14A", "C", 0, "SRES", 0},
        FieldCase{"V27A", "C", 0, "TAIS", 0}, FieldCase{"V27A", "C", 0, "SRIN", 0},
        FieldCase{"V40A", "C", 0, "TAIS", 44030}, FieldCase{"V40A", "C", 0, "SRIN", 44033},
        FieldCase{"V00A", "C", 0, "COLR", 44031},
        // Nine channels at first, then 18, then operation channels too.
        FieldCase{"V00A", "C", 8, "TYPE", 44001 + 8 * 60 + 8}, FieldCase{"V00A", "C", 9, "TYPE", 0},
        FieldCase{"V06A", "A", 8, "A1TY", 41001 + 8 * 16}, FieldCase{"V06A", "A", 9, "A1TY", 0},
        FieldCase{"V14A", "C", 17, "TYPE", 44001 + 17 * 60 + 8}, FieldCase{"V14A", "C", 18, "TYPE", 0},
        FieldCase{"V18A", "C", 29, "TYPE", 44001 + 29 * 60 + 8}, FieldCase{"V14A", "A", 18, "A1TY", 0},
        // One group at first, with a plain trend and bar graph.
        FieldCase{"V00A", "G", 0, "GC10", 40761 + 17}, FieldCase{"V00A", "G", 1, "GNEM", 0},
        FieldCase{"V06A", "G", 3, "GNEM", 40761 + 60}, FieldCase{"V00A", "T", 0, "TBUN", 40263},
        FieldCase{"V00A", "T", 0, "TPVD", 0}, FieldCase{"V00A", "T", 0, "TMEM", 0},
        FieldCase{"V00A", "T", 1, "THOU", 0}, FieldCase{"V00A", "B", 0, "BPVM", 40303},
        FieldCase{"V00A", "B", 0, "BBRM", 0}, FieldCase{"V06A", "B", 0, "BBRM", 40304},
        FieldCase{"V06A", "T", 3, "TMEM", 40261 + 24 + 4},
        // Five digital inputs up to generation 2.
        FieldCase{"V14A", "D", 4, "DIKI", 40070}, FieldCase{"V14A", "D", 5, "DIKI", 0},
        FieldCase{"V18A", "D", 15, "DIKI", 40076},
        // General settings of the first firmware: four values at words 2, 3, 18 and 19 of a block that starts
        // 6 higher, that is on the registers where later firmware has them; no clock.
        FieldCase{"V00A", "H", 0, "MSMP", 40019}, FieldCase{"V00A", "H", 0, "SSMP", 40020},
        FieldCase{"V00A", "H", 0, "ALMH", 40035}, FieldCase{"V00A", "H", 0, "ALML", 40036},
        FieldCase{"V06A", "H", 0, "MSMP", 40019}, FieldCase{"V06A", "H", 0, "ALML", 40036},
        FieldCase{"V00A", "H", 0, "KLOC", 40023}, FieldCase{"V06A", "H", 0, "KLOC", 40017},
        FieldCase{"V00A", "H", 0, "TIMS", 0}, FieldCase{"V00A", "H", 0, "YEAR", 0},
        FieldCase{"V00A", "H", 0, "MINT", 0}, FieldCase{"V06A", "H", 0, "TIMS", 40011},
        FieldCase{"V06A", "H", 0, "MINT", 40016}, FieldCase{"V00A", "H", 0, "ASBY", 0},
        FieldCase{"V00A", "H", 0, "FSTN", 0}, FieldCase{"V06A", "H", 0, "FTIR", 40025},
        FieldCase{"V14A", "H", 0, "SHOU", 0}, FieldCase{"V14A", "H", 0, "CFFL", 0},
        FieldCase{"V14A", "H", 0, "FTIT", 0}, FieldCase{"V14A", "H", 0, "BAAL", 0},
        FieldCase{"V14A", "H", 0, "COMS", 0}, FieldCase{"V14A", "H", 0, "COMB", 0},
        FieldCase{"V14A", "H", 0, "COMP", 0}, FieldCase{"V14A", "H", 0, "PAS1", 0},
        FieldCase{"V14A", "H", 0, "PAS2", 0}, FieldCase{"V14A", "H", 0, "RPAS", 0},
        FieldCase{"V18A", "H", 0, "RPAS", 40032}, FieldCase{"V18A", "H", 0, "BETU", 0},
        FieldCase{"V27A", "H", 0, "BETU", 40018},
        // The totalizer of generation 2.
        FieldCase{"V14A", "E", 0, "TOTA", 40161}, FieldCase{"V14A", "E", 0, "TSTM", 40162},
        FieldCase{"V14A", "E", 0, "TCYC", 40163}, FieldCase{"V14A", "E", 0, "TSIG", 40165},
        FieldCase{"V14A", "E", 0, "TTSH", 40167}, FieldCase{"V14A", "E", 0, "TTSM", 40168},
        FieldCase{"V14A", "E", 0, "TTEH", 40169}, FieldCase{"V14A", "E", 0, "TTEM", 40170},
        FieldCase{"V14A", "E", 0, "TSTR", 0}, FieldCase{"V18A", "E", 0, "TSTR", 40106}),
    [](const auto& of) {
      return std::string(of.param.tag) + "_" + of.param.section + std::to_string(of.param.item) +
             of.param.value;
    });

TEST_P(Fields, LieWhereTheFirmwareHasThem) {
  const TestRecorder recorder(Model::Kov, GetParam().tag);
  const MapField* field = recorder.map.Find(GetParam().section, GetParam().item, GetParam().value);

  EXPECT_EQ(field == nullptr ? 0 : field->address, GetParam().address);
}

TEST(RegisterMapOfRug, HasTheLogarithmSinceTheSecondLayout) {
  EXPECT_FALSE(TestRecorder(Model::Rug, "V09W").Has("C", 0, "TAIS"));
  EXPECT_TRUE(TestRecorder(Model::Rug, "V10W").Has("C", 0, "TAIS"));
}

TEST(RegisterMapOfEveryFirmware, PutsNoTwoValuesOnOneRegisterAndNamesEachRegister) {
  for (const auto& [model, tag] : std::vector<std::pair<Model, const char*>>{{Model::Kov, "V00A"},
                                                                             {Model::Kov, "V06A"},
                                                                             {Model::Kov, "V14A"},
                                                                             {Model::Kov, "V18A"},
                                                                             {Model::Kov, "V27A"},
                                                                             {Model::Kov, "V40A"},
                                                                             {Model::Rug, "V09W"},
                                                                             {Model::Rug, "V10W"}}) {
    const TestRecorder recorder(model, tag);
    std::set<int> taken;
    for (const MapField& field : recorder.map.fields) {
      for (int word = 0; word < field.words; ++word) {
        EXPECT_TRUE(taken.insert(field.address + word).second) << tag << field.section << field.tag;
        EXPECT_EQ(recorder.map.FieldAt(field.address + word), &field);
        ASSERT_NE(recorder.map.BlockAt(field.address + word), nullptr);
        EXPECT_EQ(recorder.map.BlockAt(field.address + word)->section, field.section);
      }
    }
    EXPECT_EQ(recorder.map.FieldAt(40099), nullptr);
    EXPECT_EQ(recorder.map.BlockAt(30099), nullptr);
  }
}

TEST(RegisterText, LiesWithItsFirstByteInTheLowByte) {
  RegisterMemory memory;
  const MapField field{"C", 0, "TAG", 44001, 3, 6};

  PutText(memory, field, u"AB3");

  EXPECT_THAT((std::vector<int>{memory.At(44001), memory.At(44002), memory.At(44003)}),
              ElementsAre(0x4241, 0x0033, 0x0000));
  EXPECT_EQ(TextBytes(memory, field), std::string("AB3\0\0\0", 6));
}

TEST(RegisterText, OfFullWidthCharactersIsCodePage932) {
  RegisterMemory memory;

  PutText(memory, {"C", 0, "TAG", 44001, 2, 4}, u"炉ｱ"); // 98 46 B1

  EXPECT_EQ(memory.At(44001), 0x4698);
  EXPECT_EQ(memory.At(44002), 0x00B1);
}

TEST(RegisterText, IsCutAtItsField) {
  RegisterMemory memory;

  PutText(memory, {"C", 0, "TAG", 44001, 2, 3}, u"ABCDEF");

  EXPECT_EQ(memory.At(44001), 0x4241);
  EXPECT_EQ(memory.At(44002), 0x0043) << "the odd byte of a field of odd length stays empty";
  EXPECT_EQ(memory.At(44003), 0);
}

TEST(RegisterMemoryBounds, AreThoseOfTheTwoTables) {
  RegisterMemory memory;
  for (const int address : {30001, 39999, 40001, 49999}) {
    EXPECT_TRUE(RegisterMemory::Exists(address));
    EXPECT_NO_THROW(memory.At(address) = 1);
  }
  for (const int address : {-1, 0, 30000, 40000, 50000}) {
    EXPECT_FALSE(RegisterMemory::Exists(address));
    EXPECT_THROW((void)memory.At(address), std::out_of_range);
  }
}

// A shape file of a test's own.
class ShapeFiles : public testing::Test {
protected:
  std::string Write(const std::string& rows) {
    const std::string file = (folder / "shape.ini").string();
    std::ofstream(file, std::ios::binary) << "2   ,V00L,0\r\n" << rows;
    return file;
  }
  RegisterMap Map(const std::string& rows) {
    return MapOf(LoadShape(Write(rows), Model::Kov), FirmwareOf(Model::Kov, "V40A"));
  }
  test::TemporaryFolder folder{"recorder-sim-test-"};
};

TEST_F(ShapeFiles, WithAnUnknownSectionServeItToTheNewestFirmwareOnly) {
  const std::string rows = "1,Q,40001,2,1\r\n0,AAAA,0,0,1,0,9\r\n";

  EXPECT_NE(Map(rows).Find("Q", 0, "AAAA"), nullptr);
  EXPECT_EQ(MapOf(LoadShape(Write(rows), Model::Kov), FirmwareOf(Model::Kov, "V39A")).Find("Q", 0, "AAAA"),
            nullptr);
}

TEST_F(ShapeFiles, ThatPutTwoValuesOnARegisterAreRefused) {
  EXPECT_THROW(Map("1,C,40001,9,1\r\n0,TAG,0,1,,4\r\n0,TYPE,1,0,0,0,1\r\n"), RunTimeFailure);
}

TEST_F(ShapeFiles, ThatLeaveTheRegisterSpaceAreRefused) {
  EXPECT_THROW(Map("1,C,49990,9,2\r\n0,TYPE,0,0,0,0,1\r\n"), RunTimeFailure) << "beyond 49999";
  EXPECT_THROW(Map("1,C,39990,9,2\r\n0,TYPE,0,0,0,0,1\r\n"), RunTimeFailure)
      << "from one table into the other";
  EXPECT_THROW(Map("1,C,1,9,2\r\n0,TYPE,0,0,0,0,1\r\n"), RunTimeFailure);
  EXPECT_THROW(Map("1,C,40001,9,2\r\n0,TYPE,-9,0,0,0,1\r\n"), RunTimeFailure);
  EXPECT_THROW(Map("1,C,40001,0,2\r\n0,TYPE,0,0,0,0,1\r\n"), RunTimeFailure);
  EXPECT_THROW(Map("1,C,40001,-5,2\r\n0,TYPE,0,0,0,0,1\r\n"), RunTimeFailure);
}

TEST_F(ShapeFiles, WithoutABlockOfTheModelAreRefused) {
  EXPECT_THROW((void)LoadShape(Write("1,C,40001,9,2\r\n0,TYPE,0,0,0,0,1\r\n"), Model::Rug), RunTimeFailure);
  EXPECT_THROW((void)LoadShape("/no/such/file", Model::Kov), RunTimeFailure);
}

} // namespace
} // namespace loader::simulator
