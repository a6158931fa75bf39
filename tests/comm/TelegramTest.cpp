// How parameters lie in registers, and the transfer of whole sections.
#include "comm/ParameterTelegram.h"

#include <algorithm>

#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

ParamSection Section(std::string code, std::int32_t base, std::int16_t words, std::size_t items,
                     const ParamItem& item = {}) {
  ParamSection section;
  code.resize(CodeWidth, ' ');
  section.Code = code;
  section.BaseAddress = base;
  section.ItemWords = words;
  section.ItemCount = static_cast<std::int16_t>(items);
  section.Items.assign(items, item);
  return section;
}

ParamNumRecord NumberAt(std::string tag, std::int16_t offset) {
  ParamNumRecord record;
  tag.resize(TagWidth, ' ');
  record.Tag = tag;
  record.WordOffset = offset;
  return record;
}

ParamTextRecord TextAt(std::string tag, std::int16_t offset, std::int16_t bytes) {
  ParamTextRecord record;
  tag.resize(TagWidth, ' ');
  record.Tag = tag;
  record.WordOffset = offset;
  record.ByteLength = bytes;
  record.Value = record.ReadValue = record.DefaultValue = FixedText(u"before");
  return record;
}

struct Telegram : RecorderFixture {
  // A store of one section, and the recorder at the other end of the line.
  void Hold(ParamSection section, Line line = Line::Ethernet) {
    ParamStore = {std::move(section)};
    OpenLink(line);
  }
  void PutBytes(std::string_view hex, std::size_t at = 0) {
    const Bytes bytes = Hex(hex);
    std::copy(bytes.begin(), bytes.end(), CommLink.BlockBuf.begin() + static_cast<std::ptrdiff_t>(at));
  }
  std::string BlockHex(std::size_t from, std::size_t count) {
    return ToHex({CommLink.BlockBuf.begin() + static_cast<std::ptrdiff_t>(from),
                  CommLink.BlockBuf.begin() + static_cast<std::ptrdiff_t>(from + count)});
  }
};

struct Blocks : Telegram, ::testing::WithParamInterface<Line> {};
INSTANTIATE_TEST_SUITE_P(Links, Blocks, ::testing::ValuesIn(AllLines),
                         [](const auto& line) { return std::string(LineName(line.param)); });

TEST_P(Blocks, ASectionOf150RegistersGoesInThreeRequests) {
  Hold(Section("Q", 41001, 50, 3), GetParam());
  EXPECT_TRUE(gFReadBlock(0, 0));
  EXPECT_EQ(recorder.requests,
            (std::vector<RecordedRequest>{{3, 41001, 64}, {3, 41065, 64}, {3, 41129, 22}}));
}

TEST_P(Blocks, ASectionOfExactly64RegistersIsOneRequest) {
  Hold(Section("Q", 41001, 64, 1), GetParam());
  EXPECT_TRUE(gFReadBlock(0, 0));
  EXPECT_EQ(recorder.requests, (std::vector<RecordedRequest>{{3, 41001, 64}}));
}

TEST_P(Blocks, AWriteGoesInTheSameRequestsLowestAddressesFirst) {
  Hold(Section("Q", 41001, 50, 3), GetParam());
  EXPECT_TRUE(gFWriteBlock(0, 0));
  EXPECT_EQ(recorder.requests,
            (std::vector<RecordedRequest>{{16, 41001, 64}, {16, 41065, 64}, {16, 41129, 22}}));
}

TEST_P(Blocks, TheRegisterOffsetMovesTheBlock) {
  Hold(Section("Q", 41001, 70, 1), GetParam());
  EXPECT_TRUE(gFReadBlock(0, -22));
  EXPECT_TRUE(gFWriteBlock(0, 60));
  EXPECT_EQ(recorder.requests,
            (std::vector<RecordedRequest>{{3, 40979, 64}, {3, 41043, 6}, {16, 41061, 64}, {16, 41125, 6}}));
}

TEST_P(Blocks, WhatWasReadLiesInTheBlockLowByteFirst) {
  recorder.FillWithPattern();
  Hold(Section("Q", 41001, 50, 3), GetParam());
  EXPECT_TRUE(gFReadBlock(0, 0));
  for (int i = 0; i < 150; ++i) {
    const auto at = static_cast<std::size_t>(2 * i);
    EXPECT_EQ(CommLink.BlockBuf[at] + 256 * CommLink.BlockBuf[at + 1], ScriptedRecorder::Pattern(41001 + i));
  }
  EXPECT_EQ(BlockHex(300, 4), "00 00 00 00");
}

