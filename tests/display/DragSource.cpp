// drag-source X Y FILE...: a window of another program, at a place of the display, from which files can be
// dragged. It tells on standard output when it stands ("ready") and how each drag has ended ("taken",
// "refused").
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>
#include <cstdio>

namespace {

void Say(const char* word) {
  std::puts(word);
  std::fflush(stdout);
}

class Source final : public QWidget {
public:
  Source(QPoint at, const QStringList& files) : QWidget(nullptr, Qt::X11BypassWindowManagerHint) {
    constexpr int Side = 80;
    setGeometry(QRect(at, QSize(Side, Side)));
    for (const QString& file : files) {
      urls_.push_back(QUrl::fromLocalFile(file));
    }
  }

protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    if (!said_) {
      said_ = true;
      Say("ready");
    }
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    if ((event->buttons() & Qt::LeftButton) == 0) {
      return;
    }
    auto* data = new QMimeData;
    data->setUrls(urls_);
    // Not this function's: what is dropped is asked for behind it, and the toolkit ends the drag after that.
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    Say(drag->exec(Qt::CopyAction | Qt::MoveAction) == Qt::IgnoreAction ? "refused" : "taken");
  }

private:
  QList<QUrl> urls_;
  bool said_ = false;
};

} // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QStringList arguments = QApplication::arguments().mid(1);
  const int x = arguments.takeFirst().toInt();
  const int y = arguments.takeFirst().toInt();
  Source source({x, y}, arguments);
  source.show();
  return QApplication::exec();
}
