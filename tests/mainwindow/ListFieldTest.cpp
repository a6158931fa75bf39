// Fields that are lists: the stored value is the row. And the pairs that show a time.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

struct ListField {
  const char* control;
  const char* section;
  int item;
  const char* tag;
  int entries; // on KOV
};
void PrintTo(const ListField& field, std::ostream* out) {
  *out << field.control << " " << field.section << field.item << field.tag;
}
const auto NameByControl = [](const auto& tested) { return TestName(tested.param.control); };

class ListFieldTest : public MainWindow, public testing::WithParamInterface<ListField> {
protected:
  void SetUp() override {
    Open("KOV");
    list_ = &List(GetParam().control);
    ASSERT_EQ(static_cast<std::size_t>(GetParam().entries), list_->items.size());
  }
  int Value() const { return Stored(GetParam().section, GetParam().item, GetParam().tag); }
  void PutValue(int value) const { Put(GetParam().section, GetParam().item, GetParam().tag, value); }
  ListBox* list_ = nullptr;
};

TEST_P(ListFieldTest, ShowsEveryStoredRow) {
  for (int row = 0; row < GetParam().entries; ++row) {
    PutValue(row);
    RefreshAll();
    EXPECT_EQ(row, list_->index);
    EXPECT_EQ(row, Value());
  }
}

TEST_P(ListFieldTest, StoresEveryRowThatIsChosen) {
  for (int row = GetParam().entries - 1; row >= 0; --row) {
    SelectRow(*list_, row);
    EXPECT_EQ(row, Value());
  }
}

TEST_P(ListFieldTest, WritesNothingButItsRecord) {
  const auto before = AllNumbers();
  PutValue(0);
  SelectRow(*list_, 1);
  EXPECT_EQ(1, Value());
  PutValue(NumRecord(GetParam().section, GetParam().item, GetParam().tag).DefaultValue);
  EXPECT_EQ(before, AllNumbers());
}

TEST_P(ListFieldTest, KeepsItsRowForAValueOutsideAndTheStoreItsValue) {
  PutValue(1);
  RefreshAll();
  for (const int outside : {GetParam().entries, -1, 32767, -32768}) {
    PutValue(outside);
    RefreshAll();
    EXPECT_EQ(1, list_->index) << outside;
    EXPECT_EQ(outside, Value());
  }
}

TEST_P(ListFieldTest, DoesNothingWithoutItsRecord) {
  DropTag(GetParam().section, GetParam().tag);
  const auto before = AllNumbers();
  SelectRow(*list_, 1);
  RefreshAll();
  EXPECT_EQ(1, list_->index);
  EXPECT_EQ(before, AllNumbers());
}

INSTANTIATE_TEST_SUITE_P(
    Recorder, ListFieldTest,
    testing::Values(
        ListField{"cmbMainSample", "H", 0, "MSMP", 20}, ListField{"cmbAlarmLach", "H", 0, "ALML", 2},
        ListField{"cmbKirokuFile", "H", 0, "ASBY", 2}, ListField{"cmbKeyLock", "H", 0, "KLOC", 3},
        ListField{"cmbBetsu", "H", 0, "BETU", 9}, ListField{"CmbFileDiv", "H", 0, "BETU", 5},
        ListField{"cmbCFFull", "H", 0, "CFFL", 29}, ListField{"cmbBatteryAlarm", "H", 0, "BAAL", 29},
        ListField{"cmbDateFormat", "H", 0, "TIMF", 5}, ListField{"cmbShoto", "H", 0, "SHOU", 9},
        ListField{"cmbLCDShoto", "H", 0, "SHOU", 9}, ListField{"cmbBaudrate", "H", 0, "COMB", 2},
        ListField{"cmbParity", "H", 0, "COMP", 3}, ListField{"cmbCompression", "H", 0, "CMPL", 4},
        ListField{"cmbOverwrite", "H", 0, "FIFO", 2}, ListField{"cmbLangage", "H", 0, "LANG", 2},
        ListField{"cmbSecurity", "H", 0, "LOGO", 2}, ListField{"cmbTrend_backcolor", "H", 0, "TBKC", 2},
        ListField{"cmbHistorical_backcolor", "H", 0, "HBKC", 2}, ListField{"cmbFpoi", "H", 0, "FPOI", 5}),
    NameByControl);
