#include "qt/MessageLines.h"

#include <QStringList>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <array>
#include <vector>

namespace loader {

namespace {

enum class Script { Other, Letters, HalfKatakana, Katakana, Hiragana, Kanji };

struct ScriptRange {
  char16_t first;
  char16_t last;
  Script script;
};
constexpr auto ScriptRanges = std::to_array<ScriptRange>({
    {u'!', u'~', Script::Letters}, // "RS-232C", "V14A", "TCP/IP" and "@" are one word each
    {u'々', u'々', Script::Kanji},
    {u'ぁ', u'ゟ', Script::Hiragana},
    {u'゠', u'ヿ', Script::Katakana},
    {u'\u3400', u'\u9FFF', Script::Kanji},
    {u'！', u'～', Script::Letters},
    {u'･', u'ﾟ', Script::HalfKatakana},
});

Script ScriptOf(QChar character) {
  const char16_t code = character.unicode();
  const auto found = std::find_if(ScriptRanges.begin(), ScriptRanges.end(), [&](const ScriptRange& range) {
    return range.first <= code && code <= range.last;
  });
  return found == ScriptRanges.end() ? Script::Other : found->script;
}

// How good a place for the end of a line is.
enum class Break { Never, InWord, BetweenWords, BetweenPhrases };

Break KindOf(QChar before, QChar after) {
  static const QString Stops = QStringLiteral(" 　、。，．！？…");
  if (Stops.contains(before)) {
    return Break::BetweenPhrases;
  }
  const Script left = ScriptOf(before);
  const Script right = ScriptOf(after);
  if (left == right && left != Script::Other && left != Script::Hiragana) {
    return Break::InWord;
  }
  const bool phraseEnds = left == Script::Hiragana || left == Script::Other;
  return phraseEnds && right != Script::Hiragana ? Break::BetweenPhrases : Break::BetweenWords;
}

// For each place between two characters; place n is in front of character n.
std::vector<Break> BreaksOf(const QString& line) {
  std::vector<Break> breaks(static_cast<std::size_t>(line.size()) + 1, Break::Never);
  QTextBoundaryFinder finder(QTextBoundaryFinder::Line, line);
  for (qsizetype place = finder.toNextBoundary(); place > 0 && place < line.size();
       place = finder.toNextBoundary()) {
    breaks[static_cast<std::size_t>(place)] = KindOf(line[place - 1], line[place]);
  }
  return breaks;
}

// The end of the line that begins at `begin`: the last of the best places, but none that leaves more than two
// thirds of the line empty for the sake of a phrase.
qsizetype EndOfLine(const QString& line, const std::vector<Break>& breaks, qsizetype begin,
                    const TextMeasure& measure, int width) {
  std::array<qsizetype, 4> last{};
  for (qsizetype place = begin + 1; place <= line.size(); ++place) {
    const int taken = measure(line.mid(begin, place - begin).trimmed());
    if (taken > width && place > begin + 1) {
      break;
    }
    if (place == line.size()) {
      return place;
    }
    const Break kind = breaks[static_cast<std::size_t>(place)];
    if (kind != Break::BetweenPhrases || 3 * taken >= width) {
      last[static_cast<std::size_t>(kind)] = place;
    }
  }
  for (const Break kind : {Break::BetweenPhrases, Break::BetweenWords, Break::InWord, Break::Never}) {
    if (last[static_cast<std::size_t>(kind)] > begin) {
      return last[static_cast<std::size_t>(kind)];
    }
  }
  return begin + 1;
}

struct Lines {
  QStringList texts;
  int cost = 0; // of the places where they end
};

int CostOf(Break kind) {
  constexpr int OfABrokenWord = 10;
  return kind == Break::BetweenPhrases ? 0 : kind == Break::BetweenWords ? 1 : OfABrokenWord;
}

Lines LinesOf(const QString& line, const TextMeasure& measure, int width) {
  const std::vector<Break> breaks = BreaksOf(line);
  Lines lines;
  for (qsizetype begin = 0; begin < line.size();) {
    const qsizetype end = EndOfLine(line, breaks, begin, measure, width);
    lines.texts.push_back(line.mid(begin, end - begin).trimmed());
    lines.cost += end < line.size() ? CostOf(breaks[static_cast<std::size_t>(end)]) : 0;
    begin = end;
  }
  return lines;
}

// As many lines as there have to be, and none nearly empty.
QStringList EvenLines(const QString& line, const TextMeasure& measure, int width) {
  if (measure(line) <= width) {
    return {line};
  }
  Lines even = LinesOf(line, measure, width);
  constexpr int Steps = 8;
  for (int step = 1; step < Steps; ++step) {
    const int narrower = width - width * step / (2 * Steps);
    Lines lines = LinesOf(line, measure, narrower);
    if (lines.texts.size() > even.texts.size() || lines.cost > even.cost) {
      break;
    }
    even = std::move(lines);
  }
  return even.texts;
}

} // namespace

QString BrokenIntoLines(const QString& text, const TextMeasure& measure, int width) {
  QStringList lines;
  for (const QString& line : text.split(u'\n')) {
    lines += EvenLines(line, measure, width);
  }
  return lines.join(u'\n');
}

} // namespace loader
