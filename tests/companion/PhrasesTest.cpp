#include "companion/Phrases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>

namespace loader {
namespace {

std::multiset<std::u16string> Placeholders(std::u16string_view text) {
  std::multiset<std::u16string> names;
  for (std::size_t open = text.find(u'@'); open != std::u16string_view::npos;) {
    const std::size_t close = text.find(u'@', open + 1);
    if (close == std::u16string_view::npos) {
      break;
    }
    names.emplace(text.substr(open, close - open + 1));
    open = text.find(u'@', close + 1);
  }
  return names;
}

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
