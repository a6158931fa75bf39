// The main window over a hostile store: any number in every record, in any limits, records and sections that
// are not there, both models; then a user who types, chooses and turns pages.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "mainwindow/ParameterTables.h"
#include "mainwindow/SettingsPages.h"
#include "mainwindow/TableCells.h"
#include "mainwindow/frmParamLoader.h"
#include "operation/Formula.h"
#include "tests/fuzz/FuzzPlatform.h"
#include "tests/fuzz/FuzzStore.h"

namespace loader::fuzz {

namespace {

FuzzPlatform& OpenedPlatform() {
  static FuzzPlatform platform;
  static const bool opened = [] {
    const std::filesystem::path& folder = platform.MakeFolder();
    std::filesystem::copy_file(std::filesystem::path(LOADER_DATA_DIR) / "InitSet.Ini",
                               folder / "InitSet.Ini");
    StartWithShippedStore("KOV");
    OpenMainWindow();
    return true;
  }();
  static_cast<void>(opened);
  return platform;
}

std::vector<std::int16_t> Numbers() {
  std::vector<std::int16_t> numbers;
  ForEachRecord(
      ParamStore, [&](const ParamNumRecord& record) { numbers.push_back(record.Value); },
      [](const ParamTextRecord&) {});
  return numbers;
}

void CheckTables(FuzzPlatform& platform) {
  const ParamLoaderScreen& window = *frmParamLoader;
  const std::vector<std::int16_t> before = Numbers();
  BuildTables();
  RefreshAll();
  Require(Numbers() == before, "showing the store does not change it");
  Require(platform.boxes.Count() == 0, "showing the store tells nothing");
  Require(window.fgrCh.Rows() == window.fgrCh.FixedRows + Profile.ChannelCount,
          "the channel table has the model's channels");
  Require(window.fgrOperationChSet.Rows() ==
              window.fgrOperationChSet.FixedRows + Profile.OperationChannelCount,
          "the operation table has the model's channels");
  for (const Grid* grid : {&window.fgrCh, &window.fgrOperationChSet, &window.fgrConst, &window.fgrMess,
                           &window.fgrUnit, &window.fgrGroup, &window.flxEMailTriggerSetting}) {
    Require(grid->Redraw, "a table is drawn behind a fill");
  }
  for (const ListBox& list : window.lists) {
    Require(list.index >= -1 && list.index < static_cast<int>(list.items.size()),
            "a list shows one of its rows");
  }
}

const Field* FieldBehind(std::string_view control) {
  const auto& fields = frmParamLoader->settings.fields;
  const auto found = std::find_if(fields.begin(), fields.end(), [&](const Field& field) {
    return field.text != nullptr && field.text->name == control;
  });
  return found == fields.end() ? nullptr : &*found;
}

void TypeAndLeave(TextField& field, std::u16string_view text) {
  const Field* behind = FieldBehind(field.name);
  Require(behind != nullptr, "every field stands for a record");
  const ParamNumRecord* record = FindNumRecord(behind->row->section, behind->item, behind->tag);
  const std::int16_t before = record == nullptr ? std::int16_t{0} : record->Value;
  field.text = text;
  if (field.onChange) {
    field.onChange();
  }
  if (field.onLostFocus) {
    field.onLostFocus();
  }
  if (record != nullptr && record->Value != before) {
    Require(record->Value >= record->MinValue && record->Value <= record->MaxValue,
            "what a user typed is within its limits");
  }
}

// What reports say of the parameters of one section, whatever the store holds and whichever item is asked
// for.
void ReportAnywhere(FuzzInput& input) {
  const ParamSection section = ParamStore[input.Byte() % ParamStore.size()];
  const int number = input.Number16();
  const auto existing = static_cast<int>(static_cast<std::uint16_t>(number) % section.Items.size());
  for (const int item : {number, existing}) {
    for (const ParamNumRecord& record : section.Items.front().NumRecords) {
      for (const View view : {View::Table, View::Screen, View::Sheet}) {
        Require(ReportText(section.Code, item, record.Tag, view).size() < 200, "a value is a short text");
      }
      Require(!FullName(section.Code, item, record.Tag, Language::Japanese).empty(),
              "a parameter has a name");
    }
    for (const ParamTextRecord& record : section.Items.front().TextRecords) {
      Require(ReportText(section.Code, item, record.Tag).size() <= TextWidth,
              "a text is as wide as its record");
    }
  }
}

// Rows and formulas of any number, as a screen behind a table may ask for them.
void AskAnywhere(FuzzInput& input) {
  const int number = input.Number16();
  for (void (*fill)(int) : {FillChannelRow, FillOperationRow, FillConstantRow, FillMessageRow, FillUnitRow}) {
    fill(number);
  }
  const bool operation = input.Flag();
  const ChannelRow row = LookUpChannelRow(number, operation);
  for (const CellSource& cell : ChannelCells()) {
    for (const View view : {View::Table, View::Screen, View::Sheet}) {
      static_cast<void>(ParameterText(*cell.meaning, view, number, cell.tag, &row));
    }
  }
  static_cast<void>(ChannelShades(row));
  ReportAnywhere(input);
  const int mode = input.Choice(5);
  const int formula = input.Choice(6);
  FormulaTable formulas{};
  const std::u16string text = FormulaText(formulas, number, mode, formula);
  Require(MeasureTextWidth(text) >= 0, "a text has a width");
  const std::int16_t packed = input.Number16();
  const FormulaBytes bytes = FormulaSplit(packed);
  Require(FormulaCompose(bytes.high, bytes.low) == packed, "a term is packed as it is unpacked");
}

void UserStep(FuzzInput& input, FuzzPlatform& platform) {
  ParamLoaderScreen& window = *frmParamLoader;
  switch (input.Choice(7)) {
  case 0:
  case 1: {
    TextField& field = window.fields[input.Byte() % window.fields.size()];
    TypeAndLeave(field, FromCodePage(input.ShortText()));
    break;
  }
  case 2: {
    ListBox& list = window.lists[input.Byte() % window.lists.size()];
    SelectRow(list, input.Byte());
    break;
  }
  case 3:
    SelectPage(window.tbsParameter, input.Choice(PageCount));
    break;
  case 4:
    platform.time.Advance(input.Byte());
    break;
  case 6:
    AskAnywhere(input);
    break;
  default:
    for (Control* control : window.controls) {
      if (control->kind == ControlKind::Grid && control->onGotFocus) {
        control->onGotFocus();
      }
    }
    if (input.Choice(8) == 7) {
      SelectRow(window.cmbType, input.Choice(2)); // another model, with a fresh store
    }
  }
}

void RunOne(FuzzInput input) {
  FuzzPlatform& platform = OpenedPlatform();
  platform.boxes.shown.clear();
  const int model = input.Choice(8);
  StartWithShippedStore((model & 1) != 0 ? "RUG" : "KOV");
  if (model == 6) {
    ModelCode = "DAX"; // one that the pages do not know
  }
  FillStore(input);
  PatchStore(input);
  DropFromStore(input);
  CheckTables(platform);
  for (int step = 0; step < 32 && !input.Empty(); ++step) {
    UserStep(input, platform);
  }
  RequireSoundStore(ParamStore);
  platform.time.Advance(100); // the guard of the field checks ends
  Require(!WaitTimer2.Enabled, "the guard ends by itself");
}

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::RunOne(loader::fuzz::FuzzInput(data, size));
  return 0;
}
