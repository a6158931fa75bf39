// Set-ups as they are named, the model of a file, what opens and what does not.
#include "companion/SetUps.h"

#include <gtest/gtest.h>

#include <fstream>

#include "core/Text.h"
#include "tests/companion/CompanionTest.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

SetUpAddress Parsed(std::u16string_view text) {
  return ParseAddress(text, Language::English);
}

TEST(SetUpAddresses, NameFilesRecordersAndInitialSettings) {
  const auto expect = [](std::u16string_view text, Place place, std::u16string_view where, int port, int baud,
                         int station) {
    const SetUpAddress expected{place, std::u16string(text), std::u16string(where), port, baud, station};
    EXPECT_EQ(Parsed(text), expected) << ToUtf8(text);
  };
  expect(u"plant.KOV", Place::File, u"plant.KOV", 502, 19200, 1);
  expect(u"./tcp:x", Place::File, u"./tcp:x", 502, 19200, 1);
  expect(u"tcp:10.0.0.5", Place::Tcp, u"10.0.0.5", 502, 19200, 1);
  expect(u"tcp:10.0.0.5:1502", Place::Tcp, u"10.0.0.5", 1502, 19200, 1);
  expect(u"tcp:boiler:1502#7", Place::Tcp, u"boiler", 1502, 19200, 7);
  expect(u"tcp:boiler#0", Place::Tcp, u"boiler", 502, 19200, 0);
  expect(u"tcp:[::1]:1502", Place::Tcp, u"::1", 1502, 19200, 1);
  expect(u"tcp:[::1]#3", Place::Tcp, u"::1", 502, 19200, 3);
  expect(u"serial:/dev/ttyUSB0", Place::Serial, u"/dev/ttyUSB0", 502, 19200, 1);
  expect(u"serial:/dev/ttyUSB0@9600#12", Place::Serial, u"/dev/ttyUSB0", 502, 9600, 12);
  expect(u"usb:/dev/ttyACM0", Place::Usb, u"/dev/ttyACM0", 502, 19200, 1);
  expect(u"default:KOV", Place::Default, u"KOV", 502, 19200, 1);
}

TEST(SetUpAddresses, AreRefusedWithTheReason) {
  const auto expect = [](std::u16string_view text, Phrase reason) {
    try {
      (void)Parsed(text);
      ADD_FAILURE() << ToUtf8(text);
    } catch (const Undone& undone) {
      EXPECT_EQ(undone.message, Say(Phrase::NoSuchAddress, Language::English,
                                    {{u"SETUP", text}, {u"REASON", PhraseText(reason, Language::English)}}));
    }
  };
  expect(u"", Phrase::AddressEmpty);
  expect(u"tcp:", Phrase::AddressHost);
  expect(u"tcp:#1", Phrase::AddressHost);
  expect(u"tcp:x:0", Phrase::AddressPort);
  expect(u"tcp:x:65536", Phrase::AddressPort);
  expect(u"tcp:x:", Phrase::AddressPort);
  expect(u"tcp:x:-5", Phrase::AddressPort);
  expect(u"tcp:x#256", Phrase::AddressStation);
  expect(u"tcp:x#one", Phrase::AddressStation);
  expect(u"serial:", Phrase::AddressDevice);
  expect(u"serial:/dev/x@fast", Phrase::AddressBaud);
  expect(u"usb:", Phrase::AddressDevice);
  expect(u"default:", Phrase::AddressModel);
  expect(u"default:kov", Phrase::AddressModel);
}

using ModelsOfFiles = CompanionTest;

ModelFinding Found(std::string_view bytes, const char* name = "a.txt") {
  return FindModel(bytes, name, {}, Language::English);
}

TEST_F(ModelsOfFiles, AreToldByTheContent) {
  EXPECT_EQ(Found(BytesOf("default:KOV")).model, "KOV");
  EXPECT_EQ(Found(BytesOf("default:RUG")).model, "RUG");
  EXPECT_EQ(Found(BytesOf("default:RUG"), "wrong.KOV").basis, ModelBasis::Content);
  EXPECT_EQ(Found(BytesOf("default:KOV"), "wrong.RUG").model, "KOV") << "though it opens as a RUG as well";
  EXPECT_EQ(Found("C40COLR,3\r\n").model, "RUG") << "KOV has 30 channels";
}

TEST_F(ModelsOfFiles, ThatFitBothAreToldByTheModelFieldThenByTheName) {
  const ModelFinding field = Found("C00COLR,3\r\nP00PILC,RUG\r\n", "x.KOV");
  EXPECT_EQ(field.basis, ModelBasis::ModelField);
  EXPECT_EQ(field.model, "RUG");
  const ModelFinding name = Found("C00COLR,3\r\n", "x.kov");
  EXPECT_EQ(name.basis, ModelBasis::FileName);
  EXPECT_EQ(name.model, "KOV");
  EXPECT_EQ(Found("C00COLR,3\r\n").basis, ModelBasis::Both);
  EXPECT_EQ(Found("C00COLR,3\r\n").model, "");
}

TEST_F(ModelsOfFiles, ThatFitNeitherAreUnsettledUnlessTheirFieldSays) {
  EXPECT_EQ(Found("Q00XXXX,3\r\n").basis, ModelBasis::Neither);
  EXPECT_EQ(Found("Q00XXXX,3\r\nP00PILC,KOV\r\n").model, "KOV");
  EXPECT_EQ(FindModel("Q00XXXX,3\r\n", "x", "RUG", Language::English).model, "RUG");
}

using OpenedSetUps = CompanionTest;

TEST_F(OpenedSetUps, HoldTheirFileWithoutTouchingTheOneInForce) {
  LoadModel("KOV");
  SetNumValue("C", 0, "COLR", 7);
  const std::u16string file = WriteFile("x.RUG", "C40COLR,3\r\nU00UNIT,Nm3\r\n");
  OpenedSetUp opened = OpenSetUp(ParseAddress(file, Language::English), {}, Language::English);
  EXPECT_EQ(ModelCode, "KOV");
  EXPECT_EQ(Stored("C", 0, "COLR"), 7);
  const SetUpInForce inForce(opened.setUp);
  EXPECT_EQ(ModelCode, "RUG");
  EXPECT_EQ(Stored("C", 40, "COLR"), 3);
  EXPECT_EQ(UnitNames.at(UserUnitIndex(1, Profile.UnitCount)), u"Nm3");
}

TEST_F(OpenedSetUps, OfABadFileTellItsFirstLineThatPreventsIt) {
  const std::u16string file = WriteFile("x.RUG", "C40COLR,3\r\nC40TAG ,a,b\r\nC40COLR,red\r\n");
  try {
    (void)OpenSetUp(ParseAddress(file, Language::English), "RUG", Language::English);
    ADD_FAILURE();
  } catch (const Undone& undone) {
    EXPECT_EQ(undone.message, file + u":3: C40COLR: the file does not open (not a number)");
  }
}

TEST_F(OpenedSetUps, AreNoFoldersNoPipesAndNoRecorders) {
  for (const std::u16string& text : {folder.Path().u16string(), std::u16string(u"tcp:localhost"),
                                     std::u16string(u"/dev/null"), std::u16string(u"/dev/stdin/x")}) {
    EXPECT_THROW((void)OpenSetUp(ParseAddress(text, Language::English), "KOV", Language::English), Undone)
        << ToUtf8(text);
  }
}

} // namespace
} // namespace loader::test
