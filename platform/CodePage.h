// The system's own converter for code page 932, from a code to its character. What the program makes of it,
// the way back included, is core/Text's; nothing else asks here.
//
// What the converters give differently: 0x80 is U+0080 on Windows and nothing on Linux; 0xA0, 0xFD, 0xFE and
// 0xFF are private characters (U+F8F0 to U+F8F3) on Windows unless it is asked to refuse what no standard
// assigns, and nothing on Linux. For these, and for the pairs in which other converters follow the standard,
// core/Text has rows of its own. Of several codes for one character each system has its own choice of the way
// back; it isn't asked for.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace loader {

// The characters of codes that are each `width` bytes long (1 or 2), one for each; 0 where the converter has
// none or none of 16 bits. std::runtime_error where the system has no such converter.
[[nodiscard]] std::u16string CodePageCharacters(std::string_view codes, std::size_t width);

} // namespace loader
