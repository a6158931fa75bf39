// The refresh of everything, and what it does with values that no recorder should hold.
#include "mainwindow/SettingsPages.h"
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

using Refresh = EitherWindow;
LOADER_FOR_BOTH_MODELS(Refresh);

TEST_P(Refresh, SelectsTheFirstRowOfItsTables) {
  for (const char* table : {"fgrCh", "fgrOperationChSet", "fgrConst", "fgrMess", "fgrUnit"}) {
    GridNamed(table).SelectRow(5);
  }
  RefreshAll();
  for (const char* table : {"fgrCh", "fgrOperationChSet"}) {
    EXPECT_EQ(2, GridNamed(table).Row) << table;
    EXPECT_EQ(2, GridNamed(table).RowSel) << table;
  }
  for (const char* table : {"fgrConst", "fgrMess", "fgrUnit"}) {
    EXPECT_EQ(1, GridNamed(table).Row) << table;
    EXPECT_EQ(1, GridNamed(table).RowSel) << table;
  }
}

TEST_P(Refresh, BringsEveryTableAndPageUpToDate) {
  PutText("C", Profile.ChannelCount - 1, "TAG", "measured");
  PutText("C", Profile.FirstOperationChannel - 1 + Profile.OperationChannelCount - 1, "TAG", "computed");
  Put("N", Profile.ConstantCount - 1, "CONS", 11);
  PutText("M", 9, "MESS", "message");
  PutText("U", 11, "UNIT", "unit");
  PutText("G", Profile.GroupCount - 1, "GNEM", "group");
  PutText("X", 7, "ETTL", "mail");
  Put("H", 0, "MSMP", 3);
  Put("E", 0, "TSBA", 61);
  Put("D", Profile.DigitalInputCount - 1, "DIKI", 4);
  Put("J", 0, "ETHE", 1);
  Put("J", 0, "IPA4", 77);
  Put("J", 0, "SIP4", 78);
  PutText("J", 0, "RAD8", "a@b");
  PutText("K", 7, "UNAM", "user");
  Put("K", 7, "LVEL", 0);
  RefreshAll();
  const ParamLoaderScreen& window = Window();
  EXPECT_EQ("measured", ChannelCell(Profile.ChannelCount, 2));
  EXPECT_EQ("computed", CellText(window.fgrOperationChSet, window.fgrOperationChSet.Rows() - 1, 2));
  EXPECT_EQ("11", CellText(window.fgrConst, Profile.ConstantCount, 1));
  EXPECT_EQ("message", CellText(window.fgrMess, 10, 1));
  EXPECT_EQ("unit", CellText(window.fgrUnit, 12, 1));
  EXPECT_EQ("group", CellText(window.fgrGroup, Profile.GroupCount, 13));
  EXPECT_EQ("mail", CellText(window.flxEMailTriggerSetting, 8, 1));
  EXPECT_EQ(3, List("cmbMainSample").index);
  EXPECT_EQ(1, List("cmbTsbah").index);
  EXPECT_EQ(1, List("cmbTsbam").index);
  EXPECT_EQ(4, List(ElementName("cmbDI", Profile.DigitalInputCount - 1)).index);
  EXPECT_EQ(1, List("cmbEtherFunc").index);
  EXPECT_EQ("77", TextOf(Field("txtEtherIPAdd(3)")));
  EXPECT_EQ("78", TextOf(Field("txtSmtpIPAdd(3)")));
  EXPECT_EQ("a@b", TextOf(Field("txtRecvMailAdd(7)")));
  EXPECT_EQ("user", TextOf(Field("txtUserName(7)")));
  EXPECT_EQ(0, List("cmbUserLevel(7)").index);
}

TEST_P(Refresh, ShowsNoMessageAndChangesNeitherPageNorFocus) {
  user.ChoosePage(Window().tbsParameter, 3);
  Window().focusRequest = nullptr;
  RefreshAll();
  EXPECT_TRUE(platform.boxes.shown.empty());
  EXPECT_EQ(3, Window().tbsParameter.current);
  EXPECT_EQ(nullptr, Window().focusRequest);
}

TEST_P(Refresh, LeavesDrawingOn) {
  RefreshAll();
  for (const char* table : {"fgrCh", "fgrOperationChSet", "fgrConst", "fgrMess", "fgrUnit", "fgrGroup",
                            "flxEMailTriggerSetting"}) {
    EXPECT_TRUE(GridNamed(table).Redraw) << table;
  }
}

