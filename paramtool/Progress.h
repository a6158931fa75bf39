// How far a transfer is, on the progress line: section and registers.
#pragma once

#include "comm/TransferWatch.h"
#include "companion/Phrases.h"
#include "paramtool/ProgressLine.h"

namespace loader::paramtool {

class Progress {
public:
  explicit Progress(Language language) : language_(language) {}

  void Show(const BlockStep& step);

private:
  Language language_;
  ProgressLine line_;
};

} // namespace loader::paramtool
