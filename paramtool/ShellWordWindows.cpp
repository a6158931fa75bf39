#include <algorithm>

#include "core/Text.h"
#include "paramtool/ShellWord.h"

namespace loader::paramtool {

namespace {

bool IsPlain(char16_t character) {
  return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') ||
         IsDigit(character) || std::u16string_view(u"\\/:.-_").find(character) != std::u16string_view::npos;
}

} // namespace

// Both know double quotes, and cmd.exe no single ones. No name has a quote in it; what each of the two takes
// for a variable in spite of them (`%NAME%`, `$name`) there is no common writing for.
std::u16string ShellWord(std::u16string_view word) {
  return !word.empty() && std::ranges::all_of(word, IsPlain) ? std::u16string(word)
                                                             : u"\"" + std::u16string(word) + u"\"";
}

} // namespace loader::paramtool
