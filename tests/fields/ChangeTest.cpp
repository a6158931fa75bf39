// What of a dialog's fields the user has changed, and what a list that selects nothing stores.
#include <gtest/gtest.h>

#include <array>

#include "core/Text.h"
#include "fields/Fields.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

constexpr auto Rows = std::to_array<FieldRow>({
    {.control = "cmbStyp", .section = "C", .tag = "STYP"},
    {.control = "cmbSlot", .section = "G", .tag = "GC01"},
    {.control = "txtShift", .section = "C", .tag = "PVSI"},
    {.control = "txtTag", .section = "C", .tag = "TAG", .tooLong = 62100, .forbidden = 62101},
    {.control = "txtName", .section = "G", .tag = "GNEM", .tooLong = 62202, .forbidden = 62203},
    {.control = "cmbTiming", .section = "M", .tag = "MTM1"},
    {.control = "cmbSource", .section = "M", .tag = "MTM2", .noneIsZero = true},
    {.control = "cmbAlarm", .section = "M", .tag = "MTM3"},
    {.control = "cmbHour", .section = "E", .tag = "TSBA", .minutes = "cmbMinute"},
    {.control = "txtOctet", .section = "J", .tag = "IPA#", .elements = 4},
});

class Changes : public testing::Test {
protected:
  void SetUp() override {
    StartWithModel(platform, "KOV");
    Put("M", 0, "MTM1", 3);
    Put("M", 0, "MTM2", 7);
    Put("M", 0, "MTM3", 2);
    Put("E", 0, "TSBA", 605);
    PutText("C", 0, "TAG", "  tag");
    PutText("G", 0, "GNEM", "  name");
    FillLists(fields);
    FillFields(fields);
  }
  [[nodiscard]] ListBox& List(std::string_view name) { return ListNamed(screen, name); }
  [[nodiscard]] TextField& Text(std::string_view name) { return FieldNamed(screen, name); }
  // The fields that count as changed, by their tags.
  [[nodiscard]] std::string Changed() const {
    std::string tags;
    for (const Field& field : fields.fields) {
      tags += IsChanged(fields, field) ? field.tag + " " : "";
    }
    EXPECT_EQ(!tags.empty(), AnyChanged(fields));
    return tags;
  }

  ScriptedPlatform platform;
  Screen screen{"frmSample"};
  FieldSet fields{screen, Rows, StoreTime::OnApply};
};

TEST_F(Changes, ThereAreNoneAfterAFill) {
  EXPECT_EQ("", Changed());
  fields.entry = 1;
  FillFields(fields);
  EXPECT_EQ("", Changed());
}

TEST_F(Changes, APickIsOneAlsoBackAtTheFirstRowAndTheRowThatStandsIsNone) {
  SelectRow(List("cmbStyp"), 0); // stands there already
  EXPECT_EQ("", Changed());
  SelectRow(List("cmbStyp"), 2);
  EXPECT_EQ("STYP ", Changed());
  SelectRow(List("cmbStyp"), 0);
  EXPECT_EQ("STYP ", Changed());
  FillFields(fields);
  EXPECT_EQ("", Changed());
}

TEST_F(Changes, APickWhereNothingStoodIsOne) {
  Put("C", 0, "STYP", 2); // no cycle
  FillFields(fields);
  EXPECT_EQ(-1, List("cmbStyp").index);
  EXPECT_EQ("", Changed());
  SelectRow(List("cmbStyp"), 1);
  EXPECT_EQ("STYP ", Changed());
}

TEST_F(Changes, APickThatRefillsOthersChangesThemToo) {
  SelectRow(List("cmbTiming"), 4);
  EXPECT_EQ("MTM1 MTM2 MTM3 ", Changed());
  FillFields(fields);
  SelectRow(List("cmbTiming"), 0);
  EXPECT_EQ("MTM1 MTM2 MTM3 ", Changed());
}

TEST_F(Changes, ATypedTextIsOneUntilItIsTypedBack) {
  Text("txtTag").text = u"tag";
  EXPECT_EQ("TAG ", Changed());
  Text("txtTag").text = u"  tag";
  EXPECT_EQ("", Changed());
  Text("txtName").text = u"other";
  EXPECT_EQ("GNEM ", Changed());
  Text("txtName").text = u"name"; // the blanks are what its check takes off
  EXPECT_EQ("", Changed());
}

