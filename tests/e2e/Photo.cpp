#include "tests/e2e/Photo.h"

#include <QApplication>
#include <QFontMetrics>
#include <QImageWriter>
#include <QPainter>
#include <algorithm>
#include <map>
#include <vector>

#include "tests/e2e/Guest.h"

namespace loader::tour {

namespace {

constexpr QRgb Frame = qRgb(0x60, 0x68, 0x70);
constexpr QRgb Title = qRgb(0xd8, 0xdf, 0xe8);

QImage Blank(const QSize& size, QRgb colour = qRgb(0xff, 0xff, 0xff)) {
  QImage picture(size, QImage::Format_RGB32);
  picture.fill(colour);
  return picture;
}

int Distance(QRgb a, QRgb b) {
  const auto square = [](int difference) { return difference * difference; };
  return square(qRed(a) - qRed(b)) + square(qGreen(a) - qGreen(b)) + square(qBlue(a) - qBlue(b));
}

// The colours of the picture, the most frequent one first.
std::vector<QRgb> ColoursOf(const QImage& picture) {
  std::map<QRgb, int> count;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      ++count[picture.pixel(x, y)];
    }
  }
  std::vector<QRgb> colours;
  for (const auto& [colour, pixels] : count) {
    colours.push_back(colour);
  }
  std::ranges::stable_sort(colours, [&](QRgb a, QRgb b) { return count.at(a) > count.at(b); });
  return colours;
}

// As many of them as a palette holds, none so near to another that the eye takes them for one.
std::vector<QRgb> PaletteOf(const std::vector<QRgb>& colours) {
  constexpr std::size_t Most = 256;
  constexpr int Near = 40;
  std::vector<QRgb> kept;
  for (const QRgb colour : colours) {
    const bool known = std::ranges::any_of(kept, [&](QRgb other) { return Distance(colour, other) < Near; });
    if (!known && kept.size() < Most) {
      kept.push_back(colour);
    }
  }
  return kept;
}

QImage WithPalette(const QImage& picture) {
  const std::vector<QRgb> colours = ColoursOf(picture);
  const std::vector<QRgb> kept = PaletteOf(colours);
  std::map<QRgb, int> place;
  for (const QRgb colour : colours) {
    const auto nearest =
        std::ranges::min_element(kept, {}, [colour](QRgb other) { return Distance(colour, other); });
    place[colour] = static_cast<int>(nearest - kept.begin());
  }
  QImage small(picture.size(), QImage::Format_Indexed8);
  small.setColorTable({kept.begin(), kept.end()});
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      small.setPixel(x, y, static_cast<uint>(place.at(picture.pixel(x, y))));
    }
  }
  return small;
}

} // namespace

QImage Photo(QWidget& widget) {
  QCoreApplication::processEvents();
  return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QImage Framed(const QImage& picture, const QString& title) {
  const QFont font = QApplication::font();
  const int height = QFontMetrics(font).height() + 8;
  QImage framed = Blank(picture.size() + QSize(2, height + 1), Frame);
  QPainter painter(&framed);
  const QRect bar(1, 1, picture.width(), height - 1);
  painter.fillRect(bar, QColor(Title));
  painter.setFont(font);
  painter.setPen(Qt::black);
  painter.drawText(bar.adjusted(8, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, title);
  painter.drawImage(1, height, picture);
  return framed;
}

QImage Over(const QImage& behind, const QImage& front, const QPoint& at) {
  const QRect all = behind.rect().united(QRect(at, front.size()));
  QImage both = Blank(all.size());
  QPainter painter(&both);
  painter.drawImage(-all.topLeft(), behind);
  painter.drawImage(at - all.topLeft(), front);
  return both;
}

QImage OverTheMiddle(const QImage& behind, const QImage& front) {
  return Over(behind, front,
              QPoint((behind.width() - front.width()) / 2, (behind.height() - front.height()) / 2));
}

QImage Page(const QStringList& lines) {
  QFont font(QStringLiteral("Noto Sans Mono CJK JP"));
  font.setPixelSize(12);
  const QFontMetrics metrics(font);
  const int line = metrics.height();
  constexpr int Margin = 14;
  int width = 0;
  for (const QString& text : lines) {
    width = std::max(width, metrics.horizontalAdvance(text));
  }
  QImage page = Blank({width + 2 * Margin, line * static_cast<int>(lines.size()) + 2 * Margin});
  QPainter painter(&page);
  painter.setFont(font);
  painter.setPen(Qt::black);
  for (int i = 0; i < lines.size(); ++i) {
    painter.drawText(Margin, Margin + i * line + metrics.ascent(), lines[i]);
  }
  painter.setPen(QColor(Frame));
  painter.drawRect(page.rect().adjusted(0, 0, -1, -1));
  return page;
}

void SavePicture(const QString& folder, const QString& name, const QImage& picture) {
  QImageWriter file(folder + u'/' + name + QStringLiteral(".png"));
  constexpr int Smallest = 100;
  file.setCompression(Smallest);
  if (!file.write(WithPalette(picture))) {
    throw TourFailure(QStringLiteral("cannot write %1: %2").arg(file.fileName(), file.errorString()));
  }
}

} // namespace loader::tour
