// The icons as they are drawn: just as Qt draws them, at any size, scale and mode, in light
// and dark windows.
#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPainter>
#include <QToolBar>
#include <QToolButton>

#include "qt/FormIcons.h"
#include "qt/Forms.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

// What Qt's own icon makes of the drawing, by its plugin; where that is not there, of the pictures that were
// drawn from it when the program was built, of which each size that is asked for here has one.
QIcon OfQt(const std::string& name) {
  const QString drawing = QString::fromStdString(":/icons/" + name + ".svg");
  if (QFile::exists(drawing)) {
    return QIcon(drawing);
  }
  QIcon icon;
  for (const QString& size : QDir(QStringLiteral(":/icons")).entryList(QDir::Dirs)) {
    icon.addPixmap(QPixmap(QStringLiteral(":/icons/%1/%2.png").arg(size, QString::fromStdString(name))));
  }
  EXPECT_FALSE(icon.isNull()) << name;
  return icon;
}

QImage Whole(const QPixmap& pixmap) {
  return pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// Pixels that are not quite transparent.
int Ink(const QImage& image) {
  int ink = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      ink += qAlpha(image.pixel(x, y)) > 0x20 ? 1 : 0;
    }
  }
  return ink;
}

// The icon's own pixels stand in the middle of the picture, give or take a pixel; what is around it shines
// through the others.
bool Shows(const QImage& picture, const QImage& icon) {
  const auto standsAt = [&](QPoint place) {
    for (int y = 0; y < icon.height(); ++y) {
      for (int x = 0; x < icon.width(); ++x) {
        const QRgb pixel = icon.pixel(x, y);
        if (qAlpha(pixel) == 0xFF && picture.pixel(place + QPoint(x, y)) != pixel) {
          return false;
        }
      }
    }
    return true;
  };
  const QPoint middle = QRect(QPoint(), picture.size()).center() - QRect(QPoint(), icon.size()).center();
  for (const int right : {-1, 0, 1}) {
    for (const int down : {-1, 0, 1}) {
      if (standsAt(middle + QPoint(right, down))) {
        return true;
      }
    }
  }
  return false;
}

QPalette Dark() {
  QPalette dark(QColor(0x353535), QColor(0x353535));
  dark.setColor(QPalette::Base, QColor(0x202020));
  return dark;
}

class IconOf : public testing::TestWithParam<const char*> {
protected:
  QPalette palette = QApplication::palette();
  ~IconOf() override { QApplication::setPalette(palette); }
};

TEST_P(IconOf, IsWhatQtDraws) {
  const QIcon ours = DrawnIcon(GetParam());
  for (const QPalette& theme : {palette, Dark()}) {
    QApplication::setPalette(theme);
    const QIcon theirs = OfQt(GetParam()); // keeps what it drew in another theme
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled, QIcon::Active, QIcon::Selected}) {
      for (const int size : {16, 24, 32, 64}) {
        for (const double scale : {1.0, 1.5, 2.0}) {
          const QPixmap drawn = ours.pixmap(QSize(size, size), scale, mode);
          ASSERT_EQ(QSize(size, size) * scale, drawn.size());
          ASSERT_GT(Ink(Whole(drawn)), size * size * scale * scale / 10);
          ASSERT_EQ(Whole(theirs.pixmap(QSize(size, size), scale, mode)), Whole(drawn))
              << "size " << size << ", scale " << scale << ", mode " << mode;
        }
      }
    }
  }
}

TEST_P(IconOf, IsPaintedSharpWhereThePainterIsScaled) {
  QImage sharp(48, 48, QImage::Format_ARGB32_Premultiplied);
  sharp.fill(Qt::transparent);
  sharp.setDevicePixelRatio(2);
  QPainter painter(&sharp);
  DrawnIcon(GetParam()).paint(&painter, QRect(0, 0, 24, 24));
  painter.end();
  sharp.setDevicePixelRatio(1);
  EXPECT_EQ(Whole(DrawnIcon(GetParam()).pixmap(QSize(48, 48), 1.0)), sharp);
}

