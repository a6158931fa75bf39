// The user of the tour: works the real widgets of the program, and answers its boxes as they come.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <deque>
#include <functional>
#include <stdexcept>

class QFileDialog;

namespace loader {
class GridView;
}

namespace loader::tour {

// A step that did not go as told ends the tour.
struct TourFailure : std::runtime_error {
  explicit TourFailure(const QString& what) : std::runtime_error(what.toStdString()) {}
};

// Before the application object is made.
void PrepareGuest();

class Guest final : public QObject {
public:
  // Pictures land in `pictureFolder`, named `prefix` + name + ".png".
  Guest(QString pictureFolder, QString prefix);
  ~Guest() override;

  // The next box has to hold this text and is answered with the button. A box that nobody told of is a
  // failure of the tour, found at the end of the step.
  // `look` sees the box before that.
  void ExpectBox(const QString& text, QMessageBox::StandardButton answer,
                 std::function<void(QWidget&)> look = {});
  // The next file dialog gets this path typed in.
  void ExpectFileDialog(const QString& path);
  // The next screen with this object name is given to `act` once it is shown and active; it may open further
  // ones. One that is still open afterwards is a failure of the tour.
  void ExpectScreen(const QString& name, std::function<void(QWidget&)> act);
  // Fails when something that was expected has not come, or something came that was not.
  void EndStep(const QString& step);

  // The main window, or a failure.
  [[nodiscard]] static QWidget& Window();
  // The window that the user works in: the modal one in front, or else the main window.
  [[nodiscard]] static QWidget& Front();
  // A widget of the window in front.
  template <typename Widget> [[nodiscard]] static Widget& Find(const char* name) {
    return Find<Widget>(Front(), name);
  }
  template <typename Widget> [[nodiscard]] static Widget& Find(QWidget& in, const char* name) {
    auto* widget = in.findChild<Widget*>(QString::fromLatin1(name));
    if (widget == nullptr) {
      throw TourFailure(QStringLiteral("no widget named %1").arg(QLatin1String(name)));
    }
    return *widget;
  }
  static void Click(QWidget& widget);
  static void TypeInto(QWidget& widget, const QString& text);
  // Presses a key where the keyboard is in the window in front.
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  // A cell of a table, by row and column below and beside the headings; it is scrolled to first.
  static void ClickCell(GridView& table, int row, int column);
  static void DoubleClickCell(GridView& table, int row, int column);
  // By the cross of its window.
  static void CloseFront();
  // Chooses a menu entry with the mouse where the menus are shown, which opens and closes them.
  static void Choose(const char* menu, const char* action);
  static void ChoosePage(int page);
  // In a list of the window in front.
  static void ChooseRow(const char* comboBox, int row);
  // Of the window in front.
  void Picture(const QString& name) const;

  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void Answer(QWidget& shown);
  void AnswerBox(QMessageBox& box);
  void AnswerFileDialog(QFileDialog& dialog);
  void AnswerScreen(QWidget& screen);

  struct Expected {
    enum class Kind { Box, File, Screen } kind;
    QString text;
    QMessageBox::StandardButton button = QMessageBox::Ok;
    std::function<void(QWidget&)> act;
  };
  QString pictureFolder_;
  QString prefix_;
  std::deque<Expected> expected_;
  QString failure_;
};

} // namespace loader::tour
