// Opening the window, its communication menus, the version screen.
#include "core/modIniReadWrite.h"
#include "mainwindow/frmAbout.h"
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

// The entries of a menu array that carry the check mark.
std::vector<int> Checked(ControlArray<MenuEntry>& entries) {
  std::vector<int> checked;
  for (int n = 0; n < entries.Count(); ++n) {
    if (entries(n).checked) {
      checked.push_back(n);
    }
  }
  return checked;
}
using Indexes = std::vector<int>;

class OpeningWindow : public MainWindow {
protected:
  // The window over a fresh KOV store, with these lines of section LOADER.
  void OpenWith(std::string_view lines) {
    StartWithModel(platform, "KOV");
    platform.WriteFile("LOADER.INI", "[LOADER]\r\nTYPE=0\r\n" + std::string(lines));
    OpenMainWindow();
  }
};

// --- The sequence

TEST_F(OpeningWindow, IsShownOnceItIsFilled) {
  Open("KOV");
  ASSERT_EQ(1U, platform.screens.shown.size());
  EXPECT_EQ(&Window(), platform.screens.shown[0]);
  EXPECT_TRUE(platform.screens.shownModally.empty());
  EXPECT_EQ("frmParamLoader", Window().name);
}

TEST_F(OpeningWindow, FillsItsTablesAndPagesFromTheStore) {
  StartWithModel(platform, "KOV");
  PutText("C", 0, "TAG", "FURNACE");
  PutText("M", 0, "MESS", "Batch start");
  PutText("U", 0, "UNIT", "m/s");
  PutText("K", 0, "UNAM", "suzuki");
  PutText("J", 0, "SDNM", "recorder");
  PutText("X", 0, "ETTL", "Alarm");
  Put("H", 0, "MSMP", 3);
  OpenMainWindow();
  EXPECT_EQ("FURNACE", ChannelCell(1, 2));
  EXPECT_EQ("Batch start", CellText(Window().fgrMess, 1, 1));
  EXPECT_EQ("m/s", CellText(Window().fgrUnit, 1, 1));
  EXPECT_EQ("suzuki", TextOf(Field("txtUserName(0)")));
  EXPECT_EQ("recorder", TextOf(Field("txtSendName")));
  EXPECT_EQ("Alarm", CellText(Window().flxEMailTriggerSetting, 1, 1));
  EXPECT_EQ(3, List("cmbMainSample").index);
}

TEST_F(OpeningWindow, ShowsTheFirstPageWithTheChannelsToCopyFrom) {
  Open("KOV");
  EXPECT_EQ(0, Window().tbsParameter.current);
  EXPECT_EQ(0, Window().CopySourceRow);
  EXPECT_EQ(CopyKinds::Channels, Window().CopyKind);
  EXPECT_TRUE(Window().smenuCopy.enabled);
  EXPECT_TRUE(Window().smenuPaste.enabled);
}

TEST_F(OpeningWindow, LeavesTheStoreAsItWas) {
  StartWithModel(platform, "RUG");
  const auto before = AllNumbers();
  OpenMainWindow();
  EXPECT_EQ(before, AllNumbers());
}

// --- The model list

TEST_F(OpeningWindow, OffersBothModelsAndShowsKov) {
  Open("KOV");
  EXPECT_EQ((std::vector<std::string>{"KOV", "RUG"}), Items("cmbType"));
  EXPECT_EQ(0, Window().cmbType.index);
}

TEST_F(OpeningWindow, OffersBothModelsAndShowsRug) {
  Open("RUG");
  EXPECT_EQ((std::vector<std::string>{"KOV", "RUG"}), Items("cmbType"));
  EXPECT_EQ(1, Window().cmbType.index);
}

TEST_F(OpeningWindow, ShowsRugForAModelNumberAboveTheList) {
  platform.WriteFile("LOADER.INI", "[LOADER]\r\nTYPE=5\r\nCOMMUNICATION=0\r\nCOM=0\r\nSTNO=1\r\n");
  ASSERT_TRUE(Main([] {}));
  OpenMainWindow();
  EXPECT_EQ("RUG", ModelCode);
  EXPECT_EQ(1, Window().cmbType.index);
}

// --- The communication settings

TEST_F(OpeningWindow, ReadsTheCommunicationSettings) {
  OpenWith("COMMUNICATION=2\r\nCOM=3\r\nSTNO=17\r\nIP=10.0.0.7\r\n");
  EXPECT_EQ(2, Settings.ConfiguredLink);
  EXPECT_EQ(3, Settings.ComPortIndex);
  EXPECT_EQ(17, Settings.StationSetting);
  EXPECT_EQ(u"10.0.0.7", Settings.RecorderIpAddress);
}

