// The units beside the numbers of a channel: that of what the terminals measure, and that of the channel
// where its numbers stand in it.
#include "tests/channelscreens/Desk.h"
#include "tests/channelscreens/OperationFixture.h"

namespace loader::test {
namespace {

constexpr int Celsius = 0;
constexpr int Fahrenheit = 1;
constexpr int Ppm = 72;
constexpr int Percent = 82;
constexpr int Reference = 3;

struct Units {
  std::string measuring;
  std::string engineering;
  std::string record;
  std::string alarm;
  bool operator==(const Units&) const = default;
};
void PrintTo(const Units& units, std::ostream* out) {
  *out << '"' << units.measuring << "\" \"" << units.engineering << "\" \"" << units.record << "\" \""
       << units.alarm << '"';
}

struct Row {
  const char* model;
  int kind;
  int unit;
  bool scaling;
  bool log;
  bool fValue;
  Units beside;
};
const Row Rows[] = {
    {"KOV", 1, Celsius, false, false, false, {"゜C", "゜C", "゜C", "゜C"}},
    {"KOV", 1, Fahrenheit, false, false, false, {"゜F", "゜F", "゜F", "゜F"}},
    // Any unit but that of Celsius has the limits of Fahrenheit.
    {"KOV", 20, Percent, false, false, false, {"゜F", "%", "%", "%"}},
    // F values are no temperatures.
    {"KOV", 1, Celsius, false, false, true, {"゜C", "゜C", "", ""}},
    {"RUG", 1, Celsius, false, false, true, {"゜C", "゜C", "", ""}},
    {"KOV", 30, Percent, true, false, false, {"mV", "%", "%", "%"}},
    {"KOV", 32, Percent, true, false, false, {"V", "%", "%", "%"}},
    // Exponents have no unit, the powers of the alarms have.
    {"KOV", 32, Percent, true, true, false, {"V", "", "", "%"}},
    {"KOV", 32, Percent, true, true, true, {"V", "", "", "%"}},
    {"RUG", 32, Percent, true, true, false, {"V", "%", "%", "%"}}, // has no logarithm
    {"RUG", 33, Percent, true, true, true, {"V", "%", "", ""}},
    // What measures nothing, or nobody knows what.
    {"KOV", 0, Percent, false, false, false, {"", "%", "%", "%"}},
    {"KOV", 34, Percent, true, false, false, {"", "%", "%", "%"}},
    {"KOV", 41, Percent, true, false, false, {"", "%", "%", "%"}},
    {"KOV", 32767, Percent, true, false, false, {"", "%", "%", "%"}},
    {"KOV", 40, Percent, false, false, false, {"ppm", "%", "%", "%"}}, // that of the reference
    {"RUG", 40, Percent, false, false, false, {"ppm", "%", "%", "%"}},
};

Units UnitsOf(const Screen& screen) {
  const auto caption = [&](const char* label) {
    return ToUtf8(static_cast<const Label*>(screen.Find(label))->caption);
  };
  return {caption("lblStUnit"), caption("lblIndUnit"), caption("lblRecUnit"), caption("lblAlarmUnit")};
}

TEST(UnitsBeside, AreThoseOfTheTerminalsAndOfTheChannel) {
  for (const Row& row : Rows) {
    SCOPED_TRACE(::testing::Message() << row.model << " kind " << row.kind << " unit " << row.unit << " TAIS "
                                      << row.log << " FTIO " << row.fValue);
    Desk desk(row.model);
    Put("C", Reference, "UNIT", Ppm);
    Put("C", 0, "OTCH", Reference);
    Put("C", 0, "TYPE", row.kind);
    Put("C", 0, "UNIT", row.unit);
    Put("C", 0, "SCAL", row.scaling ? 1 : 0);
    Put("C", 0, "TAIS", row.log ? 1 : 0);
    Put("C", 0, "FTIO", row.fValue ? 1 : 0);
    desk.Open();
    EXPECT_EQ(row.beside, UnitsOf(*desk.screen));
  }
}

TEST(UnitsBeside, AReferenceThatIsNoneOrHasNoUnitHasNone) {
  Desk desk;
  Put("C", Reference, "UNIT", -5);
  for (const int reference : {Reference, -1, 30, 32767}) {
    desk.OpenWith({{"TYPE", 40}, {"OTCH", reference}, {"UNIT", Percent}});
    EXPECT_EQ((Units{"", "%", "%", "%"}), UnitsOf(*desk.screen)) << reference;
  }
}

// What the user picks is seen at once. The unit of the channel tells the change; those that follow it are not
// marked.
TEST(UnitsBeside, FollowThePicks) {
  Desk desk;
  Put("C", Reference, "UNIT", Ppm);
  desk.Open();
  ASSERT_TRUE(desk.PickKind(32));
  EXPECT_EQ((Units{"V", "V", "V", "V"}), UnitsOf(*desk.screen));
  EXPECT_TRUE(desk.screen->lblSelUnit.marked);
  for (const Label* unit : {&desk.screen->lblStUnit, &desk.screen->lblIndUnit, &desk.screen->lblRecUnit,
                            &desk.screen->lblAlarmUnit}) {
    EXPECT_FALSE(unit->marked);
  }
  ASSERT_TRUE(desk.Pick("cmbScale", 1));
  ASSERT_TRUE(desk.Pick("cmbTaisu", 1));
  EXPECT_EQ((Units{"V", "", "", "V"}), UnitsOf(*desk.screen));
  ASSERT_TRUE(desk.Pick("cmbTaisu", 0));
  ASSERT_TRUE(desk.Pick("cmbFtio", 1));
  EXPECT_EQ((Units{"V", "V", "", ""}), UnitsOf(*desk.screen));
  ASSERT_TRUE(desk.PickKind(40));
  ASSERT_TRUE(desk.Pick("cmbInputOtch", Reference));
  EXPECT_EQ("ppm", UnitsOf(*desk.screen).measuring);
}

struct UnitsOfAnOperation : OperationScreen {};

// Nobody knows in what unit the result of a formula is.
TEST_F(UnitsOfAnOperation, NoneForTheMeasuringRange) {
  constexpr int Channel = 18;
  Put("C", Channel, "UNIT", Percent);
  Open(Channel, [&](OperationChSetScreen& screen) {
    EXPECT_EQ((Units{"", "%", "%", "%"}), UnitsOf(screen));
    EXPECT_TRUE(Pick(screen, "cmbTaisu", 1));
    EXPECT_EQ((Units{"", "", "", "%"}), UnitsOf(screen));
  });
}

TEST(PowersOfTheAlarms, AreSeenWhereTheModelHasALogarithm) {
  for (const char* model : {"KOV", "RUG"}) {
    Desk desk(model);
    desk.Open();
    for (const Label& power : desk.screen->lblAlarmSetInput) {
      EXPECT_EQ(std::string_view(model) == "KOV", power.visible) << model;
    }
  }
}

} // namespace
} // namespace loader::test
