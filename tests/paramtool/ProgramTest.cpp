// The program as such: usage, help, languages, exit codes, a reader that has gone, what it is linked with.
#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

#include "core/Text.h"
#include "paramtool/Command.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

using Program = ToolTest;
using paramtool::Commands;

TEST_F(Program, SaysHowItIsUsed) {
  const Ended help = Tool({"--help"});
  EXPECT_EQ(help.status, ExitGood);
  EXPECT_EQ(help.errors, "");
  for (const auto& command : Commands()) {
    EXPECT_NE(help.output.find(std::string("\n  ") + command.name + " "), std::string::npos) << command.name;
  }
  EXPECT_EQ(Tool({"help"}).output, help.output);
  const Ended english = Tool({"--help", "--lang", "en"});
  EXPECT_NE(english.output.find("Exit codes: 0 as asked and equal"), std::string::npos);
}

TEST_F(Program, EachCommandHasHelpWithItsOptionsAndExamples) {
  for (const auto& command : Commands()) {
    for (const char* language : {"ja", "en"}) {
      const Ended help = Tool({command.name, "--help", "--lang", language});
      EXPECT_EQ(help.status, ExitGood) << command.name;
      EXPECT_NE(help.output.find(std::string(command.name) + " " + command.usage), std::string::npos);
      for (const auto& option : command.options) {
        const std::string names = option.names;
        EXPECT_NE(help.output.find("--" + names.substr(names.find(',') + 1)), std::string::npos) << names;
      }
      std::istringstream examples(command.examples);
      for (std::string line; std::getline(examples, line);) {
        EXPECT_NE(help.output.find("\n  " + line), std::string::npos) << line;
      }
      EXPECT_EQ(Tool({"help", command.name, "--lang", language}).output, help.output);
    }
  }
}

TEST_F(Program, WrongUsageIsToldInOneLineAndEndsWith64) {
  const std::vector<std::vector<std::string>> wrong{
      {},
      {"unheard-of"},
      {"show"},
      {"show", "default:KOV", "--unheard-of"},
      {"show", "default:KOV", "--lang", "fr"},
      {"show", "default:KOV", "--model", "XYZ"},
      {"show", "default:KOV", "--lang"},
  };
  for (const auto& arguments : wrong) {
    const Ended ended = Tool(arguments);
    EXPECT_EQ(ended.status, ExitUsage) << testing::PrintToString(arguments);
    EXPECT_EQ(ended.output, "") << testing::PrintToString(arguments);
    EXPECT_TRUE(ended.errors.starts_with("paramtool: ")) << ended.errors;
    EXPECT_EQ(std::ranges::count(ended.errors, '\n'), 1) << ended.errors;
  }
}

TEST_F(Program, OptionsMayStandBeforeTheCommand) {
  const Ended usual = Tool({"show", "default:KOV", "CH1", "--lang", "en"});
  EXPECT_EQ(Tool({"--lang", "en", "show", "default:KOV", "CH1"}).output, usual.output);
  EXPECT_EQ(Tool({"--model", "KOV", "--lang=en", "show", "default:KOV", "CH1"}).output, usual.output);
  const Ended fleet = Tool({"--jobs", "8", "fleet", File("absent.csv"), "read"});
  EXPECT_EQ(fleet.status, ExitFailed) << fleet.errors;
}

TEST_F(Program, WhatCannotBeDoneIsOneLineWithWhatAndWhereAndEndsWith2) {
  const std::string file = File("absent.KOV");
  const Ended ended = Tool({"show", file, "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(ended.output, "");
  EXPECT_TRUE(ended.errors.starts_with("paramtool: " + file + ": cannot be read (")) << ended.errors;
  EXPECT_EQ(std::ranges::count(ended.errors, '\n'), 1) << ended.errors;
}

TEST_F(Program, AFailureIsAJsonReportToo) {
  const Ended ended = Tool({"show", File("absent.KOV"), "--json", "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_NE(ended.output.find("\"exit\": 2"), std::string::npos);
  EXPECT_NE(ended.output.find("cannot be read"), std::string::npos);
}

TEST_F(Program, AReaderThatHasGoneIsTold) {
  RunningProcess running(ToolProgram(), {"show", "default:RUG", "--lang", "en"});
  running.CloseOutput();
  const Ended ended = running.Wait();
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(ended.errors, "paramtool: the results could not be written to the standard output\n");
}

TEST_F(Program, LoadsNoWidgets) {
  const Ended libraries = RunProcess("/usr/bin/ldd", {ToolProgram().string()});
  EXPECT_EQ(libraries.status, 0);
  EXPECT_NE(libraries.output.find("libQt6Core"), std::string::npos);
  EXPECT_EQ(libraries.output.find("libQt6Widgets"), std::string::npos);
  EXPECT_EQ(libraries.output.find("libQt6Gui"), std::string::npos);
}

TEST_F(Program, LeavesNoLoaderIni) {
  const std::filesystem::path ini = ToolProgram().parent_path() / "LOADER.INI";
  const bool before = std::filesystem::exists(ini);
  const std::string content = before ? ContentOf(ini) : std::string();
  EXPECT_EQ(Tool({"show", "default:KOV", "CH1"}).status, ExitGood);
  EXPECT_EQ(std::filesystem::exists(ini), before);
  EXPECT_EQ(before ? ContentOf(ini) : std::string(), content);
}

} // namespace
} // namespace loader::test
