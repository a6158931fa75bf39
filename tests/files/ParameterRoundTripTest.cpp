// Saving and opening a store gives it back, except for what the file cannot carry.
#include "tests/files/ParameterFileSupport.h"

#include <algorithm>
#include <random>
#include <set>

#include "core/modFile.h"

namespace loader::test {
namespace {

class RoundTrips : public testing::TestWithParam<const char*> {
protected:
  void SetUp() override { StartWithModel(platform, GetParam()); }

  [[nodiscard]] std::string Save() {
    EXPECT_TRUE(gFSaveParamFile(platform.folder / "a"));
    return platform.ReadFile("a");
  }
  // What opening the file last saved does to the store.
  void Open() {
    ASSERT_TRUE(gFLoadInitSetteiData());
    ASSERT_TRUE(gFLoadParamFile(platform.folder / "a"));
  }

  ScriptedPlatform platform;
};

INSTANTIATE_TEST_SUITE_P(Models, RoundTrips, testing::Values("KOV", "RUG"),
                         [](const testing::TestParamInfo<const char*>& model) { return model.param; });

template <typename Visit> void ForEachNumber(ParamStoreTable& store, Visit visit) {
  for (ParamSection& section : store) {
    for (std::size_t item = 0; item < section.Items.size(); ++item) {
      for (ParamNumRecord& record : section.Items[item].NumRecords) {
        visit(std::string(Trim(std::string_view(section.Code))), item, record);
      }
    }
  }
}

template <typename Visit> void ForEachText(ParamStoreTable& store, Visit visit) {
  for (ParamSection& section : store) {
    for (std::size_t item = 0; item < section.Items.size(); ++item) {
      for (ParamTextRecord& record : section.Items[item].TextRecords) {
        visit(std::string(Trim(std::string_view(section.Code))), item, record);
      }
    }
  }
}

// What the reader sets by a rule of its own, whatever the file says; tests below pin each.
bool IsSetByRule(std::string_view tag) {
  return tag == "SEKI" || tag == "TTSM" || tag == "TTEM";
}
// Hours are multiplied by 60 on the way in: they have to stay small.
bool IsOldHour(std::string_view tag) {
  return tag == "TTSH" || tag == "TTEH";
}

// The first line in which two files differ, for a message that can be read.
std::string FirstDifference(std::string_view a, std::string_view b) {
  if (a == b) {
    return "none";
  }
  std::size_t at = 0;
  while (at < a.size() && at < b.size() && a[at] == b[at]) {
    ++at;
  }
  const std::size_t start = a.rfind('\n', at) == std::string_view::npos ? 0 : a.rfind('\n', at) + 1;
  return std::string(a.substr(start, 80)) + " against " + std::string(b.substr(start, 80));
}

// Gives every parameter a value that no other parameter of its kind has and that is not its default. Returns
// how many were given one.
std::size_t MakeEveryValueDistinct() {
  std::set<std::int16_t> numbers;
  std::set<std::u16string> texts;
  std::int16_t number = -32768;
  std::int16_t hours = 5;
  ForEachNumber(ParamStore, [&](const std::string&, std::size_t, ParamNumRecord& record) {
    if (!IsSetByRule(record.Tag)) {
      SetNumber(record, IsOldHour(record.Tag) ? hours++ : number++, SlotValue);
      EXPECT_NE(record.DefaultValue, record.Value) << record.Tag;
      EXPECT_TRUE(numbers.insert(record.Value).second) << record.Tag;
    }
  });
  ForEachText(ParamStore, [&](const std::string&, std::size_t, ParamTextRecord& record) {
    // A leading blank, trail bytes 0x5C and 0x7C, half-width katakana, quotes, and every length up to 64.
    std::u16string text = u" \u8868\u30DD\uFF71\"" + DecimalText(static_cast<std::int64_t>(texts.size()));
    text += std::u16string(texts.size() % (TextWidth - text.size()), u'x') + u"\uFF5E";
    SetText(record, text, SlotValue);
    EXPECT_NE(record.DefaultValue, record.Value) << record.Tag;
    EXPECT_TRUE(texts.insert(record.Value).second) << record.Tag;
  });
  return numbers.size() + texts.size();
}

TEST_P(RoundTrips, GiveBackADistinctValueInEveryParameter) {
  ASSERT_LT(2000U, MakeEveryValueDistinct());
  ParamStoreTable before = ParamStore;
  const std::string first = Save();

  Open();

  ForEachNumber(before, [&](const std::string& section, std::size_t item, const ParamNumRecord& record) {
    EXPECT_EQ(record.Value, NumRecord(section, static_cast<int>(item), record.Tag).Value)
        << section << item << record.Tag;
  });
  ForEachText(before, [&](const std::string& section, std::size_t item, const ParamTextRecord& record) {
    EXPECT_EQ(record.Value, TextRecord(section, static_cast<int>(item), record.Tag).Value)
        << section << item << record.Tag;
  });
  EXPECT_EQ("none", FirstDifference(first, Save()));
}

TEST_P(RoundTrips, LeaveTheOtherCopiesAtTheirDefaults) {
  MakeEveryValueDistinct();
  static_cast<void>(Save());
  Open();
  ForEachNumber(ParamStore, [&](const std::string& section, std::size_t item, const ParamNumRecord& record) {
    EXPECT_EQ(record.DefaultValue, record.ReadValue) << section << item << record.Tag;
    EXPECT_LE(record.MinValue, record.DefaultValue) << section << item << record.Tag;
  });
  ForEachText(ParamStore, [&](const std::string& section, std::size_t item, const ParamTextRecord& record) {
    EXPECT_EQ(record.DefaultValue, record.ReadValue) << section << item << record.Tag;
  });
}

TEST_P(RoundTrips, OfADefaultStoreChangeNothing) {
  const std::string first = Save();
  Open();
  EXPECT_EQ("none", FirstDifference(first, Save()));
}

// Every character that has a code of its own, except the controls (they have no place in a name) and the
// comma.
std::u16string EveryCharacter() {
  std::u16string characters;
  for (unsigned c = 0x20; c < 0x10000; ++c) {
    const std::u16string one(1, static_cast<char16_t>(c));
    if (c != u',' && c != 0x7F && ToCodePage(one) != "?" && FromCodePage(ToCodePage(one)) == one) {
      characters += one;
    }
  }
  return characters;
}

TEST_P(RoundTrips, GiveBackAnyStoreWithinItsLimits) {
  const std::u16string characters = EveryCharacter();
  ASSERT_LT(9000U, characters.size());
  std::mt19937 random(20261121);
  const auto upTo = [&](std::size_t last) {
    return std::uniform_int_distribution<std::size_t>(0, last)(random);
  };
  for (int round = 0; round < 5; ++round) {
    ASSERT_TRUE(gFLoadInitSetteiData());
    ForEachNumber(ParamStore, [&](const std::string&, std::size_t, ParamNumRecord& record) {
      const auto value = static_cast<std::int16_t>(
          std::uniform_int_distribution<int>(record.MinValue, record.MaxValue)(random));
      const bool renumbered = record.Tag == "TYPE" && value >= 13 && value <= 18;
      if (!IsSetByRule(record.Tag) && !renumbered) {
        SetNumber(record, value, SlotValue);
      }
    });
    ForEachText(ParamStore, [&](const std::string&, std::size_t, ParamTextRecord& record) {
      std::u16string text(upTo(TextWidth), u' ');
      std::ranges::generate(text, [&] { return characters[upTo(characters.size() - 1)]; });
      SetText(record, text, SlotValue);
    });
    const std::string first = Save();
    Open();
    ASSERT_EQ("none", FirstDifference(first, Save())) << "round " << round;
  }
}

TEST_P(RoundTrips, AreTheSameTheSecondTimeEvenForWhatTheFirstLost) {
  MakeEveryValueDistinct();
  SetText(TextRecord("C", 0, "TAG"), u"A,B", SlotValue);
  Put("C", 0, "SEKI", 3);
  Put("E", 0, "TTSM", 30);
  static_cast<void>(Save());
  Open();
  const std::string second = Save();
  Open();
  EXPECT_EQ("none", FirstDifference(second, Save()));
}

// --- What does not survive, deliberately

TEST_P(RoundTrips, LoseATextWithACommaInTheFiveTagsThatAreEmptied) {
  SetText(TextRecord("C", 0, "TAG"), u"A,B", SlotValue);
  SetText(TextRecord("G", 0, "GNEM"), u"A,B", SlotValue);
  SetText(TextRecord("C", 0, "STAG"), u"A,B", SlotValue);
  static_cast<void>(Save());
  Open();
  EXPECT_EQ(FixedText(u""), TextRecord("C", 0, "TAG").Value);
  EXPECT_EQ(FixedText(u""), TextRecord("G", 0, "GNEM").Value);
  EXPECT_EQ(FixedText(u"A,B"), TextRecord("C", 0, "STAG").Value);
}

TEST_P(RoundTrips, SetEveryTotalizerKindToOne) {
  Put("C", 0, "SEKI", 0);
  Put("C", 1, "SEKI", 3);
  static_cast<void>(Save());
  Open();
  EXPECT_EQ(1, NumValue("C", 0, "SEKI"));
  EXPECT_EQ(1, NumValue("C", 1, "SEKI"));
}

// The cycle's line stands behind the kind's in the file, so the kind's rule does not reach it.
TEST_P(RoundTrips, KeepTheReportCycleOfEveryTotalizerKind) {
  Put("C", 0, "SEKI", 0);
  Put("C", 0, "STYP", 3);
  Put("C", 1, "SEKI", 2);
  Put("C", 1, "STYP", 6);
  static_cast<void>(Save());
  Open();
  EXPECT_EQ(3, NumValue("C", 0, "STYP"));
  EXPECT_EQ(6, NumValue("C", 1, "STYP"));
}

TEST_P(RoundTrips, LoseTheOldMinutesAndKeepTheOldHours) {
  Put("E", 0, "TTSH", 4);
  Put("E", 0, "TTSM", 30);
  Put("E", 0, "TTEH", 5);
  Put("E", 0, "TTEM", 40);
  static_cast<void>(Save());
  Open();
  EXPECT_EQ(4, NumValue("E", 0, "TTSH"));
  EXPECT_EQ(0, NumValue("E", 0, "TTSM"));
  EXPECT_EQ(5, NumValue("E", 0, "TTEH"));
  EXPECT_EQ(0, NumValue("E", 0, "TTEM"));
}

// The present times stand behind the old ones in the file, so they win.
TEST_P(RoundTrips, KeepThePresentTimesBesideOldOnes) {
  Put("E", 0, "TTSH", 4);
  Put("E", 0, "TTSM", 30);
  Put("E", 0, "TSTR", 77);
  Put("E", 0, "TSTO", 88);
  static_cast<void>(Save());
  Open();
  EXPECT_EQ(77, NumValue("E", 0, "TSTR"));
  EXPECT_EQ(88, NumValue("E", 0, "TSTO"));
}

TEST_P(RoundTrips, RenumberAnInputKindOfOlderFiles) {
  Put("C", 0, "TYPE", 13);
  static_cast<void>(Save());
  Open();
  EXPECT_EQ(20, NumValue("C", 0, "TYPE"));
}

TEST_P(RoundTrips, CannotTellTrailingBlanksFromPadding) {
  SetText(TextRecord("K", 0, "PASS"), u"abc  ", SlotValue);
  const std::string bytes = Save();
  EXPECT_NE(std::string::npos, bytes.find("\r\nK00PASS,abc\r\n"));
}

} // namespace
} // namespace loader::test
