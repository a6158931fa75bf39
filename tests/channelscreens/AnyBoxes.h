// Message boxes for a user who does as the dice fall: any may come at any time.
#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "platform/Platform.h"

namespace loader::test {

// In force, in place of the boxes of the scripted platform, from its making to its end.
class AnyBoxes final : public MessageBoxes {
public:
  explicit AnyBoxes(std::function<BoxAnswer()> answers = [] { return BoxAnswer::Ok; })
      : answer_(std::move(answers)), before_(ThePlatform()),
        mine_{*this,         before_.fileDialogs, before_.screens, before_.timers,  before_.eventLoop,
              before_.clock, before_.MSComm1,     before_.winSock, before_.USBOCX1, before_.programFolder} {
    SetPlatform(&mine_);
  }
  ~AnyBoxes() override { SetPlatform(&before_); }
  AnyBoxes(const AnyBoxes&) = delete;
  AnyBoxes& operator=(const AnyBoxes&) = delete;

  BoxAnswer Show(std::u16string_view /*text*/, BoxButtons /*buttons*/, BoxIcon /*icon*/,
                 std::u16string_view /*title*/) override {
    ++shown;
    return answer_();
  }

  int shown = 0; // how many have come

private:
  std::function<BoxAnswer()> answer_;
  Platform& before_;
  Platform mine_;
};

} // namespace loader::test
