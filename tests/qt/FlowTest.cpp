// Flows that wait, boxes in the middle of them, and screens that come and go.
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "platform/RunTimeFailure.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

struct Flow : SampleTest {
  // Runs once from the event loop.
  void Soon(std::function<void()> step) {
    QMetaObject::invokeMethod(&platform.userInterface, std::move(step), Qt::QueuedConnection);
  }
};

TEST_F(Flow, ABoxInTheMiddleShowsWhatWasWrittenBeforeAndGoesOnBehindIt) {
  ShowSample();
  screen.btnApply.onClick = [&] {
    screen.lblPlain.caption = u"before";
    if (AskOkCancel(u"go on?")) {
      screen.lblPlain.caption = u"after";
    }
  };
  boxes.Expect(u"go on?", BoxAnswer::Ok,
               [&](QMessageBox&) { EXPECT_EQ(QStringLiteral("before"), Find<QLabel>("lblPlain").text()); });
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(QStringLiteral("after"), Find<QLabel>("lblPlain").text());
}

TEST_F(Flow, AnEventThatArrivesWhileAFlowWaitsIsHandled) {
  ShowSample();
  bool arrived = false;
  screen.btnApply.onClick = [&] {
    screen.btnApply.enabled = false;
    Soon([&] {
      EXPECT_FALSE(Find<QPushButton>("btnApply").isEnabled()); // shown before the wait
      Click(Find<QPushButton>("btnApply"));                    // nothing starts twice
      TypeOver(Find<QLineEdit>("txtName"), "x");               // the window is live
      arrived = true;
    });
    while (!arrived) {
      DoEvents();
    }
    screen.btnApply.enabled = true;
  };
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(u"x", screen.txtName.text);
  EXPECT_TRUE(Find<QPushButton>("btnApply").isEnabled());
}

TEST_F(Flow, WhatAFlowWritesInTheMiddleOfItsWaitsIsShownThoughNothingElseHappens) {
  ShowSample();
  bool checked = false;
  screen.btnApply.onClick = [&] {
    bool first = false;
    Soon([&] { first = true; });
    while (!first) {
      DoEvents(); // has just shown everything
    }
    screen.lblPlain.caption = u"written later";
    QTimer::singleShot(4 * QtEventLoop::ShowEvery, [&] {
      EXPECT_EQ(QStringLiteral("written later"), Find<QLabel>("lblPlain").text());
      checked = true;
    });
    while (!checked) {
      DoEvents();
    }
  };
  Click(Find<QPushButton>("btnApply"));
  EXPECT_TRUE(checked);
}

TEST_F(Flow, AWaitIsNotEndedByShowingThings) {
  ShowSample();
  const auto roundsOf = [](int milliseconds) {
    int rounds = 0;
    bool over = false;
    QTimer::singleShot(milliseconds, [&] { over = true; });
    while (!over) {
      DoEvents();
      ++rounds;
    }
    return rounds;
  };
  screen.btnApply.onClick = [&] {
    roundsOf(2 * QtEventLoop::ShowEvery); // what opening the window has left to do
    EXPECT_LE(roundsOf(6 * QtEventLoop::ShowEvery), 2);
  };
  Click(Find<QPushButton>("btnApply"));
}

TEST_F(Flow, ATimerHandlerIsShownAtOnce) {
  ShowSample();
  Timer lamp;
  lamp.onTimer = [&] { screen.lblPlain.caption = u"blink"; };
  StartTimer(lamp, 1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QLabel>("lblPlain").text() == QStringLiteral("blink"); }));
  StopTimer(lamp);
}

TEST_F(Flow, AHandlerThatFailsIsToldAndTheWindowStays) {
  ShowSample();
  screen.btnApply.onClick = [] { throw RunTimeFailure("cell outside the table"); };
  boxes.Expect(u"cell outside the table");
  Click(Find<QPushButton>("btnApply"));
  EXPECT_TRUE(Window().isVisible());
}

TEST_F(Flow, ATimerHandlerThatFailsDoesNotEndTheFlowThatWaits) {
  ShowSample();
  Timer timer;
  timer.onTimer = [&] {
    StopTimer(timer);
    throw RunTimeFailure("timer");
  };
  bool finished = false;
  boxes.Expect(u"timer");
  screen.btnApply.onClick = [&] {
    StartTimer(timer, 1);
    while (timer.Enabled) {
      DoEvents();
    }
    finished = true;
  };
  Click(Find<QPushButton>("btnApply"));
  EXPECT_TRUE(finished);
}

// boxes

