// Pages that a form leaves empty: made when they are first shown, and from then on like any other.
#include <QLabel>
#include <QMainWindow>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <map>
#include <set>

#include "tests/qt/Boxes.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

struct LateScreen : Screen {
  LateScreen() : Screen("frmLate") { tbsPages.pages = {{u"first"}, {u"second"}, {u"third"}}; }
  TabPages tbsPages{*this, "tbsPages"};
  TextField txtFirst{*this, "txtFirst"};
  TextField txtHidden{*this, "txtHidden"};
  TextField txtSecond{*this, "txtSecond"};
  TextField txtBelow{*this, "txtBelow"};
  TextField txtThird{*this, "txtThird"};
};

std::unique_ptr<QWidget> PageOf(const std::vector<const char*>& fields) {
  auto page = std::make_unique<QWidget>();
  auto* layout = new QVBoxLayout(page.get());
  for (const char* name : fields) {
    auto* edit = new QLineEdit;
    edit->setObjectName(QString::fromLatin1(name));
    layout->addWidget(edit);
  }
  return page;
}

std::unique_ptr<QWidget> EmptyWindow() {
  auto window = std::make_unique<QMainWindow>();
  auto* tabs = new QTabWidget;
  tabs->setObjectName(QStringLiteral("tbsPages"));
  tabs->addTab(PageOf({"txtFirst"}).release(), {});
  for (const char* name : {"pageSecond", "pageThird"}) {
    auto* page = new QScrollArea;
    page->setObjectName(QString::fromLatin1(name));
    page->setWidgetResizable(true);
    tabs->addTab(page, {});
  }
  window->setCentralWidget(tabs);
  return window;
}

struct LatePage : testing::Test {
  Boxes boxes;
  LateScreen screen; // outlives its window
  std::map<std::string, int, std::less<>> made;
  std::map<std::string, std::function<std::unique_ptr<QWidget>()>, std::less<>> forms{
      {"frmLate", EmptyWindow},
      {"frmLate.pageSecond",
       [] {
         return PageOf({"txtHidden", "txtSecond", "txtBelow"});
       }},
      {"frmLate.pageThird", [] { return PageOf({"txtThird"}); }},
  };
  QtPlatform platform{{.programFolder = ".",
                       .makeForm = [this](std::string_view name) -> std::unique_ptr<QWidget> {
                         ++made[std::string(name)];
                         const auto form = forms.find(name);
                         return form == forms.end() ? nullptr : form->second();
                       },
                       .portMap = {}}};

  void Show() {
    platform.screens.Show(screen);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
  }
  QWidget& Window() { return *platform.screens.WindowOf(screen); }
  QTabWidget& Tabs() { return *Window().findChild<QTabWidget*>(); }
  // Null as long as the page isn't there.
  QLineEdit* Field(const char* name) { return Window().findChild<QLineEdit*>(QString::fromLatin1(name)); }
  void ClickTab(int page) {
    QTabBar& bar = *Tabs().tabBar();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(page).center());
  }
  void TurnByKey() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier); }
};

TEST_F(LatePage, IsMadeWhenTheUserTurnsToItAndOnlyOnce) {
  Show();
  EXPECT_EQ(0, made["frmLate.pageSecond"]);
  ClickTab(1);
  EXPECT_EQ(1, made["frmLate.pageSecond"]);
  ASSERT_NE(nullptr, Field("txtSecond"));
  EXPECT_TRUE(Field("txtSecond")->isVisible());
  ClickTab(0);
  ClickTab(1);
  EXPECT_EQ(1, made["frmLate.pageSecond"]);
  EXPECT_EQ(0, made["frmLate.pageThird"]);
}

TEST_F(LatePage, ShowsWhatItsRecordsHeldBefore) {
  Show();
  screen.txtSecond.text = u"温度１";
  screen.txtBelow.enabled = false;
  screen.txtHidden.visible = false;
  ClickTab(1);
  EXPECT_EQ(QStringLiteral("温度１"), Field("txtSecond")->text());
  EXPECT_FALSE(Field("txtBelow")->isEnabled());
  EXPECT_FALSE(Field("txtHidden")->isVisible());
}

