// The least that a program with a table starts with: a bare window with one table view in the loader's font.
//   bench-start-bare          a table of text, as many rows and columns as the table of channels
//   bench-start-bare --empty  a table without a model
#include <QApplication>
#include <QMainWindow>
#include <QStandardItemModel>
#include <QTableView>
#include <string_view>

#include "bench/PaintedWatch.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QFont text = QApplication::font();
  text.setFamilies({QStringLiteral("Noto Sans CJK JP"), text.family()});
  QApplication::setFont(text);
  const loader::bench::PaintedWatch watch(loader::bench::TellPaintedAndLeave);

  constexpr int Rows = 36;
  constexpr int Columns = 55;
  QStandardItemModel model(Rows, Columns);
  for (int row = 0; row < Rows; ++row) {
    for (int column = 0; column < Columns; ++column) {
      model.setItem(row, column, new QStandardItem(QStringLiteral("チャネル%1").arg(row + 1)));
    }
  }
  QMainWindow window;
  auto* table = new QTableView;
  if (argc < 2 || std::string_view(argv[1]) != "--empty") {
    table->setModel(&model);
  }
  window.setCentralWidget(table);
  window.resize(800, 650); // the loader's own start size
  window.show();
  return QApplication::exec();
}
