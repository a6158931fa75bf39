// The pointer of the display over the windows of any program: nothing is waited for, since what is done may
// be another program's. Hands is what works the program under test.
#pragma once

#include <QPoint>

struct xcb_connection_t;

namespace loader::test {

class Pointer {
public:
  // std::runtime_error where there is no display.
  Pointer();
  ~Pointer();
  Pointer(const Pointer&) = delete;
  Pointer& operator=(const Pointer&) = delete;

  void MoveTo(QPoint onDisplay);
  void Hold();
  void LetGo();

private:
  void Send(unsigned type, unsigned detail, QPoint at);

  xcb_connection_t* display_;
  unsigned root_ = 0;
};

} // namespace loader::test