TEST_F(LatePage, IsThereWhenTheProgramTurnsToItAndAsksForAField) {
  Show();
  SelectPage(screen.tbsPages, 2);
  screen.txtThird.text = u"12";
  RequestFocusAndSelectAll(screen.txtThird);
  platform.userInterface.Refresh();
  EXPECT_EQ(2, Tabs().currentIndex());
  ASSERT_NE(nullptr, Field("txtThird"));
  EXPECT_TRUE(Field("txtThird")->hasFocus());
  EXPECT_EQ(QStringLiteral("12"), Field("txtThird")->selectedText());
}

TEST_F(LatePage, IsThereWhenTheWindowOpensOnIt) {
  screen.tbsPages.current = 2;
  Show();
  ASSERT_NE(nullptr, Field("txtThird"));
  EXPECT_TRUE(Field("txtThird")->isVisible());
}

TEST_F(LatePage, TakesWhatTheUserTypes) {
  Show();
  ClickTab(1);
  Field("txtSecond")->setFocus();
  QTest::keyClicks(Field("txtSecond"), QStringLiteral("ab"));
  EXPECT_EQ(u"ab", screen.txtSecond.text);
}

TEST_F(LatePage, GivesTheKeyboardToTheFirstFieldThatCanTakeIt) {
  Show();
  screen.txtHidden.visible = false;
  Field("txtFirst")->setFocus();
  TurnByKey();
  EXPECT_EQ(Field("txtSecond"), QApplication::focusWidget());
}

TEST_F(LatePage, RunsTheHandlerOfTheFieldThatTheKeyboardComesTo) {
  Show();
  screen.txtHidden.visible = false;
  int arrived = 0;
  screen.txtSecond.onGotFocus = [&] { ++arrived; };
  Field("txtFirst")->setFocus();
  TurnByKey();
  EXPECT_EQ(1, arrived);
}

TEST_F(LatePage, IsNotMadeWhenTheFieldInFrontLetsNobodyGo) {
  Show();
  screen.txtFirst.onLostFocus = [this] { RequestFocusAndSelectAll(screen.txtFirst); };
  Field("txtFirst")->setFocus();
  QTest::keyClicks(Field("txtFirst"), QStringLiteral("bad"));
  ClickTab(1);
  EXPECT_EQ(0, made["frmLate.pageSecond"]);
  EXPECT_EQ(0, Tabs().currentIndex());
  EXPECT_TRUE(Field("txtFirst")->hasFocus());
}

TEST_F(LatePage, IsInTheRoundOfTheTabKey) {
  Show();
  for (const int page : {2, 1, 0}) { // the last one first: the order of making is not the order of the tabs
    ClickTab(page);
    QWidget* start = Tabs().tabBar();
    start->setFocus();
    std::set<QWidget*> met;
    constexpr int MoreThanThereAre = 20;
    for (int step = 0; step < MoreThanThereAre && !met.contains(start); ++step) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      met.insert(QApplication::focusWidget());
    }
    EXPECT_TRUE(met.contains(start)) << "page " << page << ": the round does not close";
    for (QWidget* field : Tabs().widget(page)->findChildren<QLineEdit*>()) {
      EXPECT_TRUE(met.contains(field)) << field->objectName().toStdString();
    }
  }
}

TEST_F(LatePage, RecordsWithoutAWidgetAreNamedOnceAllPagesAreThere) {
  TextField extra(screen, "txtNowhere");
  Show();
  ClickTab(1);
  EXPECT_TRUE(platform.screens.MissingWidgets().empty());
  ClickTab(2);
  EXPECT_EQ(std::vector<std::string>{"frmLate.txtNowhere"}, platform.screens.MissingWidgets());
}

TEST_F(LatePage, WithoutAFormIsADefect) {
  forms.erase("frmLate.pageThird");
  screen.tbsPages.current = 2;
  EXPECT_THROW(platform.screens.Show(screen), std::logic_error);
}

} // namespace
} // namespace loader::test
