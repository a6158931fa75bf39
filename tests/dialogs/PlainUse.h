// A browsing dialog as its user is told that it works, in the plainest words: rows, texts, a store. It knows
// nothing of the program's dialogs, and judges them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/dialogs/DialogFixture.h"

namespace loader::test {

// --- What a dialog has

enum class WithoutARow { Kept, Zero, ZeroWhenHidden };

struct PlainList {
  const char* control;
  const char* section;
  const char* tag;
  int first = 0;                                    // the value of row 0
  int (*rows)(const ModelFacts& model, int timing); // `timing`: the row of the list that decides
  int decider = -1;                                 // which of the dialog's lists that is
  bool specials = false;                            // a data slot
  WithoutARow withoutARow = WithoutARow::Kept;
};
struct PlainText {
  const char* control;
  const char* section;
  const char* tag;
  int bytes;
  bool trimmed;
};
struct PlainKind {
  BrowsedDialog dialog;
  std::vector<PlainList> lists;
  std::vector<PlainText> texts;
  bool boxes = false;
  bool constant = false;
};
inline void PrintTo(const PlainKind& kind, std::ostream* out) {
  *out << kind.dialog.name;
}

// --- Texts

inline std::u16string PlainTrim(std::u16string text, bool left, bool right) {
  while (right && text.ends_with(u' ')) {
    text.pop_back();
  }
  while (left && text.starts_with(u' ')) {
    text.erase(0, 1);
  }
  return text;
}
inline int PlainBytes(std::u16string_view text) {
  int bytes = 0;
  for (const char16_t character : text) {
    bytes += character < 0x80 ? 1 : 2;
  }
  return bytes;
}
inline std::u16string PlainNumber(int number) {
  return FromUtf8(std::to_string(number));
}
// 150 at position 2 is "1.50".
inline std::u16string PlainValue(int value, int position) {
  std::u16string digits = PlainNumber(value < 0 ? -value : value);
  while (static_cast<int>(digits.size()) <= position) {
    digits.insert(0, u"0");
  }
  if (position > 0) {
    digits.insert(digits.size() - static_cast<std::size_t>(position), u".");
  }
  return (value < 0 ? u"-" : u"") + digits;
}

// --- The dialog in use

class PlainUse {
public:
  struct ListNow {
    int row = -1;
    int rows = 0;
    bool picked = false;
  };
  struct TextNow {
    std::u16string text;
    std::u16string shown; // by the store
  };

  PlainUse(PlainKind what, const ModelFacts& facts)
      : kind(std::move(what)), model(facts), store(ParamStore), units(UnitNames) {}

  void Load(int index) {
    entry = index;
    numberEdited = false;
    number = FromUtf8(kind.dialog.beforeNumber) + PlainNumber(entry + 1);
    for (std::size_t n = 0; n < kind.lists.size(); ++n) {
      const PlainList& list = kind.lists[n];
      lists[n] = {-1, RowsOf(list), false};
      lists[n].row = RowOf(list, Value(list.section, list.tag), lists[n].rows);
    }
    for (std::size_t n = 0; n < kind.texts.size(); ++n) {
      texts[n].shown = kind.constant ? ConstantText()
                                     : PlainTrim(Text(kind.texts[n].section, kind.texts[n].tag), false, true);
      texts[n].text = texts[n].shown;
    }
    if (kind.boxes) {
      boxes = Value("X", "EADD") & 255;
    }
  }