TEST_P(Blocks, WhatIsWrittenComesFromTheBlock) {
  Hold(Section("Q", 41001, 50, 3), GetParam());
  for (std::size_t i = 0; i < 300; ++i) {
    CommLink.BlockBuf[i] = static_cast<std::uint8_t>(i * 7);
  }
  EXPECT_TRUE(gFWriteBlock(0, 0));
  for (int i = 0; i < 150; ++i) {
    EXPECT_EQ(recorder.Register(41001 + i), (2 * i * 7 & 0xFF) + 256 * ((2 * i + 1) * 7 & 0xFF));
  }
  EXPECT_EQ(recorder.Register(41151), 0);
}

TEST_P(Blocks, AFailedRequestEndsTheTransferAndKeepsWhatWasRead) {
  recorder.FillWithPattern();
  Hold(Section("Q", 41001, 50, 3), GetParam());
  recorder.FaultAt(Fault::NoReply, 1);
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFReadBlock(0, 0));
  EXPECT_EQ(recorder.requests.size(), 2U);
  EXPECT_EQ(CommLink.BlockBuf[126] + 256 * CommLink.BlockBuf[127], ScriptedRecorder::Pattern(41064));
  EXPECT_EQ(CommLink.BlockBuf[128], 0);
}

TEST_P(Blocks, AFailedWriteLeavesTheRegistersBeforeItWritten) {
  Hold(Section("Q", 41001, 50, 3), GetParam());
  CommLink.BlockBuf.fill(0x55);
  recorder.FaultAt(Fault::NoReply, 1);
  platform.ExpectBox(11000);
  EXPECT_FALSE(gFWriteBlock(0, 0));
  EXPECT_EQ(recorder.Register(41064), 0x5555);
  EXPECT_EQ(recorder.Register(41129), 0);
}

TEST_F(Telegram, ASectionOf5000RegistersFits) {
  Hold(Section("Q", 40001, 50, 100));
  recorder.Register(45000) = 0x1234;
  EXPECT_TRUE(gFReadBlock(0, 0));
  EXPECT_EQ(recorder.requests.size(), 79U);
  EXPECT_EQ(BlockHex(9998, 3), "34 12 00");
}

TEST_F(Telegram, ASectionOfMoreThan5000RegistersIsARunTimeFailure) {
  Hold(Section("Q", 40001, 5001, 1));
  EXPECT_THROW(static_cast<void>(gFReadBlock(0, 0)), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(gFWriteBlock(0, 0)), RunTimeFailure);
  Hold(Section("Q", 40001, 32767, 100));
  EXPECT_THROW(static_cast<void>(gFReadBlock(0, 0)), RunTimeFailure);
  EXPECT_TRUE(recorder.requests.empty());
}

TEST_F(Telegram, ASectionOfANegativeSizeIsARunTimeFailure) {
  Hold(Section("Q", 40001, -5, 3));
  EXPECT_THROW(static_cast<void>(gFReadBlock(0, 0)), RunTimeFailure);
}

TEST_F(Telegram, ASectionThatTheStoreDoesNotHoldIsARunTimeFailure) {
  Hold(Section("Q", 40001, 5, 3));
  EXPECT_THROW(static_cast<void>(gFReadBlock(NotFound, 0)), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(gFWriteBlock(1, 0)), RunTimeFailure);
}

TEST_F(Telegram, ARegisterNumberBeyond32BitsIsARunTimeFailure) {
  Hold(Section("Q", std::numeric_limits<std::int32_t>::max(), 5, 3));
  EXPECT_THROW(static_cast<void>(gFReadBlock(0, 5)), RunTimeFailure);
  Hold(Section("Q", std::numeric_limits<std::int32_t>::min(), 5, 3));
  EXPECT_THROW(static_cast<void>(gFReadBlock(0, -22)), RunTimeFailure);
}

TEST_F(Telegram, ASectionWithoutRegistersIsOneRequestOfNone) {
  Hold(Section("Q", 41001, 0, 3));
  EXPECT_TRUE(gFReadBlock(0, 0));
  EXPECT_EQ(recorder.requests, (std::vector<RecordedRequest>{{3, 41001, 0}}));
}

// --- Words

TEST_F(Telegram, AWordLiesLowByteFirst) {
  gFBlockPutWord(256, 10);
  EXPECT_EQ(BlockHex(10, 2), "00 01");
  EXPECT_EQ(gFBlockGetWord(10), 256);
}

