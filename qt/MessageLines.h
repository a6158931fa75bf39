// Where the lines of a message end.
//
// The rules of Unicode let a line end between any two characters of Japanese, behind the hyphen of "RS-232C"
// and in the middle of a katakana word. Here a word stays whole: a run of letters, digits and what joins
// them, of half-width katakana, of katakana or of kanji. Where there is a choice, a line ends where a phrase
// does: behind hiragana, a blank or a punctuation mark.
#pragma once

#include <QString>
#include <functional>

namespace loader {

// The width of a text in pixels, as it will be drawn.
using TextMeasure = std::function<int(const QString& text)>;

// The text with line breaks, so that no line is wider than `width` pixels; a word that is wider is broken all
// the same. Line breaks that the text has stay, and lines that share a text are of about the same length.
[[nodiscard]] QString BrokenIntoLines(const QString& text, const TextMeasure& measure, int width);

} // namespace loader
