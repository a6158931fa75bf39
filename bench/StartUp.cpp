#include "bench/StartUp.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>
#include <charconv>
#include <chrono>
#include <stdexcept>
#include <string_view>

extern char** environ;

namespace loader::bench {

namespace {

// What the process writes up to its end.
std::string ReadAll(int pipe) {
  std::string all;
  std::array<char, 256> some{};
  for (ssize_t count = 0; (count = read(pipe, some.data(), some.size())) > 0;) {
    all.append(some.data(), static_cast<std::size_t>(count));
  }
  return all;
}

} // namespace

StartUp MeasureStart(const std::vector<std::string>& command) {
  const std::string program = QCoreApplication::applicationDirPath().toStdString() + "/" + command.at(0);
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  std::array<int, 2> pipes{};
  if (pipe(pipes.data()) != 0) {
    throw std::runtime_error("no pipe");
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipes[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, pipes[0]);
  posix_spawn_file_actions_addclose(&actions, pipes[1]);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", 1, 0);

  const auto before = std::chrono::steady_clock::now();
  pid_t process = 0;
  const int failed = posix_spawn(&process, program.c_str(), &actions, nullptr, arguments.data(), environ);
  close(pipes[1]);
  const std::string told = failed == 0 ? ReadAll(pipes[0]) : std::string();
  const auto after = std::chrono::steady_clock::now();
  close(pipes[0]);
  posix_spawn_file_actions_destroy(&actions);
  if (failed == 0) {
    waitpid(process, nullptr, 0);
  }
  constexpr std::string_view Painted = "painted ";
  long kilobytes = 0;
  if (told.starts_with(Painted)) {
    std::from_chars(told.data() + Painted.size(), told.data() + told.size(), kilobytes);
  }
  if (kilobytes <= 0) {
    throw std::runtime_error(command.at(0) + " paints no window");
  }
  return {std::chrono::duration<double, std::milli>(after - before).count(),
          static_cast<double>(kilobytes) / 1024};
}

} // namespace loader::bench
