// `paramtool set` as it is run: what is written, what is told, and that a refusal leaves everything as it
// was.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

class SetCommand : public ToolTest {
protected:
  // As it is once it has been opened: that gives two old words to the parameters of today.
  SetCommand() : plant(Write("plant.KOV", PlantFile("KOV"))) {
    EXPECT_EQ(Tool({"set", plant, "C00COLR=#1", "-o", plant}).status, ExitGood);
    was = Read("plant.KOV");
  }

  [[nodiscard]] Ended Set(std::vector<std::string> arguments, const std::string& output = "new.KOV") const {
    arguments.insert(arguments.begin(), {"set", plant});
    arguments.insert(arguments.end(), {"-o", File(output), "--lang", "en"});
    return Tool(std::move(arguments));
  }
  // The lines of a parameter file that differ from those of the plant.
  [[nodiscard]] std::vector<std::string> Changed(const std::string& name) const {
    std::vector<std::string> changed;
    std::istringstream before(was);
    std::istringstream after(Read(name));
    for (std::string one, other; std::getline(before, one) && std::getline(after, other);) {
      if (one != other) {
        changed.push_back(other.substr(0, other.find('\r')));
      }
    }
    return changed;
  }

  const std::string plant;
  std::string was; // the plant's bytes
};

TEST_F(SetCommand, WritesTheEditsAndNothingElse) {
  const Ended ended = Set({"A00A1VL=960.0", "C00COLR=4", "C01STAG=X"});
  EXPECT_EQ(ended.status, ExitGood);
  EXPECT_EQ(ended.errors, "");
  EXPECT_EQ(Changed("new.KOV"), (std::vector<std::string>{"C00COLR,4", "C01STAG,X", "A00A1VL,9600"}));
  EXPECT_EQ(Read("plant.KOV"), was);
  EXPECT_EQ(Files(), (std::vector<std::string>{"new.KOV", "plant.KOV"}));
}

TEST_F(SetCommand, MayWriteOverItsSetUp) {
  EXPECT_EQ(Set({"C00COLR=4"}, "plant.KOV").status, ExitGood);
  EXPECT_EQ(Changed("plant.KOV"), (std::vector<std::string>{"C00COLR,4"}));
}

TEST_F(SetCommand, TakesTheInitialSettings) {
  EXPECT_EQ(Tool({"set", "default:RUG", "C00COLR=4", "-o", File("new.RUG")}).status, ExitGood);
  EXPECT_NE(Read("new.RUG").find("\r\nC00COLR,4\r\n"), std::string::npos);
}

TEST_F(SetCommand, ToldTwiceChangesNothing) {
  EXPECT_EQ(Set({"C00COLR=4"}).status, ExitGood);
  const Ended again = Tool({"set", File("new.KOV"), "C00COLR=4", "-o", File("again.KOV"), "--lang", "en"});
  EXPECT_EQ(again.status, ExitGood);
  EXPECT_NE(again.output.find("(already so)\n0 changed, 1 already so\n"), std::string::npos) << again.output;
  EXPECT_EQ(Read("again.KOV"), Read("new.KOV"));
}

TEST_F(SetCommand, RefusesAllForOne) {
  for (const std::string output : {"new.KOV", "plant.KOV"}) {
    const Ended ended = Set({"C00COLR=4", "A00A1VL=2000.0", "H00YEAR=3", "C00TAG=x"}, output);
    EXPECT_EQ(ended.status, ExitFailed);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors,
              "paramtool: H00YEAR Clock, year: the recorder's clock is set by its command alone\n"
              "paramtool: A00A1VL CH 1 Alarm 1 set value: not within -230.0 to 1400.0\n"
              "paramtool: 2 refused, so nothing was written\n");
    EXPECT_EQ(Read("plant.KOV"), was);
    EXPECT_FALSE(Exists("new.KOV"));
  }
}

TEST_F(SetCommand, LeavesAnOlderOutputWhole) {
  (void)Write("new.KOV", "what stood here");
  EXPECT_EQ(Set({"H00YEAR=3"}).status, ExitFailed);
  EXPECT_EQ(Read("new.KOV"), "what stood here");
}

TEST_F(SetCommand, IsTold) {
  const std::vector<std::string> edits{"A00A1VL=960.0", "C06POIN=2",    "C06COLR=#5",
                                       "H00PAS1=4711",  "E00TSBA=8:05", "C00TAG=新しい炉"};
  for (const std::string language : {"ja", "en"}) {
    std::vector<std::string> arguments{"set", plant};
    arguments.insert(arguments.end(), edits.begin(), edits.end());
    arguments.insert(arguments.end(), {"-o", File("new.KOV"), "--lang", language});
    const Ended text = Tool(arguments);
    EXPECT_EQ(text.status, ExitGood) << text.errors;
    ExpectGolden("set." + language + ".txt", text.output);
    arguments.emplace_back("--json");
    const Ended json = Tool(arguments);
    EXPECT_EQ(json.status, ExitGood);
    ExpectGolden("set." + language + ".json", WithoutFolder(json.output));
    EXPECT_EQ(text.output.find("4711"), std::string::npos);
    EXPECT_EQ(json.output.find("4711"), std::string::npos);
  }
}

TEST_F(SetCommand, TellsRefusalsInJsonToo) {
  const Ended ended = Set({"A00A1VL=2000.0", "C00TYPE=T熱電対", "--json"});
  EXPECT_EQ(ended.status, ExitFailed);
  ExpectGolden("set-refused.json", WithoutFolder(ended.output));
}

TEST_F(SetCommand, NeedsItsArguments) {
  EXPECT_EQ(Tool({"set", plant, "C00COLR=4"}).status, ExitUsage) << "no -o";
  EXPECT_EQ(Set({}).status, ExitUsage);
  const Ended ended = Set({"C00COLR"});
  EXPECT_EQ(ended.status, ExitUsage);
  EXPECT_EQ(ended.errors, "paramtool: \"C00COLR\" is not KEY=VALUE\n");
  EXPECT_EQ(Set({"C99COLR=4"}).status, ExitFailed);
  EXPECT_EQ(Set({"C00COLR=4"}, "no/folder.KOV").status, ExitFailed);
  EXPECT_EQ(Files(), (std::vector<std::string>{"plant.KOV"}));
}

} // namespace
} // namespace loader::test
