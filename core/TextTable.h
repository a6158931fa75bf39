// The numbered table of all texts that a user sees, and of the layout runs of the tables.
//
// The texts stand in data/TextTable.def and are part of the program: a missing id is a defect of the program
// and never of its data, so an id in the code is checked when the code is compiled.
#pragma once

#include <array>
#include <compare>
#include <span>
#include <stdexcept>
#include <string_view>

namespace loader {

// Ids that exist without a gap, both ends included.
struct TextRun {
  int first;
  int last;
};

// The ids of data/TextTable.def, ascending; TextTable.cpp refuses to compile when the two differ.
inline constexpr auto TextRuns = std::to_array<TextRun>({
    // captions, messages
    {10000, 10021},
    {10500, 10522},
    {10600, 10603},
    {10700, 10705},
    {11000, 11016},
    {18000, 18174},
    {18180, 18190},
    {18200, 18211},
    {19614, 19627},
    {20100, 20117},
    // column runs of the grids; a column without an upper heading leaves the fourth id free
    {20900, 20901},
    {21003, 21005},
    {21007, 21009},
    {21011, 21013},
    {21015, 21017},
    {21019, 21021},
    {21023, 21065},
    {21067, 21069},
    {21071, 21073},
    {21075, 21077},
    {21079, 21217},
    {22000, 22003},
    {22005, 22007},
    {22009, 22011},
    {22013, 22015},
    {22017, 22019},
    {22021, 22023},
    {22025, 22027},
    {22029, 22031},
    {22033, 22035},
    {22037, 22039},
    {22041, 22083},
    {22085, 22087},
    {22089, 22091},
    {22093, 22095},
    {22097, 22231},
    {23000, 23017},
    {24000, 24005},
    {25000, 25018},
    {26000, 26048},
    {27000, 27000},
    {28000, 28005},
    // catalogues
    {30000, 30013},
    {31000, 31012},
    {31020, 31021},
    {31030, 31033},
    {31040, 31040},
    {32000, 32001},
    {33000, 33001},
    {34000, 34001},
    {35000, 35001},
    {36000, 36002},
    {37000, 37074},
    {38001, 38003},
    {39001, 39001},
    {39003, 39004},
    {39006, 39007},
    {40000, 40297},
    {41000, 41003},
    {42000, 42001},
    {43000, 43001},
    {44000, 44002},
    {45000, 45000},
    {45501, 45572},
    {46000, 46001},
    {46500, 46503},
    {46600, 46601},
    {46700, 46701},
    {46800, 46801},
    {46900, 46903},
    {47000, 47008},
    {48000, 48001},
    {49000, 49008},
    {50000, 50002},
    {51000, 51008},
    {52000, 52001},
    {53000, 53019},
    {54000, 54001},
    {55000, 55004},
    {56000, 56072},
    {57000, 57001},
    {58000, 58002},
    {59000, 59001},
    {60000, 60015},
    {60100, 60101},
    {60200, 60202},
    {60300, 60305},
    {60400, 60401},
    {60500, 60503},
    {60600, 60609},
    {60700, 60706},
    {60800, 60929},
    {61000, 61003},
    {61100, 61103},
    {61200, 61204},
    {61300, 61313},
    {61400, 61405},
    {61500, 61505},
    {61600, 61601},
    {61700, 61702},
    {61800, 61801},
    {61900, 61904},
    {62000, 62004},
    // messages of the dialogs
    {62100, 62108},
    {62200, 62203},
    {62300, 62303},
    {62400, 62409},
    {62500, 62502},
    {62600, 62603},
    {62700, 62702},
    // the mail trigger grid and its lists
    {63100, 63129},
    {63300, 63303},
    {63500, 63506},
    {63510, 63510},
    {63520, 63520},
    {63531, 63538},
    {63540, 63548},
    {63700, 63701},
    {63800, 63800},
    {64000, 64000},
});

[[nodiscard]] constexpr bool TextIdExists(int id) {
  for (const TextRun& run : TextRuns) {
    if (id <= run.last) {
      return id >= run.first;
    }
  }
  return false;
}

// The id of a text that exists. Made from a number in the code it does not compile when the text is missing.
struct TextId {
  int value;

  // NOLINTNEXTLINE(google-explicit-constructor): LoadText(10000) is how the code names its texts.
  consteval TextId(int id) : value(id) {
    if (!TextIdExists(id)) {
      throw std::logic_error("no such text id");
    }
  }

  // An id that is computed at run time. A missing one throws std::logic_error: a defect of the program.
  [[nodiscard]] static TextId At(int id) {
    if (!TextIdExists(id)) {
      throw std::logic_error("no such text id");
    }
    return TextId(Checked{id});
  }

  friend constexpr auto operator<=>(const TextId&, const TextId&) = default;

private:
  struct Checked {
    int id;
  };
  constexpr explicit TextId(Checked checked) : value(checked.id) {}
};

// The id `offset` rows behind; checked as TextId::At.
[[nodiscard]] inline TextId operator+(TextId id, int offset) {
  return TextId::At(id.value + offset);
}

// The text of an id; it lives as long as the program.
[[nodiscard]] std::u16string_view LoadText(TextId id);

struct TextRow {
  int id;
  std::u16string_view text;
};

// All rows by ascending id, for checks of the table as a whole.
[[nodiscard]] std::span<const TextRow> AllTexts();

} // namespace loader
