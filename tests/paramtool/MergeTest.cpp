// `paramtool merge` as it is run.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

class MergeCommand : public ToolTest {
protected:
  MergeCommand() : plant(Write("plant.KOV", PlantFile("KOV"))) {}

  // Another line of the plant: other alarms, another network.
  void MakeOther(std::vector<std::string> edits) const {
    edits.insert(edits.begin(), {"set", plant});
    edits.insert(edits.end(), {"-o", File("other.KOV")});
    ASSERT_EQ(Tool(std::move(edits)).status, ExitGood);
  }
  [[nodiscard]] Ended Merge(std::vector<std::string> options) const {
    options.insert(options.begin(), {"merge", plant, File("other.KOV"), "-o", File("new.KOV")});
    return Tool(std::move(options));
  }

  const std::string plant;
};

TEST_F(MergeCommand, TakesTheAlarmsOfAnotherRecorder) {
  MakeOther({"A00A1VL=960.0", "A01A2RL=無し", "J00IPA4=77", "H00PAS1=4711"});
  for (const std::string language : {"ja", "en"}) {
    const Ended text = Merge({"--only", "alarms", "--only", "H00PAS1", "--lang", language});
    EXPECT_EQ(text.status, ExitGood) << text.errors;
    ExpectGolden("merge." + language + ".txt", text.output);
    EXPECT_EQ(text.output.find("4711"), std::string::npos);
  }
  const std::string merged = Read("new.KOV");
  EXPECT_NE(merged.find("\r\nA00A1VL,9600\r\n"), std::string::npos);
  EXPECT_NE(merged.find("\r\nA01A2RL,0\r\n"), std::string::npos);
  EXPECT_NE(merged.find("\r\nH00PAS1,4711\r\n"), std::string::npos);
  EXPECT_EQ(merged.find("\r\nJ00IPA4,77\r\n"), std::string::npos);
}

TEST_F(MergeCommand, ReportsAsJson) {
  MakeOther({"A00A1VL=960.0"});
  const Ended ended = Merge({"--only", "A00*", "--only", "clock*", "--json", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitGood) << ended.errors;
  ExpectGolden("merge.json", WithoutFolder(ended.output));
}

TEST_F(MergeCommand, OfAllMakesTheOther) {
  MakeOther({"A00A1VL=960.0", "C06POIN=2", "U00UNIT=x", "C03TAG=y"});
  EXPECT_EQ(Merge({"--only", "*"}).status, ExitGood);
  EXPECT_EQ(Read("new.KOV"), Read("other.KOV"));
}

TEST_F(MergeCommand, RefusesAllForOne) {
  MakeOther({"A00A1VL=960.0", "C06POIN=2"});
  const Ended ended = Merge({"--only", "alarms", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(ended.output, "");
  EXPECT_NE(ended.errors.find("A06A1VL CH 7 Alarm 1 set value: it is 18.50 there and would be 185.0 here\n"),
            std::string::npos)
      << ended.errors;
  EXPECT_FALSE(Exists("new.KOV"));
  EXPECT_EQ(Read("plant.KOV"), PlantFile("KOV"));
}

TEST_F(MergeCommand, NeedsItsOptions) {
  MakeOther({"C00COLR=4"});
  EXPECT_EQ(Merge({}).status, ExitUsage);
  EXPECT_EQ(Tool({"merge", plant, plant, "--only", "*"}).status, ExitUsage);
  EXPECT_EQ(Merge({"--only", "nonsense"}).status, ExitFailed);
  EXPECT_EQ(Merge({"--only", "*", "--ignore", "nonsense"}).status, ExitFailed);
  const Ended models =
      Tool({"merge", plant, "default:RUG", "--only", "alarms", "-o", File("x"), "--lang", "en"});
  EXPECT_EQ(models.status, ExitFailed);
  EXPECT_EQ(models.errors, "paramtool: two models (KOV and RUG); convert one first with paramtool convert\n");
}

} // namespace
} // namespace loader::test
