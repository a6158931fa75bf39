// Serial lines for programs under wine: runs a command, and gives it pseudo-terminals as COM ports for as
// long as it runs. Which ones, the command says over TCP, at the port of the loopback that LOADER_LINES
// names: one connection a line. Its first text line is the name ("COM7"), answered by "ok"; what follows is
// the far end of the line, both ways. A connection that is closed is a device that is unplugged. "COM7 speed"
// is answered by the speed that the port was set to.
#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/devices/LineSettings.h"

namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const char* what) {
  throw std::runtime_error(what);
}

// The folder whose links are the ports of wine.
fs::path PortFolder() {
  const char* prefix = std::getenv("WINEPREFIX");
  const char* home = std::getenv("HOME");
  return prefix != nullptr ? fs::path(prefix) / "dosdevices" : fs::path(home) / ".wine" / "dosdevices";
}

fs::path LinkOf(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(),
                 [](char letter) { return static_cast<char>(std::tolower(letter)); });
  return PortFolder() / name;
}

// One connection; -1: nothing of that kind.
struct Line {
  int connection = -1;
  int far = -1; // the master: what is read here the program has written
  pid_t keeper = -1;
  std::string name;
};

bool WriteAll(int file, const char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t done = write(file, bytes, count);
    if (done <= 0) {
      return false;
    }
    bytes += done;
    count -= static_cast<std::size_t>(done);
  }
  return true;
}

std::string FirstLine(int connection) {
  std::string text;
  for (char letter = 0; read(connection, &letter, 1) == 1 && letter != '\n';) {
    text += letter;
  }
  return text;
}

// Keeps the device open, or each closing of the port would hang up the line, and as the terminal of a session
// of its own: else it becomes that of wine's server, whom an unplugged device would then hang up as well.
pid_t StartKeeper(int near) {
  std::array<int, 2> ready{};
  if (pipe(ready.data()) != 0) {
    Fail("no pipe");
  }
  const pid_t keeper = fork();
  if (keeper == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::signal(SIGHUP, SIG_IGN);
    setsid();
    ioctl(near, TIOCSCTTY, 0);
    dup2(near, 0);
    close_range(3, ~0U, 0); // with the far end and the pipe, which tells that it is done
    for (;;) {
      pause();
    }
  }
  close(ready[1]);
  char ignored = 0;
  (void)!read(ready[0], &ignored, 1);
  close(ready[0]);
  return keeper;
}

void OpenLine(Line& line) {
  std::array<char, 256> device{};
  termios raw{};
  cfmakeraw(&raw);
  cfsetspeed(&raw, B38400);
  raw.c_cflag |= CREAD;
  int near = -1;
  if (openpty(&line.far, &near, device.data(), &raw, nullptr) != 0) {
    Fail("no pseudo-terminal");
  }
  fcntl(line.far, F_SETFD, FD_CLOEXEC);
  line.keeper = StartKeeper(near);
  close(near);
  const fs::path link = LinkOf(line.name);
  fs::remove(link);
  fs::create_symlink(device.data(), link);
}

void CloseLine(const Line& line) {
  if (line.far >= 0) {
    close(line.far);
  }
  if (line.keeper >= 0) {
    kill(line.keeper, SIGKILL);
    waitpid(line.keeper, nullptr, 0);
  }
  close(line.connection);
}

std::string SettingsOf(const std::vector<Line>& lines, const std::string& name) {
  const auto line =
      std::find_if(lines.rbegin(), lines.rend(), [&](const Line& open) { return open.name == name; });
  termios settings{};
  return line != lines.rend() && tcgetattr(line->far, &settings) == 0 ? loader::test::SettingsText(settings)
                                                                      : "no such line";
}

// A connection that has come: a line, or a question that is answered at once.
void Accept(int listener, std::vector<Line>& lines) {
  Line line;
  line.connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
  line.name = FirstLine(line.connection);
  const std::string question = " settings";
  std::string answer = "ok";
  if (line.name.ends_with(question)) {
    answer = SettingsOf(lines, line.name.substr(0, line.name.size() - question.size()));
  } else {
    OpenLine(line);
  }
  answer += '\n';
  if (WriteAll(line.connection, answer.data(), answer.size()) && line.far >= 0) {
    lines.push_back(line);
  } else {
    CloseLine(line);
  }
}

// False: one of the two ends is closed.
bool Relay(int from, int to) {
  std::array<char, 4096> bytes{};
  const ssize_t got = read(from, bytes.data(), bytes.size());
  return got > 0 && WriteAll(to, bytes.data(), static_cast<std::size_t>(got));
}

int Listen() {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (bind(listener, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener, 8) != 0 ||
      getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    Fail("no port to listen at");
  }
  setenv("LOADER_LINES", std::to_string(ntohs(address.sin_port)).c_str(), 1);
  return listener;
}

pid_t Start(char** command, const sigset_t& before) {
  const pid_t child = fork();
  if (child == 0) {
    sigprocmask(SIG_SETMASK, &before, nullptr);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    execvp(command[0], command);
    std::perror(command[0]);
    _exit(127);
  }
  return child;
}

// Until the command has ended; how it did.
int Serve(int listener, int ended, pid_t child) {
  int status = 0;
  std::vector<Line> lines;
  for (;;) {
    std::vector<pollfd> files{{ended, POLLIN, 0}, {listener, POLLIN, 0}};
    for (const Line& line : lines) {
      files.push_back({line.connection, POLLIN, 0});
      files.push_back({line.far, POLLIN, 0});
    }
    if (poll(files.data(), files.size(), -1) < 0) {
      Fail("poll");
    }
    for (std::size_t i = lines.size(); i-- > 0;) {
      const short connection = files[2 + 2 * i].revents;
      const short far = files[3 + 2 * i].revents;
      if ((connection != 0 && !Relay(lines[i].connection, lines[i].far)) ||
          (far != 0 && !Relay(lines[i].far, lines[i].connection))) {
        CloseLine(lines[i]);
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(i));
      }
    }
    if (files[1].revents != 0) {
      Accept(listener, lines);
    }
    if (files[0].revents != 0) {
      signalfd_siginfo ignored{};
      if (read(ended, &ignored, sizeof ignored) > 0 && waitpid(child, &status, WNOHANG) == child) {
        break;
      }
    }
  }
  for (const Line& line : lines) {
    CloseLine(line);
  }
  return status;
}

int Run(char** command) {
  std::signal(SIGPIPE, SIG_IGN);
  sigset_t before;
  sigset_t children;
  sigemptyset(&children);
  sigaddset(&children, SIGCHLD);
  sigprocmask(SIG_BLOCK, &children, &before);
  const int ended = signalfd(-1, &children, SFD_CLOEXEC);
  const int listener = Listen();
  const int status = Serve(listener, ended, Start(command, before));
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: wine_lines COMMAND...\n", stderr);
    return 2;
  }
  try {
    return Run(argv + 1);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "wine_lines: %s\n", failure.what());
    return 2;
  }
}
