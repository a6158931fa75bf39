// The labels of the program's own: a note, a power of ten.
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include "qt/NoteLabel.h"
#include "qt/PowerLabel.h"

namespace loader::test {
namespace {

const QString Sentence = QStringLiteral("入力種別は基本的に２チャネルごとに同じ種類の設定になります。");

TEST(NoteLabel, TakesNoMoreWidthThanItsCharacters) {
  NoteLabel note;
  note.setText(Sentence);
  note.setCharacters(20);
  const int width = 20 * QFontMetrics(QApplication::font()).horizontalAdvance(u'0');
  EXPECT_EQ(width, note.maximumWidth());
  EXPECT_EQ(note.heightForWidth(width), note.heightForWidth(10 * width));
  EXPECT_GT(note.heightForWidth(width / 2), note.heightForWidth(width));
  EXPECT_LT(note.font().pointSizeF(), QApplication::font().pointSizeF());
}

TEST(NoteLabel, FollowsAFontThatComesLate) {
  const QFont font = QApplication::font();
  NoteLabel note;
  const double before = note.font().pointSizeF();
  QFont large = font;
  large.setPointSizeF(font.pointSizeF() * 2);
  QApplication::setFont(large);
  QCoreApplication::processEvents();
  EXPECT_NEAR(2 * before, note.font().pointSizeF(), 0.5);
  QApplication::setFont(font);
}

// Colours of a label as it is drawn.
int ColoursOf(QWidget& label) {
  const QImage picture = label.grab().toImage();
  QSet<QRgb> colours;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      colours.insert(picture.pixel(x, y));
    }
  }
  return static_cast<int>(colours.size());
}

TEST(PowerLabel, IsFramedWhileItCanBeClickedAndNothingOtherwise) {
  QWidget window;
  auto* label = new PowerLabel(&window);
  label->resize(label->sizeHint());
  window.show();
  EXPECT_GT(ColoursOf(*label), 2);
  label->setEnabled(false);
  EXPECT_EQ(1, ColoursOf(*label));
}

TEST(PowerLabel, HasRoomForTheLongestNumberFromTheStart) {
  PowerLabel label;
  const QSize empty = label.sizeHint();
  label.setText(QStringLiteral("-9.99E-9"));
  EXPECT_EQ(empty, label.sizeHint());
  EXPECT_GT(empty.width(), label.fontMetrics().horizontalAdvance(label.text()));
}

} // namespace
} // namespace loader::test
