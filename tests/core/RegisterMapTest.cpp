// docs/register-map.md, made from the shipped initial settings.
#include <gtest/gtest.h>

#include <string>

#include "core/Text.h"
#include "core/modFile.h"
#include "tools/register-map/RegisterMapDocument.h"

namespace loader::registermap {
namespace {

std::string ShippedDocument() {
  return Document(FromCodePage(ReadWholeFile(LOADER_DATA_DIR "/InitSet.Ini")));
}

bool HasLine(const std::string& document, std::string_view line) {
  return document.find("\n" + std::string(line) + "\n") != std::string::npos;
}

// A failure here: run register-map data/InitSet.Ini > docs/register-map.md.
TEST(RegisterMap, IsUpToDate) {
  EXPECT_TRUE(ShippedDocument() == ReadWholeFile(LOADER_SOURCE_DIR "/docs/register-map.md"));
}

TEST(RegisterMap, TellsTheRegistersOfASection) {
  const std::string document = ShippedDocument();
  EXPECT_TRUE(HasLine(document,
                      "| C | a channel: measuring channels, then operation channels | 44001 | 60 | 30 | "
                      "44001 to 45800 |"));
  EXPECT_TRUE(HasLine(document,
                      "| C | a channel: measuring channels, then operation channels | 45201 | 60 | 72 | "
                      "45201 to 49520 |"));
  EXPECT_TRUE(HasLine(document, "| F | the command that stores the settings | 40001 | 1 | 1 | 40001 |"));
}

TEST(RegisterMap, TellsTheRegisterOfANumber) {
  const std::string document = ShippedDocument();
  EXPECT_TRUE(HasLine(document, "| `TYPE` | 44009 | 8 | number | 2 | 1 | 0 to 40 |"));
  EXPECT_TRUE(HasLine(document, "| `TYPE` | 45209 | 8 | number | 2 | 1 | 0 to 40 |"));
  EXPECT_TRUE(HasLine(document, "| `SYS1` | 30101 | 0 | number | 2 | 0 | -32768 to 32767 |"));
}

TEST(RegisterMap, TellsTheRegistersOfAText) {
  const std::string document = ShippedDocument();
  EXPECT_TRUE(HasLine(document, "| `TAG` | 44001 to 44008 | 0 | text | 16 | \"CH\" | |"));
  EXPECT_TRUE(HasLine(document, "| `SNO.` | 30005 to 30012 | 4 | text | 16 | \"\" | |"));
}

TEST(RegisterMap, TellsWhereOlderRecordersKeepTheirSections) {
  const std::string document = ShippedDocument();
  EXPECT_TRUE(HasLine(document,
                      "| M | 40509 to 40728 (-22) | 40509 to 40728 (-22) | 40509 to 40728 (-22) | 40531 to "
                      "40750 |"));
  EXPECT_TRUE(HasLine(document,
                      "| D | 40066 to 40081 (+5) | 40066 to 40081 (+5) | 40066 to 40081 (+5) | 40061 to "
                      "40076 |"));
  EXPECT_TRUE(
      HasLine(document, "| H | 40017 to 40056 (+6) | 40011 to 40050 | 40011 to 40050 | 40011 to 40050 |"));
  EXPECT_TRUE(
      HasLine(document, "| E | 40101 to 40120 | 40101 to 40120 | 40161 to 40180 (+60) | 40101 to 40120 |"));
}

TEST(RegisterMap, NeedsBothModels) {
  EXPECT_THROW(static_cast<void>(Document(u"")), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(Document(u"2   ,V00L,0\r\n1,C,44001,60,30\r\n")), RunTimeFailure);
}

TEST(RegisterMap, NamesSectionsThatItDoesNotKnowByTheirCodes) {
  const std::string document =
      Document(u"2   ,V00L,0\r\n1,Q,40001,2,3\r\n0,AB,1,0,5,0,9\r\n2   ,V00W,0\r\n1,Q,40001,2,1\r\n");
  EXPECT_TRUE(HasLine(document, "| Q |  | 40001 | 2 | 3 | 40001 to 40006 |"));
  EXPECT_TRUE(HasLine(document, "| `AB` | 40002 | 1 | number | 2 | 5 | 0 to 9 |"));
}

} // namespace
} // namespace loader::registermap
