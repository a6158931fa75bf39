// The columns of a settings page by themselves.
#include "qt/FieldColumn.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <array>
#include <gtest/gtest.h>

namespace loader::test {
namespace {

struct Columns : testing::Test {
  QWidget window;
  FieldColumns* columns = new FieldColumns;

  Columns() {
    auto* outer = new QVBoxLayout(&window);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(columns);
    auto* row = new QHBoxLayout(columns);
    row->setContentsMargins(0, 0, 0, 0);
  }
  FieldColumn& AddColumn() {
    auto* column = new FieldColumn;
    new QVBoxLayout(column);
    columns->layout()->addWidget(column);
    return *column;
  }
  // A frame of one label and one field.
  static QLineEdit& AddFrame(FieldColumn& column, const QString& label) {
    auto* frame = new QGroupBox;
    auto* grid = new QGridLayout(frame);
    grid->addWidget(new QLabel(label), 0, 0);
    auto* field = new QLineEdit;
    grid->addWidget(field, 0, 1);
    column.layout()->addWidget(frame);
    return *field;
  }
  void ShowAt(int width) {
    window.resize(width, 400);
    window.show();
    Settle();
  }
  static void Settle() {
    for (int pass = 0; pass < 3; ++pass) {
      QCoreApplication::sendPostedEvents();
      QCoreApplication::processEvents();
    }
  }
};

// Two fields in a row, as in "lower value [ ] upper value [ ]".
QLineEdit& AddPairs(FieldColumn& column, const QString& first, const QString& second) {
  auto* frame = new QGroupBox;
  auto* grid = new QGridLayout(frame);
  grid->addWidget(new QLabel(first), 0, 0);
  grid->addWidget(new QLineEdit, 0, 1);
  grid->addWidget(new QLabel(second), 0, 2);
  auto* field = new QLineEdit;
  grid->addWidget(field, 0, 3);
  column.layout()->addWidget(frame);
  return *field;
}

TEST_F(Columns, TheSecondFieldsOfARowBeginOnOneLineToo) {
  FieldColumn& column = AddColumn();
  const QLineEdit& narrow = AddPairs(column, QStringLiteral("A"), QStringLiteral("B"));
  const QLineEdit& wide =
      AddPairs(column, QStringLiteral("A label of some length"), QStringLiteral("and another one"));
  ShowAt(800);
  EXPECT_EQ(wide.x(), narrow.x());
}

TEST_F(Columns, ASmallTableOfFourColumnsKeepsItsOwn) {
  FieldColumn& column = AddColumn();
  auto* frame = new QGroupBox;
  auto* grid = new QGridLayout(frame);
  auto* first = new QLineEdit;
  grid->addWidget(new QLabel(QStringLiteral("1")), 0, 0);
  grid->addWidget(first, 0, 1);
  grid->addWidget(new QLineEdit, 0, 2);
  grid->addWidget(new QLineEdit, 0, 3);
  column.layout()->addWidget(frame);
  const QLineEdit& field = AddFrame(column, QStringLiteral("A label of some length"));
  ShowAt(800);
  EXPECT_LT(first->x(), field.x());
}

// Three columns of which the first two stay beside each other longest.
TEST_F(Columns, ColumnsWithinColumnsGiveWayFromTheOutside) {
  auto* inner = new FieldColumns;
  auto* row = new QHBoxLayout(inner);
  row->setContentsMargins(0, 0, 0, 0);
  std::array<FieldColumn*, 2> pair{};
  for (FieldColumn*& column : pair) {
    column = new FieldColumn;
    new QVBoxLayout(column);
    AddFrame(*column, QStringLiteral("A label of some length"));
    row->addWidget(column);
  }
  columns->layout()->addWidget(inner);
  FieldColumn& last = AddColumn();
  AddFrame(last, QStringLiteral("A label of some length"));
  const int each = last.minimumSizeHint().width();
  const auto beside = [](const QWidget& one, const QWidget& other) {
    return one.mapTo(one.window(), QPoint(0, 0)).y() == other.mapTo(other.window(), QPoint(0, 0)).y();
  };
  ShowAt(4 * each);
  EXPECT_TRUE(beside(*pair[0], *pair[1]) && beside(*pair[0], last));
  ShowAt(2 * each + each / 2);
  EXPECT_TRUE(beside(*pair[0], *pair[1]));
  EXPECT_FALSE(beside(*pair[0], last));
  ShowAt(each + each / 2);
  EXPECT_FALSE(beside(*pair[0], *pair[1]));
}

TEST_F(Columns, TheFieldsOfTwoFramesBeginBehindTheWidestLabel) {
  FieldColumn& column = AddColumn();
  const QLineEdit& narrow = AddFrame(column, QStringLiteral("A"));
  const QLineEdit& wide = AddFrame(column, QStringLiteral("A label of some length"));
  ShowAt(800);
  EXPECT_EQ(wide.x(), narrow.x());
}

TEST_F(Columns, TheFieldsFollowALabelThatGrows) {
  FieldColumn& column = AddColumn();
  const QLineEdit& first = AddFrame(column, QStringLiteral("A"));
  const QLineEdit& second = AddFrame(column, QStringLiteral("B"));
  ShowAt(800);
  const int before = first.x();
  second.parentWidget()->findChild<QLabel*>()->setText(QStringLiteral("A label of some length"));
  Settle();
  EXPECT_GT(first.x(), before);
  EXPECT_EQ(first.x(), second.x());
}

TEST_F(Columns, ALabelThatIsHiddenTakesNoRoom) {
  FieldColumn& column = AddColumn();
  const QLineEdit& first = AddFrame(column, QStringLiteral("A"));
  const QLineEdit& second = AddFrame(column, QStringLiteral("A label of some length"));
  ShowAt(800);
  const int before = first.x();
  second.parentWidget()->findChild<QLabel*>()->hide();
  Settle();
  EXPECT_LT(first.x(), before);
}

TEST_F(Columns, AColumnIsNoWiderThanItsFieldsNeed) {
  const FieldColumn& column = AddColumn();
  AddFrame(AddColumn(), QStringLiteral("A"));
  ShowAt(3000);
  EXPECT_LE(column.width(), column.sizeHint().width());
}

TEST_F(Columns, AColumnForLongTextsTakesTheRoomThatItAskedFor) {
  FieldColumn& column = AddColumn();
  AddFrame(column, QStringLiteral("A"));
  column.setCharacters(100);
  ShowAt(3000);
  EXPECT_EQ(100 * column.fontMetrics().horizontalAdvance(u'0'), column.sizeHint().width());
}

TEST_F(Columns, TwoColumnsStandSideBySideWhereThereIsRoom) {
  FieldColumn& left = AddColumn();
  FieldColumn& right = AddColumn();
  AddFrame(left, QStringLiteral("Left"));
  AddFrame(right, QStringLiteral("Right"));
  ShowAt(800);
  EXPECT_GT(right.x(), left.x());
  EXPECT_EQ(right.y(), left.y());
}

TEST_F(Columns, TwoColumnsStandOneBelowTheOtherWhereThereIsNone) {
  FieldColumn& left = AddColumn();
  FieldColumn& right = AddColumn();
  AddFrame(left, QStringLiteral("Left"));
  AddFrame(right, QStringLiteral("Right"));
  ShowAt(left.minimumSizeHint().width() + 20);
  EXPECT_EQ(right.x(), left.x());
  EXPECT_GT(right.y(), left.y());
  ShowAt(800);
  EXPECT_EQ(right.y(), left.y());
}

} // namespace
} // namespace loader::test
