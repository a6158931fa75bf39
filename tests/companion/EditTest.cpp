// Edits of a set-up: what is typed, what a field would refuse, and that all of them are laid or none.
#include "companion/Edit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "companion/EditValue.h"
#include "core/Text.h"
#include "core/UserUnits.h"
#include "simulator/Plant.h"
#include "tests/companion/CompanionTest.h"

namespace loader::test {
namespace {

class Edits : public CompanionTest {
protected:
  Edits() { LoadModel("KOV"); }

  static EditReport Set(const std::vector<std::u16string>& arguments, const Speech& speech = InEnglish) {
    std::vector<Edit> edits;
    for (const std::u16string& argument : arguments) {
      const std::vector<Edit> more = EditsOf(argument, Language::English);
      edits.insert(edits.end(), more.begin(), more.end());
    }
    return ApplyEdits(edits, speech);
  }
  // "" when it was taken; the reasons, each behind its key.
  static std::string Refusals(const std::vector<std::u16string>& arguments) {
    std::string all;
    for (const Refusal& refusal : Set(arguments).refusals) {
      all += (all.empty() ? "" : "; ") + KeyOf(refusal.ref) + ": " + ToUtf8(refusal.reason);
    }
    return all;
  }
  static int Value(std::string_view key) {
    const auto ref = RefOfKey(key);
    return NumValue(ref->section, ref->item, ref->tag, -1);
  }
  static std::string Text(std::string_view key) {
    return ToUtf8(std::get<std::u16string>(*ValueOf(*RefOfKey(key))));
  }

