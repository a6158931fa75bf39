// The manual page and the completion in bash: both are made from the table of commands and stand, made, in
// share/.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "paramtool/Command.h"
#include "paramtool/Completion.h"
#include "paramtool/Manual.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

using paramtool::ArgumentsOf;
using paramtool::Commands;
using paramtool::Completed;
using paramtool::CompletionOf;

const std::filesystem::path Share = std::filesystem::path(LOADER_SOURCE_DIR) / "share";
const std::filesystem::path EnglishPage = Share / "man/man1/paramtool.1";
const std::filesystem::path JapanesePage = Share / "man/ja/man1/paramtool.1";
const std::filesystem::path Script = Share / "bash-completion/completions/paramtool";

// A failure here: run "manual man en", "manual man ja" and "manual bash" of the build's bin folder into these
// files.
TEST(Manual, IsUpToDate) {
  EXPECT_TRUE(paramtool::ManualPage(Language::English) == ContentOf(EnglishPage));
  EXPECT_TRUE(paramtool::ManualPage(Language::Japanese) == ContentOf(JapanesePage));
}

TEST(Completion, IsUpToDate) {
  EXPECT_TRUE(paramtool::BashCompletion() == ContentOf(Script));
}

// As a reader sees it, without the doubled characters of bold type.
std::string Shown(const std::filesystem::path& page) {
  const Ended shown =
      RunProcess("/usr/bin/man", {"--warnings", "-E", "UTF-8", "-Tutf8", "-l", page.string()},
                 {.environment = {"LC_ALL=C.UTF-8", "MANWIDTH=200", "MANPAGER=cat", "GROFF_NO_SGR=1"}});
  EXPECT_EQ(shown.status, 0);
  EXPECT_EQ(shown.errors, ""); // warnings
  std::string text;
  for (const char c : shown.output) {
    if (c == '\b') {
      while (!text.empty() && (text.back() & 0xC0) == 0x80) {
        text.pop_back();
      }
      text.pop_back();
    } else {
      text += c;
    }
  }
  return text;
}

TEST(Manual, IsReadWithoutAWarningAndHasAllThatTheHelpHas) {
  ASSERT_TRUE(std::filesystem::exists("/usr/bin/man")) << "scripts/setup.sh installs it";
  const std::vector<std::string> pages{Shown(EnglishPage), Shown(JapanesePage)};
  for (const std::string& page : pages) {
    for (const auto& command : Commands()) {
      EXPECT_NE(page.find("\n   " + std::string(command.name) + " " + command.usage), std::string::npos)
          << command.name;
      std::istringstream examples(command.examples);
      for (std::string line; std::getline(examples, line);) {
        EXPECT_NE(page.find("\n           " + line + "\n"), std::string::npos) << line << page;
      }
      for (const auto& option : command.options) {
        const std::string names = option.names;
        EXPECT_NE(page.find("--" + names.substr(names.find(',') + 1)), std::string::npos) << names;
      }
    }
    EXPECT_NE(page.find("--lang ja|en"), std::string::npos);
    EXPECT_NE(page.find("tcp:HOST[:PORT][#STATION]"), std::string::npos);
  }
  EXPECT_NE(pages[0].find("EXIT STATUS"), std::string::npos);
  EXPECT_NE(pages[1].find("終了ステータス"), std::string::npos);
}

// --- Completion

TEST(Completion, TheArgumentsOfAUsageAreItsWordsWithoutOptions) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(ArgumentsOf("SETUP [WHERE...]"), (Words{"SETUP", "WHERE..."}));
  EXPECT_EQ(ArgumentsOf("FILE --to MODEL -o FILE"), (Words{"FILE"}));
  EXPECT_EQ(ArgumentsOf("A B [--only PATTERN]... C"), (Words{"A", "B", "C"}));
  EXPECT_EQ(ArgumentsOf("LIST read|compare|write [REFERENCE]"),
            (Words{"LIST", "read|compare|write", "REFERENCE"}));
}

