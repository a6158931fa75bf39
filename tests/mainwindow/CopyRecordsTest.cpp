// Which parameters a copy takes along, and that it takes no other.
#include <set>

#include "mainwindow/modJoint.h"
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

// "C TYPE": what the user expects to find in the copy.
const std::set<std::string> OfAChannel{"C TAG",  "C TAG2", "C TYPE", "C OTCH", "C UNIT", "C POIN", "C FILT",
                                       "C SCAL", "C MMIN", "C MMAX", "C SMIN", "C SMAX", "C ROOT", "C PVSI",
                                       "C PVKA", "C SUBC", "C RECO", "C RECM", "C RMIN", "C RMAX", "C FTIO",
                                       "C TAIS", "A A1TY", "A A1VL", "A A1RL", "A A2TY", "A A2VL", "A A2RL",
                                       "A A3TY", "A A3VL", "A A3RL", "A A4TY", "A A4VL", "A A4RL"};
const std::set<std::string> OfFormulas{
    "O OP11", "O S111", "O S211", "O OP12", "O S112", "O S212", "O OP13", "O S113", "O S213",
    "O OP21", "O S121", "O S221", "O OP22", "O S122", "O S222", "O OP23", "O S123", "O S223",
    "O OP31", "O S131", "O S231", "O OP32", "O S132", "O S232", "O OP33", "O S133", "O S233",
    "O OP41", "O S141", "O S241", "O OP42", "O S142", "O S242", "O OP43", "O S143", "O S243"};
const std::set<std::string> OfAMessage{"M MESS", "M MTM1", "M MTM2", "M MTM3"};
const std::set<std::string> OfAUnit{"U UNIT"};

struct CopyOf {
  const char* name;
  void (*copy)(int source, int target);
  const std::set<std::string>* tags;
};
void PrintTo(const CopyOf& tested, std::ostream* out) {
  *out << tested.name;
}

class CopyRecords : public MainWindow, public testing::WithParamInterface<CopyOf> {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }

  static constexpr int Source = 3;
  static constexpr int Target = 7;

  // A value of its own for each parameter of the store, in all three copies.
  static void FillDifferently() {
    std::int16_t next = -20000;
    for (ParamSection& section : ParamStore) {
      for (ParamItem& item : section.Items) {
        for (ParamNumRecord& record : item.NumRecords) {
          record.Value = next++;
          record.ReadValue = next++;
          record.DefaultValue = next++;
        }
        for (ParamTextRecord& record : item.TextRecords) {
          record.Value = FixedText(DecimalText(next++));
          record.ReadValue = FixedText(DecimalText(next++));
          record.DefaultValue = FixedText(DecimalText(next++));
        }
      }
    }
  }
};

TEST_P(CopyRecords, TakesItsTagsAndNoOther) {
  FillDifferently();
  const ParamStoreTable before = ParamStore;
  GetParam().copy(Source, Target);
  std::set<std::string> copied;
  for (std::size_t s = 0; s < before.size(); ++s) {
    const std::string section(Trim(std::string_view(before[s].Code)));
    for (std::size_t i = 0; i < before[s].Items.size(); ++i) {
      const auto check = [&](const auto& old, const auto& now, const auto* source) {
        EXPECT_EQ(old.ReadValue, now.ReadValue) << section << i << old.Tag;
        EXPECT_EQ(old.DefaultValue, now.DefaultValue) << section << i << old.Tag;
        if (old.Value == now.Value) {
          return;
        }
        ASSERT_EQ(static_cast<std::size_t>(Target), i) << section << old.Tag;
        EXPECT_EQ(source->Value, now.Value) << section << old.Tag;
        copied.insert(section + " " + std::string(Trim(std::string_view(old.Tag))));
      };
      const ParamItem& old = before[s].Items[i];
      const ParamItem& now = ParamStore[s].Items[i];
      const ParamItem* source =
          before[s].Items.size() > Source ? &before[s].Items[static_cast<std::size_t>(Source)] : nullptr;
      for (std::size_t n = 0; n < old.NumRecords.size(); ++n) {
        check(old.NumRecords[n], now.NumRecords[n], source != nullptr ? &source->NumRecords[n] : nullptr);
      }
      for (std::size_t n = 0; n < old.TextRecords.size(); ++n) {
        check(old.TextRecords[n], now.TextRecords[n], source != nullptr ? &source->TextRecords[n] : nullptr);
      }
    }
  }
  EXPECT_EQ(*GetParam().tags, copied);
}

TEST_P(CopyRecords, OntoItselfChangesNothing) {
  FillDifferently();
  const std::vector<std::int16_t> numbers = AllNumbers();
  const std::vector<std::u16string> texts = AllTexts();
  GetParam().copy(Target, Target);
  EXPECT_EQ(numbers, AllNumbers());
  EXPECT_EQ(texts, AllTexts());
}

TEST_P(CopyRecords, OfOrToAnItemThatDoesNotExistChangesNothing) {
  FillDifferently();
  const std::vector<std::int16_t> numbers = AllNumbers();
  const std::vector<std::u16string> texts = AllTexts();
  for (const int outside : {-1, 999}) {
    GetParam().copy(outside, Target);
    GetParam().copy(Source, outside);
  }
  EXPECT_EQ(numbers, AllNumbers());
  EXPECT_EQ(texts, AllTexts());
}

// A model, or an older initial settings file, may lack one.
TEST_P(CopyRecords, PassesOverATagThatTheStoreLacks) {
  for (const std::string& name : *GetParam().tags) {
    if (name != "U UNIT") {
      DropTag(name.substr(0, 1), name.substr(2));
    }
  }
  const std::vector<std::int16_t> numbers = AllNumbers();
  GetParam().copy(Source, Target);
  EXPECT_EQ(numbers, AllNumbers());
}

INSTANTIATE_TEST_SUITE_P(All, CopyRecords,
                         testing::Values(CopyOf{"Channel", CopyChannelRecords, &OfAChannel},
                                         CopyOf{"Formulas", CopyOperationFormulas, &OfFormulas},
                                         CopyOf{"Message", CopyMessageRecords, &OfAMessage},
                                         CopyOf{"Unit", CopyUnitRecords, &OfAUnit}),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace loader::test