  static constexpr Speech InEnglish{Language::English, false};
};

// A channel that measures 4 to 20 mA as 1-5 V on a scale of its own.
void Scale(int item) {
  SetNumValue("C", item, "TYPE", 32);
  SetNumValue("C", item, "SCAL", 1);
  SetNumValue("C", item, "POIN", 1);
  SetNumValue("C", item, "MMIN", 1000);
  SetNumValue("C", item, "MMAX", 5000);
}

// --- What is typed

TEST_F(Edits, TakeANumberAtItsPosition) {
  EXPECT_EQ(Refusals({u"A02A1VL=85.5"}), "");
  EXPECT_EQ(Value("A02A1VL"), 855);
  EXPECT_EQ(Refusals({u"a02a1vl=  -12 "}), "");
  EXPECT_EQ(Value("A02A1VL"), -120);
  EXPECT_EQ(Refusals({u"A02A1VL=85.50"}), "") << "no digit is lost";
  EXPECT_EQ(Refusals({u"A02A1VL=8.5e1"}), "A02A1VL: it takes 1 digits behind the point")
      << "the field cuts it to 8.5";
  EXPECT_EQ(Refusals({u"A02A1VL=85.55"}), "A02A1VL: it takes 1 digits behind the point");
  EXPECT_EQ(Refusals({u"A02A1VL=1400.1"}), "A02A1VL: not within -230.0 to 1400.0");
  EXPECT_EQ(Refusals({u"A02A1VL=hot"}), "A02A1VL: not a number");
  EXPECT_EQ(Refusals({u"A02A1VL="}), "A02A1VL: not a number");
  EXPECT_EQ(Refusals({u"A02A1VL=1e300"}), "A02A1VL: not within -230.0 to 1400.0");
  EXPECT_EQ(Value("A02A1VL"), 855);
}

TEST_F(Edits, TakeTheStoredNumberBehindAMark) {
  EXPECT_EQ(Refusals({u"A02A1VL=#855", u"C02COLR=#4"}), "");
  EXPECT_EQ(Value("A02A1VL"), 855);
  EXPECT_EQ(Value("C02COLR"), 4);
  EXPECT_EQ(Refusals({u"A02A1VL=#14001"}), "A02A1VL: not within -230.0 to 1400.0")
      << "the limits hold all the same";
  EXPECT_EQ(Refusals({u"A02A1VL=#8.5"}), "A02A1VL: not a number");
}

TEST_F(Edits, TakeAnEntryOfAListByItsText) {
  EXPECT_EQ(Refusals({u"C02COLR=青", u"J00ETHE=on", u"H00LANG=1"}), "");
  EXPECT_EQ(Value("C02COLR"), 2);
  EXPECT_EQ(Value("J00ETHE"), 1);
  EXPECT_EQ(Refusals({u"J00ETHE=ＯＦＦ", u"C03TYPE=Ｋ 熱電対"}), "") << "whatever the width";
  EXPECT_EQ(Value("J00ETHE"), 0);
  EXPECT_EQ(Refusals({u"C03SEKI=ｶｳﾝﾀ"}), "");
  EXPECT_EQ(Refusals({u"E00TDAY=5"}), "");
  EXPECT_EQ(Value("E00TDAY"), 4) << "the text goes before the stored number";
  EXPECT_EQ(Refusals({u"E00TDAY=#5"}), "");
  EXPECT_EQ(Value("E00TDAY"), 5);
  EXPECT_EQ(Refusals({u"J00ETHE=maybe"}), "J00ETHE: the list has no such entry (OFF, ON)");
  EXPECT_EQ(Refusals({u"J00ETHE=2"}), "J00ETHE: the list has no such value");
  EXPECT_EQ(Refusals({u"C02COLR=0"}), "C02COLR: the list has no such value");
}

TEST_F(Edits, AskWhichOfTwoEntriesOfOneName) {
  UnitNames.at(40) = u"same";
  UnitNames.at(41) = u"same";
  Scale(2);
  EXPECT_EQ(Refusals({u"C02UNIT=same"}),
            "C02UNIT: several entries have this name; give the number of one (#40, #41)");
  EXPECT_EQ(Refusals({u"C02UNIT=#41"}), "");
  EXPECT_EQ(Refusals({u"C02UNIT=same"}), "") << "as it reads, so it stays";
  EXPECT_EQ(Value("C02UNIT"), 41);
}

TEST_F(Edits, TakeTimesOctetsAndAddresses) {
  EXPECT_EQ(Refusals({u"E00TSBA=8:05", u"J00IPA1=192", u"X00EADD=1 3 8"}), "");
  EXPECT_EQ(Value("E00TSBA"), 485);
  EXPECT_EQ(Value("J00IPA1"), 192);
  EXPECT_EQ(Value("X00EADD"), 0b10000101);
  EXPECT_EQ(Refusals({u"X00EADD=0"}), "");
  EXPECT_EQ(Value("X00EADD"), 0);
  for (const char16_t* time : {u"24:00", u"8:60", u"8:5", u"485", u"8:055", u":05", u"-1:00"}) {
    if (std::u16string_view(time) != u":05") {
      EXPECT_EQ(Refusals({u"E00TSBA=" + std::u16string(time)}), "E00TSBA: a time is from 0:00 to 23:59")
          << ToUtf8(time);
    }
  }
  EXPECT_EQ(Refusals({u"E00TSBA=:05"}), "E00TSBA: a time is from 0:00 to 23:59");
  EXPECT_EQ(Refusals({u"J00IPA1=256"}), "J00IPA1: not within 0 to 255");
  EXPECT_EQ(Refusals({u"J00IPA1=1.5"}), "J00IPA1: not within 0 to 255");
  EXPECT_EQ(Refusals({u"X00EADD=9"}), "X00EADD: addresses are numbers from 1 to 8 (1 3 8; 0 for none)");
}

TEST_F(Edits, TakeTextsThatAFileKeeps) {
  EXPECT_EQ(Refusals({u"C02TAG=１号炉 上段", u"M00MESS= 始動 "}), "");
  EXPECT_EQ(Text("C02TAG "), "１号炉 上段");
  EXPECT_EQ(Text("M00MESS"), " 始動") << "a message keeps the blanks in front of it, as its field does";
  EXPECT_EQ(Refusals({u"G00GNEM= 炉 "}), "");
  EXPECT_EQ(Text("G00GNEM"), "炉") << "trimmed, as its field does";
  EXPECT_EQ(Refusals({u"C02TAG=123456789012345６"}), "C02TAG: it is longer than 16 half-width characters");
  EXPECT_EQ(Refusals({u"C02TAG=" + std::u16string(100, u' ') + u"x"}),
            "C02TAG: it is longer than 16 half-width characters");
  EXPECT_EQ(Refusals({u"C02TAG=a,b"}), "C02TAG: a comma cannot be kept in a parameter file");
  EXPECT_EQ(Refusals({u"J00SDNM=a,b"}), "J00SDNM: a comma cannot be kept in a parameter file")
      << "though its field takes it";
  EXPECT_EQ(Refusals({u"C02TAG=a\nb"}), "C02TAG: it has a control character");
  EXPECT_EQ(Refusals({u"C02TAG=\u20AC"}), "C02TAG: it has a character that code page 932 does not have");
  EXPECT_EQ(Refusals({u"C02TAG=#1=2"}), "") << "a text takes any mark";
  EXPECT_EQ(Text("C02TAG "), "#1=2");
}

TEST_F(Edits, TakePowersUnderTheLogarithm) {
  Scale(2);
  for (const auto& [tag, value] :
       std::map<std::string, int>{{"TAIS", 1}, {"SMIN", 0}, {"SMAX", 4}, {"RMIN", 0}, {"RMAX", 4}}) {
    SetNumValue("C", 2, tag, static_cast<std::int16_t>(value));
  }
  EXPECT_EQ(Refusals({u"C02RMAX=1.00E3"}), "");
  EXPECT_EQ(Value("C02RMAX"), 3);
  EXPECT_EQ(Refusals({u"C02RMAX=2"}), "") << "the screen takes the exponent";
  EXPECT_EQ(Value("C02RMAX"), 2);
  EXPECT_EQ(Refusals({u"C02RMAX=2.00E3"}), "C02RMAX: the mantissa has to be 1.00");
  EXPECT_EQ(Refusals({u"C02RMAX=10"}), "C02RMAX: not within -9 to 9");
  EXPECT_EQ(Refusals({u"A02A1VL=1.00E2"}), "");
  EXPECT_EQ(Value("A02A1VL"), 3000) << "in the middle of 1000 to 5000";
  EXPECT_EQ(Refusals({u"A02A1VL=3000"}), "A02A1VL: a channel with a logarithm takes 1.00E-9 to 1.00E9");
  EXPECT_EQ(Refusals({u"A02A1VL=10.0E2"}), "A02A1VL: a channel with a logarithm takes 1.00E-9 to 1.00E9");
  EXPECT_EQ(Refusals({u"A02A1VL=1.01E9"}), "A02A1VL: a channel with a logarithm takes 1.00E-9 to 1.00E9");
}

TEST_F(Edits, GiveAConstantThePositionThatIsTyped) {
  EXPECT_EQ(Refusals({u"N00CONS=1.25"}), "");
  EXPECT_EQ(Value("N00CONS"), 125);
  EXPECT_EQ(Value("N00CONP"), 2);
  EXPECT_EQ(Refusals({u"N00CONS=1.5", u"N00CONP=3"}), "") << "unless it is given too";
  EXPECT_EQ(Value("N00CONS"), 1500);
  EXPECT_EQ(Refusals({u"N00CONS=1.23456"}), "N00CONS: it takes 4 digits behind the point");
}

// --- What depends on others

TEST_F(Edits, DoNotDependOnTheirOrder) {
  EXPECT_EQ(Refusals({u"M00MTM2=DI5", u"M00MTM1=DI ON"}).find("M00MTM2"), std::string::npos);
  const std::vector<std::u16string> scaled{u"C02SMAX=90.00", u"C02POIN=2", u"C02SCAL=ON",    u"C02TYPE=#32",
                                           u"C02UNIT=%",     u"C02RMIN=0", u"C02RMAX=90.00", u"C03TYPE=#0"};
  EXPECT_EQ(Refusals(scaled), "");
  EXPECT_EQ(Value("C02SMAX"), 9000);
  LoadModel("KOV");
  EXPECT_EQ(Refusals({scaled.rbegin(), scaled.rend()}), "");
  EXPECT_EQ(Value("C02SMAX"), 9000);
}

TEST_F(Edits, MayNameAUnitThatTheyMake) {
  Scale(2);
  EXPECT_EQ(Refusals({u"C02UNIT=Nm3/h", u"U00UNIT=Nm3/h"}), "");
  EXPECT_EQ(Value("C02UNIT"), static_cast<int>(UserUnitIndex(1, Profile.UnitCount)));
}

TEST_F(Edits, OfAListThatIsWithoutMeaningAreRefused) {
  SetNumValue("M", 0, "MTM1", 0);
  EXPECT_EQ(Refusals({u"M00MTM2=DI5"}), "M00MTM2: it has no meaning as the settings stand");
}

TEST_F(Edits, TellWhatReadsOtherwiseThrough) {
  Scale(2);
  SetNumValue("C", 2, "SMAX", 1000);
  const EditReport report = Set({u"C02POIN=2"});
  ASSERT_TRUE(report.refusals.empty());
  EXPECT_EQ(report.changes.size(), 1U);
  const auto scale = std::ranges::find(report.reads, ParameterRef{"C", 2, "SMAX"}, &Change::ref);
  ASSERT_NE(scale, report.reads.end());
  EXPECT_EQ(scale->textBefore, u"100.0");
  EXPECT_EQ(scale->textAfter, u"10.00");
  EXPECT_EQ(scale->before, scale->after);
  EXPECT_TRUE(std::ranges::none_of(report.reads, [](const Change& change) { return change.ref.item != 2; }));
}

TEST_F(Edits, AreRefusedWhereTheyWouldSpoilAnother) {
  const std::string refusals = Refusals({u"C02TYPE=T熱電対"});
  EXPECT_NE(refusals.find(
                "C02SMAX: its present value 500.0 would be no good any more (not within -230.0 to 430.0)"),
            std::string::npos)
      << refusals;
  EXPECT_EQ(Value("C02TYPE"), 1);
  EXPECT_EQ(Refusals({u"C02TYPE=T熱電対", u"C02SMAX=400.0", u"C02RMAX=400.0"}), "");
  EXPECT_EQ(Value("C02TYPE"), 4);
}

TEST_F(Edits, AreNotRefusedForWhatWasBadBefore) {
  SetNumValue("C", 2, "PVKA", 5000);
  EXPECT_EQ(Refusals({u"C02COLR=3"}), "");
  EXPECT_EQ(Refusals({u"C02PVKA=6000"}), "C02PVKA: not within 0 to 999");
}

// --- What the screens do not let happen

TEST_F(Edits, OfAKindThatCannotStandBesideTheNextChannelAreRefused) {
  ASSERT_EQ(ChannelPairKind(0), PairLeader);
  const std::string refusals = Refusals({u"C00TYPE=#20", u"C00SMAX=400.0", u"C00RMAX=400.0"});
  EXPECT_EQ(refusals, "C00TYPE: the input kind of CH 2 (K熱電対) cannot stand beside it (the screen asks: "
                      "このチャネルの次のチャネルが初期化されます)");
  EXPECT_EQ(Refusals({u"C00TYPE=#20", u"C00SMAX=400.0", u"C00RMAX=400.0", u"C01TYPE=#20", u"C01SMAX=400.0",
                      u"C01RMAX=400.0"}),
            "")
      << "both together";
}

TEST_F(Edits, OfAKindThatCannotStandBesideTheChannelBeforeAreRefused) {
  EXPECT_EQ(Refusals({u"C01TYPE=#20", u"C01SMAX=400.0", u"C01RMAX=400.0"}),
            "C01TYPE: it cannot stand beside the input kind of CH 1 (K熱電対)");
  EXPECT_EQ(Refusals({u"C00TYPE=#13"}).substr(0, 35), "C00TYPE: the list has no such value")
      << "a kind without a name";
}

TEST_F(Edits, OfADisabledFieldAreRefused) {
  const std::string reason =
      ": with this input kind (K熱電対), scaling and logarithm the screen does not let it be changed";
  EXPECT_EQ(Refusals({u"C02POIN=2"}), "C02POIN" + reason);
  EXPECT_EQ(Refusals({u"C02OTCH=1"}), "C02OTCH" + reason);
  EXPECT_EQ(Refusals({u"C02SCAL=ON"}), "") << "what it disables is judged by what is given";
  EXPECT_EQ(Refusals({u"C18TYPE=1"}), "C18TYPE: an operation channel does not have it");
  EXPECT_EQ(Refusals({u"C18POIN=2"}).find("C18POIN: with"), std::string::npos);
}

TEST_F(Edits, OfATemperatureStayInItsUnits) {
  EXPECT_EQ(Refusals({u"C02UNIT=%"}), "C02UNIT: a temperature is in one of the first two units");
}

TEST_F(Edits, OfWhatNoScreenSetsAreRefused) {
  EXPECT_EQ(Refusals({u"H00YEAR=26"}), "H00YEAR: the recorder's clock is set by its command alone");
  EXPECT_EQ(Refusals({u"F00FIX=1"}), "F00FIX: it is a command to the recorder and no setting");
  EXPECT_EQ(Refusals({u"P00PILC=KOV"}), "P00PILC: the recorder tells it of itself; it cannot be set");
  EXPECT_EQ(Refusals({u"O00OP11=1"}), "O00OP11: formulas are edited on their screen");
  EXPECT_EQ(Refusals({u"C02DSPM=1"}), "") << "what no screen shows, within its record";
  EXPECT_EQ(Refusals({u"C02DSPM=2"}), "C02DSPM: not within 0 to 1");
  LoadModel("RUG");
  EXPECT_EQ(Refusals({u"C02TAIS=1"}), "C02TAIS: no screen of this model has it");
}

TEST_F(Edits, OfWhatAFileLosesAreRefused) {
  EXPECT_EQ(Refusals({u"E00TTSM=5"}), "E00TTSM: a parameter file loses it when it is opened");
  EXPECT_EQ(Refusals({u"E00TSTR=8:05"}), "");
}

// --- All or nothing

TEST_F(Edits, AreLaidAllOrNone) {
  const ParamStoreTable before = ParamStore;
  const Catalogue units = UnitNames;
  EXPECT_EQ(Refusals({u"C02TAG=x", u"U00UNIT=new", u"A02A1VL=1", u"H00YEAR=1", u"J00IPA1=300"}),
            "H00YEAR: the recorder's clock is set by its command alone; J00IPA1: not within 0 to 255");
  EXPECT_TRUE(ParamStore == before);
  EXPECT_TRUE(UnitNames == units);
}

TEST_F(Edits, OfOneParameterMayNotContradictEachOther) {
  EXPECT_EQ(Refusals({u"C02COLR=3", u"C??COLR=4"}), "C02COLR: given twice with different values");
  EXPECT_EQ(Refusals({u"C02COLR=3", u"C??COLR=3"}), "");
  EXPECT_EQ(Value("C29COLR"), 3);
}

TEST_F(Edits, TellChangesAndWhatStoodAlready) {
  const EditReport report = Set({u"C02COLR=4", u"C03COLR=#" + DecimalText(Value("C03COLR"))});
  ASSERT_EQ(report.changes.size(), 1U);
  EXPECT_EQ(report.changes[0].textBefore, u"紫");
  EXPECT_EQ(report.changes[0].textAfter, u"緑");
  EXPECT_EQ(report.already, (std::vector<ParameterRef>{{"C", 3, "COLR"}}));
}

TEST_F(Edits, HideSecrets) {
  const EditReport report = Set({u"H00PAS1=123", u"K00PASS=geheim"});
  ASSERT_EQ(report.changes.size(), 2U);
  for (const Change& change : report.changes) {
    EXPECT_EQ(change.textBefore, HiddenSecret);
    EXPECT_EQ(change.textAfter, HiddenSecret);
  }
  EXPECT_EQ(Value("H00PAS1"), 123);
  EXPECT_EQ(Set({u"H00PAS1=124"}, {Language::English, true}).changes.at(0).textAfter, u"124");
}

TEST_F(Edits, NeedAKeyThatIsThere) {
  EXPECT_THROW((void)EditsOf(u"C02MMAX", Language::English), Undone);
  EXPECT_THROW((void)EditsOf(u"=3", Language::English), Undone);
  EXPECT_THROW((void)EditsOf(u"C30TAG=3", Language::English), Undone);
  EXPECT_THROW((void)EditsOf(u"Q*=3", Language::English), Undone);
  EXPECT_THROW((void)EditsOf(u"入力種類=3", Language::English), Undone);
  EXPECT_EQ(EditsOf(u"A??A1VL=3", Language::English).size(), 30U);
}

TEST(FoldedTexts, AreTheSameInAnyWidth) {
  EXPECT_EQ(FoldedText(u"ＯＮ"), u"on");
  EXPECT_EQ(FoldedText(u"K　熱 電対"), u"k熱電対");
  EXPECT_EQ(FoldedText(u"ﾊﾞｯﾃﾘｰ ﾊﾟ ﾀ"), u"バッテリーパタ");
  EXPECT_EQ(FoldedText(u"ｱﾞ"), u"ア゛") << "no such kana: the mark stays";
}

// --- Of every parameter

class ItsOwnText : public CompanionTest, public testing::WithParamInterface<const char*> {};

enum class Content { Initial, Plant, Random };

void Fill(std::string_view model, Content content) {
  LoadModel(model);
  if (content == Content::Plant) {
    ParamStore =
        simulator::PlantSetup(ParamStore, model == "KOV" ? simulator::Model::Kov : simulator::Model::Rug);
  } else if (content == Content::Random) {
    std::mt19937 random(1);
    ForEachParameter([&](const ParameterRef&, const StoredParameter& stored) {
      if (stored.number != nullptr) {
        const int span = stored.number->MaxValue - stored.number->MinValue + 1;
        stored.number->Value = static_cast<std::int16_t>(
            stored.number->MinValue + static_cast<int>(random() % static_cast<unsigned>(std::max(span, 1))));
      }
    });
  }
  UpdateUserUnitNames();
}

// The one text that is not taken for the value that it shows: a number outside the limits of its field has no
// text but its digits, which mean something else where they are typed.
bool IsShownRaw(const ParameterRef& ref, ChannelRows& rows) {
  const bool number = FormIn(MeaningOf(ref.section, ref.tag), View::Table).sense == Sense::Number;
  const bool raw = ReadableValue(ref, {Language::English, true}) == RawText(*ValueOf(ref));
  const ChannelRow* channel = rows.Of(ref);
  return number && raw && channel != nullptr;
}

// A value that is no entry's may read as one: 4 is no report cycle and reads as OFF. Who types OFF gets it.
bool ReadsAsAnother(const ParameterRef& ref, const StoredValue& taken) {
  const MeaningRow& row = MeaningOf(ref.section, ref.tag);
  const ChoiceList* list = ChoicesOf(row, View::Table, ref.item).list;
  const StoredParameter stored = FindParameter(ref);
  if (list == nullptr || stored.number == nullptr) {
    return false;
  }
  const auto text = ValueText(*list, stored.number->Value);
  return list->otherRow >= 0 && text == ValueText(*list, std::get<std::int16_t>(taken)) &&
         !std::ranges::any_of(ChoicesFor(ref),
                              [&](const Choice& choice) { return choice.value == stored.number->Value; });
}

TEST_P(ItsOwnText, LeavesEveryParameterAsItIs) {
  for (const Content content : {Content::Initial, Content::Plant, Content::Random}) {
    Fill(GetParam(), content);
    ChannelRows rows;
    int raw = 0;
    for (const ParameterRef& ref : AllParameters()) {
      if (WhyNeverSet(ref, Language::English)) {
        continue;
      }
      const std::u16string shown = ReadableValue(ref, {Language::English, true});
      const TypedReading reading = ReadTypedValue(ref, shown, rows, Language::English);
      if (IsShownRaw(ref, rows) && !(reading.value && *reading.value == *ValueOf(ref))) {
        ++raw;
        continue;
      }
      ASSERT_TRUE(reading.value) << KeyOf(ref) << "=" << ToUtf8(shown) << ": " << ToUtf8(reading.reason);
      EXPECT_TRUE(*reading.value == *ValueOf(ref) || ReadsAsAnother(ref, *reading.value))
          << KeyOf(ref) << "=" << ToUtf8(shown);
    }
    EXPECT_EQ(raw > 0, content == Content::Random) << raw;
  }
}

TEST_P(ItsOwnText, IsGoodInThePlants) {
  Fill(GetParam(), Content::Plant);
  ChannelRows rows;
  for (const ParameterRef& ref : AllParameters()) {
    const auto objection = Objection(ref, rows, Language::English);
    EXPECT_FALSE(objection) << KeyOf(ref) << " " << ToUtf8(objection.value_or(u""));
  }
}

INSTANTIATE_TEST_SUITE_P(Models, ItsOwnText, testing::Values("KOV", "RUG"));

} // namespace
} // namespace loader::test
