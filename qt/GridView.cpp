#include "qt/GridView.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "core/OwnTexts.h"
#include "qt/ActionKeys.h"
#include "qt/CellPainter.h"
#include "qt/FindBar.h"
#include "qt/HeadingView.h"
#include "qt/QtText.h"

namespace loader {

namespace {

constexpr int GridLine = 1; // pixels that the view takes of each cell

// The corner above the fixed columns and left of the fixed rows.
class Corner final : public QWidget {
public:
  Corner(GridView& view, const GridModel& model) : QWidget(&view), model_(model) {}
  std::vector<int> widths;
  int lineHeight = 0;

protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Button));
    int left = 0;
    for (std::size_t col = 0; col < widths.size(); ++col) {
      int top = 0;
      for (int row = 0; row < model_.FixedRows(); ++row) {
        const QString text = ToQt(model_.CellAt(row, static_cast<int>(col)).text).trimmed();
        if (text.isEmpty() && row + 1 < model_.FixedRows()) {
          continue; // leaves its place to the one below
        }
        const int bottom = (row + 1) * lineHeight;
        const QRect box(left, top, widths[col], bottom - top);
        PaintHeadingCell(painter, palette(), box, box, text, false);
        top = bottom;
      }
      left += widths[col];
    }
  }

private:
  const GridModel& model_;
};

// Kana, kanji and full-width forms, and half-width katakana: none of them is wider than a kanji.
bool IsOneKanjiWideAtMost(QChar character) {
  struct Range {
    char16_t first;
    char16_t last;
  };
  constexpr std::array Ranges{Range{u'\u3041', u'\u3096'}, Range{u'\u30A1', u'\u30FC'},
                              Range{u'一', u'\u9FA0'}, Range{u'\uFF01', u'\uFF9F'}};
  return std::any_of(Ranges.begin(), Ranges.end(), [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
}

} // namespace

double TwipsPerPixel(const QFont& font) {
  constexpr double TwipsAtReference = 15;
  constexpr double ReferenceAdvance = 12; // of a full-width character, in pixels
  const double advance = QFontMetricsF(font).horizontalAdvance(QStringLiteral("あ"));
  return advance > 0 ? TwipsAtReference * ReferenceAdvance / advance : TwipsAtReference;
}

GridView::GridView(QWidget* parent)
    : QTableView(parent), above_(new HeadingView(Qt::Horizontal, model_, this)),
      left_(new HeadingView(Qt::Vertical, model_, this)), corner_(new Corner(*this, model_)) {
  setHorizontalHeader(above_);
  setVerticalHeader(left_);
  setCornerButtonEnabled(false);
  setModel(&model_);
  setItemDelegate(new CellPainter(this));
  setSelectionMode(QAbstractItemView::ContiguousSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setTabKeyNavigation(false); // Tab goes to the next control
  setWordWrap(false);
  connect(this, &QAbstractItemView::clicked, this, [this] { emit CellClicked(); });
  connect(this, &QAbstractItemView::doubleClicked, this, [this] { emit CellOpened(); });
  // The base class would go to the row's first cell.
  disconnect(left_, &QHeaderView::sectionPressed, this, nullptr);
  disconnect(left_, &QHeaderView::sectionEntered, this, nullptr);
  connect(left_, &QHeaderView::sectionPressed, this, [this](int row) { EnterRow(row); });
  connect(above_, &QHeaderView::sectionResized, this,
          [this](int col, int /*before*/, int width) { TakeDragged(col, width); });
  disconnect(above_, &QHeaderView::sectionHandleDoubleClicked, this, nullptr);
  connect(above_, &QHeaderView::sectionHandleDoubleClicked, this, [this](int col) { FitColumn(col); });
  connect(left_, &QHeaderView::sectionDoubleClicked, this, [this](int row) {
    EnterRow(row);
    emit CellOpened();
  });
}

void GridView::ShowRecord(const Grid& grid) {
  if (!grid.Redraw) {
    return;
  }
  showing_ = true;
  const GridModel::Change change = model_.Take(grid);
  const bool anew = std::exchange(clearings_, grid.Clearings()) != grid.Clearings() && !dragged_.empty();
  if (anew) {
    dragged_.clear();
  }
  if (change.headings || change.widths || anew) {
    LayOut();
  }
  ShowCurrentCell(grid);
  showing_ = false;
}

void GridView::ShowCurrentCell(const Grid& grid) {
  const int row = grid.Row - model_.FixedRows();
  int col = std::max(grid.Col - model_.FixedCols(), 0);
  while (col + 1 < model_.columnCount() && isColumnHidden(col)) {
    ++col;
  }
  const QModelIndex wanted = row < 0 ? QModelIndex() : model_.index(row, col);
  if (wanted == currentIndex()) {
    return;
  }
  // The place where the user looks stays: the program often goes to the first row after a rewrite.
  const bool follows = hasAutoScroll();
  setAutoScroll(false);
  selectionModel()->setCurrentIndex(wanted, QItemSelectionModel::ClearAndSelect);
  setAutoScroll(follows);
}

// The whole row is marked, and the current cell stays in its column.
void GridView::EnterRow(int row) {
  const int col = std::max(currentIndex().column(), 0);
  selectionModel()->select({model_.index(row, 0), model_.index(row, model_.columnCount() - 1)},
                           QItemSelectionModel::ClearAndSelect);
  selectionModel()->setCurrentIndex(model_.index(row, col), QItemSelectionModel::NoUpdate);
}

void GridView::CopyCells() const {
  std::vector<int> rows;
  std::vector<int> cols;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
      rows.push_back(row);
    }
    for (int col = range.left(); col <= range.right(); ++col) {
      if (!isColumnHidden(col)) {
        cols.push_back(col);
      }
    }
    break; // there is never more than one
  }
  if (!rows.empty()) {
    QGuiApplication::clipboard()->setText(TabSeparated(model_, rows, cols));
  }
}