TEST_F(Telegram, ANegativeWordIsTheTwosComplement) {
  gFBlockPutWord(-1, 0);
  EXPECT_EQ(BlockHex(0, 2), "FF FF");
  PutBytes("FE FF");
  EXPECT_EQ(gFBlockGetWord(0), -2);
  PutBytes("00 80");
  EXPECT_EQ(gFBlockGetWord(0), -32768);
  PutBytes("FF 7F");
  EXPECT_EQ(gFBlockGetWord(0), 32767);
}

TEST_F(Telegram, EveryWordComesBackAsItWasPut) {
  for (int value = -32768; value <= 32767; ++value) {
    gFBlockPutWord(static_cast<std::int16_t>(value), 100);
    ASSERT_EQ(gFBlockGetWord(100), value);
  }
}

TEST_F(Telegram, AWordOutsideTheBlockIsARunTimeFailure) {
  gFBlockPutWord(1, 9999);
  EXPECT_EQ(gFBlockGetWord(9999), 1);
  for (const std::int32_t position : {10000, -1, -32768, 1000000}) {
    EXPECT_THROW(static_cast<void>(gFBlockGetWord(position)), RunTimeFailure) << position;
    EXPECT_THROW(gFBlockPutWord(1, position), RunTimeFailure) << position;
  }
}

// --- Texts

TEST_F(Telegram, ATextIsFilledUpWithNuls) {
  CommLink.BlockBuf.fill(0x77);
  gFBlockPutText(u"AB", 0, 4);
  EXPECT_EQ(BlockHex(0, 5), "41 42 00 00 77");
}

TEST_F(Telegram, ATextGoesOnTheWireWithItsCharactersSwapped) {
  Hold(Section("Q", 41001, 2, 1));
  gFBlockPutText(u"AB", 0, 4);
  EXPECT_TRUE(gFWriteBlock(0, 0));
  EXPECT_EQ(recorder.Register(41001), 0x4241);
  EXPECT_EQ(recorder.Register(41002), 0);
}

TEST_F(Telegram, ATextOfSixBytesInAFieldOfFourIsCut) {
  gFBlockPutText(u"ABCDEF", 0, 4);
  EXPECT_EQ(BlockHex(0, 5), "41 42 43 44 00");
}

TEST_F(Telegram, TheCutCanHalveAFullWidthCharacter) {
  gFBlockPutText(u"Aあい", 0, 4);
  EXPECT_EQ(BlockHex(0, 4), "41 82 A0 82");
}

TEST_F(Telegram, ATextWithoutALengthWritesNothing) {
  CommLink.BlockBuf.fill(0x77);
  gFBlockPutText(u"AB", 3, 0);
  EXPECT_EQ(BlockHex(3, 2), "77 77");
  EXPECT_EQ(gFBlockGetText(3, 0), u"");
}

TEST_F(Telegram, ATextEndsAtItsFirstNul) {
  PutBytes("41 42 00 43 44");
  EXPECT_EQ(gFBlockGetText(0, 5), u"AB");
}

TEST_F(Telegram, BlanksInFrontOfTheNulStay) {
  PutBytes("41 20 20 00 00");
  EXPECT_EQ(gFBlockGetText(0, 5), u"A  ");
}

TEST_F(Telegram, AFullFieldKeepsItsTrailingBlanks) {
  PutBytes("41 42 20 20");
  EXPECT_EQ(gFBlockGetText(0, 4), u"AB  ");
}

TEST_F(Telegram, AnEmptyFieldIsAnEmptyText) {
  PutBytes("00 00 41 42");
  EXPECT_EQ(gFBlockGetText(0, 4), u"");
}

TEST_F(Telegram, AFullWidthTextIsCodePage932) {
  PutBytes("89 B7 93 78 00 00"); // two kanji
  EXPECT_EQ(gFBlockGetText(0, 6), u"温度");
  PutBytes("95 5C 83 7C 00 00"); // trail bytes 5C and 7C
  EXPECT_EQ(gFBlockGetText(0, 6), u"表ポ");
  PutBytes("B1 B2 B3 00"); // half-width katakana
  EXPECT_EQ(gFBlockGetText(0, 4), u"ｱｲｳ");
}

TEST_F(Telegram, AHalvedCharacterAtTheEndOfAFieldIsNoReasonToFail) {
  PutBytes("41 82 A0 82");
  const std::u16string text = gFBlockGetText(0, 4);
  EXPECT_EQ(text.substr(0, 2), u"Aあ");
  EXPECT_EQ(text.size(), 3U);
}

TEST_F(Telegram, AHalvedCharacterInFrontOfTheNulIsNoReasonToFail) {
  PutBytes("41 82 00 42");
  EXPECT_EQ(gFBlockGetText(0, 4).substr(0, 1), u"A");
  EXPECT_EQ(gFBlockGetText(0, 4).find(u'\0'), std::u16string::npos);
}

