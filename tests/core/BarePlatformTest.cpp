#include "platform/BarePlatform.h"

#include <ctime>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/TextTable.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "platform/RunTimeFailure.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::test {
namespace {

using Lines = std::vector<std::u16string>;

TEST(BarePlatform, MakesALineOfABox) {
  BarePlatform bare;
  Lines lines;
  bare.boxes.sink = [&](const std::u16string& line) { lines.push_back(line); };
  ShowMessage(u"plain");
  ShowMessage(u"\r\ntwo\r\nlines\n\n", BoxIcon::Exclamation);
  ShowMessage(u"");
  EXPECT_EQ(lines, (Lines{u"plain", u"two lines", u""}));
  EXPECT_EQ(bare.boxes.shown, (Lines{u"plain", u"\r\ntwo\r\nlines\n\n", u""}));
}

TEST(BarePlatform, AnswersAQuestionWithCancelUnlessToldOtherwise) {
  BarePlatform bare;
  EXPECT_FALSE(AskOkCancel(u"read?"));
  EXPECT_FALSE(AskBeforeLoss(u"throw away?"));
  bare.boxes.answer = BoxAnswer::Ok;
  EXPECT_TRUE(AskOkCancel(u"read?"));
  EXPECT_TRUE(AskBeforeLoss(u"throw away?"));
  EXPECT_EQ(bare.boxes.Count(), 4);
}

TEST(BarePlatform, HasNoFileDialogsAndNoScreens) {
  BarePlatform bare;
  CommonDialog dialog;
  dialog.FileName = u"before";
  EXPECT_EQ(ThePlatform().fileDialogs.ShowOpen(dialog), FileDialogCancelled);
  EXPECT_EQ(ThePlatform().fileDialogs.ShowSave(dialog), FileDialogCancelled);
  EXPECT_EQ(dialog.FileName, u"before");
  Screen screen("frmNone");
  bool asked = false;
  screen.onCloseQuery = [&] { return asked = true; };
  ThePlatform().screens.Show(screen);
  ThePlatform().screens.ShowModal(screen);
  ThePlatform().screens.Close(screen);
  EXPECT_FALSE(asked);
  EXPECT_FALSE(bare.screens.programEnded);
  ThePlatform().screens.EndProgram();
  EXPECT_TRUE(bare.screens.programEnded);
  EXPECT_LT(MeasureTextWidth(u"ab"), MeasureTextWidth(u"abc"));
}

TEST(BarePlatform, WaitsForNothing) {
  const BarePlatform bare;
  Timer timer;
  timer.onTimer = [] { FAIL() << "a timer ran"; };
  StartTimer(timer, 1);
  EXPECT_THROW(DoEvents(), std::logic_error);
  StopTimer(timer);
}

TEST(BarePlatform, HasNoDevices) {
  const BarePlatform bare;
  Platform& platform = ThePlatform();
  const Bytes bytes{1};
  EXPECT_THROW(platform.MSComm1.SetPortOpen(true), RunTimeFailure);
  EXPECT_NO_THROW(platform.MSComm1.SetPortOpen(false));
  EXPECT_FALSE(platform.MSComm1.PortOpen());
  EXPECT_THROW(platform.MSComm1.Output(bytes), RunTimeFailure);
  EXPECT_THROW((void)platform.MSComm1.InBufferCount(), RunTimeFailure);
  EXPECT_THROW((void)platform.MSComm1.Input(), RunTimeFailure);
  EXPECT_THROW(platform.winSock.Connect(), RunTimeFailure);
  EXPECT_THROW(platform.winSock.SendData(bytes), RunTimeFailure);
  EXPECT_EQ(platform.winSock.State(), 0);
  EXPECT_EQ(platform.winSock.BytesReceived(), 0);
  EXPECT_TRUE(platform.winSock.GetData().empty());
  EXPECT_NO_THROW(platform.winSock.Close());
  std::int32_t handle = platform.USBOCX1.Open(0);
  std::vector<std::int32_t> words(1);
  EXPECT_EQ(handle, -1);
  EXPECT_EQ(platform.USBOCX1.Read(handle, words, 1, 0), 0);
  EXPECT_EQ(platform.USBOCX1.Write(handle, words, 1, 0), 0);
}

TEST(BarePlatform, TellsTheTimeOfTheSystem) {
  const BarePlatform bare;
  const std::time_t before = std::time(nullptr);
  const DateAndTime now = ThePlatform().clock.Now();
  const float seconds = ThePlatform().clock.SecondsSinceMidnight();
  std::tm told{};
  told.tm_year = now.year - 1900;
  told.tm_mon = now.month - 1;
  told.tm_mday = now.day;
  told.tm_hour = now.hour;
  told.tm_min = now.minute;
  told.tm_sec = now.second;
  told.tm_isdst = -1;
  constexpr double Patience = 5;
  EXPECT_NEAR(std::difftime(std::mktime(&told), before), 0, Patience);
  const double sinceMidnight = now.hour * 3600.0 + now.minute * 60.0 + now.second;
  if (now.hour > 0) { // else midnight may lie between the two
    EXPECT_NEAR(static_cast<double>(seconds), sinceMidnight, Patience);
  }
}

TEST(BarePlatform, TakesWhatItIsGiven) {
  struct Loop final : EventLoop {
    void DoEvents() override { ++waits; }
    int waits = 0;
  };
  Loop loop;
  BarePlatform bare({.eventLoop = &loop, .programFolder = "/program"});
  DoEvents();
  EXPECT_EQ(loop.waits, 1);
  EXPECT_EQ(ThePlatform().programFolder, "/program");
  ShowMessage(u"still its own");
  EXPECT_EQ(bare.boxes.Count(), 1);
}

TEST(BarePlatform, GivesTheOneBeforeBack) {
  BarePlatform outer;
  {
    BarePlatform inner;
    ShowMessage(u"inner");
    EXPECT_EQ(inner.boxes.Count(), 1);
  }
  ShowMessage(u"outer");
  EXPECT_EQ(outer.boxes.shown, (Lines{u"outer"}));
}

TEST(BarePlatform, GoneLeavesNone) {
  { const BarePlatform bare; }
  EXPECT_THROW((void)ThePlatform(), std::logic_error);
}

// The logic starts on it as it does on any other: what fails is told and ends nothing but the call.
TEST(BarePlatform, IsEnoughToStartTheLogic) {
  const TemporaryFolder folder("loader-bare-");
  BarePlatform bare({.programFolder = folder.Path()});
  EXPECT_FALSE(Main([] { FAIL() << "there is no InitSet.Ini"; }));
  EXPECT_FALSE(RebuildStoreOrEnd());
  EXPECT_EQ(bare.boxes.shown, (Lines(2, std::u16string(LoadText(11005)))));
  EXPECT_TRUE(bare.screens.programEnded);
  std::filesystem::copy_file(std::filesystem::path(LOADER_DATA_DIR) / "InitSet.Ini",
                             folder.Path() / "InitSet.Ini");
  bool started = false;
  EXPECT_TRUE(Main([&] { started = true; }));
  EXPECT_TRUE(started);
  EXPECT_EQ(bare.boxes.Count(), 2);
}

} // namespace
} // namespace loader::test
