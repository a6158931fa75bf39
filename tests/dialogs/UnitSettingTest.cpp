// User units: their names, in the store and in the list of all units.
#include "tests/dialogs/DialogFixture.h"

namespace loader::test {
namespace {

using Unit = OnBothModels;
LOADER_DIALOGS_OF_BOTH_MODELS(Unit);

TEST_P(Unit, HasItsCaptions) {
  InUnits(0, [](UnitSettingScreen& screen) {
    ExpectCaption(screen, "lblMessage", "単位名");
    ExpectCaption(screen, "lblSelectNo", "選択No");
  });
}

// User unit 1 is entry 156, user unit 12 entry 167.
TEST_P(Unit, PutsANewNameIntoTheUnitListAtOnce) {
  for (int unit = 0; unit < 12; ++unit) {
    const StoreWatch store;
    const Catalogue before = UnitNames;
    const std::string name = "u" + std::to_string(unit);
    InUnits(unit, [&](UnitSettingScreen& screen) {
      user.Type(FieldNamed(screen, "txtMessage"), FromUtf8(name));
      EXPECT_EQ(before, UnitNames); // not before it is applied
      user.Click(screen.browsing.apply);
      Catalogue expected = before;
      expected.at(static_cast<std::size_t>(156 + unit)) = FromUtf8(name);
      EXPECT_EQ(expected, UnitNames);
    });
    EXPECT_EQ(Texts{"U" + std::to_string(unit) + " UNIT " + name}, store.Changes());
  }
}

TEST_P(Unit, TheRecordKeepsLeadingBlanksAndTheUnitListDoesNot) {
  struct Row {
    std::u16string_view typed;
    std::string record;
    std::u16string_view list;
  };
  for (const Row& row : {Row{u"  kW", "  kW", u"kW"},
                         {u"kW  ", "kW", u"kW"},
                         {u" k W ", " k W", u"k W"},
                         {u"　kW", "　kW", u"　kW"},
                         {u"   ", "", u""},
                         {u"", "", u""}}) {
    PutText("U", 3, "UNIT", "old");
    UnitNames[159] = u"old";
    InUnits(3, [&](UnitSettingScreen& screen) {
      user.Type(FieldNamed(screen, "txtMessage"), row.typed);
      EXPECT_TRUE(user.Click(screen.browsing.apply));
      EXPECT_EQ(row.record, ToUtf8(FieldNamed(screen, "txtMessage").text)); // what is seen is stored
    });
    EXPECT_EQ(Padded64(row.record), StoredText("U", 3, "UNIT"));
    EXPECT_EQ(row.list, UnitNames[159]) << row.record;
  }
}

// What stands in the list may be of an older file.
TEST_P(Unit, AnApplyWithoutAChangePutsTheNameIntoTheListToo) {
  PutText("U", 11, "UNIT", "rpm2");
  UnitNames[167] = u"stale";
  const StoreWatch store;
  InUnits(11, [&](UnitSettingScreen& screen) { user.Click(screen.browsing.apply); });
  EXPECT_EQ(u"rpm2", UnitNames[167]);
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Unit, TakesANameOfItsRecordsBytes) {
  for (const std::u16string_view name : {u"12345678", u"一二三四", u"ｱｲｳｴｵｶｷｸ"}) {
    InUnits(0, [&](UnitSettingScreen& screen) {
      user.Type(FieldNamed(screen, "txtMessage"), name);
      EXPECT_TRUE(user.Click(screen.browsing.apply));
    });
    EXPECT_EQ(name, UnitNames[156]);
  }
}

TEST_P(Unit, RefusesALongerNameWithAllOfItSelectedAndLeavesTheList) {
  const StoreWatch store;
  const Catalogue before = UnitNames;
  for (const std::u16string_view name : {u"123456789", u"一二三四五", u"12345678 ", u" 12345678"}) {
    InUnits(0, [&](UnitSettingScreen& screen) {
      TextField& field = FieldNamed(screen, "txtMessage");
      user.Type(field, name);
      ExpectMessage(u"半角8文字以下で入力してください");
      EXPECT_FALSE(user.Click(screen.browsing.apply));
      ExpectAllSelected(field);
    });
  }
  EXPECT_TRUE(store.Untouched());
  EXPECT_EQ(before, UnitNames);
}

TEST_P(Unit, RefusesACommaSelectsItAndLeavesTheList) {
  const StoreWatch store;
  const Catalogue before = UnitNames;
  InUnits(0, [&](UnitSettingScreen& screen) {
    TextField& field = FieldNamed(screen, "txtMessage");
    user.Type(field, u" k,W");
    ExpectMessage(u"「,」は入力できません");
    EXPECT_FALSE(user.Leave(field));
    EXPECT_EQ(u" k,W", field.text);
    ExpectSelected(field, 2, 1);
    field.text = u"12345678,";
    ExpectMessage(u"半角8文字以下で入力してください");
    EXPECT_FALSE(user.Click(screen.browsing.apply));
    field.text = u",";
    ExpectMessage(u"「,」は入力できません");
    screen.browsing.apply.onClick();
    ExpectSelected(field, 0, 1);
  });
  EXPECT_TRUE(store.Untouched());
  EXPECT_EQ(before, UnitNames);
}

TEST_P(Unit, NamesItsFieldsForOthers) {
  ASSERT_EQ(1U, UnitFields().size());
  EXPECT_EQ("txtMessage", UnitFields().front().control);
}

} // namespace
} // namespace loader::test
