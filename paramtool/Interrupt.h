// Ctrl+C and the end that a system asks for, while a recorder is talked to.
//
// The first one is noted and wakes the event loop, so that the transfer ends where it stands and says where
// that is. The second one ends the program at once, as it would without all this.
#pragma once

#include <functional>
#include <memory>

namespace loader::paramtool {

class Interrupt {
public:
  // `wake` runs from the event loop; there is an application object.
  explicit Interrupt(std::function<void()> wake);
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  // It stays so to the end of the program.
  [[nodiscard]] static bool Asked();

private:
  struct Inside;
  std::unique_ptr<Inside> inside_;
};

} // namespace loader::paramtool
