#include "tests/display/Pointer.h"

#include <QApplication>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace loader::test {

namespace {

constexpr unsigned LeftButton = 1;

// When this returns, the display has done all that came by the connection.
void Settle(xcb_connection_t* connection) {
  const std::unique_ptr<xcb_get_input_focus_reply_t, decltype(&std::free)> answer(
      xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr), &std::free);
}

} // namespace

Pointer::Pointer() : display_(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(display_) != 0) {
    throw std::runtime_error("no display");
  }
  root_ = xcb_setup_roots_iterator(xcb_get_setup(display_)).data->root;
}

Pointer::~Pointer() {
  xcb_disconnect(display_);
}

// What the program has said to others up to now comes before it.
void Pointer::Send(unsigned type, unsigned detail, QPoint at) {
  Settle(qApp->nativeInterface<QNativeInterface::QX11Application>()->connection());
  xcb_test_fake_input(display_, static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(detail),
                      XCB_CURRENT_TIME, root_, static_cast<std::int16_t>(at.x()),
                      static_cast<std::int16_t>(at.y()), 0);
  Settle(display_);
}

void Pointer::MoveTo(QPoint onDisplay) {
  Send(XCB_MOTION_NOTIFY, 0, onDisplay);
}

void Pointer::Hold() {
  Send(XCB_BUTTON_PRESS, LeftButton, {});
}

void Pointer::LetGo() {
  Send(XCB_BUTTON_RELEASE, LeftButton, {});
}

} // namespace loader::test
