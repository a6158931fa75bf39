#include "tests/display/Hands.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include "tests/qt/Waiting.h"

namespace loader::test {

namespace {

constexpr unsigned LeftButton = 1;
constexpr unsigned ControlKey = 0xffe3;
constexpr unsigned ShiftKey = 0xffe1;
constexpr int Patience = 20000; // milliseconds until a test gives up

// The events of the input extension, which the toolkit takes the mouse from. Each click comes twice: first
// from the device that made it, then from the pointer that the toolkit listens to.
constexpr unsigned ExtendedButtonRelease = 5;
constexpr unsigned CorePointer = 2;

// Where a window manager tells which window is active.
constexpr std::string_view ActiveWindow = "_NET_ACTIVE_WINDOW";

bool IsClickOfThePointer(const xcb_ge_generic_event_t& event) {
  std::uint16_t device = 0; // stands right behind the type
  std::memcpy(&device, &event.pad0, sizeof device);
  return event.event_type == ExtendedButtonRelease && device == CorePointer;
}

template <typename Reply> using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

} // namespace

Hands::Hands()
    : display_(xcb_connect(nullptr, nullptr)), doubleClickInterval_(QApplication::doubleClickInterval()) {
  if (xcb_connection_has_error(display_) != 0) {
    throw std::runtime_error("no display");
  }
  const xcb_setup_t* setup = xcb_get_setup(display_);
  root_ = xcb_setup_roots_iterator(setup).data->root;
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const Owned<xcb_get_keyboard_mapping_reply_t> mapping(
      xcb_get_keyboard_mapping_reply(display_, xcb_get_keyboard_mapping(display_, setup->min_keycode, count),
                                     nullptr),
      &std::free);
  const Owned<xcb_test_get_version_reply_t> version(
      xcb_test_get_version_reply(display_, xcb_test_get_version(display_, 2, 2), nullptr), &std::free);
  if (mapping == nullptr || version == nullptr) {
    throw std::runtime_error("the display takes no input from here");
  }
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
  for (unsigned key = 0; key < count; ++key) {
    keyCodes_.emplace(symbols[key * mapping->keysyms_per_keycode], setup->min_keycode + key);
  }
  const Owned<xcb_intern_atom_reply_t> active(
      xcb_intern_atom_reply(display_, xcb_intern_atom(display_, 0, ActiveWindow.size(), ActiveWindow.data()),
                            nullptr),
      &std::free);
  activeWindow_ = active == nullptr ? 0 : active->atom;
  const std::uint32_t wanted = XCB_EVENT_MASK_PROPERTY_CHANGE; // of the root: the active window is one
  xcb_change_window_attributes(display_, root_, XCB_CW_EVENT_MASK, &wanted);
  qApp->installNativeEventFilter(this);
  QApplication::setDoubleClickInterval(0); // each click stands for itself, however fast these hands are
}

Hands::~Hands() {
  qApp->removeNativeEventFilter(this);
  QApplication::setDoubleClickInterval(doubleClickInterval_);
  xcb_disconnect(display_);
}

bool Hands::nativeEventFilter(const QByteArray& /*eventType*/, void* message, qintptr* /*result*/) {
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  const unsigned type = event->response_type & 0x7FU;
  if (type == XCB_KEY_PRESS) {
    ++pressesArrived_;
  } else if (type == XCB_KEY_RELEASE) {
    ++releasesOf_[static_cast<const xcb_key_release_event_t*>(message)->detail];
  } else if (type == XCB_BUTTON_RELEASE ||
             (type == XCB_GE_GENERIC &&
              IsClickOfThePointer(*static_cast<const xcb_ge_generic_event_t*>(message)))) {
    ++clicksArrived_;
  }
  return false;
}

void Hands::Send(unsigned type, unsigned detail, QPoint at) {
  xcb_test_fake_input(display_, static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(detail),
                      XCB_CURRENT_TIME, root_, static_cast<std::int16_t>(at.x()),
                      static_cast<std::int16_t>(at.y()), 0);
  pressesSent_ += type == XCB_KEY_PRESS ? 1 : 0;
  clicksSent_ += type == XCB_BUTTON_RELEASE ? 1 : 0;
}

void Hands::WaitUntil(const std::function<bool()>& arrived) {
  QTimer patience; // its event ends the wait
  patience.setSingleShot(true);
  patience.start(Patience);
  xcb_flush(display_);
  test::WaitUntil([&] { return arrived() || !patience.isActive(); });
  EXPECT_TRUE(arrived()) << "a click or a key has not reached the program";
  QCoreApplication::processEvents();
}

bool Hands::IsActiveForTheManager(const QWidget& window) {
  const Owned<xcb_get_property_reply_t> active(
      xcb_get_property_reply(
          display_, xcb_get_property(display_, 0, root_, activeWindow_, XCB_ATOM_WINDOW, 0, 1), nullptr),
      &std::free);
  while (const Owned<xcb_generic_event_t> change{xcb_poll_for_queued_event(display_), &std::free}) {
  }
  return active != nullptr && xcb_get_property_value_length(active.get()) == sizeof(xcb_window_t) &&
         *static_cast<const xcb_window_t*>(xcb_get_property_value(active.get())) == window.winId();
}

bool Hands::BecomesActive(const QWidget& window) {
  // What ends the wait: events of the program, the window manager's change, patience.
  const QSocketNotifier changes(xcb_get_file_descriptor(display_), QSocketNotifier::Read);
  QTimer patience;
  patience.setSingleShot(true);
  patience.start(Patience);
  const auto active = [&] {
    return IsActiveForTheManager(window) && QApplication::activeWindow() == &window;
  };
  test::WaitUntil([&] { return active() || !patience.isActive(); });
  return active();
}

void Hands::ClickAt(const QWidget& widget, QPoint at) {
  SendClick(widget, at);
  WaitUntil([this] { return clicksArrived_ >= clicksSent_; });
}

QPoint Hands::PlaceOf(const QWidget& widget, QPoint at) {
  // Asked of the display: the window manager may have moved the window, and the program not yet know.
  const QPoint inWindow = widget.mapTo(widget.window(), at);
  const Owned<xcb_translate_coordinates_reply_t> place(
      xcb_translate_coordinates_reply(
          display_,
          xcb_translate_coordinates(display_, static_cast<xcb_window_t>(widget.window()->winId()), root_,
                                    static_cast<std::int16_t>(inWindow.x()),
                                    static_cast<std::int16_t>(inWindow.y())),
          nullptr),
      &std::free);
  if (place == nullptr) {
    throw std::logic_error(widget.objectName().toStdString() + " is not on the display");
  }
  return {place->dst_x, place->dst_y};
}

void Hands::SendClick(const QWidget& widget, QPoint at) {
  Send(XCB_MOTION_NOTIFY, 0, PlaceOf(widget, at));
  Send(XCB_BUTTON_PRESS, LeftButton);
  Send(XCB_BUTTON_RELEASE, LeftButton);
}

void Hands::Drag(const QWidget& widget, QPoint from, QPoint to) {
  Send(XCB_MOTION_NOTIFY, 0, PlaceOf(widget, from));
  TakeAllThatCame(); // the shape of the pointer, before anything is pressed
  Send(XCB_BUTTON_PRESS, LeftButton);
  Send(XCB_MOTION_NOTIFY, 0, PlaceOf(widget, (from + to) / 2));
  Send(XCB_MOTION_NOTIFY, 0, PlaceOf(widget, to));
  Send(XCB_BUTTON_RELEASE, LeftButton);
  WaitUntil([this] { return clicksArrived_ >= clicksSent_; });
}

void Hands::PressHolding(Held held, unsigned keySymbol) {
  std::vector<unsigned> keys{KeyCodeOf(ControlKey)};
  if (held == Held::CtrlShift) {
    keys.push_back(KeyCodeOf(ShiftKey));
  }
  for (const unsigned key : keys) {
    Send(XCB_KEY_PRESS, key);
  }
  Press(static_cast<Key>(keySymbol));
  for (const unsigned key : keys) {
    Send(XCB_KEY_RELEASE, key);
  }
  TakeAllThatCame();
}

// When this returns, the program has got everything that the display has for it up to now.
void Hands::TakeAllThatCame() {
  const auto answerOf = [](xcb_connection_t* connection) {
    const Owned<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr), &std::free);
    EXPECT_NE(nullptr, answer);
  };
  answerOf(display_);
  answerOf(qApp->nativeInterface<QNativeInterface::QX11Application>()->connection());
  QCoreApplication::processEvents();
}

