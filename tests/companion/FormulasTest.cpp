// Formulas as they are read, and a set-up in lines that loses nothing.
#include "companion/Formulas.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "companion/Show.h"
#include "operation/Formula.h"
#include "tests/companion/CompanionTest.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

const Speech English{Language::English, false};

class Formulas : public CompanionTest {
protected:
  Formulas() { LoadModel("KOV"); }
  static void PutTerm(int term, int function, int rule, int kind, int number, int secondWord = 0) {
    const std::string place = "1" + std::to_string(term);
    Put("O", 0, "OP" + place, FormulaCompose(function, rule));
    Put("O", 0, "S1" + place, FormulaCompose(kind, number));
    Put("O", 0, "S2" + place, secondWord);
  }
  static std::vector<std::string> TagsBeside() {
    std::vector<std::string> tags;
    for (const ParameterRef& word : WordsBeside({0, 1})) {
      tags.push_back(word.tag);
    }
    return tags;
  }
  // All that a report says of formula 1 of the first operation channel.
  static std::u16string Told() {
    std::u16string told;
    for (const ShownLine& line : ShownLines(WordsOf({0, 1}), English)) {
      told += line.name + u": " + line.text + u"\n";
    }
    return told;
  }
};

using Tags = std::vector<std::string>;

TEST_F(Formulas, AreOfTheNineWordsOfTheirNumber) {
  EXPECT_EQ(FormulaOf({"O", 3, "S142"}), (FormulaRef{3, 4}));
  EXPECT_EQ(FormulaOf({"O", 3, "OP51"}), std::nullopt);
  EXPECT_EQ(FormulaOf({"O", 3, "OP14"}), std::nullopt);
  EXPECT_EQ(FormulaOf({"C", 3, "OP11"}), std::nullopt);
  std::size_t words = 0;
  for (const ParameterRef& ref : AllParameters()) {
    words += ref.section == "O" && ref.item == 0 && FormulaOf(ref) ? 1U : 0U;
  }
  EXPECT_EQ(words, 36U);
  for (const ParameterRef& word : WordsOf({0, 2})) {
    EXPECT_EQ(FormulaOf(word), (FormulaRef{0, 2}));
    EXPECT_NE(FindParameter(word).number, nullptr) << word.tag;
  }
}

TEST_F(Formulas, ReadAsTheScreenShowsThem) {
  PutTerm(1, 0, 1, 0, 0);
  PutTerm(2, 8, 2, 1, 4, FormulaCompose(4, 2));
  EXPECT_EQ(Told(), u"CH 19 Formula 1: C01-MAX(T05,K03)\n");
  EXPECT_EQ(NameOf(FormulaRef{0, 1}, Language::Japanese), u"CH 19 式1");
}

TEST_F(Formulas, WithoutATermAreEmptyLines) {
  EXPECT_EQ(Told(), u"CH 19 Formula 1: \n");
}

TEST_F(Formulas, TellTheWordsThatTheTextPassesOver) {
  PutTerm(1, 1, 1, 0, 0, 5); // the second input of ABS
  PutTerm(2, 0, 0, 0, 0);    // empty, and ends the text
  PutTerm(3, 3, 2, 0, 4);
  EXPECT_EQ(TagsBeside(), (Tags{"S211", "OP13", "S113"}));
  EXPECT_EQ(Told(), u"CH 19 Formula 1: ABS(C01)\nCH 19 Formula 1 term 1: input 2: 5\n"
                    u"CH 19 Formula 1 term 3: function and rule: 770\nCH 19 Formula 1 term 3: input 1: 4\n");
}

TEST_F(Formulas, TellWordsWithAFunctionASignOrAKindThatIsNone) {
  PutTerm(1, 99, 1, 0, 0);
  EXPECT_EQ(TagsBeside(), Tags{"OP11"});
  PutTerm(1, 0, 2, 0, 0);
  EXPECT_EQ(TagsBeside(), Tags{"OP11"}) << "a first term's rule is not printed";
  PutTerm(1, 0, 1, 9, 0);
  EXPECT_EQ(TagsBeside(), Tags{"S111"});
  PutTerm(1, 0, 1, 0, 0);
  PutTerm(2, 1, 0, 0, 3);
  EXPECT_EQ(TagsBeside(), Tags{"OP12"}) << "no sign between the two";
}

// Whatever one word becomes, a report of before and after differs.
TEST_F(Formulas, LoseNothing) {
  std::mt19937 random(7);
  constexpr int Rounds = 20000;
  const std::vector<ParameterRef> words = WordsOf({0, 1});
  const auto someWord = [&] {
    switch (random() % 4) {
    case 0:
      return 0;
    case 1:
      return static_cast<int>(random() % 65536);
    default:
      return static_cast<int>(random() % 16 * 256 + random() % 7);
    }
  };
  for (int round = 0; round < Rounds; ++round) {
    for (const ParameterRef& word : words) {
      Put("O", 0, word.tag, someWord());
    }
    const std::u16string before = Told();
    ParamNumRecord& changed = NumRecord("O", 0, words[random() % words.size()].tag);
    const std::int16_t old = changed.Value;
    changed.Value = static_cast<std::int16_t>(someWord());
    EXPECT_EQ(changed.Value == old, Told() == before)
        << "round " << round << ": " << changed.Tag << " " << old << " to " << changed.Value;
  }
}

// --- Lines

using Lines = Formulas;

TEST_F(Lines, SpeakForThemselvesInBothLanguagesOnBothModels) {
  for (const char* model : {"KOV", "RUG"}) {
    LoadModel(model);
    for (const Language language : {Language::Japanese, Language::English}) {
      std::set<std::u16string> names;
      for (const ShownLine& line : ShownLines(AllParameters(), {language, false})) {
        EXPECT_TRUE(names.insert(line.name).second) << ToUtf8(line.name);
        EXPECT_EQ(line.name.find(u'\n'), std::u16string::npos);
      }
    }
  }
}

TEST_F(Lines, StandByPageAndInsideAsInTheParameterFile) {
  const std::vector<ShownLine> lines = ShownLines(AllParameters(), English);
  EXPECT_TRUE(std::ranges::is_sorted(lines, {}, &ShownLine::page));
  EXPECT_EQ(lines.front().name, u"CH 1 Tag");
  // Four lines for the 36 words of each operation channel, all of which are empty.
  EXPECT_EQ(lines.size(), AllParameters().size() - 12U * (36U - 4U));
}

TEST_F(Lines, ShowAWordThatWasChosenAlone) {
  const std::vector<ShownLine> lines = ShownLines({{"O", 0, "OP11"}}, English);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines.front().name, u"CH 19 Formula 1 term 1: function and rule");
  EXPECT_EQ(lines.front().text, u"0");
}

TEST_F(Lines, StayOneLineWhateverATextHolds) {
  TextRecord("C", 0, "TAG").Value.replace(0, 6, u"a\n\x1b\x7f\x85z");
  EXPECT_EQ(ReadableValue({"C", 0, "TAG"}, English), u"a\u240a\u241b\u2421\ufffdz");
}

} // namespace
} // namespace loader::test
