#include "qt/QtScreens.h"

#include <QApplication>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLayout>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "core/OwnTexts.h"
#include "core/Text.h"
#include "qt/DocumentViewer.h"
#include "qt/FrontWindow.h"
#include "qt/GridView.h"
#include "qt/QtText.h"
#include "qt/UserInterface.h"
#include "qt/WindowSize.h"

namespace loader {

namespace {

// A dialog whose form gives no size is as large as what it shows; Qt itself would stop at two thirds of the
// screen.
void TakeSizeOfContents(QWidget& window) {
  if (!window.testAttribute(Qt::WA_Resized) && window.layout() != nullptr) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest); // columns settle their widths by it
    // A layout that isn't seen keeps the sizes that it has measured first, when captions were still to come.
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    std::for_each(widgets.rbegin(), widgets.rend(), [](QWidget* widget) {
      widget->updateGeometry();
      if (QLayout* layout = widget->layout()) {
        layout->activate();
      }
    });
    window.layout()->activate();
    window.resize(window.sizeHint());
  }
}

// The one file of this machine that is dragged; empty for several, for a folder and for anything else.
QString FileOf(const QMimeData& dragged) {
  const QList<QUrl> urls = dragged.urls();
  const QString path =
      urls.size() == 1 && urls.front().isLocalFile() ? urls.front().toLocalFile() : QString();
  return QFileInfo(path).isFile() ? path : QString();
}

bool IsDrag(QEvent::Type type) {
  return type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop;
}

} // namespace

QtScreens::QtScreens(UserInterface& userInterface, FormMaker makeForm)
    : userInterface_(userInterface), makeForm_(std::move(makeForm)) {
  // Boxes come and go before the first window stands; the last screen ends the program, not the last box.
  QApplication::setQuitOnLastWindowClosed(false);
}

QtScreens::~QtScreens() = default;

QtScreens::OpenScreen* QtScreens::Find(const Screen& screen) const {
  const auto found =
      std::find_if(open_.begin(), open_.end(), [&](const auto& open) { return &open->screen == &screen; });
  return found == open_.end() ? nullptr : found->get();
}

QWidget* QtScreens::WindowOf(const Screen& screen) const {
  const OpenScreen* open = Find(screen);
  return open == nullptr ? nullptr : open->window.get();
}

QtScreens::OpenScreen& QtScreens::Open(Screen& screen, const FrontWindow* front) {
  if (Find(screen) != nullptr) {
    throw std::logic_error("the screen " + screen.name + " is open already");
  }
  std::unique_ptr<QWidget> window = makeForm_(screen.name);
  if (window == nullptr) {
    throw std::logic_error("no form for the screen " + screen.name);
  }
  if (front != nullptr) {
    window->setParent(front->Window(), Qt::Dialog);
    window->setWindowModality(Qt::ApplicationModal);
  }
  if (screen.widthPixels > 0 && screen.heightPixels > 0) {
    window->resize(screen.widthPixels, screen.heightPixels);
  }
  auto binder = std::make_unique<Binder>(userInterface_, screen, *window, makeForm_, missing_);
  window->installEventFilter(this);
  window->setAcceptDrops(screen.onFileDropped != nullptr);
  open_.push_back(std::make_unique<OpenScreen>(
      OpenScreen{.screen = screen, .window = std::move(window), .binder = std::move(binder), .loop = {}}));
  OpenScreen& open = *open_.back();
  userInterface_.Refresh();
  if (front != nullptr) {
    TakeSizeOfContents(*open.window);
    open.window->setMinimumWidth(
        std::max(open.window->minimumWidth(), WidthForTitle(open.window->windowTitle())));
  }
  FitToScreen(*open.window);
  return open;
}

void QtScreens::Show(Screen& screen) {
  closed_.clear();
  Open(screen, nullptr).window->show();
}

void QtScreens::ShowModal(Screen& screen) {
  if (ended_) {
    return;
  }
  const FrontWindow front;
  OpenScreen& open = Open(screen, &front);
  open.loop = std::make_unique<QEventLoop>();
  QEventLoop& loop = *open.loop;
  open.window->show();
  loop.exec(QEventLoop::DialogExec);
  // All handlers of the screen ran inside that loop, so it can go. It is still among the open ones when the
  // whole program was told to end.
  const auto ofScreen = [&](const auto& some) { return &some->screen == &screen; };
  std::erase_if(open_, ofScreen);
  std::erase_if(closed_, ofScreen);
}

