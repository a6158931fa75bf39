#include "tests/e2e/Guest.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <cstdlib>

#include "qt/GridView.h"
#include "qt/System.h"
#include "tests/qt/Waiting.h"

namespace loader::tour {

void PrepareGuest() {
  // The guest types into Qt's own file dialogs: those of the desktop show nothing to type into.
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  PrepareDesktop();
}

Guest::Guest(QString pictureFolder, QString prefix)
    : pictureFolder_(std::move(pictureFolder)), prefix_(std::move(prefix)) {
  qApp->installEventFilter(this);
}

Guest::~Guest() {
  qApp->removeEventFilter(this);
}

void Guest::ExpectBox(const QString& text, QMessageBox::StandardButton answer,
                      std::function<void(QWidget&)> look) {
  expected_.push_back({Expected::Kind::Box, text, answer, std::move(look)});
}

void Guest::ExpectFileDialog(const QString& path) {
  expected_.push_back({Expected::Kind::File, path, QMessageBox::Ok, {}});
}

void Guest::ExpectScreen(const QString& name, std::function<void(QWidget&)> act) {
  expected_.push_back({Expected::Kind::Screen, name, QMessageBox::Ok, std::move(act)});
}

void Guest::EndStep(const QString& step) {
  QCoreApplication::processEvents();
  if (!failure_.isEmpty()) {
    throw TourFailure(step + QStringLiteral(": ") + failure_);
  }
  if (!expected_.empty()) {
    throw TourFailure(step + QStringLiteral(": did not come: ") + expected_.front().text);
  }
}

QWidget& Guest::Window() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->objectName() == QLatin1String("frmParamLoader") && widget->isVisible()) {
      return *widget;
    }
  }
  throw TourFailure(QStringLiteral("the main window is not shown"));
}

QWidget& Guest::Front() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? *modal : Window();
}

void Guest::Click(QWidget& widget) {
  if (!widget.isVisible() || !widget.isEnabled()) {
    throw TourFailure(QStringLiteral("%1 cannot be clicked").arg(widget.objectName()));
  }
  QTest::mouseClick(&widget, Qt::LeftButton);
}

void Guest::TypeInto(QWidget& widget, const QString& text) {
  Click(widget);
  QTest::keyClick(&widget, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(&widget, text);
}

void Guest::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QWidget& front = Front();
  QWidget* keyboard = front.focusWidget() != nullptr ? front.focusWidget() : &front;
  QTest::keyClick(keyboard, key, modifiers);
}

namespace {
QPoint CellToClick(GridView& table, int row, int column) {
  const QModelIndex cell = table.model()->index(row, column);
  if (!cell.isValid() || !table.isVisible() || !table.isEnabled()) {
    throw TourFailure(
        QStringLiteral("%1 has no cell %2, %3 to click").arg(table.objectName()).arg(row).arg(column));
  }
  table.scrollTo(cell);
  return table.visualRect(cell).center();
}
} // namespace

void Guest::ClickCell(GridView& table, int row, int column) {
  const QPoint place = CellToClick(table, row, column);
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place);
}

void Guest::DoubleClickCell(GridView& table, int row, int column) {
  const QPoint place = CellToClick(table, row, column);
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, place);
}

void Guest::CloseFront() {
  Front().close();
}

void Guest::Choose(const char* menu, const char* action) {
  auto& window = Window();
  auto& chosen = Find<QMenu>(window, menu);
  auto& entry = Find<QAction>(window, action);
  if (!entry.isEnabled()) {
    throw TourFailure(QStringLiteral("menu entry %1 is disabled").arg(QLatin1String(action)));
  }
  chosen.popup(window.mapToGlobal(QPoint(10, 40)));
  QTest::mouseClick(&chosen, Qt::LeftButton, {}, chosen.actionGeometry(&entry).center());
}

void Guest::ChoosePage(int page) {
  auto& bar = *Find<QTabWidget>(Window(), "tbsParameter").tabBar();
  QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(page).center());
  QCoreApplication::processEvents();
}

void Guest::ChooseRow(const char* comboBox, int row) {
  auto& list = Find<QComboBox>(comboBox);
  list.setFocus(Qt::MouseFocusReason);
  const int steps = row - list.currentIndex();
  for (int i = 0; i < std::abs(steps); ++i) {
    QTest::keyClick(&list, steps < 0 ? Qt::Key_Up : Qt::Key_Down);
  }
}

