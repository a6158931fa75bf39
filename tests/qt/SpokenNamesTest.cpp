// What the widgets of all screens are called: by captions, or by a text of one of the two tables, and never
// by the names that the code gives them.
#include <QDialog>
#include <QGroupBox>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "core/OwnTexts.h"
#include "core/Text.h"
#include "qt/FormTexts.h"
#include "qt/QtText.h"
#include "tests/qt/MainWindowFixture.h"

namespace loader::test {
namespace {

namespace fs = std::filesystem;

const fs::path Root = fs::path(LOADER_DATA_DIR).parent_path();

std::string ContentsOf(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

struct SpokenNames : MainWindowTest {
  QTabWidget& Pages() { return Find<QTabWidget>("tbsParameter"); }
  // Every page is made when it is first shown.
  void ShowEveryPage() {
    for (int page = 0; page < Pages().count(); ++page) {
      Pages().setCurrentIndex(page);
      QCoreApplication::processEvents();
    }
  }
  std::u16string NameOf(const char* widget) { return FromQt(Find<QWidget>(widget).accessibleName()); }
};

TEST_F(SpokenNames, EveryFrameSpeaksItsCaption) {
  Start("0");
  ShowEveryPage();
  int frames = 0;
  for (const Control* control : frmParamLoader->controls) {
    if (control->kind == ControlKind::Frame) {
      EXPECT_FALSE(static_cast<const Frame*>(control)->caption.empty()) << control->name;
      EXPECT_EQ(static_cast<const Frame*>(control)->caption, NameOf(control->name.c_str())) << control->name;
      ++frames;
    }
  }
  EXPECT_GE(frames, 18);
}

TEST_F(SpokenNames, TheAccountsAreAFrameLikeTheOthers) {
  Start("0");
  ShowEveryPage();
  EXPECT_EQ(QStringLiteral("ユーザアカウント設定"), Find<QGroupBox>("lblPasswordSetting_0").title());
  EXPECT_EQ(u"ユーザアカウント設定", NameOf("lblPasswordSetting_0"));
}

TEST_F(SpokenNames, ThePagesSpeakTheCaptionOfTheOneThatShows) {
  Start("0");
  EXPECT_EQ(u"チャネル設定", NameOf("tbsParameter"));
  QTest::mouseClick(Pages().tabBar(), Qt::LeftButton, {}, Pages().tabBar()->tabRect(MailPage).center());
  EXPECT_EQ(u"メール設定", NameOf("tbsParameter"));
}

TEST_F(SpokenNames, NothingIsCalledByItsNameInTheCode) {
  Start("0");
  ShowEveryPage();
  int named = 0;
  for (const QWidget* widget : Window().findChildren<QWidget*>()) {
    const QString name = widget->accessibleName();
    named += name.isEmpty() ? 0 : 1;
    // Two that are never shown have neither a caption nor an effect.
    const bool everShown = widget->objectName() != QStringLiteral("cmdRec") &&
                           widget->objectName() != QStringLiteral("cmbTmove");
    EXPECT_FALSE(everShown && !name.isEmpty() && name == widget->objectName()) << name.toStdString();
  }
  EXPECT_GT(named, 100);
}

TEST_F(SpokenNames, EachFieldOfAUserSpeaksWhoseItIs) {
  Start("0");
  ShowEveryPage();
  EXPECT_EQ(u"ユーザー 1", NameOf("txtUserName_0"));
  EXPECT_EQ(u"ユーザー 8", NameOf("txtUserName_7"));
  EXPECT_EQ(u"ユーザー 1 パスワード", NameOf("lblUserPass_0"));
  EXPECT_EQ(u"ユーザー 8 パスワード", NameOf("lblUserPass_7"));
  EXPECT_EQ(u"ユーザー 3 ユーザレベル", NameOf("cmbUserLevel_2"));
}

TEST_F(SpokenNames, AFieldBehindAnotherSpeaksTheSameCaptionAndWhatSetsItApart) {
  Start("0");
  ShowEveryPage();
  EXPECT_EQ(u"IP アドレス", NameOf("txtEtherIPAdd_0"));
  EXPECT_EQ(u"IP アドレス 4", NameOf("txtEtherIPAdd_3"));
  EXPECT_EQ(u"送信先アドレス", NameOf("txtRecvMailAdd_0"));
  EXPECT_EQ(u"送信先アドレス 8", NameOf("txtRecvMailAdd_7"));
  EXPECT_EQ(u"開始時間 分", NameOf("cmbTstrm"));
  EXPECT_EQ(u"LCD消灯時間設定(分) 3", NameOf("txtLCDShoto"));
  EXPECT_EQ(OwnText(OwnTextId::KeyLock), NameOf("cmbKeyLock"));
  EXPECT_EQ(OwnText(OwnTextId::Model), NameOf("cmbType"));
  EXPECT_EQ(u"定数設定", NameOf("fgrConst"));
}

TEST_F(SpokenNames, BlanksThatOnceBrokeALineAreNotSpoken) {
  Start("0");
  ShowEveryPage();
  EXPECT_EQ(u"パラメータ設定 パスワード", NameOf("txtpPassword"));
}

TEST(FormTexts, AFormWithoutARowOfItsOwnIsLeftAsItIs) {
  QDialog dialog;
  GiveFormTexts(dialog, "frmTimeChange");
  EXPECT_TRUE(dialog.accessibleName().isEmpty());
}

TEST(FormTexts, ARowWhoseWidgetIsMissingIsADefectOfTheForm) {
  QDialog dialog;
  EXPECT_THROW(GiveFormTexts(dialog, "frmIPSetting"), std::logic_error);
}

TEST(FormTexts, TheFormsHoldNoTextOfTheirOwn) {
  int forms = 0;
  for (const auto& entry : fs::directory_iterator(Root / "qt" / "forms")) {
    const std::string form = ContentsOf(entry.path());
    EXPECT_EQ(std::string::npos, form.find("accessibleName")) << entry.path();
    EXPECT_EQ(std::string::npos, form.find("toolTip")) << entry.path();
    EXPECT_EQ(std::string::npos, form.find("windowTitle")) << entry.path();
    EXPECT_TRUE(std::ranges::all_of(form, [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        << entry.path();
    ++forms;
  }
  EXPECT_GE(forms, 10);
}

// Kana and kanji, full-width or half; a single character is a sign or a measure and no text.
bool HasJapanese(std::u16string_view literal) {
  const auto isJapanese = [](char16_t c) {
    return (c >= 0x3041 && c <= 0x3096) || (c >= 0x30A1 && c <= 0x30FA) || (c >= 0x4E00 && c <= 0x9FFF) ||
           (c >= 0xFF66 && c <= 0xFF9D);
  };
  return literal.size() > 1 && std::ranges::any_of(literal, isJapanese);
}

// What stands between quotation marks on a line of code; an escaped mark ends nothing.
std::vector<std::string> LiteralsOf(std::string_view code) {
  std::vector<std::string> literals;
  bool inside = false;
  for (std::size_t at = 0; at < code.size(); ++at) {
    if (code[at] == '"') {
      inside = !inside;
      if (inside) {
        literals.emplace_back();
      }
    } else if (inside) {
      literals.back() += code[at];
      if (code[at] == '\\' && at + 1 < code.size()) {
        literals.back() += code[++at];
      }
    }
  }
  return literals;
}

TEST(FormTexts, TheCodeHoldsNoJapaneseOutsideOfTheTables) {
  int files = 0;
  for (const char* folder :
       {"app", "qt", "mainwindow", "channelscreens", "dialogs", "comm", "conversion", "files", "core",
        "channel", "operation", "meaning", "fields", "companion", "devices", "paramtool"}) {
    for (const auto& entry : fs::recursive_directory_iterator(Root / folder)) {
      const std::string kind = entry.path().extension().string();
      if (kind != ".cpp" && kind != ".h") {
        continue;
      }
      ++files;
      std::istringstream lines(ContentsOf(entry.path()));
      for (std::string line; std::getline(lines, line);) {
        const std::string code = line.substr(0, line.find("//"));
        for (const std::string& literal : LiteralsOf(code)) {
          EXPECT_FALSE(HasJapanese(FromUtf8(literal))) << entry.path() << ": " << line;
        }
      }
    }
  }
  EXPECT_GT(files, 50);
}

} // namespace
} // namespace loader::test
