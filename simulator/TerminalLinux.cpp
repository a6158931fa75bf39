#include "simulator/Terminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/RunTimeFailure.h"

namespace loader::simulator {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& what) {
  throw RunTimeFailure(what + ": " + std::strerror(errno));
}

// Bytes pass as they are.
void MakeRaw(int terminal) {
  termios settings{};
  if (::tcgetattr(terminal, &settings) != 0) {
    Fail("pseudo-terminal");
  }
  ::cfmakeraw(&settings);
  ::cfsetspeed(&settings, B19200);
  if (::tcsetattr(terminal, TCSANOW, &settings) != 0) {
    Fail("pseudo-terminal");
  }
}

} // namespace

std::string_view TerminalHelp() {
  return "  --rtu LINK             Modbus RTU on a pseudo-terminal; LINK becomes a symbolic link to it\n";
}

Terminal::Terminal(fs::path link)
    : link_(std::move(link)), name_(fs::absolute(link_).lexically_normal().string()) {
  Open();
  MakeLink();
}

Terminal::~Terminal() {
  RemoveLink();
}

void Terminal::Open() {
  master_ = Descriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
  std::array<char, 128> device{};
  if (!master_.IsOpen() || ::grantpt(master_.Number()) != 0 || ::unlockpt(master_.Number()) != 0 ||
      ::ptsname_r(master_.Number(), device.data(), device.size()) != 0) {
    Fail("pseudo-terminal");
  }
  device_ = device.data();
  // Held open: without an open end a terminal reports a hang-up for ever, and forgets its settings.
  slave_ = Descriptor(::open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!slave_.IsOpen()) {
    Fail(device_);
  }
  MakeRaw(slave_.Number());
  watch_ = Descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  if (!watch_.IsOpen() || ::inotify_add_watch(watch_.Number(), device_.c_str(), IN_OPEN | IN_CLOSE) < 0) {
    Fail(device_);
  }
  clients_ = 0;
}

void Terminal::MakeLink() {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(link_, error);
  if (fs::exists(status) && !fs::is_symlink(status)) {
    throw RunTimeFailure("cannot make the link " + name_ + ": there is a file of that name");
  }
  // Made aside and moved: whoever looks finds the old link or the new one.
  const fs::path aside = link_.string() + ".new" + std::to_string(::getpid());
  fs::remove(aside, error);
  fs::create_symlink(device_, aside, error);
  if (!error) {
    fs::rename(aside, link_, error);
  }
  if (error) {
    std::error_code ignored;
    fs::remove(aside, ignored);
    throw RunTimeFailure("cannot make the link " + name_ + ": " + error.message());
  }
}

void Terminal::RemoveLink() noexcept {
  std::error_code error;
  if (fs::read_symlink(link_, error) == device_ && !error) {
    fs::remove(link_, error);
  }
}

Passed Terminal::Read(std::span<std::uint8_t> room) {
  return simulator::Read(master_, room);
}

Passed Terminal::Write(std::span<const std::uint8_t> bytes) {
  const ssize_t sent = ::write(master_.Number(), bytes.data(), bytes.size());
  if (sent < 0) {
    return errno == EAGAIN || errno == EINTR ? 0 : LineEnded;
  }
  return sent;
}

bool Terminal::TakeClosing() {
  bool closed = false;
  alignas(inotify_event) std::array<char, 4096> news{};
  for (;;) {
    const ssize_t got = ::read(watch_.Number(), news.data(), news.size());
    if (got <= 0) {
      break;
    }
    for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
      inotify_event event{};
      std::memcpy(&event, news.data() + at, sizeof event);
      clients_ += (event.mask & IN_OPEN) != 0 ? 1 : 0;
      if ((event.mask & IN_CLOSE) != 0 && --clients_ <= 0) {
        clients_ = 0;
        closed = true;
      }
      at += sizeof event + event.len;
    }
  }
  if (closed) {
    ::tcflush(slave_.Number(), TCIFLUSH);
    ::ioctl(slave_.Number(), TIOCNXCL); // a client that had the line to itself and died
  }
  return closed;
}

void Terminal::Replug() {
  // The old terminal goes when the new one is there: who sees it go finds the line back under its name.
  const Descriptor oldMaster = std::exchange(master_, {});
  const Descriptor oldSlave = std::exchange(slave_, {});
  Open();
  MakeLink();
}

} // namespace loader::simulator
