// What the link tests share: a scripted platform with a recorder on its wires and a fresh store.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "comm/FlowCallbacks.h"
#include "comm/RecorderCheck.h"
#include "comm/modComunication.h"
#include "comm/modUsb.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "tests/comm/ScriptedRecorder.h"
#include "tests/support/Store.h"

namespace loader::test {

// Puts the link layer back to its start.
inline void ResetLink() {
  CommLink = CommLinkRecord{};
  StopTimer(WaitTimer);
  RecorderGeneration = 0;
  UsbHandle = NoUsbHandle;
  UsbSendWords.fill(0);
  UsbRecvWords.fill(0);
}

inline void Configure(Line line) {
  Settings.ConfiguredLink = static_cast<std::int16_t>(line);
  Settings.StationSetting = 1;
}

struct LinkFixture : ::testing::Test {
  LinkFixture() { ResetLink(); }
  ScriptedPlatform platform;

  // A link without the recorder: the test answers itself.
  void OpenLink(Line line) {
    Configure(line);
    ASSERT_TRUE(gFLinkOpen());
  }
  ScriptedWire& WireOf(Line line) {
    return line == Line::Usb        ? platform.usb.wire
           : line == Line::Ethernet ? platform.socket.wire
                                    : platform.serial.wire;
  }
};

// What a flow does to the window, in its order.
struct FlowLog {
  std::vector<std::string> steps;
  FlowCallbacks Callbacks() {
    return {.setControlsEnabled = [this](bool on) { steps.emplace_back(on ? "enabled" : "disabled"); },
            .setLamp = [this](bool on) { steps.emplace_back(on ? "lamp on" : "lamp off"); },
            .refresh = [this] { steps.emplace_back("refresh"); }};
  }
};

struct RecorderFixture : LinkFixture {
  ScriptedRecorder recorder{platform};
  FlowLog log;
  FlowCallbacks window = log.Callbacks();

  void Start(std::string_view model, std::string_view version) {
    StartWithModel(platform, model);
    recorder.PutIdentity(model, version);
  }
};

} // namespace loader::test
