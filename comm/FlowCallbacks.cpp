#include "comm/FlowCallbacks.h"

#include <utility>

#include "comm/modComunication.h"

namespace loader {

FlowFrame::FlowFrame(const FlowCallbacks& callbacks) : callbacks_(callbacks) {
  if (callbacks_.setControlsEnabled) {
    callbacks_.setControlsEnabled(false);
  }
  if (callbacks_.setLamp) {
    callbacks_.setLamp(true);
  }
}

FlowFrame::~FlowFrame() {
  CloseLink();
  StopLamp();
  EnableControls();
}

void FlowFrame::CloseLink() {
  if (std::exchange(linkOpen_, false)) {
    gFLinkClose();
  }
}

void FlowFrame::StopLamp() {
  if (std::exchange(lampOn_, false) && callbacks_.setLamp) {
    callbacks_.setLamp(false);
  }
}

void FlowFrame::EnableControls() {
  if (std::exchange(controlsDisabled_, false) && callbacks_.setControlsEnabled) {
    callbacks_.setControlsEnabled(true);
  }
}

} // namespace loader
