#include "companion/Selection.h"

#include <algorithm>
#include <utility>

#include "core/ModelProfile.h"
#include "core/OwnTexts.h"
#include "core/Text.h"

namespace loader {

namespace {

char16_t Small(char16_t character) {
  return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character - u'A' + u'a') : character;
}
std::u16string Small(std::u16string_view text) {
  std::u16string small(text);
  std::ranges::transform(small, small.begin(), [](char16_t c) { return Small(c); });
  return small;
}

bool MatchesSmall(std::u16string_view text, std::u16string_view pattern) {
  std::size_t at = 0;
  std::size_t in = 0;
  std::size_t star = std::u16string_view::npos; // the last '*', and where its run of characters began
  std::size_t from = 0;
  while (at < text.size()) {
    if (in < pattern.size() && pattern[in] == u'*') {
      star = in++;
      from = at;
    } else if (in < pattern.size() && (pattern[in] == u'?' || pattern[in] == text[at])) {
      ++in;
      ++at;
    } else if (star != std::u16string_view::npos) {
      in = star + 1;
      at = ++from;
    } else {
      return false;
    }
  }
  return std::ranges::all_of(pattern.substr(std::min(in, pattern.size())),
                             [](char16_t c) { return c == u'*'; });
}

std::u16string WithoutBlanks(std::u16string_view text) {
  std::u16string without(text);
  std::erase(without, u' ');
  return without;
}

// The blanks of a name are its spelling: "CH19*" means the names of "CH 19" too.
bool MatchesName(std::u16string_view name, std::u16string_view pattern) {
  return MatchesSmall(Small(name), pattern) ||
         MatchesSmall(WithoutBlanks(Small(name)), WithoutBlanks(pattern));
}

// "3" or "1-6" behind a word.
bool ReadItems(std::u16string_view text, std::optional<int>& first, int& last) {
  const std::size_t dash = text.find(u'-');
  const auto from = ParseInt16(Trim(text.substr(0, dash)));
  const auto to = dash == std::u16string_view::npos ? from : ParseInt16(Trim(text.substr(dash + 1)));
  if (!from || !to || *from < 1 || *to < *from) {
    return false;
  }
  first = *from;
  last = *to;
  return true;
}

// The number that the screens give an item. A formula has the number of its channel.
int NumberOf(const ParameterRef& ref) {
  return ref.section == "O" ? Profile.FirstOperationChannel + ref.item : ref.item + 1;
}

// The word of an item's name, without the blanks and the number behind it: "グループ".
std::u16string_view ItemWord(OwnTextId id) {
  return Trim(OwnText(id));
}

} // namespace

const std::vector<SelectionWord>& SelectionWords() {
  static const std::vector<SelectionWord> words{
      {u"ch", "CAO"},
      {u"channel", "CAO"},
      {u"alarm", "A"},
      {u"formula", "O"},
      {u"group", "GTB"},
      {ItemWord(OwnTextId::ItemGroup), "GTB"},
      {u"trend", "T"},
      {u"bar", "B"},
      {u"general", "H"},
      {u"message", "M"},
      {ItemWord(OwnTextId::ItemMessage), "M"},
      {u"unit", "U"},
      {ItemWord(OwnTextId::ItemUnit), "U"},
      {u"di", "DI"},
      {u"input", "DI"},
      {u"totalizer", "EZ"},
      {u"constant", "N"},
      {u"network", "JK", Page::Network},
      {u"user", "K"},
      {ItemWord(OwnTextId::ItemUser), "K"},
      {u"mail", "JX", Page::Mail},
      {u"trigger", "X"},
      {u"master", "LY"},
      {u"slave", "Y"},
      {ItemWord(OwnTextId::ItemSlave), "Y"},
      {u"recorder", "PFS"},
  };
  return words;
}

Selection::Selection(std::u16string_view text) : text_(Trim(text)), pattern_(Small(text_)) {
  // The longest word first: "channel" begins with "ch".
  std::size_t length = 0;
  for (const SelectionWord& word : SelectionWords()) {
    if (!pattern_.starts_with(word.word) || word.word.size() < length) {
      continue;
    }
    std::u16string_view rest = Trim(std::u16string_view(pattern_).substr(word.word.size()));
    if (rest == u"s") { // "alarms"
      rest = {};
    }
    std::optional<int> first;
    int last = 0;
    if (rest.empty() || ReadItems(rest, first, last)) {
      length = word.word.size();
      words_ = {word};
      first_ = first;
      last_ = last;
    }
  }
}

bool Selection::Names(const ParameterRef& ref) const {
  if (words_.empty()) {
    return MatchesSmall(Small(Widen(KeyOf(ref))), pattern_) ||
           MatchesName(NameOf(ref, Language::Japanese), pattern_) ||
           MatchesName(NameOf(ref, Language::English), pattern_);
  }
  const SelectionWord& word = words_.front();
  if (word.sections.find(ref.section) == std::string_view::npos) {
    return false;
  }
  if (ref.section == "J" && word.page && PageOf(ref) != *word.page) {
    return false;
  }
  return !first_ || (NumberOf(ref) >= *first_ && NumberOf(ref) <= last_);
}

bool AnyNames(const std::vector<Selection>& selections, const ParameterRef& ref) {
  return std::ranges::any_of(selections, [&](const Selection& selection) { return selection.Names(ref); });
}

const Selection* FirstThatNamesNothing(const std::vector<Selection>& selections) {
  const std::vector<ParameterRef> all = AllParameters();
  const auto found = std::ranges::find_if(selections, [&](const Selection& selection) {
    return std::ranges::none_of(all, [&](const ParameterRef& ref) { return selection.Names(ref); });
  });
  return found == selections.end() ? nullptr : &*found;
}

bool MatchesPattern(std::u16string_view text, std::u16string_view pattern) {
  return MatchesSmall(Small(text), Small(pattern));
}

} // namespace loader
