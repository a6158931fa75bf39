// The pages measured: what has to hold at 800 pixels, at 1920, and in a font of double size.
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <functional>
#include <map>
#include <string>

#include "qt/FieldColumn.h"
#include "qt/GridView.h"
#include "tests/qt/MainWindowFixture.h"

namespace loader::test {
namespace {

constexpr QSize Smallest(800, 650);
// What the frame of a window leaves of a screen that is as small.
constexpr QSize InAFrame(788, 620);
constexpr QSize Middle(1280, 720);
constexpr QSize Wide(1920, 1080);

// Pixels that a text may stand away from what it names.
constexpr int Beside = 12;
// Pixels that a frame of fields is wide at most.
constexpr int WidestFrame = 900;

// Left edge and right edge of a label's text, in the window.
struct Edges {
  int left;
  int right;
};
Edges TextEdges(const QLabel& label, const QWidget& window) {
  const QRect inside = label.contentsRect();
  const int width = label.fontMetrics().horizontalAdvance(label.text());
  const int left = label.mapTo(&window, inside.topLeft()).x();
  const int right = left + inside.width();
  return (label.alignment() & Qt::AlignRight) != 0 ? Edges{right - width, right} : Edges{left, left + width};
}

int LeftOf(const QWidget& widget, const QWidget& window) {
  return widget.mapTo(&window, QPoint(0, 0)).x();
}
int MiddleOf(const QWidget& widget, const QWidget& window) {
  return widget.mapTo(&window, widget.rect().center()).y();
}

struct Layout : MainWindowTest, testing::WithParamInterface<const char*> {
  QFont font = QApplication::font();

  ~Layout() override { QApplication::setFont(font); }

  void DoubleTheFont() {
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(large);
  }