void QtScreens::Close(Screen& screen) {
  if (OpenScreen* open = Find(screen)) {
    open->window->close();
  }
}

bool QtScreens::MayClose(OpenScreen& open) {
  if (open.askingToClose) {
    return false; // the question is on the screen
  }
  bool may = true;
  open.askingToClose = true;
  if (open.screen.onCloseQuery) {
    // A query that fails closes nothing.
    may = false;
    userInterface_.Run([&] { may = open.screen.onCloseQuery(); });
  }
  open.askingToClose = false;
  return may;
}

void QtScreens::Closed(OpenScreen& open) {
  open.binder->Release();
  const auto found =
      std::find_if(open_.begin(), open_.end(), [&](const auto& some) { return some.get() == &open; });
  if (open.loop) {
    open.loop->quit();
  }
  closed_.push_back(std::move(*found));
  open_.erase(found);
  if (running_ && std::none_of(open_.begin(), open_.end(), [](const auto& some) { return !some->loop; })) {
    QCoreApplication::exit(0); // quit() would ask the windows once more
  }
}

bool QtScreens::eventFilter(QObject* watched, QEvent* event) {
  const auto found = std::find_if(open_.begin(), open_.end(),
                                  [&](const auto& open) { return open->window.get() == watched; });
  if (found == open_.end()) {
    return false;
  }
  OpenScreen& open = **found;
  if (event->type() == QEvent::WindowActivate && !std::exchange(open.fitted, true)) {
    FitToScreen(*open.window); // by now it has its frame
    return false;
  }
  if (event->type() == QEvent::Close) {
    const bool closes = MayClose(open);
    event->setAccepted(closes);
    if (closes) {
      Closed(open);
    }
    return true;
  }
  if (IsDrag(event->type()) && open.screen.onFileDropped) {
    Drag(open, *static_cast<QDropEvent*>(event));
    return true;
  }
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
      open.loop != nullptr) {
    open.window->close(); // not QDialog's own way, which asks nobody
    return true;
  }
  return false;
}

void QtScreens::Drag(const OpenScreen& open, QDropEvent& event) {
  const QString path = FileOf(*event.mimeData());
  const bool may = !path.isEmpty() && QApplication::activeModalWidget() == nullptr &&
                   (event.possibleActions() & Qt::CopyAction) != 0 &&
                   (!open.screen.mayTakeFile || open.screen.mayTakeFile());
  event.setAccepted(may);
  if (!may) {
    return;
  }
  event.setDropAction(Qt::CopyAction); // the file stays where it is, whatever was offered
  if (event.type() != QEvent::Drop) {
    return;
  }
  // Later: the program that the file comes from waits until this event has been answered, and a question is
  // not answered before the user has read it.
  QTimer::singleShot(0, open.window.get(), [this, &screen = open.screen, path] {
    if (QApplication::activeModalWidget() == nullptr) {
      userInterface_.ActOn(screen, [&] { screen.onFileDropped(PathOf(FromQt(path))); });
    }
  });
}

bool QtScreens::ShowDocument(const std::filesystem::path& file) {
  const QString path = ToQt(file.u16string());
  return OpenInViewer(QUrl::fromLocalFile(path), *this, [this, path] {
    userInterface_.Run([&] {
      ShowMessage(Replace(OwnText(OwnTextId::NoViewer), u"@FILE@", FromQt(path)), BoxIcon::Exclamation);
    });
  });
}

void QtScreens::EndProgram() {
  ended_ = true;
  for (const auto& open : open_) {
    open->binder->Release();
    open->window->removeEventFilter(this);
    open->window->hide();
    if (open->loop) {
      open->loop->quit();
    }
  }
  if (running_) {
    QCoreApplication::exit(0);
  }
}

double QtScreens::TextWidth(std::u16string_view text) {
  const QFont font = QApplication::font("QTableView");
  return QFontMetricsF(font).horizontalAdvance(ToQt(text)) * TwipsPerPixel(font);
}

int QtScreens::Run(const std::function<void()>& start) {
  userInterface_.Run(start);
  if (ended_ || open_.empty()) {
    return 0;
  }
  running_ = true;
  const int code = QCoreApplication::exec();
  running_ = false;
  // The session may have ended the program with a screen open, and the records go before the windows.
  for (const auto& open : open_) {
    open->binder->Release();
  }
  return code;
}

} // namespace loader