TEST_F(Telegram, ATextOutsideTheBlockIsARunTimeFailure) {
  EXPECT_EQ(gFBlockGetText(9993, 8), u"");
  EXPECT_THROW(static_cast<void>(gFBlockGetText(9994, 8)), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(gFBlockGetText(-1, 4)), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(gFBlockGetText(0, -4)), RunTimeFailure);
  EXPECT_THROW(gFBlockPutText(u"A", 9994, 8), RunTimeFailure);
  EXPECT_THROW(gFBlockPutText(u"A", 0, 32767), RunTimeFailure);
}

TEST_F(Telegram, EveryTextOfAFieldComesBackAsItWasPut) {
  for (const std::u16string_view text :
       {u"", u"A", u"TC-101", u"温度１", u"ﾎﾟﾝﾌﾟ No.2", u"1234567890123456"}) {
    gFBlockPutText(text, 40, 16);
    EXPECT_EQ(gFBlockGetText(40, 16), text);
  }
}

// --- Items

ParamItem MixedItem() {
  ParamItem item;
  item.TextRecords = {TextAt("NAME", 0, 4), TextAt("UNIT", 2, 4)};
  item.NumRecords = {NumberAt("LOW", 4), NumberAt("HIGH", 5)};
  return item;
}

TEST_F(Telegram, AnItemIsParsedIntoValueAndReadValue) {
  Hold(Section("Q", 41001, 6, 2, MixedItem()));
  PutBytes("41 42 00 00 6D 33 00 00 FE FF 10 00", 12); // item 1
  EXPECT_TRUE(gFParseItem("Q", 12, 0, 1));
  EXPECT_EQ(TrimmedText("Q", 1, "NAME"), "AB");
  EXPECT_EQ(TrimmedText("Q", 1, "UNIT"), "m3");
  EXPECT_EQ(Stored("Q", 1, "LOW"), -2);
  EXPECT_EQ(Stored("Q", 1, "HIGH"), 16);
  EXPECT_EQ(NumRecord("Q", 1, "LOW").ReadValue, -2);
  EXPECT_EQ(TextRecord("Q", 1, "NAME").ReadValue, FixedText(u"AB"));
  EXPECT_EQ(TrimmedText("Q", 0, "NAME"), "before");
}

TEST_F(Telegram, TheDefaultsOfAParsedItemStay) {
  Hold(Section("Q", 41001, 6, 1, MixedItem()));
  PutBytes("41 42 00 00 6D 33 00 00 FE FF 10 00");
  EXPECT_TRUE(gFParseItem("Q", 0, 0, 0));
  EXPECT_EQ(NumRecord("Q", 0, "LOW").DefaultValue, 0);
  EXPECT_EQ(TextRecord("Q", 0, "NAME").DefaultValue, FixedText(u"before"));
}

TEST_F(Telegram, AnItemWithoutTextsOrWithoutNumbersSkipsThatPass) {
  ParamItem texts;
  texts.TextRecords = {TextAt("NAME", 0, 4)};
  ParamItem numbers;
  numbers.NumRecords = {NumberAt("LOW", 0)};
  ParamStore = {Section("Q", 41001, 2, 1, texts), Section("W", 41101, 1, 1, numbers)};
  PutBytes("41 42 00 00");
  EXPECT_TRUE(gFParseItem("Q", 0, 0, 0));
  EXPECT_TRUE(gFParseItem("W", 0, 1, 0));
  EXPECT_EQ(TrimmedText("Q", 0, "NAME"), "AB");
  EXPECT_EQ(Stored("W", 0, "LOW"), 0x4241);
}

TEST_F(Telegram, AnItemOutsideTheStoreIsNotParsed) {
  Hold(Section("Q", 41001, 6, 2, MixedItem()));
  EXPECT_FALSE(gFParseItem("Q", 0, 0, 2));
  EXPECT_FALSE(gFParseItem("Q", 0, 0, -1));
  EXPECT_FALSE(gFParseItem("Q", 0, NotFound, 0));
}

TEST_F(Telegram, ARecordThatPointsOutsideTheBlockIsARunTimeFailure) {
  ParamItem item;
  item.NumRecords = {NumberAt("LOW", 5000)};
  Hold(Section("Q", 41001, 1, 1, item));
  EXPECT_THROW(gFParseItem("Q", 0, 0, 0), RunTimeFailure);
  ParamStore[0].Items[0].NumRecords[0].WordOffset = -1;
  EXPECT_THROW(gFParseItem("Q", 0, 0, 0), RunTimeFailure);
}

} // namespace
} // namespace loader::test
