// What has changed between two readings of a recorder.
#include "companion/FleetChanges.h"

#include <gtest/gtest.h>

#include "core/Text.h"
#include "tests/companion/CompanionTest.h"

namespace loader::test {
namespace {

using FleetChangesTest = CompanionTest;

std::string With(std::string bytes, const std::string& key, const std::string& value) {
  const bool first = bytes.starts_with(key + ",");
  const std::size_t at = first ? 0 : bytes.find("\n" + key + ",");
  if (at == std::string::npos) {
    ADD_FAILURE() << key;
    return bytes;
  }
  const std::size_t start = at + key.size() + (first ? 1 : 2);
  return bytes.replace(start, bytes.find('\r', start) - start, value);
}

FleetChanges Changes(const std::string& before, const std::string& after) {
  return ChangesBetween(before, after, "plant.KOV", Language::English);
}

TEST_F(FleetChangesTest, AreNamedWithoutTheirValues) {
  const std::string before = BytesOf("default:KOV");
  EXPECT_TRUE(Changes(before, before).None());
  const FleetChanges changes = Changes(before, With(With(before, "C02MMAX", "77"), "C00TAG ", "Oven"));
  EXPECT_TRUE(changes.known);
  EXPECT_EQ(changes.names, (std::vector<std::u16string>{u"CH 1 Tag", u"CH 3 Measuring range, upper limit"}));
}

TEST_F(FleetChangesTest, TheClockAndTheStateOfTheRecorderAreNone) {
  const std::string before = BytesOf("default:KOV");
  std::string after = before;
  for (const char* key :
       {"H00YEAR", "H00MONT", "H00DAYS", "H00HOUR", "H00MINT", "H00TIMS", "S00SYS1", "F00FIX "}) {
    after = With(after, key, "1");
  }
  EXPECT_NE(after, before);
  EXPECT_TRUE(Changes(before, after).None());
  // Another recorder in the same place is one.
  EXPECT_EQ(Changes(before, With(before, "P00SNO.", "A123")).names.size(), 1U);
}

TEST_F(FleetChangesTest, WhatOnlyOneOfTheModelsHasIsAmongThem) {
  const FleetChanges changes = Changes(BytesOf("default:KOV"), BytesOf("default:RUG"));
  EXPECT_TRUE(changes.known);
  EXPECT_GT(changes.names.size(), 1000U);
  EXPECT_EQ(Changes(BytesOf("default:RUG"), BytesOf("default:KOV")).names.size(), changes.names.size());
}

TEST_F(FleetChangesTest, OfAFileThatDoesNotOpenNothingIsKnown) {
  const FleetChanges changes = Changes("no parameter file\r\n", BytesOf("default:KOV"));
  EXPECT_FALSE(changes.known);
  EXPECT_FALSE(changes.None());
}

} // namespace
} // namespace loader::test