void Guest::Picture(const QString& name) const {
  QCoreApplication::processEvents();
  const QString file = pictureFolder_ + u'/' + prefix_ + name + QStringLiteral(".png");
  if (!Front().grab().save(file)) {
    throw TourFailure(QStringLiteral("cannot write %1").arg(file));
  }
}

bool Guest::eventFilter(QObject* watched, QEvent* event) {
  auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
  if (dialog != nullptr) {
    // Answered from its own event loop, which starts after it is shown.
    QMetaObject::invokeMethod(
        this,
        [this, shown = QPointer<QDialog>(dialog)] {
          if (shown != nullptr) {
            Answer(*shown);
          }
        },
        Qt::QueuedConnection);
  }
  return QObject::eventFilter(watched, event);
}

void Guest::Answer(QWidget& shown) {
  auto* box = qobject_cast<QMessageBox*>(&shown);
  auto* file = qobject_cast<QFileDialog*>(&shown);
  const auto kind = box != nullptr    ? Expected::Kind::Box
                    : file != nullptr ? Expected::Kind::File
                                      : Expected::Kind::Screen;
  if (expected_.empty() || expected_.front().kind != kind) {
    failure_ = QStringLiteral("came unexpected: ") + (box != nullptr ? box->text() : shown.windowTitle());
    qobject_cast<QDialog*>(&shown)->reject();
    return;
  }
  // A failure must not fly through the event loop: it is kept for the end of the step.
  try {
    if (box != nullptr) {
      AnswerBox(*box);
    } else if (file != nullptr) {
      AnswerFileDialog(*file);
    } else {
      AnswerScreen(shown);
    }
  } catch (const TourFailure& failure) {
    failure_ = QString::fromStdString(failure.what());
    shown.close();
  }
}

void Guest::AnswerScreen(QWidget& screen) {
  const Expected next = std::move(expected_.front());
  expected_.pop_front();
  if (screen.objectName() != next.text) {
    throw TourFailure(QStringLiteral("the screen %1 in place of %2").arg(screen.objectName(), next.text));
  }
  if (!test::BecomesActive(screen)) {
    throw TourFailure(QStringLiteral("%1 does not become active").arg(next.text));
  }
  const QPointer<QWidget> open(&screen);
  next.act(screen);
  if (open != nullptr && open->isVisible()) {
    throw TourFailure(QStringLiteral("%1 stays open").arg(next.text));
  }
}

void Guest::AnswerBox(QMessageBox& box) {
  const Expected next = std::move(expected_.front());
  expected_.pop_front();
  if (box.text() != next.text) {
    failure_ = QStringLiteral("a box says \"%1\" in place of \"%2\"").arg(box.text(), next.text);
  }
  // As a user: a box that went before the window manager knew it would leave no window active behind it.
  if (!test::BecomesActive(box)) {
    throw TourFailure(QStringLiteral("a box does not become active: ") + box.text());
  }
  if (next.act) {
    next.act(box);
  }
  const auto role = next.button == QMessageBox::Ok ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
  for (QAbstractButton* button : box.buttons()) {
    if (box.buttonRole(button) == role) {
      QTest::mouseClick(button, Qt::LeftButton);
      return;
    }
  }
  throw TourFailure(QStringLiteral("a box without the button: ") + box.text());
}

void Guest::AnswerFileDialog(QFileDialog& dialog) {
  const Expected next = std::move(expected_.front());
  expected_.pop_front();
  auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  if (name == nullptr) {
    throw TourFailure(QStringLiteral("the file dialog has no field for a name"));
  }
  auto* buttons = dialog.findChild<QDialogButtonBox*>();
  const bool saving = dialog.acceptMode() == QFileDialog::AcceptSave;
  QAbstractButton* accept = buttons == nullptr
                                ? nullptr
                                : buttons->button(saving ? QDialogButtonBox::Save : QDialogButtonBox::Open);
  if (accept == nullptr) {
    throw TourFailure(QStringLiteral("the file dialog has no button to accept"));
  }
  name->setCompleter(nullptr); // its popup would take the keys
  name->setFocus();
  name->selectAll();
  // Pasted in one piece: while a path is typed, the dialog selects each folder on its way.
  QApplication::clipboard()->setText(next.text);
  QTest::keyClick(name, Qt::Key_V, Qt::ControlModifier);
  QTest::mouseClick(accept, Qt::LeftButton);
}

} // namespace loader::tour
