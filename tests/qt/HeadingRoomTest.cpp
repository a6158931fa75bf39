// Of headings, only those that may be too wide for their columns are measured: none may be cut for that.
#include <QFontDatabase>
#include <cmath>

#include "qt/GridView.h"
#include "qt/HeadingView.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

// Those of even width, of proportional kana and of one width for all that are installed.
std::vector<QString> JapaneseFamilies() {
  std::vector<QString> families;
  for (const char* family : {"Noto Sans CJK JP", "Noto Serif CJK JP", "Noto Sans Mono CJK JP", "IPAGothic",
                             "IPAPGothic", "IPAPMincho", "TakaoPGothic", "VL PGothic"}) {
    if (QFontDatabase::hasFamily(QLatin1String(family))) {
      families.push_back(QLatin1String(family));
    }
  }
  return families;
}

struct HeadingRoom : SampleTest {
  GridView& View() { return Find<GridView>("fgrTable"); }
};

// Columns as wide as a heading, and somewhat narrower or wider: in any font, each is as wide as its heading,
// and one that was wide enough is as wide as it was.
TEST_F(HeadingRoom, IsThereInEveryFontAndNoMore) {
  const std::array<std::u16string_view, 8> headings{u"警報動作",   u"ＤＯリレーNo.", u"リセット動作",
                                                    u"記録ﾀｲﾌﾟ",   u"入力フィルタ",  u"ON / OFF",
                                                    u"ﾊﾟﾋﾟﾌﾟﾍﾟﾎﾟ", u"WWWW@@@@"};
  constexpr int Steps = 60;
  Grid& grid = screen.fgrTable;
  grid.FixedRows = 1;
  grid.Resize(2, 1 + static_cast<int>(headings.size()) * Steps);
  for (std::size_t i = 0; i < headings.size(); ++i) {
    for (int step = 0; step < Steps; ++step) {
      const int col = 1 + static_cast<int>(i) * Steps + step;
      grid.SetText(0, col, headings[i]);
      grid.SetColWidth(col, 300 + 25 * step);
    }
  }
  screen.tbsPages.current = 2;
  ShowSample();
  int widened = 0;
  for (const QString& family : JapaneseFamilies()) {
    for (const double points : {7.3, 9.0, 9.4, 10.7, 13.0, 21.5}) {
      QFont font(family);
      font.setPointSizeF(points);
      View().setFont(font);
      const QFontMetrics metrics = View().horizontalHeader()->fontMetrics();
      for (const HeadingBox& box : View().Headings().Boxes()) {
        const int wanted = metrics.horizontalAdvance(box.text) + HeadingView::Margin;
        const double twips = 300 + 25 * (box.firstCol % Steps);
        const int given =
            static_cast<int>(std::ceil(twips / TwipsPerPixel(View().font()))) + 2 * GridView::CellMargin + 1;
        ASSERT_EQ(std::max(wanted, given), View().columnWidth(box.firstCol))
            << box.text.toStdString() << " in " << family.toStdString() << ", " << points << " points";
        widened += wanted > given ? 1 : 0;
      }
    }
  }
  EXPECT_GT(widened, 0);
}

// What the headings' room is told by without measuring them: no such character is wider than a kanji.
TEST(KanjiWidth, IsThatOfTheWidestCharactersOfHeadings) {
  for (const QString& family : JapaneseFamilies()) {
    for (const double points : {7.3, 9.0, 21.5}) {
      QFont font(family);
      font.setPointSizeF(points);
      const QFontMetricsF metrics(font);
      const double kanji = metrics.horizontalAdvance(QStringLiteral("値"));
      const auto none = [&](char16_t first, char16_t last) {
        for (char16_t character = first; character <= last; ++character) {
          ASSERT_LE(metrics.horizontalAdvance(QChar(character)), kanji)
              << family.toStdString() << ", " << points << " points, " << static_cast<int>(character);
        }
      };
      none(u'\u3041', u'\u3096');
      none(u'\u30A1', u'\u30FC');
      none(u'\u4E00', u'\u4FFF'); // the first of the kanji; each is loaded, which takes its time
      none(u'\uFF01', u'\uFF9F');
    }
  }
}

} // namespace
} // namespace loader::test
