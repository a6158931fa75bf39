#include "platform/FileName.h"

#include <algorithm>
#include <array>
#include <string>

namespace loader {

namespace {

constexpr std::size_t LongestPath = 259; // the system counts the NUL behind it too
constexpr std::u16string_view Separators = u"\\/";
constexpr std::u16string_view NeverInAName = u"<>:\"|?*";

constexpr std::array<std::u16string_view, 6> DeviceNames{u"CON", u"PRN",    u"AUX",
                                                         u"NUL", u"CONIN$", u"CONOUT$"};
// With one digit behind them; the raised digits count as digits.
constexpr std::array<std::u16string_view, 2> NumberedDevices{u"COM", u"LPT"};
constexpr std::u16string_view DeviceDigits = u"123456789\u00B9\u00B2\u00B3";

constexpr bool IsSeparator(char16_t character) {
  return Separators.find(character) != std::u16string_view::npos;
}

// What decides whether a name is a device's: everything before the first dot, without the blanks behind it.
std::u16string DeviceStem(std::u16string_view name) {
  std::u16string stem(name.substr(0, name.find(u'.')));
  stem.resize(stem.find_last_not_of(u' ') + 1); // npos + 1 is 0
  std::ranges::transform(stem, stem.begin(), [](char16_t c) {
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
  });
  return stem;
}

bool IsDevice(std::u16string_view name) {
  const std::u16string stem = DeviceStem(name);
  if (std::ranges::find(DeviceNames, stem) != DeviceNames.end()) {
    return true;
  }
  return stem.size() == 4 && DeviceDigits.find(stem[3]) != std::u16string_view::npos &&
         std::ranges::any_of(NumberedDevices,
                             [&](std::u16string_view device) { return stem.starts_with(device); });
}

bool IsPartOfAPath(std::u16string_view name) {
  if (name.empty() || name == u"." || name == u"..") {
    return true;
  }
  const bool anyForbidden = std::ranges::any_of(
      name, [](char16_t c) { return c < u' ' || NeverInAName.find(c) != std::u16string_view::npos; });
  return !anyForbidden && name.back() != u'.' && name.back() != u' ' && !IsDevice(name);
}

// "\\.\" and "\\?\": what follows is not looked at as a path is, and may be a device.
bool IsPastTheNames(std::u16string_view path) {
  return path.size() >= 4 && IsSeparator(path[0]) && IsSeparator(path[1]) &&
         (path[2] == u'.' || path[2] == u'?') && IsSeparator(path[3]);
}

std::u16string_view WithoutDrive(std::u16string_view path) {
  return path.size() >= 2 && path[1] == u':' ? path.substr(2) : path;
}

} // namespace

bool IsWindowsFileName(std::u16string_view path) {
  if (path.size() > LongestPath || IsPastTheNames(path)) {
    return false;
  }
  std::u16string_view rest = WithoutDrive(path);
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of(Separators), rest.size());
    if (!IsPartOfAPath(rest.substr(0, end))) {
      return false;
    }
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return true;
}

} // namespace loader
