// The printed sheet: the window's own, and the reason where there is none.
#include "companion/Sheet.h"

#include <gtest/gtest.h>

#include "core/Text.h"
#include "files/TextOutput.h"
#include "meaning/ParameterText.h"
#include "simulator/Plant.h"
#include "tests/companion/CompanionTest.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

class Sheets : public CompanionTest {
protected:
  static WholeSetUp Plant(std::string_view model) {
    WholeSetUp setUp = InitialSetUp(model, Language::English);
    WithSetUp(setUp, [&] {
      ParamStore =
          simulator::PlantSetup(ParamStore, model == "KOV" ? simulator::Model::Kov : simulator::Model::Rug);
    });
    return setUp;
  }
  // Without the line that has the time.
  static std::string Rest(const std::string& sheet) {
    const std::size_t second = sheet.find("\r\n") + 2;
    return sheet.substr(sheet.find("\r\n", second));
  }
};

TEST_F(Sheets, WithSecretsAreThoseOfTheWindow) {
  for (const char* model : {"KOV", "RUG"}) {
    WholeSetUp plant = Plant(model);
    const std::filesystem::path file = folder / "sheet";
    ASSERT_TRUE(WithSetUp(plant, [&] { return gFTextOutput(file); }));
    std::ifstream in(file, std::ios::binary);
    const std::string window((std::istreambuf_iterator<char>(in)), {});
    EXPECT_TRUE(Rest(SheetOf(plant, {Language::English, true})) == Rest(window)) << model;
    EXPECT_FALSE(Rest(SheetOf(plant, {Language::English, false})) == Rest(window)) << model;
  }
}

TEST_F(Sheets, WithoutSecretsPrintNoneWhateverItsValue) {
  for (const char* model : {"KOV", "RUG"}) {
    LoadModel(model);
    int secrets = 0;
    for (const ParameterRef& ref : AllParameters()) {
      if (!IsSecret(ref)) {
        continue;
      }
      ++secrets;
      const StoredParameter stored = FindParameter(ref);
      if (stored.text != nullptr) {
        SetText(*stored.text, u"sesame", SlotValue);
      } else {
        stored.number->Value = 1234;
      }
    }
    EXPECT_EQ(secrets, 11);
    const WholeSetUp before = CopyOfSetUp();
    const std::string sheet = SheetOf(before, {Language::English, false});
    EXPECT_EQ(sheet.find("sesame"), std::string::npos);
    EXPECT_EQ(sheet.find("1234"), std::string::npos);
    EXPECT_NE(SheetOf(before, {Language::English, true}).find("sesame"), std::string::npos);
    BlankSecrets();
    for (const ParameterRef& ref : AllParameters()) {
      const bool blank = Trim(ReportText(ref.section, ref.item, ref.tag, View::Sheet)).empty();
      EXPECT_TRUE(!IsSecret(ref) || blank) << KeyOf(ref);
    }
  }
}

TEST_F(Sheets, WithoutATemplateHaveAReason) {
  const WholeSetUp kov = InitialSetUp("KOV", Language::English);
  const BarePlatform elsewhere({.programFolder = folder.Path()});
  const auto reason = [&]() -> std::u16string {
    try {
      (void)SheetOf(kov, {Language::English, false});
    } catch (const Undone& undone) {
      return undone.message;
    }
    return {};
  };
  const std::u16string pattern = (folder / "TextKOV.Ini").u16string();
  EXPECT_TRUE(reason().starts_with(pattern + u": the template cannot be read (")) << ToUtf8(reason());
  WriteFile("TextKOV.Ini", "\"C99TAG \"\r\n");
  EXPECT_TRUE(reason().starts_with(pattern + u": cannot be printed by this template (")) << ToUtf8(reason());
}

} // namespace
} // namespace loader::test
