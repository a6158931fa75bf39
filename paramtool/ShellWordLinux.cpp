#include "paramtool/ShellWord.h"

namespace loader::paramtool {

std::u16string ShellWord(std::u16string_view word) {
  std::u16string quoted = u"'";
  for (const char16_t character : word) {
    quoted += character == u'\'' ? std::u16string(u"'\\''") : std::u16string(1, character);
  }
  return quoted + u"'";
}

} // namespace loader::paramtool
