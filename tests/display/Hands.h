// The mouse and the keyboard of the display, as a user's hands move them. What they do goes through the
// display server and the window manager, which decide which window is active: where the keyboard is after a
// box can be judged in no other way.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QString>
#include <QWidget>
#include <functional>
#include <map>
#include <string_view>

struct xcb_connection_t;

namespace loader::test {

// The keys that have no character, by the display's numbers for them.
enum class Key : unsigned {
  Tab = 0xff09,
  Return = 0xff0d,
  Escape = 0xff1b,
  Home = 0xff50,
  Left = 0xff51,
  Up = 0xff52,
  Right = 0xff53,
  Down = 0xff54,
  End = 0xff57,
  F3 = 0xffc0,
  F5 = 0xffc2,
  F9 = 0xffc6,
};

class Hands final : public QAbstractNativeEventFilter {
public:
  // std::runtime_error where the display takes no such input.
  Hands();
  ~Hands() override;

  // True as soon as the window is the one that the keys go to, by the window manager's word and the
  // program's: each changes its mind while a box comes and goes, and a key pressed meanwhile is lost.
  [[nodiscard]] bool BecomesActive(const QWidget& window);

  // Each of these returns when the program has received what was done, and fails the test when it never does.
  // The middle of what the user sees of the widget.
  void Click(const QWidget& widget);
  void ClickAt(const QWidget& widget, QPoint at);
  void DoubleClickAt(const QWidget& widget, QPoint at);
  // A click that lets a list drop down, where it stays.
  void ClickToOpen(const QWidget& list);
  void Press(Key key);
  // Digits, small letters and what else needs no Shift.
  void Type(std::string_view text);
  // A small letter or a key with Ctrl held down, or with Ctrl and Shift.
  enum class Held { Ctrl, CtrlShift };
  void PressHolding(Held held, unsigned keySymbol);
  // From one place to another with the left button held down.
  void Drag(const QWidget& widget, QPoint from, QPoint to);
  // Selects the text of the field that has the keyboard.
  void SelectAll();
  // Clicks into the field and types over what stands in it.
  void TypeOver(const QWidget& field, std::string_view text);

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
  void Send(unsigned type, unsigned detail, QPoint at = {});
  [[nodiscard]] unsigned KeyCodeOf(unsigned keySymbol) const;
  void SendClick(const QWidget& widget, QPoint at);
  // On the display.
  [[nodiscard]] QPoint PlaceOf(const QWidget& widget, QPoint at);
  void TakeAllThatCame();
  void WaitUntil(const std::function<bool()>& arrived);
  [[nodiscard]] bool IsActiveForTheManager(const QWidget& window);

  xcb_connection_t* display_; // of its own: another program's hands
  const int doubleClickInterval_;
  unsigned root_ = 0;
  unsigned activeWindow_ = 0;             // the name of the property
  std::map<unsigned, unsigned> keyCodes_; // by key symbol
  int pressesSent_ = 0;
  int pressesArrived_ = 0;
  std::map<unsigned, int> releasesOf_; // by key code
  int clicksSent_ = 0;
  int clicksArrived_ = 0;
};

} // namespace loader::test
