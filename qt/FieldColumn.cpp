#include "qt/FieldColumn.h"

#include <QBoxLayout>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <algorithm>
#include <vector>

namespace loader {

namespace {

constexpr int LabelColumn = 0;

// The grids of labels and fields of the frames in a column.
std::vector<QGridLayout*> LabelledGrids(const QWidget& column) {
  std::vector<QGridLayout*> grids;
  for (const QGroupBox* frame : column.findChildren<QGroupBox*>(QString(), Qt::FindDirectChildrenOnly)) {
    auto* grid = qobject_cast<QGridLayout*>(frame->layout());
    if (grid != nullptr && grid->columnCount() == 2 && !frame->isHidden()) {
      grids.push_back(grid);
    }
  }
  return grids;
}

// Pixels of the widest label; a heading that spans the columns is none.
int LabelWidth(const QGridLayout& grid) {
  int width = 0;
  for (int index = 0; index < grid.count(); ++index) {
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid.getItemPosition(index, &row, &column, &rows, &columns);
    const QLayoutItem& item = *grid.itemAt(index);
    if (column == LabelColumn && columns == 1 && !item.isEmpty()) {
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
  int width = 0;
  for (const QGridLayout* grid : grids) {
    width = std::max(width, LabelWidth(*grid));
  }
  for (QGridLayout* grid : grids) {
    if (grid->columnMinimumWidth(LabelColumn) != width) {
      grid->setColumnMinimumWidth(LabelColumn, width);
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

void FieldColumns::Arrange() {
  QBoxLayout* columns = Columns();
  if (columns == nullptr || !isVisible()) {
    return; // before it is shown its width is none
  }
  int needed = -columns->spacing();
  for (const QWidget* column : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    needed += column->minimumSizeHint().width() + columns->spacing();
  }
  const auto wanted = needed <= width() ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
  if (columns->direction() != wanted) {
    columns->setDirection(wanted);
  }
}

} // namespace loader
