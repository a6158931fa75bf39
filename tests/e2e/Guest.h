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

namespace loader::tour {

// A step that did not go as told ends the tour.
struct TourFailure : std::runtime_error {
  explicit TourFailure(const QString& what) : std::runtime_error(what.toStdString()) {}
};

class Guest final : public QObject {
public:
  // Pictures land in `pictureFolder`, named `prefix` + name + ".png".
  Guest(QString pictureFolder, QString prefix);
  ~Guest() override;

  // The next box has to hold this text and is answered with the button. A box that nobody told of is a
  // failure of the tour, found at the end of the step.
  void ExpectBox(const QString& text, QMessageBox::StandardButton answer);
  // The next file dialog gets this path typed in.
  void ExpectFileDialog(const QString& path);
  // The next screen with this object name is given to `act` once it is shown.
  void ExpectScreen(const QString& name, std::function<void(QWidget&)> act);
  // Fails when something that was expected has not come, or something came that was not.
  void EndStep(const QString& step);

  // The main window, or a failure.
  [[nodiscard]] static QWidget& Window();
  template <typename Widget> [[nodiscard]] static Widget& Find(QWidget& in, const char* name) {
    auto* widget = in.findChild<Widget*>(QString::fromLatin1(name));
    if (widget == nullptr) {
      throw TourFailure(QStringLiteral("no widget named %1").arg(QLatin1String(name)));
    }
    return *widget;
  }
  static void Click(QWidget& widget);
  static void TypeInto(QWidget& widget, const QString& text);
  // Chooses a menu entry with the mouse where the menus are shown, which opens and closes them.
  static void Choose(const char* menu, const char* action);
  static void ChoosePage(int page);
  static void ChooseRow(const char* comboBox, int row);
  void Picture(const QString& name) const;

  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void Answer(QWidget& shown);
  void AnswerBox(QMessageBox& box);
  void AnswerFileDialog(QFileDialog& dialog);

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
