// The tour: the real program on a display, driven through its real widgets against a simulated recorder. It
// tells each step in a line, leaves pictures and the saved files in its folder, and ends with 1 at the first
// step that did not go as told.
//
//   recorder-tour FOLDER      (recorder-sim and the data files lie beside this program)
#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
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
#include "tests/e2e/Guest.h"
#include "tests/e2e/RecorderProcess.h"
#include "tests/qt/ActiveWindow.h"

namespace fs = std::filesystem;

namespace loader::tour {

namespace {

QString Text(int id) {
  return ToQt(LoadText(TextId::At(id)));
}

// What the recorders of the simulator measure: the first and the last channel that the window has to show.
struct Plant {
  const char* model;
  int channels;
  const char16_t* firstTag;
  const char16_t* firstKind;
};
constexpr Plant Plants[] = {{"KOV", 18, u"1号炉 上段", u"K熱電対"}, {"RUG", 36, u"取水流量 1系", u"1-5V"}};

std::vector<std::string> Lines(const QString& file) {
  std::ifstream in(file.toStdString(), std::ios::binary);
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
    LookAtTheSmallScreens();
    LookAtEveryPage();
    ChangeFields();
    EditTheSideDialogs();
    WriteBack();
    StoreSettings();
    SetClock();
    SaveAndOpen();
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

  // The register of a number now has to hold its value.
  void Expect(std::string_view section, std::string_view tag, int value, int item = 0) {
    const ParamNumRecord* record = FindNumRecord(section, item, tag);
    if (record == nullptr || record->Value != value) {
      throw TourFailure(QStringLiteral("the store does not hold the change of %1")
                            .arg(QString::fromStdString(std::string(tag))));
    }
    const ParamSection& home = ParamStore[gFFindSection(section)];
    changed_[home.BaseAddress + item * home.ItemWords + record->WordOffset] = value;
  }
  static void ExpectCell(const char* table, int row, int column, const QString& text) {
    const GridModel& cells = Guest::Find<GridView>(Guest::Window(), table).Model();
    const QString shown = ToQt(cells.CellAt(row + cells.FixedRows(), column).text);
    if (shown != text) {
      throw TourFailure(
          QStringLiteral("%1 shows \"%2\" in place of \"%3\"").arg(QString::fromLatin1(table), shown, text));
    }
  }
  // Opens the dialog of a row by a double click, works in it, and closes it by its button.
  void InTheDialogOf(const char* table, int row, const char* dialog, const std::function<void()>& work) {
    guest_.ExpectScreen(QString::fromLatin1(dialog), [&](QWidget&) {
      work();
      guest_.Picture(QString::fromLatin1(dialog));
      Guest::Click(Guest::Find<QPushButton>("btnCancel"));
    });
    Guest::DoubleClickCell(Guest::Find<GridView>(Guest::Window(), table), row, 0);
    guest_.EndStep(QString::fromLatin1(dialog));
  }
  static void Apply() { Guest::Click(Guest::Find<QPushButton>("btnOk")); }

  void EditTheSideDialogs() {
    constexpr int DisplayPage = 3;
    constexpr int OperationPage = 1;
    constexpr int MailPage = 5;
    Guest::ChoosePage(DisplayPage);
    InTheDialogOf("fgrGroup", 1, "frmGroupSetting", [] {
      Guest::ChooseRow("cmbGC_3", 7);
      Guest::ChooseRow("cmbTrendDivision", 11);
      Apply();
    });
    Expect("G", "GC04", 7, 1);
    Expect("T", "TBUN", 12, 1);
    ExpectCell("fgrGroup", 1, 6, QStringLiteral("ﾁｬﾈﾙ７"));
    InTheDialogOf("fgrMess", 4, "frmMsgSetting", [] {
      Guest::ChooseRow("cmbTiming", 3);
      Guest::ChooseRow("cmbTiming1", 5);
      Guest::ChooseRow("cmbTiming2", 2);
      Apply();
    });
    Expect("M", "MTM1", 3, 4);
    Expect("M", "MTM2", 5, 4);
    Expect("M", "MTM3", 2, 4);
    const QString unit = ToQt(Guest::Find<GridView>(Guest::Window(), "fgrUnit").Model().CellAt(1, 1).text);
    InTheDialogOf("fgrUnit", 0, "frmUnitSetting", [] {
      Guest::TypeInto(Guest::Find<QLineEdit>("txtMessage"), QStringLiteral("l/100km"));
      Apply();
    });
    ExpectCell("fgrUnit", 0, 1, QStringLiteral("l/100km"));
    InTheDialogOf("fgrUnit", 0, "frmUnitSetting", [&] { // back, for the recorder is compared at the end
      Guest::TypeInto(Guest::Find<QLineEdit>("txtMessage"), unit);
      Apply();
    });
    ExpectCell("fgrUnit", 0, 1, unit);
    Guest::ChoosePage(OperationPage);
    InTheDialogOf("fgrConst", 6, "frmConstSetting", [] {
      Guest::TypeInto(Guest::Find<QLineEdit>("txtMessage"), QStringLiteral("12.345"));
      Apply();
    });
    Expect("N", "CONS", 12345, 6);
    Expect("N", "CONP", 3, 6);
    ExpectCell("fgrConst", 6, 1, QStringLiteral("12.345"));
    Guest::ChoosePage(MailPage);
    const ParamNumRecord* addresses = FindNumRecord("X", 2, "EADD");
    const int mask = addresses == nullptr ? 0 : addresses->Value ^ 0x80;
    InTheDialogOf("flxEMailTriggerSetting", 2, "frmEMailTriggerSetting", [] {
      Guest::Click(Guest::Find<QCheckBox>("chkRecvMailAddNo_7"));
      Apply();
    });
    Expect("X", "EADD", mask, 2);
    Guest::ChoosePage(0);
    Tell(QStringLiteral(
        "a group, a message, a unit, a constant and a mail trigger were edited in their dialogs"));
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
    while (WaitTimer2.Enabled) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    Guest::TypeInto(hysteresis, QStringLiteral("12"));
    QTest::keyClick(&hysteresis, Qt::Key_Tab);
    Expect("H", "ALMH", 12);
    Guest::ChooseRow("cmbParity", 2);
    Expect("H", "COMP", 2);
    Tell(QStringLiteral("a wrong value was refused in one message; two settings were changed"));
    guest_.Picture(QStringLiteral("changed"));
    Guest::ChoosePage(4);
    auto& octet = Guest::Find<QLineEdit>(window, "txtEtherIPAdd_3");
    Guest::TypeInto(octet, QStringLiteral("099"));
    QTest::keyClick(&octet, Qt::Key_Tab);
    Expect("J", "IPA4", 99);
    Guest::ChoosePage(0);
    guest_.EndStep(QStringLiteral("changing fields"));
  }

  void WriteBack() {
    guest_.ExpectBox(Text(20106), QMessageBox::Ok);
    guest_.ExpectBox(Text(62701), QMessageBox::Ok);
    Guest::Click(Guest::Find<QPushButton>(Guest::Window(), "btnRegWrite"));
    guest_.EndStep(QStringLiteral("writing"));
    Tell(QStringLiteral("\"%1\" has written the whole set-up to the recorder").arg(Text(19624)));
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

  // A recorder that goes silent in the middle of a read: the window stays live while the loader waits, and
  // does not let itself be closed; the user is told, and everything works again afterwards.
  void MeetASilentRecorder() {
    const int port = port_;
    RecorderProcess silent(model_, fs::path(folder_.toStdString()),
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
    fs::remove(folder_.toStdString() + "/recorder-memory.txt");
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

// The recorder's memory at the end against that of one which nobody has talked to: only what the tour has
// changed may differ, and has to.
void CompareMemories(const Memory& untouched, const Memory& written, const Memory& changed,
                     const Plant& plant) {
  // The register that stores the settings, the one that sets the clock, and the time of day, which runs on.
  const std::set<int> commands{40001, 40011, 40015, 40016};
  if (untouched.empty() || untouched.size() != written.size()) {
    throw TourFailure(QStringLiteral("the recorder does not tell its memory"));
  }
  int compared = 0;
  for (const auto& [number, before] : untouched) {
    if (commands.contains(number)) {
      continue;
    }
    const auto change = changed.find(number);
    const int wanted = change == changed.end() ? before : change->second;
    if (written.at(number) != wanted) {
      throw TourFailure(QStringLiteral("register %1 of the recorder holds %2 in place of %3")
                            .arg(number)
                            .arg(written.at(number))
                            .arg(wanted));
    }
    ++compared;
  }
  std::printf("tour: %s: %d registers of the recorder hold what they have to, %zu of them changed\n",
              plant.model, compared, changed.size());
}

// The program's folder for one model: the data files and a LOADER.INI that reaches the recorder.
fs::path MakeProgramFolder(const fs::path& folder, const Plant& plant) {
  const fs::path program = folder / ("program-" + std::string(plant.model));
  fs::remove_all(program);
  fs::create_directories(program);
  const fs::path data = QCoreApplication::applicationDirPath().toStdString();
  for (const char* file : {"InitSet.Ini", "TextKOV.Ini", "TextRUG.Ini"}) {
    if (fs::exists(data / file)) {
      fs::copy_file(data / file, program / file);
    }
  }
  std::ofstream(program / "LOADER.INI", std::ios::binary)
      << "[LOADER]\r\nTYPE=" << (plant.model[0] == 'R' ? 1 : 0)
      << "\r\nCOMMUNICATION=1\r\nCOM=0\r\nSTNO=1\r\nIP=127.0.0.1\r\n";
  return program;
}

void TourOf(const QString& folder, const Plant& plant) {
  QtPlatformOptions options;
  options.programFolder = MakeProgramFolder(folder.toStdString(), plant);
  const Memory untouched = RecorderProcess(QString::fromLatin1(plant.model), options.programFolder).End();
  RecorderProcess recorder(QString::fromLatin1(plant.model), options.programFolder);
  Memory changed;
  int port = recorder.Port();
  options.portMap = [&](int) { return port; };
  QtPlatform platform(options);
  QString failure;
  platform.screens.Run([&] {
    if (!Main(OpenMainWindow)) {
      failure = QStringLiteral("the program did not start");
      return;
    }
    // From the event loop, where everything that a user does comes from.
    QMetaObject::invokeMethod(
        qApp,
        [&] {
          try {
            Tour tour(folder, plant, port);
            tour.Take();
            changed = tour.Changed();
          } catch (const TourFailure& stopped) {
            failure = QString::fromStdString(stopped.what());
            platform.screens.EndProgram();
          }
        },
        Qt::QueuedConnection);
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
  loader::Application application(argc, argv);
  if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
    std::fputs("usage: recorder-tour FOLDER\n", stderr);
    return 2;
  }
  const QString folder = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
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
