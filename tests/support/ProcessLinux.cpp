#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

#include "tests/support/Process.h"

extern char** environ;

namespace loader::test {

namespace {

constexpr int Patience = 60000; // milliseconds without a byte until a test gives up

std::vector<char*> Pointers(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

// The test's own, with those of the options in place of what has their name.
std::vector<std::string> Environment(const std::vector<std::string>& wanted) {
  std::vector<std::string> all = wanted;
  const auto isWanted = [&](std::string_view entry) {
    const std::string_view name = entry.substr(0, entry.find('=') + 1);
    return std::ranges::any_of(wanted, [&](const std::string& own) { return own.starts_with(name); });
  };
  for (char** entry = environ; *entry != nullptr; ++entry) {
    if (!isWanted(*entry)) {
      all.emplace_back(*entry);
    }
  }
  return all;
}

// Up to the end of the output, or up to `lines` line ends when that is not negative. False when nothing came
// for too long.
bool ReadOutput(int output, int lines, std::string& text) {
  while (lines < 0 || std::ranges::count(text, '\n') < lines) {
    pollfd wait{output, POLLIN, 0};
    if (::poll(&wait, 1, Patience) <= 0) {
      return false;
    }
    // Byte by byte only where the program goes on behind the line that is waited for.
    std::array<char, 65536> bytes{};
    const ssize_t count = ::read(output, bytes.data(), lines < 0 ? bytes.size() : 1);
    if (count <= 0) {
      break;
    }
    text.append(bytes.data(), static_cast<std::size_t>(count));
  }
  return true;
}

} // namespace

struct RunningProcess::Parts {
  int process = -1;
  int output = -1;
};

static_assert(HangUp == SIGHUP && Interrupt == SIGINT && Kill == SIGKILL && Terminate == SIGTERM);

RunningProcess::RunningProcess(const std::filesystem::path& program, std::vector<std::string> arguments,
                               const ProcessOptions& options)
    : parts_(std::make_unique<Parts>()) {
  arguments.insert(arguments.begin(), program.string());
  std::vector<std::string> environment = Environment(options.environment);
  std::ofstream(folder_ / "input", std::ios::binary) << options.input;
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
    return;
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, (folder_ / "input").c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, (folder_ / "errors").c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (posix_spawn(&parts_->process, program.c_str(), &actions, nullptr, Pointers(arguments).data(),
                  Pointers(environment).data()) != 0) {
    parts_->process = -1;
    ADD_FAILURE() << program << " does not start";
  }
  posix_spawn_file_actions_destroy(&actions);
  ::close(pipe[1]);
  parts_->output = pipe[0];
}

RunningProcess::~RunningProcess() {
  if (parts_->process > 0) {
    ::kill(parts_->process, SIGKILL);
    (void)::waitpid(parts_->process, nullptr, 0);
  }
  CloseOutput();
}

int RunningProcess::ProcessId() const {
  return parts_->process;
}

std::string RunningProcess::ReadLines(int lines) {
  EXPECT_TRUE(ReadOutput(parts_->output, lines, read_)) << "nothing came; so far: " << read_;
  return read_;
}

std::string RunningProcess::ErrorsSoFar() const {
  return ContentOf(folder_ / "errors");
}

void RunningProcess::Signal(int signal) const {
  ::kill(parts_->process, signal);
}

void RunningProcess::CloseOutput() {
  if (parts_->output >= 0) {
    ::close(parts_->output);
  }
  parts_->output = -1;
}

Ended RunningProcess::Wait() {
  Ended ended;
  if (parts_->output >= 0 && !ReadOutput(parts_->output, -1, read_)) {
    ADD_FAILURE() << "the program hangs; so far: " << read_ << ErrorsSoFar();
    Signal(SIGKILL);
  }
  ended.output = read_;
  int status = 0;
  if (::waitpid(parts_->process, &status, 0) == parts_->process) {
    constexpr int BySignal = 128;
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : BySignal + WTERMSIG(status);
  }
  parts_->process = -1;
  ended.errors = ErrorsSoFar();
  return ended;
}

} // namespace loader::test
