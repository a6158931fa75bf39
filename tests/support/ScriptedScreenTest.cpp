// The scripted screens and their user: what a modal screen keeps from the window behind it, where the
// keyboard stays, and what fails a test.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/Text.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

constexpr auto Complaint = u"数字ではありません。";

// A screen with one control of each kind that takes a click.
struct Desk : Screen {
  explicit Desk(std::string screenName) : Screen(std::move(screenName)) {
    lblColour.onClick = [this] { ++acted; };
    btnOpen.onClick = [this] { ++acted; };
    smenuOpen.onClick = [this] { ++acted; };
    tool.onClick = [this] { ++acted; };
    cmdEnd.onClick = [this] { ThePlatform().screens.Close(*this); };
    txtName.onLostFocus = [this] {
      ++checks;
      if (txtName.text != u"good") {
        ShowMessage(Complaint);
        RequestFocusAndSelectAll(txtName);
      }
    };
  }
  TextField txtName{*this, "txtName"};
  TextField txtOther{*this, "txtOther"};
  Label lblColour{*this, "lblColour"};
  Label lblPlain{*this, "lblPlain"};
  Button btnOpen{*this, "btnOpen"};
  Button cmdEnd{*this, "cmdEnd"};
  MenuEntry smenuOpen{*this, "smenuOpen"};
  ToolButton tool{*this, "tool"};
  int checks = 0;
  int acted = 0;
};

class Screens : public testing::Test {
protected:
  Screens() { platform.screens.Show(window); }
  // The button of the window opens a screen as the dialogs do: a record that lives while it is shown.
  void OpensADialog(Desk& from, const char* name) {
    from.btnOpen.onClick = [this, name] {
      Desk dialog(name);
      opened.push_back(&dialog);
      platform.screens.ShowModal(dialog);
    };
  }
  void ExpectComplaint() { platform.boxes.Expect(Complaint); }

  ScriptedPlatform platform;
  ScriptedUser user;
  Desk window{"frmWindow"};
  std::vector<const Screen*> opened;
};

// --- The keyboard

TEST_F(Screens, AClickInAModalScreenDoesNotLeaveTheFieldBehindIt) {
  user.Type(window.txtName, u"bad");
  platform.screens.Expect<Desk>("frmDialog", [&](Desk& dialog) {
    EXPECT_TRUE(user.Click(dialog.btnOpen));
    EXPECT_EQ(1, dialog.acted);
    user.Type(dialog.txtName, u"good");
    EXPECT_TRUE(user.Click(dialog.cmdEnd));
    EXPECT_EQ(1, dialog.checks);
  });
  Desk dialog("frmDialog");
  platform.screens.ShowModal(dialog); // by the program: nobody has left the field
  EXPECT_EQ(0, window.checks);
  ExpectComplaint();
  EXPECT_FALSE(user.Click(window.btnOpen));
  EXPECT_EQ(1, window.checks);
}

TEST_F(Screens, AClosedScreenLeavesNoFieldBehind) {
  OpensADialog(window, "frmDialog");
  for (int time = 0; time < 2; ++time) { // the second one may come to lie at the address of the first
    platform.screens.Expect<Desk>("frmDialog", [&](Desk& dialog) {
      EXPECT_EQ(nullptr, platform.screens.FocusedField(dialog));
      user.Type(dialog.txtName, u"bad");
      EXPECT_EQ(&dialog.txtName, platform.screens.FocusedField(dialog));
      EXPECT_TRUE(user.Escape(dialog)); // no leaving of the field
      EXPECT_EQ(nullptr, platform.screens.FocusedField(dialog));
    });
    EXPECT_TRUE(user.Click(window.btnOpen));
  }
  EXPECT_TRUE(user.Type(window.txtName, u"good"));
  EXPECT_TRUE(user.Click(window.cmdEnd));
}

TEST_F(Screens, AFocusThatAHandlerAskedForIsGivenBeforeTheNextClick) {
  window.btnOpen.onClick = [&] { RequestFocusAndSelectAll(window.txtName); };
  user.Click(window.btnOpen);
  ExpectComplaint();
  EXPECT_FALSE(user.Type(window.txtOther, u"x"));
  EXPECT_EQ(1, window.checks);
}

TEST_F(Screens, ALabelTakesAClickAfterTheCheckOfTheFieldWhichKeepsTheKeyboard) {
  user.Type(window.txtName, u"bad");
  ExpectComplaint();
  EXPECT_FALSE(user.Click(window.lblColour));
  EXPECT_EQ(0, window.acted);
  user.Type(window.txtName, u"good");
  EXPECT_TRUE(user.Click(window.lblColour));
  EXPECT_EQ(1, window.acted);
  EXPECT_EQ(2, window.checks);
  EXPECT_EQ(&window.txtName, platform.screens.FocusedField(window));
}

