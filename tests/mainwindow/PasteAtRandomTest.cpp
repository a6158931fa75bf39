// Random users: whatever was copied, forgotten and changed before, a paste writes its target and the partner
// that it has announced, and nothing else.
#include <random>
#include <set>

#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

// "C4": the item of a section that a paste may write.
using Places = std::set<std::string>;
std::string Place(std::string_view section, int item) {
  return std::string(section) + std::to_string(item);
}

Places ChangedSince(const ParamStoreTable& before) {
  Places places;
  for (std::size_t s = 0; s < before.size(); ++s) {
    for (std::size_t i = 0; i < before[s].Items.size(); ++i) {
      const ParamItem& old = before[s].Items[i];
      const ParamItem& now = ParamStore[s].Items[i];
      const auto differ = [](const auto& left, const auto& right) {
        return left.Value != right.Value || left.ReadValue != right.ReadValue ||
               left.DefaultValue != right.DefaultValue;
      };
      bool changed = false;
      for (std::size_t n = 0; n < old.NumRecords.size(); ++n) {
        changed = changed || differ(old.NumRecords[n], now.NumRecords[n]);
      }
      for (std::size_t n = 0; n < old.TextRecords.size(); ++n) {
        changed = changed || differ(old.TextRecords[n], now.TextRecords[n]);
      }
      if (changed) {
        places.insert(Place(Trim(std::string_view(before[s].Code)), static_cast<int>(i)));
      }
    }
  }
  return places;
}

class RandomUser : public MainWindow, public testing::WithParamInterface<int> {
protected:
  int Upto(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

  void PutAnything() {
    ParamSection& section = ParamStore[random() % ParamStore.size()];
    ParamItem& item = section.Items[random() % section.Items.size()];
    if (!item.NumRecords.empty()) {
      item.NumRecords[random() % item.NumRecords.size()].Value = static_cast<std::int16_t>(Upto(60) - 5);
    }
    if (!item.TextRecords.empty()) {
      SetText(item.TextRecords[random() % item.TextRecords.size()], DecimalText(Upto(1000)), SlotValue);
    }
    constexpr std::array<int, 12> Kinds{0, 1, 12, 20, 21, 30, 31, 32, 33, 34, 40, -7};
    Put("C", Upto(AllChannels()), "TYPE", Kinds[random() % Kinds.size()]);
  }
  void ChooseARow() {
    constexpr std::array<Grid ParamLoaderScreen::*, 6> Tables{
        &ParamLoaderScreen::fgrCh,   &ParamLoaderScreen::fgrOperationChSet, &ParamLoaderScreen::fgrMess,
        &ParamLoaderScreen::fgrUnit, &ParamLoaderScreen::fgrGroup,          &ParamLoaderScreen::fgrConst};
    constexpr std::array<int, 6> Pages{ChannelPage, OperationPage, DisplayPage,
                                       DisplayPage, DisplayPage,   OperationPage};
    const std::size_t table = random() % Tables.size();
    Grid& grid = Window().*Tables[table];
    if (Window().tbsParameter.current != Pages[table]) {
      user.ChoosePage(Window().tbsParameter, Pages[table]);
    }
    user.MoveTo(grid);
    grid.SelectRow(Upto(grid.Rows()));
  }

  // What a paste may write now.
  Places Allowed() {
    const auto entry = [](const Grid& grid) { return grid.Row - grid.FixedRows; };
    switch (Window().tbsParameter.current) {
    case ChannelPage: {
      const int target = entry(Window().fgrCh);
      // Its two neighbours in a pair are told apart by the warning.
      return {Place("C", target), Place("A", target)};
    }
    case OperationPage: {
      const int target = entry(Window().fgrOperationChSet);
      const int item = target + (ModelCode == "KOV" ? 18 : 36);
      return {Place("C", item), Place("A", item), Place("O", target)};
    }
    case DisplayPage:
      return Window().CopyKind == CopyKinds::Messages ? Places{Place("M", entry(Window().fgrMess))}
             : Window().CopyKind == CopyKinds::Units  ? Places{Place("U", entry(Window().fgrUnit))}
                                                      : Places{};
    default:
      return {};
    }
  }

  std::mt19937 random{static_cast<unsigned>(GetParam())};
};
INSTANTIATE_TEST_SUITE_P(Seeds, RandomUser, testing::Range(0, 20));

// Answers every question, and keeps the number of the channel that the last one warned of.
class AnsweringBoxes final : public MessageBoxes {
public:
  BoxAnswer Show(std::u16string_view text, BoxButtons, BoxIcon, std::u16string_view) override {
    ++shown;
    const std::size_t line = text.find(u'\n');
    warned = line == std::u16string_view::npos
                 ? 0
                 : *ParseInt16(text.substr(line + 1, text.find(u" CH", line) - line - 1));
    return answer;
  }
  BoxAnswer answer = BoxAnswer::Ok;
  int warned = 0; // channel number
  int shown = 0;
};

TEST_P(RandomUser, WritesNothingButTheTargetAndTheAnnouncedPartner) {
  Open(GetParam() % 2 == 0 ? "KOV" : "RUG");
  AnsweringBoxes boxes;
  Platform& scripted = ThePlatform();
  Platform answering{
      boxes,          scripted.fileDialogs, scripted.screens, scripted.timers,  scripted.eventLoop,
      scripted.clock, scripted.MSComm1,     scripted.winSock, scripted.USBOCX1, scripted.programFolder};
  SetPlatform(&answering);
  int pastes = 0;

  for (int step = 0; step < 400; ++step) {
    switch (Upto(5)) {
    case 0:
      PutAnything();
      break;
    case 1:
      ChooseARow();
      break;
    case 2:
      user.Click(Window().smenuCopy);
      break;
    case 3:
      user.ChoosePage(Window().tbsParameter, Upto(PageCount));
      break;
    default: {
      boxes.answer = Upto(4) == 0 ? BoxAnswer::Cancel : BoxAnswer::Ok;
      boxes.warned = 0;
      boxes.shown = 0;
      const ParamStoreTable before = ParamStore;
      Places allowed = boxes.answer == BoxAnswer::Ok ? Allowed() : Places{};
      user.Click(Window().smenuPaste);
      if (boxes.shown == 0) {
        allowed.clear();
      }
      if (boxes.warned != 0 && boxes.answer == BoxAnswer::Ok) {
        const int target = Window().fgrCh.Row - Window().fgrCh.FixedRows + 1;
        EXPECT_EQ(1, std::abs(target - boxes.warned));
        allowed.insert(Place("C", boxes.warned - 1));
        allowed.insert(Place("A", boxes.warned - 1));
      }
      const Places changed = ChangedSince(before);
      for (const std::string& place : changed) {
        EXPECT_TRUE(allowed.contains(place)) << place << " at step " << step;
      }
      pastes += changed.empty() ? 0 : 1;
    } break;
    }
  }
  SetPlatform(&scripted);
  EXPECT_GT(pastes, 5);
}

} // namespace
} // namespace loader::test
