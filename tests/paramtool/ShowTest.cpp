// paramtool show: the values of a set-up, each in a line that speaks for itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/paramtool/PlantChanges.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

class Show : public ToolTest {
protected:
  std::string Plant(std::string_view model) const {
    return Write("plant." + std::string(model), PlantFile(model));
  }
  static std::string Shown(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "show");
    const Ended ended = Tool(std::move(arguments));
    EXPECT_EQ(ended.status, ExitGood) << ended.errors;
    EXPECT_EQ(ended.errors, "");
    return ended.output;
  }
};

TEST_F(Show, TellsAWholePlantInBothLanguages) {
  ExpectGolden("show-KOV.ja.txt", Shown({Plant("KOV")}));
  ExpectGolden("show-KOV.en.txt", Shown({Plant("KOV"), "--lang", "en"}));
}

TEST_F(Show, TellsWhatWasAskedForOfALargePlant) {
  ExpectGolden("show-RUG-chosen.ja.txt", Shown({Plant("RUG"), "CH1", "CH37-38", "group 2", "mail", "U*"}));
}

TEST_F(Show, OneParameterIsOneLineWithoutAHeading) {
  EXPECT_EQ(Shown({Plant("KOV"), "C02MMAX", "--lang", "en"}), "CH 3 Measuring range, upper limit: 500.0\n");
}

TEST_F(Show, EachLineIsThereOnceSoThatADifferenceSaysWhatHasChanged) {
  const std::string before = Shown({Plant("KOV")});
  const std::string after =
      Shown({Write("after.KOV", WithValues(PlantFile("KOV"), {{"A02A1VL", "8123"}, {"C04TAG", "x"}}))});
  std::istringstream one(before);
  std::istringstream other(after);
  int differing = 0;
  for (std::string a, b; std::getline(one, a) && std::getline(other, b);) {
    differing += a == b ? 0 : 1;
  }
  EXPECT_EQ(differing, 2);
  EXPECT_EQ(std::ranges::count(before, '\n'), std::ranges::count(after, '\n'));
  EXPECT_EQ(before.find(" \n"), std::string::npos);
}

TEST_F(Show, HidesPasswordsUnlessAskedFor) {
  EXPECT_EQ(Shown({Plant("KOV")}).find("heat4120"), std::string::npos);
  EXPECT_EQ(Shown({Plant("KOV"), "--json"}).find("heat4120"), std::string::npos);
  EXPECT_NE(Shown({Plant("KOV"), "--secrets"}).find("heat4120"), std::string::npos);
  EXPECT_NE(Shown({Plant("KOV"), "--json", "--secrets"}).find("heat4120"), std::string::npos);
}

TEST_F(Show, TellsJson) {
  ExpectGolden("show-KOV-chosen.en.json", WithoutFolder(Shown({Plant("KOV"), "C02MMAX", "C02TAG", "K00PASS",
                                                               "O00*1?", "--json", "--lang", "en"})));
}

TEST_F(Show, APatternThatNamesNothingIsNoEmptyReport) {
  const Ended ended = Tool({"show", Plant("KOV"), "CH1", "CH31", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(ended.output, "");
  EXPECT_EQ(ended.errors, "paramtool: \"CH31\" names no parameter\n");
}

} // namespace
} // namespace loader::test
