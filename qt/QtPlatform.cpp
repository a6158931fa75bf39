#include "qt/QtPlatform.h"

#include <QCoreApplication>

namespace loader {

namespace {

std::filesystem::path FolderOf(const std::filesystem::path& wanted) {
  if (!wanted.empty()) {
    return wanted;
  }
  return QCoreApplication::applicationDirPath().toStdU16String();
}

} // namespace

QtPlatform::QtPlatform(QtPlatformOptions options)
    : programFolder_(FolderOf(options.programFolder)), screens(userInterface, std::move(options.makeForm)),
      serial(programFolder_), socket(std::move(options.portMap)),
      usb(programFolder_), platform{.boxes = boxes,
                                    .fileDialogs = fileDialogs,
                                    .screens = screens,
                                    .timers = timers,
                                    .eventLoop = eventLoop,
                                    .clock = clock,
                                    .MSComm1 = serial,
                                    .winSock = socket,
                                    .USBOCX1 = usb,
                                    .programFolder = programFolder_} {
  SetPlatform(&platform);
}

QtPlatform::~QtPlatform() {
  SetPlatform(nullptr);
}

} // namespace loader
