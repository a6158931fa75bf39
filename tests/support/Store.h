// Short ways of the tests to what the store holds. A parameter that does not exist fails the test by its
// name.
#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "core/Text.h"
#include "core/modMain.h"

namespace loader::test {

inline ParamNumRecord& NumRecord(std::string_view section, int item, std::string_view tag) {
  static ParamNumRecord none;
  ParamNumRecord* record = FindNumRecord(section, item, tag);
  EXPECT_NE(record, nullptr) << section << item << tag;
  return record == nullptr ? none = {} : *record;
}
inline ParamTextRecord& TextRecord(std::string_view section, int item, std::string_view tag) {
  static ParamTextRecord none;
  ParamTextRecord* record = FindTextRecord(section, item, tag);
  EXPECT_NE(record, nullptr) << section << item << tag;
  return record == nullptr ? none = {} : *record;
}

// --- Values

inline std::int16_t Stored(std::string_view section, int item, std::string_view tag) {
  return NumRecord(section, item, tag).Value;
}
// The 64 characters as they stand.
inline std::string StoredText(std::string_view section, int item, std::string_view tag) {
  return ToUtf8(TextRecord(section, item, tag).Value);
}
// Without its padding.
inline std::string TrimmedText(std::string_view section, int item, std::string_view tag) {
  return ToUtf8(TrimRight(TextRecord(section, item, tag).Value));
}
// `text` with blanks up to 64 characters.
inline std::string Padded64(std::string_view text) {
  return ToUtf8(FixedText(FromUtf8(text)));
}
// Every number of the store, in its order: what a step may not have changed.
inline std::vector<std::int16_t> AllNumbers() {
  std::vector<std::int16_t> numbers;
  for (const ParamSection& section : ParamStore) {
    for (const ParamItem& item : section.Items) {
      for (const ParamNumRecord& record : item.NumRecords) {
        numbers.push_back(record.Value);
      }
    }
  }
  return numbers;
}

// Every text of the store, in its order.
inline std::vector<std::u16string> AllTexts() {
  std::vector<std::u16string> texts;
  for (const ParamSection& section : ParamStore) {
    for (const ParamItem& item : section.Items) {
      for (const ParamTextRecord& record : item.TextRecords) {
        texts.push_back(record.Value);
      }
    }
  }
  return texts;
}

// --- Changes

inline void Put(std::string_view section, int item, std::string_view tag, int value) {
  NumRecord(section, item, tag).Value = static_cast<std::int16_t>(value);
}
inline void PutLimits(std::string_view section, int item, std::string_view tag, int minimum, int maximum) {
  ParamNumRecord& record = NumRecord(section, item, tag);
  record.MinValue = static_cast<std::int16_t>(minimum);
  record.MaxValue = static_cast<std::int16_t>(maximum);
}
inline void PutText(std::string_view section, int item, std::string_view tag, std::string_view text) {
  SetText(TextRecord(section, item, tag), FromUtf8(text), SlotValue);
}
// Takes a tag out of every item of a section, as in a model that does not have it.
inline void DropTag(std::string_view section, std::string_view tag) {
  const StoreIndex index = gFFindSection(section);
  ASSERT_NE(index, NotFound) << section;
  for (ParamItem& item : ParamStore[index].Items) {
    const auto named = [&](const auto& record) { return Trim(std::string_view(record.Tag)) == tag; };
    const auto dropped = std::erase_if(item.NumRecords, named) + std::erase_if(item.TextRecords, named);
    ASSERT_EQ(1U, dropped) << section << tag;
  }
}
inline void DropSection(std::string_view section) {
  const StoreIndex index = gFFindSection(section);
  ASSERT_NE(index, NotFound) << section;
  ParamStore.erase(ParamStore.begin() + index);
}

} // namespace loader::test
