#include "companion/Phrases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "tests/support/Placeholders.h"

namespace loader {
namespace {

using test::Placeholders;

TEST(Phrases, EachStandsInBothLanguagesWithTheSamePlaceholders) {
  for (const PhraseRow& row : AllPhrases()) {
    EXPECT_FALSE(row.japanese.empty()) << row.name;
    EXPECT_FALSE(row.english.empty()) << row.name;
    EXPECT_TRUE(Placeholders(row.japanese) == Placeholders(row.english)) << row.name;
    EXPECT_TRUE(std::ranges::all_of(row.english, [](char16_t c) { return c < 0x7F; })) << row.name;
  }
  EXPECT_GT(AllPhrases().size(), 50U);
}

TEST(Phrases, AreFilledInOnce) {
  EXPECT_EQ(Say(Phrase::WriteNotWritten, Language::English, {}),
            PhraseText(Phrase::WriteNotWritten, Language::English));
  EXPECT_EQ(
      Say(Phrase::FileNotWritten, Language::English, {{u"FILE", u"a@REASON@b"}, {u"REASON", u"it is full"}}),
      u"a@REASON@b: cannot be written (it is full)");
  // One that is not given stays to be seen.
  EXPECT_EQ(Say(Phrase::FileNotWritten, Language::English, {{u"REASON", u"x"}}),
            u"@FILE@: cannot be written (x)");
}

TEST(Phrases, AnIdThatIsNoneIsRefused) {
  EXPECT_THROW((void)PhraseText(static_cast<Phrase>(AllPhrases().size()), Language::English),
               std::out_of_range);
}

} // namespace
} // namespace loader