  // Each action says which message comes of it; empty: none. `done` tells whether it was acted on.
  std::u16string MoveToNothing() {
    std::u16string message = Leave(Nothing);
    focus = done ? Nothing : focus;
    return message;
  }
  std::u16string Pick(std::size_t list, int row) {
    if (lists[list].rows == 0) { // hidden
      return {};
    }
    std::u16string message = MoveToNothing();
    // A number that was left may have brought an entry without that row.
    if (!done || lists[list].row == row || row >= lists[list].rows) {
      return message;
    }
    lists[list].row = row;
    lists[list].picked = true;
    for (std::size_t n = 0; n < kind.lists.size(); ++n) {
      if (kind.lists[n].decider == static_cast<int>(list)) {
        const int rows = RowsOf(kind.lists[n]);
        lists[n] = {rows == 0 ? -1 : 0, rows, true};
      }
    }
    return message;
  }
  std::u16string Type(int field, std::u16string_view typed) {
    std::u16string message = Leave(field);
    if (done) {
      focus = field;
      if (field == Number) {
        number = typed;
        numberEdited = true;
      } else {
        texts[static_cast<std::size_t>(field)].text = typed;
      }
    }
    return message;
  }
  std::u16string Toggle(int box) {
    std::u16string message = MoveToNothing();
    boxes ^= done ? 1 << box : 0;
    return message;
  }
  enum class Move { Top, Previous, Next, Reset };
  std::u16string Go(Move move) {
    std::u16string message = MoveToNothing();
    if (done) {
      const int last = model.*kind.dialog.entries - 1;
      Load(move == Move::Top        ? 0
           : move == Move::Previous ? std::max(entry - 1, 0)
           : move == Move::Next     ? std::min(entry + 1, last)
                                    : entry);
    }
    return message;
  }
  std::u16string Apply() {
    std::u16string message = MoveToNothing();
    if (!done) {
      return message;
    }
    if (kind.constant) {
      return ApplyConstant();
    }
    for (int field = 0; field < static_cast<int>(kind.texts.size()); ++field) {
      message = Check(field);
      if (!message.empty()) {
        focus = field;
        return message;
      }
    }
    if (Changed()) {
      Store();
    }
    if (kind.boxes) {
      told.push_back(entry + 1);
    }
    if (std::string_view(kind.dialog.tag) == "UNIT") {
      units.at(static_cast<std::size_t>(156 + entry)) = PlainTrim(texts[0].text, true, true);
    }
    Load(entry);
    return {};
  }

  static constexpr int Nothing = -1;
  static constexpr int Number = 100;

  const PlainKind kind;
  const ModelFacts model;
  ParamStoreTable store;
  Catalogue units;
  std::vector<int> told;
  int entry = 0;
  std::u16string number;
  bool numberEdited = false;
  std::vector<ListNow> lists = std::vector<ListNow>(kind.lists.size());
  std::vector<TextNow> texts = std::vector<TextNow>(kind.texts.size());
  int boxes = 0;
  int focus = Nothing; // a text by its place
  bool done = true;

private:
  ParamItem& Item(std::string_view section) {
    for (ParamSection& some : store) {
      if (some.Code.substr(0, some.Code.find(' ')) == section) {
        return some.Items.at(static_cast<std::size_t>(entry));
      }
    }
    throw std::logic_error("no such section");
  }
  std::int16_t& Value(std::string_view section, std::string_view tag) {
    for (ParamNumRecord& record : Item(section).NumRecords) {
      if (record.Tag == tag) {
        return record.Value;
      }
    }
    throw std::logic_error("no such number");
  }
  std::u16string& Text(std::string_view section, std::string_view tag) {
    for (ParamTextRecord& record : Item(section).TextRecords) {
      if (record.Tag == tag) {
        return record.Value;
      }
    }
    throw std::logic_error("no such text");
  }

  [[nodiscard]] int RowsOf(const PlainList& list) const {
    return list.rows(model, list.decider < 0 ? 0 : lists[static_cast<std::size_t>(list.decider)].row);
  }
  static int RowOf(const PlainList& list, int value, int rows) {
    if (list.specials && value >= -32768 && value <= -32764) {
      return value + 32768 + 19;
    }
    const int row = value - list.first;
    return row >= 0 && row < rows ? row : -1;
  }
  std::u16string ConstantText() {
    const int position = Value("N", "CONP");
    const int value = Value("N", "CONS");
    return value == -32768 ? std::u16string()
                           : PlainValue(value, position < 0 || position > 4 ? 0 : position);
  }

