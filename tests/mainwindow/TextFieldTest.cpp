// Address boxes and text fields of the settings pages.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

const auto NameByControl = [](const auto& tested) { return TestName(tested.param.control); };

// --- Address boxes

struct Octet {
  const char* control;
  const char* tag;
};
void PrintTo(const Octet& octet, std::ostream* out) {
  *out << octet.control << " " << octet.tag;
}
class OctetTest : public MainWindow, public testing::WithParamInterface<Octet> {
protected:
  void SetUp() override {
    Open("KOV");
    box_ = &Field(GetParam().control);
    Fill(25);
  }
  int Value() const { return Stored("J", 0, GetParam().tag); }
  void Fill(int value) const {
    Put("J", 0, GetParam().tag, value);
    RefreshAll();
  }
  bool TypeAndLeave(std::u16string_view text) {
    user.Type(*box_, text);
    return user.Leave(*box_);
  }
  TextField* box_ = nullptr;
};

TEST_P(OctetTest, ShowsTheStoredNumberUnchecked) {
  for (const int value : {0, 7, 255, 256, -1, 32767, -32768}) {
    Fill(value);
    EXPECT_EQ(std::to_string(value), TextOf(*box_));
    EXPECT_EQ(value, Value());
  }
}

struct TypedOctet {
  const char16_t* text;
  int value;
};
TEST_P(OctetTest, StoresDigitsAndShowsThemAsAPlainNumber) {
  for (const TypedOctet& typed :
       {TypedOctet{u"0", 0}, TypedOctet{u"255", 255}, TypedOctet{u"007", 7}, TypedOctet{u"000", 0},
        TypedOctet{u"00000000192", 192}, TypedOctet{u"１９２", 192}, TypedOctet{u"０７", 7}}) {
    EXPECT_TRUE(TypeAndLeave(typed.text));
    EXPECT_EQ(typed.value, Value());
    EXPECT_EQ(std::to_string(typed.value), TextOf(*box_));
  }
}

TEST_P(OctetTest, RefusesWhatIsNoDigitOrOutOfRange) {
  for (const char16_t* text :
       {u"", u" ", u"1 ", u" 1", u"-1", u"+1", u"1.0", u"1e1", u"12a", u"１２ａ", u"－１", u"１．０", u"256",
        u"300", u"32768", u"70000", u"99999999999999999999"}) {
    Window().focusRequest = nullptr;
    platform.boxes.Expect(u"0から255の値を入力してください");
    box_->text = text;
    box_->onLostFocus();
    EXPECT_EQ(25, Value()) << ToUtf8(text);
    EXPECT_EQ(ToUtf8(text), TextOf(*box_));
    EXPECT_EQ(box_, Window().focusRequest);
    EXPECT_EQ(0, Window().tbsParameter.current) << "turned to a page";
    EXPECT_FALSE(WaitTimer2.Enabled) << "the guard is for number fields";
  }
}

TEST_P(OctetTest, HasTheLimitsOfItsRecord) {
  PutLimits("J", 0, GetParam().tag, 10, 20);
  platform.boxes.Expect(u"10から20の値を入力してください");
  EXPECT_FALSE(TypeAndLeave(u"9"));
  platform.boxes.Expect(u"10から20の値を入力してください");
  EXPECT_FALSE(TypeAndLeave(u"21"));
  EXPECT_EQ(25, Value());
  EXPECT_TRUE(TypeAndLeave(u"10"));
  EXPECT_EQ(10, Value());
  EXPECT_TRUE(TypeAndLeave(u"20"));
  EXPECT_EQ(20, Value());
}

TEST_P(OctetTest, WritesItsRecordAlone) {
  const auto before = AllNumbers();
  EXPECT_TRUE(TypeAndLeave(u"77"));
  EXPECT_EQ(77, Value());
  Put("J", 0, GetParam().tag, 25);
  EXPECT_EQ(before, AllNumbers());
}

TEST_P(OctetTest, DoesNothingWithoutItsRecord) {
  DropTag("J", GetParam().tag);
  EXPECT_TRUE(TypeAndLeave(u"none"));
  RefreshAll();
  EXPECT_EQ("none", TextOf(*box_));
}

