// A pseudo-terminal as the recorder's end of a serial line, with a symbolic link as its name.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "simulator/Sockets.h"

namespace loader::simulator {

// The lines of --help about it.
[[nodiscard]] std::string_view TerminalHelp();

// Where the system has no pseudo-terminals every one is a RunTimeFailure.
class Terminal {
public:
  // Makes the terminal and the link to it; a symbolic link of that name is replaced, anything else is left
  // alone and is a RunTimeFailure.
  explicit Terminal(std::filesystem::path link);
  // The link goes with the terminal.
  ~Terminal();
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; } // of the link, absolute
  [[nodiscard]] int Master() const { return master_.Number(); }   // does not block
  // Can be read when a client has opened or closed the line.
  [[nodiscard]] int Watch() const { return watch_.Number(); }

  [[nodiscard]] Passed Read(std::span<std::uint8_t> room);
  [[nodiscard]] Passed Write(std::span<const std::uint8_t> bytes);

  // Takes the news of Watch(). True when the last client has closed the line since: like a serial port that
  // nobody has open, the line then forgets what was not read.
  [[nodiscard]] bool TakeClosing();

  // The line breaks as if its plug was pulled, and is back at once: clients lose the old terminal, the link
  // names a new one.
  void Replug();

private:
  void Open();
  void MakeLink();
  void RemoveLink() noexcept;
  std::filesystem::path link_;
  std::string name_, device_;
  Descriptor master_, slave_, watch_;
  int clients_ = 0;
};

} // namespace loader::simulator