  // The check of the text that has the focus, for another one that gets it.
  std::u16string Leave(int next) {
    done = true;
    if (focus == Nothing || focus == next) {
      return {};
    }
    std::u16string message = focus == Number ? LeaveNumber() : kind.constant ? u"" : Check(focus);
    done = message.empty();
    return message;
  }
  std::u16string LeaveNumber() {
    if (!numberEdited) {
      return {};
    }
    // Whole numbers, with blanks and ".0" at most; the tests type nothing else that is a number.
    std::u16string digits = PlainTrim(number, true, true);
    const bool half = digits.ends_with(u".5");
    if (half || digits.ends_with(u".0")) {
      digits.resize(digits.size() - 2);
    }
    if (digits.empty() || !std::ranges::all_of(digits, [](char16_t c) { return c >= u'0' && c <= u'9'; })) {
      number = PlainNumber(entry + 1);
      numberEdited = false;
      return u"数値のみで入力してください";
    }
    const int typed = std::stoi(ToUtf8(digits));
    const int last = model.*kind.dialog.entries;
    if (half || typed < 1 || typed > last) {
      return u"1 ～ " + PlainNumber(last) + u"の範囲で入力してください";
    }
    Load(typed - 1);
    return {};
  }
  std::u16string Check(int field) {
    const PlainText& rule = kind.texts[static_cast<std::size_t>(field)];
    std::u16string& text = texts[static_cast<std::size_t>(field)].text;
    text = rule.trimmed ? PlainTrim(text, true, true) : text;
    if (PlainBytes(text) > rule.bytes) {
      return u"半角" + PlainNumber(rule.bytes) + u"文字以下で入力してください";
    }
    return text.find(u',') != std::u16string::npos ? u"「,」は入力できません" : u"";
  }

  [[nodiscard]] bool TextChanged(std::size_t n) const {
    const TextNow& now = texts[n];
    return now.text != now.shown && !(kind.texts[n].trimmed && now.text == PlainTrim(now.shown, true, true));
  }
  bool Changed() {
    bool changed = kind.boxes && boxes != (Value("X", "EADD") & 255);
    for (const ListNow& list : lists) {
      changed = changed || list.picked;
    }
    for (std::size_t n = 0; n < texts.size(); ++n) {
      changed = changed || TextChanged(n);
    }
    return changed;
  }
  void Store() {
    for (std::size_t n = 0; n < lists.size(); ++n) {
      const PlainList& list = kind.lists[n];
      std::int16_t& value = Value(list.section, list.tag);
      const bool zero = list.withoutARow == WithoutARow::Zero ||
                        (list.withoutARow == WithoutARow::ZeroWhenHidden && lists[n].rows == 0);
      if (lists[n].row < 0) {
        value = zero ? std::int16_t{0} : value;
      } else if (lists[n].picked) {
        value = static_cast<std::int16_t>(lists[n].row + list.first);
      }
    }
    for (std::size_t n = 0; n < texts.size(); ++n) {
      if (TextChanged(n)) {
        std::u16string& text = Text(kind.texts[n].section, kind.texts[n].tag);
        text = texts[n].text;
        text.resize(64, u' ');
      }
    }
    if (kind.boxes && boxes != (Value("X", "EADD") & 255)) {
      Value("X", "EADD") = static_cast<std::int16_t>(boxes);
    }
  }
  // Digits with at most one point between them, or no number at all; the tests type nothing else.
  std::u16string ApplyConstant() {
    std::u16string& text = texts[0].text;
    text = PlainTrim(text, true, true);
    if (text.find_first_of(u"0123456789") == std::u16string::npos || text.ends_with(u',')) {
      focus = 0;
      return u"数字ではありません。";
    }
    const std::size_t point = std::min(text.find(u'.'), text.size());
    const int position = std::min(static_cast<int>(text.size() - std::min(point + 1, text.size())), 4);
    std::u16string digits = text.substr(0, point);
    if (position > 0) {
      digits += text.substr(point + 1, static_cast<std::size_t>(position));
    }
    const int value = std::stoi(ToUtf8(digits));
    if (value < -32767 || value > 32767) {
      focus = 0;
      return PlainValue(-32767, position) + u"から" + PlainValue(32767, position) + u"の値を入力してください";
    }
    text = PlainValue(value, position);
    if (text != texts[0].shown) {
      Value("N", "CONS") = static_cast<std::int16_t>(value);
      Value("N", "CONP") = static_cast<std::int16_t>(position);
      Load(entry);
    }
    return {};
  }
};

} // namespace loader::test