INSTANTIATE_TEST_SUITE_P(
    All, OctetTest,
    testing::Values(Octet{"txtEtherIPAdd(0)", "IPA1"}, Octet{"txtEtherIPAdd(1)", "IPA2"},
                    Octet{"txtEtherIPAdd(2)", "IPA3"}, Octet{"txtEtherIPAdd(3)", "IPA4"},
                    Octet{"txtEtherSubMask(0)", "SUB1"}, Octet{"txtEtherSubMask(1)", "SUB2"},
                    Octet{"txtEtherSubMask(2)", "SUB3"}, Octet{"txtEtherSubMask(3)", "SUB4"},
                    Octet{"txtEtherDefGate(0)", "DEF1"}, Octet{"txtEtherDefGate(1)", "DEF2"},
                    Octet{"txtEtherDefGate(2)", "DEF3"}, Octet{"txtEtherDefGate(3)", "DEF4"},
                    Octet{"txtSmtpIPAdd(0)", "SIP1"}, Octet{"txtSmtpIPAdd(1)", "SIP2"},
                    Octet{"txtSmtpIPAdd(2)", "SIP3"}, Octet{"txtSmtpIPAdd(3)", "SIP4"}),
    NameByControl);

// --- Texts

struct TextRow {
  const char* control;
  const char* section;
  int item;
  const char* tag;
  int bytes; // of code page 932
};
void PrintTo(const TextRow& row, std::ostream* out) {
  *out << row.control << " " << row.section << row.item << row.tag;
}
class TextTest : public MainWindow, public testing::WithParamInterface<TextRow> {
protected:
  void SetUp() override {
    Open("KOV");
    field_ = &Field(GetParam().control);
    Fill("before");
  }
  std::string Value() const { return StoredText(GetParam().section, GetParam().item, GetParam().tag); }
  void Fill(std::string_view text) const {
    PutText(GetParam().section, GetParam().item, GetParam().tag, text);
    RefreshAll();
  }
  bool TypeAndLeave(std::string_view text) {
    user.Type(*field_, FromUtf8(text));
    return user.Leave(*field_);
  }
  std::u16string TooLong() const {
    return u"半角" + DecimalText(GetParam().bytes) + u"文字以下で入力してください";
  }
  static std::string Wide(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
      text += "漢";
    }
    return text;
  }
  TextField* field_ = nullptr;
};

TEST_P(TextTest, HasTheLengthOfItsRecord) {
  EXPECT_EQ(GetParam().bytes, TextRecord(GetParam().section, GetParam().item, GetParam().tag).ByteLength);
}

TEST_P(TextTest, ShowsTheStoredTextWithoutTrailingBlanks) {
  Fill("炉 1  ");
  EXPECT_EQ("炉 1", TextOf(*field_));
  EXPECT_EQ(Padded64("炉 1"), Value());
  Fill("");
  EXPECT_EQ("", TextOf(*field_));
}

TEST_P(TextTest, StoresTheTextPaddedTo64CharactersWhenItIsLeft) {
  user.Type(*field_, u"after");
  EXPECT_EQ(Padded64("before"), Value());
  EXPECT_TRUE(user.Leave(*field_));
  EXPECT_EQ(Padded64("after"), Value());
  EXPECT_TRUE(TypeAndLeave(""));
  EXPECT_EQ(Padded64(""), Value());
}

TEST_P(TextTest, StoresTheValueAlone) {
  EXPECT_TRUE(TypeAndLeave("after"));
  const ParamTextRecord& record = TextRecord(GetParam().section, GetParam().item, GetParam().tag);
  EXPECT_EQ(Padded64(""), ToUtf8(record.ReadValue));
  EXPECT_EQ(Padded64(""), ToUtf8(record.DefaultValue));
}

TEST_P(TextTest, TakesAsManyBytesAsItsRecord) {
  const std::string half(static_cast<std::size_t>(GetParam().bytes), 'x');
  EXPECT_TRUE(TypeAndLeave(half));
  EXPECT_EQ(Padded64(half), Value());
  const std::string wide = Wide(GetParam().bytes / 2);
  EXPECT_TRUE(TypeAndLeave(wide));
  EXPECT_EQ(Padded64(wide), Value());
}

