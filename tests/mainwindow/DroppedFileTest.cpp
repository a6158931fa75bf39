// A parameter file that is dragged onto the window: opened as "開く" does, behind a question, and not during
// an exchange.
#include "core/OwnTexts.h"
#include "tests/mainwindow/ReadingWindow.h"

namespace loader::test {
namespace {

constexpr std::u16string_view Question =
    u"BOILER.KOV を開きますか？\n画面の設定はファイルの内容に置き換わります。";

class DroppedFile : public ReadingWindow {
protected:
  void SetUp() override {
    ReadingWindow::SetUp();
    platform.WriteFile("BOILER.KOV", "LOADER ,V210\r\nC00TAG ,BOILER\r\n");
    PutText("C", 1, "TAG", "MINE");
  }
  void Drop(std::string_view name) const { Window().onFileDropped(platform.folder / name); }
};

TEST_F(DroppedFile, ReplacesTheSetUpBehindAQuestion) {
  platform.boxes.Expect(Question);
  Drop("BOILER.KOV");
  EXPECT_EQ("BOILER", ChannelCell(1, 2));
  EXPECT_EQ("CH 02", ChannelCell(2, 2)) << "what the file does not name has its default";
  EXPECT_EQ(u"12:00 開く BOILER.KOV", Window().statusDone.caption);
  EXPECT_TRUE(platform.fileDialogs.shown.empty());
}

TEST_F(DroppedFile, ReplacesNothingWithoutAClick) {
  platform.boxes.Expect(Question, BoxAnswer::Cancel);
  Drop("BOILER.KOV");
  EXPECT_EQ(Padded64("MINE"), StoredText("C", 1, "TAG"));
  EXPECT_EQ(Padded64("CH 01"), StoredText("C", 0, "TAG"));
  EXPECT_EQ(u"", Window().statusDone.caption);
}

TEST_F(DroppedFile, ThatDoesNotLoadLeavesTheDefaultsAsOpenDoes) {
  platform.WriteFile("bad.KOV", "no comma\r\n");
  platform.boxes.Expect(Replace(OwnText(OwnTextId::OpenDroppedFile), u"@FILE@", u"bad.KOV"));
  platform.ExpectBox(11003);
  Drop("bad.KOV");
  EXPECT_EQ(Padded64("CH 02"), StoredText("C", 1, "TAG"));
  EXPECT_EQ(u"12:00 開く bad.KOV 失敗: 読み込みに失敗しました", Window().statusDone.caption);
}

// A file of the other model is opened without a word, as one whose name is typed in the dialog.
TEST_F(DroppedFile, OfTheOtherModelIsWhatOpenMakesOfIt) {
  platform.WriteFile("OTHER.RUG", "LOADER ,V210\r\nC00TAG ,OTHER\r\n");
  platform.boxes.Expect(Replace(OwnText(OwnTextId::OpenDroppedFile), u"@FILE@", u"OTHER.RUG"));
  Drop("OTHER.RUG");
  EXPECT_EQ("OTHER", ChannelCell(1, 2));
  EXPECT_EQ("KOV", ModelCode);
}

TEST_F(DroppedFile, IsNotTakenDuringAnExchange) {
  EXPECT_TRUE(Window().mayTakeFile());
  bool tried = false;
  platform.time.After(3, [&] {
    tried = ExchangeUnderWay(Window());
    EXPECT_FALSE(Window().mayTakeFile());
    Drop("BOILER.KOV"); // no question
  });
  platform.ExpectBox(20104);
  user.Click(Window().btnRegRead);
  EXPECT_TRUE(tried);
  EXPECT_EQ("FURNACE", ChannelCell(1, 2));
  EXPECT_TRUE(Window().mayTakeFile());
}

} // namespace
} // namespace loader::test
