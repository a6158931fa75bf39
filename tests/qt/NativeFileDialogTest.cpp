// The dialogs for a file as Windows has them: what a user types there, and what the program makes of it.
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <array>
#include <fstream>
#include <utility>

#include "core/PathText.h"
#include "qt/System.h"
#include "tests/qt/SampleForms.h"

#include <windows.h>

namespace loader::test {
namespace {

// Before the test program chooses the platform without windows. (Wine hands no variable of Qt's on.)
const bool WithWindows = qputenv("QT_QPA_PLATFORM", "windows");

constexpr auto KovFilter = u"*.KOV(パラメータファイル)|*.KOV";

bool ShowsAs(HWND window, std::wstring_view kind) {
  std::array<wchar_t, 16> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return std::wstring_view(name.data()) == kind && IsWindowVisible(window);
}

BOOL CALLBACK TakeDialog(HWND window, LPARAM into) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != GetCurrentProcessId() || !ShowsAs(window, L"#32770")) {
    return TRUE;
  }
  *reinterpret_cast<HWND*>(into) = window;
  return FALSE;
}

// The field for the name is the one of its kind that shows.
BOOL CALLBACK TakeNameField(HWND control, LPARAM into) {
  if (!ShowsAs(control, L"Edit")) {
    return TRUE;
  }
  *reinterpret_cast<HWND*>(into) = control;
  return FALSE;
}

HWND DialogThatShows() {
  HWND found = nullptr;
  EnumWindows(TakeDialog, reinterpret_cast<LPARAM>(&found));
  return found;
}

HWND NameFieldThatShows() {
  HWND found = nullptr;
  if (const HWND dialog = DialogThatShows(); dialog != nullptr) {
    EnumChildWindows(dialog, TakeNameField, reinterpret_cast<LPARAM>(&found));
  }
  return found;
}

QString TextOf(HWND window) {
  std::array<wchar_t, 512> text{};
  GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  return QString::fromWCharArray(text.data());
}

struct NativeFileDialog : SampleTest {
  QTemporaryDir folder;
  QString before = QDir::currentPath();
  CommonDialog asked;
  int shown = 0;
  QTimer look; // for the dialog
  std::function<void(HWND, HWND)> step;
  HWND answered = nullptr;

  void SetUp() override {
    ShowSample();
    QObject::connect(&look, &QTimer::timeout, [this] { Look(); });
    asked.Filter = KovFilter;
    asked.DialogTitle = u"パラメータファイルの保存";
    asked.Flags = AskBeforeOverwrite;
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
  }
  void TearDown() override { QDir::setCurrent(before); } // nobody removes a folder that is a current one
  [[nodiscard]] std::filesystem::path Path(const char16_t* name) const {
    return std::filesystem::path(folder.path().toStdU16String()) / name;
  }
  [[nodiscard]] std::u16string FullPath(const char16_t* name) const {
    return FromQt(QDir::toNativeSeparators(ToQt(PathText(Path(name)))));
  }
  void MakeFile(const char16_t* name) const { std::ofstream(Path(name)) << "x"; }
  // What the user does with the dialog as soon as it is up. It runs a loop of its own, which gives the
  // program's timers their turn. One that nobody expects is given up.
  void WhileShown(std::function<void(HWND dialog, HWND name)> then) {
    step = std::move(then);
    look.start(std::chrono::milliseconds(20));
  }
  void Look() {
    const HWND dialog = DialogThatShows();
    if (dialog == nullptr || dialog == answered) {
      return;
    }
    if (!step) {
      answered = dialog;
      ADD_FAILURE() << "a dialog too many: " << TextOf(dialog).toStdString();
      Press(dialog, IDNO);
      Press(dialog, IDCANCEL);
    } else if (const HWND name = NameFieldThatShows(); name != nullptr) {
      answered = dialog;
      ++shown;
      std::exchange(step, nullptr)(dialog, name);
    }
  }
  static void Press(HWND dialog, WPARAM button) { PostMessageW(dialog, WM_COMMAND, button, 0); }
  void ChooseName(const wchar_t* typed) {
    WhileShown([typed](HWND dialog, HWND name) {
      SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(typed));
      Press(dialog, IDOK);
    });
  }
};

