#include "mainwindow/Overhearing.h"

#include "core/Text.h"
#include "platform/Platform.h"

namespace loader {

namespace {

class Ear final : public MessageBoxes, public FileDialogs, public EventLoop {
public:
  Ear(Platform& platform, Overheard& heard) : platform_(platform), heard_(heard) {}

  BoxAnswer Show(std::u16string_view text, BoxButtons buttons, BoxIcon icon,
                 std::u16string_view title) override {
    const bool own = away_ == 0;
    const Away away(*this);
    const BoxAnswer answer = platform_.boxes.Show(text, buttons, icon, title);
    if (own && buttons == BoxButtons::Ok) {
      heard_.messages.emplace_back(text);
    }
    return Answered(own, answer);
  }
  BoxAnswer AskBeforeLoss(std::u16string_view text) override {
    const bool own = away_ == 0;
    const Away away(*this);
    return Answered(own, platform_.boxes.AskBeforeLoss(text));
  }
  long ShowOpen(CommonDialog& dialog) override { return Choose(&FileDialogs::ShowOpen, dialog); }
  long ShowSave(CommonDialog& dialog) override { return Choose(&FileDialogs::ShowSave, dialog); }
  void DoEvents() override {
    const Away away(*this);
    platform_.eventLoop.DoEvents();
  }

private:
  // While something else than the action may run.
  struct Away {
    explicit Away(Ear& owner) : ear(owner) { ++ear.away_; }
    ~Away() { --ear.away_; }
    Away(const Away&) = delete;
    Away& operator=(const Away&) = delete;
    Ear& ear;
  };
  BoxAnswer Answered(bool own, BoxAnswer answer) {
    heard_.declined |= own && answer == BoxAnswer::Cancel;
    return answer;
  }
  long Choose(long (FileDialogs::*show)(CommonDialog&), CommonDialog& dialog) {
    const bool own = away_ == 0;
    const Away away(*this);
    const long result = (platform_.fileDialogs.*show)(dialog);
    if (own && result == 0) {
      heard_.fileTitle = dialog.FileTitle;
      heard_.file = PathOf(dialog.FileName);
    }
    heard_.declined |= own && result != 0;
    return result;
  }

  Platform& platform_;
  Overheard& heard_;
  int away_ = 0;
};

} // namespace

void Overhear(Overheard& heard, const std::function<void()>& action) {
  Platform& platform = ThePlatform();
  Ear ear(platform, heard);
  Platform listening = WithParts(platform, {.boxes = &ear, .fileDialogs = &ear, .eventLoop = &ear});
  struct Ends {
    Platform* before;
    ~Ends() { SetPlatform(before); }
  } const ends{SetPlatform(&listening)};
  action();
}

} // namespace loader