void Hands::Click(const QWidget& widget) {
  const QRect seen = widget.visibleRegion().boundingRect();
  ASSERT_FALSE(seen.isEmpty()) << "the user cannot see " << widget.objectName().toStdString();
  ClickAt(widget, seen.center());
}

void Hands::DoubleClickAt(const QWidget& widget, QPoint at) {
  ClickAt(widget, at);
  QApplication::setDoubleClickInterval(Patience); // a busy machine may be long about the second click
  // The second press may close the window; its release then goes where it will, or nowhere.
  const QPointer<const QWidget> pressed = &widget;
  SendClick(widget, at);
  WaitUntil([&] { return clicksArrived_ >= clicksSent_ || pressed == nullptr || !pressed->isVisible(); });
  TakeAllThatCame();
  clicksArrived_ = clicksSent_;
  QApplication::setDoubleClickInterval(0);
}

// Once the interval is over, a list takes the release of the click that has opened it for one beside it, and
// closes.
void Hands::ClickToOpen(const QWidget& list) {
  QApplication::setDoubleClickInterval(Patience);
  Click(list);
  QApplication::setDoubleClickInterval(0);
}

unsigned Hands::KeyCodeOf(unsigned keySymbol) const {
  const auto found = keyCodes_.find(keySymbol);
  if (found == keyCodes_.end()) {
    throw std::logic_error("the keyboard has no key " + std::to_string(keySymbol));
  }
  return found->second;
}

// Only the press is waited for: one that closes a window lets the release go where it will.
void Hands::Press(Key key) {
  const unsigned code = KeyCodeOf(static_cast<unsigned>(key));
  Send(XCB_KEY_PRESS, code);
  Send(XCB_KEY_RELEASE, code);
  WaitUntil([this] { return pressesArrived_ >= pressesSent_; });
}

// A button is clicked by the release of the space bar.
void Hands::Type(std::string_view text) {
  for (const char character : text) {
    const unsigned code = KeyCodeOf(static_cast<unsigned char>(character));
    const int before = releasesOf_[code];
    Send(XCB_KEY_PRESS, code);
    Send(XCB_KEY_RELEASE, code);
    WaitUntil([&] { return releasesOf_[code] > before; });
  }
}

void Hands::SelectAll() {
  Send(XCB_KEY_PRESS, KeyCodeOf(ControlKey));
  Type("a");
  Send(XCB_KEY_RELEASE, KeyCodeOf(ControlKey));
}

void Hands::TypeOver(const QWidget& field, std::string_view text) {
  Click(field);
  SelectAll();
  Type(text);
}

} // namespace loader::test
