#include "tests/e2e/DialogTour.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modMain.h"
#include "qt/GridView.h"
#include "qt/QtText.h"
#include "tests/qt/Waiting.h"

namespace loader::tour {

namespace {

constexpr int ChannelPage = 0;
constexpr int OperationPage = 1;
constexpr int DisplayPage = 3;
constexpr int MailPage = 5;

void ExpectCell(const char* table, int row, int column, const QString& text) {
  const GridModel& cells = Guest::Find<GridView>(Guest::Window(), table).Model();
  const QString shown = ToQt(cells.CellAt(row + cells.FixedRows(), column).text);
  if (shown != text) {
    throw TourFailure(
        QStringLiteral("%1 shows \"%2\" in place of \"%3\"").arg(QString::fromLatin1(table), shown, text));
  }
}

void TypeInto(const char* field, const char* text) {
  Guest::TypeInto(Guest::Find<QLineEdit>(field), QString::fromUtf8(text));
}
void Click(const char* button) {
  Guest::Click(Guest::Find<QPushButton>(button));
}
void ChooseLastRow(const char* list) {
  Guest::ChooseRow(list, Guest::Find<QComboBox>(list).count() - 1);
}

template <typename Record> int RegisterOf(const ParamSection& section, int item, const Record& record) {
  return section.BaseAddress + item * section.ItemWords + record.WordOffset;
}
int InTheRecorder(int value) {
  return static_cast<std::uint16_t>(value);
}

} // namespace

void NoteChange(Memory& changed, std::string_view section, int item, std::string_view tag, int value) {
  const ParamNumRecord* record = FindNumRecord(section, item, tag);
  if (record == nullptr || record->Value != value) {
    throw TourFailure(QStringLiteral("the store holds %1 in place of %2 for %3 of item %4")
                          .arg(record == nullptr ? 0 : record->Value)
                          .arg(value)
                          .arg(QString::fromStdString(std::string(tag)))
                          .arg(item));
  }
  changed[RegisterOf(ParamStore[gFFindSection(section)], item, *record)] = InTheRecorder(value);
}

void DialogTour::InTheDialogOf(const char* table, int row, const char* dialog, const char* close,
                               const std::function<void()>& work) {
  guest_.ExpectScreen(QString::fromLatin1(dialog), [&](QWidget&) {
    work();
    guest_.Picture(QString::fromLatin1(dialog));
    Click(close);
  });
  Guest::DoubleClickCell(Guest::Find<GridView>(Guest::Window(), table), row, 0);
  guest_.EndStep(QString::fromLatin1(dialog));
}

void DialogTour::InTheScreenOf(QWidget& button, const char* screen, const std::function<void()>& work) {
  guest_.ExpectScreen(QString::fromLatin1(screen), [&](QWidget&) { work(); });
  Guest::Click(button);
  // A field of a window that is not active yet is not scrolled to when it gets the keyboard.
  if (!test::BecomesActive(Guest::Front())) {
    throw TourFailure(
        QStringLiteral("the window behind %1 does not become active again").arg(QString::fromLatin1(screen)));
  }
}

void DialogTour::NotingAll(const std::function<void()>& edit) {
  const ParamStoreTable before = ParamStore;
  edit();
  const auto noteText = [this](int first, const ParamTextRecord& record) {
    std::string bytes = ToCodePage(TrimRight(record.Value));
    bytes.resize(static_cast<std::size_t>(record.ByteLength));
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) { // the first byte is the low one
      changed_[first + static_cast<int>(at / 2)] =
          static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1]) << 8;
    }
  };
  for (std::size_t s = 0; s < before.size(); ++s) {
    for (std::size_t i = 0; i < before[s].Items.size(); ++i) {
      const std::vector<ParamNumRecord>& now = ParamStore[s].Items[i].NumRecords;
      for (std::size_t r = 0; r < now.size(); ++r) {
        if (now[r].Value != before[s].Items[i].NumRecords[r].Value) {
          changed_[RegisterOf(ParamStore[s], static_cast<int>(i), now[r])] = InTheRecorder(now[r].Value);
        }
      }
      const std::vector<ParamTextRecord>& texts = ParamStore[s].Items[i].TextRecords;
      for (std::size_t r = 0; r < texts.size(); ++r) {
        if (texts[r].Value != before[s].Items[i].TextRecords[r].Value) {
          noteText(RegisterOf(ParamStore[s], static_cast<int>(i), texts[r]), texts[r]);
        }
      }
    }
  }
}

void DialogTour::EditTheSideDialogs() {
  const auto in = [&](const char* table, int row, const char* dialog, const std::function<void()>& work) {
    InTheDialogOf(table, row, dialog, "btnCancel", [&] {
      work();
      Click("btnOk");
    });
  };
  Guest::ChoosePage(DisplayPage);
  in("fgrGroup", 1, "frmGroupSetting", [] {
    Guest::ChooseRow("cmbGC_3", 7);
    Guest::ChooseRow("cmbTrendDivision", 11);
  });
  Expect("G", "GC04", 7, 1);
  Expect("T", "TBUN", 12, 1);
  ExpectCell("fgrGroup", 1, 6, QStringLiteral("ﾁｬﾈﾙ７"));
  in("fgrMess", 4, "frmMsgSetting", [] {
    Guest::ChooseRow("cmbTiming", 3);
    Guest::ChooseRow("cmbTiming1", 5);
    Guest::ChooseRow("cmbTiming2", 2);
  });
  Expect("M", "MTM1", 3, 4);
  Expect("M", "MTM2", 5, 4);
  Expect("M", "MTM3", 2, 4);
  NotingAll([&] { in("fgrUnit", 0, "frmUnitSetting", [] { TypeInto("txtMessage", "l/100km"); }); });
  ExpectCell("fgrUnit", 0, 1, QStringLiteral("l/100km"));
  Guest::ChoosePage(OperationPage);
  in("fgrConst", 6, "frmConstSetting", [] { TypeInto("txtMessage", "12.345"); });
  Expect("N", "CONS", 12345, 6);
  Expect("N", "CONP", 3, 6);
  ExpectCell("fgrConst", 6, 1, QStringLiteral("12.345"));
  Guest::ChoosePage(MailPage);
  const ParamNumRecord* addresses = FindNumRecord("X", 2, "EADD");
  const int mask = addresses == nullptr ? 0 : addresses->Value ^ 0x80;
  in("flxEMailTriggerSetting", 2, "frmEMailTriggerSetting",
     [] { Guest::Click(Guest::Find<QCheckBox>("chkRecvMailAddNo_7")); });
  Expect("X", "EADD", mask, 2);
}