TEST_P(Refresh, WithoutAChangeLeavesNothingToDraw) {
  std::vector<std::uint64_t> before;
  std::vector<std::uint64_t> after;
  const auto revisions = [](std::vector<std::uint64_t>& all) {
    for (const char* table : {"fgrCh", "fgrOperationChSet", "fgrConst", "fgrMess", "fgrUnit", "fgrGroup",
                              "flxEMailTriggerSetting"}) {
      all.push_back(GridNamed(table).Revision());
    }
  };
  revisions(before);
  RefreshAll();
  revisions(after);
  EXPECT_EQ(before, after);
}

TEST_P(Refresh, SkipsOperationChannelsAndConstantsWhereThereAreNone) {
  PutText("C", Profile.FirstOperationChannel - 1, "TAG", "late");
  Put("N", 0, "CONS", 42);
  PutText("M", 0, "MESS", "message");
  Window().fgrConst.SelectRow(3);
  Window().fgrOperationChSet.SelectRow(4);
  Profile.OperationChannelCount = 0;
  RefreshAll();
  EXPECT_NE("late", CellText(Window().fgrOperationChSet, 2, 2));
  EXPECT_EQ("0", CellText(Window().fgrConst, 1, 1));
  EXPECT_EQ(3, Window().fgrConst.Row);
  EXPECT_EQ(4, Window().fgrOperationChSet.Row);
  EXPECT_EQ("message", CellText(Window().fgrMess, 1, 1)) << "the rest goes on";
}

TEST_P(Refresh, WithoutOperationChannelsTheTableHasItsHeadingsOnly) {
  Profile.OperationChannelCount = 0;
  BuildTables();
  RefreshAll();
  EXPECT_EQ(2, Window().fgrOperationChSet.Rows());
}

// --- Each fill has its own fields

// What every field of the pages shows, by name.
std::vector<std::string> FieldsThatDiffer(const std::vector<std::string>& before) {
  std::vector<std::string> differ;
  std::size_t n = 0;
  const auto compare = [&](const std::string& name, const std::string& shown) {
    if (n < before.size() && before[n] != shown) {
      differ.push_back(name);
    }
    ++n;
  };
  for (const ListBox& list : Window().lists) {
    compare(list.name, std::to_string(list.index));
  }
  for (const TextField& field : Window().fields) {
    compare(field.name, ToUtf8(field.text));
  }
  return differ;
}
std::vector<std::string> AllFields() {
  std::vector<std::string> shown;
  for (const ListBox& list : Window().lists) {
    shown.push_back(std::to_string(list.index));
  }
  for (const TextField& field : Window().fields) {
    shown.push_back(ToUtf8(field.text));
  }
  return shown;
}

struct PageFill {
  const char* name;
  void (*fill)();
  std::vector<std::string> sections; // "J mail" and "J": the two halves of section J
};
void PrintTo(const PageFill& row, std::ostream* out) {
  *out << row.name;
}
class PageFillTest : public MainWindow, public testing::WithParamInterface<PageFill> {};
TEST_P(PageFillTest, FillsTheFieldsOfItsSectionsAlone) {
  Open("KOV");
  const auto before = AllFields();
  Put("H", 0, "MSMP", 3);
  Put("H", 0, "ALMH", 5);
  Put("E", 0, "TSTR", 121);
  Put("E", 0, "TIMH", 60);
  Put("Z", 0, "TSIG", 2);
  Put("D", 4, "DIKI", 2);
  Put("J", 0, "ETHE", 1);
  Put("J", 0, "IPA1", 10);
  Put("J", 0, "SIP1", 11);
  PutText("J", 0, "SDNM", "name");
  PutText("K", 3, "UNAM", "user");
  Put("K", 3, "LVEL", 0);
  GetParam().fill();
  std::vector<std::string> differ = FieldsThatDiffer(before);
  std::sort(differ.begin(), differ.end());
  EXPECT_EQ(GetParam().sections, differ);
}
INSTANTIATE_TEST_SUITE_P(
    Fills, PageFillTest,
    testing::Values(PageFill{"SettingsPages",
                             FillSettingsPages,
                             {"cmbMainSample", "cmbTsig", "cmbTstrh", "cmbTstrm", "txtAlarmHist", "txtHPLP"}},
                    PageFill{"DigitalInputs", FillDigitalInputs, {"cmbDI(4)"}},
                    PageFill{"EthernetPage", FillEthernetPage, {"cmbEtherFunc", "txtEtherIPAdd(0)"}},
                    PageFill{"UserAccounts", FillUserAccounts, {"cmbUserLevel(3)", "txtUserName(3)"}},
                    PageFill{"MailPage", FillMailPage, {"txtSendName", "txtSmtpIPAdd(0)"}}),
    [](const auto& tested) { return std::string(tested.param.name); });

