// docs/parameters.md, made from the meaning table and the shipped initial settings.
#include "tools/parameters/ParametersDocument.h"

#include <gtest/gtest.h>

#include <string>

#include "core/Text.h"
#include "core/modFile.h"

namespace loader::parameters {
namespace {

std::string ShippedDocument() {
  return Document(FromCodePage(ReadWholeFile(LOADER_DATA_DIR "/InitSet.Ini")));
}

std::string LineOf(const std::string& document, std::string_view start) {
  const std::size_t at = document.find("\n" + std::string(start));
  return at == std::string::npos ? "" : document.substr(at + 1, document.find('\n', at + 1) - at - 1);
}

// A failure here: run parameters data/InitSet.Ini > docs/parameters.md.
TEST(ParametersDocument, IsUpToDate) {
  EXPECT_TRUE(ShippedDocument() == ReadWholeFile(LOADER_SOURCE_DIR "/docs/parameters.md"));
}

TEST(ParametersDocument, AnswersWhatAParameterIsInOneLine) {
  const std::string document = ShippedDocument();
  EXPECT_EQ("| `SDIG` | 積算演算 外部入力<br>Totalizer external input | digital inputs, alarms of the "
            "channels: 0 = "
            "DI1, 1 = DI2, …, 129 = ﾁｬﾈﾙ30 警報4 (`KOV`); 0 = DI1, 1 = DI2, …, 303 = ﾁｬﾈﾙ72 警報4 (`RUG`) | "
            "0 to 129 / "
            "0 to 303 | `fgrCh` 32, `frmChSetting` `cmbSdig`, `frmOperationChSet` `cmbSdig` |",
            LineOf(document, "| `SDIG` |"));
  EXPECT_EQ("| `A#TY` | 警報No.# 警報動作<br>Alarm # type | alarm types: 0 = OFF, 1 = H, 2 = L | 0 to 2 | "
            "`fgrCh` 39, "
            "43, 47, 51, `frmChSetting` `cmbAlarmType#`, `frmOperationChSet` `cmbAlarmType#` |",
            LineOf(document, "| `A#TY` |"));
  EXPECT_EQ(
      "| `IPA#` | IP アドレス #<br>IP address, number # | one of the four numbers of an address | 0 to 255 | "
      "`txtEtherIPAdd(n)` |",
      LineOf(document, "| `IPA#` |"));
}

TEST(ParametersDocument, TellsWhatADecidingParameterMakesOfAnother) {
  const std::string line = LineOf(ShippedDocument(), "| `MTM3` |");
  EXPECT_NE(std::string::npos, line.find("`MTM1` 0, 1, 2: no meaning<br>`MTM1` 3, 4: alarm numbers")) << line;
}

TEST(ParametersDocument, ListsWhatIsShownDifferently) {
  EXPECT_NE(std::string::npos, LineOf(ShippedDocument(), "| C `SEKI` | text output |").find("3 = 時間測定"));
}

TEST(ParametersDocument, NeedsBothModels) {
  EXPECT_THROW(static_cast<void>(Document(u"2   ,V00L,0\r\n1,C,44001,60,30\r\n")), RunTimeFailure);
}

} // namespace
} // namespace loader::parameters