INSTANTIATE_TEST_SUITE_P(
    Totals, ListFieldTest,
    testing::Values(ListField{"cmbTcyc", "E", 0, "TCYC", 10}, ListField{"cmbTwdy", "E", 0, "TWDY", 7},
                    ListField{"cmbTday", "E", 0, "TDAY", 31}, ListField{"cmbText", "E", 0, "TEXT", 130},
                    ListField{"cmbTota", "Z", 0, "TOTA", 2}, ListField{"cmbTstm", "Z", 0, "TSTM", 4},
                    ListField{"cmbTsig", "Z", 0, "TSIG", 4}),
    NameByControl);
INSTANTIATE_TEST_SUITE_P(
    DigitalInputs, ListFieldTest,
    testing::Values(ListField{"cmbDI(0)", "D", 0, "DIKI", 6}, ListField{"cmbDI(1)", "D", 1, "DIKI", 6},
                    ListField{"cmbDI(2)", "D", 2, "DIKI", 6}, ListField{"cmbDI(3)", "D", 3, "DIKI", 6},
                    ListField{"cmbDI(4)", "D", 4, "DIKI", 6}, ListField{"cmbDI(5)", "D", 5, "DIKI", 6},
                    ListField{"cmbDI(6)", "D", 6, "DIKI", 6}, ListField{"cmbDI(7)", "D", 7, "DIKI", 6},
                    ListField{"cmbDI(8)", "D", 8, "DIKI", 6}, ListField{"cmbDI(9)", "D", 9, "DIKI", 6}),
    NameByControl);
INSTANTIATE_TEST_SUITE_P(Ethernet, ListFieldTest,
                         testing::Values(ListField{"cmbEtherFunc", "J", 0, "ETHE", 2},
                                         ListField{"cmbFtpSrvFunc", "J", 0, "FTPF", 2},
                                         ListField{"cmbFtpSrvControl", "J", 0, "FTPA", 2},
                                         ListField{"cmbWebSrvFunc", "J", 0, "WEBF", 2},
                                         ListField{"cmbWebSrvControl", "J", 0, "WEBA", 2},
                                         ListField{"cmbWebSrvMsgFunc", "J", 0, "WEBM", 2},
                                         ListField{"cmbEMailFunc", "J", 0, "MAIL", 2},
                                         ListField{"cmbModbusTcpIpFunc", "J", 0, "MOTC", 2}),
                         NameByControl);
INSTANTIATE_TEST_SUITE_P(Users, ListFieldTest,
                         testing::Values(ListField{"cmbUserLevel(0)", "K", 0, "LVEL", 2},
                                         ListField{"cmbUserLevel(1)", "K", 1, "LVEL", 2},
                                         ListField{"cmbUserLevel(2)", "K", 2, "LVEL", 2},
                                         ListField{"cmbUserLevel(3)", "K", 3, "LVEL", 2},
                                         ListField{"cmbUserLevel(4)", "K", 4, "LVEL", 2},
                                         ListField{"cmbUserLevel(5)", "K", 5, "LVEL", 2},
                                         ListField{"cmbUserLevel(6)", "K", 6, "LVEL", 2},
                                         ListField{"cmbUserLevel(7)", "K", 7, "LVEL", 2}),
                         NameByControl);

// --- Two lists over one setting

TEST_F(KovWindow, FillShowsTheFileDivisionInBothItsLists) {
  Put("H", 0, "BETU", 4);
  RefreshAll();
  EXPECT_EQ(4, List("cmbBetsu").index);
  EXPECT_EQ(4, List("CmbFileDiv").index);
}

TEST_F(KovWindow, FileDivisionOfTheOlderListOnlyLeavesTheNewerOneAndIsNotWrittenBack) {
  Put("H", 0, "BETU", 2);
  RefreshAll();
  for (const int days : {5, 6, 7, 8}) {
    Put("H", 0, "BETU", days);
    RefreshAll();
    EXPECT_EQ(days, List("cmbBetsu").index);
    EXPECT_EQ(2, List("CmbFileDiv").index);
    EXPECT_EQ(days, Stored("H", 0, "BETU"));
  }
}

TEST_F(KovWindow, LastWrittenOfTheTwoFileDivisionListsWins) {
  user.Choose(List("cmbBetsu"), 7);
  EXPECT_EQ(7, Stored("H", 0, "BETU"));
  user.Choose(List("CmbFileDiv"), 1);
  EXPECT_EQ(1, Stored("H", 0, "BETU"));
  EXPECT_EQ(1, List("cmbBetsu").index);
}