TEST_P(IconOf, IsDimmedWhereItIsDisabled) {
  const QIcon icon = DrawnIcon(GetParam());
  EXPECT_NE(Whole(icon.pixmap(24, 24)), Whole(icon.pixmap(24, 24, QIcon::Disabled)));
}

// A button that is disabled when the theme changes must not keep the other theme's gray.
TEST_P(IconOf, IsDimmedAnewInAnotherTheme) {
  const QIcon icon = DrawnIcon(GetParam());
  const QImage before = Whole(icon.pixmap(24, 24, QIcon::Disabled));
  QApplication::setPalette(Dark());
  EXPECT_NE(before, Whole(icon.pixmap(24, 24, QIcon::Disabled)));
}

INSTANTIATE_TEST_SUITE_P(All, IconOf, testing::Values("open", "copy", "paste", "help", "loader", "more"),
                         [](const auto& each) { return std::string(each.param); });

TEST(DrawnIcon, OfNoSizeIsNone) {
  EXPECT_TRUE(DrawnIcon("open").pixmap(QSize()).isNull());
}

TEST(FormIcons, EveryWindowHasTheProgramsIcon) {
  for (const char* form : {"frmParamLoader", "frmAbout", "frmIPSetting", "frmTimeChange"}) {
    const auto window = MakeForm(form);
    EXPECT_EQ(Whole(OfQt("loader").pixmap(64, 64)), Whole(window->windowIcon().pixmap(64, 64))) << form;
  }
}

TEST(FormIcons, TheButtonsOfTheToolBarShowTheirs) {
  const auto window = MakeForm("frmParamLoader");
  const auto& bar = *window->findChild<QToolBar*>("V");
  const std::array names{"open", "copy", "paste", "help"};
  for (std::size_t i = 0; i < names.size(); ++i) {
    auto* action = window->findChild<QAction*>(QStringLiteral("V_%1").arg(i + 1));
    auto& button = *static_cast<QToolButton*>(bar.widgetForAction(action));
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled}) {
      action->setEnabled(mode == QIcon::Normal);
      const QSize size = button.iconSize();
      const QImage shown = Whole(button.grab());
      const QPixmap icon = OfQt(names[i]).pixmap(size, button.devicePixelRatioF(), mode);
      const QImage ofIcon = Whole(icon);
      EXPECT_TRUE(Shows(shown, ofIcon)) << names[i] << ", mode " << mode;
    }
  }
}

// As a desktop's large print or a narrow window may have it: the button for what is left over has its arrow.
TEST(FormIcons, ATooShortToolBarShowsThatThereIsMore) {
  QToolBar bar;
  for (int i = 0; i < 4; ++i) {
    bar.addAction(DrawnIcon("open"), QString());
  }
  bar.resize(bar.sizeHint().width() / 2, bar.sizeHint().height());
  bar.show();
  auto* more = bar.findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
  ASSERT_NE(nullptr, more);
  ASSERT_TRUE(more->isVisible());
  EXPECT_GT(Ink(Whole(more->icon().pixmap(16, 16))), 10);
}

// At its smallest the window has room for them all.
TEST(FormIcons, TheSmallestWindowShowsAllButtons) {
  const auto window = MakeForm("frmParamLoader");
  window->resize(window->minimumSizeHint());
  window->show();
  const auto& bar = *window->findChild<QToolBar*>("V");
  for (const QAction* action : bar.actions()) {
    EXPECT_TRUE(bar.widgetForAction(const_cast<QAction*>(action))->isVisible());
  }
  EXPECT_FALSE(bar.findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))->isVisible());
}

// The widest icon of the program, which a screen of double scale shows in 96 pixels.
TEST(FormIcons, ThePictureOfTheVersionIsAsSharpAsTheScreen) {
  const auto window = MakeForm("frmAbout");
  const QPixmap picture = window->findChild<QLabel*>("picProgram")->pixmap();
  EXPECT_EQ(QSize(48, 48) * qApp->devicePixelRatio(), picture.size());
  EXPECT_EQ(Whole(OfQt("loader").pixmap(QSize(48, 48), qApp->devicePixelRatio())), Whole(picture));
}

} // namespace
} // namespace loader::test