TEST_P(TextTest, RefusesOneByteMore) {
  for (const std::string& text : {std::string(static_cast<std::size_t>(GetParam().bytes) + 1, 'x'),
                                  Wide(GetParam().bytes / 2) + "x", Wide(GetParam().bytes / 2 + 1)}) {
    platform.boxes.Expect(TooLong());
    EXPECT_FALSE(TypeAndLeave(text)) << "keeps the focus";
    EXPECT_EQ(Padded64("before"), Value());
    EXPECT_EQ(text, TextOf(*field_));
    EXPECT_EQ(0, Window().tbsParameter.current) << "turned to a page";
    EXPECT_FALSE(WaitTimer2.Enabled) << "the guard is for number fields";
  }
}

TEST_P(TextTest, CountsAHalfWidthKatakanaAsOneByte) {
  std::string text;
  for (int i = 0; i < GetParam().bytes; ++i) {
    text += "ｱ";
  }
  EXPECT_TRUE(TypeAndLeave(text));
  EXPECT_EQ(Padded64(text), Value());
}

TEST_P(TextTest, DoesNothingWithoutItsRecord) {
  DropTag(GetParam().section, GetParam().tag);
  EXPECT_TRUE(TypeAndLeave(std::string(100, 'x')));
  RefreshAll();
  EXPECT_EQ(std::string(100, 'x'), TextOf(*field_));
}

INSTANTIATE_TEST_SUITE_P(Mail, TextTest,
                         testing::Values(TextRow{"txtSendMailAdd", "J", 0, "SDAD", 64},
                                         TextRow{"txtSendName", "J", 0, "SDNM", 32},
                                         TextRow{"txtRecvMailAdd(0)", "J", 0, "RAD1", 64},
                                         TextRow{"txtRecvMailAdd(1)", "J", 0, "RAD2", 64},
                                         TextRow{"txtRecvMailAdd(2)", "J", 0, "RAD3", 64},
                                         TextRow{"txtRecvMailAdd(3)", "J", 0, "RAD4", 64},
                                         TextRow{"txtRecvMailAdd(4)", "J", 0, "RAD5", 64},
                                         TextRow{"txtRecvMailAdd(5)", "J", 0, "RAD6", 64},
                                         TextRow{"txtRecvMailAdd(6)", "J", 0, "RAD7", 64},
                                         TextRow{"txtRecvMailAdd(7)", "J", 0, "RAD8", 64}),
                         NameByControl);
INSTANTIATE_TEST_SUITE_P(
    Users, TextTest,
    testing::Values(
        TextRow{"txtUserName(0)", "K", 0, "UNAM", 16}, TextRow{"txtUserName(1)", "K", 1, "UNAM", 16},
        TextRow{"txtUserName(2)", "K", 2, "UNAM", 16}, TextRow{"txtUserName(3)", "K", 3, "UNAM", 16},
        TextRow{"txtUserName(4)", "K", 4, "UNAM", 16}, TextRow{"txtUserName(5)", "K", 5, "UNAM", 16},
        TextRow{"txtUserName(6)", "K", 6, "UNAM", 16}, TextRow{"txtUserName(7)", "K", 7, "UNAM", 16},
        TextRow{"lblUserPass(0)", "K", 0, "PASS", 16}, TextRow{"lblUserPass(1)", "K", 1, "PASS", 16},
        TextRow{"lblUserPass(2)", "K", 2, "PASS", 16}, TextRow{"lblUserPass(3)", "K", 3, "PASS", 16},
        TextRow{"lblUserPass(4)", "K", 4, "PASS", 16}, TextRow{"lblUserPass(5)", "K", 5, "PASS", 16},
        TextRow{"lblUserPass(6)", "K", 6, "PASS", 16}, TextRow{"lblUserPass(7)", "K", 7, "PASS", 16}),
    NameByControl);

// --- Blanks in the mail fields

struct NamedField {
  const char* control;
  const char* section;
  const char* tag;
};
void PrintTo(const NamedField& field, std::ostream* out) {
  *out << field.control;
}
class MailTextTest : public MainWindow, public testing::WithParamInterface<NamedField> {
protected:
  void SetUp() override { Open("KOV"); }
  TextField& Tested() { return Field(GetParam().control); }
};

TEST_P(MailTextTest, LosesItsBlanksWhileItIsEdited) {
  user.Type(Tested(), u"  a b  ");
  EXPECT_EQ("a b", TextOf(Tested()));
  EXPECT_TRUE(Tested().selectionPending);
  EXPECT_EQ(0, Tested().selStart);
  EXPECT_EQ(0, Tested().selLength);
}

