// What can be read on which colours, in the palette in use and in those that themes bring, and the font that
// stays.
#include <QFontDatabase>
#include <QFontInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QRawFont>
#include <QTabBar>
#include <QTabWidget>
#include <QTextLayout>
#include <QToolTip>

#include "qt/Application.h"
#include "qt/GridView.h"
#include "qt/HeadingView.h"
#include "qt/ListBoxView.h"
#include "qt/ReadableColour.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

// Themes as they come: what a palette's roles have, and how the palette is called.
struct Theme {
  const char* name;
  QRgb window;
  QRgb base;
  QRgb text;
  QRgb highlight;
  QRgb highlightedText;
};

QPalette PaletteOf(const Theme& theme) {
  QPalette palette(QColor(theme.window), QColor(theme.window));
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, QColor(theme.text));
  }
  palette.setColor(QPalette::Base, QColor(theme.base));
  palette.setColor(QPalette::AlternateBase, QColor(theme.window));
  palette.setColor(QPalette::Highlight, QColor(theme.highlight));
  palette.setColor(QPalette::HighlightedText, QColor(theme.highlightedText));
  return palette;
}

class Appearance : public SampleTest {
protected:
  QPalette palette = QApplication::palette();
  QFont font = QApplication::font();

  ~Appearance() override {
    QApplication::setPalette(palette);
    QApplication::setFont(font);
  }
  // As a theme does it. The windows hear of it from the event loop.
  static void UsePalette(const QPalette& theme) {
    QApplication::setPalette(theme);
    QCoreApplication::processEvents();
  }
  static void UseFont(const QFont& chosen) {
    QApplication::setFont(chosen);
    QCoreApplication::processEvents();
  }
  // Shows a table with a current row.
  GridView& ShowTable() {
    screen.fgrTable.FixedRows = 1;
    screen.fgrTable.Resize(3, 3);
    screen.fgrTable.SelectRow(1);
    screen.tbsPages.current = 2;
    ShowSample();
    return Find<GridView>("fgrTable");
  }
};

void ExpectReadable(const QPalette& palette, const char* where) {
  struct Pair {
    QPalette::ColorRole text;
    QPalette::ColorRole back;
  };
  for (const Pair pair :
       {Pair{QPalette::WindowText, QPalette::Window}, Pair{QPalette::Text, QPalette::Base},
        Pair{QPalette::Text, QPalette::AlternateBase}, Pair{QPalette::ButtonText, QPalette::Button},
        Pair{QPalette::HighlightedText, QPalette::Highlight},
        Pair{QPalette::ToolTipText, QPalette::ToolTipBase}}) {
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
      EXPECT_GE(ContrastOf(palette.color(group, pair.text), palette.color(group, pair.back)), 4.5)
          << where << ", role " << pair.text << ", group " << group;
    }
  }
}

TEST(Contrast, IsThatOfTheGuidelines) {
  EXPECT_NEAR(21.0, ContrastOf(Qt::white, Qt::black), 0.01);
  EXPECT_NEAR(1.0, ContrastOf(Qt::red, Qt::red), 0.01);
  EXPECT_NEAR(3.69, ContrastOf(QColor(0x308CC6), Qt::white), 0.01);
  EXPECT_NEAR(4.54, ContrastOf(QColor(0x767676), Qt::white), 0.01);
}

TEST_F(Appearance, ThePaletteInUseCanBeRead) {
  ExpectReadable(QApplication::palette(), "application");
  ExpectReadable(QApplication::palette("QMenu"), "menus");
  ExpectReadable(ShowTable().palette(), "tables");
  ExpectReadable(QToolTip::palette(), "tool tips");
}

class ThemeOf : public Appearance, public testing::WithParamInterface<Theme> {};