TEST_F(Flow, BoxesAreJapaneseAndPlain) {
  ShowSample();
  boxes.Expect(u"<b>1 & 2</b>", BoxAnswer::Cancel, [](QMessageBox& box) {
    EXPECT_EQ(Qt::PlainText, box.textFormat());
    EXPECT_EQ(QStringLiteral("パラメータローダ"), box.windowTitle());
    ASSERT_EQ(2, box.buttons().size());
    EXPECT_EQ(QStringLiteral("ＯＫ"), box.button(QMessageBox::Ok)->text());
    EXPECT_EQ(QStringLiteral("キャンセル"), box.button(QMessageBox::Cancel)->text());
    EXPECT_TRUE(box.isModal());
  });
  EXPECT_FALSE(AskOkCancel(u"<b>1 & 2</b>"));
}

TEST_F(Flow, EscapeIsCancelWhereThereIsOne) {
  ShowSample();
  QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
  boxes.Expect(u"sure?", BoxAnswer::Cancel);
  EXPECT_FALSE(AskOkCancel(u"sure?"));
}

TEST_F(Flow, ABoxTakesItsOwnTitleAndIcon) {
  ShowSample();
  boxes.Expect(u"text", BoxAnswer::Ok, [](QMessageBox& box) {
    EXPECT_EQ(QStringLiteral("title"), box.windowTitle());
    EXPECT_EQ(QMessageBox::Warning, box.icon());
  });
  EXPECT_EQ(BoxAnswer::Ok, platform.boxes.Show(u"text", BoxButtons::Ok, BoxIcon::Exclamation, u"title"));
}

// screens

struct Modal : Flow {
  AskScreen ask;
  QWidget& AskWindow() { return *platform.screens.WindowOf(ask); }
  QPushButton& AskButton(const char* name) {
    return *AskWindow().findChild<QPushButton*>(QString::fromLatin1(name));
  }
  QLineEdit& Year() { return *AskWindow().findChild<QLineEdit*>(QStringLiteral("txtYear")); }
  // Shows the screen and runs the step as soon as it stands.
  void WhileShown(std::function<void()> step) {
    Soon([this, step] {
      ASSERT_TRUE(QTest::qWaitForWindowActive(&AskWindow()));
      step();
    });
    platform.screens.ShowModal(ask);
  }
};

TEST_F(Modal, ReturnsWhenTheScreenHasClosed) {
  ShowSample();
  ask.cmdEnd.onClick = [&] { platform.screens.Close(ask); };
  bool seen = false;
  WhileShown([&] {
    seen = AskWindow().isVisible() && AskWindow().isModal();
    Click(AskButton("cmdEnd"));
  });
  EXPECT_TRUE(seen);
  EXPECT_EQ(nullptr, platform.screens.WindowOf(ask));
}

TEST_F(Modal, ComesUpAsItsRecordSays) {
  ShowSample();
  ask.caption = u"時刻設定";
  ask.txtYear.text = u"2026";
  RequestFocusAndSelectAll(ask.txtYear);
  WhileShown([&] {
    EXPECT_EQ(QStringLiteral("時刻設定"), AskWindow().windowTitle());
    EXPECT_EQ(QStringLiteral("2026"), Year().selectedText());
    EXPECT_TRUE(GetsFocus(Year()));
    platform.screens.Close(ask);
  });
}

TEST_F(Modal, EscapeAsksTheCloseQuery) {
  ShowSample();
  int asked = 0;
  ask.onCloseQuery = [&] { return ++asked > 1; };
  WhileShown([&] {
    QTest::keyClick(&Year(), Qt::Key_Escape);
    EXPECT_TRUE(AskWindow().isVisible());
    QTest::keyClick(&Year(), Qt::Key_Escape);
  });
  EXPECT_EQ(2, asked);
}

TEST_F(Modal, EnterInAFieldPressesNoButton) {
  ShowSample();
  ask.cmdEnd.onClick = [] { FAIL() << "pressed"; };
  ask.cmdSet.onClick = [] { FAIL() << "pressed"; };
  WhileShown([&] {
    QTest::keyClick(&Year(), Qt::Key_Return);
    EXPECT_TRUE(AskWindow().isVisible());
    platform.screens.Close(ask);
  });
}

TEST_F(Modal, EndIsHeldUpByAWrongField) {
  ShowSample();
  AcceptOnlyGood(ask.txtYear);
  ask.cmdEnd.onClick = [&] { platform.screens.Close(ask); };
  WhileShown([&] {
    TypeOver(Year(), "bad");
    boxes.Expect(u"数字ではありません。");
    Click(AskButton("cmdEnd"));
    EXPECT_TRUE(AskWindow().isVisible());
    TypeOver(Year(), "good");
    Click(AskButton("cmdEnd"));
  });
  EXPECT_EQ(2, checks);
}

