// What a flow of the main window needs of the window, and the frame that every flow runs in.
#pragma once

#include <functional>
#include <utility>

namespace loader {

// Empty functions are passed over.
struct FlowCallbacks {
  // The controls of this flow: which ones they are is the window's knowledge.
  std::function<void(bool enabled)> setControlsEnabled;
  // The status lamp: a timer of 50 ms that blinks it.
  std::function<void(bool on)> setLamp;
  // Every page is to be shown anew from the store.
  std::function<void()> refresh;
};

// Runs a flow unless one is on its way. The flag stands meanwhile, and falls when a failure passes through
// too.
template <typename Flow> void RunAlone(bool& underWay, const Flow& flow) {
  if (std::exchange(underWay, true)) {
    return;
  }
  struct Reset {
    bool& flag;
    ~Reset() { flag = false; }
  } const reset{underWay};
  flow();
}

// From a link that stands to its end: the controls are disabled and the lamp blinks. Each flow ends the three
// things in its own order; what it has not ended itself, because a failure passed through, ends with the
// frame.
class FlowFrame {
public:
  explicit FlowFrame(const FlowCallbacks& callbacks);
  ~FlowFrame();
  FlowFrame(const FlowFrame&) = delete;
  FlowFrame& operator=(const FlowFrame&) = delete;

  void CloseLink();
  void StopLamp();
  void EnableControls();

private:
  const FlowCallbacks& callbacks_;
  bool linkOpen_ = true;
  bool lampOn_ = true;
  bool controlsDisabled_ = true;
};

} // namespace loader
