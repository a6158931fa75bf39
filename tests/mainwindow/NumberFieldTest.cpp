// Number fields of the settings pages: the fill, the check when the field is left, the page it turns to.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

struct NumberField {
  const char* control;
  const char* section;
  const char* tag;
};
void PrintTo(const NumberField& field, std::ostream* out) {
  *out << field.control << " " << field.section << field.tag;
}
const auto NameByControl = [](const auto& tested) { return TestName(tested.param.control); };

constexpr std::u16string_view NotNumeric = u"数字ではありません。";
constexpr std::u16string_view OutOfRange = u"-20から300の値を入力してください";

class NumberFieldTest : public MainWindow, public testing::WithParamInterface<NumberField> {
protected:
  void SetUp() override {
    Open("KOV");
    field_ = &Field(GetParam().control);
    PutLimits(GetParam().section, 0, GetParam().tag, -20, 300);
    Fill(25);
  }
  int Value() const { return Stored(GetParam().section, 0, GetParam().tag); }
  void Fill(int value) const {
    Put(GetParam().section, 0, GetParam().tag, value);
    FillSettings();
  }
  static void FillSettings() { RefreshAll(); }
  // The number of the page that a failure turns to.
  static int FailurePage() { return std::string_view(GetParam().control) == "txtStationNo" ? 4 : 2; }
  bool TypeAndLeave(std::u16string_view text) {
    user.Type(*field_, text);
    return user.Leave(*field_);
  }
  TextField* field_ = nullptr;
};

TEST_P(NumberFieldTest, ShowsTheStoredNumber) {
  for (const int value : {-20, -1, 0, 7, 300}) {
    Fill(value);
    EXPECT_EQ(std::to_string(value), TextOf(*field_));
    EXPECT_EQ(value, Value());
  }
}

TEST_P(NumberFieldTest, IsEmptyForANumberOutsideTheLimits) {
  for (const int value : {-32768, -21, 301, 32767}) {
    Fill(25);
    Fill(value);
    EXPECT_EQ("", TextOf(*field_)) << value;
    EXPECT_EQ(value, Value());
  }
}

struct Typed {
  const char16_t* text;
  int value;
  const char* shown;
};
TEST_P(NumberFieldTest, StoresWhatWasTypedAndShowsItsCanonicalForm) {
  for (const Typed& typed :
       {Typed{u"0", 0, "0"}, Typed{u"300", 300, "300"}, Typed{u"-20", -20, "-20"}, Typed{u" 12 ", 12, "12"},
        Typed{u"+7", 7, "7"}, Typed{u"0099", 99, "99"}, Typed{u"12.9", 12, "12"}, Typed{u"2e2", 200, "200"},
        Typed{u"１２", 12, "12"}, Typed{u"－２０", -20, "-20"}, Typed{u"１２．９", 12, "12"}}) {
    EXPECT_TRUE(TypeAndLeave(typed.text));
    EXPECT_EQ(typed.value, Value()) << typed.shown;
    EXPECT_EQ(typed.shown, TextOf(*field_));
    EXPECT_EQ(0, Window().tbsParameter.current);
    EXPECT_FALSE(WaitTimer2.Enabled);
  }
}

TEST_P(NumberFieldTest, WritesTheValueAloneAndOnlyWhenItIsLeft) {
  user.Type(*field_, u"77");
  EXPECT_EQ(25, Value());
  user.Leave(*field_);
  const ParamNumRecord& record = NumRecord(GetParam().section, 0, GetParam().tag);
  EXPECT_EQ(77, record.Value);
  EXPECT_EQ(record.DefaultValue, record.ReadValue);
}

struct Failure {
  const char16_t* text;
  std::u16string_view message;
};
TEST_P(NumberFieldTest, RefusesWhatIsNoNumberOrOutOfRange) {
  for (const Failure& failure :
       {Failure{u"", NotNumeric}, Failure{u" ", NotNumeric}, Failure{u"abc", NotNumeric},
        Failure{u"1,2", NotNumeric}, Failure{u"１２ａ", NotNumeric}, Failure{u"３０１", OutOfRange},
        Failure{u"301", OutOfRange}, Failure{u"-21", OutOfRange}, Failure{u"99999", OutOfRange}}) {
    platform.boxes.Expect(failure.message);
    EXPECT_FALSE(TypeAndLeave(failure.text)) << "keeps the focus";
    EXPECT_EQ(25, Value());
    EXPECT_EQ(ToUtf8(failure.text), TextOf(*field_));
    platform.time.Advance(100);
  }
}

TEST_P(NumberFieldTest, FailureSelectsTheWholeText) {
  platform.boxes.Expect(OutOfRange);
  TypeAndLeave(u"1234");
  EXPECT_TRUE(field_->selectionPending);
  EXPECT_EQ(0, field_->selStart);
  EXPECT_EQ(4, field_->selLength);
}

