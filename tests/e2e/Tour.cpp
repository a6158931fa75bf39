// The tour: the real program on a display, driven through its real widgets against a simulated recorder. It
// tells each step in a line, leaves pictures and the saved files in its folder, and ends with 1 at the first
// step that did not go as told.
//
//   recorder-tour FOLDER      (recorder-sim and the data files lie beside this program)
#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "channel/modUtil.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modMain.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/Application.h"
#include "qt/GridView.h"
#include "qt/QtPlatform.h"
#include "qt/QtText.h"
#include "tests/e2e/DialogTour.h"
#include "tests/e2e/Guest.h"
#include "tests/e2e/RecorderProcess.h"
#include "tests/e2e/TourSetup.h"
#include "tests/qt/Waiting.h"

namespace fs = std::filesystem;

namespace loader::tour {

namespace {

QString Text(int id) {
  return ToQt(LoadText(TextId::At(id)));
}

std::vector<std::string> Lines(const QString& file) {
  std::ifstream in(PathOf(FromQt(file)), std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

// Lines that an open rewrites by rule: the totalizer kind is 1 afterwards, and old hour and minute tags are
// not kept.
bool RewrittenByOpen(const std::string& line) {
  static const std::set<std::string> tags{"SEKI", "TTSM", "TTEM"};
  return line.size() > 7 && tags.contains(line.substr(3, 4));
}

class Tour {
public:
  // `port`: where the program's connections go.
  Tour(QString folder, const Plant& plant, int& port)
      : folder_(std::move(folder)), plant_(plant), port_(port), model_(QString::fromLatin1(plant.model)),
        guest_(folder_, model_.toLower() + u'-') {}

  void Take() {
    Look();
    Read();
    LookAtTheChannels();
    FindAChannel();
    LookAtTheSmallScreens();
    LookAtEveryPage();
    ChangeFields();
    DialogTour dialogs(guest_, changed_);
    dialogs.EditTheSideDialogs();
    dialogs.SetUpAChannel();
    dialogs.SetUpAnOperationChannel();
    dialogs.CopyAChannel();
    Tell(QStringLiteral(
        "each dialog was opened from its table; a channel, an operation channel with a formula and the "
        "entries of five tables were edited, and a channel was copied"));
    WriteBack();
    StoreSettings();
    SetClock();
    SaveAndOpen();
    PrintTheSheet();
    ChangeTheModelThereAndBack();
    MeetASilentRecorder();
    Close();
  }

  // Registers that the tour has changed, by number, with the value that they have to hold.
  [[nodiscard]] const Memory& Changed() const { return changed_; }

private:
  void Tell(const QString& what) const {
    std::printf("tour: %s: %s\n", plant_.model, what.toUtf8().constData());
    std::fflush(stdout);
  }

  // What the status line says of the last deed, behind the time.
  static void ExpectDone(const QString& done) {
    const QString said = Guest::Find<QLabel>(Guest::Window(), "statusDone").text();
    if (!said.endsWith(u' ' + done)) {
      throw TourFailure(QStringLiteral("the status line says \"%1\" in place of \"%2\"").arg(said, done));
    }
  }
  // By its own name, as the recorder has told it.
  [[nodiscard]] QString RecorderSaid() const {
    return QStringLiteral("%1 %2 127.0.0.1")
        .arg(QString::fromLatin1(plant_.model),
             ToQt(Trim(FindTextRecord("P", 0, "PVER")->Value).substr(0, 4)));
  }

  void Look() {
    const QWidget& window = Guest::Window();
    Tell(QStringLiteral("the window \"%1\" is open, %2 x %3 pixels")
             .arg(window.windowTitle())
             .arg(window.width())
             .arg(window.height()));
    guest_.EndStep(QStringLiteral("opening"));
  }

  void Read() {
    guest_.ExpectBox(Text(20104), QMessageBox::Ok);
    Guest::Click(Guest::Find<QPushButton>(Guest::Window(), "btnRegRead"));
    guest_.EndStep(QStringLiteral("reading"));
    if (!Guest::Find<QPushButton>(Guest::Window(), "btnRegRead").isEnabled()) {
      throw TourFailure(QStringLiteral("the buttons stay disabled after the read"));
    }
    ExpectDone(Text(19623) + u' ' + RecorderSaid());
    Tell(QStringLiteral("a click on \"%1\" has read the whole set-up from the recorder").arg(Text(19623)));
  }

  void LookAtTheChannels() {
    constexpr int FirstRow = 2;
    constexpr int TagColumn = 2;
    constexpr int KindColumn = 4;
    const GridModel& table = Guest::Find<GridView>(Guest::Window(), "fgrCh").Model();
    const auto expect = [&](int row, int column, const std::u16string& text) {
      if (table.CellAt(row, column).text != text) {
        throw TourFailure(QStringLiteral("the channel table shows \"%1\" in place of \"%2\"")
                              .arg(ToQt(table.CellAt(row, column).text), ToQt(text)));
      }
    };
    if (table.rowCount() != plant_.channels) {
      throw TourFailure(QStringLiteral("the channel table has %1 rows").arg(table.rowCount()));
    }
    expect(FirstRow, TagColumn, plant_.firstTag);
    expect(FirstRow, KindColumn, plant_.firstKind);
    Tell(QStringLiteral("the channel table shows %1 channels, the first one \"%2\"")
             .arg(table.rowCount())
             .arg(ToQt(table.CellAt(FirstRow, TagColumn).text)));
    constexpr int ThirdChannel = 2;
    Guest::ClickCell(Guest::Find<GridView>("fgrCh"), ThirdChannel, TagColumn);
    if (frmParamLoader->fgrCh.Row != FirstRow + ThirdChannel) {
      throw TourFailure(QStringLiteral("a click on the third channel has not chosen its row"));
    }
    guest_.Picture(QStringLiteral("read"));
  }

  // By the text that the third channel is called.
  void FindAChannel() {
    auto& table = Guest::Find<GridView>(Guest::Window(), "fgrCh");
    constexpr int TagColumn = 2;
    const QString tag = ToQt(table.Model().CellAt(4, TagColumn).text);
    Guest::ClickCell(table, 0, 0);
    Guest::Press(Qt::Key_F, Qt::ControlModifier);
    Guest::Find<QLineEdit>("findText").insert(tag); // as an input method does
    Guest::Press(Qt::Key_Return);
    guest_.Picture(QStringLiteral("found"));
    Guest::Press(Qt::Key_Escape);
    Guest::Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    if (frmParamLoader->fgrCh.Row != 4 || QGuiApplication::clipboard()->text() != tag) {
      throw TourFailure(QStringLiteral("\"%1\" was not found and copied").arg(tag));
    }
    guest_.EndStep(QStringLiteral("finding a channel"));
    Tell(QStringLiteral("Ctrl+F has found \"%1\" in the table, Ctrl+Shift+C has copied it").arg(tag));
  }

  void LookAtTheSmallScreens() {
    guest_.ExpectScreen(QStringLiteral("frmAbout"), [&](QWidget&) {
      guest_.Picture(QStringLiteral("version"));
      Guest::Press(Qt::Key_Return);
    });
    Guest::Choose("menuHelp", "menuVersion");
    guest_.EndStep(QStringLiteral("the version screen"));
    guest_.ExpectScreen(QStringLiteral("frmIPSetting"), [&](QWidget&) {
      Guest::TypeInto(Guest::Find<QLineEdit>("txtStationNo"), QStringLiteral("300"));
      guest_.ExpectBox(Text(20115)
                           .replace(QStringLiteral("@FORMIN@"), QStringLiteral("0"))
                           .replace(QStringLiteral("@FORMAX@"), QStringLiteral("255")),
                       QMessageBox::Ok);
      Guest::Click(Guest::Find<QPushButton>("cmdOK"));
      Guest::TypeInto(Guest::Find<QLineEdit>("txtStationNo"), QStringLiteral("1"));
      guest_.Picture(QStringLiteral("address"));
      Guest::Click(Guest::Find<QPushButton>("cmdOK"));
    });
    Guest::Choose("menuRS", "menuRSipaddr");
    guest_.EndStep(QStringLiteral("the address screen"));
    guest_.ExpectScreen(QStringLiteral("frmTimeChange"), [](QWidget&) { Guest::CloseFront(); });
    Guest::Click(Guest::Find<QPushButton>("cmdTime"));
    guest_.EndStep(QStringLiteral("closing a screen by its window"));
    Tell(QStringLiteral("the small screens open, refuse a wrong station and close"));
  }

  void LookAtEveryPage() {
    auto& pages = Guest::Find<QTabWidget>(Guest::Window(), "tbsParameter");
    for (int page = 0; page < pages.count(); ++page) {
      Guest::ChoosePage(page);
      if (pages.currentIndex() != page) {
        throw TourFailure(QStringLiteral("page %1 does not open").arg(page));
      }
      guest_.Picture(QStringLiteral("page%1").arg(page));
      Tell(QStringLiteral("page \"%1\"").arg(pages.tabText(page)));
    }
    Guest::ChoosePage(0);
    guest_.EndStep(QStringLiteral("pages"));
  }

  void ChangeFields() {
    QWidget& window = Guest::Window();
    Guest::ChoosePage(2);
    auto& hysteresis = Guest::Find<QLineEdit>(window, "txtAlarmHist");
    Guest::TypeInto(hysteresis, QStringLiteral("abc"));
    guest_.ExpectBox(Text(62200), QMessageBox::Ok);
    Guest::Click(Guest::Find<QPushButton>(window, "cmdFIX")); // the wrong value stands in its way
    guest_.EndStep(QStringLiteral("a wrong value"));
    // The window manager gives the window its activity back when the box has gone.
    if (!test::BecomesActive(window)) {
      throw TourFailure(QStringLiteral("the window does not become active again behind a box"));
    }
    if (!hysteresis.hasFocus() || hysteresis.selectedText() != QStringLiteral("abc")) {
      throw TourFailure(QStringLiteral("a wrong value does not take the focus back"));
    }
    // For a tenth of a second after a refusal no field is checked; nobody types that fast.
    test::WaitUntil([] { return !WaitTimer2.Enabled; });
    Guest::TypeInto(hysteresis, QStringLiteral("12"));
    QTest::keyClick(&hysteresis, Qt::Key_Tab);
    NoteChange(changed_, "H", 0, "ALMH", 12);
    Guest::ChooseRow("cmbParity", 2);
    NoteChange(changed_, "H", 0, "COMP", 2);
    Tell(QStringLiteral("a wrong value was refused in one message; two settings were changed"));
    guest_.Picture(QStringLiteral("changed"));
    Guest::ChoosePage(4);
    auto& octet = Guest::Find<QLineEdit>(window, "txtEtherIPAdd_3");
    Guest::TypeInto(octet, QStringLiteral("099"));
    QTest::keyClick(&octet, Qt::Key_Tab);
    NoteChange(changed_, "J", 0, "IPA4", 99);
    Guest::ChoosePage(0);
    guest_.EndStep(QStringLiteral("changing fields"));
  }

  void WriteBack() {
    guest_.ExpectBox(Text(20106), QMessageBox::Ok);
    guest_.ExpectBox(Text(62701), QMessageBox::Ok);
    Guest::Press(Qt::Key_F9);
    guest_.EndStep(QStringLiteral("writing"));
    ExpectDone(Text(19624) + u' ' + RecorderSaid());
    Tell(QStringLiteral("F9 has written the whole set-up to the recorder"));
  }

  void StoreSettings() {
    guest_.ExpectBox(Text(20108), QMessageBox::Ok);
    guest_.ExpectBox(Text(62702), QMessageBox::Ok);
    Guest::Click(Guest::Find<QPushButton>(Guest::Window(), "cmdFIX"));
    guest_.EndStep(QStringLiteral("storing the settings"));
    Tell(QStringLiteral("\"%1\" has told the recorder to keep it").arg(Text(19625)));
  }

  void SetClock() {
    guest_.ExpectScreen(QStringLiteral("frmTimeChange"), [&](QWidget&) {
      const auto type = [&](const char* field, const char* text) {
        Guest::TypeInto(Guest::Find<QLineEdit>(field), QString::fromLatin1(text));
      };
      type("txtYear", "27");
      type("txtMonth", "2");
      type("txtDay", "28");
      type("txtHour", "23");
      type("txtMinute", "58");
      guest_.Picture(QStringLiteral("clock"));
      Guest::Click(Guest::Find<QPushButton>("cmdOK"));
      Guest::Click(Guest::Find<QPushButton>("cmdCancel"));
    });
    Guest::Click(Guest::Find<QPushButton>(Guest::Window(), "cmdTime"));
    guest_.EndStep(QStringLiteral("setting the clock"));
    constexpr int YearRegister = 40012;
    changed_[YearRegister] = 27;
    changed_[YearRegister + 1] = 2;
    changed_[YearRegister + 2] = 28;
    ExpectDone(Text(19626) + u' ' + RecorderSaid());
    Tell(QStringLiteral("\"%1\" has set the recorder's clock").arg(Text(19626)));
  }

  QString Save(const QString& name) {
    const QString path = folder_ + u'/' + name + u'.' + model_;
    QFile::remove(path);
    // The name is given without its extension, as a user would.
    guest_.ExpectFileDialog(folder_ + u'/' + name);
    Guest::Choose("menuFile", "smenuOverWrite");
    guest_.EndStep(QStringLiteral("saving"));
    if (!QFile::exists(path)) {
      throw TourFailure(QStringLiteral("%1 was not written").arg(path));
    }
    return path;
  }

  void Open(const QString& path) {
    guest_.ExpectFileDialog(path);
    Guest::Choose("menuFile", "smenuOpen");
    guest_.EndStep(QStringLiteral("opening a file"));
  }

  void SaveAndOpen() {
    const QString saved = Save(QStringLiteral("recorder"));
    const std::vector<std::string> first = Lines(saved);
    Tell(QStringLiteral("\"%1\" has written %2, %3 lines").arg(Text(10502), saved).arg(first.size()));
    Open(saved);
    const std::vector<std::string> second = Lines(Save(QStringLiteral("recorder-again")));
    if (first.size() != second.size()) {
      throw TourFailure(QStringLiteral("the file saved after an open has %1 lines").arg(second.size()));
    }
    for (std::size_t i = 0; i < first.size(); ++i) {
      if (first[i] != second[i] && !RewrittenByOpen(first[i])) {
        throw TourFailure(QStringLiteral("line %1 has changed: ").arg(i + 1) +
                          QString::fromStdString(first[i]));
      }
    }
    Open(folder_ + QStringLiteral("/recorder-again.") + model_);
    if (Lines(Save(QStringLiteral("recorder-third"))) != second) {
      throw TourFailure(QStringLiteral("open and save change a file that came from here"));
    }
    QFile::remove(folder_ + QStringLiteral("/recorder-again.") + model_);
    QFile::remove(folder_ + QStringLiteral("/recorder-third.") + model_);
    Tell(QStringLiteral("\"%1\" brings the file back, and saved again it is the same").arg(Text(10501)));
    LookAtTheChannels();
  }

  void PrintTheSheet() {
    const QString path = folder_ + QStringLiteral("/sheet-") + model_ + QStringLiteral(".Txt");
    QFile::remove(path);
    guest_.ExpectFileDialog(path);
    Guest::Choose("menuFile", "smenuTextWrite");
    guest_.EndStep(QStringLiteral("the text output"));
    const std::vector<std::string> lines = Lines(path);
    constexpr std::size_t LinesOfAPage = 100;
    if (lines.size() < LinesOfAPage) {
      throw TourFailure(QStringLiteral("the sheet has %1 lines").arg(lines.size()));
    }
    Tell(QStringLiteral("\"%1\" has printed %2, %3 lines").arg(Text(10503), path).arg(lines.size()));
  }

  void ChooseModel(int row) {
    guest_.ExpectBox(Text(11016), QMessageBox::Ok);
    Guest::ChooseRow("cmbType", row);
    guest_.EndStep(QStringLiteral("a change of model"));
  }

  // What both models have comes back as it was.
  void ChangeTheModelThereAndBack() {
    const bool kov = model_ == QStringLiteral("KOV");
    const std::u16string tag = TagOfTheFirstChannel();
    ChooseModel(kov ? 1 : 0);
    const int channels = Guest::Find<GridView>(Guest::Window(), "fgrCh").Model().rowCount();
    if (channels != (kov ? 36 : 18) || TagOfTheFirstChannel() != tag) {
      throw TourFailure(QStringLiteral("the other model shows %1 channels, the first one \"%2\"")
                            .arg(channels)
                            .arg(ToQt(TagOfTheFirstChannel())));
    }
    guest_.Picture(QStringLiteral("other-model"));
    ChooseModel(kov ? 0 : 1);
    if (TagOfTheFirstChannel() != tag) {
      throw TourFailure(QStringLiteral("the first channel has lost its tag on the way back"));
    }
    Tell(QStringLiteral("the other model has %1 channels and the tags; and back").arg(channels));
    Open(folder_ + QStringLiteral("/recorder.") + model_);
  }
  static std::u16string TagOfTheFirstChannel() {
    constexpr int FirstRow = 2;
    constexpr int TagColumn = 2;
    return Guest::Find<GridView>(Guest::Window(), "fgrCh").Model().CellAt(FirstRow, TagColumn).text;
  }

  // A recorder that goes silent in the middle of a read: the window stays live while the loader waits, and
  // does not let itself be closed; the user is told, and everything works again afterwards.
  void MeetASilentRecorder() {
    const int port = port_;
    RecorderProcess silent(model_, PathOf(FromQt(folder_)),
                           {QStringLiteral("--fault"), QStringLiteral("no-reply@20")});
    port_ = silent.Port();
    guest_.ExpectBox(Text(20104), QMessageBox::Ok);
    guest_.ExpectBox(Text(20102), QMessageBox::Ok);
    guest_.ExpectBox(Text(11000), QMessageBox::Ok);
    guest_.ExpectBox(Text(11013), QMessageBox::Ok);
    constexpr int InTheMiddleOfTheWait = 1000;
    bool disabledMeanwhile = false;
    QTimer::singleShot(InTheMiddleOfTheWait, &guest_, [&] {
      disabledMeanwhile = !Guest::Find<QPushButton>(Guest::Window(), "btnRegWrite").isEnabled();
      Guest::ChoosePage(3);
      Guest::Find<QAction>(Guest::Window(), "smenuOpen").trigger(); // not offered now: no dialog comes
      Guest::Window().close();
    });
    Guest::Click(Guest::Find<QPushButton>(Guest::Window(), "btnRegRead"));
    guest_.EndStep(QStringLiteral("a silent recorder"));
    const auto& pages = Guest::Find<QTabWidget>(Guest::Window(), "tbsParameter");
    if (!disabledMeanwhile || pages.currentIndex() != 3 ||
        !Guest::Find<QPushButton>(Guest::Window(), "btnRegWrite").isEnabled()) {
      throw TourFailure(QStringLiteral("the window was not live during the wait, or not whole after it"));
    }
    silent.End();
    fs::remove(PathOf(FromQt(folder_)) / "recorder-memory.txt");
    port_ = port;
    Tell(QStringLiteral("a recorder that went silent was told after the wait; the window stayed live"));
    Guest::ChoosePage(0);
  }

  void Close() {
    guest_.ExpectBox(Text(20100), QMessageBox::Ok);
    Guest::Window().close();
    guest_.EndStep(QStringLiteral("closing"));
    Tell(QStringLiteral("the window is closed"));
  }

  QString folder_;
  const Plant& plant_;
  int& port_;
  QString model_;
  Guest guest_;
  Memory changed_;
};

void TourOf(const QString& folder, const Plant& plant) {
  QtPlatformOptions options;
  options.programFolder = MakeProgramFolder(PathOf(FromQt(folder)), plant);
  const Memory untouched = RecorderProcess(QString::fromLatin1(plant.model), options.programFolder).End();
  RecorderProcess recorder(QString::fromLatin1(plant.model), options.programFolder);
  Memory changed;
  int port = recorder.Port();
  options.portMap = [&](int) { return port; };
  QtPlatform platform(options);
  const QString failure = FailureOf(platform, [&] {
    Tour tour(folder, plant, port);
    tour.Take();
    changed = tour.Changed();
  });
  const Memory written = recorder.End();
  fs::remove_all(options.programFolder);
  if (!failure.isEmpty()) {
    throw TourFailure(failure);
  }
  CompareMemories(untouched, written, changed, plant);
}

} // namespace

} // namespace loader::tour

int main(int argc, char** argv) {
  loader::tour::PrepareGuest();
  loader::Application application(argc, argv);
  const QString folder = loader::tour::MakeFolder(QCoreApplication::arguments());
  if (folder.isEmpty()) {
    std::fputs("usage: recorder-tour FOLDER\n", stderr);
    return 2;
  }
  try {
    for (const loader::tour::Plant& plant : loader::tour::Plants) {
      loader::tour::TourOf(folder, plant);
    }
  } catch (const std::exception& failure) {
    std::printf("tour: FAILED: %s\n", failure.what());
    return 1;
  }
  std::printf("tour: done. Pictures and the saved files are in %s\n", folder.toUtf8().constData());
  return 0;
}