FindBar& GridView::Find() {
  if (find_ == nullptr) {
    find_ = new FindBar(*this, [this](const QString& text, Direction direction) { // the table's own
      return GoToText(text, direction);
    });
  }
  PlaceFind();
  return *find_;
}

bool GridView::GoToText(const QString& text, Direction direction) {
  const QModelIndex found =
      FindText(model_, currentIndex(), text, direction, [this](int col) { return isColumnHidden(col); });
  if (found.isValid()) {
    setCurrentIndex(found);
    PlaceFind();
  }
  return found.isValid();
}

void GridView::PlaceFind() {
  if (find_ != nullptr) {
    const QRect area = viewport()->geometry();
    find_->Place(area, visualRect(currentIndex()).translated(area.topLeft()));
  }
}

bool GridView::KeyOfTable(const QKeyEvent& key) {
  const Qt::KeyboardModifiers modifiers = key.modifiers();
  if (key.key() == Qt::Key_C && modifiers == (Qt::ControlModifier | Qt::ShiftModifier)) {
    CopyCells();
  } else if (key.key() == Qt::Key_F && modifiers == Qt::ControlModifier) {
    Find().Open();
  } else if (key.key() == Qt::Key_F3 && (modifiers & ~Qt::ShiftModifier) == Qt::NoModifier) {
    Find().GoOn(modifiers == Qt::NoModifier ? Direction::Forward : Direction::Backward);
  } else {
    return false;
  }
  return true;
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const QPoint at = byKey ? visualRect(currentIndex()).bottomLeft() : event->pos();
  auto* menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("tableMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  LetLettersWork(*menu);
  const auto add = [menu](OwnTextId text, const QString& key) {
    return menu->addAction(ToQt(OwnText(text)) + u'\t' + key);
  };
  if (opensRows_ && currentIndex().isValid()) {
    connect(add(OwnTextId::OpenTableRow, ToQt(OwnText(OwnTextId::DoubleClickOpens))), &QAction::triggered,
            this, [this] { emit CellOpened(); });
    menu->addSeparator();
  }
  connect(add(OwnTextId::CopyTableCells, QStringLiteral("Ctrl+Shift+C")), &QAction::triggered, this,
          [this] { CopyCells(); });
  connect(add(OwnTextId::FindInTable, QStringLiteral("Ctrl+F")), &QAction::triggered, this,
          [this] { Find().Open(); });
  connect(add(OwnTextId::FindNext, QStringLiteral("F3")), &QAction::triggered, this,
          [this] { Find().GoOn(Direction::Forward); });
  connect(add(OwnTextId::FindPrevious, QStringLiteral("Shift+F3")), &QAction::triggered, this,
          [this] { Find().GoOn(Direction::Backward); });
  menu->popup(viewport()->mapToGlobal(at));
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  left_->MarkRow(current.isValid() ? current.row() : -1);
  if (current.isValid() && !showing_) {
    emit CellEntered(current.row() + model_.FixedRows(), current.column() + model_.FixedCols());
  }
}

void GridView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (currentIndex().isValid()) {
      emit CellOpened();
    }
    return;
  }
  if (!KeyOfTable(*event)) {
    QTableView::keyPressEvent(event);
  }
}