// --- Values that no recorder should hold

void PutEverywhere(std::int16_t value) {
  for (ParamSection& section : ParamStore) {
    for (ParamItem& item : section.Items) {
      for (ParamNumRecord& record : item.NumRecords) {
        record.Value = value;
      }
    }
  }
}

TEST_P(Refresh, SurvivesTheSameValueInEveryNumber) {
  for (const int value : {-32768, -32767, -1, 0, 1, 40, 42, 255, 32767}) {
    PutEverywhere(static_cast<std::int16_t>(value));
    const auto before = AllNumbers();
    RefreshAll();
    EXPECT_EQ(before, AllNumbers()) << value;
    EXPECT_EQ("CH1", ChannelCell(1, 0));
  }
  EXPECT_TRUE(platform.boxes.shown.empty());
}

TEST_P(Refresh, SurvivesAnExtremeInEachTagAlone) {
  const ParamStoreTable fresh = ParamStore;
  for (std::size_t section = 0; section < fresh.size(); ++section) {
    if (fresh[section].Items.empty()) {
      continue;
    }
    for (std::size_t tag = 0; tag < fresh[section].Items[0].NumRecords.size(); ++tag) {
      for (const int value : {-32768, 32767}) {
        for (ParamItem& item : ParamStore[section].Items) {
          item.NumRecords[tag].Value = static_cast<std::int16_t>(value);
        }
        RefreshAll();
      }
      for (std::size_t item = 0; item < fresh[section].Items.size(); ++item) {
        EXPECT_EQ(32767, ParamStore[section].Items[item].NumRecords[tag].Value)
            << fresh[section].Code << fresh[section].Items[0].NumRecords[tag].Tag;
        ParamStore[section].Items[item] = fresh[section].Items[item];
      }
    }
  }
  EXPECT_TRUE(platform.boxes.shown.empty());
}

TEST_P(Refresh, SurvivesMixedExtremes) {
  for (const unsigned seed : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U}) {
    unsigned state = seed * 2654435761U;
    for (ParamSection& section : ParamStore) {
      for (ParamItem& item : section.Items) {
        for (ParamNumRecord& record : item.NumRecords) {
          state = state * 1664525U + 1013904223U;
          record.Value =
              static_cast<std::int16_t>((state >> 24U) % 3U == 0   ? 32767
                                        : (state >> 24U) % 3U == 1 ? -32768
                                                                   : static_cast<int>(state >> 16U) - 32768);
        }
      }
    }
    const auto before = AllNumbers();
    RefreshAll();
    EXPECT_EQ(before, AllNumbers());
  }
}

TEST_P(Refresh, SurvivesTextsOfEveryLength) {
  for (const std::u16string& text :
       {std::u16string(64, u'漢'), std::u16string(64, u','), std::u16string(63, u' ') + u"x",
        std::u16string(64, u'\xD800'), std::u16string(64, u'\0')}) {
    for (ParamSection& section : ParamStore) {
      for (ParamItem& item : section.Items) {
        for (ParamTextRecord& record : item.TextRecords) {
          SetText(record, text, SlotValue);
        }
      }
    }
    RefreshAll();
    EXPECT_EQ(text, Window().fgrCh.TextMatrix(2, 2));
  }
}

TEST_P(Refresh, SurvivesLimitsThatAreTurnedRound) {
  for (ParamSection& section : ParamStore) {
    for (ParamItem& item : section.Items) {
      for (ParamNumRecord& record : item.NumRecords) {
        record.MinValue = 32767;
        record.MaxValue = -32768;
      }
    }
  }
  RefreshAll();
  EXPECT_EQ("", ChannelCell(1, 6));
  EXPECT_EQ("", TextOf(Field("txtAlarmHist")));
}

} // namespace
} // namespace loader::test