TEST_P(MailTextTest, KeepsItsCaretWhereThereWereNoBlanks) {
  Tested().selStart = 3;
  user.Type(Tested(), u"a b");
  EXPECT_EQ("a b", TextOf(Tested()));
  EXPECT_FALSE(Tested().selectionPending);
  EXPECT_EQ(3, Tested().selStart);
}

TEST_P(MailTextTest, KeepsFullWidthBlanks) {
  user.Type(Tested(), u"　a　");
  EXPECT_EQ("　a　", TextOf(Tested()));
}

TEST_P(MailTextTest, LosesItsBlanksWhenItIsLeft) {
  Tested().text = u"  a b  ";
  Tested().onLostFocus();
  EXPECT_EQ("a b", TextOf(Tested()));
  EXPECT_EQ(Padded64("a b"), StoredText(GetParam().section, 0, GetParam().tag));
}

TEST_P(MailTextTest, IsMeasuredWithoutItsBlanks) {
  const int bytes = TextRecord(GetParam().section, 0, GetParam().tag).ByteLength;
  const std::u16string text(static_cast<std::size_t>(bytes), u'x');
  Tested().text = u"   " + text + u"   ";
  Tested().onLostFocus();
  EXPECT_EQ(text, Tested().text);
  EXPECT_EQ(Padded64(ToUtf8(text)), StoredText(GetParam().section, 0, GetParam().tag));
}

// A fill shows what the field would show after its own change handler.
TEST_P(MailTextTest, IsFilledWithoutBlanks) {
  PutText(GetParam().section, 0, GetParam().tag, "  a b  ");
  RefreshAll();
  EXPECT_EQ("a b", TextOf(Tested()));
  EXPECT_EQ(Padded64("  a b  "), StoredText(GetParam().section, 0, GetParam().tag));
}

INSTANTIATE_TEST_SUITE_P(All, MailTextTest,
                         testing::Values(NamedField{"txtSendMailAdd", "J", "SDAD"},
                                         NamedField{"txtSendName", "J", "SDNM"},
                                         NamedField{"txtRecvMailAdd(0)", "J", "RAD1"},
                                         NamedField{"txtRecvMailAdd(7)", "J", "RAD8"}),
                         NameByControl);

// --- Blanks in the user accounts

class UserTextTest : public MainWindow, public testing::WithParamInterface<NamedField> {
protected:
  void SetUp() override { Open("KOV"); }
  TextField& Tested() { return Field(GetParam().control); }
};

TEST_P(UserTextTest, KeepsItsBlanksWhileItIsEditedAndWhenItIsLeft) {
  user.Type(Tested(), u"  a b  ");
  EXPECT_EQ("  a b  ", TextOf(Tested()));
  EXPECT_TRUE(user.Leave(Tested()));
  EXPECT_EQ("  a b  ", TextOf(Tested()));
  EXPECT_EQ(Padded64("  a b"), StoredText("K", 2, GetParam().tag));
}

TEST_P(UserTextTest, IsMeasuredWithItsBlanks) {
  platform.boxes.Expect(u"半角16文字以下で入力してください");
  user.Type(Tested(), u"a                "); // 17
  EXPECT_FALSE(user.Leave(Tested()));
  EXPECT_EQ(Padded64(""), StoredText("K", 2, GetParam().tag));
}

TEST_P(UserTextTest, NineFullWidthCharactersExceedSixteenBytes) {
  platform.boxes.Expect(u"半角16文字以下で入力してください");
  user.Type(Tested(), u"工場管理者担当者名");
  EXPECT_FALSE(user.Leave(Tested()));
  EXPECT_EQ(Padded64(""), StoredText("K", 2, GetParam().tag));
}

TEST_P(UserTextTest, IsFilledWithItsLeadingBlanks) {
  PutText("K", 2, GetParam().tag, "  a b  ");
  RefreshAll();
  EXPECT_EQ("  a b", TextOf(Tested()));
}

INSTANTIATE_TEST_SUITE_P(All, UserTextTest,
                         testing::Values(NamedField{"txtUserName(2)", "K", "UNAM"},
                                         NamedField{"lblUserPass(2)", "K", "PASS"}),
                         NameByControl);

} // namespace
} // namespace loader::test
