// Traces: lines as frames, frames as exchanges, registers as parameters of every generation.
#include "companion/Decode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "comm/RecorderCheck.h"
#include "core/Text.h"
#include "simulator/CheckValue.h"
#include "simulator/Simulator.h"
#include "simulator/Trace.h"
#include "tests/companion/CompanionTest.h"
#include "tests/simulator/TestRecorder.h"

namespace loader::test {
namespace {

using simulator::Bytes;
using simulator::HexOf;
using simulator::Line;

// --- Lines

std::string Shown(const TraceLine& line) {
  const char* mark = line.direction == Direction::Request ? ">"
                     : line.direction == Direction::Reply ? "<"
                                                          : "?";
  return std::to_string(line.line) + mark + (line.broken ? "broken " : "") + HexOf(line.bytes);
}
std::string Shown(std::string_view text) {
  std::string all;
  for (const TraceLine& line : ReadTraceLines(text)) {
    all += (all.empty() ? "" : "|") + Shown(line);
  }
  return all;
}

TEST(TraceLines, AreHexInAnyForm) {
  for (const char* text : {"01 03 0F A6", "01030FA6", "01030fa6", "0x01 0x03 0x0F 0xA6", "01:03:0f:a6",
                           "01, 03, 0F, A6", "  0103 0FA6\r\n", "[01][03][0F][A6]", "01-03-0F-A6"}) {
    EXPECT_EQ(Shown(text), "1?01 03 0F A6") << text;
  }
}

TEST(TraceLines, MayBeginWithTimesNamesAndDirections) {
  EXPECT_EQ(Shown("12 127.0.0.1:51234: > 01 03 0F A6"), "1>01 03 0F A6");
  EXPECT_EQ(Shown("12 127.0.0.1:51234: < 01 03"), "1<01 03");
  EXPECT_EQ(Shown("12:00:01.250 TX: 01 03 0F A6"), "1>01 03 0F A6");
  EXPECT_EQ(Shown("2026-11-22 12:00:01 01 03 0F A6"), "1?01 03 0F A6");
  EXPECT_EQ(Shown("[12:00] Rx 01 03"), "1<01 03");
  EXPECT_EQ(Shown("request 01:03:0F:A6\nreply 01:03"), "1>01 03 0F A6|2<01 03");
}

TEST(TraceLines, OfWordsAreLeftOut) {
  EXPECT_EQ(Shown("listening on 127.0.0.1:1502\n\n# a comment\n"), "");
  EXPECT_EQ(Shown("1 127.0.0.1:5: read 64 holding registers 44001-44064 (C 1: all; C 2: TAG) -> 137 bytes"),
            "");
  EXPECT_EQ(Shown("3 x: write 1 holding register 40001 (F 1: FIX) -> exception 2 (illegal data address)"),
            "");
  EXPECT_EQ(Shown("bad"), "");
  EXPECT_EQ(Shown("\n\n01 03 0F"), "3?01 03 0F");
}

TEST(TraceLines, WithSomethingElseAmongTheBytesAreBroken) {
  EXPECT_EQ(Shown("> 01 03 0F A6 0G 01").substr(0, 8), "1>broken");
  EXPECT_EQ(Shown("01 03 0F A6 1 01").substr(0, 8), "1?broken");
}

// --- Frames

Bytes Rtu(Bytes body) {
  const std::uint16_t check = simulator::CheckValue(body);
  body.push_back(static_cast<std::uint8_t>(check & 0xFF));
  body.push_back(static_cast<std::uint8_t>(check >> 8));
  return body;
}
Bytes Tcp(int transaction, const Bytes& body) {
  Bytes frame;
  for (const int byte : {transaction >> 8, transaction & 0xFF, 0, 0, 0, static_cast<int>(body.size())}) {
    frame.push_back(static_cast<std::uint8_t>(byte));
  }
  for (const std::uint8_t byte : body) {
    frame.push_back(byte);
  }
  return frame;
}

class Decodes : public CompanionTest {
protected:
  Decodes() { LoadModel("KOV"); }

  static DecodedTrace Frames(const std::vector<Bytes>& frames,
                             const Speech& speech = {Language::English, false}) {
    std::string text;
    for (const Bytes& frame : frames) {
      text += HexOf(frame) + "\n";
    }
    return DecodeTrace(ReadTraceLines(text), 5, speech);
  }
  static std::vector<FrameDefect> Defects(const std::vector<Bytes>& frames) {
    std::vector<FrameDefect> defects;
    for (const DecodedFrame& frame : Frames(frames).frames) {
      defects.push_back(frame.defect);
    }
    return defects;
  }