  QTabWidget& Pages() { return Find<QTabWidget>("tbsParameter"); }
  void Settle() {
    for (int pass = 0; pass < 3; ++pass) {
      QCoreApplication::sendPostedEvents();
      QCoreApplication::processEvents();
    }
  }
  void OpenAt(QSize size) {
    if (platform == nullptr) {
      Start(GetParam());
    }
    Window().resize(size);
    Settle();
  }
  void OnEveryPage(const std::function<void(QScrollArea& page)>& look) {
    for (int index = 0; index < Pages().count(); ++index) {
      Pages().setCurrentIndex(index);
      Settle();
      const std::string caption = Pages().tabText(index).toStdString();
      SCOPED_TRACE(caption);
      look(*qobject_cast<QScrollArea*>(Pages().currentWidget()));
    }
  }
  // Labels that show something.
  template <typename Look> int ForLabels(const QWidget& page, const Look& look) {
    int seen = 0;
    for (const QLabel* label : page.findChildren<QLabel*>()) {
      if (label->isVisible() && !label->text().isEmpty()) {
        SCOPED_TRACE(label->objectName().toStdString());
        look(*label);
        ++seen;
      }
    }
    return seen;
  }
  enum class Lines { One, AsNeeded };
  void ExpectWholeLabels(Lines lines) {
    int seen = 0;
    OnEveryPage([&](const QScrollArea& page) {
      seen += ForLabels(page, [lines](const QLabel& label) {
        const QFontMetrics& metrics = label.fontMetrics();
        const bool oneLine = metrics.horizontalAdvance(label.text()) <= label.contentsRect().width();
        EXPECT_FALSE(label.text().contains(u'\n'));
        EXPECT_TRUE(oneLine || (label.wordWrap() && lines == Lines::AsNeeded));
        EXPECT_LE(oneLine ? metrics.height() : label.heightForWidth(label.width()), label.height());
      });
    });
    EXPECT_GT(seen, 80);
  }
};

TEST_P(Layout, NoLabelIsWrappedOrCutInTheSmallWindow) {
  for (const QSize size : {Smallest, InAFrame}) {
    OpenAt(size);
    ExpectWholeLabels(Lines::One);
  }
}

TEST_P(Layout, NoPageScrollsSidewaysInTheSmallWindow) {
  OpenAt(Smallest);
  OnEveryPage([](QScrollArea& page) { EXPECT_EQ(0, page.horizontalScrollBar()->maximum()); });
}

TEST_P(Layout, ALabelStandsBesideItsFieldHoweverWideTheWindowIs) {
  for (const QSize size : {Smallest, Middle, Wide}) {
    OpenAt(size);
    int pairs = 0;
    OnEveryPage([&](const QScrollArea& page) {
      ForLabels(page, [&](const QLabel& label) {
        const QWidget* field = label.buddy();
        // The address rows of the mails have their number between label and field.
        if (field == nullptr || label.objectName() == QStringLiteral("lblRecvMailAdd")) {
          return;
        }
        ++pairs;
        const int gap = LeftOf(*field, Window()) - TextEdges(label, Window()).right;
        const bool inNumberedRow = label.parentWidget()->objectName() == QStringLiteral("fraEMailSetting");
        EXPECT_GE(gap, 0);
        EXPECT_LE(gap, inNumberedRow ? 3 * Beside : Beside) << size.width();
        EXPECT_NEAR(MiddleOf(*field, Window()), MiddleOf(label, Window()), 2) << size.width();
      });
    });
    EXPECT_GT(pairs, 50);
  }
}

// A label far from its frame's edge looks as if it named nothing: the widest one of a column begins at it.
TEST_P(Layout, TheWidestLabelOfAColumnBeginsAtTheFramesEdge) {
  OpenAt(Wide);
  int columns = 0;
  OnEveryPage([&](const QScrollArea& page) {
    for (const FieldColumn* column : page.findChildren<FieldColumn*>()) {
      const int edge = LeftOf(*column, Window());
      int nearest = Window().width();
      ForLabels(*column, [&](const QLabel& label) {
        nearest = std::min(nearest, TextEdges(label, Window()).left - edge);
      });
      EXPECT_LE(nearest, 2 * Beside);
      ++columns;
    }
  });
  EXPECT_EQ(5, columns);
}

TEST_P(Layout, TheFieldsOfAColumnBeginOnOneLine) {
  OpenAt(Middle);
  std::map<const FieldColumn*, std::map<int, int>> begins; // how many fields at which pixel
  OnEveryPage([&](const QScrollArea& page) {
    for (const FieldColumn* column : page.findChildren<FieldColumn*>()) {
      ForLabels(*column, [&](const QLabel& label) {
        const QString frame = label.parentWidget()->objectName();
        const bool twoColumns =
            frame != QStringLiteral("fraDI") && frame != QStringLiteral("fraEMailSetting");
        if (label.buddy() != nullptr && twoColumns) {
          ++begins[column][LeftOf(*label.buddy(), Window())];
        }
      });
    }
  });
  EXPECT_EQ(3U, begins.size());
  for (const auto& [column, fields] : begins) {
    EXPECT_EQ(1U, fields.size()) << column->objectName().toStdString();
    EXPECT_GT(fields.begin()->second, 4) << column->objectName().toStdString();
  }
}

TEST_P(Layout, AFrameOfFieldsIsCappedInAWideWindow) {
  std::map<QString, int> widths;
  for (const QSize size : {Middle, Wide}) {
    OpenAt(size);
    OnEveryPage([&](const QScrollArea& page) {
      for (const QGroupBox* frame : page.findChildren<QGroupBox*>()) {
        if (!frame->isVisible() || frame->findChild<GridView*>() != nullptr) {
          continue;
        }
        EXPECT_LE(frame->width(), WidestFrame) << frame->objectName().toStdString();
        const int before = widths.emplace(frame->objectName(), frame->width()).first->second;
        EXPECT_EQ(before, frame->width()) << frame->objectName().toStdString();
      }
    });
  }
  EXPECT_GE(widths.size(), 10U);
}

TEST_P(Layout, ATableIsNoWiderThanItsColumns) {
  OpenAt(Wide);
  int tables = 0;
  OnEveryPage([&](const QScrollArea& page) {
    for (const GridView* table : page.findChildren<GridView*>()) {
      const auto* frame = qobject_cast<const QGroupBox*>(table->parentWidget());
      if (!table->isVisible() || frame == nullptr) {
        continue;
      }
      SCOPED_TRACE(table->objectName().toStdString());
      const int columns = table->horizontalHeader()->length() + table->verticalHeader()->width();
      constexpr int ScrollBarAndFrame = 24;
      EXPECT_LE(table->width(), columns + ScrollBarAndFrame);
      EXPECT_LE(frame->width() - table->width(), 2 * Beside);
      ++tables;
    }
  });
  EXPECT_EQ(5, tables);
}

// The column of the messages is wider than any message: it gives way before the table scrolls.
TEST_P(Layout, TheMessagesAreSeenWithAllTheirColumnsInTheSmallWindow) {
  OpenAt(Wide);
  Pages().setCurrentIndex(DisplayPage);
  Settle();
  auto& messages = Find<GridView>("fgrMess");
  const int whole = messages.columnWidth(0);
  constexpr int LongestMessage = 32; // half widths
  const int longest = messages.fontMetrics().horizontalAdvance(QString(LongestMessage, u'0'));
  for (const QSize size : {Smallest, InAFrame}) {
    OpenAt(size);
    EXPECT_EQ(0, messages.horizontalScrollBar()->maximum()) << size.width();
    EXPECT_LT(messages.columnWidth(0), whole) << size.width();
    EXPECT_GE(messages.columnWidth(0), longest + 2 * GridView::CellMargin) << size.width();
  }
  OpenAt(Wide);
  EXPECT_EQ(whole, messages.columnWidth(0));
}

TEST_P(Layout, NothingIsCutInAFontOfDoubleSize) {
  DoubleTheFont();
  OpenAt(Smallest);
  ExpectWholeLabels(Lines::AsNeeded);
}

TEST_P(Layout, NoPageOfFieldsScrollsSidewaysInAFontOfDoubleSize) {
  DoubleTheFont();
  OpenAt(Smallest);
  for (const int page : {RecorderPage, EthernetPage, MailPage}) {
    Pages().setCurrentIndex(page);
    Settle();
    EXPECT_EQ(0, qobject_cast<QScrollArea*>(Pages().currentWidget())->horizontalScrollBar()->maximum())
        << page;
  }
}

// A platform's theme may bring its font when the window is long open, and take it back.
TEST_P(Layout, TheColumnsFollowAFontThatComesLate) {
  OpenAt(Smallest);
  const auto positions = [&] {
    std::map<QString, QRect> places;
    OnEveryPage([&](const QScrollArea& page) {
      ForLabels(page, [&](const QLabel& label) {
        places[label.objectName()] = {label.mapTo(&Window(), QPoint(0, 0)), label.size()};
      });
    });
    return places;
  };
  const std::map<QString, QRect> before = positions();
  DoubleTheFont();
  Settle();
  ExpectWholeLabels(Lines::AsNeeded);
  QApplication::setFont(font);
  Settle();
  EXPECT_EQ(before, positions());
}

INSTANTIATE_TEST_SUITE_P(Models, Layout, testing::Values("0", "1"),
                         [](const auto& model) { return std::string(model.param) == "0" ? "Kov" : "Rug"; });

} // namespace
} // namespace loader::test
