#include "channelscreens/frmOperationChSet.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "channelscreens/SharedFields.h"
#include "channelscreens/frmFormula.h"
#include "core/ModelProfile.h"
#include "core/TextTable.h"

namespace loader {

namespace {

constexpr auto Fields = WithSharedFields(std::to_array<FieldRow>({
    {.control = "txtChannelTag", .section = "C", .tag = "TAG", .tooLong = 62400, .forbidden = 62401},
    {.control = "txtChannelTag2", .section = "C", .tag = "TAG2", .tooLong = 62400, .forbidden = 62401},
    {.control = "txtSekiTag", .section = "C", .tag = "STAG", .tooLong = 62408, .forbidden = 62409},
}));

// Another order than that of the measuring channels: a refused value has other ones stored before it.
constexpr auto Applied = std::to_array<std::string_view>({
    "TAG",  "TAG2", "COLR", "FILT", "UNIT", "MMIN", "MMAX", "SMIN", "SMAX", "POIN", "TAIS",
    "ROOT", "PVSI", "PVKA", "RMIN", "RMAX", "RECO", "RECM", "SUBC", "FTIO", "STAG", "SEKI",
    "STYP", "SDIG", "SBAS", "SRES", "SEUN", "SSCL", "SECU", "SRIN", "A1TY", "A1VL", "A1RL",
    "A2TY", "A2VL", "A2RL", "A3TY", "A3VL", "A3RL", "A4TY", "A4VL", "A4RL",
});

constexpr auto Labels = std::to_array<CaptionOf>({
    {"lblFormulaName1", 18160},
    {"lblFormulaName2", 18161},
    {"lblFormulaName3", 18162},
    {"lblFormulaName4", 18163},
});

constexpr auto Frames = std::to_array<CaptionOf>({
    {"fraCh", 18158},
    {"fraFormula", 18159},
});

ChannelScreenDesign Design() {
  // Channel 19 on every model, and one text for every model: deliberate. On RUG channel 19 is a measuring
  // channel; the screen shows it by the rules of an operation channel, without formulas.
  constexpr int TopChannel = 18;
  return {.name = "frmOperationChSet",
          .caption = 10002,
          .operation = true,
          .channels = {.first = Profile.FirstOperationChannel - 1,
                       .last = Profile.FirstOperationChannel + Profile.OperationChannelCount - 2,
                       .top = TopChannel},
          .entryTexts = {62402, 62403},
          .subtraction = 62404,
          .fields = Fields,
          .applied = Applied,
          .labels = Labels,
          .frames = Frames};
}

// The item of section "O"; of a channel without formulas one that does not exist.
int FormulaItem(const OperationChSetScreen& screen) {
  return screen.browsing.entry - (Profile.FirstOperationChannel - 1);
}

// What the store holds; zeros where it has no formulas.
FormulaTable StoredFormulas(const OperationChSetScreen& screen) {
  FormulaTable table{};
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    static_cast<void>(FormulaText(table, FormulaItem(screen), FormulaModeStore, formula));
  }
  return table;
}

void ShowFormulaText(OperationChSetScreen& screen, int formula) {
  screen.lblFormula[static_cast<std::size_t>(formula - 1)].caption =
      FormulaText(screen.FormulaWork, FormulaItem(screen), FormulaModeDialog, formula);
}

void LoadFormulas(OperationChSetScreen& screen) {
  screen.FormulaWork = StoredFormulas(screen);
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    ShowFormulaText(screen, formula);
  }
}

void DeleteFormula(OperationChSetScreen& screen, int formula) {
  screen.FormulaWork[static_cast<std::size_t>(formula - 1)] = {};
  ShowFormulaText(screen, formula);
}

void MakeFormulaControls(OperationChSetScreen& screen) {
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    const std::string number = std::to_string(formula);
    screen.lblFormula.emplace_back(screen, "lblFormula" + number);
    Button& set = screen.cmdFormulaSet.emplace_back(screen, "cmdFormulaSet" + number);
    set.caption = LoadText(19622);
    set.onClick = [&screen, formula] {
      ShowFormula(screen.FormulaWork, formula);
      ShowFormulaText(screen, formula);
    };
    Button& remove = screen.cmdFormulaDel.emplace_back(screen, "cmdFormulaDel" + number);
    remove.caption = LoadText(19627);
    remove.onClick = [&screen, formula] { DeleteFormula(screen, formula); };
  }
}

} // namespace

OperationChSetScreen::OperationChSetScreen(std::function<void()> applied)
    : ChannelScreen(Design(), std::move(applied)) {
  MakeFormulaControls(*this);
  onLoad = [this] { LoadFormulas(*this); };
  othersChanged = [this] { return FormulaWork != StoredFormulas(*this); };
  storeOthers = [this] { StoreFormulas(FormulaWork, FormulaItem(*this)); };
}

void ShowOperationChSet(int channel, std::function<void()> applied) {
  OperationChSetScreen screen(std::move(applied));
  ShowChannelScreen(screen, channel);
}

std::span<const FieldRow> OperationChannelFields() {
  return Fields;
}

} // namespace loader
