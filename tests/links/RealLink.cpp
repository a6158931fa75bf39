#include "tests/links/RealLink.h"

#include <fstream>

#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "tests/support/MemoryDump.h"

namespace loader::test {

void ShortenedTimers::Changed(Timer& timer) {
  if (timer.Enabled && timer.Interval > longest) {
    asked.push_back(timer.Interval);
  }
  std::unique_ptr<Timer>& standIn = stand_ins_[&timer];
  if (standIn == nullptr) {
    standIn = std::make_unique<Timer>();
    standIn->onTimer = [&timer] {
      if (timer.onTimer) {
        timer.onTimer();
      }
    };
  }
  standIn->Interval = std::min(timer.Interval, longest);
  standIn->Enabled = timer.Enabled;
  real_.Changed(*standIn);
  if (!timer.Enabled) {
    stand_ins_.erase(&timer);
  }
}

RealLink::RealLink() {
  ResetLink();
  std::filesystem::copy_file(std::filesystem::path(LOADER_DATA_DIR) / "InitSet.Ini",
                             Folder() / "InitSet.Ini");
  SetPlatform(&platform);
}

RealLink::~RealLink() {
  boxes.ExpectNoneLeft();
  StopTimer(WaitTimer);
}

void RealLink::StartRecorder(std::string_view model, std::string_view version,
                             std::vector<std::string> more) {
  std::vector<std::string> arguments{"--model",    std::string(model),
                                     "--firmware", std::string(version),
                                     "--station",  "1",
                                     "--pattern",  "A55A",
                                     "--shape",    LOADER_DATA_DIR "/InitSet.Ini",
                                     "--dump",     DumpFile(),
                                     "--tcp",      "127.0.0.1:0",
                                     "--rtu",      Folder() / "COM1",
                                     "--rtu",      Folder() / "USB"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  constexpr int Plugs = 3;
  recorder = std::make_unique<simulator::RunningSimulator>(std::move(arguments), Plugs);
  tcpPort = recorder->Port();
}

std::map<int, int> RealLink::EndRecorder() {
  EXPECT_EQ(recorder->Stop(Terminate).status, 0);
  return ReadMemoryDump(DumpFile());
}

void RealLink::StartLoader(std::string_view model, Line line) {
  std::ofstream(Folder() / "LOADER.INI", std::ios::binary)
      << "[LOADER]\r\nTYPE=" << (model == "RUG" ? 1 : 0) << "\r\n";
  bool shown = false;
  ASSERT_TRUE(Main([&] { shown = true; }));
  ASSERT_TRUE(shown);
  ASSERT_EQ(std::string(model), ModelCode);
  Configure(line);
  Settings.ComPortIndex = 0;
  Settings.RecorderIpAddress = u"127.0.0.1";
}

void RealLink::Read() {
  ExpectBox(20104);
  ReadFromRecorder(window);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "refresh", "enabled"}));
  ExpectFreeWindow();
}

void RealLink::Write() {
  ExpectBox(20106);
  ExpectBox(62701);
  WriteToRecorder(window);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "enabled"}));
  ExpectFreeWindow();
}

void RealLink::ExpectFreeWindow() const {
  ASSERT_FALSE(log.steps.empty());
  EXPECT_EQ(log.steps.back(), "enabled");
  EXPECT_EQ(qt.socket.State(), 0);
  EXPECT_FALSE(qt.serial.PortOpen());
  EXPECT_FALSE(WaitTimer.Enabled);
}

} // namespace loader::test
