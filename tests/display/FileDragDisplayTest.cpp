// Files that are dragged from another program onto the window, by the mouse and the display's own way of
// doing so.
#include <QMimeData>
#include <QProcess>
#include <filesystem>
#include <fstream>

#include "core/OwnTexts.h"
#include "tests/display/DisplayFixture.h"
#include "tests/display/Pointer.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

// How often a drag over the window has been told to it, and whether something was dropped.
class Drags final : public QObject {
public:
  explicit Drags(QWidget& window) : window_(window) { qApp->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == &window_) {
      told += event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove ? 1 : 0;
      dropped = dropped || event->type() == QEvent::Drop;
    }
    return false;
  }
  int told = 0;
  bool dropped = false;

private:
  QWidget& window_;
};

struct FileDrag : OnTheDisplay {
  void SetUp() override {
    OpenProgram();
    const std::filesystem::path place(files.path().toStdString());
    std::ofstream(place / "\xE5\xB7\xA5\xE5\xA0\xB4 A.KOV") << "LOADER ,V210\r\nC00TAG ,BOILER\r\n";
    std::ofstream(place / "bad.KOV") << "no comma\r\n";
    std::filesystem::create_directory(place / "folder");
    PutText("C", 1, "TAG", "MINE");
  }
  // Drags what the other program offers onto the middle of the window and lets go. How it has ended there.
  std::string DragOnto(const QStringList& names) {
    const QPoint from(1500, 1100); // beside the window
    EXPECT_FALSE(Window().frameGeometry().contains(from));
    QStringList arguments{QString::number(from.x()), QString::number(from.y())};
    for (const QString& name : names) {
      arguments.push_back(files.filePath(name));
    }
    QProcess source;
    source.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    source.start(QStringLiteral(DRAG_SOURCE), arguments);
    const auto says = [&] { return QTest::qWaitFor([&] { return source.canReadLine(); }, Patience); };
    EXPECT_TRUE(says()) << "the other program does not start";
    EXPECT_EQ("ready\n", source.readLine().toStdString());

    const QPoint middle = Window().mapToGlobal(Window().rect().center());
    const Drags drags(Window());
    Pointer pointer;
    pointer.MoveTo(from + QPoint(40, 40));
    pointer.Hold();
    pointer.MoveTo(from + QPoint(60, 60));
    // The other program takes its time to begin: it is moved on until it is there.
    for (int step = 0; step < 40 && drags.told == 0; ++step) {
      pointer.MoveTo(middle + QPoint(step % 2, step % 3));
      static_cast<void>(QTest::qWaitFor([&] { return drags.told > 0; }, 500));
    }
    EXPECT_GT(drags.told, 0) << "nothing is dragged over the window";
    pointer.LetGo();
    EXPECT_TRUE(says()) << "the drag does not end";
    const std::string ended = source.readLine().trimmed().toStdString();
    // Said as soon as it lets go: what is dropped is asked of it behind that, so it has to be there still.
    EXPECT_TRUE(ended == "refused" || QTest::qWaitFor([&] { return drags.dropped; }, Patience));
    source.terminate();
    EXPECT_TRUE(QTest::qWaitFor([&] { return source.state() == QProcess::NotRunning; }, Patience));
    return ended;
  }
  static std::u16string Question(std::u16string_view name) {
    return Replace(OwnText(OwnTextId::OpenDroppedFile), u"@FILE@", name);
  }
  // The box comes from the event loop behind the drop.
  void ExpectShown(int count) {
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return boxes.Shown() == count && QApplication::activeModalWidget() == nullptr; }));
    EXPECT_TRUE(hands.BecomesActive(Window()));
  }
  static constexpr int Patience = 20000;
  QTemporaryDir files;
};

TEST_F(FileDrag, OfAParameterFileOpensItBehindAQuestion) {
  boxes.Expect(Question(u"工場 A.KOV"), BoxAnswer::Ok,
               [this](QMessageBox& box) { EXPECT_TRUE(hands.BecomesActive(box)); });
  EXPECT_EQ("taken", DragOnto({QStringLiteral("工場 A.KOV")}));
  ExpectShown(1);
  EXPECT_EQ("BOILER", TrimmedText("C", 0, "TAG"));
  EXPECT_EQ("CH 02", TrimmedText("C", 1, "TAG"));
  EXPECT_TRUE(std::filesystem::exists(files.filePath(QStringLiteral("工場 A.KOV")).toStdString()))
      << "moved away";
}

TEST_F(FileDrag, ReplacesNothingWithoutAClick) {
  boxes.Expect(Question(u"工場 A.KOV"), BoxAnswer::Cancel);
  EXPECT_EQ("taken", DragOnto({QStringLiteral("工場 A.KOV")}));
  ExpectShown(1);
  EXPECT_EQ("CH 01", TrimmedText("C", 0, "TAG"));
  EXPECT_EQ("MINE", TrimmedText("C", 1, "TAG"));
}

TEST_F(FileDrag, OfAFileThatDoesNotLoadIsTold) {
  boxes.Expect(Question(u"bad.KOV"));
  boxes.Expect(std::u16string(LoadText(11003)));
  EXPECT_EQ("taken", DragOnto({QStringLiteral("bad.KOV")}));
  ExpectShown(2);
}

TEST_F(FileDrag, OfWhatIsNoOneFileIsRefusedAndAsksNothing) {
  EXPECT_EQ("refused", DragOnto({QStringLiteral("folder")}));
  EXPECT_EQ("refused", DragOnto({QStringLiteral("工場 A.KOV"), QStringLiteral("bad.KOV")}));
  QCoreApplication::processEvents();
  EXPECT_EQ(0, boxes.Shown());
  EXPECT_EQ("MINE", TrimmedText("C", 1, "TAG"));
}

} // namespace
} // namespace loader::test
