// The application object: font, palette and texts of Qt's own dialogs, and the one gate through which every
// event goes before Qt acts on it.
//
// A theme of the desktop may set its font and its colours when the window already stands. The program's
// font gives way to one with Japanese glyphs only, then as at the start, and neither a selection nor what is
// disabled is fainter than can be read.
#pragma once

#include <QApplication>
#include <QTranslator>
#include <cstdint>
#include <functional>

namespace loader {

class Application final : public QApplication {
public:
  Application(int& argc, char** argv);

  // Asked before an event is given to a widget; true swallows it. It has to be asked here: Qt moves the focus
  // before any event filter sees the press of a mouse button.
  std::function<bool(QWidget&, QEvent&)> refuses;

  // How many events have been given out so far, to whomever.
  [[nodiscard]] std::uint64_t EventsGiven() const { return eventsGiven_; }

  bool notify(QObject* receiver, QEvent* event) override;

protected:
  bool event(QEvent* event) override;

private:
  void TakeStyle(const QString& base);
  void KeepReadable();

  QString base_; // the style below the program's own; empty: the desktop's
  std::uint64_t eventsGiven_ = 0;
  QTranslator translator_;
};

} // namespace loader