TEST_P(ThemeOf, CanBeReadWhenItComesLate) {
  GridView& view = ShowTable();
  UsePalette(PaletteOf(GetParam()));
  ExpectReadable(QApplication::palette(), "application");
  ExpectReadable(view.verticalHeader()->palette(), "headings");
  ExpectReadable(Find<QLineEdit>("txtAbove").palette(), "fields");
  // as it is drawn: the heading of the current row
  const auto& left = *static_cast<HeadingView*>(view.verticalHeader());
  const QRgb drawn = view.grab().toImage().pixel(left.x() + 2, left.y() + left.sectionPosition(0) + 2);
  EXPECT_GE(ContrastOf(QColor(GetParam().highlightedText), QColor(drawn)), 4.5);
  EXPECT_NE(QColor(drawn), view.palette().color(QPalette::Button));
}

INSTANTIATE_TEST_SUITE_P(
    Usual, ThemeOf,
    testing::Values(Theme{"Light", 0xEFEFEF, 0xFFFFFF, 0x000000, 0x308CC6, 0xFFFFFF},
                    Theme{"Dark", 0x232629, 0x1B1E20, 0xFCFCFC, 0x3DAEE9, 0xFCFCFC},
                    Theme{"DarkGray", 0x353535, 0x2A2A2A, 0xFFFFFF, 0x2A82DA, 0xFFFFFF},
                    Theme{"DarkWithDarkSelection", 0x202020, 0x202020, 0xFFFFFF, 0x554400, 0x000000},
                    Theme{"GraySelectionWithGrayText", 0xEFEFEF, 0xFFFFFF, 0x000000, 0x808080, 0x777777},
                    Theme{"WhiteOnBlack", 0x000000, 0x000000, 0xFFFFFF, 0xFFFFFF, 0x000000},
                    Theme{"YellowOnBlack", 0x000000, 0x000000, 0xFFFF00, 0x00FFFF, 0x000000},
                    Theme{"BlackOnWhite", 0xFFFFFF, 0xFFFFFF, 0x000000, 0x000000, 0xFFFFFF}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(WithReadableSelection, LeavesWhatCanBeRead) {
  const QPalette good = PaletteOf({"", 0xEFEFEF, 0xFFFFFF, 0x000000, 0x0A4A7A, 0xFFFFFF});
  EXPECT_EQ(good, WithReadableSelection(good));
}

TEST(WithReadableSelection, KeepsTheHueAndMovesNoFurtherThanItHasTo) {
  const QPalette mended = WithReadableSelection(PaletteOf({"", 0, 0, 0xFFFFFF, 0x308CC6, 0xFFFFFF}));
  const QColor back = mended.color(QPalette::Highlight);
  EXPECT_NEAR(QColor(0x308CC6).hslHue(), back.hslHue(), 2);
  EXPECT_LT(ContrastOf(Qt::white, back), 4.7);
}

TEST_P(ThemeOf, HasDisabledTextsThatCanBeReadAndAreToldFromTheOthers) {
  QPalette faint = PaletteOf(GetParam());
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    faint.setColor(QPalette::Disabled, role, faint.color(QPalette::Window));
  }
  UsePalette(faint);
  const QPalette used = QApplication::palette();
  for (const auto& [text, back] : {std::pair{QPalette::WindowText, QPalette::Window},
                                   {QPalette::Text, QPalette::Base},
                                   {QPalette::Text, QPalette::Button},
                                   {QPalette::ButtonText, QPalette::Button}}) {
    const auto contrast = [&, text = text, back = back](QPalette::ColorGroup group) {
      return ContrastOf(used.color(group, text), used.color(group, back));
    };
    EXPECT_GE(contrast(QPalette::Disabled), 4.5) << text;
    EXPECT_LT(contrast(QPalette::Disabled), 5.5) << text;
    EXPECT_GT(contrast(QPalette::Active), 10) << text;
  }
}

TEST(WithReadableDisabled, LeavesWhatCanBeRead) {
  QPalette good = PaletteOf({"", 0xEFEFEF, 0xFFFFFF, 0x000000, 0x0A4A7A, 0xFFFFFF});
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    good.setColor(QPalette::Disabled, role, QColor(0x505050));
  }
  EXPECT_EQ(good, WithReadableDisabled(good));
}

TEST(FadedOn, IsTheTextWhereNothingCanBeRead) {
  EXPECT_EQ(QColor(0x777777), FadedOn(QColor(0x808080), QColor(0x777777)));
}

