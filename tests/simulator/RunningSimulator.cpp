#include "tests/simulator/RunningSimulator.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <sstream>

extern char** environ;

namespace loader::simulator {

namespace {

constexpr int Patience = 20000; // milliseconds until a test gives up

struct Started {
  int process = -1;
  int output = -1;
};

Started Start(std::vector<std::string> arguments, const std::filesystem::path& errors) {
  arguments.insert(arguments.begin(), RECORDER_SIM);
  std::vector<char*> words;
  for (std::string& argument : arguments) {
    words.push_back(argument.data());
  }
  words.push_back(nullptr);
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
    return {};
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                   0644);
  Started started;
  if (posix_spawn(&started.process, RECORDER_SIM, &actions, nullptr, words.data(), environ) != 0) {
    started.process = -1;
  }
  posix_spawn_file_actions_destroy(&actions);
  ::close(pipe[1]);
  started.output = pipe[0];
  return started;
}

int WaitForEnd(int process) {
  int status = 0;
  if (::waitpid(process, &status, 0) != process) {
    return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// Up to the end of the output, or up to `lines` line ends when that is not negative.
std::string ReadOutput(int output, int lines) {
  std::string text;
  while (lines < 0 || std::count(text.begin(), text.end(), '\n') < lines) {
    pollfd wait{output, POLLIN, 0};
    char character = 0;
    if (::poll(&wait, 1, Patience) <= 0 || ::read(output, &character, 1) != 1) {
      break;
    }
    text += character;
  }
  return text;
}

} // namespace

std::string ContentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

Ended RunSimulator(std::vector<std::string> arguments) {
  const TestFolder folder;
  const Started started = Start(std::move(arguments), folder / "errors");
  Ended ended;
  ended.output = ReadOutput(started.output, -1);
  ::close(started.output);
  ended.status = WaitForEnd(started.process);
  ended.errors = ContentOf(folder / "errors");
  return ended;
}

RunningSimulator::RunningSimulator(std::vector<std::string> arguments, int lines) {
  const Started started = Start(std::move(arguments), folder_ / "errors");
  process_ = started.process;
  output_ = started.output;
  std::istringstream text(ReadOutput(output_, lines));
  constexpr std::string_view Ready = "listening on ";
  for (std::string line; std::getline(text, line);) {
    EXPECT_TRUE(line.starts_with(Ready)) << line;
    lines_.push_back(line.substr(std::min(line.size(), Ready.size())));
  }
  EXPECT_EQ(lines_.size(), static_cast<std::size_t>(lines)) << ContentOf(folder_ / "errors");
}

RunningSimulator::~RunningSimulator() {
  if (process_ > 0) {
    ::kill(process_, SIGKILL);
    (void)WaitForEnd(process_);
  }
  ::close(output_);
}

int RunningSimulator::Port() const {
  return lines_.empty() ? 0 : std::stoi(lines_.front().substr(lines_.front().rfind(':') + 1));
}

Ended RunningSimulator::Stop(int signal) {
  ::kill(process_, signal);
  Ended ended;
  ended.output = ReadOutput(output_, -1);
  ended.status = WaitForEnd(process_);
  process_ = -1;
  ended.errors = ContentOf(folder_ / "errors");
  return ended;
}

} // namespace loader::simulator