void GridView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    dragged_.clear(); // pixels of another size of characters
    LayOut();
  }
}

// Of a cell's text something is not to be seen: the cell is too narrow for it, or stands half outside the
// table.
bool GridView::IsCut(const QModelIndex& index) const {
  const QRect room = CellRoom(visualRect(index));
  const int width = fontMetrics().horizontalAdvance(index.data().toString());
  const auto alignment = index.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
  const QRect text = QStyle::alignedRect(Qt::LeftToRight, alignment, {width, 1}, room);
  return width > room.width() || text.left() < 0 || text.right() >= viewport()->width();
}

// A text that is cut is told whole.
bool GridView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const QModelIndex index = indexAt(help.pos());
    const QString tip = IsCut(index) ? PlainTip(index.data().toString()) : QString();
    QToolTip::showText(help.globalPos(), tip, viewport(), visualRect(index));
    return true;
  }
  return QTableView::viewportEvent(event);
}

void GridView::updateGeometries() {
  QTableView::updateGeometries();
  const QRect above = above_->geometry();
  const QRect left = left_->geometry();
  corner_->setGeometry(left.left(), above.top(), left.width(), above.height());
  corner_->setVisible(!above_->isHidden() && !left_->isHidden());
  corner_->raise();
}

int GridView::Pixels(int twips) const {
  return static_cast<int>(std::ceil(twips / twipsPerPixel_));
}

void GridView::LayOut() {
  const bool within = std::exchange(layingOut_, true);
  twipsPerPixel_ = TwipsPerPixel(font());
  above_->setVisible(model_.FixedRows() > 0);
  left_->setVisible(model_.FixedCols() > 0);
  left_->setDefaultSectionSize(fontMetrics().height() + 6);
  LayOutFixedColumns();
  LayOutColumns();
  above_->Rebuild();
  WidenForHeadings();
  left_->Rebuild();
  firstColumnWidth_ = columnWidth(0);
  laidOutLength_ = above_->length();
  for (const auto& [col, width] : dragged_) {
    if (!isColumnHidden(col)) {
      setColumnWidth(col, width);
    }
  }
  layingOut_ = within;
  GiveWay();
  updateGeometries();
  updateGeometry();
}

void GridView::GiveWay() {
  if (firstColumnCharacters_ == 0 || isColumnHidden(0) || dragged_.contains(0)) {
    return;
  }
  const int others = above_->length() - columnWidth(0);
  const int least =
      firstColumnCharacters_ * fontMetrics().horizontalAdvance(u'0') + 2 * CellMargin + GridLine;
  const int room = std::max(viewport()->width() - others, least);
  const int width = std::min(room, firstColumnWidth_);
  if (width != columnWidth(0)) {
    const bool within = std::exchange(layingOut_, true);
    setColumnWidth(0, width);
    layingOut_ = within;
  }
}

