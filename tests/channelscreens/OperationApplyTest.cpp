// "適用" of an operation channel: what it stores, in which order, and where it stops.
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "core/ModelProfile.h"
#include "dialogs/frmSelectUnit.h"
#include "operation/Formula.h"
#include "tests/channelscreens/OperationFixture.h"

namespace loader::test {
namespace {

class OperationApply : public OperationScreen {};

// --- Nothing was changed

TEST_F(OperationApply, WithoutAChangeLeavesAFreshStoreAsItIs) {
  for (const char* model : {"KOV", "RUG"}) {
    Start(model);
    const WholeStore before;
    const int first = Profile.FirstOperationChannel - 1;
    for (int channel = first; channel < first + Profile.OperationChannelCount; ++channel) {
      applied = 0;
      Open(channel, [&](OperationChSetScreen& screen) { Press(screen, "OKButton"); });
      EXPECT_EQ(1, applied) << channel;
      EXPECT_EQ(before, WholeStore()) << channel;
    }
  }
}

// Any value that its field shows: within the record, and an exponent where the logarithm asks for one.
void FillAtRandom(int channel, std::mt19937& generator) {
  const auto random = [&](int lowest, int highest) {
    return std::uniform_int_distribution(lowest, highest)(generator);
  };
  for (const char* section : {"C", "A"}) {
    ParamItem& item = ParamStore[gFFindSection(section)].Items[static_cast<std::size_t>(channel)];
    for (ParamNumRecord& record : item.NumRecords) {
      record.Value = static_cast<std::int16_t>(random(record.MinValue, record.MaxValue));
    }
    for (ParamTextRecord& record : item.TextRecords) {
      std::u16string text(static_cast<std::size_t>(random(0, 8)), u' ');
      for (char16_t& character : text) {
        character = u" aZ9ｱ.-"[random(0, 6)];
      }
      SetText(record, text, SlotValue);
    }
  }
  if (Stored("C", channel, "TAIS") == 1 && ModelCode == "KOV") {
    for (const char* tag : {"SMIN", "SMAX", "RMIN", "RMAX"}) {
      Put("C", channel, tag, random(-9, 9));
    }
  }
  Put("H", 0, "FPOI", random(0, 4));
  const int formulas = channel - (Profile.FirstOperationChannel - 1);
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    for (int term = 1; term <= TermCount; ++term) {
      for (const char* stem : {"OP", "S1", "S2"}) {
        Put("O", formulas, stem + std::to_string(formula) + std::to_string(term), random(-32768, 32767));
      }
    }
  }
}

TEST_F(OperationApply, WithoutAChangeLeavesAThousandStoresAsTheyAre) {
  std::mt19937 generator(20261122);
  for (int round = 0; round < 1000; ++round) {
    if (round % 500 == 0) {
      Start(round == 0 ? "KOV" : "RUG");
    }
    const int channel = Profile.FirstOperationChannel - 1 +
                        std::uniform_int_distribution(0, Profile.OperationChannelCount - 1)(generator);
    FillAtRandom(channel, generator);
    const WholeStore before;
    applied = 0;
    Open(channel, [&](OperationChSetScreen& screen) { Press(screen, "OKButton"); });
    ASSERT_EQ(1, applied) << round;
    ASSERT_EQ(before, WholeStore()) << round << " channel " << channel;
  }
}

// --- Everything was changed

// In the order in which it is stored: what is entered, and the number it is then. A list is entered by its
// row.
struct Entered {
  const char* tag;
  const char* control;
  const char* text; // a field; empty: a list
  int row;          // a list; -1 a text
  int stored;
  int refused = 0; // a stored number that the field cannot show; 0: it takes any
};
constexpr const char* AField = "";
constexpr Entered EnteredFields[] = {
    {"TAG", "txtChannelTag", "NEW", -1, 0},
    {"TAG2", "txtChannelTag2", "NEW2", -1, 0},
    {"COLR", "cmbDispColor", AField, 6, 7},
    {"FILT", "txtInputFilter", "12", 0, 12, 100},
    {"UNIT", "cmdUnitSelect", AField, 82, 82},
    {"MMIN", "txtStMin", "-1.5", 0, -150, -32768},
    {"MMAX", "txtStMax", "99.5", 0, 9950, -32768},
    {"SMIN", "txtIndMin", "0.1", 0, 10, -32768},
    {"SMAX", "txtIndMax", "0.2", 0, 20, -32768},
    {"POIN", "cmbDecimal", AField, 2, 2},
    {"TAIS", "cmbTaisu", AField, 0, 0},
    {"ROOT", "cmbROOT", AField, 1, 1},
    {"PVSI", "txtPVShift", "0.3", 0, 30, -32768},
    {"PVKA", "txtPVSlope", "110", 0, 110, 1000},
    {"RMIN", "txtRecRangeMin", "0.004", 0, 4, -32768},
    {"RMAX", "txtRecRangeMax", "0.005", 0, 5, -32768},
    {"RECO", "cmbRecMode", AField, 0, 0},
    {"RECM", "cmbRecM", AField, 2, 2},
    {"SUBC", "cmbSUBCh", AField, 5, 5},
    {"FTIO", "cmbFtio", AField, 1, 1},
    {"STAG", "txtSekiTag", "SUM", -1, 0},
    {"SEKI", "cmbSeki", AField, 2, 2},
    {"STYP", "cmbStyp", AField, 3, 3},
    {"SDIG", "cmbSdig", AField, 11, 11},
    {"SBAS", "cmbSbas", AField, 2, 2},
    {"SRES", "cmbSres", AField, 1, 1},
    {"SEUN", "cmdSekiUnitSelect", AField, 7, 7},
    {"SSCL", "txtSekiScale", "60", 0, 60, -1},
    {"SECU", "txtSecu", "0.070", 0, 70, -32768},
    {"SRIN", "cmbSri", AField, 3, 3},
    {"A1TY", "cmbAlarmType1", AField, 1, 1},
    {"A1VL", "txtAlarmSet1", "1.1", 0, 1100, -32768},
    {"A1RL", "cmbAlarmOut1", AField, 1, 1},
    {"A2TY", "cmbAlarmType2", AField, 2, 2},
    {"A2VL", "txtAlarmSet2", "1.2", 0, 1200, -32768},
    {"A2RL", "cmbAlarmOut2", AField, 2, 2},
    {"A3TY", "cmbAlarmType3", AField, 1, 1},
    {"A3VL", "txtAlarmSet3", "1.3", 0, 1300, -32768},
    {"A3RL", "cmbAlarmOut3", AField, 3, 3},
    {"A4TY", "cmbAlarmType4", AField, 2, 2},
    {"A4VL", "txtAlarmSet4", "1.4", 0, 1400, -32768},
    {"A4RL", "cmbAlarmOut4", AField, 4, 4},
};
constexpr int Channel = 20;

bool IsText(const Entered& entered) {
  return entered.row < 0;
}
bool IsList(const Entered& entered) {
  return *entered.text == '\0' && !IsText(entered);
}
bool IsUnit(const Entered& entered) {
  return std::string_view(entered.control).ends_with("UnitSelect");
}
const char* SectionOf(const Entered& entered) {
  return entered.tag[0] == 'A' ? "A" : "C";
}
bool IsNew(const Entered& entered) {
  return IsText(entered) ? TrimmedText("C", Channel, entered.tag) == entered.text
                         : Stored(SectionOf(entered), Channel, entered.tag) == entered.stored;
}

class OperationApplyOrder : public OperationScreen {
protected:
  // Every value another one than will be entered, FPoint 3, the logarithm on.
  void SetUp() override {
    OperationScreen::SetUp();
    Put("H", 0, "FPOI", 3);
    Put("C", Channel, "TAIS", 1);
    Put("O", Channel - 18, "OP11", FormulaCompose(0, 1));
    for (const Entered& entered : EnteredFields) {
      ASSERT_FALSE(IsNew(entered)) << entered.tag;
    }
  }
  // The lists first: they decide where the point of the numbers stands. `left` is not entered.
  void EnterAll(OperationChSetScreen& screen, const Entered* left = nullptr) {
    Press(screen, "cmdFormulaDel1");
    for (const char* first : {"cmbTaisu", "cmbDecimal", "cmbFtio"}) {
      for (const Entered& entered : EnteredFields) {
        if (std::string_view(entered.control) == first) {
          EXPECT_TRUE(Pick(screen, first, entered.row)) << first;
        }
      }
    }
    for (const Entered& entered : EnteredFields) {
      if (&entered == left) {
        continue;
      }
      if (IsUnit(entered)) {
        platform.screens.Expect<SelectUnitScreen>("frmSelectUnit", [&](SelectUnitScreen& units) {
          user.DoubleClick(units.fgrUnit, entered.row / 6, entered.row % 6);
        });
        EXPECT_TRUE(Press(screen, entered.control));
      } else if (IsList(entered)) {
        EXPECT_TRUE(Pick(screen, entered.control, entered.row)) << entered.control;
      } else {
        EXPECT_TRUE(Enter(screen, entered.control, entered.text)) << entered.control;
      }
    }
  }
  static bool FormulaIsNew() { return Stored("O", Channel - 18, "OP11") == 0; }
};

TEST_F(OperationApplyOrder, StoresEveryFieldAndNothingElse) {
  const WholeStore before;
  const std::int16_t readBefore = NumRecord("C", Channel, "FILT").ReadValue;
  Open(Channel, [&](OperationChSetScreen& screen) {
    EnterAll(screen);
    EXPECT_EQ(before, WholeStore()) << "nothing before 適用";
    Press(screen, "OKButton");
    EXPECT_EQ(Channel, screen.browsing.entry) << "it stays open on its channel";
    EXPECT_EQ("-1.50", Shown(screen, "txtStMin"));
    EXPECT_EQ("0.004", Shown(screen, "txtRecRangeMin"));
  });
  EXPECT_EQ(1, applied);
  EXPECT_TRUE(FormulaIsNew());
  for (const Entered& entered : EnteredFields) {
    EXPECT_TRUE(IsNew(entered)) << entered.tag;
  }
  EXPECT_EQ(readBefore, NumRecord("C", Channel, "FILT").ReadValue)
      << "what the recorder held is another copy";
  const WholeStore after;
  std::size_t changed = 0;
  for (std::size_t i = 0; i < after.numbers.size(); ++i) {
    changed += after.numbers[i] != before.numbers[i] ? 1U : 0U;
  }
  for (std::size_t i = 0; i < after.texts.size(); ++i) {
    changed += after.texts[i] != before.texts[i] ? 1U : 0U;
  }
  EXPECT_EQ(std::size(EnteredFields) + 1, changed);
}

TEST_F(OperationApplyOrder, StopsAtTheFirstRefusedFieldWithWhatWasBeforeItStored) {
  const ParamStoreTable fresh = ParamStore;
  for (const Entered& bad : EnteredFields) {
    if (!IsText(bad) && bad.refused == 0) {
      continue;
    }
    SCOPED_TRACE(bad.tag);
    ParamStore = fresh;
    if (IsText(bad)) {
      PutText("C", Channel, bad.tag, "a,b");
    } else {
      Put(SectionOf(bad), Channel, bad.tag, bad.refused);
    }
    applied = 0;
    ExpectMessage(IsText(bad) ? "「,」は入力できません" : "数字ではありません。");
    Open(Channel, [&](OperationChSetScreen& screen) {
      EnterAll(screen, &bad);
      Press(screen, "OKButton");
      EXPECT_EQ(&FieldNamed(screen, bad.control), screen.focusRequest);
      EXPECT_TRUE(FieldNamed(screen, bad.control).selectionPending);
    });
    ExpectNoneLeft();
    EXPECT_EQ(1, applied) << "the window shows what was stored before";
    EXPECT_TRUE(FormulaIsNew()) << "formulas are stored first";
    bool before = true;
    for (const Entered& entered : EnteredFields) {
      before = before && &entered != &bad;
      EXPECT_EQ(before, IsNew(entered)) << entered.tag;
    }
  }
}

TEST_F(OperationApplyOrder, UnderTheLogarithmARefusedAlarmDoesNotMoveTheFocus) {
  for (const char* tag : {"SMIN", "SMAX", "RMIN", "RMAX"}) {
    Put("C", Channel, tag, 1);
  }
  Put("A", Channel, "A2VL", -32768);
  ExpectMessage("数字ではありません。");
  Open(Channel, [&](OperationChSetScreen& screen) {
    EXPECT_FALSE(Enabled(screen, "txtAlarmSet2"));
    Press(screen, "OKButton");
    EXPECT_EQ(nullptr, screen.focusRequest);
  });
}

TEST_F(OperationApplyOrder, CloseStoresNothing) {
  const WholeStore before;
  Open(Channel, [&](OperationChSetScreen& screen) {
    EnterAll(screen);
    Press(screen, "CancelButton");
    EXPECT_FALSE(platform.screens.Reachable(screen));
  });
  EXPECT_EQ(before, WholeStore());
  EXPECT_EQ(0, applied);
}

// --- What is no field of the model

TEST_F(OperationApply, RugKeepsTheLogarithmAndTheResetInputOfAFile) {
  Start("RUG");
  Put("C", 40, "TAIS", 1);
  Put("C", 40, "SRIN", 7);
  Put("C", 40, "SMAX", 5000);
  Open(40, [&](OperationChSetScreen& screen) {
    EXPECT_EQ("500.0", Shown(screen, "txtIndMax")) << "counts as OFF";
    EXPECT_TRUE(Enabled(screen, "txtAlarmSet1"));
    Pick(screen, "cmbRecM", 1);
    Press(screen, "OKButton");
  });
  EXPECT_EQ(1, Stored("C", 40, "RECM"));
  EXPECT_EQ(1, Stored("C", 40, "TAIS"));
  EXPECT_EQ(7, Stored("C", 40, "SRIN"));
}

TEST_F(OperationApply, TheStoredKindScalingAndReferenceMeanNothingAndStay) {
  for (const int kind : {0, 1, 32, 34, 40, 41, 99}) {
    for (const int scaling : {0, 1}) {
      Put("C", 18, "TYPE", kind);
      Put("C", 18, "SCAL", scaling);
      Put("C", 18, "OTCH", 17);
      Put("C", 18, "SMAX", 32767);
      Open(18, [&](OperationChSetScreen& screen) {
        EXPECT_EQ("3276.7", Shown(screen, "txtIndMax")) << "no kind limits it";
        Enter(screen, "txtStMax", "-3276.7");
        Press(screen, "OKButton");
      });
      EXPECT_EQ(-32767, Stored("C", 18, "MMAX"));
      EXPECT_EQ(kind, Stored("C", 18, "TYPE"));
      EXPECT_EQ(scaling, Stored("C", 18, "SCAL"));
      EXPECT_EQ(17, Stored("C", 18, "OTCH"));
      Put("C", 18, "MMAX", 0);
    }
  }
}

TEST_F(OperationApply, AValueThatItsListDoesNotHaveSelectsNoRowAndStays) {
  for (const Entered& entered : EnteredFields) {
    if (!IsList(entered) || IsUnit(entered)) {
      continue;
    }
    Start("KOV");
    Put(SectionOf(entered), Channel, entered.tag, 999);
    const WholeStore before;
    Open(Channel, [&](OperationChSetScreen& screen) {
      EXPECT_EQ(-1, Row(screen, entered.control)) << entered.tag;
      Press(screen, "OKButton");
      EXPECT_EQ(before, WholeStore()) << entered.tag;
      Enter(screen, "txtPVSlope", "77");
      Press(screen, "OKButton");
    });
    EXPECT_EQ(77, Stored("C", Channel, "PVKA"));
    EXPECT_EQ(999, Stored(SectionOf(entered), Channel, entered.tag)) << entered.tag;
  }
}

TEST_F(OperationApply, AUnitThatHasNoTextStays) {
  for (const int unit : {5, 999, -1}) {
    Put("C", Channel, "UNIT", unit);
    Put("C", Channel, "SEUN", unit);
    Open(Channel, [&](OperationChSetScreen& screen) {
      EXPECT_EQ("", Caption(screen, "lblSelUnit"));
      EXPECT_EQ("", Caption(screen, "lblSelSekiUnit"));
      Press(screen, "OKButton");
    });
    EXPECT_EQ(unit, Stored("C", Channel, "UNIT"));
    EXPECT_EQ(unit, Stored("C", Channel, "SEUN"));
  }
}

// --- What is typed

TEST_F(OperationApply, TypedValuesHaveTheLimitsOfAnotherChannel) {
  Put("C", 18, "POIN", 1);
  const std::pair<const char*, const char*> refused[] = {
      {"txtStMin", "-3276.7から3276.7の値を入力してください"},
      {"txtIndMax", "-3276.7から3276.7の値を入力してください"},
      {"txtRecRangeMin", "-3276.7から3276.7の値を入力してください"},
      {"txtSecu", "-3276.7から3276.7の値を入力してください"},
      {"txtAlarmSet3", "-3276.7から3276.7の値を入力してください"},
      {"txtPVShift", "-3276.7から3276.7の値を入力してください"},
      {"txtPVSlope", "0から999の値を入力してください"},
      {"txtInputFilter", "0から99の値を入力してください"},
  };
  for (const auto& [field, message] : refused) {
    ExpectMessage(message);
    Open(18, [&, name = field](OperationChSetScreen& screen) {
      EXPECT_FALSE(Enter(screen, name, "3276.8"));
      platform.time.Advance(100); // the guard has ended
      EXPECT_TRUE(Enter(screen, name, "12"));
    });
    ExpectNoneLeft();
  }
}

TEST_F(OperationApply, TypedTagsHaveTheWordsOfThisScreen) {
  for (const char* field : {"txtChannelTag", "txtChannelTag2", "txtSekiTag"}) {
    const char* tag = field == std::string_view("txtChannelTag")    ? "TAG"
                      : field == std::string_view("txtChannelTag2") ? "TAG2"
                                                                    : "STAG";
    const int limit = TextRecord("C", 18, tag).ByteLength;
    ExpectMessage("半角" + std::to_string(limit) + "文字以下で入力してください");
    ExpectMessage("「,」は入力できません");
    Open(18, [&](OperationChSetScreen& screen) {
      EXPECT_FALSE(Enter(screen, field, std::string(static_cast<std::size_t>(limit) + 1, 'x')));
      EXPECT_FALSE(Enter(screen, field, "a,b"));
      EXPECT_TRUE(Enter(screen, field, "good"));
    });
    ExpectNoneLeft();
  }
}

} // namespace
} // namespace loader::test
