// The list of a plant's recorders: what it may look like, and every defect with its line.
#include "companion/FleetList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "core/Text.h"
#include "tests/companion/CompanionTest.h"

namespace loader::test {
namespace {

std::string Told(const FleetRecorder& recorder) {
  return std::to_string(recorder.line) + "|" + ToUtf8(recorder.name) + "|" + ToUtf8(recorder.address.text) +
         "|" + recorder.model + "|" + ToUtf8(recorder.file);
}

using Lines = std::vector<std::string>;
Lines Recorders(std::string_view bytes) {
  const FleetList list = ReadFleetList(bytes, Language::English);
  for (const FleetListDefect& defect : list.defects) {
    ADD_FAILURE() << defect.line << ": " << ToUtf8(defect.reason);
  }
  Lines lines;
  std::ranges::transform(list.recorders, std::back_inserter(lines), Told);
  return lines;
}

Lines Defects(std::string_view bytes) {
  Lines lines;
  for (const FleetListDefect& defect : ReadFleetList(bytes, Language::English).defects) {
    lines.push_back(std::to_string(defect.line) + ": " + ToUtf8(defect.reason));
  }
  return lines;
}

constexpr std::string_view Head = "name,address,model,file\n";
Lines DefectsOfRows(const std::string& rows) {
  return Defects(std::string(Head) + rows);
}

TEST(FleetList, NamesARecorderALine) {
  EXPECT_EQ(Recorders("name,address,model,file\n"
                      "Boiler 1,tcp:10.0.0.1,RUG,boiler1.RUG\n"
                      "乾燥機,serial:/dev/ttyUSB0@9600#2,,line 2/乾燥機.KOV\n"
                      "Oven,usb:/dev/ttyACM0,KOV,oven.KOV"),
            (Lines{"2|Boiler 1|tcp:10.0.0.1|RUG|boiler1.RUG",
                   "3|乾燥機|serial:/dev/ttyUSB0@9600#2||line 2/乾燥機.KOV",
                   "4|Oven|usb:/dev/ttyACM0|KOV|oven.KOV"}));
}

TEST(FleetList, MayHaveAByteOrderMarkCommentsBlankLinesAndAnyLineEnds) {
  EXPECT_EQ(Recorders("\xEF\xBB\xBF# the plant, \"all of it\r\n\r\n  # more\r\nname,address,model,file\r\n"
                      " \t\r\n,,,\r\nA , tcp:a ,, a.KOV \r\n#B,tcp:b,,b\r\nC,tcp:c,RUG,c.RUG\r\n"),
            (Lines{"7|A|tcp:a||a.KOV", "9|C|tcp:c|RUG|c.RUG"}));
  EXPECT_EQ(Recorders("name,address,model,file\rA,tcp:a,,a\rB,tcp:b,,b\r"),
            (Lines{"2|A|tcp:a||a", "3|B|tcp:b||b"}));
}

TEST(FleetList, QuotesFieldsAsRfc4180Does) {
  EXPECT_EQ(Recorders("\"name\",address,model,file\n\"Dryer, \"\"left\"\"\",tcp:a, \"RUG\" ,\" a \"\n"
                      "\"#1\",tcp:b,,b\n"),
            (Lines{"2|Dryer, \"left\"|tcp:a|RUG| a ", "3|#1|tcp:b||b"}));
}

TEST(FleetList, TheColumnsStandInAnyOrderAndModelMayBeAbsent) {
  EXPECT_EQ(Recorders("file,name,address\na.KOV,A,tcp:a\n"), (Lines{"2|A|tcp:a||a.KOV"}));
}

TEST(FleetList, NeedsItsHead) {
  const Lines expected{"1: the first line has to be name,address,model,file"};
  EXPECT_EQ(Defects(""), expected);
  EXPECT_EQ(Defects("A,tcp:a,,a\n"), expected);
  EXPECT_EQ(Defects("name,address,model\nA,tcp:a,\n"), expected);
  EXPECT_EQ(Defects("name,address,file,colour\n"), expected);
  EXPECT_EQ(Defects("name,name,address,file\n"), expected);
  EXPECT_EQ(Defects("# c\nnaem,address,model,file\n"),
            (Lines{"2: the first line has to be name,address,model,file"}));
  EXPECT_EQ(Defects(Head), (Lines{"1: it names no recorder"}));
}

TEST(FleetList, TellsEveryDefectWithItsLine) {
  EXPECT_EQ(DefectsOfRows("A,tcp:a,XYZ,a\n"
                          "B,tcp:,,b\n"
                          ",tcp:c,,c\n"
                          "D,plant.KOV,,d\n"
                          "E,tcp:e,KOV\n"
                          "F,tcp:f,KOV,f,\n"
                          "G\"x,tcp:g,,g\n"
                          "\"H\"x,tcp:h,,h\n"
                          "\"I\nJ\",tcp:i,,\n"
                          "K,default:RUG,,k\n"
                          "L,tcp:l:99999,,l\n"
                          "\"M,tcp:m,,m\n"),
            (Lines{"2: XYZ: the models are KOV and RUG",
                   "3: tcp:: no set-up can be meant by this (tcp: needs a host)", "4: name is empty",
                   "5: plant.KOV: is not the address of a recorder", "6: 3 fields in place of 4",
                   "7: 5 fields in place of 4", "8: a quote where none can stand",
                   "9: a quote where none can stand", "10: a control character in name", "10: file is empty",
                   "12: default:RUG: is not the address of a recorder",
                   "13: tcp:l:99999: no set-up can be meant by this (a port is a number from 1 to 65535)",
                   "14: a quote that is not closed"}));
}

TEST(FleetList, NamesNothingTwice) {
  EXPECT_EQ(DefectsOfRows("A,tcp:a,,a.KOV\nA,tcp:b,,b.KOV\n"), (Lines{"3: name \"A\" is that of line 2"}));
  EXPECT_EQ(DefectsOfRows("A,tcp:a,,a.KOV\nB,tcp:b,,x/../a.KOV\n"),
            (Lines{"3: file \"x/../a.KOV\" is that of line 2"}));
  // One recorder by two names would be written twice, and the first one's "verified" be no longer true.
  EXPECT_EQ(DefectsOfRows("A,tcp:Host,,a\nB,tcp:host:502#1,,b\n"),
            (Lines{"3: address \"tcp:host:502#1\" is that of line 2"}));
  EXPECT_EQ(DefectsOfRows("A,tcp:host#1,,a\nB,tcp:host#2,,b\n"), Lines{});
}

TEST(FleetList, IsUtf8) {
  EXPECT_EQ(DefectsOfRows("A,tcp:a,,a\n\x83{\x83,tcp:b,,b\nC,tcp:,,c\n"), (Lines{"3: not UTF-8"}));
  EXPECT_EQ(Defects("\x83{"), (Lines{"1: not UTF-8"}));
}

std::u16string Wire(const std::u16string& text) {
  return WireOf(ParseAddress(text, Language::English));
}

TEST(FleetList, RecordersOfTheSameWireAreKnown) {
  EXPECT_EQ(Wire(u"tcp:GateWay#1"), Wire(u"tcp:gateway:502#2"));
  EXPECT_NE(Wire(u"tcp:a"), Wire(u"tcp:a:1502"));
  EXPECT_NE(Wire(u"tcp:a"), Wire(u"tcp:b"));
  EXPECT_EQ(Wire(u"serial:/dev/ttyS0#1"), Wire(u"serial:/dev/../dev/ttyS0@9600#2"));
  EXPECT_NE(Wire(u"serial:/dev/ttyS0"), Wire(u"serial:/dev/ttyS1"));
  EXPECT_NE(Wire(u"serial:/dev/ttyACM0"), Wire(u"usb:/dev/ttyACM0"));
}

TEST(FleetList, ALinkToADeviceIsTheDevice) {
  const TemporaryFolder folder("fleet-list-test-");
  std::filesystem::create_symlink("/dev/null", folder / "COM1");
  EXPECT_EQ(Wire(u"serial:" + (folder / "COM1").u16string()), Wire(u"serial:/dev/null#2"));
}

} // namespace
} // namespace loader::test
