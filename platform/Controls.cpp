#include "platform/Controls.h"

#include <algorithm>
#include <stdexcept>

#include "platform/RunTimeFailure.h"

namespace loader {

Control::Control(Screen& owner, ControlKind controlKind, std::string controlName)
    : screen(owner), kind(controlKind), name(std::move(controlName)) {
  if (owner.Find(name) != nullptr) {
    throw std::logic_error("two controls named " + name + " on " + owner.name);
  }
  owner.controls.push_back(this);
}

TextField::TextField(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::TextField, std::move(controlName)) {}
ListBox::ListBox(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::ListBox, std::move(controlName)) {}
Label::Label(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::Label, std::move(controlName)) {}
Button::Button(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::Button, std::move(controlName)) {}
ToolButton::ToolButton(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::ToolButton, std::move(controlName)) {}
CheckBox::CheckBox(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::CheckBox, std::move(controlName)) {}
Frame::Frame(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::Frame, std::move(controlName)) {}
MenuEntry::MenuEntry(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::MenuEntry, std::move(controlName)) {}
Picture::Picture(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::Picture, std::move(controlName)) {}
TabPages::TabPages(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::TabPages, std::move(controlName)) {}
Grid::Grid(Screen& owner, std::string controlName)
    : Control(owner, ControlKind::Grid, std::move(controlName)) {}

std::size_t Grid::At(int row, int col) const {
  if (row < 0 || row >= rows_ || col < 0 || col >= cols_) {
    throw RunTimeFailure("cell outside the table " + name);
  }
  return static_cast<std::size_t>(row) * static_cast<std::size_t>(cols_) + static_cast<std::size_t>(col);
}

void Grid::Resize(int rows, int cols) {
  if (rows < 0 || cols < 0) {
    throw RunTimeFailure("negative size of the table " + name);
  }
  if (rows == rows_ && cols == cols_) {
    return;
  }
  std::vector<Cell> cells(static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols));
  for (int r = 0; r < std::min(rows, rows_); ++r) {
    for (int c = 0; c < std::min(cols, cols_); ++c) {
      cells[static_cast<std::size_t>(r) * static_cast<std::size_t>(cols) + static_cast<std::size_t>(c)] =
          std::move(cells_[At(r, c)]);
    }
  }
  cells_ = std::move(cells);
  // The width of a new column that nobody has set: two thirds of an inch.
  constexpr int DefaultColumnTwips = 960;
  colWidths_.resize(static_cast<std::size_t>(cols), DefaultColumnTwips);
  rows_ = rows;
  cols_ = cols;
  Row = std::clamp(Row, 0, std::max(0, rows - 1));
  Col = std::clamp(Col, 0, std::max(0, cols - 1));
  RowSel = Row;
  ++revision_;
}

void Grid::Clear() {
  ++clearings_;
  std::fill(cells_.begin(), cells_.end(), Cell{});
  ++revision_;
}

const Cell& Grid::CellAt(int row, int col) const {
  return cells_[At(row, col)];
}

void Grid::SetText(int row, int col, std::u16string_view text) {
  Cell& cell = cells_[At(row, col)];
  if (cell.text != text) {
    cell.text = text;
    ++revision_;
  }
}

void Grid::SetBack(int row, int col, Colour colour) {
  Cell& cell = cells_[At(row, col)];
  if (cell.back != colour) {
    cell.back = colour;
    ++revision_;
  }
}

void Grid::SetAlignment(int row, int col, CellAlignment alignment) {
  Cell& cell = cells_[At(row, col)];
  if (cell.alignment != alignment) {
    cell.alignment = alignment;
    ++revision_;
  }
}

int Grid::ColWidth(int col) const {
  if (col < 0 || col >= cols_) {
    throw RunTimeFailure("column outside the table " + name);
  }
  return colWidths_[static_cast<std::size_t>(col)];
}

void Grid::SetColWidth(int col, int twips) {
  if (ColWidth(col) != twips) {
    colWidths_[static_cast<std::size_t>(col)] = twips;
    ++revision_;
  }
}

void Grid::SelectRow(int row) {
  if (row < 0 || row >= rows_) {
    throw RunTimeFailure("row outside the table " + name);
  }
  Row = row;
  RowSel = row;
}

namespace {

Control* Named(const std::vector<Control*>& controls, std::string_view name) {
  const auto found = std::find_if(controls.begin(), controls.end(),
                                  [&](const Control* control) { return control->name == name; });
  return found == controls.end() ? nullptr : *found;
}

} // namespace

Control* Screen::Find(std::string_view controlName) {
  return Named(controls, controlName);
}
const Control* Screen::Find(std::string_view controlName) const {
  return Named(controls, controlName);
}

void ClearList(ListBox& list) {
  list.items.clear();
  list.itemData.clear();
  list.index = -1;
}

void AddItem(ListBox& list, std::u16string_view text, std::int32_t data) {
  list.items.emplace_back(text);
  list.itemData.push_back(data);
}

void FillList(ListBox& list, std::span<const std::u16string> texts, int count) {
  ClearList(list);
  const std::size_t all = texts.size();
  const std::size_t taken = count < 0 ? all : std::min(all, static_cast<std::size_t>(count));
  for (const std::u16string& text : texts.first(taken)) {
    AddItem(list, text);
  }
}

bool ShowRow(ListBox& list, long row) {
  if (row < 0 || row >= static_cast<long>(list.items.size())) {
    return false;
  }
  list.index = static_cast<int>(row);
  return true;
}

void SelectRow(ListBox& list, long row) {
  const int before = list.index;
  if (!ShowRow(list, row)) {
    return;
  }
  list.indexBefore = before;
  if (list.onChange) {
    list.onChange();
  }
}

void SelectPage(TabPages& pages, int page) {
  if (page < 0 || page >= static_cast<int>(pages.pages.size())) {
    return;
  }
  pages.current = page;
  if (pages.onChange) {
    pages.onChange();
  }
}

void RequestFocus(Control& control) {
  control.screen.focusRequest = &control;
}

void RequestFocusAndSelect(TextField& field, int start, int length) {
  RequestFocus(field);
  field.selStart = start;
  field.selLength = length;
  field.selectionPending = true;
}

void RequestFocusAndSelectAll(TextField& field) {
  RequestFocusAndSelect(field, 0, static_cast<int>(field.text.size()));
}

std::string ElementName(std::string_view array, int element) {
  return std::string(array) + "(" + std::to_string(element) + ")";
}

} // namespace loader
