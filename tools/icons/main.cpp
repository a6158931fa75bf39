// icons: one drawing as pictures in the sizes that desktops ask for.
//
//   icons FILE.svg NAME FOLDER SIZE...    writes FOLDER/<size>x<size>/NAME.png
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen"); // it draws, it shows nothing
  const QGuiApplication application(argc, argv);
  const QStringList words = QGuiApplication::arguments();
  QSvgRenderer drawing(words.value(1));
  if (words.size() < 5 || !drawing.isValid()) {
    std::fputs("usage: icons FILE.svg NAME FOLDER SIZE...\n", stderr);
    return 64;
  }
  for (const QString& word : words.mid(4)) {
    const int size = word.toInt();
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    const QString folder = QStringLiteral("%1/%2x%2").arg(words.at(3)).arg(size);
    if (!QDir().mkpath(folder) ||
        !image.save(folder + QLatin1Char('/') + words.at(2) + QStringLiteral(".png"))) {
      std::fprintf(stderr, "icons: %s cannot be written\n", qPrintable(folder));
      return 1;
    }
  }
  return 0;
}