TEST_F(Modal, TheCloseBoxChecksNoField) {
  ShowSample();
  AcceptOnlyGood(ask.txtYear);
  WhileShown([&] {
    TypeOver(Year(), "bad");
    AskWindow().close();
  });
  EXPECT_EQ(0, checks);
}

TEST_F(Modal, TheFieldBehindItIsCheckedWhenItIsReallyLeft) {
  ShowSample();
  AcceptOnlyGood(screen.txtName);
  TypeOver(Find<QLineEdit>("txtName"), "bad");
  WhileShown([&] {
    Click(AskButton("cmdSet"));
    platform.screens.Close(ask);
  });
  EXPECT_EQ(0, checks);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
  boxes.Expect(u"数字ではありません。");
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(1, checks);
}

TEST_F(Modal, ACloseQueryThatFailsKeepsTheScreen) {
  ShowSample();
  ask.onCloseQuery = []() -> bool { throw RunTimeFailure("query"); };
  WhileShown([&] {
    boxes.Expect(u"query");
    AskWindow().close();
    EXPECT_TRUE(AskWindow().isVisible());
    ask.onCloseQuery = nullptr;
    AskWindow().close();
  });
}

TEST_F(Modal, ItsRecordsMayGoAsSoonAsItHasClosed) {
  ShowSample();
  auto shortLived = std::make_unique<AskScreen>();
  Soon([&] {
    QWidget* window = platform.screens.WindowOf(*shortLived);
    auto* year = window->findChild<QLineEdit*>(QStringLiteral("txtYear"));
    year->setFocus();
    QTest::keyClicks(year, QStringLiteral("1"));
    window->close();
  });
  platform.screens.ShowModal(*shortLived);
  shortLived.reset();
  platform.userInterface.Refresh();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
}

TEST_F(Flow, TheRecordsOfAClosedWindowMayGoBeforeItsWidgets) {
  auto second = std::make_unique<AskScreen>();
  ShowSample();
  platform.screens.Show(*second);
  QWidget* window = platform.screens.WindowOf(*second);
  auto* year = window->findChild<QLineEdit*>(QStringLiteral("txtYear"));
  window->close();
  second.reset();
  QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
  QApplication::sendEvent(year, &focus); // the form is still there
  emit year->textEdited(QStringLiteral("x"));
  EXPECT_TRUE(Window().isVisible());
}

TEST_F(Modal, CanBeShownAgain) {
  ShowSample();
  for (int i = 0; i < 2; ++i) {
    WhileShown([&] { AskWindow().close(); });
  }
  EXPECT_EQ(nullptr, platform.screens.WindowOf(ask));
}

TEST_F(Flow, TheProgramEndsWithItsLastScreen) {
  const int code = platform.screens.Run([&] {
    platform.screens.Show(screen);
    Soon([&] { Window().close(); });
  });
  EXPECT_EQ(0, code);
}

TEST_F(Flow, ARefusedCloseKeepsTheProgram) {
  int asked = 0;
  screen.onCloseQuery = [&] { return ++asked == 2; };
  platform.screens.Run([&] {
    platform.screens.Show(screen);
    Soon([&] {
      EXPECT_FALSE(Window().close());
      EXPECT_TRUE(Window().close());
    });
  });
  EXPECT_EQ(2, asked);
}

TEST_F(Flow, EndProgramAsksNobody) {
  screen.onCloseQuery = []() -> bool {
    ADD_FAILURE() << "asked";
    return false;
  };
  EXPECT_EQ(0, platform.screens.Run([&] {
    platform.screens.Show(screen);
    Soon([&] { platform.screens.EndProgram(); });
  }));
}

TEST_F(Flow, EndProgramBeforeAnythingIsShownEndsIt) {
  EXPECT_EQ(0, platform.screens.Run([&] { platform.screens.EndProgram(); }));
}

TEST_F(Modal, EndProgramLeavesAModalScreenToo) {
  EXPECT_EQ(0, platform.screens.Run([&] {
    platform.screens.Show(screen);
    Soon([&] { WhileShown([&] { platform.screens.EndProgram(); }); });
  }));
}

TEST_F(Flow, AScreenWithoutAFormIsADefect) {
  Screen nowhere("frmNowhere");
  EXPECT_THROW(platform.screens.Show(nowhere), std::logic_error);
}

TEST_F(Flow, TextWidthIsInTwipsOfTheTableFont) {
  // A full-width character is 12 pixels of 15 twips, in whatever font.
  EXPECT_NEAR(180.0, platform.screens.TextWidth(u"漢"), 1.0);
  EXPECT_NEAR(1080.0, platform.screens.TextWidth(u"スケーリング"), 6.0);
  EXPECT_EQ(0.0, platform.screens.TextWidth(u""));
}

} // namespace
} // namespace loader::test