struct MarkRow {
  const char* lines;
  Indexes links;
  Indexes ports;
  const char* name;
};
void PrintTo(const MarkRow& row, std::ostream* out) {
  *out << row.name;
}
class CheckMarks : public OpeningWindow, public testing::WithParamInterface<MarkRow> {};
TEST_P(CheckMarks, StandAtTheSettings) {
  OpenWith(GetParam().lines);
  EXPECT_EQ(GetParam().links, Checked(Window().menuRScomunicationf));
  EXPECT_EQ(GetParam().ports, Checked(Window().smenuCOM));
}
INSTANTIATE_TEST_SUITE_P(
    Opening, CheckMarks,
    testing::Values(MarkRow{"COMMUNICATION=0\r\nCOM=0\r\nSTNO=1\r\n", {0}, {0}, "UsbAndCom1"},
                    MarkRow{"COMMUNICATION=1\r\nCOM=1\r\nSTNO=1\r\n", {1}, {1}, "EthernetAndCom2"},
                    MarkRow{"COMMUNICATION=2\r\nCOM=2\r\nSTNO=1\r\n", {2}, {2}, "SerialAndCom3"},
                    MarkRow{"COMMUNICATION=2\r\nCOM=3\r\nSTNO=1\r\n", {2}, {3}, "SerialAndCom4"},
                    MarkRow{"COMMUNICATION=2\r\nCOM=4\r\nSTNO=1\r\n", {2}, {4}, "SerialAndCom5"},
                    MarkRow{"COMMUNICATION=3\r\nCOM=5\r\nSTNO=1\r\n", {}, {}, "AboveTheMenus"},
                    MarkRow{"COMMUNICATION=-1\r\nCOM=-1\r\nSTNO=1\r\n", {}, {}, "Negative"},
                    MarkRow{"COMMUNICATION=32767\r\nCOM=-32768\r\nSTNO=1\r\n", {}, {}, "FarOutside"}),
    [](const auto& tested) { return std::string(tested.param.name); });