// A new word in the table needs its row in Completion.cpp.
TEST(Completion, KnowsEachWordOfTheTable) {
  for (const auto& command : Commands()) {
    for (const std::string& word : ArgumentsOf(command.usage)) {
      EXPECT_NE(CompletionOf(word), Completed::Unknown) << command.name << ": " << word;
    }
    for (const auto& option : command.options) {
      EXPECT_TRUE(option.value == nullptr || CompletionOf(option.value) != Completed::Unknown)
          << command.name << ": " << option.value;
    }
  }
  EXPECT_EQ(CompletionOf("UNHEARD-OF"), Completed::Unknown);
}

TEST(Completion, IsGoodBash) {
  const Ended checked = RunProcess("/bin/bash", {"-n", Script.string()});
  EXPECT_EQ(checked.status, 0) << checked.errors;
  EXPECT_EQ(checked.errors, "");
}

// What bash offers for the last one of the words; they are broken as bash breaks them.
using Offers = std::vector<std::string>;
Offers Offered(std::vector<std::string> words, const ProcessOptions& options = {}) {
  const std::string driver = "set -u; source \"$1\"; shift; COMP_WORDS=(paramtool \"$@\"); COMP_CWORD=$#; "
                             "_paramtool; printf '%s\\n' \"${COMPREPLY[@]}\"";
  words.insert(words.begin(), {"-c", driver, "bash", Script.string()});
  const Ended ended = RunProcess("/bin/bash", std::move(words), options);
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.errors, "");
  Offers offers;
  std::istringstream lines(ended.output);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) {
      offers.push_back(line);
    }
  }
  std::ranges::sort(offers);
  return offers;
}

Offers CommandNames() {
  Offers names{"help"};
  for (const auto& command : Commands()) {
    names.emplace_back(command.name);
  }
  std::ranges::sort(names);
  return names;
}

TEST(Completion, OffersTheCommandsFirst) {
  EXPECT_EQ(Offered({""}), CommandNames());
  EXPECT_EQ(Offered({"--lang", "en", ""}), CommandNames());
  EXPECT_EQ(Offered({"--lang", "=", "en", "--json", "sho"}), Offers{"show"});
  EXPECT_EQ(Offered({"help", "sho"}), Offers{"show"});
  EXPECT_EQ(Offered({"unheard-of", ""}), Offers{});
}

TEST(Completion, OffersTheOptionsOfACommandAndTheirValues) {
  EXPECT_EQ(Offered({"show", "--j"}), Offers{"--json"});
  EXPECT_EQ(Offered({"show", "--lang", ""}), (Offers{"en", "ja"}));
  EXPECT_EQ(Offered({"show", "--model", "K"}), Offers{"KOV"});
  EXPECT_EQ(Offered({"show", "--lang", "="}), (Offers{"en", "ja"}));
  EXPECT_EQ(Offered({"show", "--lang", "=", "j"}), Offers{"ja"});
  for (const auto& command : Commands()) {
    const Offers options = Offered({command.name, "-"});
    for (const auto& option : command.options) {
      std::istringstream names(option.names);
      for (std::string name; std::getline(names, name, ',');) {
        const std::string written = (name.size() == 1 ? "-" : "--") + name;
        EXPECT_TRUE(std::ranges::find(options, written) != options.end()) << command.name << " " << written;
      }
    }
    EXPECT_TRUE(std::ranges::find(options, "--help") != options.end()) << command.name;
  }
}

TEST(Completion, OffersHowAnAddressBegins) {
  EXPECT_EQ(Offered({"show", "tc"}), Offers{"tcp:"});
  EXPECT_EQ(Offered({"show", "default"}), (Offers{"default:KOV", "default:RUG"}));
  // Behind a colon bash completes the rest alone.
  EXPECT_EQ(Offered({"show", "default", ":"}), (Offers{"KOV", "RUG"}));
  EXPECT_EQ(Offered({"show", "default", ":", "R"}), Offers{"RUG"});
  // Names of files are bash's own business.
  EXPECT_EQ(Offered({"show", ""}), Offers{});
  EXPECT_EQ(Offered({"show", "plant.KOV", "C"}), Offers{});
}

} // namespace
} // namespace loader::test
