// One line on the standard error output that is written again and again: on a terminal alone, a script's log
// gets none.
#pragma once

#include <string_view>

namespace loader::paramtool {

class ProgressLine {
public:
  ProgressLine();
  // Leaves an empty line.
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  // Whether there is a terminal: a text that nobody sees need not be made.
  [[nodiscard]] bool IsSeen() const { return terminal_; }
  void Show(std::u16string_view text);
  void Clear();

private:
  bool terminal_;
  bool shown_ = false;
};

} // namespace loader::paramtool
