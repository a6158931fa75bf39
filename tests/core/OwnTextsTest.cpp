#include "core/OwnTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "core/Text.h"
#include "core/TextTable.h"
#include "tests/support/Placeholders.h"

namespace loader {
namespace {

using test::Placeholders;

TEST(OwnTexts, EachIdHasItsTextInBothLanguages) {
  EXPECT_EQ(u"キーロック", OwnText(OwnTextId::KeyLock));
  EXPECT_EQ(u"Key lock", OwnTextEnglish(OwnTextId::KeyLock));
  int id = 0;
  for (const OwnTextRow& row : AllOwnTexts()) {
    EXPECT_EQ(row.japanese, OwnText(static_cast<OwnTextId>(id))) << row.name;
    EXPECT_EQ(row.english, OwnTextEnglish(static_cast<OwnTextId>(id))) << row.name;
    EXPECT_FALSE(row.japanese.empty()) << row.name;
    EXPECT_FALSE(row.english.empty()) << row.name;
    ++id;
  }
  EXPECT_GT(id, 10);
}

TEST(OwnTexts, AnIdThatIsNoneIsRefused) {
  EXPECT_THROW((void)OwnText(static_cast<OwnTextId>(AllOwnTexts().size())), std::out_of_range);
  EXPECT_THROW((void)OwnTextEnglish(static_cast<OwnTextId>(-1)), std::out_of_range);
}

TEST(OwnTexts, TheEnglishIsPlainAscii) {
  for (const OwnTextRow& row : AllOwnTexts()) {
    EXPECT_TRUE(std::ranges::all_of(row.english, [](char16_t c) { return c < 0x7F; })) << row.name;
  }
}

TEST(OwnTexts, TheJapaneseIsOfTheCodePage) {
  for (const OwnTextRow& row : AllOwnTexts()) {
    EXPECT_TRUE(FromCodePage(ToCodePage(row.japanese)) == row.japanese) << row.name;
  }
}

TEST(OwnTexts, BothLanguagesHaveTheSamePlaceholders) {
  for (const OwnTextRow& row : AllOwnTexts()) {
    EXPECT_EQ(Placeholders(row.japanese), Placeholders(row.english)) << row.name;
  }
}

TEST(OwnTexts, NoneSaysWhatAnotherSays) {
  std::set<std::u16string_view> said;
  for (const OwnTextRow& row : AllOwnTexts()) {
    EXPECT_TRUE(said.insert(row.japanese).second) << row.name;
  }
}

} // namespace
} // namespace loader