TEST(ReadableOn, AnyColour) {
  constexpr int Step = 15;
  for (int red = 0; red <= 0xFF; red += Step) {
    for (int green = 0; green <= 0xFF; green += Step) {
      for (int blue = 0; blue <= 0xFF; blue += Step) {
        const QColor back(red, green, blue);
        ASSERT_GE(ContrastOf(ReadableOn(back), back), 4.5) << back.name().toStdString();
      }
    }
  }
}

// A cell that does not apply, on whatever base.
TEST(ReadableOn, AnyShade) {
  for (int gray = 0; gray <= 0xFF; ++gray) {
    const QColor shade = ShadeOn(QColor(gray, gray, gray), QColor(0x40, 0x40, 0x40));
    EXPECT_GE(ContrastOf(ReadableOn(shade), shade), 4.5) << gray;
  }
}

// The line around a list that has the keyboard, as it is drawn.
TEST_P(ThemeOf, ShowsTheFocusOfAList) {
  UsePalette(PaletteOf(GetParam()));
  FillList(screen.cmbKind, std::vector<std::u16string>{u"OFF", u"ON"});
  ShowSample();
  auto& list = Find<ListBoxView>("cmbKind");
  list.setFocus(Qt::MouseFocusReason);
  const QColor drawn = list.grab().toImage().pixelColor(0, list.height() / 2);
  EXPECT_GE(ContrastOf(drawn, QColor(GetParam().window)), 3);
}

TEST_P(ThemeOf, ShowsTheFocusOfAField) {
  UsePalette(PaletteOf(GetParam()));
  ShowSample();
  auto& field = Find<QLineEdit>("txtName");
  const auto lineAround = [&] { return field.grab().toImage().pixelColor(0, field.height() / 2); };
  Find<QLineEdit>("txtAbove").setFocus();
  const QColor without = lineAround();
  field.setFocus(Qt::MouseFocusReason);
  EXPECT_NE(without, lineAround());
  EXPECT_GE(ContrastOf(lineAround(), QColor(GetParam().window)), 3);
}

// The lines that tell which columns a merged heading is of, as they are drawn.
TEST_P(ThemeOf, ShowsTheLinesOfTheHeadings) {
  UsePalette(PaletteOf(GetParam()));
  GridView& view = ShowTable();
  const QWidget& above = *view.horizontalHeader()->viewport();
  const QImage drawn = view.horizontalHeader()->viewport()->grab().toImage();
  const QColor ground = view.palette().color(QPalette::Button);
  EXPECT_GE(ContrastOf(drawn.pixelColor(view.columnWidth(0) - 1, 3), ground), VisibleContrast)
      << "at its right";
  EXPECT_GE(ContrastOf(drawn.pixelColor(3, above.height() - 1), ground), VisibleContrast) << "below";
}

// Lit or not: an unlit lamp is black.
TEST_P(ThemeOf, ShowsTheFrameOfTheLamp) {
  UsePalette(PaletteOf(GetParam()));
  screen.picLamp.colour = 0x000000;
  ShowSample();
  const QImage drawn = Find<QWidget>("picLamp_0").grab().toImage();
  EXPECT_GE(ContrastOf(drawn.pixelColor(0, drawn.height() / 2), QColor(GetParam().window)), VisibleContrast);
  EXPECT_EQ(QColor(Qt::black), drawn.pixelColor(drawn.rect().center()));
}

TEST_P(ThemeOf, TellsAColourFromAnEmptyCell) {
  UsePalette(PaletteOf(GetParam()));
  for (const Colour colour : {0x000080, 0x800080, 0xFF0000, 0xFFFF00, 0x00FFFF}) {
    screen.fgrTable.FixedRows = 1;
    screen.fgrTable.Resize(3, 3);
    screen.fgrTable.SetBack(2, 1, colour);
    if (platform.screens.WindowOf(screen) == nullptr) {
      ShowTable();
    }
    platform.userInterface.Refresh();
    GridView& view = Find<GridView>("fgrTable");
    const QRect cell = view.visualRect(view.model()->index(1, 0));
    const QImage drawn = view.viewport()->grab().toImage();
    const QColor base(GetParam().base);
    EXPECT_EQ(ToColour(colour), drawn.pixelColor(cell.center()));
    EXPECT_GE(std::max(ContrastOf(drawn.pixelColor(cell.center()), base),
                       ContrastOf(drawn.pixelColor(cell.left(), cell.center().y()), base)),
              VisibleContrast)
        << colour;
  }
}

