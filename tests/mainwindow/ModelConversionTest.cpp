// A change of model on the window: the user's work goes along, and he stays where he was.

#include "tests/mainwindow/ReadingWindow.h"

namespace loader::test {
namespace {

class ModelConversion : public ReadingWindow {
protected:
  void ChangeTo(std::string_view model) {
    platform.ExpectBox(11016);
    ASSERT_TRUE(user.Choose(Window().cmbType, model == "KOV" ? 0 : 1));
    ASSERT_EQ(model, ModelCode);
  }
};

TEST_F(ModelConversion, CarriesASetUpThatWasRead) {
  recorder.PutText(44001 + 18 * 60, "SUM", 16); // tag of channel 19, the first operation channel
  recorder.Register(44001 + 14) = 8000;         // upper limit of channel 1
  recorder.Register(44001 + 9) = 19;            // its reset channel: channel 19
  recorder.Register(40761 + 8) = 30;            // first channel of group 1
  recorder.Register(43001 + 1) = 18;            // formula 1 of channel 19: channel 19
  recorder.PutText(40531, "STARTED", 32);       // message 1
  recorder.PutText(40321, "kg/m", 8);           // user unit 1
  platform.ExpectBox(20104);
  user.Click(Window().btnRegRead);
  ChangeTo("RUG");
  EXPECT_EQ("FURNACE", ChannelCell(1, 2));
  EXPECT_EQ("SUM", OperationCell(37, 2));
  EXPECT_EQ("STARTED", CellText(Window().fgrMess, 1, 1));
  EXPECT_EQ("kg/m", CellText(Window().fgrUnit, 1, 1));
  EXPECT_EQ(8000, Stored("C", 0, "MMAX"));
  EXPECT_EQ(37, Stored("C", 0, "SUBC"));
  EXPECT_EQ(48, Stored("G", 0, "GC01"));
  EXPECT_EQ(36, Stored("O", 0, "S111"));
  EXPECT_EQ("CH 20", ChannelCell(20, 2)) << "the new model's own";
  ChangeTo("KOV");
  EXPECT_EQ("FURNACE", ChannelCell(1, 2));
  EXPECT_EQ("SUM", OperationCell(19, 2));
  EXPECT_EQ(19, Stored("C", 0, "SUBC"));
  EXPECT_EQ(30, Stored("G", 0, "GC01"));
  EXPECT_EQ(18, Stored("O", 0, "S111"));
}

TEST_F(ModelConversion, ShowsNothingButItsQuestion) {
  Put("C", 0, "TAIS", 1); // is lost
  ChangeTo("RUG");
  EXPECT_EQ(1U, platform.boxes.shown.size());
}

TEST_F(ModelConversion, WithCancelChangesNothing) {
  PutText("C", 0, "TAG", "MINE");
  Put("C", 0, "SUBC", 19);
  const std::vector<std::int16_t> numbers = AllNumbers();
  const std::vector<std::u16string> texts = AllTexts();
  platform.ExpectBox(11016, BoxAnswer::Cancel);
  user.Choose(Window().cmbType, 1);
  EXPECT_EQ(numbers, AllNumbers());
  EXPECT_EQ(texts, AllTexts());
  EXPECT_TRUE(ParamStoreBackup.empty());
}

// A model number above the list is a RUG, and its list offers RUG once more: up again, by the same table.
TEST_F(ModelConversion, FromRugToRugRunsTheTableToRug) {
  platform.WriteFile("LOADER.INI", "[LOADER]\r\nTYPE=5\r\n");
  ASSERT_TRUE(Main([] {}));
  OpenMainWindow();
  PutText("C", 0, "TAG", "FIRST");
  PutText("C", 18, "TAG", "MOVES");
  platform.ExpectBox(11016);
  user.Choose(Window().cmbType, 1);
  EXPECT_EQ("FIRST", TrimmedText("C", 0, "TAG"));
  EXPECT_EQ("MOVES", TrimmedText("C", 36, "TAG"));
}

// --- The place

TEST_F(ModelConversion, KeepsThePageAndTheRowOfEachTable) {
  struct Place {
    Grid& grid;
    int row;
    int col;
  };
  const Place places[] = {{Window().fgrCh, 19, 7},    {Window().fgrOperationChSet, 13, 3},
                          {Window().fgrConst, 20, 1}, {Window().fgrGroup, 4, 5},
                          {Window().fgrMess, 10, 2},  {Window().fgrUnit, 12, 1}};
  user.ChoosePage(Window().tbsParameter, DisplayPage);
  for (const Place& place : places) {
    place.grid.SelectRow(place.row);
    place.grid.Col = place.col;
  }
  user.ChoosePage(Window().tbsParameter, MailPage);
  Window().flxEMailTriggerSetting.SelectRow(5);
  for (const char* model : {"RUG", "KOV"}) {
    ChangeTo(model);
    EXPECT_EQ(MailPage, Window().tbsParameter.current);
    EXPECT_EQ(5, Window().flxEMailTriggerSetting.RowSel);
    for (const Place& place : places) {
      EXPECT_EQ(place.row, place.grid.Row) << place.grid.name << " on " << model;
      EXPECT_EQ(place.row, place.grid.RowSel) << place.grid.name << " on " << model;
      EXPECT_EQ(place.col, place.grid.Col) << place.grid.name << " on " << model;
    }
  }
}

TEST_F(ModelConversion, GoesToTheLastRowOfATableThatHasBecomeShorter) {
  ChangeTo("RUG");
  Window().fgrCh.SelectRow(37);             // channel 36
  Window().fgrOperationChSet.SelectRow(37); // channel 72
  Window().fgrConst.SelectRow(60);
  Window().fgrGroup.SelectRow(8);
  ChangeTo("KOV");
  EXPECT_EQ(19, Window().fgrCh.Row); // channel 18
  EXPECT_EQ(19, Window().fgrCh.RowSel);
  EXPECT_EQ(13, Window().fgrOperationChSet.Row); // channel 30
  EXPECT_EQ(20, Window().fgrConst.Row);
  EXPECT_EQ(4, Window().fgrGroup.Row);
}

} // namespace
} // namespace loader::test