TEST_F(Screens, ALabelThatNobodyHandlesOrThatIsDisabledTakesNone) {
  user.Type(window.txtName, u"bad");
  EXPECT_FALSE(user.Click(window.lblPlain));
  window.lblColour.enabled = false;
  EXPECT_FALSE(user.Click(window.lblColour));
  EXPECT_EQ(0, window.acted);
  EXPECT_EQ(0, window.checks);
}

TEST_F(Screens, ReturnChecksAFieldOnceAndTheKeyboardStays) {
  user.Type(window.txtName, u"good");
  EXPECT_TRUE(user.PressReturn(window.txtName));
  EXPECT_TRUE(user.PressReturn(window.txtName));
  EXPECT_EQ(1, window.checks);
  EXPECT_EQ(&window.txtName, platform.screens.FocusedField(window));
  EXPECT_EQ(4, window.txtName.selLength);
  EXPECT_TRUE(user.Click(window.btnOpen)); // nobody has edited it since
  EXPECT_EQ(1, window.checks);
  user.Type(window.txtName, u"bad");
  ExpectComplaint();
  EXPECT_FALSE(user.Click(window.btnOpen));
  EXPECT_EQ(2, window.checks);
}

TEST_F(Screens, AFieldThatReturnFindsWrongIsCheckedAgainWhenItIsLeft) {
  user.Type(window.txtName, u"bad");
  ExpectComplaint();
  EXPECT_FALSE(user.PressReturn(window.txtName));
  EXPECT_EQ(&window.txtName, platform.screens.FocusedField(window));
  const Handler check = std::exchange(window.txtName.onLostFocus, {}); // as the guard passes it over
  EXPECT_TRUE(user.PressReturn(window.txtName));
  window.txtName.onLostFocus = check;
  ExpectComplaint();
  EXPECT_FALSE(user.Click(window.btnOpen));
  EXPECT_EQ(2, window.checks);
}

TEST_F(Screens, AMenuEntryAndAToolButtonLeaveTheKeyboardInTheField) {
  user.Type(window.txtName, u"good");
  EXPECT_TRUE(user.Click(window.smenuOpen));
  EXPECT_TRUE(user.Click(window.tool));
  EXPECT_EQ(2, window.checks);
  user.Click(window.btnOpen);
  EXPECT_EQ(3, window.checks);
  EXPECT_EQ(3, window.acted);
}

// --- What lies behind

TEST_F(Screens, TheWindowBehindAModalScreenTakesNothing) {
  OpensADialog(window, "frmDialog");
  platform.screens.Expect("frmDialog", [&](Screen&) {
    EXPECT_FALSE(user.Click(window.lblColour));
    EXPECT_FALSE(user.Click(window.smenuOpen));
    EXPECT_FALSE(user.Click(window.cmdEnd));
    EXPECT_FALSE(user.Type(window.txtName, u"x"));
    EXPECT_FALSE(user.CloseWindow(window));
  });
  user.Click(window.btnOpen);
  EXPECT_EQ(0, window.acted);
  EXPECT_EQ(u"", window.txtName.text);
  EXPECT_TRUE(user.Click(window.lblColour)) << "free again";
}

TEST_F(Screens, OneOpensFromAnother) {
  OpensADialog(window, "frmChSetting");
  platform.screens.Expect<Desk>("frmChSetting", [&](Desk& channel) {
    user.Type(channel.txtName, u"bad");
    Desk units("frmSelectUnit");
    platform.screens.Expect<Desk>("frmSelectUnit", [&](Desk& inner) {
      EXPECT_EQ(&inner, platform.screens.FrontModal());
      EXPECT_FALSE(user.Click(channel.btnOpen));
      EXPECT_TRUE(user.Click(inner.cmdEnd));
      EXPECT_FALSE(user.Click(inner.btnOpen)) << "closed";
    });
    platform.screens.ShowModal(units);
    EXPECT_EQ(&channel, platform.screens.FrontModal());
    EXPECT_EQ(0, channel.checks);
    ExpectComplaint();
    EXPECT_FALSE(user.Click(channel.btnOpen)) << "its field is still the one with the keyboard";
  });
  user.Click(window.btnOpen);
  EXPECT_EQ((std::vector<std::string>{"frmChSetting", "frmSelectUnit"}), platform.screens.shownModally);
  EXPECT_EQ(nullptr, platform.screens.FrontModal());
}

