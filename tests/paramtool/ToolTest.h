// What the tests of the companion program share: they run the program itself.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/simulator/RunningSimulator.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::test {

constexpr int ExitGood = 0;
constexpr int ExitDifferent = 1;
constexpr int ExitFailed = 2;
constexpr int ExitUsage = 64;

// Runs paramtool to its end.
[[nodiscard]] Ended Tool(std::vector<std::string> arguments, const ProcessOptions& options = {});
// The program, for a test that does something to it on its way.
[[nodiscard]] std::filesystem::path ToolProgram();

// The parameter file of the plant that recorder-sim runs ("KOV" or "RUG"), as the window saves it.
[[nodiscard]] const std::string& PlantFile(std::string_view model);

// The version tags of the eight generations, oldest first: six of KOV, two of RUG.
[[nodiscard]] const std::vector<std::string>& VersionTags();
[[nodiscard]] std::string ModelOfTag(std::string_view versionTag);

// The text is that of tests/paramtool/golden/NAME, byte for byte. One that differs is left in the folder
// "printed" of the build's tests: look at it; when the change is meant, copy it over the golden one.
void ExpectGolden(const std::string& name, const std::string& text);

class ToolTest : public testing::Test {
protected:
  // In UTF-8 and with "/" on each system.
  [[nodiscard]] std::string File(std::string_view name) const;
  // As the system itself writes it: with "\\" on Windows.
  [[nodiscard]] std::string NativeFile(std::string_view name) const;
  // Writes it and returns its path.
  std::string Write(std::string_view name, std::string_view bytes) const; // NOLINT(modernize-use-nodiscard)
  [[nodiscard]] std::string Read(std::string_view name) const { return ContentOf(PathOf(name)); }
  [[nodiscard]] bool Exists(std::string_view name) const { return std::filesystem::exists(PathOf(name)); }
  // The names in the test's folder, sorted.
  [[nodiscard]] std::vector<std::string> Files() const;
  // `text` with the test's folder as "FOLDER", for comparisons.
  [[nodiscard]] std::string WithoutFolder(std::string text) const;

  // A recorder on TCP (the first line) and, where the system has pseudo-terminals, on one of them; it dumps
  // its memory to "dump" at its end.
  [[nodiscard]] std::unique_ptr<simulator::RunningSimulator>
  StartRecorder(const std::string& versionTag, std::vector<std::string> more = {}) const;
  [[nodiscard]] static std::string TcpOf(const simulator::RunningSimulator& recorder);
  [[nodiscard]] std::string LineFile() const { return (line_ / "line").string(); }
  [[nodiscard]] std::string SerialOf() const { return "serial:" + LineFile(); }
  // Of a recorder on each line that the system has.
  [[nodiscard]] std::vector<std::string> AddressesOf(const simulator::RunningSimulator& recorder) const;

private:
  [[nodiscard]] std::filesystem::path PathOf(std::string_view name) const;

  TemporaryFolder folder_{"paramtool-test-"};
  TemporaryFolder line_{"paramtool-line-"};
};

} // namespace loader::test
