// Screens without widgets: a screen is a plain record of control records with handler functions.
//
// A control record holds what the logic needs of a control: its text, list, state, colours, and the requests
// that the logic makes of it (focus, selection). It registers itself in its screen under its control name;
// element n of a control array is named "cmbDI(n)". The binder of the user interface ties each record to a
// widget by that name; a test drives the records alone.
//
// Handlers run on what the user does. Two operations run the handler also when the program does it, because
// rules of the screens depend on it: SelectRow of a list and SelectPage of the pages. Setting a field of a
// record runs nothing.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace loader {

using Handler = std::function<void()>;
// 0xRRGGBB.
using Colour = std::uint32_t;
constexpr Colour White = 0xFFFFFF;

struct Screen;

enum class ControlKind {
  TextField,
  ListBox,
  Label,
  Button,
  ToolButton,
  CheckBox,
  Frame,
  TabPages,
  MenuEntry,
  Picture,
  Grid,
};

struct Control {
  Control(Screen& owner, ControlKind controlKind, std::string controlName);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Screen& screen;
  const ControlKind kind;
  const std::string name;
  bool enabled = true;
  bool visible = true;
  bool marked = false; // a cascade has just rewritten it: a tint until the next key press or navigation
  Handler onGotFocus;
};

// An edit field. `onChange` runs on each edit of the user; `onLostFocus` when the focus goes to another
// control of the program (never for a message box, a popup or another window).
struct TextField : Control {
  TextField(Screen& owner, std::string controlName);
  std::u16string text;
  int selStart = 0;  // in characters, from 0
  int selLength = 0; // in characters
  // Set with selStart and selLength; consumed once by the binder.
  bool selectionPending = false;
  bool readOnly = false;
  Handler onChange;
  Handler onLostFocus;
};

// A list of which one row is chosen. `index` -1: none.
struct ListBox : Control {
  ListBox(Screen& owner, std::string controlName);
  std::vector<std::u16string> items;
  std::vector<std::int32_t> itemData; // one for each item
  int index = -1;
  int indexBefore = -1; // the row that stood before the last pick: the same row again is no change
  Handler onChange;
};

struct Label : Control {
  Label(Screen& owner, std::string controlName);
  std::u16string caption;
  bool hasBackColour = false;
  Colour backColour = White;
  Handler onClick;
};

struct Button : Control {
  Button(Screen& owner, std::string controlName);
  std::u16string caption;
  Handler onClick;
};

struct ToolButton : Control {
  ToolButton(Screen& owner, std::string controlName);
  std::u16string toolTip;
  Handler onClick;
};

struct CheckBox : Control {
  CheckBox(Screen& owner, std::string controlName);
  std::u16string caption;
  bool checked = false;
  Handler onClick;
};

struct Frame : Control {
  Frame(Screen& owner, std::string controlName);
  std::u16string caption;
};

struct MenuEntry : Control {
  MenuEntry(Screen& owner, std::string controlName);
  std::u16string caption; // "&" marks the mnemonic; "-" is a separator
  bool checked = false;
  Handler onClick;
};

// A filled rectangle: the status lamp.
struct Picture : Control {
  Picture(Screen& owner, std::string controlName);
  Colour colour = 0;
};

struct TabPages : Control {
  struct Page {
    std::u16string caption;
    bool visible = true;
  };
  TabPages(Screen& owner, std::string controlName);
  std::vector<Page> pages;
  int current = -1;
  Handler onChange;
};

enum class CellAlignment { Left, Right, Centre };

struct Cell {
  std::u16string text;
  Colour back = White;
  CellAlignment alignment = CellAlignment::Left;
  bool operator==(const Cell&) const = default;
};

// A table of cells with fixed rows (headings) above and fixed columns at the left. Row and column indexes
// count from 0 and include the fixed ones. An index outside the table is a RunTimeFailure.
struct Grid : Control {
  Grid(Screen& owner, std::string controlName);

  int FixedRows = 1;
  int FixedCols = 1;
  int Row = 0; // the current cell
  int Col = 0;
  int RowSel = 0;  // the row at the other end of the selection; follows Row
  int TipCol = -1; // the column that tells a row while its heading is all that is seen of it; -1: none
  // While false nothing is drawn; the binder shows the whole change when it is true again.
  bool Redraw = true;
  Handler onClick;
  Handler onDoubleClick;

