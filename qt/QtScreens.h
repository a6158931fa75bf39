// Shows screens: makes the form of a screen, binds it, and closes it through the screen's close query.
#pragma once

#include <QDropEvent>
#include <QEventLoop>
#include <QObject>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "qt/Binder.h"
#include "qt/Forms.h"

namespace loader {

class FrontWindow;
class UserInterface;

class QtScreens final : public QObject, public Screens {
public:
  QtScreens(UserInterface& userInterface, FormMaker makeForm);
  ~QtScreens() override;

  void Show(Screen& screen) override;
  void ShowModal(Screen& screen) override;
  void Close(Screen& screen) override;
  void EndProgram() override;
  bool ShowDocument(const std::filesystem::path& file) override;
  [[nodiscard]] double TextWidth(std::u16string_view text) override;

  // Runs `start` and then the event loop, until the last screen has closed or EndProgram was called.
  int Run(const std::function<void()>& start);
  // The window of an open screen; null when it isn't open.
  [[nodiscard]] QWidget* WindowOf(const Screen& screen) const;
  // Names of records that found no widget, of all screens whose every page was shown: "frmSample.cmbKind".
  [[nodiscard]] const std::vector<std::string>& MissingWidgets() const { return missing_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  struct OpenScreen {
    Screen& screen;
    std::unique_ptr<QWidget> window;
    std::unique_ptr<Binder> binder;
    std::unique_ptr<QEventLoop> loop; // of a modal screen
    bool askingToClose = false;
    bool fitted = false; // to its screen, since it stands
  };
  // Modal over the window in front; null: on its own.
  OpenScreen& Open(Screen& screen, const FrontWindow* front);
  bool MayClose(OpenScreen& open);
  void Closed(OpenScreen& open);
  [[nodiscard]] OpenScreen* Find(const Screen& screen) const;
  // A file that is dragged over the window, or dropped on it.
  void Drag(const OpenScreen& open, QDropEvent& event);

  UserInterface& userInterface_;
  FormMaker makeForm_;
  std::vector<std::unique_ptr<OpenScreen>> open_;
  // Closed screens whose handlers may still be running; freed when the next screen opens.
  std::vector<std::unique_ptr<OpenScreen>> closed_;
  std::vector<std::string> missing_;
  bool running_ = false; // inside Run's event loop
  bool ended_ = false;
};

} // namespace loader
