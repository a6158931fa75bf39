// A whole read and a whole write of every generation over every link, on real devices against a recorder of
// its own process.
#include "simulator/Plant.h"
#include "tests/comm/StoreFilling.h"
#include "tests/links/RealLink.h"
#include "tests/links/RecorderRegisters.h"

namespace loader::test {
namespace {

struct WholeTransfer : RealLink, testing::WithParamInterface<std::tuple<Generation, Line>> {
  const Generation& generation = std::get<0>(GetParam());
  const Line line = std::get<1>(GetParam());

  void StartBoth() {
    StartRecorder(generation.model, generation.version);
    StartLoader(generation.model, line);
  }
};
INSTANTIATE_TEST_SUITE_P(All, WholeTransfer,
                         testing::Combine(testing::ValuesIn(SoldGenerations()), testing::ValuesIn(AllLines)),
                         [](const auto& row) {
                           return GenerationName(std::get<0>(row.param)) + "Over" +
                                  LineName(std::get<1>(row.param));
                         });

TEST_P(WholeTransfer, BringsEveryValueOfTheRecorderIntoTheStore) {
  StartBoth();
  const Registers registers = RegistersOverTcp(tcpPort);
  FillStoreWithHeld();
  Read();
  EXPECT_EQ(CommLink.LinkKind, static_cast<int>(line));
  EXPECT_EQ(RecorderGeneration, generation.number);
  ExpectStoreOf(generation, registers);
}

TEST_P(WholeTransfer, BringsTheSetUpThatThePlantWasGiven) {
  StartBoth();
  const ParamStoreTable given =
      simulator::PlantSetup(ParamStore, std::string_view(generation.model) == "KOV" ? simulator::Model::Kov
                                                                                    : simulator::Model::Rug);
  Read();
  // What all firmware has, the oldest too: it has nine channels and calls the input kinds by other numbers.
  for (int item = 0; item < 9; ++item) {
    for (const char* tag : {"TYPE", "UNIT", "POIN", "MMIN", "MMAX", "RMIN", "RMAX", "FILT"}) {
      const StoreIndex section = gFFindSection("C");
      const StoreIndex record = gFFindNumTag(section, item, tag);
      int expected = given[section].Items[static_cast<std::size_t>(item)].NumRecords[record].Value;
      if (generation.number == 0 && std::string_view(tag) == "TYPE" && expected == 33) {
        expected = 32; // the oldest firmware has one kind for 0-5 V and 1-5 V
      }
      EXPECT_EQ(Stored("C", item, tag), expected) << item << tag;
    }
    const StoreIndex section = gFFindSection("C");
    const StoreIndex record = gFFindTextTag(section, item, "TAG");
    const std::u16string& tag =
        given[section].Items[static_cast<std::size_t>(item)].TextRecords[record].Value;
    EXPECT_EQ(TrimmedText("C", item, "TAG"), ToUtf8(TrimRight(tag))) << item;
  }
}

TEST_P(WholeTransfer, WritesWhatTheFirmwareKnowsAndNothingElse) {
  StartBoth();
  const Registers before = RegistersOverTcp(tcpPort);
  FillStore(20261121);
  const Registers expected = AfterWrite(generation, before);
  Write();
  ASSERT_NE(expected, before);
  ExpectRegisters(expected, EndRecorder());
}

} // namespace
} // namespace loader::test
