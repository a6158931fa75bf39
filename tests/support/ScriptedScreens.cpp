#include "tests/support/ScriptedScreens.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>

#include "core/Text.h"

namespace loader::test {

namespace {
ScriptedScreens* inForce = nullptr;
} // namespace

ScriptedScreens::ScriptedScreens() : before_(std::exchange(inForce, this)) {}

ScriptedScreens::~ScriptedScreens() {
  inForce = before_;
}

ScriptedScreens& ScriptedScreens::InForce() {
  if (inForce == nullptr) {
    throw std::logic_error("no scripted platform is in force");
  }
  return *inForce;
}

void ScriptedScreens::Show(Screen& screen) {
  focused_.erase(&screen); // one of that address may have gone before
  shown.push_back(&screen);
}

void ScriptedScreens::ShowModal(Screen& screen) {
  if (programEnded) {
    return;
  }
  const bool openAlready = std::any_of(modals_.begin(), modals_.end(),
                                       [&](const Modal& modal) { return modal.screen == &screen; });
  if (openAlready) {
    ADD_FAILURE() << screen.name << " is open already";
    return;
  }
  shownModally.push_back(screen.name);
  focused_.erase(&screen);
  modals_.push_back({&screen, true});
  const auto gone = [&] {
    focused_.erase(&screen);
    modals_.pop_back();
  };
  try {
    RunScript(screen);
  } catch (...) {
    gone();
    throw;
  }
  gone();
}

void ScriptedScreens::RunScript(Screen& screen) {
  if (expected_.empty()) {
    ADD_FAILURE() << "a modal screen that nobody expected: " << screen.name;
    return;
  }
  const Expected next = std::move(expected_.front());
  expected_.pop_front();
  if (next.name != screen.name) {
    ADD_FAILURE() << "the modal screen " << screen.name << " in place of " << next.name;
    return;
  }
  if (next.act) {
    next.act(screen);
  }
  const bool stays = !programEnded && modals_.back().open && !CloseByQuery(screen);
  if (stays) {
    ADD_FAILURE() << screen.name << " does not let itself be closed";
  }
}

bool ScriptedScreens::CloseByQuery(Screen& screen) {
  if (screen.onCloseQuery && !screen.onCloseQuery()) {
    return false;
  }
  focused_.erase(&screen);
  const auto modal =
      std::find_if(modals_.begin(), modals_.end(), [&](const Modal& some) { return some.screen == &screen; });
  if (modal != modals_.end()) {
    modal->open = false;
  }
  return true;
}

void ScriptedScreens::Close(Screen& screen) {
  if (CloseByQuery(screen)) {
    closed.push_back(&screen);
  }
}

double ScriptedScreens::TextWidth(std::u16string_view text) {
  return 100.0 * static_cast<double>(CodePageLength(text));
}

void ScriptedScreens::Expect(std::string_view name, std::function<void(Screen&)> act) {
  expected_.push_back({std::string(name), std::move(act)});
}

void ScriptedScreens::ExpectNoneLeft() {
  for (const Expected& missing : expected_) {
    ADD_FAILURE() << "a modal screen that did not come: " << missing.name;
  }
  expected_.clear();
}

Screen* ScriptedScreens::FrontModal() const {
  return modals_.empty() || !modals_.back().open ? nullptr : modals_.back().screen;
}

bool ScriptedScreens::Reachable(const Screen& screen) const {
  return modals_.empty() || (modals_.back().screen == &screen && modals_.back().open);
}

TextField* ScriptedScreens::FocusedField(const Screen& screen) const {
  const auto focused = focused_.find(&screen);
  return focused == focused_.end() ? nullptr : focused->second;
}

void ScriptedScreens::SetFocusedField(const Screen& screen, TextField* field) {
  if (field == nullptr) {
    focused_.erase(&screen);
  } else {
    focused_[&screen] = field;
  }
}

} // namespace loader::test
