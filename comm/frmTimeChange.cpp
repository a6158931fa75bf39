#include "comm/frmTimeChange.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <span>

#include "channel/modUtil.h"
#include "comm/RecorderCommands.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "platform/Platform.h"

namespace loader {

namespace {

constexpr int YearDigits = 2;
constexpr int Century = 2000;

struct FieldRange {
  TextField TimeChangeScreen::*field;
  int lowest;
  int highest;
};
constexpr std::array<FieldRange, 5> FieldRanges{{
    {&TimeChangeScreen::txtYear, 0, 99},
    {&TimeChangeScreen::txtMonth, 1, 12},
    {&TimeChangeScreen::txtDay, 1, 31},
    {&TimeChangeScreen::txtHour, 0, 23},
    {&TimeChangeScreen::txtMinute, 0, 59},
}};

constexpr std::span<const FieldRange> TimeOfDay = std::span(FieldRanges).last<2>();

void SetCaptions(TimeChangeScreen& screen) {
  screen.caption = LoadText(10020);
  screen.Label3.caption = LoadText(18087);
  screen.lblYear.caption = LoadText(18088);
  screen.lblMonth.caption = LoadText(18089);
  screen.lblDay.caption = LoadText(18090);
  screen.lblHour.caption = LoadText(18091);
  screen.lblMinute.caption = LoadText(18092);
  screen.cmdOK.caption = LoadText(19622);
  screen.cmdCancel.caption = LoadText(19620);
}

void ShowNow(TimeChangeScreen& screen) {
  const DateAndTime now = ThePlatform().clock.Now();
  screen.txtYear.text = PaddedDecimal(now.year % 100, YearDigits);
  screen.txtMonth.text = DecimalText(now.month);
  screen.txtDay.text = DecimalText(now.day);
  screen.txtHour.text = DecimalText(now.hour);
  screen.txtMinute.text = DecimalText(now.minute);
}

bool CheckField(TextField& field, const FieldRange& range) {
  const bool good = CheckValueField(0, range.lowest, range.highest, field);
  if (!good) {
    WaitChk();
  }
  return good;
}

void CheckYear(TextField& year, const FieldRange& range) {
  year.text = HalfWidthNumber(year.text);
  // A digit alone: anything else of one character is refused like any other field's.
  if (year.text.size() == 1 && IsDigit(year.text.front())) {
    year.text.insert(0, 1, u'0');
  }
  CheckField(year, range);
}

// One or two digits.
std::optional<std::uint8_t> ShortNumber(std::u16string_view text) {
  const std::u16string half = HalfWidthNumber(text);
  const std::u16string_view digits = Trim(half);
  const bool good =
      !digits.empty() && digits.size() <= 2 && std::all_of(digits.begin(), digits.end(), IsDigit);
  return good ? std::optional(static_cast<std::uint8_t>(RequireInt16(digits))) : std::nullopt;
}

// The date of the three fields, when it is one of this century's calendar.
bool TakeDate(const TimeChangeScreen& screen, ClockSetting& clock) {
  const std::optional<std::uint8_t> year = ShortNumber(screen.txtYear.text);
  const std::optional<std::uint8_t> month = ShortNumber(screen.txtMonth.text);
  const std::optional<std::uint8_t> day = ShortNumber(screen.txtDay.text);
  if (!year || !month || !day) {
    return false;
  }
  clock.year = *year;
  clock.month = *month;
  clock.day = *day;
  return std::chrono::year_month_day(std::chrono::year(Century + *year), std::chrono::month(*month),
                                     std::chrono::day(*day))
      .ok();
}

void SetClock(TimeChangeScreen& screen, const FlowCallbacks& mainWindow, const ClockFlow& setClock) {
  ClockSetting clock;
  if (!TakeDate(screen, clock)) {
    ShowMessage(LoadText(62500));
    return;
  }
  // Once more: a field that was left while the guard behind another message ran has not been checked.
  for (const FieldRange& range : TimeOfDay) {
    if (!CheckField(screen.*range.field, range)) {
      return;
    }
  }
  const std::optional<std::uint8_t> hour = ShortNumber(screen.txtHour.text);
  const std::optional<std::uint8_t> minute = ShortNumber(screen.txtMinute.text);
  if (!hour || !minute) {
    return;
  }
  clock.hour = *hour;
  clock.minute = *minute;
  setClock(clock, mainWindow);
}

} // namespace

TimeChangeScreen::TimeChangeScreen(const FlowCallbacks& mainWindow, const ClockFlow& setClock)
    : Screen("frmTimeChange") {
  SetCaptions(*this);
  ShowNow(*this);
  for (const FieldRange& range : FieldRanges) {
    TextField& field = this->*range.field;
    field.onLostFocus = [&field, &range] { CheckField(field, range); };
  }
  txtYear.onLostFocus = [this] { CheckYear(txtYear, FieldRanges[0]); };
  cmdOK.onClick = [this, &mainWindow, &setClock] {
    RunAlone(flowUnderWay, [&] { SetClock(*this, mainWindow, setClock); });
  };
  // Behind this screen the main window is free: it stays until its exchange has ended.
  onCloseQuery = [this] {
    if (flowUnderWay) {
      ShowMessage(LoadText(20102));
    }
    return !flowUnderWay;
  };
  cmdCancel.onClick = [this] { ThePlatform().screens.Close(*this); };
}

void ShowTimeChange(const FlowCallbacks& mainWindow, const ClockFlow& setClock) {
  TimeChangeScreen screen(mainWindow, setClock);
  ThePlatform().screens.ShowModal(screen);
}

} // namespace loader
