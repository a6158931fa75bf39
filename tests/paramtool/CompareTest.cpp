// paramtool compare: what two set-ups differ in, as text, JSON and HTML.
#include <gtest/gtest.h>

#include "tests/paramtool/PlantChanges.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

class CompareCommand : public ToolTest {
protected:
  std::string Plant(std::string_view model) const {
    return Write("plant." + std::string(model), PlantFile(model));
  }
  // The plant with its handful of changes, in a file that does not set some general settings.
  std::string Changed(std::string_view model) const {
    return Write("changed." + std::string(model),
                 WithoutLines(WithValues(PlantFile(model), HandfulOfChanges), "H00S"));
  }
  static Ended Compared(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "compare");
    return Tool(std::move(arguments));
  }
};

class CompareGolden : public CompareCommand,
                      public testing::WithParamInterface<std::tuple<const char*, const char*>> {};
INSTANTIATE_TEST_SUITE_P(ModelsAndLanguages, CompareGolden,
                         testing::Combine(testing::Values("KOV", "RUG"), testing::Values("ja", "en")),
                         [](const auto& tested) {
                           return std::string(std::get<0>(tested.param)) + "_" + std::get<1>(tested.param);
                         });

TEST_P(CompareGolden, TellsAHandfulOfChanges) {
  const auto& [model, language] = GetParam();
  const std::string name = std::string("compare-") + model + "." + language;
  const std::string a = Plant(model);
  const std::string b = Changed(model);
  const Ended text = Compared({a, b, "--lang", language, "--html", File("report.html")});
  EXPECT_EQ(text.status, ExitDifferent) << text.errors;
  EXPECT_EQ(text.errors, "");
  ExpectGolden(name + ".txt", WithoutFolder(text.output));
  ExpectGolden(name + ".html", WithoutTime(WithoutFolder(Read("report.html"))));
  const Ended json = Compared({a, b, "--lang", language, "--json"});
  EXPECT_EQ(json.status, ExitDifferent);
  ExpectGolden(name + ".json", WithoutFolder(json.output));
}

TEST_F(CompareCommand, EqualSetUpsEndWith0) {
  for (const char* model : {"KOV", "RUG"}) {
    const Ended ended = Compared({Plant(model), Plant(model), "--lang", "en"});
    EXPECT_EQ(ended.status, ExitGood);
    EXPECT_TRUE(
        ended.output.ends_with("0 different, 0 read differently, 0 only in A, 0 only in B\nno difference\n"))
        << ended.output;
  }
}

TEST_F(CompareCommand, WhatOnlyOneModelHasIsNeverEqual) {
  const Ended ended = Compared({"default:KOV", "default:RUG", "--only", "C40*", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitDifferent);
  EXPECT_NE(ended.output.find("B: default:RUG (RUG)"), std::string::npos);
  EXPECT_NE(ended.output.find("CH 41 Tag (C40TAG): only in B: \"CH 41\""), std::string::npos) << ended.output;
}

TEST_F(CompareCommand, PasswordsAreToldAsDifferentAndNeverShown) {
  const Ended ended = Compared({Plant("KOV"), Changed("KOV"), "--only", "K*", "--lang", "en"});
  EXPECT_NE(ended.output.find("(K00PASS): \u2022\u2022\u2022\u2022 -> \u2022\u2022\u2022\u2022 (different)"),
            std::string::npos)
      << ended.output;
  for (const std::string& format : {std::string("--json"), "--html=" + File("r.html")}) {
    const Ended report = Compared({Plant("KOV"), Changed("KOV"), format});
    EXPECT_EQ((report.output + (Exists("r.html") ? Read("r.html") : "")).find("open-sesame"),
              std::string::npos);
  }
  const Ended open = Compared({Plant("KOV"), Changed("KOV"), "--only", "K*", "--secrets"});
  EXPECT_NE(open.output.find("open-sesame"), std::string::npos);
}

TEST_F(CompareCommand, OnlyAndIgnoreChooseAndTheRestIsCounted) {
  const Ended alarms = Compared({Plant("KOV"), Changed("KOV"), "--only", "alarms", "--lang", "en"});
  EXPECT_NE(alarms.output.find("\nCH 3 Alarm 1 set value (A02A1VL): "), std::string::npos) << alarms.output;
  EXPECT_EQ(alarms.output.find("C04TAG"), std::string::npos);
  EXPECT_NE(alarms.output.find(" left out as asked\n"), std::string::npos);
  const Ended rest =
      Compared({Plant("KOV"), Changed("KOV"), "--ignore", "alarms", "--ignore", "CH5", "--lang", "en"});
  EXPECT_EQ(rest.output.find("A02A1VL"), std::string::npos);
  EXPECT_EQ(rest.output.find("C04TAG "), std::string::npos);
  EXPECT_NE(rest.output.find("G01GC03"), std::string::npos);
}

TEST_F(CompareCommand, APatternThatNamesNothingInEitherIsRefused) {
  for (const char* option : {"--only", "--ignore"}) {
    const Ended ended = Compared({"default:KOV", "default:KOV", option, "CH48", "--lang", "en"});
    EXPECT_EQ(ended.status, ExitFailed);
    EXPECT_EQ(ended.errors, "paramtool: \"CH48\" names no parameter\n");
    EXPECT_EQ(Compared({"default:KOV", "default:RUG", option, "CH48"}).status, ExitDifferent) << "B has it";
  }
}

TEST_F(CompareCommand, TextsThatAFileLosesAreSaid) {
  const std::string file = Write("comma.KOV", WithValues(PlantFile("KOV"), {{"C04TAG", "one, two"}}));
  const Ended ended = Compared({Plant("KOV"), file, "--lang", "en"});
  EXPECT_EQ(ended.errors,
            "paramtool: " + file +
                ": lines whose text is not read as it stands: 1 (paramtool check tells them)\n");
  EXPECT_NE(ended.output.find("CH 5 Tag (C04TAG): \"焼結炉 炉心\" -> \"\"\n"), std::string::npos)
      << ended.output;
}

TEST_F(CompareCommand, NoReportTakesThePlaceOfASetUp) {
  for (const std::string& file : {Plant("KOV"), Changed("KOV")}) {
    const std::string before = ContentOf(file);
    const Ended ended = Compared({File("plant.KOV"), File("changed.KOV"), "--html", file, "--lang", "en"});
    EXPECT_EQ(ended.status, ExitFailed);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors, "paramtool: " + file + ": is not written, for it is a set-up that was given\n");
    EXPECT_EQ(ContentOf(file), before);
  }
  const Ended nowhere = Compared({Plant("KOV"), Plant("KOV"), "--html", File("no/such/r.html")});
  EXPECT_EQ(nowhere.status, ExitFailed);
}

} // namespace
} // namespace loader::test
