// "適用" of the measuring channel's screen: the pair of channels, what a refused field leaves stored, and
// that nothing is written that nobody changed.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <vector>

#include "channel/InputTypeRules.h"
#include "dialogs/frmAlarmSetting.h"
#include "dialogs/frmSelectUnit.h"
#include "tests/channelscreens/Desk.h"

namespace loader::test {
namespace {

constexpr const char* NotANumber = "数字ではありません。";

// --- Pairs

TEST(ChSettingApply, ALeaderAsksBeforeItsPartnerIsInitialised) {
  Desk desk;
  desk.Open(0); // both are K thermocouples
  ASSERT_TRUE(desk.PickKind(20));
  ASSERT_TRUE(desk.Type("txtPVSlope", "7"));
  const WholeStore before;
  desk.platform.ExpectBox(62106, BoxAnswer::Cancel);
  desk.Apply();
  EXPECT_EQ(before, WholeStore());
  EXPECT_FALSE(desk.screen->tableChanged);
  EXPECT_EQ(0, desk.applied);

  desk.platform.ExpectBox(62106, BoxAnswer::Ok);
  desk.Apply();
  EXPECT_TRUE(desk.screen->tableChanged);
  EXPECT_EQ(1, desk.applied);
  EXPECT_EQ(20, Stored("C", 0, "TYPE"));
  EXPECT_EQ(7, Stored("C", 0, "PVKA"));
  EXPECT_EQ(20, Stored("C", 1, "TYPE"));
  // Nothing more to ask.
  desk.Apply();
  EXPECT_EQ(2, desk.applied);
}

TEST(ChSettingApply, APartnerThatFitsIsLeft) {
  Desk desk;
  Put("C", 1, "TYPE", 33);
  desk.Open(0);
  ASSERT_TRUE(desk.PickKind(32));
  ASSERT_TRUE(desk.Type("txtSecu", "1")); // 1-5V refuses a low cut of 0
  desk.Apply();
  EXPECT_EQ(32, Stored("C", 0, "TYPE"));
  EXPECT_EQ(33, Stored("C", 1, "TYPE"));
}

TEST(ChSettingApply, ADependentChannelIsOfferedWhatItsLeaderLeaves) {
  Desk desk;
  Put("C", 0, "TYPE", 31);
  desk.Open(1);
  EXPECT_EQ((std::vector<std::int32_t>{0, 31, 40}), desk.List("cmbInputType").itemData);
  EXPECT_EQ(-1, desk.Row("cmbInputType")); // K is not among them
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(1, Stored("C", 1, "TYPE"));
}

// The partner that its leader has brought to B: the ranges that it cannot show are passed over while they
// cannot be typed, and the others are asked for one by one.
TEST(ChSettingApply, ABlankRangeThatCannotBeTypedIsPassedOver) {
  Desk desk;
  ChannelInit(1, 7);
  const std::int16_t mmin = Stored("C", 1, "MMIN");
  ASSERT_EQ(6000, mmin);
  desk.Open(1);
  EXPECT_EQ("", desk.Shown("txtStMin"));
  EXPECT_EQ("", desk.Shown("txtIndMin"));
  for (const char* field :
       {"txtRecRangeMin", "txtSecu", "txtAlarmSet1", "txtAlarmSet2", "txtAlarmSet3", "txtAlarmSet4"}) {
    EXPECT_EQ("", desk.Shown(field)) << field;
    desk.ExpectMessage(NotANumber);
    desk.Apply();
    EXPECT_EQ(&desk.Text(field), desk.screen->focusRequest) << field;
    desk.Text(field).text = u"700.0";
  }
  desk.Apply();
  desk.platform.boxes.ExpectNoneLeft();
  EXPECT_EQ(mmin, Stored("C", 1, "MMIN"));
  EXPECT_EQ(-32767, Stored("C", 1, "SMIN"));
  EXPECT_EQ(7000, Stored("A", 1, "A4VL"));
}

TEST(ChSettingApply, ABlankRangeThatCanBeTypedIsAskedFor) {
  Desk desk;
  desk.OpenWith({{"TYPE", 40}, {"MMIN", -32768}});
  EXPECT_EQ("", desk.Shown("txtStMin"));
  desk.ExpectMessage(NotANumber);
  desk.Apply();
  EXPECT_EQ(&desk.Text("txtStMin"), desk.screen->focusRequest);
  EXPECT_EQ(-32768, Stored("C", 0, "MMIN"));
}

// --- No kind may be stuck

TEST(ChSettingApply, EveryKindCanBeAppliedOnceItIsPicked) {
  for (const char* model : {"KOV", "RUG"}) {
    Desk desk(model);
    desk.Open(8);
    const std::vector<std::int32_t> kinds = desk.List("cmbInputType").itemData;
    ASSERT_EQ(20U, kinds.size());
    for (const int kind : kinds) {
      for (const int unit : {0, 1}) {
        for (const int from : {0, 1, 33, 40}) {
          SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(kind));
          StartWithModel(desk.platform, model);
          Put("C", 8, "TYPE", from);
          desk.Open(8);
          if (kind != from) {
            ASSERT_TRUE(desk.PickKind(kind));
          }
          if (desk.screen->cmdUnitSelect.enabled) {
            desk.platform.screens.Expect<SelectUnitScreen>("frmSelectUnit", [&](SelectUnitScreen& units) {
              desk.user.DoubleClick(units.fgrUnit, 0, unit);
            });
            ASSERT_TRUE(desk.user.Click(desk.screen->cmdUnitSelect));
          }
          if (from == 0 && kind == 0) {
            continue; // what a skipped channel held already is asked for field by field
          }
          // What the user can type: the record range where the other temperature refuses it, a low cut and
          // alarms that the kind refuses. Everything else goes through by itself.
          for (int refused = 0; refused < 7; ++refused) {
            const std::size_t boxes = desk.platform.boxes.shown.size();
            static constexpr std::array Fields{"txtRecRangeMin", "txtSecu",      "txtAlarmSet1",
                                               "txtAlarmSet2",   "txtAlarmSet3", "txtAlarmSet4"};
            InputRange range;
            InputRangeLookup(kind, desk.screen->CurrentUnit, range);
            const bool fahrenheitB = kind == 7 && unit == 1;
            const bool lowCut = kind == 7 || kind == 32;
            const auto next = static_cast<std::size_t>(refused);
            const bool expected =
                (fahrenheitB && next < Fields.size()) || (lowCut && !fahrenheitB && next == 0);
            if (expected) {
              const char* field = fahrenheitB ? Fields[next] : "txtSecu";
              desk.ExpectMessage(
                  ToUtf8(RangeMessage(62201, StoredToText(range.MinValue, range.Point, -32768, 32767),
                                      StoredToText(range.MaxValue, range.Point, -32768, 32767))));
              ASSERT_TRUE(desk.Apply());
              ASSERT_EQ(&desk.Text(field), desk.screen->focusRequest);
              ASSERT_TRUE(desk.Text(field).enabled);
              desk.Text(field).text = StoredToText(range.DefMin, range.Point, -32768, 32767);
              desk.screen->focusRequest = nullptr;
              continue;
            }
            ASSERT_TRUE(desk.Apply());
            ASSERT_EQ(boxes, desk.platform.boxes.shown.size());
            break;
          }
          EXPECT_EQ(kind, Stored("C", 8, "TYPE"));
          if (::testing::Test::HasFailure()) {
            return;
          }
        }
      }
    }
  }
}

// --- The partial write

// One change for each parameter, in the order of "適用"; on a channel that takes another one's value, where
// every range can be typed.
struct Change {
  const char* section;
  const char* tag;
  const char* control; // empty: a unit
  const char* typed;   // empty: a list, whose row is `stored`, or a row of it
  int stored;
  int row = -1; // where it is not the stored value
};
const std::vector<Change> Changes{
    {"C", "TYPE", "cmbInputType", "", 40, 19},
    {"C", "OTCH", "cmbInputOtch", "", 7},
    {"C", "UNIT", "", "", 66},
    {"C", "POIN", "cmbDecimal", "", 2},
    {"C", "FTIO", "cmbFtio", "", 1},
    {"C", "ROOT", "cmbROOT", "", 1},
    {"C", "COLR", "cmbDispColor", "", 12, 11},
    {"C", "FILT", "txtInputFilter", "9", 9},
    {"C", "MMIN", "txtStMin", "1.1", 11},
    {"C", "MMAX", "txtStMax", "2.2", 22},
    {"C", "SMIN", "txtIndMin", "3.33", 333},
    {"C", "SMAX", "txtIndMax", "4.44", 444},
    {"C", "PVSI", "txtPVShift", "5.55", 555},
    {"C", "PVKA", "txtPVSlope", "6", 6},
    {"C", "RMIN", "txtRecRangeMin", "7.777", 7777},
    {"C", "RMAX", "txtRecRangeMax", "8.888", 8888},
    {"C", "RECO", "cmbRecMode", "", 1},
    {"C", "RECM", "cmbRecM", "", 2},
    {"C", "SUBC", "cmbSUBCh", "", 3},
    {"C", "SEKI", "cmbSeki", "", 2},
    {"C", "STYP", "cmbStyp", "", 6, 4},
    {"C", "SDIG", "cmbSdig", "", 20},
    {"C", "SBAS", "cmbSbas", "", 3},
    {"C", "SRES", "cmbSres", "", 1},
    {"C", "SEUN", "", "", 67},
    {"C", "SRIN", "cmbSri", "", 5},
    {"C", "SSCL", "txtSekiScale", "99", 99},
    {"C", "SECU", "txtSecu", "1.000", 1000},
    {"A", "A1TY", "cmbAlarmType1", "", 1},
    {"A", "A2TY", "cmbAlarmType2", "", 2},
    {"A", "A3TY", "cmbAlarmType3", "", 1},
    {"A", "A4TY", "cmbAlarmType4", "", 2},
    {"A", "A1VL", "txtAlarmSet1", "1.001", 1001},
    {"A", "A2VL", "txtAlarmSet2", "2.002", 2002},
    {"A", "A3VL", "txtAlarmSet3", "3.003", 3003},
    {"A", "A4VL", "txtAlarmSet4", "4.004", 4004},
    {"A", "A1RL", "cmbAlarmOut1", "", 4},
    {"A", "A2RL", "cmbAlarmOut2", "", 3},
    {"A", "A3RL", "cmbAlarmOut3", "", 2},
    {"A", "A4RL", "cmbAlarmOut4", "", 1},
};

void ChangeEverything(Desk& desk) {
  Put("H", 0, "FPOI", 3);
  Put("C", 7, "TYPE", 1);
  desk.Open(8);
  desk.Text("txtChannelTag").text = u"NEW";
  desk.Text("txtChannelTag2").text = u"NEW2";
  desk.Text("txtSekiTag").text = u"NEWS";
  for (const Change& change : Changes) {
    if (*change.typed != 0) {
      continue;
    }
    if (*change.control == 0) {
      (std::string_view(change.tag) == "UNIT" ? desk.screen->CurrentUnit : desk.screen->CurrentSekiUnit) =
          change.stored;
    } else {
      ASSERT_TRUE(desk.Pick(change.control, change.row < 0 ? change.stored : change.row)) << change.control;
    }
  }
  for (const Change& change : Changes) {
    if (*change.typed != 0) {
      ASSERT_TRUE(desk.Type(change.control, change.typed)) << change.control;
    }
  }
}

TEST(ChSettingApply, StoresEveryParameter) {
  Desk desk;
  ChangeEverything(desk);
  desk.Apply();
  for (const Change& change : Changes) {
    EXPECT_EQ(change.stored, Stored(change.section, 8, change.tag)) << change.tag;
  }
  EXPECT_EQ("NEW", TrimmedText("C", 8, "TAG"));
  EXPECT_EQ("NEW2", TrimmedText("C", 8, "TAG2"));
  EXPECT_EQ("NEWS", TrimmedText("C", 8, "STAG"));
}

TEST(ChSettingApply, ARefusedNumberLeavesExactlyWhatStandsBeforeItStored) {
  for (std::size_t failing = 0; failing < Changes.size(); ++failing) {
    if (*Changes[failing].typed == 0) {
      continue;
    }
    SCOPED_TRACE(Changes[failing].tag);
    Desk desk;
    std::vector<int> old;
    for (const Change& change : Changes) {
      old.push_back(Stored(change.section, 8, change.tag));
      ASSERT_NE(change.stored, old.back()) << change.tag;
    }
    ChangeEverything(desk);
    desk.screen->browsing.screen.focusRequest = nullptr;
    desk.Text(Changes[failing].control).text = u"x";
    desk.ExpectMessage(NotANumber);
    desk.screen->browsing.apply.onClick();
    for (std::size_t i = 0; i < Changes.size(); ++i) {
      EXPECT_EQ(i < failing ? Changes[i].stored : old[i], Stored(Changes[i].section, 8, Changes[i].tag))
          << Changes[i].tag;
    }
    EXPECT_EQ("NEW", TrimmedText("C", 8, "TAG"));
    EXPECT_EQ("NEW2", TrimmedText("C", 8, "TAG2"));
    // Behind SUBC, before SEKI.
    const bool behindTag =
        std::ranges::any_of(Changes.begin(), Changes.begin() + static_cast<long>(failing),
                            [](const Change& c) { return std::string_view(c.tag) == "SUBC"; });
    EXPECT_EQ(behindTag ? "NEWS" : "CH 09", TrimmedText("C", 8, "STAG"));
    const TextField& field = desk.Text(Changes[failing].control);
    EXPECT_EQ(&field, desk.screen->focusRequest);
    EXPECT_EQ(1, field.selLength);
    EXPECT_EQ(1, desk.applied); // the table shows what was stored
  }
}

TEST(ChSettingApply, ARefusedTagLeavesExactlyWhatStandsBeforeItStored) {
  Desk desk;
  ChangeEverything(desk);
  desk.Text("txtChannelTag2").text = u"a,b";
  desk.ExpectMessage("「,」は入力できません");
  desk.screen->browsing.apply.onClick();
  EXPECT_EQ("NEW", TrimmedText("C", 8, "TAG"));
  EXPECT_EQ("", TrimmedText("C", 8, "TAG2"));
  EXPECT_EQ(1, Stored("C", 8, "TYPE"));
  desk.Text("txtChannelTag2").text = u"ab";
  desk.Text("txtSekiTag").text = u"a,b";
  desk.ExpectMessage("「,」は入力できません");
  desk.screen->browsing.apply.onClick();
  EXPECT_EQ("ab", TrimmedText("C", 8, "TAG2"));
  EXPECT_EQ(3, Stored("C", 8, "SUBC"));
  EXPECT_EQ("CH 09", TrimmedText("C", 8, "STAG"));
  EXPECT_EQ(1, Stored("C", 8, "SEKI"));
}

// The tag was stored before the field that was refused; the old text is a change then.
TEST(ChSettingApply, ATagThatIsTakenBackAfterARefusalIsStored) {
  Desk desk;
  desk.Open(8);
  const std::string old = TrimmedText("C", 8, "TAG");
  ASSERT_EQ("CH 09", old);
  desk.Text("txtChannelTag").text = u"NEW";
  desk.Text("txtPVSlope").text = u"x";
  desk.ExpectMessage(NotANumber);
  desk.screen->browsing.apply.onClick();
  ASSERT_EQ("NEW", TrimmedText("C", 8, "TAG"));
  desk.Text("txtChannelTag").text = FromUtf8(old);
  desk.Text("txtPVSlope").text = u"7";
  desk.screen->browsing.apply.onClick();
  EXPECT_EQ(7, Stored("C", 8, "PVKA"));
  EXPECT_EQ(old, TrimmedText("C", 8, "TAG"));
  EXPECT_EQ(old, desk.Shown("txtChannelTag"));
}

TEST(ChSettingApply, ADisabledFieldThatIsRefusedLeavesTheFocusWhereItIs) {
  Desk desk;
  desk.OpenWith({{"TYPE", 40}, {"TAIS", 1}, {"SMIN", 0}, {"SMAX", 2}, {"RMIN", 0}, {"RMAX", 2}});
  desk.Text("txtAlarmSet2").text = u"";
  desk.ExpectMessage(NotANumber);
  desk.Apply();
  EXPECT_EQ(nullptr, desk.screen->focusRequest);
}

TEST(ChSettingApply, TheGuardOfALeftFieldDoesNotSwallowIt) {
  Desk desk;
  desk.Open();
  desk.ExpectMessage(NotANumber);
  EXPECT_FALSE(desk.Type("txtPVSlope", "x"));
  ASSERT_TRUE(WaitTimer2.Enabled);
  desk.Text("txtPVSlope").text = u"7";
  desk.screen->browsing.apply.onClick();
  EXPECT_EQ(7, Stored("C", 0, "PVKA"));
}

TEST(ChSettingApply, ADigitTooManyIsCutAndShownAsItIsStored) {
  Desk desk;
  desk.Open();
  desk.Text("txtRecRangeMax").text = u"12.99";
  desk.screen->browsing.apply.onClick();
  EXPECT_EQ(129, Stored("C", 0, "RMAX"));
  EXPECT_EQ("12.9", desk.Shown("txtRecRangeMax"));
}

TEST(ChSettingApply, AReferenceIsForgottenWithItsKind) {
  Desk desk;
  desk.OpenWith({{"TYPE", 1}, {"OTCH", 5}});
  desk.Apply(); // nothing was changed
  EXPECT_EQ(5, Stored("C", 0, "OTCH"));
  ASSERT_TRUE(desk.Type("txtPVSlope", "7"));
  desk.Apply();
  EXPECT_EQ(0, Stored("C", 0, "OTCH"));
  EXPECT_EQ(0, desk.Row("cmbInputOtch"));

  desk.OpenWith({{"TYPE", 40}, {"OTCH", 5}});
  ASSERT_TRUE(desk.Type("txtPVSlope", "8"));
  desk.Apply();
  EXPECT_EQ(5, Stored("C", 0, "OTCH"));
}

TEST(ChSettingApply, AModelStoresOnlyWhatItShows) {
  Desk desk("RUG");
  Put("C", 0, "SRIN", 7);
  desk.Open();
  SelectRow(desk.List("cmbSri"), 3);
  ASSERT_TRUE(desk.Type("txtPVSlope", "7"));
  desk.Apply();
  EXPECT_EQ(7, Stored("C", 0, "PVKA"));
  EXPECT_EQ(7, Stored("C", 0, "SRIN"));
}

// --- Nothing is written that nobody changed

TEST(ChSettingApply, WritesNothingToAFreshStore) {
  for (const char* model : {"KOV", "RUG"}) {
    Desk desk(model);
    for (int channel = 0; channel < Profile.ChannelCount; ++channel) {
      const WholeStore before;
      desk.Open(channel);
      EXPECT_TRUE(desk.Apply());
      EXPECT_EQ(before, WholeStore()) << channel;
    }
  }
}

} // namespace
} // namespace loader::test
