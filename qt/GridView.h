// A table of cells with headings of one or more rows and fixed columns that stay put while the rest scrolls.
//
// Column widths come in twips of text: 15 to a pixel where a full-width character is 12 pixels wide (9 points
// at 96 dots an inch), and in that proportion with any other font. The cell's margins come on top, so that a
// tag of full length is not cut; and no column is narrower than its heading. Width 0 hides. The user may drag
// a column wider or narrower; it stays so until the table is laid out anew.
//
// Cells that are marked by mouse or keyboard can be copied for a spreadsheet (Ctrl+Shift+C), and a text can
// be found (Ctrl+F, F3). Both, and the opening of a row, stand in the menu of the right button.
#pragma once

#include <QTableView>
#include <map>

#include "platform/Controls.h"
#include "qt/GridModel.h"
#include "qt/TableText.h"

namespace loader {

class FindBar;
class HeadingView;

// Twips that one pixel stands for in a font, so that widths grow and shrink with it.
[[nodiscard]] double TwipsPerPixel(const QFont& font);

class GridView : public QTableView {
  Q_OBJECT
  // Half-width characters to which the first column may give way where the table would have to be scrolled
  // sideways otherwise; 0: it doesn't. The setter has the name by which compiled forms call it.
  Q_PROPERTY(int firstColumnCharacters READ FirstColumnCharacters WRITE setFirstColumnCharacters)
  // Rows that the table would like to show at most; 0: all of them.
  Q_PROPERTY(int mostRows READ MostRows WRITE setMostRows)

public:
  explicit GridView(QWidget* parent = nullptr);

  static constexpr int CellMargin = 4; // pixels at either side of a cell's text

  // Shows what differs; nothing while the record's Redraw is false.
  void ShowRecord(const Grid& grid);
  [[nodiscard]] const GridModel& Model() const { return model_; }
  [[nodiscard]] int FirstColumnCharacters() const { return firstColumnCharacters_; }
  void setFirstColumnCharacters(int characters) { firstColumnCharacters_ = characters; }
  [[nodiscard]] int MostRows() const { return mostRows_; }
  void setMostRows(int rows) { mostRows_ = rows; }
  [[nodiscard]] const HeadingView& Headings() const { return *above_; }
  // A double click does something in this table.
  void SetOpensRows(bool opens) { opensRows_ = opens; }
  // The marked cells go to the clipboard, as they are shown.
  void CopyCells() const;
  // All columns and rows and room for the scroll bars: the most that a page gives a small table.
  [[nodiscard]] QSize sizeHint() const override;

signals:
  // The user moved the current cell; indexes as in the record.
  void CellEntered(int row, int col);
  void CellClicked();
  // A double click or Enter on the current cell.
  void CellOpened();

protected:
  void keyPressEvent(QKeyEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void changeEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void updateGeometries() override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

private:
  void LayOut();
  void LayOutFixedColumns();
  void LayOutColumns();
  void WidenForHeadings();
  void GiveWay();
  void TakeDragged(int col, int width);
  void FitColumn(int col);
  [[nodiscard]] FindBar& Find();
  void PlaceFind();
  bool GoToText(const QString& text, Direction direction);
  bool KeyOfTable(const QKeyEvent& key);
  void ShowCurrentCell(const Grid& grid);
  void EnterRow(int row);
  [[nodiscard]] int Pixels(int twips) const;
  [[nodiscard]] bool IsCut(const QModelIndex& index) const;

  GridModel model_;
  HeadingView* above_;
  HeadingView* left_;
  QWidget* corner_;
  int firstColumnCharacters_ = 0;
  int mostRows_ = 0;
  FindBar* find_ = nullptr;    // made when it is first opened
  int firstColumnWidth_ = 0;   // pixels, where there is room
  int laidOutLength_ = 0;      // of all columns, as they were laid out
  std::map<int, int> dragged_; // widths that the user has given to columns
  std::uint64_t clearings_ = 0;
  bool layingOut_ = false; // a width that changes is the program's, not the user's
  bool opensRows_ = false;
  double twipsPerPixel_ = 1; // of the font that the columns are laid out in
  bool showing_ = false;     // a move of the current cell is the program's, not the user's
  bool seen_ = false;        // it has been shown before
};

} // namespace loader
