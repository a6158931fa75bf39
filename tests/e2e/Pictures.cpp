// The pictures of the documents: the real program on a display, driven as in the tour, photographed where the
// documents speak of it. Time and the recorder's address are made up, so that a picture changes with what it
// shows and with nothing else.
//
//   recorder-pictures FOLDER      (recorder-sim and the data files lie beside this program)
#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTcpServer>
#include <QTest>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modMain.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/Application.h"
#include "qt/GridView.h"
#include "qt/QtPlatform.h"
#include "qt/QtText.h"
#include "tests/e2e/Guest.h"
#include "tests/e2e/Photo.h"
#include "tests/e2e/RecorderProcess.h"
#include "tests/e2e/TourSetup.h"

namespace fs = std::filesystem;

namespace loader::tour {

namespace {

constexpr const char16_t* RecorderAddress = u"192.168.1.10";

// A morning of some day; what is timed is timed by the real clock.
struct MadeUpClock final : Clock {
  explicit MadeUpClock(Clock& realClock) : real(realClock) {}
  [[nodiscard]] float SecondsSinceMidnight() override { return real.SecondsSinceMidnight(); }
  [[nodiscard]] DateAndTime Now() override {
    return {.year = 2026, .month = 4, .day = 1, .hour = 10, .minute = 32, .second = 0};
  }
  Clock& real;
};

// Whatever address is asked for, the recorder is on this machine.
struct SocketAtHome final : SocketControl {
  explicit SocketAtHome(SocketControl& realSocket) : real(realSocket) {
    real.onConnect = [this] { onConnect(); };
  }
  [[nodiscard]] int State() const override { return real.State(); }
  void Close() override { real.Close(); }
  void Connect() override {
    real.RemoteHost = u"127.0.0.1";
    real.RemotePort = RemotePort;
    real.Connect();
  }
  void SendData(std::span<const std::uint8_t> bytes) override { real.SendData(bytes); }
  [[nodiscard]] int BytesReceived() const override { return real.BytesReceived(); }
  [[nodiscard]] Bytes GetData() override { return real.GetData(); }
  SocketControl& real;
};

QString Text(int id) {
  return ToQt(LoadText(TextId::At(id)));
}

class Album {
public:
  Album(QString folder, QtPlatform& platform, int& port)
      : folder_(std::move(folder)), platform_(platform), port_(port), guest_(folder_, {}) {}

  void Make() {
    Read();
    Keep("kov-channels", Photo(Guest::Window()));
    FindAndMenu();
    Pages();
    Channel();
    Logarithm();
    OperationChannel();
    SideDialogs();
    SmallScreens();
    LinkMenu();
    Write();
    Sheet();
    Keep("overview", Overview());
    OtherModel();
    Failure();
    Close();
  }
  int otherPort = 0; // of the recorder of the other model

private:
  void Keep(const char* name, const QImage& picture) {
    SavePicture(folder_, QString::fromLatin1(name), picture);
    std::printf("pictures: %s, %d x %d\n", name, picture.width(), picture.height());
  }
  QImage Window() {
    // Of both colours the lamp may have stopped at, the one that it begins with.
    frmParamLoader->picCommStatus(0).colour = 0;
    platform_.userInterface.Refresh();
    return Photo(Guest::Window());
  }
  static QImage Titled(QWidget& window) { return Framed(Photo(window), window.windowTitle()); }

  void Read() {
    guest_.ExpectBox(Text(20104), QMessageBox::Ok);
    Guest::Click(Guest::Find<QPushButton>(Guest::Window(), "btnRegRead"));
    guest_.EndStep(QStringLiteral("reading"));
    Guest::ClickCell(Guest::Find<GridView>("fgrCh"), 0, 1);
    Window();
  }