// What cannot be read, and what follows it, keeps its start value; the window opens without a word.
struct FailingRow {
  const char* lines;
  int link;
  int port;
  int station;
  const char16_t* address;
  const char* name;
};
void PrintTo(const FailingRow& row, std::ostream* out) {
  *out << row.name;
}
class FailingSettings : public OpeningWindow, public testing::WithParamInterface<FailingRow> {};
TEST_P(FailingSettings, KeepTheStartValuesFromTheFailureOnAndTheWindowOpens) {
  OpenWith(GetParam().lines);
  EXPECT_EQ(GetParam().link, Settings.ConfiguredLink);
  EXPECT_EQ(GetParam().port, Settings.ComPortIndex);
  EXPECT_EQ(GetParam().station, Settings.StationSetting);
  EXPECT_EQ(GetParam().address, Settings.RecorderIpAddress);
  EXPECT_EQ(Indexes{GetParam().link}, Checked(Window().menuRScomunicationf));
  EXPECT_EQ(Indexes{GetParam().port}, Checked(Window().smenuCOM));
  EXPECT_EQ(1U, platform.screens.shown.size());
  EXPECT_TRUE(platform.boxes.shown.empty());
}
INSTANTIATE_TEST_SUITE_P(
    Opening, FailingSettings,
    testing::Values(
        FailingRow{"COM=3\r\nSTNO=9\r\nIP=10.0.0.7\r\n", 0, 0, 1, u"192.168.1.1", "WithoutLink"},
        FailingRow{"COMMUNICATION=2\r\nSTNO=9\r\nIP=10.0.0.7\r\n", 2, 0, 1, u"192.168.1.1", "WithoutPort"},
        FailingRow{"COMMUNICATION=2\r\nCOM=3\r\nIP=10.0.0.7\r\n", 2, 3, 1, u"192.168.1.1", "WithoutStation"},
        FailingRow{"COMMUNICATION=x\r\nCOM=3\r\nSTNO=9\r\n", 0, 0, 1, u"192.168.1.1", "LinkThatIsNoNumber"},
        FailingRow{"COMMUNICATION=2\r\nCOM=32768\r\nSTNO=9\r\n", 2, 0, 1, u"192.168.1.1", "PortTooLarge"},
        FailingRow{"COMMUNICATION=2\r\nCOM=3\r\nSTNO=9\r\n", 2, 3, 9, u"ERROR", "WithoutAddress"},
        FailingRow{"", 0, 0, 1, u"192.168.1.1", "Nothing"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(OpeningWindow, TakesTheStartSettingsWithoutAFile) {
  StartWithModel(platform, "KOV");
  std::filesystem::remove(platform.folder / "LOADER.INI");
  Settings.ConfiguredLink = 2;
  OpenMainWindow();
  EXPECT_EQ(0, Settings.ConfiguredLink);
  EXPECT_EQ(0, Settings.ComPortIndex);
  EXPECT_EQ(1, Settings.StationSetting);
  EXPECT_EQ(u"192.168.1.1", Settings.RecorderIpAddress);
  EXPECT_EQ(Indexes{0}, Checked(Window().menuRScomunicationf));
}

// --- The communication menus

TEST_F(KovWindow, TransportMenuChecksTheClickedEntryAloneAndSetsTheLink) {
  for (const int link : {2, 0, 1}) {
    EXPECT_TRUE(user.Click(Window().menuRScomunicationf(link)));
    EXPECT_EQ(link, Settings.ConfiguredLink);
    EXPECT_EQ(Indexes{link}, Checked(Window().menuRScomunicationf));
    EXPECT_EQ(Indexes{0}, Checked(Window().smenuCOM));
  }
}

TEST_F(KovWindow, PortMenuChecksTheClickedEntryAloneAndSetsThePort) {
  for (const int port : {4, 3, 2, 1, 0}) {
    EXPECT_TRUE(user.Click(Window().smenuCOM(port)));
    EXPECT_EQ(port, Settings.ComPortIndex);
    EXPECT_EQ(Indexes{port}, Checked(Window().smenuCOM));
    EXPECT_EQ(Indexes{1}, Checked(Window().menuRScomunicationf));
  }
}

TEST_F(KovWindow, CommunicationMenusWriteNoFile) {
  const std::string before = platform.ReadFile("LOADER.INI");
  user.Click(Window().menuRScomunicationf(2));
  user.Click(Window().smenuCOM(4));
  EXPECT_EQ(before, platform.ReadFile("LOADER.INI"));
}

TEST_F(KovWindow, RecordButtonChangesNothingAndSendsNothing) {
  const auto before = AllNumbers();
  Window().cmdRec.visible = true; // whether it is shown or not
  EXPECT_TRUE(user.Click(Window().cmdRec));
  EXPECT_EQ(before, AllNumbers());
  EXPECT_TRUE(platform.socket.connected.empty());
  EXPECT_TRUE(platform.serial.opened.empty());
  EXPECT_EQ(0, platform.usb.opens);
  EXPECT_TRUE(platform.boxes.shown.empty());
}

// --- The version screen

class VersionScreen : public KovWindow {
protected:
  void SetUp() override {
    KovWindow::SetUp();
    platform.screens.Expect<AboutScreen>("frmAbout", [this](AboutScreen& about) {
      caption = ToUtf8(about.caption);
      title = ToUtf8(about.lblTitle.caption);
      version = ToUtf8(about.lblVersion.caption);
      button = ToUtf8(about.cmdOK.caption);
      user.Click(about.cmdOK);
      closed = platform.screens.closed.size() == 1 && platform.screens.closed[0] == &about;
    });
  }
  std::string caption, title, version, button;
  bool closed = false;
};

TEST_F(VersionScreen, TellsTheProgramAndItsVersionInThreeNumbers) {
  user.Click(Window().menuVersion);
  EXPECT_EQ("バージョン情報", caption);
  EXPECT_EQ("パラメータローダ", title);
  EXPECT_EQ("バージョン　" LOADER_VERSION, version);
  EXPECT_EQ("ＯＫ", button);
}

TEST_F(VersionScreen, OpensModallyFromTheMenuAndClosesByItsButton) {
  user.Click(Window().menuVersion);
  EXPECT_EQ(std::vector<std::string>{"frmAbout"}, platform.screens.shownModally);
  EXPECT_TRUE(closed);
}

TEST_F(VersionScreen, OpensFromTheFourthToolButton) {
  user.Click(Window().V(4));
  EXPECT_EQ(std::vector<std::string>{"frmAbout"}, platform.screens.shownModally);
  EXPECT_TRUE(closed);
}

} // namespace
} // namespace loader::test
