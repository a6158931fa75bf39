// The screen for the recorder's address and station number, on its records alone.
#include "comm/frmIPSetting.h"

#include "core/TextTable.h"
#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

struct IpSetting : LinkFixture {
  // Shows the screen and lets the user act on it.
  void Show(const std::function<void(IpSettingScreen&)>& act) {
    platform.screens.Expect<IpSettingScreen>("frmIPSetting", act);
    ShowIpSetting();
  }
  void ExpectRangeBox() { platform.boxes.Expect(u"0から255の値を入力してください"); }
  ScriptedUser user;
};

TEST_F(IpSetting, HasItsCaptions) {
  Show([](IpSettingScreen& screen) {
    EXPECT_EQ(screen.caption, u"IPアドレス設定");
    EXPECT_EQ(screen.Label1.caption, u"IP ｱﾄﾞﾚｽ");
    EXPECT_EQ(screen.lblStationNo.caption, u"ｽﾃｰｼｮﾝ No.");
    EXPECT_EQ(screen.cmdOK.caption, u"ＯＫ");
  });
}

TEST_F(IpSetting, NamesItsControls) {
  Show([](IpSettingScreen& screen) {
    for (const char* name : {"Label1", "txtIP(0)", "txtIP(1)", "txtIP(2)", "txtIP(3)", "lblStationNo",
                             "txtStationNo", "cmdOK"}) {
      EXPECT_NE(screen.Find(name), nullptr) << name;
    }
  });
}

TEST_F(IpSetting, ShowsTheSettings) {
  Settings.RecorderIpAddress = u"10.20.30.40";
  Settings.StationSetting = 17;
  Show([](IpSettingScreen& screen) {
    EXPECT_EQ(screen.txtIP(0).text, u"10");
    EXPECT_EQ(screen.txtIP(1).text, u"20");
    EXPECT_EQ(screen.txtIP(2).text, u"30");
    EXPECT_EQ(screen.txtIP(3).text, u"40");
    EXPECT_EQ(screen.txtStationNo.text, u"17");
  });
}

TEST_F(IpSetting, AnAddressOfFewerPartsLeavesTheOthersEmptyAndComesBackWithItsDots) {
  Settings.RecorderIpAddress = u"10.20";
  Show([&](IpSettingScreen& screen) {
    EXPECT_EQ(screen.txtIP(1).text, u"20");
    EXPECT_EQ(screen.txtIP(2).text, u"");
    EXPECT_EQ(screen.txtIP(3).text, u"");
    user.Click(screen.cmdOK);
  });
  EXPECT_EQ(Settings.RecorderIpAddress, u"10.20..");
}

TEST_F(IpSetting, AnAddressOfAnotherShapeIsSplitAtItsDotsAsFarAsThereAreFields) {
  struct Row {
    std::u16string address;
    std::u16string first;
    std::u16string last;
  };
  for (const Row& row : std::initializer_list<Row>{
           {u"ERROR", u"ERROR", u""}, {u"", u"", u""}, {u"1.2.3.4.5", u"1", u"4"}, {u"...", u"", u""}}) {
    Settings.RecorderIpAddress = row.address;
    Show([&](IpSettingScreen& screen) {
      EXPECT_EQ(screen.txtIP(0).text, row.first);
      EXPECT_EQ(screen.txtIP(3).text, row.last);
    });
  }
}

TEST_F(IpSetting, OkTakesTheFieldsAndClosesTheScreen) {
  Show([&](IpSettingScreen& screen) {
    user.Type(screen.txtIP(0), u"172");
    user.Type(screen.txtIP(1), u"16");
    user.Type(screen.txtIP(2), u"0");
    user.Type(screen.txtIP(3), u"255");
    user.Type(screen.txtStationNo, u"0");
    EXPECT_TRUE(user.Click(screen.cmdOK));
    EXPECT_EQ(platform.screens.closed, std::vector<Screen*>{&screen});
  });
  EXPECT_EQ(Settings.RecorderIpAddress, u"172.16.0.255");
  EXPECT_EQ(Settings.StationSetting, 0);
}