  void FindAndMenu() {
    auto& table = Guest::Find<GridView>("fgrCh");
    Guest::Press(Qt::Key_F, Qt::ControlModifier);
    Guest::Find<QLineEdit>("findText").insert(QStringLiteral("流量"));
    Guest::Press(Qt::Key_Return);
    Keep("find", Window());
    Guest::Press(Qt::Key_Escape);
    const QPoint at = table.visualRect(table.currentIndex()).center();
    QContextMenuEvent asked(QContextMenuEvent::Mouse, at, table.viewport()->mapToGlobal(at));
    QApplication::sendEvent(table.viewport(), &asked);
    auto& menu = Guest::Find<QMenu>("tableMenu");
    const QPoint place = table.viewport()->mapTo(&Guest::Window(), at);
    Keep("table-menu", Over(Window(), Photo(menu), place).copy(0, 130, 700, 420));
    menu.close();
    guest_.EndStep(QStringLiteral("find and menu"));
  }

  void Pages() {
    auto& table = Guest::Find<GridView>("fgrCh");
    constexpr int MeasuringRange = 9;
    table.horizontalScrollBar()->setValue(table.horizontalScrollBar()->value() +
                                          table.columnViewportPosition(MeasuringRange));
    Keep("kov-ranges", Window());
    constexpr const char* Names[] = {"kov-operations", "kov-recorder", "kov-displays", "kov-ethernet",
                                     "kov-mail"};
    for (int page = 1; page < 6; ++page) {
      const bool tall = page == 2;
      if (tall) {
        Guest::Window().resize(800, 1040);
      }
      Guest::ChoosePage(page);
      Keep(Names[page - 1], Window());
      if (tall) {
        Guest::Window().resize(800, 650);
      }
    }
    table.horizontalScrollBar()->setValue(0);
  }

  // Opens the dialog of a row, photographs it and closes it by the cross of its window.
  void Dialog(int page, const char* table, int row, const char* screen, const char* name,
              const std::function<void(QWidget&)>& more = {}) {
    Guest::ChoosePage(page);
    guest_.ExpectScreen(QString::fromLatin1(screen), [&](QWidget& dialog) {
      if (name != nullptr) {
        Keep(name, Titled(dialog));
      }
      if (more) {
        more(dialog);
      }
      Guest::CloseFront();
    });
    Guest::DoubleClickCell(Guest::Find<GridView>(Guest::Window(), table), row, 0);
    guest_.EndStep(QString::fromLatin1(screen));
  }
  // The same by a click within a dialog.
  void Screen(QWidget& button, const char* screen, const char* name, const std::function<void()>& more = {}) {
    guest_.ExpectScreen(QString::fromLatin1(screen), [&](QWidget& shown) {
      Keep(name, Titled(shown));
      if (more) {
        more();
      }
      Guest::CloseFront();
    });
    Guest::Click(button);
  }

  void Channel() {
    constexpr int Flow = 6;
    Dialog(0, "fgrCh", Flow, "frmChSetting", "channel", [&](QWidget& dialog) {
      channel_ = Titled(dialog);
      Screen(Guest::Find<QPushButton>("cmdUnitSelect"), "frmSelectUnit", "select-unit");
    });
  }

  void Logarithm() {
    constexpr int Vacuum = 14;
    Dialog(0, "fgrCh", Vacuum, "frmChSetting", nullptr, [&](QWidget& dialog) {
      Guest::ChooseRow("cmbScale", 1);
      Guest::ChooseRow("cmbTaisu", 1);
      Keep("channel-log", Titled(dialog));
      Guest::TypeInto(Guest::Find<QLineEdit>("txtIndMin"), QStringLiteral("-3"));
      Guest::TypeInto(Guest::Find<QLineEdit>("txtIndMax"), QStringLiteral("2"));
      Guest::ChooseRow("cmbAlarmType1", 1);
      Screen(Guest::Find<QLabel>("lblAlarmSetInput1"), "frmAlarmSetting", "alarm");
    });
  }