bool IsOfHighContrast(const Theme& theme) {
  return theme.window == theme.base;
}

// A field, a button and a tab have no shade of their own there.
TEST_P(ThemeOf, ShowsTheEdgesOfWhatCanBeUsed) {
  UsePalette(PaletteOf(GetParam()));
  if (!IsOfHighContrast(GetParam()) || std::string_view(GetParam().name) == "DarkWithDarkSelection") {
    GTEST_SKIP() << "shades tell them";
  }
  FillList(screen.cmbKind, std::vector<std::u16string>{u"OFF", u"ON"});
  ShowSample();
  const QColor ground(GetParam().window);
  Find<QLineEdit>("txtAbove").setFocus();
  for (const char* name : {"txtName", "cmbKind", "btnApply"}) {
    auto& widget = Find<QWidget>(name);
    const QImage drawn = widget.grab().toImage();
    EXPECT_GE(ContrastOf(drawn.pixelColor(0, drawn.height() / 2), ground), VisibleContrast) << name;
  }
  const QTabBar& bar = *Find<QTabWidget>("tbsPages").tabBar();
  const QImage drawn = const_cast<QTabBar&>(bar).grab().toImage();
  const auto top = [&](int tab) {
    return drawn.pixelColor(bar.tabRect(tab).center().x(), bar.tabRect(bar.currentIndex()).top() + 1);
  };
  EXPECT_GE(ContrastOf(top(0), ground), VisibleContrast) << "the page that shows";
  EXPECT_LT(ContrastOf(top(1), ground), VisibleContrast) << "another page";
}

TEST_P(ThemeOf, ShowsTheLineThatPartsTheButtonsFromTheRest) {
  UsePalette(PaletteOf(GetParam()));
  if (!IsOfHighContrast(GetParam()) || std::string_view(GetParam().name) == "DarkWithDarkSelection") {
    GTEST_SKIP() << "the style's own";
  }
  QFrame line;
  line.setFrameShape(QFrame::HLine);
  line.setFrameShadow(QFrame::Sunken);
  line.resize(40, 5);
  const QColor drawn = line.grab().toImage().pixelColor(20, 2);
  EXPECT_GE(ContrastOf(drawn, QColor(GetParam().window)), VisibleContrast);
}

// Which answer the Return key gives.
TEST_P(ThemeOf, TellsTheButtonOfABoxThatHasTheKeyboard) {
  UsePalette(PaletteOf(GetParam()));
  ShowSample();
  boxes.Expect(u"?", BoxAnswer::Cancel, [](QMessageBox& box) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
    const auto edgeOf = [](QAbstractButton* button) {
      const QImage drawn = button->grab().toImage();
      return std::pair(drawn.pixelColor(0, drawn.height() / 2), drawn.pixelColor(1, drawn.height() / 2));
    };
    const QList<QAbstractButton*> buttons = box.buttons();
    ASSERT_EQ(2, buttons.size());
    ASSERT_TRUE(QTest::qWaitFor([&] { return buttons[0]->hasFocus() || buttons[1]->hasFocus(); }))
        << (box.focusWidget() == nullptr ? "nothing" : box.focusWidget()->metaObject()->className());
    const int chosen = buttons[0]->hasFocus() ? 0 : 1;
    EXPECT_NE(edgeOf(buttons[chosen]), edgeOf(buttons[1 - chosen]));
    if (IsFlat(box.palette())) {
      const auto [outer, inner] = edgeOf(buttons[chosen]);
      EXPECT_GE(ContrastOf(outer, QColor(GetParam().window)), VisibleContrast);
      EXPECT_EQ(outer, inner);
    }
  });
  EXPECT_FALSE(AskOkCancel(u"?"));
}

