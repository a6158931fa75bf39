// The dialogs for a file to open and to save.
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <fstream>

#include "qt/QtFileDialogs.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

constexpr auto KovFilter = u"*.KOV(パラメータファイル)|*.KOV";

TEST(FileFilter, OffersTheExtensionInBothCases) {
  const FileFilter filter = FilterOf(KovFilter);
  EXPECT_EQ(QStringLiteral("*.KOV(パラメータファイル) (*.KOV *.kov)"), filter.nameFilter);
  EXPECT_EQ(QStringLiteral("KOV"), filter.extension);
}

TEST(FileFilter, KeepsAnExtensionOfMixedCase) {
  const FileFilter filter = FilterOf(u"*.Txt(パラメータテキストファイル)|*.Txt");
  EXPECT_EQ(QStringLiteral("*.Txt(パラメータテキストファイル) (*.Txt *.TXT *.txt)"), filter.nameFilter);
  EXPECT_EQ(QStringLiteral("Txt"), filter.extension);
}

TEST(FileFilter, AllFilesHaveNoExtensionToAppend) {
  EXPECT_EQ(QString(), FilterOf(u"all|*.*").extension);
}

struct FileDialog : SampleTest {
  QTemporaryDir folder;
  CommonDialog asked;
  int shown = 0;

  void SetUp() override {
    ShowSample();
    asked.Filter = KovFilter;
    asked.DialogTitle = u"パラメータファイルの保存";
  }
  QString Path(const char* name) { return folder.filePath(QString::fromLatin1(name)); }
  void MakeFile(const char* name) { std::ofstream(Path(name).toStdString()) << "x"; }
  // What the user does with the dialog as soon as it is up.
  void WhileShown(std::function<void(QFileDialog&)> step) {
    QMetaObject::invokeMethod(
        &platform.userInterface,
        [this, step] {
          ASSERT_TRUE(QTest::qWaitFor(
              [] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()) != nullptr; }));
          ++shown;
          step(*qobject_cast<QFileDialog*>(QApplication::activeModalWidget()));
        },
        Qt::QueuedConnection);
  }
  static void Name(QFileDialog& dialog, const QString& name) {
    auto& edit = *dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    edit.setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return edit.hasFocus(); }));
    edit.setText(name);
    QMetaObject::invokeMethod(&dialog, "accept");
  }
  void ChooseName(const char* name) {
    WhileShown([path = Path(name)](QFileDialog& dialog) { Name(dialog, path); });
  }
  std::u16string FullPath(const char* name) { return FromQt(QDir::toNativeSeparators(Path(name))); }
};

TEST_F(FileDialog, OpenGivesPathAndTitle) {
  MakeFile("plant.KOV");
  ChooseName("plant.KOV");
  EXPECT_EQ(0, platform.fileDialogs.ShowOpen(asked));
  EXPECT_EQ(FullPath("plant.KOV"), asked.FileName);
  EXPECT_EQ(u"plant.KOV", asked.FileTitle);
}

