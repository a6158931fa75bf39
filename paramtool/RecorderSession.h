// A recorder on its device: while it stands the platform in force has that device, a terminal shows the
// progress, and Ctrl+C ends the transfer and not the program.
#pragma once

#include "companion/Transfer.h"
#include "devices/DevicePlatform.h"
#include "paramtool/Command.h"
#include "paramtool/Interrupt.h"
#include "paramtool/Progress.h"

namespace loader::paramtool {

class RecorderSession {
public:
  RecorderSession(const Call& call, const SetUpAddress& address);
  ~RecorderSession();
  RecorderSession(const RecorderSession&) = delete;
  RecorderSession& operator=(const RecorderSession&) = delete;

  [[nodiscard]] const RecorderLine& Line() const { return line_; }
  // Undone when the program was asked to end: between two steps that nothing else would stop.
  void RequireNotStopped() const;

private:
  RecorderLine line_;
  DevicePlatform devices_;
  Interrupt interrupt_;
  Progress progress_;
};

// The address of a recorder; Undone for any other.
[[nodiscard]] SetUpAddress RecorderAddress(const Call& call, std::u16string_view text);

} // namespace loader::paramtool