  const Bytes readType{1, 3, 0x0F, 0xA8, 0, 1}; // 44009
  const Bytes typeIs1{1, 3, 2, 0, 1};
  static constexpr auto None = FrameDefect::None;
};

TEST_F(Decodes, AReadAndItsReply) {
  const DecodedTrace trace = Frames({Rtu(readType), Rtu(typeIs1)});
  ASSERT_EQ(trace.frames.size(), 2U);
  const DecodedFrame& request = trace.frames[0];
  EXPECT_EQ(request.direction, Direction::Request);
  EXPECT_EQ(request.wire, Wire::Rtu);
  EXPECT_EQ(request.station, 1);
  EXPECT_EQ(request.address, 44009);
  EXPECT_FALSE(request.unanswered);
  EXPECT_TRUE(request.values.empty());
  const DecodedFrame& reply = trace.frames[1];
  EXPECT_EQ(reply.direction, Direction::Reply);
  EXPECT_EQ(reply.address, 44009);
  ASSERT_EQ(reply.values.size(), 1U);
  EXPECT_EQ(KeyOf(reply.values[0].field.ref), "C00TYPE");
  EXPECT_EQ(reply.values[0].value, StoredValue(std::int16_t{1}));
  EXPECT_EQ(reply.values[0].text, u"K熱電対");
}

TEST_F(Decodes, WritesOfOneAndOfMany) {
  const Bytes writeOne{1, 6, 0x0F, 0xA8, 0, 4};
  const DecodedTrace one = Frames({Rtu(writeOne), Rtu(writeOne)});
  ASSERT_EQ(one.frames.size(), 2U);
  EXPECT_EQ(one.frames[0].direction, Direction::Request);
  EXPECT_EQ(one.frames[0].values.at(0).text, u"T熱電対");
  EXPECT_EQ(one.frames[1].direction, Direction::Reply);
  EXPECT_EQ(one.frames[1].defect, None);

  const Bytes writeTwo{1, 16, 0x0F, 0xA8, 0, 2, 4, 0, 4, 0, 3};
  const DecodedTrace two = Frames({Tcp(7, writeTwo), Tcp(7, {1, 16, 0x0F, 0xA8, 0, 2})});
  EXPECT_EQ(two.frames[0].wire, Wire::Tcp);
  ASSERT_EQ(two.frames[0].values.size(), 2U);
  EXPECT_EQ(KeyOf(two.frames[0].values[1].field.ref), "C00SUBC");
  EXPECT_EQ(two.frames[1].defect, None);
}

TEST_F(Decodes, MatchTcpRepliesByTheirTransaction) {
  const DecodedTrace trace =
      Frames({Tcp(1, readType), Tcp(2, {1, 3, 0x0F, 0xA9, 0, 1}), Tcp(2, {1, 3, 2, 0, 0}), Tcp(1, typeIs1)});
  EXPECT_EQ(trace.frames[2].address, 44010);
  EXPECT_EQ(trace.frames[3].address, 44009);
  EXPECT_EQ(Defects({Tcp(1, readType), Tcp(2, typeIs1)}), (std::vector{None, FrameDefect::NoRequest}));
}

TEST_F(Decodes, TellWhatIsDamaged) {
  Bytes flipped = Rtu(readType);
  flipped.back() ^= 1;
  EXPECT_EQ(Defects({flipped}), (std::vector{FrameDefect::WrongCheck}));
  flipped = Rtu(readType);
  flipped[flipped.size() - 2] ^= 1;
  EXPECT_EQ(Defects({flipped}), (std::vector{FrameDefect::WrongCheck}))
      << "the link alone forgives one of the two";
  Bytes cut = Tcp(1, typeIs1);
  cut.pop_back();
  EXPECT_EQ(Defects({Tcp(1, readType), cut}), (std::vector{None, FrameDefect::CutShort}));
  Bytes more = Tcp(1, typeIs1);
  more.push_back(0x55);
  EXPECT_EQ(Defects({Tcp(1, readType), more}), (std::vector{None, FrameDefect::TooLong}));
  EXPECT_EQ(Defects({Rtu({1, 3, 4, 0, 1})}), (std::vector{FrameDefect::CutShort}));
}

TEST_F(Decodes, TellWhatFitsNothing) {
  EXPECT_EQ(Defects({Rtu(typeIs1)}), (std::vector{FrameDefect::NoRequest}));
  EXPECT_EQ(Defects({Rtu(readType), Rtu({1, 3, 4, 0, 1, 0, 0})}),
            (std::vector{None, FrameDefect::OtherRequest}));
  EXPECT_EQ(Defects({Rtu(readType), Rtu({2, 3, 2, 0, 1})}), (std::vector{None, FrameDefect::OtherRequest}))
      << "another station";
  EXPECT_EQ(Defects({Rtu(readType), Rtu({1, 4, 2, 0, 1})}), (std::vector{None, FrameDefect::OtherRequest}))
      << "another function";
  EXPECT_EQ(Defects({Rtu({1, 43, 14, 1, 0})}), (std::vector{FrameDefect::UnknownFunction}));
  EXPECT_TRUE(Frames({Rtu(typeIs1)}).frames[0].values.empty()) << "registers without an address";
}

TEST_F(Decodes, TellExceptionsAndRequestsWithoutReply) {
  const DecodedTrace trace = Frames({Rtu(readType), Rtu({1, 0x83, 2}), Rtu(readType), Rtu(readType)});
  EXPECT_EQ(trace.frames[1].exception, 2);
  EXPECT_EQ(trace.frames[1].function, 3);
  EXPECT_EQ(trace.frames[1].defect, None) << "it is understood";
  EXPECT_FALSE(trace.frames[0].unanswered);
  EXPECT_TRUE(trace.frames[2].unanswered);
  EXPECT_TRUE(trace.frames[3].unanswered);
}

TEST_F(Decodes, ARequestThatLooksLikeAHeader) {
  const DecodedTrace trace = Frames({Rtu({1, 3, 0, 0, 0, 2}), Rtu({1, 3, 4, 0, 0, 0, 0})});
  EXPECT_EQ(trace.frames[0].wire, Wire::Rtu);
  EXPECT_EQ(trace.frames[0].address, 40001);
  EXPECT_EQ(trace.frames[1].defect, None);
}

TEST_F(Decodes, PutATextTogetherThatTwoRepliesBring) {
  Bytes first{1, 3, 8};
  Bytes second{1, 3, 8};
  for (const char c : std::string("BADCFEHG")) { // the first byte of a text lies in the low half
    first.push_back(static_cast<std::uint8_t>(c));
    second.push_back(static_cast<std::uint8_t>(c + 8));
  }
  const Bytes readFirst{1, 3, 0x0F, 0xA0, 0, 4};
  const Bytes readSecond{1, 3, 0x0F, 0xA4, 0, 4};
  const DecodedTrace trace = Frames({Rtu(readFirst), Rtu(first), Rtu(readSecond), Rtu(second), Rtu(readType),
                                     Rtu(typeIs1), Rtu(readFirst), Rtu(first)});
  EXPECT_FALSE(trace.frames[1].values.at(0).value) << "half of it";
  EXPECT_EQ(trace.frames[3].values.at(0).value, StoredValue(std::u16string(u"ABCDEFGHIJKLMNOP")));
  EXPECT_FALSE(trace.frames[7].values.at(0).value) << "the other half is of an earlier read";
}

TEST_F(Decodes, CountRegistersWithoutAParameter) {
  const DecodedTrace trace = Frames({Rtu({1, 3, 0x03, 0xE7, 0, 2}), Rtu({1, 3, 4, 0, 0, 0, 0})}); // 41000
  EXPECT_EQ(trace.frames[1].nameless + static_cast<int>(trace.frames[1].values.size()), 2);
}

TEST_F(Decodes, AnyBytes) {
  const std::vector<Bytes> good{Rtu(readType),
                                Rtu(typeIs1),
                                Tcp(7, readType),
                                Tcp(7, typeIs1),
                                Tcp(8, {1, 16, 0x0F, 0xA8, 0, 2, 4, 0, 4, 0, 3}),
                                Tcp(8, {1, 0x90, 2})};
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    std::vector<Bytes> frames;
    for (int i = 0; i < 6; ++i) {
      Bytes frame = good[random() % good.size()];
      frame[random() % frame.size()] = static_cast<std::uint8_t>(random());
      frame.resize(2 + random() % frame.size());
      frames.push_back(random() % 3 == 0 ? Rtu(frame) : random() % 2 == 0 ? Tcp(7, frame) : frame);
    }
    EXPECT_EQ(Frames(frames).frames.size(), frames.size());
  }
}

// --- Every generation

// All blocks of a recorder, read as a loader does: 64 registers at a time, which cuts texts.
std::string TraceOf(simulator::Simulator& recorder, std::vector<std::string>& lines, Line wire) {
  int transaction = 0;
  for (const simulator::MapBlock& block : recorder.TheRecorder().map.blocks) {
    for (int from = 0; from < block.words; from += 64) {
      const int count = std::min(64, block.words - from);
      const int address = block.address + from;
      const bool input = address < 40001;
      const int offset = address - (input ? 30001 : 40001);
      const Bytes body{1,
                       static_cast<std::uint8_t>(input ? 4 : 3),
                       static_cast<std::uint8_t>(offset >> 8),
                       static_cast<std::uint8_t>(offset),
                       0,
                       static_cast<std::uint8_t>(count)};
      (void)recorder.Handle(wire, "client", wire == Line::Tcp ? Tcp(++transaction, body) : Rtu(body));
    }
  }
  std::string text;
  for (const std::string& line : lines) {
    text += line + "\n";
  }
  return text;
}

struct Generation {
  const char* model;
  const char* tag;
};
class EachGeneration : public CompanionTest, public testing::WithParamInterface<Generation> {};

// What the recorder's own map says of its registers; kinds of input have other numbers today.
void ExpectAsTheRecorderHasIt(const simulator::TestRecorder& recorder, const DecodedValue& value) {
  ParameterRef ref = value.field.ref;
  const std::string key = KeyOf(ref);
  if (ref.section == "Z" && recorder.Has("E", 0, ref.tag)) {
    ref.section = "E"; // where an older recorder has it
  }
  if (value.field.sense == RegisterSense::OldTime) {
    return;
  }
  if (!recorder.Has(ref.section, ref.item,
                    ref.tag)) { // the loader reads it; the recorder holds nothing there
    EXPECT_EQ(recorder.memory.At(value.field.address), 0) << key;
    return;
  }
  EXPECT_EQ(recorder.Address(ref.section, ref.item, ref.tag), value.field.address) << key;
  if (const auto* number = std::get_if<std::int16_t>(&*value.value)) {
    const int there = recorder.Number(ref.section, ref.item, ref.tag);
    EXPECT_TRUE(*number == there || (ref.tag == "TYPE" && there >= 13))
        << key << " " << *number << " " << there;
  } else {
    EXPECT_EQ(ToUtf8(std::get<std::u16string>(*value.value)), recorder.Text(ref.section, ref.item, ref.tag))
        << key;
  }
}

TEST_P(EachGeneration, HasItsParametersByNameAndValue) {
  const auto model =
      std::string_view(GetParam().model) == "KOV" ? simulator::Model::Kov : simulator::Model::Rug;
  const simulator::TestRecorder recorder(model, GetParam().tag);
  LoadModel(GetParam().model);
  for (const Line wire : {Line::Tcp, Line::Rtu}) {
    std::vector<std::string> lines;
    simulator::SimulatorSettings settings;
    settings.frames = [&](const std::string& line) { lines.push_back(line); };
    simulator::Simulator simulated(recorder.On(), settings);
    const std::string text = TraceOf(simulated, lines, wire);
    const auto generation = GenerationOfTag(GetParam().model, Widen(GetParam().tag));
    const DecodedTrace trace = DecodeTrace(ReadTraceLines(text), *generation, {Language::English, true});
    EXPECT_EQ(trace.frames.size(), lines.size());
    EXPECT_EQ(trace.identity.model, Widen(GetParam().model));
    EXPECT_EQ(trace.identity.version, Widen(GetParam().tag));
    std::set<std::string> whole;
    for (const DecodedFrame& frame : trace.frames) {
      EXPECT_EQ(frame.defect, FrameDefect::None) << frame.line;
      for (const DecodedValue& value : frame.values) {
        if (value.value && value.field.ref.section != "S") { // the state is the recorder's of now
          ExpectAsTheRecorderHasIt(recorder, value);
          whole.insert(KeyOf(value.field.ref));
        }
      }
    }
    for (const RegisterField& field : FieldsOfGeneration(*generation)) {
      const ParameterRef& ref = field.ref;
      const bool there = recorder.Has(ref.section, ref.item, ref.tag) && ref.section != "S";
      EXPECT_TRUE(whole.contains(KeyOf(ref)) || !there) << KeyOf(ref);
    }
    EXPECT_GT(whole.size(), 300U);
  }
}

INSTANTIATE_TEST_SUITE_P(All, EachGeneration,
                         testing::Values(Generation{"KOV", "V05A"}, Generation{"KOV", "V13A"},
                                         Generation{"KOV", "V17A"}, Generation{"KOV", "V26A"},
                                         Generation{"KOV", "V39A"}, Generation{"KOV", "V40A"},
                                         Generation{"RUG", "V09W"}, Generation{"RUG", "V12W"}),
                         [](const auto& generation) { return std::string(generation.param.tag); });

} // namespace
} // namespace loader::test
