#include "tests/paramtool/FleetChild.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <string_view>

namespace {

using loader::test::WhenAsked;

void Put(std::FILE* stream, const std::string& text) {
  std::fputs((text + "\n").c_str(), stream);
  std::fflush(stream);
}

void End(int status) {
  std::exit(status);
}

WhenAsked StopOf(const std::string& rest) {
  const std::size_t blank = rest.find(' ');
  return {.status = std::stoi(rest),
          .text = blank == std::string::npos ? std::string() : rest.substr(blank + 1)};
}

} // namespace

int main(int count, char** words) {
  namespace test = loader::test;
  const char* const script = std::getenv("FLEET_CHILD");
  if (script == nullptr) {
    return 99;
  }
  const std::filesystem::path folder = std::filesystem::path(script).parent_path();
  const auto note = [&](const std::string& name) {
    std::ofstream file(folder / name, std::ios::binary | std::ios::app);
    for (int i = 1; i < count; ++i) {
      file << words[i] << '\n';
    }
  };
  const std::map<std::string, std::function<void(const std::string&)>, std::less<>> steps{
      {"print", [](const std::string& text) { Put(stdout, text); }},
      {"complain", [](const std::string& text) { Put(stderr, text); }},
      {"exit", [](const std::string& status) { End(std::stoi(status)); }},
      {"need", [&](const std::string& name) { std::filesystem::exists(folder / name) ? void() : End(1); }},
      {"mark", [&](const std::string& name) { const std::ofstream made(folder / name); }},
      {"note", note},
      {"await", [&](const std::string& name) { test::AwaitGate(folder / name); }},
      {"tell", [&](const std::string& name) { test::TellGate(folder / name); }},
      {"crash", [](const std::string&) { test::Crash(); }},
      {"kill", [](const std::string&) { test::EndFromOutside(); }},
      {"hang", [](const std::string&) { test::Hang(); }},
      {"deaf", [](const std::string&) { test::PrepareToBeAsked({.deaf = true}); }},
      {"stop", [](const std::string& rest) { test::PrepareToBeAsked(StopOf(rest)); }},
  };
  test::PrepareToBeAsked({});
  std::ifstream lines(script, std::ios::binary);
  bool mine = true;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t blank = line.find(' ');
    const std::string step = line.substr(0, blank);
    const std::string rest = blank == std::string::npos ? std::string() : line.substr(blank + 1);
    if (step == "job") {
      mine = count > 1 && rest == words[1];
    } else if (mine) {
      const auto known = steps.find(step);
      known == steps.end() ? End(98) : known->second(rest);
    }
  }
  return 0;
}
