// A window with a recorder on its line, for what may and may not be done while it is read.
#pragma once

#include "tests/comm/CommFixture.h"
#include "tests/mainwindow/Fixture.h"

namespace loader::test {

class ReadingWindow : public MainWindow {
protected:
  void SetUp() override {
    ResetLink();
    Open("KOV");
    Settings.ConfiguredLink = 1;
    recorder.PutIdentity("KOV", "V50A");
    recorder.PutText(44001, "FURNACE", 16); // tag of channel 1
  }
  ScriptedRecorder recorder{platform};
};

} // namespace loader::test