  [[nodiscard]] int Rows() const { return rows_; }
  [[nodiscard]] int Cols() const { return cols_; }
  // Keeps the cells that stay inside; new ones are empty and white. Negative sizes are a RunTimeFailure.
  void Resize(int rows, int cols);
  // Empties every cell, colours included; sizes stay. The table is laid out anew by it: a view forgets then
  // how wide the user has dragged its columns.
  void Clear();
  // How often that was done.
  [[nodiscard]] std::uint64_t Clearings() const { return clearings_; }

  [[nodiscard]] const Cell& CellAt(int row, int col) const;
  [[nodiscard]] const std::u16string& TextMatrix(int row, int col) const { return CellAt(row, col).text; }
  void SetText(int row, int col, std::u16string_view text);
  void SetBack(int row, int col, Colour colour);
  void SetAlignment(int row, int col, CellAlignment alignment);

  // Column width in twips (1/1440 inch); 0 hides the column.
  [[nodiscard]] int ColWidth(int col) const;
  void SetColWidth(int col, int twips);
  // Row and RowSel together.
  void SelectRow(int row);

  // Goes up with each change of a cell, a width or the size: what a view compares to know that it is stale.
  [[nodiscard]] std::uint64_t Revision() const { return revision_; }

private:
  [[nodiscard]] std::size_t At(int row, int col) const;
  int rows_ = 0;
  int cols_ = 0;
  std::vector<Cell> cells_;
  std::vector<int> colWidths_;
  std::uint64_t revision_ = 0;
  std::uint64_t clearings_ = 0;
};

struct Screen {
  explicit Screen(std::string screenName) : name(std::move(screenName)) {}
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  const std::string name; // "frmParamLoader": also the name of its form
  std::u16string caption;
  int widthPixels = 0; // 0: as the form says
  int heightPixels = 0;
  std::vector<Control*> controls; // in the order of registration
  // The control that asked for the focus; consumed once by the binder.
  Control* focusRequest = nullptr;
  // Asked before the screen closes, whatever the way; false keeps it open. Empty: it closes.
  std::function<bool()> onCloseQuery;
  // A file that the user drags onto the screen: whether it may be dropped now, and what is done with it then.
  // Empty: the screen takes none.
  std::function<bool()> mayTakeFile;
  std::function<void(const std::filesystem::path&)> onFileDropped;

  [[nodiscard]] Control* Find(std::string_view controlName);
  [[nodiscard]] const Control* Find(std::string_view controlName) const;
};

// Empties the list and selects nothing; runs no handler.
void ClearList(ListBox& list);
void AddItem(ListBox& list, std::u16string_view text, std::int32_t data = 0);
// The first `count` texts (all when count is negative or too large) in place of what was there.
void FillList(ListBox& list, std::span<const std::u16string> texts, int count = -1);
// Selects the row and runs the change handler, as the user's choice does. A row outside the list leaves the
// selection as it was and runs nothing: a stale row would be written back by the handler.
void SelectRow(ListBox& list, long row);
// The same without the handler: the row is shown, nobody has picked it. False for a row outside the list.
bool ShowRow(ListBox& list, long row);
// Selects the page and runs the change handler; a page outside leaves all as it was.
void SelectPage(TabPages& pages, int page);
void RequestFocus(Control& control);
// Focus to the field, and `length` characters from `start` selected.
void RequestFocusAndSelect(TextField& field, int start, int length);
void RequestFocusAndSelectAll(TextField& field);

// "cmbDI(3)".
[[nodiscard]] std::string ElementName(std::string_view array, int element);

// A control array: elements `first` up, each registered under its own name.
template <typename ControlType> class ControlArray {
public:
  ControlArray(Screen& owner, std::string_view name, int count, int first = 0) : first_(first) {
    for (int n = first; n < first + count; ++n) {
      elements_.emplace_back(owner, ElementName(name, n));
    }
  }
  [[nodiscard]] ControlType& operator()(int element) {
    return elements_.at(static_cast<std::size_t>(element - first_));
  }
  [[nodiscard]] int Count() const { return static_cast<int>(elements_.size()); }
  auto begin() { return elements_.begin(); }
  auto end() { return elements_.end(); }

private:
  int first_;
  std::deque<ControlType> elements_; // elements never move: the screen holds their addresses
};

} // namespace loader
