#include "platform/CodePage.h"

#include <algorithm>
#include <iconv.h>
#include <stdexcept>

namespace loader {

namespace {

struct Converter {
  iconv_t handle = iconv_open("UTF-16LE", "CP932");
  Converter() {
    // What the system gives for a converter that it does not have.
    const auto none = reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)
    if (handle == none) {
      throw std::runtime_error("the system has no converter for code page 932");
    }
  }
  ~Converter() { iconv_close(handle); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
};

} // namespace

// All codes in one go: the converter's own start costs more than a code.
std::u16string CodePageCharacters(std::string_view codes, std::size_t width) {
  const Converter converter;
  std::string in(codes);
  std::u16string characters(in.size() / width, u'\0');
  std::string out(in.size() * 4, '\0');
  char* inAt = in.data();
  std::size_t inLeft = in.size();
  while (inLeft > 0) {
    iconv(converter.handle, nullptr, nullptr, nullptr, nullptr);
    const std::size_t first = (in.size() - inLeft) / width;
    char* outAt = out.data();
    std::size_t outLeft = out.size();
    const bool whole =
        iconv(converter.handle, &inAt, &inLeft, &outAt, &outLeft) != static_cast<std::size_t>(-1);
    const std::size_t decoded = (in.size() - inLeft) / width - first;
    if (out.size() - outLeft != decoded * 2) {
      throw std::runtime_error("the system's converter for code page 932 decodes in another shape");
    }
    for (std::size_t i = 0; i < decoded; ++i) {
      const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(out[at]); };
      characters[first + i] = static_cast<char16_t>(byte(2 * i) | byte(2 * i + 1) << 8);
    }
    if (!whole) { // the code it stands at has no character
      const std::size_t skipped = std::min(width, inLeft);
      inAt += skipped;
      inLeft -= skipped;
    }
  }
  return characters;
}

} // namespace loader
