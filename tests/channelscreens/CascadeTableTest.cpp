// Every cascade of the measuring channel's screen over all kinds, scaling, logarithm, F value and both
// models: what it changes, as tables written down here, and that it changes nothing else.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/channelscreens/Desk.h"

namespace loader::test {
namespace {

using Texts = std::map<std::string, std::string>;

constexpr int Kinds = 42;
constexpr int Channel = 8; // number 9, which has no pair and is offered every kind
constexpr int Reference = 3;

// 1234 by position.
constexpr std::array<const char*, 5> Of1234{"1234", "123.4", "12.34", "1.234", "0.1234"};

// The position that each kind has of its own; for 40 that of the reference, a K thermocouple.
constexpr std::array<int, Kinds> PointOf{0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 1,
                                         1, 1, 1, 1, 0, 0, 0, 0, 0, 2, 1, 3, 3, 2, 1, 0, 0, 0, 0, 1, 0};
// Whether the limits of the kind hold 1234, in degrees Celsius.
constexpr std::array<bool, Kinds> Holds1234{
    false, true,  true,  true,  true,  true,  true, false, true,  true,  true,  true,  true,  false,
    false, false, false, false, false, false, true, true,  true,  true,  true,  false, false, false,
    false, false, true,  true,  true,  true,  true, true,  false, false, false, false, true,  false};

// What the channel of the tests is, before the pick.
struct Start {
  const char* model;
  int kind;
  bool scaling;
  bool log;
  bool fValue;
  int point = 2;  // POIN
  int fPoint = 3; // FPOI
};

std::ostream& operator<<(std::ostream& out, const Start& start) {
  return out << start.model << " kind " << start.kind << " SCAL " << start.scaling << " TAIS " << start.log
             << " FTIO " << start.fValue;
}

// The logarithm that is in force: RUG has none, whatever the file holds.
bool LogInForce(const Start& start) {
  return start.log && std::string_view(start.model) == "KOV";
}
bool KindLimits1234(const Start& start) { // and not the record
  return start.kind != 40 && ((start.kind >= 1 && start.kind <= 29) || !start.scaling);
}

// Nothing of it stands at its default, so that what returns to one is seen.
void PutStart(const Start& start) {
  Put("C", Reference, "TYPE", 1);
  for (const auto& [tag, value] : std::vector<std::pair<const char*, int>>{{"TYPE", start.kind},
                                                                           {"UNIT", 0},
                                                                           {"SCAL", start.scaling},
                                                                           {"TAIS", start.log},
                                                                           {"FTIO", start.fValue},
                                                                           {"POIN", start.point},
                                                                           {"ROOT", 1},
                                                                           {"COLR", 7},
                                                                           {"OTCH", Reference},
                                                                           {"FILT", 5},
                                                                           {"MMIN", 1},
                                                                           {"MMAX", 1234},
                                                                           {"SMIN", 1234},
                                                                           {"SMAX", 1234},
                                                                           {"PVSI", 1234},
                                                                           {"PVKA", 250},
                                                                           {"RMIN", 1234},
                                                                           {"RMAX", 1234},
                                                                           {"RECO", 1},
                                                                           {"RECM", 2},
                                                                           {"SUBC", 3},
                                                                           {"SECU", 1234},
                                                                           {"SSCL", 12},
                                                                           {"SEKI", 0},
                                                                           {"STYP", 1},
                                                                           {"SDIG", 4},
                                                                           {"SBAS", 2},
                                                                           {"SRES", 1},
                                                                           {"SEUN", 9}}) {
    if (FindNumRecord("C", Channel, tag) != nullptr) {
      Put("C", Channel, tag, value);
    }
  }
  for (const char number : {'1', '2', '3', '4'}) {
    Put("A", Channel, std::string("A") + number + "VL", 1234);
    Put("A", Channel, std::string("A") + number + "TY", 2);
    Put("A", Channel, std::string("A") + number + "RL", 3);
  }
  Put("H", 0, "FPOI", start.fPoint);
}

template <typename Test> void ForEachStart(const Test& test) {
  for (const char* model : {"KOV", "RUG"}) {
    Desk desk(model);
    for (int kind = 0; kind < Kinds; ++kind) {
      for (int switches = 0; switches < 8; ++switches) {
        const Start start{model, kind, (switches & 1) != 0, (switches & 2) != 0, (switches & 4) != 0};
        PutStart(start);
        desk.Open(Channel);
        SCOPED_TRACE(::testing::PrintToString(start));
        test(desk, start);
        if (::testing::Test::HasFailure()) {
          return;
        }
      }
    }
  }
}

// `changes` over what was shown before, and nothing beside them; what has changed is marked, the list that
// was picked is not.
void ExpectChanges(Desk& desk, Texts before, const std::string& picked, int row, const Texts& changes) {
  const Texts shown = before;
  for (const auto& [control, text] : changes) {
    ASSERT_TRUE(before.contains(control)) << control;
    before[control] = text;
  }
  before[picked] = std::to_string(row);
  const Texts after = FieldsShownOf(*desk.screen);
  EXPECT_EQ(before, after);
  for (const Control* control : desk.screen->controls) {
    const auto was = shown.find(control->name);
    const bool changed = was != shown.end() && was->second != after.at(control->name);
    EXPECT_EQ(changed && control->name != picked, control->marked) << control->name;
  }
}

// --- What can be used

struct Usable {
  bool scale, ranges, decimal, root, otch, taisu, unit;
};
void ExpectUsable(Desk& desk, const Usable& usable, bool log) {
  EXPECT_EQ(usable.scale, desk.Enabled("cmbScale"));
  for (const char* field : {"txtStMin", "txtStMax", "txtIndMin", "txtIndMax"}) {
    EXPECT_EQ(usable.ranges, desk.Enabled(field)) << field;
  }
  EXPECT_EQ(usable.decimal, desk.Enabled("cmbDecimal"));
  EXPECT_EQ(usable.root, desk.Enabled("cmbROOT"));
  EXPECT_EQ(usable.otch, desk.Enabled("cmbInputOtch"));
  EXPECT_EQ(usable.taisu, desk.Enabled("cmbTaisu"));
  EXPECT_EQ(usable.unit, desk.Enabled("lblSelUnit"));
  EXPECT_EQ(usable.unit, desk.Enabled("cmdUnitSelect"));
  for (const char* control :
       {"txtAlarmSet1", "txtAlarmSet2", "txtAlarmSet3", "txtAlarmSet4", "cmbSUBCh", "cmbFtio"}) {
    EXPECT_EQ(!log, desk.Enabled(control)) << control;
  }
  for (const char* label :
       {"lblAlarmSetInput1", "lblAlarmSetInput2", "lblAlarmSetInput3", "lblAlarmSetInput4"}) {
    EXPECT_EQ(log, desk.Enabled(label)) << label;
  }
  const std::set<std::string> decided{
      "cmbScale",         "txtStMin",     "txtStMax",          "txtIndMin",         "txtIndMax",
      "cmbDecimal",       "cmbROOT",      "cmbInputOtch",      "cmbTaisu",          "lblSelUnit",
      "cmdUnitSelect",    "txtAlarmSet1", "txtAlarmSet2",      "txtAlarmSet3",      "txtAlarmSet4",
      "cmbSUBCh",         "cmbFtio",      "lblAlarmSetInput1", "lblAlarmSetInput2", "lblAlarmSetInput3",
      "lblAlarmSetInput4"};
  for (const Control* control : desk.screen->controls) {
    EXPECT_TRUE(control->enabled || decided.contains(control->name)) << control->name;
  }
}

Usable UsableOf(const Start& start) {
  const bool log = LogInForce(start);
  if (start.kind == 0) {
    return {false, false, false, false, false, false, false};
  }
  if (start.kind < 30) {
    return {false, false, false, false, false, false, true};
  }
  if (start.kind == 40) {
    return {false, true, !log, true, true, std::string_view(start.model) == "KOV", true};
  }
  if (start.scaling) {
    return {true, true, !log, true, false, true, true};
  }
  return {true, false, false, false, false, false, false};
}

TEST(ChannelCascades, EnableWhatTheChannelLetsTheUserChange) {
  ForEachStart([](Desk& desk, const Start& start) {
    ExpectUsable(desk, UsableOf(start), LogInForce(start));
    EXPECT_FALSE(desk.screen->lblSelUnit.marked);
  });
}

// --- cmbInputType

// What a kind brings along. The measuring range takes the defaults of its record, 0 and 5000.
struct KindRow {
  int kind;
  const char* unit;
  int point;
  const char* mmin;
  const char* mmax;
  const char* smin;
  const char* smax;
  const char* rmin; // of PV shift and alarms as well
  const char* rmax;
};
constexpr KindRow KindRows[] = {
    {0, "-", 0, "0", "5000", "0", "0", "0", "0"},
    {1, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "1200.0"},
    {2, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "800.0"},
    {3, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "600.0"},
    {4, "゜C", 1, "0.0", "500.0", "0.0", "300.0", "0.0", "300.0"}, // 500.0 is beyond T
    {5, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "1600.0"},
    {6, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "1600.0"},
    {7, "゜C", 1, "0.0", "500.0", "600.0", "500.0", "600.0", "1700.0"}, // 0.0 is below B
    {8, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "1300.0"},
    {9, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "1700.0"},
    {10, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "900.0"},
    {11, "゜C", 1, "0.0", "500.0", "0.0", "400.0", "0.0", "400.0"}, // beyond U
    {12, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "1300.0"},
    {20, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "500.0"},
    {21, "゜C", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "500.0"},
    {30, "mV", 2, "0.00", "50.00", "0.00", "50.00", "0.00", "50.00"},
    {31, "mV", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "500.0"},
    {32, "V", 3, "0.000", "5.000", "1.000", "5.000", "1.000", "5.000"}, // 0.000 is below 1-5V
    {33, "V", 3, "0.000", "5.000", "0.000", "5.000", "0.000", "5.000"},
    {40, "", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "500.0"}, // at the position of the reference
};

TEST(ChannelCascades, AKindBringsItsUnitItsPositionAndItsDefaults) {
  ForEachStart([](Desk& desk, const Start& start) {
    const int colour = NumRecord("C", Channel, "COLR").DefaultValue;
    for (const KindRow& row : KindRows) {
      if (row.kind == start.kind) {
        continue; // the row that stands
      }
      LoadEntry(desk.screen->browsing, Channel);
      const Texts before = FieldsShownOf(*desk.screen);
      ASSERT_TRUE(desk.PickKind(row.kind)) << row.kind;
      Texts changes{
          {"lblSelUnit", row.kind == 0 ? ToUtf8(UnitNames.at(5)) : row.unit},
          {"cmbFtio", "0"},
          {"cmbDispColor", std::to_string(colour - 1)},
          {"cmbScale", "0"},
          {"cmbDecimal", std::to_string(row.point)},
          {"cmbROOT", "0"},
          {"cmbTaisu", "0"},
          {"txtStMin", row.mmin},
          {"txtStMax", row.mmax},
          {"txtIndMin", row.smin},
          {"txtIndMax", row.smax},
          {"txtPVShift", row.rmin},
          {"txtPVSlope", "100"},
          {"txtRecRangeMin", row.rmin},
          {"txtRecRangeMax", row.rmax},
          {"cmbRecMode", "0"},
          {"cmbRecM", "0"},
          {"cmbSUBCh", "0"},
      };
      for (const char number : {'1', '2', '3', '4'}) {
        changes[std::string("cmbAlarmType") + number] = "0";
        changes[std::string("cmbAlarmOut") + number] = "0";
        changes[std::string("txtAlarmSet") + number] = row.rmin;
        changes[std::string("lblAlarmSetInput") + number] = "";
      }
      // The low cut is none of them.
      const int picked = desk.Row("cmbInputType");
      ExpectChanges(desk, before, "cmbInputType", picked, changes);
      EXPECT_EQ(row.kind, desk.List("cmbInputType").itemData[static_cast<std::size_t>(picked)]);
      ExpectUsable(desk, UsableOf({start.model, row.kind, false, false, false}), false);
      if (::testing::Test::HasFailure()) {
        ADD_FAILURE() << "to kind " << row.kind;
        return;
      }
    }
  });
}

// --- cmbScale

constexpr KindRow OwnScaleRows[] = {
    {30, "mV", 2, "0.00", "50.00", "0.00", "50.00", "0.00", "50.00"},
    {31, "mV", 1, "0.0", "500.0", "0.0", "500.0", "0.0", "500.0"},
    {32, "V", 3, "1.000", "5.000", "1.000", "5.000", "1.000", "5.000"},
    {33, "V", 3, "0.000", "5.000", "0.000", "5.000", "0.000", "5.000"},
    {34, "V", 2, "0.00", "50.00", "0.00", "50.00", "0.00", "50.00"},
    // Its range is more than the terminals take: blank, and passed over by "適用".
    {35, "゜C", 1, "", "", "0.0", "500.0", "-3276.7", "3276.7"},
    {36, "゜C", 0, "0", "0", "0", "0", "0", "0"},
    {37, "゜C", 0, "0", "0", "0", "0", "0", "0"},
    {38, "゜C", 0, "0", "0", "0", "0", "0", "0"},
    {39, "゜C", 0, "0", "0", "0", "0", "0", "0"},
    {41, "゜C", 0, "0", "0", "0", "0", "0", "0"},
};

TEST(ChannelCascades, ScalingOffBringsTheKindsOwnScale) {
  ForEachStart([](Desk& desk, const Start& start) {
    const auto* row =
        std::ranges::find_if(OwnScaleRows, [&](const KindRow& own) { return own.kind == start.kind; });
    if (!start.scaling || row == std::end(OwnScaleRows)) {
      EXPECT_EQ(row != std::end(OwnScaleRows), desk.Enabled("cmbScale"));
      return;
    }
    const Texts before = FieldsShownOf(*desk.screen);
    ASSERT_TRUE(desk.Pick("cmbScale", 0));
    Texts changes{
        {"lblSelUnit", row->unit},
        {"cmbFtio", "0"},
        {"cmbROOT", "0"},
        {"cmbTaisu", "0"},
        {"txtStMin", row->mmin},
        {"txtStMax", row->mmax},
        {"txtIndMin", row->smin},
        {"txtIndMax", row->smax},
        {"txtPVShift", row->rmin},
        {"txtRecRangeMin", row->rmin},
        {"txtRecRangeMax", row->rmax},
        {"cmbDecimal", std::to_string(row->point)},
    };
    for (const char number : {'1', '2', '3', '4'}) {
      changes[std::string("txtAlarmSet") + number] = row->rmin;
      changes[std::string("lblAlarmSetInput") + number] = "";
    }
    ExpectChanges(desk, before, "cmbScale", 0, changes);
    ExpectUsable(desk, UsableOf({start.model, start.kind, false, false, false}), false);
    // The position of the scaling is gone, and with it its list.
    EXPECT_FALSE(desk.Enabled("cmbDecimal"));
  });
}

TEST(ChannelCascades, ScalingOnRewritesNothing) {
  ForEachStart([](Desk& desk, const Start& start) {
    if (start.scaling || !desk.Enabled("cmbScale")) {
      return;
    }
    const Texts before = FieldsShownOf(*desk.screen);
    ASSERT_TRUE(desk.Pick("cmbScale", 1));
    Texts changes; // the texts of 1.234 V are exponents now, and the labels follow them
    if (LogInForce(start) && (start.kind == 32 || start.kind == 33)) {
      for (const char* label :
           {"lblAlarmSetInput1", "lblAlarmSetInput2", "lblAlarmSetInput3", "lblAlarmSetInput4"}) {
        changes[label] = "1.00E1";
      }
    }
    ExpectChanges(desk, before, "cmbScale", 1, changes);
    ExpectUsable(desk, UsableOf({start.model, start.kind, true, start.log, start.fValue}), LogInForce(start));
  });
}

// --- cmbDecimal

TEST(ChannelCascades, APositionMovesThePointAndKeepsTheIntegers) {
  ForEachStart([](Desk& desk, const Start& start) {
    for (int point = 0; point <= 4; ++point) {
      if (!desk.Enabled("cmbDecimal")) {
        EXPECT_FALSE(desk.Pick("cmbDecimal", point));
        continue;
      }
      LoadEntry(desk.screen->browsing, Channel);
      const Texts before = FieldsShownOf(*desk.screen);
      ASSERT_TRUE(desk.Pick("cmbDecimal", point));
      const std::string text = Of1234[static_cast<std::size_t>(point)];
      Texts changes{{"txtIndMin", text}, {"txtIndMax", text}, {"txtPVShift", text}};
      if (!start.fValue) { // else they stand at the position of the F value
        for (const char* field : {"txtRecRangeMin", "txtRecRangeMax", "txtSecu", "txtAlarmSet1",
                                  "txtAlarmSet2", "txtAlarmSet3", "txtAlarmSet4"}) {
          changes[field] = text;
        }
      } else {
        EXPECT_EQ("1.234", before.at("txtSecu"));
      }
      ExpectChanges(desk, before, "cmbDecimal", point, changes);
      ExpectUsable(desk, UsableOf(start), false);
    }
  });
}

// --- cmbTaisu

TEST(ChannelCascades, TheLogarithmShowsTheSameIntegersAsExponents) {
  ForEachStart([](Desk& desk, const Start& start) {
    if (!desk.Enabled("cmbTaisu") || std::string_view(start.model) != "KOV") {
      return;
    }
    Put("C", Channel, "MMIN", 0);
    Put("C", Channel, "MMAX", 5000);
    Put("C", Channel, "SMIN", 2);
    Put("C", Channel, "SMAX", 5);
    Put("C", Channel, "RMIN", -9);
    Put("C", Channel, "RMAX", 12); // no exponent
    LoadEntry(desk.screen->browsing, Channel);
    const Texts before = FieldsShownOf(*desk.screen);
    const int row = start.log ? 0 : 1;
    ASSERT_TRUE(desk.Pick("cmbTaisu", row));
    // At POIN, which is 2, or at FPOI, which is 3.
    Texts on{{"txtIndMin", "2"}, {"txtIndMax", "5"}, {"txtRecRangeMin", "-9"}, {"txtRecRangeMax", ""}};
    Texts off{{"txtIndMin", "0.02"},
              {"txtIndMax", "0.05"},
              {"txtRecRangeMin", start.fValue ? "-0.009" : "-0.09"},
              {"txtRecRangeMax", ""}}; // a blank stays blank
    const std::string alarmOn =
        Of1234[static_cast<std::size_t>(PointOf[static_cast<std::size_t>(start.kind)])];
    const std::string alarmOff = start.fValue ? "1.234" : "12.34";
    for (const char number : {'1', '2', '3', '4'}) {
      on[std::string("txtAlarmSet") + number] = alarmOn;
      on[std::string("lblAlarmSetInput") + number] = "5.50E2"; // 2 + 1234 x 3 / 5000
      off[std::string("txtAlarmSet") + number] = alarmOff;
      off[std::string("lblAlarmSetInput") + number] = "";
    }
    ExpectChanges(desk, before, "cmbTaisu", row, start.log ? off : on);
    Start then = start;
    then.log = row == 1;
    ExpectUsable(desk, UsableOf(then), then.log);
  });
}

// --- cmbFtio

TEST(ChannelCascades, TheFValueMovesWhatStandsAtItsPosition) {
  ForEachStart([](Desk& desk, const Start& start) {
    const int row = start.fValue ? 0 : 1;
    const Texts before = FieldsShownOf(*desk.screen);
    if (LogInForce(start)) {
      EXPECT_FALSE(desk.Pick("cmbFtio", row));
      return;
    }
    ASSERT_TRUE(desk.Pick("cmbFtio", row));
    const auto kind = static_cast<std::size_t>(start.kind);
    // Without F value: POIN under scaling and for another channel, else the position of the kind; the low cut
    // always at POIN.
    const int own = start.scaling || start.kind == 40 ? start.point : PointOf[kind];
    const bool limited = KindLimits1234(start) && !Holds1234[kind]; // blank without F value
    const auto text = [&](int ownPoint) -> std::string {
      return limited ? "" : start.fValue ? Of1234[static_cast<std::size_t>(ownPoint)] : Of1234[3];
    };
    Texts changes{{"txtSecu", text(start.point)}};
    for (const char* field : {"txtRecRangeMin", "txtRecRangeMax", "txtAlarmSet1", "txtAlarmSet2",
                              "txtAlarmSet3", "txtAlarmSet4"}) {
      changes[field] = text(own);
    }
    ExpectChanges(desk, before, "cmbFtio", row, changes);
    ExpectUsable(desk, UsableOf(start), false);
  });
}

// --- cmbInputOtch

TEST(ChannelCascades, AnotherReferenceMovesTheMeasuringRange) {
  ForEachStart([](Desk& desk, const Start& start) {
    if (start.kind != 40) {
      EXPECT_FALSE(desk.Pick("cmbInputOtch", 5));
      return;
    }
    for (int kind = 0; kind < Kinds; ++kind) {
      Put("C", 5, "TYPE", kind);
      LoadEntry(desk.screen->browsing, Channel);
      const Texts before = FieldsShownOf(*desk.screen);
      ASSERT_TRUE(desk.Pick("cmbInputOtch", 5));
      constexpr std::array<const char*, 4> Of1{"1", "0.1", "0.01", "0.001"};
      // A reference that refers further has no position of its own.
      const auto point = static_cast<std::size_t>(kind == 40 ? 0 : PointOf[static_cast<std::size_t>(kind)]);
      Texts changes{{"txtStMin", Of1[point]}, {"txtStMax", Of1234[point]}};
      if (LogInForce(start)) { // the alarms stand on that scale
        for (const char number : {'1', '2', '3', '4'}) {
          changes[std::string("txtAlarmSet") + number] = Of1234[point];
        }
      }
      ExpectChanges(desk, before, "cmbInputOtch", 5, changes);
      ExpectUsable(desk, UsableOf(start), LogInForce(start));
    }
  });
}

// --- All of them

TEST(ChannelCascades, TheRowThatStandsRunsNone) {
  ForEachStart([](Desk& desk, const Start& /*start*/) {
    const Texts before = FieldsShownOf(*desk.screen);
    for (const char* list :
         {"cmbInputType", "cmbScale", "cmbDecimal", "cmbTaisu", "cmbFtio", "cmbInputOtch"}) {
      SelectRow(desk.List(list), desk.Row(list));
      EXPECT_EQ(before, FieldsShownOf(*desk.screen)) << list;
    }
    EXPECT_TRUE(
        std::ranges::none_of(desk.screen->controls, [](const Control* control) { return control->marked; }));
  });
}

} // namespace
} // namespace loader::test