TEST_F(KovWindow, FileDivisionListWithoutTheOthersRowStaysAndWritesNothing) {
  user.Choose(List("CmbFileDiv"), 2);
  user.Choose(List("cmbBetsu"), 7);
  EXPECT_EQ(2, List("CmbFileDiv").index) << "7 is no row";
  EXPECT_EQ(7, Stored("H", 0, "BETU"));
}

TEST_F(KovWindow, LastWrittenOfTheThreeScreenOffFieldsWins) {
  user.Choose(List("cmbShoto"), 3);
  EXPECT_EQ(3, Stored("H", 0, "SHOU"));
  user.Choose(List("cmbLCDShoto"), 5);
  EXPECT_EQ(5, Stored("H", 0, "SHOU"));
  EXPECT_EQ(5, List("cmbShoto").index);
  EXPECT_EQ("5", TextOf(Field("txtLCDShoto")));
  user.Type(Field("txtLCDShoto"), u"45");
  user.Leave(Field("txtLCDShoto"));
  EXPECT_EQ(45, Stored("H", 0, "SHOU"));
  RefreshAll();
  EXPECT_EQ(5, List("cmbShoto").index) << "45 is no row";
  EXPECT_EQ(5, List("cmbLCDShoto").index);
  EXPECT_EQ("45", TextOf(Field("txtLCDShoto")));
  EXPECT_EQ(45, Stored("H", 0, "SHOU"));
}

// To come by with the Tab key is no change.
TEST_F(KovWindow, PassingTheScreenOffNumberDoesNotUndoTheListsChoice) {
  Put("H", 0, "SHOU", 10);
  RefreshAll();
  user.Choose(List("cmbShoto"), 3);
  user.MoveTo(Field("txtLCDShoto"));
  user.Leave(Field("txtLCDShoto"));
  EXPECT_EQ(3, Stored("H", 0, "SHOU"));
}

TEST_F(KovWindow, FillShowsTheScreenOffTimeInAllThreeFields) {
  Put("H", 0, "SHOU", 8);
  RefreshAll();
  EXPECT_EQ(8, List("cmbShoto").index);
  EXPECT_EQ(8, List("cmbLCDShoto").index);
  EXPECT_EQ("8", TextOf(Field("txtLCDShoto")));
}

TEST_F(KovWindow, MoveListStandsForNoParameter) {
  const auto before = AllNumbers();
  List("cmbTmove").index = -1;
  SelectRow(List("cmbTmove"), 1);
  EXPECT_EQ(before, AllNumbers());
}

// --- Models

TEST_F(KovWindow, HiddenDIFunctionsStayInTheStore) {
  for (int n = 10; n < 16; ++n) {
    Put("D", n, "DIKI", 5);
  }
  RefreshAll();
  for (int n = 10; n < 16; ++n) {
    EXPECT_EQ(-1, List(ElementName("cmbDI", n)).index);
    EXPECT_FALSE(List(ElementName("cmbDI", n)).visible);
    EXPECT_EQ(5, Stored("D", n, "DIKI"));
  }
}

TEST_F(RugWindow, SixteenDIFunctionsAreShownAndStored) {
  for (int n = 0; n < 16; ++n) {
    Put("D", n, "DIKI", n % 6);
  }
  RefreshAll();
  for (int n = 0; n < 16; ++n) {
    EXPECT_EQ(n % 6, List(ElementName("cmbDI", n)).index);
    user.Choose(List(ElementName("cmbDI", n)), (n + 1) % 6);
    EXPECT_EQ((n + 1) % 6, Stored("D", n, "DIKI"));
  }
}

TEST_F(RugWindow, TotalizerOfTheOtherModelIsNotShown) {
  for (const char* tag : {"TOTA", "TSTM", "TSIG"}) {
    Put("Z", 0, tag, 1);
  }
  RefreshAll();
  EXPECT_EQ(-1, List("cmbTota").index);
  EXPECT_EQ(-1, List("cmbTstm").index);
  EXPECT_EQ(-1, List("cmbTsig").index);
  EXPECT_EQ(1, Stored("Z", 0, "TOTA"));
}

