#include "qt/FieldColumn.h"

#include <QBoxLayout>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <algorithm>
#include <array>
#include <vector>

namespace loader {

namespace {

// Labels stand in the first column of a frame, and in the third of one with two fields in a row.
constexpr std::array LabelColumns{0, 2};
// Where the frames have units, they stand behind the second field.
constexpr int UnitColumn = 4;

// Two fields in a row, each behind its label, and a unit behind them; a small table has as many columns.
bool HoldsPairs(const QGridLayout& grid) {
  if (grid.columnCount() != 4 && grid.columnCount() != 5) {
    return false;
  }
  for (int row = 0; row < grid.rowCount(); ++row) {
    const QLayoutItem* item = grid.itemAtPosition(row, LabelColumns.back());
    if (item != nullptr && qobject_cast<const QLabel*>(item->widget()) == nullptr) {
      return false;
    }
  }
  return true;
}

// The grids of labels and fields of the frames in a column.
std::vector<QGridLayout*> LabelledGrids(const QWidget& column) {
  std::vector<QGridLayout*> grids;
  for (const QGroupBox* frame : column.findChildren<QGroupBox*>(QString(), Qt::FindDirectChildrenOnly)) {
    auto* grid = qobject_cast<QGridLayout*>(frame->layout());
    if (grid != nullptr && (grid->columnCount() == 2 || HoldsPairs(*grid)) && !frame->isHidden()) {
      grids.push_back(grid);
    }
  }
  return grids;
}

// Pixels of the widest label or unit of a column; what spans columns is none.
int ColumnWidth(const QGridLayout& grid, int labelColumn) {
  int width = 0;
  for (int index = 0; index < grid.count(); ++index) {
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid.getItemPosition(index, &row, &column, &rows, &columns);
    const QLayoutItem& item = *grid.itemAt(index);
    if (column == labelColumn && columns == 1 && !item.isEmpty()) {
      width = std::max(width, item.sizeHint().width());
    }
  }
  return width;
}

bool ChangesTheLayout(const QEvent& event) {
  return event.type() == QEvent::LayoutRequest || event.type() == QEvent::Resize ||
         event.type() == QEvent::Show;
}

} // namespace

FieldColumn::FieldColumn(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

void FieldColumn::setCharacters(int characters) {
  characters_ = characters;
  updateGeometry();
}

QSize FieldColumn::sizeHint() const {
  const QSize hint = QWidget::sizeHint();
  return hint.expandedTo({characters_ * fontMetrics().horizontalAdvance(u'0'), hint.height()});
}

bool FieldColumn::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) {
    AlignFields();
  }
  return QWidget::event(event);
}

void FieldColumn::AlignFields() {
  const std::vector<QGridLayout*> grids = LabelledGrids(*this);
  for (const int column : {LabelColumns.front(), LabelColumns.back(), UnitColumn}) {
    int width = 0;
    for (const QGridLayout* grid : grids) {
      width = std::max(width, ColumnWidth(*grid, column));
    }
    for (QGridLayout* grid : grids) {
      if (column < grid->columnCount() && grid->columnMinimumWidth(column) != width) {
        grid->setColumnMinimumWidth(column, width);
      }
    }
  }
}

FieldColumns::FieldColumns(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

QBoxLayout* FieldColumns::Columns() const {
  return qobject_cast<QBoxLayout*>(layout()); // none before the form has set it
}

QSize FieldColumns::sizeHint() const {
  const QBoxLayout* columns = Columns();
  if (columns == nullptr) {
    return QWidget::sizeHint();
  }
  QSize size(-columns->spacing(), 0);
  for (const QWidget* column : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    const QSize each = column->sizeHint();
    size = {size.width() + columns->spacing() + each.width(), std::max(size.height(), each.height())};
  }
  return size;
}

QSize FieldColumns::minimumSizeHint() const {
  int width = 0;
  for (const QWidget* column : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    width = std::max(width, column->minimumSizeHint().width());
  }
  return {width, QWidget::minimumSizeHint().height()};
}

bool FieldColumns::event(QEvent* event) {
  if (ChangesTheLayout(*event)) {
    Arrange();
  }
  return QWidget::event(event);
}

int FieldColumns::WidthSideBySide(const QWidget& column) {
  int width = column.minimumSizeHint().width();
  for (const FieldColumns* inner : column.parentWidget()->findChildren<FieldColumns*>()) {
    if (inner != &column && !column.isAncestorOf(inner)) {
      continue;
    }
    width = std::max(width, inner->NeededSideBySide());
  }
  return width;
}

int FieldColumns::NeededSideBySide() const {
  const QBoxLayout* columns = Columns();
  if (columns == nullptr) {
    return 0;
  }
  int needed = -columns->spacing();
  for (const QWidget* column : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    needed += WidthSideBySide(*column) + columns->spacing();
  }
  return needed;
}

void FieldColumns::Arrange() {
  QBoxLayout* columns = Columns();
  if (columns == nullptr || !isVisible()) {
    return; // before it is shown its width is none
  }
  const auto wanted = NeededSideBySide() <= width() ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
  if (columns->direction() != wanted) {
    columns->setDirection(wanted);
  }
}

} // namespace loader
