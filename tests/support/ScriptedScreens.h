// The screens of the scripted platform: which are open, which one is in front, and where the keyboard is in
// each.
//
// A modal screen that a test did not expect fails it, and so does one that it expected and did not get; they
// are expected in the order in which they come, as boxes are. While it is shown, the script of the test acts
// on it, and may open further ones from it.
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

namespace loader::test {

class ScriptedScreens final : public Screens {
public:
  ScriptedScreens();
  ~ScriptedScreens() override;
  ScriptedScreens(const ScriptedScreens&) = delete;
  ScriptedScreens& operator=(const ScriptedScreens&) = delete;
  // Those of the scripted platform in force; std::logic_error without one.
  [[nodiscard]] static ScriptedScreens& InForce();

  void Show(Screen& screen) override;
  // A screen that is still open when its script has ended is closed then by the cross of its window, through
  // its close query; one that does not let itself be closed fails the test, for the program would wait there
  // for ever.
  void ShowModal(Screen& screen) override;
  void Close(Screen& screen) override;
  void EndProgram() override { programEnded = true; }
  bool ShowDocument(const std::filesystem::path& file) override {
    documents.push_back(file);
    return hasViewer;
  }
  // A half-width character is 100 twips wide, a full-width one 200.
  double TextWidth(std::u16string_view text) override;

  // The next modal screen has to be this one; `act` is what the user does with it.
  void Expect(std::string_view name, std::function<void(Screen&)> act = {});
  // The same where `act` knows the screen's own record.
  template <typename ScreenType, typename Act> void Expect(std::string_view name, Act act) {
    Expect(name,
           std::function<void(Screen&)>([act](Screen& screen) { act(static_cast<ScreenType&>(screen)); }));
  }
  // Fails the test for every screen that was expected and did not come.
  void ExpectNoneLeft();

  // The modal screen that the user has before him; null where there is none.
  [[nodiscard]] Screen* FrontModal() const;
  // Whether the user can reach the controls of the screen: not behind a modal one, and not after it closed.
  [[nodiscard]] bool Reachable(const Screen& screen) const;
  // The field of the screen that has the keyboard; null: none has it. A screen forgets it when it closes.
  [[nodiscard]] TextField* FocusedField(const Screen& screen) const;
  void SetFocusedField(const Screen& screen, TextField* field);

  std::vector<Screen*> shown;
  std::vector<std::string> shownModally; // names, in the order of opening
  // What the program or the user of the test closed. Their records may be gone: compare, do not use.
  std::vector<Screen*> closed;
  bool programEnded = false;
  std::vector<std::filesystem::path> documents; // that were to be shown
  bool hasViewer = true;
  // What the user's last Return has found good, and what the last check has refused; neither has been edited
  // since. To be compared, not used.
  const TextField* takenByReturn = nullptr;
  const TextField* refused = nullptr;

private:
  struct Expected {
    std::string name;
    std::function<void(Screen&)> act;
  };
  struct Modal {
    Screen* screen;
    bool open;
  };
  // Through the close query; false when it keeps the screen open.
  bool CloseByQuery(Screen& screen);
  void RunScript(Screen& screen);

  std::deque<Expected> expected_;
  std::vector<Modal> modals_; // innermost last
  std::map<const Screen*, TextField*> focused_;
  ScriptedScreens* before_;
};

} // namespace loader::test
