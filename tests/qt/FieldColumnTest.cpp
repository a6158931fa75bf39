// The columns of a settings page by themselves.
#include "qt/FieldColumn.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
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
