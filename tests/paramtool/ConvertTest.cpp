// paramtool convert: a set-up of the other model, and what became of each parameter.
#include <gtest/gtest.h>

#include "tests/paramtool/PlantChanges.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

class ConvertCommand : public ToolTest {
protected:
  static Ended Converted(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "convert");
    return Tool(std::move(arguments));
  }
};

struct Direction {
  const char* from;
  const char* to;
  const char* language;
};
class ConvertGolden : public ConvertCommand, public testing::WithParamInterface<Direction> {};
INSTANTIATE_TEST_SUITE_P(Directions, ConvertGolden,
                         testing::Values(Direction{"KOV", "RUG", "ja"}, Direction{"KOV", "RUG", "en"},
                                         Direction{"RUG", "KOV", "ja"}, Direction{"RUG", "KOV", "en"}),
                         [](const auto& tested) {
                           return std::string(tested.param.from) + "_" + tested.param.language;
                         });

// One of each outcome.
const Changes FewOfKov{
    {"C03TAG", "<Oven> & more"}, {"C20TAG", "Mean"}, {"G00GC01", "19"}, {"A02A1VL", "8123"},
    {"K00PASS", "open-sesame"},  {"C03SRIN", "20"},  {"O00OP11", "1"},  {"O00S111", "18"}};
const Changes FewOfRug{{"C03TAG", "Oven"}, {"C25TAG", "lost"},        {"C40TAG", "Mean"}, {"G00GC01", "40"},
                       {"G00GC02", "25"},  {"A02A1RL", "40"},         {"O00OP11", "1"},   {"O00S111", "30"},
                       {"C02OTCH", "20"},  {"K00PASS", "open-sesame"}};

TEST_P(ConvertGolden, TellsWhatBecameOfEachParameter) {
  const auto& [from, to, language] = GetParam();
  const std::string name = std::string("convert-") + from + "." + language;
  const std::string initial =
      Tool({"convert", std::string("default:") + to, "--to", from, "-o", File("initial")}).errors;
  EXPECT_EQ(initial, "");
  const Changes& changes = std::string_view(from) == "KOV" ? FewOfKov : FewOfRug;
  const std::string few = Write(std::string("few.") + from, WithValues(Read("initial"), changes));
  const Ended text =
      Converted({few, "--to", to, "-o", File("new"), "--lang", language, "--html", File("report.html")});
  EXPECT_EQ(text.status, ExitGood) << text.errors;
  ExpectGolden(name + ".txt", WithoutFolder(text.output));
  ExpectGolden(name + ".html", WithoutTime(WithoutFolder(Read("report.html"))));
  EXPECT_EQ((text.output + Read("report.html")).find("open-sesame"), std::string::npos);
  const Ended json = Converted({few, "--to", to, "-o", File("new"), "--lang", language, "--json"});
  EXPECT_EQ(json.status, ExitGood);
  ExpectGolden(name + ".json", WithoutFolder(json.output));
}

TEST_P(ConvertGolden, TellsAPlant) {
  const auto& [from, to, language] = GetParam();
  const std::string plant = Write("plant", PlantFile(from));
  const Ended text = Converted({plant, "--to", to, "-o", File("new"), "--lang", language});
  EXPECT_EQ(text.status, ExitGood) << text.errors;
  ExpectGolden(std::string("convert-plant-") + from + "." + language + ".txt", WithoutFolder(text.output));
}

TEST_F(ConvertCommand, AFileIsConvertedInPlaceByItsOwnNameOnly) {
  const std::string file = Write("plant.KOV", PlantFile("KOV"));
  std::filesystem::create_symlink(file, File("link"));
  const Ended refused = Converted({file, "--to", "RUG", "-o", File("link"), "--lang", "en"});
  EXPECT_EQ(refused.status, ExitFailed);
  EXPECT_EQ(Read("plant.KOV"), PlantFile("KOV"));
  EXPECT_EQ(Converted({file, "--to", "RUG", "-o", file}).status, ExitGood);
  EXPECT_NE(Read("plant.KOV").find("\r\nC40TAG ,"), std::string::npos);
}

TEST_F(ConvertCommand, ToTheModelThatItIsOfIsRefusedAndNothingIsWritten) {
  const std::string file = Write("plant.KOV", PlantFile("KOV"));
  const Ended ended = Converted({file, "--to", "KOV", "-o", File("new"), "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(ended.errors, "paramtool: " + file + ": is a set-up of KOV already\n");
  EXPECT_FALSE(Exists("new"));
}

TEST_F(ConvertCommand, NeedsAModelAndAFile) {
  EXPECT_EQ(Converted({"default:KOV", "-o", File("new")}).status, ExitUsage);
  EXPECT_EQ(Converted({"default:KOV", "--to", "ABC", "-o", File("new")}).status, ExitUsage);
  EXPECT_EQ(Converted({"default:KOV", "--to", "RUG"}).status, ExitUsage);
  EXPECT_EQ(Converted({"default:KOV", "--to", "RUG", "-o", File("no/such/new")}).status, ExitFailed);
  EXPECT_EQ(Files(), std::vector<std::string>{});
}

TEST_F(ConvertCommand, TheReportTakesThePlaceOfNoSetUp) {
  const std::string file = Write("plant.KOV", PlantFile("KOV"));
  for (const std::string& html : {file, File("new"), File("./new")}) {
    EXPECT_EQ(Converted({file, "--to", "RUG", "-o", File("new"), "--html", html}).status, ExitFailed);
  }
  EXPECT_EQ(Files(), std::vector<std::string>{"plant.KOV"});
  EXPECT_EQ(Read("plant.KOV"), PlantFile("KOV"));
}

} // namespace
} // namespace loader::test