void GridView::TakeDragged(int col, int width) {
  if (!layingOut_ && width > 0) {
    dragged_[col] = width;
    above_->viewport()->update(); // a heading over several columns begins before this one
  }
}

// As wide as what it shows: its cells, and its own heading.
void GridView::FitColumn(int col) {
  int width = 0;
  for (int row = 0; row < model_.rowCount(); ++row) {
    width = std::max(width, fontMetrics().horizontalAdvance(model_.index(row, col).data().toString()));
  }
  const QString heading =
      ToQt(model_.CellAt(model_.FixedRows() - 1, col + model_.FixedCols()).text).trimmed();
  setColumnWidth(col, std::max(width + 2 * CellMargin + GridLine,
                               above_->fontMetrics().horizontalAdvance(heading) + HeadingView::Margin));
}

void GridView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  GiveWay();
  PlaceFind();
}

// Where the program has put the current cell is where the user looks first; later the place is the user's
// own.
void GridView::showEvent(QShowEvent* event) {
  QTableView::showEvent(event);
  if (!std::exchange(seen_, true) && currentIndex().isValid()) {
    scrollTo(currentIndex());
  }
}

QSize GridView::sizeHint() const {
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
  const int around = bar + 2 * frameWidth();
  const int most = mostRows_ > 0 ? mostRows_ * left_->defaultSectionSize() : left_->length();
  return {left_->sizeHint().width() + laidOutLength_ + around,
          above_->sizeHint().height() + std::min(left_->length(), most) + around};
}

void GridView::LayOutFixedColumns() {
  std::vector<int> widths;
  for (int col = 0; col < model_.FixedCols(); ++col) {
    int width = Pixels(model_.WidthTwips(col));
    for (int row = 0; width > 0 && row < model_.FixedRows() + model_.rowCount(); ++row) {
      const QString text = ToQt(model_.CellAt(row, col).text);
      width = std::max(width, fontMetrics().horizontalAdvance(text) + HeadingView::Margin);
    }
    widths.push_back(width);
  }
  auto& corner = static_cast<Corner&>(*corner_);
  corner.widths = widths;
  corner.lineHeight = above_->LineHeight();
  corner.update();
  left_->SetFixedColumnWidths(std::move(widths));
}

void GridView::LayOutColumns() {
  for (int col = 0; col < model_.columnCount(); ++col) {
    const int textWidth = Pixels(model_.WidthTwips(col + model_.FixedCols()));
    if (isColumnHidden(col) != (textWidth == 0)) {
      setColumnHidden(col, textWidth == 0);
    }
    if (textWidth > 0) {
      setColumnWidth(col, textWidth + 2 * CellMargin + GridLine);
    }
  }
}

void GridView::WidenForHeadings() {
  // To measure a text loads each of its characters, painted or not; most headings have room at the first
  // look.
  const double kanji = QFontMetricsF(above_->font()).horizontalAdvance(QStringLiteral("値"));
  const auto surelyFits = [kanji](const QString& text, int width) {
    return std::ceil(kanji * static_cast<double>(text.size())) + HeadingView::Margin <= width &&
           std::all_of(text.begin(), text.end(), IsOneKanjiWideAtMost);
  };
  // Narrow headings first: they may leave enough room for the wide ones above them.
  for (auto box = above_->Boxes().rbegin(); box != above_->Boxes().rend(); ++box) {
    int width = 0;
    for (int col = box->firstCol; col <= box->lastCol; ++col) {
      width += isColumnHidden(col) ? 0 : columnWidth(col);
    }
    if (surelyFits(box->text, width)) {
      continue;
    }
    const int wanted = above_->fontMetrics().horizontalAdvance(box->text) + HeadingView::Margin;
    if (width < wanted) {
      setColumnWidth(box->lastCol, columnWidth(box->lastCol) + wanted - width);
    }
  }
}

} // namespace loader
