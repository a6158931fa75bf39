#include "dialogs/frmSelectUnit.h"

#include <cmath>

#include "channel/Adjustable.h"
#include "core/TextTable.h"
#include "core/modIni.h"
#include "platform/Platform.h"

namespace loader {

namespace {

constexpr int UnitColumns = 6;

void LayOut(Grid& grid, int units, int columns) {
  grid.FixedRows = 0;
  grid.FixedCols = 0;
  grid.Resize((units + columns - 1) / columns, columns);
  const auto width = static_cast<int>(std::lround(MeasureTextWidth(u"WWWWWWW") * 1.2));
  for (int column = 0; column < columns; ++column) {
    grid.SetColWidth(column, width);
  }
  for (int unit = 0; unit < units; ++unit) {
    grid.SetText(unit / columns, unit % columns, UnitNames.at(static_cast<std::size_t>(unit)));
  }
}

void TakeCurrentCell(SelectUnitScreen& screen) {
  const Grid& grid = screen.fgrUnit;
  if (grid.TextMatrix(grid.Row, grid.Col).empty()) {
    screen.refused = true; // a number that is no unit yet
    return;
  }
  screen.chosen = grid.Row * UnitColumns + grid.Col;
  ThePlatform().screens.Close(screen);
}

} // namespace

SelectUnitScreen::SelectUnitScreen(int unit, int inputType, bool temperatureOnly) : Screen("frmSelectUnit") {
  caption = LoadText(10006);
  btnOk.caption = LoadText(19621);
  btnCancel.caption = LoadText(19620);
  const bool temperatures = temperatureOnly || inputType < FirstOtherKind;
  const int units = temperatures ? TemperatureUnits : static_cast<int>(UnitNames.size());
  LayOut(fgrUnit, units, temperatures ? TemperatureUnits : UnitColumns);
  const int current = unit >= 0 && unit < units ? unit : 0;
  fgrUnit.SelectRow(current / UnitColumns);
  fgrUnit.Col = current % UnitColumns;
  RequestFocus(fgrUnit);

  fgrUnit.onDoubleClick = btnOk.onClick = [this] { TakeCurrentCell(*this); };
  btnCancel.onClick = [this] { ThePlatform().screens.Close(*this); };
}

int SelectUnit(int unit, int inputType, bool temperatureOnly) {
  SelectUnitScreen screen(unit, inputType, temperatureOnly);
  ThePlatform().screens.ShowModal(screen);
  return screen.chosen;
}

} // namespace loader