  void OperationChannel() {
    Dialog(1, "fgrOperationChSet", 0, "frmOperationChSet", "operation-channel", [&](QWidget&) {
      Screen(Guest::Find<QPushButton>("cmdFormulaSet1"), "frmFormula", "formula",
             [&] { Screen(Guest::Find<QPushButton>("btnSet"), "frmOpSetting", "term"); });
    });
  }

  void SideDialogs() {
    Dialog(3, "fgrGroup", 0, "frmGroupSetting", "group");
    Dialog(3, "fgrMess", 2, "frmMsgSetting", "message");
    Dialog(3, "fgrUnit", 0, "frmUnitSetting", "unit");
    Dialog(1, "fgrConst", 0, "frmConstSetting", "constant");
    Dialog(5, "flxEMailTriggerSetting", 0, "frmEMailTriggerSetting", "mail-trigger");
    Guest::ChoosePage(0);
  }

  void SmallScreens() {
    guest_.ExpectScreen(QStringLiteral("frmIPSetting"), [&](QWidget& screen) {
      Keep("ip-setting", Titled(screen));
      Guest::CloseFront();
    });
    Guest::Choose("menuRS", "menuRSipaddr");
    guest_.EndStep(QStringLiteral("the address"));
    guest_.ExpectScreen(QStringLiteral("frmTimeChange"), [&](QWidget& screen) {
      Keep("clock", Titled(screen));
      Guest::CloseFront();
    });
    Guest::Click(Guest::Find<QPushButton>(Guest::Window(), "cmdTime"));
    guest_.EndStep(QStringLiteral("the clock"));
  }

  void LinkMenu() {
    QWidget& window = Guest::Window();
    auto& bar = Guest::Find<QMenuBar>(window, "menuBar");
    auto& menu = Guest::Find<QMenu>(window, "menuRS");
    auto& links = Guest::Find<QMenu>(window, "menuRScomunication");
    const QPoint below = bar.mapTo(&window, bar.actionGeometry(menu.menuAction()).bottomLeft());
    menu.popup(window.mapToGlobal(below));
    menu.setActiveAction(links.menuAction());
    const QPoint beside = below + menu.actionGeometry(links.menuAction()).topRight();
    const QImage open = Over(Window(), Photo(menu), below);
    Keep("menu-link", Over(open, Photo(links), beside).copy(0, 0, 480, 240));
    links.close();
    menu.close();
  }

  // The box in front of the window, of which the lower part from there on is kept.
  void Box(QWidget& box, const char* name, int from = 240) {
    const QImage desk = OverTheMiddle(Window(), Titled(box));
    Keep(name, desk.copy(0, from, desk.width(), desk.height() - from));
  }

  void Write() {
    Guest::ChoosePage(0);
    guest_.ExpectBox(Text(20106), QMessageBox::Ok, [&](QWidget& box) { Box(box, "write-question"); });
    guest_.ExpectBox(Text(62701), QMessageBox::Ok, [&](QWidget& box) {
      Box(box, "write-done");
      written_ = Titled(box);
    });
    Guest::Click(Guest::Find<QPushButton>(Guest::Window(), "btnRegWrite"));
    guest_.EndStep(QStringLiteral("writing"));
  }

  void Sheet() {
    const QString path = folder_ + QStringLiteral("/sheet.Txt");
    guest_.ExpectFileDialog(path);
    Guest::Choose("menuFile", "smenuTextWrite");
    guest_.EndStep(QStringLiteral("the text output"));
    std::ifstream in(path.toStdString(), std::ios::binary);
    QStringList lines;
    constexpr int Most = 60;
    for (std::string line; lines.size() < Most && std::getline(in, line);) {
      line.erase(line.find_last_not_of("\r\f") + 1);
      lines.push_back(ToQt(FromCodePage(line)));
    }
    QFile::remove(path);
    sheet_ = Page(lines);
    Keep("kov-sheet", sheet_);
  }

