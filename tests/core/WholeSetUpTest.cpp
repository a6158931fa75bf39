#include "core/WholeSetUp.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/Text.h"
#include "core/UserUnits.h"
#include "core/modFile.h"
#include "meaning/ParameterText.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

// A KOV and a RUG, as a program holds them that compares two set-ups; a RUG of other values is in force.
class TwoSetUps : public testing::Test {
protected:
  TwoSetUps() {
    StartWithModel(platform, "KOV");
    Fill(11, u"kov/h");
    ModeCheckOff = 3;
    kov = CopyOfSetUp();
    StartWithModel(platform, "RUG");
    Fill(22, u"rug/h");
    ModeCheckOff = 5;
    rug = CopyOfSetUp();
    Fill(33, u"l/h");
    ModeCheckOff = 7;
  }
  ~TwoSetUps() override { ModeCheckOff = 0; }

  static void Fill(std::int16_t value, std::u16string_view unit) {
    NumRecord("C", 0, "MMAX").Value = value;
    ASSERT_TRUE(gFParamValue("U", 0, "UNIT", unit, SlotValue));
    UpdateUserUnitNames();
    NumRecord("C", 0, "UNIT").Value = static_cast<std::int16_t>(UserUnitIndex(1, Profile.UnitCount));
  }
  static std::u16string UnitText() { return ReportText("C", 0, "UNIT"); }
  // The set-up that was in force when the test began is so again, whole.
  static void ExpectTheFirstInForce() {
    EXPECT_EQ(ModelCode, "RUG");
    EXPECT_EQ(VersionTag, "V00W");
    EXPECT_EQ(ModeCheckOff, 7);
    EXPECT_EQ(Stored("C", 0, "MMAX"), 33);
    EXPECT_EQ(UnitText(), u"l/h");
  }

  ScriptedPlatform platform;
  WholeSetUp kov;
  WholeSetUp rug;
};

TEST_F(TwoSetUps, ACopyIsTheSetUpInForceWhole) {
  const WholeSetUp copy = CopyOfSetUp();
  EXPECT_EQ(copy.modelCode, ModelCode);
  EXPECT_EQ(copy.versionTag, VersionTag);
  EXPECT_EQ(copy.modeCheckOff, ModeCheckOff);
  EXPECT_EQ(copy.profile, Profile);
  EXPECT_EQ(copy.unitNames, UnitNames);
  ASSERT_EQ(copy.store.size(), ParamStore.size());
  NumRecord("C", 0, "MMAX").Value = 1;
  EXPECT_EQ(
      copy.store[gFFindSection("C")].Items[0].NumRecords[gFFindNumTag(gFFindSection("C"), 0, "MMAX")].Value,
      33);
}

TEST_F(TwoSetUps, LookUpsAndTextsAreThoseOfTheOneInForce) {
  const int channelsOfRug = AllChannels();
  const StoreIndex sectionsOfRug = static_cast<StoreIndex>(ParamStore.size());
  {
    const SetUpInForce inForce(kov);
    EXPECT_EQ(ModelCode, "KOV");
    EXPECT_EQ(VersionTag, "V00L");
    EXPECT_EQ(ModeCheckOff, 3);
    EXPECT_NE(AllChannels(), channelsOfRug);
    EXPECT_EQ(Stored("C", 0, "MMAX"), 11);
    EXPECT_EQ(UnitText(), u"kov/h");
    // What only the other model has is absent.
    EXPECT_EQ(FindNumRecord("C", channelsOfRug - 1, "MMAX"), nullptr);
  }
  EXPECT_EQ(ParamStore.size(), sectionsOfRug);
  EXPECT_NE(FindNumRecord("C", channelsOfRug - 1, "MMAX"), nullptr);
  ExpectTheFirstInForce();
}

TEST_F(TwoSetUps, TwoAreComparedParameterByParameter) {
  const auto texts = [](WholeSetUp& setUp) {
    return WithSetUp(setUp, [] { return std::vector{ReportText("C", 0, "MMAX"), UnitText()}; });
  };
  const std::vector<std::u16string> ofKov = texts(kov);
  const std::vector<std::u16string> ofRug = texts(rug);
  EXPECT_EQ(ofKov[1], u"kov/h");
  EXPECT_EQ(ofRug[1], u"rug/h");
  EXPECT_NE(ofKov[0], ofRug[0]);
  ExpectTheFirstInForce();
}

TEST_F(TwoSetUps, WhatIsWrittenIsWrittenToTheOneInForce) {
  WithSetUp(kov, [] { return SetNumValue("C", 0, "MMAX", 44); });
  EXPECT_EQ(WithSetUp(kov, [] { return Stored("C", 0, "MMAX"); }), 44);
  EXPECT_EQ(WithSetUp(rug, [] { return Stored("C", 0, "MMAX"); }), 22);
  ExpectTheFirstInForce();
}

TEST_F(TwoSetUps, OneWithinAnotherComesBackInOrder) {
  {
    const SetUpInForce outer(kov);
    {
      const SetUpInForce inner(rug);
      EXPECT_EQ(UnitText(), u"rug/h");
      EXPECT_EQ(ModeCheckOff, 5);
    }
    EXPECT_EQ(UnitText(), u"kov/h");
  }
  EXPECT_EQ(kov.modelCode, "KOV");
  EXPECT_EQ(rug.modelCode, "RUG");
  ExpectTheFirstInForce();
}

TEST_F(TwoSetUps, AFailureGivesTheOneBeforeBack) {
  EXPECT_THROW(WithSetUp(kov, []() -> int { throw std::runtime_error("in between"); }), std::runtime_error);
  EXPECT_EQ(kov.modelCode, "KOV");
  ExpectTheFirstInForce();
}

TEST_F(TwoSetUps, ARecordStaysThatOfItsOwnSetUp) {
  ParamNumRecord* mine = FindNumRecord("C", 0, "MMAX");
  ASSERT_NE(mine, nullptr);
  {
    const SetUpInForce inForce(kov);
    mine->Value = 55;
    EXPECT_EQ(Stored("C", 0, "MMAX"), 11);
  }
  EXPECT_EQ(FindNumRecord("C", 0, "MMAX"), mine);
  EXPECT_EQ(Stored("C", 0, "MMAX"), 55);
}

} // namespace
} // namespace loader::test