TEST_F(NativeFileDialog, HasTheTitleAndNoName) {
  WhileShown([](HWND dialog, HWND name) {
    EXPECT_EQ(QStringLiteral("パラメータファイルの保存"), TextOf(dialog));
    EXPECT_EQ(QString(), TextOf(name));
    Press(dialog, IDCANCEL);
  });
  EXPECT_EQ(FileDialogCancelled, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(1, shown);
}

TEST_F(NativeFileDialog, SaveAppendsTheExtensionOfTheFilter) {
  ChooseName(L"plant");
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(FullPath(u"plant.KOV"), asked.FileName);
  EXPECT_EQ(u"plant.KOV", asked.FileTitle);
}

TEST_F(NativeFileDialog, SaveTakesAJapaneseNameWithBlanks) {
  ChooseName(L"記録計 設定 1号機");
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(FullPath(u"記録計 設定 1号機.KOV"), asked.FileName);
}

TEST_F(NativeFileDialog, SaveKeepsTheExtensionThatTheUserGave) {
  ChooseName(L"plant.2.KOV");
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(FullPath(u"plant.2.KOV"), asked.FileName);
}

TEST_F(NativeFileDialog, AnOverwriteIsAskedOnceAndByTheProgram) {
  MakeFile(u"plant.KOV");
  ChooseName(L"plant");
  boxes.Expect(u"plant.KOV は既に存在します。\n上書きしますか？");
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_EQ(1, shown);
}

TEST_F(NativeFileDialog, ARefusedOverwriteGoesBackToTheNameInItsFolder) {
  QDir(folder.path()).mkdir(QStringLiteral("below"));
  MakeFile(u"below/plant.KOV");
  ChooseName(L"below\\plant.KOV");
  boxes.Expect(u"plant.KOV は既に存在します。\n上書きしますか？", BoxAnswer::Cancel, [this](QMessageBox&) {
    WhileShown([](HWND dialog, HWND name) {
      EXPECT_EQ(QStringLiteral("plant.KOV"), TextOf(name));
      SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"other"));
      Press(dialog, IDOK);
    });
  });
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(FullPath(u"below/other.KOV"), asked.FileName);
  EXPECT_EQ(2, shown);
}

TEST_F(NativeFileDialog, OpenGivesTheFile) {
  MakeFile(u"設定.KOV");
  ChooseName(L"設定.KOV");
  EXPECT_EQ(0, platform.fileDialogs.ShowOpen(asked));
  EXPECT_EQ(FullPath(u"設定.KOV"), asked.FileName);
  EXPECT_EQ(u"設定.KOV", asked.FileTitle);
}

TEST_F(NativeFileDialog, GivesTheWindowBackToTheUser) {
  const auto window = reinterpret_cast<HWND>(Window().winId());
  WhileShown([&](HWND dialog, HWND) {
    EXPECT_EQ(window, GetWindow(dialog, GW_OWNER));
    EXPECT_FALSE(IsWindowEnabled(window));
    Press(dialog, IDCANCEL);
  });
  EXPECT_EQ(FileDialogCancelled, platform.fileDialogs.ShowOpen(asked));
  EXPECT_TRUE(IsWindowEnabled(window));
  EXPECT_TRUE(QTest::qWaitFor([&] { return GetForegroundWindow() == window; }));
  EXPECT_EQ(1, shown);
}

// A double click and the menu start it in its own folder.
TEST_F(NativeFileDialog, BeginsAmongTheDocumentsWhereTheCurrentFolderIsTheInstallation) {
  EXPECT_EQ(QDir(folder.path()).canonicalPath(), QDir(FolderForFiles()).canonicalPath());
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  ASSERT_TRUE(QDir().mkpath(documents));
  const QString own = QCoreApplication::applicationDirPath();
  ASSERT_TRUE(QDir::setCurrent(own));
  EXPECT_EQ(QDir::currentPath(), FolderForFiles()); // as on a stick
  QFile uninstaller(own + QStringLiteral("/uninstall.exe"));
  ASSERT_TRUE(uninstaller.open(QIODevice::WriteOnly));
  EXPECT_EQ(documents, FolderForFiles());
  EXPECT_TRUE(uninstaller.remove());
  ASSERT_TRUE(QDir::setCurrent(QStringLiteral(LOADER_REFUSED_FOLDER)));
  EXPECT_EQ(documents, FolderForFiles());
}

} // namespace
} // namespace loader::test
