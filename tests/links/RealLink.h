// The loader's flows on the real devices, against a recorder of its own process.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/TextTable.h"
#include "tests/comm/CommFixture.h"
#include "tests/comm/ExpectedMemory.h"
#include "tests/simulator/RunningSimulator.h"
#ifdef LINKS_WITHOUT_WINDOW
#include "devices/DevicePlatform.h"
#else
#include "qt/QtPlatform.h"
#endif

namespace loader::test {

// The system's timers with long waits made short, so that a test of a time-out does not take the five seconds
// that it takes the user.
class ShortenedTimers final : public Timers {
public:
  explicit ShortenedTimers(Timers& real) : real_(real) {}
  void Changed(Timer& timer) override;

  int longest = WaitMilliseconds;
  std::vector<int> asked; // the intervals that the program wanted to be longer than that

private:
  Timers& real_;
  std::map<Timer*, std::unique_ptr<Timer>> stand_ins_;
};

// All of it is tried on both: the platform of a program without a window and that of the window.
#ifdef LINKS_WITHOUT_WINDOW
using LinkPlatform = DevicePlatform;
#else
using LinkPlatform = QtPlatform;
#endif

// A fresh program folder, the devices in Qt, expected boxes.
class RealLink : public testing::Test {
protected:
  RealLink();
  ~RealLink() override;

  [[nodiscard]] std::filesystem::path Folder() const { return folder_.path().toStdString(); }
  [[nodiscard]] std::filesystem::path DumpFile() const { return Folder() / "dump.txt"; }

  // A recorder with a plug for each link, at station 1, which tells its memory at its end.
  void StartRecorder(std::string_view model, std::string_view version, std::vector<std::string> more = {});
  // Ends it and reads what it held: register number to value, both tables.
  [[nodiscard]] std::map<int, int> EndRecorder();
  // Main, without a window; the link is chosen as the menu chooses it.
  void StartLoader(std::string_view model, Line line);

  void ExpectBox(int textId) { boxes.Expect(LoadText(TextId::At(textId))); }
  // Whole flows that go well.
  void Read();
  void Write();
  // What a flow leaves behind, whatever became of it: no open link, a window that is free again.
  void ExpectFreeWindow() const;

private:
  QTemporaryDir folder_;

protected:
  int tcpPort = 0;
  LinkPlatform qt{{.programFolder = Folder(), .portMap = [this](int asked) {
                     EXPECT_EQ(asked, 502);
                     return tcpPort;
                   }}};
  ScriptedBoxes boxes;
  ShortenedTimers timers{qt.timers};
  Platform platform = WithParts(qt.platform, {.boxes = &boxes, .timers = &timers});
  FlowLog log;
  FlowCallbacks window = log.Callbacks();
  std::unique_ptr<simulator::RunningSimulator> recorder;
};

// The generation of a version tag at the upper end of its range, and of the newest ones as they are sold.
inline const std::array<Generation, 8>& SoldGenerations() {
  static const std::array<Generation, 8> sold = [] {
    constexpr std::array<const char*, 8> Tags{"V05A", "V13A", "V17A", "V26A", "V39A", "V40A", "V09W", "V12W"};
    std::array<Generation, 8> generations = Generations;
    for (std::size_t i = 0; i < Tags.size(); ++i) {
      generations[i].version = Tags[i];
    }
    return generations;
  }();
  return sold;
}

} // namespace loader::test
