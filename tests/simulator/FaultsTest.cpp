// Faults: how they are named, when they hit, and what they do to the bytes.
#include "simulator/Faults.h"

#include <gmock/gmock.h>

#include <set>

#include "simulator/CheckValue.h"

namespace loader::simulator {
namespace {

using testing::Optional;

// Two registers, 0x1234 and 0xABCD, from station 1 by function 3.
const Bytes TcpReply = {0x00, 0x07, 0x00, 0x00, 0x00, 0x07, 0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD};
const Bytes RtuReply = {0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD, 0x00, 0x20};

Bytes WithCheckValue(Bytes bytes) {
  const std::uint16_t check = CheckValue(bytes);
  bytes.push_back(static_cast<std::uint8_t>(check & 0xFF));
  bytes.push_back(static_cast<std::uint8_t>(check >> 8));
  return bytes;
}

TEST(CheckValueOfAFrame, IsTheCrcOfModbus) {
  EXPECT_EQ(CheckValue(Bytes{0x01, 0x04, 0x00, 0x00, 0x00, 0x10}), 0xC6F1);
  EXPECT_EQ(CheckValue(Bytes{0x01, 0x04, 0x00, 0x00, 0x00, 0x10, 0xF1, 0xC6}), 0) << "of a whole frame";
  EXPECT_EQ(WithCheckValue({0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD}), RtuReply);
}

TEST(FaultNames, AreSixteenAndDifferent) {
  std::set<std::string_view> names;
  for (const FaultKindRow& row : FaultKinds()) {
    names.insert(row.name);
    EXPECT_TRUE(row.onTcp || row.onRtu) << row.name;
    EXPECT_EQ(&RowOf(row.kind), &row);
  }
  EXPECT_EQ(names.size(), 16U);
}

TEST(FaultText, NamesARequest) {
  const std::optional<FaultRule> rule = ParseFault("crc-both@12");

  ASSERT_TRUE(rule);
  EXPECT_EQ(rule->kind, FaultKind::CrcBoth);
  EXPECT_EQ(rule->request, 12);
}

TEST(FaultText, NamesAChance) {
  const std::optional<FaultRule> rule = ParseFault("late:2.5%");

  ASSERT_TRUE(rule);
  EXPECT_EQ(rule->kind, FaultKind::Late);
  EXPECT_EQ(rule->request, 0);
  EXPECT_DOUBLE_EQ(rule->chance, 0.025);
}

TEST(FaultText, OfEveryKindIsUnderstood) {
  for (const FaultKindRow& row : FaultKinds()) {
    const std::optional<FaultRule> rule = ParseFault(std::string(row.name) + "@1");
    ASSERT_TRUE(rule) << row.name;
    EXPECT_EQ(rule->kind, row.kind);
  }
}

TEST(FaultText, OfAnyOtherFormIsNone) {
  for (const char* wrong :
       {"", "late", "late@", "late@0", "late@-1", "late@x", "late@1x", "late:", "late:5", "late:%",
        "late:101%", "late:-1%", "late:nan%", "later@1", "@1", ":5%", "late@1%"}) {
    EXPECT_EQ(ParseFault(wrong), std::nullopt) << wrong;
  }
}

TEST(FaultChoice, ByNumberHitsThatRequestOnly) {
  FaultChooser chooser({{FaultKind::NoReply, 3, 0}}, 1);

  EXPECT_EQ(chooser.Next(Line::Tcp), std::nullopt);
  EXPECT_EQ(chooser.Next(Line::Rtu), std::nullopt) << "requests count over all lines";
  EXPECT_THAT(chooser.Next(Line::Tcp), Optional(FaultKind::NoReply));
  EXPECT_EQ(chooser.Next(Line::Tcp), std::nullopt);
}

TEST(FaultChoice, TakesTheFirstRuleThatHitsAndApplies) {
  FaultChooser chooser({{FaultKind::CrcOne, 1, 0}, {FaultKind::Split, 1, 0}, {FaultKind::Late, 1, 0}}, 1);

  EXPECT_THAT(chooser.Next(Line::Tcp), Optional(FaultKind::Split)) << "TCP has no check value";
}

std::vector<int> Hits(double chance, std::uint64_t seed, int requests) {
  FaultChooser chooser({{FaultKind::NoReply, 0, chance}}, seed);
  std::vector<int> hits;
  for (int i = 1; i <= requests; ++i) {
    if (chooser.Next(Line::Tcp)) {
      hits.push_back(i);
    }
  }
  return hits;
}

TEST(FaultChoice, ByChanceIsTheSameForTheSameSeed) {
  EXPECT_EQ(Hits(0.2, 7, 200), Hits(0.2, 7, 200));
  EXPECT_NE(Hits(0.2, 7, 200), Hits(0.2, 8, 200));
}

TEST(FaultChoice, ByChanceHitsAboutThatShare) {
  EXPECT_NEAR(static_cast<double>(Hits(0.2, 7, 10000).size()), 2000, 200);
  EXPECT_EQ(Hits(1.0, 7, 50).size(), 50U);
  EXPECT_TRUE(Hits(0.0, 7, 50).empty());
}

TEST(FaultChoice, ByChanceIsNotDisturbedByAnotherRule) {
  FaultChooser both({{FaultKind::Late, 2, 0}, {FaultKind::NoReply, 0, 0.3}}, 5);
  FaultChooser alone({{FaultKind::NoReply, 0, 0.3}}, 5);
  for (int i = 1; i <= 100; ++i) {
    const auto first = both.Next(Line::Tcp);
    const auto second = alone.Next(Line::Tcp);
    if (i != 2) {
      EXPECT_EQ(first, second) << i;
    }
  }
}

struct DamageCase {
  FaultKind kind;
  Bytes tcp, rtu;
};

class Damage : public testing::TestWithParam<DamageCase> {};

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, Damage,
    testing::Values(
        DamageCase{FaultKind::Truncated,
                   {0x00, 0x07, 0x00, 0x00, 0x00, 0x07, 0x01, 0x03, 0x04, 0x12, 0x34},
                   {0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD}},
        DamageCase{FaultKind::TwoMore,
                   {0x00, 0x07, 0x00, 0x00, 0x00, 0x07, 0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD, 0x55, 0xAA},
                   {0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD, 0x00, 0x20, 0x55, 0xAA}},
        DamageCase{FaultKind::CrcOne, {}, {0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD, 0x00, 0xDF}},
        DamageCase{FaultKind::CrcBoth, {}, {0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD, 0xFF, 0xDF}},
        DamageCase{FaultKind::WrongStation,
                   {0x00, 0x07, 0x00, 0x00, 0x00, 0x07, 0x02, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD},
                   WithCheckValue({0x02, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD})},
        DamageCase{FaultKind::WrongFunction,
                   {0x00, 0x07, 0x00, 0x00, 0x00, 0x07, 0x01, 0x04, 0x04, 0x12, 0x34, 0xAB, 0xCD},
                   WithCheckValue({0x01, 0x04, 0x04, 0x12, 0x34, 0xAB, 0xCD})},
        DamageCase{FaultKind::WrongTransaction,
                   {0x00, 0x08, 0x00, 0x00, 0x00, 0x07, 0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD},
                   {}},
        DamageCase{
            FaultKind::Garbage,
            {0xFF, 0x00, 0x5A, 0x00, 0x07, 0x00, 0x00, 0x00, 0x07, 0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD},
            {0xFF, 0x00, 0x5A, 0x01, 0x03, 0x04, 0x12, 0x34, 0xAB, 0xCD, 0x00, 0x20}},
        DamageCase{FaultKind::Late, TcpReply, RtuReply}, DamageCase{FaultKind::Trickle, TcpReply, RtuReply},
        DamageCase{FaultKind::Split, TcpReply, RtuReply},
        DamageCase{FaultKind::CloseMiddle, TcpReply, RtuReply},
        DamageCase{FaultKind::Error, TcpReply, RtuReply}),
    [](const auto& of) {
      std::string name(RowOf(of.param.kind).name);
      name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
      return name;
    });

TEST_P(Damage, IsDoneToExactlyTheseBytes) {
  EXPECT_EQ(AppliesTo(GetParam().kind, Line::Tcp), !GetParam().tcp.empty());
  EXPECT_EQ(AppliesTo(GetParam().kind, Line::Rtu), !GetParam().rtu.empty());
  if (!GetParam().tcp.empty()) {
    EXPECT_EQ(Damaged(GetParam().kind, Line::Tcp, TcpReply), GetParam().tcp);
  }
  if (!GetParam().rtu.empty()) {
    EXPECT_EQ(Damaged(GetParam().kind, Line::Rtu, RtuReply), GetParam().rtu);
  }
}

TEST(DamageOfAShortReply, StaysInsideOfIt) {
  for (const FaultKindRow& row : FaultKinds()) {
    for (std::size_t length = 0; length < 9; ++length) {
      EXPECT_LE(Damaged(row.kind, Line::Tcp, Bytes(length, 1)).size(), length + 3) << row.name << length;
      EXPECT_LE(Damaged(row.kind, Line::Rtu, Bytes(length, 1)).size(), length + 3) << row.name << length;
    }
  }
}

} // namespace
} // namespace loader::simulator