// --- Closing

TEST_F(Screens, EscapeAndTheCrossGoThroughTheCloseQuery) {
  OpensADialog(window, "frmDialog");
  for (bool (ScriptedUser::*close)(Screen&) : {&ScriptedUser::Escape, &ScriptedUser::CloseWindow}) {
    platform.screens.Expect("frmDialog", [&](Screen& dialog) {
      bool may = false;
      int asked = 0;
      dialog.onCloseQuery = [&] {
        ++asked;
        return may;
      };
      EXPECT_FALSE((user.*close)(dialog));
      EXPECT_EQ(&dialog, platform.screens.FrontModal());
      may = true;
      EXPECT_TRUE((user.*close)(dialog));
      EXPECT_EQ(nullptr, platform.screens.FrontModal());
      EXPECT_EQ(2, asked);
      EXPECT_FALSE((user.*close)(dialog)) << "closed";
    });
    user.Click(window.btnOpen);
  }
  EXPECT_EQ(2U, platform.screens.closed.size());
}

TEST_F(Screens, EscapeDoesNothingToTheMainWindow) {
  EXPECT_FALSE(user.Escape(window));
  EXPECT_TRUE(platform.screens.closed.empty());
  EXPECT_TRUE(user.CloseWindow(window));
  EXPECT_EQ(std::vector<Screen*>{&window}, platform.screens.closed);
}

TEST_F(Screens, OneThatItsScriptLeavesOpenIsClosedThroughTheQuery) {
  OpensADialog(window, "frmDialog");
  int asked = 0;
  platform.screens.Expect("frmDialog", [&](Screen& dialog) {
    dialog.onCloseQuery = [&] {
      ++asked;
      return true;
    };
  });
  user.Click(window.btnOpen);
  EXPECT_EQ(1, asked);
  EXPECT_TRUE(platform.screens.closed.empty()) << "by nobody in the test";
}

TEST_F(Screens, NoneIsShownOnceTheProgramHasEnded) {
  platform.screens.EndProgram();
  Desk dialog("frmDialog");
  platform.screens.ShowModal(dialog);
  EXPECT_TRUE(platform.screens.shownModally.empty());
}

// --- What fails a test

TEST_F(Screens, OneThatNobodyExpectedFailsTheTest) {
  Desk dialog("frmDialog");
  EXPECT_NONFATAL_FAILURE(platform.screens.ShowModal(dialog), "nobody expected: frmDialog");
}

TEST_F(Screens, OneInPlaceOfAnotherFailsTheTestAndRunsNoScript) {
  Desk dialog("frmDialog");
  platform.screens.Expect("frmOther", [](Screen&) { FAIL() << "the script of another screen"; });
  EXPECT_NONFATAL_FAILURE(platform.screens.ShowModal(dialog), "frmDialog in place of frmOther");
}

TEST_F(Screens, OneThatDoesNotComeFailsTheTest) {
  platform.screens.Expect("frmDialog");
  EXPECT_NONFATAL_FAILURE(platform.screens.ExpectNoneLeft(), "did not come: frmDialog");
}

TEST_F(Screens, OneThatDoesNotComeFailsTheTestAtItsEnd) {
  EXPECT_NONFATAL_FAILURE(
      {
        ScriptedPlatform other;
        other.screens.Expect("frmDialog");
      },
      "did not come: frmDialog");
}

TEST_F(Screens, OneThatCannotBeClosedFailsTheTest) {
  Desk dialog("frmDialog");
  dialog.onCloseQuery = [] { return false; };
  platform.screens.Expect("frmDialog");
  EXPECT_NONFATAL_FAILURE(platform.screens.ShowModal(dialog), "does not let itself be closed");
}

TEST_F(Screens, OneThatIsOpenAlreadyFailsTheTest) {
  Desk dialog("frmDialog");
  platform.screens.Expect("frmDialog", [&](Screen& shown) {
    EXPECT_NONFATAL_FAILURE(platform.screens.ShowModal(shown), "open already");
  });
  platform.screens.ShowModal(dialog);
}

TEST_F(Screens, AFailureInsideAScriptLeavesNoScreenInFront) {
  Desk dialog("frmDialog");
  platform.screens.Expect("frmDialog", [](Screen&) { throw std::logic_error("stopped"); });
  EXPECT_THROW(platform.screens.ShowModal(dialog), std::logic_error);
  EXPECT_EQ(nullptr, platform.screens.FrontModal());
  EXPECT_TRUE(user.Click(window.lblColour));
}

} // namespace
} // namespace loader::test