// By its shade or by a line around it. Its text is read on the shade.
TEST_P(ThemeOf, TellsAShadedCellFromAnEmptyOne) {
  UsePalette(PaletteOf(GetParam()));
  GridView& view = ShowTable();
  screen.fgrTable.SetBack(2, 1, 0x404040);
  screen.fgrTable.SetText(2, 1, u"\u2588"); // a full block
  platform.userInterface.Refresh();
  const QRect cell = view.visualRect(view.model()->index(1, 0));
  const QImage drawn = view.viewport()->grab().toImage();
  const QColor base(GetParam().base);
  const QColor shade = drawn.pixelColor(cell.right() - 4, cell.bottom() - 4);
  double ofText = 0;
  for (int x = cell.left() + 2; x < cell.right(); ++x) {
    ofText = std::max(ofText, ContrastOf(drawn.pixelColor(x, cell.center().y()), shade));
  }
  EXPECT_GE(ofText, ReadableContrast);
  const auto told = [&](int x, int y) { return ContrastOf(drawn.pixelColor(x, y), base); };
  const double byShade = ContrastOf(shade, base);
  EXPECT_GT(byShade, 1.2);
  EXPECT_GE(std::max(byShade, told(cell.right() + 1, cell.center().y())), VisibleContrast) << "at its right";
  EXPECT_GE(std::max(byShade, told(cell.center().x(), cell.bottom() + 1)), VisibleContrast) << "below";
}

// A tint of two colours may be the shade of a cell that does not apply.
TEST_P(ThemeOf, TellsASelectedCellFromAShadedOne) {
  UsePalette(PaletteOf(GetParam()));
  GridView& view = ShowTable();
  screen.fgrTable.SetBack(2, 1, 0x404040);
  platform.userInterface.Refresh();
  view.selectionModel()->select(view.model()->index(1, 1), QItemSelectionModel::Select);
  const QImage drawn = view.viewport()->grab().toImage();
  const auto near = [&](int col) {
    const QRect cell = view.visualRect(view.model()->index(1, col));
    return std::pair(drawn.pixelColor(cell.left() + 4, cell.top() + 2),
                     drawn.pixelColor(cell.left() + 4, cell.top() + 5));
  };
  const auto [shadedEdge, shaded] = near(0);
  const auto [selectedEdge, selected] = near(1);
  EXPECT_EQ(shadedEdge, shaded);
  if (IsFlat(view.palette())) {
    EXPECT_GE(ContrastOf(selectedEdge, selected), ReadableContrast);
  } else {
    EXPECT_NE(shaded, selected);
  }
}

// the font

QString FamilyWithoutJapanese() {
  for (const QString& family : QFontDatabase::families()) {
    if (!QFontDatabase::writingSystems(family).contains(QFontDatabase::Japanese)) {
      return family;
    }
  }
  return QStringLiteral("a family that nobody has"); // the machine has Japanese fonts alone
}

TEST_F(Appearance, AThemesFontWithoutJapaneseIsNotTakenOver) {
  ShowSample();
  auto& edit = Find<QLineEdit>("txtName");
  for (const double points : {7.0, 11.0, 12.0}) {
    UseFont(QFont(FamilyWithoutJapanese(), static_cast<int>(points)));
    EXPECT_EQ(QStringLiteral("Noto Sans CJK JP"), QApplication::font().families().value(0));
    EXPECT_EQ(QStringLiteral("Noto Sans CJK JP"), edit.font().families().value(0));
    EXPECT_EQ(9, edit.font().pointSizeF()) << points;
  }
}

TEST_F(Appearance, LargePrintIsKeptInTheProgramsFont) {
  ShowSample();
  UseFont(QFont(FamilyWithoutJapanese(), 18));
  EXPECT_EQ(QStringLiteral("Noto Sans CJK JP"), Find<QLineEdit>("txtName").font().families().value(0));
  EXPECT_EQ(18, Find<QLineEdit>("txtName").font().pointSizeF());
}