  // Window, dialog, message and sheet on one desk.
  QImage Overview() {
    QImage desk(QSize(1700, 1250), QImage::Format_RGB32);
    desk.fill(qRgb(0xee, 0xf1, 0xf5));
    desk = Over(desk, sheet_.copy(0, 0, 830, 600), {850, 20});
    desk = Over(desk, Framed(Window(), Guest::Window().windowTitle()), {20, 20});
    desk = Over(desk, channel_, {420, 575});
    return Over(desk, written_, {60, 980});
  }

  void OtherModel() {
    guest_.ExpectBox(Text(11016), QMessageBox::Ok, [&](QWidget& box) { Box(box, "model-question", 0); });
    Guest::ChooseRow("cmbType", 1);
    guest_.EndStep(QStringLiteral("the other model"));
    port_ = otherPort;
    Read();
    Keep("rug-channels", Window());
  }

  // Nobody is there.
  void Failure() {
    QTcpServer nobody;
    nobody.listen(QHostAddress::LocalHost);
    port_ = nobody.serverPort();
    nobody.close();
    guest_.ExpectBox(Text(20104), QMessageBox::Ok);
    guest_.ExpectBox(Text(11000), QMessageBox::Ok, [&](QWidget& box) { Box(box, "read-failed"); });
    Guest::Click(Guest::Find<QPushButton>(Guest::Window(), "btnRegRead"));
    guest_.EndStep(QStringLiteral("no recorder"));
    const QImage window = Window();
    constexpr int Line = 30;
    Keep("status-failed", window.copy(0, window.height() - Line, window.width(), Line));
  }

  void Close() {
    guest_.ExpectBox(Text(20100), QMessageBox::Ok);
    Guest::Window().close();
    guest_.EndStep(QStringLiteral("closing"));
  }

  QString folder_;
  QtPlatform& platform_;
  int& port_;
  Guest guest_;
  QImage channel_;
  QImage sheet_;
  QImage written_; // the message
};

void MakePictures(const QString& folder) {
  QtPlatformOptions options;
  options.programFolder = MakeProgramFolder(folder.toStdString(), Plants[0]);
  std::ofstream(options.programFolder / "LOADER.INI", std::ios::binary)
      << "[LOADER]\r\nTYPE=0\r\nCOMMUNICATION=1\r\nCOM=0\r\nSTNO=1\r\nIP=" << ToUtf8(RecorderAddress)
      << "\r\n";
  RecorderProcess kov(QStringLiteral("KOV"), options.programFolder);
  RecorderProcess rug(QStringLiteral("RUG"), options.programFolder);
  int port = kov.Port();
  options.portMap = [&port](int) { return port; };
  QtPlatform real(options);
  MadeUpClock clock(real.clock);
  SocketAtHome socket(real.socket);
  Platform platform = WithParts(real.platform, {.clock = &clock, .winSock = &socket});
  SetPlatform(&platform);
  const QString failure = FailureOf(real, [&] {
    Album album(folder, real, port);
    album.otherPort = rug.Port();
    album.Make();
  });
  kov.End();
  rug.End();
  fs::remove_all(options.programFolder);
  if (!failure.isEmpty()) {
    throw TourFailure(failure);
  }
}

} // namespace

} // namespace loader::tour

int main(int argc, char** argv) {
  loader::tour::PrepareGuest();
  loader::Application application(argc, argv);
  const QString folder = loader::tour::MakeFolder(QCoreApplication::arguments());
  if (folder.isEmpty()) {
    std::fputs("usage: recorder-pictures FOLDER\n", stderr);
    return 2;
  }
  loader::Application::setPalette(loader::Application::style()->standardPalette());
  loader::Application::setCursorFlashTime(0); // a cursor that blinks is seen in some pictures only
  try {
    loader::tour::MakePictures(folder);
  } catch (const std::exception& failure) {
    std::printf("pictures: FAILED: %s\n", failure.what());
    return 1;
  }
  return 0;
}
