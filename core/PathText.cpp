#include "core/PathText.h"

#include "core/Text.h"

namespace loader {

namespace {

// A name is UTF-16 or UTF-8 by its system.
template <typename Native> std::u16string TextOf(const Native& name) {
  if constexpr (sizeof(typename Native::value_type) == sizeof(char16_t)) {
    return {name.begin(), name.end()};
  } else {
    return FromUtf8(name);
  }
}

} // namespace

std::u16string PathText(const std::filesystem::path& path) {
  return TextOf(path.native());
}

} // namespace loader