// 40 pixels are 30 points at 96 dots an inch.
TEST_F(Appearance, LargePrintInPixelsIsKeptToo) {
  ShowSample();
  QFont large(FamilyWithoutJapanese());
  large.setPixelSize(40);
  const double points = QFontInfo(large).pointSizeF();
  ASSERT_GT(points, 12);
  UseFont(large);
  EXPECT_EQ(QStringLiteral("Noto Sans CJK JP"), Find<QLineEdit>("txtName").font().families().value(0));
  EXPECT_NEAR(points, Find<QLineEdit>("txtName").font().pointSizeF(), 0.01);
}

// With a second family, Qt asks the system for the fallbacks of each script before it draws anything.
TEST_F(Appearance, TheProgramsFontIsOneFamilyWhereItIsInstalled) {
  if (!QFontDatabase::hasFamily(QStringLiteral("Noto Sans CJK JP"))) {
    GTEST_SKIP() << "the program's font is not installed";
  }
  UseFont(QFont(FamilyWithoutJapanese(), 11));
  EXPECT_EQ(QStringList{QStringLiteral("Noto Sans CJK JP")}, QApplication::font().families());
}

// A file's name may hold anything: what the program's font lacks comes from another one that has it.
TEST_F(Appearance, ACharacterThatTheFontLacksIsDrawnInAnother) {
  UseFont(QFont(FamilyWithoutJapanese(), 11));
  int lacking = 0;
  for (const char16_t character : {u'\u0639', u'\u05D0', u'\u0531', u'\u10D0', u'\u2708', u'\u265E'}) {
    const QString text(QChar{character});
    if (QRawFont::fromFont(QApplication::font()).supportsCharacter(text.front())) {
      continue;
    }
    bool someHasIt = false;
    for (const QString& family : QFontDatabase::families()) {
      someHasIt |= QRawFont::fromFont(QFont(family)).supportsCharacter(text.front());
    }
    QTextLayout layout(text, QApplication::font());
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    ASSERT_EQ(1, runs.size());
    EXPECT_EQ(someHasIt, runs.front().glyphIndexes().value(0) != 0) << static_cast<int>(character);
    lacking += someHasIt ? 1 : 0;
  }
  if (lacking == 0) {
    GTEST_SKIP() << "no other font has more than the program's";
  }
}

TEST_F(Appearance, AFontWithJapaneseGlyphsIsTheUsersChoice) {
  ShowSample();
  const QString other = QStringLiteral("Noto Serif CJK JP");
  if (!QFontDatabase::hasFamily(other)) {
    GTEST_SKIP() << "a second Japanese font is not installed";
  }
  UseFont(QFont(other, 11));
  EXPECT_EQ(other, Find<QLineEdit>("txtName").font().family());
  EXPECT_EQ(11, Find<QLineEdit>("txtName").font().pointSizeF());
}

// What is laid out by hand, as it would have been had the font been there from the start.
TEST_F(Appearance, ALateFontLaysTheTableOutAnew) {
  screen.fgrTable.Resize(3, 3);
  screen.fgrTable.SetColWidth(1, 1500);
  FillList(screen.cmbKind, std::vector<std::u16string>{u"OFF", u"上下限警報"});
  GridView& view = ShowTable();
  const int rowBefore = view.rowHeight(0);
  QFont large = font;
  large.setPointSizeF(2 * font.pointSizeF());
  UseFont(large);
  EXPECT_NEAR(2 * TwipsPerPixel(view.font()), TwipsPerPixel(font), 0.1);
  EXPECT_NEAR(1500 / TwipsPerPixel(large) + 2 * GridView::CellMargin + 1, view.columnWidth(0), 1.5);
  EXPECT_EQ(view.fontMetrics().height() + 6, view.rowHeight(0));
  EXPECT_GT(view.rowHeight(0), rowBefore);
  EXPECT_EQ(view.horizontalHeader()->fontMetrics().height() + 6, view.Headings().LineHeight());
  EXPECT_EQ(view.Headings().LineHeight(), view.horizontalHeader()->height());
}

} // namespace
} // namespace loader::test