TEST_P(NumberFieldTest, FailureTurnsToItsPageFromEveryOther) {
  for (const int page : {0, 1, 2, 3, 4, 5}) {
    user.ChoosePage(Window().tbsParameter, page);
    Window().focusRequest = nullptr;
    platform.boxes.Expect(NotNumeric);
    user.Type(*field_, u"x");
    field_->onLostFocus();
    EXPECT_EQ(FailurePage(), Window().tbsParameter.current);
    EXPECT_EQ(CopyKinds::None, Window().CopyKind);
    EXPECT_EQ(field_, Window().focusRequest) << "and not the display period, from page " << page;
    platform.time.Advance(100);
    TypeAndLeave(u"25");
  }
}

TEST_P(NumberFieldTest, FailureStartsTheGuard) {
  platform.boxes.Expect(NotNumeric);
  TypeAndLeave(u"x");
  EXPECT_TRUE(WaitTimer2.Enabled);
  EXPECT_EQ(100, WaitTimer2.Interval);
  platform.time.Advance(99);
  EXPECT_TRUE(WaitTimer2.Enabled);
  platform.time.Advance(1);
  EXPECT_FALSE(WaitTimer2.Enabled);
}

// Another field that is left in turn reports nothing, turns to no page and does not start the guard anew.
TEST_P(NumberFieldTest, UnderTheGuardNothingIsCheckedOrStored) {
  TextField& other = Field(std::string_view(GetParam().control) == "txtFstn" ? "txtFzti" : "txtFstn");
  platform.boxes.Expect(NotNumeric);
  other.text = u"x";
  other.onLostFocus();
  user.ChoosePage(Window().tbsParameter, 5);
  Window().focusRequest = nullptr;
  platform.time.Advance(60);
  field_->text = u"y";
  field_->onLostFocus();
  EXPECT_EQ("y", TextOf(*field_));
  EXPECT_EQ(nullptr, Window().focusRequest);
  EXPECT_EQ(5, Window().tbsParameter.current);
  field_->text = u"30";
  field_->onLostFocus();
  EXPECT_EQ(25, Value()) << "a good number waits as well";
  platform.time.Advance(40);
  EXPECT_FALSE(WaitTimer2.Enabled) << "started anew";
  platform.boxes.Expect(NotNumeric);
  field_->text = u"z";
  field_->onLostFocus();
}

TEST_P(NumberFieldTest, DoesNothingWithoutItsRecord) {
  DropTag(GetParam().section, GetParam().tag);
  const auto before = AllNumbers();
  EXPECT_TRUE(TypeAndLeave(u"not even a number"));
  RefreshAll();
  EXPECT_EQ("not even a number", TextOf(*field_));
  EXPECT_EQ(before, AllNumbers());
}

INSTANTIATE_TEST_SUITE_P(
    All, NumberFieldTest,
    testing::Values(NumberField{"txtAlarmHist", "H", "ALMH"}, NumberField{"txtLCDShoto", "H", "SHOU"},
                    NumberField{"txtpPassword", "H", "PAS1"}, NumberField{"txtcPassword", "H", "PAS2"},
                    NumberField{"txtRpas", "H", "RPAS"}, NumberField{"txtStationNo", "H", "COMS"},
                    NumberField{"txtFstn", "H", "FSTN"}, NumberField{"txtFzti", "H", "FZTI"},
                    NumberField{"txtFreset", "H", "FTIT"}, NumberField{"txtTtsh", "E", "TTSH"},
                    NumberField{"txtTtsm", "E", "TTSM"}, NumberField{"txtTteh", "E", "TTEH"},
                    NumberField{"txtTtem", "E", "TTEM"}, NumberField{"txtHPLP", "E", "TIMH"},
                    NumberField{"txtAVG", "E", "TIMA"}, NumberField{"txtSUM", "E", "TIMT"}),
    NameByControl);

// --- The limits are those of the record

TEST_F(KovWindow, PasswordIsAWholeNumberWithinItsRecord) {
  user.Type(Field("txtpPassword"), u"9999");
  EXPECT_TRUE(user.Leave(Field("txtpPassword")));
  EXPECT_EQ(9999, Stored("H", 0, "PAS1"));
  platform.boxes.Expect(u"0から9999の値を入力してください");
  user.Type(Field("txtpPassword"), u"10000");
  EXPECT_FALSE(user.Leave(Field("txtpPassword")));
  EXPECT_EQ(9999, Stored("H", 0, "PAS1"));
}

TEST_F(KovWindow, FailureOnThePageItselfTurnsToNoPage) {
  user.ChoosePage(Window().tbsParameter, 2);
  Window().CopySourceRow = 3;
  platform.boxes.Expect(u"数字ではありません。");
  user.Type(Field("txtFstn"), u"x");
  user.Leave(Field("txtFstn"));
  EXPECT_EQ(2, Window().tbsParameter.current);
  EXPECT_EQ(3, Window().CopySourceRow) << "the page was changed";
}

// The check runs before the click that took the focus.
TEST_F(KovWindow, WrongNumberKeepsTheUserFromTheNextControl) {
  user.ChoosePage(Window().tbsParameter, 2);
  user.Type(Field("txtFstn"), u"x");
  platform.boxes.Expect(u"数字ではありません。");
  EXPECT_FALSE(user.Choose(List("cmbMainSample"), 4));
  EXPECT_EQ(0, Stored("H", 0, "MSMP"));
}

} // namespace
} // namespace loader::test
