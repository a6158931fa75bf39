// Files that no loader wrote: truncated, binary, huge, hostile. They fail or load; they never break the
// store's shape.
#include "tests/files/ParameterFileSupport.h"
#include "tests/support/System.h"

#include <algorithm>
#include <random>

namespace loader::test {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t Huge = 100'000'000;

class BadFiles : public ParameterFiles {
protected:
  void SetUp() override {
    ParameterFiles::SetUp();
    shape_ = Shape();
  }
  void TearDown() override { EXPECT_EQ(shape_, Shape()); }

  bool Read(std::string_view bytes) {
    platform.WriteFile("bad.KOV", bytes);
    return gFLoadParamFile(platform.folder / "bad.KOV");
  }

private:
  // Everything but the values; each text has to stay 64 characters wide.
  static std::string Shape() {
    std::string shape;
    for (const ParamSection& section : ParamStore) {
      shape += section.Code + std::to_string(section.BaseAddress) + std::to_string(section.Items.size());
      for (const ParamItem& item : section.Items) {
        for (const ParamTextRecord& record : item.TextRecords) {
          shape += record.Tag + std::to_string(record.Value.size());
        }
        for (const ParamNumRecord& record : item.NumRecords) {
          shape += record.Tag + std::to_string(record.MaxValue);
        }
      }
    }
    return shape;
  }
  std::string shape_;
};

TEST_F(BadFiles, ThatAreNotThereFail) {
  EXPECT_FALSE(gFLoadParamFile(platform.folder / "nowhere.KOV"));
}

TEST_F(BadFiles, ThatAreFoldersFail) {
  EXPECT_FALSE(gFLoadParamFile(platform.folder));
}

// Nobody writes at its other end: opening it would wait for ever.
TEST_F(BadFiles, ThatArePipesFail) {
  const std::filesystem::path pipe = platform.folder / "pipe.KOV";
  ASSERT_TRUE(MakePipe(pipe));
  EXPECT_FALSE(gFLoadParamFile(pipe));
  std::filesystem::create_symlink(pipe, platform.folder / "link.KOV");
  EXPECT_FALSE(gFLoadParamFile(platform.folder / "link.KOV"));
}

TEST_F(BadFiles, ThatAreDevicesFail) {
  EXPECT_FALSE(gFLoadParamFile("/dev/zero")); // without end
  EXPECT_FALSE(gFLoadParamFile("/dev/null"));
}

TEST_F(BadFiles, ThatAreLinksToGoodOnesLoad) {
  platform.WriteFile("good.KOV", "LOADER ,V210\r\nC00TAG ,LINK\r\n");
  std::filesystem::create_symlink("good.KOV", platform.folder / "link.KOV");
  EXPECT_TRUE(gFLoadParamFile(platform.folder / "link.KOV"));
  EXPECT_EQ("LINK", TrimmedText("C", 0, "TAG"));
}

TEST_F(BadFiles, WithoutANameFail) {
  EXPECT_FALSE(gFLoadParamFile({}));
}

TEST_F(BadFiles, OfNoBytesNameNothing) {
  const std::string defaults = Saved();
  EXPECT_TRUE(Read(""));
  EXPECT_EQ(defaults, Saved());
}

TEST_F(BadFiles, ThatEndAnywhereNeverBreakTheStore) {
  const std::string whole = Saved();
  ASSERT_LT(6000U, whole.size());
  // Every end in the first kilobyte, in the last one, and some between.
  int loaded = 0;
  int failed = 0;
  for (std::size_t end = 0; end <= whole.size();
       end += end < 1000 || end + 1000 > whole.size() ? std::size_t{1} : std::size_t{997}) {
    ++(LoadParamBytes(std::string_view(whole).substr(0, end)) ? loaded : failed);
  }
  EXPECT_LT(100, loaded); // a file cut behind a comma or in a text is a shorter file
  EXPECT_LT(100, failed);
}

TEST_F(BadFiles, CutInsideAKeyFail) {
  EXPECT_FALSE(Read("LOADER ,V210\r\nC00FILT,3\r\nC00FI"));
}

TEST_F(BadFiles, CutInsideAFullWidthCharacterLoad) {
  EXPECT_TRUE(Read("LOADER ,V210\r\nG00GNEM,ab\x83"));
  EXPECT_EQ("ab・", TrimmedText("G", 0, "GNEM"));
}

TEST_F(BadFiles, WithHalfACharacterBeforeALineEndKeepTheLines) {
  EXPECT_TRUE(Read("LOADER ,V210\r\nG00GNEM,ab\x83\r\nC00FILT,3\r\n"));
  EXPECT_EQ("ab・", TrimmedText("G", 0, "GNEM"));
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
}

TEST_F(BadFiles, WithBytesOfNoCharacterLoad) {
  EXPECT_TRUE(Read("LOADER ,V210\r\nG00GNEM,a\x85\xFCz\x80\xA0\xFD\xFE\xFF\r\n"));
  EXPECT_EQ(u'a', TextRecord("G", 0, "GNEM").Value[0]);
  EXPECT_EQ(u'z', TextRecord("G", 0, "GNEM").Value[2]);
}

TEST_F(BadFiles, WithANulInATextKeepIt) {
  EXPECT_TRUE(Read("G00GNEM,a\0b\r\nC00FILT,3\r\n"sv));
  EXPECT_EQ(FixedText(u"a\0b"sv), TextRecord("G", 0, "GNEM").Value);
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
}

TEST_F(BadFiles, WithANulInAKeyFail) {
  EXPECT_FALSE(Read("C00FI\0T,3\r\n"sv));
  EXPECT_FALSE(Read("C00\0\0\0\0,3\r\n"sv));
}

TEST_F(BadFiles, WithANulInANumberFail) {
  EXPECT_FALSE(Read("C00FILT,3\0\r\n"sv));
}

TEST_F(BadFiles, OfNulsFail) {
  EXPECT_FALSE(Read(std::string(5000, '\0')));
}

// No byte marks the end of the file: what stands behind a Ctrl-Z is read.
TEST_F(BadFiles, WithACtrlZReadOn) {
  EXPECT_TRUE(Read("G00GNEM,a\x1A\r\nC00FILT,3\r\n"));
  EXPECT_EQ("a\x1A", TrimmedText("G", 0, "GNEM"));
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
}

TEST_F(BadFiles, ThatEndInACtrlZLineFail) {
  EXPECT_FALSE(Read("LOADER ,V210\r\nC00FILT,3\r\n\x1A"));
}

TEST_F(BadFiles, OfAnotherEncodingFail) {
  EXPECT_FALSE(Read("\xFF\xFEL\0O\0A\0D\0E\0R\0 \0,\0V\0"sv));
  EXPECT_FALSE(Read("\xEF\xBB\xBFLOADER ,V210\r\nC00FILT,3\r\n"));
}

TEST_F(BadFiles, OfAnotherKindFail) {
  for (const char* bytes :
       {"\x7F"
        "ELF\x02\x01\x01",
        "PK\x03\x04", "{\"a\":1,\"b\":2}", "<?xml version=\"1.0\"?>", "a,b,c\r\n1,2,3\r\n",
        "[LOADER]\r\nTYPE=0\r\n", ",", ",,,,,,,\r\n", "\r\n", "\n", " "}) {
    EXPECT_FALSE(Read(bytes)) << bytes;
  }
}

TEST_F(BadFiles, OfRandomBytesFail) {
  std::mt19937 random(1);
  for (int round = 0; round < 50; ++round) {
    std::string bytes(4096, '\0');
    std::ranges::generate(bytes, [&] { return static_cast<char>(random()); });
    EXPECT_FALSE(LoadParamBytes(bytes));
  }
}

TEST_F(BadFiles, WithAFlippedByteNeverBreakTheStore) {
  const std::string whole = Saved();
  std::mt19937 random(2);
  int failed = 0;
  for (int round = 0; round < 300; ++round) {
    std::string bytes = whole;
    bytes[random() % bytes.size()] = static_cast<char>(random());
    failed += LoadParamBytes(bytes) ? 0 : 1;
  }
  EXPECT_LT(50, failed); // most bytes of a file are keys
}

TEST_F(BadFiles, OfOneHugeLineWithoutACommaFail) {
  EXPECT_FALSE(Read(std::string(Huge, 'x')));
}

TEST_F(BadFiles, OfOneHugeTextLoadItsFirst64Characters) {
  EXPECT_TRUE(Read("J00SDAD," + std::string(Huge, 'x')));
  EXPECT_EQ(std::string(64, 'x'), TrimmedText("J", 0, "SDAD"));
}

TEST_F(BadFiles, OfOneHugeNumberFail) {
  EXPECT_FALSE(Read("C00FILT," + std::string(Huge, '9')));
}

TEST_F(BadFiles, OfOneHugeKeyFail) {
  EXPECT_FALSE(Read(std::string(Huge, 'C') + ",1\r\n"));
}

TEST_F(BadFiles, OfAHugeRunOfBlanksFail) {
  EXPECT_FALSE(Read(std::string(Huge, ' ')));
}

TEST_F(BadFiles, OfHugelyManyEmptyLinesFail) {
  EXPECT_FALSE(Read(std::string(Huge, '\n')));
}

TEST_F(BadFiles, OfHugelyManyHeadsNameNothing) {
  const std::string defaults = Saved();
  std::string bytes;
  while (bytes.size() < Huge) {
    bytes += "LOADER,\n";
  }
  EXPECT_TRUE(Read(bytes));
  EXPECT_EQ(defaults, Saved());
}

TEST_F(BadFiles, OfAMillionLinesOfOneParameterKeepTheLast) {
  std::string bytes;
  for (int i = 0; i < 1'000'000; ++i) {
    bytes += "C00FILT," + std::to_string(i % 100) + "\r\n";
  }
  EXPECT_TRUE(Read(bytes));
  EXPECT_EQ(99, Stored("C", 0, "FILT"));
}

} // namespace
} // namespace loader::test
