// Ends a program as soon as its first window stands painted, and tells how much memory it holds then.
#pragma once

#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QMetaObject>
#include <QWidget>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>

namespace loader::bench {

// Resident memory of this process in kilobytes.
[[nodiscard]] inline long ResidentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) {
      return std::stol(line.substr(sizeof "VmRSS:" - 1));
    }
  }
  return 0;
}

// "painted KILOBYTES" on the standard output; the process is gone behind it, without any closing.
[[noreturn]] inline void TellPaintedAndLeave() {
  std::printf("painted %ld\n", ResidentKilobytes());
  std::fflush(stdout);
  _exit(0);
}

// A window and everything in it is painted in one go, so the first event behind that finds it on the screen.
class PaintedWatch final : public QObject {
public:
  explicit PaintedWatch(std::function<void()> painted) : painted_(std::move(painted)) {
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->isWindow()) {
      qApp->removeEventFilter(this);
      QMetaObject::invokeMethod(this, painted_, Qt::QueuedConnection);
    }
    return false;
  }

private:
  std::function<void()> painted_;
};

} // namespace loader::bench