TEST_F(RugWindow, LongerListsStoreTheirLastRows) {
  user.Choose(List("cmbCFFull"), 36);
  user.Choose(List("cmbBatteryAlarm"), 35);
  user.Choose(List("cmbText"), 303);
  EXPECT_EQ(36, Stored("H", 0, "CFFL"));
  EXPECT_EQ(35, Stored("H", 0, "BAAL"));
  EXPECT_EQ(303, Stored("E", 0, "TEXT"));
  RefreshAll();
  EXPECT_EQ(303, List("cmbText").index);
}

// --- Times

struct TimeField {
  const char* hours;
  const char* minutes;
  const char* tag;
};
void PrintTo(const TimeField& field, std::ostream* out) {
  *out << field.tag;
}
class TimeFieldTest : public MainWindow, public testing::WithParamInterface<TimeField> {
protected:
  void SetUp() override {
    Open("KOV");
    hours_ = &List(GetParam().hours);
    minutes_ = &List(GetParam().minutes);
  }
  int Value() const { return Stored("E", 0, GetParam().tag); }
  void Fill(int value) const {
    Put("E", 0, GetParam().tag, value);
    RefreshAll();
  }
  ListBox* hours_ = nullptr;
  ListBox* minutes_ = nullptr;
};
INSTANTIATE_TEST_SUITE_P(All, TimeFieldTest,
                         testing::Values(TimeField{"cmbTsbah", "cmbTsbam", "TSBA"},
                                         TimeField{"cmbTstrh", "cmbTstrm", "TSTR"},
                                         TimeField{"cmbTstoh", "cmbTstom", "TSTO"}),
                         [](const auto& tested) { return std::string(tested.param.tag); });

TEST_P(TimeFieldTest, ShowsEveryMinuteOfTheDay) {
  for (int minute = 0; minute < 1440; minute += 7) {
    Fill(minute);
    EXPECT_EQ(minute / 60, hours_->index);
    EXPECT_EQ(minute % 60, minutes_->index);
    EXPECT_EQ(minute, Value());
  }
}

TEST_P(TimeFieldTest, ShowsTheLastMinuteAs23And59) {
  Fill(1439);
  EXPECT_EQ(23, hours_->index);
  EXPECT_EQ(59, minutes_->index);
  EXPECT_EQ(1439, Value());
}

TEST_P(TimeFieldTest, StoresOnAChangeOfEitherList) {
  user.Choose(*hours_, 23);
  EXPECT_EQ(1380, Value());
  user.Choose(*minutes_, 59);
  EXPECT_EQ(1439, Value());
  user.Choose(*hours_, 0);
  EXPECT_EQ(59, Value());
  user.Choose(*minutes_, 0);
  EXPECT_EQ(0, Value());
}

TEST_P(TimeFieldTest, FillWritesNothingBetweenTheTwoLists) {
  Fill(59);
  std::vector<int> written;
  const Handler handler = hours_->onChange;
  hours_->onChange = minutes_->onChange = [&] {
    handler();
    written.push_back(Value());
  };
  Fill(1380);
  EXPECT_TRUE(std::all_of(written.begin(), written.end(), [](int value) { return value == 1380; }));
  EXPECT_EQ(1380, Value());
  EXPECT_EQ(23, hours_->index);
  EXPECT_EQ(0, minutes_->index);
}

TEST_P(TimeFieldTest, HourOutsideTheDayLeavesItsListAndTheStore) {
  Fill(5 * 60 + 10);
  for (const int value : {1440, 1500, 32767}) {
    Fill(value);
    EXPECT_EQ(5, hours_->index) << value;
    EXPECT_EQ(value % 60, minutes_->index) << value;
    EXPECT_EQ(value, Value());
  }
}

TEST_P(TimeFieldTest, NegativeTimeLeavesTheStore) {
  Fill(5 * 60 + 10);
  for (const int value : {-1, -61, -32768}) {
    Fill(value);
    EXPECT_EQ(value, Value());
    EXPECT_GE(hours_->index, 0);
    EXPECT_GE(minutes_->index, 0);
  }
}

TEST_P(TimeFieldTest, CountsAListWithoutAChoiceAsZero) {
  hours_->index = -1;
  user.Choose(*minutes_, 30);
  EXPECT_EQ(30, Value());
}

TEST_P(TimeFieldTest, DoesNothingWithoutItsRecord) {
  DropTag("E", GetParam().tag);
  const auto before = AllNumbers();
  user.Choose(*hours_, 3);
  RefreshAll();
  EXPECT_EQ(3, hours_->index);
  EXPECT_EQ(before, AllNumbers());
}

} // namespace
} // namespace loader::test