void DialogTour::SetUpAChannel() {
  constexpr int Channel = 8; // the ninth has no pair
  constexpr int KindOther = 40;
  const bool kov = ModelCode == "KOV";
  Guest::ChoosePage(ChannelPage);
  NotingAll([&] {
    InTheDialogOf("fgrCh", Channel, "frmChSetting", "CancelButton", [&] {
      ChooseLastRow("cmbInputType"); // another channel
      Guest::ChooseRow("cmbInputOtch", 2);
      InTheScreenOf(Guest::Find<QPushButton>("cmdUnitSelect"), "frmSelectUnit", [&] {
        guest_.Picture(QStringLiteral("frmSelectUnit"));
        Guest::DoubleClickCell(Guest::Find<GridView>("fgrUnit"), 6, 2); // kPa
      });
      Guest::ChooseRow("cmbAlarmType1", 1);
      if (kov) {
        Guest::ChooseRow("cmbTaisu", 1);
        TypeInto("txtIndMin", "0");
        TypeInto("txtIndMax", "2");
        TypeInto("txtRecRangeMin", "0");
        TypeInto("txtRecRangeMax", "2");
        InTheScreenOf(Guest::Find<QLabel>("lblAlarmSetInput1"), "frmAlarmSetting", [&] {
          TypeInto("txtAlarmSet", "1.00");
          Guest::ChooseRow("cmbAlarmSet", 10);
          guest_.Picture(QStringLiteral("frmAlarmSetting"));
          Click("btnOk");
        });
      } else {
        TypeInto("txtAlarmSet1", "12.5");
      }
      Click("OKButton");
    });
  });
  Expect("C", "TYPE", KindOther, Channel);
  Expect("C", "OTCH", 2, Channel);
  Expect("C", "UNIT", 38, Channel);
  Expect("A", "A1TY", 1, Channel);
  if (kov) {
    Expect("C", "TAIS", 1, Channel);
    Expect("C", "SMAX", 2, Channel);
    // The middle of the measuring range, which the kind has set to its default of 0 to 5000.
    Expect("A", "A1VL", 2500, Channel);
  }
  constexpr int KindColumn = 4;
  ExpectCell("fgrCh", Channel, KindColumn, ToQt(LoadText(31040)));
}

void DialogTour::SetUpAnOperationChannel() {
  constexpr int Row = 1;
  Guest::ChoosePage(OperationPage);
  NotingAll([&] {
    InTheDialogOf("fgrOperationChSet", Row, "frmOperationChSet", "CancelButton", [&] {
      Click("cmdFormulaDel1");
      Click("cmdFormulaDel2");
      InTheScreenOf(Guest::Find<QPushButton>("cmdFormulaSet1"), "frmFormula", [&] {
        const auto setTerm = [&](const std::function<void()>& choose) {
          InTheScreenOf(Guest::Find<QPushButton>("btnSet"), "frmOpSetting", [&] {
            choose();
            guest_.Picture(QStringLiteral("frmOpSetting"));
            Click("btnOk");
          });
        };
        setTerm([] { Guest::ChooseRow("cmbInputChNo1", 0); });
        Click("btnNext");
        setTerm([] {
          Guest::ChooseRow("cmbOpFourRules", 1);
          Guest::ChooseRow("cmbOpContents", 8); // the larger one of two
          Guest::ChooseRow("cmbInputChNo1", 2);
          Guest::ChooseRow("cmbInputChNo2", 3);
        });
        guest_.Picture(QStringLiteral("frmFormula"));
        Click("OKButton");
      });
      Click("OKButton");
    });
  });
  constexpr int FormulaColumn = 4;
  const QString shown = QStringLiteral("C01+MAX(C03,C04)");
  ExpectCell("fgrOperationChSet", Row, FormulaColumn, shown);
  ExpectCell("fgrOperationChSet", Row, FormulaColumn + 1, QString());
}

void DialogTour::CopyAChannel() {
  constexpr int From = 2;
  constexpr int To = 8;
  Guest::ChoosePage(ChannelPage);
  NotingAll([&] {
    Guest::ClickCell(Guest::Find<GridView>(Guest::Window(), "fgrCh"), From, 2);
    Guest::Choose("menuEdit", "smenuCopy");
    Guest::ClickCell(Guest::Find<GridView>(Guest::Window(), "fgrCh"), To, 2);
    guest_.ExpectBox(ToQt(Replace(Replace(LoadText(20112), u"@COPYCH@", DecimalText(From + 1)), u"@CHNOSAKI@",
                                  DecimalText(To + 1))),
                     QMessageBox::Ok);
    Guest::Choose("menuEdit", "smenuPaste");
    guest_.EndStep(QStringLiteral("copy and paste"));
  });
  const ParamNumRecord* source = FindNumRecord("C", From, "TYPE");
  Expect("C", "TYPE", source->Value, To);
}

} // namespace loader::tour