TEST_F(Changes, ATypedNumberIsOneUntilItReadsAsItDid) {
  Text("txtShift").text = u"7";
  EXPECT_EQ("PVSI ", Changed());
  Text("txtShift").text = u" 0";
  ASSERT_TRUE(CheckFields(fields));
  EXPECT_EQ("", Changed());
  Text("txtOctet(2)").text = u"8";
  EXPECT_EQ("IPA3 ", Changed());
}

TEST_F(Changes, OfATimeAreThoseOfItsTwoLists) {
  SelectRow(List("cmbHour"), 11);
  EXPECT_EQ("TSBA ", Changed());
  FillFields(fields);
  SelectRow(List("cmbMinute"), 6);
  EXPECT_EQ("TSBA ", Changed());
  SelectRow(List("cmbMinute"), 5);
  EXPECT_EQ("", Changed());
  Put("E", 0, "TSBA", 2000); // no time of day
  FillFields(fields);
  EXPECT_EQ("", Changed());
}

// A model without the parameter: what nobody has filled nobody has changed.
TEST_F(Changes, OfWhatTheModelDoesNotHaveAreNone) {
  Screen other("frmSample");
  FieldSet lacking(other, Rows, StoreTime::OnApply);
  DropTag("M", "MTM3");
  DropTag("C", "STYP");
  DropTag("C", "PVSI");
  DropTag("C", "TAG");
  DropTag("E", "TSBA");
  FillLists(lacking);
  FillFields(lacking);
  EXPECT_FALSE(AnyChanged(lacking));
  for (const Field& field : lacking.fields) {
    EXPECT_FALSE(IsChanged(lacking, field)) << field.tag;
  }
}

// --- Lists that select nothing

TEST_F(Changes, AListThatSelectsNothingIsKeptUnlessItsRowStoresZero) {
  Put("M", 0, "MTM2", 99);
  Put("M", 0, "MTM3", 9);
  Put("C", 0, "STYP", 2);
  FillFields(fields);
  EXPECT_EQ("", Changed()); // the zero is no change: with nothing else the dialog stores nothing
  EXPECT_TRUE(StoreFields(fields));
  EXPECT_EQ(0, Stored("M", 0, "MTM2"));
  EXPECT_EQ(9, Stored("M", 0, "MTM3"));
  EXPECT_EQ(2, Stored("C", 0, "STYP"));
}

TEST_F(Changes, AListThatOffersNothingStoresZero) {
  Put("M", 0, "MTM1", 0);
  FillFields(fields);
  EXPECT_TRUE(StoreFields(fields));
  EXPECT_EQ(0, Stored("M", 0, "MTM2"));
  EXPECT_EQ(0, Stored("M", 0, "MTM3"));
}

TEST_F(Changes, AListOfZeroForNothingStoresTheRowThatItShows) {
  EXPECT_TRUE(StoreFields(fields));
  EXPECT_EQ(7, Stored("M", 0, "MTM2"));
  SelectRow(List("cmbSource"), 30);
  EXPECT_TRUE(StoreFields(fields));
  EXPECT_EQ(30, Stored("M", 0, "MTM2"));
}

// The pages store at once and know no zero for nothing.
TEST_F(Changes, AnAtOnceListThatSelectsNothingStoresNothing) {
  constexpr FieldRow row[] = {{.control = "cmbTiming", .section = "M", .tag = "MTM1"},
                              {.control = "cmbSource", .section = "M", .tag = "MTM2", .noneIsZero = true}};
  Put("M", 0, "MTM1", 0);
  Screen page("frmPage");
  FieldSet atOnce(page, row, StoreTime::AtOnce);
  FillLists(atOnce);
  FillFields(atOnce);
  EXPECT_EQ(-1, ListNamed(page, "cmbSource").index);
  EXPECT_TRUE(StoreFields(atOnce));
  EXPECT_EQ(7, Stored("M", 0, "MTM2"));
}

} // namespace
} // namespace loader::test
