// Random sequences of what a user does on the screen of an operation channel.
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "core/ModelProfile.h"
#include "tests/channelscreens/AnyBoxes.h"
#include "tests/channelscreens/OperationFixture.h"

namespace loader::test {
namespace {

class OperationActions : public OperationScreen {
protected:
  int Random(int below) { return std::uniform_int_distribution(0, below - 1)(generator); }
  // One control, and what a user can do with it; "適用" is for the test to press.
  void Step(OperationChSetScreen& screen);
  // The screen shows what a fresh one shows of the same channel.
  void ExpectAsStored(OperationChSetScreen& screen) {
    OperationChSetScreen fresh;
    LoadEntry(fresh.browsing, screen.browsing.entry);
    EXPECT_EQ(ShownOf(fresh), ShownOf(screen));
    EXPECT_EQ(fresh.FormulaWork, screen.FormulaWork);
  }
  template <typename Act> void OpenAnywhere(Act act) {
    Open(Profile.FirstOperationChannel - 1 + Random(Profile.OperationChannelCount), act);
  }

  AnyBoxes boxes;
  std::mt19937 generator{20261122};
};

void OperationActions::Step(OperationChSetScreen& screen) {
  constexpr const char16_t* Typed[] = {u"",    u"5", u"-9",     u"0.5",      u"99999",
                                       u"1e3", u"x", u"-32768", u"12.34567", u"a,b"};
  Control& control =
      *screen.controls[static_cast<std::size_t>(Random(static_cast<int>(screen.controls.size())))];
  if (control.kind == ControlKind::TextField) {
    auto& field = static_cast<TextField&>(control);
    user.Type(field, Typed[Random(static_cast<int>(std::size(Typed)))]);
    if (Random(2) == 0) {
      user.Leave(field);
    }
  } else if (control.kind == ControlKind::ListBox) {
    auto& list = static_cast<ListBox&>(control);
    user.Choose(list, Random(static_cast<int>(list.items.size())));
  } else if (control.name.starts_with("btn") || control.name.starts_with("cmdFormulaDel")) {
    user.Click(static_cast<Button&>(control));
  }
}

TEST_F(OperationActions, ReachNoStoreBeforeTheyAreApplied) {
  for (const char* model : {"KOV", "RUG"}) {
    Start(model);
    for (int round = 0; round < 60; ++round) {
      const WholeStore before;
      OpenAnywhere([&](OperationChSetScreen& screen) {
        for (int step = Random(60); step > 0; --step) {
          Step(screen);
          platform.time.Advance(Random(2) * 100); // the guard has ended, or has not
          ASSERT_EQ(before, WholeStore());
        }
        LoadEntry(screen.browsing, screen.browsing.entry); // "元に戻す"
        ExpectAsStored(screen);
      });
      ASSERT_EQ(before, WholeStore());
    }
    EXPECT_GT(boxes.shown, 0) << "values were refused on the way";
  }
}

TEST_F(OperationActions, ThatWereAppliedStandInTheStoreAsTheyAreShown) {
  int appliedWhole = 0;
  for (const char* model : {"KOV", "RUG"}) {
    Start(model);
    for (int round = 0; round < 150; ++round) {
      OpenAnywhere([&](OperationChSetScreen& screen) {
        for (int step = Random(12); step > 0; --step) {
          platform.time.Advance(100); // under the guard a field is left as it was typed
          Step(screen);
        }
        if (!user.MoveTo(screen.browsing.apply)) {
          return; // the field that was left has refused its value
        }
        const auto beforeApply = ShownOf(screen);
        const int entry = screen.browsing.entry;
        const int boxesBefore = boxes.shown;
        applied = 0;
        if (!Press(screen, "OKButton") || screen.browsing.entry != entry || boxes.shown != boxesBefore) {
          return; // a value was refused
        }
        ++appliedWhole;
        EXPECT_EQ(1, applied);
        ExpectAsStored(screen);
        // A list that shows no row, and a tag with blanks at its ends, are the store's as they were.
        for (const auto& [name, text] : ShownOf(screen)) {
          if (name.starts_with("txt") && name.find("Tag") == std::string::npos && name != "txtChannel") {
            EXPECT_EQ(beforeApply.at(name), text) << name;
          }
        }
        const WholeStore once;
        Press(screen, "OKButton");
        EXPECT_EQ(once, WholeStore()) << "a second time changes nothing";
      });
    }
  }
  EXPECT_GT(appliedWhole, 50);
}

} // namespace
} // namespace loader::test
