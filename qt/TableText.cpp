#include "qt/TableText.h"

#include <QStringList>

namespace loader {

namespace {

// As a spreadsheet reads it back: a text that begins with a quote would be taken for a quoted one.
QString SpreadsheetCell(QString text) {
  for (const QChar breaks : {u'\t', u'\r', u'\n'}) {
    text.replace(breaks, u' ');
  }
  return text.startsWith(u'"') ? u'"' + QString(text).replace(u'"', QStringLiteral("\"\"")) + u'"' : text;
}

QString Folded(const QString& text) {
  return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

} // namespace

QString TabSeparated(const GridModel& model, const std::vector<int>& rows, const std::vector<int>& cols) {
  QStringList lines;
  for (const int row : rows) {
    QStringList cells;
    for (const int col : cols) {
      cells.push_back(SpreadsheetCell(model.data(model.index(row, col), Qt::DisplayRole).toString()));
    }
    lines.push_back(cells.join(u'\t'));
  }
  return lines.join(u'\n');
}

QModelIndex FindText(const GridModel& model, const QModelIndex& from, const QString& text,
                     Direction direction, const std::function<bool(int)>& hidden) {
  const int cols = model.columnCount();
  const int cells = model.rowCount() * cols;
  const QString wanted = Folded(text);
  if (cells == 0 || wanted.isEmpty()) {
    return {};
  }
  const int step = direction == Direction::Forward ? 1 : cells - 1;
  int at = from.isValid() ? from.row() * cols + from.column() : cells - step;
  for (int looked = 0; looked < cells; ++looked) {
    at = (at + step) % cells;
    const QModelIndex index = model.index(at / cols, at % cols);
    if (!hidden(index.column()) && Folded(model.data(index, Qt::DisplayRole).toString()).contains(wanted)) {
      return index;
    }
  }
  return {};
}

} // namespace loader