TEST_F(FileDialog, CancelChangesNothing) {
  asked.FileTitle = u"before";
  WhileShown([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(FileDialogCancelled, platform.fileDialogs.ShowOpen(asked));
  EXPECT_EQ(u"", asked.FileName);
  EXPECT_EQ(u"before", asked.FileTitle);
}

TEST_F(FileDialog, ShowsTitleAndFilterAndNoName) {
  WhileShown([](QFileDialog& dialog) {
    EXPECT_EQ(QStringLiteral("パラメータファイルの保存"), dialog.windowTitle());
    EXPECT_EQ(QStringList{QStringLiteral("*.KOV(パラメータファイル) (*.KOV *.kov)")}, dialog.nameFilters());
    EXPECT_EQ(QString(), dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text());
    dialog.reject();
  });
  EXPECT_EQ(FileDialogCancelled, platform.fileDialogs.ShowSave(asked));
}

// A platform's own dialog would make one of the filter's caption.
TEST_F(FileDialog, KnowsTheExtensionThatSaveAppends) {
  WhileShown([](QFileDialog& dialog) {
    EXPECT_EQ(QStringLiteral("KOV"), dialog.defaultSuffix());
    dialog.reject();
  });
  EXPECT_EQ(FileDialogCancelled, platform.fileDialogs.ShowSave(asked));
  WhileShown([](QFileDialog& dialog) {
    EXPECT_EQ(QString(), dialog.defaultSuffix());
    dialog.reject();
  });
  EXPECT_EQ(FileDialogCancelled, platform.fileDialogs.ShowOpen(asked));
  EXPECT_EQ(2, shown);
}

TEST_F(FileDialog, SaveAppendsTheExtensionWhenThereIsNone) {
  ChooseName("plant");
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(FullPath("plant.KOV"), asked.FileName);
  EXPECT_EQ(u"plant.KOV", asked.FileTitle);
}

TEST_F(FileDialog, SaveKeepsAnExtensionThatTheUserGave) {
  ChooseName("plant.old");
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(FullPath("plant.old"), asked.FileName);
}

TEST_F(FileDialog, SaveRefusesANameWithAQuote) {
  boxes.Expect(u"ファイル名に「\"」は使えません。", BoxAnswer::Ok,
               [this](QMessageBox&) { WhileShown([](QFileDialog& again) { again.reject(); }); });
  WhileShown([this](QFileDialog& dialog) { Name(dialog, Path("a\"b.KOV")); });
  EXPECT_EQ(FileDialogCancelled, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_EQ(u"", asked.FileName);
}

TEST_F(FileDialog, SaveAsksBeforeItOverwrites) {
  MakeFile("plant.KOV");
  asked.Flags = AskBeforeOverwrite;
  ChooseName("plant.KOV");
  boxes.Expect(u"plant.KOV は既に存在します。\n上書きしますか？");
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
}

TEST_F(FileDialog, SaveAsksAboutTheNameWithItsExtension) {
  MakeFile("plant.KOV");
  asked.Flags = AskBeforeOverwrite;
  ChooseName("plant");
  boxes.Expect(u"plant.KOV は既に存在します。\n上書きしますか？");
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(u"plant.KOV", asked.FileTitle);
}

TEST_F(FileDialog, ARefusedOverwriteGoesBackToTheDialog) {
  MakeFile("plant.KOV");
  asked.Flags = AskBeforeOverwrite;
  ChooseName("plant.KOV");
  boxes.Expect(u"plant.KOV は既に存在します。\n上書きしますか？", BoxAnswer::Cancel,
               [this](QMessageBox&) { ChooseName("other.KOV"); });
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
  EXPECT_EQ(u"other.KOV", asked.FileTitle);
  EXPECT_EQ(2, shown);
}

TEST_F(FileDialog, WithoutTheFlagSaveAsksNothing) {
  MakeFile("plant.KOV");
  ChooseName("plant.KOV");
  EXPECT_EQ(0, platform.fileDialogs.ShowSave(asked));
}

TEST_F(FileDialog, OpenAppendsNothing) {
  MakeFile("plant");
  ChooseName("plant");
  EXPECT_EQ(0, platform.fileDialogs.ShowOpen(asked));
  EXPECT_EQ(u"plant", asked.FileTitle);
}

TEST_F(FileDialog, NothingOfItIsRemembered) {
  const QString before = QDir::currentPath();
  MakeFile("plant.KOV");
  ChooseName("plant.KOV");
  EXPECT_EQ(0, platform.fileDialogs.ShowOpen(asked));
  asked.FileName.clear();
  WhileShown([&](QFileDialog& dialog) {
    EXPECT_EQ(before, dialog.directory().absolutePath());
    dialog.reject();
  });
  EXPECT_EQ(FileDialogCancelled, platform.fileDialogs.ShowOpen(asked));
  const QSettings settings(QSettings::UserScope, QStringLiteral("QtProject"));
  EXPECT_FALSE(QFile::exists(settings.fileName()));
}

TEST_F(FileDialog, TheFocusIsBackInTheWindow) {
  auto& edit = Find<QLineEdit>("txtName");
  edit.setFocus();
  WhileShown([](QFileDialog& dialog) { dialog.reject(); });
  (void)platform.fileDialogs.ShowOpen(asked);
  EXPECT_TRUE(GetsFocus(edit));
}

} // namespace
} // namespace loader::test
