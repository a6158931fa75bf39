// The least that a program with a table starts with: a bare window with one table view in the loader's font.
//   bench-start-bare             a table of text, as many rows and columns as the table of channels
//   bench-start-bare --one-cell  a table of one cell of Japanese text
//   bench-start-bare --empty     a table without a model
#include <QApplication>
#include <QMainWindow>
#include <QStandardItemModel>
#include <QTableView>
#include <string_view>

#include "bench/PaintedWatch.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QFont text = QApplication::font();
  text.setFamilies({QStringLiteral("Noto Sans CJK JP")});
  QApplication::setFont(text);
  const loader::bench::PaintedWatch watch(loader::bench::TellPaintedAndLeave);

  const std::string_view kind = argc < 2 ? std::string_view() : argv[1];
  const int rows = kind == "--empty" ? 0 : kind == "--one-cell" ? 1 : 36;
  const int columns = kind == "--empty" ? 0 : kind == "--one-cell" ? 1 : 55;
  QStandardItemModel model(rows, columns);
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      model.setItem(row, column, new QStandardItem(QStringLiteral("チャネル%1").arg(row + 1)));
    }
  }
  QMainWindow window;
  auto* table = new QTableView;
  if (kind != "--empty") {
    table->setModel(&model);
  }
  window.setCentralWidget(table);
  window.resize(800, 650); // the loader's own start size
  window.show();
  return QApplication::exec();
}
