// The window's Save and Open where Windows refuses: the message that there is for it, and nothing lost.
#include <windows.h>

#include "core/TextTable.h"
#include "files/TextOutput.h"
#include "tests/files/ParameterFileSupport.h"

namespace loader::test {
namespace {

class WindowsSaves : public ParameterFiles {
protected:
  void SetUp() override {
    ParameterFiles::SetUp();
    std::filesystem::copy_file(std::filesystem::path(LOADER_DATA_DIR) / "TextKOV.Ini",
                               platform.folder / "TextKOV.Ini");
    ASSERT_TRUE(gFTextOutput(platform.folder / "sheet.txt"));
    before_ = Saved();
    Put("C", 0, "FILT", 77);
  }
  // Saves under the name, which has to fail with the message; the file saved before stays as it was.
  void SaveFails(const std::filesystem::path& file) {
    platform.fileDialogs.answers.push_back(file);
    platform.ExpectBox(11002);
    SaveParameterFile();
    EXPECT_FALSE(gFTextOutput(file));
  }
  [[nodiscard]] std::filesystem::path File() const { return platform.folder / "saved.KOV"; }
  void ExpectKept() { EXPECT_TRUE(before_ == platform.ReadFile("saved.KOV")); }

private:
  std::string before_;
};

TEST_F(WindowsSaves, FailOnAFileThatAnotherProgramHasOpen) {
  for (const DWORD sharing : {DWORD{0}, DWORD{FILE_SHARE_READ}}) {
    const HANDLE open = CreateFileW(File().c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, open);
    SaveFails(File());
    CloseHandle(open);
  }
  ExpectKept();
}

TEST_F(WindowsSaves, FailOnAReadOnlyFile) {
  ASSERT_TRUE(SetFileAttributesW(File().c_str(), FILE_ATTRIBUTE_READONLY));
  SaveFails(File());
  ExpectKept();
  SetFileAttributesW(File().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(WindowsSaves, FailUnderTheNameOfADeviceOrOfAnotherFile) {
  for (const char* name : {"NUL", "nul.KOV", "COM1.KOV", "saved.KOV.", "saved.KOV ", "saved.KOV:x"}) {
    SaveFails(platform.folder / name);
  }
  ExpectKept();
}

TEST_F(WindowsSaves, FailUnderANameThatIsTooLong) {
  SaveFails(platform.folder / (std::string(250, 'x') + ".KOV"));
  ExpectKept();
}

TEST_F(WindowsSaves, OpenNothingUnderTheNameOfADevice) {
  EXPECT_FALSE(gFLoadParamFile("NUL"));
  EXPECT_FALSE(gFLoadParamFile("CON.KOV"));
}

} // namespace
} // namespace loader::test