TEST_F(IpSetting, ClosingItOtherwiseChangesNothing) {
  Show([&](IpSettingScreen& screen) { user.Type(screen.txtIP(0), u"172"); });
  EXPECT_EQ(Settings.RecorderIpAddress, u"192.168.1.1");
}

TEST_F(IpSetting, AnAddressPartIsANumberFrom0To255OfDigitsAlone) {
  for (const std::u16string_view good : {u"0", u"255", u"007", u"10"}) {
    Show([&](IpSettingScreen& screen) {
      user.Type(screen.txtIP(2), good);
      EXPECT_TRUE(user.Leave(screen.txtIP(2))) << ToUtf8(good);
    });
  }
  for (const std::u16string_view bad : {u"256", u"-1", u"1.5", u"+1", u"1e1", u" 1", u"abc", u"１ａ", u"＋１",
                                        u"２５６", u"", u"99999999999999999999999999", u"1,5"}) {
    Show([&](IpSettingScreen& screen) {
      user.Type(screen.txtIP(2), bad);
      ExpectRangeBox();
      EXPECT_FALSE(user.Leave(screen.txtIP(2))) << ToUtf8(bad);
      EXPECT_EQ(screen.txtIP(2).selStart, 0);
      EXPECT_EQ(screen.txtIP(2).selLength, static_cast<int>(bad.size()));
      EXPECT_TRUE(screen.txtIP(2).selectionPending);
    });
  }
}

TEST_F(IpSetting, AStationIsANumberFrom0To255WithoutPointAndComma) {
  for (const std::u16string_view good : {u"0", u"255", u"1", u" 7 "}) {
    Show([&](IpSettingScreen& screen) {
      user.Type(screen.txtStationNo, good);
      EXPECT_TRUE(user.Leave(screen.txtStationNo)) << ToUtf8(good);
    });
  }
  for (const std::u16string_view bad : {u"256", u"-1", u"1.0", u"1,0", u"abc", u"", u"1e9", u"1e999"}) {
    Show([&](IpSettingScreen& screen) {
      user.Type(screen.txtStationNo, bad);
      ExpectRangeBox();
      EXPECT_FALSE(user.Leave(screen.txtStationNo)) << ToUtf8(bad);
      EXPECT_EQ(screen.txtStationNo.selLength, static_cast<int>(bad.size()));
    });
  }
}

TEST_F(IpSetting, AClickOnOkWithABadFieldShowsOneMessageAndTakesNothing) {
  Show([&](IpSettingScreen& screen) {
    user.Type(screen.txtIP(3), u"300");
    ExpectRangeBox();
    EXPECT_FALSE(user.Click(screen.cmdOK));
  });
  EXPECT_EQ(Settings.RecorderIpAddress, u"192.168.1.1");
  EXPECT_TRUE(platform.screens.closed.empty());
}

TEST_F(IpSetting, AStationThatIsNoNumberKeepsTheOldOne) {
  Settings.StationSetting = 300; // from a file that was edited by hand; the field shows it
  Show([&](IpSettingScreen& screen) {
    EXPECT_EQ(screen.txtStationNo.text, u"300");
    user.Click(screen.cmdOK); // without the field having been left
  });
  EXPECT_EQ(Settings.StationSetting, 300);
}

TEST_F(IpSetting, FullWidthDigitsAreTakenAndShownAsPlainOnes) {
  Show([&](IpSettingScreen& screen) {
    const std::u16string_view typed[] = {u"１０", u"２０", u"３０", u"４０"};
    for (int part = 0; part < screen.txtIP.Count(); ++part) {
      user.Type(screen.txtIP(part), typed[part]);
    }
    user.Type(screen.txtStationNo, u"１７");
    EXPECT_EQ(screen.txtIP(3).text, u"40") << "shown as soon as it is left";
    user.Click(screen.cmdOK);
    EXPECT_EQ(screen.txtStationNo.text, u"17");
  });
  EXPECT_EQ(Settings.RecorderIpAddress, u"10.20.30.40");
  EXPECT_EQ(Settings.StationSetting, 17);
}

} // namespace
} // namespace loader::test
