#include "tests/paramtool/ToolTest.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <utility>

#include "core/UserUnits.h"
#include "core/modMain.h"
#include "files/ParameterFile.h"
#include "simulator/Plant.h"
#include "tests/paramtool/SerialLine.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {

namespace {

std::string TextOf(const std::u8string& text) {
  return {text.begin(), text.end()};
}

std::string Utf8Of(const std::filesystem::path& path) {
  return TextOf(path.generic_u8string());
}

} // namespace

Ended Tool(std::vector<std::string> arguments, const ProcessOptions& options) {
  return RunProcess(ToolProgram(), std::move(arguments), options);
}

std::filesystem::path ToolProgram() {
  return PARAMTOOL;
}

const std::string& PlantFile(std::string_view model) {
  static std::map<std::string, std::string, std::less<>> made;
  const auto found = made.find(model);
  if (found != made.end()) {
    return found->second;
  }
  ScriptedPlatform platform;
  StartWithModel(platform, model);
  ParamStore =
      simulator::PlantSetup(ParamStore, model == "KOV" ? simulator::Model::Kov : simulator::Model::Rug);
  UpdateUserUnitNames();
  return made.emplace(std::string(model), ParamFileBytes()).first->second;
}

const std::vector<std::string>& VersionTags() {
  static const std::vector<std::string> tags{"V05A", "V13A", "V17A", "V26A", "V39A", "V40A", "V09W", "V12W"};
  return tags;
}

std::string ModelOfTag(std::string_view versionTag) {
  return versionTag.ends_with('W') ? "RUG" : "KOV";
}

void ExpectGolden(const std::string& name, const std::string& text) {
  const std::filesystem::path golden =
      std::filesystem::path(LOADER_SOURCE_DIR) / "tests/paramtool/golden" / name;
  const bool same = std::filesystem::exists(golden) && ContentOf(golden) == text;
  const std::filesystem::path printed = std::filesystem::path(PRINTED_FOLDER) / name;
  if (!same) {
    std::filesystem::create_directories(printed.parent_path());
    std::ofstream(printed, std::ios::binary) << text;
  }
  // Not as two texts: the lines are told by a look at both files.
  EXPECT_TRUE(same) << printed << " is not " << golden;
}

std::filesystem::path ToolTest::PathOf(std::string_view name) const {
  return folder_.Path() / std::u8string(name.begin(), name.end());
}

std::string ToolTest::File(std::string_view name) const {
  return Utf8Of(PathOf(name));
}

std::string ToolTest::NativeFile(std::string_view name) const {
  return TextOf(PathOf(name).make_preferred().u8string());
}

std::string ToolTest::Write(std::string_view name, std::string_view bytes) const {
  std::ofstream(PathOf(name), std::ios::binary) << bytes;
  return File(name);
}

std::vector<std::string> ToolTest::Files() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
    names.push_back(Utf8Of(entry.path().filename()));
  }
  std::ranges::sort(names);
  return names;
}

std::string ToolTest::WithoutFolder(std::string text) const {
  const std::string folder = Utf8Of(folder_.Path());
  for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder, at)) {
    text.replace(at, folder.size(), "FOLDER");
  }
  return text;
}

std::unique_ptr<simulator::RunningSimulator> ToolTest::StartRecorder(const std::string& versionTag,
                                                                     std::vector<std::string> more) const {
  std::vector<std::string> arguments{
      "--model", ModelOfTag(versionTag), "--firmware", versionTag, "--tcp", "0", "--dump", File("dump")};
  const std::vector<std::string> serial = SerialLineOfRecorder(LineFile());
  arguments.insert(arguments.end(), serial.begin(), serial.end());
  arguments.insert(arguments.end(), more.begin(), more.end());
  return std::make_unique<simulator::RunningSimulator>(std::move(arguments), serial.empty() ? 1 : 2);
}

std::string ToolTest::TcpOf(const simulator::RunningSimulator& recorder) {
  return "tcp:127.0.0.1:" + std::to_string(recorder.Port());
}

std::vector<std::string> ToolTest::AddressesOf(const simulator::RunningSimulator& recorder) const {
  std::vector<std::string> addresses{TcpOf(recorder)};
  if (recorder.Lines().size() > 1) {
    addresses.push_back(SerialOf());
  }
  return addresses;
}

} // namespace loader::test
