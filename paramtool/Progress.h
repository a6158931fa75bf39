// One line that tells how far a transfer is, on a terminal alone: a script's log gets none.
#pragma once

#include <string>

#include "comm/TransferWatch.h"
#include "companion/Phrases.h"

namespace loader::paramtool {

class Progress {
public:
  explicit Progress(Language language);
  // Leaves an empty line.
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Show(const BlockStep& step);

private:
  Language language_;
  bool shown_; // whether there is a terminal
  bool anything_ = false;
};

} // namespace loader::paramtool
